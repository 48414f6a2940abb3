// netparam set: other values in a text that stays as it is.
#include "model/nearest.h"
#include "reading/grid_file.h"
#include "terminal/report.h"
#include "verbs/command_line.h"

#include "engine/matching.h"
#include "engine/member.h"

#include <net_xml_words.h>

#include <algorithm>
#include <cstring>
#include <fstream>

namespace netparam {
namespace {

struct SetOptions : Options {
    std::vector<std::string> values, drawings;
    bool difference = false, in_place = false;
};

// What takes the place of a part of the text.
struct Edit {
    std::size_t begin, end;
    std::string text;
};

// A start tag in a text.
struct Tag {
    std::size_t begin, end; // behind its ">"
};

// The start tags of a well-formed text, in their order.
std::vector<Tag> tags_of(const std::string &text)
{
    std::vector<Tag> tags;
    const auto behind = [&](std::size_t from, const char *end) {
        const std::size_t at = text.find(end, from);
        return at == std::string::npos ? text.size() : at + std::strlen(end);
    };
    for (std::size_t at = 0; (at = text.find('<', at)) < text.size();) {
        if (text.compare(at, 4, "<!--") == 0) {
            at = behind(at, "-->");
        } else if (text.compare(at, 9, "<![CDATA[") == 0) {
            at = behind(at, "]]>");
        } else if (text[at + 1] == '?' || text[at + 1] == '!' || text[at + 1] == '/') {
            at = behind(at, ">");
        } else {
            const std::size_t begin = at;
            for (char quote = 0; ++at < text.size() && (quote != 0 || text[at] != '>');)
                if (quote == 0 ? text[at] == '"' || text[at] == '\'' : text[at] == quote)
                    quote = quote == 0 ? text[at] : '\0';
            tags.push_back({begin, std::min(at + 1, text.size())});
            at = tags.back().end;
        }
    }
    return tags;
}

// How many elements stand in front of this one in the document.
std::size_t place_of(const TiXmlNode &tree, const TiXmlElement &element, bool &found)
{
    std::size_t count = 0;
    for (const TiXmlElement *child = tree.FirstChildElement(); child != nullptr && !found;
         child = child->NextSiblingElement()) {
        found = child == &element;
        if (!found)
            count += 1 + place_of(*child, element, found);
    }
    return count;
}

// The elements of a body by their paths, and where their texts stand.
class Body {
public:
    Body(const Session &session, const Document &document)
        : trace_(*session.trace()), document_(document), tags_(tags_of(document.text()))
    {
    }

    const TiXmlElement &find(const std::string &path) const
    {
        const TiXmlElement *at = &document_.body();
        std::vector<std::string> steps = split(path, '/');
        if (steps.size() > 1 && lower(steps.front()) == lower(at->ValueStr()))
            steps.erase(steps.begin());
        for (const std::string &step : steps)
            at = &child(*at, step);
        return *at;
    }

    // Its text, without the white space around it.
    Edit replace(const TiXmlElement &element, const std::string &value) const
    {
        constexpr char white[] = " \t\r\n", section[] = "<![CDATA[";
        const std::string &text = document_.text();
        if (element.FirstChildElement() != nullptr)
            throw Failure(exit_usage, path_of(element) + " has no text but children");
        bool found = false;
        const std::size_t place = place_of(document_.tree(), element, found);
        const std::string &name = element.ValueStr();
        if (place >= tags_.size() || text.compare(tags_[place].begin + 1, name.size(), name) != 0)
            throw Failure(exit_fault, path_of(element) + " is not found in the text");
        const Tag &tag = tags_[place];
        if (text[tag.end - 2] == '/')
            return {tag.end - 2, tag.end, ">" + in_xml(value) + "</" + name + ">"};
        const std::size_t first = text.find_first_not_of(white, tag.end);
        if (text.compare(first, std::strlen(section), section) == 0)
            return {first, text.find("]]>", first) + 3, in_xml(value)};
        const std::size_t next = text.find('<', tag.end);
        if (first == next)
            return {tag.end, tag.end, in_xml(value)};
        return {first, text.find_last_not_of(white, next - 1) + 1, in_xml(value)};
    }

private:
    const TiXmlElement &child(const TiXmlElement &parent, const std::string &step) const
    {
        const std::size_t open = step.find('[');
        const std::string name = step.substr(0, open);
        const auto taken = trace_.children(&parent, name); // by whatever part of the key's name
        std::vector<const TiXmlElement *> found, answering;
        std::vector<std::string> names;
        for (const TiXmlElement *one = parent.FirstChildElement(); one != nullptr; one = one->NextSiblingElement()) {
            names.push_back(one->ValueStr());
            if (lower(one->ValueStr()) == lower(name))
                found.push_back(one);
            else if (std::find(taken.begin(), taken.end(), one) != taken.end())
                answering.push_back(one);
        }
        if (found.empty())
            found = answering;
        const std::string where = document_.at(spot_of(parent)) + ": " + path_of(parent);
        if (found.empty()) {
            const auto near = nearest(name, names, 1);
            throw Failure(exit_usage, where + " has no " + in_quotes(name) +
                                          (near.empty() ? "" : "; did you mean " + near.front() + "?"));
        }
        if (open == std::string::npos && found.size() > 1)
            throw Failure(exit_usage, where + " has " + std::to_string(found.size()) + " " + name + ": say " + name +
                                          "[0] to " + name + "[" + std::to_string(found.size() - 1) + "]");
        const std::size_t index = open == std::string::npos ? 0 : std::strtoul(step.c_str() + open + 1, nullptr, 10);
        if (index >= found.size())
            throw Failure(exit_usage, where + " has only " + std::to_string(found.size()) + " " + name);
        return *found[index];
    }

