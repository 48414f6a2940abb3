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

void expect_two_points(const net_smart_ai_points_t &list)
{
    EXPECT_EQ(list.pointNum, 2);
    EXPECT_EQ(list.points[0].x, 0.25F);
    EXPECT_EQ(list.points[0].y, -1.0F);
    EXPECT_EQ(list.points[1].x, 1.5F);
    EXPECT_EQ(list.points[1].y, 0.0F);
}

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

TEST_F(SmartAiTest, CrosslineRules)
{
    exchange_rules<net_crossline_detect_list_t>(
        net_param_smart_ai_crossline_detect_init, net_smart_ai_crossline_detect_x2s, net_smart_ai_crossline_detect_s2x,
        "CrosslineDetect", "crosslineDetectItem",
        "<location>5</location><index>1</index><name>gate</name><aiType>people,vehicle</aiType>"
        "<sesensitivity>60</sesensitivity>" +
            two_points + "<direction>clockwise</direction>");
}

TEST_F(SmartAiTest, IntrusionAndLoiteringRules)
{
    const std::string rule = "<location>5</location><index>1</index><name>gate</name><aiType>people</aiType>"
                             "<sesensitivity>60</sesensitivity><stayTime>9</stayTime>" +
                             two_points;
    exchange_rules<net_intrusion_detect_list_t>(net_param_smart_ai_intrusion_detect_init,
                                                net_smart_ai_intrusion_detect_x2s, net_smart_ai_intrusion_detect_s2x,
                                                "IntrusionDetect", "intrusionDetectItem", rule);
    exchange_rules<net_loitering_detect_list_t>(net_param_smart_ai_loitering_detect_init,
                                                net_smart_ai_loitering_detect_x2s, net_smart_ai_loitering_detect_s2x,
                                                "LoiteringDetect", "loiteringDetectItem", rule);
}

