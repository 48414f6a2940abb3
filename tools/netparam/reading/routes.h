// The library reads and writes messages by trees and by text: what the inspector shows must be the same both ways.
#ifndef NETPARAM_ROUTES_H
#define NETPARAM_ROUTES_H

#include "model/messages.h"
#include "reading/document.h"

#include <net_types.h>

#include <string>

class TiXmlElement;

namespace netparam {

// A message before it is read: to read its text the other way, and compare. What differs is the library's fault:
// Failure with exit_fault.
class ByText {
public:
    // `size` bytes of payload.
    ByText(const Entry &entry, const net_param_t &prepared, std::size_t size);
    // The document's body was read with this result. Where it is not the element that the text route takes, there is
    // nothing to compare.
    void compare_reading(const Document &document, bool accepted, const net_param_t &read);

private:
    const Entry &entry_;
    net_param_t param_;
    std::string payload_;
};

// The payload was written into this element; null where the writer failed or has nothing to say.
void compare_writing(const Entry &entry, net_param_t param, bool written, const TiXmlElement *reply);

} // namespace netparam

#endif
