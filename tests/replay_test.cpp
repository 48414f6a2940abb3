#include "support.h"

#include <net_public.h>

#include <cstring>
#include <string>

namespace {

using test::Envelope;
using test::log_of;
using test::Xml;

class ReplayTest : public test::HostTest {};

// The payload as the initialisers leave it: all zero.
template <class Payload> int prepare(net_param_t *param, net_ext_t *ext)
{
    return net_param_init_size_id(param, ext, sizeof(Payload), 1);
}

std::string repeat(const std::string &text, int times)
{
    std::string result;
    while (times-- > 0)
        result += text;
    return result;
}

void expect_time(const tag_net_time_v20_t &time, int year, int month, int day, int hour, int minute, int second)
{
    EXPECT_EQ(time.year, year);
    EXPECT_EQ(time.month, month);
    EXPECT_EQ(time.day, day);
    EXPECT_EQ(time.hour, hour);
    EXPECT_EQ(time.minute, minute);
    EXPECT_EQ(time.second, second);
}

const char *const time_children = "<year>2026</year><month>3</month><day>18</day><hour>12</hour><minute>30</minute>"
                                  "<second>5</second>";
constexpr tag_net_time_v20_t noon = {2026, 3, 18, 12, 30, 5};

std::string time_element(const std::string &name)
{
    return "<" + name + ">" + time_children + "</" + name + ">";
}

// Day records -----------------------------------------------------------------------------------

using DayRecords = Envelope<tag_net_recfile_schedule_v20_t>;

TEST_F(ReplayTest, DayRecordsAreRead)
{
    DayRecords message(net_param_day_record_init);
    message->records[1].channelId = 9;
    EXPECT_EQ(message.read(net_day_rec_x2s,
                           "<DayRecords>" + time_element("startTime") +
                               "<endTime><year>2026</year><month>4</month></endTime>"
                               "<DayRecordList><index>0</index>"
                               "<dayrecord><channelId>5</channelId><uid>0123456789012345678901234567890</uid>"
                               "<dayTypeList><dayType><index>0</index><type>normal</type></dayType>"
                               "<DAYTYPE><type>ALL</type><index>30</index></DAYTYPE>"
                               "<dayType><index>4</index><type>Alarm</type></dayType></dayTypeList></dayrecord>"
                               "<Day><channelId>6</channelId></Day></DayRecordList></DayRecords>"),
              0);
    expect_time(message->startTime, 2026, 3, 18, 12, 30, 5);
    expect_time(message->endTime, 2026, 4, 0, 0, 0, 0);
    const tag_net_rec_info_v20_t &record = message->records[0];
    EXPECT_EQ(record.channelId, 5);
    EXPECT_STREQ(record.uid, "0123456789012345678901234567890");
    EXPECT_EQ(record.dayType[0], 1);
    EXPECT_EQ(record.dayType[4], 2);
    EXPECT_EQ(record.dayType[30], 3);
    EXPECT_EQ(record.dayType[1], 0);
    EXPECT_EQ(message->records[1].channelId, -1) << "an answer with one record";
    EXPECT_EQ(message.param.inited, 2U);
}

TEST_F(ReplayTest, AFifthDayRecordIsIgnored)
{
    DayRecords message(net_param_day_record_init);
    std::string records;
    for (int channel = 1; channel <= 6; ++channel)
        records += "<DayRecord><channelId>" + std::to_string(channel) + "</channelId></DayRecord>";
    EXPECT_EQ(message.read(net_day_rec_x2s, "<D><DayRecordList>" + records + "</DayRecordList></D>"), 0);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(message->records[i].channelId, i + 1);
}

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
    EXPECT_EQ(log_of([&] { read("<uid>" + repeat("u", 32) + "</uid>"); }), "") << "only these two are logged";

    tag_net_recfile_schedule_v20_t schedule{};
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_day_record_list_from_xmlnode(&schedule, nullptr), -1); }), line);
    EXPECT_EQ(log_of([] { EXPECT_EQ(get_day_record_list_from_xmlnode(nullptr, Xml("<x/>")), -1); }), line);
}

