// All messages, from the tables, for tests of what holds for each of them.
#ifndef NETPUBLIC_TESTS_MESSAGES_H
#define NETPUBLIC_TESTS_MESSAGES_H

#include "engine/registry.h"
#include "support.h"

#include <string>
#include <vector>

namespace test {

std::vector<netpublic::Message> all_messages();

// The message bodies of all examples.
const std::vector<std::string> &example_bodies();

// A request that asks for all that an ability can tell.
net_ext_t any_request();

// An envelope as the message's initialiser, or the host, prepares it.
class MessageEnvelope : public AnyEnvelope {
public:
    explicit MessageEnvelope(const netpublic::Message &message, net_ext_t request = any_request());

    // Of the payload, bytes.
    std::size_t size() const
    {
        return size_;
    }
    std::string content() const
    {
        return std::string(static_cast<const char *>(param.data), size_);
    }

private:
    std::size_t size_;
};

// The example's body that the parser accepts and from which the writer makes the largest tree; of messages without
// a writer, the longest that is accepted. Never empty for a message that has a parser.
std::string best_example(const netpublic::Message &message);

} // namespace test

#endif
