#include "text.h"

#include "words.h"

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

std::string lower(std::string text)
{
    for (char &c : text)
        c = static_cast<char>(netpublic::fold(c));
    return text;
}

std::string Style::in(const char *code, std::string_view text) const
{
    if (!colour)
        return std::string(text);
    return std::string("\033[") + code + "m" + std::string(text) + "\033[0m";
}

} // namespace netparam