TEST_F(ReplayTest, TheMonthEndsAfterItsDays)
{
    tag_net_rec_info_v20_t record{};
    const std::string day = "<dayType><index>2</index><type>alarm</type></dayType>";
    EXPECT_EQ(get_day_type_list_from_xmlnode(&record, Xml("<l>" + repeat(day, 31) + "<other/></l>")), 0);
    EXPECT_EQ(get_day_type_list_from_xmlnode(&record, Xml("<l>" + repeat(day, 30) + "<other/></l>")), -1);
    EXPECT_EQ(get_day_type_list_from_xmlnode(nullptr, Xml("<l/>")), -1);
    EXPECT_EQ(record.dayType[2], 2);
}

TEST_F(ReplayTest, DayRecordsAreWritten)
{
    DayRecords message(net_param_day_record_init);
    message->startTime = {2026, 3, 1, 0, 0, 0};
    message->endTime = {2026, 3, 31, 23, 59, 59};
    message->records[0].channelId = 5;
    message->records[0].dayType[0] = 1;
    message->records[0].dayType[29] = 2;
    message->records[0].dayType[30] = 3;
    message->records[1].dayType[3] = 3;
    message->records[1].dayType[4] = -1;
    message->records[1].dayType[5] = 3;
    message->records[2].channelId = -1;
    EXPECT_EQ(message.write(net_day_rec_s2x),
              "<DayRecords version=\"1.1\"><startTime><year>2026</year><month>3</month><day>1</day><hour>0</hour>"
              "<minute>0</minute><second>0</second></startTime><endTime><year>2026</year><month>3</month><day>31</day>"
              "<hour>23</hour><minute>59</minute><second>59</second></endTime><DayRecordList><DayRecord>"
              "<index>0</index><channelId>5</channelId><dayTypeList>"
              "<dayType><index>0</index><type>normal</type></dayType>"
              "<dayType><index>29</index><type>alarm</type></dayType>"
              "<dayType><index>30</index><type>all</type></dayType></dayTypeList></DayRecord><DayRecord>"
              "<index>1</index><channelId>0</channelId><dayTypeList>"
              "<dayType><index>3</index><type>all</type></dayType></dayTypeList></DayRecord></DayRecordList>"
              "</DayRecords>");

    message->records[1].dayType[2] = 4;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_day_rec_s2x), "failed"); }),
              "<red net_xml_replay.cpp>Func(net_day_rec_s2x) Line(#) [1]cRecType[2]=4\n");
    message.param.dataSize = 687;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_day_rec_s2x), "failed"); }),
              "<red net_xml_replay.cpp>func:net_day_rec_s2x line:#\n");
}

// File search -----------------------------------------------------------------------------------

using FileSearch = Envelope<tag_net_file_info_v20_t>;

