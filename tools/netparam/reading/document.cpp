#include "reading/document.h"

#include "model/failure.h"
#include "reading/secrets.h"

#include "ground/words.h"
#include "text/scanner.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace netparam {
namespace {

constexpr std::size_t most_bytes = 4 * 1024 * 1024;

[[noreturn]] void unreadable(const std::string &name, int error)
{
    throw Failure(exit_file, printable(name) + ": " + std::strerror(error));
}

// Where the line begins. The XML library takes "\r\n" and "\n\r" for one line break, too.
std::size_t line_start(const std::string &text, int row)
{
    std::size_t at = 0;
    for (int line = 1; line < row; ++line) {
        at = text.find_first_of("\r\n", at);
        if (at == std::string::npos)
            return text.size();
        const char other = text[at] == '\r' ? '\n' : '\r';
        at += at + 1 < text.size() && text[at + 1] == other ? 2 : 1;
    }
    return at;
}

bool has_name(const TiXmlNode &node, const char *name)
{
    return lower(node.ValueStr()) == name;
}

} // namespace

std::string file_name(const std::string &path)
{
    return path == "-" ? standard_input : path;
}

[[noreturn]] static void too_long(const std::string &name)
{
    const std::string reason = "more than " + std::to_string(most_bytes) + " bytes; nothing was parsed";
    throw Malformed(name, {}, reason, printable(name) + ": " + reason);
}

static std::string read_file(const std::string &path)
{
    const std::string name = file_name(path);
    const auto close = [](std::FILE *file) {
        if (file != stdin)
            std::fclose(file);
    };
    const std::unique_ptr<std::FILE, decltype(close)> file(path == "-" ? stdin : std::fopen(path.c_str(), "rb"), close);
    if (file == nullptr)
        unreadable(name, errno);
    std::string text;
    char buffer[65536];
    for (std::size_t length; (length = std::fread(buffer, 1, sizeof buffer, file.get())) > 0;) {
        text.append(buffer, length);
        if (text.size() > most_bytes)
            too_long(name);
    }
    if (std::ferror(file.get()) != 0)
        unreadable(name, errno);
    return text;
}

std::string read_text(const std::string &path)
{
    if (path != "-")
        return read_file(path);
    static const std::string input = read_file(path); // it comes only once
    return input;
}

Document::Document(const std::string &path) : name_(file_name(path)), text_(read_text(path))
{
    parse();
}

Document::Document(const std::string &name, const std::string &text, std::size_t first_line)
    : name_(name), text_(text), first_line_(first_line)
{
    parse();
}

void Document::malformed(Spot spot, const std::string &what) const
{
    std::string text = at(spot) + ": not well-formed XML: " + printable(what) + "\n" + excerpt(spot, {}, false);
    text.pop_back(); // the last line break
    throw Malformed(name_, in_file(spot), "not well-formed XML: " + printable(what), text);
}

void Document::unfit(Spot spot, const std::string &why) const
{
    const std::string reason = why + "; nothing was parsed";
    throw Malformed(name_, in_file(spot), reason, at(spot) + ": " + reason);
}

void Document::parse()
{
    if (const std::size_t zero = text_.find('\0'); zero != std::string::npos) {
        const int row = 1 + static_cast<int>(std::count(text_.begin(), text_.begin() + static_cast<long>(zero), '\n'));
        unfit({row, 0}, "a zero byte in the text");
    }
    // Nesting and attributes only: how long the text may be is the tool's own affair.
    netpublic::ScanLimits scanning = netpublic::header_limits;
    scanning.length = most_bytes;
    netpublic::ScannedText scanned;
    padded_ = text_;
    if (scanned.scan(padded_.data(), static_cast<unsigned int>(padded_.size()), scanning) != 0 &&
        netpublic::is_limit(scanned.error().fault))
        unfit({}, netpublic::fault_text(scanned.error().fault));
    if (text_.find_first_not_of(" \t\r\n") == std::string::npos)
        unfit({}, text_.empty() ? "the text is empty" : "there is nothing but white space");
    constexpr std::size_t padding = 8; // the XML library reads past a text that ends inside a UTF-8 sequence
    padded_ = text_ + std::string(padding, '\0');
    tree_.SetTabSize(1);
    tree_.Parse(padded_.c_str());
    if (tree_.Error())
        malformed({tree_.ErrorRow(), tree_.ErrorCol()}, tree_.ErrorDesc());
    if (tree_.RootElement() == nullptr)
        malformed({}, text_.find("<!DOCTYPE") != std::string::npos
                          ? "no element is found behind the document type declaration, whose own ones cannot be read"
                          : "there is no element");
    body_ = tree_.RootElement();
    if (has_name(*body_, "body"))
        body_ = body_->FirstChildElement();
    if (body_ == nullptr)
        malformed(spot_of(*tree_.RootElement()), "the body holds no message");
}

void Document::choose(const std::string &name)
{
    for (TiXmlElement *child = body_; body_ != tree_.RootElement() && child != nullptr;
         child = child->NextSiblingElement())
        if (lower(child->ValueStr()) == lower(name)) {
            body_ = child;
            return;
        }
}

