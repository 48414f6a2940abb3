// The descriptions tell the truth. From each message's description, bodies are made that it says are accepted, and
// others in which one thing is wrong; the parsers must agree, what they store must stand where it is said to, and
// the writers must write the documented tree.
#include "bodies.h"
#include "engine/member.h"
#include "engine/reading.h"
#include "messages.h"
#include "values/grid.h"

#include <net_public.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <set>

namespace {

using namespace netpublic;
using bodies::Path;
using bodies::Recipe;
using bodies::Step;
using test::MessageEnvelope;

struct Result {
    int result = 0;
    std::set<const Row *> taken;
    std::set<const Table *> ignored_in; // the tables that a child has answered to nothing of
    const Row *refused = nullptr;       // the innermost one
    const Row *missing = nullptr;
    std::string body, payload, log;
};

// What the engine says of a walk.
class Ear {
public:
    explicit Ear(Result &result) : watch_{&result, heard}
    {
        netpublic::watch = &watch_;
    }
    ~Ear()
    {
        netpublic::watch = nullptr;
    }
    Ear(const Ear &) = delete;
    Ear &operator=(const Ear &) = delete;

private:
    static void heard(void *context, Event event, const Table &table, const Row *row, void *, Node)
    {
        Result &result = *static_cast<Result *>(context);
        if (event == Event::taken)
            result.taken.insert(row);
        else if (event == Event::ignored)
            result.ignored_in.insert(&table);
        else if ((event == Event::refused || event == Event::placeless) && result.refused == nullptr)
            result.refused = row;
        else if (event == Event::missing && result.missing == nullptr)
            result.missing = row;
    }
    Watch watch_;
};

Result read(const Message &message, const Recipe &recipe, MessageEnvelope &envelope)
{
    TiXmlElement body("body");
    bodies::fill(body, *message.read, recipe);
    Result result;
    {
        const Ear ear(result);
        result.log = test::output_of([&] { result.result = message.parse(&envelope.param, &body); });
    }
    result.body = test::print(body);
    result.payload = envelope.content();
    return result;
}

Result read(const Message &message, const Recipe &recipe)
{
    MessageEnvelope envelope(message);
    return read(message, recipe, envelope);
}

// Only this row gets another text, or another number of elements.
Recipe with_text(const Path &row, const std::string &text)
{
    Recipe recipe;
    recipe.text = [row, text](const Path &path) { return path == row ? text.c_str() : nullptr; };
    return recipe;
}
Recipe with_count(const Path &row, int count)
{
    Recipe recipe;
    recipe.count = [row, count](const Path &path) { return path == row ? count : -1; };
    return recipe;
}
// What is required, and what leads to this row.
Recipe least_with(const Path &row, int count)
{
    Recipe recipe;
    recipe.required_only = true;
    recipe.count = [row, count](const Path &path) {
        return path == row ? count : bodies::leads_to(path, row) && !bodies::is_exact(path.back().row()) ? 1 : -1;
    };
    return recipe;
}

std::vector<Message> read_messages()
{
    std::vector<Message> all;
    for (const Message &message : test::all_messages())
        if (message.parse != nullptr)
            all.push_back(message);
    return all;
}

// Calls a function for each readable row of each message.
template <class Function> void for_rows(Function function)
{
    for (const Message &message : read_messages())
        for (const Path &path : bodies::readable_rows(*message.read)) {
            SCOPED_TRACE(std::string(message.name) + ": " + bodies::spelled(path));
            function(message, path, *path.back().table, path.back().row());
        }
}

class TruthTest : public test::HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        loglevel = 0;
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
        EXPECT_EQ(message.read != nullptr, message.parse != nullptr) << message.name;
        EXPECT_TRUE(message.written == nullptr || message.write != nullptr) << message.name;
    }
}

// Readers -------------------------------------------------------------------------------------------

// A body with every documented child is accepted, and each of them is read.
TEST_F(TruthTest, CompleteBodiesAreRead)
{
    int rows = 0;
    for (const Message &message : read_messages()) {
        const Result complete = read(message, {});
        EXPECT_EQ(complete.result, 0) << message.name << ": " << complete.body;
        const std::vector<Path> paths = bodies::readable_rows(*message.read);
        // What is read twice, by other rows, is ignored once.
        const bool again =
            std::any_of(paths.begin(), paths.end(), [](const Path &path) { return path.back().again() != nullptr; });
        EXPECT_TRUE(again || complete.ignored_in.empty()) << message.name << ": " << complete.body;
        for (const Path &path : paths) {
            EXPECT_EQ(complete.taken.count(&path.back().row()), 1u) << message.name << ": " << bodies::spelled(path);
            ++rows;
        }
    }
    EXPECT_GT(rows, 1000);
}

