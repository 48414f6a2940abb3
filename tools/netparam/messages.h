// The messages that the library knows: the catalogue of initialisers joined with the domains' lists.
#ifndef NETPARAM_MESSAGES_H
#define NETPARAM_MESSAGES_H

#include "catalogue.h"
#include "registry.h"

#include <string>
#include <vector>

namespace netparam {

// An initialiser without parser and writer has no message; a message whose envelope the host prepares
// has no initialiser.
struct Entry {
    const netpublic::Message *message;
    const netpublic::Initialiser *initialiser;

    std::string name() const; // what one types; "-" without a message
    bool parses() const;
    bool writes() const;
    std::string directions() const;
    // Names of the functions; empty without one.
    std::string parser() const;
    std::string writer() const;
    // The root element that is written; empty when unknown.
    std::string root() const;
    // Size of the payload; 0 without one.
    unsigned int size() const;
};

// In the order of the catalogue, then what the host prepares.
const std::vector<Entry> &entries();

// The message of this name: its own, or that of its initialiser, parser, writer or root element.
// Fails with exit_usage and the nearest names.
const Entry &find_message(const std::string &name);

} // namespace netparam

#endif
