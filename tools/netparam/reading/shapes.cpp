#include "reading/shapes.h"

#include "drawing/draw.h"
#include "drawing/picture.h"
#include "model/text.h"

#include <net_types.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <map>

namespace netparam {
namespace {

using netpublic::Detail;
using netpublic::Shape;
std::string number_text(float value)
{
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

// JSON has no number for what is none.
Json real_json(float value)
{
    return std::isfinite(value) ? Json(std::strtod(number_text(value).c_str(), nullptr)) : Json(number_text(value));
}

// The spelling, if the code can be told from it.
Json word_json(const netpublic::WordTable &words, int code)
{
    const char *word = netpublic::word_of(words, code);
    int said = 0;
    return word != nullptr && code_of(words, word, said) && said == code ? Json(word) : Json(code);
}

void set_points(Item &item, const net_smart_ai_points_t &points)
{
    std::string text = std::to_string(points.pointNum) + " points";
    Json list = Json::array();
    for (int i = 0; i < std::min(points.pointNum, 8); ++i) {
        const point_t &point = points.points[i];
        text += " (" + number_text(point.x) + ", " + number_text(point.y) + ")";
        list.push_back({real_json(point.x), real_json(point.y)});
    }
    set(item, text, list);
    item.drawing = draw_points(points, true);
}

// A record whose members nobody names.
void set_unnamed(Item &item, const char *bytes, std::size_t size)
{
    constexpr int most = 12;
    Json words = Json::array();
    std::string text = std::to_string(size) + " bytes";
    int shown = 0;
    for (std::size_t at = 0; at + 4 <= size; at += 4) {
        const auto word = load<std::int32_t>(bytes + at);
        words.push_back(word);
        if (word != 0 && ++shown <= most)
            text += ", [" + std::to_string(at) + "]=" + std::to_string(word);
    }
    set(item, text + (shown > most ? ", ..." : shown == 0 ? ", all zero" : ""), words);
}

// Rows of cells as text where only 0 and 1 occur, else as numbers.
Json cells_json(int columns, int rows, const std::function<int(int, int)> &cell)
{
    Json lines = Json::array();
    for (int row = 0; row < rows; ++row) {
        Json numbers = Json::array();
        std::string text;
        for (int column = 0; column < columns; ++column) {
            numbers.push_back(cell(column, row));
            text += static_cast<char>('0' + (cell(column, row) & 1));
        }
        const bool flags = std::all_of(numbers.begin(), numbers.end(), [](const Json &n) { return n == 0 || n == 1; });
        lines.push_back(flags ? Json(text) : numbers);
    }
    return lines;
}

char hour_mark(int value)
{
    return value == 0 ? '.' : value == 1 ? '#' : value > 1 && value < 10 ? static_cast<char>('0' + value) : '+';
}

// Seven days of 24 numbers each.
void fill_week(Item &item, const std::function<int(int hour, int day)> &cell)
{
    int armed = 0;
    for (int slot = 0; slot < 7 * 24; ++slot)
        armed += cell(slot % 24, slot / 24) != 0;
    set(item, std::to_string(armed) + " of 168 hours", cells_json(24, 7, cell));
    item.drawing = draw_week([&](int day, int hour) { return hour_mark(cell(hour, day)); });
}

} // namespace

bool all_zero(const char *bytes, std::size_t size)
{
    return std::all_of(bytes, bytes + size, [](char byte) { return byte == 0; });
}

void set(Item &item, const std::string &text, Json value)
{
    item.text = text;
    item.value = std::move(value);
}

void set_text(Item &item, const char *text, std::size_t size)
{
    const std::string value(text, strnlen(text, size));
    set(item, in_quotes(value) + (value.size() == size ? " (not terminated)" : ""), value);
    // A flag for each hour of the week.
    if (value.size() == 7 * 24 && value.find_first_not_of("01") == std::string::npos)
        item.drawing = draw_week([&](int day, int hour) {
            return value[static_cast<std::size_t>(day) * 24 + static_cast<std::size_t>(hour)] == '0' ? '.' : '#';
        });
}

void set_scalar(Item &item, const char *at, const Detail &detail)
{
    switch (detail.shape) {
    case Shape::i32:
        return set(item, std::to_string(load<std::int32_t>(at)), load<std::int32_t>(at));
    case Shape::u32:
        return set(item, std::to_string(load<std::uint32_t>(at)), load<std::uint32_t>(at));
    case Shape::i64:
        return set(item, std::to_string(load<std::int64_t>(at)), load<std::int64_t>(at));
    case Shape::u64:
        return set(item, std::to_string(load<std::uint64_t>(at)), load<std::uint64_t>(at));
    case Shape::f32:
        return set(item, number_text(load<float>(at)), real_json(load<float>(at)));
    case Shape::u8:
        return set(item, std::to_string(load<std::uint8_t>(at)), load<std::uint8_t>(at));
    case Shape::characters:
        return set_text(item, at, 1);
    case Shape::counted: {
        const auto text = load<net_counted_text_t>(at);
        set_text(item, text.text, sizeof text.text);
        if (text.capacity == 0 && text.text[0] == '\0')
            item.value = nullptr; // never set
        break;
    }
    case Shape::section:
        return set(item, alarm_types_of(load<time_section_t>(at)), alarm_types_of(load<time_section_t>(at)));
    case Shape::points:
        return set_points(item, load<net_smart_ai_points_t>(at));
    case Shape::schedule: {
        const auto schedule = load<net_schedule_t>(at);
        set_schedule(item, schedule.section);
        item.text = alarm_types_of(schedule.types);
        item.value = Json{{"types", item.text}, {"section", item.value}};
        break;
    }
    case Shape::record:
        return set_unnamed(item, at, detail.element_size);
    case Shape::hours:
    case Shape::none:
        break;
    }
}

void set_numbers(Item &item, const char *at, const Detail &detail, std::size_t count)
{
    constexpr std::size_t most = 64;
    std::vector<std::string> texts;
    Json values = Json::array();
    std::size_t used = 0;
    for (std::size_t i = 0; i < count; ++i) {
        Item number;
        set_scalar(number, at + i * detail.element_size, detail);
        values.push_back(number.value);
        texts.push_back(number.text);
        if (!all_zero(at + i * detail.element_size, detail.element_size))
            used = i + 1;
    }
    const std::size_t shown = std::min(used, most);
    texts.resize(shown);
    std::string text = joined(texts, ",");
    if (shown < used)
        text += ",...";
    if (used < count)
        text += (text.empty() ? "all " : " and ") + std::to_string(count - used) + " zeros";
    set(item, text, values);
}

void set_grid(Item &item, const RecordView<const char> &view, unsigned index)
{
    const GridLayout layout(view.table.detail(index));
    const char *at = view.member(view.table.row(index));
    const auto cell = [=](int column, int row) {
        return static_cast<int>(static_cast<unsigned char>(at[layout.index(column, row)]));
    };
    const int columns = size_beside(view, "width", "columns", layout.columns);
    const int rows = size_beside(view, "height", "rows", layout.rows);
    int set_cells = 0;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            set_cells += cell(column, row) != 0;
    const auto outside = static_cast<int>(
        std::count_if(at, at + layout.columns * layout.rows, [](char byte) { return byte != 0; }) - set_cells);
    item.text =
        std::to_string(columns) + " x " + std::to_string(rows) + " cells, " + std::to_string(set_cells) + " set";
    if (outside > 0)
        item.text += "; " + std::to_string(outside) + " more set outside";
    item.value = outside > 0 ? cells_json(layout.columns, layout.rows, cell) : cells_json(columns, rows, cell);
    item.drawing = draw_grid(columns, rows, cell);
    if (set_cells == 0)
        item.drawing.lines.clear();
}

void set_week(Item &item, const char *at)
{
    fill_week(item, [at](int hour, int day) {
        return load<std::int32_t>(at + (static_cast<std::size_t>(day) * 24 + static_cast<std::size_t>(hour)) * 4);
    });
}

void set_word(Item &item, const netpublic::WordTable &words, int code)
{
    const char *word = netpublic::word_of(words, code);
    if (word != nullptr)
        set(item, std::string(word) + " (" + std::to_string(code) + ")", word_json(words, code));
    else
        set(item, std::to_string(code) + " (has no word)", code);
}

void set_mask(Item &item, const netpublic::WordTable &words, unsigned int mask)
{
    std::vector<std::string> names;
    unsigned int unnamed = mask;
    for (const auto &word : words) {
        const auto bits = static_cast<unsigned int>(word.code());
        if (bits == 0 || (mask & bits) != bits || (unnamed & bits) == 0)
            continue; // a second spelling says nothing new
        names.emplace_back(words.text(word));
        unnamed &= ~bits;
    }
    char number[16];
    std::snprintf(number, sizeof number, "0x%x", mask);
    const std::string text = mask == 0 ? "none" : joined(names, ",");
    set(item, text + (text.empty() ? "" : " ") + "(" + number + ")", unnamed == 0 ? Json(text) : Json(mask));
}

void set_hours(Item &item, const char *at)
{
    fill_week(item, [at](int hour, int day) {
        return static_cast<int>(load<std::uint32_t>(at + static_cast<std::size_t>(day) * 4) >> hour & 1U);
    });
}

void set_month(Item &item, const netpublic::WordTable &words, const char *at, int days)
{
    Legend legend;
    std::map<int, char> letters;
    for (const auto &entry : words) {
        const std::string word = words.text(entry);
        char letter = word == "none" ? '.' : word.front();
        for (const auto &other : letters)
            if (other.second == letter)
                letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        letters[entry.code()] = letter;
        legend.emplace_back(letter, word);
    }
    const auto code = [at](int day) { return load<std::int32_t>(at + static_cast<std::size_t>(day) * 4); };
    int recorded = 0;
    Json values = Json::array();
    for (int day = 0; day < days; ++day) {
        recorded += code(day) > 0;
        values.push_back(word_json(words, code(day)));
    }
    set(item, std::to_string(recorded) + " of " + std::to_string(days) + " days", values);
    const auto mark = [&](int day) {
        const auto found = letters.find(code(day));
        return found != letters.end() ? found->second : code(day) < 0 ? '-' : '?';
    };
    item.drawing = draw_month(days, mark, legend);
    if (recorded == 0)
        item.drawing.lines.clear();
}

void set_schedule(Item &item, const time_section_t (&section)[7][24])
{
    Json days = Json::array();
    for (const auto &day : section) {
        Json hours = Json::array();
        for (const time_section_t &hour : day)
            hours.push_back(alarm_types_of(hour));
        days.push_back(hours);
    }
    item.value = days;
    item.drawing = draw_schedule(section);
}

} // namespace netparam
