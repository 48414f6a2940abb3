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

// Payloads that the host provides.
template <class Payload> int host_payload(net_param_t *param, net_ext_t *ext)
{
    return net_param_init_size_id(param, ext, sizeof(Payload), 6250);
}

std::string element(const std::string &name, const std::string &content)
{
    return "<" + name + ">" + content + "</" + name + ">";
}

std::string alarm_report(const std::string &event)
{
    return element("AlarmEventList", element("AlarmEvent", event));
}

TEST_F(AlarmTest, ReportFillsTheFirstAndTheLastRecord)
{
    Envelope<net_alarm_report_t> message(net_param_alarm_init, channel(3));
    EXPECT_EQ(message->state[0].channelId, 3);
    EXPECT_EQ(message.read(net_alarm_report_x2s, R"(
        <AlarmEventList version="1.1">
            <note>skipped</note>
            <AlarmEvent version="1.1">
                <channelId>5</channelId><status>MD,iovideoloss</status><AItype>PEOPLE,dog_cat,cry</AItype>
                <recording>1</recording><timeStamp>1700000000</timeStamp><offset>18446744073709551615</offset>
                <timeSec>11</timeSec><timeUsec>22</timeUsec><wakeAlarm>33</wakeAlarm><previewOnly>44</previewOnly>
            </AlarmEvent>
            <AlarmEvent><channelId>6</channelId><timeSec>7</timeSec><status>blind</status></AlarmEvent>
            <AlarmEvent><channelId>8</channelId><status>ioalarm,visitor</status></AlarmEvent>
        </AlarmEventList>)"),
              0);
    const net_state_v20_t &first = message->state[0];
    EXPECT_EQ(first.channelId, 5);
    EXPECT_EQ(first.status, 0x3) << "words count wherever they occur";
    EXPECT_EQ(bits(first.aiEvents), bit(18) | bit(22) | bit(44));
    EXPECT_EQ(first.recording, 1);
    EXPECT_EQ(first.timeStamp, 1700000000);
    EXPECT_EQ(first.offset, 18446744073709551615ULL);
    EXPECT_EQ(first.timeSec, 11);
    EXPECT_EQ(first.timeUsec, 22);
    EXPECT_EQ(first.wakeAlarm, 33);
    EXPECT_EQ(first.previewOnly, 44);
    const net_state_v20_t &last = message->state[1];
    EXPECT_EQ(last.channelId, 8);
    EXPECT_EQ(last.status, 0x8 | 0x4 | 0x800000) << "bits only accumulate";
    EXPECT_EQ(last.timeSec, 7) << "what the third event does not name stays";
    EXPECT_EQ(message.param.inited, 2U);

    EXPECT_EQ(message.read(net_alarm_report_x2s, alarm_report("<status>none</status><AItype>none,face</AItype>")), 0);
    EXPECT_EQ(first.status, 0x3);
    EXPECT_EQ(bits(first.aiEvents), bit(18) | bit(22) | bit(44)) << "\"none\" hides the rest";
}

TEST_F(AlarmTest, ReportMasks)
{
    const struct {
        const char *status;
        int mask;
    } statuses[] = {{"MD", 0x1},           {"videoLoss", 0x2},     {"IOAlarm", 0x4}, {"blind", 0x8},
                    {"visitor", 0x800000}, {"IOAlarm,blind", 0xC}, {"none", 0},      {"people", 0}};
    for (const auto &one : statuses) {
        Envelope<net_alarm_report_t> message(net_param_alarm_init);
        const std::string status = one.status;
        EXPECT_EQ(message.read(net_alarm_report_x2s, alarm_report("<status>" + status + "</status>")), 0) << status;
        EXPECT_EQ(message->state[0].status, one.mask) << status;
    }
    const struct {
        const char *word;
        int event;
    } events[] = {{"people", 18},  {"vehicle", 19}, {"face", 20}, {"other", 21},
                  {"dog_cat", 22}, {"package", 27}, {"cry", 44}};
    for (const auto &one : events) {
        Envelope<net_alarm_report_t> message(net_param_alarm_init);
        const std::string word = one.word;
        EXPECT_EQ(message.read(net_alarm_report_x2s, alarm_report("<AItype>" + word + "</AItype>")), 0);
        EXPECT_EQ(bits(message->state[0].aiEvents), bit(one.event)) << word;
    }
}

