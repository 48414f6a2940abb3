#include "ground/node.h"

#include <cstring>

namespace netpublic {

Node Node::child(const char *name) const
{
    Node found = first_child();
    while (found && std::strcmp(found.name(), name) != 0)
        found = found.next_sibling();
    return found;
}

const char *Node::tree_text() const
{
    if (!is_element())
        return nullptr;
    const TiXmlNode *first = tree()->FirstChild();
    return first != nullptr && first->Type() == TiXmlNode::TINYXML_TEXT ? first->Value() : nullptr;
}

const char *Node::token_name() const
{
    const Token *own = token();
    return is_token_text() ? own->at + own->distance() : own->at;
}

bool Node::token_is_element() const
{
    return !is_token_text() && (token()->link & (Token::text | Token::other)) == 0;
}

Node Node::token_first_child() const
{
    const Token *own = token();
    Node child;
    if (is_token_text())
        return child;
    if ((own->link & Token::has_text) != 0)
        child.word_ = word_ | text_tag;
    else if ((own->link & Token::has_children) != 0)
        child = Node(own + 1);
    return child;
}

Node Node::token_next_sibling() const
{
    const Token *own = token();
    if (is_token_text() || (own->link & Token::has_sibling) == 0)
        return {};
    return Node(own + ((own->link & Token::has_children) != 0 ? own->distance() : 1));
}

const char *Node::token_text() const
{
    const Token *own = token();
    if (is_token_text())
        return nullptr;
    if ((own->link & Token::has_text) != 0)
        return own->at + own->distance();
    return (own->link & Token::has_children) != 0 && (own[1].link & Token::text) != 0 ? own[1].at : nullptr;
}

} // namespace netpublic
