#include "verbs/select.h"

#include "model/failure.h"
#include "model/nearest.h"

#include <functional>

namespace netparam {
namespace {

// Is the one path the other's beginning?
bool leads_to(const std::string &path, const std::string &inner)
{
    return inner.compare(0, path.size(), path) == 0 &&
           (inner.size() == path.size() || inner[path.size()] == '/' || inner[path.size()] == '[');
}

std::vector<Item> filtered(const std::vector<Item> &items, const std::string &path, const std::string &wanted)
{
    std::vector<Item> kept;
    for (Item item : items) {
        const std::string name = path + item.name;
        if (!leads_to(wanted, name)) {
            item.items = filtered(item.items, item.list ? path : name + "/", wanted);
            item.drawing = {};
            if (item.items.empty())
                continue;
        }
        kept.push_back(item);
    }
    return kept;
}

using Use = std::function<void(const std::string &path, const Item &item)>;

void for_leaves(const std::vector<Item> &items, const std::string &path, const Use &use)
{
    for (const Item &item : items)
        if (item.items.empty())
            use(path + item.name, item);
        else
            for_leaves(item.items, item.list ? path : path + item.name + "/", use);
}

} // namespace

std::vector<Item> only(const std::vector<Item> &items, const std::string &path)
{
    std::vector<Item> kept = filtered(items, "", path);
    if (!kept.empty())
        return kept;
    std::vector<std::string> paths;
    for_leaves(items, "", [&](const std::string &one, const Item &) { paths.push_back(one); });
    const auto near = nearest(path, paths, 1);
    throw Failure(exit_usage, "the payload has no " + in_quotes(path) +
                                  (near.empty() ? "" : "; did you mean " + near.front() + "?"));
}

void print_flat(std::ostream &out, const std::vector<Item> &items)
{
    for_leaves(items, "", [&](const std::string &path, const Item &item) {
        const bool drawn = !item.drawing.cells.empty();
        out << path << " = "
            << (drawn ? item.text : item.value.dump(-1, ' ', true, nlohmann::ordered_json::error_handler_t::replace))
            << '\n';
    });
}

} // namespace netparam
