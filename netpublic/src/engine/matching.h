// Which row of a table a child's name answers to.
//
// A name answers to a key when it is a beginning of the key, case aside; the empty name answers to every key. The
// first key of the table that it answers to takes the child. (Tables may ask for another comparison: see Names.)
//
// Children usually arrive in the order in which they are written, some left out. So a walk keeps the place in that
// order behind its last child, and looks there first: a child that bears the full name of a row answers to no row
// in front of it, unless an earlier key begins with that name, which is known when the table is packed.
#ifndef NETPUBLIC_MATCHING_H
#define NETPUBLIC_MATCHING_H

#include "engine/table.h"

#include <climits>
#include <cstring>

namespace netpublic {

constexpr unsigned no_row = UINT_MAX;

// Does an element of this name answer to the key?
bool answers_to(const char *name, const char *key);
// Is this the whole key, case aside? Only the first 31 characters count.
bool is_named(const char *name, const char *key);

// The first key from row `from` on that the name answers to, or no_row.
unsigned find_key(const Table &table, const char *name, unsigned from);

// Is this the row's full name, and the row the first one that it answers to?
inline bool bears_name(const Row &row, const char *key, const char *name)
{
    return *name == *key && (row.flags & row_shadowed) == 0 && std::strcmp(name, key) == 0;
}

// The place that is expected behind a row's: a list's own, since its elements come one after another.
inline unsigned place_behind(const Row &row, unsigned place)
{
    return is_list(row.kind) ? place : place + 1;
}

// find_key(table, name, 0), which tries the expected row and those behind it first. `expected` is 0 in front of the
// first child. The name of a row that is only written answers to none.
unsigned find_further(const Table &table, const char *name, unsigned &expected);
inline unsigned find_expected(const Table &table, const char *name, unsigned &expected)
{
    const unsigned written = table.places();
    if (expected < written + table.keys) {
        const unsigned index = expected < written ? table.ordered(expected) : expected - written;
        const Row &row = table.row(index);
        if (bears_name(row, table.key(row), name)) {
            expected = place_behind(row, expected);
            return index < table.keys ? index : no_row;
        }
    }
    return find_further(table, name, expected);
}

// The first row behind `index` that starts a chain of its own: see Field::own_test().
unsigned next_chain(const Table &table, unsigned index);

} // namespace netpublic

#endif
