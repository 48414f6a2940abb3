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

const char *Node::text_of(Node node)
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

const char *Node::token_text_name(Node node)
{
    return node.token()->at + node.token()->distance();
}

Node Node::first_child_of(Node token)
{
    const Token *own = token.token();
    Node child;
    if (token.is_token_text())
        return child;
    if ((own->link & Token::has_text) != 0)
        child.word_ = token.word_ | text_tag;
    else if ((own->link & Token::has_children) != 0)
        child = Node(own + 1);
    return child;
}

Node Node::token_behind(Node node)
{
    const Token *own = node.token();
    if (node.is_token_text() || (own->link & Token::has_sibling) == 0)
        return {};
    return Node(own + ((own->link & Token::has_children) != 0 ? own->distance() : 1));
}

} // namespace netpublic
