#include "support.h"

#include <net_public.h>

#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

namespace {

using test::Envelope;
using test::log_of;

class TimelapseTest : public test::HostTest {};

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

int count_of(const std::string &text, const std::string &part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

std::string time_element(const std::string &name, int hour)
{
    return "<" + name + "><year>2026</year><month>3</month><day>18</day><hour>" + std::to_string(hour) +
           "</hour><minute>30</minute><second>5</second></" + name + ">";
}

bool is_at(const tag_net_time_v20_t &time, int hour)
{
    const tag_net_time_v20_t expected = {2026, 3, 18, hour, 30, 5};
    return std::memcmp(&time, &expected, sizeof time) == 0;
}

std::string red(const std::string &line)
{
    return "<red net_xml_timelapse.cpp>" + line + "\n";
}

// Configuration ---------------------------------------------------------------------------------

const std::string configuration_item =
    "<item><enable>1</enable><id>task</id><properties>" + std::string(127, 'p') +
    "</properties><saveLocation>2</saveLocation><taskType>mp4</taskType><neverEnd>3</neverEnd>"
    "<streamType>externStream</streamType><interval>4</interval><frameRate>5</frameRate>"
    "<buseThumbnail>6</buseThumbnail>" +
    time_element("startTime", 7) + time_element("endTime", 8) + "<duration>" + time_element("startTime", 9) +
    time_element("endTime", 10) + "<valid>11</valid></duration></item>";

TEST_F(TimelapseTest, AConfigurationGoesBothWays)
{
    Envelope<net_timelapse_cfg_t> message(nets_param_timelapse_cfg_init);
    EXPECT_EQ(message.read(net_timelapse_cfg_x2s, "<c><channelId>1</channelId><overwrite>2</overwrite>"
                                                  "<maxFileNum>99</maxFileNum>" +
                                                      configuration_item + "</c>"),
              0);
    EXPECT_EQ(message->channelId, 1);
    EXPECT_EQ(message->overwrite, 2);
    EXPECT_EQ(message->maxFileNum, 0) << "only written";
    const net_timelapse_cfg_item_t &item = message->item[0];
    EXPECT_EQ(item.enable, 1);
    EXPECT_STREQ(item.id, "task");
    EXPECT_EQ(item.properties, std::string(127, 'p'));
    EXPECT_EQ(item.saveLocation, 2);
    EXPECT_EQ(item.taskType, NET_TIMELAPSE_MP4);
    EXPECT_EQ(item.neverEnd, 3);
    EXPECT_EQ(item.streamType, 4);
    EXPECT_EQ(item.interval, 4);
    EXPECT_EQ(item.frameRate, 5);
    EXPECT_EQ(item.buseThumbnail, 6);
    EXPECT_TRUE(is_at(item.startTime, 7));
    EXPECT_TRUE(is_at(item.endTime, 8));
    EXPECT_EQ(item.durationCount, 1);
    EXPECT_TRUE(is_at(item.duration[0].startTime, 9));
    EXPECT_TRUE(is_at(item.duration[0].endTime, 10));
    EXPECT_EQ(item.duration[0].valid, 11);
    EXPECT_EQ(message.param.inited, 1U);

    message->maxFileNum = 12;
    EXPECT_EQ(message.write(net_timelapse_cfg_s2x), "<timelapseCfg version=\"1.1\"><channelId>1</channelId>"
                                                    "<overwrite>2</overwrite><maxFileNum>12</maxFileNum>" +
                                                        configuration_item + "</timelapseCfg>");
}

TEST_F(TimelapseTest, AbbreviationsGoToTheFirstKeyTheyBegin)
{
    Envelope<net_timelapse_cfg_t> message(nets_param_timelapse_cfg_init);
    EXPECT_EQ(message.read(net_timelapse_cfg_x2s, "<c><i><e>1</e><s>2</s><st>subStream</st><t>mp4</t><i>task</i>"
                                                  "<in>3</in><start><h>4</h></start><end><mi>5</mi></end>"
                                                  "<d><s><s>6</s></s><e><d>7</d></e><v>8</v></d></i></c>"),
              0);
    const net_timelapse_cfg_item_t &item = message->item[0];
    EXPECT_EQ(item.enable, 1);
    EXPECT_EQ(item.saveLocation, 2);
    EXPECT_EQ(item.streamType, 1);
    EXPECT_EQ(item.taskType, NET_TIMELAPSE_MP4);
    EXPECT_STREQ(item.id, "task");
    EXPECT_EQ(item.interval, 3);
    EXPECT_EQ(item.startTime.hour, 4);
    EXPECT_EQ(item.endTime.minute, 5);
    EXPECT_EQ(item.duration[0].startTime.second, 6);
    EXPECT_EQ(item.duration[0].endTime.day, 7);
    EXPECT_EQ(item.duration[0].valid, 8);
}

TEST_F(TimelapseTest, WhatAConfigurationDoesNotHoldIsLogged)
{
    Envelope<net_timelapse_cfg_t> message(nets_param_timelapse_cfg_init);
    const std::string items = "<item><id>first</id>" + repeat("<duration><valid>1</valid></duration>", 4) +
                              "<duration><valid>x</valid></duration><neverEnd>1</neverEnd></item>"
                              "<item><id>second</id></item><item><id>third</id></item>";
    const std::string more = red("func:net_timelapse_cfg_x2s line:# too many items");
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(message.read(net_timelapse_cfg_x2s, "<c>" + items + "<overwrite>5</overwrite></c>"), 0);
              }),
              red("func:net_timelapse_cfg_x2s line:# too many durations") + more + more);
    EXPECT_STREQ(message->item[0].id, "first");
    EXPECT_EQ(message->item[0].durationCount, 4);
    EXPECT_EQ(message->item[0].duration[3].valid, 1);
    EXPECT_EQ(message->item[0].neverEnd, 1) << "the walk goes on";
    EXPECT_EQ(message->overwrite, 5);
}