// Does the row, or one that leads there, say more than its columns do?
bool is_said_in_words(const Path &path)
{
    return std::any_of(path.begin(), path.end(),
                       [](const Step &step) { return *step.table->detail(step.index).accepts != '\0'; });
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
    }
    for_rows([&](const Message &message, const Path &path, const Table &table, const Row &row) {
        if (!bodies::is_exact(row)) {
            const Result alone = read(message, least_with(path, 1));
            EXPECT_TRUE(alone.result == 0 || is_said_in_words(path)) << alone.body;
        }
        if ((row.flags & row_required) == 0 && !bodies::is_exact(row))
            return;
        ++required;
        const Result without = read(message, with_count(path, bodies::is_exact(row) ? table.capacity(row) - 1 : 0));
        EXPECT_EQ(without.result, -1) << without.body;
        EXPECT_TRUE(without.missing == &row || table.names == Names::in_order);
    });
    EXPECT_GT(required, 30);
}

// Texts that a row accepts or refuses, as it says; others are up to what it says in words.
struct Texts {
    std::vector<std::string> good, bad, other;
};

Texts texts_of(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    const Detail &detail = table.detail(index);
    Texts texts;
    auto &[good, bad, other] = texts;
    const bool number = row.kind == Kind::integer || row.kind == Kind::byte || row.kind == Kind::place;
    // Beyond the row, a function decides; only its sample is known to be accepted.
    const bool free = *detail.accepts == '\0' && (number || *detail.sample == '\0');
    const auto length = [&](std::size_t longest) {
        if (longest > 100000)
            return;
        if (free && row.kind != Kind::converted)
            good.push_back(std::string(longest, 'x'));
        bad.push_back(std::string(longest + 1, 'x'));
    };
    const auto spellings = [&](const WordTable &words) {
        for (const auto &entry : words)
            if (entry.use != Use::write && entry.length != 0)
                good.push_back(words.text(entry));
    };
    switch (row.kind) {
    case Kind::integer:
    case Kind::byte:
    case Kind::place: {
        const bool checked = (row.flags & row_checked) != 0;
        const Limits range = checked ? table.limit(row.limits) : Limits{INT_MIN, INT_MAX};
        if (row.kind != Kind::place) {
            std::vector<std::string> &ends = free ? texts.good : texts.other;
            ends.push_back(std::to_string(range.low == INT_MIN ? -7 : range.low));
            ends.push_back(std::to_string(range.high == INT_MAX ? 2147483646 : range.high));
        }
        if (!free && *detail.sample != '\0' && *detail.sample != '#')
            for (const int step : {-1, 1})
                other.push_back(std::to_string(std::stoi(detail.sample) + step));
        if (range.low != INT_MIN)
            bad.push_back(std::to_string(range.low - 1LL));
        if (range.high != INT_MAX)
            bad.push_back(std::to_string(range.high + 1LL));
        if ((row.flags & number_tolerant) == 0 || row.kind == Kind::byte)
            bad.insert(bad.end(), {"x", "", "1234567890123", "1.5"});
        else
            good.insert(good.end(), {"x", ""});
        break;
    }
    case Kind::flag:
        good = {"0", "1"};
        bad = {"2", "-1", "x", "", "0000000001"};
        break;
    case Kind::unsigned_integer:
        good = {"0", "4294967295"};
        bad = {"12345678901", "x", ""};
        break;
    case Kind::int64:
    case Kind::unsigned_longlong:
        good = {"0", "9223372036854775807"};
        bad = {std::string(21, '1'), "x", ""};
        break;
    case Kind::real:
        good = {"-1.25", "1e5"};
        bad = {""};
        break;
    case Kind::text:
    case Kind::counted_text:
    case Kind::view:
        if (free)
            good.push_back("");
        else if (*detail.sample != '\0')
            other.push_back(std::string(detail.sample, std::strlen(detail.sample) - 1));
        else
            other = {"", "1"};
        length(static_cast<std::size_t>(table.limit(row.limits).low));
        break;
    case Kind::converted:
        if (detail.words != nullptr)
            spellings(*detail.words);
        for (const char *text : {"1", "2", "3600"})
            other.push_back(text);
        length(static_cast<std::size_t>(table.limit(row.limits).low));
        break;
    case Kind::word: {
        spellings(*table.ref(row.ref).words);
        const auto longest = static_cast<std::size_t>(table.limit(row.limits).low);
        if (longest < 100000)
            bad.push_back(std::string(longest + 1, 'x'));
        const bool prefix = (row.flags & word_prefix) != 0;
        const bool any = (row.flags & word_adds) != 0; // kept, otherwise and adds take any text
        for (const char *unknown : {"xq", "~"})
            (any ? texts.good : texts.bad).push_back(unknown);
        const std::string spelling = bodies::usual_text(table, index, 0);
        if (find_whole(*table.ref(row.ref).words, spelling.c_str(), true)->use != Use::whole)
            (any || prefix ? texts.good : texts.bad).push_back(spelling.substr(0, spelling.size() - 1));
        if ((row.flags & word_exact) != 0 && !any)
            bad.push_back(std::string(1, static_cast<char>(spelling[0] ^ 0x20)) + spelling.substr(1));
        break;
    }
    case Kind::mask:
    case Kind::events: {
        good = {"", "none"};
        spellings(*table.ref(row.ref).words);
        const auto longest = static_cast<std::size_t>(table.limit(row.limits).low);
        if (longest < 100000) {
            good.push_back(std::string(longest, ','));
            bad.push_back(std::string(longest + 1, ','));
        }
        if (row.kind == Kind::mask && (row.flags & mask_none_conflicts) != 0)
            bad.push_back(bodies::usual_text(table, index, 0) + ",none");
        else
            good.push_back(bodies::usual_text(table, index, 0) + ",none");
        break;
    }
    case Kind::grid: // sides that the text does not fill
        good = {"AAAA", "////"};
        bad = {std::string(table.longest(row) + 1, 'A'), "gUL/gUL/", "gUL", ""};
        break;
    case Kind::int_list:
        good = {"3", "4,5"};
        bad = {std::string(table.longest(row) + 1, '1')};
        break;
    case Kind::int_items:
        good = {"-7", "2147483646"};
        bad = {"x", "", "1234567890123"};
        break;
    default:
        break;
    }
    return texts;
}

