#include "support.h"

#include <net_public.h>

#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

namespace {

using test::Envelope;
using test::log_of;
using test::prepared;
using test::repeated;

class TimelapseTest : public test::HostTest {};

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

// File search -----------------------------------------------------------------------------------

using Search = Envelope<net_timelapse_file_t>;

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

TEST_F(TimelapseTest, FortyFilesAreWrittenOfMore)
{
    Search message(prepared<net_timelapse_file_t>);
    const std::string line = red("func:net_timelapse_file_x2s line:# too many items");
    EXPECT_EQ(
        log_of([&] { EXPECT_EQ(message.read(net_timelapse_file_x2s, result_of("mp4", repeated(131, film))), 0); }),
        repeated(3, line));
    EXPECT_EQ(message->itemCount, 128);
    EXPECT_STREQ(message->item[127].original.fileName, "f.mp4");
    EXPECT_EQ(message.write(net_timelapse_file_s2x), result_of("mp4", repeated(40, film)));
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
    Search message(prepared<net_timelapse_file_t>);
    ASSERT_EQ(net_timelapse_file_x2s(&message.param, document.root()->FirstChildElement()), 0);
    EXPECT_EQ(message->itemCount, 50);
    EXPECT_EQ(message->item[49].original.generating, 1);
    EXPECT_EQ(count_of(message.write(net_timelapse_file_s2x), "<item>"), 40);
}

} // namespace
