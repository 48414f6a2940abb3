// A text from outside and its tree.
#ifndef NETPARAM_DOCUMENT_H
#define NETPARAM_DOCUMENT_H

#include "model/failure.h"
#include "model/text.h"

#include <tinyxml.h>

#include <string>
#include <utility>
#include <vector>

namespace netparam {

// A place in a text, from 1 on; row 0 is no place.
struct Spot {
    int row = 0;
    int column = 0;
};

constexpr char standard_input[] = "standard input";

// The text of a file, or of standard input for "-". Fails with exit_file, and with exit_malformed when it is
// too long.
std::string read_text(const std::string &path);
// How a file is called in what people read.
std::string file_name(const std::string &path);

// A text that is not well formed, or not fit to be parsed.
struct Malformed : Failure {
    std::string path;
    Spot spot;
    std::string reason;

    Malformed(std::string file, Spot place, std::string why, const std::string &text)
        : Failure(exit_malformed, text), path(std::move(file)), spot(place), reason(std::move(why))
    {
    }
};

class Document {
public:
    // Reads and parses a file, or standard input for "-". Fails with exit_file, and as Malformed.
    explicit Document(const std::string &path);
    // The same of a text, which begins in this line of its file, whose name is given.
    Document(const std::string &name, const std::string &text, std::size_t first_line = 1);
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;

    // The message's body element: the root or, when that is called "body", the element in it that choose() has chosen,
    // otherwise the first.
    const TiXmlElement &body() const
    {
        return *body_;
    }
    // The first element of this name, case aside, if there is one.
    void choose(const std::string &name);
    // The other elements in a root called "body".
    std::vector<const TiXmlElement *> beside() const;
    const TiXmlDocument &tree() const
    {
        return tree_;
    }
    const std::string &text() const
    {
        return text_;
    }
    const std::string &name() const
    {
        return name_;
    }

    std::size_t first_line() const
    {
        return first_line_;
    }

    // The place in the file of one in the text.
    Spot in_file(Spot spot) const;
    // "file:line:column".
    std::string at(Spot spot) const;
    // See below.
    std::string excerpt(Spot spot, const Style &style, bool show_secrets) const;

private:
    [[noreturn]] void malformed(Spot spot, const std::string &what) const;
    [[noreturn]] void unfit(Spot spot, const std::string &why) const;
    void parse();

    std::string name_;
    std::string text_;
    std::string padded_;
    TiXmlDocument tree_;
    TiXmlElement *body_ = nullptr;
    std::size_t first_line_ = 1;
};

// The element's text, indented.
std::string printed(const TiXmlNode &node, const char *indent = "  ");
// The line of that place in a text and a caret below it.
std::string excerpt_of(const std::string &text, Spot spot, const Style &style, std::size_t first_line);

// The element's text, or the node's own place where it has none.
Spot spot_of_text(const TiXmlNode &node);
Spot spot_of(const TiXmlNode &node);
// "MD/timeBlockList/timeBlock[1]/endHour", from the body element on; places count from 0.
std::string path_of(const TiXmlNode &node);

} // namespace netparam

#endif