TEST_F(AlarmTest, ReportRefusals)
{
    const struct {
        const char *name, *good, *bad;
    } cases[] = {
        {"channelId", "0", "-1"}, {"status", "none", "MD,none"}, {"recording", "1", "2"},
        {"timeStamp", "0", "-1"}, {"offset", "0", "x"},          {"timeSec", "0", "-1"},
        {"timeUsec", "0", "-1"},  {"wakeAlarm", "0", "-1"},      {"previewOnly", "0", "-1"},
    };
    for (const auto &one : cases) {
        const std::string good = element(one.name, one.good), bad = element(one.name, one.bad);
        Envelope<net_alarm_report_t> message(net_param_alarm_init);
        EXPECT_EQ(message.read(net_alarm_report_x2s, alarm_report(good)), 0) << one.name;
        message.param.inited = 1;
        EXPECT_EQ(message.read(net_alarm_report_x2s, alarm_report(bad + "<timeSec>9</timeSec>")), -1) << one.name;
        EXPECT_NE(message->state[0].timeSec, 9) << "nothing is read behind a refused child";
        EXPECT_EQ(message.param.inited, 1U);
    }
    const struct {
        const char *name;
        const char *word;
    } texts[] = {{"status", "MD"}, {"AItype", "cry"}};
    for (const auto &one : texts) {
        const std::string longest = std::string(127 - std::strlen(one.word), '-') + one.word;
        Envelope<net_alarm_report_t> message(net_param_alarm_init);
        EXPECT_EQ(message.read(net_alarm_report_x2s, alarm_report(element(one.name, longest))), 0);
        EXPECT_TRUE(message->state[0].status == 1 || bits(message->state[0].aiEvents) == bit(44));
        EXPECT_EQ(message.read(net_alarm_report_x2s, alarm_report(element(one.name, "-" + longest))), -1);
    }
    Envelope<net_alarm_report_t> message(net_param_alarm_init);
    EXPECT_EQ(log_of([&] { message.read(net_alarm_report_x2s, alarm_report("<channelId>-1</channelId>")); }),
              parser_line("get_AlarmEvent_from_xmlnode") + parser_line("net_alarm_report_x2s"));
    EXPECT_EQ(message->state[0].channelId, -1) << "stored, then refused";
    message.param.dataSize = sizeof(net_state_v20_t);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_alarm_report_x2s, "<AlarmEventList/>"), -1); }),
              parser_line("net_alarm_report_x2s"));
}

std::string smart_list(const std::string &children)
{
    return "<smartAiTypeList>" + children + "</smartAiTypeList>";
}

TEST_F(AlarmTest, SmartReport)
{
    Envelope<net_alarm_report_t> message(net_param_alarm_init);
    const std::string rules = R"(
        <pts>81985529216486895</pts><frameIndex>4294967296</frameIndex>
        <smartAiType><type>crossline</type><index>5</index>
            <sublist><index>0</index><type>people</type><type>Dog_Cat</type><type>face</type></sublist>
            <sublist><type>vehicle</type><index>2</index></sublist>
            <sublist><index>1</index><type>people,vehicle</type></sublist>
        </smartAiType>
        <smartAiType><type>intrusion</type><index>2</index><sublist><index>1</index><type>people</type></sublist>
        </smartAiType>
        <smartAiType><type>loitering</type><index>8</index><sublist><index>2</index><type>vehicle</type></sublist>
        </smartAiType>
        <smartAiType><type>legacy</type><index>4</index></smartAiType>
        <smartAiType><type>loss</type><index>15</index></smartAiType>)";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_alarm_report_x2s, alarm_report(smart_list(rules))), 0); }), "");
    const net_smart_ai_stat_t &smart = message->state[0].smartAi;
    EXPECT_EQ(smart.pts, 81985529216486895ULL);
    EXPECT_EQ(smart.frameIndex, 4294967296ULL);
    EXPECT_EQ(bits(smart.events), bit(29) | bit(31) | bit(33) | bit(40) | bit(41) | bit(42) | bit(43))
        << "index bits behind the third one mean nothing";
    const unsigned int crossline[] = {5, 0, 2}, intrusion[] = {0, 1, 0}, loitering[] = {0, 0, 2};
    EXPECT_EQ(std::memcmp(smart.crossline, crossline, sizeof crossline), 0);
    EXPECT_EQ(std::memcmp(smart.intrusion, intrusion, sizeof intrusion), 0);
    EXPECT_EQ(std::memcmp(smart.loitering, loitering, sizeof loitering), 0);

    const std::string again = "<smartAiType><index>2</index><type>crossline</type></smartAiType>";
    EXPECT_EQ(message.read(net_alarm_report_x2s, alarm_report(smart_list(again))), 0);
    EXPECT_TRUE((bits(smart.events) & bit(30)) != 0 && (bits(smart.events) & bit(29)) != 0) << "events are added";
    EXPECT_EQ(smart.crossline[0], 0U) << "masks are replaced";
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
    Envelope<net_state_v20_t> message(host_payload<net_state_v20_t>);
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

