#include "support.h"

#include <net_public.h>

#include <cstring>
#include <memory>
#include <string>

namespace {

using test::element;
using test::Envelope;
using test::log_of;
using test::repeated;
using test::Xml;
using Motion = tag_net_pic_motion_cfg_v20_t;

class MotionTest : public test::HostTest {};
class AlarmAreaTest : public test::HostTest {};

// A payload for the component readers.
template <class Record> struct Zeroed : Record {
    Zeroed() : Record() {}
};

std::string element(const std::string &name, int value)
{
    return element(name, std::to_string(value));
}

// Base64 of cells given as '0' and '1', the slow and obvious way.
std::string encode(std::string cells)
{
    const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::size_t bytes = (cells.size() + 7) / 8;
    cells.resize((bytes + 2) / 3 * 24, '0');
    std::string text;
    for (std::size_t at = 0; at < cells.size(); at += 6)
        text += alphabet[std::stoul(cells.substr(at, 6), nullptr, 2)];
    for (std::size_t pad = 0; pad < (3 - bytes % 3) % 3; ++pad)
        text[text.size() - 1 - pad] = '=';
    return text;
}

std::string scope(int columns, int rows, const std::string &table)
{
    return element("scope", element("columns", columns) + element("rows", rows) + element("valueTable", table));
}

std::string block(const std::string &day, int begin, int end, int enable = 1)
{
    return element("timeBlock", element("enable", enable) + element("weekDay", day) + element("beginHour", begin) +
                                    element("endHour", end));
}

std::string day_of(const Motion &motion, int day)
{
    std::string text;
    for (int slot : motion.timeBlock[day])
        text += slot != 0 ? '1' : '0';
    return text;
}

// The motion grid ----------------------------------------------------------------------------------

TEST_F(MotionTest, GridCountsMustMatch)
{
    loglevel = 0; // the line is not gated
    const struct {
        int columns, rows;
        std::string table;
        int count; // -2: accepted
    } cases[] = {
        {10, 10, encode(std::string(104, '1')), -2},
        {10, 10, encode(std::string(100, '1')), -2},
        {10, 10, encode(std::string(96, '1')), 96},
        {10, 10, encode(std::string(105, '1')), 112},
        {1, 1, "gA==", -2},
        {8, 3, "gUL/", -2},
        {8, 4, "gUL/", 24},
        {8, 2, "gUL/", 24},
        {8, 2, "gUI=", -2},
        {8, 3, "gU!/", -1},
        {8, 3, "gUL", -1},
        {155, 100, std::string(2584, '/'), -2},
        {155, 99, std::string(2584, '/'), 15500},
        {155, 100, std::string(2580, '/'), 15480},
    };
    for (const auto &one : cases) {
        Zeroed<Motion> motion;
        Xml node(scope(one.columns, one.rows, one.table));
        int result = 1;
        const std::string log = log_of([&] { result = get_scope_from_xmlnode(&motion, node, nullptr); });
        const std::string size = std::to_string(one.columns) + " x " + std::to_string(one.rows);
        if (one.count == -2) {
            EXPECT_EQ(result, 0) << size;
            EXPECT_EQ(log, "");
        } else {
            EXPECT_EQ(result, -1) << size;
            EXPECT_EQ(log, "Func(get_scope_from_xmlnode) Line(#) ret(" + std::to_string(one.count) + ") columns(" +
                               std::to_string(one.columns) + ") rows(" + std::to_string(one.rows) + ")\n");
            EXPECT_EQ(motion.scope[0][0], 0) << "nothing is stored";
        }
    }
}

TEST_F(MotionTest, SmallGridsAreWrittenAs96x64)
{
    const struct {
        int width, height, columns, rows;
    } cases[] = {{40, 30, 96, 64}, {96, 64, 96, 64}, {0, 0, 96, 64},      {96, 65, 96, 65},
                 {97, 10, 97, 10}, {97, 1, 97, 1},   {155, 100, 155, 100}};
    for (const auto &one : cases) {
        Envelope<Motion> message(nets_param_md_init);
        std::memset(message->scope, 1, sizeof message->scope);
        message->scope[one.rows - 1][one.columns - 1] = 0;
        message->width = one.width;
        message->height = one.height;
        const std::string text = message.write(net_md_s2x);
        const std::string cells(static_cast<std::size_t>(one.columns * one.rows - 1), '1');
        EXPECT_NE(text.find(scope(one.columns, one.rows, encode(cells + "0"))), std::string::npos)
            << one.width << " x " << one.height;
    }
    // A size that the grid does not have is not written.
    Envelope<Motion> message(nets_param_md_init);
    message->height = 64;
    for (int width : {156, 2000000000}) {
        message->width = width;
        EXPECT_EQ(message.write(net_md_s2x), "failed");
    }
    message->width = 155;
    message->height = 101;
    EXPECT_EQ(message.write(net_md_s2x), "failed");
    message->width = 0; // only small grids have 96 columns for none
    message->height = 65;
    EXPECT_NE(message.write(net_md_s2x).find("<columns>0</columns><rows>65</rows>"), std::string::npos);
}

// Sensitivity --------------------------------------------------------------------------------------

std::string prioritised(int priority, int sensitivity)
{
    return element("sensInfo", element("priority", priority) + element("sensitivity", sensitivity));
}

int read_new(net_md_sens_v20_t &record, const std::string &children, const char *key = nullptr)
{
    Xml node(element("sensInfoNew", children));
    return get_sensitivity_new_info_x2s(&record, node, key);
}

TEST_F(MotionTest, PrioritisedPeriods)
{
    net_md_sens_v20_t record = {};
    EXPECT_EQ(read_new(record, ""), 0);
    EXPECT_EQ(record.valid, 1) << "the element alone counts";
    EXPECT_EQ(read_new(record, element("sensInfoList", "") + element("sensitivityDefault", -4)), 0);
    EXPECT_EQ(record.sensitivityDefault, -4);
    EXPECT_EQ(read_new(record, element("sensInfoList", prioritised(9, 1) + prioritised(8, 2) + prioritised(7, 3) +
                                                           prioritised(6, 4) + prioritised(5, 99) + "<other/>")),
              0);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(record.priority[i], 9 - i);
        EXPECT_EQ(record.sensInfo[i].sensitivity, i + 1);
        EXPECT_EQ(record.sensInfo[i].enable, 1);
    }
    record = {};
    EXPECT_EQ(read_new(record, "", "sensInfo"), -1);
    EXPECT_EQ(record.valid, 0) << "not even looked at";
    EXPECT_EQ(read_new(record, element("sensInfoList", prioritised(1, 51))), -1);
    EXPECT_EQ(record.valid, 1);
    EXPECT_EQ(read_new(record, element("sensInfoList", prioritised(1, 5) + "<sensinf/>")), -1);
    EXPECT_EQ(record.priority[0], 0) << "the priorities are read in a second pass";
    EXPECT_EQ(read_new(record, element("sensInfoList", "<SENSINFO><id>7</id><priority>2</priority></SENSINFO>")), 0)
        << "no id here, and no enable";
    EXPECT_EQ(record.priority[0], 2);
}

