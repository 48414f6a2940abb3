// A message's description for programs.
#ifndef NETPARAM_DESCRIBE_H
#define NETPARAM_DESCRIBE_H

#include "model/json.h"
#include "model/messages.h"

namespace netparam {

// What "list --json" prints of a message or initialiser; absent texts are null.
Json entry_json(const Entry &entry);
// What "describe --json" prints of a message that can be parsed or written.
Json message_json(const Entry &entry);

} // namespace netparam

#endif