TEST_F(AlarmTest, AlarmVideoSearch)
{
    Envelope<net_find_alarm_video_t> message(net_find_alarm_video_init, channel(1));
    message.param.dataSize = 1; // the size is not looked at
    EXPECT_EQ(message->destination, -1);
    EXPECT_EQ(message.read(net_find_alarm_video_x2s, R"(
        <findAlarmVideo version="1.1">
            <channelId>63</channelId><uid>9527000ABCDEFGHIJKLMNOPQRSTUVWX</uid><destination>2</destination>
            <fileHandle>0</fileHandle><streamType>4</streamType>
            <startTime><year>2026</year><month>2</month><day>31</day><hour>0</hour><minute>1</minute><second>2</second>
            </startTime>
            <endTime><y>2027</y><mo>12</mo><d>1</d><h>23</h><mi>59</mi><s>58</s></endTime>
            <logicChnBitmap>9223372036854775809</logicChnBitmap><notSearchVideo>-3</notSearchVideo>
            <alarmType>people</alarmType>
            <eventAlarmType><i>dog</i><i>CRY</i><j>x</j></eventAlarmType>
        </findAlarmVideo>)"),
              0);
    EXPECT_EQ(message->channelId, 63);
    EXPECT_STREQ(message->uid, "9527000ABCDEFGHIJKLMNOPQRSTUVWX");
    EXPECT_EQ(message->destination, 2);
    EXPECT_EQ(message->fileHandle, 0);
    EXPECT_EQ(message->streamType, 4);
    const tag_net_time_v20_t start = {2026, 2, 31, 0, 1, 2}, end = {2027, 12, 1, 23, 59, 58};
    EXPECT_EQ(std::memcmp(&message->startTime, &start, sizeof start), 0);
    EXPECT_EQ(std::memcmp(&message->endTime, &end, sizeof end), 0);
    EXPECT_EQ(message->logicChnBitmap, 9223372036854775809ULL);
    EXPECT_EQ(message->notSearchVideo, -3);
    EXPECT_EQ(message->alarmType, 0x4024) << "motion always counts";
    EXPECT_EQ(message.param.inited, 1U);

    for (const char *refused :
         {"<channelId>64</channelId>", "<channelId>-1</channelId>", "<uid>9527000ABCDEFGHIJKLMNOPQRSTUVWXY</uid>",
          "<fileHandle>-1</fileHandle>", "<streamType>5</streamType>", "<streamType>-1</streamType>",
          "<startTime><month>13</month></startTime>", "<endTime><hour>24</hour></endTime>",
          "<logicChnBitmap>-x</logicChnBitmap>", "<eventAlarmType><!--i--></eventAlarmType>"}) {
        const std::string body = "<findAlarmVideo>" + std::string(refused) + "</findAlarmVideo>";
        EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_find_alarm_video_x2s, body), -1) << refused; }),
                  parser_line("net_find_alarm_video_x2s"));
    }
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_find_alarm_video_x2s(&message.param, nullptr), -1); }),
              parser_line("net_find_alarm_video_x2s"));
}