TEST_F(SmartAiTest, LegacyAndLossRules)
{
    const std::string rule = "<location>5</location><index>1</index><name>gate</name><timeThresh>30</timeThresh>"
                             "<sesensitivity>60</sesensitivity>" +
                             two_points;
    exchange_rules<net_legacy_detect_list_t>(net_param_smart_ai_legacy_detect_init, net_smart_ai_legacy_detect_x2s,
                                             net_smart_ai_legacy_detect_s2x, "LegacyDetect", "legacyDetectItem", rule);
    exchange_rules<net_loss_detect_list_t>(net_param_smart_ai_loss_detect_init, net_smart_ai_loss_detect_x2s,
                                           net_smart_ai_loss_detect_s2x, "LossDetect", "lossDetectItem", rule);
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

TEST_F(SmartAiTest, AiSettings)
{
    Envelope<net_ai_cfg_t> message(nets_param_ai_cfg_init, channel(4));
    message->reserved = 77;
    EXPECT_EQ(message->channelId, 4);
    EXPECT_EQ(message.write(nets_param_ai_cfg_s2x),
              "<AiCfg version=\"1.1\"><channelId>4</channelId><smartTrack>0</smartTrack>"
              "<smartTrackMode>0</smartTrackMode><smartTrackModeAbility>0</smartTrackModeAbility>"
              "<detectType>none</detectType><smartTrackType>none</smartTrackType><smartTrackPt>0</smartTrackPt>"
              "<cryDetectLevel>0</cryDetectLevel></AiCfg>");
    EXPECT_EQ(message.read(nets_param_ai_cfg_x2s, R"(
        <AiCfg><channelId>63</channelId><smartTrack>1</smartTrack><smartTrackMode>2</smartTrackMode>
        <smartTrackModeAbility>-1</smartTrackModeAbility><detectType>other,DOG_CAT,face,vehicle,people</detectType>
        <smartTrackType>vehicle,other</smartTrackType><smartTrackPt>3</smartTrackPt>
        <cryDetectAbility>5</cryDetectAbility><cryDetectLevel>6</cryDetectLevel></AiCfg>)"),
              0);
    EXPECT_EQ(message->channelId, 63);
    EXPECT_EQ(message->smartTrack, 1);
    EXPECT_EQ(message->smartTrackMode, 2);
    EXPECT_EQ(message->smartTrackModeAbility, -1);
    EXPECT_EQ(message->detectType, 0x7C0000);
    EXPECT_EQ(message->smartTrackType, 0x80000) << "others are not tracked";
    EXPECT_EQ(message->smartTrackPt, 3);
    EXPECT_EQ(message->delayValid, 0);
    EXPECT_EQ(message->cryDetectAbility, 5);
    EXPECT_EQ(message->cryDetectLevel, 6);
    const std::string head = "<AiCfg version=\"1.1\"><channelId>63</channelId><smartTrack>1</smartTrack>"
                             "<smartTrackMode>2</smartTrackMode>"
                             "<detectType>people,vehicle,face,dog_cat</detectType>"
                             "<smartTrackType>vehicle</smartTrackType><smartTrackPt>3</smartTrackPt>";
    const std::string tail = "<cryDetectAbility>5</cryDetectAbility><cryDetectLevel>6</cryDetectLevel></AiCfg>";
    EXPECT_EQ(message.write(nets_param_ai_cfg_s2x), head + tail) << "\"other\" is never written back";

    for (const char *delay : {"<smartTrackObjectStopDelay>20</smartTrackObjectStopDelay>",
                              "<smartTrackObjectDisappearDelay>10</smartTrackObjectDisappearDelay>"}) {
        message->delayValid = 0;
        EXPECT_EQ(message.read(nets_param_ai_cfg_x2s, "<AiCfg>" + std::string(delay) + "</AiCfg>"), 0);
        EXPECT_EQ(message->delayValid, 1) << delay;
    }
    EXPECT_EQ(message.write(nets_param_ai_cfg_s2x),
              head +
                  "<smartTrackObjectStopDelay>20</smartTrackObjectStopDelay>"
                  "<smartTrackObjectDisappearDelay>10</smartTrackObjectDisappearDelay>" +
                  tail);
    EXPECT_EQ(message.read(nets_param_ai_cfg_x2s,
                           "<AiCfg><detectType>none,face</detectType><smartTrackType>face</smartTrackType></AiCfg>"),
              0);
    EXPECT_EQ(message->detectType, 0);
    EXPECT_EQ(message->smartTrackType, 0x100000) << "replaced";
    EXPECT_EQ(message->reserved, 77);
    EXPECT_EQ(message.param.inited, 1U);

    for (const std::string &refused :
         {std::string("<channelId>64</channelId>"), std::string("<channelId>-1</channelId>"),
          std::string("<cryDetectLevel/>"), "<detectType>" + std::string(128, 'd') + "</detectType>"})
        EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(nets_param_ai_cfg_x2s, "<AiCfg>" + refused + "</AiCfg>"), -1); }),
                  "");
}

std::string detect_area(int width, int height, const std::string &area)
{
    return "<AiDetectCfg><area>" + area + "</area><width>" + std::to_string(width) + "</width><height>" +
           std::to_string(height) + "</height></AiDetectCfg>";
}

