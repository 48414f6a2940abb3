#include "ground/text_guard.h"
#include "support.h"

#include <net_public.h>
#include <pthread.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <vector>

namespace {

using netpublic::guard_padding;
using netpublic::guard_text;
using netpublic::guarded_attributes;
using netpublic::guarded_length;
using netpublic::guarded_levels;

std::string repeat(const std::string &text, int times)
{
    std::string result;
    while (times-- > 0)
        result += text;
    return result;
}

// Why a text is refused; "" when it is not.
std::string refusal(const std::string &text)
{
    const char *why = guard_text(text.c_str(), text.size());
    return why != nullptr ? why : "";
}

std::string nested(int levels, const std::string &inside = "")
{
    return repeat("<z>", levels) + inside + repeat("</z>", levels);
}

std::string attributes(int count)
{
    std::string result;
    for (int i = 0; i < count; ++i)
        result += " a" + std::to_string(i) + "='v'";
    return result;
}

constexpr char too_deep[] = "nested too deeply";
constexpr char too_many[] = "too many attributes";
constexpr char no_utf8[] = "no UTF-8";
constexpr char declaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

TEST(TextGuard, LimitsAreExact)
{
    EXPECT_EQ(refusal(nested(64)), "");
    EXPECT_EQ(refusal(nested(65)), too_deep);
    EXPECT_EQ(refusal("<a></a>" + nested(64)), "") << "what is closed is no level";
    EXPECT_EQ(refusal(nested(63, "<b/>")), "");
    EXPECT_EQ(refusal(nested(64, "<b/>")), too_deep) << "an empty element is a level too";
    EXPECT_EQ(refusal(nested(63, "<b/><b></b>")), "") << "siblings are no levels";
    EXPECT_EQ(refusal(repeat("</z>", 100) + nested(65)), too_deep) << "what closes nothing makes no room";
    EXPECT_EQ(refusal("<a" + attributes(64) + "/>"), "");
    EXPECT_EQ(refusal("<a" + attributes(65) + "/>"), too_many);
    EXPECT_EQ(refusal("<a" + attributes(64) + "><b" + attributes(64) + "/></a>"), "");
    const std::string padding(guarded_length - 7, 'x');
    EXPECT_EQ(refusal("<a>" + padding + "</a>"), "");
    EXPECT_EQ(refusal("<a>" + padding + "x</a>"), "text too long");
}

// What looks like markup where the library sees none neither opens nor closes a level.
TEST(TextGuard, MarkupIsCountedOnlyWhereItIsMarkup)
{
    const char *const hidden[] = {
        "<b x=\"</b>\">",        "<b x='</b>'>",    "<b x=\"/>\">",        "<b x='\"/>'>",      "<b x = '/>' >",
        "<b><!-- </b> -->",      "<b><!--></b>-->", "<b><![CDATA[</b>]]>", "<b><!ELEMENT </b>", "<_b>",
        "<b:c x=\"1\"\ty='/>'>", "<b x=1>",
    };
    for (const char *opening : hidden)
        EXPECT_EQ(refusal(repeat(opening, 200)), too_deep) << opening;

    const char *const balanced[] = {
        "<b/>",         "<b x='>'/>", "<b x=\"<b>\"/>", "<!-- <b> -->", "<![CDATA[<b>]]>",
        "<!DOCTYPE b>", "<?pi b?>",   "<b></b >",       "< b>",         "<b><c/></b>",
    };
    for (const char *text : balanced)
        EXPECT_EQ(refusal("<a>" + repeat(text, 200) + "</a>"), "") << text;
}

TEST(TextGuard, DeclarationsEndWhereTheLibraryEndsThem)
{
    const std::string bomb = repeat("<b>", 200);
    // The quotes of unknown attributes and of processing instructions do not count ...
    EXPECT_EQ(refusal("<?xml a=\">" + bomb), too_deep);
    EXPECT_EQ(refusal("<?foo a=\">" + bomb), too_deep);
    EXPECT_EQ(refusal("<?XML a='>" + bomb), too_deep);
    // ... those of the known ones do.
    EXPECT_EQ(refusal("<?xml version=\"" + bomb + "\"?><a/>"), "");
    EXPECT_EQ(refusal("<?XML Encoding = '" + bomb + "'?><a/>"), "");
    EXPECT_EQ(refusal(repeat("<b><?xml standalone='</b>'?>", 200)), too_deep);
}

TEST(TextGuard, CutSequencesMustNotHideMarkup)
{
    const std::string mark = "\xEF\xBB\xBF";
    for (const std::string &start : {std::string(declaration), mark, std::string("<?XmL?>")}) {
        for (const char *lead : {"\xC2", "\xE2", "\xE2\x82", "\xF0\x9F\x98"}) {
            EXPECT_EQ(refusal(start + "<a><b>" + lead + "</b></a>"), no_utf8);
            EXPECT_EQ(refusal(start + "<a x=\"" + lead + "\"/>"), no_utf8);
            EXPECT_EQ(refusal(start + "<a x='" + lead + "'/>"), no_utf8);
        }
        for (const char *blank : {"\xEF\xBB\xBF", "\xEF\xBF\xBE", "\xEF\xBF\xBF"})
            EXPECT_EQ(refusal(start + "<a x=" + blank + "\">\"/>"), no_utf8) << "a blank to the library";
        EXPECT_EQ(refusal(start + "<a x=\"\xE2\x82\xAC\">\xC3\xA9<b>\xF0\x9F\x98\x80</b></a>"), "");
        EXPECT_EQ(refusal(start + "<a>\xC0</a>"), "") << "stands for itself";
        EXPECT_EQ(refusal(start + "<a>\xE2"), "") << "the padding stops the library";
    }
    // Without a declaration the library takes byte by byte.
    EXPECT_EQ(refusal("<a><b>caf\xE9</b></a>"), "");
    EXPECT_EQ(refusal(repeat("<b>\xE9</b>", 200)), "");
}

struct Extent {
    int levels = 0;
    int attributes = 0;
};

Extent extent_of(const TiXmlNode &node)
{
    Extent extent;
    for (const TiXmlNode *child = node.FirstChild(); child != nullptr; child = child->NextSibling()) {
        const Extent inner = extent_of(*child);
        extent.levels = std::max(extent.levels, inner.levels);
        extent.attributes = std::max(extent.attributes, inner.attributes);
    }
    if (const TiXmlElement *element = node.ToElement()) {
        ++extent.levels;
        int own = 0;
        for (const TiXmlAttribute *at = element->FirstAttribute(); at != nullptr; at = at->Next())
            ++own;
        extent.attributes = std::max(extent.attributes, own);
    }
    return extent;
}

// Whatever the guard lets through, the library must not find more in it than the limits allow. Many
// repetitions of a few pieces make every piece that is counted wrongly show.
TEST(TextGuard, TheLibraryNeverFindsMoreThanTheGuard)
{
    const std::vector<std::string> pieces = {
        "<b>",
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
        " x=",
        "=",
        " ",
        "b",
        "<!",
        "<!--",
        "-->",
        "--",
        "<![CDATA[",
        "]]>",
        "<?",
        "<?xml",
        "?>",
        "?",
        "\xE2",
        "\xC3",
        "\xF0",
        "\xA9",
        "\xEF\xBB\xBF",
        "\xEF\xBF\xBF",
        "&#65;",
        "&lt;",
        "&#",
        "&",
        " version=\"",
        " encoding='",
        "<?xml encoding='x'?>",
        declaration,
        "\n",
        "</b >",
        "</",
        ";",
    };
    std::mt19937 random(20240511);
    const auto below = [&](std::size_t bound) { return random() % static_cast<unsigned int>(bound); };
    const auto soup = [&](std::size_t most) {
        std::string text;
        for (std::size_t count = 1 + below(most); count > 0; --count)
            text += pieces[below(pieces.size())];
        return text;
    };
    int accepted = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text = round % 3 == 0 ? declaration : round % 3 == 1 ? soup(3) : "";
        text += soup(2) + repeat(soup(7), 100) + soup(3);
        if (guard_text(text.c_str(), text.size()) != nullptr)
            continue;
        ++accepted;
        const std::string padded = text + std::string(guard_padding, '\0');
        TiXmlDocument document;
        document.Parse(padded.c_str());
        const Extent extent = extent_of(document);
        ASSERT_LE(extent.levels, guarded_levels) << text;
        ASSERT_LE(extent.attributes, guarded_attributes) << text;
    }
    EXPECT_GT(accepted, 1000) << "the guard refuses nearly everything";
}