TEST_F(ReplayTest, AFileSearchIsRead)
{
    FileSearch message(prepare<tag_net_file_info_v20_t>);
    const std::string id(255, 'i');
    EXPECT_EQ(message.read(net_file_info_list_x2s,
                           "<FileInfoList><FileInfo><channelId>1</channelId><streamType>externStream</streamType>"
                           "<supportSub>1</supportSub><handle>-7</handle><name>0123456789012345678901234567890</name>"
                           "<typeExtension>8</typeExtension><recordType>MD,pir</recordType><sizeL>4294967295</sizeL>"
                           "<sizeH>3</sizeH><FileCount>2</FileCount>" +
                               time_element("startTime") + time_element("endTime") +
                               "<containsAudio>1</containsAudio><fileType>FLV</fileType><playSpeed>32</playSpeed>"
                               "<uid>cam</uid><Id>" +
                               id +
                               "</Id><logicChnBitmap>18446744073709551615</logicChnBitmap></FileInfo>"
                               "<FileInfo><channelId>2</channelId></FileInfo></FileInfoList>"),
              0);
    EXPECT_EQ(message->channelId, 1) << "only the first child is read";
    EXPECT_EQ(message->streamType, 4);
    EXPECT_EQ(message->supportSub, 1);
    EXPECT_EQ(message->handle, -7);
    EXPECT_STREQ(message->name, "0123456789012345678901234567890");
    EXPECT_EQ(message->typeExtension, 8);
    EXPECT_EQ(message->recordType, 0x84);
    EXPECT_EQ(message->sizeL, 4294967295U);
    EXPECT_EQ(message->sizeH, 3U);
    EXPECT_EQ(message->FileCount, 2);
    expect_time(message->startTime, 2026, 3, 18, 12, 30, 5);
    expect_time(message->endTime, 2026, 3, 18, 12, 30, 5);
    EXPECT_EQ(message->containsAudio, 1);
    EXPECT_EQ(message->fileType, 2);
    EXPECT_EQ(message->playSpeed, 32);
    EXPECT_STREQ(message->uid, "cam");
    EXPECT_EQ(message->Id, id);
    EXPECT_EQ(message->logicChnBitmap, ~0ULL);
    EXPECT_EQ(message.param.inited, 2U);
}

TEST_F(ReplayTest, AnEmptyFileSearchIsOverAtOnce)
{
    FileSearch message(prepare<tag_net_file_info_v20_t>);
    EXPECT_EQ(message.read(net_file_info_list_x2s, "<FileInfoList/>"), 0);
    EXPECT_EQ(message->playSpeed, 0);
    EXPECT_EQ(message.param.inited, 1U);
    EXPECT_EQ(message.read(net_file_info_list_x2s, "<FileInfoList><other/><FileInfo/></FileInfoList>"), -1);
    EXPECT_EQ(message.read(net_file_info_list_x2s, "<FileInfoList><file/></FileInfoList>"), 0);
    EXPECT_EQ(message->playSpeed, 1);
    message.param.dataSize = 431;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_file_info_list_x2s, "<FileInfoList/>"), -1); }),
              "<red net_xml_replay.cpp>Func(net_file_info_list_x2s) Line(#) \n");
}

int record_type_of(const char *text, int result = 0)
{
    tag_net_file_info_v20_t info{};
    info.recordType = 0x10;
    EXPECT_EQ(_get_file_info(&info, Xml("<f><recordType>" + std::string(text) + "</recordType></f>"), nullptr), result)
        << text;
    return info.recordType;
}

TEST_F(ReplayTest, RecordTypesAreFoundAnywhereInTheText)
{
    EXPECT_EQ(record_type_of("none"), 0);
    EXPECT_EQ(record_type_of(""), 0);
    EXPECT_EQ(record_type_of("unknown"), 0);
    EXPECT_EQ(record_type_of("intrusion"), 0x2008);
    EXPECT_EQ(record_type_of("videoloss"), 0x10000);
    EXPECT_EQ(record_type_of("manual sched PEOPLE;vehicle face"), 0x73);
    EXPECT_EQ(record_type_of("other,dog_cat,visitor,package,crossline,loitering,legacy,cry"), 0x2df00);
    record_type_of("none,md", -1);
    record_type_of(std::string(128, 'x').c_str(), -1);
    record_type_of(std::string(127, 'x').c_str());
}

