#include "engine/engine.h"

#include "values/values.h"

#include <net_xml_public.h>

#include <algorithm>
#include <climits>
#include <cstring>

namespace netpublic {

#ifdef NETPUBLIC_DESCRIBED
thread_local const Watch *watch = nullptr;

static void tell(Event event, const Table &table, const Row *row, void *record, TiXmlNode *node)
{
    if (watch != nullptr)
        watch->happened(watch->context, event, table, row, record, node);
}
#else
#define tell(event, table, row, record, node) static_cast<void>(0)
#endif

// The parts of a table

const Limits &Table::limit(unsigned index) const
{
    if (index < common_limit_count)
        return common_limits[index];
    return reinterpret_cast<const Limits *>(&row(rows))[index - common_limit_count];
}

const Row *Table::find_attachment(const Row &of, Kind kind) const
{
    const Row *first = &row(0);
    const auto index = static_cast<std::uint32_t>(&of - first);
    for (const Row *row = first + keys; row != first + rows; ++row)
        if (row->kind == kind && row->ref == index)
            return row;
    return nullptr;
}

unsigned Table::ordered(unsigned place) const
{
    return (flags & table_ordered) != 0 ? static_cast<unsigned char>(*bytes(texts - written + place)) : place;
}

const char *Table::text(unsigned offset) const
{
    return offset < common_texts.size ? common_texts.pool + offset : bytes(texts) + (offset - common_texts.size);
}

static const char *behind(const char *text)
{
    return text + std::strlen(text) + 1;
}

const char *Table::complaint(const Row &of) const
{
    return behind(key(of));
}

const char *Table::unknown() const
{
    return behind(parser());
}

const Source &Table::source() const
{
    static constexpr Source none = {0, 0, 0, 0, 0, Line::parser, Line::writer, Line::none};
    return (flags & table_source) != 0 ? *reinterpret_cast<const Source *>(bytes(0) - source_room) : none;
}

const char *Table::parser() const
{
    return text(source().parser);
}

const char *Table::writer() const
{
    return text(source().writer);
}

const char *Table::root() const
{
    return text(source().root);
}

Place Table::place() const
{
    return {text(source().file), source().line};
}

namespace {

constexpr std::size_t longest_exact_name = 31;
constexpr unsigned likely_rows = 6; // tried before all keys are

template <class Type> Type &member(void *record, const Row &row)
{
    return *reinterpret_cast<Type *>(static_cast<char *>(record) + row.offset);
}

template <class Type> const Type &member(const void *record, const Row &row)
{
    return *reinterpret_cast<const Type *>(static_cast<const char *>(record) + row.offset);
}

bool is_only_written(const Table &table, const Row &row)
{
    return &row >= &table.row(table.keys);
}

// One walk over an element's children.
struct Walk {
    const Table &table;
    void *record;
    unsigned items;     // in the list whose number nothing keeps
    bool full;          // a list that ends the walk when it is full
    std::uint32_t seen; // bit i: a child has answered to key i; for the required ones

