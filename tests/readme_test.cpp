// The example of the README does what it says. Its code is taken from there, when the build is configured.
#include "support.h"

#include "readme_example.inc"

#include <string>

namespace {

class ReadmeTest : public test::HostTest {};

const char *const header = "<ExtenSion version=\"1.1\"><channelId>3</channelId></ExtenSion>";
const std::string schedule = "<timeBlockList><timeBlock><enable>1</enable><weekDay>Sunday</weekDay>"
                             "<beginHour>8</beginHour><endHour>9</endHour></timeBlock></timeBlockList></MD>";

// What exchange() puts into the reply, whose length it returns; "-1" where it fails.
std::string exchanged(std::string extension, std::string request)
{
    char reply[4096] = "";
    const int result =
        exchange(&extension[0], &request[0], static_cast<unsigned int>(request.size()), reply, sizeof reply);
    EXPECT_EQ(std::string(reply).size(), result < 0 ? 0u : static_cast<unsigned int>(result));
    return result < 0 ? "-1" : reply;
}

TEST_F(ReadmeTest, Exchange)
{
    const std::string log = test::log_of([] {
        // The channel comes from the header, the rest from the request.
        const std::string answer = exchanged(header, "<MD><enable>1</enable>" + schedule);
        const std::string beginning =
            "<MD version=\"1.1\"><channelId>3</channelId><enable>1</enable><usepir>0</usepir>";
        EXPECT_EQ(answer.substr(0, beginning.size()), beginning);
        ASSERT_GT(answer.size(), schedule.size());
        EXPECT_EQ(answer.substr(answer.size() - schedule.size()), schedule);
        EXPECT_EQ(exchanged(header, "<MD><enable>0</enable>" + schedule), "");
    });
    EXPECT_EQ(log, "");
}

// Whatever is wrong, nothing is replied, and the fixture sees that the payload is released.
TEST_F(ReadmeTest, Refusals)
{
    loglevel = 0;
    const std::string request = "<MD><enable>1</enable>" + schedule;
    EXPECT_EQ(exchanged("", request), "-1");
    EXPECT_EQ(exchanged("<ExtenSion><channelId>-1</channelId></ExtenSion>", request), "-1");
    EXPECT_EQ(exchanged(header, ""), "-1");
    EXPECT_EQ(exchanged(header, "<MD><enable>"), "-1");
    EXPECT_EQ(exchanged(header, "<MD><enable>2</enable></MD>"), "-1");
    for (unsigned long which : {1, 2, 3, 4}) { // the header's copy and tokens, the payload, the request's tokens
        net_host_fail_allocation(which);
        EXPECT_EQ(exchanged(header, request), "-1") << which;
    }
}

} // namespace
