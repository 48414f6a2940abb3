// What the tests share: the fixture that plays the host, parsed bodies, envelopes, printed XML and
// captured log lines.
#ifndef NETPUBLIC_TESTS_SUPPORT_H
#define NETPUBLIC_TESTS_SUPPORT_H

#include "ground/node.h"

#include <gtest/gtest.h>
#include <net_host_standin.h>
#include <net_types.h>
#include <tinyxml.h>

#include <string>

namespace test {

using Init = int (*)(net_param_t *, net_ext_t *);
using Parser = int (*)(net_param_t *, TiXmlNode *);
using Writer = int (*)(net_param_t *, TiXmlElement *);

// What memory holds that nobody has written to.
constexpr int garbage = 0xA5;

// Every test starts with the default host, whose blocks come filled with garbage so that a missing
// zeroing shows, and fails when it leaves blocks of net_malloc() behind.
class HostTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

private:
    long live_ = 0;
};

// A parsed text. A text that does not parse, or has no root element, fails the test.
class Xml {
public:
    explicit Xml(const std::string &text);
    Xml(const Xml &) = delete;
    Xml &operator=(const Xml &) = delete;

    TiXmlElement *root();
    operator TiXmlElement *()
    {
        return root();
    }
    operator netpublic::Node()
    {
        return root();
    }

private:
    TiXmlDocument document_;
};

// A node as text, without indentation and line breaks.
std::string print(const TiXmlNode &node);
// The children of a node as text, one after the other.
std::string print_children(const TiXmlNode &node);

// What a function writes to standard output.
class Output {
public:
    Output();
    ~Output();
    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

    // Ends the capture; the text stays the same from then on.
    const std::string &text();

private:
    int saved_;
    FILE *file_;
    std::string text_;
};

template <class Function> std::string output_of(Function function)
{
    Output output;
    function();
    return output.text();
}

// Makes log text comparable: a location prefix becomes "<red file.cpp>" or "<green file.cpp>", and
// a source line number inside a message ("Line:12", "line(12)", "Line[12]") becomes "#".
std::string tidy(const std::string &log);

template <class Function> std::string log_of(Function function)
{
    return tidy(output_of(function));
}

// A message's root element as its writer makes it; "failed" when the writer returns anything but 0.
// The parent must stay as it was when the writer fails, else the test fails.
std::string written(net_param_t *param, Writer writer);

// The part of Envelope that knows no payload type.
class AnyEnvelope {
public:
    // An envelope with garbage in the fields that an initialiser leaves alone; no payload.
    AnyEnvelope();
    ~AnyEnvelope();
    AnyEnvelope(const AnyEnvelope &) = delete;
    AnyEnvelope &operator=(const AnyEnvelope &) = delete;

    // Parses the text and hands its root element to the parser.
    int read(Parser parser, const std::string &text);
    std::string write(Writer writer)
    {
        return written(&param, writer);
    }

    net_param_t param;
};

// An initialised envelope and its payload:
//     Envelope<tag_net_pic_motion_cfg_v20_t> message(nets_param_md_init);
//     EXPECT_EQ(message.read(net_md_x2s, "<MD><channelId>1</channelId></MD>"), 0);
//     EXPECT_EQ(message->channelId, 1);
template <class Payload> class Envelope : public AnyEnvelope {
public:
    explicit Envelope(Init init, net_ext_t ext = net_ext_t{})
    {
        EXPECT_EQ(init(&param, &ext), 0);
    }

    Payload *payload()
    {
        return static_cast<Payload *>(param.data);
    }
    Payload *operator->()
    {
        return payload();
    }
};

// The text of examples/<name>.xml; a missing one fails the test.
std::string example(const std::string &name);

std::string repeated(int count, const std::string &text);

} // namespace test

#endif
