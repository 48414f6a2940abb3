#include "support.h"

#include <net_public.h>

#include <cstring>
#include <string>

namespace {

using test::log_of;
using test::print_children;
using test::Xml;

constexpr int md = 0;
constexpr int io = 2;
constexpr int normal = 16;
constexpr int loss = 41;
constexpr int cry = 44;

class ScheduleTest : public test::HostTest {};

using Reader = int (*)(net_schedule_t *, TiXmlNode *, const char *);

int read(net_schedule_t &schedule, Reader reader, const std::string &text, const char *key = nullptr)
{
    Xml node(text);
    return reader(&schedule, node, key);
}

bool has(const time_section_t &set, int code)
{
    return (set.bits[code / 32] >> code % 32 & 1) != 0;
}

// The 168 hours of a type, as the protocol's table.
std::string hours_of(const net_schedule_t &schedule, int code)
{
    std::string table;
    for (const auto &day : schedule.section)
        for (const time_section_t &hour : day)
            table += has(hour, code) ? '1' : '0';
    return table;
}

std::string week(int day, int begin, int end)
{
    std::string table(168, '0');
    for (int hour = begin; hour <= end; ++hour)
        table[static_cast<std::size_t>(day * 24 + hour)] = '1';
    return table;
}

bool is_empty(const net_schedule_t &schedule)
{
    const net_schedule_t empty = {};
    return std::memcmp(&schedule, &empty, sizeof empty) == 0;
}

void set(net_schedule_t &schedule, int day, int hour, unsigned int bits)
{
    schedule.section[day][hour].bits[0] = bits;
}

// Per-type form ---------------------------------------------------------------------------------

std::string item(const std::string &type, const std::string &table, const std::string &more = "")
{
    return "<item><type>" + type + "</type>" + more + "<valueTable>" + table + "</valueTable></item>";
}

int read_types(net_schedule_t &schedule, const std::string &items, const char *key = nullptr)
{
    return read(schedule, get_type_schedule_list_from_xmlnode, "<typeScheduleList>" + items + "</typeScheduleList>",
                key);
}

TEST_F(ScheduleTest, TypesReplaceOnlyTheirOwnHours)
{
    const std::string all(168, '1');
    const struct {
        std::string items;
        int code;
        std::string hours;
    } cases[] = {
        {item("MD", "1" + std::string(167, '0')), md, week(0, 0, 0)},
        {item("io", "10101x 1y") + "<other/>", io, "10101001" + std::string(160, '0')}, // only '1' is an hour
        {item("cry", all), cry, all},
        {item("crossline", week(6, 23, 23), "<index>2</index>"), 31, week(6, 23, 23)},
        {item("loitering", week(1, 1, 2)), 35, week(1, 1, 2)},     // index 0 is the default
        {item("videoloss", week(3, 0, 23)), loss, week(3, 0, 23)}, // contains "loss", which counts
        {item(std::string(125, 'm') + "io", all), io, all},        // 127 characters
    };
    for (const auto &c : cases) {
        net_schedule_t schedule = {};
        for (auto &day : schedule.section)
            for (auto &hour : day)
                hour.bits[0] = 1U << md | 1U << io;
        alarm_in_add_event(&schedule.types, normal);
        EXPECT_EQ(read_types(schedule, c.items, "ignored"), 0);
        EXPECT_EQ(hours_of(schedule, c.code), c.hours) << c.items;
        EXPECT_EQ(hours_of(schedule, c.code == md ? io : md), all);
        time_section_t types = {{1U << normal, 0}}; // types are added
        alarm_in_add_event(&types, c.code);
        EXPECT_EQ(std::memcmp(&schedule.types, &types, sizeof types), 0) << c.items;
    }
}

TEST_F(ScheduleTest, TypesUnknownHereAreSkipped)
{
    net_schedule_t schedule = {};
    const std::string items =
        item("crossline", "1", "<index>3</index>") + item("MD", "1", "<index>-1</index>") + item("earthquake", "1");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(read_types(schedule, items), 0); }), "");
    EXPECT_TRUE(is_empty(schedule));
}

