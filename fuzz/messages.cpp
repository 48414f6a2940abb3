// The targets that parse and write messages.
#include "promises.h"
#include "session.h"
#include "targets.h"
#include "tree_code.h"

#include <net_host_standin.h>
#include <tinyxml.h>

#include <cstring>

namespace fuzz {
namespace {

using netpublic::Message;

bool goes_both_ways(const Message &message)
{
    return message.parse != nullptr && message.write != nullptr;
}

// An input's head and the session that it asks for.
struct Request {
    Host host;
    Bytes input;
    const Message &message;
    net_ext_t ext;

    Request(const std::uint8_t *data, std::size_t size, Wanted wanted)
        : input(data, size), message(message_of(input.number<std::uint16_t>(), wanted)), ext(host.play(input))
    {
    }
};

// The root element of a text, if it may be parsed and has one.
class Document {
public:
    explicit Document(const Bytes &input)
    {
        const Text text(input.rest(), input.left());
        if (text.get() != nullptr)
            document_.Parse(text.get(), nullptr, TIXML_ENCODING_UTF8);
    }
    TiXmlElement *root()
    {
        return document_.Error() ? nullptr : document_.RootElement();
    }

private:
    TiXmlDocument document_;
};

// Once into a fresh payload, and again into what the first one has left.
void parse_twice(Session &session, TiXmlElement &body)
{
    session.parse(&body);
    session.parse(&body);
    if (session.message().write != nullptr)
        session.write();
}

// Messages whose own text reads as something else, meant so; what is written after that stays.
bool settles_later(const Message &message)
{
    for (const char *name : {
             "support",         // "disk" answers to "diskNum", which stands in front of it
             "record-schedule", // an hour of several types reads as one of them, "videoloss" as "loss"
             "ai-cfg",          // a negative smartTrackModeAbility is left out, so that it reads as 0
         })
        if (std::strcmp(message.name, name) == 0)
            return true;
    return false;
}

// A writer that meets a lack of memory; from here on there is enough.
void write_without_memory(Request &request, Session &session)
{
    if (!request.host.memory_fails())
        return;
    session.write();
    net_host_fail_allocation(0);
}

// What a payload is written as must read as the same payload, and be written as the same text again.
// Only a member that no text has set may hold what no text may say.
void write_and_return(Request &request, Session &session, bool settled)
{
    TiXmlElement parent("body");
    const Written first = session.write(&parent);
    require(session.write().text == first.text, "P9", "a writer's second result differs from its first");
    TiXmlElement *root = parent.FirstChildElement();
    if (first.result != 0 || root == nullptr)
        return;
    Session again(request.message, request.ext, request.host);
    if (!again.ready())
        return;
    if (again.parse_closely(root) != 0) {
        if (!session.may_refuse(again))
            broken("P9", std::string(request.message.name) + ": what is written is refused: " + first.text);
        return;
    }
    if (!settled)
        return write_and_return(request, again, true);
    const Written second = again.write();
    if (second.result != 0 || second.text != first.text)
        broken("P9", std::string(request.message.name) + ": another text after reading: " + first.text + "\nthen " +
                         second.text);
}

} // namespace

void run_parse(const std::uint8_t *data, std::size_t size)
{
    Request request(data, size, parses);
    Document document(request.input);
    if (document.root() == nullptr)
        return;
    Session session(request.message, request.ext, request.host);
    if (session.ready())
        parse_twice(session, *document.root());
}

void run_write(const std::uint8_t *data, std::size_t size)
{
    Request request(data, size, goes_both_ways);
    Document document(request.input);
    if (document.root() == nullptr)
        return;
    Session session(request.message, request.ext, request.host);
    if (!session.ready() || session.parse_closely(document.root()) != 0)
        return;
    write_without_memory(request, session);
    write_and_return(request, session, !settles_later(request.message));
}

void run_tree(const std::uint8_t *data, std::size_t size)
{
    Request request(data, size, parses);
    TiXmlElement root("body");
    decode_tree(request.input, root);
    Session session(request.message, request.ext, request.host);
    if (session.ready())
        parse_twice(session, root);
}

// Steps over the payload: a gap, how many words to change, and to what.
void run_payload(const std::uint8_t *data, std::size_t size)
{
    Request request(data, size, writes);
    Session session(request.message, request.ext, request.host);
    if (!session.ready())
        return;
    auto *bytes = static_cast<unsigned char *>(session.payload());
    Bytes &input = request.input;
    const std::uint8_t fill = input.byte();
    if (fill != 0)
        std::memset(bytes, fill, session.size());
    constexpr std::int32_t numbers[] = {0, 1, -1, 2, 0x7FFFFFFF, -0x7FFFFFFF - 1, 64, 255, 0x3F800000, 0x41414141};
    for (std::size_t at = 0; input.left() != 0;) {
        const std::uint8_t step = input.byte();
        at += (step & 0xF) != 0xF ? (step & 0xFu) * 4 : input.number<std::uint16_t>();
        const std::int32_t value = step >> 4 < 10 ? numbers[step >> 4] : input.number<std::int32_t>();
        for (unsigned times = step >> 4 == 15 ? input.byte() : 1; times > 0; --times, at += sizeof value)
            if (at + sizeof value <= session.size())
                std::memcpy(bytes + at, &value, sizeof value);
    }
    distrust(session);
    write_without_memory(request, session);
    TiXmlElement parent("body");
    const Written first = session.write(&parent);
    if (fill % 4 == 0)
        require(session.write().text == first.text, "P9", "a writer's second result differs from its first");
    // A parser may meet such a payload, too.
    if (fill % 2 == 0 && first.result == 0 && parent.FirstChild() != nullptr && request.message.parse != nullptr)
        session.parse(parent.FirstChild());
}

} // namespace fuzz
