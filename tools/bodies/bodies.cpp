#include "bodies.h"

#include "engine/matching.h"
#include "engine/member.h"

#include <tinyxml.h>

#include <algorithm>
#include <climits>
#include <cstring>

namespace bodies {

using namespace netpublic;

namespace {

// Does a child of the row's full name go to the row?
bool is_reachable(const Table &table, unsigned index)
{
    if (table.names != Names::beginnings)
        return true;
    const Row &wanted = table.row(index);
    const char *name = table.key(wanted);
    const Row *row = find_key(table, name);
    while (row != nullptr && row != &wanted)
        row = (table.flags & table_own_tests) != 0 ? find_own_test(table, name, *row) : nullptr;
    return row != nullptr;
}

void collect(const Table &table, const Path &around, std::vector<Path> &rows)
{
    for (unsigned i = 0; i < table.keys; ++i) {
        if (!is_reachable(table, i))
            continue;
        Path path = around;
        path.push_back({&table, i});
        rows.push_back(path);
        for (const Table *inside : {path.back().inside(), path.back().again()})
            if (inside != nullptr)
                collect(*inside, path, rows);
    }
}

std::string word_for(const WordTable &words)
{
    for (const auto &entry : words)
        if (entry.use != Use::write && entry.length != 0)
            return words.text(entry);
    return "";
}

// The rows whose elements a body holds, in their order.
std::vector<unsigned> body_rows(const Table &table, const Recipe &recipe)
{
    std::vector<unsigned> rows;
    if (recipe.as_written)
        for (unsigned place = 0; place < table.written; ++place)
            rows.push_back(table.ordered(place));
    else
        for (unsigned i = 0; i < table.keys; ++i)
            if (is_reachable(table, i))
                rows.push_back(i);
    return rows;
}

// The number of elements of a row in a complete body.
int usual_count(const Table &table, const Row &row)
{
    if (!is_list(row.kind))
        return 1;
    const int capacity = table.capacity(row);
    if (is_exact(row))
        return capacity;
    return capacity < 2 ? capacity : 2;
}

} // namespace

const Table *Step::inside() const
{
    return has_table(row().kind) && (row().flags & row_skipped) == 0 ? table->ref(row().ref).table : nullptr;
}

const Table *Step::again() const
{
    const Row *attached = table->attachment(row(), Kind::again);
    return attached != nullptr ? table->ref(attached->offset).table : nullptr;
}

std::string spelled(const Path &path)
{
    std::string text;
    for (const Step &step : path)
        text += std::string(text.empty() ? "" : "/") + step.key();
    return text;
}

bool leads_to(const Path &path, const Path &inner)
{
    return path.size() < inner.size() && std::equal(path.begin(), path.end(), inner.begin());
}

const Row *grid_of_side(const Table &table, const Row &side)
{
    for (unsigned i = 0; i < table.keys && side.kind == Kind::integer; ++i) {
        const Row &row = table.row(i);
        if (row.kind != Kind::grid)
            continue;
        const Limits &sides = table.limit(row.limits);
        if (static_cast<std::int32_t>(side.offset) == sides.low || static_cast<std::int32_t>(side.offset) == sides.high)
            return &row;
    }
    return nullptr;
}

bool is_exact(const Row &row)
{
    return is_list(row.kind) && (row.flags & list_exact) != 0;
}

std::vector<Path> readable_rows(const Table &table)
{
    std::vector<Path> rows;
    collect(table, {}, rows);
    return rows;
}

std::string usual_text(const Table &table, unsigned index, int place)
{
    const Row &row = table.row(index);
    const Detail &detail = table.detail(index);
    if (*detail.sample != '\0') {
        std::string text = detail.sample;
        for (std::size_t at = 0; (at = text.find('#')) != std::string::npos;)
            text.replace(at, 1, std::to_string(place));
        return text;
    }
    switch (row.kind) {
    case Kind::integer:
    case Kind::byte: {
        if ((row.flags & row_checked) == 0)
            return "7";
        const Limits &range = table.limit(row.limits);
        return std::to_string(range.low == INT_MIN ? range.high : range.low);
    }
    case Kind::place:
        return std::to_string(place);
    case Kind::flag:
        return "1";
    case Kind::real:
        return "0.5";
    case Kind::text:
    case Kind::counted_text:
    case Kind::view:
        return "t";
    case Kind::word:
    case Kind::mask:
    case Kind::events:
        return word_for(*table.ref(row.ref).words);
    case Kind::int_list:
        return "1,2";
    case Kind::converted:
        return detail.words != nullptr ? word_for(*detail.words) : "1";
    case Kind::grid:
        return "gUL/"; // 24 cells: what stands beside must say 4 x 6 or the like, as a sample
    default:
        return "7";
    }
}

namespace {

TiXmlElement *add_child(TiXmlElement &element, const char *name, const std::string &text)
{
    auto *child = new TiXmlElement(name);
    element.LinkEndChild(child);
    if (!text.empty())
        child->LinkEndChild(new TiXmlText(text.c_str()));
    return child;
}

int children_of(const TiXmlElement &element, const char *name)
{
    int count = 0;
    for (auto *child = element.FirstChildElement(name); child != nullptr; child = child->NextSiblingElement(name))
        ++count;
    return count;
}

TiXmlElement *nth_child(TiXmlElement &element, const char *name, int index)
{
    TiXmlElement *child = element.FirstChildElement(name);
    while (index-- > 0)
        child = child->NextSiblingElement(name);
    return child;
}

int count_for(const Path &path, const Recipe &recipe)
{
    const Row &row = path.back().row();
    const int wanted = recipe.count ? recipe.count(path) : -1;
    if (wanted >= 0)
        return wanted;
    const Table &table = *path.back().table;
    const Row *grid = grid_of_side(table, row);
    const bool needed = (row.flags & row_required) != 0 || is_exact(row) || row.kind == Kind::place ||
                        (grid != nullptr && (grid->flags & row_required) != 0);
    return recipe.required_only && !needed ? 0 : usual_count(table, row);
}

// `place` is the element's own among the items of its list.
void fill_item(TiXmlElement &element, const Table &table, const Recipe &recipe, Path &path, int place)
{
    if (recipe.stranger_first && recipe.stranger_first(table))
        add_child(element, "zz-nobody", "1");
    for (const unsigned i : body_rows(table, recipe)) {
        path.push_back({&table, i});
        // What other rows of the same element have put there is filled up.
        const int there = path.back().inside() != nullptr ? children_of(element, path.back().key()) : 0;
        const int count = std::max(count_for(path, recipe), there);
        for (int item = 0; item < count; ++item) {
            const char *text = recipe.text ? recipe.text(path) : nullptr;
            const char *key = path.back().key();
            const Table *inside = path.back().inside();
            if (text != nullptr || inside == nullptr) {
                TiXmlElement *child = add_child(element, key, text != nullptr ? text : usual_text(table, i, place));
                if (recipe.made)
                    recipe.made(*child, path);
                continue;
            }
            auto *child = item < there ? nth_child(element, key, item) : add_child(element, key, "");
            fill_item(*child, *inside, recipe, path, item);
            if (const Table *again = path.back().again())
                fill_item(*child, *again, recipe, path, item);
            if (recipe.made)
                recipe.made(*child, path);
        }
        path.pop_back();
    }
    if (recipe.stranger_last && recipe.stranger_last(table))
        add_child(element, "zz-nobody", "1");
}

} // namespace

void fill(TiXmlElement &element, const Table &table, const Recipe &recipe)
{
    Path path;
    fill_item(element, table, recipe, path, 0);
}

} // namespace bodies