TEST_F(ReplayTest, FileInformationIsBounded)
{
    tag_net_file_info_v20_t info{};
    info.fileType = 7;
    info.streamType = 2;
    EXPECT_EQ(_get_file_info(&info, Xml("<f><fileType>avi</fileType></f>"), nullptr), 0);
    EXPECT_EQ(info.fileType, 7);
    EXPECT_EQ(_get_file_info(&info, Xml("<f><fileType>mp</fileType><streamType>snapStream</streamType></f>"), nullptr),
              0);
    EXPECT_EQ(info.fileType, 7);
    EXPECT_EQ(info.streamType, 0);
    EXPECT_EQ(_get_file_info(&info, Xml("<f><playSpeed>33</playSpeed></f>"), nullptr), -1);
    EXPECT_EQ(info.playSpeed, 33);
    for (const std::string bad :
         {"<channelId>-1</channelId>", "<FileCount>-1</FileCount>", "<playSpeed>-1</playSpeed>",
          "<containsAudio>2</containsAudio>", "<supportSub>yes</supportSub>",
          "<streamType>0123456789012345678901234567890</streamType>", "<startTime><month>0</month></startTime>",
          "<uid>01234567890123456789012345678901</uid>", "<name>01234567890123456789012345678901</name>"})
        EXPECT_EQ(_get_file_info(&info, Xml("<f>" + bad + "</f>"), nullptr), -1) << bad;
    EXPECT_EQ(_get_file_info(&info, Xml("<f><Id>" + std::string(256, 'i') + "</Id></f>"), nullptr), -1);

    EXPECT_EQ(_get_file_info(&info, Xml("<Fil><channelId>4</channelId></Fil>"), "FileInfo"), 0);
    EXPECT_EQ(info.channelId, 4);
    EXPECT_EQ(_get_file_info(&info, Xml("<FileInfos/>"), "FileInfo"), -1);
    EXPECT_EQ(_get_file_info(nullptr, Xml("<FileInfo/>"), "FileInfo"), -1);
    EXPECT_EQ(_get_file_info(&info, nullptr, "FileInfo"), -1);
}

TEST_F(ReplayTest, AFoundFileIsWritten)
{
    FileSearch message(prepare<tag_net_file_info_v20_t>);
    message->channelId = -3;
    message->handle = 12;
    std::memset(message->name, 'n', sizeof message->name); // not terminated
    message->containsAudio = 5;
    message->recordType = 0x3ffff;
    message->sizeL = 4294967295U;
    message->sizeH = 1;
    message->startTime = message->endTime = noon;
    EXPECT_EQ(message.write(net_file_info_list_s2x),
              "<FileInfoList version=\"1.1\"><FileInfo><channelId>-3</channelId><handle>12</handle><name>" +
                  repeat("n", 32) +
                  "</name><containsAudio>1</containsAudio>"
                  "<recordType>manual,io,md,pir,sched,people,vehicle,face,other,dog_cat,visitor,package,intrusion,"
                  "loitering,legacy,loss,cry</recordType><supportSub>1</supportSub><sizeL>4294967295</sizeL>"
                  "<sizeH>1</sizeH>" +
                  time_element("startTime") + time_element("endTime") + "</FileInfo></FileInfoList>");

    const auto record_type = [&](int mask) {
        message->recordType = mask;
        const std::string text = message.write(net_file_info_list_s2x);
        const std::size_t begin = text.find("</containsAudio>") + std::strlen("</containsAudio>");
        return text.substr(begin, text.find("<supportSub>") - begin);
    };
    EXPECT_EQ(record_type(0), "<recordType>none</recordType>");
    EXPECT_EQ(record_type(0x1004), "<recordType>md</recordType>");
    EXPECT_EQ(record_type(0x1000), "<recordType></recordType>") << "crossing lines has no word to write";
    message.param.dataSize = 1;
    EXPECT_EQ(message.write(net_file_info_list_s2x), "failed");
}

