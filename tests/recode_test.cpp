#include "support.h"

#include <net_public.h>

#include <cstring>
#include <string>

namespace {

using test::Envelope;
using test::log_of;
using test::repeated;
using test::Xml;

constexpr int md = 0;

class RecodeTest : public test::HostTest {};

bool has(const time_section_t &set, int code)
{
    return (set.bits[code / 32] >> code % 32 & 1) != 0;
}

using Schedule = net_record_schedule_v20_t;

// Schedule ----------------------------------------------------------------------------------------

TEST_F(RecodeTest, ScheduleRefusals)
{
    for (const char *body : {"<channelId>64</channelId>", "<channelId>-1</channelId>", "<enable>2</enable>"}) {
        Envelope<Schedule> message(nets_param_rec_schedule_init);
        EXPECT_EQ(log_of([&] {
                      EXPECT_EQ(message.read(net_record_schedule_x2s, std::string("<Record>") + body + "</Record>"),
                                -1);
                  }),
                  "");
        EXPECT_EQ(message.param.inited, 1u);
    }
    Envelope<Schedule> message(nets_param_rec_schedule_init);
    message->scheduleFormat = 7;
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(message.read(net_record_schedule_x2s, "<R><ScheduleList><x/></ScheduleList></R>"), -1);
              }),
              "func:net_record_schedule_x2s  line:#------------>\n");
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(message.read(net_record_schedule_x2s,
                                         "<R><typeScheduleList><item><type>IO</type></item></typeScheduleList></R>"),
                            -1);
              }),
              "func:get_type_schedule_list_from_xmlnode line:# failed\n");
    EXPECT_EQ(message->scheduleFormat, 7);
    EXPECT_FALSE(has(message->schedule.types, md));

    // Only the parser compares the size.
    message.param.dataSize = 1364;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_record_schedule_x2s, "<R/>"), -1); }),
              "<red net_xml_recode.cpp>Func(net_record_schedule_x2s) Line(#) \n");
    EXPECT_NE(message.write(net_record_schedule_s2x), "failed");
}

// Timing ------------------------------------------------------------------------------------------

TEST_F(RecodeTest, TimeListsHoldThirtyTwo)
{
    tag_record_time_list_t list;
    std::memset(&list, 0x5A, sizeof list);
    Xml many("<cyclelist>" + repeated(31, "<item>1</item>") + "<time>2</time>" + repeated(7, "<item>3</item>") +
             "<item>bad</item></cyclelist>");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_recordTimeList_from_xmlnode(&list, many, "cyclelist"), 0); }), "");
    EXPECT_EQ(list.count, 32);
    EXPECT_EQ(list.time[30], 1);
    EXPECT_EQ(list.time[31], 2);
    Xml bad("<cyclelist><item>4</item><item>x</item></cyclelist>");
    EXPECT_EQ(get_recordTimeList_from_xmlnode(&list, bad, nullptr), -1);
    EXPECT_EQ(list.count, 1);
    EXPECT_EQ(list.time[0], 4);
    EXPECT_EQ(list.time[1], 0); // what the list held before is gone
    EXPECT_EQ(get_recordTimeList_from_xmlnode(&list, many, "timeList"), -1);
    EXPECT_EQ(list.count, 1);
}

} // namespace
