// A scanned text against the XML library's tree of it.
#ifndef NETPUBLIC_FUZZ_SCAN_H
#define NETPUBLIC_FUZZ_SCAN_H

#include <string>

namespace fuzz {

// How the scanner's reading of a text differs from the XML library's: results, words of the error, and every node
// by every way to it. Empty when it does not. The text may hold anything; the first 0 ends it.
std::string scan_difference(const std::string &text);

} // namespace fuzz

#endif
