#include "engine/matching.h"

#include <algorithm>
#include <cstring>

namespace netpublic {
namespace {

constexpr unsigned near_rows = 8; // from the expected one on, tried before all keys are

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
        return from < table.keys ? from : no_row;
    for (unsigned index = from; index < table.keys; ++index) {
        const char *key = order.key(table.row(index));
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

constexpr Found unlikely = {0, UINT16_MAX};

Found found(unsigned row, unsigned expected)
{
    return {static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(expected)};
}

// Among the rows behind the expected one; or unlikely.
[[gnu::noinline]] Found find_near(const Table &table, const char *name, unsigned expected)
{
    const Order order(table);
    const unsigned end = std::min(order.places, expected + near_rows);
    for (unsigned place = expected + 1; place < end; ++place) {
        const unsigned index = order.row_at(place);
        const Row &row = table.row(index);
        if (bears_name(row, order.key(row), name))
            return found(index < table.keys ? index : Found::none, place_behind(row, place));
    }
    return unlikely;
}

// What is expected once a row, or none, has been found among all.
[[gnu::noinline]] Found expect_behind(const Table &table, unsigned row, unsigned expected)
{
    const Order order(table);
    if (row == no_row)
        return found(Found::none, expected);
    const char *written = order.texts - order.written;
    const auto *at = order.written != 0
                         ? static_cast<const char *>(std::memchr(written, static_cast<int>(row), order.written))
                         : nullptr;
    const unsigned place = at != nullptr ? static_cast<unsigned>(at - written) : order.written + row;
    return found(row, place_behind(table.row(row), place));
}

} // namespace

Found find_further(const Table &table, const char *name, unsigned expected)
{
    const Found near = find_near(table, name, expected);
    if (near.expected != unlikely.expected)
        return near;
    return expect_behind(table, find_key(table, name, 0), expected);
}

unsigned next_chain(const Table &table, unsigned index)
{
    do
        ++index;
    while (index < table.keys && (table.row(index).flags & row_own_test) == 0);
    return index;
}

} // namespace netpublic
