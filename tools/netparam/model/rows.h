// Which rows of a record are shown, under which names, and in which form: what is printed, what is
// compared and what is loaded all follow it.
#ifndef NETPARAM_ROWS_H
#define NETPARAM_ROWS_H

#include "engine/table.h"

#include <cstring>
#include <string>

namespace netparam {

// A record and what is known of it. Row offsets count from `shift` bytes before it: rows may describe a
// record that holds this one. `Byte` is const char or char.
template <class Byte> struct RecordView {
    const netpublic::Table &table;
    Byte *record;
    std::size_t shift;
    std::size_t size;

    Byte *member(const netpublic::Row &row) const
    {
        return record + row.offset - shift;
    }
    bool holds(const netpublic::Row &row) const
    {
        return row.offset >= shift && row.offset - shift < size;
    }
};

enum class Form {
    none,    // not shown
    scalar,  // a value of the member's shape
    scalars, // an item each, up to the last one that is not all zero
    numbers, // an array of numbers
    text,
    texts,
    word, // one of row_words()
    words,
    mask,
    masks,
    month,   // a word for each of 31 days
    group,   // a record by the row's table
    list,    // records by the row's table
    record,  // a record by the rows that its detail names
    records, // several of them
    grid,    // bytes
    week,    // 7 x 24 ints
    hours,   // 7 ints, a bit an hour
    sets,    // 7 x 24 sets of alarm types
};

Form form_of(const netpublic::Table &table, unsigned index);

// Is the row shown, if its record holds it? What an earlier row shows is not shown again.
bool is_shown(const netpublic::Table &table, unsigned index);
// Its key; a preset has none and bears its member's name.
std::string name_of(const netpublic::Table &table, unsigned index);
// The spellings of a word or mask; those of a conversion stand beside the row. Null without any.
const netpublic::WordTable *row_words(const netpublic::Table &table, const netpublic::Row &row);
// The code of a spelling, case aside where no spelling is the same to the letter. False without one.
bool code_of(const netpublic::WordTable &words, const std::string &text, int &code);
// The row of the member that keeps a list's number of items; null when nothing does.
const netpublic::Row *count_of(const netpublic::Table &table, const netpublic::Row &list);
// How many elements the member holds.
std::size_t capacity_of(const netpublic::Table &table, unsigned index);

// A member's bytes; records need not be aligned.
template <class Type> Type load(const char *at)
{
    Type value;
    std::memcpy(&value, at, sizeof value);
    return value;
}
template <class Type> void store(char *at, Type value)
{
    std::memcpy(at, &value, sizeof value);
}

// What the record itself says of a grid's size, under either key, if it lies within the limit.
template <class Byte> int size_beside(const RecordView<Byte> &view, const char *key, const char *other, int limit)
{
    for (unsigned i = 0; i < view.table.rows; ++i) {
        const netpublic::Row &row = view.table.row(i);
        const std::string name = row.kind == netpublic::Kind::integer ? view.table.key(row) : "";
        if (!view.holds(row) || (name != key && name != other))
            continue;
        const int size = load<std::int32_t>(view.member(row));
        if (size >= 1 && size <= limit)
            return size;
    }
    return limit;
}

// A grid in its member: stored row after row or column after column; it always has more columns than rows.
struct GridLayout {
    int columns, rows; // as many as there is room for
    bool by_columns;

    explicit GridLayout(const netpublic::Detail &detail)
        : columns(static_cast<int>(detail.dimensions[0])), rows(static_cast<int>(detail.dimensions[1])),
          by_columns(columns > rows)
    {
        if (!by_columns)
            std::swap(columns, rows);
    }
    std::size_t index(int column, int row) const
    {
        return static_cast<std::size_t>(by_columns ? column * rows + row : row * columns + column);
    }
};

} // namespace netparam

#endif
