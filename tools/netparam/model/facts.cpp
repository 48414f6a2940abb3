#include "model/facts.h"

#include "engine/engine.h"
#include "engine/matching.h"
#include "model/accept.h"
#include "model/rows.h"
#include "model/text.h"

#include <algorithm>
#include <map>
#include <set>

namespace netparam {

using netpublic::Detail;
using netpublic::Kind;
using netpublic::Row;
using netpublic::Shape;
using netpublic::Table;
using netpublic::Use;
using netpublic::When;
using netpublic::WordTable;

namespace {

// By the shape where it says all: compilers spell the plain types in their own ways.
std::string element_type(const Detail &detail)
{
    switch (detail.shape) {
    case Shape::u32:
        return "unsigned int";
    case Shape::i64:
        return "long long";
    case Shape::u64:
        return "unsigned long long";
    case Shape::f32:
        return "float";
    case Shape::u8:
        return "unsigned char";
    case Shape::characters:
        return "char";
    case Shape::none:
        return "const char *";
    default:
        return detail.type;
    }
}

bool has_detail(const Table &table, unsigned index)
{
    return table.detail(index).type != nullptr && *table.detail(index).type != '\0';
}

// What the record calls the int at that place, the members of its groups among them; empty without a name.
std::string member_at(const Table &table, std::uint32_t offset)
{
    for (unsigned i = 0; i < table.rows; ++i) {
        const Row &row = table.row(i);
        if (!has_detail(table, i) || offset < row.offset || offset >= row.offset + bytes_of(table, i))
            continue;
        std::string name = table.text(table.detail(i).member);
        const Detail &detail = table.detail(i);
        if (row.offset == offset && bytes_of(table, i) == sizeof(int))
            return name;
        if (detail.shape == Shape::i32 && detail.dimensions[1] == 1)
            return name + "[" + std::to_string((offset - row.offset) / detail.element_size) + "]";
        if (row.kind != Kind::group)
            continue;
        const std::string inner = member_at(*table.ref(row.ref).table, offset - row.offset);
        if (!inner.empty())
            return name + "." + inner;
    }
    return "";
}

// Which bytes of a record are a payload's: all of them, or, of a record of a walk's own, those of the one it holds.
struct Share {
    std::uint32_t from, end;
    bool held;
};

// The records that payloads consist of, by their types.
class PayloadRecords {
public:
    PayloadRecords()
    {
        for (const Entry &entry : entries())
            if (const Table *table = entry.table())
                add(*table, {0, table->record_size, false});
    }
    // Null for other records.
    const Share *find(const char *record) const
    {
        const auto found = shares_.find(record);
        return found != shares_.end() ? &found->second : nullptr;
    }

private:
    void add(const Table &table, Share share)
    {
        shares_.try_emplace(table.record, share);
        if (!visited_.insert(&table).second)
            return;
        for (unsigned i = 0; i < table.rows; ++i) {
            const Row &row = table.row(i);
            const Table *inner = row.kind == Kind::group || row.kind == Kind::list ? table.ref(row.ref).table : nullptr;
            if (inner != nullptr)
                add(*inner, {0, inner->record_size, false});
            const Detail &detail = table.detail(i);
            if (has_detail(table, i) && detail.shown != nullptr)
                add(*detail.shown, {detail.shown_offset, detail.shown_offset + detail.element_size,
                                    detail.element_size != detail.shown->record_size});
        }
    }

