#include "support.h"

#include <net_public.h>

#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

namespace {

using test::Envelope;
using test::example;
using test::log_of;
using test::prepared;
using test::repeated;
using test::Xml;

constexpr int md = 0;
constexpr int io = 2;

class RecodeTest : public test::HostTest {};

TiXmlElement *message_of(Xml &document)
{
    return document.root()->FirstChildElement();
}

bool has(const time_section_t &set, int code)
{
    return (set.bits[code / 32] >> code % 32 & 1) != 0;
}

using Schedule = net_record_schedule_v20_t;

// Schedule ----------------------------------------------------------------------------------------

TEST_F(RecodeTest, ScheduleInThePerTypeForm)
{
    Envelope<Schedule> message(nets_param_rec_schedule_init, test::channel(5));
    message->reserved = 4;
    const std::string body = "<channelId>63</channelId><enable>1</enable><typeScheduleList><item><type>IO</type>"
                             "<valueTable>1" +
                             std::string(167, '0') + "</valueTable></item></typeScheduleList>";
    ASSERT_EQ(message.read(net_record_schedule_x2s, "<Record>" + body + "</Record>"), 0);
    EXPECT_EQ(message.param.inited, 2u);
    EXPECT_EQ(message->channelId, 63);
    EXPECT_EQ(message->enable, 1);
    EXPECT_EQ(message->reserved, 0);
    EXPECT_EQ(message->scheduleFormat, 1);
    EXPECT_TRUE(has(message->schedule.types, io));
    EXPECT_FALSE(has(message->schedule.types, md));
    EXPECT_TRUE(has(message->schedule.section[0][0], io));
    EXPECT_FALSE(has(message->schedule.section[0][1], io));
    EXPECT_EQ(message.write(net_record_schedule_s2x), "<Record version=\"1.1\">" + body + "</Record>");
}

TEST_F(RecodeTest, ScheduleInThePerCombinationForm)
{
    Envelope<Schedule> message(nets_param_rec_schedule_init);
    message->scheduleFormat = 7;
    ASSERT_EQ(message.read(net_record_schedule_x2s,
                           "<Record><ScheduleList><Schedule><alarmType>IO</alarmType><timeBlockList><timeBlock>"
                           "<enable>1</enable><weekDay>Monday</weekDay><beginHour>8</beginHour><endHour>9</endHour>"
                           "</timeBlock></timeBlockList></Schedule></ScheduleList></Record>"),
              0);
    EXPECT_EQ(message->scheduleFormat, 0);
    EXPECT_TRUE(has(message->schedule.types, md)); // whatever the schedule names
    EXPECT_FALSE(has(message->schedule.types, io));
    EXPECT_TRUE(has(message->schedule.section[1][8], io));
    EXPECT_FALSE(has(message->schedule.section[1][8], md));

    // Every number but 1 stands for this form.
    message->scheduleFormat = 2;
    const auto block = [](const char *day, int begin, int end) {
        return std::string("<timeBlock><enable>1</enable><weekDay>") + day + "</weekDay><beginHour>" +
               std::to_string(begin) + "</beginHour><endHour>" + std::to_string(end) + "</endHour></timeBlock>";
    };
    std::string none = block("Sunday", 0, 23) + block("Monday", 0, 7) + block("Monday", 10, 23);
    for (const char *day : {"Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"})
        none += block(day, 0, 23);
    EXPECT_EQ(message.write(net_record_schedule_s2x),
              "<Record version=\"1.1\"><channelId>0</channelId><enable>0</enable><ScheduleList>"
              "<Schedule><alarmType>IO</alarmType><timeBlockList>" +
                  block("Monday", 8, 9) +
                  "</timeBlockList></Schedule><Schedule><alarmType>none</alarmType>"
                  "<timeBlockList>" +
                  none + "</timeBlockList></Schedule></ScheduleList></Record>");
}

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

TEST_F(RecodeTest, ScheduleExamplesComeBack)
{
    for (const char *name : {"record_schedule_types", "record_schedule_combinations"}) {
        Xml document(example(name));
        Envelope<Schedule> first(nets_param_rec_schedule_init), second(nets_param_rec_schedule_init);
        ASSERT_EQ(net_record_schedule_x2s(&first.param, message_of(document)), 0) << name;
        // "IO,MD" in the one example is read as the one type MD, which is all that the other one has at this hour.
        EXPECT_TRUE(has(first->schedule.section[1][18], md)) << name;
        EXPECT_FALSE(has(first->schedule.section[1][18], io)) << name;
        Xml again(first.write(net_record_schedule_s2x));
        ASSERT_EQ(net_record_schedule_x2s(&second.param, again), 0) << name;
        EXPECT_EQ(std::memcmp(first.payload(), second.payload(), sizeof(Schedule)), 0) << name;
    }
}

// Timing ------------------------------------------------------------------------------------------

TEST_F(RecodeTest, TimingIsRead)
{
    Envelope<net_record_cfg_v20_t> message(nets_param_rec_init, test::channel(2));
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(
                      message.read(nets_rec_x2s,
                                   "<RecordCfg><channelId>63</channelId><cycle>1</cycle>"
                                   "<recordDelayTime>30</recordDelayTime><preRecordTime>5</preRecordTime>"
                                   "<packageTime>60</packageTime><foo>1</foo><cyclelist><item>7</item>"
                                   "<time>14</time><other>3</other></cyclelist><timeList><time>10</time></timeList>"
                                   "<recordAbility>3</recordAbility><recordMaxTime>600</recordMaxTime>"
                                   "<recordMinTime>-10</recordMinTime></RecordCfg>"),
                      0);
              }),
              "<red net_xml_recode.cpp>not parse this node :foo");
    EXPECT_EQ(message->channelId, 63);
    EXPECT_EQ(message->cycle, 1);
    EXPECT_EQ(message->recordDelayTime, 30);
    EXPECT_EQ(message->preRecordTime, 5);
    EXPECT_EQ(message->packageTime, 60);
    EXPECT_EQ(message->recordAbility, 3);
    EXPECT_EQ(message->recordMaxTime, 600);
    EXPECT_EQ(message->recordMinTime, -10);
    EXPECT_EQ(message->cyclelist.count, 2);
    EXPECT_EQ(message->cyclelist.time[0], 7);
    EXPECT_EQ(message->cyclelist.time[1], 14);
    EXPECT_EQ(message->timeList.count, 1);
    EXPECT_EQ(message->timeList.time[0], 10);
    EXPECT_EQ(message.param.inited, 1u);
    EXPECT_EQ(message.write(net_record_cfg_s2x),
              "<RecordCfg version=\"1.1\"><cycle>1</cycle><recordDelayTime>30</recordDelayTime>"
              "<preRecordTime>5</preRecordTime><packageTime>60</packageTime></RecordCfg>");
    EXPECT_EQ(message.read(nets_rec_x2s, "<RecordCfg><channelId>64</channelId></RecordCfg>"), -1);
    EXPECT_EQ(message->channelId, 64);

    Xml document(example("record_configuration"));
    EXPECT_EQ(log_of([&] { EXPECT_EQ(nets_rec_x2s(&message.param, message_of(document)), 0); }), "");
    EXPECT_EQ(message->cyclelist.count, 6);
    EXPECT_EQ(message->timeList.time[3], 120);
}

