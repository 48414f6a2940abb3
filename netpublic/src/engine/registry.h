// Which messages there are, for the tools. A domain file ends with its list, one line a message:
//
//     MESSAGES(alarm, //
//              MESSAGE("md", nets_param_md_init, net_md_x2s, net_md_s2x, motion_message),
//              MESSAGE("alarm-area", nets_param_alarm_area_init, net_alarm_area_x2s, nullptr, alarm_area_message))
//
// and its name stands in NETPUBLIC_DOMAINS below. In the firmware's build all this is nothing.
//
//     MESSAGE(name, initialiser, parser, writer, table)
//     MESSAGE(name, initialiser, parser, writer, table read, table written)
//     HOST_MESSAGE(name, payload type, parser, writer, tables as above)   the host prepares the envelope
//
// Behind the tables stands what clients call the body's element, where no writer names it. Parsers do not look at it.
//
// `name` is what one types: the family name in lower case with hyphens. A missing parser, writer or table
// is nullptr; a writer without a table writes nothing.
#ifndef NETPUBLIC_REGISTRY_H
#define NETPUBLIC_REGISTRY_H

#ifdef NETPUBLIC_DESCRIBED

#include "engine/table.h"

#include <net_types.h>

#include <cstddef>

// The domains whose files hold a list.
// clang-format off
#define NETPUBLIC_DOMAINS(DOMAIN) \
    DOMAIN(alarm) \
    DOMAIN(stream) \
    DOMAIN(recode) \
    DOMAIN(replay) \
    DOMAIN(snap) \
    DOMAIN(timelapse) \
    DOMAIN(system) \
    DOMAIN(support) \
    DOMAIN(network) \
    DOMAIN(ptz) \
    DOMAIN(osd) \
    DOMAIN(user)
// clang-format on

namespace netpublic {

using Initialise = int (*)(net_param_t *, net_ext_t *);
using Parse = int (*)(net_param_t *, TiXmlNode *);
using WriteBody = int (*)(net_param_t *, TiXmlElement *);

struct Message {
    const char *name;
    const char *initialiser; // its name; empty when the host prepares the envelope
    const char *parser;
    const char *writer;
    Initialise initialise;
    Parse parse;
    WriteBody write;
    unsigned int size; // of the payload that the host prepares; else the catalogue knows
    const Table *read; // of the body that is parsed, if the rows say what it is
    const Table *written;
    const char *element; // of the bodies that are read, where it is not the written root; null otherwise
};

struct Messages {
    const Message *first;
    std::size_t count;

    const Message *begin() const
    {
        return first;
    }
    const Message *end() const
    {
        return first + count;
    }
};

// The rows of the payload itself; null where only a walk's are known.
inline const Table *payload_table(const Message &message)
{
    const Table *table = message.read != nullptr ? message.read : message.written;
    return table == nullptr || (table->layout == nullptr && (table->flags & table_walked) == 0) ? table : table->layout;
}

// One function a domain.
#define NETPUBLIC_DECLARE(domain) Messages domain##_messages();
NETPUBLIC_DOMAINS(NETPUBLIC_DECLARE)
#undef NETPUBLIC_DECLARE

constexpr const Table *table_of(std::nullptr_t)
{
    return nullptr;
}
template <class Described> constexpr const Table *table_of(const Described &described)
{
    return &described.table();
}

template <class Read> constexpr Message message(Message names, const Read &read)
{
    names.read = names.parse != nullptr ? table_of(read) : nullptr;
    names.written = names.write != nullptr ? table_of(read) : nullptr;
    return names;
}
template <class Read, class Written> constexpr Message message(Message names, const Read &read, const Written &written)
{
    names.read = table_of(read);
    names.written = table_of(written);
    return names;
}
template <class Read, std::size_t Size>
constexpr Message message(Message names, const Read &read, const char (&element)[Size])
{
    names.element = element;
    return message(names, read);
}
template <class Read, class Written, std::size_t Size>
constexpr Message message(Message names, const Read &read, const Written &written, const char (&element)[Size])
{
    names.element = element;
    return message(names, read, written);
}

// What the element of the message's bodies is called; empty for a message without a body.
inline const char *element_of(const Message &message)
{
    return message.element != nullptr ? message.element : message.written != nullptr ? message.written->root() : "";
}

#define MESSAGE(name, initialiser, parser, writer, ...)                                                                \
    ::netpublic::message(                                                                                              \
        {name, #initialiser, #parser, #writer, initialiser, parser, writer, 0, nullptr, nullptr, nullptr},             \
        __VA_ARGS__)
#define HOST_MESSAGE(name, payload, parser, writer, ...)                                                               \
    ::netpublic::message(                                                                                              \
        {name, "", #parser, #writer, nullptr, parser, writer, sizeof(payload), nullptr, nullptr, nullptr},             \
        __VA_ARGS__)
// Defined by its full name, so that a domain that NETPUBLIC_DOMAINS lacks does not compile.
#define MESSAGES(domain, ...)                                                                                          \
    netpublic::Messages netpublic::domain##_messages()                                                                 \
    {                                                                                                                  \
        static constexpr Message list[] = {__VA_ARGS__};                                                               \
        return {list, sizeof list / sizeof list[0]};                                                                   \
    }

} // namespace netpublic

#else
#define MESSAGES(domain, ...)
#endif

#endif