TEST_F(TimelapseTest, UnknownWordsOfAConfiguration)
{
    Envelope<net_timelapse_cfg_t> message(nets_param_timelapse_cfg_init);
    const auto read = [&](const std::string &child, int expected) {
        return log_of([&] {
            EXPECT_EQ(message.read(net_timelapse_cfg_x2s, "<c><item>" + child + "</item></c>"), expected) << child;
        });
    };
    EXPECT_EQ(read("<taskType>avi</taskType><streamType>snapStream</streamType><interval>9</interval>", 0),
              red("timelapse file type err:avi") + red("timelapse stream type err:snapStream"));
    EXPECT_EQ(message->item[0].taskType, NET_TIMELAPSE_JPEG);
    EXPECT_EQ(message->item[0].streamType, 0);
    EXPECT_EQ(message->item[0].interval, 9);
    EXPECT_EQ(read("<taskType>MP</taskType>", 0), red("timelapse file type err:MP")) << "no abbreviations";
    EXPECT_EQ(read("<taskType>MP4</taskType><streamType>MOBILESTREAM</streamType>", 0), "");
    EXPECT_EQ(message->item[0].taskType, NET_TIMELAPSE_MP4);
    EXPECT_EQ(message->item[0].streamType, 2);

    // One line, however deep the failure is.
    const std::string failed = red("func:net_timelapse_cfg_x2s line:#");
    EXPECT_EQ(read("<taskType>" + std::string(32, 't') + "</taskType>", -1), failed);
    EXPECT_EQ(read("<duration><startTime><month>13</month></startTime></duration>", -1), failed);
    EXPECT_EQ(read("<id>" + std::string(32, 'i') + "</id>", -1), failed);

    message->item[0].streamType = 3;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_timelapse_cfg_s2x), "failed"); }),
              red("timelapse xml stream type err:3"));
    message->item[0].taskType = -2;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_timelapse_cfg_s2x), "failed"); }),
              red("timelapse xml file type err:-2"));
}

