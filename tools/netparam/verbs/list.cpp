#include "model/facts.h"
#include "model/json.h"
#include "model/nearest.h"
#include "model/rows.h"
#include "model/text.h"
#include "verbs/command_line.h"
#include "verbs/describe.h"

#include <algorithm>

namespace netparam {
namespace {

struct ListOptions {
    std::string filter;
    bool json = false;
    bool names = false;
};

std::string initialiser_of(const Entry &entry)
{
    return entry.initialiser != nullptr ? entry.initialiser->name : "(the host prepares it)";
}

// Its structures and keys, those of its records, too.
void add_names(const netpublic::Table &table, std::vector<std::string> &names)
{
    names.emplace_back(table.record);
    for (const unsigned i : described_rows(table)) {
        names.push_back(name_of(table, i));
        for (const netpublic::Table *inner : inner_tables(table, i))
            add_names(*inner, names);
    }
}

// By what it is called, or by what it says and holds.
bool matches(const Entry &entry, const std::string &filter, bool by_name)
{
    std::vector<std::string> texts = {entry.name(),   entry.title(),  initialiser_of(entry),
                                      entry.parser(), entry.writer(), entry.element()};
    if (!by_name) {
        texts = {entry.summary()};
        for (const netpublic::Table *table : entry.tables())
            add_names(*table, texts);
    }
    const auto contains = [&](const std::string &text) { return lower(text).find(lower(filter)) != std::string::npos; };
    return (by_name && id_text(entry) == filter) || std::any_of(texts.begin(), texts.end(), contains);
}

using Cells = std::vector<std::string>;

void print(std::ostream &out, const std::vector<Cells> &lines)
{
    Cells::size_type columns = lines.front().size();
    std::vector<std::size_t> widths(columns);
    for (const Cells &line : lines)
        for (std::size_t i = 0; i < columns; ++i)
            widths[i] = std::max(widths[i], line[i].size());
    for (const Cells &line : lines) {
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

// Those that are called like that first.
std::vector<const Entry *> matching(const std::string &filter)
{
    std::vector<const Entry *> found;
    for (const bool by_name : {true, false})
        for (const Entry &entry : entries())
            if (matches(entry, filter, by_name) && (by_name || !matches(entry, filter, true)))
                found.push_back(&entry);
    return found;
}

[[noreturn]] void unmatched(const std::string &filter)
{
    std::vector<std::string> names;
    for (const Entry &entry : entries())
        names.insert(names.end(), {entry.name(), initialiser_of(entry), entry.parser(), entry.writer()});
    throw Failure(exit_usage, "nothing in the catalogue matches " + in_quotes(filter) + meant(filter, names));
}

ExitCode list(std::ostream &out, std::ostream & /*errors*/, const ListOptions &options)
{
    std::vector<Cells> lines = {{"NAME", "ID", "SIZE", "DIRECTIONS", "TITLE", "INITIALISER"}};
    Json rows = Json::array();
    std::vector<std::string> names; // what can be typed for MESSAGE, for completions and scripts
    for (const Entry *found : matching(options.filter)) {
        const Entry &entry = *found;
        if (entry.message != nullptr)
            names.push_back(entry.name() + '\n');
        lines.push_back({entry.name(), id_text(entry), entry.size() > 0 ? std::to_string(entry.size()) : "-",
                         entry.directions(), entry.title().empty() ? "-" : entry.title(), initialiser_of(entry)});
        rows.push_back(entry_json(entry));
    }
    if (options.names)
        out << joined(names, "");
    else if (options.json)
        out << rows.dump(2) << '\n';
    else if (lines.size() == 1)
        unmatched(options.filter);
    else
        print(out, lines);
    return exit_ok;
}

} // namespace

void add_list(CommandLine &line)
{
    auto [verb, options] = line.add_verb("list", "The catalogue of messages", list);
    verb.add_option(
        "TEXT", options.filter,
        "Only messages with this text in their names, functions, description, structures or keys, or with this id");
    verb.add_flag("--json", options.json, "As JSON");
    verb.add_flag("--names", options.names, "Only the names of messages that can be parsed or written")
        ->excludes("--json");
    line.explain(verb, "", {"netparam list", "netparam list motion", "netparam list 1903 --json"});
}

} // namespace netparam
