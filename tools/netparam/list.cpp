#include "command_line.h"
#include "messages.h"
#include "text.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace netparam {
namespace {

struct ListOptions {
    std::string filter;
    bool json = false;
    bool names = false;
};

using Json = nlohmann::ordered_json;

// An initialiser that does nothing has no id.
bool has_id(const Entry &entry)
{
    return entry.initialiser != nullptr && entry.initialiser->id >= 0;
}

std::string id_of(const Entry &entry)
{
    return has_id(entry) ? std::to_string(entry.initialiser->id) : "-";
}

// Absent texts are null.
Json optional(const std::string &text)
{
    return text.empty() ? Json() : Json(text);
}

std::string initialiser_of(const Entry &entry)
{
    return entry.initialiser != nullptr ? entry.initialiser->name : "(the host prepares it)";
}

bool matches(const Entry &entry, const std::string &filter)
{
    const std::vector<std::string> texts = {entry.name(),   entry.title(),  initialiser_of(entry),
                                            entry.parser(), entry.writer(), entry.root()};
    const auto contains = [&](const std::string &text) { return lower(text).find(lower(filter)) != std::string::npos; };
    return id_of(entry) == filter || std::any_of(texts.begin(), texts.end(), contains);
}

Json to_json(const Entry &entry)
{
    Json row;
    row["name"] = optional(entry.message != nullptr ? entry.name() : "");
    row["title"] = optional(entry.title());
    row["summary"] = optional(entry.summary());
    row["id"] = has_id(entry) ? Json(entry.initialiser->id) : Json();
    row["size"] = entry.size();
    row["initialiser"] = optional(entry.initialiser != nullptr ? entry.initialiser->name : "");
    row["parser"] = optional(entry.parser());
    row["writer"] = optional(entry.writer());
    row["root"] = optional(entry.root());
    return row;
}

using Line = std::vector<std::string>;

void print(std::ostream &out, const std::vector<Line> &lines)
{
    Line::size_type columns = lines.front().size();
    std::vector<std::size_t> widths(columns);
    for (const Line &line : lines)
        for (std::size_t i = 0; i < columns; ++i)
            widths[i] = std::max(widths[i], line[i].size());
    for (const Line &line : lines) {
        std::string text;
        for (std::size_t i = 0; i < columns; ++i) {
            const std::string padding(widths[i] - line[i].size(), ' ');
            const bool number = i == 1 || i == 2;
            text += (number ? padding + line[i] : line[i] + padding) + "  ";
        }
        text.erase(text.find_last_not_of(' ') + 1);
        out << text << '\n';
    }
}

// For completions and scripts: what can be typed for MESSAGE.
void print_names(std::ostream &out, const std::string &filter)
{
    for (const Entry &entry : entries())
        if (entry.message != nullptr && matches(entry, filter))
            out << entry.name() << '\n';
}

ExitCode list(std::ostream &out, std::ostream & /*errors*/, const ListOptions &options)
{
    std::vector<Line> lines = {{"NAME", "ID", "SIZE", "DIRECTIONS", "TITLE", "INITIALISER"}};
    Json rows = Json::array();
    for (const Entry &entry : entries()) {
        if (!matches(entry, options.filter))
            continue;
        lines.push_back({entry.name(), id_of(entry), entry.size() > 0 ? std::to_string(entry.size()) : "-",
                         entry.directions(), entry.title().empty() ? "-" : entry.title(), initialiser_of(entry)});
        rows.push_back(to_json(entry));
    }
    if (options.names)
        print_names(out, options.filter);
    else if (options.json)
        out << rows.dump(2) << '\n';
    else if (lines.size() == 1)
        throw Failure(exit_usage, "nothing in the catalogue matches " + in_quotes(options.filter));
    else
        print(out, lines);
    return exit_ok;
}

} // namespace

void add_list(CommandLine &line)
{
    const auto options = std::make_shared<ListOptions>();
    CLI::App &verb = line.add_verb("list", "The catalogue of messages", options, list);
    verb.add_option(
        "TEXT", options->filter,
        "Only messages with this text in their name, title, initialiser, functions or root element, or with this id");
    verb.add_flag("--json", options->json, "As JSON");
    verb.add_flag("--names", options->names, "Only the names of messages that can be parsed or written")
        ->excludes("--json");
    line.explain(verb, "", {"netparam list", "netparam list motion", "netparam list 1903 --json"});
}

} // namespace netparam
