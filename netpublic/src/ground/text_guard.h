// What a text from outside must satisfy before the XML library may parse it: the library recurses once
// per nesting level and needs quadratic time for the attributes of one element.
#ifndef NETPUBLIC_TEXT_GUARD_H
#define NETPUBLIC_TEXT_GUARD_H

#include <cstddef>

namespace netpublic {

constexpr std::size_t guarded_length = 64 * 1024; // characters

#ifdef NETPUBLIC_DESCRIBED
#define NETPUBLIC_LIMIT inline // tests lower them, so that every short text comes near
#else
#define NETPUBLIC_LIMIT constexpr
#endif
NETPUBLIC_LIMIT int guarded_levels = 64;     // of nesting
NETPUBLIC_LIMIT int guarded_attributes = 64; // in one element
#undef NETPUBLIC_LIMIT

// The XML library reads past a truncated UTF-8 sequence; so many zero bytes behind a text stop it.
constexpr std::size_t guard_padding = 8;

// Why the text must not be parsed; null when it may be. Whether it is well formed is the library's to say.
const char *guard_text(const char *text, std::size_t length);

} // namespace netpublic

#endif
