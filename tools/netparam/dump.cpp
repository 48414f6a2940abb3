#include "dump.h"

#include "picture.h"
#include "secrets.h"
#include "shapes.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace netparam {
namespace {

using netpublic::Detail;
using netpublic::Kind;
using netpublic::Row;
using netpublic::Shape;
using netpublic::Table;
using Json = nlohmann::ordered_json;

// A record and what is known of it. Row offsets count from `shift` bytes before it: rows may describe a
// record that holds this one.
struct View {
    const Table &table;
    const char *record;
    std::size_t shift;
    std::size_t size;
    bool show_secrets;

    const char *member(const Row &row) const
    {
        return record + row.offset - shift;
    }
    bool holds(const Row &row) const
    {
        return row.offset >= shift && row.offset - shift < size;
    }
};

std::vector<Item> dump_rows(const View &view);

// What the record itself says of a size, if it lies within the limits.
int size_beside(const View &view, const char *key, const char *other, int limit)
{
    for (unsigned i = 0; i < view.table.rows; ++i) {
        const Row &row = view.table.row(i);
        const std::string name = row.kind == Kind::integer ? view.table.key(row) : "";
        if (!view.holds(row) || (name != key && name != other))
            continue;
        const int size = load<std::int32_t>(view.member(row));
        if (size >= 1 && size <= limit)
            return size;
    }
    return limit;
}

// Elements of an array, up to the last one that is not all zero.
template <class Fill>
void set_elements(Item &item, const char *at, std::size_t size, std::size_t count, bool counted, Fill fill)
{
    if (!counted)
        while (count > 0 && all_zero(at + (count - 1) * size, size))
            --count;
    item.list = true;
    item.text = count == 0 ? "no items" : "";
    for (std::size_t i = 0; i < count; ++i) {
        Item element;
        element.name = item.name + "[" + std::to_string(i) + "]";
        fill(element, at + i * size);
        item.items.push_back(element);
    }
}

// Codes or bits that have words.
bool set_spelled(Item &item, const char *at, const Detail &detail, std::size_t count)
{
    constexpr std::size_t month = 31;
    const auto set_one = [&detail](Item &one, const char *value) {
        if (detail.shape == Shape::u32)
            set_mask(one, *detail.words, load<std::uint32_t>(value));
        else
            set_word(one, *detail.words,
                     detail.shape == Shape::u8 ? load<std::uint8_t>(value) : load<std::int32_t>(value));
    };
    if (detail.shape != Shape::u32 && detail.shape != Shape::i32 && detail.shape != Shape::u8)
        return false;
    if (count == 1)
        set_one(item, at);
    else if (count == month && detail.shape == Shape::i32)
        set_month(item, *detail.words, at, month);
    else
        set_elements(item, at, detail.element_size, count, false, set_one);
    return true;
}

// A member by its shape alone.
bool set_shaped(Item &item, const View &view, const char *at, const Detail &detail)
{
    const std::size_t first = detail.dimensions[0], second = detail.dimensions[1];
    const std::size_t count = first * second;
    if (detail.shown != nullptr) {
        const auto fill = [&](Item &element, const char *record) {
            element.items =
                dump_rows({*detail.shown, record, detail.shown_offset, detail.element_size, view.show_secrets});
        };
        if (count == 1)
            fill(item, at);
        else
            set_elements(item, at, detail.element_size, count, false, fill);
        return true;
    }
    const bool week = first == 7 && second == 24;
    if (detail.words != nullptr)
        return set_spelled(item, at, detail, count);
    if (detail.shape == Shape::characters && second == 1) {
        set_text(item, at, first);
    } else if (detail.shape == Shape::characters) {
        set_elements(item, at, second, first, false,
                     [&](Item &element, const char *text) { set_text(element, text, second); });
    } else if (count == 1) {
        return set_scalar(item, at, detail);
    } else if (detail.shape == Shape::u8 && second > 1) {
        set_grid(item, at, detail, [&view](const char *key, const char *other, int limit) {
            return size_beside(view, key, other, limit);
        });
    } else if (detail.shape == Shape::i32 && week) {
        set_week(item, at);
    } else if (detail.shape == Shape::hours && first == 7) {
        set_hours(item, at);
    } else if (detail.shape == Shape::section && week) {
        set_schedule(item, at);
    } else if (detail.shape >= Shape::i32 && detail.shape <= Shape::u8) {
        set_numbers(item, at, detail, count);
    } else if (detail.shape != Shape::none) {
        set_elements(item, at, detail.element_size, count, false,
                     [&](Item &element, const char *value) { set_scalar(element, value, detail); });
    } else {
        return false;
    }
    return true;
}

// -1 when nothing keeps the number of items.
int stored_count(const View &view, const Row &row)
{
    for (unsigned at = row.attached; at != 0; at = view.table.row(at).attached)
        if (view.table.row(at).kind == Kind::count)
            return std::clamp<int>(load<std::int32_t>(view.member(view.table.row(at))), 0, row.size);
    return -1;
}

// Only what has a direction to be crossed in is a line; all other points surround an area.
bool is_line(const Table &rule)
{
    for (unsigned i = 0; i < rule.keys; ++i)
        if (std::strcmp(rule.key(rule.row(i)), "direction") == 0)
            return true;
    return false;
}

// The items that say where they lie in the picture, each marked with the last digit of its id.
std::vector<Rectangle> rectangles_in(const std::vector<Item> &items)
{
    std::vector<Rectangle> rectangles;
    for (const Item &item : items) {
        const auto number = [&item](const char *name) -> std::optional<long long> {
            for (const Item &member : item.items)
                if (member.name == name && member.value.is_number_integer())
                    return member.value.get<long long>();
            return {};
        };
        const auto id = number("id"), left = number("topLeftX"), top = number("topLeftY"), width = number("width"),
                   height = number("height");
        if (left && top && width && height)
            rectangles.push_back(
                {static_cast<char>('0' + std::abs(id.value_or(0) % 10)), *left, *top, *width, *height});
    }
    return rectangles;
}

bool set_row(Item &item, const View &view, const Row &row, const Detail &detail)
{
    const char *at = view.member(row);
    const Table &table = view.table;
    switch (row.kind) {
    case Kind::word:
        set_word(item, *table.ref(row.ref).words, load<std::int32_t>(at));
        return true;
    case Kind::mask:
        set_mask(item, *table.ref(row.ref).words, load<std::uint32_t>(at));
        return true;
    case Kind::group: {
        const Table &inner = *table.ref(row.ref).table;
        item.items = dump_rows({inner, at, 0, inner.record_size, view.show_secrets});
        if (detail.shape == Shape::points)
            item.drawing = draw_points(load<net_smart_ai_points_t>(at), !is_line(table));
        return true;
    }
    case Kind::list: {
        const Table &inner = *table.ref(row.ref).table;
        const int count = stored_count(view, row);
        set_elements(item, at, inner.record_size, count < 0 ? row.size : static_cast<std::size_t>(count), count >= 0,
                     [&](Item &element, const char *record) {
                         element.items = dump_rows({inner, record, 0, inner.record_size, view.show_secrets});
                     });
        return true;
    }
    case Kind::int_items: {
        const int count = stored_count(view, row);
        set_numbers(item, at, detail, count < 0 ? row.size : static_cast<std::size_t>(count));
        return true;
    }
    case Kind::constant:
    case Kind::view:
    case Kind::count:
    case Kind::mark:
    case Kind::condition:
        return false;
    default:
        return set_shaped(item, view, at, detail);
    }
}

// Does an earlier row show the same? A field may have one row to be read by and another to be written by.
bool shown_before(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    for (unsigned i = 0; i < index; ++i) {
        const Row &earlier = table.row(i);
        const bool same_key = std::strcmp(table.key(earlier), table.key(row)) == 0;
        const bool same_member =
            std::strcmp(table.text(table.detail(i).member), table.text(table.detail(index).member)) == 0;
        if (row.kind == Kind::preset ? earlier.offset == row.offset : same_key && index >= table.keys)
            return true;
        if (earlier.offset == row.offset && (same_key || (same_member && row.kind != Kind::group)))
            return true;
    }
    // A preset inside a member that has a row of its own.
    return row.kind == Kind::preset && std::strpbrk(table.text(table.detail(index).member), "[.") != nullptr;
}

// A preset has no key of its own.
std::string name_of(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    return row.kind == Kind::preset ? table.text(table.detail(index).member) : table.key(row);
}

void hide(Item &item)
{
    set(item, hidden, hidden);
    item.items.clear();
    item.drawing.clear();
    item.list = false;
}

std::vector<Item> dump_rows(const View &view)
{
    std::vector<Item> items;
    for (unsigned i = 0; i < view.table.rows; ++i) {
        const Row &row = view.table.row(i);
        if (!view.holds(row) || (row.flags & netpublic::row_skipped) != 0 || shown_before(view.table, i))
            continue;
        Item item;
        item.name = name_of(view.table, i);
        if (!set_row(item, view, row, view.table.detail(i)))
            continue;
        if (item.list)
            item.drawing = draw_rectangles(rectangles_in(item.items));
        if (!view.show_secrets && is_secret(item.name) && item.items.empty())
            hide(item);
        items.push_back(item);
    }
    return items;
}

Json list_json(const std::vector<Item> &items)
{
    Json list = Json::array();
    for (const Item &item : items)
        list.push_back(item.items.empty() ? item.value : to_json(item.items));
    return list;
}

} // namespace

std::vector<Item> dump(const Table &table, const void *record, bool show_secrets)
{
    return dump_rows({table, static_cast<const char *>(record), 0, table.record_size, show_secrets});
}

Json to_json(const std::vector<Item> &items)
{
    Json object = Json::object();
    for (const Item &item : items)
        object[item.name] = item.list ? list_json(item.items) : item.items.empty() ? item.value : to_json(item.items);
    return object;
}

} // namespace netparam
