// One typed value out of one element, or one element out of one value. The caller has matched the
// element's name and passes no null.
#ifndef NETPUBLIC_VALUES_H
#define NETPUBLIC_VALUES_H

#include "ground/element.h"
#include "ground/node.h"

#include <cstdint>

namespace netpublic {

// Readers: 0, or -1 with the destination untouched unless said otherwise. A number is an optional
// '-' and digits; a lone "-" is 0. Beyond its length nothing is checked: too large a number becomes
// what the C library's conversion makes of it on this platform.
int read_int(int *value, Node node);                             // up to 12 characters, atoi
int read_flag(int *value, Node node);                            // up to 9; stored even when refused
int read_unsigned(unsigned int *value, Node node);               // up to 10, strtoul
int read_int64(long long *value, Node node);                     // up to 20, wraps around
int read_longlong(long long *value, Node node);                  // up to 21, strtoll
int read_unsignedlonglong(unsigned long long *value, Node node); // up to 20, strtoull
int read_float(float *value, Node node);                         // any text; "abc" is 0

// Copies the text into all `size` bytes of `text`, zero-filled; an element without text is an empty
// text. Over-long text is refused and leaves the buffer zero.
int read_text(char *text, std::size_t size, Node node);
// The same without a copy: the text stays where the node has it.
int view_text(const char **text, std::size_t longest, Node node);

// The number that a text is, as read_int(); a null text is none.
int to_int(int *value, const char *text);

// Its first step, which takes nearly all numbers: those of so many digits that they fit. False, and nothing done, for
// any other text.
constexpr int safe_digits = 9; // and one more behind a 0 or a 1
inline bool read_short_int(int &value, const char *text)
{
    const bool negative = *text == '-';
    const char *first = text + negative;
    const char *at = first;
    std::uint32_t magnitude = 0;
    for (; static_cast<unsigned char>(*at - '0') <= 9; ++at)
        magnitude = magnitude * 10 + static_cast<unsigned char>(*at - '0');
    if (*at != '\0' || at == first)
        return false;
    if (at - first > safe_digits && (*first > '1' || at - first > safe_digits + 1))
        return false;
    value = static_cast<int>(negative ? 0 - magnitude : magnitude);
    return true;
}
// The number as a text, of at most 21 bytes with its terminator.
void from_int(char *text, long long value);
// The numbers joined by commas, but for those at the end that equal `trailing`; cut after so many characters. Their
// number; no terminator.
std::size_t join_ints(char *text, std::size_t longest, const int *values, int count, int trailing);

// Writers, which do as append_text().
[[nodiscard]] int append_int(Element parent, const char *name, int value);
[[nodiscard]] int append_unsigned(Element parent, const char *name, unsigned int value);
[[nodiscard]] int append_longlong(Element parent, const char *name, long long value);
[[nodiscard]] int append_unsignedlonglong(Element parent, const char *name, unsigned long long value);
[[nodiscard]] int append_float(Element parent, const char *name, float value);

} // namespace netpublic

#endif