// Hostile headers on the small stack that the firmware's threads have. P10, P11, P15.
class HostileTest : public test::HostTest {};

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
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 128 * 1024);
    pthread_t thread;
    if (pthread_create(&thread, &attributes, parse_job, &job) == 0)
        pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return job.result;
}

TEST_F(HostileTest, LargeHeadersAreRefusedAtOnce)
{
    loglevel = 0;
    const std::string attribute_bomb = [] {
        std::string text = "<ExtenSion";
        for (int i = 0; i < 40000; ++i)
            text += " a" + std::to_string(i) + "=''";
        return text + "/>";
    }();
    const std::vector<std::string> bombs = {
        "<ExtenSion>" + repeat("<b>", 50000),
        "<ExtenSion>" + repeat("<b>", 21000),
        "<ExtenSion>" + repeat("<b x='</b>'>", 5000),
        attribute_bomb,
        attribute_bomb.substr(0, 60000) + "/>",
        declaration + ("<ExtenSion>" + repeat("<b>\xE2</b>", 8000)),
        "<ExtenSion>" + repeat("<b", 32000),
        repeat("<!--", 16000),
        repeat("<![CDATA[", 7000),
        repeat("<a '", 16000),
    };
    const auto start = std::chrono::steady_clock::now();
    for (const std::string &bomb : bombs)
        EXPECT_EQ(parse_on_small_stack(bomb), -1) << bomb.substr(0, 60);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(HostileTest, WhatIsWithinTheLimitsFitsTheStack)
{
    EXPECT_EQ(parse_on_small_stack("<ExtenSion>" + nested(63) + "</ExtenSion>"), 0);
    EXPECT_EQ(parse_on_small_stack("<ExtenSion" + attributes(64) + "/>"), 0);
    const std::string head = "<ExtenSion><channelId>1</channelId>";
    const std::string tail = "</ExtenSion>";
    EXPECT_EQ(parse_on_small_stack(head + std::string(guarded_length - head.size() - tail.size(), ' ') + tail), 0);
    loglevel = 0;
    EXPECT_EQ(parse_on_small_stack(head + std::string(guarded_length + 1 - head.size() - tail.size(), ' ') + tail), -1);
}

} // namespace
