#include "ground/element.h"
#include "messages.h"
#include "text/scanner.h"

#include <net_public.h>

#include <string>
#include <vector>

namespace {

using netpublic::Message;
using netpublic::TextWriter;
using test::MessageEnvelope;

class TextRoute : public test::HostTest {};

struct Outcome {
    int result;
    unsigned int inited;
    std::string payload;
    std::string reply; // "failed" when the writer fails
};

bool operator==(const Outcome &a, const Outcome &b)
{
    return a.result == b.result && a.inited == b.inited && a.payload == b.payload && a.reply == b.reply;
}

std::ostream &operator<<(std::ostream &out, const Outcome &outcome)
{
    return out << outcome.result << ", inited " << outcome.inited << ", " << outcome.reply;
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
    made.result = message.parse != nullptr ? read(envelope.param) : 0;
    made.inited = envelope.param.inited;
    made.payload = envelope.content();
    made.reply = message.write != nullptr ? reply(message, envelope.param) : "";
    return made;
}

Outcome tree_outcome(const Message &message, const std::string &text)
{
    test::Xml xml(text);
    return outcome(
        message, [&](net_param_t &param) { return message.parse(&param, xml.root()); }, tree_reply);
}

Outcome text_outcome(const Message &message, std::string text)
{
    netpublic::ScannedText scanned;
    EXPECT_EQ(scanned.scan(text.data(), static_cast<unsigned int>(text.size())), 0);
    return outcome(
        message, [&](net_param_t &param) { return message.parse(&param, scanned.root().handle()); }, text_reply);
}

// Every message on every example, its own or not.
TEST_F(TextRoute, DoesWhatTheTreeRouteDoes)
{
    int accepted = 0;
    for (const Message &message : test::all_messages()) {
        std::vector<Outcome> by_tree, by_text;
        const std::string tree_log = test::log_of([&] {
            for (const std::string &text : test::example_bodies())
                by_tree.push_back(tree_outcome(message, text));
        });
        const std::string text_log = test::log_of([&] {
            for (const std::string &text : test::example_bodies())
                by_text.push_back(text_outcome(message, text));
        });
        EXPECT_EQ(text_log, tree_log) << message.name;
        for (std::size_t i = 0; i < by_tree.size(); ++i) {
            ASSERT_EQ(by_text[i], by_tree[i]) << message.name << "\n" << test::example_bodies()[i];
            accepted += by_tree[i].result == 0 && !by_tree[i].reply.empty() && by_tree[i].reply != "failed";
        }
    }
    EXPECT_GT(accepted, 100);
}

} // namespace
