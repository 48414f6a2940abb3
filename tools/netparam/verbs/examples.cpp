#include "verbs/examples.h"

#include "reading/load.h"
#include "reading/payload.h"
#include "reading/session.h"

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

// The options of an exchange with the file; an extension header may lie beside it.
Options options_for(const std::string &path, const std::string &extension)
{
    Options options;
    options.file = path;
    if (std::ifstream(extension).good())
        options.extension = extension;
    options.settle();
    return options;
}

std::string read_body(const Entry &entry, const Options &options)
{
    Session session(entry, options);
    bool accepted;
    session.read(accepted);
    if (!accepted)
        refuse(options.file, entry);
    TiXmlElement body = session.body_document()->body();
    std::string text = printed(body);
    if (std::count(text.begin(), text.end(), '\n') > long_example) {
        shorten(body);
        text = printed(body);
    }
    return text;
}

std::string write_payload(const Entry &entry, Options options)
{
    const std::string path = options.file;
    options.file.clear(); // it is no XML
    Session session(entry, options);
    session.prepare();
    load_payload(session, entry, read_payload(path, entry).payload);
    if (!session.write() || session.reply() == nullptr)
        refuse(path, entry);
    return printed(*session.reply());
}

} // namespace

Examples read_examples(const std::string &directory)
{
    Examples examples;
    std::istringstream lines(read_text(directory + "/messages.txt"));
    for (std::string file, name; lines >> file >> name;) {
        const Entry &entry = find_message(name);
        const std::string path = directory + "/" + file;
        const Options options = options_for(path, path.substr(0, path.rfind('.')) + "_extension.xml");
        if (examples.count(entry.name()) == 0)
            examples[entry.name()] = "Example, `examples/" + file + "`:\n\n```xml\n" +
                                     (entry.parses() ? read_body(entry, options) : write_payload(entry, options)) +
                                     "```\n";
    }
    return examples;
}

} // namespace netparam
