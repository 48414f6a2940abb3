// Suggestions for misspelt names.
#ifndef NETPARAM_NEAREST_H
#define NETPARAM_NEAREST_H

#include <string>
#include <vector>

namespace netparam {

// How many letters must be changed, added, left out or swapped with their neighbour; case does not count.
std::size_t edit_distance(const std::string &a, const std::string &b);

// The names that are near enough to be meant, nearest first, then in the given order; at most `most`.
std::vector<std::string> nearest(const std::string &typed, const std::vector<std::string> &names, std::size_t most = 3);
// "; did you mean NAME?", or nothing.
std::string meant(const std::string &typed, const std::vector<std::string> &names);

} // namespace netparam

#endif
