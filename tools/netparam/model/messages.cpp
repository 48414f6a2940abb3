#include "model/messages.h"

#include "engine/matching.h"
#include "model/failure.h"
#include "model/nearest.h"
#include "model/text.h"

#include <algorithm>

namespace netparam {
namespace {

using netpublic::Message;

std::vector<const Message *> registered()
{
    std::vector<const Message *> messages;
#define NETPARAM_COLLECT(domain)                                                                                       \
    for (const Message &message : netpublic::domain##_messages())                                                      \
        messages.push_back(&message);
    NETPUBLIC_DOMAINS(NETPARAM_COLLECT)
#undef NETPARAM_COLLECT
    return messages;
}

std::vector<Entry> join()
{
    std::vector<Entry> all;
    std::vector<const Message *> left = registered();
    for (const netpublic::Initialiser &initialiser : netpublic::initialisers) {
        const auto mine = [&](const Message *message) { return message->initialise == initialiser.function; };
        for (const Message *message : left)
            if (mine(message))
                all.push_back({message, &initialiser});
        if (std::none_of(left.begin(), left.end(), mine))
            all.push_back({nullptr, &initialiser});
        left.erase(std::remove_if(left.begin(), left.end(), mine), left.end());
    }
    for (const Message *message : left)
        all.push_back({message, nullptr});
    return all;
}

std::string without_suffix(const std::string &name)
{
    const std::size_t length = name.size();
    return length > 4 ? name.substr(0, length - 4) : name; // "_x2s" and "_s2x"
}

// All names of a message but its own.
std::vector<std::string> aliases(const Entry &entry)
{
    std::vector<std::string> names;
    if (entry.initialiser != nullptr)
        names.emplace_back(entry.initialiser->name);
    if (entry.parses())
        names.insert(names.end(), {entry.parser(), without_suffix(entry.parser())});
    if (entry.writes())
        names.insert(names.end(), {entry.writer(), without_suffix(entry.writer())});
    if (!entry.element().empty())
        names.push_back(entry.element());
    return names;
}

bool bears(const Entry &entry, const std::string &wanted)
{
    const std::vector<std::string> names = aliases(entry);
    return std::any_of(names.begin(), names.end(), [&](const std::string &name) { return simplified(name) == wanted; });
}

[[noreturn]] void unknown(const std::string &name)
{
    std::vector<std::string> names; // the messages' own ones first
    for (const Entry &entry : entries())
        if (entry.message != nullptr)
            names.push_back(entry.name());
    for (const Entry &entry : entries()) {
        const std::vector<std::string> more = aliases(entry);
        names.insert(names.end(), more.begin(), more.end());
    }
    const std::vector<std::string> near = nearest(name, names);
    throw Failure(exit_usage, "no message is called " + in_quotes(name) +
                                  (near.empty() ? "; \"netparam list\" shows them all"
                                                : "; did you mean " + joined(near, ", ") + "?"));
}

} // namespace

std::string Entry::name() const
{
    return message != nullptr ? message->name : "-";
}

const netpublic::Table *Entry::read() const
{
    return message != nullptr ? message->read : nullptr;
}

const netpublic::Table *Entry::written() const
{
    return message != nullptr ? message->written : nullptr;
}

std::string Entry::title() const
{
    const netpublic::Table *table = read() != nullptr ? read() : written();
    return table != nullptr ? table->title : "";
}

std::string Entry::summary() const
{
    const netpublic::Table *table = read() != nullptr ? read() : written();
    return table != nullptr ? table->summary : "";
}

std::string Entry::domain() const
{
#define NETPARAM_FIND(domain)                                                                                          \
    for (const Message &each : netpublic::domain##_messages())                                                         \
        if (&each == message)                                                                                          \
            return #domain;
    NETPUBLIC_DOMAINS(NETPARAM_FIND)
#undef NETPARAM_FIND
    return "";
}

bool Entry::parses() const
{
    return message != nullptr && message->parse != nullptr;
}

bool Entry::writes() const
{
    return message != nullptr && message->write != nullptr;
}

std::string Entry::directions() const
{
    return parses() && writes() ? "parse write" : parses() ? "parse" : writes() ? "write" : "-";
}

std::string Entry::parser() const
{
    return message != nullptr && message->parse != nullptr ? message->parser : "";
}

std::string Entry::writer() const
{
    return message != nullptr && message->write != nullptr ? message->writer : "";
}

std::string Entry::root() const
{
    return writes() && message->written != nullptr ? message->written->root() : "";
}

std::string Entry::element() const
{
    return message != nullptr ? netpublic::element_of(*message) : "";
}

bool Entry::bears_element(const TiXmlElement &body) const
{
    return netpublic::is_named(body.Value(), element().c_str());
}

const netpublic::Table *Entry::table() const
{
    return message == nullptr ? nullptr : netpublic::payload_table(*message);
}

std::vector<const netpublic::Table *> Entry::tables() const
{
    std::vector<const netpublic::Table *> all;
    for (const netpublic::Table *one : {read(), written(), table()})
        if (one != nullptr && std::find(all.begin(), all.end(), one) == all.end())
            all.push_back(one);
    return all;
}

unsigned int Entry::size() const
{
    return initialiser != nullptr && initialiser->size > 0 ? initialiser->size : message != nullptr ? message->size : 0;
}

const std::vector<Entry> &entries()
{
    static const std::vector<Entry> all = join();
    return all;
}

const Entry *parsed_message(const std::string &name)
{
    for (const Entry &entry : entries())
        if (entry.parses() && simplified(entry.name()) == simplified(name))
            return &entry;
    return nullptr;
}

namespace {

template <class Test> std::vector<const Entry *> parsed_messages(Test test)
{
    std::vector<const Entry *> found;
    for (const Entry &entry : entries())
        if (entry.parses() && test(entry))
            found.push_back(&entry);
    return found;
}

bool has_key(const Entry &entry, const TiXmlElement &child)
{
    const netpublic::Table *table = entry.message->read;
    for (unsigned i = 0; table != nullptr && i < table->keys; ++i)
        if (netpublic::is_named(child.Value(), table->key(table->row(i))))
            return true;
    return false;
}

// Has the message a key of the name of every child? Of no body without children.
bool has_keys(const Entry &entry, const TiXmlElement &body)
{
    const TiXmlElement *child = body.FirstChildElement();
    bool fits = child != nullptr;
    for (; fits && child != nullptr; child = child->NextSiblingElement())
        fits = has_key(entry, *child);
    return fits;
}

std::string names_of(const std::vector<const Entry *> &messages)
{
    std::vector<std::string> names;
    names.reserve(messages.size());
    for (const Entry *entry : messages)
        names.push_back(entry->name());
    return joined(names, ", ");
}

// ": md, user", if there are only a few.
std::string candidates(const std::vector<const Entry *> &messages)
{
    constexpr std::size_t few = 6;
    return messages.empty() || messages.size() > few ? "" : ": " + names_of(messages);
}

} // namespace

const Entry &identify(const TiXmlElement &body, const std::string &name)
{
    const auto of_root = parsed_messages([&](const Entry &entry) { return entry.bears_element(body); });
    if (of_root.size() == 1)
        return *of_root.front();
    const auto fitting = parsed_messages(
        [&](const Entry &entry) { return (of_root.empty() || entry.bears_element(body)) && has_keys(entry, body); });
    if (!of_root.empty() && fitting.size() == 1)
        return *fitting.front();
    const std::string root = in_quotes(body.ValueStr());
    throw Failure(exit_unknown,
                  (name.empty() ? "" : printable(name) + ": ") +
                      (!of_root.empty()  ? "several messages have the root element " + root + candidates(of_root)
                       : fitting.empty() ? "no message has the root element " + root
                                         : "no message has the root element " + root + ", but keys for its children" +
                                               candidates(fitting)));
}

const Entry &find_message(const std::string &name)
{
    const std::string wanted = simplified(name);
    std::vector<const Entry *> found;
    for (const Entry &entry : entries())
        if (entry.message != nullptr && simplified(entry.name()) == wanted)
            return entry;
        else if (bears(entry, wanted))
            found.push_back(&entry);
    if (found.empty())
        unknown(name);
    if (found.size() == 1 && found.front()->message == nullptr)
        throw Failure(exit_usage, std::string(found.front()->initialiser->name) +
                                      " stands in the catalogue, but the library has neither parser nor writer for it");
    if (found.size() > 1)
        throw Failure(exit_usage, in_quotes(name) + " may be any of these messages: " + names_of(found));
    return *found.front();
}

const Entry &find_parsed(const std::string &name)
{
    const Entry &entry = find_message(name);
    if (!entry.parses())
        throw Failure(exit_usage, entry.name() + " has no parser: it is only written");
    return entry;
}

} // namespace netparam
