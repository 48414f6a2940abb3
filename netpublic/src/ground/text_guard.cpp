#include "ground/text_guard.h"

#include <cctype>
#include <cstring>

namespace netpublic {
namespace {

// Characters are told apart as the XML library does it: by the process's locale, bytes from 127 on are letters.

bool is_blank(char c)
{
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool starts_name(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 127;
}

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

bool in_name(char c)
{
    return starts_name(c) || is_digit(c) || c == '-' || c == '.' || c == ':';
}

bool begins(const char *text, const char *start)
{
    return std::strncmp(text, start, std::strlen(start)) == 0;
}

bool begins_folded(const char *text, const char *start)
{
    const auto folded = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    while (*start != '\0' && folded(*text) == folded(*start)) {
        ++text;
        ++start;
    }
    return *start == '\0';
}

// The bytes that the library takes together when a UTF-8 sequence begins with this one.
int sequence_length(char c)
{
    const auto lead = static_cast<unsigned char>(c);
    return lead < 0xC2 || lead > 0xF4 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

constexpr char byte_order_mark[] = "\xEF\xBB\xBF";

// Goes through a text as the XML library would, token by token, without its tree and its recursion. The
// functions return false where that ends: with a refusal, at the text's end, or at what the library refuses
// or leaves unread, so that nothing behind it matters.
class Walk {
public:
    explicit Walk(const char *text) : at_(text), utf8_(begins(text, byte_order_mark)), encoding_known_(utf8_) {}

    const char *refusal()
    {
        while (pass_node()) {
        }
        return refusal_;
    }

private:
    bool refuse(const char *why)
    {
        refusal_ = why;
        return false;
    }

    // In UTF-8 the library takes these for blanks, too, between tokens.
    void skip_blanks()
    {
        for (;; at_ += 3) {
            while (is_blank(*at_))
                ++at_;
            if (!utf8_ || !(begins(at_, byte_order_mark) || begins(at_, "\xEF\xBF\xBE") || begins(at_, "\xEF\xBF\xBF")))
                return;
        }
    }

    bool skip_behind(const char *mark)
    {
        at_ = std::strstr(at_, mark);
        if (at_ == nullptr)
            return false;
        at_ += std::strlen(mark);
        return true;
    }

    bool pass_node()
    {
        skip_blanks();
        if (*at_ != '<')
            return level_ > 0 && pass_text('<'); // outside of the root it ends the parse
        if (begins_folded(at_, "<?xml"))
            return pass_declaration();
        if (begins(at_, "<!--")) {
            at_ += 4;
            return skip_behind("-->");
        }
        if (begins(at_, "<![CDATA[")) {
            at_ += 9;
            return skip_behind("]]>");
        }
        if (starts_name(at_[1]))
            return pass_element();
        level_ -= at_[1] == '/' && level_ > 0;
        return skip_behind(">");
    }

    bool pass_element()
    {
        if (level_ == guarded_levels)
            return refuse("nested too deeply");
        ++at_;
        skip_blanks();
        if (!pass_name())
            return false;
        int attributes = 0;
        for (skip_blanks(); *at_ != '>' && *at_ != '/'; skip_blanks()) {
            if (!pass_attribute())
                return false;
            if (++attributes > guarded_attributes)
                return refuse("too many attributes");
        }
        level_ += *at_ == '>';
        at_ += *at_ == '/';
        return *at_++ == '>';
    }

    bool pass_name()
    {
        if (!starts_name(*at_))
            return false;
        while (in_name(*at_))
            ++at_;
        return true;
    }

    bool pass_attribute()
    {
        if (!pass_name())
            return false;
        skip_blanks();
        if (*at_ != '=')
            return false;
        ++at_;
        skip_blanks();
        if (*at_ == '"' || *at_ == '\'') {
            const char quote = *at_++;
            if (!pass_text(quote))
                return false;
            ++at_;
            return true;
        }
        word_length_ = 0;
        for (; *at_ != '\0' && *at_ != '/' && *at_ != '>' && !is_blank(*at_); ++at_) {
            if (*at_ == '"' || *at_ == '\'')
                return false;
            add_to_word(*at_);
        }
        return true;
    }

    // To the end of a text or a quoted value, which is not passed.
    bool pass_text(char end)
    {
        word_length_ = 0;
        while (*at_ != end) {
            const int length = utf8_ ? sequence_length(*at_) : 1;
            // The library steps over a sequence as a whole, even when it is cut short.
            for (int i = 0; i < length; ++i) {
                if (at_[i] == '\0')
                    return false;
                if (at_[i] == end)
                    return refuse("no UTF-8");
            }
            if (*at_ != '&') {
                add_to_word(*at_);
                at_ += length;
            } else if (at_[1] != '#') {
                ++at_; // what a name stands for is never markup
            } else if (!pass_number()) {
                return false;
            }
        }
        return true;
    }

    // A numeric reference. The library looks for the next ';' and goes backwards from there until it meets the
    // mark, so that whatever stands in front of that one vanishes, markup included.
    bool pass_number()
    {
        const bool hexadecimal = at_[2] == 'x';
        const char *const mark = at_ + 1 + hexadecimal;
        const char *const end = std::strchr(mark, ';');
        if (end == nullptr)
            return false;
        const char *digit = end - 1;
        while (is_digit(*digit) || (hexadecimal && std::isxdigit(static_cast<unsigned char>(*digit)) != 0))
            --digit;
        if (*digit != *mark)
            return false;
        if (digit != mark || mark + 1 == end)
            return refuse("bad reference");
        unsigned int value = 0;
        while (++digit != end)
            value = value * (hexadecimal ? 16u : 10u) +
                    static_cast<unsigned int>(is_digit(*digit) ? *digit - '0' : (*digit | 0x20) - 'a' + 10);
        add_to_word(static_cast<char>(value));
        at_ = end + 1;
        return true;
    }

    // The library knows three attributes, whose quoted values may hold a '>'; anything else it skips word by
    // word, quotes or not. The first declaration outside of the root names the encoding.
    bool pass_declaration()
    {
        bool names_utf8 = true;
        for (at_ += 5; *at_ != '>';) {
            skip_blanks();
            const bool encoding = begins_folded(at_, "encoding");
            if (encoding || begins_folded(at_, "version") || begins_folded(at_, "standalone")) {
                if (!pass_attribute())
                    return false;
                if (encoding)
                    names_utf8 = word_is_utf8();
            } else {
                while (*at_ != '\0' && *at_ != '>' && !is_blank(*at_))
                    ++at_;
            }
            if (*at_ == '\0')
                return false;
        }
        ++at_;
        if (!encoding_known_ && level_ == 0) {
            encoding_known_ = true;
            utf8_ = names_utf8;
        }
        return true;
    }

    void add_to_word(char c)
    {
        if (word_length_ < sizeof(word_) - 1) {
            word_[word_length_++] = c;
            word_[word_length_] = '\0';
        }
    }

    bool word_is_utf8() const
    {
        return word_length_ == 0 || *word_ == '\0' || begins_folded(word_, "UTF-8") || begins_folded(word_, "UTF8");
    }

    const char *at_;
    bool utf8_;
    bool encoding_known_;
    int level_ = 0;
    const char *refusal_ = nullptr;
    char word_[6] = {}; // how the latest value begins, decoded
    std::size_t word_length_ = 0;
};

} // namespace

const char *guard_text(const char *text, std::size_t length)
{
    return length > guarded_length ? "text too long" : Walk(text).refusal();
}

} // namespace netpublic
