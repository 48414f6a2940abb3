#include "engine/reading.h"

#include "engine/matching.h"
#include "engine/member.h"
#include "ground/for_size.h"
#include "values/grid.h"
#include "values/values.h"

#include <net_xml_public.h>

#include <cstring>

namespace netpublic {

#ifdef NETPUBLIC_DESCRIBED
thread_local const Watch *watch = nullptr;

static void tell(Event event, const Table &table, const Row *row, void *record, Node node)
{
    if (watch != nullptr)
        watch->happened(watch->context, event, table, row, record, node);
}
#else
#define tell(event, table, row, record, node) static_cast<void>(node)
#endif

namespace {

// One walk over an element's children.
struct Walk {
    const Table &table;
    void *record;
    unsigned items;     // in the list whose number nothing keeps
    bool full;          // a list that ends the walk is full
    std::uint32_t seen; // bit i: a child has answered to row i

    Place place() const
    {
        return table.place();
    }
    const char *function() const
    {
        return table.parser();
    }
};

// Log lines ---------------------------------------------------------------------------------------

// Formats of rows are literals of the tables.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

template <class... Arguments> void complain(const Walk &walk, const Row &row, Arguments... arguments)
{
    const bool plain = (row.flags & row_plain) != 0;
    if (!for_size && !plain && !log_gate(log_errors))
        return; // nearly always: do not even look for the line
    const char *line = walk.table.complaint(row);
    if (plain)
        log_plain(line, arguments...);
    else
        log_error(walk.place(), line, arguments...);
}

void log_unknown(const Table &table, const char *name)
{
    if ((table.flags & table_unknown) != 0)
        log_error(table.place(), table.unknown(), name);
}

void log_missing(const Walk &walk)
{
    if ((walk.table.traits & trait_missing) != 0)
        log_error(walk.place(), walk.table.missing(), walk.function());
    else
        walk.table.log_failure();
}

void log_item(const Walk &walk, const Row &row)
{
    if (const char *line = is_list(row.kind) ? walk.table.second_line(row) : nullptr)
        log_error(walk.place(), line, walk.function(), walk.place().line());
}

#pragma GCC diagnostic pop

// The row's own line shows the value as stored, or the text that is no spelling.
void log_own_line(const Walk &walk, const Row &row, Node child)
{
    const char *text = "";
    const Row *shown = walk.table.attachment(row, Kind::shows);
    switch (row.kind) {
    case Kind::integer:
    case Kind::flag:
        complain(walk, row, member<int>(walk.record, shown != nullptr ? *shown : row), walk.place().line());
        break;
    case Kind::text:
        // Nothing has been stored of a comment, and what the host has there may have no end.
        if (child.is_element())
            text = &member<const char>(walk.record, row);
        complain(walk, row, text, walk.place().line());
        break;
    case Kind::view:
    case Kind::word:
        if (row.kind == Kind::word && (row.flags & (word_keep | word_otherwise)) != 0)
            break; // an unknown spelling is no refusal there; this text is something else
        view_text(&text, static_cast<std::size_t>(walk.table.limit(row.limits).low), child);
        complain(walk, row, text, walk.place().line());
        break;
    default: // lists and grids log by themselves what does not fit
        break;
    }
}

// What there is to say about a refused child. -1. All that refuses is cold: it lies apart from what reads.
[[gnu::cold]] NETPUBLIC_LEAF int refuse(const Walk &walk, const Row &row, Node child)
{
    tell(Event::refused, walk.table, &row, walk.record, child);
    if ((row.flags & row_complains) != 0)
        log_own_line(walk, row, child);
    log_item(walk, row);
    if ((row.flags & row_quiet) == 0)
        walk.table.log_failure();
    return -1;
}

// One child to one member -------------------------------------------------------------------------

NETPUBLIC_INLINE_FOR_SPEED bool in_limits(const Walk &walk, const Row &row, int value)
{
    if ((row.flags & row_checked) == 0)
        return true;
    const Limits &range = walk.table.limit(row.limits);
    return value >= range.low && value <= range.high;
}

NETPUBLIC_LEAF int read_any_integer(Walk &walk, const Row &row, const char *text)
{
    int &value = member<int>(walk.record, row);
    if (to_int(&value, text) != 0)
        return row.kind == Kind::integer && (row.flags & number_tolerant) != 0 ? 0 : -1;
    return in_limits(walk, row, value) ? 0 : -1;
}

NETPUBLIC_INLINE_FOR_SPEED int read_integer(Walk &walk, const Row &row, Node child)
{
    const char *text = child.text();
    int &value = member<int>(walk.record, row);
    if (for_size || text == nullptr || !read_short_int(value, text))
        return read_any_integer(walk, row, text);
    return in_limits(walk, row, value) ? 0 : -1;
}

NETPUBLIC_LEAF int read_byte(Walk &walk, const Row &row, Node child)
{
    int value;
    if (read_int(&value, child) != 0 || !in_limits(walk, row, value))
        return -1;
    if ((row.flags & number_bit) == 0)
        member<unsigned char>(walk.record, row) = static_cast<unsigned char>(value);
    else if (value != 0)
        member<unsigned int>(walk.record, row) |= static_cast<unsigned int>(walk.table.limit(row.limits).low);
    return 0;
}

NETPUBLIC_LEAF int read_word(Walk &walk, const Row &row, Node child)
{
    const Limits &limits = walk.table.limit(row.limits);
    const WordTable &words = *walk.table.ref(row.ref).words;
    int &code = member<int>(walk.record, row);
    const char *text;
    if (view_text(&text, static_cast<std::size_t>(limits.low), child) != 0)
        return -1;
    const auto *entry = (row.flags & word_prefix) != 0 ? find_prefix(words, text, std::strlen(text))
                                                       : find_whole(words, text, (row.flags & word_exact) != 0);
    const unsigned unknown = row.flags & word_adds;
    if (entry != nullptr) {
        code = unknown == word_adds ? code | entry->code() : entry->code();
        return 0;
    }
    if (unknown == 0)
        return -1;
    if ((row.flags & row_complains) != 0)
        complain(walk, row, text, walk.place().line());
    if ((row.flags & word_reported) != 0)
        walk.table.log_failure();
    if (unknown == word_otherwise)
        code = limits.high;
    return 0;
}

NETPUBLIC_LEAF int read_mask(Walk &walk, const Row &row, Node child)
{
    const Limits &limits = walk.table.limit(row.limits);
    const WordTable &words = *walk.table.ref(row.ref).words;
    int &mask = member<int>(walk.record, row);
    const char *text;
    if (view_text(&text, static_cast<std::size_t>(limits.low), child) != 0)
        return -1;
    const bool none = contains_folded(text, "none");
    if (none && (row.flags & mask_none_clears) != 0) {
        mask = 0;
        return 0;
    }
    const std::uint32_t bits = words_in(words, text);
    int found = 0;
    if ((row.flags & mask_last) == 0)
        found = codes_of(words, bits);
    else if (bits != 0)
        found = words.begin()[31 - __builtin_clz(bits)].code();
    if ((row.flags & mask_last) == 0)
        mask = found | ((row.flags & mask_accumulates) != 0 ? mask : limits.high);
    else if (found != 0)
        mask = found;
    return none && found != 0 && (row.flags & mask_none_conflicts) != 0 ? -1 : 0;
}

NETPUBLIC_LEAF int read_events(Walk &walk, const Row &row, Node child)
{
    const WordTable &words = *walk.table.ref(row.ref).words;
    const char *text;
    if (view_text(&text, static_cast<std::size_t>(walk.table.limit(row.limits).low), child) != 0)
        return -1;
    if (contains_folded(text, "none"))
        return 0;
    for (std::uint32_t found = words_in(words, text); found != 0; found &= found - 1)
        alarm_in_add_event(&member<time_section_t>(walk.record, row), words.begin()[__builtin_ctz(found)].code());
    return 0;
}

NETPUBLIC_LEAF int read_int_list(Walk &walk, const Row &row, Node child)
{
    const Limits &limits = walk.table.limit(row.limits);
    const char *text;
    if (view_text(&text, walk.table.longest(row), child) != 0)
        return -1;
    // The function's parameter is not const, but it only reads the text.
    return changeStringToIntTable(const_cast<char *>(text), &member<int>(walk.record, row), limits.low, limits.high) < 0
               ? -1
               : 0;
}

NETPUBLIC_LEAF int read_converted(Walk &walk, const Row &row, Node child)
{
    const char *text;
    if (view_text(&text, static_cast<std::size_t>(walk.table.limit(row.limits).low), child) != 0)
        return -1;
    return walk.table.ref(row.ref).read_text(walk.record, text);
}

NETPUBLIC_LEAF int read_counted(net_counted_text_t &text, Node child)
{
    if (read_text(text.text, sizeof text.text, child) != 0)
        return -1;
    text.capacity = sizeof text.text;
    text.length = static_cast<int>(std::strlen(text.text));
    return 0;
}

// Texts that are read behind the walk, only looked at so far.
NETPUBLIC_LEAF int check_late(Walk &walk, const Row &row, Node child)
{
    const char *text;
    return view_text(&text, walk.table.longest(row), child);
}

// The decoder yields whole bytes, but never more cells than the largest grid has.
bool fills_grid(int count, int columns, int rows)
{
    constexpr int most_cells = grid_columns * grid_rows;
    const int wanted = (columns * rows + 7) / 8 * 8;
    return count == (wanted < most_cells ? wanted : most_cells);
}

[[gnu::cold]] NETPUBLIC_LEAF int refuse_grid(const Walk &walk, const Row &row, int count, int columns, int rows)
{
    complain(walk, row, walk.place().line(), count, columns, rows);
    return -1;
}

NETPUBLIC_LEAF int read_grid(Walk &walk, const Row &row, Node child)
{
    const Limits &sides = walk.table.limit(row.limits);
    const int columns = member_at<int>(walk.record, sides.low);
    const int rows = member_at<int>(walk.record, sides.high);
    const char *text = "";
    view_text(&text, walk.table.longest(row), child);
    if (columns < 1 || columns > grid_columns || rows < 1 || rows > grid_rows || *text == '\0') {
        log_missing(walk);
        return -1;
    }
    const int count = count_cells(text, static_cast<int>(std::strlen(text)), grid_columns * grid_rows);
    if (!fills_grid(count, columns, rows))
        return refuse_grid(walk, row, count, columns, rows);
    auto *cells = &member<unsigned char>(walk.record, row);
    if ((row.flags & grid_behind_pointer) != 0)
        cells = member<unsigned char *>(walk.record, row);
    if ((row.flags & grid_columns_first) != 0)
        read_columns(text, cells, columns, rows, grid_rows);
    else
        read_rows(text, cells, columns, rows, grid_columns);
    return 0;
}

// Elements ----------------------------------------------------------------------------------------

// A group with a hook in front of it, or with a second table.
NETPUBLIC_LEAF int read_attached_group(Walk &walk, const Row &row, Node child)
{
    const Table &table = walk.table;
    void *record = &member<char>(walk.record, row);
    if (const Row *hook = table.hook(row, Moment::ahead))
        table.ref(hook->offset).ahead(walk.record, {table.key(row), walk.items, 0, 0});
    if (read_record(*table.ref(row.ref).table, record, child) != 0)
        return -1;
    const Row *again = table.attachment(row, Kind::again);
    return again != nullptr ? read_record(*table.ref(again->offset).table, record, child) : 0;
}

NETPUBLIC_INLINE_FOR_SPEED unsigned &count_of(Walk &walk, const Row &row)
{
    const Row *kept = walk.table.last_attachment(row, Kind::count);
    return kept != nullptr ? member<unsigned>(walk.record, *kept) : walk.items;
}

char *first_item(Walk &walk, const Row &row)
{
    char *first = &member<char>(walk.record, row);
    return row.kind == Kind::list && (row.flags & list_behind_pointer) != 0 ? *reinterpret_cast<char **>(first) : first;
}

// What a wire's function makes of the child.
[[gnu::always_inline]] inline int read_by(const Walk &walk, const Row &row, Item &item, Node child)
{
    const Table &table = walk.table;
    return table.ref(row.ref + 1).read_wire(&member<char>(walk.record, row), *table.ref(row.ref).table, item, child);
}

NETPUBLIC_LEAF int read_wire(const Walk &walk, const Row &row, Node child)
{
    Item item = {walk.table.key(row), 0, 0, 0};
    return read_by(walk, row, item, child);
}

// A list that has no room: 0 or -1.
[[gnu::cold]] NETPUBLIC_LEAF int refuse_item(Walk &walk, const Row &row)
{
    if ((row.flags & list_stop) == list_stop) {
        walk.full = true;
        return 0;
    }
    if ((row.flags & row_complains) != 0)
        complain(walk, row, walk.function(), walk.place().line());
    return (row.flags & list_stop) == list_refuse ? -1 : 0;
}

// The next item of a list.
int read_item(Walk &walk, const Row &row, Node child)
{
    const auto capacity = static_cast<unsigned>(walk.table.capacity(row));
    unsigned &count = count_of(walk, row);
    unsigned index = count;
    if (index >= capacity) {
        if ((row.flags & list_stop) != list_last)
            return refuse_item(walk, row);
        index = capacity - 1;
    }
    if (row.kind == Kind::wires) {
        Item item = {walk.table.key(row), index, 0, 0};
        if (read_by(walk, row, item, child) != 0)
            return -1;
    } else if (row.kind == Kind::int_items) {
        if (read_int(&member<int>(walk.record, row) + index, child) != 0)
            return -1;
    } else {
        const Table &item = *walk.table.ref(row.ref).table;
        if (read_record(item, first_item(walk, row) + std::size_t{index} * item.record_size, child) != 0)
            return -1;
    }
    if (count < capacity)
        ++count;
    walk.full = (row.flags & list_stop) == list_stop && count == capacity;
    return 0;
}

// What the row's kind makes of the child. On builds for size it has no frame: all it does is to jump on.
[[gnu::noinline]] int read_kind(Walk &walk, const Row &row, Node child)
{
    void *record = walk.record;
    switch (row.kind) {
    case Kind::integer:
    case Kind::place:
        if ((row.flags & (row_checked | number_tolerant)) == 0)
            return read_int(&member<int>(record, row), child);
        return read_integer(walk, row, child);
    case Kind::flag:
        return read_flag(&member<int>(record, row), child);
    case Kind::byte:
        return read_byte(walk, row, child);
    case Kind::unsigned_integer:
        return read_unsigned(&member<unsigned int>(record, row), child);
    case Kind::int64:
        return read_int64(&member<long long>(record, row), child);
    case Kind::unsigned_longlong:
        return read_unsignedlonglong(&member<unsigned long long>(record, row), child);
    case Kind::real:
        return read_float(&member<float>(record, row), child);
    case Kind::text:
        return read_text(&member<char>(record, row), static_cast<std::size_t>(walk.table.limit(row.limits).low) + 1,
                         child);
    case Kind::counted_text:
        return read_counted(member<net_counted_text_t>(record, row), child);
    case Kind::view:
        return view_text(&member<const char *>(record, row), static_cast<std::size_t>(walk.table.limit(row.limits).low),
                         child);
    case Kind::word:
        return read_word(walk, row, child);
    case Kind::mask:
        return read_mask(walk, row, child);
    case Kind::events:
        return read_events(walk, row, child);
    case Kind::int_list:
        return (row.flags & int_list_late) != 0 ? check_late(walk, row, child) : read_int_list(walk, row, child);
    case Kind::converted:
        return read_converted(walk, row, child);
    case Kind::grid:
        return check_late(walk, row, child);
    case Kind::group:
        if ((row.flags & row_attached) != 0)
            return read_attached_group(walk, row, child);
        return read_record(*walk.table.ref(row.ref).table, &member<char>(record, row), child);
    case Kind::list:
        if ((row.flags & list_indexed) != 0)
            return read_indexed(*walk.table.ref(row.ref).table, &member<char>(record, row), walk.table.capacity(row),
                                child, nullptr);
        return read_item(walk, row, child);
    case Kind::int_items:
    case Kind::wires:
        return read_item(walk, row, child);
    case Kind::wire:
        return read_wire(walk, row, child);
    case Kind::constant:
    case Kind::named:
    case Kind::preset:
    case Kind::count:
    case Kind::mark:
    case Kind::condition:
    case Kind::hook:
    case Kind::again:
    case Kind::shows:
    case Kind::second_line:
        break;
    }
    return -1; // no child answers to these rows
}

// The hook and the mark of a row that has been read.
NETPUBLIC_LEAF int follow(Walk &walk, const Row &row)
{
    const Table &table = walk.table;
    const unsigned index = table.index_of(row);
    const Row *mark = nullptr;
    for (const Row *at = &table.row(table.rows - 1u); at->kind >= Kind::hook; --at) {
        if (at->ref != index)
            continue;
        if (at->kind == Kind::mark)
            mark = at;
        if (at->kind != Kind::hook || static_cast<Moment>(at->limits) != Moment::then)
            continue;
        if (table.ref(at->offset).then(walk.record, {table.key(row), walk.items, 0, 0}) != 0)
            return -1;
        break; // a row has one of each
    }
    if (mark != nullptr)
        member<int>(walk.record, *mark) = table.limit(mark->limits).low;
    return 0;
}

// A comment or a text answers to a key like an element, but no row takes it. A part of the walks: a frame of its own
// would pile up with theirs.
[[gnu::always_inline]] inline int read_row(Walk &walk, const Row &row, Node child)
{
    if ((row.flags & (row_skipped | row_attached)) == 0) {
        if (!child.is_element())
            return -1;
        // Most rows are integers: what reads them stands in the walk itself.
        const bool here = !for_size && row.kind == Kind::integer;
        if ((here ? read_integer(walk, row, child) : read_kind(walk, row, child)) != 0)
            return -1;
    } else {
        if ((row.flags & row_skipped) == 0 && (!child.is_element() || read_kind(walk, row, child) != 0))
            return -1;
        if ((row.flags & row_attached) != 0 && follow(walk, row) != 0)
            return -1;
    }
    tell(Event::taken, walk.table, &row, walk.record, child);
    return 0;
}

// read_row() and what there is to say when it fails, for all but the walk that is taken most.
NETPUBLIC_INLINE_FOR_SPEED int read_or_refuse(Walk &walk, const Row &row, Node child)
{
    return read_row(walk, row, child) != 0 ? refuse(walk, row, child) : 0;
}

// Only of a row that has a bit. In a table whose own reading asks for them, all have: see draft_of().
void note_seen(Walk &walk, const Table &table, const Row &row)
{
    walk.seen |= 1u << table.index_of(row);
}

// Walks -------------------------------------------------------------------------------------------

NETPUBLIC_LEAF void prepare(const Table &table, void *record)
{
    if ((table.flags & table_clears) != 0)
        std::memset(record, 0, table.record_size);
    if ((table.flags & table_before) != 0)
        table.ref(0).before(record);
    if ((table.flags & table_presets) == 0)
        return;
    const Row *const end = &table.row(table.rows);
    for (const Row *row = &table.row(table.keys); row != end && row->kind <= Kind::preset; ++row)
        if (row->kind == Kind::preset)
            member<int>(record, *row) = table.limit(row->limits).low;
}

// The row of a child whose table has a rule of its own for names; null for none.
NETPUBLIC_LEAF const Row *find_by_rule(Walk &walk, Node child)
{
    const Table &table = walk.table;
    const Row *row = &table.row(0);
    switch (table.names) {
    case Names::any:
        return child.is_element() ? row : nullptr;
    case Names::in_order: {
        row += __builtin_ctz(~walk.seen); // all in front of it have been seen
        const char *key = table.key(*row), *name = child.name();
        const bool whole = row->kind == Kind::view && (row->flags & view_whole) != 0;
        if (!bears_name(*row, key, name) && !(whole ? is_named(name, key) : answers_to(name, key)))
            return nullptr;
        walk.full = row == &table.row(table.keys - 1u);
        return row;
    }
    default: // looked up, until all have been found
        for (unsigned index = 0; index < table.keys; ++index, ++row)
            if ((walk.seen >> index & 1) == 0 && std::strcmp(child.name(), table.key(*row)) == 0) {
                walk.full = (walk.seen | 1u << index) == ~0u >> (required_keys - table.keys);
                return row;
            }
        return nullptr;
    }
}

// The hooks of the rows that no child of an item has answered to. They are handed the list's first record.
NETPUBLIC_LEAF void run_absent(const Table &table, void *first, std::uint32_t seen, unsigned place)
{
    for (unsigned index = table.keys; index < table.rows; ++index) {
        const Row &row = table.row(index);
        if (row.kind == Kind::hook && static_cast<Moment>(row.limits) == Moment::absent && (seen >> row.ref & 1) == 0)
            table.ref(row.offset).ahead(first, {table.key(table.row(row.ref)), place, 0, 0});
    }
}

// The place in a list by position that a child of another name has.
NETPUBLIC_LEAF void pass_place(Walk &walk, const Row &row)
{
    if (row.kind == Kind::list) {
        const Table &item = *walk.table.ref(row.ref).table;
        if (item.begins_anew())
            std::memset(first_item(walk, row) + walk.items * item.record_size, 0, item.record_size);
    }
    run_absent(walk.table, walk.record, ~1u, walk.items);
    walk.full = ++walk.items == static_cast<unsigned>(walk.table.capacity(row));
}

// A child that answers to no key: 0 or -1.
NETPUBLIC_LEAF int pass_over(Walk &walk, Node child)
{
    const Table &table = walk.table;
    tell(Event::ignored, table, nullptr, walk.record, child);
    log_unknown(table, child.name());
    if (table.keys != 0 && is_list(table.row(0).kind) && (table.row(0).flags & list_by_position) != 0)
        pass_place(walk, table.row(0));
    if ((table.flags & table_others_fail) == 0)
        return 0;
    table.log_failure();
    return -1;
}

// A list that goes on from what its count holds may be full from the start.
NETPUBLIC_LEAF bool is_full(Walk &walk)
{
    const Row &row = walk.table.row(0);
    const Row *kept = walk.table.last_attachment(row, Kind::count);
    return kept != nullptr && (row.flags & list_stop) == list_stop &&
           member<unsigned>(walk.record, *kept) >= static_cast<unsigned>(walk.table.capacity(row));
}

[[gnu::cold]] NETPUBLIC_LEAF int miss(const Walk &walk, [[maybe_unused]] const Row &row, Node element)
{
    tell(Event::missing, walk.table, &row, walk.record, element);
    log_missing(walk);
    return -1;
}

int check_required(const Walk &walk, Node element)
{
    const Table &table = walk.table;
    const Row *row = &table.row(0);
    // Usually nothing is missing. Where items have been counted, there may be too few of them.
    if (table.keys < required_keys && walk.seen == (1u << table.keys) - 1 && walk.items == 0)
        return 0;
    for (unsigned index = 0; index < table.keys && index < required_keys; ++index, ++row) {
        if ((row->flags & row_required) != 0 && (walk.seen >> index & 1) == 0)
            return miss(walk, *row, element);
        if ((row->flags & list_exact) != 0 && is_list(row->kind) &&
            walk.items != static_cast<unsigned>(table.capacity(*row)))
            return miss(walk, *row, element);
    }
    return 0;
}

// What wants all children first: the last one of a key counts.
NETPUBLIC_LEAF int read_late(Walk &walk, Node element)
{
    const Table &table = walk.table;
    for (unsigned index = 0; index < table.keys; ++index) {
        const Row &row = table.row(index);
        const bool late = row.kind == Kind::int_list && (row.flags & int_list_late) != 0;
        if (!late && row.kind != Kind::grid)
            continue;
        const char *key = table.key(row);
        Node last;
        for (Node child = element.first_child(); child; child = child.next_sibling()) {
            const char *name = child.name();
            // The first characters tell most names apart.
            if (bears_name(row, key, name) || ((*name == '\0' || alike(*name, *key)) && find_key(table, name) == &row))
                last = child;
        }
        if (!last)
            continue;
        if (late ? read_int_list(walk, row, last) != 0 : read_grid(walk, row, last) != 0) {
            tell(Event::refused, table, &row, walk.record, last);
            return -1;
        }
    }
    return 0;
}

int finish(Walk &walk, Node element)
{
    const Table &table = walk.table;
    if ((table.flags & table_finish) != 0) {
        if (check_required(walk, element) != 0)
            return -1;
        if ((table.traits & trait_late) != 0 && read_late(walk, element) != 0)
            return -1;
    }
    if ((table.flags & table_after) == 0)
        return 0;
    return table.ref((table.flags & table_before) != 0 ? 1 : 0).after(walk.record, walk.seen);
}

} // namespace

// All children but those behind a list that ends the walk; there is one.
[[gnu::always_inline]] static inline int read_children(Walk &walk, Node child)
{
    const Table &table = walk.table;
    // Two more flags above the table's: one word to keep through the walk.
    constexpr unsigned by_rule = 0x10000, noting = 0x20000;
    unsigned flags = table.flags;
    if ((flags & (table_finish | table_after)) != 0)
        flags |= noting;
    if ((flags & table_others_fail) != 0 && is_list(table.row(0).kind))
        walk.full = is_full(walk);
    // A full name answers to its row under the first rules.
    if (table.names > Names::longer)
        flags |= by_rule | noting;
    Expectation expectation(table);
    for (; child && !walk.full; child = child.next_sibling()) {
        const Row *row = (flags & by_rule) == 0 ? expectation.find(child.name()) : find_by_rule(walk, child);
        if (row == nullptr && pass_over(walk, child) != 0)
            return -1;
        while (row != nullptr) {
            if ((flags & noting) != 0)
                note_seen(walk, table, *row);
            if (read_row(walk, *row, child) != 0)
                return refuse(walk, *row, child);
            if ((flags & table_own_tests) == 0)
                break;
            row = find_own_test(table, child.name(), *row);
        }
        if ((flags & table_first_only) != 0)
            break;
    }
    return 0;
}

int read_record(const Table &table, void *record, Node element)
{
    Walk walk = {table, record, 0, false, 0};
    if ((table.flags & (table_clears | table_before | table_presets)) != 0)
        prepare(table, record);
    const Node child = element.first_child();
    if (child && read_children(walk, child) != 0)
        return -1;
    return finish(walk, element);
}

int read_indexed(const Table &table, void *first, int capacity, Node element, std::uint32_t *seen)
{
    Walk walk = {table, nullptr, 0, false, 0};
    Expectation expectation(table);
    int result = 0;
    for (Node child = element.first_child(); child && result == 0; child = child.next_sibling()) {
        const Row *row = for_size ? find_key(table, child.name()) : expectation.find(child.name());
        if (row == nullptr) {
            tell(Event::ignored, table, nullptr, first, child);
            continue;
        }
        int number;
        if (table.index_of(*row) < required_keys)
            note_seen(walk, table, *row);
        if (row->kind == Kind::place)
            walk.record = read_int(&number, child) == 0 && number >= 0 && number < capacity
                              ? static_cast<char *>(first) + static_cast<std::size_t>(number) * table.record_size
                              : nullptr;
        if (walk.record == nullptr) {
            tell(row->kind == Kind::place ? Event::refused : Event::placeless, table, row, first, child);
            table.log_failure();
            result = -1;
        } else if (read_or_refuse(walk, *row, child) != 0) {
            result = -1;
        }
    }
    if (seen != nullptr)
        *seen = walk.seen;
    else if (result == 0)
        run_absent(table, first, walk.seen, 0);
    return result;
}

// The line for a parser's bad arguments. -1.
[[gnu::cold]] NETPUBLIC_LEAF static int refuse_call(const Table &table)
{
    table.log_entry();
    return -1;
}

#ifdef NETPUBLIC_DESCRIBED
int read_child(const Table &table, void *record, unsigned row, Node child)
{
    Walk walk = {table, record, 0, false, 0};
    return read_or_refuse(walk, table.row(row), child);
}
#endif

bool is_component(const void *record, Node node, const char *key)
{
    return record != nullptr && node && node.is_element() && (key == nullptr || answers_to(node.name(), key));
}

int read_component(void *record, Node node, const char *key, const Table &table)
{
    return is_component(record, node, key) ? read_record(table, record, node) : -1;
}

int read_component_logged(void *record, Node node, const char *key, const Table &table)
{
    if (is_component(record, node, key))
        return read_record(table, record, node);
    return refuse_call(table);
}

int read_component_noting_null(void *record, Node node, const char *key, const Table &table, const char *function)
{
    if (record != nullptr && node)
        return read_component(record, node, key, table);
    table.log_entry(function);
    return -1;
}

int read_component_value(void *record, Node node, const char *key, const Table &table)
{
    if (!is_component(record, node, key))
        return -1;
    Walk walk = {table, record, 0, false, 0};
    return read_or_refuse(walk, table.row(0), node);
}

int check_parser(const Table &message, const net_param_t *param, Node body, std::size_t size)
{
    const bool good = param != nullptr && body && param->data != nullptr &&
                      ((message.flags & table_read_any) != 0 || param->dataSize == size);
    return good ? 0 : refuse_call(message);
}

// An empty body leaves most payloads as they are.
static inline int read_body(const Table &message, net_param_t *param, Node body)
{
    if ((message.flags & (table_finish | table_after)) == 0 && !body.first_child()) {
        if ((message.flags & (table_clears | table_before | table_presets)) != 0)
            prepare(message, param->data);
        return 0;
    }
    return read_record(message, param->data, body);
}

// A message with a walk of its own, or one that tells its envelope what has been read.
NETPUBLIC_LEAF static int parse_further(net_param_t *param, Node body, const Table &message)
{
    int result;
    if ((message.flags & table_walked) != 0) {
        result = message.parse_function().parse(message, param, body);
    } else {
        if (check_parser(message, param, body, message.record_size) != 0)
            return -1;
        if ((message.traits & trait_empty_done) != 0 && !body.first_child())
            return 0;
        result = read_body(message, param, body);
    }
    if (result == 0 && (message.flags & table_sets_inited) != 0)
        param->inited = 2;
    return result;
}

int parse_message(net_param_t *param, Node body, const Table &message)
{
    if ((message.flags & (table_walked | table_sets_inited)) != 0)
        return parse_further(param, body, message);
    if (check_parser(message, param, body, message.record_size) != 0)
        return -1;
    return read_body(message, param, body);
}

} // namespace netpublic
