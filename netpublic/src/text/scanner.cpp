#include "text/scanner.h"

#include "ground/chunk.h"

#include <net_public.h>

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
    return is_byte_order_mark(at) || (byte_at(at) == 0xEF && byte_at(at + 1) == 0xBF && (byte_at(at + 2) | 1) == 0xBF);
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

// Has the chunk a byte of 0, or none above the first one that looks like it?
constexpr Chunk zeros(Chunk chunk)
{
    return (chunk - each_byte) & ~chunk;
}

// No byte behind the first `length` ones is read.
bool same_bytes(const char *a, const char *b, std::size_t length)
{
    if (length < sizeof(Chunk)) {
        while (length > 0 && *a == *b)
            ++a, ++b, --length;
        return length == 0;
    }
    std::size_t i = 0;
    for (; i < length - sizeof(Chunk); i += sizeof(Chunk))
        if (load_chunk(a + i) != load_chunk(b + i))
            return false;
    return load_chunk(a + length - sizeof(Chunk)) == load_chunk(b + length - sizeof(Chunk));
}

// What of a long text has nothing in it that could end a run, a word at a time.
char *skip_words(char *at, const char *end)
{
    while (static_cast<std::size_t>(end - at) >= sizeof(Chunk)) {
        const Chunk chunk = load_chunk(at);
        const Chunk marks = zeros(chunk ^ each_byte * '<') | zeros(chunk ^ each_byte * '&');
        if (((marks | chunk | (chunk - each_byte * ('!'))) & each_byte * 0x80) != 0)
            break;
        at += sizeof(Chunk);
    }
    return at;
}

inline char *skip_plain(char *at, const char *end)
{
    constexpr int short_run = 12;
    for (int left = short_run; (classes[*at] & ends_run) == 0; ++at)
        if (--left == 0)
            at = skip_words(at, end) - 1;
    return at;
}

