#include "engine/matching.h"

#include "ground/for_size.h"

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

const Row *find_key(const Table &table, const char *name, unsigned from)
{
    const Order order(table);
    const Names rule = table.names;
    const Row *end = &table.row(table.keys);
    for (const Row *row = &table.row(from); row < end; ++row) {
        if (rule == Names::any)
            return row;
        const char *key = order.key(*row);
        // The first characters tell most names apart.
        if (!alike(*name, *key) && *name != '\0')
            continue;
        if (rule == Names::whole    ? is_named(name, key)
            : rule == Names::longer ? answers_to(key, name)
                                    : answers_to(name, key))
            return row;
    }
    return nullptr;
}

const Row *find_own_test(const Table &table, const char *name, const Row &row)
{
    unsigned index = table.index_of(row);
    do
        ++index;
    while (index < table.keys && (table.row(index).flags & row_own_test) == 0);
    return find_key(table, name, index);
}

namespace {

// These steps lie beside each other, as all of a deep message lies above them on the stack.

constexpr Found unlikely = {0, UINT16_MAX};

Found found(unsigned row, unsigned expected)
{
    return {static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(expected)};
}

// Among the rows behind the expected one, or the first one where none is expected; or unlikely.
NETPUBLIC_INLINE_FOR_SPEED Found find_near(const Table &table, const char *name, unsigned expected)
{
    const Order order(table);
    const bool behind_all = expected == order.places;
    const unsigned end = std::min(order.places, behind_all ? 1 : expected + near_rows);
    for (unsigned place = behind_all ? 0 : expected + 1; place < end; ++place) {
        const unsigned index = order.row_at(place);
        const Row &row = table.row(index);
        if (bears_name(row, order.key(row), name))
            return found(index < table.keys ? index : Found::none, place_behind(row, place));
    }
    return unlikely;
}

// What is expected behind a key that has been found among all of them: it has a place in the order of writing, if it
// is written.
[[gnu::noinline]] Found expect_behind(const Table &table, const Row &row)
{
    const Order order(table);
    const unsigned index = table.index_of(row);
    const char *first = order.texts - order.written;
    const void *at = order.written != 0 ? std::memchr(first, static_cast<int>(index), order.written) : nullptr;
    const unsigned place =
        at != nullptr ? static_cast<unsigned>(static_cast<const char *>(at) - first) : order.written + index;
    return found(index, place_behind(row, place));
}

} // namespace

Found find_further(const Table &table, const char *name, unsigned expected)
{
    const Found near = find_near(table, name, expected);
    if (near.expected != unlikely.expected)
        return near;
    const Row *row = find_key(table, name);
    return row != nullptr ? expect_behind(table, *row) : found(Found::none, expected);
}

} // namespace netpublic
