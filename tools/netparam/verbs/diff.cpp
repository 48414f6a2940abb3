#include "reading/compare.h"
#include "reading/secrets.h"
#include "terminal/report.h"
#include "verbs/command_line.h"

#include <unistd.h>

#include <algorithm>

namespace netparam {
namespace {

constexpr std::size_t drawing_indent = 6; // of drawings

struct DiffOptions : Options {
    std::string other; // the second file
};

// A body that has become a payload, secrets and all.
struct Side {
    Session session;
    std::vector<Item> items;

    Side(const Entry &entry, const Options &options, const std::string &file, std::ostream &errors)
        : session(entry, options, file)
    {
        bool accepted;
        const Document *document = session.read(accepted);
        if (document == session.body_document())
            print_notes(errors, *session.trace(), *document, options);
        if (!accepted) {
            print_refused(errors, session, *document, options);
            throw Failure(exit_malformed, printable(document->name()) + " is refused, so there is nothing to compare");
        }
        items = payload_items(session, true);
    }
};

// Elements of a list bear an index behind the name.
bool is_hidden(const Difference &difference, const Options &options)
{
    const std::string name = difference.path.substr(difference.path.rfind('/') + 1);
    return !options.show_secrets && is_secret(name.substr(0, name.find('[')));
}

std::string text_of(const Item *item, bool hide)
{
    return item == nullptr ? "(none)" : hide ? hidden : item->text;
}

bool has_room(const std::vector<std::string> &drawing, const Style &style)
{
    std::size_t width = 0;
    for (const std::string &line : drawing)
        width = std::max(width, line.size());
    return drawing_indent + width <= style.width || isatty(STDOUT_FILENO) == 0;
}

void print_difference(std::ostream &out, const Difference &difference, std::size_t width, const Options &options)
{
    const bool hide = is_hidden(difference, options);
    const std::string a = text_of(difference.a, hide), b = text_of(difference.b, hide);
    const CellDifference cells = hide ? CellDifference() : compare_cells(difference);
    const std::string name = padded(difference.path, width) + "  ";
    constexpr char arrow[] = "  ->  ";
    if (hide)
        out << "  " << name << hidden << "  (differ)\n";
    else if (2 + name.size() + a.size() + b.size() + sizeof arrow <= options.style.width)
        out << "  " << name << a << arrow << b << '\n';
    else
        out << "  " << difference.path << "\n    - " << a << "\n    + " << b << '\n';
    if (cells.overlay.empty())
        return;
    const bool drawn = has_room(cells.overlay, options.style);
    out << std::string(drawing_indent, ' ') << cells.cells << (cells.cells == 1 ? " cell differs" : " cells differ")
        << (drawn ? ": - set in the first only, + in the second only, ! in both, but differently"
                  : "; the terminal is too narrow to draw them")
        << '\n';
    if (drawn)
        for (const std::string &line : cells.overlay)
            out << std::string(drawing_indent, ' ') << options.style.faint(line) << '\n';
}

Json difference_json(const Difference &difference, const Options &options)
{
    const bool hide = is_hidden(difference, options);
    const auto value = [hide](const Item *item) {
        return item == nullptr ? Json() : hide ? Json(hidden) : item->value;
    };
    Json json = {{"path", difference.path}, {"a", value(difference.a)}, {"b", value(difference.b)}};
    if (const CellDifference cells = compare_cells(difference); !hide && !cells.overlay.empty())
        json["cells"] = cells.cells;
    return json;
}

ExitCode diff(std::ostream &out, std::ostream &errors, const DiffOptions &options)
{
    options.settle();
    if (options.other == "-" && (options.file == "-" || options.extension == "-"))
        throw Failure(exit_usage, "only one of FILE, OTHER and --ext can be standard input");
    const Entry &entry = find_parsed(options.message);
    if (entry.table() == nullptr)
        throw Failure(exit_usage, "no rows describe the payload of " + entry.name());
    const Side a(entry, options, options.file, errors), b(entry, options, options.other, errors);
    const std::vector<Difference> found = differences(a.items, b.items);
    if (options.json) {
        Json list = Json::array();
        for (const Difference &difference : found)
            list.push_back(difference_json(difference, options));
        const Json json = {{"message", entry.name()},
                           {"a", file_name(options.file)},
                           {"b", file_name(options.other)},
                           {"equal", found.empty()},
                           {"differences", list}};
        out << json_text(json) << '\n';
    } else if (!found.empty()) {
        std::size_t width = 0;
        for (const Difference &difference : found)
            width = std::max(width, difference.path.size());
        out << options.style.heading(entry.name() + ": " + std::to_string(found.size()) +
                                     (found.size() == 1 ? " field differs" : " fields differ"))
            << '\n';
        out << "  - " << printable(file_name(options.file)) << "\n  + " << printable(file_name(options.other)) << '\n';
        for (const Difference &difference : found)
            print_difference(out, difference, std::min(width, std::size_t{44}), options);
    }
    return found.empty() ? exit_ok : exit_different;
}

} // namespace

void add_diff(CommandLine &line)
{
    auto [verb, options] =
        line.add_verb("diff", "Compares what the firmware gets from two bodies, field by field", diff);
    options.add_options(verb).get_option("FILE")->required();
    verb.add_option("OTHER", options.other, "The body to compare with")->required();
    verb.add_flag("--json", options.json, "As JSON");
    line.explain(verb,
                 "Exit code 0 says that the payloads are the same, 1 that they differ. A body that is not well-formed "
                 "or that the library refuses is exit code 4: then nothing was compared.",
                 {"netparam diff md before.xml after.xml"});
}

} // namespace netparam