TEST_F(ScheduleTest, TypesFailOnBadItems)
{
    const std::string good = item("MD", week(0, 5, 5));
    const std::string bad[] = {
        "<item/>",
        "<item><type>MD</type></item>",
        "<item><valueTable>1</valueTable></item>",
        item("", "1"),
        item("MD", ""),
        item("MD", std::string(169, '1')),
        item(std::string(128, 'm'), "1"),
        item("MD", "1", "<index>x</index>"),
        "<item><!--index-->" + good.substr(6),
        "<!--item-->",
    };
    loglevel = 0; // the line is not gated
    for (const std::string &one : bad) {
        net_schedule_t schedule = {};
        EXPECT_EQ(log_of([&] { EXPECT_EQ(read_types(schedule, good + one + item("IO", "1")), -1) << one; }),
                  "func:get_type_schedule_list_from_xmlnode line:# failed\n")
            << one;
        EXPECT_EQ(hours_of(schedule, md), week(0, 5, 5)) << "what came in front stays";
        EXPECT_EQ(schedule.types.bits[0], 0x1U);
    }
}

// "type" is tested on its own: a name that is empty answers to it and to "index".
TEST_F(ScheduleTest, TypeIsTestedApartFromTheRest)
{
    TiXmlElement list("typeScheduleList");
    auto *entry = new TiXmlElement("ITEM");
    list.LinkEndChild(entry);
    entry->LinkEndChild(new TiXmlElement(""))->LinkEndChild(new TiXmlText("2"));
    const auto add = [&](const char *name, const char *text) {
        entry->LinkEndChild(new TiXmlElement(name))->LinkEndChild(new TiXmlText(text));
    };
    add("T", "legacy");
    add("v", "1");
    net_schedule_t schedule = {};
    EXPECT_EQ(get_type_schedule_list_from_xmlnode(&schedule, &list, nullptr), 0);
    EXPECT_EQ(hours_of(schedule, 40), week(0, 0, 0)) << "legacy, rule 2";
}

TEST_F(ScheduleTest, TypesWritten)
{
    net_schedule_t schedule = {};
    schedule.types = {{1U << io | 1U << 3 | 1U << 30, 1U << (cry - 32)}};
    set(schedule, 1, 0, 1U << io | 1U << md);
    set(schedule, 6, 23, 1U << io | 1U << 30);
    TiXmlElement parent("p");
    EXPECT_EQ(insert_type_schedule_list_to_xmlnode(&schedule, &parent), 0);
    std::string io_table = week(1, 0, 0);
    io_table[167] = '1';
    EXPECT_EQ(print_children(parent), "<typeScheduleList>"
                                      "<item><type>IO</type><valueTable>" +
                                          io_table +
                                          "</valueTable></item>"
                                          "<item><type>none</type><valueTable>" +
                                          std::string(168, '0') +
                                          "</valueTable></item>"
                                          "<item><type>crossline</type><index>1</index><valueTable>" +
                                          week(6, 23, 23) +
                                          "</valueTable></item>"
                                          "<item><type>cry</type><valueTable>" +
                                          std::string(168, '0') +
                                          "</valueTable></item>"
                                          "</typeScheduleList>")
        << "MD is in a cell but not mentioned";

    TiXmlElement empty("p");
    const net_schedule_t nothing = {};
    schedule = nothing;
    EXPECT_EQ(insert_type_schedule_list_to_xmlnode(&schedule, &empty), 0);
    EXPECT_EQ(print_children(empty), "<typeScheduleList />");
}

// Time blocks -----------------------------------------------------------------------------------

std::string block(const std::string &day, int begin, int end, const std::string &enable = "1")
{
    return "<timeBlock><enable>" + enable + "</enable><weekDay>" + day + "</weekDay><beginHour>" +
           std::to_string(begin) + "</beginHour><endHour>" + std::to_string(end) + "</endHour></timeBlock>";
}

int read_blocks(net_schedule_t &schedule, time_section_t types, const std::string &blocks, const char *key = nullptr)
{
    Xml node("<timeBlockList>" + blocks + "</timeBlockList>");
    return get_time_block_list_from_xmlnode(&schedule, types, node, key);
}

