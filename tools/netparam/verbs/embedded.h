// Files that are part of the program: the page's template, style and script, and the examples.
#ifndef NETPARAM_EMBEDDED_H
#define NETPARAM_EMBEDDED_H

#include <map>
#include <string>
#include <string_view>

namespace netparam {

// By their names without directories.
const std::map<std::string, std::string_view> &embedded_files();

} // namespace netparam

#endif
