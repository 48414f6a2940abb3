// The descriptions tell the truth. From each message's description, bodies are made that it says are accepted, and
// others in which one thing is wrong; the parsers must agree, and the writers must write the documented tree.
#include "bodies.h"
#include "engine/member.h"
#include "engine/reading.h"
#include "messages.h"

#include <net_public.h>

#include <climits>
#include <cstring>
#include <map>
#include <set>

namespace {

using namespace netpublic;
using test::MessageEnvelope;
using test::PlacedRow;
using test::Recipe;

// What the engine says of a walk.
class Ear {
public:
    Ear() : watch_{this, heard}
    {
        netpublic::watch = &watch_;
    }
    ~Ear()
    {
        netpublic::watch = nullptr;
    }
    Ear(const Ear &) = delete;
    Ear &operator=(const Ear &) = delete;

    std::set<const Row *> taken;
    std::set<const Row *> ignored_in; // the first rows of the tables that a child has answered to nothing of
    const Row *refused = nullptr;     // the innermost one
    const Row *missing = nullptr;

private:
    static void heard(void *self, Event event, const Table &table, const Row *row, void *, Node)
    {
        Ear &ear = *static_cast<Ear *>(self);
        if (event == Event::taken)
            ear.taken.insert(row);
        else if (event == Event::ignored)
            ear.ignored_in.insert(&table.row(0));
        else if (event == Event::refused && ear.refused == nullptr)
            ear.refused = row;
        else if (event == Event::missing && ear.missing == nullptr)
            ear.missing = row;
    }
    Watch watch_;
};

struct Result {
    int result;
    std::set<const Row *> taken, ignored_in;
    const Row *refused, *missing;
    std::string body;
};

class TruthTest : public test::HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        loglevel = 0;
    }

    // Reads what a recipe makes of the message.
    static Result read(const Message &message, const Recipe &recipe, MessageEnvelope *kept = nullptr)
    {
        MessageEnvelope fresh(message);
        MessageEnvelope &envelope = kept != nullptr ? *kept : fresh;
        TiXmlElement body(message.written != nullptr && *message.written->root() != '\0' ? message.written->root()
                                                                                         : "body");
        test::fill(body, *message.read, recipe);
        Result result = {};
        Ear ear;
        test::output_of([&] { result.result = message.parse(&envelope.param, &body); });
        result.taken = ear.taken;
        result.ignored_in = ear.ignored_in;
        result.refused = ear.refused;
        result.missing = ear.missing;
        result.body = test::print(body);
        return result;
    }

    static std::vector<Message> read_messages()
    {
        std::vector<Message> all;
        for (const Message &message : test::all_messages())
            if (message.parse != nullptr)
                all.push_back(message);
        return all;
    }

    // Only the row at this place of the tree gets another text.
    static Recipe with_text(const PlacedRow &row, const std::string &text)
    {
        Recipe recipe;
        recipe.text = [&row, text](const Table &table, unsigned index) {
            return &table == row.table && index == row.index ? text.c_str() : nullptr;
        };
        return recipe;
    }
    static Recipe with_count(const PlacedRow &row, int count, bool required_only = false)
    {
        Recipe recipe;
        recipe.required_only = required_only;
        recipe.count = [&row, count, required_only](const Table &table, unsigned index) {
            if (&table == row.table && index == row.index)
                return count;
            // What leads there is needed, too.
            for (const PlacedRow &outer : row.around)
                if (required_only && &table == outer.table && index == outer.index &&
                    !(is_list(outer.row().kind) && (outer.row().flags & list_exact) != 0))
                    return 1;
            return -1;
        };
        return recipe;
    }
};

// Every message says what it is.
TEST_F(TruthTest, EveryMessageHasATitleAndASentence)
{
    for (const Message &message : test::all_messages()) {
        const Table *table = message.read != nullptr ? message.read : message.written;
        ASSERT_NE(table, nullptr) << message.name;
        EXPECT_STRNE(table->title, "") << message.name;
        EXPECT_STRNE(table->summary, "") << message.name;
    }
}

// A body with every documented child is accepted, and each of them is read.
TEST_F(TruthTest, CompleteBodiesAreRead)
{
    int rows = 0;
    for (const Message &message : read_messages()) {
        const Result complete = read(message, {});
        EXPECT_EQ(complete.result, 0) << message.name << ": " << complete.body
                                      << "\nrefused: " << (complete.refused != nullptr ? "a row" : "-");
        for (const PlacedRow &row : test::readable_rows(*message.read)) {
            EXPECT_EQ(complete.taken.count(&row.row()), 1u)
                << message.name << "/" << row.path() << " in " << complete.body;
            ++rows;
        }
        EXPECT_EQ(complete.ignored_in.size(), 0u) << message.name << ": " << complete.body;
    }
    EXPECT_GT(rows, 1000);
}

