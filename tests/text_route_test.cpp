#include "memory.h"
#include "messages.h"

#include <net_host_standin.h>
#include <net_public.h>
#include <promises.h>
#include <session.h>
#include <targets.h>
#include <tinyxml.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using netpublic::Message;
using test::Envelope;
using test::MessageEnvelope;

// P16.
class TextRoute : public test::HostTest {};

// A block of exactly this size, so that the address sanitizer sees a byte too many.
struct Exact {
    explicit Exact(std::size_t size) : bytes(new char[size]) {}
    explicit Exact(const std::string &text) : Exact(text.size() + 1)
    {
        std::memcpy(bytes.get(), text.c_str(), text.size() + 1);
        length = static_cast<unsigned int>(text.size());
    }

    int read(const Message &message, net_param_t &param)
    {
        return net_text_x2s(message.parse, &param, bytes.get(), length);
    }

    std::unique_ptr<char[]> bytes;
    unsigned int length = 0;
};

std::string text_reply(const Message &message, net_param_t &param)
{
    const int length = net_text_s2x(message.write, &param, nullptr, 0);
    if (length < 0)
        return "failed";
    Exact text(static_cast<std::size_t>(length) + 1);
    EXPECT_EQ(net_text_s2x(message.write, &param, text.bytes.get(), static_cast<unsigned int>(length) + 1), length);
    return text.bytes.get();
}

// The request that a client sends, and the best one for each message.
std::string request_of(const Message &message)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<body>\n<!-- <x> -->" + test::best_example(message) +
           "</body>\n";
}

// Every message on every example, its own or not, and on requests: the fuzz target compares all that both routes do.
TEST_F(TextRoute, DoesWhatTheTreeRouteDoes)
{
    const fuzz::Broken before =
        fuzz::on_broken([](const char *promise, const std::string &what) { ADD_FAILURE() << promise << " " << what; });
    for (const Message &message : test::all_messages()) {
        std::vector<std::string> texts = test::example_bodies();
        texts.push_back(message.parse != nullptr ? request_of(message) : "");
        for (const std::string &text : texts) {
            const std::string input = fuzz::plain_head(message) + text;
            fuzz::run_route(reinterpret_cast<const std::uint8_t *>(input.data()), input.size());
            ASSERT_FALSE(HasFailure()) << message.name << "\n" << text;
        }
    }
    fuzz::on_broken(before);
}

TEST_F(TextRoute, TakesTheElementOutOfABody)
{
    Envelope<tag_net_pic_motion_cfg_v20_t> message(nets_param_md_init);
    const auto read = [&](const std::string &text) {
        Exact copy(text);
        return net_text_x2s(net_md_x2s, &message.param, copy.bytes.get(), copy.length);
    };
    EXPECT_EQ(read("<body><MD><enable>1</enable></MD><MD><enable>0</enable></MD></body>"), 0);
    EXPECT_EQ(message->enable, 1);
    EXPECT_EQ(read("<Body><enable>0</enable></Body>"), 0) << "is a message's element like any other";
    EXPECT_EQ(message->enable, 0);
    for (const char *empty : {"<body/>", "<body>text<!--comment--></body>"})
        EXPECT_EQ(test::log_of([&] { EXPECT_EQ(read(empty), -1); }),
                  "<red net_xml_alarm.cpp>Func(net_md_x2s) Line(#) \n")
            << empty;
}

TEST_F(TextRoute, SaysWhereATextIsMalformed)
{
    Envelope<tag_net_pic_motion_cfg_v20_t> message(nets_param_md_init);
    const std::string before(static_cast<const char *>(message.param.data), message.param.dataSize);
    const auto log_of = [&](const std::string &text) {
        Exact copy(text);
        const std::string line = test::output_of(
            [&] { EXPECT_EQ(net_text_x2s(net_md_x2s, &message.param, copy.bytes.get(), copy.length), -1); });
        return line.substr(std::min(line.size(), line.find("xml")));
    };
    const std::string prefix = "xml parse failed:";
    EXPECT_EQ(log_of("<MD><enable>1</enable>\n  <width>9</witdh></MD>"),
              prefix + "Error reading end tag. line(2) column(11)\n");
    EXPECT_EQ(log_of(""), prefix + "Error document empty. line(1) column(1)\n");
    EXPECT_EQ(log_of("<!DOCTYPE x>"), prefix + "no root element line(1) column(13)\n");
    EXPECT_EQ(log_of("<MD><enable>1</enable></MD><x"), prefix + "Failed to read Element name line(1) column(29)\n");
    std::string many = "<MD><enable>1</enable><x";
    for (int i = 0; i < 65; ++i)
        many += " a" + std::to_string(i) + "=''";
    EXPECT_EQ(log_of(many + "/></MD>"),
              prefix + "too many attributes line(1) column(" + std::to_string(many.rfind(" a64") + 2) + ")\n");
    EXPECT_EQ(std::string(static_cast<const char *>(message.param.data), message.param.dataSize), before);
    EXPECT_NE(message.param.inited, 2u);
    loglevel = 0;
    EXPECT_EQ(log_of("<MD>"), "");
}

