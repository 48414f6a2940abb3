// A named value, or a group or list of them. Printing and JSON both start from it.
#ifndef NETPARAM_ITEM_H
#define NETPARAM_ITEM_H

#include "drawing.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace netparam {

struct Item {
    std::string name;             // the row's key, with an index in a list
    std::string text;             // the value for people
    nlohmann::ordered_json value; // and for programs; unused where there are items
    Drawing drawing;
    std::vector<Item> items;
    bool list = false; // the items are one name's, so they are an array
};

} // namespace netparam

#endif
