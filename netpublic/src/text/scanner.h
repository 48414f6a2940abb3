// Reads a text in place into tokens, as the XML library reads it into a tree: what is refused here is refused
// there, and what is read is the same, with one exception: the number of attributes of an element is limited.
//
// No recursion, linear time, one block of memory, no byte behind the text's terminator.
#ifndef NETPUBLIC_TEXT_SCANNER_H
#define NETPUBLIC_TEXT_SCANNER_H

#include "ground/node.h"

#include <cstdint>

namespace netpublic {

inline constexpr unsigned int scanned_length = (1u << 27) - 1; // the longest text whose distances fit a token
inline constexpr unsigned int scanned_attributes = 64;         // of one element, at most

struct ScanLimits {
    unsigned int length = scanned_length;
    unsigned int levels = scanned_length;         // elements in one another; an element without content counts, too
    unsigned int attributes = scanned_attributes; // of one element; no more than scanned_attributes
    // Refuse what reads as something else than it shows: a numeric reference that is more than digits, or 'x' and
    // hexadecimal digits, and a UTF-8 sequence that is cut short by the end of its text.
    bool strict = false;
};

// Of any text.
inline constexpr ScanLimits request_limits;
// Of the extension header, which comes before a login.
#ifdef NETPUBLIC_DESCRIBED
#define NETPUBLIC_LIMITS inline // tests lower them, so that every short text comes near
#else
#define NETPUBLIC_LIMITS inline constexpr
#endif
NETPUBLIC_LIMITS ScanLimits header_limits = {64 * 1024, 64, 64, true};
#undef NETPUBLIC_LIMITS

enum class Fault : std::uint8_t {
    // What the XML library reports
    none,
    element,
    element_name,
    element_value,
    attributes,
    empty_tag,
    end_tag,
    document_empty,
    // What it does not
    no_root,
    too_long,
    too_deep,
    too_many_attributes,
    sequence,
    reference,
    no_memory,
};

// Does the XML library read such a text, or try to?
constexpr bool is_limit(Fault fault)
{
    return fault > Fault::no_root && fault < Fault::no_memory;
}

// The XML library's own words where it has any; without a line break.
const char *fault_text(Fault fault);

// Where reading ended: 1 is the first line, and the first byte of a line.
struct ScanError {
    Fault fault = Fault::none;
    unsigned int line = 0;
    unsigned int column = 0;
};

// The tokens of a text, for as long as this and the text live.
class ScannedText {
public:
    ScannedText() = default;
    ~ScannedText();
    ScannedText(const ScannedText &) = delete;
    ScannedText &operator=(const ScannedText &) = delete;

    // text[length] is 0; the first 0 ends the text. 0, or -1 and error(). The text is changed in either case. Once
    // only.
    [[nodiscard]] int scan(char *text, unsigned int length, const ScanLimits &limits = request_limits);

    // The first element at the top.
    Node root() const;
    const ScanError &error() const
    {
        return error_;
    }

private:
    void *block_ = nullptr;
    ScanError error_;
};

} // namespace netpublic

#endif
