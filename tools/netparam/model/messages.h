// The messages that the library knows: the catalogue of initialisers joined with the domains' lists.
#ifndef NETPARAM_MESSAGES_H
#define NETPARAM_MESSAGES_H

#include "catalogue.h"
#include "engine/registry.h"

#include <tinyxml.h>

#include <string>
#include <vector>

namespace netparam {

// An initialiser without parser and writer has no message; a message whose envelope the host prepares
// has no initialiser.
struct Entry {
    const netpublic::Message *message;
    const netpublic::Initialiser *initialiser;

    std::string name() const; // what one types; "-" without a message
    // A few words and a sentence; empty without a message.
    std::string title() const;
    std::string summary() const;
    bool parses() const;
    bool writes() const;
    std::string directions() const;
    // Names of the functions; empty without one.
    std::string parser() const;
    std::string writer() const;
    // The root element that is written; empty when unknown.
    std::string root() const;
    // Its domain's name: "alarm".
    std::string domain() const;
    // What the element of its bodies is called, which the parser does not look at; empty without a message.
    std::string element() const;
    bool bears_element(const TiXmlElement &body) const;
    // The rows of the body that is read, and of the element that is written; null where nothing is.
    const netpublic::Table *read() const;
    const netpublic::Table *written() const;
    // The rows that describe the payload; null without any.
    const netpublic::Table *table() const;
    // These three, each once; empty without a message.
    std::vector<const netpublic::Table *> tables() const;
    // Size of the payload; 0 without one.
    unsigned int size() const;
};

// In the order of the catalogue, then what the host prepares.
const std::vector<Entry> &entries();

// The message of this name: its own, or that of its initialiser, parser, writer or root element.
// Fails with exit_usage and the nearest names.
const Entry &find_message(const std::string &name);
// The same; fails with exit_usage when it is only written, too.
const Entry &find_parsed(const std::string &name);

// The message of this name of its own that can be parsed; null without one.
const Entry *parsed_message(const std::string &name);
// The message that the body is: the only one of its root element or, of those that share it, the only one with keys
// for all of its children. Fails with exit_unknown; `name` is the text's.
const Entry &identify(const TiXmlElement &body, const std::string &name);

} // namespace netparam

#endif
