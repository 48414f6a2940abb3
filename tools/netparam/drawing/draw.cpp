#include "drawing/draw.h"

#include "values/tables.h"

#include <net_xml_public.h>

#include <algorithm>

namespace netparam {

namespace {

constexpr char beyond_legend = '+';
constexpr std::size_t letters = 26;

char cell_mark(int value)
{
    return value == 0 ? '.' : value == 1 ? '#' : '?'; // only 0 and 1 mean something
}

} // namespace

Drawing draw_grid(int columns, int rows, const std::function<int(int column, int row)> &cell)
{
    Drawing drawing;
    drawing.kind = Drawing::Kind::grid;
    for (int row = 0; row < rows; ++row) {
        std::string line;
        for (int column = 0; column < columns; ++column)
            line += cell_mark(cell(column, row));
        drawing.cells.push_back(line);
    }
    drawing.lines = drawing.cells;
    return drawing;
}

Drawing draw_week(const std::function<char(int day, int hour)> &mark)
{
    Drawing drawing;
    drawing.kind = Drawing::Kind::week;
    drawing.lines = {"           0     6     12    18"};
    for (int day = 0; day < 7; ++day) {
        std::string line = netpublic::word_of(netpublic::weekdays, day), hours;
        line.resize(11, ' ');
        for (int hour = 0; hour < 24; ++hour)
            hours += mark(day, hour);
        drawing.cells.push_back(hours);
        drawing.lines.push_back(line + hours);
    }
    return drawing;
}

Drawing draw_month(int days, const std::function<char(int day)> &mark, const Legend &legend)
{
    std::string scale = "1   5    10   15   20   25   30", line, words;
    scale.resize(static_cast<std::size_t>(std::clamp(days, 0, 31)), ' ');
    for (int day = 0; day < days; ++day)
        line += mark(day);
    for (const auto &[letter, word] : legend)
        words += (words.empty() ? "" : ", ") + std::string(1, letter) + " = " + word;
    Drawing drawing;
    drawing.kind = Drawing::Kind::month;
    drawing.lines = {scale, line, words};
    drawing.cells = {line};
    drawing.legend = legend;
    return drawing;
}

std::string alarm_types_of(const time_section_t &set)
{
    std::string types;
    for (int code = 0; code <= netpublic::alarm_type_last; ++code) {
        if (alarm_in_check_event(&set, static_cast<unsigned int>(code)) == 0)
            continue;
        types += types.empty() ? "" : ",";
        const bool ruled = code >= netpublic::smart_ai_first && code <= netpublic::smart_ai_last;
        const int rule = ruled ? (code - netpublic::smart_ai_first) % netpublic::smart_ai_rules : 0;
        const char *word = netpublic::word_of(netpublic::alarm_types, code - rule);
        types += word != nullptr ? word : "code " + std::to_string(code);
        if (ruled)
            types += "_" + std::to_string(rule);
    }
    return types.empty() ? "none" : types;
}

Drawing draw_schedule(const time_section_t (&section)[7][24])
{
    std::vector<std::string> sets; // in order of appearance
    const auto mark = [&](int day, int hour) {
        const std::string types = alarm_types_of(section[day][hour]);
        if (types == "none")
            return '.';
        const auto found = std::find(sets.begin(), sets.end(), types);
        const auto place = static_cast<std::size_t>(found - sets.begin());
        if (found == sets.end())
            sets.push_back(types);
        return place < letters ? static_cast<char>('a' + place) : beyond_legend;
    };
    Drawing drawing = draw_week(mark);
    drawing.kind = Drawing::Kind::sets;
    for (std::size_t i = 0; i < sets.size() && i < letters; ++i) {
        drawing.legend.emplace_back(static_cast<char>('a' + i), sets[i]);
        drawing.lines.push_back(std::string(1, drawing.legend[i].first) + " = " + sets[i]);
    }
    if (sets.size() > letters)
        drawing.lines.push_back("+ = one of " + std::to_string(sets.size() - letters) + " further combinations");
    return drawing;
}

} // namespace netparam
