#include "ground/text_guard.h"

#include "ground/words.h"

#include <cstring>

namespace netpublic {
namespace {

bool is_blank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool starts_name(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 127;
}

const char *behind(const char *at, const char *mark)
{
    const char *found = std::strstr(at, mark);
    return found != nullptr ? found + std::strlen(mark) : at + std::strlen(at);
}

bool ends_word(char c)
{
    return c == '\0' || c == '/' || c == '>' || is_blank(c);
}

const char *skip_blanks(const char *at)
{
    while (is_blank(*at))
        ++at;
    return at;
}

// Name and value as far as the library would accept them. What it would refuse ends its parse, so that
// nothing behind it matters.
const char *skip_attribute(const char *at)
{
    while (*at != '=' && !ends_word(*at))
        ++at;
    at = skip_blanks(at);
    if (*at != '=')
        return at;
    at = skip_blanks(at + 1);
    if (*at == '"' || *at == '\'') {
        const char *quote = std::strchr(at + 1, *at);
        return quote != nullptr ? quote + 1 : at + std::strlen(at);
    }
    while (!ends_word(*at))
        ++at;
    return at;
}

struct Tag {
    const char *end; // behind its '>', or the text's end
    int attributes;
    bool closed; // "/>"
};

// An opening tag, from behind its '<'.
Tag read_tag(const char *at)
{
    Tag tag = {at, 0, false};
    while (!ends_word(*at))
        ++at;
    while (*at != '\0' && *at != '>') {
        if (is_blank(*at)) {
            ++at;
        } else if (*at == '/') {
            tag.closed = at[1] == '>';
            ++at;
        } else {
            ++tag.attributes;
            at = skip_attribute(at);
        }
    }
    tag.end = *at == '>' ? at + 1 : at;
    return tag;
}

// A declaration, from behind its "<?xml". The library knows three attributes, whose quoted values may
// hold a '>'; anything else it skips word by word, quotes or not.
const char *behind_declaration(const char *at)
{
    while (*at != '\0' && *at != '>') {
        at = skip_blanks(at);
        if (same_folded(at, "version", 7) || same_folded(at, "encoding", 8) || same_folded(at, "standalone", 10)) {
            at = skip_attribute(at);
        } else {
            while (*at != '\0' && *at != '>' && !is_blank(*at))
                ++at;
        }
    }
    return *at == '>' ? at + 1 : at;
}

constexpr char byte_order_mark[] = "\xEF\xBB\xBF";

bool may_be_utf8(const char *text)
{
    return std::strncmp(text, byte_order_mark, 3) == 0 || contains_folded(text, "<?xml");
}

// The bytes that the library takes together when a UTF-8 sequence begins with this one.
int sequence_length(char c)
{
    const auto lead = static_cast<unsigned char>(c);
    return lead < 0xC2 || lead > 0xF4 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// In UTF-8 the library steps over a sequence as a whole, even when it is cut short: it would miss the
// '<' or the quote behind it, and the elements that it sees would not be the ones counted here. It also
// takes a byte order mark and U+FFFE and U+FFFF for blanks.
bool hides_markup(const char *text)
{
    if (std::strncmp(text, byte_order_mark, 3) == 0)
        text += 3;
    for (; *text != '\0'; ++text) {
        const int length = sequence_length(*text);
        for (int i = 1; i < length && text[i] != '\0'; ++i)
            if (text[i] == '<' || text[i] == '"' || text[i] == '\'')
                return true;
        if (std::strncmp(text, byte_order_mark, 3) == 0 || std::strncmp(text, "\xEF\xBF\xBE", 3) == 0 ||
            std::strncmp(text, "\xEF\xBF\xBF", 3) == 0)
            return true;
    }
    return false;
}

} // namespace

const char *guard_text(const char *text, std::size_t length)
{
    if (length > guarded_length)
        return "text too long";
    if (may_be_utf8(text) && hides_markup(text))
        return "no UTF-8";
    int level = 0;
    for (const char *at = std::strchr(text, '<'); at != nullptr; at = std::strchr(at, '<')) {
        if (std::strncmp(at, "<!--", 4) == 0) {
            at = behind(at + 4, "-->");
        } else if (std::strncmp(at, "<![CDATA[", 9) == 0) {
            at = behind(at + 9, "]]>");
        } else if (at[1] == '/') {
            at = behind(at, ">");
            level -= level > 0;
        } else if (starts_name(at[1])) {
            const Tag tag = read_tag(at + 1);
            if (tag.attributes > guarded_attributes)
                return "too many attributes";
            if (level == guarded_levels)
                return "nested too deeply";
            level += !tag.closed;
            at = tag.end;
        } else if (same_folded(at, "<?xml", 5)) {
            at = behind_declaration(at + 5);
        } else {
            at = behind(at, ">");
        }
    }
    return nullptr;
}

} // namespace netpublic
