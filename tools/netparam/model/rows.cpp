#include "model/rows.h"

#include "model/text.h"

namespace netparam {

using netpublic::Detail;
using netpublic::Kind;
using netpublic::Row;
using netpublic::Shape;
using netpublic::Table;

namespace {

constexpr std::size_t days_of_month = 31;

Form spelled_form(const Detail &detail, std::size_t count)
{
    switch (detail.shape) {
    case Shape::u32:
        return count == 1 ? Form::mask : Form::masks;
    case Shape::i32:
        return count == 1 ? Form::word : count == days_of_month ? Form::month : Form::words;
    case Shape::u8:
        return count == 1 ? Form::word : Form::words;
    default:
        return Form::none;
    }
}

// By the member's shape alone.
Form shaped_form(const Detail &detail)
{
    const std::size_t first = detail.dimensions[0], second = detail.dimensions[1], count = first * second;
    const bool week = first == 7 && second == 24;
    if (detail.shown != nullptr)
        return count == 1 ? Form::record : Form::records;
    if (detail.words != nullptr)
        return spelled_form(detail, count);
    if (detail.shape == Shape::characters)
        return second == 1 ? Form::text : Form::texts;
    if (detail.shape == Shape::none || (detail.shape == Shape::hours && first != 7))
        return Form::none;
    if (detail.shape == Shape::hours)
        return Form::hours;
    if (count == 1)
        return Form::scalar;
    if (detail.shape == Shape::u8 && second > 1)
        return Form::grid;
    if (detail.shape == Shape::i32 && week)
        return Form::week;
    if (detail.shape == Shape::section && week)
        return Form::sets;
    return detail.shape <= Shape::u8 ? Form::numbers : Form::scalars;
}

// An element whose children show nothing by themselves: they are kept in another form.
bool shows_inside(const Table &table, const Row &row)
{
    const Table &inner = *table.ref(row.ref).table;
    for (unsigned i = 0; i < inner.rows; ++i)
        if (is_shown(inner, i))
            return true;
    return false;
}

// Does an earlier row show the same? A field may have one row to be read by and another to be written by.
bool shown_before(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    for (unsigned i = 0; i < index; ++i) {
        const Row &earlier = table.row(i);
        if (form_of(table, i) == Form::none)
            continue; // what shows nothing hides nothing
        const bool same_key = std::strcmp(table.key(earlier), table.key(row)) == 0;
        const bool same_member =
            std::strcmp(table.text(table.detail(i).member), table.text(table.detail(index).member)) == 0;
        const bool has_member = table.detail(i).shape != Shape::none; // a part has none
        if (row.kind == Kind::preset ? has_member && earlier.offset == row.offset : same_key && index >= table.keys)
            return true;
        if (earlier.offset == row.offset && (same_key || (same_member && form_of(table, index) != Form::group)))
            return true;
    }
    // A preset inside a member that has a row of its own.
    return row.kind == Kind::preset && std::strpbrk(table.text(table.detail(index).member), "[.") != nullptr;
}

} // namespace

Form form_of(const Table &table, unsigned index)
{
    switch (table.row(index).kind) {
    case Kind::word:
        return Form::word;
    case Kind::mask:
        return Form::mask;
    case Kind::group: {
        const Detail &detail = table.detail(index);
        if (shows_inside(table, table.row(index)))
            return Form::group;
        return detail.shape == Shape::record ? Form::none : shaped_form(detail);
    }
    case Kind::list:
        return Form::list;
    case Kind::int_items:
        return Form::numbers;
    case Kind::constant:
    case Kind::view:
    case Kind::count:
    case Kind::mark:
    case Kind::condition:
    case Kind::hook:
    case Kind::again:
    case Kind::shows:
    case Kind::second_line:
        return Form::none;
    default:
        return shaped_form(table.detail(index));
    }
}

bool is_shown(const Table &table, unsigned index)
{
    return (table.row(index).flags & netpublic::row_skipped) == 0 && form_of(table, index) != Form::none &&
           !shown_before(table, index);
}

std::string name_of(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    return row.kind == Kind::preset ? table.text(table.detail(index).member) : table.key(row);
}

const netpublic::WordTable *row_words(const Table &table, const Row &row)
{
    const bool own = row.kind == Kind::word || row.kind == Kind::mask || row.kind == Kind::events;
    return own ? table.ref(row.ref).words : table.detail(table.index_of(row)).words;
}

bool code_of(const netpublic::WordTable &words, const std::string &text, int &code)
{
    for (const bool exact : {true, false})
        for (const auto &entry : words)
            if (exact ? text == words.text(entry) : lower(text) == lower(words.text(entry))) {
                code = entry.code();
                return true;
            }
    return false;
}

const Row *count_of(const Table &table, const Row &list)
{
    // That of an indexed list is the host's: what is read does not move it.
    const bool indexed = list.kind == Kind::list && (list.flags & netpublic::list_indexed) != 0;
    return indexed ? nullptr : table.attachment(list, Kind::count);
}

std::size_t capacity_of(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    const Detail &detail = table.detail(index);
    return row.kind == Kind::list || row.kind == Kind::int_items
               ? static_cast<std::size_t>(table.capacity(row))
               : std::size_t{detail.dimensions[0]} * detail.dimensions[1];
}

} // namespace netparam
