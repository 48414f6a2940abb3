#include "messages.h"

#include "memory.h"

#include <net_public.h>

#include <cstring>
#include <filesystem>
#include <map>
#include <set>
#include <utility>

namespace test {

using netpublic::Message;

std::vector<Message> all_messages()
{
    std::vector<Message> all;
#define COLLECT(domain)                                                                                                \
    for (const Message &message : netpublic::domain##_messages())                                                      \
        all.push_back(message);
    NETPUBLIC_DOMAINS(COLLECT)
#undef COLLECT
    return all;
}

const std::vector<std::string> &example_bodies()
{
    static const std::vector<std::string> texts = [] {
        std::set<std::string> names;
        for (const auto &file : std::filesystem::directory_iterator(NETPUBLIC_EXAMPLES_DIR))
            if (file.path().extension() == ".xml")
                names.insert(file.path().stem());
        std::vector<std::string> bodies;
        for (const std::string &name : names) {
            Xml document(example(name));
            for (TiXmlNode *body = document.root()->FirstChild(); body != nullptr; body = body->NextSibling())
                if (body->ToElement() != nullptr)
                    bodies.push_back(print(*body));
        }
        return bodies;
    }();
    return texts;
}

net_ext_t any_request()
{
    net_ext_t ext = {};
    std::strcpy(ext.token, "system,streaming,PTZ,IO,alarm,image,replay,security,video,disk");
    return ext;
}

MessageEnvelope::MessageEnvelope(const Message &message, net_ext_t request)
{
    if (message.initialise != nullptr)
        EXPECT_EQ(message.initialise(&param, &request), 0) << message.name;
    else
        EXPECT_EQ(net_param_init_size_id(&param, &request, message.size, 1), 0) << message.name;
    size_ = net_host_memory().last_size;
}

std::string best_example(const Message &message)
{
    static std::map<std::string, std::string> found;
    std::string &best = found[message.name];
    if (!best.empty())
        return best;
    // Some writers show what their initialiser has left as it was allocated.
    const int fill = std::exchange(net_host().block_fill, garbage);
    long most = -1;
    for (const std::string &text : example_bodies()) {
        const Output quiet; // not every example is this message's
        MessageEnvelope envelope(message);
        if (message.parse != nullptr && envelope.read(message.parse, text) != 0)
            continue;
        long made = static_cast<long>(text.size());
        TiXmlElement parent("body");
        if (message.write != nullptr)
            made = allocations_of([&] { message.write(&envelope.param, &parent); });
        if (made > most) {
            most = made;
            best = text;
        }
    }
    net_host().block_fill = fill;
    EXPECT_NE(best, "") << message.name << ": no example is accepted";
    return best;
}

} // namespace test
