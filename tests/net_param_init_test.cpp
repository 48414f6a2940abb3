// Every initialiser against its line in tests/cases/initialisers.txt: id, size, what it copies, what it logs.
#include "cases.h"

#include <catalogue.h>
#include <net_public.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

using test::log_of;

// Such a line.
struct Row {
    std::string name;
    const netpublic::Initialiser *entry; // of the tools' list
    int id;
    unsigned int size;
    std::string stores;
    std::string failure;

    bool says(const char *word) const
    {
        return stores.find(word) != std::string::npos;
    }
    unsigned int allocated() const
    {
        return says("20 records") ? 20 * size : size;
    }
};

const netpublic::Initialiser *find_entry(const std::string &name)
{
    for (const netpublic::Initialiser &entry : netpublic::initialisers)
        if (name == entry.name)
            return &entry;
    return nullptr;
}

std::vector<Row> rows()
{
    std::vector<Row> all;
    for (const test::Case &each : test::cases("initialisers.txt")) {
        const auto &typed = each.arguments;
        const Row row = {typed.at(0),
                         find_entry(typed.at(0)),
                         test::number(typed.at(1)),
                         static_cast<unsigned int>(test::number(typed.at(2))),
                         typed.at(3),
                         each.expected};
        EXPECT_NE(row.entry, nullptr) << each.place;
        if (row.entry != nullptr)
            all.push_back(row);
    }
    return all;
}

// A payload as it should be, written byte by byte.
std::string expected_payload(const Row &row, const net_ext_t &ext)
{
    std::string payload(row.allocated(), row.says("as allocated") ? '\xA5' : '\0');
    const std::map<std::string, int> values = {{"channel", ext.channelId}, {"valid", std::max(ext.channelId, 0)},
                                               {"patrol", ext.patrolId},   {"type", ext.chnType},
                                               {"rf", ext.rfId},           {"-1", -1}};
    static const std::regex place(R"((\S+)@(\d+)(\+(\d+)\*(\d+))?)");
    for (std::sregex_iterator at(row.stores.begin(), row.stores.end(), place), end; at != end; ++at) {
        const std::smatch &found = *at;
        const auto offset = static_cast<std::size_t>(std::stoi(found[2]));
        const int count = found[3].matched ? std::stoi(found[5]) : 1;
        for (int i = 0; i < count && found[1] != "name"; ++i) {
            const int step = found[3].matched ? std::stoi(found[4]) : 0;
            std::memcpy(&payload[offset + static_cast<std::size_t>(i * step)], &values.at(found[1]), sizeof(int));
        }
        if (found[1] == "name")
            payload.replace(offset, std::strlen(ext.userName), ext.userName);
    }
    return payload;
}

net_ext_t request(int channel_id)
{
    net_ext_t ext{};
    ext.channelId = channel_id;
    ext.inputId = 101;
    ext.outputId = 102;
    ext.patrolId = 4;
    std::strcpy(ext.userName, "operator");
    ext.rfId = 17;
    ext.chnType = 9;
    ext.streamType = 103;
    return ext;
}

class InitTest : public test::HostTest {
protected:
    static void check_stamp(const Row &row, const net_param_t &param, const net_param_t &before)
    {
        EXPECT_EQ(param.inited, 1u);
        EXPECT_EQ(param.status, 0);
        EXPECT_EQ(param.paramId, row.id);
        EXPECT_EQ(param.dataSize, row.size);
        EXPECT_EQ(param.reserved0, before.reserved0);
        EXPECT_EQ(param.reserved1, row.says("reserved1") ? 0 : before.reserved1);
    }
};

TEST_F(InitTest, EveryMessage)
{
    for (const Row &row : rows()) {
        if (row.size == 0)
            continue;
        // No initialiser judges the channel.
        for (int channel_id : {7, 0, -2, 1000}) {
            SCOPED_TRACE(row.name + " with channel " + std::to_string(channel_id));
            test::AnyEnvelope message;
            const net_param_t before = message.param;
            net_ext_t ext = request(channel_id);
            EXPECT_EQ(test::output_of([&] { EXPECT_EQ(row.entry->function(&message.param, &ext), 0); }), "");
            check_stamp(row, message.param, before);
            EXPECT_EQ(net_host_memory().last_size, row.allocated());
            ASSERT_NE(message.param.data, nullptr);
            const std::string expected = expected_payload(row, ext);
            EXPECT_EQ(std::memcmp(message.param.data, expected.data(), expected.size()), 0);
        }
    }
}

TEST_F(InitTest, EveryMessageWithoutMemory)
{
    for (const Row &row : rows()) {
        if (row.size == 0)
            continue;
        SCOPED_TRACE(row.name);
        test::AnyEnvelope message;
        const net_param_t before = message.param;
        message.param.data = &message; // must not survive
        net_ext_t ext = request(7);
        net_host_fail_allocation(1);
        std::string expected = "<red net_public.cpp>malloc failed\n";
        if (!row.failure.empty())
            expected += "<red net_param_init.cpp>" + row.failure;
        EXPECT_EQ(log_of([&] { EXPECT_EQ(row.entry->function(&message.param, &ext), -1); }), expected);
        check_stamp(row, message.param, before);
        EXPECT_EQ(message.param.data, nullptr);
        message.param.data = nullptr;
    }
}

