// What readers read: a node of a text's tree.
#ifndef NETPUBLIC_NODE_H
#define NETPUBLIC_NODE_H

#include "ground/tree.h"

namespace netpublic {

// A handle, as cheap to copy as a pointer; the null one may only be compared.
class Node {
public:
    Node() = default;
    Node(const TiXmlNode *node) : node_(node) {}

    explicit operator bool() const
    {
        return node_ != nullptr;
    }
    bool operator==(Node other) const
    {
        return node_ == other.node_;
    }
    // An element's name; of a comment or a text, what it says.
    const char *name() const
    {
        return node_->Value();
    }
    Node first_child() const
    {
        return node_->FirstChild();
    }
    Node next_sibling() const
    {
        return node_->NextSibling();
    }
    // The first child of exactly this name, case included.
    Node child(const char *name) const
    {
        return node_->FirstChild(name);
    }
    bool is_element() const
    {
        return node_->Type() == TiXmlNode::TINYXML_ELEMENT;
    }
    // The text of an element; null for any other node and when its first child is no text.
    const char *text() const
    {
        if (!is_element())
            return nullptr;
        const TiXmlNode *first = node_->FirstChild();
        return first != nullptr && first->Type() == TiXmlNode::TINYXML_TEXT ? first->Value() : nullptr;
    }
    // For the tools: the node of the XML library.
    const TiXmlNode *tree() const
    {
        return node_;
    }

private:
    const TiXmlNode *node_ = nullptr;
};

// What writers append to: an element of the reply.
using Element = TiXmlElement *;

} // namespace netpublic

#endif