    Place place() const
    {
        return table.place();
    }
    const char *function() const
    {
        return table.parser();
    }
};

// Formats of rows are literals of the tables.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

template <class Argument> void complain(const Walk &walk, const Row &row, Argument argument)
{
    const char *line = walk.table.complaint(row);
    if ((row.flags & row_plain) != 0)
        log_plain(line, argument, walk.place().line);
    else
        log_error(walk.place(), line, argument, walk.place().line);
}

// The line of a row that is read, too, wants a text instead.
void log_unspelled(const Table &table, const Row &row, int code)
{
    if (is_only_written(table, row) && (row.flags & row_complains) != 0)
        log_error(table.place(), table.complaint(row), code);
}

void log_unknown(const Table &table, const char *name)
{
    if ((table.flags & table_unknown) != 0)
        log_error(table.place(), table.unknown(), name);
}

#pragma GCC diagnostic pop

// The kinds that need room are functions of their own: the frames of read_record() and read_row() pile up with
// the depth of a message.
#define NETPUBLIC_LEAF [[gnu::noinline]]

NETPUBLIC_LEAF int read_word(Walk &walk, const Row &row, TiXmlNode *child)
{
    const Limits &limits = walk.table.limit(row.limits);
    const WordTable &words = *walk.table.ref(row.ref).words;
    const char *text;
    if (view_text(&text, static_cast<std::size_t>(limits.low), child) != 0)
        return -1;
    const auto *entry = (row.flags & word_prefix) != 0 ? find_prefix(words, text, std::strlen(text))
                                                       : find_whole(words, text, (row.flags & word_exact) != 0);
    if (entry != nullptr) {
        member<int>(walk.record, row) = entry->code;
        return 0;
    }
    if ((row.flags & (word_keep | word_otherwise)) == 0)
        return -1;
    if ((row.flags & row_complains) != 0)
        complain(walk, row, text);
    if ((row.flags & word_reported) != 0)
        log_line(walk.table.failure(), walk.place(), walk.function());
    if ((row.flags & word_otherwise) != 0)
        member<int>(walk.record, row) = limits.high;
    return 0;
}

NETPUBLIC_LEAF int read_mask(Walk &walk, const Row &row, TiXmlNode *child)
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
        found = words.begin()[31 - __builtin_clz(bits)].code;
    if ((row.flags & mask_last) == 0)
        mask = found | ((row.flags & mask_accumulates) != 0 ? mask : limits.high);
    else if (found != 0)
        mask = found;
    return none && found != 0 && (row.flags & mask_none_conflicts) != 0 ? -1 : 0;
}

NETPUBLIC_LEAF int read_events(Walk &walk, const Row &row, TiXmlNode *child)
{
    const WordTable &words = *walk.table.ref(row.ref).words;
    const char *text;
    if (view_text(&text, static_cast<std::size_t>(walk.table.limit(row.limits).low), child) != 0)
        return -1;
    if (contains_folded(text, "none"))
        return 0;
    for (std::uint32_t found = words_in(words, text); found != 0; found &= found - 1)
        alarm_in_add_event(&member<time_section_t>(walk.record, row), words.begin()[__builtin_ctz(found)].code);
    return 0;
}

NETPUBLIC_LEAF int read_int_list(Walk &walk, const Row &row, TiXmlNode *child)
{
    const Limits &limits = walk.table.limit(row.limits);
    const char *text;
    if (view_text(&text, longest_int_list, child) != 0)
        return -1;
    // The function's parameter is not const, but it only reads the text.
    return changeStringToIntTable(const_cast<char *>(text), &member<int>(walk.record, row), limits.low, limits.high) < 0
               ? -1
               : 0;
}

// The next item of a list: a record or an int.
int read_item(Walk &walk, const Row &row, TiXmlNode *child)
{
    const Row *count_row = walk.table.attachment(row, Kind::count);
    unsigned &count = count_row != nullptr ? member<unsigned>(walk.record, *count_row) : walk.items;
    const auto capacity = static_cast<unsigned>(walk.table.capacity(row));
    unsigned index = count;
    if (index >= capacity) {
        if ((row.flags & list_stop) != 0) {
            walk.full = true;
            return 0;
        }
        if ((row.flags & list_last) == 0) {
            if ((row.flags & row_complains) != 0)
                complain(walk, row, walk.function());
            return (row.flags & list_refuse) != 0 ? -1 : 0;
        }
        index = capacity - 1;
    }
    char *first = &member<char>(walk.record, row);
    if (row.kind == Kind::int_items) {
        if (read_int(reinterpret_cast<int *>(first) + index, child) != 0)
            return -1;
    } else {
        const Table &item = *walk.table.ref(row.ref).table;
        if (read_record(item, first + std::size_t{index} * item.record_size, child) != 0)
            return -1;
    }
    if (count < capacity)
        ++count;
    walk.full = (row.flags & list_stop) != 0 && count == capacity;
    return 0;
}

NETPUBLIC_LEAF int read_counted(net_counted_text_t &text, TiXmlNode *child)
{
    if (read_text(text.text, sizeof text.text, child) != 0)
        return -1;
    text.capacity = sizeof text.text;
    text.length = static_cast<int>(std::strlen(text.text));
    return 0;
}

// What the row's kind makes of the child.
int read_kind(Walk &walk, const Row &row, TiXmlNode *child)
{
    void *record = walk.record;
    switch (row.kind) {
    case Kind::integer: {
        int &value = member<int>(record, row);
        if (read_int(&value, child) != 0)
            return -1;
        if ((row.flags & row_checked) == 0)
            return 0;
        const Limits &range = walk.table.limit(row.limits);
        return value < range.low || value > range.high ? -1 : 0;
    }
    case Kind::flag:
        return read_flag(&member<int>(record, row), child);
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
        return read_int_list(walk, row, child);
    case Kind::group:
        return read_record(*walk.table.ref(row.ref).table, &member<char>(record, row), child);
    case Kind::list:
    case Kind::int_items:
        return read_item(walk, row, child);
    case Kind::custom:
        return walk.table.ref(row.ref).read(record, child);
    case Kind::constant:
    case Kind::preset:
    case Kind::count:
    case Kind::mark:
    case Kind::condition:
        break;
    }
    return -1; // no child answers to these rows
}

// The row's own line shows the value as stored, or the text that is no spelling.
void log_own_line(const Walk &walk, const Row &row, TiXmlNode *child)
{
    const char *text = "";
    switch (row.kind) {
    case Kind::integer:
    case Kind::flag:
        complain(walk, row, member<int>(walk.record, row));
        break;
    case Kind::text:
        complain(walk, row, &member<const char>(walk.record, row));
        break;
    case Kind::view:
    case Kind::word:
        if (row.kind == Kind::word && (row.flags & (word_keep | word_otherwise)) != 0)
            break; // an unknown spelling is no refusal there; this text is something else
        view_text(&text, static_cast<std::size_t>(walk.table.limit(row.limits).low), child);
        complain(walk, row, text);
        break;
    default: // lists log by themselves what they do not hold
        break;
    }
}

// What there is to say about a refused child. -1.
NETPUBLIC_LEAF int refuse(const Walk &walk, unsigned index, TiXmlNode *child)
{
    const Row &row = walk.table.row(index);
    tell(Event::refused, walk.table, &row, walk.record, child);
    if ((row.flags & row_quiet) != 0)
        return -1;
    if ((row.flags & row_complains) != 0)
        log_own_line(walk, row, child);
    log_line(walk.table.failure(), walk.place(), walk.function());
    return -1;
}

int read_row(Walk &walk, unsigned index, TiXmlNode *child)
{
    const Row &row = walk.table.row(index);
    if ((row.flags & row_required) != 0)
        walk.seen |= 1u << index;
    if ((row.flags & row_skipped) == 0 && read_kind(walk, row, child) != 0)
        return -1;
    tell(Event::taken, walk.table, &row, walk.record, child);
    if (const Row *mark = walk.table.attachment(row, Kind::mark))
        member<int>(walk.record, *mark) = walk.table.limit(mark->limits).low;
    return 0;
}

// The keys of a table and the places of its rows, ready for a search. Made for each search and not kept while
// a row is read: it would lie on the stack once for every level of a message.
struct Keys {
    const Row *rows;
    const char *own;   // where the table's own texts would begin if they stood behind the common ones
    const char *order; // the rows of the places; null when they are in order
    unsigned count;
    unsigned places;

