#include "support.h"

#include <net_public.h>

#include <cstring>
#include <string>

namespace {

using test::Envelope;
using test::log_of;
using test::prepared;
using test::repeated;

class TimelapseTest : public test::HostTest {};

std::string time_element(const std::string &name, int hour)
{
    return "<" + name + "><year>2026</year><month>3</month><day>18</day><hour>" + std::to_string(hour) +
           "</hour><minute>30</minute><second>5</second></" + name + ">";
}

std::string red(const std::string &line)
{
    return "<red net_xml_timelapse.cpp>" + line + "\n";
}

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

} // namespace
