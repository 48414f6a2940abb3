// The examples of messages, as the reference shows them.
#ifndef NETPARAM_EXAMPLES_H
#define NETPARAM_EXAMPLES_H

#include "model/json.h"
#include "reading/session.h"

#include <map>
#include <string>

namespace netparam {

// In Markdown, by the message's name.
using Examples = std::map<std::string, std::string>;

// Those that DIRECTORY/messages.txt names, "FILE MESSAGE" a line; of several of a message the first. Each is read,
// or written from its payload in JSON: fails with exit_refused when the library does not take it.
Examples read_examples(const std::string &directory);

// What the message's writer makes of an example's payload. Fails with exit_refused; `name` is the example's.
TiXmlElement written_example(const Entry &entry, const Options &options, const Json &payload, const std::string &name);

} // namespace netparam

#endif
