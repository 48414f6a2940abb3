// A lint over the tables of all registered messages.
#include "engine/engine.h"
#include "engine/matching.h"
#include "messages.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

using namespace netpublic;
using test::all_messages;

namespace {

bool is_nested(const Row &row)
{
    return row.kind == Kind::group || row.kind == Kind::list;
}

// The message's body and the records in it, each with its path.
void collect(const Table &table, const std::string &path, std::map<std::string, const Table *> &tables)
{
    tables.emplace(path, &table);
    for (unsigned i = 0; i < table.keys; ++i)
        if (is_nested(table.row(i)))
            collect(*table.ref(table.row(i).ref).table, path + "/" + table.key(table.row(i)), tables);
}

std::map<std::string, const Table *> all_tables()
{
    std::map<std::string, const Table *> tables;
    for (const Message &message : all_messages())
        if (message.read != nullptr)
            collect(*message.read, message.name, tables);
    return tables;
}

// The keys that are the beginning of an earlier one of their chain, a line each.
std::string taken_keys(const Table &table)
{
    std::string taken;
    if (table.names == Names::whole)
        return taken;
    unsigned chain = 0; // where the key's chain begins
    for (unsigned i = 0; i < table.keys; ++i) {
        if ((table.row(i).flags & row_own_test) != 0)
            chain = i;
        for (unsigned earlier = chain; earlier < i; ++earlier)
            if (answers_to(table.key(table.row(i)), table.key(table.row(earlier))))
                taken += std::string(table.key(table.row(i))) + " behind " + table.key(table.row(earlier)) + "\n";
    }
    return taken;
}

struct Taken {
    int a, b;
};

struct TakenFields : Description {
    using T = Taken;
    static constexpr Field fields[] = {
        integer("typeInfo", AT(a)),
        integer("type", AT(b)),
        integer("typeI", AT(b)).own_test(),
    };
};
constexpr auto taken_table = describe<TakenFields>();

} // namespace

// A key that is the beginning of an earlier one of its chain can never be read under its full name. There is
// none; one that is meant to be so goes into a list here.
TEST(TablesTest, NoKeyIsTakenByAnEarlierOne)
{
    const auto tables = all_tables();
    EXPECT_GT(tables.size(), 120u);
    for (const auto &[path, table] : tables)
        EXPECT_EQ(taken_keys(*table), "") << path;
    EXPECT_EQ(taken_keys(taken_table), "type behind typeInfo\n") << "the lint itself";
}

// The walk itself can count the items of one list only.
TEST(TablesTest, NoRecordHasTwoListsThatNothingCounts)
{
    for (const auto &[path, table] : all_tables()) {
        std::set<std::uint32_t> uncounted;
        for (unsigned i = 0; i < table->keys; ++i) {
            const Row &row = table->row(i);
            if (row.kind != Kind::list && row.kind != Kind::int_items)
                continue;
            if (table->attachment(row, Kind::count) == nullptr)
                uncounted.insert(row.offset);
        }
        EXPECT_LE(uncounted.size(), 1u) << path;
    }
}

TEST(TablesTest, NamesAreUnique)
{
    std::set<std::string> names;
    for (const Message &message : all_messages())
        EXPECT_TRUE(names.insert(message.name).second) << message.name;
    EXPECT_GT(names.size(), 90u);
}
