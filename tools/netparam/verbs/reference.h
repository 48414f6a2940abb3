// All messages' tables in one text.
#ifndef NETPARAM_REFERENCE_H
#define NETPARAM_REFERENCE_H

#include "verbs/examples.h"

#include <ostream>

namespace netparam {

// A page in Markdown for people: what several messages share stands there once.
void print_page(std::ostream &out, const Examples &examples);
// Every row in a line, with offsets, limits and words: changes show line by line.
void print_rows(std::ostream &out);

} // namespace netparam

#endif