// Values at their limits are accepted; one beyond them is refused, and it is that row that refuses.
TEST_F(TruthTest, LimitsAreWhereTheyAreSaidToBe)
{
    loglevel = ~0U;
    int accepted = 0, refused = 0;
    for_rows([&](const Message &message, const Path &path, const Table &table, const Row &row) {
        if ((row.flags & row_skipped) != 0) {
            const Result result = read(message, with_text(path, "anything"));
            EXPECT_EQ(result.result, 0);
            return;
        }
        const Texts texts = texts_of(table, path.back().index);
        for (const std::string &text : texts.good) {
            const Result result = read(message, with_text(path, text));
            EXPECT_EQ(result.result, 0) << "'" << text << "' in " << result.body;
            ++accepted;
        }
        for (const std::string &text : texts.bad) {
            const Result result = read(message, with_text(path, text));
            EXPECT_EQ(result.result, -1) << "'" << text << "'";
            EXPECT_EQ(result.refused, &row) << "'" << text << "'";
            // P12: what is refused, a name or a password, is not shown either.
            EXPECT_TRUE(row.kind != Kind::text || result.log.find("xxxx") == std::string::npos) << result.log;
            ++refused;
        }
        // Whatever else stands there, it is taken or refused, and nothing else happens.
        for (const std::string &odd :
             {std::string(), std::string("-1"), std::string("99999999999"), std::string(5000, ',')}) {
            const int result = read(message, with_text(path, odd)).result;
            EXPECT_TRUE(result == 0 || result == -1) << odd;
        }
    });
    EXPECT_GT(accepted, 2500);
    EXPECT_GT(refused, 2500);
}

