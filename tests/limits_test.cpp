// What holds for every message, whatever arrives, from the tables: each row of each record at its limits and
// beyond them, and payloads full of garbage. P2, P3, P4, P5, P9.
#include "messages.h"

#include <engine.h>
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
        return quietly([&] { return read_child(table_, bytes_.get(), row, child); }) == 0;
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

private:
    const Table &table_;
    std::unique_ptr<char[]> bytes_;
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

TEST_F(LimitsTest, Texts)
{
    const int texts = for_rows([](const Table &table, unsigned index, const Row &row) {
        if (row.kind != Kind::text)
            return 0;
        const auto longest = static_cast<std::size_t>(table.limit(row.limits).low);
        EXPECT_LT(longest, row.size) << "no room for the terminator";
        for (const std::size_t length : {std::size_t{0}, longest, longest + 1, longest + 5000}) {
            Record record(table);
            EXPECT_EQ(record.takes(index, std::string(length, 'x')), length <= longest) << length;
            EXPECT_EQ(strnlen(record.text(row), row.size), length <= longest ? length : 0) << length;
        }
        return 1;
    });
    EXPECT_GT(texts, 60);
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
            for (int items = 0; items < row.size + 3; ++items)
                body.root()->InsertEndChild(*one.root());
            quietly([&] { return message.parse(&envelope.param, body); });
            for (unsigned at = row.attached; at != 0; at = table.row(at).attached)
                if (table.row(at).kind == Kind::count) {
                    int count;
                    std::memcpy(&count, static_cast<char *>(envelope.param.data) + table.row(at).offset, sizeof count);
                    EXPECT_GE(count, 0) << message.name;
                    EXPECT_LE(count, row.size) << message.name;
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
