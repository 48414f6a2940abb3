// One typed value out of one element, or one element out of one value. The caller has matched the
// element's name and passes no null.
#ifndef NETPUBLIC_VALUES_H
#define NETPUBLIC_VALUES_H

#include "ground/tree.h"

#include <cstdint>

namespace netpublic {

inline bool is_element(const TiXmlNode *node)
{
    return node->Type() == TiXmlNode::TINYXML_ELEMENT;
}

// The text that the XML library returns for an element; null when the node is no element or when
// its first child is no text.
inline const char *text_of(const TiXmlNode *node)
{
    if (!is_element(node))
        return nullptr;
    const TiXmlNode *first = node->FirstChild();
    return first != nullptr && first->Type() == TiXmlNode::TINYXML_TEXT ? first->Value() : nullptr;
}

// Readers: 0, or -1 with the destination untouched unless said otherwise. A number is an optional
// '-' and digits; a lone "-" is 0. Beyond its length nothing is checked: too large a number becomes
// what the C library's conversion makes of it on this platform.
int read_int(int *value, const TiXmlNode *node);                             // up to 12 characters, atoi
int read_flag(int *value, const TiXmlNode *node);                            // up to 9; stored even when refused
int read_unsigned(unsigned int *value, const TiXmlNode *node);               // up to 10, strtoul
int read_int64(long long *value, const TiXmlNode *node);                     // up to 20, wraps around
int read_longlong(long long *value, const TiXmlNode *node);                  // up to 21, strtoll
int read_unsignedlonglong(unsigned long long *value, const TiXmlNode *node); // up to 20, strtoull
int read_float(float *value, const TiXmlNode *node);                         // any text; "abc" is 0

// Copies the text into all `size` bytes of `text`, zero-filled; an element without text is an empty
// text. Over-long text is refused and leaves the buffer zero.
int read_text(char *text, std::size_t size, const TiXmlNode *node);
// The same without a copy: the text stays the tree's.
int view_text(const char **text, std::size_t longest, const TiXmlNode *node);

// Writers, which do as append_text().
[[nodiscard]] int append_int(TiXmlElement *parent, const char *name, int value);
[[nodiscard]] int append_unsigned(TiXmlElement *parent, const char *name, unsigned int value);
[[nodiscard]] int append_longlong(TiXmlElement *parent, const char *name, long long value);
[[nodiscard]] int append_unsignedlonglong(TiXmlElement *parent, const char *name, unsigned long long value);
[[nodiscard]] int append_float(TiXmlElement *parent, const char *name, float value);

} // namespace netpublic

#endif
