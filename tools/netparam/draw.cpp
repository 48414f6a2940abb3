#include "draw.h"

#include "tables.h"

#include <net_xml_public.h>

#include <algorithm>

namespace netparam {

std::vector<std::string> draw_grid(int columns, int rows, const std::function<int(int column, int row)> &cell)
{
    std::vector<std::string> lines;
    for (int row = 0; row < rows; ++row) {
        std::string line;
        for (int column = 0; column < columns; ++column) {
            const int value = cell(column, row);
            line += value == 0 ? '.' : value == 1 ? '#' : '?'; // only 0 and 1 mean something
        }
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> draw_week(const std::function<char(int day, int hour)> &mark)
{
    std::vector<std::string> lines = {"           0     6     12    18"};
    for (int day = 0; day < 7; ++day) {
        std::string line = netpublic::word_of(netpublic::weekdays, day);
        line.resize(11, ' ');
        for (int hour = 0; hour < 24; ++hour)
            line += mark(day, hour);
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> draw_month(int days, const std::function<char(int day)> &mark)
{
    std::string scale = "1   5    10   15   20   25   30", line;
    scale.resize(static_cast<std::size_t>(std::clamp(days, 0, 31)), ' ');
    for (int day = 0; day < days; ++day)
        line += mark(day);
    return {scale, line};
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

std::vector<std::string> draw_schedule(const time_section_t (&section)[7][24])
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
        return place < 26 ? static_cast<char>('a' + place) : '+';
    };
    std::vector<std::string> lines = draw_week(mark);
    for (std::size_t i = 0; i < sets.size() && i < 26; ++i)
        lines.push_back(std::string(1, static_cast<char>('a' + i)) + " = " + sets[i]);
    if (sets.size() > 26)
        lines.push_back("+ = one of " + std::to_string(sets.size() - 26) + " further combinations");
    return lines;
}

} // namespace netparam
