// Two payloads, field by field.
#ifndef NETPARAM_COMPARE_H
#define NETPARAM_COMPARE_H

#include "reading/item.h"

namespace netparam {

// A field whose values differ; `a` or `b` is null where the payload has no such item.
struct Difference {
    std::string path;
    const Item *a, *b;
};

// In the order of the rows. The payloads must outlive the result.
std::vector<Difference> differences(const std::vector<Item> &a, const std::vector<Item> &b);

// What differs in two drawings of cells.
struct CellDifference {
    int cells = 0;                    // how many
    std::vector<std::string> overlay; // "-" set in a only, "+" in b only, "!" set in both, but differently
};

// Nothing unless both values are drawn as cells, in the same size.
CellDifference compare_cells(const Difference &difference);

} // namespace netparam

#endif
