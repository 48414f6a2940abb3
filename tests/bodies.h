// Message bodies made from the descriptions, for tests of what the descriptions say.
#ifndef NETPUBLIC_TESTS_BODIES_H
#define NETPUBLIC_TESTS_BODIES_H

#include "engine/registry.h"

#include <functional>
#include <string>
#include <vector>

class TiXmlElement;

namespace test {

// A row of a message's element tree, and the rows that lead there from the message's own.
struct PlacedRow {
    const netpublic::Table *table;
    unsigned index;
    std::vector<PlacedRow> around;

    const netpublic::Row &row() const
    {
        return table->row(index);
    }
    std::string path() const;
};

// The rows that a child can answer to, depth first; without those that an earlier key keeps from being read.
std::vector<PlacedRow> readable_rows(const netpublic::Table &table);
// Does a child of the row's full name go to the row?
bool is_reachable(const netpublic::Table &table, unsigned index);

// What a body is made of. By default every row gets a text that it accepts, and lists two items.
struct Recipe {
    bool required_only = false;
    // Another text for the row; null for the usual one.
    std::function<const char *(const netpublic::Table &table, unsigned index)> text;
    // Another number of elements for the row, 0 leaves it out; negative for the usual one.
    std::function<int(const netpublic::Table &table, unsigned index)> count;
    // A further child behind those of the record.
    std::function<const char *(const netpublic::Table &table)> stranger;
};

// Adds the children of a record.
void fill(TiXmlElement &element, const netpublic::Table &table, const Recipe &recipe);

// A text that the row accepts; `place` is the item's in its list.
std::string usual_text(const netpublic::Table &table, unsigned index, int place);

} // namespace test

#endif