// Lists hold what they are said to hold, and do with the rest what they are said to do.
TEST_F(TruthTest, Capacities)
{
    int lists = 0;
    for_rows([&](const Message &message, const Path &path, const Table &table, const Row &row) {
        if (!is_list(row.kind) || table.capacity(row) > 4000 ||
            (row.kind == Kind::list && (row.flags & list_indexed) != 0))
            return;
        ++lists;
        const int capacity = table.capacity(row);
        const Result full = read(message, with_count(path, capacity));
        EXPECT_EQ(full.result, 0) << full.body;
        const Result more = read(message, with_count(path, capacity + 1));
        EXPECT_EQ(more.result, (row.flags & list_stop) == list_refuse ? -1 : 0) << more.body;
        EXPECT_EQ(more.refused, more.result != 0 ? &row : nullptr);
        // What does not fit changes nothing.
        EXPECT_TRUE(more.result != 0 || (row.flags & list_stop) == list_last || more.payload == full.payload)
            << more.body;
        EXPECT_GE(full.taken.count(&row), 1u);
    });
    EXPECT_GT(lists, 40);
}

bool is_by_position(const Table &table)
{
    return table.keys != 0 && is_list(table.row(0).kind) && (table.row(0).flags & list_by_position) != 0;
}

// A child that no row speaks of is ignored or refused, as it is said; by each record of each message.
TEST_F(TruthTest, OtherChildren)
{
    int refusals = 0;
    for (const Message &message : read_messages()) {
        const Result complete = read(message, {});
        std::set<const Table *> tables = {message.read};
        for (const Path &path : bodies::readable_rows(*message.read))
            if (path.back().inside() != nullptr)
                tables.insert(path.back().inside());
        for (const Table *table : tables) {
            SCOPED_TRACE(std::string(message.name) + ", beside " + table->key(table->row(0)));
            if (table->names == Names::any)
                continue;
            const auto here = [table](const Table &its) { return &its == table; };
            const bool refused = (table->flags & table_others_fail) != 0;
            Recipe first, last;
            first.stranger_first = last.stranger_last = here;
            if ((table->flags & table_first_only) == 0) {
                const Result result = read(message, first);
                EXPECT_EQ(result.result, refused ? -1 : 0) << result.body;
                EXPECT_EQ(result.ignored_in.count(table), 1u) << result.body;
                EXPECT_TRUE(refused || is_by_position(*table) || result.payload == complete.payload) << result.body;
                refusals += refused ? 1 : 0;
            }
            // A full list, or the last child in order, ends the walk in front of it.
            const Row &row = table->row(0);
            const bool ends = table->names == Names::in_order || (table->flags & table_first_only) != 0 ||
                              (is_list(row.kind) && (row.flags & list_stop) == list_stop &&
                               (bodies::is_exact(row) || table->capacity(row) < 3));
            const Result result = read(message, last);
            EXPECT_EQ(result.result, refused && !ends ? -1 : 0) << result.body;
            EXPECT_TRUE(result.result != 0 || is_by_position(*table) || result.payload == complete.payload)
                << result.body;
        }
    }
    EXPECT_GT(refusals, 10);
}

// Places --------------------------------------------------------------------------------------------

// The bytes of a payload that something may be stored in.
class Places {
public:
    explicit Places(std::size_t size) : marked_(size, false) {}

    void add(std::size_t offset, std::size_t size)
    {
        for (std::size_t i = offset; i < offset + size && i < marked_.size(); ++i)
            marked_[i] = true;
    }
    // Where the payloads differ outside; -1 if nowhere.
    long differ_outside(const std::string &one, const std::string &other) const
    {
        for (std::size_t i = 0; i < marked_.size(); ++i)
            if (!marked_[i] && one[i] != other[i])
                return static_cast<long>(i);
        return -1;
    }

private:
    std::vector<bool> marked_;
};

std::size_t size_of_member(const Table &table, unsigned index)
{
    const Detail &detail = table.detail(index);
    return std::size_t{detail.dimensions[0]} * detail.dimensions[1] * detail.element_size;
}