    std::map<std::string, Share> shares_;
    std::set<const Table *> visited_;
};

const Share *share_of(const Table &table)
{
    static const PayloadRecords records;
    return records.find(table.record);
}

std::string int_at(const Table &table, std::uint32_t offset)
{
    if (std::strcmp(table.record, "net_param_t") == 0)
        return "the envelope's `" + member_at(table, offset) + "`";
    if (share_of(table) == nullptr)
        return "a number that lives no longer than the reading or writing";
    std::string name = member_at(table, offset);
    if (name.empty() && table.layout != nullptr)
        name = member_at(*table.layout, offset);
    return name.empty() ? "the int at byte " + std::to_string(offset) : "`" + name + "`";
}

// How names are compared, where that is not by their beginnings.
const char *names_text(netpublic::Names names)
{
    constexpr const char *texts[] = {"",
                                     "names are compared as a whole, case aside: a shorter one answers to no key",
                                     "a name answers when it begins with the key, case aside; it may go on behind it",
                                     "every element is taken, whatever its name; comments and texts are not",
                                     "the children come in this order; what stands behind them is ignored",
                                     "the first child of exactly this name is read, case included"};
    static_assert(std::size(texts) == static_cast<std::size_t>(netpublic::Names::looked_up) + 1, "a text each");
    return texts[static_cast<std::size_t>(names)];
}

bool answers(const Table &table, const char *name, const char *key)
{
    switch (table.names) {
    case netpublic::Names::whole:
        return netpublic::is_named(name, key);
    case netpublic::Names::longer:
        return netpublic::same_folded(name, key, std::strlen(key));
    case netpublic::Names::any:
        return true;
    case netpublic::Names::looked_up:
        return std::strcmp(name, key) == 0;
    default:
        return netpublic::answers_to(name, key);
    }
}

// A line that the library logs, without the blanks and breaks at its end.
std::string logged(std::string line)
{
    line.erase(std::min(line.find_last_not_of(" \r\n") + 1, line.size()));
    return in_quotes(line);
}

bool is_bit(const Row &row)
{
    return row.kind == Kind::byte && (row.flags & netpublic::number_bit) != 0;
}

std::string condition_text(When when)
{
    return when == When::nonzero ? "is not 0" : when == When::nonnegative ? "is not negative" : "is positive";
}

void add_attached(std::vector<std::string> &notes, const Table &table, const Row &row)
{
    if (const Row *count = table.attachment(row, Kind::count))
        notes.push_back("counted by " + int_at(table, count->offset));
    if (const Row *mark = table.attachment(row, Kind::mark))
        notes.push_back("stores " + std::to_string(table.limit(mark->limits).low) + " in " +
                        int_at(table, mark->offset) + " once it has been read");
    if (const Row *condition = table.attachment(row, Kind::condition)) {
        const auto when = static_cast<When>(condition->limits & ~netpublic::demanded);
        const std::string met = when == When::function ? "its condition holds"
                                                       : int_at(table, condition->offset) + " " + condition_text(when);
        notes.push_back((condition->limits & netpublic::demanded) != 0 ? "writing fails unless " + met
                                                                       : "written only when " + met);
    }
    if (const Row *shows = table.attachment(row, Kind::shows))
        notes.push_back("its line shows " + int_at(table, shows->offset));
    if (table.attachment(row, Kind::again) != nullptr)
        notes.emplace_back("its children are read twice, the second time by the rows that follow");
    if (const char *line = table.second_line(row))
        notes.push_back("logs " + logged(line) +
                        (row.kind == Kind::grid ? " and leaves it out when the text would be too long to be written"
                         : netpublic::is_list(row.kind) ? " for each refused item"
                                                        : " for a code without a word, and writing fails"));
}

void add_hooks(std::vector<std::string> &notes, const Table &table, const Row &row)
{
    const bool told = *table.detail(table.index_of(row)).accepts != '\0';
    if (table.hook(row, netpublic::Moment::ahead) != nullptr)
        notes.emplace_back("code of its own runs in front of reading it");
    if (table.hook(row, netpublic::Moment::then) != nullptr)
        notes.emplace_back(told ? "checked by code of its own" : "code of its own runs once it has been read");
    if (table.hook(row, netpublic::Moment::absent) != nullptr)
        notes.emplace_back((row.flags & netpublic::list_by_position) != 0 && netpublic::is_list(row.kind)
                               ? "code of its own runs at the place of another child"
                               : "code of its own runs behind an item without it");
    if (row.kind == Kind::wire || row.kind == Kind::wires)
        notes.emplace_back("code of its own turns its children into the payload's form");
}

void add_word_notes(std::vector<std::string> &notes, const Table &table, const Row &row)
{
    if ((row.flags & netpublic::word_prefix) != 0)
        notes.emplace_back("the beginning of a word will do, and the empty text is the first word");
    if ((row.flags & netpublic::word_exact) != 0)
        notes.emplace_back("case matters");
    if ((row.flags & netpublic::word_keep) != 0)
        notes.emplace_back("an unknown word leaves the member as it was");
    if ((row.flags & netpublic::word_otherwise) != 0)
        notes.push_back("an unknown word stores " + std::to_string(table.limit(row.limits).high));
    if ((row.flags & netpublic::word_reported) != 0)
        notes.emplace_back("an unknown word is logged as a refusal is");
    if ((row.flags & netpublic::word_fallback) != 0) {
        const char *word = netpublic::word_of(*table.ref(row.ref).words, table.limit(row.limits).high);
        notes.push_back(std::string("a code without a word is written as \"") + (word != nullptr ? word : "") + "\"");
    }
}

void add_mask_notes(std::vector<std::string> &notes, const Table &table, const Row &row)
{
    if ((row.flags & netpublic::mask_none_clears) != 0)
        notes.emplace_back("a text with \"none\" in it is the empty set");
    if ((row.flags & netpublic::mask_none_conflicts) != 0)
        notes.emplace_back("\"none\" beside any other word is refused");
    if ((row.flags & netpublic::mask_accumulates) != 0)
        notes.emplace_back("added to what the member holds");
    if ((row.flags & netpublic::mask_last) != 0)
        notes.emplace_back("only the last word of the table that is found counts");
    if ((row.flags & (netpublic::mask_last | netpublic::mask_accumulates)) == 0 && table.limit(row.limits).high != 0)
        notes.push_back("starts from " + std::to_string(table.limit(row.limits).high));
}

void add_list_notes(std::vector<std::string> &notes, const Table &table, const Row &row)
{
    using namespace netpublic;
    const unsigned policy = row.flags & list_stop;
    if ((row.flags & list_exact) != 0)
        notes.emplace_back("fewer items are refused; what stands behind the last one is ignored");
    else if (table.capacity(row) != INT_MAX)
        notes.emplace_back(policy == list_refuse ? "an item too many is refused"
                           : policy == list_last ? "an item too many overwrites the last one"
                           : policy == list_stop ? "what stands behind the last item that fits is ignored"
                                                 : "items too many are skipped");
    if ((row.flags & list_by_position) != 0)
        notes.emplace_back(row.kind == Kind::list && table.ref(row.ref).table->begins_anew()
                               ? "an item's record follows its place among all children; another child leaves it empty"
                               : "an item's record follows its place among all children");
    if (row.kind == Kind::list && (row.flags & list_indexed) != 0)
        notes.emplace_back("an item's index child chooses its record and comes first");
    if (row.kind != Kind::wires && count_of(table, row) == nullptr &&
        (row.flags & (list_by_position | list_exact)) == 0 &&
        !(row.kind == Kind::list && (row.flags & list_indexed) != 0))
        notes.emplace_back("nothing keeps the number of items");
}

std::string fixed_line(netpublic::Line line)
{
    using netpublic::Line;
    constexpr std::pair<Line, const char *> lines[] = {
        {Line::parser, "\"Func(...) Line(...)\""},
        {Line::writer, "\"func:... line:...\""},
        {Line::plain, "\"Func(...) Line(...)\", not gated"},
        {Line::plain_failed, "\"func:... line:... failed\", not gated"},
        {Line::plain_arrow, "\"func:...  line:...------------>\", not gated"},
        {Line::green_empty, "an empty green line, not gated"},
        {Line::error, "\" error \""},
        {Line::plain_param, "\"param err\", not gated"},
        {Line::xml_error, "\"XML IS ERROR\""},
        {Line::xml_err, "\"xml err\""},
        {Line::param_error, "\"param error\""},
        {Line::location, "\"..., ...\""},
        {Line::null_error, "\"arguments are null.\""},
        {Line::rights_error, "\"nets_ability_support_s2x fail\""},
    };
    for (const auto &[known, text] : lines)
        if (known == line)
            return text;
    return "nothing";
}

std::string hexadecimal(int number)
{
    char text[16];
    std::snprintf(text, sizeof text, "%x", static_cast<unsigned int>(number));
    return text;
}

std::string check_text(const Table &table, bool any_size, netpublic::Line line)
{
    const std::uint32_t size = table.layout != nullptr ? table.layout->record_size : table.record_size;
    return (any_size ? "any `dataSize`" : "`dataSize` " + std::to_string(size)) + "; a bad envelope logs " +
           fixed_line(line);
}

bool is_in_order(const Table &table, unsigned index)
{
    for (unsigned place = 0; place < table.written; ++place)
        if (table.ordered(place) == index)
            return true;
    return false;
}

} // namespace

bool in_payload(const Table &table)
{
    const Share *share = share_of(table);
    return share != nullptr && !share->held;
}

std::string type_of(const Table &table, unsigned index)
{
    if (!has_detail(table, index))
        return "";
    const Detail &detail = table.detail(index);
    std::string type = element_type(detail);
    for (const std::uint32_t dimension : detail.dimensions)
        if (dimension > 1)
            type += "[" + std::to_string(dimension) + "]";
    return type;
}

std::size_t bytes_of(const Table &table, unsigned index)
{
    const Detail &detail = table.detail(index);
    // A pointer is as large as the machine wants it.
    return has_detail(table, index) && detail.shape != Shape::none
               ? std::size_t{detail.element_size} * detail.dimensions[0] * detail.dimensions[1]
               : 0;
}

std::string kind_name(Kind kind)
{
    constexpr const char *names[] = {
        "integer",  "flag",   "byte",   "unsigned",  "int64", "uint64",    "real",  "text", "counted", "view",  "word",
        "mask",     "events", "ints",   "converted", "grid",  "place",     "group", "wire", "list",    "items", "wires",
        "constant", "named",  "preset", "line",      "shows", "condition", "hook",  "mark", "count",   "again"};
    static_assert(std::size(names) == static_cast<std::size_t>(Kind::again) + 1, "a name each");
    return names[static_cast<std::size_t>(kind)];
}

std::vector<const Table *> inner_tables(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    std::vector<const Table *> tables;
    if (netpublic::has_table(row.kind))
        tables.push_back(table.ref(row.ref).table);
    if (const Row *again = table.attachment(row, Kind::again))
        tables.push_back(table.ref(again->offset).table);
    return tables;
}

bool is_mask(const Table &table, unsigned index)
{
    const Kind kind = table.row(index).kind;
    return kind == Kind::mask ||
           (kind != Kind::word && kind != Kind::events && table.detail(index).shape == Shape::u32);
}

std::string words_text(const WordTable &words, bool bits)
{
    std::vector<std::string> texts;
    for (const auto &entry : words) {
        char code[16];
        std::snprintf(code, sizeof code, bits ? "0x%x" : "%d", static_cast<unsigned int>(entry.code()));
        texts.push_back(std::string(code) + " " + (*words.text(entry) != '\0' ? words.text(entry) : "\"\"") +
                        (entry.use == Use::read    ? " (only read)"
                         : entry.use == Use::write ? " (only written)"
                         : entry.use == Use::whole ? " (only as a whole)"
                                                   : ""));
    }
    return joined(texts, ", ");
}

std::vector<unsigned> readers_of(const Table &table, const char *name)
{
    std::vector<unsigned> readers;
    bool tried = true; // behind a key that takes the child, until a chain of its own begins, no other is
    for (unsigned i = 0; i < table.keys; ++i) {
        const char *key = table.key(table.row(i));
        tried = tried || (table.row(i).flags & netpublic::row_own_test) != 0;
        if (tried && answers(table, name, key)) {
            readers.push_back(i);
            tried = false;
        }
    }
    return readers;
}

std::string limits_text(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    const auto list = [&](const std::string &items) {
        const std::string capacity = std::to_string(table.capacity(row));
        return table.capacity(row) == INT_MAX             ? "a list" + items
               : (row.flags & netpublic::list_exact) != 0 ? "a list of exactly " + capacity + items
                                                          : "a list of at most " + capacity + items;
    };
    const std::string told = table.detail(index).accepts;
    const std::string more = told.empty() ? "" : ": " + told;
    switch (row.kind) {
    case Kind::word:
        return "a word" + more;
    case Kind::mask:
        return "words that occur in " + bounded_text(table, row) + more;
    case Kind::events:
        return "alarm types that occur in " + bounded_text(table, row) + more;
    case Kind::byte:
        return is_bit(row) ? "a bit, 0x" + hexadecimal(table.limit(row.limits).low) + more : accepted_by(table, row);
    case Kind::group:
    case Kind::wire:
        return "a group" + more;
    case Kind::list:
    case Kind::wires:
        return list("") + more;
    case Kind::int_items:
        return list(" whole numbers") + more;
    case Kind::converted:
        return table.detail(index).words != nullptr && told.empty() ? "a word" : accepted_by(table, row);
    case Kind::constant:
        return "always " + std::to_string(table.limit(row.limits).low);
    case Kind::preset:
        return (share_of(table) == nullptr ? int_at(table, row.offset) + " is set to " : "set to ") +
               std::to_string(table.limit(row.limits).low) + " before the keys are read";
    case Kind::named:
        return "";
    case Kind::int_list:
        return accepted_by(table, row) + "; the others become " + std::to_string(table.limit(row.limits).high);
    default:
        return accepted_by(table, row);
    }
}

std::vector<std::string> row_notes(const Table &table, unsigned index, bool writes)
{
    std::vector<std::string> notes;
    const Row &row = table.row(index);
    const bool is_key = index < table.keys, written = is_in_order(table, index);
    if (row.kind == Kind::preset)
        return notes;
    if (row.kind == Kind::named)
        return {"has no child of its own: filled from others"};
    if (!is_key && !written)
        return {"no key answers for it"};
    if ((row.flags & netpublic::row_required) != 0)
        notes.emplace_back("required");
    if ((row.flags & netpublic::row_skipped) != 0)
        notes.emplace_back("taken, but not read");
    bool also_written = written;
    for (unsigned i = table.keys; i < table.rows && !also_written; ++i)
        also_written = is_in_order(table, i) && std::string(table.key(table.row(i))) == table.key(row);
    if (!is_key)
        notes.emplace_back("only written");
    else if (writes && !also_written)
        notes.emplace_back("only read");
    if (!is_key && netpublic::is_list(row.kind) && table.capacity(row) != INT_MAX)
        notes.push_back("at most " + std::to_string(table.capacity(row)) + " of them are written");
    if (is_bit(row))
        notes.emplace_back("a number other than 0 sets the bit, a 0 takes none away");
    if ((row.flags & netpublic::number_tolerant) != 0 && row.kind == Kind::integer)
        notes.emplace_back("what is no number leaves the member as it was");
    if (row.kind == Kind::view && (row.flags & netpublic::view_whole) != 0)
        notes.emplace_back("its name is compared as a whole");
    if (row.kind == Kind::place)
        notes.emplace_back("chooses the item's record and comes first; written as the item's place");
    if (row.kind == Kind::mask && (row.flags & netpublic::mask_wordless) != 0)
        notes.emplace_back("written as an empty text when its bits have no words");
    if (is_key && row.kind == Kind::int_list && (row.flags & netpublic::int_list_late) != 0)
        notes.emplace_back("converted behind all other children");
    if (is_key && row.kind == Kind::grid)
        notes.emplace_back("decoded behind all other children, when both sides are known");
    if (is_key) {
        const std::vector<unsigned> readers = readers_of(table, table.key(row));
        if (std::find(readers.begin(), readers.end(), index) == readers.end() && !readers.empty()) {
            const std::string other = table.key(table.row(readers.front()));
            notes.push_back(other == table.key(row)
                                ? "an earlier row of this name takes the child"
                                : "a child called `" + std::string(table.key(row)) + "` is taken by `" + other + "`");
        }
    }
    if ((row.flags & netpublic::row_own_test) != 0)
        notes.emplace_back("tried even when an earlier key has taken the child");
    if (row.kind == Kind::word)
        add_word_notes(notes, table, row);
    if (row.kind == Kind::mask)
        add_mask_notes(notes, table, row);
    if (row.kind == Kind::events)
        notes.emplace_back("added to the set; nothing is when the text contains \"none\"");
    if (is_key && netpublic::is_list(row.kind))
        add_list_notes(notes, table, row);
    add_attached(notes, table, row);
    add_hooks(notes, table, row);
    if ((row.flags & netpublic::row_complains) != 0)
        notes.push_back("logs " + logged(table.complaint(row)) +
                        ((row.flags & netpublic::row_plain) != 0 ? ", not gated" : ""));
    if ((row.flags & netpublic::row_quiet) != 0)
        notes.emplace_back("a refusal is not logged");
    return notes;
}

std::vector<std::string> table_notes(const Table &table)
{
    std::vector<std::string> notes;
    if ((table.flags & netpublic::table_clears) != 0)
        notes.emplace_back("the record is zeroed before it is read");
    if (*names_text(table.names) != '\0')
        notes.emplace_back(names_text(table.names));
    if ((table.flags & netpublic::table_others_fail) != 0)
        notes.emplace_back("a child that answers to no key is refused");
    if ((table.flags & netpublic::table_first_only) != 0)
        notes.emplace_back("only the first child is looked at");
    if ((table.flags & netpublic::table_before) != 0)
        notes.emplace_back("code of its own runs before the children are read");
    if ((table.flags & netpublic::table_after) != 0)
        notes.emplace_back("code of its own runs behind the children and may refuse the whole");
    if ((table.flags & netpublic::table_unknown) != 0)
        notes.push_back("a child that answers to no key logs " + logged(table.unknown()));
    if ((table.traits & netpublic::trait_missing) != 0)
        notes.push_back("a missing child logs " + logged(table.missing()));
    if ((table.traits & netpublic::trait_empty_done) != 0)
        notes.emplace_back("a body without children is accepted and changes nothing");
    if (table.parsed == netpublic::ParsedAs::tried)
        notes.emplace_back("the body is checked as a whole before anything is stored");
    if (table.parsed == netpublic::ParsedAs::walk)
        notes.emplace_back(
            "what the message says as a whole is stored by code of its own when all of it has been read");
    if (table.source().failure != netpublic::Line::none)
        notes.push_back("a refused child logs " + fixed_line(table.source().failure));
    return notes;
}

std::string read_check(const Table &table)
{
    const bool any = (table.flags & netpublic::table_read_any) != 0;
    return check_text(table, any, table.source().entry) +
           ((table.flags & netpublic::table_sets_inited) != 0 ? "; sets `inited` to 2" : "");
}

std::string write_check(const Table &table)
{
    const bool any = (table.flags & netpublic::table_write_any) != 0;
    return check_text(table, any, table.source().write_entry) +
           ((table.traits & netpublic::trait_write_line) != 0 ? ", and so does a payload that cannot be written" : "") +
           ((table.flags & netpublic::table_capital) != 0 ? "; the root's attribute is spelled \"Version\"" : "");
}

std::vector<std::string> written_order(const Table &table)
{
    std::vector<std::string> keys;
    for (unsigned place = 0; place < table.written; ++place)
        keys.emplace_back(table.key(table.row(table.ordered(place))));
    return keys;
}

std::vector<unsigned> described_rows(const Table &table)
{
    std::vector<unsigned> rows;
    for (unsigned i = 0; i < table.rows; ++i) {
        if (table.row(i).kind <= Kind::preset)
            rows.push_back(i);
    }
    return rows;
}

namespace {

bool has_key(const Table &table, unsigned index)
{
    const Kind kind = table.row(index).kind;
    return kind != Kind::preset && kind != Kind::named;
}

bool in_payload(const Table &table, unsigned index)
{
    const Share *share = share_of(table);
    const std::uint32_t offset = table.row(index).offset;
    return has_detail(table, index) && share != nullptr && offset >= share->from && offset < share->end;
}

std::string member_of(const Table &table, unsigned index)
{
    const std::string name = table.text(table.detail(index).member);
    const std::size_t dot = name.find('.');
    // Of a record that a walk's own holds, the name begins behind the dot.
    const Share *share = share_of(table);
    return share != nullptr && share->held && dot != std::string::npos ? name.substr(dot + 1) : name;
}

std::string children_notes(const Table &inner)
{
    const std::string notes = joined(table_notes(inner), ", ");
    return notes.empty() ? "" : "children: " + notes;
}

std::vector<std::string> inner_order(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    const Table *inner = netpublic::has_table(row.kind) ? table.ref(row.ref).table : nullptr;
    return is_in_order(table, index) && inner != nullptr && inner->written > 1 ? written_order(*inner)
                                                                               : std::vector<std::string>();
}

} // namespace

std::vector<RowFacts> facts_of(const Table &table, bool writes)
{
    std::vector<RowFacts> all;
    for (const unsigned index : described_rows(table)) {
        RowFacts facts = {};
        facts.index = index;
        facts.name = name_of(table, index);
        facts.has_key = has_key(table, index);
        facts.in_payload = in_payload(table, index);
        facts.type = type_of(table, index);
        facts.member = member_of(table, index);
        facts.bytes = bytes_of(table, index);
        facts.written = writes && is_in_order(table, index);
        facts.accepts = limits_text(table, index);
        facts.words = row_words(table, table.row(index));
        facts.spelled = facts.words != nullptr ? words_text(*facts.words, is_mask(table, index)) : "";
        facts.notes = row_notes(table, index, writes);
        if (facts.written)
            facts.order = inner_order(table, index);
        for (const Table *inner : inner_tables(table, index))
            facts.inner.push_back({inner, facts.written && facts.inner.empty(), children_notes(*inner)});
        all.push_back(facts);
    }
    return all;
}

std::string id_text(const Entry &entry)
{
    return entry.initialiser != nullptr && entry.initialiser->id >= 0 ? std::to_string(entry.initialiser->id) : "-";
}

} // namespace netparam
