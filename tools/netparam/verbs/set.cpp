// netparam set: other values in a text that stays as it is.
#include "model/nearest.h"
#include "reading/grid_file.h"
#include "reading/payload.h"
#include "terminal/report.h"
#include "verbs/command_line.h"

#include <net_xml_words.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <map>

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
    std::size_t close;      // where its end tag begins
};

// The start tags of a well-formed text, in their order.
std::vector<Tag> tags_of(const std::string &text)
{
    std::vector<Tag> tags;
    std::vector<std::size_t> open; // of the tags
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
            if (text[at + 1] == '/' && !open.empty()) {
                tags[open.back()].close = at;
                open.pop_back();
            }
            at = behind(at, ">");
        } else {
            const std::size_t begin = at;
            for (char quote = 0; ++at < text.size() && (quote != 0 || text[at] != '>');)
                if (quote == 0 ? text[at] == '"' || text[at] == '\'' : text[at] == quote)
                    quote = quote == 0 ? text[at] : '\0';
            at = std::min(at + 1, text.size());
            tags.push_back({begin, at, at});
            if (text[at - 2] != '/')
                open.push_back(tags.size() - 1);
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
        constexpr char section[] = "<![CDATA[";
        const std::string &text = document_.text();
        if (element.FirstChildElement() != nullptr)
            throw Failure(exit_usage, path_of(element) + " has no text but children");
        const Tag &tag = tag_of(element);
        if (text[tag.end - 2] == '/')
            return filled(element, in_xml(value));
        const std::size_t first = text.find_first_not_of(white, tag.end);
        if (text.compare(first, std::strlen(section), section) == 0)
            return {first, text.find("]]>", first) + 3, in_xml(value)};
        const std::size_t next = text.find('<', tag.end);
        if (first == next)
            return {tag.end, tag.end, in_xml(value)};
        return {first, text.find_last_not_of(white, next - 1) + 1, in_xml(value)};
    }

    // Its content by another element's: children one below the other if they stood so.
    Edit replace_with(const TiXmlElement &element, const TiXmlElement &with) const
    {
        if (element.FirstChildElement() == nullptr && with.FirstChildElement() == nullptr)
            return replace(element, with.GetText() != nullptr ? with.GetText() : "");
        const std::string &text = document_.text();
        const Tag &tag = tag_of(element);
        const std::size_t first = text.find_first_not_of(white, tag.end);
        const auto blanks = [&](std::size_t from) { // from there on
            return text.substr(from, text.find_first_not_of(white, from) - from);
        };
        const TiXmlElement *old = element.FirstChildElement();
        const std::string indent = blanks(tag.end), inner = old != nullptr ? blanks(tag_of(*old).end) : "";
        std::string children;
        for (const TiXmlElement *child = with.FirstChildElement(); child != nullptr;
             child = child->NextSiblingElement()) {
            TiXmlPrinter printer;
            printer.SetIndent(inner.size() > indent.size() ? inner.substr(indent.size()).c_str() : "");
            if (inner.empty())
                printer.SetStreamPrinting();
            child->Accept(&printer);
            for (const std::string &line : split(trimmed(printer.Str()), '\n'))
                children += (children.empty() ? "" : indent) + line;
        }
        if (text[tag.end - 2] == '/')
            return filled(element, children);
        if (first >= tag.close) // nothing stood there
            return {tag.end, tag.close, children};
        return {first, text.find_last_not_of(white, tag.close - 1) + 1, children};
    }

