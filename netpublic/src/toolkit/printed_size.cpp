#include "toolkit/printed_size.h"

#include "values/values.h"

namespace netpublic {
namespace {

// What escaping adds to a character.
std::size_t escape_size(unsigned char c)
{
    if (c > '>' || (c > '\'' && c < '<')) // most characters: letters, digits, comma, minus
        return 0;
    switch (c) {
    case '&':
        return sizeof "amp;" - 1;
    case '<':
    case '>':
        return sizeof "lt;" - 1;
    case '"':
    case '\'':
        return sizeof "quot;" - 1;
    default:
        return c < ' ' ? sizeof "#x0A;" - 1 : 0;
    }
}

std::size_t encoded_size(const char *text)
{
    std::size_t size = 0;
    for (; *text != '\0'; ++text)
        size += 1 + escape_size(static_cast<unsigned char>(*text));
    return size;
}

bool is_text(const TiXmlNode *node)
{
    return node->Type() == TiXmlNode::TINYXML_TEXT;
}

// An element that holds one text and nothing else stands on one line.
bool is_one_line(const TiXmlNode *element)
{
    const TiXmlNode *first = element->FirstChild();
    return first != nullptr && first == element->LastChild() && is_text(first);
}

std::size_t tags_size(const TiXmlElement &element)
{
    const std::size_t name = element.ValueTStr().size();
    std::size_t size = 0;
    for (const auto *attribute = element.FirstAttribute(); attribute != nullptr; attribute = attribute->Next())
        size += sizeof " =''" - 1 + encoded_size(attribute->Name()) + encoded_size(attribute->Value());
    if (element.FirstChild() == nullptr)
        return size + sizeof "< />\n" - 1 + name;
    return size + sizeof "<></>\n" - 1 + 2 * name + (is_one_line(&element) ? 0 : 1);
}

std::size_t own_size(const TiXmlNode *node)
{
    if (is_text(node))
        return encoded_size(node->Value()) + (is_one_line(node->Parent()) ? 0 : 1);
    return node->Type() == TiXmlNode::TINYXML_ELEMENT ? tags_size(*node->ToElement()) : 0;
}

// The node behind this one in document order, inside `root`; null at the end.
const TiXmlNode *next_node(const TiXmlNode *node, const TiXmlNode *root)
{
    if (const TiXmlNode *child = node->FirstChild())
        return child;
    while (node != root && node->NextSibling() == nullptr)
        node = node->Parent();
    return node != root ? node->NextSibling() : nullptr;
}

} // namespace

std::size_t printed_size(const TiXmlElement &element)
{
    std::size_t size = 0;
    for (const TiXmlNode *node = &element; node != nullptr; node = next_node(node, &element))
        size += own_size(node);
    return size;
}

std::size_t printed_since(Element parent, const Mark &mark)
{
    if (parent.is_text())
        return parent.writer()->printed_since(parent.level(), mark);
    const auto *last = pointer_in<const TiXmlNode>(mark.last);
    std::size_t size = 0;
    for (const TiXmlNode *child = last != nullptr ? last->NextSibling() : parent.tree()->FirstChild(); child != nullptr;
         child = child->NextSibling())
        size += printed_size(*child->ToElement());
    return size;
}

} // namespace netpublic
