// The messages that are timed, each with a body to parse.
#ifndef NETPUBLIC_BENCH_SAMPLES_H
#define NETPUBLIC_BENCH_SAMPLES_H

#include <net_types.h>

#include <memory>
#include <string>
#include <vector>

class TiXmlDocument;
class TiXmlElement;
class TiXmlNode;

namespace bench {

using Initialise = int (*)(net_param_t *, net_ext_t *);
using Parse = int (*)(net_param_t *, TiXmlNode *);
using Write = int (*)(net_param_t *, TiXmlElement *);

struct Sample {
    const char *family;
    const char *name;
    Initialise initialise; // null: the host prepares a payload of that size
    unsigned int size;
    Parse parse;
    Write write; // null: the message is only read
    std::string text;
    std::string extension; // text of the request's header; empty for none
};

const std::vector<Sample> &samples();

// An envelope with its payload as it is before a request is parsed.
class Envelope {
public:
    explicit Envelope(const Sample &sample);
    ~Envelope();
    Envelope(const Envelope &) = delete;
    Envelope &operator=(const Envelope &) = delete;

    net_param_t *param()
    {
        return &param_;
    }
    // As it was after its construction, without an allocation.
    void restore();
    std::size_t bytes() const
    {
        return fresh_.size();
    }

private:
    net_param_t param_ = {};
    net_param_t fresh_param_ = {};
    std::string fresh_;
};

// What a host adds to what it has read before it replies with it.
void complete(const Sample &sample, net_param_t *param);

// Ends the program with a message unless the condition holds: what is wrong is not worth timing.
void require(bool condition, const char *what, const char *whose);

// The message in a document: the root, or the first element in it when the root is called "body".
TiXmlElement *message_of(TiXmlDocument &document);

// A copy that the XML library may parse: it reads past the end of a cut UTF-8 sequence.
std::string padded(const std::string &text);

} // namespace bench

#endif