// Calendar and tasks ----------------------------------------------------------------------------

TEST_F(TimelapseTest, ACalendarHoldsTenYears)
{
    Envelope<net_timelapse_date_t> message(prepare<net_timelapse_date_t>);
    const std::string table(372, '1');
    const std::string head = "<channelId>1</channelId><uid>cam</uid><id>task</id>";
    const std::string item = "<item><year>2026</year><dateTable>" + table + "</dateTable></item>";
    EXPECT_EQ(
        log_of([&] { EXPECT_EQ(message.read(net_timelapse_date_x2s, "<d>" + repeat(item, 11) + head + "</d>"), 0); }),
        red("func:net_timelapse_date_x2s line:# too many items"));
    EXPECT_EQ(message->channelId, 1);
    EXPECT_STREQ(message->uid, "cam");
    EXPECT_STREQ(message->id, "task");
    EXPECT_EQ(message->itemCount, 10);
    EXPECT_EQ(message->item[9].year, 2026);
    EXPECT_EQ(message->item[9].dateTable, table);
    const auto written = [&](int items) {
        return "<timelapseDateTbl version=\"1.1\">" + head + repeat(item, items) + "</timelapseDateTbl>";
    };
    EXPECT_EQ(message.write(net_timelapse_date_s2x), written(10));
    message->itemCount = 1000; // whatever the host says
    EXPECT_EQ(message.write(net_timelapse_date_s2x), written(10));
    message->itemCount = -1;
    EXPECT_EQ(message.write(net_timelapse_date_s2x), written(0));
    EXPECT_EQ(message.read(net_timelapse_date_x2s, "<d><item><dateTable>" + table + "1</dateTable></item></d>"), -1);
}

TEST_F(TimelapseTest, TasksAndTheirStates)
{
    Envelope<net_timelapse_task_t> message(prepare<net_timelapse_task_t>);
    const std::string body = "<channelId>1</channelId><uid>cam</uid>"
                             "<item><id>a</id><taskType>jpeg</taskType><properties>x</properties>"
                             "<taskState>RUNNING</taskState></item>"
                             "<item><id>b</id><taskType>mp4</taskType><properties></properties>"
                             "<taskState>DELETING</taskState></item>"
                             "<item><id>c</id><taskType>mp4</taskType><properties></properties>"
                             "<taskState>IDLE</taskState></item>";
    EXPECT_EQ(message.read(net_timelapse_task_x2s, "<t>" + body + "</t>"), 0);
    EXPECT_EQ(message->itemCount, 3);
    EXPECT_STREQ(message->item[0].id, "a");
    EXPECT_EQ(message->item[0].taskType, NET_TIMELAPSE_JPEG);
    EXPECT_STREQ(message->item[0].properties, "x");
    EXPECT_EQ(message->item[0].taskState, NET_TIMELAPSE_RUNNING);
    EXPECT_EQ(message->item[1].taskState, NET_TIMELAPSE_DELETING);
    EXPECT_EQ(message->item[2].taskState, NET_TIMELAPSE_IDLE);
    EXPECT_EQ(message.write(net_timelapse_task_s2x), "<timelapseTasks version=\"1.1\">" + body + "</timelapseTasks>");

    message->item[2].taskState = 3;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_timelapse_task_s2x), "failed"); }),
              red("timelapse xml task state err:3"));
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(message.read(net_timelapse_task_x2s, "<t><item><taskState>run</taskState></item></t>"), -1);
              }),
              red("func:net_timelapse_task_x2s line:#"));

    const std::string line = red("func:net_timelapse_task_x2s line:# too many items");
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(
                      message.read(net_timelapse_task_x2s, "<t>" + repeat("<item><id>z</id></item>", 130) + "</t>"), 0);
              }),
              line + line);
    EXPECT_EQ(message->itemCount, 128);
    EXPECT_STREQ(message->item[127].id, "z");
}

// File search -----------------------------------------------------------------------------------

using Search = Envelope<net_timelapse_file_t>;