// One word each, as the two searches understand it.
TEST_F(AlarmTest, SearchMasksDiffer)
{
    const struct {
        const char *word;
        int video, log;
    } cases[] = {
        {"md", 0x4, 0x1204},
        {"time_rec", 0xC, 0x8},
        {"man_rec", 0x14, 0x10},
        {"io", 0x804, 0x800},
        {"people", 0x24, 0xA0},
        {"face", 0x84, 0xA0},
        {"vehicle", 0x44, 0x40},
        {"dog_cat", 0x104, 0x100},
        {"visitor", 0x404, 0x400},
        {"pir", 0x1004, 0x1000},
        {"other", 0x204, 0x200},
        {"package", 0x2004, 0x2000},
        {"cry", 0x4004, 0x4000},
        {"crossline", 0x8004, 0x8000},
        {"intrude", 0x10004, 0x10000},
        {"legacy", 0x40004, 0x40000},
        {"loitering", 0x20004, 0x20000},
        {"loss", 0x80004, 0x80000},
        {"linkage", 0x4, 0x100000},
        {"none", 0x4, 0},
        {"FACE,Radio", 0x884, 0x8A0},
        {"", 0x4, 0},
    };
    for (const auto &one : cases) {
        const std::string body = "<find><alarmType>" + std::string(one.word) + "</alarmType></find>";
        Envelope<net_find_alarm_video_t> video(net_find_alarm_video_init);
        video->alarmType = 0x7FFFFFFF;
        EXPECT_EQ(video.read(net_find_alarm_video_x2s, body), 0);
        EXPECT_EQ(video->alarmType, one.video) << one.word;
        Envelope<net_find_event_log_t> log(host_payload<net_find_event_log_t>);
        log->alarmType = 0x40000000;
        EXPECT_EQ(log.read(net_find_event_log_x2s, body), 0);
        EXPECT_EQ(log->alarmType, 0x40000000 | one.log) << one.word << ": added to what was there";
    }
    // A later word list starts again in the one search and adds in the other; all words at once fit.
    const std::string all = "<find><alarmType>vehicle</alarmType><eventAlarmType><i>cry</i></eventAlarmType><alarmType>"
                            "md,time_rec,man_rec,io,people,face,dog_cat,visitor,pir,other,package,crossline,intrude,"
                            "loitering,legacy,loss,linkage,and what else there may be</alarmType></find>";
    Envelope<net_find_alarm_video_t> video(net_find_alarm_video_init);
    EXPECT_EQ(video.read(net_find_alarm_video_x2s, all), 0);
    EXPECT_EQ(video->alarmType, 0xFFFFC & ~0x4000 & ~0x40);
    Envelope<net_find_event_log_t> log(host_payload<net_find_event_log_t>);
    EXPECT_EQ(log.read(net_find_event_log_x2s, all), 0);
    EXPECT_EQ(log->alarmType, 0x1FFFFC & ~0x4000);
}

TEST_F(AlarmTest, EventLogSearch)
{
    Envelope<net_find_event_log_t> message(host_payload<net_find_event_log_t>);
    message.param.dataSize = 0; // the size is not looked at
    std::string devices;
    for (int i = 0; i < 37; ++i)
        devices += "<deviceInfo><uid>" + std::to_string(i) + "</uid><logicChnBitmap>3</logicChnBitmap></deviceInfo>";
    EXPECT_EQ(message.read(net_find_event_log_x2s, "<findEventLog><devices>" + devices + R"(</devices>
            <logTypeBits>3</logTypeBits><desc>1</desc><notSearchVideo>-1</notSearchVideo><handle>-2</handle>
            <maxEventCount>40</maxEventCount><startTime><year>1</year></startTime><endTime><second>59</second></endTime>
        </findEventLog>)"),
              0);
    EXPECT_EQ(message->logTypeBits, 3);
    EXPECT_EQ(message->desc, 1);
    EXPECT_EQ(message->notSearchVideo, -1);
    EXPECT_EQ(message->handle, -2);
    EXPECT_EQ(message->maxEventCount, 40);
    EXPECT_STREQ(message->devices[0].uid, "0");
    EXPECT_EQ(message->devices[0].logicChnBitmap, 3U);
    EXPECT_STREQ(message->devices[35].uid, "35");
    EXPECT_EQ(message->startTime.year, 1) << "not overwritten by a 37th device";
    EXPECT_EQ(message->endTime.second, 59);
    EXPECT_EQ(message.param.inited, 1U);

    for (const char *refused : {"<logTypeBits>-1</logTypeBits>", "<desc>-1</desc>", "<maxEventCount>-1</maxEventCount>",
                                "<handle>x</handle>"}) {
        const std::string body = "<findEventLog>" + std::string(refused) + "</findEventLog>";
        EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_find_event_log_x2s, body), -1) << refused; }),
                  parser_line("net_find_event_log_x2s"));
    }
    const std::string long_uid(32, 'u');
    EXPECT_EQ(message.read(net_find_event_log_x2s,
                           "<f><devices><deviceInfo><uid>" + long_uid + "</uid></deviceInfo></devices></f>"),
              -1);
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
    Envelope<net_event_log_brief_t> message(host_payload<net_event_log_brief_t>);
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
