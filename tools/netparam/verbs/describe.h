// A message's description for programs.
#ifndef NETPARAM_DESCRIBE_H
#define NETPARAM_DESCRIBE_H

#include "model/messages.h"

#include <nlohmann/json.hpp>

namespace netparam {

// What "describe --json" prints of a message that can be parsed or written.
nlohmann::ordered_json message_json(const Entry &entry);

} // namespace netparam

#endif
