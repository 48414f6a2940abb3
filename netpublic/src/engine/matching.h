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

namespace netpublic {

constexpr unsigned no_row = UINT_MAX;

// Does an element of this name answer to the key?
bool answers_to(const char *name, const char *key);
// Is this the whole key, case aside? Only the first 31 characters count.
bool is_named(const char *name, const char *key);

// The first key from row `from` on that the name answers to, or no_row.
unsigned find_key(const Table &table, const char *name, unsigned from);

// find_key(table, name, 0), which tries the expected row first. `expected` is 0 in front of the first child.
unsigned find_expected(const Table &table, const char *name, unsigned &expected);

// The first row behind `index` that starts a chain of its own: see Field::own_test().
unsigned next_chain(const Table &table, unsigned index);

} // namespace netpublic

#endif
