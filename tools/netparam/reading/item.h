// A named value, or a group or list of them. Printing and JSON both start from it.
#ifndef NETPARAM_ITEM_H
#define NETPARAM_ITEM_H

#include "drawing/drawing.h"
#include "model/json.h"
#include "reading/document.h"

#include <string>
#include <vector>

namespace netparam {

struct Item {
    std::string name; // the row's key, with an index in a list
    std::string text; // the value for people
    Json value;       // and for programs; unused where there are items
    Drawing drawing;
    std::vector<Item> items;
    bool list = false; // the items are one name's, so they are an array

    // The member in the payload's memory, and the elements that it was read from; none for what was not read.
    std::size_t offset = 0, bytes = 0;
    std::string type;
    std::vector<Spot> origins;
};

// Calls use(path, item) for each item and then for those in it. Items of lists bear the list's name themselves.
template <class Use> void for_items(const std::vector<Item> &items, const Use &use, const std::string &path = "")
{
    for (const Item &item : items) {
        use(path + item.name, item);
        for_items(item.items, use, item.list ? path : path + item.name + "/");
    }
}

} // namespace netparam

#endif
