// Alarm and day/night reports, alarm-video and event-log search, event-log summary.
#include "support.h"

#include <net_public.h>

#include <cstring>

namespace {

using namespace test;

class AlarmTest : public HostTest {};

const std::string line = "<red net_xml_alarm.cpp>";

std::string parser_line(const std::string &function)
{
    return line + "Func(" + function + ") Line(#) \n";
}

unsigned long long bits(const time_section_t &set)
{
    return set.bits[0] | static_cast<unsigned long long>(set.bits[1]) << 32;
}

constexpr unsigned long long bit(int code)
{
    return 1ULL << code;
}

std::string alarm_report(const std::string &event)
{
    return element("AlarmEventList", element("AlarmEvent", event));
}

std::string smart_list(const std::string &children)
{
    return "<smartAiTypeList>" + children + "</smartAiTypeList>";
}

TEST_F(AlarmTest, SmartEntriesThatMakeNoSenseAreDropped)
{
    const struct {
        const char *entry, *log;
    } cases[] = {
        {"<index>1</index>", "invalid param type: index:1\n"},
        {"<type/><index>1</index>", "invalid param type: index:1\n"},
        {"<type>crossline</type><index>-1</index>", "invalid param type:crossline index:-1\n"},
        {"<type>Crossline</type><index>1</index>", "unkonwn type:Crossline\n"},
        {"<type>intrude</type><index>1</index>", "unkonwn type:intrude\n"},
        {"<type>loss</type><sublist><index>3</index></sublist>", "invalid param index:3\n"},
        {"<type>loss</type><sublist><index>-1</index></sublist>", "invalid param index:-1\n"},
        {"<type>loss</type><sublist><type>people</type></sublist>", "invalid param index:-1\n"},
    };
    const std::string good = "<smartAiType><type>loitering</type><index>1</index></smartAiType>";
    for (const auto &one : cases) {
        Envelope<net_alarm_report_t> message(net_param_alarm_init);
        const std::string entry = std::string("<smartAiType>") + one.entry + "</smartAiType>";
        const std::string log =
            log_of([&] { EXPECT_EQ(message.read(net_alarm_report_x2s, alarm_report(smart_list(entry + good))), 0); });
        EXPECT_EQ(log, line + one.log);
        EXPECT_EQ(bits(message->state[0].smartAi.events), bit(35)) << one.entry;
    }
    loglevel = 0;
    net_smart_ai_stat_t smart{};
    Xml unknown("<l><smartAiType><type>fire</type></smartAiType></l>");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_smart_ai_from_xmlnode(&smart, unknown, nullptr), 0); }),
              line + "unkonwn type:fire\n")
        << "this line is not gated";

    for (const char *refused : {"<pts>x</pts>", "<frameIndex/>", "<smartAiType><index>x</index></smartAiType>",
                                "<smartAiType><type>12345678901234567890</type></smartAiType>",
                                "<smartAiType><sublist><index>one</index></sublist></smartAiType>"}) {
        Xml list("<l>" + std::string(refused) + "</l>");
        EXPECT_EQ(get_smart_ai_from_xmlnode(&smart, list, nullptr), -1) << refused;
    }
}

