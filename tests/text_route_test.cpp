#include "ground/element.h"
#include "messages.h"
#include "text/scanner.h"

#include <net_public.h>

#include <string>

namespace {

using netpublic::Message;
using netpublic::TextWriter;
using test::MessageEnvelope;

class TextRoute : public test::HostTest {};

struct Outcome {
    int result;
    unsigned int inited;
    std::string payload;
    std::string log;
    std::string reply; // "failed" when the writer fails
};

bool operator==(const Outcome &a, const Outcome &b)
{
    return a.result == b.result && a.inited == b.inited && a.payload == b.payload && a.log == b.log &&
           a.reply == b.reply;
}

std::ostream &operator<<(std::ostream &out, const Outcome &outcome)
{
    return out << outcome.result << ", inited " << outcome.inited << "\n" << outcome.log << outcome.reply;
}

std::string tree_reply(const Message &message, net_param_t &param)
{
    TiXmlElement parent("parent");
    if (message.write(&param, &parent) != 0)
        return "failed";
    TiXmlPrinter printer;
    printer.SetStreamPrinting();
    if (parent.FirstChild() != nullptr)
        parent.FirstChild()->Accept(&printer);
    return printer.Str();
}

std::string text_reply(const Message &message, net_param_t &param)
{
    std::string text(1 << 20, '~');
    TextWriter writer(text.data(), static_cast<unsigned int>(text.size()));
    if (message.write(&param, writer.top().handle()) != 0)
        return "failed";
    return text.substr(0, writer.finish());
}

template <class Read, class Reply> Outcome outcome(const Message &message, Read read, Reply reply)
{
    MessageEnvelope envelope(message);
    Outcome made = {};
    made.log = test::log_of([&] {
        made.result = message.parse != nullptr ? read(envelope.param) : 0;
        made.inited = envelope.param.inited;
        made.payload = envelope.content();
        made.reply = message.write != nullptr ? reply(message, envelope.param) : "";
    });
    return made;
}

// Every message on every example, its own or not.
TEST_F(TextRoute, DoesWhatTheTreeRouteDoes)
{
    int accepted = 0;
    for (const Message &message : test::all_messages())
        for (const std::string &text : test::example_bodies()) {
            test::Xml xml(text);
            const Outcome by_tree = outcome(
                message, [&](net_param_t &param) { return message.parse(&param, xml.root()); }, tree_reply);
            const Outcome by_text = outcome(
                message,
                [&](net_param_t &param) {
                    std::string copy = text;
                    netpublic::ScannedText scanned;
                    EXPECT_EQ(scanned.scan(copy.data(), static_cast<unsigned int>(copy.size())), 0);
                    return message.parse(&param, scanned.root().handle());
                },
                text_reply);
            ASSERT_EQ(by_text, by_tree) << message.name << "\n" << text;
            accepted += by_tree.result == 0 && !by_tree.reply.empty() && by_tree.reply != "failed";
        }
    EXPECT_GT(accepted, 100);
}

} // namespace
