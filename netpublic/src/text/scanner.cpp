#include "scanner.h"

#include <net_public.h>

#include <climits>
#include <cstring>

// For a test that counts how often bytes are looked at.
#ifndef NETPUBLIC_STEP
#define NETPUBLIC_STEP() static_cast<void>(0)
#endif

namespace netpublic {
namespace {

// What a byte can be.
constexpr std::uint8_t is_blank = 1;
constexpr std::uint8_t is_name = 2;       // goes on with a name
constexpr std::uint8_t is_first = 4;      // begins a name
constexpr std::uint8_t ends_run = 8;      // is more than a character of a text, or may be
constexpr std::uint8_t may_be_blank = 16; // a blank, or begins what UTF-8 texts have for one

struct Classes {
    std::uint8_t of[256];

    std::uint8_t operator[](char c) const
    {
        NETPUBLIC_STEP();
        return of[static_cast<unsigned char>(c)];
    }
};

constexpr Classes classify()
{
    Classes classes{};
    for (unsigned c = 0; c < 256; ++c) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c >= 127;
        const bool digit = c >= '0' && c <= '9';
        const bool blank = c == ' ' || (c >= '\t' && c <= '\r');
        std::uint8_t &entry = classes.of[c];
        if (letter)
            entry |= is_first;
        if (letter || digit || c == '-' || c == '.' || c == ':')
            entry |= is_name;
        if (blank)
            entry |= is_blank;
        if (blank || c == 0xEF)
            entry |= may_be_blank;
        if (blank || c == '\0' || c == '<' || c == '&' || (c >= 0xC2 && c <= 0xF4))
            entry |= ends_run;
    }
    return classes;
}

constexpr Classes classes = classify();

// The bytes that the library takes together when a UTF-8 sequence begins with this one.
int sequence_length(char c)
{
    const auto lead = static_cast<unsigned char>(c);
    return lead < 0xC2 || lead > 0xF4 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

unsigned char byte_at(const char *at)
{
    return static_cast<unsigned char>(*at);
}

bool is_byte_order_mark(const char *at)
{
    return byte_at(at) == 0xEF && byte_at(at + 1) == 0xBB && byte_at(at + 2) == 0xBF;
}

// Byte order mark, U+FFFE and U+FFFF: blanks between tokens.
bool is_blank_sequence(const char *at)
{
    return is_byte_order_mark(at) || (byte_at(at) == 0xEF && byte_at(at + 1) == 0xBF && byte_at(at + 2) >= 0xBE);
}

char folded(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

bool begins_folded(const char *at, const char *lower)
{
    while (*lower != '\0' && folded(*at) == *lower)
        ++at, ++lower;
    return *lower == '\0';
}

bool begins(const char *at, const char *mark)
{
    while (*mark != '\0' && *at == *mark)
        ++at, ++mark;
    return *mark == '\0';
}

struct NamedEntity {
    char name[6];
    char length;
    char character;
};
constexpr NamedEntity named_entities[] = {
    {"amp;", 4, '&'}, {"lt;", 3, '<'}, {"gt;", 3, '>'}, {"quot;", 5, '"'}, {"apos;", 5, '\''},
};

enum class Encoding : std::uint8_t { unknown, utf8, legacy };

struct Span {
    char *first;
    char *end;
};

// What a declaration's value names.
Encoding encoding_of(const Span &value)
{
    const auto length = value.end - value.first;
    const bool utf8 = length == 0 || *value.first == '\0' || (length >= 5 && begins_folded(value.first, "utf-8")) ||
                      (length >= 4 && begins_folded(value.first, "utf8"));
    return utf8 ? Encoding::utf8 : Encoding::legacy;
}

using Word = std::uintptr_t;
constexpr Word each_byte = ~Word{0} / 255; // 0x01 in each

Word word_at(const char *at)
{
    Word word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// Has the word a byte of 0, or none above the first one that looks like it?
constexpr Word zeros(Word word)
{
    return (word - each_byte) & ~word;
}

// No byte behind the first `length` ones is read.
bool same_bytes(const char *a, const char *b, std::size_t length)
{
    if (length < sizeof(Word)) {
        while (length > 0 && *a == *b)
            ++a, ++b, --length;
        return length == 0;
    }
    std::size_t i = 0;
    for (; i < length - sizeof(Word); i += sizeof(Word))
        if (word_at(a + i) != word_at(b + i))
            return false;
    return word_at(a + length - sizeof(Word)) == word_at(b + length - sizeof(Word));
}

// What of a long text has nothing in it that could end a run, a word at a time.
char *skip_words(char *at, const char *end)
{
    while (static_cast<std::size_t>(end - at) >= sizeof(Word)) {
        const Word word = word_at(at);
        const Word marks = zeros(word ^ each_byte * '<') | zeros(word ^ each_byte * '&');
        if (((marks | word | (word - each_byte * ('!'))) & each_byte * 0x80) != 0)
            break;
        at += sizeof(Word);
    }
    return at;
}

inline char *skip_run(char *at, const char *end)
{
    constexpr int short_run = 12;
    for (int left = short_run; (classes[*at] & ends_run) == 0; ++at)
        if (--left == 0)
            at = skip_words(at, end) - 1;
    return at;
}

inline char *skip_name(char *at)
{
    while ((classes[*at] & is_name) != 0)
        ++at;
    return at;
}

bool is_all_blank(const char *at, const char *end)
{
    while (at != end && (classes[*at] & is_blank) != 0)
        ++at;
    return at == end;
}

// Do two names, each with what is behind it, begin alike?
bool same_name(const char *a, const char *b)
{
    while (*a == *b && (classes[*a] & is_name) != 0)
        ++a, ++b;
    return ((classes[*a] | classes[*b]) & is_name) == 0;
}

std::uint32_t distance(const char *from, const char *to)
{
    return static_cast<std::uint32_t>(to - from) << Token::flag_bits;
}

// Enough for every message, without a blank in it: 18 bytes a token is the least seen. Two thirds of the text's
// length where a pointer has four bytes.
unsigned int first_capacity(std::size_t length)
{
    return static_cast<unsigned int>(length / 12 + 2);
}

// What is not in the main loop's registers.
class Scanner {
public:
    Scanner(char *text, unsigned int length, const ScanLimits &limits)
        : end_(text + length), line_start_(text), limits_(limits)
    {
    }

    Fault scan(char *at);
    Token *tokens() const
    {
        return tokens_;
    }
    void locate(ScanError &error) const
    {
        error.line = line_;
        error.column = static_cast<unsigned int>(fault_at_ - line_start_) + 1;
    }

private:
    Fault fail(Fault fault, const char *at)
    {
        fault_at_ = at;
        return fault;
    }
    // To be told of every byte that may be a line break.
    void pass(const char *at)
    {
        NETPUBLIC_STEP();
        if (*at == '\n') {
            ++line_;
            line_start_ = at + 1;
        }
    }
    bool allocate(unsigned int tokens);
    bool grow(const char *at, unsigned int count);
    char *skip_blanks(char *at);
    char *skip_to(char *at, const char *mark);
    char *decode(char *&to, char *at, char end, bool condense);
    char *decode_reference(char *&to, char *at) const;
    char *read_attribute(char *at, Span &value, Fault &fault);
    char *read_attributes(char *at, Fault &fault);
    char *read_declaration(char *at, bool at_top);
    char *read_other(char *at, bool at_top, Token &token);

    Token *tokens_ = nullptr;
    unsigned int capacity_ = 0;
    Encoding encoding_ = Encoding::unknown;
    unsigned int line_ = 1;
    const char *end_;
    const char *line_start_;
    const char *fault_at_ = nullptr;
    const ScanLimits &limits_;
};

bool Scanner::allocate(unsigned int tokens)
{
    auto *moved = static_cast<Token *>(net_malloc(tokens * static_cast<unsigned int>(sizeof(Token))));
    if (moved == nullptr)
        return false;
    if (tokens_ != nullptr) {
        std::memcpy(moved, tokens_, capacity_ * sizeof(Token));
        void *old = tokens_;
        net_free(&old);
    }
    tokens_ = moved;
    capacity_ = tokens;
    return true;
}

// What is behind `at` has at most so many tokens, if no '>' ends a text: one for each opening tag or the like, one
// for each text in front of a tag. Where that is too few, this is asked again.
bool Scanner::grow(const char *at, unsigned int count)
{
    unsigned int more = 16 + count / 8;
    for (; at < end_; ++at)
        if (*at == '<')
            more += (at[1] != '/') + (at[-1] != '>');
    return allocate(count + more);
}

char *Scanner::skip_blanks(char *at)
{
    for (;;) {
        while ((classes[*at] & is_blank) != 0) {
            pass(at++);
            while (static_cast<std::size_t>(end_ - at) >= sizeof(Word) && word_at(at) == each_byte * ' ')
                at += sizeof(Word);
        }
        if (encoding_ != Encoding::utf8 || !is_blank_sequence(at))
            return at;
        at += 3;
    }
}

// The mark, or the text's end.
char *Scanner::skip_to(char *at, const char *mark)
{
    while (*at != '\0' && !begins(at, mark))
        pass(at++);
    return at;
}

// A reference from its '&' on, as one character behind `to`. Null where it is malformed. Numbers are read backwards
// from the next ';', wherever it stands; names that nobody knows lose their '&'.
char *Scanner::decode_reference(char *&to, char *at) const
{
    if (at[1] != '#') {
        for (const NamedEntity &entity : named_entities)
            if (std::strncmp(at + 1, entity.name, static_cast<std::size_t>(entity.length)) == 0) {
                *to++ = entity.character;
                return at + 1 + entity.length;
            }
        return at + 1;
    }
    const bool hexadecimal = at[2] == 'x';
    char *const end = std::strchr(at + 2, ';');
    if (end == nullptr)
        return nullptr;
    const unsigned int base = hexadecimal ? 16 : 10;
    unsigned long code = 0;
    unsigned int weight = 1; // both wrap around, each at its own width
    for (const char *digit = end - 1; *digit != (hexadecimal ? 'x' : '#'); --digit) {
        const char c = folded(*digit);
        unsigned int value = static_cast<unsigned char>(c - '0');
        if (value > 9) {
            value = static_cast<unsigned char>(c - 'a');
            if (!hexadecimal || value > 5)
                return nullptr;
            value += 10;
        }
        code += weight * value;
        weight *= base;
    }
    if (encoding_ != Encoding::utf8 || code < 0x80) {
        *to++ = static_cast<char>(code);
        return end + 1;
    }
    if (code >= 0x200000)
        return end + 1;
    const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    *to++ = static_cast<char>((0xFF00 >> (more + 1)) | (code >> (6 * more)));
    for (int i = more - 1; i >= 0; --i)
        *to++ = static_cast<char>(0x80 | ((code >> (6 * i)) & 0x3F));
    return end + 1;
}

// Decodes what stands in front of the end character, to where it stands: `to` is moved behind it. Condensed, runs of
// blanks are one, and none at the end. Returns the end, or the text's end, or null for a malformed reference.
char *Scanner::decode(char *&to, char *at, char end, bool condense)
{
    bool blank = false;
    while (*at != '\0' && *at != end) {
        if (condense && (classes[*at] & is_blank) != 0) {
            blank = true;
            pass(at++);
            continue;
        }
        if (blank)
            *to++ = ' ';
        blank = false;
        if (*at == '&') {
            fault_at_ = at;
            at = decode_reference(to, at);
            if (at == nullptr)
                return nullptr;
            continue;
        }
        // A sequence is taken as a whole, whatever is in it.
        for (int left = encoding_ == Encoding::utf8 ? sequence_length(*at) : 1; left > 0 && *at != '\0'; --left) {
            pass(at);
            *to++ = *at++;
        }
    }
    return at;
}

// Name and value, from the name on. Returns where the tag goes on, or null.
char *Scanner::read_attribute(char *at, Span &value, Fault &fault)
{
    fault = Fault::attributes;
    fault_at_ = at;
    if ((classes[*at] & is_first) == 0)
        return nullptr;
    while ((classes[*at] & is_name) != 0)
        ++at;
    at = skip_blanks(at);
    fault_at_ = at;
    if (*at != '=')
        return nullptr;
    at = skip_blanks(at + 1);
    fault_at_ = at;
    if (*at == '\0')
        return nullptr;
    if (*at == '"' || *at == '\'') {
        value = {at + 1, at + 1};
        at = decode(value.end, at + 1, *at, false);
        fault = Fault::element;
        return at != nullptr && *at != '\0' ? at + 1 : nullptr;
    }
    value.first = at;
    for (; *at != '\0' && *at != '/' && *at != '>' && (classes[*at] & is_blank) == 0; ++at)
        if (*at == '"' || *at == '\'') {
            fault_at_ = at;
            return nullptr;
        }
    value.end = at;
    return at;
}

// From behind the name to the '>', or to the '/' in front of it. Null and the fault for anything else.
char *Scanner::read_attributes(char *at, Fault &fault)
{
    const char *names[scanned_attributes];
    unsigned int count = 0;
    for (;;) {
        at = skip_blanks(at);
        fault_at_ = at;
        if (*at == '\0') {
            fault = Fault::attributes;
            return nullptr;
        }
        if (*at == '>')
            return at;
        if (*at == '/') {
            fault = Fault::empty_tag;
            return at[1] == '>' ? at : nullptr;
        }
        if (count == limits_.attributes) {
            fault = Fault::too_many_attributes;
            return nullptr;
        }
        const char *name = at;
        Span value;
        at = read_attribute(at, value, fault);
        if (at == nullptr)
            return nullptr;
        fault_at_ = name;
        fault = Fault::element;
        if (*at == '\0')
            return nullptr;
        for (unsigned int i = 0; i < count; ++i)
            if (same_name(name, names[i]))
                return nullptr;
        names[count++] = name;
    }
}

// From behind "<?xml" to behind its '>'; null where it does not end. The first one at the top tells the encoding.
char *Scanner::read_declaration(char *at, bool at_top)
{
    Encoding declared = Encoding::utf8;
    while (*at != '\0') {
        if (*at == '>') {
            if (at_top && encoding_ == Encoding::unknown)
                encoding_ = declared;
            return at + 1;
        }
        at = skip_blanks(at);
        const bool names_encoding = begins_folded(at, "encoding");
        if (names_encoding || begins_folded(at, "version") || begins_folded(at, "standalone")) {
            Span value;
            Fault ignored;
            at = read_attribute(at, value, ignored);
            if (at == nullptr)
                return nullptr;
            if (names_encoding)
                declared = encoding_of(value);
        } else {
            while (*at != '\0' && *at != '>' && (classes[*at] & is_blank) == 0)
                ++at;
        }
    }
    return nullptr;
}

// Anything in '<' and '>' that is no element. Only a declaration can be null: one that does not end.
char *Scanner::read_other(char *at, bool at_top, Token &token)
{
    token = {"", Token::other};
    if (begins_folded(at + 1, "?xml"))
        return read_declaration(at + 5, at_top);
    char *value = at + 1;
    const char *mark = ">";
    if (begins(value, "!--")) {
        value = at + 4;
        mark = "-->";
    } else if (begins(value, "![CDATA[")) {
        value = at + 9;
        mark = "]]>";
        token.link = Token::text;
    }
    token.at = value;
    char *const end = skip_to(value, mark);
    if (*end == '\0')
        return end;
    *end = '\0';
    return end + std::strlen(mark);
}

// Token 0 is the document. It keeps the elements at the top, and nothing else.
Fault Scanner::scan(char *at)
{
    if (!allocate(first_capacity(static_cast<std::size_t>(end_ - at))))
        return fail(Fault::no_memory, at);
    tokens_[0] = {at, 0};
    Token *tokens = tokens_;
    std::uint32_t count = 1;
    std::uint32_t open = 0; // the innermost open element, whose distance is that to its parent
    std::uint32_t last = 0; // its last child so far, if any
    std::uint32_t level = 0;
    char nowhere;
    char *terminate = &nowhere; // where a text ends, once the tag behind it has been looked at

    if (is_byte_order_mark(at))
        encoding_ = Encoding::utf8;
    at = skip_blanks(at);
    if (*at != '<')
        return fail(Fault::document_empty, at);
    for (;;) {
        const char *const before = at;
        if ((classes[*at] & may_be_blank) != 0)
            at = skip_blanks(at);
        Token fresh = {at, 0};
        char *name_end = at;
        if (*at != '<') {
            if (open == 0)
                break; // the end, or a text that ends the reading
            if (*at == '\0')
                return fail(at == before ? Fault::element_value : Fault::end_tag, at);
            char *first = at;
            at = skip_run(at, end_);
            char *end = at;
            if (*at != '<') {
                at = decode(end, at, '<', true);
                if (at == nullptr)
                    return Fault::element_value;
                if (is_all_blank(first, end))
                    continue;
            }
            terminate = end;
            fresh.link = Token::text;
        } else if (at[1] == '/' && open != 0) {
            *terminate = '\0';
            const char *name = tokens[open].at;
            const char *const tag = at;
            for (at += 2; *name != '\0' && *name == *at; ++name)
                ++at;
            if (*name != '\0')
                return fail(Fault::end_tag, tag);
            at = skip_blanks(at);
            if (*at != '>')
                return fail(Fault::end_tag, at);
            ++at;
            Token &closed = tokens[open];
            const std::uint32_t parent = open - closed.distance();
            if (last == open + 1 && last == count - 1 && (tokens[last].link & Token::text) != 0) {
                closed.link = Token::has_text | distance(closed.at, tokens[last].at);
                count = last;
            } else {
                closed.link = (closed.link & Token::flags) | (count - open) << Token::flag_bits;
            }
            last = open;
            open = parent;
            --level;
            continue;
        } else if ((classes[at[1]] & is_first) != 0) {
            *terminate = '\0';
            if (level == limits_.levels)
                return fail(Fault::too_deep, at);
            char *name = at + 1;
            if ((classes[*name] & may_be_blank) != 0)
                name = skip_blanks(name);
            if ((classes[*name] & is_first) == 0)
                return fail(Fault::element_name, name);
            fresh.at = name;
            name_end = skip_name(name);
            if (*name_end == '\0')
                return fail(Fault::element_name, name);
            at = name_end;
            if (*at != '>') {
                Fault fault;
                at = read_attributes(at, fault);
                if (at == nullptr)
                    return fault;
            }
        } else {
            *terminate = '\0';
            at = read_other(at, open == 0, fresh);
            if (at == nullptr) {
                if (open == 0)
                    break;
                return Fault::element_value;
            }
            if (open == 0)
                continue;
        }

        if (count == capacity_) {
            if (!grow(at, count))
                return fail(Fault::no_memory, at);
            tokens = tokens_;
        }
        tokens[last != 0 ? last : open].link |= last != 0 ? Token::has_sibling : Token::has_children;
        tokens[count] = fresh;
        last = count++;
        if (fresh.link != 0)
            continue;
        if (*at == '/') {
            *name_end = '\0';
            at += 2;
            continue;
        }
        ++at;
        if ((classes[*at] & ends_run) == 0) {
            // Nearly always a value and the end tag, and then one token is all.
            char *const text = at;
            char *const text_end = skip_run(at, end_);
            const auto length = static_cast<std::size_t>(name_end - fresh.at);
            if (*text_end == '<' && text_end[1] == '/' && static_cast<std::size_t>(end_ - text_end) > length + 2 &&
                same_bytes(text_end + 2, fresh.at, length) && text_end[length + 2] == '>') {
                tokens[last].link = Token::has_text | distance(fresh.at, text);
                *name_end = '\0';
                *text_end = '\0';
                at = text_end + length + 3;
                continue;
            }
        }
        *name_end = '\0';
        tokens[last].link = (last - open) << Token::flag_bits;
        open = last;
        last = 0;
        ++level;
    }
    return (tokens[0].link & Token::has_children) != 0 ? Fault::none : fail(Fault::no_root, at);
}

} // namespace

const char *fault_text(Fault fault)
{
    switch (fault) {
    case Fault::none:
        break;
    case Fault::element:
        return "Error parsing Element.";
    case Fault::element_name:
        return "Failed to read Element name";
    case Fault::element_value:
        return "Error reading Element value.";
    case Fault::attributes:
        return "Error reading Attributes.";
    case Fault::empty_tag:
        return "Error: empty tag.";
    case Fault::end_tag:
        return "Error reading end tag.";
    case Fault::document_empty:
        return "Error document empty.";
    case Fault::no_root:
        return "no root element";
    case Fault::too_long:
        return "text too long";
    case Fault::too_deep:
        return "nested too deeply";
    case Fault::too_many_attributes:
        return "too many attributes";
    case Fault::no_memory:
        return "out of memory";
    }
    return "";
}

ScannedText::~ScannedText()
{
    if (block_ != nullptr)
        net_free(&block_);
}

int ScannedText::scan(char *text, unsigned int length, const ScanLimits &limits)
{
    if (length > limits.length) {
        error_ = {Fault::too_long, 1, 1};
        return -1;
    }
    Scanner scanner(text, length, limits);
    error_.fault = scanner.scan(text);
    block_ = scanner.tokens();
    if (error_.fault == Fault::none)
        return 0;
    scanner.locate(error_);
    return -1;
}

Node ScannedText::root() const
{
    return Node(static_cast<const Token *>(block_)).first_child();
}

} // namespace netpublic
