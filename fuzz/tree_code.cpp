#include "tree_code.h"

#include <tinyxml.h>

#include <algorithm>

namespace fuzz {
namespace {

// One byte a step, the kind in its lowest bits.
enum Step : std::uint8_t {
    step_open,   // name: an element that the following steps fill
    step_close,  // back to the element around
    step_leaf,   // name, text: an element with a text
    step_text,   // text
    step_other,  // text: comment, unknown node, CDATA or declaration, by the upper bits
    step_repeat, // count: copies of the last node
    step_hoist,  // the last node moves to the front of its siblings
    step_named,  // name, value: an attribute of the element
};
constexpr int most_nodes = 2000;
constexpr int most_levels = 200;
constexpr std::size_t longest = 0xFF;

std::string counted(Bytes &input)
{
    std::size_t length = input.byte();
    if (length == longest)
        length += input.byte();
    return input.text(length);
}

void put_counted(std::string &code, const std::string &text)
{
    const std::size_t length = std::min<std::size_t>(text.size(), 2 * longest);
    code += static_cast<char>(std::min(length, longest));
    if (length >= longest)
        code += static_cast<char>(length - longest);
    code.append(text, 0, length);
}

TiXmlNode *other_node(unsigned which, const std::string &text)
{
    switch (which % 4) {
    case 0: {
        auto *comment = new TiXmlComment;
        comment->SetValue(text);
        return comment;
    }
    case 1: {
        auto *unknown = new TiXmlUnknown;
        unknown->SetValue(text);
        return unknown;
    }
    case 2: {
        auto *data = new TiXmlText(text);
        data->SetCDATA(true);
        return data;
    }
    default:
        return new TiXmlDeclaration(text.c_str(), "UTF-8", "");
    }
}

int nodes_in(const TiXmlNode &tree)
{
    int count = 1;
    for (const TiXmlNode *child = tree.FirstChild(); child != nullptr; child = child->NextSibling())
        count += nodes_in(*child);
    return count;
}

void encode_node(std::string &code, const TiXmlNode &node)
{
    const auto put_other = [&](unsigned which) {
        code += static_cast<char>(step_other | which << 3);
        put_counted(code, node.ValueStr());
    };
    if (const TiXmlElement *element = node.ToElement()) {
        const TiXmlNode *only = element->FirstChild();
        const bool leaf = only != nullptr && only == element->LastChild() && only->ToText() != nullptr &&
                          !only->ToText()->CDATA() && element->FirstAttribute() == nullptr;
        code += static_cast<char>(leaf ? step_leaf : step_open);
        put_counted(code, element->ValueStr());
        if (leaf)
            return put_counted(code, only->ValueStr());
        for (const TiXmlAttribute *at = element->FirstAttribute(); at != nullptr; at = at->Next()) {
            code += static_cast<char>(step_named);
            put_counted(code, at->Name());
            put_counted(code, at->ValueStr());
        }
        code += encode_tree(*element);
        code += static_cast<char>(step_close);
    } else if (const TiXmlText *text = node.ToText()) {
        if (text->CDATA())
            return put_other(2);
        code += static_cast<char>(step_text);
        put_counted(code, text->ValueStr());
    } else {
        put_other(node.ToComment() != nullptr ? 0 : node.ToUnknown() != nullptr ? 1 : 3);
    }
}

} // namespace

void decode_tree(Bytes &input, TiXmlElement &root)
{
    TiXmlElement *open = &root;
    int levels = 0;
    for (int nodes = 0; nodes < most_nodes && input.left() != 0;) {
        const std::uint8_t step = input.byte();
        TiXmlNode *last = open->LastChild();
        switch (step & 7) {
        case step_open: {
            auto *element = new TiXmlElement(counted(input));
            open->LinkEndChild(element);
            ++nodes;
            if (levels < most_levels) {
                open = element;
                ++levels;
            }
            break;
        }
        case step_close:
            if (open != &root) {
                open = open->Parent()->ToElement();
                --levels;
            }
            break;
        case step_leaf: {
            auto *element = new TiXmlElement(counted(input));
            element->LinkEndChild(new TiXmlText(counted(input)));
            open->LinkEndChild(element);
            nodes += 2;
            break;
        }
        case step_text:
            open->LinkEndChild(new TiXmlText(counted(input)));
            ++nodes;
            break;
        case step_other:
            open->LinkEndChild(other_node(step >> 3, counted(input)));
            ++nodes;
            break;
        case step_repeat: {
            const int size = last != nullptr ? nodes_in(*last) : most_nodes;
            for (int copies = input.byte(); copies > 0 && nodes + size < most_nodes; --copies, nodes += size)
                open->LinkEndChild(last->Clone());
            break;
        }
        case step_hoist:
            if (last != nullptr && last != open->FirstChild()) {
                TiXmlNode *copy = last->Clone();
                open->RemoveChild(last);
                open->InsertBeforeChild(open->FirstChild(), *copy);
                delete copy;
            }
            break;
        case step_named: {
            const std::string name = counted(input), value = counted(input);
            if (name.c_str()[0] != '\0') // the XML library asserts that there is one, also when it copies the tree
                open->SetAttribute(name.c_str(), value.c_str());
            break;
        }
        }
    }
}

std::string encode_tree(const TiXmlElement &root)
{
    std::string code;
    for (const TiXmlNode *child = root.FirstChild(); child != nullptr; child = child->NextSibling())
        encode_node(code, *child);
    return code;
}

} // namespace fuzz
