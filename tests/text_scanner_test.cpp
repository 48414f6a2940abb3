#include "cases.h"
#include "text/scanner.h"

#include <author.h>
#include <net_public.h>
#include <scan.h>

#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

// The scanner once more, counting.
namespace counted_scanner {
unsigned long steps;
}
#define NETPUBLIC_STEP() ++counted_scanner::steps
namespace netpublic_counted {
using netpublic::pointer_in;
}
#define netpublic netpublic_counted
#undef NETPUBLIC_TEXT_SCANNER_H
#undef NETPUBLIC_NODE_H
#include "ground/node.cpp"
#include "text/scanner.cpp"
#undef netpublic

namespace {

using netpublic::Fault;
using netpublic::fault_text;
using netpublic::Node;
using netpublic::ScanLimits;
using netpublic::ScannedText;
using test::Arguments;
using test::repeated;

// A text in a block of its own size, and its tokens.
class Scanned : public ScannedText {
public:
    explicit Scanned(const std::string &text, const ScanLimits &limits = {}) : copy_(new char[text.size() + 1])
    {
        std::memcpy(copy_.get(), text.c_str(), text.size() + 1);
        result = scan(copy_.get(), static_cast<unsigned int>(text.size()), limits);
    }
    Fault fault() const
    {
        return error().fault;
    }

