// A named value, or a group or list of them. Printing and JSON both start from it.
#ifndef NETPARAM_ITEM_H
#define NETPARAM_ITEM_H

#include "drawing/drawing.h"
#include "reading/document.h"

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

    // The member in the payload's memory, and the elements that it was read from; none for what was not read.
    std::size_t offset = 0, bytes = 0;
    std::string type;
    std::vector<Spot> origins;
};

} // namespace netparam

#endif
