// Texts from outside, made fit for a terminal.
#ifndef NETPARAM_TEXT_H
#define NETPARAM_TEXT_H

#include <string>
#include <string_view>
#include <vector>

namespace netparam {

// Control characters and broken UTF-8 become \xNN, so that no file can steer the terminal.
std::string printable(std::string_view text);
// The same between quotes; cut with an ellipsis beyond `longest` bytes.
std::string in_quotes(std::string_view text, std::size_t longest = 200);

// As a text of XML.
std::string in_xml(std::string_view text);

std::string joined(const std::vector<std::string> &texts, std::string_view separator);
std::string lower(std::string text);
// The parts between the separators; one more than there are of these.
std::vector<std::string> split(const std::string &text, char separator);
// With every occurrence of the one text replaced by the other, which is not looked into.
std::string replaced(std::string text, std::string_view old, std::string_view with);
// With blanks behind it, up to this many bytes.
std::string padded(std::string text, std::size_t width);
// Without white space around it.
std::string trimmed(const std::string &text);

// Is the path "a/b[1]/c" the outer one, "a/b", or below it?
bool lies_within(const std::string &path, const std::string &outer);

// Bytes of the UTF-8 sequence at `at`; 1 where there is none.
std::size_t sequence_length(std::string_view text, std::size_t at);

// Columns that a printable text takes on a terminal: East Asian characters take two, combining ones none.
std::size_t columns(std::string_view text);
// As much of the text as fits, with an ellipsis where something is missing.
std::string cut_to(std::string_view text, std::size_t columns);
// Lines of at most `width` columns, if the words allow it; line breaks and the indentation behind them stay.
std::string wrapped(std::string_view text, std::size_t width);

// Colour, if the terminal wants it, and its width.
struct Style {
    bool colour = false;
    std::size_t width = 80;

    std::string error(std::string_view text) const
    {
        return in("1;31", text);
    }
    std::string note(std::string_view text) const
    {
        return in("1;36", text);
    }
    std::string heading(std::string_view text) const
    {
        return in("1", text);
    }
    std::string faint(std::string_view text) const
    {
        return in("2", text);
    }

private:
    std::string in(const char *code, std::string_view text) const;
};

} // namespace netparam

#endif