    explicit Keys(const Table &table)
        : rows(&table.row(0)), own(table.bytes(table.texts) - common_texts.size), order(nullptr), count(table.keys),
          places(count)
    {
        if ((table.flags & table_ordered) != 0) {
            places = table.written;
            order = own + common_texts.size - places;
        }
    }
    const char *key(const Row &row) const
    {
        return (row.key < common_texts.size ? common_texts.pool : own) + row.key;
    }
    // Behind the places of the written order stand the keys as they are tried, for what is not written.
    unsigned row_at(unsigned place) const
    {
        if (place >= places)
            return place - places;
        return order != nullptr ? static_cast<unsigned char>(order[place]) : place;
    }
};

// The first key from row `from` on that the name answers to.
unsigned find_row(const Table &table, const char *name, unsigned from)
{
    const Keys keys(table);
    const std::size_t length = std::strlen(name);
    const bool exact = (table.flags & table_exact) != 0;
    for (unsigned index = from; index < keys.count; ++index) {
        const char *key = keys.key(keys.rows[index]);
        // An empty name answers to any key.
        if (length != 0 && !alike(*name, *key))
            continue;
        if (exact ? is_named(name, key) : same_folded(name, key, length))
            return index;
    }
    return no_row;
}

// The first row behind `index` that starts a chain of its own.
unsigned next_chain(const Table &table, unsigned index)
{
    do
        ++index;
    while (index < table.keys && (table.row(index).flags & row_own_test) == 0);
    return index;
}

// The place behind a row's; a list's own, since its elements come one after another.
unsigned place_behind(const Row &row, unsigned place)
{
    return row.kind == Kind::list || row.kind == Kind::int_items ? place : place + 1;
}

// Children usually arrive in the order in which they are written, with some left out: a child that bears the
// full name of the row at the likely place, or at one of those behind it, answers to no other; and to none at
// all if that row is only written. These three go from the likely row to all of them; the row, or no_row, or
// unlikely for the next one to search.
constexpr unsigned unlikely = no_row - 1;

inline unsigned find_at(const Keys &keys, unsigned place, const char *name, unsigned &likely)
{
    const unsigned index = keys.row_at(place);
    const Row &row = keys.rows[index];
    const char *key = keys.key(row);
    if (*name != *key || (row.flags & row_shadowed) != 0 || std::strcmp(name, key) != 0)
        return unlikely;
    likely = place_behind(row, place);
    return index < keys.count ? index : no_row;
}

NETPUBLIC_LEAF unsigned find_behind(const Table &table, const char *name, unsigned &likely)
{
    const Keys keys(table);
    const unsigned end = std::min(keys.places + keys.count, likely + likely_rows);
    for (unsigned place = likely; ++place < end;) {
        const unsigned index = find_at(keys, place, name, likely);
        if (index != unlikely)
            return index;
    }
    return unlikely;
}

NETPUBLIC_LEAF unsigned find_anywhere(const Table &table, const char *name, unsigned &likely)
{
    const unsigned index = find_row(table, name, 0);
    if (index == no_row)
        return no_row;
    const Keys keys(table);
    unsigned place = index;
    if (keys.order != nullptr) {
        const void *found = std::memchr(keys.order, static_cast<int>(index), keys.places);
        place = found != nullptr ? static_cast<unsigned>(static_cast<const char *>(found) - keys.order)
                                 : keys.places + index;
    }
    likely = place_behind(keys.rows[index], place);
    return index;
}

inline unsigned find_near(const Table &table, const char *name, unsigned &likely)
{
    const Keys keys(table);
    const unsigned index = likely < keys.places + keys.count ? find_at(keys, likely, name, likely) : unlikely;
    return index != unlikely ? index : find_behind(table, name, likely);
}

// The row that the child answers to, or no_row. No frame of its own, as it is on the deepest path.
[[gnu::always_inline]] inline unsigned match(const Table &table, const char *name, unsigned &likely)
{
    const unsigned index = find_near(table, name, likely);
    return index != unlikely ? index : find_anywhere(table, name, likely);
}

void prepare(const Table &table, void *record)
{
    if ((table.flags & table_clears) != 0)
        std::memset(record, 0, table.record_size);
    if ((table.flags & table_before) != 0)
        table.ref(0).before(record);
    if ((table.flags & table_presets) == 0)
        return;
    for (unsigned index = table.keys; index < table.rows; ++index)
        if (table.row(index).kind == Kind::preset)
            member<int>(record, table.row(index)) = table.limit(table.row(index).limits).low;
}

int finish(const Walk &walk, TiXmlNode *element)
{
    const Table &table = walk.table;
    if ((table.flags & table_required) != 0)
        for (unsigned index = 0; index < table.keys && index < required_keys; ++index)
            if ((table.row(index).flags & row_required) != 0 && (walk.seen >> index & 1) == 0) {
                tell(Event::missing, table, &table.row(index), walk.record, element);
                log_line(table.failure(), table.place(), walk.function());
                return -1;
            }
    static_cast<void>(element);
    if ((table.flags & table_after) == 0)
        return 0;
    return table.ref((table.flags & table_before) != 0 ? 1 : 0).after(walk.record);
}

} // namespace

