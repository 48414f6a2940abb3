// Smart-AI rules, AI settings, detection areas, tracking limits and schedules.
#include "support.h"

#include <net_public.h>

#include <cstring>

namespace {

using namespace test;

class SmartAiTest : public HostTest {};

const std::string line = "<red net_xml_alarm.cpp>";

const std::string two_points =
    "<pointList><point><x>0.25</x><y>-1</y></point><point><x>1.5</x><y>0</y></point></pointList>";

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

} // namespace