TEST_F(MotionTest, PrioritiesAreFoundByTheirExactName)
{
    const std::string line =
        "<red net_xml_alarm.cpp>func(get_sensitivity_priority_list_from_xmlnode)sensitivity priority node none found\n";
    for (const char *entry :
         {"<sensInfo/>", "<sensInfo><Priority>1</Priority></sensInfo>", "<sensInfo><prio>1</prio></sensInfo>",
          "<sensInfo><sensitivity>3</sensitivity></sensInfo>"}) {
        net_md_sens_v20_t record = {};
        EXPECT_EQ(log_of([&] {
                      EXPECT_EQ(read_new(record, element("sensInfoList", prioritised(1, 2) + entry)), -1) << entry;
                  }),
                  line);
        EXPECT_EQ(record.priority[0], 1);
        EXPECT_EQ(record.sensInfo[1].enable, 1);
    }
    int list[4] = {-9, -9, -9, -9};
    Xml bad("<l><sensInfo><priority>x</priority></sensInfo></l>");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_sensitivity_priority_list_from_xmlnode(list, bad, nullptr), -1); }), "");
    Xml twice("<l><sensInfo><other/><priority>3</priority><priority>4</priority></sensInfo></l>");
    EXPECT_EQ(get_sensitivity_priority_list_from_xmlnode(list, twice, "list"), 0);
    EXPECT_EQ(list[0], 3);
    EXPECT_EQ(list[1], -9);
}

// Arming -------------------------------------------------------------------------------------------

int read_arming(Motion &motion, const std::string &blocks, const char *key = nullptr)
{
    Xml node(element("timeBlockList", blocks));
    return get_md_time_block_list_from_xmlnode(&motion, node, key);
}

TEST_F(MotionTest, LaterBlocksOverwriteEarlierOnes)
{
    Zeroed<Motion> motion;
    EXPECT_EQ(read_arming(motion, block("Sunday", 0, 23) + block("Sunday", 5, 6, 0) + block("Sunday", 6, 6)), 0);
    EXPECT_EQ(day_of(motion, 0), "111110111111111111111111");
    EXPECT_EQ(motion.timeBlock[0][0], 1);
    EXPECT_EQ(read_arming(motion, block("Sunday", 0, 0, 0), "timeBlockList"), 0);
    EXPECT_EQ(day_of(motion, 0), "011110111111111111111111");
    EXPECT_EQ(read_arming(motion, "", "timeBlock"), -1);
    const std::string bad[] = {block("Sunday", 5, 4),
                               block("Sunday", 0, 24),
                               block("Someday", 0, 1),
                               block("Sunday", 0, 0, 2),
                               "<timeBlock/>",
                               "<other/>",
                               "<block/>"};
    for (const std::string &one : bad) {
        Zeroed<Motion> fresh;
        EXPECT_EQ(read_arming(fresh, block("Friday", 1, 1) + one + block("Friday", 2, 2)), -1) << one;
        EXPECT_EQ(day_of(fresh, 5), "010000000000000000000000") << one;
    }
    Zeroed<Motion> many;
    EXPECT_EQ(read_arming(many, repeated(167, block("Monday", 0, 0)) + block("Monday", 1, 1) + block("Monday", 2, 2)),
              0);
    EXPECT_EQ(day_of(many, 1), "110000000000000000000000") << "168 blocks are read";
}

