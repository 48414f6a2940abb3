// Values whose members keep their order.
#ifndef NETPARAM_JSON_H
#define NETPARAM_JSON_H

#include <nlohmann/json.hpp>

namespace netparam {

using Json = nlohmann::ordered_json;

} // namespace netparam

#endif
