#include "verbs/examples.h"

#include "reading/payload.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace netparam {
namespace {

constexpr std::ptrdiff_t long_example = 60; // lines

// The names in an element, not what they hold.
std::string shape_of(const TiXmlElement &element)
{
    std::string shape = "<" + element.ValueStr();
    for (const TiXmlElement *child = element.FirstChildElement(); child != nullptr; child = child->NextSiblingElement())
        shape += shape_of(*child);
    return shape + ">";
}

// Leaves the first four of elements that repeat: some lists want so many.
void shorten(TiXmlElement &element)
{
    std::map<std::string, int> seen;
    for (TiXmlElement *child = element.FirstChildElement(); child != nullptr;) {
        TiXmlElement *next = child->NextSiblingElement();
        shorten(*child);
        if (++seen[shape_of(*child)] > 4)
            element.RemoveChild(child);
        child = next;
    }
}

[[noreturn]] void refuse(const std::string &path, const Entry &entry)
{
    throw Failure(exit_refused, path + " is refused by " + entry.name());
}

std::string read_body(const Entry &entry, const Options &options, const std::string &path)
{
    Session session(entry, options, path);
    bool accepted;
    session.read(accepted);
    if (!accepted)
        refuse(path, entry);
    TiXmlElement body = session.body_document()->body();
    std::string text = printed(body);
    if (std::count(text.begin(), text.end(), '\n') > long_example) {
        shorten(body);
        text = printed(body);
    }
    return text;
}

} // namespace

TiXmlElement written_example(const Entry &entry, const Options &options, const Json &payload, const std::string &name)
{
    Session session(entry, options);
    session.prepare();
    load_payload(session, payload);
    if (!session.write() || session.reply() == nullptr)
        refuse(name, entry);
    return *session.reply();
}

Examples read_examples(const std::string &directory)
{
    Examples examples;
    std::istringstream lines(read_text(directory + "/messages.txt"));
    for (std::string file, name; lines >> file >> name;) {
        const Entry &entry = find_message(name);
        const std::string path = directory + "/" + file;
        const std::string extension = path.substr(0, path.rfind('.')) + "_extension.xml"; // may lie beside it
        Options options;
        if (std::ifstream(extension).good())
            options.extension = extension;
        options.settle();
        if (examples.count(entry.name()) == 0)
            examples[entry.name()] =
                "Example, `examples/" + file + "`:\n\n```xml\n" +
                (entry.parses() ? read_body(entry, options, path)
                                : printed(written_example(entry, options, read_payload(path, entry).payload, path))) +
                "```\n";
    }
    return examples;
}

} // namespace netparam
