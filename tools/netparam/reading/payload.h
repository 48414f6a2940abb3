// Payloads as files: JSON to load, bytes to compare.
#ifndef NETPARAM_PAYLOAD_H
#define NETPARAM_PAYLOAD_H

#include "model/json.h"
#include "reading/dump.h"
#include "reading/session.h"

#include <string>

namespace netparam {

// The payload in a JSON text: its "payload" member, as "parse --json" prints it, or the whole.
struct PayloadFile {
    std::string name, text; // of the file
    Json payload;

    // Where the member's value stands in the text; no place where it does not.
    Spot spot_of(const std::string &member) const;
};

// Fails with exit_file, exit_malformed, and exit_refused when it is another message's.
PayloadFile read_payload(const std::string &path, const Entry &entry);

// The payload by its rows; nothing when no rows say what it is.
std::vector<Item> payload_items(const Session &session, bool show_secrets);

// Into the prepared payload. Throws a Misfit.
void load_payload(Session &session, const Json &payload);

// The payload's bytes as this machine's memory holds them. Fails with exit_file.
void save_bytes(const Session &session, const std::string &path);

} // namespace netparam

#endif
