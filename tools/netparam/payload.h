// Payloads as files: JSON to load, bytes to compare.
#ifndef NETPARAM_PAYLOAD_H
#define NETPARAM_PAYLOAD_H

#include "session.h"

#include <nlohmann/json.hpp>

#include <string>

namespace netparam {

// The payload in a JSON text: its "payload" member, as "parse --json" prints it, or the whole. Fails with
// exit_file, exit_malformed, and exit_refused when it is another message's.
nlohmann::ordered_json read_payload(const std::string &path, const Entry &entry);

// Into the prepared payload. Throws a Misfit.
void load_payload(Session &session, const Entry &entry, const nlohmann::ordered_json &payload);

// The payload's bytes as this machine's memory holds them. Fails with exit_file.
void save_bytes(const Session &session, const std::string &path);

} // namespace netparam

#endif
