// What a message's payload and bodies look like, for validators.
#ifndef NETPARAM_SCHEMA_H
#define NETPARAM_SCHEMA_H

#include "model/json.h"
#include "reading/session.h"

#include <ostream>

namespace netparam {

// JSON Schema of the payload in JSON, as "parse --json" prints it and "write" takes it. Fails with exit_usage when no
// rows describe the payload.
Json payload_schema(const Entry &entry);

// XML Schema of the bodies that are read, or else written: what it finds valid, the library accepts as far as the
// tables tell, but not only that. Fails with exit_usage when no rows describe them.
void print_xsd(std::ostream &out, const Entry &entry);

} // namespace netparam

#endif