TEST_F(SmartAiTest, DetectionArea)
{
    Envelope<net_ai_area_detect_t> message(nets_param_ai_area_detect_init, channel(1));
    std::memset(message->cells, 7, sizeof message->cells);
    EXPECT_EQ(message.read(net_ai_area_detect_x2s, R"(
        <AiDetectCfg><area>pA==</area><chn>63</chn><type>Package and vehicle</type><sensitivity>-5</sensitivity>
        <stayTime>6</stayTime><minTargetHeight>0.125</minTargetHeight><minTargetWidth>0.25</minTargetWidth>
        <maxTargetHeight>0.5</maxTargetHeight><maxTargetWidth>1</maxTargetWidth>
        <width>3</width><height>2</height></AiDetectCfg>)"),
              0)
        << "whatever the order of cells and size";
    EXPECT_EQ(message->chn, 63);
    EXPECT_EQ(message->type, 0x8000000) << "the last spelling of the list, not of the text";
    EXPECT_EQ(message->sensitivity, -5);
    EXPECT_EQ(message->stayTime, 6);
    EXPECT_EQ(message->minTargetHeight, 0.125F);
    EXPECT_EQ(message->minTargetWidth, 0.25F);
    EXPECT_EQ(message->maxTargetHeight, 0.5F);
    EXPECT_EQ(message->maxTargetWidth, 1.0F);
    // 101 and 001, stored column by column.
    const unsigned char cells[3][3] = {{1, 0, 7}, {0, 0, 7}, {1, 1, 7}};
    for (int column = 0; column < 3; ++column)
        EXPECT_EQ(std::memcmp(message->cells[column], cells[column], 3), 0) << column;
    EXPECT_EQ(message->cells[3][0], 7) << "outside the given size";
    EXPECT_EQ(message.param.inited, 1U);
    EXPECT_EQ(message.write(net_ai_area_detect_s2x),
              "<AiDetectCfg version=\"1.1\"><chn>63</chn><type>package</type><sensitivity>-5</sensitivity>"
              "<stayTime>6</stayTime><minTargetHeight>0.125</minTargetHeight><minTargetWidth>0.25</minTargetWidth>"
              "<maxTargetHeight>0.5</maxTargetHeight><maxTargetWidth>1</maxTargetWidth>"
              "<width>3</width><height>2</height><area>pA==</area></AiDetectCfg>");

    const struct {
        const char *word;
        int type;
    } types[] = {{"people", 0x40000}, {"vehicle", 0x80000},   {"face", 0x100000},           {"dog_cat", 0x400000},
                 {"other", 0x200000}, {"package", 0x8000000}, {"dog_cat,people", 0x400000}, {"bird", 0x400000}};
    for (const auto &one : types) {
        EXPECT_EQ(message.read(net_ai_area_detect_x2s, "<AiDetectCfg><type>" + std::string(one.word) +
                                                           "</type><area>AA==</area></AiDetectCfg>"),
                  0);
        EXPECT_EQ(message->type, one.type) << one.word;
    }
}

TEST_F(SmartAiTest, DetectionAreaRefusals)
{
    Envelope<net_ai_area_detect_t> message(nets_param_ai_area_detect_init);
    const std::string size_line = line + "width or height is error\n";
    for (const std::string &refused : {detect_area(0, 2, "AA=="), detect_area(156, 2, "AA=="),
                                       detect_area(3, 0, "AA=="), detect_area(3, 101, "AA=="), detect_area(3, 2, ""),
                                       std::string("<AiDetectCfg><width>3</width><height>2</height></AiDetectCfg>"),
                                       std::string("<AiDetectCfg><w>3</w><h>2</h><area>AA==</area><a/></AiDetectCfg>")})
        EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_ai_area_detect_x2s, refused), -1); }), size_line) << refused;

    const auto count_line = [](int count, int width, int height) {
        return "Func(net_ai_area_detect_x2s) Line(#) ret(" + std::to_string(count) + ") width(" +
               std::to_string(width) + ") rows(" + std::to_string(height) + ")\n";
    };
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_ai_area_detect_x2s, detect_area(3, 3, "AA==")), -1); }),
              count_line(8, 3, 3));
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_ai_area_detect_x2s, detect_area(3, 2, "/wA=")), -1); }),
              count_line(16, 3, 2));
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_ai_area_detect_x2s, detect_area(3, 2, "AA=")), -1); }),
              count_line(-1, 3, 2));
    EXPECT_EQ(message->cells[0][0], 0) << "nothing stored";
    loglevel = 0;
    EXPECT_EQ(log_of([&] { message.read(net_ai_area_detect_x2s, detect_area(3, 3, "AA==")); }), count_line(8, 3, 3))
        << "whatever the masks say";
    loglevel = 1;

    message->width = 3;
    message->height = 2;
    for (const std::string &refused :
         {std::string("<chn>64</chn>"), std::string("<type>") + std::string(128, 't') + "</type>",
          std::string("<maxTargetWidth/>")})
        EXPECT_EQ(log_of([&] {
                      EXPECT_EQ(message.read(net_ai_area_detect_x2s, "<a><area>AA==</area>" + refused + "</a>"), -1);
                  }),
                  "");
    EXPECT_EQ(message.read(net_ai_area_detect_x2s, "<a><area>" + std::string(3000, 'A') + "</area><chn>5</chn></a>"),
              -1);
    EXPECT_NE(message->chn, 5) << "an over-long text ends the walk";
    EXPECT_EQ(log_of([&] { message.read(net_ai_area_detect_x2s, detect_area(3, 2, std::string(2999, 'A'))); }),
              count_line(-1, 3, 2));
}