TEST_F(RecodeTest, AbbreviationsGoToTheFirstKeyTheyBegin)
{
    Envelope<net_record_cfg_v20_t> message(nets_param_rec_init);
    ASSERT_EQ(message.read(nets_rec_x2s, "<R><c>9</c><cy>2</cy><record>3</record><recordM>4</recordM>"
                                         "<cyclel><t>5</t><i>6</i></cyclel></R>"),
              0);
    EXPECT_EQ(message->channelId, 9);
    EXPECT_EQ(message->cycle, 2);
    EXPECT_EQ(message->recordDelayTime, 3);
    EXPECT_EQ(message->recordMaxTime, 4);
    EXPECT_EQ(message->recordMinTime, 0);
    EXPECT_EQ(message->cyclelist.count, 2);
    EXPECT_EQ(message->cyclelist.time[1], 6);
}

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
    EXPECT_EQ(get_recordTimeList_from_xmlnode(nullptr, many, nullptr), -1);
    EXPECT_EQ(get_recordTimeList_from_xmlnode(&list, nullptr, nullptr), -1);
    EXPECT_EQ(list.count, 1);
}

// Switch ------------------------------------------------------------------------------------------

TEST_F(RecodeTest, SwitchBothWays)
{
    Envelope<net_record_enable_t> message(prepared<net_record_enable_t>);
    const std::string body = "<enable>-9223372036854775808</enable><mainSwitch>1</mainSwitch>";
    ASSERT_EQ(message.read(nets_record_enable_x2s, "<R>" + body + "</R>"), 0);
    EXPECT_EQ(message->enable, -9223372036854775807LL - 1);
    EXPECT_EQ(message->mainSwitch, 1);
    EXPECT_EQ(message.param.inited, 1u);
    EXPECT_EQ(message.write(nets_record_enable_s2x), "<RecordEnable version=\"1.1\">" + body + "</RecordEnable>");
    for (const char *refused : {"<enable>-92233720368547758080</enable>", "<mainSwitch>on</mainSwitch>"})
        EXPECT_EQ(
            log_of([&] { EXPECT_EQ(message.read(nets_record_enable_x2s, std::string("<R>") + refused + "</R>"), -1); }),
            "func:nets_record_enable_x2s  line:#------------>\n");
}

