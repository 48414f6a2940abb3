// The drawings of a payload as one picture to look at or to attach to a report.
#ifndef NETPARAM_SVG_H
#define NETPARAM_SVG_H

#include "reading/item.h"

#include <string>
#include <vector>

namespace netparam {

// One below the other, each under its path. Empty when there is nothing to draw.
std::string svg_of(const std::vector<Item> &items, const std::string &title);

// The same as a file. Fails with exit_file, also when there is nothing to draw.
void save_svg(const std::vector<Item> &items, const std::string &title, const std::string &path);

} // namespace netparam

#endif
