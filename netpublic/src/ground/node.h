// What the engine reads: a node of the XML library's tree, or of a scanned text. No reader knows which.
#ifndef NETPUBLIC_NODE_H
#define NETPUBLIC_NODE_H

#include "ground/tree.h"

#include <cstdint>

namespace netpublic {

// One node of a scanned text. The children follow their parent, so that distances between tokens say all;
// they stay right when the array moves. An element with nothing in it but a text is one token.
struct Token {
    const char *at;     // the element's name, the text, or the value of anything else; terminated
    std::uint32_t link; // the flags below, and a distance above them

    static constexpr std::uint32_t has_sibling = 1;
    static constexpr std::uint32_t has_children = 2; // the distance is that to the next sibling, in tokens
    static constexpr std::uint32_t has_text = 4;     // and nothing else: the distance from name to text, in bytes
    static constexpr std::uint32_t text = 8;         // or CDATA
    static constexpr std::uint32_t other = 16;       // a comment, a declaration, or what XML does not know
    static constexpr std::uint32_t flags = 31;
    static constexpr int flag_bits = 5;

    std::uint32_t distance() const
    {
        return link >> flag_bits;
    }
};

// A tree's node; or a token (bit 0); or the text of a token that has nothing else (bits 0 and 1). The text or
// the tree must outlive it. A null node may only be asked whether it is one.
class Node {
public:
    Node() = default;
    Node(const TiXmlNode *node) : word_(reinterpret_cast<std::uintptr_t>(node)) {}
    explicit Node(const Token *token) : word_(reinterpret_cast<std::uintptr_t>(token) | token_tag) {}

    explicit operator bool() const
    {
        return word_ != 0;
    }
    bool operator==(Node other) const
    {
        return word_ == other.word_;
    }
    // How the node passes through an interface that names the XML library's type; not to be dereferenced.
    TiXmlNode *handle() const
    {
        return pointer_in<TiXmlNode>(word_);
    }

    // An element's name, a text, a comment's inside; what the XML library calls the value. Never null.
    const char *name() const
    {
        return name_of(*this);
    }
    bool is_element() const
    {
        return is_token() ? !is_token_text() && (token()->link & (Token::text | Token::other)) == 0
                          : tree()->Type() == TiXmlNode::TINYXML_ELEMENT;
    }
    Node first_child() const
    {
        return first_child_of(*this);
    }
    Node next_sibling() const
    {
        return next_sibling_of(*this);
    }
    // The text of an element whose first child is one; else null.
    const char *text() const
    {
        return text_of(*this);
    }
    // The first child of exactly this name, case included, or a null node.
    Node child(const char *name) const;
    // For the tools, which have trees: the node of the XML library.
    const TiXmlNode *tree() const
    {
        return pointer_in<const TiXmlNode>(word_);
    }

private:
    static constexpr std::uintptr_t token_tag = 1;
    static constexpr std::uintptr_t text_tag = 2;

    bool is_token() const
    {
        return (word_ & token_tag) != 0;
    }
    bool is_token_text() const
    {
        return (word_ & text_tag) != 0;
    }
    const Token *token() const
    {
        return pointer_in<const Token>(word_ & ~(token_tag | text_tag));
    }
    // They take nodes by value: one whose address is taken would have to lie in memory wherever it is used.
    static const char *name_of(Node node);
    static const char *text_of(Node node);
    static Node first_child_of(Node node);
    static Node next_sibling_of(Node node);

    std::uintptr_t word_ = 0;
};

inline const char *Node::name_of(Node node)
{
    if (!node.is_token())
        return node.tree()->Value();
    const Token *own = node.token();
    return node.is_token_text() ? own->at + own->distance() : own->at;
}

inline const char *Node::text_of(Node node)
{
    if (node.is_token()) {
        const Token *own = node.token();
        if (node.is_token_text())
            return nullptr;
        if ((own->link & Token::has_text) != 0)
            return own->at + own->distance();
        return (own->link & Token::has_children) != 0 && (own[1].link & Token::text) != 0 ? own[1].at : nullptr;
    }
    if (!node.is_element())
        return nullptr;
    const TiXmlNode *first = node.tree()->FirstChild();
    return first != nullptr && first->Type() == TiXmlNode::TINYXML_TEXT ? first->Value() : nullptr;
}

inline Node Node::first_child_of(Node node)
{
    if (!node.is_token())
        return node.tree()->FirstChild();
    const Token *own = node.token();
    Node child;
    if (node.is_token_text())
        return child;
    if ((own->link & Token::has_text) != 0)
        child.word_ = node.word_ | text_tag;
    else if ((own->link & Token::has_children) != 0)
        child = Node(own + 1);
    return child;
}

inline Node Node::next_sibling_of(Node node)
{
    if (!node.is_token())
        return node.tree()->NextSibling();
    const Token *own = node.token();
    if (node.is_token_text() || (own->link & Token::has_sibling) == 0)
        return {};
    return Node(own + ((own->link & Token::has_children) != 0 ? own->distance() : 1));
}

} // namespace netpublic

#endif
