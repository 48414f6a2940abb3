// The XML library, and the calls into it that take memory.
//
// Nothing else in here may make the XML library allocate: it throws when memory is short, and only
// tree.cpp is compiled with exceptions. What needs memory fails instead, and leaves the tree as it was.
#ifndef NETPUBLIC_TREE_H
#define NETPUBLIC_TREE_H

#include <cstddef>
#include <cstdint>
// Without the static constructor that its <iostream> would give every object file.
#include <istream>
#include <ostream>
#include <string>

#if defined(__GLIBCXX__) && !defined(_GLIBCXX_IOSTREAM) && !defined(NETPUBLIC_DESCRIBED)
#define _GLIBCXX_IOSTREAM 1 // libstdc++'s own guard: <tinyxml.h> needs the streams' types, not their objects
#endif
#include <tinyxml.h>

namespace netpublic {

// The pointer that a word holds: handles of nodes and elements keep tags in the bits that a pointer leaves free.
template <class Type> Type *pointer_in(std::uintptr_t word)
{
    return reinterpret_cast<Type *>(word); // NOLINT(performance-no-int-to-ptr)
}

// An element without a parent, with the attribute `version` = "1.1" if that name is given; or null.
[[nodiscard]] TiXmlElement *new_element(const char *name, const char *version = nullptr) noexcept;

// Link a new last child. A null parent fails, so that the result of one link_element() can go into the
// next call unchecked; null or -1 for a failure.
[[nodiscard]] TiXmlElement *link_element(TiXmlNode *parent, const char *name, const char *version = nullptr) noexcept;
[[nodiscard]] int link_text(TiXmlNode *parent, const char *name, const char *text) noexcept;
[[nodiscard]] int link_text(TiXmlNode *parent, const char *name, const char *text, std::size_t length) noexcept;

// Makes the first `count` characters of a text.
using MakeText = void (*)(const void *context, char *to, std::size_t count);
// With a text that is made where it stands.
[[nodiscard]] int link_made(TiXmlNode *parent, const char *name, std::size_t length, MakeText make,
                            const void *context) noexcept;

// Deletes the children behind `last` again; null deletes all. -1, what a writer then returns.
int remove_children(TiXmlNode *parent, const TiXmlNode *last) noexcept;

// Prints a declaration and the element, which becomes the printer's as text and is deleted.
[[nodiscard]] int print_document(TiXmlPrinter &printer, TiXmlElement *root) noexcept;

} // namespace netpublic

#endif
