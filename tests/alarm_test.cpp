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

TEST_F(AlarmTest, ReportComponents)
{
    Xml event("<AlarmEvent><channelId>4</channelId></AlarmEvent>");
    net_state_v20_t state{};
    EXPECT_EQ(get_AlarmEvent_from_xmlnode(&state, event, "AlarmEventList"), 0);
    EXPECT_EQ(state.channelId, 4);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_AlarmEvent_from_xmlnode(&state, event, "Alarm"), -1); }),
              parser_line("get_AlarmEvent_from_xmlnode"));
    EXPECT_EQ(get_AlarmEvent_from_xmlnode(nullptr, event, nullptr), -1);

    Xml sublist("<sublist><index>1</index><type>vehicle</type></sublist>");
    unsigned int masks[3] = {9, 1, 9};
    EXPECT_EQ(get_smartai_sublist_from_xmlnode(masks, sublist, "sublist"), 0);
    EXPECT_EQ(masks[0], 9U);
    EXPECT_EQ(masks[1], 3U);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_smartai_sublist_from_xmlnode(masks, nullptr, nullptr), -1); }),
              parser_line("get_smartai_sublist_from_xmlnode"));
}

TEST_F(AlarmTest, ReportWritten)
{
    Envelope<net_state_v20_t> message(prepared<net_state_v20_t>);
    EXPECT_EQ(message.write(net_alarm_report_s2x),
              "<AlarmEvent version=\"1.1\"><channelId>0</channelId><status>none</status><AItype>none</AItype>"
              "<recording>0</recording><timeStamp>0</timeStamp></AlarmEvent>");
    message->channelId = 2;
    message->status = 0x800000 | 0xF | 0x10;                // the last one has no word
    for (const int code : {18, 19, 20, 21, 22, 23, 27, 44}) // 23 has no word here
        alarm_in_add_event(&message->aiEvents, code);
    message->recording = 1;
    message->timeStamp = -7;
    message->offset = 99;
    message->smartAi.pts = 99;
    message->smartAi.crossline[0] = 7;
    for (const int code : {28, 29, 31, 36, 43, 44})
        alarm_in_add_event(&message->smartAi.events, code);
    EXPECT_EQ(message.write(net_alarm_report_s2x), "<AlarmEvent version=\"1.1\"><channelId>2</channelId>"
                                                   "<status>MD,videoLoss,blind,IOAlarm,visitor</status>"
                                                   "<AItype>people,vehicle,face,dog_cat,other,package,cry</AItype>"
                                                   "<recording>1</recording><timeStamp>-7</timeStamp><smartAiTypeList>"
                                                   "<smartAiType><type>crossline</type><index>5</index></smartAiType>"
                                                   "<smartAiType><type>loitering</type><index>2</index></smartAiType>"
                                                   "<smartAiType><type>loss</type><index>4</index></smartAiType>"
                                                   "</smartAiTypeList></AlarmEvent>");
    message->smartAi.events = {{0, 1U << (34 - 32) | 1U << (38 - 32)}};
    EXPECT_NE(message.write(net_alarm_report_s2x)
                  .find("<smartAiTypeList><smartAiType><type>intrusion</type><index>4</index></smartAiType>"
                        "<smartAiType><type>legacy</type><index>1</index></smartAiType></smartAiTypeList>"),
              std::string::npos);

    message.param.dataSize = sizeof(net_alarm_report_t);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_alarm_report_s2x), "failed"); }),
              line + "func:net_alarm_report_s2x line:#\n")
        << "one record, although the parser's payload holds two";
}

TEST_F(AlarmTest, DayNightReport)
{
    Envelope<net_day_night_report_t> message(net_param_day_night_init);
    EXPECT_EQ(message.read(net_day_night_report_x2s, R"(
        <DayNightEventList>
            <DayNightEvent><switching>-4</switching><mode>LED_day</mode></DayNightEvent>
            <DayNightEvent><switching>1</switching><mode>unknown</mode></DayNightEvent>
            <DayNightEvent><mode>dusk</mode></DayNightEvent>
        </DayNightEventList>)"),
              0);
    EXPECT_EQ(message->state[0].switching, -4);
    EXPECT_EQ(message->state[0].mode, 2);
    EXPECT_EQ(message->state[1].switching, 1);
    EXPECT_EQ(message->state[1].mode, 0) << "an unknown spelling";
    EXPECT_EQ(message.param.inited, 2U);

    const struct {
        const char *word;
        int mode;
    } modes[] = {{"day", 0}, {"night", 1}, {"preset", 3}, {"unknown", 4}, {"nigh", 0}, {"nights", 0}, {"", 0}};
    for (const auto &one : modes) {
        Xml event("<DayNightEvent><mode>" + std::string(one.word) + "</mode></DayNightEvent>");
        net_day_night_state_v20_t state = {5, 9};
        EXPECT_EQ(get_day_night_event_from_xmlnode(&state, event, "DayNightEvent"), 0);
        EXPECT_EQ(state.mode, one.mode) << one.word;
        EXPECT_EQ(state.switching, 5);
    }
    Xml long_mode("<DayNightEvent><mode>" + std::string(32, 'd') + "</mode></DayNightEvent>");
    net_day_night_state_v20_t state{};
    EXPECT_EQ(get_day_night_event_from_xmlnode(&state, long_mode, nullptr), -1);

    message.param.dataSize = sizeof(net_day_night_state_v20_t);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_day_night_report_x2s, "<l/>"), -1); }),
              parser_line("net_day_night_report_x2s"));
}

