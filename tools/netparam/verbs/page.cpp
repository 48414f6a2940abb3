// The reference as a page for a browser: a template, filled with the descriptions and the examples as data.
#include "verbs/command_line.h"
#include "verbs/describe.h"
#include "verbs/embedded.h"
#include "verbs/examples.h"

#include <net_version.h>

#include <map>
#include <sstream>
#include <stdexcept>

namespace netparam {
namespace {

struct PageOptions {};

std::string_view embedded(const std::string &name)
{
    const auto found = embedded_files().find(name);
    if (found == embedded_files().end())
        throw std::logic_error(name + " is not embedded");
    return found->second;
}

// The complete text of an example: one that clients send, or what the writer makes of a payload in JSON.
std::string example_text(const Entry &entry, const std::string &file)
{
    const std::string_view text = embedded(file);
    if (entry.parses())
        return std::string(text);
    Options options;
    options.settle();
    const Json json = Json::parse(text);
    return printed(written_example(entry, options, json.contains("payload") ? json["payload"] : json, file), "    ");
}

// By message.
std::map<std::string, Json> embedded_examples()
{
    std::map<std::string, Json> examples;
    std::istringstream lines{std::string(embedded("messages.txt"))};
    for (std::string file, name; lines >> file >> name;) {
        const Entry &entry = find_message(name);
        examples[entry.name()].push_back({{"file", file}, {"text", example_text(entry, file)}});
    }
    return examples;
}

// JSON that no HTML parser takes for the end of the element around it.
std::string for_script(const Json &json)
{
    return replaced(json.dump(), "<", "\\u003c");
}

// A message a line: changes show line by line.
std::string page_data()
{
    std::map<std::string, Json> examples = embedded_examples();
    std::string text = R"({"version": ")" NETPUBLIC_VERSION_STRING R"(", "messages": [)", separator = "\n";
    for (const Entry &entry : entries()) {
        if (entry.message == nullptr)
            continue;
        Json message = message_json(entry);
        message["examples"] = examples.try_emplace(entry.name(), Json::array()).first->second;
        text += separator + for_script(message);
        separator = ",\n";
    }
    return text + "\n]}";
}

void replace(std::string &text, const std::string &mark, std::string_view with)
{
    const std::size_t at = text.find(mark);
    if (at == std::string::npos)
        throw std::logic_error("the template has no " + mark);
    text.replace(at, mark.size(), with);
}

ExitCode page(std::ostream &out, std::ostream & /*errors*/, const PageOptions & /*options*/)
{
    std::string text(embedded("page.html"));
    replace(text, "/* STYLE */", embedded("page.css"));
    std::string script;
    for (const char *part :
         {"dom.js", "xml.js", "check.js", "model.js", "drawings.js", "tree.js", "workbench.js", "page.js"})
        script += embedded(part);
    replace(text, "/* SCRIPT */", script);
    replace(text, "/* DATA */", page_data());
    out << text;
    return exit_ok;
}

} // namespace

void add_page(CommandLine &line)
{
    auto [verb, options] = line.add_verb("page", "All messages as a page for a browser", page);
    line.explain(
        verb,
        "Prints one HTML file that needs no network: every message with its elements, accepted values, payload "
        "offsets and an example, which can be searched, edited, checked and copied. Grids and weekly schedules "
        "are drawn and can be edited there.",
        {"netparam page > reference.html"});
}

} // namespace netparam
