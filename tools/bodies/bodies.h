// Message bodies made from the descriptions: for whoever wants one, and for tests of what the descriptions say.
#ifndef NETPUBLIC_BODIES_H
#define NETPUBLIC_BODIES_H

#include "engine/registry.h"

#include <functional>
#include <string>
#include <vector>

class TiXmlElement;

namespace bodies {

// A row of a message's element tree.
struct Step {
    const netpublic::Table *table;
    unsigned index;

    const netpublic::Row &row() const
    {
        return table->row(index);
    }
    const char *key() const
    {
        return table->key(row());
    }
    // What the row's element holds; null when that is a text.
    const netpublic::Table *inside() const;
    // The rows that read it once more, see Field::again(); null without.
    const netpublic::Table *again() const;
    bool operator==(const Step &other) const
    {
        return table == other.table && index == other.index;
    }
};

// The rows that lead to one, the outermost first, and the row itself.
using Path = std::vector<Step>;
std::string spelled(const Path &path);
// Does the one lead to the other?
bool leads_to(const Path &path, const Path &inner);

// The rows that a child can answer to, depth first; without those that an earlier key keeps from being read.
std::vector<Path> readable_rows(const netpublic::Table &table);

// What a body is made of. By default every row gets a text that it accepts, and lists two items.
struct Recipe {
    bool required_only = false;
    // Another text for the row; null for the usual one.
    std::function<const char *(const Path &path)> text;
    // Another number of elements for the row, 0 leaves it out; negative for the usual one.
    std::function<int(const Path &path)> count;
    // Is told of each element that has been added, as soon as it has its content.
    std::function<void(TiXmlElement &element, const Path &path)> made;
    // Of a message that is only written: what its writer writes, in that order.
    bool as_written = false;
    // A further child in front of those of the record, or behind them.
    std::function<bool(const netpublic::Table &table)> stranger_first, stranger_last;
};

// Adds the children of a record.
void fill(TiXmlElement &element, const netpublic::Table &table, const Recipe &recipe);

// A text that the row accepts; `place` is the item's in its list.
std::string usual_text(const netpublic::Table &table, unsigned index, int place);

// Must the list be full?
bool is_exact(const netpublic::Row &row);
// The grid that the row is a side of; null for any other row.
const netpublic::Row *grid_of_side(const netpublic::Table &table, const netpublic::Row &side);

} // namespace bodies

#endif
