// A payload as a tree of named values, by the rows of its table.
#ifndef NETPARAM_DUMP_H
#define NETPARAM_DUMP_H

#include "engine/table.h"
#include "reading/item.h"
#include "reading/trace.h"

namespace netparam {

// What the names say to be secret is hidden. The record must be as large as the table says; offsets count from
// the payload's start. The trace, if there is one, knows where values came from.
std::vector<Item> dump(const netpublic::Table &table, const void *record, bool show_secrets, const void *payload,
                       const Trace *trace);

Json to_json(const std::vector<Item> &items);

} // namespace netparam

#endif