bool answers_to(const char *name, const char *key)
{
    return same_folded(name, key, std::strlen(name));
}

bool is_named(const char *name, const char *key)
{
    return same_folded(name, key, longest_exact_name);
}

bool is_component(const void *record, const TiXmlNode *node, const char *key)
{
    return record != nullptr && node != nullptr && (key == nullptr || answers_to(node->Value(), key));
}

int read_record(const Table &table, void *record, TiXmlNode *element)
{
    Walk walk = {table, record, 0, false, 0};
    prepare(table, record);
    unsigned likely = 0;
    const unsigned flags = table.flags;
    for (TiXmlNode *child = element->FirstChild(); child != nullptr; child = child->NextSibling()) {
        unsigned index = (flags & (table_own_tests | table_exact)) == 0 ? match(table, child->Value(), likely)
                                                                        : find_row(table, child->Value(), 0);
        if (index == no_row) {
            tell(Event::ignored, table, nullptr, record, child);
            log_unknown(table, child->Value());
            if ((flags & table_others_fail) != 0)
                return -1;
        } else {
            do {
                if (read_row(walk, index, child) != 0)
                    return refuse(walk, index, child);
                index =
                    (flags & table_own_tests) != 0 ? find_row(table, child->Value(), next_chain(table, index)) : no_row;
            } while (index != no_row);
        }
        if (walk.full || (flags & table_first_only) != 0)
            break;
    }
    return finish(walk, element);
}