std::vector<const TiXmlElement *> Document::beside() const
{
    std::vector<const TiXmlElement *> others;
    if (body_ != tree_.RootElement())
        for (const TiXmlElement *child = tree_.RootElement()->FirstChildElement(); child != nullptr;
             child = child->NextSiblingElement())
            if (child != body_)
                others.push_back(child);
    return others;
}

Spot Document::in_file(Spot spot) const
{
    return spot.row > 0 ? Spot{spot.row + static_cast<int>(first_line_) - 1, spot.column} : spot;
}

std::string Document::at(Spot spot) const
{
    std::string place = printable(name_);
    if (spot.row > 0)
        place += ":" + std::to_string(in_file(spot).row);
    if (spot.row > 0 && spot.column > 0)
        place += ":" + std::to_string(spot.column);
    return place;
}

std::string Document::excerpt(Spot spot, const Style &style, bool show_secrets) const
{
    return excerpt_of(show_secrets ? text_ : masked(text_), spot, style, first_line_);
}

std::string excerpt_of(const std::string &text, Spot spot, const Style &style, std::size_t first_line)
{
    if (spot.row < 1 || spot.column < 1)
        return "";
    const std::size_t start = line_start(text, spot.row);
    const std::string line = text.substr(start, text.find_first_of("\r\n", start) - start);

    // The library counts characters where the text is UTF-8, and bytes elsewhere.
    const bool utf8 = text.compare(0, 3, "\xEF\xBB\xBF") == 0 || netpublic::contains_folded(text.c_str(), "<?xml");
    std::size_t caret = 0;
    for (int column = 1; column < spot.column && caret < line.size(); ++column)
        caret += utf8 ? sequence_length(line, caret) : 1;

    const auto shown = [&](std::size_t from, std::size_t to) {
        std::string part = line.substr(from, to - from);
        std::replace(part.begin(), part.end(), '\t', ' ');
        return printable(part);
    };
    // A window on long lines, such as those with grids: more of what stands before the caret than behind it.
    constexpr std::size_t around = 14; // columns of the line's number and of two ellipses
    const std::size_t room = style.width - around, ahead_of_caret = room * 3 / 5;
    std::size_t first = caret, last = caret;
    for (std::size_t used = 0; first > 0; --first) {
        const bool is_start = (static_cast<unsigned char>(line[first - 1]) & 0xC0) != 0x80;
        used += is_start ? columns(shown(first - 1, std::min(first - 1 + sequence_length(line, first - 1), caret))) : 0;
        if (used > ahead_of_caret)
            break;
    }
    while (first < caret && (static_cast<unsigned char>(line[first]) & 0xC0) == 0x80)
        ++first;
    for (std::size_t used = columns(shown(first, caret)); last < line.size();) {
        const std::size_t next = last + sequence_length(line, last);
        used += columns(shown(last, next));
        if (used > room)
            break;
        last = next;
    }

    const std::string ahead = (first > 0 ? "..." : "") + shown(first, caret);
    const std::string number = std::to_string(static_cast<std::size_t>(spot.row) + first_line - 1);
    const std::string margin(number.size() < 5 ? 5 - number.size() : 0, ' ');
    return margin + style.faint(number + " |") + " " + ahead + shown(caret, last) + (last < line.size() ? "..." : "") +
           "\n" + margin + std::string(number.size(), ' ') + style.faint(" |") + " " +
           std::string(columns(ahead), ' ') + style.error("^") + "\n";
}

std::string printed(const TiXmlNode &node, const char *indent)
{
    TiXmlPrinter printer;
    printer.SetIndent(indent);
    node.Accept(&printer);
    return printer.Str();
}

Spot spot_of(const TiXmlNode &node)
{
    return {node.Row(), node.Column()};
}

Spot spot_of_text(const TiXmlNode &node)
{
    const TiXmlNode *first = node.FirstChild();
    return first != nullptr && first->Type() == TiXmlNode::TINYXML_TEXT ? spot_of(*first) : spot_of(node);
}

std::string path_of(const TiXmlNode &node)
{
    std::string path;
    for (const TiXmlNode *at = &node; at != nullptr && at->Type() != TiXmlNode::TINYXML_DOCUMENT; at = at->Parent()) {
        // The body around a message is no part of it.
        const TiXmlNode *parent = at->Parent();
        const bool is_root = parent == nullptr || parent->Type() == TiXmlNode::TINYXML_DOCUMENT;
        if (is_root && at != &node && has_name(*at, "body"))
            break;
        std::string step = at->Type() == TiXmlNode::TINYXML_ELEMENT   ? printable(at->ValueStr())
                           : at->Type() == TiXmlNode::TINYXML_COMMENT ? "(comment)"
                                                                      : "(text)";
        int place = 0, others = 0;
        for (const TiXmlNode *sibling = at->PreviousSibling(); sibling != nullptr; sibling = sibling->PreviousSibling())
            place += sibling->Type() == at->Type() && sibling->ValueStr() == at->ValueStr();
        for (const TiXmlNode *sibling = at->NextSibling(); sibling != nullptr && others == 0;
             sibling = sibling->NextSibling())
            others += sibling->Type() == at->Type() && sibling->ValueStr() == at->ValueStr();
        if (place + others > 0)
            step += "[" + std::to_string(place) + "]";
        if (!path.empty())
            step += "/";
        path.insert(0, step);
    }
    return path;
}

} // namespace netparam
