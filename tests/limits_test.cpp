// What holds for every message, whatever arrives: arguments that are not there, and payloads full of garbage.
// P2, P4, P5, P9.
#include "messages.h"

#include <net_public.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <regex>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using namespace netpublic;
using test::MessageEnvelope;
using test::Xml;

class LimitsTest : public test::HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        loglevel = 0;
    }
};

// Some lines know no mask; the test's own must not get lost with them.
template <class Function> int quietly(Function function)
{
    test::Output quiet;
    return function();
}

std::string outcome_of(int result, std::string log)
{
    for (const char *number : {"(0x)[0-9a-f]+", "(, )[0-9]+(?=\n)"}) // an address, a line
        log = std::regex_replace(log, std::regex(number), "$1#");
    return std::to_string(result) + " " + log + (log.empty() || log.back() != '\n' ? "\n" : "");
}

// Four refusals: no envelope, no node, no payload, a payload of another size. What each returns and logs.
template <class Node, class Function> std::string refusals(const Message &message, Function function, Node *node)
{
    MessageEnvelope envelope(message);
    net_param_t empty = envelope.param, larger = envelope.param;
    empty.data = nullptr;
    larger.dataSize += 4;
    std::string text, before;
    int result = 0;
    for (const std::pair<net_param_t *, Node *> &each : std::vector<std::pair<net_param_t *, Node *>>{
             {nullptr, node}, {&envelope.param, nullptr}, {&empty, node}, {&larger, node}}) {
        const std::string log = test::log_of([&] { result = function(each.first, each.second); });
        if (std::is_same_v<Node, TiXmlNode> && each.first != &larger) {
            EXPECT_EQ(result, -1) << message.name; // a writer that writes nothing looks at nothing
        }
        EXPECT_TRUE(result == 0 || node->NoChildren()) << message.name;
        node->Clear();
        const std::string outcome = outcome_of(result, log);
        text += outcome == before ? "    the same\n" : "    " + outcome;
        before = outcome;
    }
    return text;
}

// Of a child that answers to the first key and is no element; nothing where it is refused without a word.
std::string refused_child(const Message &message)
{
    MessageEnvelope envelope(message);
    TiXmlElement body("body");
    body.LinkEndChild(new TiXmlComment(message.read->key(message.read->row(0))));
    int result = 0;
    const std::string log = test::log_of([&] { result = message.parse(&envelope.param, &body); });
    return log.empty() && result == -1 ? "" : "    a comment for a child: " + outcome_of(result, log);
}

// NETPUBLIC_UPDATE_GOLDEN=1 writes the golden file anew.
TEST_F(LimitsTest, Arguments)
{
    loglevel = modulemask = 0xFFFFFFFF;
    std::string text;
    for (const Message &message : test::all_messages()) {
        TiXmlElement body("body");
        if (message.parse != nullptr)
            text += std::string(message.name) + ", parser\n" + refusals<TiXmlNode>(message, message.parse, &body) +
                    refused_child(message);
        if (message.write != nullptr)
            text += std::string(message.name) + ", writer\n" + refusals<TiXmlElement>(message, message.write, &body);
    }
    const char *golden = NETPUBLIC_GOLDEN_DIR "/arguments.txt";
    if (std::getenv("NETPUBLIC_UPDATE_GOLDEN") != nullptr)
        std::ofstream(golden) << text;
    std::ifstream file(golden);
    const std::string expected(std::istreambuf_iterator<char>(file), {});
    EXPECT_EQ(text, expected);
}

// Whatever a payload holds, a writer stays inside it, and a parser that meets it keeps its promises.
TEST_F(LimitsTest, GarbagePayloads)
{
    std::mt19937 random(7);
    for (const Message &message : test::all_messages()) {
        for (int round = 0; round < 8; ++round) {
            MessageEnvelope envelope(message);
            auto *bytes = static_cast<unsigned char *>(envelope.param.data);
            constexpr int fills[] = {0x00, 0xFF, 0x7F, 0x80, 0x01, 'x'};
            for (std::size_t i = 0; i < envelope.size(); ++i)
                bytes[i] = static_cast<unsigned char>(round < 6 ? fills[round] : random());
            const std::string before = envelope.content();
            TiXmlElement parent("parent");
            if (message.write != nullptr) {
                const int result = quietly([&] { return message.write(&envelope.param, &parent); });
                EXPECT_TRUE(result == 0 || result == -1) << message.name;
                EXPECT_TRUE(result == 0 || parent.FirstChild() == nullptr) << message.name;
                EXPECT_NE(test::print(parent), "") << message.name;
                EXPECT_EQ(envelope.content(), before) << message.name;
            }
            if (message.parse != nullptr) {
                Xml body(test::best_example(message));
                const int result = quietly([&] { return message.parse(&envelope.param, body); });
                EXPECT_TRUE(result == 0 || result == -1) << message.name;
            }
        }
    }
}

} // namespace
