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

} // namespace netpublic
