// The verbs. Each returns the exit code.
#ifndef NETPARAM_COMMANDS_H
#define NETPARAM_COMMANDS_H

#include "failure.h"
#include "session.h"

#include <ostream>

namespace netparam {

// The catalogue: rows with the filter in their name, initialiser, id, functions or root element.
ExitCode list_messages(std::ostream &out, const std::string &filter, bool json);

// A body into its payload. Refusals and notes go to `errors`, the payload to `out`.
ExitCode parse_body(std::ostream &out, std::ostream &errors, const Options &options);

// The host's whole exchange: extension header, initialiser, parser, writer.
ExitCode exchange(std::ostream &out, std::ostream &errors, const Options &options);

} // namespace netparam

#endif
