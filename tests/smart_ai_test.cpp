// Smart-AI rules, AI settings, detection areas, tracking limits and schedules.
#include "support.h"

#include <net_public.h>

#include <cstring>

namespace {

using namespace test;

class SmartAiTest : public HostTest {};

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

    Envelope<net_crossline_detect_list_t> message(net_param_smart_ai_crossline_detect_init);
    const int unknown = 7; // a host's mistake
    std::memcpy(&message->op, &unknown, sizeof unknown);
    EXPECT_NE(message.write(net_smart_ai_crossline_detect_s2x).find("<op>none</op>"), std::string::npos);
}

} // namespace
