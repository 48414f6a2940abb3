#include "support.h"

#include <net_public.h>

#include <cstring>
#include <string>

namespace {

using test::Envelope;
using test::log_of;
using test::prepared;
using test::repeated;
using test::Xml;

class ReplayTest : public test::HostTest {};

// Day records -----------------------------------------------------------------------------------

using DayRecords = Envelope<tag_net_recfile_schedule_v20_t>;

TEST_F(ReplayTest, BadDayRecordsAreRefused)
{
    const auto read = [](const std::string &record) {
        DayRecords message(net_param_day_record_init);
        EXPECT_EQ(message.read(net_day_rec_x2s,
                               "<D><DayRecordList><DayRecord>" + record + "</DayRecord></DayRecordList></D>"),
                  -1)
            << record;
        EXPECT_EQ(message.param.inited, 1U);
    };
    const std::string line = "<red net_xml_replay.cpp>Func(get_day_record_list_from_xmlnode) Line(#) \n";
    EXPECT_EQ(log_of([&] { read("<channelId>-1</channelId>"); }), line);
    for (const std::string day :
         {"<dayType><index>31</index><type>all</type></dayType>",
          "<dayType><index>-1</index><type>all</type></dayType>", "<dayType><index>1</index></dayType>",
          "<dayType><type>all</type></dayType>", "<dayType><index>1</index><type>al</type></dayType>",
          "<day><index>1</index><type>all</type></day>"})
        EXPECT_EQ(log_of([&] { read("<dayTypeList>" + day + "</dayTypeList>"); }), line) << day;
    EXPECT_EQ(log_of([&] { read("<uid>" + repeated(32, "u") + "</uid>"); }), "") << "only these two are logged";

    tag_net_recfile_schedule_v20_t schedule{};
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_day_record_list_from_xmlnode(&schedule, nullptr), -1); }), line);
    EXPECT_EQ(log_of([] { EXPECT_EQ(get_day_record_list_from_xmlnode(nullptr, Xml("<x/>")), -1); }), line);
}

TEST_F(ReplayTest, TheMonthEndsAfterItsDays)
{
    tag_net_rec_info_v20_t record{};
    const std::string day = "<dayType><index>2</index><type>alarm</type></dayType>";
    EXPECT_EQ(get_day_type_list_from_xmlnode(&record, Xml("<l>" + repeated(31, day) + "<other/></l>")), 0);
    EXPECT_EQ(get_day_type_list_from_xmlnode(&record, Xml("<l>" + repeated(30, day) + "<other/></l>")), -1);
    EXPECT_EQ(record.dayType[2], 2);
}

// Replay ----------------------------------------------------------------------------------------

TEST_F(ReplayTest, PeriodsBeyondAHundredAreLogged)
{
    net_replay_duration_v20_t duration{};
    duration.periodCount = 50;
    const std::string line = "<red net_xml_replay.cpp>get too many period, ignore others\n";
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(get_duration_times_from_xmlnode(&duration,
                                                            Xml("<times>" + repeated(100, "<i><s>60</s></i>") +
                                                                repeated(2, "<i><s>x</s></i>") + "</times>"),
                                                            "times"),
                            0);
              }),
              line + line);
    EXPECT_EQ(duration.periodCount, 100);
    EXPECT_EQ(duration.periods[99].startMinute, 1);
    EXPECT_EQ(get_duration_times_from_xmlnode(&duration, Xml("<times><i/><x/></times>"), nullptr), 0);
    EXPECT_EQ(duration.periodCount, 1) << "counted anew";
}

TEST_F(ReplayTest, DurationsBeyondFourAreLogged)
{
    net_replay_duration_list_v20_t list{};
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(get_duration_list_from_xmlnode(
                                &list,
                                Xml("<durationList><year>2026</year><month>12</month><day>31</day>" +
                                    repeated(3, "<duration><channelId>3</channelId></duration>") +
                                    "<duration><channelId>4</channelId><streamType>mobilestream</streamType>"
                                    "<uid>cam</uid><logicChnBitmap>9</logicChnBitmap><times><i/></times></duration>"
                                    "<duration><channelId>-1</channelId></duration></durationList>"),
                                "durationList"),
                            0);
              }),
              "<red net_xml_replay.cpp>get too many duration, ignore others\n");
    EXPECT_EQ(list.year, 2026);
    EXPECT_EQ(list.month, 12);
    EXPECT_EQ(list.day, 31);
    EXPECT_EQ(list.durationCount, 4);
    EXPECT_EQ(list.durations[2].channelId, 3);
    EXPECT_EQ(list.durations[3].channelId, 4);
    EXPECT_EQ(list.durations[3].streamType, 2);
    EXPECT_STREQ(list.durations[3].uid, "cam");
    EXPECT_EQ(list.durations[3].logicChnBitmap, 9ULL);
    EXPECT_EQ(list.durations[3].periodCount, 1);

    EXPECT_EQ(get_duration_list_from_xmlnode(&list, Xml("<l><d>7</d></l>"), nullptr), 0);
    EXPECT_EQ(list.day, 7);
    EXPECT_EQ(list.durationCount, 1) << "a child named d is a duration, too";
    for (const char *bad : {"<year>-1</year>", "<month>13</month>", "<day>0</day>", "<d>32</d>",
                            "<duration><channelId>-1</channelId></duration>",
                            "<duration><times><i><s>-5</s></i></times>"
                            "</duration>"})
        EXPECT_EQ(get_duration_list_from_xmlnode(&list, Xml("<l>" + std::string(bad) + "</l>"), nullptr), -1) << bad;

    net_replay_duration_v20_t duration{};
    EXPECT_EQ(get_duration_from_xmlnode(&duration, Xml("<dur><channelId>2</channelId></dur>"), "duration"), 0);
    EXPECT_EQ(duration.channelId, 2);
    EXPECT_EQ(get_duration_from_xmlnode(&duration, Xml("<other/>"), "duration"), -1);
}

// Deletion and cover pictures -------------------------------------------------------------------

TEST_F(ReplayTest, FortyFilesAreDeletedAtOnce)
{
    Envelope<net_rec_del_v20_t> message(prepared<net_rec_del_v20_t>);
    std::memset(message.payload(), 0x5a, sizeof *message);
    std::string items = "<item><other/></item>";
    for (int i = 1; i < 45; ++i)
        items += "<it><fileIdentity>f" + std::to_string(i) + "</fileIdentity></it>";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_rec_del_x2s, "<d>" + items + "</d>"), 0); }), "");
    EXPECT_EQ(message->count, 40);
    EXPECT_STREQ(message->item[0].fileIdentity, "") << "takes a slot all the same";
    EXPECT_STREQ(message->item[1].fileIdentity, "f1");
    EXPECT_STREQ(message->item[39].fileIdentity, "f39");
    EXPECT_EQ(message.param.inited, 1U);

    loglevel = 0; // the line is printed whatever the switches say
    const std::string longest(255, 'l');
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(message.read(net_rec_del_x2s, "<d><item><fileIdentity>" + longest +
                                                              "</fileIdentity></item><item><fileIdentity>" + longest +
                                                              "l</fileIdentity></item></d>"),
                            -1);
              }),
              "func:net_rec_del_x2s line:# failed\n");
    EXPECT_EQ(message->count, 1);
    EXPECT_EQ(message->item[0].fileIdentity, longest);
}

} // namespace