// Encrypted recordings ----------------------------------------------------------------------------

TEST_F(RecodeTest, KeyAndPrompt)
{
    using Payload = net_record_key_and_prompt_t;
    Envelope<Payload> message(prepared<Payload>);
    message->pwdValid = 3;
    ASSERT_EQ(message.read(net_param_record_key_and_prompt_x2s,
                           "<R><key>" + std::string(63, 'k') + "</key><prompt>" + std::string(255, 'p') +
                               "</prompt><enable>1</enable><mode>2</mode><pwdValid>9</pwdValid></R>"),
              0);
    EXPECT_EQ(message->key, std::string(63, 'k'));
    EXPECT_EQ(message->prompt, std::string(255, 'p'));
    EXPECT_EQ(message->enable, 1);
    EXPECT_EQ(message->mode, 2);
    EXPECT_EQ(message->pwdValid, 3); // written only
    EXPECT_EQ(message.write(net_param_record_key_and_prompt_s2x),
              "<RecEncCfg version=\"1.1\"><enable>1</enable><pwdValid>3</pwdValid></RecEncCfg>");
    EXPECT_EQ(message.read(net_param_record_key_and_prompt_x2s, "<R><key>" + std::string(64, 'k') + "</key></R>"), -1);
    EXPECT_STREQ(message->key, "");
    EXPECT_EQ(
        message.read(net_param_record_key_and_prompt_x2s, "<R><prompt>" + std::string(256, 'p') + "</prompt></R>"), -1);
}

TEST_F(RecodeTest, DecryptKeyAndItsPrompt)
{
    Envelope<net_record_decrypt_key_t> key(prepared<net_record_decrypt_key_t>);
    ASSERT_EQ(key.read(net_param_record_decrypt_key_x2s,
                       "<R><key>secret</key><fileName>" + std::string(255, 'f') + "</fileName><type>-1</type></R>"),
              0);
    EXPECT_STREQ(key->key, "secret");
    EXPECT_EQ(key->fileName, std::string(255, 'f'));
    EXPECT_EQ(key->type, -1);
    EXPECT_EQ(key.read(net_param_record_decrypt_key_x2s, "<R><key>" + std::string(64, 'k') + "</key></R>"), -1);
    EXPECT_EQ(key.read(net_param_record_decrypt_key_x2s, "<R><fileName>" + std::string(256, 'f') + "</fileName></R>"),
              -1);

    Envelope<net_record_prompt_t> prompt(prepared<net_record_prompt_t>);
    std::strcpy(prompt->fileName, "a<b.mp4");
    std::memset(prompt->prompt, 'p', sizeof prompt->prompt); // unterminated
    EXPECT_EQ(prompt.write(net_rec_prompt_s2x), "<RecordPrompt version=\"1.1\"><prompt>" + std::string(256, 'p') +
                                                    "</prompt><fileName>a&lt;b.mp4</fileName></RecordPrompt>");
}

// Manual recording, deletion ----------------------------------------------------------------------