// Detector areas -----------------------------------------------------------------------------------

std::string area(const std::string &name, int width, int height, const std::string &cells)
{
    return element(name, element("width", width) + element("height", height) + element("area", cells));
}

constexpr char area_error[] = "<red net_xml_alarm.cpp> error \n";

TEST_F(AlarmAreaTest, AreasThatAreRefused)
{
    auto record = std::make_unique<net_ai_area_t>();
    record->width = record->height = 8;
    const struct {
        std::string text;
        std::string line;
    } cases[] = {
        {area("a", 0, 3, "gUL/"), area_error},
        {area("a", 156, 3, "gUL/"), area_error},
        {area("a", 8, 101, "gUL/"), area_error},
        {area("a", 8, 3, ""), area_error},
        {area("a", 8, 3, std::string(3000, 'A')), area_error},
        {"<a><height>3</height><area>gUL/</area></a>", area_error},
        {"<a><width>8</width><area>gUL/</area></a>", area_error},
        {"<a><width>8</width><height>3</height></a>", area_error},
        {area("a", 8, 4, "gUL/"), "Func(get_area_from_xmlnode) Line(#) ret(24) width(8) rows(4)\n"},
        {area("a", 8, 3, "g$L/"), "Func(get_area_from_xmlnode) Line(#) ret(-1) width(8) rows(3)\n"},
        {area("a", 9, 3, std::string(2996, 'A')), "Func(get_area_from_xmlnode) Line(#) ret(15500) width(9) rows(3)\n"},
    };
    for (const auto &one : cases) {
        Xml node(one.text);
        EXPECT_EQ(log_of([&] { EXPECT_EQ(get_area_from_xmlnode(record.get(), node, nullptr), -1); }), one.line)
            << one.text.substr(0, 80);
    }
    EXPECT_EQ(record->width, 9) << "the size is stored all the same";
    EXPECT_EQ(record->height, 3);
    Xml node(area("mdArea", 8, 3, "gUL/"));
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_area_from_xmlnode(record.get(), node, "person"), -1); }), area_error);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_area_from_xmlnode(nullptr, node, nullptr), -1); }), area_error);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_area_from_xmlnode(record.get(), nullptr, nullptr), -1); }), area_error);
    loglevel = 0;
    Xml mismatch(area("a", 8, 4, "gUL/"));
    EXPECT_NE(log_of([&] { get_area_from_xmlnode(record.get(), mismatch, nullptr); }), "") << "not gated";
    EXPECT_EQ(log_of([&] { get_area_from_xmlnode(nullptr, nullptr, nullptr); }), "");
}

TEST_F(AlarmAreaTest, Logging)
{
    loglevel = 0x1 | 0x8;
    const std::string names[] = {"md", "person", "vehicle", "face", "dog_cat", "other", "package"};
    const std::string areas[] = {"md", "person", "vehicle", "face", "dogCat", "other", "package"};
    const std::string green = "<green net_xml_alarm.cpp>";
    std::string body = "<chn>1</chn>", expected = green + "pAi->type(0)\n";
    int mask = 0;
    for (int i = 0; i < 7; ++i) {
        body += area(areas[i] + "Area", 1, 1, "gA==");
        mask |= 1 << i;
        expected += green + names[i] + " area xml\n" + green + "pAi->type(" + std::to_string(mask) + ")\n";
    }
    Envelope<net_alarm_area_t> message(nets_param_alarm_area_init);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_alarm_area_x2s, element("body", body)), 0); }), expected);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_alarm_area_x2s, "<body><face/><chn>2</chn></body>"), -1); }),
              green + "face area xml\n" + area_error + area_error);
    EXPECT_EQ(message->chn, 1);
    loglevel = 0x1 | 0x4;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_alarm_area_x2s, element("body", body)), 0); }), "");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_alarm_area_x2s, "<body><chn>x</chn></body>"), -1); }), "");

    Xml node("<body/>");
    net_param_t empty = {};
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_alarm_area_x2s(nullptr, node), -1); }), area_error);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_alarm_area_x2s(&empty, node), -1); }), area_error);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_alarm_area_x2s(&message.param, nullptr), -1); }), area_error);
}

} // namespace