// The tools' list knows the same initialisers.
TEST_F(InitTest, ListForTools)
{
    std::set<std::string> names;
    for (const Row &row : rows()) {
        names.insert(row.name);
        EXPECT_EQ(row.entry->id, row.id) << row.name;
        EXPECT_EQ(row.entry->size, row.size) << row.name;
    }
    EXPECT_EQ(names.size(), std::size(netpublic::initialisers));
    EXPECT_EQ(names.size(), 144u);
}

TEST_F(InitTest, MessagesWithoutAnything)
{
    for (const Row &row : rows()) {
        if (!row.says("nothing at all"))
            continue;
        test::AnyEnvelope message;
        const net_param_t before = message.param;
        net_ext_t ext = request(7);
        EXPECT_EQ(row.entry->function(&message.param, &ext), 0);
        EXPECT_EQ(std::memcmp(&message.param, &before, sizeof(before)), 0);
        EXPECT_EQ(row.entry->function(nullptr, nullptr), 0);
    }
    EXPECT_EQ(net_host_memory().total, 0u);
}

TEST_F(InitTest, FileInfoIsAStampOnly)
{
    test::AnyEnvelope message;
    int payload = 0;
    message.param.data = &payload;
    const net_param_t before = message.param;
    net_ext_t ext = request(7);
    EXPECT_EQ(nets_param_file_info_init(&message.param, &ext), 0);
    EXPECT_EQ(message.param.inited, 1u);
    EXPECT_EQ(message.param.status, 0);
    EXPECT_EQ(message.param.paramId, 1401);
    EXPECT_EQ(message.param.reserved0, before.reserved0);
    EXPECT_EQ(message.param.reserved1, before.reserved1);
    EXPECT_EQ(message.param.dataSize, before.dataSize);
    EXPECT_EQ(message.param.data, &payload);
    EXPECT_EQ(net_host_memory().total, 0u);
    message.param.data = nullptr;
}

TEST_F(InitTest, TwoCheckTheEnvelope)
{
    net_ext_t ext = request(7);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_param_fish_eye_cfg_init(nullptr, &ext), -1); }),
              "<red net_param_init.cpp>Func: net_param_fish_eye_cfg_init, Line:#\n");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_param_cert_info_init(nullptr, &ext), -1); }),
              "<red net_param_init.cpp>Func: net_param_cert_info_init, Line\xEF\xBC\x9A #\n");
    EXPECT_EQ(net_host_memory().total, 0u);
    loglevel = 0xFFFFFFFE; // the lines are gated
    test::AnyEnvelope message;
    net_host_fail_allocation(1);
    EXPECT_EQ(test::output_of([&] { EXPECT_EQ(nets_param_version_init(&message.param, &ext), -1); }), "");
    EXPECT_EQ(test::output_of([&] { EXPECT_EQ(net_param_cert_info_init(nullptr, &ext), -1); }), "");
}

TEST_F(InitTest, LongUserNames)
{
    net_ext_t ext = request(7);
    std::memset(ext.token, 'T', sizeof(ext.token)); // what follows an unterminated name
    for (std::size_t length : {0u, 30u, 31u, 32u}) {
        std::memset(ext.userName, 0, sizeof(ext.userName));
        std::memset(ext.userName, 'u', length);
        const auto head = [&](test::Init init) { return std::string(test::Envelope<char>(init, ext).payload(), 40); };
        const auto padded = [](std::size_t kept) { return std::string(kept, 'u') + std::string(40 - kept, '\0'); };
        EXPECT_EQ(head(nets_param_user_cfg_init), padded(length)) << "all 32 characters fit";
        EXPECT_EQ(head(net_param_shared_user_cfg_init), padded(std::min<std::size_t>(length, 31)));
    }
}

// The numbers, from 1, of the section flags that a token sets. They follow the name of 32 bytes.
std::vector<int> sections(const std::string &token)
{
    net_ext_t ext = request(7);
    token.copy(ext.token, sizeof(ext.token) - 1);
    test::Envelope<char> message(nets_param_ability_init, ext);
    std::vector<int> set;
    for (int i = 0; i < 13; ++i) {
        int flag;
        std::memcpy(&flag, message.payload() + 32 + i * 4, sizeof(flag));
        EXPECT_TRUE(flag == 0 || flag == 1) << flag;
        if (flag != 0)
            set.push_back(i + 1);
    }
    // Nothing else is set.
    EXPECT_EQ(std::count(message.payload(), message.payload() + 6192, '\0'), 6192 - static_cast<int>(set.size()));
    return set;
}

TEST_F(InitTest, AbilitySections)
{
    const struct {
        std::string token;
        std::vector<int> numbers;
    } cases[] = {
        {"", {}},
        {"none of them", {}},
        {"system,PTZ,disk", {1, 5, 13}},
        {"audio", {6, 10}}, // IO is in it
        {"ptz SYSTEM Streaming", {1, 2, 5}},
        {"subsystems", {1}},
        {"systeM-recorD", {1, 3}},
        {std::string(251, 'x') + "disk", {13}}, // up to the end of the token
        {"streaming record network IO alarm", {2, 3, 4, 6, 7}},
        {"image video security replay", {8, 9, 11, 12}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(sections(c.token), c.numbers) << c.token;
}

} // namespace
