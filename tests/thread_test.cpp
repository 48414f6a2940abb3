// P14: every message on several threads at once, each with envelopes, trees and texts of its own. What the threads
// must not share shows under the thread sanitizer; what they would spoil for one another shows here.
#include "messages.h"

#include <net_public.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace {

using netpublic::Message;

constexpr std::size_t threads = 6;
constexpr int rounds = 3;

class ThreadTest : public test::HostTest {};

enum class Route { tree, text };

struct Exchange {
    Message message;
    Route route;
    std::string request;
    std::string reply; // "-1" when the writer fails
};

// A whole exchange as a host does it, without anything that the test's thread alone may use.
std::string text_of(const Message &message, net_param_t &param)
{
    const int length = net_text_s2x(message.write, &param, nullptr, 0);
    std::string text(static_cast<std::size_t>(std::max(length, 0)) + 1, '\0');
    const int written = net_text_s2x(message.write, &param, text.data(), static_cast<unsigned int>(text.size()));
    return written == length ? std::to_string(length) + text : "two lengths";
}

std::string tree_of(const Message &message, net_param_t &param)
{
    TiXmlElement parent("body");
    return message.write(&param, &parent) == 0 ? test::print_children(parent) : "-1";
}

bool reads(const Message &message, Route route, net_param_t &param, std::string request)
{
    if (message.parse == nullptr)
        return true;
    if (route == Route::text)
        return net_text_x2s(message.parse, &param, request.data(), static_cast<unsigned int>(request.size())) == 0;
    TiXmlDocument document;
    document.Parse(request.c_str());
    return message.parse(&param, document.RootElement()) == 0;
}

std::string reply_to(const Message &message, Route route, const std::string &request)
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
    std::string reply = "no writer";
    if (!reads(message, route, param, request))
        reply = "refused";
    else if (message.write != nullptr)
        reply = route == Route::text ? text_of(message, param) : tree_of(message, param);
    TiXmlPrinter printer;
    net_get_exten_xml(printer, ext.channelId);
    net_free(&param.data);
    return reply + printer.Str();
}

// What the toolkit's functions that put texts together make of a number.
std::string toolkit_texts(int number)
{
    char text[256] = {}, words[256] = {}, cells[64] = {}, base64[64] = {};
    int count = 0;
    int numbers[] = {number, number * 7, -number};
    const char *items[] = {text, words};
    time_section_t set = {{static_cast<unsigned>(number), 0x1F}};
    net_schedule_t schedule = {};
    alarm_in_add_event(&schedule.types, 29 + number % 15);
    alarm_in_add_event(&schedule.section[number % 7][number % 24], number % 3);
    std::memset(cells + number % 32, 1, 9);
    get_alarm_str(text, sizeof text, number, set, set);
    get_handleType_string(number, words, sizeof words);
    std::string all = std::string(text) + words;
    evt_log_alarm_type_to_string(text, sizeof text, number);
    make_enum_to_string(words, sizeof words, "name", NET_ABILITY_OPERATION_RW, &count);
    char joined[512];
    string_join(joined, sizeof joined, items, 2, ';');
    changeIntTableToString(text, sizeof text, numbers, 3, 0);
    EncodeBinaryArrayToBase64(reinterpret_cast<unsigned char *>(cells), base64, number % 48, 20);
    all += std::string(joined) + text + base64;
    TiXmlElement parent("p");
    insert_type_schedule_list_to_xmlnode(&schedule, &parent);
    insert_schedule_list_to_xmlnode(&schedule, &parent);
    InsertChildToXmlElement_int64(&parent, "n", number * 1000000007LL, 0, 0);
    InsertChildToXmlElement_float(&parent, "f", static_cast<float>(number) / 7, 0, 0);
    net_stream_info_v20_t entry = {};
    for (int &rate : entry.mainStream.framerateTable)
        rate = number + 1;
    count = 0;
    xml_enc_info_list_s2x(&entry, 1, &parent, &count, 1 << 20);
    return all + test::print_children(parent);
}

// Each thread's function gets a number, and reports faults as a text.
void on_all_threads(const std::function<std::string(std::size_t)> &work)
{
    std::vector<std::string> faults(threads);
    std::vector<std::thread> running;
    for (std::size_t which = 0; which < threads; ++which)
        running.emplace_back([&work, &fault = faults[which], which] { fault = work(which); });
    for (std::thread &thread : running)
        thread.join();
    for (const std::string &fault : faults)
        EXPECT_EQ(fault, "");
}

TEST_F(ThreadTest, TheStandInCountsExactly)
{
    constexpr int blocks = 20000;
    const long live = net_host_memory().live;
    on_all_threads([](std::size_t) {
        for (int i = 0; i < blocks; ++i)
            bc_free(bc_malloc(8));
        return "";
    });
    EXPECT_EQ(net_host_memory().live, live);
    EXPECT_EQ(net_host_memory().total, threads * blocks);
}

TEST_F(ThreadTest, TheToolkitOnAllThreads)
{
    std::vector<std::string> expected;
    for (int number = 0; number < 50; ++number)
        expected.push_back(toolkit_texts(number));
    on_all_threads([&](std::size_t which) {
        std::string faults;
        for (std::size_t i = 0; i < 20 * expected.size(); ++i) {
            const std::size_t number = (i * (which + 1)) % expected.size();
            if (toolkit_texts(static_cast<int>(number)) != expected[number])
                faults += std::to_string(number) + " ";
        }
        return faults;
    });
}

TEST_F(ThreadTest, EveryMessageOnAllThreads)
{
    test::Output quiet;
    net_host().block_fill = 0; // some writers show what their initialiser has left as it was allocated
    std::vector<Exchange> exchanges;
    for (const Message &message : test::all_messages()) {
        const std::string request = test::best_example(message) + std::string(8, '\0');
        for (const Route route : {Route::tree, Route::text})
            exchanges.push_back({message, route, request, reply_to(message, route, request)});
    }
    on_all_threads([&](std::size_t which) {
        std::string faults;
        for (std::size_t i = 0; i < rounds * exchanges.size(); ++i) {
            // Two threads at a time start at the same place.
            const Exchange &exchange = exchanges[(i + which / 2 * exchanges.size() / threads) % exchanges.size()];
            if (reply_to(exchange.message, exchange.route, exchange.request) != exchange.reply)
                faults += exchange.message.name + std::string(" ");
        }
        return faults;
    });
}

} // namespace
