// P15: the limits of an extension header, against the XML library itself, and on a small stack. What exactly they are
// is in tests/cases/messages/header.txt.
#include "support.h"

#include <host.h>
#include <net_public.h>
#include <promises.h>
#include <pthread.h>

#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

using test::repeated;

const std::size_t longest_header = netpublic::header_limits.length;

class HeaderTest : public test::HostTest {};

std::string nested(int levels)
{
    return repeated(levels, "<z>") + repeated(levels, "</z>");
}

std::string attributes(int count)
{
    std::string result;
    for (int i = 0; i < count; ++i)
        result += " a" + std::to_string(i) + "='v'";
    return result;
}

constexpr char declaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

// Names whatever a header's refusal rests on, in every order: markup, quotes, sections, references, sequences.
constexpr const char *pieces[] = {"<b>",
                                  "</b>",
                                  "<b",
                                  "<b/>",
                                  ">",
                                  "/>",
                                  "/",
                                  "<",
                                  "'",
                                  "\"",
                                  " x=\"",
                                  " x='",
                                  " y=",
                                  "=",
                                  " ",
                                  "b",
                                  "<!",
                                  "<!--",
                                  "-->",
                                  "--",
                                  "->",
                                  "]]>",
                                  "]",
                                  "<![CDATA[",
                                  "<?",
                                  "<?xml",
                                  "<?xml>",
                                  "?>",
                                  "\xE2",
                                  "\xC3",
                                  "\xF0",
                                  "\xA9",
                                  "\xEF\xBB\xBF",
                                  "\xEF\xBF\xBF",
                                  "&lt;",
                                  "&#65;",
                                  "&#",
                                  "&#x",
                                  "x41;",
                                  "#65;",
                                  "&",
                                  " version=\"",
                                  "</b >",
                                  " encoding='",
                                  " standalone='",
                                  "\n",
                                  "</",
                                  ";",
                                  "<?xml encoding='x'?>",
                                  "<c d='1' e='2'>"};
constexpr const char *starts[] = {"", "<b>", declaration, "\xEF\xBB\xBF<b>", "<?xml encoding='x'?><b>"};

// Whatever is not refused holds no more than the limits allow, however low they are.
TEST_F(HeaderTest, TheLibraryNeverFindsMoreThanTheLimits)
{
    const fuzz::LowLimits limits;
    static std::string broken;
    const fuzz::Broken before = fuzz::on_broken([](const char *, const std::string &what) { broken = what; });
    std::mt19937 random(20240511);
    const auto below = [&](std::size_t bound) { return random() % static_cast<unsigned int>(bound); };
    const auto soup = [&](std::size_t longest) {
        std::string text;
        for (std::size_t count = below(longest + 1); count > 0; --count)
            text += pieces[below(std::size(pieces))];
        return text;
    };
    const auto reference = [&]() -> std::string {
        constexpr const char *fronts[] = {"&#", "&#x", "&#0", "&#x4"}, *ends[] = {"#65;", "x41;", "5;"};
        return fronts[below(std::size(fronts))] + soup(2) + ends[below(std::size(ends))];
    };
    constexpr int rounds = 100000;
    int parsed = 0;
    for (int round = 0; round < rounds && broken.empty(); ++round) {
        std::string text = starts[below(std::size(starts))] + soup(6);
        if (round % 3 == 0)
            text += reference() + soup(1);
        text += repeated(5, round % 4 == 0 ? soup(3) : round % 4 == 1 ? " y" + std::to_string(round) + "=''" : "<b>");
        text += soup(5);
        const char *why;
        {
            net_ext_t ext = {};
            fuzz::Host host;
            net_exten_x2s(text.data(), &ext);
            why = fuzz::header_refusal(host.log());
        }
        fuzz::check_header(text, why);
        parsed += why == nullptr;
        EXPECT_EQ(broken, "") << round << ": " << text;
    }
    fuzz::on_broken(before);
    EXPECT_GT(parsed, rounds / 8) << "nearly everything is refused";
    EXPECT_LT(parsed, rounds - rounds / 8);
}

// Hostile headers on the small stack that the firmware's threads have. P10.
struct Job {
    std::string text;
    net_ext_t ext;
    int result;
};

void *parse_job(void *argument)
{
    auto &job = *static_cast<Job *>(argument);
    job.result = net_exten_x2s(job.text.data(), &job.ext);
    return nullptr;
}

int parse_on_small_stack(const std::string &text)
{
    Job job = {text, {}, -2};
    pthread_attr_t small;
    pthread_attr_init(&small);
    pthread_attr_setstacksize(&small, 128 * 1024);
    pthread_t thread;
    if (pthread_create(&thread, &small, parse_job, &job) == 0)
        pthread_join(thread, nullptr);
    pthread_attr_destroy(&small);
    return job.result;
}

// The XML library would need more stack, or seconds, for each of them.
TEST_F(HeaderTest, BombsAreRefused)
{
    const std::string many = "<ExtenSion" + attributes(8000);
    std::vector<std::string> bombs = {
        repeated(50000, "<b>"),
        repeated(21000, "<b>"),
        repeated(5000, "<b x='</b>'>"),
        many + "/>",
        many.substr(0, 60000) + "/>",
        declaration + ("<ExtenSion>" + repeated(8000, "<b>\xE2</b>")),
        "<a" + repeated(8000, " x=''") + " y=\"&#x" + many.substr(10, 50000) + "x41;\"/>",
    };
    for (const char *hidden : {"&#x<!--x41;", "&#0<!--#65;", "&#x<![CDATA[x41;", "&#xx<?xml x41;",
                               "<c d='&#x' e='x41;'>", "<c d=\"&#0'>#65;\" e='>"}) {
        bombs.push_back(hidden + repeated(1000, "<a>"));
        bombs.push_back(hidden + nested(9000));
        bombs.push_back(hidden + many.substr(0, 50000) + "/>");
    }
    for (const std::string &bomb : bombs) {
        const bool whole = bomb.rfind("<ExtenSion", 0) == 0 || bomb.rfind("<?xml", 0) == 0;
        const std::string text = (whole ? "" : "<ExtenSion>") + bomb;
        const std::string log = test::output_of([&] { EXPECT_EQ(parse_on_small_stack(text), -1); });
        EXPECT_NE(fuzz::header_refusal(log), nullptr) << text.substr(0, 60) << ": " << log;
    }
}

TEST_F(HeaderTest, WhatIsWithinTheLimitsFitsTheStack)
{
    EXPECT_EQ(parse_on_small_stack("<ExtenSion>" + nested(63) + "</ExtenSion>"), 0);
    EXPECT_EQ(parse_on_small_stack("<ExtenSion" + attributes(64) + "/>"), 0);
    const std::string head = "<ExtenSion><channelId>1</channelId>";
    const std::string tail = "</ExtenSion>";
    EXPECT_EQ(parse_on_small_stack(head + std::string(longest_header - head.size() - tail.size(), ' ') + tail), 0);
    loglevel = 0;
    EXPECT_EQ(parse_on_small_stack(head + std::string(longest_header + 1 - head.size() - tail.size(), ' ') + tail), -1);
}

} // namespace