    const Trace &trace_;
    const Document &document_;
    const std::vector<Tag> tags_;
};

// The cells of a drawing as the text of a grid's element.
std::string grid_text(const std::string &file, int columns, int rows)
{
    std::string bits;
    for (const auto &row : read_grid(file, columns, rows))
        for (const char cell : row.get<std::string>())
            bits += static_cast<char>(cell - '0');
    constexpr int no_line_breaks = 20000;
    std::string text(bits.size() / 24 * 4 + 8, '\0');
    const int length = EncodeBinaryArrayToBase64(reinterpret_cast<unsigned char *>(bits.data()), text.data(),
                                                 static_cast<int>(bits.size()), no_line_breaks);
    if (length < 0)
        throw Failure(exit_fault, "the grid cannot be encoded");
    text.resize(std::strlen(text.c_str()));
    return text;
}

// The grid whose element's path begins like that; the only one without a path.
Edit replace_grid(const Body &body, const Trace &trace, const std::string &argument)
{
    const std::size_t equals = argument.find('=');
    const std::string wanted = equals == std::string::npos ? "" : argument.substr(0, equals);
    std::vector<const Trace::Grid *> found;
    std::vector<std::string> paths;
    for (const Trace::Grid &grid : trace.grids()) {
        const std::string path = path_of(*grid.node), inner = path.substr(path.find('/') + 1);
        paths.push_back(inner);
        for (const std::string &one : {path, inner})
            if (wanted.empty() || one == wanted || one.compare(0, wanted.size() + 1, wanted + "/") == 0) {
                found.push_back(&grid);
                break;
            }
    }
    if (found.size() != 1)
        throw Failure(exit_usage, paths.empty()
                                      ? "the body has no grid"
                                      : (wanted.empty() ? "say which grid, with --grid PATH=FILE: "
                                                        : "no grid is called " + in_quotes(wanted) + ", only ") +
                                            joined(paths, ", "));
    const Trace::Grid &grid = *found.front();
    const netpublic::Limits &sides = grid.table->limit(grid.row->limits);
    const auto side = [&](int offset) {
        for (unsigned i = 0; i < grid.table->keys; ++i)
            if (const auto &row = grid.table->row(i); static_cast<int>(row.offset) == offset)
                for (const TiXmlNode *node : trace.children(grid.node->Parent(), grid.table->key(row)))
                    if (const char *text = node->ToElement()->GetText())
                        return std::atoi(text);
        return 0;
    };
    return body.replace(
        *grid.node->ToElement(),
        grid_text(argument.substr(equals == std::string::npos ? 0 : equals + 1), side(sides.low), side(sides.high)));
}

std::string applied(const std::string &text, const std::vector<Edit> &edits, std::size_t begin, std::size_t end)
{
    std::string changed;
    for (const Edit &edit : edits)
        if (edit.begin >= begin && edit.end <= end) {
            changed += text.substr(begin, edit.begin - begin) + edit.text;
            begin = edit.end;
        }
    return changed + text.substr(begin, end - begin);
}

// As "diff -U0" does.
void print_difference(std::ostream &out, const std::string &name, const std::string &text,
                      const std::vector<Edit> &edits, const Style &style)
{
    const auto lines = [](const std::string &part) { return std::count(part.begin(), part.end(), '\n'); };
    const auto print = [&](char mark, const std::string &part) {
        for (const std::string &line : split(part, '\n'))
            out << mark << (mark == '-' ? style.faint(printable(line)) : style.heading(printable(line))) << '\n';
    };
    out << "--- " << printable(name) << "\n+++ " << printable(name) << '\n';
    long added = 0;
    for (std::size_t i = 0; i < edits.size();) {
        const std::size_t before = edits[i].begin > 0 ? text.rfind('\n', edits[i].begin - 1) : std::string::npos;
        const std::size_t begin = before == std::string::npos ? 0 : before + 1;
        std::size_t end = std::min(text.find('\n', edits[i].end), text.size());
        for (++i; i < edits.size() && edits[i].begin <= end; ++i)
            end = std::min(text.find('\n', edits[i].end), text.size());
        const std::string old = text.substr(begin, end - begin), changed = applied(text, edits, begin, end);
        if (old == changed)
            continue;
        const long first = lines(text.substr(0, begin)) + 1;
        const auto range = [&](long line, const std::string &part) {
            return std::to_string(line) + (lines(part) > 0 ? "," + std::to_string(lines(part) + 1) : "");
        };
        out << style.note("@@ -" + range(first, old) + " +" + range(first + added, changed) + " @@") << '\n';
        print('-', old);
        print('+', changed);
        added += lines(changed) - lines(old);
    }
}

std::vector<Edit> edits_of(const Session &session, const Document &document, const SetOptions &options)
{
    const Body body(session, document);
    std::vector<Edit> edits;
    for (const std::string &value : options.values) {
        const std::size_t equals = value.find('=');
        if (equals == std::string::npos || equals == 0)
            throw Failure(exit_usage, in_quotes(value) + " is no PATH=VALUE");
        edits.push_back(body.replace(body.find(value.substr(0, equals)), value.substr(equals + 1)));
    }
    for (const std::string &drawing : options.drawings)
        edits.push_back(replace_grid(body, *session.trace(), drawing));
    std::sort(edits.begin(), edits.end(), [](const Edit &a, const Edit &b) { return a.begin < b.begin; });
    for (std::size_t i = 1; i < edits.size(); ++i)
        if (edits[i].begin < edits[i - 1].end || edits[i].begin == edits[i - 1].begin)
            throw Failure(exit_usage, "a value is set twice");
    return edits;
}

ExitCode set_values(std::ostream &out, std::ostream &errors, const SetOptions &options)
{
    options.settle();
    const Entry &entry = find_message(options.message);
    if (!entry.parses())
        throw Failure(exit_usage, entry.name() + " has no parser: it is only written");
    if (options.values.empty() && options.drawings.empty())
        throw Failure(exit_usage, "nothing is to be set: PATH=VALUE or --grid PATH=FILE");
    if (options.in_place && options.file == "-")
        throw Failure(exit_usage, "standard input cannot be changed in place");
    Session before(entry, options), after(entry, options);
    if (!before.read_extension() || !after.read_extension())
        throw Failure(exit_refused, "the extension header is refused");
    before.prepare();
    before.parse(); // refused or not: what is set may make it good
    const Document &document = *before.body_document();
    const std::vector<Edit> edits = edits_of(before, document, options);
    const std::string changed = applied(document.text(), edits, 0, document.text().size());

    after.take_body(Document(document.name(), changed));
    after.prepare();
    const bool accepted = after.parse();
    print_notes(errors, *after.trace(), *after.body_document(), options);
    if (!accepted) {
        print_refusal(errors, after, *after.body_document(), options);
        print_log(errors, after, options.style);
        return exit_refused;
    }
    if (options.in_place && !(std::ofstream(options.file, std::ios::binary) << changed).flush())
        throw Failure(exit_file, printable(options.file) + " cannot be written");
    if (options.difference)
        print_difference(out, document.name(), document.text(), edits, options.style);
    else if (!options.in_place)
        out << changed;
    return exit_ok;
}

} // namespace

void add_set(CommandLine &line)
{
    const auto options = std::make_shared<SetOptions>();
    options->style = line.style;
    CLI::App &verb = line.add_verb("set", "Changes values in a body and nothing else", options, set_values);
    options->add_options(verb).get_option("FILE")->required();
    verb.add_option("VALUE", options->values, "PATH=VALUE, as in timeBlockList/timeBlock[1]/endHour=18; places from 0")
        ->type_name("PATH=VALUE");
    verb.add_option("--grid", options->drawings,
                    "A grid as \"parse\" draws it or --grid-out saves it; which one, if there are several: PATH=FILE")
        ->type_name("FILE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    verb.add_flag("--diff", options->difference, "Print the lines that change instead of the whole text");
    verb.add_flag("--in-place", options->in_place, "Write the FILE instead of printing the text");
    line.explain(verb,
                 "The text keeps every other byte. What the library would then refuse is not printed, but explained as "
                 "\"parse\" does. The text is printed as it is, secrets and all, since it is meant to be sent.",
                 {"netparam set md request.xml width=60 handleException/handleType=rec --diff",
                  "netparam parse md request.xml --grid-out grid.txt --quiet",
                  "netparam set md request.xml --grid grid.txt --in-place"});
}

} // namespace netparam
