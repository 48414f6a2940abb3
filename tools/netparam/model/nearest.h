// Suggestions for misspelt names.
#ifndef NETPARAM_NEAREST_H
#define NETPARAM_NEAREST_H

#include <string>
#include <vector>

namespace netparam {

// "CoverPreview", "cover-preview" and "cover_preview" are the same: hyphens and underscores come and go.
std::string simplified(std::string name);

// The names that are near enough to be meant, nearest first, then in the given order; at most `most`.
std::vector<std::string> nearest(const std::string &typed, const std::vector<std::string> &names, std::size_t most = 3);
// "; did you mean NAME?", or nothing.
std::string meant(const std::string &typed, const std::vector<std::string> &names);
// "no such word", with a suggestion if there is one.
std::string no_such_word(const std::string &typed, const std::vector<std::string> &words);

} // namespace netparam

#endif
