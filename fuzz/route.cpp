// The target that sends a text both ways: through the XML library's tree and by the text route.
#include "promises.h"
#include "session.h"
#include "targets.h"

#include <net_host_standin.h>
#include <net_public.h>
#include <tinyxml.h>

#include <cstring>

namespace fuzz {
namespace {

using netpublic::Message;

// What one way makes of a request.
struct Made {
    int result = 0;
    int replied = 0; // -1: the writer failed
    std::string reply;
    std::string log;
};

// What the last byte of an input's head says of the payload before the call.
enum Payload : unsigned { initialised, garbage, own_bytes, kinds };

void fill(Session &session, unsigned kind, const Bytes &input)
{
    auto *bytes = static_cast<unsigned char *>(session.payload());
    if (kind == garbage)
        std::memset(bytes, 0xA5, session.size());
    for (std::size_t at = 0; kind == own_bytes && input.left() != 0 && at < session.size(); at += input.left())
        std::memcpy(bytes + at, input.rest(), std::min(input.left(), session.size() - at));
}

// The log's lines since the last call.
std::string lines_since(Host &host, std::size_t &seen)
{
    const std::string_view log = host.log();
    std::string lines(log.substr(seen));
    seen = log.size();
    return lines;
}

// As the library's documentation says of the text route.
TiXmlElement *message_element(TiXmlDocument &document)
{
    TiXmlElement *root = document.RootElement();
    return std::strcmp(root->Value(), "body") == 0 ? root->FirstChildElement() : root;
}

Made by_tree(Session &session, TiXmlDocument &document, Host &host, std::size_t &seen)
{
    Made made;
    const Message &message = session.message();
    if (message.parse != nullptr)
        made.result = message.parse(&session.envelope(), message_element(document));
    if (message.write != nullptr) {
        TiXmlElement parent("body");
        made.replied = message.write(&session.envelope(), &parent);
        if (parent.FirstChild() != nullptr)
            made.reply = print(*parent.FirstChild());
    }
    made.log = lines_since(host, seen);
    return made;
}

char reply[1 << 18];

Made by_text(Session &session, const std::string &text, Host &host, std::size_t &seen)
{
    Made made;
    const Message &message = session.message();
    if (message.parse != nullptr) {
        Guarded copy(text.c_str(), text.size() + 1);
        made.result =
            net_text_x2s(message.parse, &session.envelope(), copy.as<char>(), static_cast<unsigned int>(text.size()));
    }
    if (message.write != nullptr) {
        const int length = net_text_s2x(message.write, &session.envelope(), reply, sizeof reply);
        made.replied = length < 0 ? -1 : 0;
        made.reply = reply;
        require(length < 0 ||
                    made.reply.size() == std::min<std::size_t>(static_cast<std::size_t>(length), sizeof reply - 1),
                "P16", "the length of a reply");
    }
    made.log = lines_since(host, seen);
    return made;
}

// A buffer that is too small by so much.
void check_cut(Session &session, const std::string &whole, std::size_t size)
{
    Guarded part(size);
    const int length =
        net_text_s2x(session.message().write, &session.envelope(), part.as<char>(), static_cast<unsigned int>(size));
    require(length == static_cast<int>(whole.size()) && whole.compare(0, size - 1, part.as<char>()) == 0, "P16",
            "a reply that is cut");
}

// What the library says of a text that it does not read, and nothing else.
bool is_refusal(const Made &made)
{
    return made.result == -1 && (made.log.empty() || (made.log.find("xml parse failed:") != std::string::npos &&
                                                      made.log.find('\n') == made.log.size() - 1));
}

} // namespace

void run_route(const std::uint8_t *data, std::size_t size)
{
    Host host;
    Bytes input(data, size);
    const Message &message = message_of(input.number<std::uint16_t>(), [](const Message &) { return true; });
    const net_ext_t ext = host.play(input);
    net_host_fail_allocation(0); // the two ways ask for different blocks
    const unsigned kind = size >= head_size ? data[head_size - 1] % kinds : initialised;
    const std::string text(reinterpret_cast<const char *>(input.rest()), input.left());

    TiXmlDocument document;
    document.Parse((text.c_str() + std::string(xml_padding, '\0')).c_str());
    Session tree(message, ext, host), scanned(message, ext, host);
    if (!tree.ready() || !scanned.ready())
        return;
    std::size_t seen = host.log().size();
    fill(tree, kind, input);
    fill(scanned, kind, input);
    const bool same_start = std::memcmp(tree.payload(), scanned.payload(), tree.size()) == 0;
    require(same_start, "P16", "two payloads of one initialiser");

    if (message.parse != nullptr && (document.Error() || document.RootElement() == nullptr)) {
        Guarded copy(text.c_str(), text.size() + 1);
        Made made;
        made.result =
            net_text_x2s(message.parse, &scanned.envelope(), copy.as<char>(), static_cast<unsigned int>(text.size()));
        made.log = lines_since(host, seen);
        require(is_refusal(made), "P16", "a malformed text");
        require(std::memcmp(tree.payload(), scanned.payload(), tree.size()) == 0 &&
                    tree.envelope().inited == scanned.envelope().inited,
                "P16", "what a malformed text has changed");
        return;
    }
    const Made expected = by_tree(tree, document, host, seen);
    const Made made = by_text(scanned, text, host, seen);
    if (made.log.find("too many attributes line(") != std::string::npos &&
        extent_of(document).attributes > netpublic::scanned_attributes)
        return;
    require(made.result == expected.result, "P16", "the result of reading");
    require(std::memcmp(tree.payload(), scanned.payload(), tree.size()) == 0, "P16", "the bytes of a payload");
    require(tree.envelope().inited == scanned.envelope().inited, "P16", "inited");
    require(made.replied == expected.replied, "P16", "the result of writing");
    require(made.reply == expected.reply.substr(0, sizeof reply - 1), "P16", "the text of a reply");
    require(made.log == expected.log, "P16", "the log's lines");
    if (message.write != nullptr && made.replied == 0 && !text.empty())
        check_cut(scanned, expected.reply, 1 + static_cast<unsigned char>(text[0]) * (made.reply.size() + 1) / 256);
}

void route_seeds(const Sink &sink)
{
    message_seeds(sink, Body::text);
    message_seeds(
        [&sink](const std::string &name, std::string input) {
            input[head_size - 1] = garbage;
            sink(name + "-garbage", input);
        },
        Body::text);
}

} // namespace fuzz