// A text as far as it stands for itself: single blanks inside of it do.
inline char *skip_run(char *at, const char *end)
{
    at = skip_plain(at, end);
    while (*at == ' ' && (classes[at[1]] & ends_run) == 0)
        at = skip_plain(at + 1, end);
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

    void scan(char *at);
    ScanError error() const
    {
        return {fault_, line_, static_cast<unsigned int>(fault_at_ - line_start_) + 1};
    }
    Token *tokens() const
    {
        return tokens_;
    }

private:
    std::nullptr_t fail(Fault fault, const char *at)
    {
        fault_ = fault;
        fault_at_ = at;
        return nullptr;
    }
    // The line that reading has come to, for faults that lie in front of it.
    struct Line {
        unsigned int number;
        const char *start;
    };
    Line line() const
    {
        return {line_, line_start_};
    }
    std::nullptr_t fail(Fault fault, const char *at, const Line &line)
    {
        line_ = line.number;
        line_start_ = line.start;
        return fail(fault, at);
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
    bool grow(const char *at);
    char *skip_blanks(char *at);
    char *skip_to(char *at, const char *mark);
    char *decode(char *&to, char *at, char end, bool condense, Fault fault);
    char *decode_reference(char *&to, char *at, Fault fault);
    char *read_attribute(char *at, Span &value);
    char *read_attributes(char *at);
    char *read_declaration(char *at);
    bool add(const char *name, std::uint32_t kind, const char *at);
    char *read_text(char *at);
    char *read_end_tag(char *at);
    char *read_element(char *at);
    char *read_other(char *at);

    Token *tokens_ = nullptr;
    unsigned int capacity_ = 0;
    Encoding encoding_ = Encoding::unknown;
    Fault fault_ = Fault::none;
    unsigned int line_ = 1;
    std::uint32_t count_ = 0;
    std::uint32_t open_ = 0; // the innermost open element, whose distance is that to its parent; or the document
    std::uint32_t last_ = 0; // its last child so far, if any
    std::uint32_t level_ = 0;
    char nowhere_ = 0;
    char *terminate_ = &nowhere_; // where a text ends: to be 0 once what ends it has been looked at
    char *end_;
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

// What is behind `at` has about so many tokens: one for each opening tag or the like, one for each text in front of a
// tag. Where that is too few, this is asked again.
bool Scanner::grow(const char *at)
{
    unsigned int more = 16 + count_ / 8;
    bool in_tag = true;
    for (const char *behind_tag = at; at < end_; ++at) {
        if (*at == '<') {
            more += (at[1] != '/') + (at != behind_tag);
            in_tag = true;
        } else if (*at == '>' && in_tag) {
            behind_tag = at + 1;
            in_tag = false;
        }
    }
    return allocate(count_ + more);
}

char *Scanner::skip_blanks(char *at)
{
    for (;;) {
        while ((classes[*at] & is_blank) != 0) {
            pass(at++);
            while (static_cast<std::size_t>(end_ - at) >= sizeof(Chunk) && load_chunk(at) == each_byte * ' ')
                at += sizeof(Chunk);
            while (*at == ' ')
                ++at;
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
char *Scanner::decode_reference(char *&to, char *at, Fault fault)
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
    const char *const mark = at + 1 + hexadecimal;
    char *const end = std::strchr(at + 2, ';');
    if (end == nullptr)
        return fail(fault, at);
    const unsigned int base = hexadecimal ? 16 : 10;
    unsigned long code = 0;
    unsigned int weight = 1; // both wrap around, each at its own width
    const char *digit = end - 1;
    for (; *digit != *mark; --digit) {
        const char c = folded(*digit);
        unsigned int value = static_cast<unsigned char>(c - '0');
        if (value > 9) {
            value = static_cast<unsigned char>(c - 'a');
            if (!hexadecimal || value > 5)
                return fail(fault, at);
            value += 10;
        }
        code += weight * value;
        weight *= base;
    }
    if (limits_.strict && (digit != mark || mark + 1 == end))
        return fail(Fault::reference, at);
    for (const char *skipped = mark; skipped != digit; ++skipped)
        pass(skipped);
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
char *Scanner::decode(char *&to, char *at, char end, bool condense, Fault fault)
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
            at = decode_reference(to, at, fault);
            if (at == nullptr)
                return nullptr;
            continue;
        }
        // A sequence is taken as a whole, whatever is in it.
        for (int left = encoding_ == Encoding::utf8 ? sequence_length(*at) : 1; left > 0 && *at != '\0'; --left) {
            if (limits_.strict && *at == end)
                return fail(Fault::sequence, at);
            pass(at);
            *to++ = *at++;
        }
    }
    return at;
}

// Name and value, from the name on. Returns where the tag goes on, or null.
char *Scanner::read_attribute(char *at, Span &value)
{
    if ((classes[*at] & is_first) == 0)
        return fail(Fault::attributes, at);
    at = skip_blanks(skip_name(at));
    if (*at != '=')
        return fail(Fault::attributes, at);
    at = skip_blanks(at + 1);
    if (*at == '\0')
        return fail(Fault::attributes, at);
    if (*at == '"' || *at == '\'') {
        value = {at + 1, at + 1};
        at = decode(value.end, at + 1, *at, false, Fault::element);
        return at != nullptr && *at != '\0' ? at + 1 : at;
    }
    value.first = at;
    for (; *at != '\0' && *at != '/' && *at != '>' && (classes[*at] & is_blank) == 0; ++at)
        if (*at == '"' || *at == '\'')
            return fail(Fault::attributes, at);
    value.end = at;
    return at;
}

// From behind the name to the '>', or to the '/' in front of it.
char *Scanner::read_attributes(char *at)
{
    const char *names[scanned_attributes];
    for (unsigned int count = 0;; ++count) {
        at = skip_blanks(at);
        if (*at == '\0')
            return fail(Fault::attributes, at);
        if (*at == '>')
            return at;
        if (*at == '/')
            return at[1] == '>' ? at : fail(Fault::empty_tag, at);
        const char *name = at;
        const Line begun = line();
        Span value;
        at = read_attribute(at, value);
        if (at == nullptr)
            return nullptr;
        if (count == limits_.attributes)
            return fail(Fault::too_many_attributes, name, begun);
        names[count] = name;
        if (*at == '\0')
            return fail(Fault::element, name, begun);
        for (unsigned int i = 0; i < count; ++i)
            if (same_name(name, names[i]))
                return fail(Fault::element, name, begun);
    }
}

// From behind "<?xml" to behind its '>'; null where it does not end. The first one at the top tells the encoding.
char *Scanner::read_declaration(char *at)
{
    Encoding declared = Encoding::utf8;
    while (*at != '\0') {
        if (*at == '>') {
            if (open_ == 0 && encoding_ == Encoding::unknown)
                encoding_ = declared;
            return at + 1;
        }
        at = skip_blanks(at);
        const bool names_encoding = begins_folded(at, "encoding");
        if (names_encoding || begins_folded(at, "version") || begins_folded(at, "standalone")) {
            Span value;
            at = read_attribute(at, value);
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

// A child of the innermost open element. What it adds is last_.
bool Scanner::add(const char *name, std::uint32_t kind, const char *at)
{
    if (count_ == capacity_ && !grow(at)) {
        fail(Fault::no_memory, at);
        return false;
    }
    if (last_ != 0)
        tokens_[last_].link |= Token::has_sibling;
    else
        tokens_[open_].link |= Token::has_children;
    tokens_[count_].at = name;
    tokens_[count_].link = kind;
    last_ = count_++;
    return true;
}

// A text up to a '<', which is left standing until it has been looked at. Null also where the text does not end.
char *Scanner::read_text(char *at)
{
    const char *first = at;
    at = skip_run(at, end_);
    terminate_ = at;
    if (*at != '<') {
        at = decode(terminate_, at, '<', true, Fault::element_value);
        if (at == nullptr || is_all_blank(first, terminate_))
            return at;
    }
    return add(first, Token::text, at) ? at : nullptr;
}

// What has nothing in it but a text becomes one token.
char *Scanner::read_end_tag(char *at)
{
    Token &element = tokens_[open_];
    const char *name = element.at;
    const char *const tag = at;
    for (at += 2; *name != '\0' && *name == *at; ++name)
        ++at;
    if (*name != '\0')
        return fail(Fault::end_tag, tag);
    at = skip_blanks(at);
    if (*at != '>')
        return fail(Fault::end_tag, at);
    const std::uint32_t parent = open_ - element.distance();
    if (last_ == open_ + 1 && count_ == last_ + 1 && (tokens_[last_].link & Token::text) != 0) {
        element.link = Token::has_text | distance(element.at, tokens_[last_].at);
        count_ = last_;
    } else {
        element.link = (element.link & Token::flags) | (count_ - open_) << Token::flag_bits;
    }
    last_ = open_;
    open_ = parent;
    --level_;
    return at + 1;
}

// A start tag; and nearly always a value and the end tag behind it, or else the element stays open.
char *Scanner::read_element(char *at)
{
    if (level_ == limits_.levels)
        return fail(Fault::too_deep, at);
    char *name = at + 1;
    if ((classes[*name] & may_be_blank) != 0)
        name = skip_blanks(name);
    char *const name_end = skip_name(name);
    if ((classes[*name] & is_first) == 0 || *name_end == '\0')
        return fail(Fault::element_name, name);
    at = name_end;
    if (*at != '>')
        at = read_attributes(at);
    if (at == nullptr || !add(name, 0, at))
        return nullptr;
    if (*at == '/') {
        *name_end = '\0';
        return at + 2;
    }
    ++at;
    if ((classes[*at] & ends_run) == 0) {
        char *const text_end = skip_run(at, end_);
        const auto length = static_cast<std::size_t>(name_end - name);
        if (*text_end == '<' && text_end[1] == '/' && static_cast<std::size_t>(end_ - text_end) > length + 2 &&
            same_bytes(text_end + 2, name, length) && text_end[length + 2] == '>') {
            tokens_[last_].link = Token::has_text | distance(name, at);
            *name_end = '\0';
            *text_end = '\0';
            return text_end + length + 3;
        }
    }
    *name_end = '\0';
    tokens_[last_].link = (last_ - open_) << Token::flag_bits;
    open_ = last_;
    last_ = 0;
    ++level_;
    return at;
}

// Anything else in '<' and '>'. At the top nothing of it is kept, and one that does not end is none.
char *Scanner::read_other(char *at)
{
    const char *value = "";
    std::uint32_t kind = Token::other;
    char *behind;
    if (begins_folded(at + 1, "?xml")) {
        const Line begun = line();
        behind = read_declaration(at + 5);
        if (behind == nullptr && is_limit(fault_))
            return nullptr;
        if (behind == nullptr && open_ != 0)
            return fail(Fault::element_value, at, begun);
        if (behind == nullptr) {
            fault_ = Fault::none;
            return end_;
        }
    } else {
        const char *mark = ">";
        ++at;
        if (begins(at, "!--")) {
            at += 3;
            mark = "-->";
        } else if (begins(at, "![CDATA[")) {
            at += 8;
            mark = "]]>";
            kind = Token::text;
        }
        value = at;
        behind = skip_to(at, mark);
        if (*behind != '\0') {
            *behind = '\0';
            behind += std::strlen(mark);
        }
    }
    return open_ == 0 || add(value, kind, behind) ? behind : nullptr;
}

// Token 0 is the document.
void Scanner::scan(char *at)
{
    if (!allocate(first_capacity(static_cast<std::size_t>(end_ - at)))) {
        fail(Fault::no_memory, at);
        return;
    }
    tokens_[count_++] = {at, 0};
    if (is_byte_order_mark(at))
        encoding_ = Encoding::utf8;
    at = skip_blanks(at);
    if (*at != '<') {
        fail(Fault::document_empty, at);
        return;
    }
    while (at != nullptr) {
        const char *const before = at;
        if (*at == '\n') { // a line's indentation
            pass(at);
            do
                ++at;
            while (*at == ' ');
        }
        if ((classes[*at] & may_be_blank) != 0)
            at = skip_blanks(at);
        if (*at != '<') {
            if (open_ == 0)
                break; // the end, or a text that ends the reading
            if (*at == '\0')
                at = fail(at == before ? Fault::element_value : Fault::end_tag, at);
            else
                at = read_text(at);
            continue;
        }
        *terminate_ = '\0';
        if ((classes[at[1]] & is_first) != 0)
            at = read_element(at);
        else if (at[1] == '/' && open_ != 0)
            at = read_end_tag(at);
        else
            at = read_other(at);
    }
    if (at != nullptr && (tokens_[0].link & Token::has_children) == 0)
        fail(Fault::no_root, at);
}

} // namespace

const char *fault_text(Fault fault)
{
    static constexpr char texts[] = "\0" // in the order of the faults
                                    "Error parsing Element.\0"
                                    "Failed to read Element name\0"
                                    "Error reading Element value.\0"
                                    "Error reading Attributes.\0"
                                    "Error: empty tag.\0"
                                    "Error reading end tag.\0"
                                    "Error document empty.\0"
                                    "no root element\0"
                                    "text too long\0"
                                    "nested too deeply\0"
                                    "too many attributes\0"
                                    "no UTF-8\0"
                                    "bad reference\0"
                                    "out of memory";
    const char *text = texts;
    for (auto left = static_cast<int>(fault); left > 0; --left)
        text += std::strlen(text) + 1;
    return text;
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
    scanner.scan(text);
    block_ = scanner.tokens();
    error_ = scanner.error();
    return error_.fault == Fault::none ? 0 : -1;
}

Node ScannedText::root() const
{
    return Node(static_cast<const Token *>(block_)).first_child();
}

} // namespace netpublic