TEST_F(TimelapseTest, AFileSearchIsRead)
{
    Search message(prepare<net_timelapse_file_t>);
    EXPECT_EQ(message.read(net_timelapse_file_x2s,
                           "<s><channelId>1</channelId><uid>cam</uid><id>task</id><handle>2</handle>"
                           "<fromWhere>3</fromWhere>" +
                               time_element("startTime", 4) + time_element("endTime", 5) +
                               "<taskType>jpeg</taskType><totalNum>6</totalNum><finished>7</finished></s>"),
              0);
    EXPECT_EQ(message->channelId, 1);
    EXPECT_STREQ(message->uid, "cam");
    EXPECT_STREQ(message->id, "task");
    EXPECT_EQ(message->handle, 2);
    EXPECT_EQ(message->fromWhere, 3);
    EXPECT_TRUE(is_at(message->startTime, 4));
    EXPECT_TRUE(is_at(message->endTime, 5));
    EXPECT_EQ(message->taskType, NET_TIMELAPSE_JPEG);
    EXPECT_EQ(message->totalNum, 6);
    EXPECT_EQ(message->finished, 7);
    EXPECT_EQ(message->itemCount, 0);
    // The criteria are not part of what is written.
    EXPECT_EQ(message.write(net_timelapse_file_s2x),
              "<timelapseFileSearch version=\"1.1\"><channelId>1</channelId><handle>2</handle><totalNum>6</totalNum>"
              "<finished>7</finished><uid>cam</uid><id>task</id><taskType>jpeg</taskType></timelapseFileSearch>");
    message->taskType = 2;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_timelapse_file_s2x), "failed"); }),
              red("timelapse xml file type err:2"));
}

// The children of a search that found films or pictures.
std::string result_of(const std::string &type, const std::string &items)
{
    return "<timelapseFileSearch version=\"1.1\"><channelId>0</channelId><handle>0</handle><totalNum>0</totalNum>"
           "<finished>0</finished><uid></uid><id></id><taskType>" +
           type + "</taskType>" + items + "</timelapseFileSearch>";
}

const std::string film = "<item><original><id>i</id><fileName>f.mp4</fileName><resoHight>1080</resoHight>"
                         "<resowidth>1920</resowidth><size>18446744073709551615</size><duration>1</duration>"
                         "<frameRate>2</frameRate><encodeType>3</encodeType><needMuxMp4>4</needMuxMp4>"
                         "<encrypted>5</encrypted><generating>6</generating>" +
                         time_element("startTime", 7) + time_element("endTime", 8) + "</original></item>";

TEST_F(TimelapseTest, FilmsGoBothWays)
{
    Search message(prepare<net_timelapse_file_t>);
    EXPECT_EQ(message.read(net_timelapse_file_x2s, result_of("mp4", film)), 0);
    EXPECT_EQ(message->itemCount, 1);
    EXPECT_EQ(message->item[0].flags, NET_TIMELAPSE_FILE_ORIGINAL);
    const net_timelapse_original_t &original = message->item[0].original;
    EXPECT_STREQ(original.id, "i");
    EXPECT_STREQ(original.fileName, "f.mp4");
    EXPECT_EQ(original.resoHight, 1080);
    EXPECT_EQ(original.resoWidth, 1920);
    EXPECT_EQ(original.size, ~0ULL);
    EXPECT_EQ(original.duration, 1);
    EXPECT_EQ(original.frameRate, 2);
    EXPECT_EQ(original.encodeType, 3);
    EXPECT_EQ(original.needMuxMp4, 4);
    EXPECT_EQ(original.encrypted, 5);
    EXPECT_EQ(original.generating, 6);
    EXPECT_TRUE(is_at(original.startTime, 7));
    EXPECT_TRUE(is_at(original.endTime, 8));
    EXPECT_EQ(message.write(net_timelapse_file_s2x), result_of("mp4", film));

    message->item[0].flags = NET_TIMELAPSE_FILE_THUMBNAIL; // of no importance for films
    EXPECT_EQ(message.write(net_timelapse_file_s2x), result_of("mp4", film));
    EXPECT_EQ(message.read(net_timelapse_file_x2s, "<s><item><original><resoWidth>3</resoWidth></original></item></s>"),
              0);
    EXPECT_EQ(original.resoWidth, 3) << "the other spelling";
}

