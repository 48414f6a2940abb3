// The pages of the encoding list: no budget of bytes loses or repeats an entry.
#include "support.h"

#include <net_public.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using test::Envelope;
using test::example;
using test::log_of;
using test::print_children;
using test::Xml;

class EncodingListWriter : public test::HostTest {
protected:
    // Entries of different printed sizes.
    EncodingListWriter() : list_(net_param_enc_list_init)
    {
        Xml document(example("encoding_list"));
        EXPECT_EQ(xml_enc_info_list_x2s(&list_.param, document.root()->FirstChildElement()), 0);
        count_ = static_cast<int>(list_.param.reserved1);
        EXPECT_EQ(count_, 16);
    }
    // One page as text, or "failed"; the parent of a failing call must stay empty.
    std::string page(int count, int *cursor, int budget)
    {
        TiXmlElement parent("body");
        if (xml_enc_info_list_s2x(list_->entries, count, &parent, cursor, budget) == 0)
            return print_children(parent);
        EXPECT_EQ(parent.FirstChild(), nullptr);
        return "failed";
    }

    Envelope<net_enc_list_v20_t> list_;
    int count_;
};

// The running size as the host can measure it: the empty root and then each entry, printed.
std::vector<std::size_t> running_sizes(const std::string &page)
{
    Xml document(page);
    TiXmlPrinter printer;
    printer.SetIndent("");
    TiXmlElement root("StreamInfoList");
    root.SetAttribute("version", "1.1");
    root.Accept(&printer);
    std::vector<std::size_t> sizes = {printer.Size()};
    for (auto *entry = document.root()->FirstChildElement("StreamInfo"); entry != nullptr;
         entry = entry->NextSiblingElement("StreamInfo")) {
        entry->Accept(&printer);
        sizes.push_back(printer.Size());
    }
    return sizes;
}

TEST_F(EncodingListWriter, TheBudgetIsThePrintedSize)
{
    int cursor = 0;
    const std::string whole = page(count_, &cursor, 1 << 20);
    EXPECT_EQ(cursor, count_);
    EXPECT_EQ(whole.find("<more>"), std::string::npos);
    const std::vector<std::size_t> sizes = running_sizes(whole);
    ASSERT_EQ(sizes.size(), 17u);
    EXPECT_EQ(sizes[0], std::strlen("<StreamInfoList version=\"1.1\" />\n"));
    for (int kept = 0; kept <= count_; ++kept) {
        const int budget = static_cast<int>(sizes[static_cast<std::size_t>(kept)]);
        cursor = 0;
        page(count_, &cursor, budget); // fits to the byte
        EXPECT_EQ(cursor, kept);
        if (kept == 0)
            continue;
        cursor = 0;
        std::string text;
        const std::string log = log_of([&] { text = page(count_, &cursor, budget - 1); });
        EXPECT_EQ(cursor, kept - 1);
        EXPECT_EQ(log, "<red net_xml_stream.cpp>encord table too big " + std::to_string(budget) +
                           ", cut down to less than " + std::to_string(budget - 1) + "\n");
        EXPECT_NE(text.find("<more>1</more></StreamInfoList>"), std::string::npos);
    }
}

TEST_F(EncodingListWriter, NoBudgetLosesOrRepeatsAnEntry)
{
    loglevel = 0;
    constexpr int entries = 4;
    int cursor = 0;
    const std::string whole = page(entries, &cursor, 1 << 20);
    const std::string head = "<StreamInfoList version=\"1.1\">", tail = "</StreamInfoList>", more = "<more>1</more>";
    const int whole_size = static_cast<int>(running_sizes(whole).back());
    for (int budget = 1; budget <= whole_size; ++budget) {
        std::string joined;
        bool stuck = false;
        cursor = 0;
        for (bool left = true; left && !stuck;) {
            const int before = cursor;
            std::string text = page(entries, &cursor, budget);
            ASSERT_EQ(text.substr(0, head.size()), head);
            text = text.substr(head.size(), text.size() - head.size() - tail.size());
            left = text.size() >= more.size() && text.compare(text.size() - more.size(), more.size(), more) == 0;
            ASSERT_EQ(left, cursor < entries) << budget;
            joined += left ? text.substr(0, text.size() - more.size()) : text;
            stuck = left && cursor == before; // the budget has no room for this entry
        }
        const std::string written = head + joined + (stuck ? "" : tail);
        ASSERT_EQ(whole.substr(0, written.size()), written) << budget;
    }
    cursor = 2;
    EXPECT_EQ(page(entries, &cursor, 1), head + more + tail);
    EXPECT_EQ(cursor, 2);
    cursor = entries;
    EXPECT_EQ(page(entries, &cursor, 1), "<StreamInfoList version=\"1.1\" />");
}

TEST_F(EncodingListWriter, RefusedArgumentsLeaveTheCursor)
{
    int cursor = 3;
    EXPECT_EQ(page(2, &cursor, 1000), "failed");
    EXPECT_EQ(page(16, &cursor, 0), "failed");
    EXPECT_EQ(page(16, &cursor, -1), "failed");
    EXPECT_EQ(page(-1, &cursor, 1000), "failed");
    EXPECT_EQ(cursor, 3);
    cursor = -1;
    EXPECT_EQ(page(16, &cursor, 1000), "failed");
    EXPECT_EQ(cursor, -1);
    // A list of numbers is put together in a block of its own.
    cursor = 0;
    net_host_fail_allocation(6);
    EXPECT_EQ(page(16, &cursor, 100000), "failed");
    net_host_fail_allocation(0);
    EXPECT_EQ(cursor, 0);
}

} // namespace
