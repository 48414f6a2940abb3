#include "facts.h"

#include "accept.h"
#include "engine/engine.h"
#include "engine/matching.h"
#include "rows.h"
#include "text.h"

#include <algorithm>

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
        if (row.offset == offset && bytes_of(table, i) == sizeof(int))
            return name;
        if (row.kind != Kind::group)
            continue;
        const std::string inner = member_at(*table.ref(row.ref).table, offset - row.offset);
        if (!inner.empty())
            return name + "." + inner;
    }
    return "";
}

std::string int_at(const Table &table, std::uint32_t offset)
{
    const std::string name = member_at(table, offset);
    return name.empty() ? "the int at byte " + std::to_string(offset) : "`" + name + "`";
}

// How names are compared, where that is not by their beginnings.
const char *names_text(netpublic::Names names)
{
    using netpublic::Names;
    switch (names) {
    case Names::whole:
        return "names are compared as a whole, case aside: a shorter one answers to no key";
    case Names::longer:
        return "a name answers when it begins with the key, case aside; it may go on behind it";
    case Names::any:
        return "every element is taken, whatever its name; comments and texts are not";
    case Names::in_order:
        return "the children come in this order; what stands behind them is ignored";
    case Names::looked_up:
        return "the first child of exactly this name is read, case included";
    case Names::beginnings:
        break;
    }
    return "";
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
        notes.emplace_back("fewer items are refused, what stands behind the last one is ignored");
    else if (table.capacity(row) != INT_MAX)
        notes.emplace_back(policy == list_refuse ? "an item too many is refused"
                           : policy == list_last ? "an item too many overwrites the last one"
                           : policy == list_stop ? "what stands behind the last item that fits is ignored"
                                                 : "items too many are skipped");
    if ((row.flags & list_by_position) != 0)
        notes.emplace_back(row.kind == Kind::list
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
    switch (line) {
    case Line::parser:
        return "\"Func(...) Line(...)\"";
    case Line::writer:
        return "\"func:... line:...\"";
    case Line::plain:
        return "\"Func(...) Line(...)\", not gated";
    case Line::plain_failed:
        return "\"func:... line:... failed\", not gated";
    case Line::plain_arrow:
        return "\"func:...  line:...------------>\", not gated";
    case Line::green_empty:
        return "an empty green line, not gated";
    case Line::error:
        return "\" error \"";
    case Line::plain_param:
        return "\"param err\", not gated";
    case Line::xml_error:
        return "\"XML IS ERROR\"";
    case Line::xml_err:
        return "\"xml err\"";
    case Line::param_error:
        return "\"param error\"";
    case Line::location:
        return "\"..., ...\"";
    case Line::null_error:
        return "\"arguments are null.\"";
    case Line::rights_error:
        return "\"nets_ability_support_s2x fail\"";
    case Line::none:
        break;
    }
    return "nothing";
}

std::string check_text(const Table &table, bool any_size, netpublic::Line line)
{
    return (any_size ? "any `dataSize`" : "`dataSize` " + std::to_string(table.record_size)) +
           "; a bad envelope logs " + fixed_line(line);
}

} // namespace

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
    constexpr const char *names[] = {"integer", "flag",  "byte", "unsigned",  "int64",  "uint64", "real",      "text",
                                     "counted", "view",  "word", "mask",      "events", "ints",   "converted", "grid",
                                     "place",   "group", "list", "items",     "wire",   "wires",  "constant",  "named",
                                     "preset",  "count", "mark", "condition", "hook",   "again",  "shows",     "line"};
    static_assert(std::size(names) == static_cast<std::size_t>(Kind::second_line) + 1, "a name each");
    return names[static_cast<std::size_t>(kind)];
}

const Table *inner_table(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    return netpublic::has_table(row.kind) ? table.ref(row.ref).table : nullptr;
}

