// Replies that carry as much of a long list as fits.
#ifndef NETPUBLIC_PAGING_H
#define NETPUBLIC_PAGING_H

#include "engine/table.h"

namespace netpublic {

// Appends a page's root element with the records from `first` on, of `count` in all, as long as its printed size
// does not exceed the budget. The page's first row is the list of the records, the second one the child that is
// written as 1 when some are left.
//
// Returns the first record that was not written, or -1 with the parent untouched. `size` becomes the printed size of
// the root without children and of the records, with the one that did not fit: it exceeds the budget only then. The
// root's closing tag and the second child are not counted.
int append_page(const Table &page, const void *records, int first, int count, Element parent, int budget,
                std::size_t *size);

} // namespace netpublic

#endif