TEST_F(AlarmTest, AlarmVideoResults)
{
    Envelope<tag_net_alarm_video_v20_t> message(net_alarm_video_info_init, channel(1));
    EXPECT_EQ(message.read(net_alarm_video_info_x2s, R"(
        <alarmVideoInfo><channelId>63</channelId><bFinished>1</bFinished><fileHandle>0</fileHandle><alarmVideoList>
            <alarmVideo>
                <startTime><year>2026</year></startTime><endTime><year>2027</year></endTime>
                <fileName>123456789012345678901234567890</fileName><fileId>/mnt/sda/a.mp4</fileId>
                <typeExtension>3</typeExtension><alarmType>people</alarmType><bEncrypted>1</bEncrypted>
            </alarmVideo>
            <summary/>
            <alarmVideo><fileName/><alarmType>MD,pir</alarmType></alarmVideo>
        </alarmVideoList></alarmVideoInfo>)"),
              0);
    EXPECT_EQ(message->channelId, 63);
    EXPECT_EQ(message->bFinished, 1);
    EXPECT_EQ(message->fileHandle, 0);
    ASSERT_EQ(message->itemNum, 2);
    const net_alarm_video_item_t &first = message->item[0];
    EXPECT_EQ(first.startTime.year, 2026);
    EXPECT_EQ(first.endTime.year, 2027);
    EXPECT_STREQ(first.fileName, "123456789012345678901234567890");
    EXPECT_STREQ(first.fileId, "/mnt/sda/a.mp4");
    EXPECT_EQ(first.typeExtension, 3);
    EXPECT_EQ(first.alarmType, 5);
    EXPECT_EQ(first.bEncrypted, 1);
    EXPECT_EQ(message->item[1].alarmType, 14) << "codes are OR-ed, although they are no bits";

    // 58 more fit; the last of these is one too many.
    std::string videos;
    for (int i = 0; i < 59; ++i)
        videos += "<alarmVideo><typeExtension>" + std::to_string(100 + i) + "</typeExtension></alarmVideo>";
    Xml list("<alarmVideoList>" + videos + "</alarmVideoList>");
    EXPECT_EQ(get_alarm_video_file_list_from_xmlnode(message.payload(), list, "alarmVideoList"), 0);
    EXPECT_EQ(message->itemNum, 60);
    EXPECT_EQ(message->item[59].typeExtension, 157);
    message->itemNum = -1; // a host's mistake
    EXPECT_EQ(get_alarm_video_file_list_from_xmlnode(message.payload(), list, nullptr), 0);
    EXPECT_EQ(message->itemNum, -1);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_alarm_video_file_list_from_xmlnode(message.payload(), list, "video"), -1); }),
              parser_line("get_alarm_video_file_list_from_xmlnode"));

    const struct {
        const char *word;
        int code;
    } codes[] = {{"md", 2},      {"pir", 12},     {"io", 11},      {"people", 5}, {"face", 7}, {"vehicle", 6},
                 {"dog_cat", 8}, {"visitor", 10}, {"package", 13}, {"other", 9},  {"cry", 0},  {"none", 0}};
    for (const auto &one : codes) {
        message->itemNum = 0;
        message->item[0].alarmType = 64;
        Xml video("<l><alarmVideo><alarmType>" + std::string(one.word) + "</alarmType></alarmVideo></l>");
        EXPECT_EQ(get_alarm_video_file_list_from_xmlnode(message.payload(), video, nullptr), 0);
        EXPECT_EQ(message->item[0].alarmType, one.code) << one.word;
    }
    const std::string too_long = "<fileName>1234567890123456789012345678901</fileName>";
    for (const std::string &refused :
         {too_long, "<fileId>" + std::string(256, 'i') + "</fileId>", std::string("<bEncrypted/>"),
          "<alarmType>" + std::string(128, 'm') + "</alarmType>", std::string("<endTime><day>0</day></endTime>")}) {
        message->itemNum = 0;
        Xml video("<l><alarmVideo>" + refused + "</alarmVideo></l>");
        EXPECT_EQ(get_alarm_video_file_list_from_xmlnode(message.payload(), video, nullptr), -1) << refused;
        EXPECT_EQ(message->itemNum, 0);
    }
    for (const char *refused : {"<channelId>64</channelId>", "<fileHandle>-1</fileHandle>"})
        EXPECT_EQ(
            message.read(net_alarm_video_info_x2s, "<alarmVideoInfo>" + std::string(refused) + "</alarmVideoInfo>"),
            -1);
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
    EXPECT_EQ(evt_log_alarm_type_to_string(nullptr, 8, 0x4), -1);
}

} // namespace