const WordTable *words_beside(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    return row.kind == Kind::word || row.kind == Kind::mask || row.kind == Kind::events ? table.ref(row.ref).words
                                                                                        : table.detail(index).words;
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
        std::snprintf(code, sizeof code, bits ? "0x%x" : "%d", static_cast<unsigned int>(entry.code));
        texts.push_back(std::string(code) + " " + (*words.text(entry) != '\0' ? words.text(entry) : "\"\"") +
                        (entry.use == Use::read    ? " (only read)"
                         : entry.use == Use::write ? " (only written)"
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

bool is_in_order(const Table &table, unsigned index)
{
    for (unsigned place = 0; place < table.written; ++place)
        if (table.ordered(place) == index)
            return true;
    return false;
}

std::string limits_text(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    const auto longest = [&] { return "at most " + std::to_string(table.limit(row.limits).low) + " characters"; };
    switch (row.kind) {
    case Kind::word:
        return "a word";
    case Kind::mask:
        return "words that occur in a text of " + longest();
    case Kind::events:
        return "alarm types that occur in a text of " + longest();
    case Kind::group:
    case Kind::wire:
        return "a group";
    case Kind::list:
    case Kind::wires:
        return table.capacity(row) == INT_MAX ? "a list" : "a list of at most " + std::to_string(table.capacity(row));
    case Kind::int_items:
        return "a list of at most " + std::to_string(table.capacity(row)) + " whole numbers";
    case Kind::constant:
        return "always " + std::to_string(table.limit(row.limits).low);
    case Kind::preset:
        return "set to " + std::to_string(table.limit(row.limits).low) + " before the keys are read";
    case Kind::int_list:
        return accepted_by(table, row) + "; the others become " + std::to_string(table.limit(row.limits).high);
    default:
        return accepted_by(table, row);
    }
}

std::vector<std::string> row_notes(const Table &table, unsigned index)
{
    std::vector<std::string> notes;
    const Row &row = table.row(index);
    const bool is_key = index < table.keys, written = is_in_order(table, index);
    if (row.kind == Kind::preset)
        return notes;
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
    else if (!also_written)
        notes.emplace_back("only read");
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
    if ((row.flags & netpublic::row_complains) != 0) {
        std::string line = table.complaint(row);
        line.erase(std::min(line.find_last_not_of(" \r\n") + 1, line.size()));
        notes.push_back("logs " + in_quotes(line) + ((row.flags & netpublic::row_plain) != 0 ? ", not gated" : ""));
    }
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
        notes.emplace_back("a child that answers to no key is logged");
    if (table.failure() != netpublic::Line::none)
        notes.push_back("a refused child logs " + fixed_line(table.failure()));
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
           ((table.flags & netpublic::table_capital) != 0 ? "; the root's attribute is spelled \"Version\"" : "");
}

std::vector<std::string> written_order(const Table &table)
{
    std::vector<std::string> keys;
    for (unsigned place = 0; place < table.written; ++place)
        keys.emplace_back(table.key(table.row(table.ordered(place))));
    return keys;
}

std::vector<std::string> inner_order(const Table &table, unsigned index)
{
    const Table *inner = inner_table(table, index);
    bool written = is_in_order(table, index);
    for (unsigned i = 0; i < table.rows && !written; ++i)
        written = is_in_order(table, i) && std::string(table.key(table.row(i))) == table.key(table.row(index));
    return written && inner != nullptr && inner->written > 1 ? written_order(*inner) : std::vector<std::string>();
}

std::vector<unsigned> described_rows(const Table &table)
{
    std::vector<unsigned> rows;
    for (unsigned i = 0; i < table.rows; ++i) {
        const Kind kind = table.row(i).kind;
        if (kind <= Kind::preset)
            rows.push_back(i);
    }
    return rows;
}

std::string id_text(const Entry &entry)
{
    return entry.initialiser != nullptr && entry.initialiser->id >= 0 ? std::to_string(entry.initialiser->id) : "-";
}

} // namespace netparam
