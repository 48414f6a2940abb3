#include "model/text.h"

#include "ground/words.h"

#include <algorithm>
#include <array>

namespace netparam {

std::size_t sequence_length(std::string_view text, std::size_t at)
{
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = lead < 0xC2 || lead > 0xF4 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (length > text.size() - at)
        return 1;
    for (std::size_t i = 1; i < length; ++i)
        if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80)
            return 1;
    return length;
}

std::string printable(std::string_view text)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = sequence_length(text, at);
        const auto byte = static_cast<unsigned char>(text[at]);
        // U+0080 to U+009F are control characters, too.
        const bool control = length == 2 && byte == 0xC2 && static_cast<unsigned char>(text[at + 1]) < 0xA0;
        if ((length > 1 && !control) || (length == 1 && byte >= 0x20 && byte < 0x7F)) {
            out.append(text.substr(at, length));
        } else {
            for (std::size_t i = 0; i < length; ++i) {
                const auto hidden = static_cast<unsigned char>(text[at + i]);
                out += {'\\', 'x', digits[hidden >> 4], digits[hidden & 0xF]};
            }
        }
        at += length;
    }
    return out;
}

std::string in_quotes(std::string_view text, std::size_t longest)
{
    std::size_t kept = 0;
    while (kept < text.size() && kept + sequence_length(text, kept) <= longest)
        kept += sequence_length(text, kept);
    std::string out = "\"" + printable(text.substr(0, kept)) + "\"";
    if (kept < text.size())
        out += "... (" + std::to_string(text.size()) + " bytes)";
    return out;
}

std::string in_xml(std::string_view text)
{
    std::string out;
    for (const char c : text)
        if (const std::size_t mark = std::string_view("<>&").find(c); mark != std::string_view::npos)
            out += std::array{"&lt;", "&gt;", "&amp;"}[mark];
        else if (static_cast<unsigned char>(c) < 0x20)
            out += "&#" + std::to_string(static_cast<int>(c)) + ";";
        else
            out += c;
    return out;
}

std::string joined(const std::vector<std::string> &texts, std::string_view separator)
{
    std::string out;
    for (const std::string &text : texts) {
        if (&text != &texts.front())
            out += separator;
        out += text;
    }
    return out;
}

bool lies_within(const std::string &path, const std::string &outer)
{
    return path.compare(0, outer.size(), outer) == 0 &&
           (path.size() == outer.size() || path[outer.size()] == '/' || path[outer.size()] == '[');
}

std::string lower(std::string text)
{
    for (char &c : text)
        c = static_cast<char>(netpublic::fold(c));
    return text;
}

std::vector<std::string> split(const std::string &text, char separator)
{
    std::vector<std::string> parts(1);
    for (const char c : text)
        if (c == separator)
            parts.emplace_back();
        else
            parts.back() += c;
    return parts;
}

std::string replaced(std::string text, std::string_view old, std::string_view with)
{
    for (std::size_t at = text.find(old); at != std::string::npos; at = text.find(old, at + with.size()))
        text.replace(at, old.size(), with);
    return text;
}

std::string padded(std::string text, std::size_t width)
{
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::string trimmed(const std::string &text)
{
    constexpr char white[] = " \t\r\n";
    const std::size_t first = std::min(text.find_first_not_of(white), text.size());
    return text.substr(first, text.find_last_not_of(white) + 1 - first);
}

namespace {

struct CharacterRange {
    char32_t first, last;
};

// The blocks that matter; terminals differ in the others.
constexpr CharacterRange wide[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},  {0xAC00, 0xD7A3},
                                   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},  {0xFFE0, 0xFFE6},
                                   {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};
constexpr CharacterRange combining[] = {{0x0300, 0x036F}, {0x200B, 0x200F}, {0xFE00, 0xFE0F}};

template <std::size_t Count> bool lies_in(char32_t character, const CharacterRange (&ranges)[Count])
{
    for (const CharacterRange &range : ranges)
        if (character >= range.first && character <= range.last)
            return true;
    return false;
}

std::size_t columns_of(std::string_view sequence)
{
    if (sequence.size() == 1)
        return 1;
    char32_t character = static_cast<unsigned char>(sequence[0]) & (0x7Fu >> sequence.size());
    for (const char c : sequence.substr(1))
        character = character << 6 | (static_cast<unsigned char>(c) & 0x3Fu);
    return lies_in(character, wide) ? 2 : lies_in(character, combining) ? 0 : 1;
}

} // namespace

std::size_t columns(std::string_view text)
{
    std::size_t sum = 0;
    for (std::size_t at = 0; at < text.size(); at += sequence_length(text, at))
        sum += columns_of(text.substr(at, sequence_length(text, at)));
    return sum;
}

std::string cut_to(std::string_view text, std::size_t width)
{
    constexpr std::string_view ellipsis = "...";
    if (columns(text) <= width)
        return std::string(text);
    if (width <= ellipsis.size())
        return std::string(ellipsis.substr(0, width));
    std::size_t kept = 0;
    for (std::size_t used = 0; kept < text.size(); kept += sequence_length(text, kept)) {
        used += columns_of(text.substr(kept, sequence_length(text, kept)));
        if (used + ellipsis.size() > width)
            break;
    }
    return std::string(text.substr(0, kept)).append(ellipsis);
}

std::string wrapped(std::string_view text, std::size_t width)
{
    std::string out;
    std::size_t used = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == '\n') {
            out += text[at++];
            used = 0;
            continue;
        }
        const std::size_t blanks = std::min(text.find_first_not_of(' ', at), text.size()) - at;
        const std::size_t end = std::min(text.find_first_of(" \n", at + blanks), text.size());
        const std::string_view word = text.substr(at + blanks, end - at - blanks);
        if (used > 0 && used + blanks + columns(word) > width) {
            out += '\n';
            used = 0;
        } else {
            out.append(blanks, ' ');
            used += blanks;
        }
        out.append(word);
        used += columns(word);
        at = end;
    }
    return out;
}

std::string Style::in(const char *code, std::string_view text) const
{
    if (!colour)
        return std::string(text);
    return std::string("\033[") + code + "m" + std::string(text) + "\033[0m";
}

} // namespace netparam