unsigned find_child(const Table &table, const TiXmlNode *child, unsigned *likely)
{
    return match(table, child->Value(), *likely);
}

int read_child(const Table &table, void *record, unsigned row, TiXmlNode *child)
{
    Walk walk = {table, record, 0, false, 0};
    return read_row(walk, row, child) != 0 ? refuse(walk, row, child) : 0;
}

int read_component(void *record, TiXmlNode *node, const char *key, const Table &table)
{
    return is_component(record, node, key) ? read_record(table, record, node) : -1;
}

int check_parser(const Table &message, const net_param_t *param, const TiXmlNode *node)
{
    if (param != nullptr && node != nullptr && param->data != nullptr &&
        ((message.flags & table_read_any) != 0 || param->dataSize == message.record_size))
        return 0;
    log_line(message.source().entry, message.place(), message.parser());
    return -1;
}

int check_writer(const Table &message, const net_param_t *param, const TiXmlElement *parent)
{
    if (param != nullptr && parent != nullptr && param->data != nullptr &&
        ((message.flags & table_write_any) != 0 || param->dataSize == message.record_size))
        return 0;
    log_line(message.source().write_entry, message.place(), message.writer());
    return -1;
}

int parse_message(net_param_t *param, TiXmlNode *node, const Table &message)
{
    if (check_parser(message, param, node) != 0 || read_record(message, param->data, node) != 0)
        return -1;
    if ((message.flags & table_sets_inited) != 0)
        param->inited = 2;
    return 0;
}

