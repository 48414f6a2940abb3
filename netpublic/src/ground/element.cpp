#include "ground/element.h"

#include "ground/chunk.h"
#include "ground/for_size.h"

#include <cstring>

namespace netpublic {
namespace {

// To be used where a call would take longer than the copying.
inline char *copy(char *to, const char *from, std::size_t length)
{
    if constexpr (for_size) {
        std::memcpy(to, from, length);
        return to + length;
    }
    if (length < sizeof(Chunk)) {
        for (std::size_t i = 0; i < length; ++i)
            to[i] = from[i];
        return to + length;
    }
    Chunk chunk;
    for (std::size_t i = 0; i + sizeof(Chunk) < length; i += sizeof(Chunk)) {
        chunk = load_chunk(from + i);
        std::memcpy(to + i, &chunk, sizeof(Chunk));
    }
    chunk = load_chunk(from + length - sizeof(Chunk));
    std::memcpy(to + length - sizeof(Chunk), &chunk, sizeof(Chunk));
    return to + length;
}

constexpr std::uint32_t bit(char c)
{
    return 1u << (c - ' ');
}

inline bool is_plain(char character)
{
    constexpr std::uint32_t marks = bit('"') | bit('&') | bit('\'') | bit('<') | bit('>');
    const auto c = static_cast<unsigned char>(character);
    return c >= 64 || (c >= ' ' && (marks >> (c - ' ') & 1) == 0);
}

// Has the chunk nothing but letters, digits and the like? Not every chunk that has is seen.
inline bool is_plain_chunk(Chunk chunk)
{
    const Chunk angle = (chunk | each_byte * 2) ^ each_byte * '>'; // 0 where there is one of the two
    const Chunk marks = (chunk - each_byte * '(') | (angle - each_byte);
    return ((marks | chunk) & each_byte * 0x80) == 0;
}

// The length of the text, which has at most so many characters, up to what is to be escaped.
inline std::size_t plain_length(const char *text, std::size_t longest)
{
    std::size_t length = 0;
    while (!for_size && length + sizeof(Chunk) <= longest && is_plain_chunk(load_chunk(text + length)))
        length += sizeof(Chunk);
    while (length < longest && is_plain(text[length]))
        ++length;
    return length;
}

// What stands for a character that is not plain, up to its ';'.
struct Escape {
    char text[8];
};

Escape escape_of(char c)
{
    switch (c) {
    case '"':
        return {"&quot;"};
    case '&':
        return {"&amp;"};
    case '\'':
        return {"&apos;"};
    case '<':
        return {"&lt;"};
    case '>':
        return {"&gt;"};
    default:
        return {{'&', '#', 'x', static_cast<char>('0' + c / 16), "0123456789ABCDEF"[c % 16], ';'}};
    }
}

} // namespace

void TextWriter::put(const char *text, std::size_t length)
{
    if (length_ < size_) {
        const std::size_t room = size_ - length_;
        copy(text_ + length_, text, length < room ? length : room);
    }
    length_ += static_cast<unsigned int>(length);
}

void TextWriter::put(const char *text)
{
    put(text, std::strlen(text));
}

// Nearly always there is room for all of it, and then it is looked for once.
void TextWriter::put_name(const char *front, std::size_t front_length, const char *name, const char *back)
{
    const std::size_t length = std::strlen(name), whole = front_length + length + 1;
    if (!for_size && length_ < size_ && whole < size_ - length_) {
        char *to = copy(text_ + length_, front, front_length);
        *copy(to, name, length) = *back;
        length_ += static_cast<unsigned int>(whole - (*back == '\0' ? 1 : 0));
        return;
    }
    put(front, front_length);
    put(name, length);
    put(back);
}

void TextWriter::end_start_tag()
{
    if (open_)
        put(">", 1);
    open_ = false;
}

void TextWriter::end_deeper(unsigned int level)
{
    while (level_ > level) {
        --level_;
        ++breaks_;
        if (open_) {
            put(" />", 3);
        } else {
            ++breaks_;
            put_name("</", 2, names_[level_], ">");
        }
        open_ = false;
    }
}

Element TextWriter::open(unsigned int level, const char *name)
{
    end_deeper(level);
    if (level == most_levels)
        return {};
    put_name(open_ ? "><" : "<", open_ ? 2 : 1, name, "");
    names_[level_++] = name;
    open_ = true;
    return {this, level_};
}

void TextWriter::add_attribute(const char *name, const char *plain)
{
    put(" ");
    put(name);
    put("=\"");
    put(plain);
    put("\"");
}

// Nearly always there is room, and then it is looked for once.
void TextWriter::add_plain(unsigned int level, const char *name, const char *text, std::size_t length)
{
    end_deeper(level);
    end_start_tag();
    const std::size_t name_length = std::strlen(name);
    const std::size_t whole = 2 * name_length + length + std::strlen("<></>");
    if (!for_size && length_ < size_ && whole < size_ - length_) {
        char *to = text_ + length_;
        *to++ = '<';
        to = copy(to, name, name_length);
        *to++ = '>';
        to = copy(to, text, length);
        *to++ = '<';
        *to++ = '/';
        *copy(to, name, name_length) = '>';
        length_ += static_cast<unsigned int>(whole);
        ++breaks_;
        return;
    }
    begin_text(level, name);
    put(text, length);
    end_text(name);
}

void TextWriter::add_text(unsigned int level, const char *name, const char *text, std::size_t longest)
{
    // A text without a bound ends by itself.
    if (longest == SIZE_MAX)
        longest = std::strlen(text);
    std::size_t plain = plain_length(text, longest);
    if (plain == longest || text[plain] == '\0') {
        add_plain(level, name, text, plain);
        return;
    }
    begin_text(level, name);
    while (plain < longest && text[plain] != '\0') {
        put(text, plain);
        const Escape escape = escape_of(text[plain]);
        put(escape.text);
        text += plain + 1;
        longest -= plain + 1;
        plain = plain_length(text, longest);
    }
    put(text, plain);
    end_text(name);
}

void TextWriter::add_made(unsigned int level, const char *name, std::size_t length, MakeText make, const void *context)
{
    begin_text(level, name);
    if (length_ < size_)
        make(context, text_ + length_, length < size_ - length_ ? length : size_ - length_);
    length_ += static_cast<unsigned int>(length);
    end_text(name);
}

void TextWriter::begin_text(unsigned int level, const char *name)
{
    end_deeper(level);
    end_start_tag();
    put_name("<", 1, name, ">");
}

void TextWriter::end_text(const char *name)
{
    ++breaks_;
    put_name("</", 2, name, ">");
}

Mark TextWriter::mark(unsigned int level)
{
    end_deeper(level);
    return {static_cast<std::uintptr_t>(length_) << 1 | (open_ ? 1u : 0u), breaks_};
}

void TextWriter::remove_since(unsigned int level, const Mark &mark)
{
    level_ = level;
    length_ = static_cast<unsigned int>(mark.last >> 1);
    open_ = (mark.last & 1) != 0;
    breaks_ = mark.breaks;
}

std::size_t TextWriter::printed_since(unsigned int level, const Mark &mark)
{
    end_deeper(level);
    const bool ended = (mark.last & 1) != 0 && !open_; // the parent's start tag
    return length_ - static_cast<unsigned int>(mark.last >> 1) - (ended ? 1 : 0) + breaks_ - mark.breaks;
}

unsigned int TextWriter::finish()
{
    end_deeper(0);
    if (size_ != 0)
        text_[length_ < size_ ? length_ : size_ - 1] = '\0';
    return length_;
}

Element append_element(Element parent, const char *name)
{
    if (!parent)
        return {};
    return parent.is_text() ? parent.writer()->open(parent.level(), name) : Element(link_element(parent.tree(), name));
}

Element append_root(Element parent, const char *name, const char *version)
{
    if (!parent)
        return {};
    if (!parent.is_text())
        return link_element(parent.tree(), name, version);
    const Element root = parent.writer()->open(parent.level(), name);
    if (root)
        parent.writer()->add_attribute(version, "1.1");
    return root;
}

int append_text(Element parent, const char *name, const char *text)
{
    if (!parent.is_text())
        return link_text(parent.tree(), name, text);
    parent.writer()->add_text(parent.level(), name, text, SIZE_MAX);
    return 0;
}

int append_text(Element parent, const char *name, const char *text, std::size_t longest)
{
    if (!parent.is_text())
        return std::memchr(text, '\0', longest) != nullptr ? link_text(parent.tree(), name, text)
                                                           : link_text(parent.tree(), name, text, longest);
    parent.writer()->add_text(parent.level(), name, text, longest);
    return 0;
}

int append_plain(Element parent, const char *name, const char *text, std::size_t length)
{
    if (!parent.is_text())
        return link_text(parent.tree(), name, text);
    parent.writer()->add_plain(parent.level(), name, text, length);
    return 0;
}

int append_made(Element parent, const char *name, std::size_t length, MakeText make, const void *context)
{
    if (!parent.is_text())
        return link_made(parent.tree(), name, length, make, context);
    parent.writer()->add_made(parent.level(), name, length, make, context);
    return 0;
}

Mark mark_end(Element parent)
{
    return parent.is_text() ? parent.writer()->mark(parent.level())
                            : Mark{reinterpret_cast<std::uintptr_t>(parent.tree()->LastChild()), 0};
}

int remove_since(Element parent, const Mark &mark)
{
    if (!parent.is_text())
        return remove_children(parent.tree(), pointer_in<const TiXmlNode>(mark.last));
    parent.writer()->remove_since(parent.level(), mark);
    return -1;
}

} // namespace netpublic