TEST_F(SmartAiTest, DetectionAreaWritten)
{
    Envelope<net_ai_area_detect_t> message(nets_param_ai_area_detect_init);
    for (const int type : {0, 0xC0000, 0x10000000, -1}) {
        message->type = type;
        EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_ai_area_detect_s2x), "failed"); }),
                  line + "ai type is error");
    }
    message->type = NET_AI_OBJECT_OTHER;
    message->width = 155;
    message->height = 100;
    std::memset(message->cells, 1, sizeof message->cells);
    const std::string full = message.write(net_ai_area_detect_s2x);
    // 15,500 cells are 1937 bytes and a half; the other half of the last byte is empty.
    EXPECT_EQ(full.substr(full.find("<height>")),
              "<height>100</height><area>" + std::string(2583, '/') + "w</area></AiDetectCfg>");
    EXPECT_NE(full.find("<type>other</type>"), std::string::npos);
    EXPECT_EQ(message.read(net_ai_area_detect_x2s, full), 0) << "the largest grid comes back";
    EXPECT_EQ(message->cells[154][99], 1);

    const struct {
        int width, height, needed;
    } sizes[] = {{1000, 1000, 166668}, {156, 100, 2602}, {155, 101, 2610}, {2000, 1, 335},
                 {-5, -5, 6},          {-1, 100, -14},   {65536, 65536, 2}};
    for (const auto &one : sizes) {
        message->width = one.width;
        message->height = one.height;
        std::string text;
        EXPECT_EQ(log_of([&] { text = message.write(net_ai_area_detect_s2x); }),
                  one.needed <= 3000 ? ""
                                     : line + "func:net_ai_area_detect_s2x line:#, base64 need size is too large:" +
                                           std::to_string(one.needed) + "\n");
        EXPECT_EQ(text.find("<area>"), std::string::npos);
        EXPECT_NE(text.find("<width>" + std::to_string(one.width) + "</width>"), std::string::npos);
    }
    message->width = 0;
    message->height = 5;
    EXPECT_EQ(message.write(net_ai_area_detect_s2x).find("<area>"), std::string::npos) << "nothing to encode";
}

