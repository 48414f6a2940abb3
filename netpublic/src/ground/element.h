// What the engine writes to: an element of the XML library's tree, or an open level of a text that is being
// written. No writer knows which.
#ifndef NETPUBLIC_ELEMENT_H
#define NETPUBLIC_ELEMENT_H

#include "ground/tree.h"

#include <cstdint>

namespace netpublic {

class TextWriter;

// A tree's element (or document); or a writer and a level of its (bit 0). A null element is one that could not be made:
// appending to it fails, so that results can be used unchecked.
//
// In a text, appending to a level ends the deeper ones for good: nothing may be appended to an element once
// something has been appended to one around it.
class Element {
public:
    Element() = default;
    Element(TiXmlNode *parent) : word_(reinterpret_cast<std::uintptr_t>(parent)) {}
    Element(TiXmlElement *parent) : word_(reinterpret_cast<std::uintptr_t>(parent)) {} // which may be a handle
    Element(TextWriter *writer, unsigned int level)
        : word_(reinterpret_cast<std::uintptr_t>(writer) | level << 1 | writer_tag)
    {
    }

    explicit operator bool() const
    {
        return word_ != 0;
    }
    // How the element passes through an interface that names the XML library's type; not to be dereferenced.
    TiXmlElement *handle() const
    {
        return pointer_in<TiXmlElement>(word_);
    }

    bool is_text() const
    {
        return (word_ & writer_tag) != 0;
    }
    TiXmlNode *tree() const
    {
        return pointer_in<TiXmlNode>(word_);
    }
    TextWriter *writer() const
    {
        return pointer_in<TextWriter>(word_ & ~tags);
    }
    unsigned int level() const
    {
        return static_cast<unsigned int>(word_ & tags) >> 1;
    }

    static constexpr std::uintptr_t writer_tag = 1;
    static constexpr std::uintptr_t tags = 15; // a level, and the tag

private:
    std::uintptr_t word_ = 0;
};

// A new last child; null or -1 for a failure: a null parent, no memory, too many levels.
[[nodiscard]] Element append_element(Element parent, const char *name);
// A message's root: with an attribute of the name `version`, whose value is "1.1".
[[nodiscard]] Element append_root(Element parent, const char *name, const char *version);
[[nodiscard]] int append_text(Element parent, const char *name, const char *text);
// The first `longest` bytes at most.
[[nodiscard]] int append_text(Element parent, const char *name, const char *text, std::size_t longest);
// A text of exactly this length, without a character that XML has a use for; text[length] is 0.
[[nodiscard]] int append_plain(Element parent, const char *name, const char *text, std::size_t length);

// Where a child list ended.
struct Mark {
    std::uintptr_t last; // the last child; or the text's length, and in bit 0 whether it ended in an open start tag
    unsigned int breaks;
};
Mark mark_end(Element parent);
// Takes back what has been appended since. -1, what a writer then returns.
int remove_since(Element parent, const Mark &mark);

// A plain text that is made where it is to stand.
[[nodiscard]] int append_made(Element parent, const char *name, std::size_t length, MakeText make, const void *context);

// Prints elements while they are appended, as the XML library prints them without indentation and line breaks.
// Writes nothing behind the buffer and takes no memory.
class alignas(Element::tags + 1) TextWriter {
public:
    // cppcheck-suppress uninitMemberVar // names of levels that are not open
    TextWriter(char *text, unsigned int size) : text_(text), size_(size) {}
    TextWriter(const TextWriter &) = delete;
    TextWriter &operator=(const TextWriter &) = delete;

    // What the outermost element is appended to.
    Element top()
    {
        return {this, 0};
    }
    // Ends all elements, and the text with a 0 wherever it is cut. Returns the length that the whole text has.
    unsigned int finish();

    // For the functions above. The level is the one to append to.
    Element open(unsigned int level, const char *name);
    void add_attribute(const char *name, const char *plain);
    void add_text(unsigned int level, const char *name, const char *text, std::size_t longest);
    void add_plain(unsigned int level, const char *name, const char *text, std::size_t length);
    void add_made(unsigned int level, const char *name, std::size_t length, MakeText make, const void *context);
    Mark mark(unsigned int level);
    void remove_since(unsigned int level, const Mark &mark);
    // How long what is behind the mark is when it is printed with line breaks, but without indentation.
    std::size_t printed_since(unsigned int level, const Mark &mark);

private:
    static constexpr unsigned int most_levels = Element::tags >> 1;

    void end_deeper(unsigned int level);
    void end_start_tag();
    void begin_text(unsigned int level, const char *name);
    void end_text(const char *name);
    void put_name(const char *front, std::size_t front_length, const char *name, const char *back);
    void put(const char *text, std::size_t length);
    void put(const char *text);

    char *text_;
    unsigned int size_;
    unsigned int length_ = 0; // of the whole text, whether it fits or not
    unsigned int breaks_ = 0; // line breaks that printing with them would have put
    unsigned int level_ = 0;
    bool open_ = false; // the innermost element's start tag has no end yet
    const char *names_[most_levels];
};

} // namespace netpublic

#endif
