// Parts of a payload, for printing.
#ifndef NETPARAM_SELECT_H
#define NETPARAM_SELECT_H

#include "reading/item.h"

#include <ostream>
#include <string>
#include <vector>

namespace netparam {

// What lies at this path, in the records around it. Fails with exit_usage when there is nothing.
std::vector<Item> only(const std::vector<Item> &items, const std::string &path);

// "path = value" a line, values as in JSON; grids and schedules in a few words.
void print_flat(std::ostream &out, const std::vector<Item> &items);

} // namespace netparam

#endif