TEST_F(SmartAiTest, TrackLimitsAndSchedule)
{
    Envelope<net_ai_track_limit_t> limit(net_param_ai_track_limit_init, channel(2));
    EXPECT_EQ(limit.read(net_param_ai_track_limit_x2s,
                         "<trackLimit><channelId>99</channelId><leftLimit>-900</leftLimit><rightLimit>1800</rightLimit>"
                         "<leftImageName>l.jpg</leftImageName><rightImageName>r.jpg</rightImageName></trackLimit>"),
              0);
    EXPECT_EQ(limit->channelId, 99);
    EXPECT_EQ(limit->leftLimit, -900);
    EXPECT_EQ(limit->rightLimit, 1800);
    EXPECT_EQ(limit.write(net_param_ai_track_limit_s2x),
              "<trackLimit version=\"1.1\"><channelId>99</channelId><leftLimit>-900</leftLimit>"
              "<leftImageName>l.jpg</leftImageName><rightLimit>1800</rightLimit>"
              "<rightImageName>r.jpg</rightImageName></trackLimit>");
    const std::string name(32, 'n');
    EXPECT_EQ(limit.read(net_param_ai_track_limit_x2s, "<t><leftImageName>" + name + "</leftImageName></t>"), -1);
    EXPECT_EQ(limit.read(net_param_ai_track_limit_x2s, "<t><rightImageName>" + name + "</rightImageName></t>"), -1);

    Envelope<net_ai_track_task_t> task(net_param_ai_track_task_init);
    const std::string table(171, '1');
    EXPECT_EQ(task.read(net_param_ai_track_task_x2s,
                        "<trackSchedule><timeTable>" + table + "</timeTable><channelId>1</channelId></trackSchedule>"),
              0);
    EXPECT_EQ(task.write(net_param_ai_track_task_s2x), "<trackSchedule version=\"1.1\"><channelId>1</channelId>"
                                                       "<timeTable>" +
                                                           table + "</timeTable></trackSchedule>");
    EXPECT_EQ(task.read(net_param_ai_track_task_x2s, "<t><timeTable>1" + table + "</timeTable></t>"), -1);
    EXPECT_STREQ(task->timeTable, "");
}

// Realistic messages come back as they were.
TEST_F(SmartAiTest, ExamplesComeBack)
{
    const struct {
        const char *name;
        Init init;
        Parser parser;
        Writer writer;
    } cases[] = {
        {"crossline_rules", net_param_smart_ai_crossline_detect_init, net_smart_ai_crossline_detect_x2s,
         net_smart_ai_crossline_detect_s2x},
        {"intrusion_rules", net_param_smart_ai_intrusion_detect_init, net_smart_ai_intrusion_detect_x2s,
         net_smart_ai_intrusion_detect_s2x},
        {"loitering_rules", net_param_smart_ai_loitering_detect_init, net_smart_ai_loitering_detect_x2s,
         net_smart_ai_loitering_detect_s2x},
        {"legacy_rules", net_param_smart_ai_legacy_detect_init, net_smart_ai_legacy_detect_x2s,
         net_smart_ai_legacy_detect_s2x},
        {"loss_rules", net_param_smart_ai_loss_detect_init, net_smart_ai_loss_detect_x2s, net_smart_ai_loss_detect_s2x},
        {"ai_settings", nets_param_ai_cfg_init, nets_param_ai_cfg_x2s, nets_param_ai_cfg_s2x},
        {"ai_detect_area", nets_param_ai_area_detect_init, net_ai_area_detect_x2s, net_ai_area_detect_s2x},
        {"track_limit", net_param_ai_track_limit_init, net_param_ai_track_limit_x2s, net_param_ai_track_limit_s2x},
        {"track_schedule", net_param_ai_track_task_init, net_param_ai_track_task_x2s, net_param_ai_track_task_s2x},
    };
    for (const auto &one : cases) {
        TiXmlDocument document;
        ASSERT_TRUE(document.LoadFile((std::string(NETPUBLIC_EXAMPLES_DIR "/") + one.name + ".xml").c_str()));
        TiXmlElement *body = document.RootElement()->FirstChildElement();
        AnyEnvelope message;
        net_ext_t ext = channel(0);
        ASSERT_EQ(one.init(&message.param, &ext), 0);
        EXPECT_EQ(one.parser(&message.param, body), 0) << one.name;
        EXPECT_EQ(message.write(one.writer), print(*body));
    }
}

} // namespace
