// A text from outside and its tree.
#ifndef NETPARAM_DOCUMENT_H
#define NETPARAM_DOCUMENT_H

#include "text.h"

#include <tinyxml.h>

#include <string>
#include <vector>

namespace netparam {

// A place in a text, from 1 on; row 0 is no place.
struct Spot {
    int row = 0;
    int column = 0;
};

class Document {
public:
    // Reads and parses a file, or standard input for "-". Fails with exit_file and exit_malformed.
    explicit Document(const std::string &path);
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;

    // The message's body element: the root, or the first element in it when the root is called "body".
    TiXmlElement &body();
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

    // "file:line:column".
    std::string at(Spot spot) const;
    // The line of that place and a caret below it.
    std::string excerpt(Spot spot, const Style &style, bool show_secrets) const;

private:
    [[noreturn]] void malformed(Spot spot, const std::string &what) const;
    void parse();

    std::string name_;
    std::string text_;
    std::string padded_;
    TiXmlDocument tree_;
};

// The element's text, or the node's own place where it has none.
Spot spot_of_text(const TiXmlNode &node);
Spot spot_of(const TiXmlNode &node);
// "MD/timeBlockList/timeBlock[2]/endHour", from the body element on.
std::string path_of(const TiXmlNode &node);

} // namespace netparam

#endif