TEST_F(ReplayTest, TheClientReadsWhatIsWritten)
{
    FileSearch file(prepare<tag_net_file_info_v20_t>);
    file->channelId = 1;
    file->streamType = 4;
    file->handle = 2;
    std::strcpy(file->name, "film");
    std::strcpy(file->Id, "identity");
    std::strcpy(file->uid, "cam");
    file->startTime = file->endTime = noon;
    file->recordType = 0x12;
    file->typeExtension = 3;
    file->sizeL = 4;
    file->sizeH = 5;
    file->supportSub = file->containsAudio = 1;
    file->fileType = 1;
    file->playSpeed = 6;
    file->FileCount = 7;
    file->logicChnBitmap = 8;
    const std::string text = file.write(net_file_file_s2x);
    EXPECT_EQ(text, "<FileInfo version=\"1.1\"><channelId>1</channelId><streamType>externStream</streamType>"
                    "<supportSub>1</supportSub><handle>2</handle><name>film</name><typeExtension>3</typeExtension>"
                    "<recordType>sched,people</recordType><sizeL>4</sizeL><sizeH>5</sizeH><FileCount>7</FileCount>" +
                        time_element("startTime") + time_element("endTime") +
                        "<containsAudio>1</containsAudio><fileType>mp4</fileType><playSpeed>6</playSpeed>"
                        "<uid>cam</uid><Id>identity</Id><logicChnBitmap>8</logicChnBitmap></FileInfo>");

    FileSearch client(prepare<tag_net_file_info_v20_t>);
    EXPECT_EQ(client.read(netc_file_info_list_x2s, "<FileInfoList>" + text + "<FileInfo/></FileInfoList>"), 0);
    EXPECT_EQ(std::memcmp(client.payload(), file.payload(), sizeof *file), 0);
    EXPECT_EQ(client.param.inited, 1U);
    EXPECT_EQ(client.read(netc_file_info_list_x2s, "<FileInfoList/>"), 0);
    EXPECT_EQ(client.read(netc_file_info_list_x2s, "<FileInfoList><other/></FileInfoList>"), -1);

    file->streamType = 3;
    EXPECT_EQ(file.write(net_file_file_s2x), "failed");
}

// Replay ----------------------------------------------------------------------------------------

TEST_F(ReplayTest, ASeekStartsFromAnEmptyPayload)
{
    Envelope<net_replay_seek_v20_t> message(prepare<net_replay_seek_v20_t>);
    std::memset(message.payload(), 0x5a, sizeof *message);
    EXPECT_EQ(message.read(net_replay_seek_x2s, "<s><seekTime><hour>7</hour></seekTime><seq>-4</seq></s>"), 0);
    EXPECT_EQ(message->channelId, 0);
    expect_time(message->seekTime, 0, 0, 0, 7, 0, 0);
    EXPECT_EQ(message->seq, -4);
    EXPECT_EQ(message.param.inited, 2U);
    EXPECT_EQ(message.read(net_replay_seek_x2s, "<s><seq>1</seq><channelId>-2</channelId></s>"), -1);
    EXPECT_EQ(message->channelId, -2);
    EXPECT_EQ(message->seq, 1);
}

TEST_F(ReplayTest, PeriodsAreSplitIntoBytes)
{
    net_replay_period_v20_t period{};
    EXPECT_EQ(get_duration_item_from_xmlnode(&period,
                                             Xml("<i><s>3725</s><e>86399</e><offsetOfStart>-1</offsetOfStart>"
                                                 "<offsetOfEnd>300</offsetOfEnd></i>"),
                                             "i"),
              0);
    EXPECT_EQ(period.startHour, 1);
    EXPECT_EQ(period.startMinute, 2);
    EXPECT_EQ(period.startSecond, 5);
    EXPECT_EQ(period.offsetOfStart, 255);
    EXPECT_EQ(period.endHour, 23);
    EXPECT_EQ(period.endMinute, 59);
    EXPECT_EQ(period.endSecond, 59);
    EXPECT_EQ(period.offsetOfEnd, 44);
    EXPECT_EQ(get_duration_item_from_xmlnode(&period, Xml("<i><s>-1</s></i>"), nullptr), -1);
    EXPECT_EQ(get_duration_item_from_xmlnode(&period, Xml("<i><e>-1</e></i>"), nullptr), -1);
    EXPECT_EQ(get_duration_item_from_xmlnode(&period, Xml("<j/>"), "i"), -1);
    EXPECT_EQ(period.startHour, 1);

    unsigned char hour, minute, second;
    EXPECT_EQ(get_hms_from_pts(2147483647, &hour, &minute, &second), 0);
    EXPECT_EQ(hour, 596523 & 0xff);
    EXPECT_EQ(minute, 14);
    EXPECT_EQ(second, 7);
    EXPECT_EQ(get_hms_from_pts(0, &hour, nullptr, &second), -1);
}

