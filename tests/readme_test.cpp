// The example of the README does what it says. Its code is taken from there, when the build is configured.
#include "support.h"

#include "readme_example.inc"

#include <string>

namespace {

class ReadmeTest : public test::HostTest {};

const char *const header = "<ExtenSion version=\"1.1\"><channelId>3</channelId></ExtenSion>";
const std::string schedule = "<timeBlockList><timeBlock><enable>1</enable><weekDay>Sunday</weekDay>"
                             "<beginHour>8</beginHour><endHour>9</endHour></timeBlock></timeBlockList></MD>";

// What exchange() returns and puts into the reply.
std::string exchanged(std::string extension, const std::string &request)
{
    TiXmlElement reply("body");
    const int result = exchange(&extension[0], request.c_str(), &reply);
    return std::to_string(result) + " " + test::print_children(reply);
}

TEST_F(ReadmeTest, Exchange)
{
    const std::string log = test::log_of([] {
        // The channel comes from the header, the rest from the request.
        const std::string answer = exchanged(header, "<MD><enable>1</enable>" + schedule);
        const std::string beginning =
            "0 <MD version=\"1.1\"><channelId>3</channelId><enable>1</enable><usepir>0</usepir>";
        EXPECT_EQ(answer.substr(0, beginning.size()), beginning);
        ASSERT_GT(answer.size(), schedule.size());
        EXPECT_EQ(answer.substr(answer.size() - schedule.size()), schedule);
        EXPECT_EQ(exchanged(header, "<MD><enable>0</enable>" + schedule), "0 ");
    });
    EXPECT_EQ(log, "");
}

// Whatever is wrong, nothing is replied, and the fixture sees that the payload is released.
TEST_F(ReadmeTest, Refusals)
{
    loglevel = 0;
    const std::string request = "<MD><enable>1</enable>" + schedule;
    EXPECT_EQ(exchanged("", request), "-1 ");
    EXPECT_EQ(exchanged("<ExtenSion><channelId>-1</channelId></ExtenSion>", request), "-1 ");
    EXPECT_EQ(exchanged(header, ""), "-1 ");
    EXPECT_EQ(exchanged(header, "<MD><enable>"), "-1 ");
    EXPECT_EQ(exchanged(header, "<MD><enable>2</enable></MD>"), "-1 ");
    for (unsigned long which : {1, 2}) { // the header's copy, the payload
        net_host_fail_allocation(which);
        EXPECT_EQ(exchanged(header, request), "-1 ") << which;
    }
}

} // namespace
