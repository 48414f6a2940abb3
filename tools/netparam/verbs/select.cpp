#include "verbs/select.h"

#include "model/failure.h"
#include "model/nearest.h"

namespace netparam {
namespace {

std::vector<Item> filtered(const std::vector<Item> &items, const std::string &path, const std::string &wanted)
{
    std::vector<Item> kept;
    for (Item item : items) {
        const std::string name = path + item.name;
        if (!lies_within(name, wanted)) {
            item.items = filtered(item.items, item.list ? path : name + "/", wanted);
            item.drawing = {};
            if (item.items.empty())
                continue;
        }
        kept.push_back(item);
    }
    return kept;
}

} // namespace

std::vector<Item> only(const std::vector<Item> &items, const std::string &path)
{
    std::vector<Item> kept = filtered(items, "", path);
    if (!kept.empty())
        return kept;
    std::vector<std::string> paths;
    for_items(items, [&](const std::string &one, const Item &item) {
        if (item.items.empty())
            paths.push_back(one);
    });
    throw Failure(exit_usage, "the payload has no " + in_quotes(path) + meant(path, paths));
}

void print_flat(std::ostream &out, const std::vector<Item> &items)
{
    for_items(items, [&](const std::string &path, const Item &item) {
        if (!item.items.empty())
            return;
        const bool drawn = !item.drawing.cells.empty();
        out << path << " = " << (drawn ? item.text : item.value.dump(-1, ' ', true, Json::error_handler_t::replace))
            << '\n';
    });
}

} // namespace netparam