// Where a payload's table says that what answers to the keys is kept. A record whose rows describe something else
// than the payload is left for the members that are shown for it: the search goes on there by the key's name.
class Search {
public:
    Search(const Message &message, const Path &path, std::size_t size) : path_(path), places_(size)
    {
        const Table *payload = payload_table(message);
        if (payload == nullptr)
            return;
        const Step &step = path.back();
        // What is said in words may be about all that the element is about.
        loose_ = *step.table->detail(step.index).accepts != '\0';
        if ((message.read->flags & table_walked) == 0)
            follow(*message.read, 0, 0);
        else if (loose_ || !find(*payload, 0, 0, payload->record_size))
            places_.add(0, payload->record_size);
    }
    const Places &places() const
    {
        return places_;
    }

private:
    // The row at this depth of the path is one of the table's, whose record lies at the offset.
    void follow(const Table &table, std::size_t at, std::size_t depth)
    {
        const Step &step = path_[depth];
        const Row &row = step.row();
        const Detail &detail = table.detail(step.index);
        add_attached(table, row, at);
        const bool is_last = depth + 1 == path_.size();
        if (is_last) {
            places_.add(at + row.offset, size_of_member(table, step.index));
            if (loose_ && table.hook(row, Moment::then) != nullptr)
                places_.add(at, table.record_size);
            if (const Row *grid = bodies::grid_of_side(table, row)) // its cells move
                places_.add(at + grid->offset, std::size_t{grid_columns} * grid_rows);
            for (unsigned i = table.keys; i < table.rows; ++i) // what a hook or a conversion makes of it
                if (table.row(i).kind == Kind::named)
                    places_.add(at + table.row(i).offset, size_of_member(table, i));
            return;
        }
        const Table &inside = *path_[depth + 1].table;
        if (row.kind == Kind::wire || row.kind == Kind::wires)
            wire(table, step.index, at);
        else if (row.kind == Kind::group)
            follow(inside, at + row.offset, depth + 1);
        else
            for (std::size_t i = 0; i < static_cast<std::size_t>(table.capacity(row)); ++i)
                follow(inside, at + row.offset + i * detail.element_size, depth + 1);
    }

    // What goes with the row: counts and marks.
    void add_attached(const Table &table, const Row &row, std::size_t at)
    {
        for (const Kind kind : {Kind::count, Kind::mark})
            if (const Row *attached = table.attachment(row, kind))
                places_.add(at + attached->offset, sizeof(int));
    }

    // The wire's target is a member, or what is shown beside the record's rows, or all of the record.
    void wire(const Table &table, unsigned index, std::size_t at)
    {
        if (table.detail(index).element_size != 0) {
            if (loose_ || !find_shown(table, index, at))
                places_.add(at + table.row(index).offset, size_of_member(table, index));
            return;
        }
        std::vector<unsigned> shown;
        for (unsigned i = table.keys; i < table.rows; ++i)
            if (table.row(i).kind == Kind::named)
                shown.push_back(i);
        bool found = false;
        for (const unsigned i : shown)
            found |= find_shown(table, i, at);
        if (found && !loose_)
            return;
        for (const unsigned i : shown)
            places_.add(at + table.row(i).offset, size_of_member(table, i));
        if (shown.empty())
            places_.add(at, table.record_size);
    }

    // In the rows that are shown for a member.
    bool find_shown(const Table &table, unsigned index, std::size_t at)
    {
        const Detail &detail = table.detail(index);
        if (detail.shown == nullptr)
            return false;
        bool found = false;
        for (std::size_t i = 0; i < std::size_t{detail.dimensions[0]} * detail.dimensions[1]; ++i)
            found |= find(*detail.shown, at + table.row(index).offset + i * detail.element_size, detail.shown_offset,
                          detail.element_size);
        return found;
    }

    // The members of the record that bear the name of the path's row, or those inside; the record has this size and
    // begins `less` bytes behind the one that the table describes.
    bool find(const Table &table, std::size_t at, std::size_t less, std::size_t size)
    {
        bool found = false;
        for (unsigned i = 0; i < table.rows; ++i) {
            const Row &row = table.row(i);
            const bool here = (i < table.keys || row.kind == Kind::named) && row.offset >= less &&
                              row.offset - less < size && table.detail(i).element_size != 0;
            if (!here)
                continue;
            const std::size_t member = at + row.offset - less;
            if (std::strcmp(table.key(row), path_.back().key()) == 0) {
                places_.add(member, size_of_member(table, i));
                add_attached(table, row, at - less);
                found = true;
            } else if (row.kind == Kind::group || row.kind == Kind::list) {
                const Table &inside = *table.ref(row.ref).table;
                const int items = row.kind == Kind::list ? table.capacity(row) : 1;
                for (int item = 0; item < items; ++item)
                    found |= find(inside, member + static_cast<std::size_t>(item) * inside.record_size, 0,
                                  inside.record_size);
            } else {
                found |= find_shown(table, i, at - less);
            }
        }
        return found;
    }