// The children that are required are enough, and none of them can be missing.
TEST_F(TruthTest, RequiredMeansRequired)
{
    int required = 0;
    for (const Message &message : read_messages()) {
        Recipe least;
        least.required_only = true;
        const Result minimal = read(message, least);
        EXPECT_EQ(minimal.result, 0) << message.name << ": " << minimal.body;
        for (const PlacedRow &row : test::readable_rows(*message.read)) {
            const bool exact = is_list(row.row().kind) && (row.row().flags & list_exact) != 0;
            if ((row.row().flags & row_required) == 0 && !exact)
                continue;
            ++required;
            const Result without = read(message, with_count(row, exact ? row.table->capacity(row.row()) - 1 : 0));
            EXPECT_EQ(without.result, -1) << message.name << "/" << row.path() << ": " << without.body;
            EXPECT_TRUE(without.missing == &row.row() || row.table->names == Names::in_order)
                << message.name << "/" << row.path();
        }
        // With what leads there and nothing else, each record's required children are enough.
        for (const PlacedRow &row : test::readable_rows(*message.read)) {
            const Result alone = read(message, with_count(row, 1, true));
            const bool exact = is_list(row.row().kind) && (row.row().flags & list_exact) != 0;
            if (!exact) {
                EXPECT_EQ(alone.result, 0) << message.name << "/" << row.path() << ": " << alone.body;
            }
        }
    }
    EXPECT_GT(required, 30);
}

// Values at their limits are accepted; one beyond them is refused, and it is that row that refuses.
TEST_F(TruthTest, LimitsAreWhereTheyAreSaidToBe)
{
    int limits = 0;
    for (const Message &message : read_messages())
        for (const PlacedRow &row : test::readable_rows(*message.read)) {
            const Row &its = row.row();
            const Table &table = *row.table;
            if ((its.flags & row_skipped) != 0 || has_table(its.kind))
                continue;
            const bool free = *table.detail(row.index).sample == '\0' && *table.detail(row.index).accepts == '\0';
            std::vector<std::string> good, bad;
            const auto length = [&](std::size_t longest) {
                if (longest > 100000)
                    return;
                if (free)
                    good.push_back(std::string(longest, 'x'));
                bad.push_back(std::string(longest + 1, 'x'));
            };
            switch (its.kind) {
            case Kind::integer:
            case Kind::byte:
                if ((its.flags & row_checked) != 0) {
                    const Limits &range = table.limit(its.limits);
                    if (free) {
                        good.push_back(std::to_string(range.low));
                        good.push_back(std::to_string(range.high));
                    }
                    bad.push_back(std::to_string(range.low - 1LL));
                    bad.push_back(std::to_string(range.high + 1LL));
                    if (range.low == INT_MIN)
                        bad.erase(bad.begin());
                    if (range.high == INT_MAX)
                        bad.pop_back();
                }
                if (its.kind != Kind::integer || (its.flags & number_tolerant) == 0) {
                    bad.insert(bad.end(), {"x", "", "1234567890123", "1.5"});
                }
                break;
            case Kind::flag:
                good = {"0", "1"};
                bad = {"2", "-1", "x", "", "0000000001"};
                break;
            case Kind::unsigned_integer:
                good = {"4294967295", "0"};
                bad = {"12345678901", "x", ""};
                break;
            case Kind::int64:
            case Kind::unsigned_longlong:
                good = {"9223372036854775807", "0"};
                bad = {std::string(21, '1'), "x", ""};
                break;
            case Kind::real:
                good = {"-1.25", "1e5"};
                bad = {""};
                break;
            case Kind::text:
            case Kind::view:
            case Kind::counted_text:
            case Kind::converted:
                length(static_cast<std::size_t>(table.limit(its.limits).low));
                break;
            case Kind::word: {
                const bool prefix = (its.flags & word_prefix) != 0;
                for (const auto &entry : *table.ref(its.ref).words)
                    if (entry.use != Use::write && free)
                        good.push_back(table.ref(its.ref).words->text(entry));
                bad.push_back(std::string(static_cast<std::size_t>(table.limit(its.limits).low) + 1, 'x'));
                ((its.flags & word_adds) != 0 ? good : bad).push_back("xq");
                if (!prefix && (its.flags & word_adds) == 0)
                    bad.push_back(good.front().substr(0, good.front().size() - 1) + "~");
                break;
            }
            case Kind::mask:
                good = {"", "none"};
                if (table.limit(its.limits).low < 100000)
                    bad.push_back(std::string(static_cast<std::size_t>(table.limit(its.limits).low) + 1, 'x'));
                if ((its.flags & mask_none_conflicts) != 0)
                    bad.push_back(test::usual_text(table, row.index, 0) + ",none");
                break;
            case Kind::grid:
            case Kind::int_list:
                bad.push_back(std::string(table.longest(its) + 1, '1'));
                break;
            default:
                break;
            }
            for (const std::string &text : good) {
                const Result result = read(message, with_text(row, text));
                EXPECT_TRUE(result.result == 0 || !free) << message.name << "/" << row.path() << " = " << text;
                ++limits;
            }
            for (const std::string &text : bad) {
                const Result result = read(message, with_text(row, text));
                EXPECT_EQ(result.result, -1) << message.name << "/" << row.path() << " = " << text;
                EXPECT_EQ(result.refused, &its) << message.name << "/" << row.path() << " = " << text;
                ++limits;
            }
        }
    EXPECT_GT(limits, 4000);
}

