// P14: every message on several threads at once, each with envelopes and trees of its own. What the threads
// must not share shows under the thread sanitizer; what they would spoil for one another shows here.
#include "messages.h"

#include <net_public.h>

#include <string>
#include <thread>
#include <vector>

namespace {

using netpublic::Message;

constexpr std::size_t threads = 6;
constexpr int rounds = 3;

class ThreadTest : public test::HostTest {};

struct Exchange {
    Message message;
    std::string request;
    std::string reply; // "-1" when the writer fails
};

std::string parsed_text(const std::string &text)
{
    return text + std::string(8, '\0');
}

// A whole exchange as a host does it, without anything that the test's thread alone may use.
std::string reply_to(const Message &message, const std::string &request)
{
    char header[] = "<ExtenSion><channelId>3</channelId><streamType>subStream</streamType></ExtenSion>";
    net_ext_t ext = {};
    net_param_t param = {};
    if (net_exten_x2s(header, &ext) != 0)
        return "no header";
    const int prepared = message.initialise != nullptr ? message.initialise(&param, &ext)
                                                       : net_param_init_size_id(&param, &ext, message.size, 1);
    if (prepared != 0)
        return "no payload";
    TiXmlDocument document;
    document.Parse(request.c_str());
    TiXmlElement parent("body");
    std::string reply = "no writer";
    if (message.parse != nullptr && message.parse(&param, document.RootElement()) != 0)
        reply = "refused";
    else if (message.write != nullptr)
        reply = message.write(&param, &parent) == 0 ? test::print_children(parent) : "-1";
    TiXmlPrinter printer;
    net_get_exten_xml(printer, ext.channelId);
    net_free(&param.data);
    return reply + printer.Str();
}

TEST_F(ThreadTest, EveryMessageOnAllThreads)
{
    test::Output quiet;
    net_host().block_fill = 0; // some writers show what their initialiser has left as it was allocated
    std::vector<Exchange> exchanges;
    for (const Message &message : test::all_messages()) {
        const std::string request = parsed_text(test::best_example(message));
        exchanges.push_back({message, request, reply_to(message, request)});
    }
    std::vector<std::string> faults(threads);
    const auto work = [&](std::size_t which) {
        for (std::size_t i = 0; i < rounds * exchanges.size(); ++i) {
            // Two threads at a time start at the same place.
            const Exchange &exchange = exchanges[(i + which / 2 * exchanges.size() / threads) % exchanges.size()];
            if (reply_to(exchange.message, exchange.request) != exchange.reply)
                faults[which] += exchange.message.name + std::string(" ");
        }
    };
    std::vector<std::thread> running;
    for (std::size_t which = 0; which < threads; ++which)
        running.emplace_back(work, which);
    for (std::thread &thread : running)
        thread.join();
    for (const std::string &fault : faults)
        EXPECT_EQ(fault, "");
}

} // namespace
