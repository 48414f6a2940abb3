// netparam new: a body to start from.
#include "bodies.h"
#include "model/accept.h"
#include "model/facts.h"
#include "verbs/command_line.h"

#include <map>

namespace netparam {
namespace {

using netpublic::Row;
using netpublic::Table;

struct NewOptions {
    std::string message;
    bool minimal = false, bare = false;
};

// Without what would end a comment.
std::string comment(std::string text)
{
    for (std::size_t at; (at = text.find("--")) != std::string::npos;)
        text.insert(at + 1, " ");
    return "<!-- " + text + " -->";
}

// An example with what may be there instead. The remarks stand behind the texts, where no walk over children meets
// them; what is to be said of elements with children stands above the body.
class Draft {
public:
    Draft(const Entry &entry, const NewOptions &options)
        : entry_(entry), options_(options), body_(entry.element().c_str())
    {
        body_.SetAttribute("version", "1.1");
        bodies::Recipe recipe;
        recipe.required_only = options.minimal;
        recipe.as_written = !entry.parses();
        recipe.made = [this](TiXmlElement &element, const bodies::Path &path) { remark(element, path); };
        if (const Table *table = entry.parses() ? entry.read() : entry.written())
            bodies::fill(body_, *table, recipe);
    }

    void print(std::ostream &out) const
    {
        out << "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n";
        if (!options_.bare) {
            std::string head = entry_.name() + ": " + entry_.title() + ". " + entry_.summary();
            for (const auto &[path, text] : lists_)
                head += "\n     " + path + ": " + text;
            out << comment(head) << '\n';
        }
        out << "<body>\n";
        print(out, body_, "    ");
        out << "</body>\n";
    }

private:
    void remark(const TiXmlElement &element, const bodies::Path &path)
    {
        const Table &table = *path.back().table;
        const Row &row = path.back().row();
        const bool required = (row.flags & netpublic::row_required) != 0;
        if (path.back().inside() == nullptr)
            remarks_[&element] = (required ? "required: " : "") + ((row.flags & netpublic::row_skipped) != 0
                                                                       ? std::string("its text is not read")
                                                                       : accepted_by(table, row));
        if (netpublic::is_list(row.kind) && lists_.count(bodies::spelled(path)) == 0)
            lists_[bodies::spelled(path)] = limits_text(table, path.back().index);
    }

    void print(std::ostream &out, const TiXmlElement &element, const std::string &indent) const
    {
        const std::string name = element.ValueStr();
        const char *version = element.Attribute("version");
        out << indent << '<' << name << (version != nullptr ? std::string(" version=\"") + version + '"' : "") << '>';
        if (element.FirstChildElement() == nullptr) {
            const char *text = element.GetText();
            const auto remark = remarks_.find(&element);
            out << (text != nullptr ? in_xml(text) : "");
            // An element without a text would be left with the comment as its first child.
            if (text != nullptr && !options_.bare && remark != remarks_.end() && !remark->second.empty())
                out << comment(remark->second);
        } else {
            out << '\n';
            for (const TiXmlElement *child = element.FirstChildElement(); child != nullptr;
                 child = child->NextSiblingElement())
                print(out, *child, indent + "    ");
            out << indent;
        }
        out << "</" << name << ">\n";
    }

    const Entry &entry_;
    const NewOptions &options_;
    TiXmlElement body_;
    std::map<const TiXmlElement *, std::string> remarks_;
    std::map<std::string, std::string> lists_;
};

ExitCode make_new(std::ostream &out, std::ostream & /*errors*/, const NewOptions &options)
{
    Draft(find_message(options.message), options).print(out);
    return exit_ok;
}

} // namespace

void add_new(CommandLine &line)
{
    auto [verb, options] = line.add_verb("new", "Prints a body to start from", make_new);
    verb.add_option("MESSAGE", options.message, "Its name; see \"netparam list\"")->required();
    verb.add_flag("--minimal", options.minimal, "Only what is required");
    verb.add_flag("--bare", options.bare, "Without comments");
    line.explain(
        verb,
        "Every child that the message reads stands there with a text that it accepts, lists with two items or as "
        "many as they must have; of a message that is only written it is the reply. Comments say what else is "
        "accepted. The library reads the text as it is.",
        {"netparam new md > request.xml", "netparam new ntp --minimal | netparam parse ntp -"});
}

} // namespace netparam
