// One message between its calls, with everything checked around each of them.
#ifndef NETPUBLIC_FUZZ_SESSION_H
#define NETPUBLIC_FUZZ_SESSION_H

#include "engine/engine.h"
#include "engine/registry.h"
#include "host.h"
#include "oracle.h"

#include <set>
#include <string>
#include <vector>

class TiXmlElement;
class TiXmlNode;

namespace fuzz {

// All messages of the registry, and those with a parser or a writer.
const std::vector<const netpublic::Message *> &messages();

// How an input names its message: a number made of the name, so that new messages do not move the others.
std::uint16_t number_of(const netpublic::Message &message);
// The message of a number, or its neighbour. `wanted` says which ones count.
using Wanted = bool (*)(const netpublic::Message &);
const netpublic::Message &message_of(std::uint16_t number, Wanted wanted);
inline bool parses(const netpublic::Message &message)
{
    return message.parse != nullptr;
}
inline bool writes(const netpublic::Message &message)
{
    return message.write != nullptr;
}

// In front of an input's own bytes: the message's number and the host's answers.
constexpr std::size_t head_size = sizeof(std::uint16_t) + Host::answers_size;
// A head as a sane host would have it.
std::string plain_head(const netpublic::Message &message);

struct Written {
    int result;
    std::string text; // what the writer appended
};

class Session {
public:
    // Calls the initialiser; ready() tells whether it had memory.
    Session(const netpublic::Message &message, net_ext_t ext, Host &host);
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    bool ready() const
    {
        return param_.data != nullptr;
    }
    void *payload()
    {
        return param_.data;
    }
    net_param_t &envelope()
    {
        return param_;
    }
    // Bytes of the payload.
    std::size_t size() const;
    const netpublic::Message &message() const
    {
        return message_;
    }

    // P1 to P4, P6, P7, P12, and each child by the plain rules.
    int parse(TiXmlNode *body);
    // The same, and remembers which members were read.
    int parse_closely(TiXmlNode *body);
    // What may be said when `other`, which was parsed closely from this one's text, was refused: that the
    // member had never been read, so that it holds a number that no text may hold.
    bool may_refuse(const Session &other) const;
    // Only calls the parser, under somebody else's eyes.
    void parse(TiXmlNode *body, const netpublic::Watch *watch);
    // P1, P2, P6 to P9. Into `parent`, if the caller wants to see the tree.
    Written write(TiXmlElement *parent = nullptr);

    // How the last body was read.
    unsigned taken() const
    {
        return taken_;
    }
    unsigned ignored() const
    {
        return ignored_;
    }

private:
    const netpublic::Message &message_;
    Host &host_;
    net_param_t param_;
    bool trusted_ = true; // its counts were good before the call
    unsigned taken_ = 0;
    unsigned ignored_ = 0;
    bool close_ = false;
    std::set<Oracle::Member> members_;
    Oracle::Member refused_{nullptr, 0};

    friend void distrust(Session &);
};

// The payload's bytes come from somewhere else: its counts and texts may be anything.
void distrust(Session &session);

// A text as the host must hand it to the XML library: checked, and with zeros behind it.
class Text {
public:
    Text(const std::uint8_t *data, std::size_t size);
    // Null when the text must not be parsed.
    const char *get() const
    {
        return refused_ ? nullptr : text_.c_str();
    }

private:
    std::string text_;
    bool refused_;
};

// A node as text, without indentation.
std::string print(const TiXmlNode &node);

} // namespace fuzz

#endif