TEST_F(TimelapseTest, PicturesAreWrittenAsFlagged)
{
    const std::string original = "<original><id>a</id><fileName>b</fileName><resoHight>1</resoHight>"
                                 "<resowidth>2</resowidth><size>3</size><encrypted>4</encrypted></original>";
    const std::string thumbnail = "<thumbnail><id>c</id><fileName>d</fileName><resoHight>5</resoHight>"
                                  "<resowidth>6</resowidth><size>7</size><encrypted>8</encrypted></thumbnail>";
    Search message(prepare<net_timelapse_file_t>);
    message->item[0].flags = 0x7fffffff; // left from another search
    const std::string text = result_of("jpeg", "<item>" + original + thumbnail + "</item><item>" + thumbnail +
                                                   "</item><item>" + original + "</item><item />");
    EXPECT_EQ(message.read(net_timelapse_file_x2s, text), 0);
    EXPECT_EQ(message->itemCount, 4);
    EXPECT_EQ(message->item[0].flags, 3);
    EXPECT_EQ(message->item[1].flags, 2);
    EXPECT_EQ(message->item[2].flags, 1);
    EXPECT_EQ(message->item[3].flags, 0);
    const net_timelapse_thumbnail_t &small = message->item[0].thumbnail;
    EXPECT_STREQ(small.id, "c");
    EXPECT_STREQ(small.fileName, "d");
    EXPECT_EQ(small.resoHight, 5);
    EXPECT_EQ(small.resoWidth, 6);
    EXPECT_EQ(small.size, 7ULL);
    EXPECT_EQ(small.encrypted, 8);
    EXPECT_EQ(message.write(net_timelapse_file_s2x), text);
}

TEST_F(TimelapseTest, FortyFilesAreWrittenOfMore)
{
    Search message(prepare<net_timelapse_file_t>);
    const std::string line = red("func:net_timelapse_file_x2s line:# too many items");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_timelapse_file_x2s, result_of("mp4", repeat(film, 131))), 0); }),
              repeat(line, 3));
    EXPECT_EQ(message->itemCount, 128);
    EXPECT_STREQ(message->item[127].original.fileName, "f.mp4");
    EXPECT_EQ(message.write(net_timelapse_file_s2x), result_of("mp4", repeat(film, 40)));
    message->itemCount = -5;
    EXPECT_EQ(message.write(net_timelapse_file_s2x), result_of("mp4", ""));
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(message.read(net_timelapse_file_x2s,
                                         "<s><item/><item><original><size>x</size></original></item></s>"),
                            -1);
              }),
              red("func:net_timelapse_file_x2s line:#"));
    EXPECT_EQ(message->itemCount, 1);
    EXPECT_EQ(message->item[1].flags, 0);
}

TEST_F(TimelapseTest, AResultOfFiftyFiles)
{
    std::ifstream file(NETPUBLIC_EXAMPLES_DIR "/timelapse_search_films.xml");
    std::stringstream text;
    text << file.rdbuf();
    test::Xml document(text.str());
    Search message(prepare<net_timelapse_file_t>);
    ASSERT_EQ(net_timelapse_file_x2s(&message.param, document.root()->FirstChildElement()), 0);
    EXPECT_EQ(message->itemCount, 50);
    EXPECT_EQ(message->item[49].original.generating, 1);
    EXPECT_EQ(count_of(message.write(net_timelapse_file_s2x), "<item>"), 40);
}

// Download, deletion, cover ---------------------------------------------------------------------