TEST_F(ScheduleTest, BlocksReplaceWholeCells)
{
    const time_section_t types = {{0x1, 0x1000}};
    net_schedule_t schedule = {};
    set(schedule, 1, 9, 0x4);
    set(schedule, 2, 9, 0x4);
    EXPECT_EQ(read_blocks(schedule, types, block("Mon", 8, 10) + block("tuesday", 9, 9, "0") + block("Sa", 23, 23)), 0);
    EXPECT_EQ(hours_of(schedule, md).substr(24, 24), "000000001110000000000000");
    EXPECT_EQ(schedule.section[1][9].bits[0], 0x1U) << "IO is gone";
    EXPECT_EQ(schedule.section[1][9].bits[1], 0x1000U);
    EXPECT_EQ(schedule.section[2][9].bits[0], 0x4U) << "a disabled block changes nothing";
    EXPECT_EQ(schedule.section[6][23].bits[0], 0x1U);
    EXPECT_EQ(schedule.types.bits[0], 0U);
    EXPECT_EQ(read_blocks(schedule, {}, block("Monday", 0, 23), "timeBlockList"), 0);
    EXPECT_EQ(hours_of(schedule, md), week(6, 23, 23)) << "the empty set clears";
    EXPECT_EQ(read_blocks(schedule, types, "", "blocks"), -1);
}

TEST_F(ScheduleTest, BlocksMustBeWhole)
{
    const std::string good = block("Sunday", 1, 1);
    const std::string bad[] = {
        block("Monday", 5, 3),
        block("Monday", 0, 24),
        block("Monday", -1, 3),
        block("Mondays", 1, 3),
        block("Feiertag", 1, 3),
        block("MondayMondayMond", 1, 3),
        block("Monday", 1, 3, "2"),
        "<timeBlock><weekDay>Mon</weekDay><beginHour>1</beginHour><endHour>2</endHour></timeBlock>",
        "<timeBlock><enable>1</enable><beginHour>1</beginHour><endHour>2</endHour></timeBlock>",
        "<timeBlock><enable>1</enable><weekDay>Mon</weekDay><endHour>2</endHour></timeBlock>",
        "<timeBlock><enable>1</enable><weekDay>Mon</weekDay><beginHour>1</beginHour></timeBlock>",
        "<timeBlocks/>",
        "<timeBloc/>",
        "<!--timeBlock-->",
        "<other/>",
    };
    for (const std::string &one : bad) {
        net_schedule_t schedule = {};
        EXPECT_EQ(read_blocks(schedule, {{1, 0}}, good + one + block("Friday", 1, 1)), -1) << one;
        EXPECT_EQ(hours_of(schedule, md), week(0, 1, 1)) << one;
    }
    net_schedule_t schedule = {};
    EXPECT_EQ(read_blocks(schedule, {{1, 0}}, "<TIMEBLOCK><e>1</e><W>m</W><b>5</b><END>6</END><x/></TIMEBLOCK>"), 0);
    EXPECT_EQ(hours_of(schedule, md), week(1, 5, 6));
}

TEST_F(ScheduleTest, BlocksBeyondAWeekAreIgnored)
{
    std::string blocks;
    for (int i = 0; i < 167; ++i)
        blocks += block("Sunday", 0, 0);
    net_schedule_t schedule = {};
    EXPECT_EQ(read_blocks(schedule, {{1, 0}}, blocks + block("Sunday", 4, 4) + block("Sunday", 5, 5) + "<x/>"), 0);
    EXPECT_EQ(hours_of(schedule, md).substr(0, 6), "100010");
}

// Per-combination form --------------------------------------------------------------------------

std::string combination(const std::string &types, const std::string &blocks)
{
    return "<Schedule><alarmType>" + types + "</alarmType><timeBlockList>" + blocks + "</timeBlockList></Schedule>";
}

int read_combinations(net_schedule_t &schedule, const std::string &schedules, const char *key = nullptr)
{
    return read(schedule, get_schedule_list_from_xmlnode, "<ScheduleList>" + schedules + "</ScheduleList>", key);
}

TEST_F(ScheduleTest, CombinationsOverwriteEachOther)
{
    net_schedule_t schedule = {};
    EXPECT_EQ(read_combinations(schedule,
                                combination("MD", block("Monday", 8, 10)) + combination("IO", block("Monday", 9, 9))),
              0);
    EXPECT_EQ(schedule.section[1][8].bits[0], 0x1U);
    EXPECT_EQ(schedule.section[1][9].bits[0], 0x4U);
    EXPECT_EQ(schedule.section[1][10].bits[0], 0x1U);
    EXPECT_EQ(schedule.types.bits[0] | schedule.types.bits[1], 0U) << "the mentioned types are not kept";

    schedule = {};
    EXPECT_EQ(read_combinations(
                  schedule,
                  combination("IO,MD", block("Sunday", 0, 0)) + combination("Normal", block("Sunday", 1, 1)) +
                      combination("none", block("Sunday", 0, 0)) + combination("videoloss", block("Sunday", 2, 2)) +
                      combination("IO,MD", block("Sunday", 3, 3)),
                  "ScheduleList"),
              0);
    EXPECT_EQ(schedule.section[0][0].bits[0], 0U) << "\"none\" is the empty set";
    EXPECT_EQ(schedule.section[0][1].bits[0], 1U << normal);
    EXPECT_EQ(schedule.section[0][2].bits[0], 0U);
    EXPECT_EQ(schedule.section[0][2].bits[1], 1U << (loss - 32));
    EXPECT_EQ(schedule.section[0][3].bits[0], 0x1U) << "a combined word is the last of its types";
}

