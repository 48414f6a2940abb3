#include "reading/compare.h"

#include "drawing/draw.h"

#include <algorithm>

namespace netparam {
namespace {

using Items = std::vector<Item>;

const Item *find(const Items &items, const std::string &name)
{
    const auto found = std::find_if(items.begin(), items.end(), [&](const Item &item) { return item.name == name; });
    return found != items.end() ? &*found : nullptr;
}

void compare(const Items &a, const Items &b, const std::string &path, std::vector<Difference> &found);

void compare(const Item *a, const Item *b, const std::string &path, std::vector<Difference> &found)
{
    static const Items none;
    const Item &known = a != nullptr ? *a : *b;
    const bool inner = (a != nullptr && !a->items.empty()) || (b != nullptr && !b->items.empty());
    if (inner)
        compare(a != nullptr ? a->items : none, b != nullptr ? b->items : none,
                (a != nullptr && a->list) || (b != nullptr && b->list) ? path : path + known.name + "/", found);
    else if (a == nullptr || b == nullptr || a->value != b->value)
        found.push_back({path + known.name, a, b});
}

void compare(const Items &a, const Items &b, const std::string &path, std::vector<Difference> &found)
{
    for (const Item &item : a)
        compare(&item, find(b, item.name), path, found);
    for (const Item &item : b)
        if (find(a, item.name) == nullptr)
            compare(nullptr, &item, path, found);
}

bool has_cells(const Item *item)
{
    return item != nullptr && !item->drawing.cells.empty();
}

// Marks of different sets may look alike, so the value is what counts.
Json cell_of(const Item &item, std::size_t row, std::size_t column)
{
    const auto at = [](const Json &cells, std::size_t index) {
        return cells.is_string() ? Json(cells.get_ref<const std::string &>()[index] - '0') : cells[index];
    };
    const Json &cells = item.value.is_object() ? item.value["section"] : item.value;
    if (cells.is_string() || item.drawing.kind == Drawing::Kind::month)
        return at(cells, row * item.drawing.cells[0].size() + column);
    return at(cells[row], column);
}

} // namespace

std::vector<Difference> differences(const Items &a, const Items &b)
{
    std::vector<Difference> found;
    compare(a, b, "", found);
    return found;
}

CellDifference compare_cells(const Difference &difference)
{
    CellDifference result;
    if (!has_cells(difference.a) || !has_cells(difference.b))
        return result;
    const Drawing &a = difference.a->drawing, &b = difference.b->drawing;
    if (a.cells.size() != b.cells.size() || a.cells[0].size() != b.cells[0].size())
        return result;
    const auto mark = [&](std::size_t row, std::size_t column) {
        const char in_a = a.cells[row][column], in_b = b.cells[row][column];
        if (cell_of(*difference.a, row, column) == cell_of(*difference.b, row, column))
            return a.kind == Drawing::Kind::sets && in_a != '.' ? '#' : in_a; // letters need a legend
        ++result.cells;
        return in_b == '.' ? '-' : in_a == '.' ? '+' : '!';
    };
    if (a.kind == Drawing::Kind::grid || a.kind == Drawing::Kind::month) {
        for (std::size_t row = 0; row < a.cells.size(); ++row) {
            result.overlay.emplace_back();
            for (std::size_t column = 0; column < a.cells[row].size(); ++column)
                result.overlay.back() += mark(row, column);
        }
    } else {
        result.overlay = draw_week([&](int day, int hour) {
                             return mark(static_cast<std::size_t>(day), static_cast<std::size_t>(hour));
                         }).lines;
    }
    return result;
}

} // namespace netparam