TEST_F(AlarmTest, EventLogBrief)
{
    Envelope<net_event_log_brief_t> message(prepared<net_event_log_brief_t>);
    EXPECT_EQ(
        message.read(net_ev_log_brief_x2s,
                     "<EventLogBrief><startTime><year>2026</year><month>1</month></startTime>"
                     "<endTime><hour>23</hour></endTime><logType>2</logType><mdCount>9</mdCount></EventLogBrief>"),
        0);
    EXPECT_EQ(message->startTime.year, 2026);
    EXPECT_EQ(message->endTime.hour, 23);
    EXPECT_EQ(message->logType, 2);
    EXPECT_EQ(message->mdCount, 0) << "counts are only written";

    int *counts = &message->mdCount;
    for (int i = 0; i < 15; ++i)
        counts[i] = i + 1;
    std::memset(message->device[1].uid, 'u', 32); // not terminated
    message->device[1].eventCount = 7;
    message->device[1].logicChnEventCount[0] = 3;
    message->device[1].logicChnEventCount[1] = 4;
    message->device[1].logicChnNum = 2000;
    std::strcpy(message->device[35].uid, "95270035");
    message->device[35].logicChnNum = -1;
    message->dayNum = 2;
    message->dailyEventCount[0] = 5;
    message->dailyEventCount[1] = 6;
    const std::string start = "<EventLogBrief version=\"1.1\"><mdCount>1</mdCount><peopleCount>2</peopleCount>"
                              "<vehicleCount>3</vehicleCount><petCount>4</petCount><visitorCount>5</visitorCount>"
                              "<pirCount>6</pirCount><otherCount>7</otherCount><packageCount>8</packageCount>"
                              "<loiteringCount>9</loiteringCount><intrusionCount>10</intrusionCount>"
                              "<cryCount>11</cryCount><crossCount>12</crossCount><lossCount>13</lossCount>"
                              "<legacyCount>14</legacyCount><linkageCount>15</linkageCount>";
    EXPECT_EQ(message.write(net_ev_log_brief_s2x),
              start + "<deviceStatistics><device><uid>" + std::string(32, 'u') +
                  "</uid><eventCount>7</eventCount><logicChnEventCount>3</logicChnEventCount>"
                  "<logicChnEventCount>4</logicChnEventCount></device>"
                  "<device><uid>95270035</uid><eventCount>0</eventCount></device></deviceStatistics>"
                  "<dailyEventCounts><eventCount>5</eventCount><eventCount>6</eventCount></dailyEventCounts>"
                  "</EventLogBrief>");

    const auto days = [&](int number) {
        message->dayNum = number;
        Xml brief(message.write(net_ev_log_brief_s2x));
        int written = 0;
        for (TiXmlNode *day = brief.root()->FirstChild("dailyEventCounts")->FirstChild(); day != nullptr;
             day = day->NextSibling())
            ++written;
        return written;
    };
    EXPECT_EQ(days(30), 30);
    EXPECT_EQ(days(45), 30);
    EXPECT_EQ(days(-1), 0);

    message.param.dataSize -= 4;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_ev_log_brief_x2s, "<EventLogBrief/>"), -1); }),
              parser_line("net_ev_log_brief_x2s"));
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_ev_log_brief_s2x), "failed"); }),
              line + "func:net_ev_log_brief_s2x line:#\n");
}

TEST_F(AlarmTest, SearchMaskAsText)
{
    const auto text_of = [](int mask) {
        char text[128];
        std::memset(text, '~', sizeof text);
        EXPECT_EQ(evt_log_alarm_type_to_string(text, sizeof text, mask), 0);
        return std::string(text);
    };
    EXPECT_EQ(text_of(-1), "md,time_rec,man_rec,io,people,face,vehicle,dog_cat,visitor,pir,other,package");
    EXPECT_EQ(text_of(0x4), "md");
    EXPECT_EQ(text_of(0x800 | 0x20 | 0x80 | 0x200), "io,people,face,other");
    EXPECT_EQ(text_of(0), "none");
    EXPECT_EQ(text_of(0x4000 | 0x8000 | 0x10000 | 0x20000 | 0x40000 | 0x80000 | 0x100000 | 0x3), "none")
        << "the later types are never written";

    char room[8] = "kept";
    EXPECT_EQ(evt_log_alarm_type_to_string(room, 6, 0x4 | 0x800), 0);
    EXPECT_STREQ(room, "md,io");
    EXPECT_EQ(evt_log_alarm_type_to_string(room, 5, 0x4 | 0x800), -1);
    EXPECT_STREQ(room, "md,io") << "untouched";
    EXPECT_EQ(evt_log_alarm_type_to_string(room, 4, 0), -1);
}

} // namespace
