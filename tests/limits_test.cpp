// What holds for every message, whatever arrives: arguments that are not there, and payloads full of garbage.
// P2, P4, P5, P9.
#include "messages.h"

#include <net_public.h>

#include <cstring>
#include <random>

namespace {

using namespace netpublic;
using test::MessageEnvelope;
using test::Xml;

class LimitsTest : public test::HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        loglevel = 0;
    }
};

// Some lines know no mask; the test's own must not get lost with them.
template <class Function> int quietly(Function function)
{
    test::Output quiet;
    return function();
}

// A parser meets no null pointers, no foreign node and no wrong size without a refusal; a writer likewise.
TEST_F(LimitsTest, Arguments)
{
    Xml body("<body/>");
    TiXmlElement parent("parent");
    for (const Message &message : test::all_messages()) {
        MessageEnvelope envelope(message);
        net_param_t empty = envelope.param;
        empty.data = nullptr;
        if (message.parse != nullptr) {
            EXPECT_EQ(quietly([&] { return message.parse(nullptr, body); }), -1) << message.name;
            EXPECT_EQ(quietly([&] { return message.parse(&envelope.param, nullptr); }), -1) << message.name;
            EXPECT_EQ(quietly([&] { return message.parse(&empty, body); }), -1) << message.name;
        }
        // A writer that writes nothing looks at nothing.
        TiXmlElement probe("parent");
        const bool writes =
            message.write != nullptr &&
            (quietly([&] { return message.write(&envelope.param, &probe); }) != 0 || probe.FirstChild() != nullptr);
        if (writes) {
            EXPECT_EQ(quietly([&] { return message.write(nullptr, &parent); }), -1) << message.name;
            EXPECT_EQ(quietly([&] { return message.write(&envelope.param, nullptr); }), -1) << message.name;
            EXPECT_EQ(quietly([&] { return message.write(&empty, &parent); }), -1) << message.name;
        }
    }
    EXPECT_EQ(parent.FirstChild(), nullptr);
}

// The component readers that hosts call by themselves: no record or no node is refused, and one that is all
// there is read.
TEST_F(LimitsTest, Components)
{
    tag_net_userinfo_online_v20_t online = {};
    net_shared_user_info_t shared = {};
    net_auth_mode_info_t mode = {};
    tag_net_recfile_schedule_v20_t schedule = {};
    tag_net_support_v20_t support = {};
    Xml user("<User><userName>ann</userName><userLevel>1</userLevel></User>");
    Xml empty("<body/>");
    const auto refused = [](int result) { EXPECT_EQ(result, -1); };
    refused(get_online_user_from_xmlnode(nullptr, user, "User"));
    refused(get_online_user_from_xmlnode(&online, nullptr, "User"));
    refused(get_online_user_from_xmlnode(&online, user, "Guest"));
    EXPECT_EQ(get_online_user_from_xmlnode(&online, user, "User"), 0);
    refused(get_shared_user_from_xmlnode(nullptr, user, "User"));
    refused(get_shared_user_from_xmlnode(&shared, nullptr, "User"));
    refused(get_shared_user_from_xmlnode(&shared, user, "Guest"));
    EXPECT_EQ(get_shared_user_from_xmlnode(&shared, empty, nullptr), 0);
    refused(get_auth_mode_info_from_xmlnode(nullptr, empty));
    refused(get_auth_mode_info_from_xmlnode(&mode, nullptr));
    refused(get_day_record_list_from_xmlnode(nullptr, empty));
    refused(get_day_record_list_from_xmlnode(&schedule, nullptr));
    EXPECT_EQ(get_day_record_list_from_xmlnode(&schedule, empty), 0);
    refused(get_iot_support_from_xmlnode(nullptr, empty));
    refused(get_iot_support_from_xmlnode(&support, nullptr));
    unsigned char part = 0;
    refused(get_hms_from_pts(0, nullptr, &part, &part));
    refused(get_hms_from_pts(0, &part, nullptr, &part));
    refused(get_hms_from_pts(0, &part, &part, nullptr));
}

// Whatever a payload holds, a writer stays inside it, and a parser that meets it keeps its promises.
TEST_F(LimitsTest, GarbagePayloads)
{
    std::mt19937 random(7);
    for (const Message &message : test::all_messages()) {
        for (int round = 0; round < 8; ++round) {
            MessageEnvelope envelope(message);
            auto *bytes = static_cast<unsigned char *>(envelope.param.data);
            constexpr int fills[] = {0x00, 0xFF, 0x7F, 0x80, 0x01, 'x'};
            for (std::size_t i = 0; i < envelope.size(); ++i)
                bytes[i] = static_cast<unsigned char>(round < 6 ? fills[round] : random());
            const std::string before = envelope.content();
            TiXmlElement parent("parent");
            if (message.write != nullptr) {
                const int result = quietly([&] { return message.write(&envelope.param, &parent); });
                EXPECT_TRUE(result == 0 || result == -1) << message.name;
                EXPECT_TRUE(result == 0 || parent.FirstChild() == nullptr) << message.name;
                EXPECT_NE(test::print(parent), "") << message.name;
                EXPECT_EQ(envelope.content(), before) << message.name;
            }
            if (message.parse != nullptr) {
                Xml body(test::best_example(message));
                const int result = quietly([&] { return message.parse(&envelope.param, body); });
                EXPECT_TRUE(result == 0 || result == -1) << message.name;
            }
        }
    }
}

} // namespace
