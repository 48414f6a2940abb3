#include "reading/dump.h"

#include "drawing/picture.h"
#include "model/facts.h"
#include "model/rows.h"
#include "reading/secrets.h"
#include "reading/shapes.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <optional>

namespace netparam {
namespace {

using netpublic::Detail;
using netpublic::Row;
using netpublic::Shape;
using netpublic::Table;
struct View : RecordView<const char> {
    bool show_secrets;
    const char *payload;
    const Trace *trace;

    // Another record of the same payload.
    View at(const RecordView<const char> &other) const
    {
        return {other, show_secrets, payload, trace};
    }
};

std::vector<Item> dump_rows(const View &view);

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

// -1 when nothing keeps the number of items.
int stored_count(const View &view, const Row &row)
{
    const Row *count = count_of(view.table, row);
    return count == nullptr ? -1
                            : std::clamp<int>(load<std::int32_t>(view.member(*count)), 0, view.table.capacity(row));
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

// A code or a set of bits.
void set_spelled(Item &item, const char *at, const Detail &detail, const netpublic::WordTable &words)
{
    if (detail.shape == Shape::u8)
        set_word(item, words, load<std::uint8_t>(at));
    else
        set_word(item, words, load<std::int32_t>(at));
}

void set_row(Item &item, const View &view, unsigned index)
{
    const Table &table = view.table;
    const Row &row = table.row(index);
    const Detail &detail = table.detail(index);
    const char *at = view.member(row);
    const std::size_t capacity = capacity_of(table, index);
    const int stored = stored_count(view, row);
    const std::size_t count = stored < 0 ? capacity : static_cast<std::size_t>(stored);
    const auto each = [&](std::size_t size, const std::function<void(Item &, const char *)> &fill) {
        set_elements(item, at, size, count, stored >= 0, fill);
    };
    const auto inner = [&](Item &element, const char *record) {
        const Table &of = *table.ref(row.ref).table;
        element.items = dump_rows(view.at({of, record, 0, of.record_size}));
    };
    const auto shown = [&](Item &element, const char *record) {
        element.items = dump_rows(view.at({*detail.shown, record, detail.shown_offset, detail.element_size}));
    };
    const auto spelled = [&](Item &element, const char *value) {
        set_spelled(element, value, detail, *row_words(table, row));
    };
    const auto mask = [&](Item &element, const char *value) {
        set_mask(element, *row_words(table, row), load<std::uint32_t>(value));
    };
    switch (form_of(table, index)) {
    case Form::word:
        return spelled(item, at);
    case Form::words:
        return each(detail.element_size, spelled);
    case Form::mask:
        return mask(item, at);
    case Form::masks:
        return each(detail.element_size, mask);
    case Form::month:
        return set_month(item, *row_words(table, row), at, static_cast<int>(capacity));
    case Form::group:
        inner(item, at);
        if (detail.shape == Shape::points)
            item.drawing = draw_points(load<net_smart_ai_points_t>(at), !is_line(table));
        return;
    case Form::list:
        return each(table.ref(row.ref).table->record_size, inner);
    case Form::record:
        return shown(item, at);
    case Form::records:
        return each(detail.element_size, shown);
    case Form::text:
        return set_text(item, at, capacity);
    case Form::texts:
        return set_elements(item, at, detail.dimensions[1], detail.dimensions[0], false,
                            [&](Item &element, const char *text) { set_text(element, text, detail.dimensions[1]); });
    case Form::scalar:
        return set_scalar(item, at, detail);
    case Form::scalars:
        return each(detail.element_size, [&](Item &element, const char *value) { set_scalar(element, value, detail); });
    case Form::numbers:
        return set_numbers(item, at, detail, count);
    case Form::grid:
        return set_grid(item, view, index);
    case Form::week:
        return set_week(item, at);
    case Form::hours:
        return set_hours(item, at);
    case Form::sets:
        return set_schedule(item, *reinterpret_cast<const time_section_t(*)[7][24]>(at));
    case Form::none:
        break;
    }
}

void hide(Item &item)
{
    set(item, hidden, hidden);
    item.items.clear();
    item.drawing = {};
    item.list = false;
}

bool has_origin(const Item &item)
{
    return !item.origins.empty() || std::any_of(item.items.begin(), item.items.end(), has_origin);
}

// Of what code of the message's own has read in an element: a child of the member's name. Others came from anywhere.
void set_origins(Item &item, const Trace &trace, const TiXmlNode *element)
{
    for (std::size_t i = 0; i < item.items.size() && element != nullptr; ++i) {
        Item &inner = item.items[i];
        const std::string key = inner.name.substr(0, inner.name.find('['));
        const auto children = trace.children(element, key);
        if (inner.list)
            for (std::size_t at = 0; at < std::min(children.size(), inner.items.size()); ++at)
                set_origins(inner.items[at], trace, children[at]);
        else if (inner.items.empty())
            for (const TiXmlNode *child : children)
                inner.origins.push_back(spot_of_text(*child));
        else if (children.size() == 1)
            set_origins(inner, trace, children.front());
    }
}

// What a function has made of an element's children.
bool is_wire(const Row &row)
{
    return row.kind == netpublic::Kind::wire || row.kind == netpublic::Kind::wires;
}

// Where the member lies and where it came from.
void set_place(Item &item, const View &view, unsigned index)
{
    const Row &row = view.table.row(index);
    item.offset = static_cast<std::size_t>(view.member(row) - view.payload);
    item.bytes = bytes_of(view.table, index);
    item.type = type_of(view.table, index);
    if (item.list && item.items.size() > 0) {
        const Detail &detail = view.table.detail(index);
        const bool texts = form_of(view.table, index) == Form::texts;
        const std::size_t size = item.bytes / (texts ? detail.dimensions[0] : capacity_of(view.table, index));
        for (std::size_t i = 0; i < item.items.size(); ++i) {
            item.items[i].offset = item.offset + i * size;
            item.items[i].bytes = size;
            item.items[i].type = item.type.substr(0, item.type.find('[')) +
                                 (texts ? "[" + std::to_string(detail.dimensions[1]) + "]" : "");
        }
    }
    if (view.trace == nullptr || has_origin(item))
        return;
    const Row *reader = &row;
    // What a row of the same name has read whose target is the record as a whole.
    for (unsigned i = 0; i < view.table.keys && view.trace->elements(view.member(*reader), view.table.key(row)).empty();
         ++i)
        if (const Row &other = view.table.row(i);
            is_wire(other) && std::strcmp(view.table.key(other), view.table.key(row)) == 0)
            reader = &other;
    const auto elements = view.trace->elements(view.member(*reader), view.table.key(row));
    if (item.items.empty())
        item.origins = view.trace->origins(view.member(*reader), view.table.key(row));
    else if (is_wire(*reader) && item.list && elements.size() == item.items.size())
        for (std::size_t i = 0; i < elements.size(); ++i)
            set_origins(item.items[i], *view.trace, elements[i]);
    else if (is_wire(*reader) && elements.size() == 1)
        set_origins(item, *view.trace, elements.front());
}

std::vector<Item> dump_rows(const View &view)
{
    std::vector<Item> items;
    for (unsigned i = 0; i < view.table.rows; ++i) {
        const Row &row = view.table.row(i);
        if (!view.holds(row) || !is_shown(view.table, i))
            continue;
        Item item;
        item.name = name_of(view.table, i);
        set_row(item, view, i);
        set_place(item, view, i);
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

std::vector<Item> dump(const Table &table, const void *record, bool show_secrets, const void *payload,
                       const Trace *trace)
{
    return dump_rows({{table, static_cast<const char *>(record), 0, table.record_size},
                      show_secrets,
                      static_cast<const char *>(payload),
                      trace});
}

Json to_json(const std::vector<Item> &items)
{
    Json object = Json::object();
    for (const Item &item : items)
        object[item.name] = item.list ? list_json(item.items) : item.items.empty() ? item.value : to_json(item.items);
    return object;
}

} // namespace netparam