    const Path &path_;
    Places places_;
    bool loose_ = false;
};

// What a row has read stands at its documented place and nowhere else: a body that differs in one text leaves a
// payload that differs there only, and does differ.
TEST_F(TruthTest, ValuesStandWhereTheyAreSaidTo)
{
    int compared = 0, unseen = 0;
    for_rows([&](const Message &message, const Path &path, const Table &table, const Row &row) {
        if ((row.flags & row_skipped) != 0 || path.back().inside() != nullptr)
            return;
        const std::size_t size = MessageEnvelope(message).size();
        const Places places = Search(message, path, size).places();
        const Texts known = texts_of(table, path.back().index);
        std::vector<std::string> texts = {bodies::usual_text(table, path.back().index, 0)};
        texts.insert(texts.end(), known.good.begin(), known.good.end());
        texts.insert(texts.end(), known.other.begin(), known.other.end());
        bool differs = false;
        const auto compare = [&](const Result &one, const Result &other, const std::string &text) {
            if (one.result != 0 || other.result != 0)
                return;
            differs |= one.payload != other.payload;
            EXPECT_EQ(places.differ_outside(one.payload, other.payload), -1) << "'" << text << "' in " << other.body;
        };
        if (table.detail(path.back().index).sample[0] == '#') // the place of an item, which chooses its record
            return;
        const Result first = read(message, with_text(path, texts.front()));
        for (const std::string &text : texts)
            compare(first, read(message, with_text(path, text)), text);
        compare(read(message, with_count(path, 0)), first, texts.front());
        // Another row may have the last word on the member.
        for (std::size_t other = 0; other < texts.size() && !differs; ++other) {
            Recipe recipe = least_with(path, 1);
            recipe.text = with_text(path, texts[other]).text;
            compare(read(message, recipe), read(message, least_with(path, 0)), texts[other]);
        }
        EXPECT_TRUE(differs || is_said_in_words({path.back()})) << "is stored nowhere";
        unseen += differs ? 0 : 1;
        ++compared;
    });
    EXPECT_GT(compared, 1000);
}

// Writers -------------------------------------------------------------------------------------------

// Where an element and the documented tree differ, and which rows have been written.
class TreeCheck {
public:
    void check(const TiXmlElement &element, const Table &table, const std::string &path)
    {
        const TiXmlElement *child = element.FirstChildElement();
        for (unsigned place = 0; place < table.written; ++place) {
            const Row &row = table.row(table.ordered(place));
            const std::string name = path + "/" + table.key(row);
            const int count = take(table, place, child, name);
            const bool may_lack = is_list(row.kind) || row.kind == Kind::wire || row.kind == Kind::view ||
                                  row.kind == Kind::grid || table.attachment(row, Kind::condition) != nullptr;
            if (count == 0 && !may_lack)
                problems.push_back(name + " is not written");
            if (is_list(row.kind) && count > table.capacity(row))
                problems.push_back(name + " is written too often");
        }
        if (child != nullptr)
            problems.push_back(path + "/" + child->Value() + " is not documented there");
    }

    std::vector<std::string> problems;
    std::set<std::pair<const Table *, unsigned>> written;

private:
    // The elements that are the row's, from `child` on.
    int take(const Table &table, unsigned place, const TiXmlElement *&child, const std::string &name)
    {
        const unsigned index = table.ordered(place);
        const Row &row = table.row(index);
        int count = 0;
        for (; child != nullptr && std::strcmp(table.key(row), child->Value()) == 0;
             child = child->NextSiblingElement()) {
            TreeCheck inner;
            if (has_table(row.kind))
                inner.check(*child, *table.ref(row.ref).table, name);
            else if (child->FirstChildElement() != nullptr)
                inner.problems.push_back(name + " has children");
            // Of two rows of one name, it may be the other one's.
            if ((count == 1 && !is_list(row.kind)) || (!inner.problems.empty() && has_namesake(table, place)))
                break;
            ++count;
            problems.insert(problems.end(), inner.problems.begin(), inner.problems.end());
            written.insert(inner.written.begin(), inner.written.end());
            written.insert({&table, index});
        }
        return count;
    }