    int result;

private:
    std::unique_ptr<char[]> copy_;
};

class TextScanner : public test::HostTest {};

// Every text of up to so many symbols, on its own, inside an element of a UTF-8 text and of another, and inside a
// tag. NETPUBLIC_SCAN_SYMBOLS asks for more of them than there is time for in a normal run, NETPUBLIC_SCAN_SHARD
// ("2/8") for a part.
TEST_F(TextScanner, ReadsShortTextsAsTheLibraryDoes)
{
    const std::vector<std::string> symbols = {"<",   ">",   "/", "a", "&", "#",    "x",      ";",
                                              "!--", "-->", " ", "'", "=", "\xE2", "[CDATA["};
    const std::pair<std::string, std::string> contexts[] = {
        {"", ""}, {"<?xml?><r>", "</r>"}, {"<r>", "</r>"}, {"<r ", "/>"}};
    const char *asked = std::getenv("NETPUBLIC_SCAN_SYMBOLS");
    const char *shard = std::getenv("NETPUBLIC_SCAN_SHARD");
    const int longest = asked != nullptr ? std::atoi(asked) : 4;
    const long part = shard != nullptr ? std::atol(shard) : 0;
    const long parts = shard != nullptr ? std::atol(std::strchr(shard, '/') + 1) : 1;
    long compared = 0;
    long count = 1; // of a length
    for (int length = 0; length <= longest; ++length, count *= static_cast<long>(symbols.size())) {
        for (long index = part; index < count; index += parts) {
            std::string text;
            auto digits = static_cast<std::size_t>(index);
            for (int i = 0; i < length; ++i, digits /= symbols.size())
                text += symbols[digits % symbols.size()];
            for (const auto &[before, behind] : contexts) {
                ++compared;
                const std::string whole = before + text + behind;
                ASSERT_EQ(fuzz::scan_difference(whole), "") << whole;
            }
        }
    }
    std::printf("%ld texts of up to %d symbols\n", compared, longest);
}

// What is longer: pieces of everything in a row, and examples that were damaged.
TEST_F(TextScanner, ReadsDamagedTextsAsTheLibraryDoes)
{
    std::vector<std::string> pieces = {std::string(1, '\0')};
    for (const test::Case &line : test::cases("pieces.txt"))
        pieces.insert(pieces.end(), line.arguments.begin(), line.arguments.end());
    std::mt19937 random(20240511);
    const auto below = [&](std::size_t bound) { return random() % static_cast<unsigned int>(bound); };
    const auto piece = [&] { return pieces[below(pieces.size())]; };
    int accepted = 0;
    for (int round = 0; round < 30000; ++round) {
        std::string text;
        if (round % 3 == 0) {
            for (std::size_t left = below(12); left > 0; --left)
                text += piece();
        } else if (round % 3 == 1) {
            text = round % 2 == 0 ? "<?xml?><r>" : "<r>";
            for (std::size_t left = below(4); left > 0; --left) {
                text += piece() + "<b>";
                for (std::size_t inner = below(3); inner > 0; --inner)
                    text += piece();
                text += "</b>";
            }
            text += "</r>";
        } else {
            text = fuzz::examples()[below(fuzz::examples().size())].text.substr(0, 600 + below(600));
            for (std::size_t left = 1 + below(3); left > 0; --left) {
                const std::size_t at = below(text.size() + 1);
                if (round % 2 == 0)
                    text.insert(at, piece());
                else
                    text.erase(at, below(3));
            }
        }
        ASSERT_EQ(fuzz::scan_difference(text), "") << text;
        accepted += Scanned(text).result == 0;
    }
    EXPECT_GT(accepted, 2500) << "nearly everything is refused";
}

// Every cut at every byte: those of short examples compared, long ones at least read in a block of exact size.
TEST_F(TextScanner, ReadsCutTexts)
{
    const bool all = std::getenv("NETPUBLIC_SCAN_ALL_CUTS") != nullptr;
    for (const fuzz::Example &example : fuzz::examples()) {
        ASSERT_EQ(fuzz::scan_difference(example.text), "") << example.name;
        const std::size_t size = example.text.size();
        const std::size_t step = all || size < 2000 ? 1 : size / 200;
        for (std::size_t length = 0; length < size; length += step) {
            const std::string cut = example.text.substr(0, length);
            if (size < 1500)
                ASSERT_EQ(fuzz::scan_difference(cut), "") << example.name << " up to " << length;
            else
                Scanned scanned(cut);
        }
    }
}

TEST_F(TextScanner, TellsWhereATextIsWrong)
{
    test::run_cases("malformed.txt", {{"malformed",
                                       [](Arguments &arguments) {
                                           const std::string &before = arguments.at(0);
                                           const Scanned scanned(before + arguments.at(1));
                                           const auto lines = std::count(before.begin(), before.end(), '\n');
                                           EXPECT_EQ(scanned.error().line, 1 + lines);
                                           EXPECT_EQ(scanned.error().column, before.size() - before.rfind('\n'));
                                           return fault_text(scanned.fault());
                                       }},
                                      {"strictly", [](Arguments &arguments) {
                                           ScanLimits strict;
                                           strict.strict = true;
                                           EXPECT_EQ(Scanned(arguments.at(0)).result,
                                                     arguments.at(1) == "read" ? 0 : -1);
                                           return fault_text(Scanned(arguments[0], strict).fault());
                                       }}});
}

std::string attributes(int count)
{
    std::string result;
    for (int i = 0; i < count; ++i)
        result += " a" + std::to_string(i) + "='v'";
    return result;
}

TEST_F(TextScanner, LimitsAreExact)
{
    const auto fault = [](const std::string &text, const ScanLimits &limits) { return Scanned(text, limits).fault(); };
    ScanLimits limits;
    EXPECT_EQ(fault("<a" + attributes(64) + "><b" + attributes(64) + "/></a>", limits), Fault::none);
    EXPECT_EQ(fault("<a" + attributes(65) + "/>", limits), Fault::too_many_attributes);
    limits.attributes = 2;
    EXPECT_EQ(fault("<a" + attributes(2) + "/>", limits), Fault::none);
    EXPECT_EQ(fault("<a" + attributes(3) + "/>", limits), Fault::too_many_attributes);
    limits.levels = 2;
    EXPECT_EQ(fault("<a><b>1</b><b/><b></b></a><a><b/></a>", limits), Fault::none);
    EXPECT_EQ(fault("<a><b><c>1</c></b></a>", limits), Fault::too_deep);
    EXPECT_EQ(fault("<a><b><c/></b></a>", limits), Fault::too_deep);
    limits.length = 7;
    EXPECT_EQ(fault("<a></a>", limits), Fault::none);
    EXPECT_EQ(fault("<a></a> ", limits), Fault::too_long);
}

// One block for whatever is a message, no larger than its text where a pointer has four bytes.
TEST_F(TextScanner, TakesOneBlock)
{
    for (const fuzz::Example &example : fuzz::examples()) {
        const unsigned long before = net_host_memory().total;
        const Scanned scanned(example.text);
        EXPECT_EQ(net_host_memory().total - before, 1u) << example.name;
        EXPECT_LE(net_host_memory().last_size / sizeof(netpublic::Token), example.text.size() / 8) << example.name;
    }
    for (const char *dense : {"<a/>", "<>", "x<>", "x<a/>", "<a>></a>", "<a>\xC3</a>", "</>"}) {
        const std::string text = "<?xml?><r>" + repeated(20000, dense) + "</r>";
        const unsigned long before = net_host_memory().total;
        const Scanned scanned(text);
        EXPECT_LE(net_host_memory().total - before, 9u) << dense;
        EXPECT_LE(net_host_memory().last_size / sizeof(netpublic::Token), text.size()) << dense;
    }
}

TEST_F(TextScanner, FailsWithoutMemory)
{
    const std::string text = "<r>" + repeated(100, "<a/>") + "</r>";
    for (unsigned long which = 1; which <= 2; ++which) {
        net_host_fail_allocation(which);
        const Scanned scanned(text);
        EXPECT_EQ(scanned.result, -1);
        EXPECT_EQ(scanned.fault(), Fault::no_memory);
    }
    net_host_fail_allocation(0);
    EXPECT_EQ(Scanned(text).result, 0);
}

// In looks at bytes: 64 attributes look at each other's names, nothing else is worse than a few looks for a byte.
TEST_F(TextScanner, IsLinear)
{
    std::vector<test::Case> all = test::cases("slow.txt");
    all.push_back({"linear", {"<r>" + repeated(300, "<a" + attributes(64) + "/>") + "</r>"}, "40", "attributes"});
    all.push_back({"linear", {"<r>" + repeated(100, "<" + std::string(200, 'a') + ">")}, "6", "equal beginnings"});
    for (test::Case &each : all) {
        std::string &text = each.arguments.at(0);
        netpublic_counted::ScannedText scanned;
        counted_scanner::steps = 0;
        static_cast<void>(scanned.scan(text.data(), static_cast<unsigned int>(text.size())));
        EXPECT_LE(counted_scanner::steps, std::stoul(each.expected) * text.size()) << each.place;
        EXPECT_GT(counted_scanner::steps, 0u) << each.place;
    }
}

} // namespace
