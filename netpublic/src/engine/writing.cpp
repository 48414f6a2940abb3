#include "engine/writing.h"

#include "engine/member.h"
#include "engine/reading.h"
#include "values/grid.h"
#include "values/values.h"

#include <net_public.h>

#include <cstring>

namespace netpublic {
namespace {

// Formats of rows are literals of the tables.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

// A word that is only written has a complaint for this; one that is read, too, has a line of its own for it.
void log_unspelled(const Table &table, const Row &row, int code)
{
    if (const char *line = table.second_line(row))
        log_error(table.place(), line, code);
    else if (is_only_written(table, row) && (row.flags & row_complains) != 0)
        log_error(table.place(), table.complaint(row), code);
}

void log_too_large(const Table &table, const Row &row, int characters)
{
    if (const char *line = table.second_line(row))
        log_error(table.place(), line, table.place().line(), characters);
}

#pragma GCC diagnostic pop

// Is the row written? -1 when writing fails for what its member holds.
int is_written(const Table &table, const void *record, const Row &row)
{
    const Row *condition = table.attachment(row, Kind::condition);
    if (condition == nullptr)
        return 1;
    const auto test = static_cast<When>(condition->limits & ~demanded);
    bool met;
    if (test == When::function) {
        met = table.ref(condition->offset).test(record);
    } else {
        const int value = member<int>(record, *condition);
        met = test == When::nonzero ? value != 0 : test == When::nonnegative ? value >= 0 : value > 0;
    }
    return met ? 1 : (condition->limits & demanded) != 0 ? -1 : 0;
}

int write_word(const Table &table, const Row &row, int code, Element parent)
{
    const WordTable &words = *table.ref(row.ref).words;
    const char *word = word_of(words, code);
    if (word == nullptr && row.kind == Kind::word && (row.flags & word_fallback) != 0)
        word = word_of(words, table.limit(row.limits).high);
    if (word == nullptr) {
        log_unspelled(table, row, code);
        return -1;
    }
    return append_text(parent, table.key(row), word);
}

// These have a text on the stack.

constexpr std::size_t text_room = 128;

NETPUBLIC_LEAF int write_mask_words(const Table &table, const Row &row, int mask, Element parent)
{
    char text[text_room];
    write_mask(*table.ref(row.ref).words, mask, text, sizeof text);
    const bool wordless = (row.flags & mask_wordless) != 0 && mask != 0 && std::strcmp(text, "none") == 0;
    return append_text(parent, table.key(row), wordless ? "" : text);
}

NETPUBLIC_LEAF int write_events(const Table &table, const Row &row, const time_section_t &set, Element parent)
{
    const WordTable &words = *table.ref(row.ref).words;
    const char *found[most_searched_words];
    int count = 0;
    for (const auto &entry : words)
        if (entry.use != Use::read && alarm_in_check_event(&set, static_cast<unsigned int>(entry.code())) != 0)
            found[count++] = words.text(entry);
    if (count == 0)
        found[count++] = "none";
    char text[text_room];
    return string_join(text, sizeof text, found, count, ',') != 0 ? -1 : append_text(parent, table.key(row), text);
}

NETPUBLIC_LEAF int write_int_list(const Table &table, const Row &row, const int *values, Element parent)
{
    char text[text_room];
    if (parent.is_text())
        text[join_ints(text, sizeof text - 1, values, table.capacity(row), 0)] = '\0';
    else if (changeIntTableToString(text, sizeof text, const_cast<int *>(values), table.capacity(row), 0) != 0)
        return -1; // the host is asked for its scratch memory
    return append_text(parent, table.key(row), text);
}

NETPUBLIC_LEAF int write_converted(const Table &table, const Row &row, const void *record, Element parent)
{
    char text[text_room];
    const unsigned write = row.ref + (is_only_written(table, row) ? 0u : 1u);
    return table.ref(write).write_text(record, text, sizeof text) != 0 ? -1 : append_text(parent, table.key(row), text);
}

// Grids -------------------------------------------------------------------------------------------

constexpr int most_characters = 3000; // of a grid's text

void make_grid_text(const void *grid, char *to, std::size_t count)
{
    encode_grid(*static_cast<const Grid *>(grid), to, count);
}

// A grid whose text would be too long, or whose sides are none, is left out.
NETPUBLIC_LEAF int write_grid(const Table &table, const Row &row, const void *record, Element parent)
{
    const Limits &sides = table.limit(row.limits);
    const int columns = member_at<int>(record, sides.low);
    const int rows = member_at<int>(record, sides.high);
    // A host's payload may hold any size: the product wraps around.
    const int count = static_cast<int>(static_cast<unsigned int>(columns) * static_cast<unsigned int>(rows));
    const int characters = count / 8 * 4 / 3 + 2;
    if (characters > most_characters)
        log_too_large(table, row, characters);
    if (characters > most_characters || columns < 0 || columns > grid_columns || rows < 0 || rows > grid_rows)
        return 0;
    const auto *cells = &member<unsigned char>(record, row);
    if ((row.flags & grid_behind_pointer) != 0)
        cells = member<const unsigned char *>(record, row);
    const Grid grid = {cells, columns, rows, (row.flags & grid_columns_first) != 0};
    const std::size_t length = encoded_length(grid);
    return length != 0 ? append_made(parent, table.key(row), length, make_grid_text, &grid) : 0;
}

// Elements ----------------------------------------------------------------------------------------

int write_items(const Table &table, const Row &row, const void *record, Element parent)
{
    const Row *count_row = table.attachment(row, Kind::count);
    const int capacity = table.capacity(row);
    int count = count_row != nullptr ? member<int>(record, *count_row) : capacity;
    if (count > capacity)
        count = capacity;
    const char *first = &member<char>(record, row);
    if (row.kind == Kind::list && (row.flags & list_behind_pointer) != 0)
        first = member<const char *>(record, row);
    for (int index = 0; index < count; ++index) {
        if (row.kind == Kind::int_items) {
            if (append_int(parent, table.key(row), reinterpret_cast<const int *>(first)[index]) != 0)
                return -1;
        } else {
            const Table &item = *table.ref(row.ref).table;
            if (write_record(item, first + static_cast<std::size_t>(index) * item.record_size,
                             append_element(parent, table.key(row)), static_cast<unsigned>(index)) != 0)
                return -1;
        }
    }
    return 0;
}

NETPUBLIC_LEAF int write_wires(const Table &table, const Row &row, const void *record, Element parent)
{
    const Table &wire = *table.ref(row.ref).table;
    const WriteWire write = table.ref(row.ref + (is_only_written(table, row) ? 1u : 2u)).write_wire;
    const char *target = &member<char>(record, row);
    const int most = row.kind == Kind::wire ? 1 : table.capacity(row);
    Item item = {table.key(row), 0, 0, 0};
    for (int count = 0; count < most; ++item.index) {
        const Give given = write(target, wire, item, parent);
        if (given == Give::failed)
            return -1;
        if (given == Give::ended || row.kind == Kind::wire)
            return 0;
        count += given == Give::written ? 1 : 0;
    }
    return 0;
}

int write_row(const Table &table, const Row &row, const void *record, Element parent, unsigned index)
{
    const char *key = table.key(row);
    switch (row.kind) {
    case Kind::integer:
    case Kind::flag:
        return append_int(parent, key, member<int>(record, row));
    case Kind::byte:
        return append_int(parent, key, member<unsigned char>(record, row));
    case Kind::place:
        return append_unsigned(parent, key, index);
    case Kind::unsigned_integer:
        return append_unsigned(parent, key, member<unsigned int>(record, row));
    case Kind::int64:
        return append_longlong(parent, key, member<long long>(record, row));
    case Kind::unsigned_longlong:
        return append_unsignedlonglong(parent, key, member<unsigned long long>(record, row));
    case Kind::real:
        return append_float(parent, key, member<float>(record, row));
    case Kind::text:
        // The host may have filled it to the last byte.
        return append_text(parent, key, &member<char>(record, row),
                           static_cast<std::size_t>(table.limit(row.limits).high));
    case Kind::counted_text: {
        const auto &text = member<net_counted_text_t>(record, row);
        return append_text(parent, key, text.text, sizeof text.text);
    }
    case Kind::view: {
        const char *text = member<const char *>(record, row);
        return text != nullptr ? append_text(parent, key, text) : 0;
    }
    case Kind::word:
        return write_word(table, row, member<int>(record, row), parent);
    case Kind::mask:
        return (row.flags & mask_last) != 0 ? write_word(table, row, member<int>(record, row), parent)
                                            : write_mask_words(table, row, member<int>(record, row), parent);
    case Kind::events:
        return write_events(table, row, member<time_section_t>(record, row), parent);
    case Kind::int_list:
        return write_int_list(table, row, &member<int>(record, row), parent);
    case Kind::converted:
        return write_converted(table, row, record, parent);
    case Kind::grid:
        return write_grid(table, row, record, parent);
    case Kind::group:
        return write_record(*table.ref(row.ref).table, &member<char>(record, row), append_element(parent, key));
    case Kind::list:
    case Kind::int_items:
        return write_items(table, row, record, parent);
    case Kind::wire:
    case Kind::wires:
        return write_wires(table, row, record, parent);
    case Kind::constant:
        return append_int(parent, key, table.limit(row.limits).low);
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
    return -1; // these rows are never written
}

// Tells the tools; those of the records around it follow.
int give_up([[maybe_unused]] const Table &table, [[maybe_unused]] const Row &row, [[maybe_unused]] const void *record)
{
#ifdef NETPUBLIC_DESCRIBED
    if (watch != nullptr)
        watch->happened(watch->context, Event::unwritten, table, &row, const_cast<void *>(record), nullptr);
#endif
    return -1;
}

} // namespace

int write_record(const Table &table, const void *record, Element element, unsigned index)
{
    if (!element) // could not be made
        return -1;
    for (unsigned place = 0; place < table.written; ++place) {
        const Row &row = table.row(table.ordered(place));
        const int written = (row.flags & row_attached) != 0 ? is_written(table, record, row) : 1;
        if (written < 0 || (written > 0 && write_row(table, row, record, element, index) != 0))
            return give_up(table, row, record);
    }
    return 0;
}

Give write_given(Give decision, const Table &wire, const void *record, const Item &item, Element parent)
{
    if (decision != Give::written)
        return decision;
    return static_cast<Give>(write_record(wire, record, append_element(parent, item.key)));
}

int check_writer(const Table &message, const net_param_t *param, const TiXmlElement *parent)
{
    if (param != nullptr && parent != nullptr && param->data != nullptr &&
        ((message.flags & table_write_any) != 0 || param->dataSize == message.record_size))
        return 0;
    message.log_write_entry();
    return -1;
}

int write_message(net_param_t *param, TiXmlElement *parent, const Table &message)
{
    if (check_writer(message, param, parent) != 0)
        return -1;
    if (append_root(message, param->data, parent) == 0)
        return 0;
    if ((message.traits & trait_write_line) != 0)
        message.log_write_entry();
    return -1;
}

int append_root(const Table &message, const void *record, Element parent)
{
    const Mark mark = mark_end(parent);
    const char *version = (message.flags & table_capital) != 0 ? "Version" : "version";
    return write_record(message, record, append_root(parent, message.root(), version)) != 0 ? remove_since(parent, mark)
                                                                                            : 0;
}

int write_component(const Table &table, const void *record, Element element)
{
    const Mark mark = mark_end(element);
    return write_record(table, record, element) != 0 ? remove_since(element, mark) : 0;
}

} // namespace netpublic