TEST_F(ScheduleTest, CombinationsMustBeWhole)
{
    const std::string good = combination("MD", block("Sunday", 1, 1));
    const std::string bad[] = {
        "<Schedule/>",
        "<Schedule><alarmType>MD</alarmType></Schedule>",
        "<Schedule><timeBlockList/><alarmType>MD</alarmType></Schedule>",
        "<Schedule><alarm>MD</alarm><timeBlockList/></Schedule>",
        "<Schedule><alarmType>MD</alarmType><blocks/></Schedule>",
        "<Schedule><alarmType>MD</alarmType><timeBlockList><x/></timeBlockList></Schedule>",
        "<Sched><alarmType>MD</alarmType><timeBlockList/></Sched>",
        combination(std::string(63, 'x'), ""),
        "<other/>",
    };
    for (const std::string &one : bad) {
        net_schedule_t schedule = {};
        EXPECT_EQ(log_of([&] { EXPECT_EQ(read_combinations(schedule, good + one + good), -1) << one; }), "") << one;
        EXPECT_EQ(hours_of(schedule, md), week(0, 1, 1));
    }
    net_schedule_t schedule = {};
    EXPECT_EQ(read_combinations(schedule, "<SCHEDULE><ALARMTYPE>md</ALARMTYPE><time>" + block("Su", 2, 2) +
                                              "</time><rest/></SCHEDULE>" + combination(std::string(62, 'x'), "")),
              0);
    EXPECT_EQ(hours_of(schedule, md), week(0, 2, 2));
    EXPECT_EQ(read_combinations(schedule, "", "Schedule"), -1);

    std::string nine;
    for (int i = 0; i < 9; ++i)
        nine += combination("MD", block("Friday", i, i));
    schedule = {};
    EXPECT_EQ(read_combinations(schedule, nine + combination("MD", block("Friday", 9, 9)) + "<other/>"), 0);
    EXPECT_EQ(hours_of(schedule, md), week(5, 0, 8)) << "nine are read";
}

std::string write_combinations(net_schedule_t &schedule)
{
    TiXmlElement parent("p");
    EXPECT_EQ(insert_schedule_list_to_xmlnode(&schedule, &parent), 0);
    return print_children(parent);
}

TEST_F(ScheduleTest, CombinationsWritten)
{
    net_schedule_t schedule = {};
    for (auto &day : schedule.section)
        for (auto &hour : day)
            hour.bits[0] = 0x10001; // Normal with MD is none of the nine
    set(schedule, 0, 0, 0x4);
    set(schedule, 0, 1, 0x104); // other types do not count
    set(schedule, 0, 3, 0x4);
    set(schedule, 0, 4, 0x5);
    set(schedule, 0, 23, 0x5);
    set(schedule, 1, 0, 0x5);
    set(schedule, 2, 0, 0x6);
    set(schedule, 2, 1, 0x3);
    set(schedule, 2, 2, 0x7);
    set(schedule, 2, 3, 0x2);
    set(schedule, 2, 4, 0x10000);
    set(schedule, 2, 5, 0x40000);
    schedule.section[2][5].bits[1] = 0xFFFFFFFF;
    EXPECT_EQ(
        write_combinations(schedule),
        "<ScheduleList>" + combination("IO", block("Sunday", 0, 1) + block("Sunday", 3, 3)) +
            combination("videoloss", block("Tuesday", 3, 3)) +
            combination("IO,MD", block("Sunday", 4, 4) + block("Sunday", 23, 23) + block("Monday", 0, 0)) +
            combination("IO,videoloss", block("Tuesday", 0, 0)) + combination("MD,videoloss", block("Tuesday", 1, 1)) +
            combination("IO,MD,videoloss", block("Tuesday", 2, 2)) + combination("Normal", block("Tuesday", 4, 4)) +
            combination("none", block("Tuesday", 5, 5)) + "</ScheduleList>");
}

} // namespace