namespace {

bool is_written(const Table &table, const void *record, const Row &row)
{
    const Row *condition = table.attachment(row, Kind::condition);
    if (condition == nullptr)
        return true;
    const int value = member<int>(record, *condition);
    switch (static_cast<When>(condition->limits)) {
    case When::nonzero:
        return value != 0;
    case When::nonnegative:
        return value >= 0;
    case When::positive:
        return value > 0;
    }
    return true;
}

// A text member; the host may have filled it to the last byte.
int write_text(TiXmlElement *parent, const char *key, const char *text, std::size_t size)
{
    return std::memchr(text, '\0', size) != nullptr ? append_text(parent, key, text)
                                                    : append_text(parent, key, text, size);
}

int write_word(const Table &table, const Row &row, int code, TiXmlElement *parent)
{
    const WordTable &words = *table.ref(row.ref).words;
    const char *word = word_of(words, code);
    if (word == nullptr && (row.flags & word_fallback) != 0)
        word = word_of(words, table.limit(row.limits).high);
    if (word == nullptr) {
        log_unspelled(table, row, code);
        return -1;
    }
    return append_text(parent, table.key(row), word);
}

// These two have a text on the stack and stay out of write_record(), whose frames pile up.
NETPUBLIC_LEAF int write_mask_words(const Table &table, const Row &row, int mask, TiXmlElement *parent)
{
    char text[128];
    write_mask(*table.ref(row.ref).words, mask, text, sizeof text);
    return append_text(parent, table.key(row), text);
}

NETPUBLIC_LEAF int write_int_list(const Table &table, const Row &row, const int *values, TiXmlElement *parent)
{
    char text[128];
    if (changeIntTableToString(text, sizeof text, const_cast<int *>(values), table.capacity(row), 0) != 0)
        return -1;
    return append_text(parent, table.key(row), text);
}

int write_items(const Table &table, const Row &row, const void *record, TiXmlElement *parent)
{
    const Row *count_row = table.attachment(row, Kind::count);
    const int capacity = table.capacity(row);
    int count = count_row != nullptr ? member<int>(record, *count_row) : capacity;
    if (count > capacity)
        count = capacity;
    const char *first = &member<char>(record, row);
    for (int index = 0; index < count; ++index) {
        if (row.kind == Kind::int_items) {
            if (append_int(parent, table.key(row), reinterpret_cast<const int *>(first)[index]) != 0)
                return -1;
        } else {
            const Table &item = *table.ref(row.ref).table;
            if (write_record(item, first + static_cast<std::size_t>(index) * item.record_size,
                             append_element(parent, table.key(row))) != 0)
                return -1;
        }
    }
    return 0;
}

int write_row(const Table &table, const Row &row, const void *record, TiXmlElement *parent)
{
    const char *key = table.key(row);
    switch (row.kind) {
    case Kind::integer:
    case Kind::flag:
        return append_int(parent, key, member<int>(record, row));
    case Kind::unsigned_integer:
        return append_unsigned(parent, key, member<unsigned int>(record, row));
    case Kind::int64:
        return append_longlong(parent, key, member<long long>(record, row));
    case Kind::unsigned_longlong:
        return append_unsignedlonglong(parent, key, member<unsigned long long>(record, row));
    case Kind::real:
        return append_float(parent, key, member<float>(record, row));
    case Kind::text:
        return write_text(parent, key, &member<char>(record, row),
                          static_cast<std::size_t>(table.limit(row.limits).high));
    case Kind::counted_text: {
        const auto &text = member<net_counted_text_t>(record, row);
        return write_text(parent, key, text.text, sizeof text.text);
    }
    case Kind::word:
        return write_word(table, row, member<int>(record, row), parent);
    case Kind::mask:
        return write_mask_words(table, row, member<int>(record, row), parent);
    case Kind::int_list:
        return write_int_list(table, row, &member<int>(record, row), parent);
    case Kind::group:
        return write_record(*table.ref(row.ref).table, &member<char>(record, row), append_element(parent, key));
    case Kind::list:
    case Kind::int_items:
        return write_items(table, row, record, parent);
    case Kind::custom:
        return table.ref(row.ref + (is_only_written(table, row) ? 0u : 1u)).write(record, parent);
    case Kind::constant:
        return append_int(parent, key, table.limit(row.limits).low);
    case Kind::view:
    case Kind::events:
    case Kind::preset:
    case Kind::count:
    case Kind::mark:
    case Kind::condition:
        break;
    }
    return -1; // these rows are never written
}

} // namespace

int write_record(const Table &table, const void *record, TiXmlElement *element)
{
    if (element == nullptr) // could not be made
        return -1;
    for (unsigned place = 0; place < table.written; ++place) {
        const Row &row = table.row(table.ordered(place));
        if (is_written(table, record, row) && write_row(table, row, record, element) != 0)
            return -1;
    }
    return 0;
}

int write_message(net_param_t *param, TiXmlElement *parent, const Table &message)
{
    return check_writer(message, param, parent) != 0 ? -1 : append_root(message, param->data, parent);
}

int append_root(const Table &message, const void *record, TiXmlElement *parent)
{
    // Built apart and linked last, so that a failure leaves the parent as it was.
    auto *root = new_element(message.root(), (message.flags & table_capital) != 0 ? "Version" : "version");
    if (write_record(message, record, root) != 0) {
        delete root;
        return -1;
    }
    parent->LinkEndChild(root);
    return 0;
}

} // namespace netpublic