TEST_F(ReplayTest, PeriodsBeyondAHundredAreLogged)
{
    net_replay_duration_v20_t duration{};
    duration.periodCount = 50;
    const std::string line = "<red net_xml_replay.cpp>get too many period, ignore others\n";
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(get_duration_times_from_xmlnode(&duration,
                                                            Xml("<times>" + repeat("<i><s>60</s></i>", 100) +
                                                                repeat("<i><s>x</s></i>", 2) + "</times>"),
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
                                    repeat("<duration><channelId>3</channelId></duration>", 3) +
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

TEST_F(ReplayTest, AReplayStartsWithOneStreamForAll)
{
    Envelope<net_new_replay_start_v20_t> message(prepare<net_new_replay_start_v20_t>);
    const std::string durations =
        "<durationList><duration><streamType>subStream</streamType></duration></durationList>";
    EXPECT_EQ(message.read(nets_param_new_replay_start_x2s, "<r><seq>3</seq>" + durations +
                                                                "<streamType>EXTERNSTREAM</streamType>"
                                                                "<playSpeed>32</playSpeed>" +
                                                                time_element("startTime") + "<sOffset>-8</sOffset>" +
                                                                time_element("endTime") + "<eOffset>9</eOffset></r>"),
              0);
    EXPECT_EQ(message->seq, 3);
    EXPECT_EQ(message->playSpeed, 32);
    EXPECT_EQ(message->streamType, 4);
    expect_time(message->startTime, 2026, 3, 18, 12, 30, 5);
    expect_time(message->endTime, 2026, 3, 18, 12, 30, 5);
    EXPECT_EQ(message->sOffset, -8);
    EXPECT_EQ(message->eOffset, 9);
    EXPECT_EQ(message->durationList.durationCount, 1);
    for (const auto &duration : message->durationList.durations)
        EXPECT_EQ(duration.streamType, 4);
    EXPECT_EQ(message.param.inited, 1U);

    EXPECT_EQ(message.read(nets_param_new_replay_start_x2s,
                           "<r><streamType>snapStream</streamType>" + durations + "<playSpeed>-5</playSpeed></r>"),
              0);
    EXPECT_EQ(message->streamType, 0);
    EXPECT_EQ(message->durationList.durations[0].streamType, 1) << "a later list keeps its own";
    EXPECT_EQ(message->durationList.durations[1].streamType, 0);
    EXPECT_EQ(message->seq, 3) << "not cleared";
    EXPECT_EQ(message->playSpeed, -5);
    EXPECT_EQ(message.read(nets_param_new_replay_start_x2s, "<r><playSpeed>33</playSpeed></r>"), -1);
    EXPECT_EQ(message.read(nets_param_new_replay_start_x2s, "<r><stre>" + repeat("x", 31) + "</stre></r>"), -1);
}

TEST_F(ReplayTest, ASeekOfSeveralChannels)
{
    Envelope<net_new_replay_seek_v20_t> message(prepare<net_new_replay_seek_v20_t>);
    std::memset(message.payload(), 0x5a, sizeof *message);
    EXPECT_EQ(message.read(nets_param_new_replay_seek_x2s,
                           "<r>" + time_element("seekTime") +
                               "<seq>6</seq><durationList><day>2</day><duration><times><i/></times></duration>"
                               "</durationList></r>"),
              0);
    expect_time(message->seekTime, 2026, 3, 18, 12, 30, 5);
    EXPECT_EQ(message->seq, 6);
    EXPECT_EQ(message->durationList.day, 2);
    EXPECT_EQ(message->durationList.year, 0) << "cleared first";
    EXPECT_EQ(message->durationList.durationCount, 1);
    EXPECT_EQ(message->durationList.durations[0].periodCount, 1);
    EXPECT_EQ(message->durationList.durations[3].channelId, 0);
    EXPECT_EQ(message.param.inited, 1U);
}

// Deletion and cover pictures -------------------------------------------------------------------

TEST_F(ReplayTest, FortyFilesAreDeletedAtOnce)
{
    Envelope<net_rec_del_v20_t> message(prepare<net_rec_del_v20_t>);
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

TEST_F(ReplayTest, CoverPreviewTakesFortyFrames)
{
    Envelope<net_cover_preview_v20_t> message(prepare<net_cover_preview_v20_t>);
    EXPECT_EQ(message.read(net_cover_preview_x2s,
                           "<c><channelId>-1</channelId><destination>2</destination>"
                           "<logicChnBitmap>3</logicChnBitmap><streamType>substream</streamType>" +
                               time_element("startTime") + time_element("endTime") +
                               "<uid>cam</uid><frameList><other>1</other><frameNo>-10</frameNo>" +
                               repeat("<frameNo>11</frameNo>", 39) + "<frameNo>bad</frameNo></frameList></c>"),
              0);
    EXPECT_EQ(message->channelId, -1);
    EXPECT_EQ(message->destination, 2);
    EXPECT_EQ(message->logicChnBitmap, 3ULL);
    EXPECT_EQ(message->streamType, 1);
    expect_time(message->startTime, 2026, 3, 18, 12, 30, 5);
    expect_time(message->endTime, 2026, 3, 18, 12, 30, 5);
    EXPECT_STREQ(message->uid, "cam");
    EXPECT_EQ(message->frameCount, 40);
    EXPECT_EQ(message->frameNo[0], -10);
    EXPECT_EQ(message->frameNo[39], 11);
    EXPECT_EQ(message.param.inited, 1U);
    EXPECT_EQ(message.read(net_cover_preview_x2s, "<c><frameList><frameNo>5</frameNo></frameList></c>"), 0);
    EXPECT_EQ(message->frameCount, 1);
    EXPECT_EQ(message.read(net_cover_preview_x2s, "<c><frameList><frameNo>bad</frameNo></frameList></c>"), -1);
}

TEST_F(ReplayTest, EveryParserChecksItsEnvelope)
{
    const struct {
        test::Parser parser;
        const char *name;
        unsigned int size;
    } parsers[] = {
        {net_day_rec_x2s, "net_day_rec_x2s", 688},
        {net_file_info_list_x2s, "net_file_info_list_x2s", 432},
        {netc_file_info_list_x2s, "netc_file_info_list_x2s", 432},
        {net_replay_seek_x2s, "net_replay_seek_x2s", 32},
        {net_rec_del_x2s, "net_rec_del_x2s", 10244},
        {net_cover_preview_x2s, "net_cover_preview_x2s", 272},
        {nets_param_new_replay_start_x2s, "nets_param_new_replay_start_x2s", 3512},
        {nets_param_new_replay_seek_x2s, "nets_param_new_replay_seek_x2s", 3472},
    };
    for (const auto &each : parsers) {
        net_param_t param;
        ASSERT_EQ(net_param_init_size_id(&param, nullptr, each.size, 1), 0);
        Xml body("<b/>");
        EXPECT_EQ(each.parser(&param, body), 0) << each.name;
        const std::string log = log_of([&] {
            param.dataSize = each.size + 1;
            EXPECT_EQ(each.parser(&param, body), -1);
            param.dataSize = each.size;
            EXPECT_EQ(each.parser(&param, nullptr), -1);
            EXPECT_EQ(each.parser(nullptr, body), -1);
            net_free(&param.data);
            EXPECT_EQ(each.parser(&param, body), -1);
        });
        EXPECT_EQ(log, repeat("<red net_xml_replay.cpp>Func(" + std::string(each.name) + ") Line(#) \n", 4));
    }
}

} // namespace