    static bool has_namesake(const Table &table, unsigned place)
    {
        const char *name = table.key(table.row(table.ordered(place)));
        for (unsigned other = place + 1; other < table.written; ++other)
            if (std::strcmp(table.key(table.row(table.ordered(other))), name) == 0)
                return true;
        return false;
    }
};

// The rows that are written, with the names that lead there.
void written_rows(const Table &table, const std::string &path,
                  std::vector<std::pair<std::pair<const Table *, unsigned>, std::string>> &rows)
{
    for (unsigned place = 0; place < table.written; ++place) {
        const unsigned index = table.ordered(place);
        const std::string name = path + "/" + table.key(table.row(index));
        rows.push_back({{&table, index}, name});
        if (has_table(table.row(index).kind))
            written_rows(*table.ref(table.row(index).ref).table, name, rows);
    }
}

// Fills the payload with a number in every word.
void fill_words(MessageEnvelope &envelope, int number)
{
    auto *bytes = static_cast<char *>(envelope.param.data);
    for (std::size_t at = 0; at + sizeof number <= envelope.size(); at += sizeof number)
        std::memcpy(bytes + at, &number, sizeof number);
    envelope.param.reserved1 = 1; // some lists' length
}

// Each word is the last one that its row knows.
Recipe last_words()
{
    Recipe recipe;
    recipe.text = [](const Path &path) -> const char * {
        const Row &row = path.back().row();
        const char *last = nullptr;
        if (row.kind == Kind::word && (row.flags & row_skipped) == 0) {
            const WordTable &words = *path.back().table->ref(row.ref).words;
            for (const auto &entry : words)
                if (entry.use != Use::write && entry.length != 0)
                    last = words.text(entry);
        }
        return last;
    };
    return recipe;
}

// What is written is the documented tree in the documented order, each row of it at least for one of several
// payloads; a message without one writes nothing.
TEST_F(TruthTest, WrittenTrees)
{
    int messages = 0;
    for (const Message &message : test::all_messages()) {
        if (message.write == nullptr)
            continue;
        TreeCheck check;
        for (int round = 0; round < 6; ++round) {
            MessageEnvelope envelope(message);
            if (round == 1 && message.parse != nullptr) {
                EXPECT_EQ(read(message, {}, envelope).result, 0) << message.name;
            } else if (round == 2 && message.parse != nullptr) {
                const std::string text = test::best_example(message);
                test::output_of([&] { EXPECT_EQ(envelope.read(message.parse, text), 0) << message.name; });
            } else if (round == 4 && message.parse != nullptr) {
                EXPECT_EQ(read(message, last_words(), envelope).result, 0) << message.name;
            } else if (round >= 3) {
                fill_words(envelope, round == 3 ? 1 : 15); // codes and flags
            }
            TiXmlElement parent("parent");
            int result = -1;
            test::output_of([&] { result = message.write(&envelope.param, &parent); });
            // What the initialiser leaves, or any number, may be nothing that can be written.
            EXPECT_TRUE(result == 0 || (result == -1 && parent.FirstChild() == nullptr)) << message.name;
            EXPECT_TRUE(result == 0 || (round != 1 && round != 2)) << message.name;
            if (message.written == nullptr) {
                EXPECT_EQ(parent.FirstChild(), nullptr) << message.name << " is said to write nothing";
            }
            const TiXmlElement *root = parent.FirstChildElement();
            if (message.written == nullptr || result != 0)
                continue;
            ASSERT_NE(root, nullptr) << message.name;
            EXPECT_STREQ(root->Value(), message.written->root()) << message.name;
            EXPECT_EQ(root->NextSibling(), nullptr) << message.name;
            check.check(*root, *message.written, message.name);
        }
        if (message.written == nullptr)
            continue;
        for (const std::string &problem : check.problems)
            ADD_FAILURE() << problem;
        std::vector<std::pair<std::pair<const Table *, unsigned>, std::string>> rows;
        written_rows(*message.written, message.name, rows);
        for (const auto &[row, name] : rows)
            EXPECT_TRUE(check.written.count(row) == 1 || name == "encoding-list/more") // only behind a cut page
                << name << " is never written";
        ++messages;
    }
    EXPECT_GT(messages, 45);
}

} // namespace