TEST_F(RecodeTest, ManualAndDelayedRecording)
{
    Envelope<net_manual_rec_t> manual(net_param_manual_rec_init, test::channel(4));
    ASSERT_EQ(manual.read(net_manual_rec_x2s, "<R><stat>1</stat><duration>300</duration></R>"), 0);
    EXPECT_EQ(manual->channelId, 4);
    EXPECT_EQ(manual->stat, 1);
    EXPECT_EQ(manual->duration, 300);
    ASSERT_EQ(manual.read(net_manual_rec_x2s, "<R><channelId>-7</channelId></R>"), 0);
    EXPECT_EQ(manual->channelId, -7);
    EXPECT_EQ(manual.read(net_manual_rec_x2s, "<R><stat>start</stat></R>"), -1);

    Envelope<net_delay_rec_stat_t> delayed(net_param_delay_rec_stat_init);
    ASSERT_EQ(delayed.read(net_delay_rec_stat_x2s, "<R><delayRecStat>2</delayRecStat></R>"), 0);
    EXPECT_EQ(delayed->delayRecStat, 2);
    EXPECT_EQ(delayed.read(net_delay_rec_stat_x2s, "<R><delayRecStat/></R>"), -1);
}

TEST_F(RecodeTest, Deletion)
{
    Envelope<net_delete_record_file_t> message(prepared<net_delete_record_file_t>);
    Xml document(example("record_deletion"));
    ASSERT_EQ(net_delete_record_file_x2s(&message.param, message_of(document)), 0);
    EXPECT_EQ(message->chnbits, 0x8000000000000003ULL);
    EXPECT_EQ(message->streamType, 0);
    EXPECT_EQ(message->bmerge, 1);
    EXPECT_EQ(message->startTime.month, 3);
    EXPECT_EQ(message->startTime.day, 1);
    EXPECT_EQ(message->endTime.day, 18);
    EXPECT_EQ(message->endTime.second, 59);
    EXPECT_EQ(message.read(net_delete_record_file_x2s, "<D><streamType>5</streamType></D>"), -1);
    EXPECT_EQ(message->streamType, 5);
    EXPECT_EQ(message.read(net_delete_record_file_x2s, "<D><endTime><hour>24</hour></endTime></D>"), -1);
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(message.read(net_delete_record_file_x2s,
                                         "<D><streamType>4</streamType><force>1</force><all/></D>"),
                            0);
              }),
              "<red net_xml_recode.cpp>not parse this node :force<red net_xml_recode.cpp>not parse this node :all");
}

// Arguments ---------------------------------------------------------------------------------------

TEST_F(RecodeTest, MissingArguments)
{
    net_param_t empty = {};
    TiXmlElement element("body");
    // Only the schedule's parser says so.
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_record_schedule_x2s(&empty, &element), -1); }),
              "<red net_xml_recode.cpp>Func(net_record_schedule_x2s) Line(#) \n");
    for (const test::Parser parser :
         {nets_rec_x2s, nets_record_enable_x2s, net_param_record_key_and_prompt_x2s, net_param_record_decrypt_key_x2s,
          net_manual_rec_x2s, net_delay_rec_stat_x2s, net_delete_record_file_x2s})
        EXPECT_EQ(log_of([&] {
                      EXPECT_EQ(parser(&empty, &element), -1);
                      EXPECT_EQ(parser(nullptr, &element), -1);
                  }),
                  "");
    const struct {
        test::Writer write;
        const char *name;
    } writers[] = {{net_record_schedule_s2x, "net_record_schedule_s2x"},
                   {net_record_cfg_s2x, "net_record_cfg_s2x"},
                   {nets_record_enable_s2x, "nets_record_enable_s2x"},
                   {net_param_record_key_and_prompt_s2x, "net_param_record_key_and_prompt_s2x"},
                   {net_rec_prompt_s2x, "net_rec_prompt_s2x"}};
    for (const auto &writer : writers)
        EXPECT_EQ(log_of([&] { EXPECT_EQ(writer.write(&empty, &element), -1); }),
                  std::string("<red net_xml_recode.cpp>Func(") + writer.name + ") Line(#) \n");
    EXPECT_EQ(element.FirstChild(), nullptr);
}

} // namespace
