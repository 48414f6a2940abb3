// What holds for every message, whatever arrives, from the tables: each row of each record at its limits and
// beyond them, and payloads full of garbage. P2, P3, P4, P5, P9.
#include "engine/engine.h"
#include "messages.h"

#include <net_public.h>

#include <climits>
#include <cstring>
#include <map>
#include <memory>
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

// The records of all messages, each once, with a path that names it.
void collect(const Table &table, const std::string &path, std::map<const Table *, std::string> &tables)
{
    if (!tables.emplace(&table, path).second)
        return;
    for (unsigned i = 0; i < table.keys; ++i)
        if (table.row(i).kind == Kind::group || table.row(i).kind == Kind::list)
            collect(*table.ref(table.row(i).ref).table, path + "/" + table.key(table.row(i)), tables);
}

std::map<const Table *, std::string> all_tables()
{
    std::map<const Table *, std::string> tables;
    for (const Message &message : test::all_messages())
        if (message.read != nullptr)
            collect(*message.read, message.name, tables);
    return tables;
}

// A record of exactly its size, so that the address sanitizer sees what leaves it.
class Record {
public:
    explicit Record(const Table &table) : table_(table), bytes_(new char[table.record_size])
    {
        std::memset(bytes_.get(), 0, table.record_size);
    }

    // One child into the record by its row; whatever the record's hooks would say.
    bool takes(unsigned row, const std::string &inside)
    {
        const std::string key = table_.key(table_.row(row));
        Xml child("<" + key + ">" + inside + "</" + key + ">");
        int result = -1;
        log_ = test::output_of([&] { result = read_child(table_, bytes_.get(), row, child); });
        return result == 0;
    }
    template <class Type> Type at(std::size_t offset) const
    {
        Type value;
        std::memcpy(&value, bytes_.get() + offset, sizeof value);
        return value;
    }
    const char *text(const Row &row) const
    {
        return bytes_.get() + row.offset;
    }
    // What the latest child was worth.
    const std::string &log() const
    {
        return log_;
    }

private:
    const Table &table_;
    std::unique_ptr<char[]> bytes_;
    std::string log_;
};

// Calls a function for every row that children answer to.
template <class Function> int for_rows(Function function)
{
    int rows = 0;
    for (const auto &[table, path] : all_tables())
        for (unsigned i = 0; i < table->keys; ++i)
            if ((table->row(i).flags & row_skipped) == 0) {
                SCOPED_TRACE(path + "/" + table->key(table->row(i)));
                rows += function(*table, i, table->row(i));
            }
    return rows;
}

TEST_F(LimitsTest, Numbers)
{
    const int ranges = for_rows([](const Table &table, unsigned index, const Row &row) {
        if (row.kind != Kind::integer || (row.flags & row_checked) == 0)
            return 0;
        const Limits &range = table.limit(row.limits);
        const long long low = range.low, high = range.high;
        for (const long long value : {low - 1, low, (low + high) / 2, high, high + 1}) {
            if (value < INT_MIN || value > INT_MAX)
                continue;
            Record record(table);
            const bool within = value >= low && value <= high;
            EXPECT_EQ(record.takes(index, std::to_string(value)), within) << value;
            if (within) {
                EXPECT_EQ(record.at<int>(row.offset), value);
            }
        }
        return 1;
    });
    EXPECT_GT(ranges, 120);
    const int flags = for_rows([](const Table &table, unsigned index, const Row &row) {
        if (row.kind != Kind::flag)
            return 0;
        for (const char *text : {"0", "1", "2", "-1", "", "x", "0000000001"}) {
            const bool good = *text != '\0' && std::strlen(text) == 1 && *text <= '1';
            EXPECT_EQ(Record(table).takes(index, text), good) << text;
        }
        return 1;
    });
    EXPECT_GT(flags, 40);
}

// P12: a name or a password that is refused is not shown either.
TEST_F(LimitsTest, Texts)
{
    loglevel = ~0U;
    const int texts = for_rows([](const Table &table, unsigned index, const Row &row) {
        if (row.kind != Kind::text)
            return 0;
        const auto longest = static_cast<std::size_t>(table.limit(row.limits).low);
        const auto size = static_cast<std::size_t>(table.limit(row.limits).high);
        EXPECT_LT(longest, size) << "no room for the terminator";
        for (const std::size_t length : {std::size_t{0}, longest, longest + 1, longest + 5000}) {
            Record record(table);
            EXPECT_EQ(record.takes(index, std::string(length, 'x')), length <= longest) << length;
            EXPECT_EQ(strnlen(record.text(row), size), length <= longest ? length : 0) << length;
            EXPECT_EQ(record.log().find("xxxx"), std::string::npos) << record.log();
        }
        return 1;
    });
    EXPECT_GT(texts, 60);
}

// Rows with readers of their own: what no row expects is taken or refused, and nothing else happens.
TEST_F(LimitsTest, Anything)
{
    const std::string odd[] = {"",     "x",         "-1",       "99999999999", std::string(5000, ','),
                               "<x/>", "<!--c-->1", "<x>1</x>", "1<x/>2",      "<x/><x/>x"};
    const int rows = for_rows([&](const Table &table, unsigned index, const Row &row) {
        // A view stores a pointer into the text.
        if (row.kind == Kind::view)
            return 0;
        for (const std::string &inside : odd)
            Record(table).takes(index, inside);
        return 1;
    });
    EXPECT_GT(rows, 500);
}

// More children than a list holds, each empty: some lists ignore the surplus, some refuse it, none counts it.
TEST_F(LimitsTest, Lists)
{
    for (const Message &message : test::all_messages()) {
        if (message.read == nullptr || message.parse == nullptr)
            continue;
        const Table &table = *message.read;
        for (unsigned i = 0; i < table.keys; ++i) {
            const Row &row = table.row(i);
            if (row.kind != Kind::list && row.kind != Kind::int_items)
                continue;
            MessageEnvelope envelope(message);
            Xml one("<" + std::string(table.key(row)) + ">1</" + table.key(row) + ">");
            Xml body("<body/>");
            for (int items = 0; items < table.capacity(row) + 3; ++items)
                body.root()->InsertEndChild(*one.root());
            quietly([&] { return message.parse(&envelope.param, body); });
            if (const Row *kept = table.attachment(row, Kind::count)) {
                int count;
                std::memcpy(&count, static_cast<char *>(envelope.param.data) + kept->offset, sizeof count);
                EXPECT_GE(count, 0) << message.name;
                EXPECT_LE(count, table.capacity(row)) << message.name;
            }
        }
    }
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
