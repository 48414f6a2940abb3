// How long an element is when it is printed, without printing it.
#ifndef NETPUBLIC_PRINTED_SIZE_H
#define NETPUBLIC_PRINTED_SIZE_H

#include "ground/element.h"

namespace netpublic {

// The number of bytes that the XML library's printer, without indentation and with "\n" as line break,
// puts out for an element of elements, attributes and plain texts. Comments and CDATA have no place in it,
// nor has "&#x" in a text: versions of the XML library differ in whether they escape it.
std::size_t printed_size(const TiXmlElement &element);

// The same for the children behind the mark.
std::size_t printed_since(Element parent, const Mark &mark);

} // namespace netpublic

#endif