private:
    static constexpr char white[] = " \t\r\n";

    const Tag &tag_of(const TiXmlElement &element) const
    {
        bool found = false;
        const std::size_t place = place_of(document_.tree(), element, found);
        const std::string &name = element.ValueStr();
        if (place >= tags_.size() || document_.text().compare(tags_[place].begin + 1, name.size(), name) != 0)
            throw Failure(exit_fault, path_of(element) + " is not found in the text");
        return tags_[place];
    }

    // "<a/>" as "<a>...</a>".
    Edit filled(const TiXmlElement &element, const std::string &content) const
    {
        const std::size_t end = tag_of(element).end;
        return {end - 2, end, ">" + content + "</" + element.ValueStr() + ">"};
    }

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
            throw Failure(exit_usage, where + " has no " + in_quotes(name) + meant(name, names));
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
std::string grid_text(const Json &rows)
{
    std::string bits;
    for (const Json &row : rows)
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

// Does the element hold a list of such items?
bool holds_items(const TiXmlElement &element, const std::string &name)
{
    const TiXmlElement *item = element.FirstChildElement(name.c_str());
    return item != nullptr && item->FirstChildElement() != nullptr;
}

// Where two replies differ in what is drawn: a text, or the element around the drawing's items. Null if nowhere.
const TiXmlElement *changed_in(const TiXmlElement &before, const TiXmlElement &after, const Drawn &drawn)
{
    if (printed(before) == printed(after))
        return nullptr;
    const std::string name = drawn.path.substr(drawn.path.rfind('/') + 1);
    const TiXmlElement *one = before.FirstChildElement(), *other = after.FirstChildElement();
    bool whole = holds_items(before, name) || holds_items(after, name);
    if (drawn.kind ==
        Drawing::Kind::sets) { // its elements may be called otherwise, but lie as deep: "reply/Record/..."
        std::ptrdiff_t depth = -2;
        for (const TiXmlNode *node = after.Parent(); node != nullptr; node = node->Parent())
            ++depth;
        whole = depth == std::count(drawn.path.begin(), drawn.path.end(), '/');
    }
    for (; !whole && one != nullptr && other != nullptr;
         one = one->NextSiblingElement(), other = other->NextSiblingElement())
        if (const TiXmlElement *found = changed_in(*one, *other, drawn))
            return found;
    return &after;
}

// The texts that have a flag for each hour of the week, by their paths in the body.
void find_weeks(std::map<std::string, const TiXmlElement *> &weeks, const TiXmlElement &from)
{
    const char *text = from.GetText();
    if (text != nullptr && std::strlen(text) == week_days * day_hours && std::strspn(text, "01") == std::strlen(text)) {
        const std::string path = path_of(from);
        weeks[path.substr(path.find('/') + 1)] = &from;
    }
    for (const TiXmlElement *child = from.FirstChildElement(); child != nullptr; child = child->NextSiblingElement())
        find_weeks(weeks, *child);
}

// How a list of hours or days is spelled is the writer's to say: where its reply changes, so does the body.
void replace_list(std::vector<Edit> &edits, const Body &body, Session &session, const Json &payload, const Drawn &drawn,
                  const std::string &others)
{
    const auto write = [&] {
        const Entry &entry = session.entry();
        if (!entry.writes() || !session.write() || session.reply() == nullptr)
            throw Failure(exit_usage, entry.name() + " has no reply that spells " + drawn.path +
                                          (others.empty() ? "" : ", but the body has " + others));
        return session.reply();
    };
    const TiXmlElement before = *write();
    load_payload(session, payload);
    const TiXmlElement *after = changed_in(before, *write(), drawn);
    if (after == session.reply())
        throw Failure(exit_usage, drawn.path + " has no element of its own");
    if (after != nullptr) { // "reply/MD/timeBlockList"
        const std::string path = path_of(*after);
        edits.push_back(body.replace_with(body.find(path.substr(path.find('/', path.find('/') + 1) + 1)), *after));
    }
}

// Weeks that are one text have its path in the body, too.
void replace_drawing(std::vector<Edit> &edits, const Body &body, Session &session, const std::string &argument)
{
    const std::size_t equals = std::min(argument.find('='), argument.size());
    std::map<std::string, const TiXmlElement *> weeks;
    std::vector<std::string> paths;
    find_weeks(weeks, session.body_document()->body());
    if (const auto week = weeks.find(argument.substr(0, equals)); week != weeks.end())
        return edits.push_back(body.replace(*week->second, read_flags(argument.substr(equals + 1))));
    const std::vector<Item> items = payload_items(session, true);
    Json payload = to_json(items);
    const Drawn drawn = put_drawing(payload, items, argument);
    for (const TiXmlNode *grid : session.trace()->grids()) {
        const std::string path = path_of(*grid);
        if ((path.substr(path.find('/') + 1) + "/").compare(0, drawn.path.size() + 1, drawn.path + "/") == 0)
            return edits.push_back(body.replace(*grid->ToElement(), grid_text(drawn.value)));
    }
    paths.reserve(weeks.size());
    for (const auto &week : weeks)
        paths.push_back(week.first);
    replace_list(edits, body, session, payload, drawn, joined(paths, ", "));
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

std::vector<Edit> edits_of(Session &session, const Document &document, const SetOptions &options)
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
        replace_drawing(edits, body, session, drawing);
    std::sort(edits.begin(), edits.end(), [](const Edit &a, const Edit &b) { return a.begin < b.begin; });
    for (std::size_t i = 1; i < edits.size(); ++i)
        if (edits[i].begin < edits[i - 1].end || edits[i].begin == edits[i - 1].begin)
            throw Failure(exit_usage, "a value is set twice");
    return edits;
}

ExitCode set_values(std::ostream &out, std::ostream &errors, const SetOptions &options)
{
    options.settle();
    const Entry &entry = find_parsed(options.message);
    if (options.values.empty() && options.drawings.empty())
        throw Failure(exit_usage, "nothing is to be set: PATH=VALUE or --grid PATH=FILE");
    if (options.in_place && options.file == "-")
        throw Failure(exit_usage, "standard input cannot be changed in place");
    Session before(entry, options, options.file), after(entry, options);
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
        print_refused(errors, after, *after.body_document(), options);
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
    auto [verb, options] = line.add_verb("set", "Changes values in a body and nothing else", set_values);
    options.add_options(verb).get_option("FILE")->required();
    verb.add_option("VALUE", options.values, "PATH=VALUE, as in timeBlockList/timeBlock[1]/endHour=18; places from 0")
        ->type_name("PATH=VALUE");
    verb.add_option("--grid", options.drawings,
                    "A grid or schedule as \"parse\" draws it or --grid-out saves it; which one, if there are several: "
                    "PATH=FILE")
        ->type_name("FILE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    verb.add_flag("--diff", options.difference, "Print the lines that change instead of the whole text");
    verb.add_flag("--in-place", options.in_place, "Write the FILE instead of printing the text");
    line.explain(verb,
                 "The text keeps every other byte. What the library would then refuse is not printed, but explained as "
                 "\"parse\" does. The text is printed as it is, secrets and all, since it is meant to be sent.",
                 {"netparam set md request.xml width=60 handleException/handleType=rec --diff",
                  "netparam parse md request.xml --grid-out grid.txt --quiet",
                  "netparam set md request.xml --grid grid.txt --in-place"});
}

} // namespace netparam
