// What a payload holds and the body that is written from it does not.
#ifndef NETPARAM_LOST_H
#define NETPARAM_LOST_H

#include "reading/item.h"
#include "reading/session.h"

#include <string>
#include <vector>

namespace netparam {

struct Lost {
    std::string path;  // of the member, or of a record all of whose members are lost
    std::string value; // fit for the terminal
    std::string text;  // "does not reach the body", "comes back as 96"
};

// Of a payload whose body has been written: members that differ from what the initialiser leaves and do not show in
// the body, and those that the parser makes something else of, if there is one that accepts the body.
std::vector<Lost> lost_members(const Session &session, const Options &options, const TiXmlElement &body);

} // namespace netparam

#endif