TEST_F(TextRoute, TakesOneBlockToReadAndNoneToWrite)
{
    for (const Message &message : test::all_messages()) {
        MessageEnvelope envelope(message);
        if (message.parse != nullptr) {
            Exact text(request_of(message));
            const unsigned long blocks = net_host_memory().total;
            EXPECT_EQ(test::allocations_of([&] { EXPECT_EQ(text.read(message, envelope.param), 0); }), 0)
                << message.name;
            EXPECT_EQ(net_host_memory().total - blocks, 1u) << message.name;
            EXPECT_LE(net_host_memory().last_size * sizeof(void *), text.length * 12 + 300) << message.name;
        }
        if (message.write != nullptr) {
            char text[100];
            const unsigned long blocks = net_host_memory().total;
            EXPECT_EQ(test::allocations_of([&] { net_text_s2x(message.write, &envelope.param, text, sizeof text); }), 0)
                << message.name;
            EXPECT_EQ(net_host_memory().total, blocks) << message.name;
        }
    }
}

TEST_F(TextRoute, FailsWithoutMemory)
{
    for (const Message &message : test::all_messages()) {
        if (message.parse == nullptr)
            continue;
        MessageEnvelope envelope(message);
        const std::string before = envelope.content();
        const unsigned int inited = envelope.param.inited;
        Exact text(request_of(message));
        net_host_fail_allocation(1);
        const std::string log = test::log_of([&] { EXPECT_EQ(text.read(message, envelope.param), -1); });
        net_host_fail_allocation(0);
        EXPECT_NE(log.find("out of memory line(#) column(1)"), std::string::npos) << log;
        EXPECT_EQ(envelope.content(), before) << message.name;
        EXPECT_EQ(envelope.param.inited, inited) << message.name;
    }
}

// At every byte of the shorter texts, at some thousand of the longest.
TEST_F(TextRoute, RefusesEveryCut)
{
    loglevel = 0;
    for (const Message &message : test::all_messages()) {
        if (message.parse == nullptr)
            continue;
        MessageEnvelope envelope(message);
        const std::string before = envelope.content();
        const std::string whole = test::best_example(message);
        const std::size_t last = whole.find_last_not_of(" \n");
        for (std::size_t length = 0; length <= last; length += 1 + whole.size() / 4096) {
            Exact text(whole.substr(0, length));
            ASSERT_EQ(text.read(message, envelope.param), -1) << message.name << " " << length;
            ASSERT_EQ(std::memcmp(envelope.param.data, before.data(), before.size()), 0) << message.name;
        }
    }
}

TEST_F(TextRoute, FillsBuffersOfEverySize)
{
    for (const Message &message : test::all_messages()) {
        if (message.write == nullptr)
            continue;
        MessageEnvelope envelope(message);
        if (message.parse != nullptr)
            Exact(request_of(message)).read(message, envelope.param);
        const std::string whole = text_reply(message, envelope.param);
        if (whole == "failed")
            continue;
        const test::Output lines; // that no switch stops
        for (std::size_t size = 1; size <= whole.size() + 2; size += 1 + whole.size() / 4096) {
            Exact text(size);
            ASSERT_EQ(net_text_s2x(message.write, &envelope.param, text.bytes.get(), static_cast<unsigned int>(size)),
                      static_cast<int>(whole.size()));
            ASSERT_EQ(text.bytes.get(), whole.substr(0, size - 1)) << message.name;
        }
    }
}

TEST_F(TextRoute, AFailingWriterLeavesAnEmptyText)
{
    Envelope<tag_net_pic_motion_cfg_v20_t> message(nets_param_md_init);
    char text[] = "before";
    message.param.dataSize = 1;
    loglevel = 0;
    EXPECT_EQ(net_text_s2x(net_md_s2x, &message.param, text, sizeof text), -1);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(net_text_s2x(net_md_s2x, &message.param, nullptr, 10), -1);
    EXPECT_EQ(net_text_s2x(nullptr, &message.param, text, sizeof text), -1);
    EXPECT_EQ(net_text_x2s(nullptr, &message.param, text, 0), -1);
    EXPECT_EQ(net_text_x2s(net_md_x2s, &message.param, nullptr, 0), -1);
}

// Writers of other types have functions of their own.
template <class Tree, class Text> void expect_same(Tree by_tree, Text by_text)
{
    TiXmlElement parent("parent");
    ASSERT_EQ(by_tree(&parent), 0);
    const std::string expected = test::print_children(parent);
    char text[4096];
    EXPECT_EQ(by_text(text, static_cast<unsigned int>(sizeof text)), static_cast<int>(expected.size()));
    EXPECT_EQ(text, expected);
}

TEST_F(TextRoute, WritersOfOtherTypes)
{
    Envelope<net_dst_cfg_v20_t> dst(nets_param_dst_cfg_init);
    std::memset(dst.param.data, 0, dst.param.dataSize);
    expect_same([&](TiXmlElement *parent) { return nets_dst_cfg_s2x(&dst.param, parent); },
                [&](char *text, unsigned int size) { return net_text_dst_cfg_s2x(&dst.param, text, size); });

    Envelope<net_ptz_serial_v20_t> serial(net_param_ptz_init);
    expect_same([&](TiXmlElement *parent) { return net_ptz_param_s2x(&serial->param, parent); },
                [&](char *text, unsigned int size) { return net_text_ptz_param_s2x(&serial->param, text, size); });

    std::vector<net_stream_info_v20_t> entries(3, net_stream_info_v20_t{});
    int by_tree = 0, by_text = 0;
    expect_same([&](TiXmlElement *parent) { return xml_enc_info_list_s2x(entries.data(), 3, parent, &by_tree, 2000); },
                [&](char *text, unsigned int size) {
                    return net_text_enc_info_list_s2x(entries.data(), 3, &by_text, 2000, text, size);
                });
    EXPECT_TRUE(by_tree > 0 && by_tree < 3) << "the budget has no room for all: " << by_tree;
    EXPECT_EQ(by_text, by_tree);
}

} // namespace
