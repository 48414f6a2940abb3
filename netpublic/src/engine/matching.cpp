#include "engine/matching.h"

#include <algorithm>
#include <cstring>

namespace netpublic {
namespace {

constexpr unsigned near_rows = 6; // from the expected one on, tried before all keys are

// The rows of a table in the order in which children are expected: as they are written, behind them the keys as
// they are tried.
struct Order {
    const Row *rows;
    const char *own;               // where the table's own texts would begin if they stood behind the common ones
    const unsigned char *of_place; // the rows in writing order; null where that is their own
    unsigned written;
    unsigned keys;

    explicit Order(const Table &table)
        : rows(&table.row(0)), own(table.bytes(table.texts) - common_texts.size), of_place(nullptr),
          written(table.places()), keys(table.keys)
    {
        if ((table.flags & table_ordered) != 0)
            of_place = reinterpret_cast<const unsigned char *>(table.bytes(table.texts - written));
    }
    unsigned places() const
    {
        return written + keys;
    }
    unsigned row_at(unsigned place) const
    {
        if (place >= written)
            return place - written;
        return of_place != nullptr ? of_place[place] : place;
    }
    unsigned place_of(unsigned row) const
    {
        if (of_place == nullptr)
            return row;
        const void *found = std::memchr(of_place, static_cast<int>(row), written);
        return found != nullptr ? static_cast<unsigned>(static_cast<const unsigned char *>(found) - of_place)
                                : written + row;
    }
    unsigned place_behind(unsigned place) const
    {
        return netpublic::place_behind(rows[row_at(place)], place);
    }
    const char *key(const Row &row) const
    {
        return (row.key < common_texts.size ? common_texts.pool : own) + row.key;
    }
};

} // namespace

bool answers_to(const char *name, const char *key)
{
    for (; *name != '\0'; ++name, ++key)
        if (*name != *key && fold(*name) != fold(*key))
            return false;
    return true;
}

bool is_named(const char *name, const char *key)
{
    return same_folded(name, key, compared_characters);
}

unsigned find_key(const Table &table, const char *name, unsigned from)
{
    const Order order(table);
    const Names rule = table.names;
    if (rule == Names::any)
        return from < order.keys ? from : no_row;
    for (unsigned index = from; index < order.keys; ++index) {
        const char *key = order.key(order.rows[index]);
        // The first characters tell most names apart.
        if (!alike(*name, *key) && *name != '\0')
            continue;
        if (rule == Names::whole    ? is_named(name, key)
            : rule == Names::longer ? answers_to(key, name)
                                    : answers_to(name, key))
            return index;
    }
    return no_row;
}

namespace {

// These steps lie beside each other, as all of a deep message lies above them on the stack.

constexpr unsigned unlikely = no_row - 1;

// Among the rows behind the expected one; or unlikely.
[[gnu::noinline]] unsigned find_near(const Table &table, const char *name, unsigned &expected)
{
    const Order order(table);
    const unsigned end = std::min(order.places(), expected + near_rows);
    for (unsigned place = expected; ++place < end;) {
        const unsigned index = order.row_at(place);
        const Row &row = order.rows[index];
        if (!bears_name(row, order.key(row), name))
            continue;
        expected = order.place_behind(place);
        return index < order.keys ? index : no_row;
    }
    return unlikely;
}

// What is expected once a row, or none, has been found among all.
[[gnu::noinline]] unsigned expect_behind(const Table &table, unsigned row, unsigned expected)
{
    const Order order(table);
    return row != no_row ? order.place_behind(order.place_of(row)) : expected;
}

} // namespace

unsigned find_further(const Table &table, const char *name, unsigned &expected)
{
    const unsigned near = find_near(table, name, expected);
    if (near != unlikely)
        return near;
    const unsigned index = find_key(table, name, 0);
    expected = expect_behind(table, index, expected);
    return index;
}

unsigned next_chain(const Table &table, unsigned index)
{
    do
        ++index;
    while (index < table.keys && (table.row(index).flags & row_own_test) == 0);
    return index;
}

} // namespace netpublic
