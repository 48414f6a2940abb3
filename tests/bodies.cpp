#include "bodies.h"

#include "engine/matching.h"
#include "engine/member.h"

#include <tinyxml.h>

#include <climits>
#include <cstring>

namespace test {

using namespace netpublic;

namespace {

void collect(const Table &table, const std::vector<PlacedRow> &around, std::vector<PlacedRow> &rows)
{
    for (unsigned i = 0; i < table.keys; ++i) {
        if (!is_reachable(table, i))
            continue;
        rows.push_back({&table, i, around});
        if (!has_table(table.row(i).kind) || around.size() > 8)
            continue;
        std::vector<PlacedRow> inner = around;
        inner.push_back({&table, i, {}});
        collect(*table.ref(table.row(i).ref).table, inner, rows);
    }
}

std::string word_for(const WordTable &words)
{
    for (const auto &entry : words)
        if (entry.use != Use::write && entry.length != 0)
            return words.text(entry);
    return "";
}

// The number of elements of a row in a complete body.
int usual_count(const Table &table, const Row &row)
{
    if (!is_list(row.kind))
        return 1;
    const int capacity = table.capacity(row);
    if ((row.flags & list_exact) != 0)
        return capacity;
    return capacity < 2 ? capacity : 2;
}

} // namespace

std::string PlacedRow::path() const
{
    std::string text;
    for (const PlacedRow &outer : around)
        text += std::string(outer.table->key(outer.row())) + "/";
    return text + table->key(row());
}

bool is_reachable(const Table &table, unsigned index)
{
    if (table.names != Names::beginnings)
        return true;
    const char *name = table.key(table.row(index));
    unsigned row = find_key(table, name, 0);
    while (row != no_row && row != index)
        row = (table.flags & table_own_tests) != 0 ? find_key(table, name, next_chain(table, row)) : no_row;
    return row == index;
}

std::vector<PlacedRow> readable_rows(const Table &table)
{
    std::vector<PlacedRow> rows;
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
        return word_for(*table.ref(row.ref).words);
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

// `place` is the element's own among the items of its list.
void fill_item(TiXmlElement &element, const Table &table, const Recipe &recipe, int place)
{
    for (unsigned i = 0; i < table.keys; ++i) {
        const Row &row = table.row(i);
        if (!is_reachable(table, i))
            continue;
        int count = recipe.count ? recipe.count(table, i) : -1;
        if (count < 0 && recipe.required_only) {
            const bool exact = is_list(row.kind) && (row.flags & list_exact) != 0;
            const bool needed = (row.flags & row_required) != 0 || exact || row.kind == Kind::place;
            count = exact ? usual_count(table, row) : needed ? 1 : 0;
        } else if (count < 0) {
            count = usual_count(table, row);
        }
        for (int item = 0; item < count; ++item) {
            auto *child = new TiXmlElement(table.key(row));
            element.LinkEndChild(child);
            const char *text = recipe.text ? recipe.text(table, i) : nullptr;
            if (text != nullptr) {
                if (*text != '\0')
                    child->LinkEndChild(new TiXmlText(text));
            } else if (has_table(row.kind)) {
                fill_item(*child, *table.ref(row.ref).table, recipe, item);
            } else if (const std::string usual = usual_text(table, i, place); !usual.empty()) {
                child->LinkEndChild(new TiXmlText(usual.c_str()));
            }
        }
    }
    if (const char *name = recipe.stranger ? recipe.stranger(table) : nullptr) {
        auto *stranger = new TiXmlElement(name);
        stranger->LinkEndChild(new TiXmlText("1"));
        element.LinkEndChild(stranger);
    }
}

} // namespace

void fill(TiXmlElement &element, const Table &table, const Recipe &recipe)
{
    fill_item(element, table, recipe, 0);
}

} // namespace test
