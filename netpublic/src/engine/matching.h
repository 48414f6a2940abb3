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

#include <cstring>

namespace netpublic {

// Does an element of this name answer to the key?
bool answers_to(const char *name, const char *key);
// Is this the whole key, case aside? Only the first 31 characters count.
bool is_named(const char *name, const char *key);

// The first row from this index on to whose key the name answers, or null.
const Row *find_key(const Table &table, const char *name, unsigned from = 0);
// The next one behind a row that has taken the child, among those with a test of their own: see Field::own_test(). Only
// of a table with table_own_tests.
const Row *find_own_test(const Table &table, const char *name, const Row &row);

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

// The rows of a table in the order in which children are expected: as they are written, where that is another order
// than that of the keys; behind them the keys as they are tried.
struct Order {
    const Table &table;
    const char *texts; // the table's own; in front of them stand the rows in writing order
    unsigned written;
    unsigned places;

    [[gnu::always_inline]] explicit Order(const Table &of)
        : table(of), texts(of.bytes(of.texts)), written(0), places(of.keys)
    {
        if ((of.flags & table_ordered) != 0) {
            written = of.written;
            places += written;
        }
    }
    unsigned row_at(unsigned place) const
    {
        return place < written ? static_cast<unsigned char>(*(texts - written + place)) : place - written;
    }
    const char *key(const Row &row) const
    {
        return (row.key < common_texts.size ? common_texts.pool : texts - common_texts.size) + row.key;
    }
};

// A row's index, and the place that is expected behind it: one register.
struct Found {
    std::uint16_t row; // or none
    std::uint16_t expected;

    static constexpr std::uint16_t none = UINT16_MAX;
};
// What find_key() says; the rows behind the one at the expected place are tried first. The name of a row that is only
// written answers to none.
Found find_further(const Table &table, const char *name, unsigned expected);

// What find_key() says of the children of an element, one after another. What is inlined is what nearly all of them
// need.
class Expectation {
public:
    [[gnu::always_inline]] explicit Expectation(const Table &table) : order_(table), end_(&table.row(table.keys)) {}

    // The row that a child of this name answers to, or null.
    [[gnu::always_inline]] const Row *find(const char *name)
    {
        if (expected_ < order_.places) {
            const Row &row = order_.table.row(order_.row_at(expected_));
            if (bears_name(row, order_.key(row), name)) {
                expected_ = place_behind(row, expected_);
                return &row < end_ ? &row : nullptr;
            }
        }
        const Found found = find_further(order_.table, name, expected_);
        expected_ = found.expected;
        return found.row != Found::none ? &order_.table.row(found.row) : nullptr;
    }

private:
    const Order order_;
    const Row *const end_; // of the keys
    unsigned expected_ = 0;
};

} // namespace netpublic

#endif
