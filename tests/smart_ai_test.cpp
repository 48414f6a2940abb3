// Smart-AI rules, AI settings, detection areas, tracking limits and schedules.
#include "support.h"

#include <net_public.h>

#include <cstring>

namespace {

using namespace test;

class SmartAiTest : public HostTest {};

const std::string line = "<red net_xml_alarm.cpp>";

std::string element(const std::string &name, const std::string &content)
{
    return "<" + name + ">" + content + "</" + name + ">";
}

const std::string two_points =
    "<pointList><point><x>0.25</x><y>-1</y></point><point><x>1.5</x><y>0</y></point></pointList>";

// What the lists have in common: the payload starts from zero, four rules fit, and it is written back.
template <class List>
void exchange_rules(Init init, Parser parser, Writer writer, const std::string &root, const std::string &item,
                    const std::string &rule)
{
    Envelope<List> message(init, channel(7));
    message->item[3].index = 12;
    message->pointMaxNUm = 8;
    const std::string head = "<channelId>2</channelId><maxNum>4</maxNum><op>Modify</op><pointMinNum>3</pointMinNum>";
    const std::string rules = "<" + item + ">" + rule + "</" + item + ">";
    EXPECT_EQ(message.read(parser, "<" + root + ">" + head + rules + "<" + item + "/>" + "</" + root + ">"), 0);
    EXPECT_EQ(message->channelId, 2);
    EXPECT_EQ(message->maxNum, 4);
    EXPECT_EQ(message->op, NET_SMAER_AI_OP_MODIFY);
    EXPECT_EQ(message->pointMinNum, 3);
    EXPECT_EQ(message->pointMaxNUm, 0) << "cleared first";
    EXPECT_EQ(message->num, 2);
    EXPECT_EQ(message->item[3].index, 0);
    EXPECT_EQ(message->item[0].location, 5);
    EXPECT_EQ(message->item[0].index, 1);
    EXPECT_STREQ(message->item[0].name, "gate");
    EXPECT_EQ(message->item[0].sesensitivity, 60);
    EXPECT_EQ(message->item[1].sesensitivity, 0);
    expect_two_points(message->item[0].pointList);
    EXPECT_EQ(message.param.inited, 1U);

    message->num = 1;
    const std::string begin = "<" + root + " version=\"1.1\"><channelId>2</channelId>", end = "</" + root + ">";
    EXPECT_EQ(message.write(writer), begin + "<maxNum>4</maxNum><op>modify</op><pointMinNum>3</pointMinNum>" +
                                         "<pointMaxNUm>0</pointMaxNUm>" + rules + end);
    message->maxNum = 0;
    message->op = NET_SMAER_AI_OP_NONE;
    message->pointMinNum = 0;
    message->pointMaxNUm = 8;
    message->num = -1;
    EXPECT_EQ(message.write(writer), begin + "<op>none</op>" + end);
    message->num = 1000;
    message->item[3].index = 33;
    message->item[3].pointList.pointNum = 1000;
    std::memset(message->item[3].name, 'n', sizeof message->item[3].name);
    const std::string full = message.write(writer);
    EXPECT_NE(full.find("<index>33</index><name>" + std::string(32, 'n') + "</name>"), std::string::npos);
    std::size_t points = 0, at = full.find("<index>33</index>");
    while ((at = full.find("<point>", at + 1)) != std::string::npos)
        ++points;
    EXPECT_EQ(points, 8U) << "of the last rule";

    std::string five = rules;
    for (int i = 2; i <= 5; ++i)
        five += element(item, element("index", std::to_string(i)));
    EXPECT_EQ(message.read(parser, "<" + root + ">" + five + end), 0);
    EXPECT_EQ(message->num, 4);
    EXPECT_EQ(message->item[3].index, 4);
    EXPECT_EQ(message->channelId, 0);

    EXPECT_EQ(message.read(parser, "<l><" + item + "><name>" + std::string(32, 'n') + "</name></" + item + "></l>"),
              -1);
    EXPECT_EQ(message.read(parser, "<l><" + item + "><pointList><point><x/></point></pointList></" + item + "></l>"),
              -1);
    EXPECT_EQ(message->num, 0);
    message->channelId = 9;
    message.param.dataSize += 4;
    EXPECT_NE(log_of([&] { EXPECT_EQ(message.read(parser, "<l/>"), -1); }).find("Line(#) \n"), std::string::npos);
    EXPECT_EQ(message->channelId, 9) << "a bad envelope is left alone";
    EXPECT_NE(log_of([&] { EXPECT_EQ(message.write(writer), "failed"); }).find(" line:#\n"), std::string::npos);
}

TEST_F(SmartAiTest, RuleComponents)
{
    Xml crossline("<item><aiType>people</aiType><direction>both</direction><index>2</index><location>-3</location>"
                  "<sensitivity>50</sensitivity></item>");
    net_crossline_detect_t line_rule{};
    EXPECT_EQ(get_crossline_from_xmlnode(&line_rule, crossline, "item"), 0);
    EXPECT_STREQ(line_rule.aiType, "people");
    EXPECT_EQ(line_rule.direction, NET_CROSSLINE_DETECT_BOTH);
    EXPECT_EQ(line_rule.index, 2);
    EXPECT_EQ(line_rule.location, -3);
    EXPECT_EQ(line_rule.sesensitivity, 0) << "only the doubled spelling is understood";
    EXPECT_EQ(get_crossline_from_xmlnode(&line_rule, crossline, "crosslineDetectItem"), -1);
    EXPECT_EQ(get_crossline_from_xmlnode(nullptr, crossline, nullptr), -1);
    Xml stay("<item><aiType>" + std::string(127, 'a') + "</aiType><stayTime>5</stayTime></item>");
    net_intrusion_detect_t intrusion{};
    EXPECT_EQ(get_intrusion_from_xmlnode(&intrusion, stay, nullptr), 0);
    EXPECT_EQ(std::strlen(intrusion.aiType), 127U);
    EXPECT_EQ(intrusion.stayTime, 5);
    net_loitering_detect_t loitering{};
    EXPECT_EQ(get_loitering_from_xmlnode(&loitering, stay, "ITEM"), 0);
    EXPECT_EQ(loitering.stayTime, 5);
    Xml long_type("<item><aiType>" + std::string(128, 'a') + "</aiType></item>");
    EXPECT_EQ(get_loitering_from_xmlnode(&loitering, long_type, nullptr), -1);
    Xml thing("<item><timeThresh>6</timeThresh><sesensitivity>7</sesensitivity></item>");
    net_legacy_detect_t legacy{};
    EXPECT_EQ(get_legacy_from_xmlnode(&legacy, thing, nullptr), 0);
    EXPECT_EQ(legacy.timeThresh, 6);
    EXPECT_EQ(legacy.sesensitivity, 7);
    net_loss_detect_t loss{};
    EXPECT_EQ(get_loss_from_xmlnode(&loss, thing, nullptr), 0);
    EXPECT_EQ(loss.timeThresh, 6);

    std::string ten = "<area/>";
    for (int i = 1; i <= 10; ++i)
        ten += "<point><x>" + std::to_string(i) + "</x><y>0.5</y></point>";
    Xml point_list("<pointList>" + ten + "</pointList>");
    net_smart_ai_points_t points{};
    points.pointNum = 5;
    EXPECT_EQ(get_smart_ai_point_list_from_xmlnode(&points, point_list, "pointList"), 0);
    EXPECT_EQ(points.pointNum, 8) << "counted from 0 again, the rest ignored";
    EXPECT_EQ(points.points[0].x, 1.0F);
    EXPECT_EQ(points.points[7].x, 8.0F);
    Xml empty("<pointList/>");
    EXPECT_EQ(get_smart_ai_point_list_from_xmlnode(&points, empty, nullptr), 0);
    EXPECT_EQ(points.pointNum, 0);
    Xml one("<point><y>2e-3</y><x>abc</x></point>");
    net_smart_ai_point_t point = {9, 9};
    EXPECT_EQ(get_smart_ai_point_from_xmlnode(&point, one, "point"), 0);
    EXPECT_EQ(point.x, 0.0F);
    EXPECT_EQ(point.y, 2e-3F);
    EXPECT_EQ(get_smart_ai_point_from_xmlnode(&point, one, "poin"), -1);
}

TEST_F(SmartAiTest, WordsOfRules)
{
    const struct {
        const char *word;
        int direction, op;
    } cases[] = {{"antiClockwise", 1, 0}, {"CLOCKWISE", 2, 0}, {"bOtH", 3, 0},  {"add", 0, 1},  {"delete", 0, 2},
                 {"MODIFY", 0, 3},        {"none", 0, 0},      {"clock", 0, 0}, {"adds", 0, 0}, {"", 0, 0}};
    for (const auto &one : cases) {
        Xml node("<word>" + std::string(one.word) + "</word>");
        NET_CROSSLINE_DETECT_DIRECTION_E direction = NET_CROSSLINE_DETECT_BOTH;
        NET_SMAER_AI_OP_E op = NET_SMAER_AI_OP_MODIFY;
        EXPECT_EQ(get_direction_from_xmlnode(&direction, node, nullptr), 0);
        EXPECT_EQ(direction, one.direction) << one.word;
        EXPECT_EQ(get_op_from_xmlnode(&op, node, "word"), 0);
        EXPECT_EQ(op, one.op) << one.word;
        // In a message the same words mean the same.
        Envelope<net_crossline_detect_list_t> message(net_param_smart_ai_crossline_detect_init);
        const std::string rule = element("crosslineDetectItem", element("direction", one.word));
        EXPECT_EQ(message.read(net_smart_ai_crossline_detect_x2s, element("list", element("op", one.word) + rule)), 0);
        EXPECT_EQ(message->op, one.op);
        EXPECT_EQ(message->item[0].direction, one.direction);
    }
    Xml long_word("<op>" + std::string(32, 'o') + "</op>");
    NET_SMAER_AI_OP_E op = NET_SMAER_AI_OP_ADD;
    EXPECT_EQ(get_op_from_xmlnode(&op, long_word, nullptr), -1);
    EXPECT_EQ(get_op_from_xmlnode(&op, nullptr, nullptr), -1);
    EXPECT_EQ(get_op_from_xmlnode(nullptr, long_word, nullptr), -1);
    EXPECT_EQ(get_direction_from_xmlnode(nullptr, long_word, nullptr), -1);
    NET_CROSSLINE_DETECT_DIRECTION_E direction;
    EXPECT_EQ(get_direction_from_xmlnode(&direction, long_word, "direction"), -1);

    TiXmlElement parent("rule");
    net_smart_ai_points_t points = {1, {{0.1F, 123456789.0F}}};
    EXPECT_EQ(net_smart_ai_points_s2x(&points, &parent), 0);
    EXPECT_EQ(net_smart_ai_direction_s2x(NET_CROSSLINE_DETECT_ANTICLOCKWISE, &parent), 0);
    EXPECT_EQ(net_smart_ai_direction_s2x(NET_CROSSLINE_DETECT_NONE, &parent), 0);
    EXPECT_EQ(net_smart_ai_op_s2x(NET_SMAER_AI_OP_DELETE, &parent), 0);
    EXPECT_EQ(print_children(parent), "<pointList><point><x>0.1</x><y>1.2345679e+08</y></point></pointList>"
                                      "<direction>antiClockwise</direction><direction>none</direction><op>delete</op>");
    EXPECT_EQ(net_smart_ai_points_s2x(nullptr, &parent), -1);
    EXPECT_EQ(net_smart_ai_points_s2x(&points, nullptr), -1);
    EXPECT_EQ(net_smart_ai_op_s2x(NET_SMAER_AI_OP_ADD, nullptr), -1);
    EXPECT_EQ(net_smart_ai_direction_s2x(NET_CROSSLINE_DETECT_BOTH, nullptr), -1);

    Envelope<net_crossline_detect_list_t> message(net_param_smart_ai_crossline_detect_init);
    const int unknown = 7; // a host's mistake
    std::memcpy(&message->op, &unknown, sizeof unknown);
    EXPECT_NE(message.write(net_smart_ai_crossline_detect_s2x).find("<op>none</op>"), std::string::npos);
}

std::string parser_line(const std::string &name)
{
    return line + "Func(" + name + "_x2s) Line(#) \n";
}

std::string writer_line(const std::string &name)
{
    return line + "func:" + name + "_s2x line:#\n";
}

TEST_F(SmartAiTest, WrongSizesAreRefused)
{
    const struct {
        Init init;
        Parser parser;
        Writer writer;
        const char *name;
    } cases[] = {
        {net_param_smart_ai_crossline_detect_init, net_smart_ai_crossline_detect_x2s, net_smart_ai_crossline_detect_s2x,
         "net_smart_ai_crossline_detect"},
        {net_param_smart_ai_intrusion_detect_init, net_smart_ai_intrusion_detect_x2s, net_smart_ai_intrusion_detect_s2x,
         "net_smart_ai_intrusion_detect"},
        {net_param_smart_ai_loitering_detect_init, net_smart_ai_loitering_detect_x2s, net_smart_ai_loitering_detect_s2x,
         "net_smart_ai_loitering_detect"},
        {net_param_smart_ai_legacy_detect_init, net_smart_ai_legacy_detect_x2s, net_smart_ai_legacy_detect_s2x,
         "net_smart_ai_legacy_detect"},
        {net_param_smart_ai_loss_detect_init, net_smart_ai_loss_detect_x2s, net_smart_ai_loss_detect_s2x,
         "net_smart_ai_loss_detect"},
        {nets_param_ai_cfg_init, nets_param_ai_cfg_x2s, nets_param_ai_cfg_s2x, "nets_param_ai_cfg"},
        {nets_param_ai_area_detect_init, net_ai_area_detect_x2s, net_ai_area_detect_s2x, "net_ai_area_detect"},
        {net_param_ai_track_limit_init, net_param_ai_track_limit_x2s, net_param_ai_track_limit_s2x,
         "net_param_ai_track_limit"},
        {net_param_ai_track_task_init, net_param_ai_track_task_x2s, net_param_ai_track_task_s2x,
         "net_param_ai_track_task"},
    };
    for (const auto &one : cases) {
        AnyEnvelope message;
        net_ext_t ext = channel(1);
        ASSERT_EQ(one.init(&message.param, &ext), 0);
        const unsigned int size = message.param.dataSize;
        for (const unsigned int wrong : {size - 4, size + 4}) {
            message.param.dataSize = wrong;
            EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(one.parser, "<l/>"), -1); }), parser_line(one.name));
            EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(one.writer), "failed"); }), writer_line(one.name));
        }
        EXPECT_EQ(log_of([&] { EXPECT_EQ(one.parser(nullptr, nullptr), -1); }), parser_line(one.name));
        EXPECT_EQ(log_of([&] { EXPECT_EQ(one.writer(nullptr, nullptr), -1); }), writer_line(one.name));
    }
}

} // namespace
