// A payload as a tree of named values, by the rows of its table.
#ifndef NETPARAM_DUMP_H
#define NETPARAM_DUMP_H

#include "item.h"
#include "table.h"

namespace netparam {

// What the names say to be secret is hidden. The record must be as large as the table says.
std::vector<Item> dump(const netpublic::Table &table, const void *record, bool show_secrets);

nlohmann::ordered_json to_json(const std::vector<Item> &items);

} // namespace netparam

#endif