TEST_F(TimelapseTest, DownloadsAndCovers)
{
    const std::string longest(255, 'l');
    Envelope<net_timelapse_download_t> download(prepare<net_timelapse_download_t>);
    const std::string body = "<timelapseDownload version=\"1.1\"><id>" + longest +
                             "</id><taskType>jpeg</taskType><position>" + longest + "</position></timelapseDownload>";
    EXPECT_EQ(download.read(net_timelapse_download_x2s, body), 0);
    EXPECT_EQ(download->id, longest);
    EXPECT_EQ(download->taskType, NET_TIMELAPSE_JPEG);
    EXPECT_EQ(download->position, longest);
    EXPECT_EQ(download.write(net_timelapse_download_s2x), body);
    download->taskType = 4;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(download.write(net_timelapse_download_s2x), "failed"); }),
              red("timelapse xml file type err:4"));

    Envelope<net_timelapse_file_cover_t> cover(prepare<net_timelapse_file_cover_t>);
    EXPECT_EQ(cover.read(net_timelapse_file_cover_x2s, "<c><id>x&amp;y</id></c>"), 0);
    EXPECT_STREQ(cover->id, "x&y");
    EXPECT_EQ(cover.write(net_timelapse_file_cover_s2x),
              "<timelapseCover version=\"1.1\"><id>x&amp;y</id></timelapseCover>");
    EXPECT_EQ(
        log_of([&] { EXPECT_EQ(cover.read(net_timelapse_file_cover_x2s, "<c><id>" + longest + "l</id></c>"), -1); }),
        red("func:net_timelapse_file_cover_x2s line:#"));
}

TEST_F(TimelapseTest, DeletionOfTasksAndFiles)
{
    Envelope<net_timelapse_task_delete_t> task(prepare<net_timelapse_task_delete_t>);
    EXPECT_EQ(task.read(net_timelapse_task_delete_x2s, "<d><id>task</id><uid>cam</uid></d>"), 0);
    EXPECT_EQ(task.write(net_timelapse_task_delete_s2x),
              "<timelapseTaskDel version=\"1.1\"><uid>cam</uid><id>task</id></timelapseTaskDel>");
    EXPECT_EQ(task.read(net_timelapse_task_delete_x2s, "<d><id>" + std::string(32, 'i') + "</id></d>"), -1);

    Envelope<net_timelapse_file_delete_t> files(prepare<net_timelapse_file_delete_t>);
    const std::string item = "<item><id>f</id></item>";
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(files.read(net_timelapse_file_delete_x2s,
                                       "<d>" + repeat(item, 129) + "<taskType>mpeg</taskType></d>"),
                            0);
              }),
              red("func:net_timelapse_file_delete_x2s line:# too many items") + red("timelapse file type err:mpeg"));
    EXPECT_EQ(files->itemCount, 128);
    EXPECT_EQ(files->taskType, NET_TIMELAPSE_JPEG);
    EXPECT_EQ(files.write(net_timelapse_file_delete_s2x),
              "<timelapseFileDel version=\"1.1\"><taskType>jpeg</taskType>" + repeat(item, 128) +
                  "</timelapseFileDel>");
    EXPECT_EQ(files.read(net_timelapse_file_delete_x2s, "<d>" + item + "</d>"), 0);
    EXPECT_EQ(files->itemCount, 1) << "counted anew";
    EXPECT_EQ(files.read(net_timelapse_file_delete_x2s, "<d><item><id>" + std::string(256, 'i') + "</id></item></d>"),
              -1);
}

TEST_F(TimelapseTest, AMissingArgumentIsLogged)
{
    Envelope<net_timelapse_file_cover_t> cover(prepare<net_timelapse_file_cover_t>);
    cover.param.dataSize = 1; // not compared
    EXPECT_EQ(cover.read(net_timelapse_file_cover_x2s, "<c/>"), 0);
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(net_timelapse_file_cover_x2s(&cover.param, nullptr), -1);
                  EXPECT_EQ(net_timelapse_file_cover_s2x(&cover.param, nullptr), -1);
              }),
              red("func:net_timelapse_file_cover_x2s line:#") + red("func:net_timelapse_file_cover_s2x line:#"));
}

} // namespace
