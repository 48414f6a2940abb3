#include "reading/grid_file.h"

#include "model/failure.h"
#include "model/nearest.h"
#include "model/text.h"
#include "reading/document.h"
#include "reading/load.h"

#include "values/tables.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>

namespace netparam {
namespace {

// A line that is not blank, without its indentation.
struct Line {
    int row, column; // where its text begins, from 1 on
    std::string text;
};

// The lines of the file, and how to refuse them.
class Text {
public:
    explicit Text(const std::string &path) : name_(printable(file_name(path)))
    {
        std::istringstream lines(read_text(path));
        for (std::string line; std::getline(lines, line); ++end_)
            if (const std::size_t first = line.find_first_not_of(" \t\r"); first != std::string::npos)
                lines_.push_back({end_, static_cast<int>(first) + 1, trimmed(line)});
    }

    const std::vector<Line> &lines() const
    {
        return lines_;
    }
    [[noreturn]] void refuse(const Line &line, std::size_t at, const std::string &reason) const
    {
        throw Failure(exit_malformed, name_ + ":" + std::to_string(line.row) + ":" +
                                          std::to_string(line.column + static_cast<int>(at)) +
                                          ": the drawing does not fit: " + reason);
    }
    [[noreturn]] void refuse_end(const std::string &reason) const
    {
        refuse({end_, 1, ""}, 0, reason);
    }

private:
    std::string name_;
    std::vector<Line> lines_;
    int end_ = 1; // the row behind the last one
};

// "Monday", and where the day's marks begin.
bool is_day(const Line &line, std::size_t &day, std::size_t &marks)
{
    const std::size_t end = std::min(line.text.find_first_of(" \t"), line.text.size());
    const auto *word = netpublic::find_whole(netpublic::weekdays, line.text.substr(0, end).c_str());
    if (word == nullptr)
        return false;
    day = static_cast<std::size_t>(word->code());
    marks = std::min(line.text.find_first_not_of(" \t", end), line.text.size());
    return true;
}

bool is_scale(const Line &line)
{
    return line.text.find_first_not_of("0123456789 ") == std::string::npos && line.text.find(' ') != std::string::npos;
}

std::string cells(std::size_t count)
{
    return std::to_string(count) + (count == 1 ? " cell" : " cells");
}

// What each mark of a row stands for.
Json row_of(const Text &text, const Line &line, std::size_t from, std::size_t width, const std::map<char, Json> &marks)
{
    const std::size_t found = line.text.size() - from;
    Json row = Json::array();
    for (std::size_t i = 0; i < std::min(found, width); ++i) {
        const auto mark = marks.find(line.text[from + i]);
        if (mark == marks.end()) {
            std::string known;
            for (const auto &[one, value] : marks)
                known += (known.empty() ? "" : " ") + std::string(1, one);
            text.refuse(line, from + i,
                        in_quotes(line.text.substr(from + i, 1)) + " stands for nothing; known: " + known);
        }
        row.push_back(mark->second);
    }
    if (found != width)
        text.refuse(line, from + std::min(found, width), cells(found) + " here, " + cells(width) + " wanted");
    return row;
}

// Where only 0 and 1 occur, a row may be a text.
Json as_text(const Json &row)
{
    std::string text;
    for (const Json &cell : row) {
        if (cell != 0 && cell != 1)
            return row;
        text += cell == 1 ? '1' : '0';
    }
    return text;
}

Json read_grid(const Text &text, const Drawing &drawing)
{
    Json rows = Json::array();
    for (const Line &line : text.lines()) {
        if (rows.size() == drawing.cells.size())
            text.refuse(line, 0, "the grid has only " + std::to_string(rows.size()) + " rows");
        rows.push_back(as_text(row_of(text, line, 0, drawing.cells[0].size(), {{'.', 0}, {'#', 1}})));
    }
    if (rows.size() < drawing.cells.size())
        text.refuse_end(std::to_string(rows.size()) + " rows here, " + std::to_string(drawing.cells.size()) +
                        " wanted");
    return rows;
}

// Seven days in any order, under a scale or not. `other` is called for lines that are neither.
template <class Other> Json read_week(const Text &text, const std::map<char, Json> &marks, Other other)
{
    Json week = std::vector<Json>(week_days);
    std::size_t day, from;
    for (const Line &line : text.lines()) {
        if (is_day(line, day, from)) {
            if (!week[day].is_null())
                text.refuse(line, 0, "the day is drawn twice");
            week[day] = row_of(text, line, from, day_hours, marks);
        } else if (!is_scale(line)) {
            other(line);
        }
    }
    for (day = 0; day < week_days; ++day)
        if (week[day].is_null())
            text.refuse_end(netpublic::word_of(netpublic::weekdays, static_cast<int>(day)) +
                            std::string(" is missing"));
    return week;
}

[[noreturn]] void refuse_line(const Text &text, const Line &line)
{
    text.refuse(line, 0, "this is no day of the week");
}

// Numbers, bits of numbers, or a text of 168 flags.
Json read_hours(const Text &text, const Item &target)
{
    std::map<char, Json> marks = {{'.', 0}, {'#', 1}};
    const bool numbers = target.value.is_array();
    for (char digit = '2'; numbers && digit <= '9'; ++digit)
        marks[digit] = digit - '0';
    Json week = read_week(text, marks, [&](const Line &line) { refuse_line(text, line); });
    std::string flags;
    for (Json &day : week) {
        day = as_text(day);
        flags += day.is_string() ? day.get<std::string>() : "";
    }
    return numbers ? week : Json(flags);
}

// "a = MD,people"
bool is_legend(const Line &line)
{
    const std::size_t equals = line.text.find('=');
    return equals != std::string::npos && line.text.find_last_not_of(' ', equals - 1) == 0;
}

Json read_sets(const Text &text, const Item &target)
{
    std::map<char, Json> marks = {{'.', "none"}};
    std::string all = target.value.is_object() ? target.value["types"].get<std::string>() : "";
    for (const Line &line : text.lines()) {
        std::size_t day, from;
        if (!is_legend(line) || is_day(line, day, from))
            continue;
        std::size_t at = line.text.find('=') + 1;
        Json types = Json::array();
        while (at < line.text.size()) {
            const std::size_t first = line.text.find_first_not_of(", ", at);
            if (first == std::string::npos)
                break;
            const std::size_t end = std::min(line.text.find_first_of(", ", first), line.text.size());
            const std::string type = line.text.substr(first, end - first);
            if (int code; !alarm_type_code(type, code))
                text.refuse(line, first, in_quotes(type) + " is no alarm type");
            types.push_back(type);
            all += "," + type; // the schedule goes on to mention the types that it has mentioned
            at = end;
        }
        if (!marks.emplace(line.text[0], types).second)
            text.refuse(line, 0, "the letter is explained twice");
    }
    Json week = read_week(text, marks, [&](const Line &line) {
        if (!is_legend(line))
            refuse_line(text, line);
    });
    return target.value.is_object() ? Json{{"types", all}, {"section", week}} : week;
}

Json read_month(const Text &text, const Item &target)
{
    std::map<char, Json> marks;
    for (const auto &[mark, word] : target.drawing.legend)
        marks[mark] = word;
    Json month;
    for (const Line &line : text.lines()) {
        if (is_scale(line) || line.text.find('=') != std::string::npos)
            continue;
        if (!month.is_null())
            text.refuse(line, 0, "a month is drawn in one line");
        month = row_of(text, line, 0, target.drawing.cells[0].size(), marks);
    }
    if (month.is_null())
        text.refuse_end("there are no days");
    return month;
}

bool is_week(Drawing::Kind kind)
{
    return kind == Drawing::Kind::week || kind == Drawing::Kind::sets;
}

using Targets = std::vector<std::pair<std::string, const Item *>>;

Targets targets_of(const std::vector<Item> &items)
{
    Targets targets;
    for_items(items, [&](const std::string &path, const Item &item) {
        if (!item.drawing.cells.empty() && item.items.empty())
            targets.emplace_back(path, &item);
    });
    return targets;
}

std::vector<std::string> paths_of(const Targets &targets)
{
    std::vector<std::string> paths;
    for (const auto &target : targets)
        paths.push_back(target.first);
    return paths;
}

Targets::value_type named_target(const Targets &targets, const std::string &path)
{
    for (const auto &target : targets)
        if (target.first == path)
            return target;
    const std::string near = meant(path, paths_of(targets));
    throw Failure(exit_usage, "no grid or schedule is called " + in_quotes(path) +
                                  (near.empty() ? ", only " + joined(paths_of(targets), ", ") : near));
}

// The only one that may be drawn like that.
Targets::value_type only_target(Targets targets, const Text &text)
{
    const bool drawn_days = std::any_of(text.lines().begin(), text.lines().end(), [](const Line &line) {
        std::size_t day, from;
        return is_day(line, day, from);
    });
    targets.erase(
        std::remove_if(targets.begin(), targets.end(),
                       [&](const auto &target) { return is_week(target.second->drawing.kind) != drawn_days; }),
        targets.end());
    if (targets.empty())
        throw Failure(exit_usage,
                      std::string("the payload has no ") + (drawn_days ? "schedule" : "grid") + " that can be drawn");
    if (targets.size() > 1)
        throw Failure(exit_usage, "the drawing may replace any of these, so say which one, with --grid PATH=FILE: " +
                                      joined(paths_of(targets), ", "));
    return targets.front();
}

// "a[1]/b" is "/a/1/b".
Json::json_pointer pointer_to(const std::string &path)
{
    std::string pointer = "/";
    for (const char c : path)
        if (c != ']')
            pointer += c == '[' ? '/' : c;
    return Json::json_pointer(pointer);
}

Json value_in(const Text &text, const Item &target)
{
    switch (target.drawing.kind) {
    case Drawing::Kind::grid:
        return read_grid(text, target.drawing);
    case Drawing::Kind::sets:
        return read_sets(text, target);
    case Drawing::Kind::month:
        return read_month(text, target);
    default:
        return read_hours(text, target);
    }
}

} // namespace

Drawn put_drawing(Json &payload, const std::vector<Item> &items, const std::string &argument)
{
    Targets targets = targets_of(items);
    if (targets.empty())
        throw Failure(exit_usage, "the payload has no grid and no schedule");
    const std::size_t equals = argument.find('=');
    const Text text(argument.substr(equals == std::string::npos ? 0 : equals + 1));
    const auto [path, item] =
        equals == std::string::npos ? only_target(targets, text) : named_target(targets, argument.substr(0, equals));
    return {path, item->drawing.kind, payload[pointer_to(path)] = value_in(text, *item)};
}

std::string read_flags(const std::string &file)
{
    return read_hours(Text(file), Item()).get<std::string>();
}

void save_drawing(const std::vector<Item> &items, const std::string &argument)
{
    const std::size_t equals = argument.find('=');
    Targets targets = targets_of(items);
    if (equals != std::string::npos)
        targets = {named_target(targets, argument.substr(0, equals))};
    if (targets.size() != 1)
        throw Failure(exit_usage, targets.empty() ? "the payload has no grid and no schedule"
                                                  : "which drawing is to be saved, with --grid-out PATH=FILE: " +
                                                        joined(paths_of(targets), ", "));
    const std::string path = argument.substr(equals == std::string::npos ? 0 : equals + 1);
    std::ofstream file(path);
    for (const std::string &line : targets.front().second->drawing.lines)
        file << line << '\n';
    if (!file.flush())
        throw Failure(exit_file, printable(path) + " cannot be written");
}

} // namespace netparam