// Lists hold what they are said to hold, and do with the rest what they are said to do.
TEST_F(TruthTest, Capacities)
{
    int lists = 0;
    for (const Message &message : read_messages())
        for (const PlacedRow &row : test::readable_rows(*message.read)) {
            const Row &its = row.row();
            if (!is_list(its.kind) || row.table->capacity(its) > 4000 ||
                (its.kind == Kind::list && (its.flags & list_indexed) != 0))
                continue;
            ++lists;
            const int capacity = row.table->capacity(its);
            const Result full = read(message, with_count(row, capacity));
            EXPECT_EQ(full.result, 0) << message.name << "/" << row.path();
            const Result more = read(message, with_count(row, capacity + 1));
            EXPECT_EQ(more.result, (its.flags & list_stop) == list_refuse ? -1 : 0)
                << message.name << "/" << row.path();
        }
    EXPECT_GT(lists, 40);
}

// A child that no row speaks of is ignored or refused, as it is said; by each record of each message.
TEST_F(TruthTest, OtherChildren)
{
    for (const Message &message : read_messages()) {
        std::set<const Table *> tables = {message.read};
        for (const PlacedRow &row : test::readable_rows(*message.read))
            if (has_table(row.row().kind))
                tables.insert(row.table->ref(row.row().ref).table);
        for (const Table *table : tables) {
            if (table->names == Names::any || (table->flags & table_first_only) != 0)
                continue;
            // A full list, or the last child in order, ends the walk in front of it.
            const bool ends =
                table->names == Names::in_order ||
                (table->keys != 0 && is_list(table->row(0).kind) && (table->row(0).flags & list_stop) == list_stop &&
                 ((table->row(0).flags & list_exact) != 0 || table->capacity(table->row(0)) < 3));
            Recipe recipe;
            recipe.stranger = [table](const Table &its) { return &its == table ? "zz-nobody" : nullptr; };
            const Result result = read(message, recipe);
            const bool refused = (table->flags & table_others_fail) != 0 && !ends;
            EXPECT_EQ(result.result, refused ? -1 : 0)
                << message.name << ", " << table->key(table->row(0)) << ": " << result.body;
        }
    }
}

// Writers ---------------------------------------------------------------------------------------------

// Is a child of this name written by the row?
bool writes(const Table &table, const Row &row, const TiXmlElement &child)
{
    return std::strcmp(table.key(row), child.Value()) == 0;
}

// Compares an element's children with the documented order. `whole`: what has no condition must be there.
void check_tree(const TiXmlElement &element, const Table &table, const std::string &path)
{
    const TiXmlElement *child = element.FirstChildElement();
    for (unsigned place = 0; place < table.written; ++place) {
        const unsigned index = table.ordered(place);
        const Row &row = table.row(index);
        const std::string name = path + "/" + table.key(row);
        const bool may_repeat = is_list(row.kind);
        const bool may_lack = may_repeat || row.kind == Kind::wire || row.kind == Kind::view ||
                              row.kind == Kind::grid || table.attachment(row, Kind::condition) != nullptr;
        int count = 0;
        for (; child != nullptr && writes(table, row, *child); child = child->NextSiblingElement()) {
            // Two rows of one name: the next one's child is not this one's.
            if (count == 1 && !may_repeat)
                break;
            ++count;
            if (has_table(row.kind))
                check_tree(*child, *table.ref(row.ref).table, name);
            else
                EXPECT_EQ(child->FirstChildElement(), nullptr) << name;
        }
        EXPECT_TRUE(count == 1 || may_lack || (count > 1 && may_repeat)) << name << " is written " << count << " times";
        if (may_repeat && table.capacity(row) != INT_MAX) {
            EXPECT_LE(count, table.capacity(row)) << name;
        }
    }
    EXPECT_EQ(child, nullptr) << path << ": " << (child != nullptr ? child->Value() : "") << " is not documented there";
}

// What is written is the documented tree in the documented order; a message without one writes nothing.
TEST_F(TruthTest, WrittenTrees)
{
    int written = 0;
    for (const Message &message : test::all_messages()) {
        if (message.write == nullptr)
            continue;
        MessageEnvelope envelope(message);
        if (message.parse != nullptr) {
            EXPECT_EQ(read(message, {}, &envelope).result, 0) << message.name;
        }
        TiXmlElement parent("parent");
        int result = -1;
        test::output_of([&] { result = message.write(&envelope.param, &parent); });
        EXPECT_EQ(result, 0) << message.name;
        if (message.written == nullptr) {
            EXPECT_EQ(parent.FirstChild(), nullptr) << message.name << " is said to write nothing";
            continue;
        }
        const TiXmlElement *root = parent.FirstChildElement();
        ASSERT_NE(root, nullptr) << message.name;
        EXPECT_STREQ(root->Value(), message.written->root()) << message.name;
        EXPECT_EQ(root->NextSibling(), nullptr) << message.name;
        check_tree(*root, *message.written, message.name);
        ++written;
    }
    EXPECT_GT(written, 45);
}

} // namespace
