#include "support.h"
#include "toolkit/printed_size.h"

#include <net_public.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using test::Envelope;
using test::example;
using test::log_of;
using test::prepared;
using test::print_children;
using test::repeated;
using test::Xml;

class StreamTest : public test::HostTest {};

TiXmlElement *message_of(Xml &document)
{
    return document.root()->FirstChildElement();
}

bool starts(const std::string &text, const std::string &with)
{
    return text.compare(0, with.size(), with) == 0;
}

// Encoder settings --------------------------------------------------------------------------------

TEST_F(StreamTest, CompressionKeepsWhatStandsBeforeTheRefusedChild)
{
    net_compression_info_v20_t info = {};
    info.videoEncType = 5;
    info.videoEncTypeDefaulted = 1;
    Xml refused("<mainStream><width>640</width><frame>31</frame><height>480</height></mainStream>");
    EXPECT_EQ(get_compression_info_from_xmlnode(&info, refused, nullptr), -1);
    EXPECT_EQ(info.width, 640);
    EXPECT_EQ(info.frame, 31);
    EXPECT_EQ(info.height, 0);
    EXPECT_EQ(info.videoEncType, -1);
    // Once the parser has chosen a codec, the mark stays, even when a message tells one.
    Xml told("<mainStream><videoEncType>0</videoEncType></mainStream>");
    EXPECT_EQ(get_compression_info_from_xmlnode(&info, told, "mainStream"), 0);
    EXPECT_EQ(info.videoEncTypeDefaulted, 1);
    EXPECT_EQ(get_compression_info_from_xmlnode(&info, told, "subStream"), -1);
    // The picture's size does not overflow; 0x600000 pixels are the first large picture.
    const struct {
        const char *size;
        int codec;
    } cases[] = {{"<width>2147483647</width><height>2147483647</height>", 1},
                 {"<width>3072</width><height>2048</height>", 1},
                 {"<width>6291455</width><height>1</height>", 0}};
    for (const auto &one : cases) {
        Xml sized(std::string("<s>") + one.size + "</s>");
        EXPECT_EQ(get_compression_info_from_xmlnode(&info, sized, nullptr), 0);
        EXPECT_EQ(info.videoEncType, one.codec) << one.size;
    }
}

// Encode tables -----------------------------------------------------------------------------------

const char full_table[] = "<resolution><width>1920</width><height>1080</height></resolution>"
                          "<videoEncType>1</videoEncType><defaultFramerate>25</defaultFramerate>"
                          "<defaultBitrate>4096</defaultBitrate><defaultGop>2</defaultGop>"
                          "<framerateTable>25,20,0,10</framerateTable><bitrateTable>4096</bitrateTable>";

TEST_F(StreamTest, EncodeTablesOfOtherStreamsAreReadAndDropped)
{
    net_stream_info_v20_t info;
    std::memset(&info, 0x5A, sizeof info);
    const net_stream_info_v20_t before = info;
    for (const char *type : {"<type>mobileStream</type>", "<type>externStream</type>", "<type>snapStream</type>",
                             "<type>main</type>", ""}) {
        Xml table(std::string("<encodeTable>") + type + full_table + "</encodeTable>");
        EXPECT_EQ(get_encodeTable_from_xmlnode(&info, table, nullptr), 0) << type;
        EXPECT_EQ(std::memcmp(&info, &before, sizeof info), 0) << type;
    }
    // Read they are, all the same.
    Xml refused("<encodeTable><type>mobileStream</type><defaultGop>-1</defaultGop></encodeTable>");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_encodeTable_from_xmlnode(&info, refused, nullptr), -1); }),
              "Func(get_encodeTable_from_xmlnode) Line(#)\n");
    Xml late("<encodeTable><type>mainStream</type><defaultGop>9</defaultGop><bitrateTable>" + std::string(31, '1') +
             "</bitrateTable></encodeTable>");
    EXPECT_EQ(get_encodeTable_from_xmlnode(&info, late, nullptr), -1);
    EXPECT_EQ(std::memcmp(&info, &before, sizeof info), 0);
}

TEST_F(StreamTest, EncodeTableRefusals)
{
    net_stream_info_v20_t info = {};
    for (const std::string &body :
         {std::string("<type>") + std::string(32, 'x') + "</type>",
          std::string("<defaultFramerate>-1</defaultFramerate>"), std::string("<defaultBitrate>-1</defaultBitrate>"),
          std::string("<videoEncType>h264</videoEncType>"),
          "<framerateTable>" + repeated(64, "1,") + "</framerateTable>"}) {
        Xml table("<encodeTable>" + body + "</encodeTable>");
        EXPECT_EQ(get_encodeTable_from_xmlnode(&info, table, nullptr), -1) << body;
    }
    // More numbers than the table holds are left out, as long as the text is not too long.
    Xml many("<encodeTable><type>mainStream</type><bitrateTable>" + repeated(20, "7,") +
             "</bitrateTable></encodeTable>");
    EXPECT_EQ(get_encodeTable_from_xmlnode(&info, many, nullptr), 0);
    EXPECT_EQ(info.mainStream.bitrateTable[15], 7);
    EXPECT_EQ(info.mainStream.defaultGop, 0);

    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_encodeTable_from_xmlnode(&info, many, "StreamInfo"), -1); }),
              "Func(get_encodeTable_from_xmlnode) Line(#)\n");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_streamInfo_from_xmlnode(&info, nullptr, nullptr), -1); }),
              "Func(get_streamInfo_from_xmlnode) Line(#)\n");
}

// Stream information ------------------------------------------------------------------------------

std::string entry_text(const std::string &bits)
{
    return "<StreamInfo><channelBits>" + bits + "</channelBits></StreamInfo>";
}

TEST_F(StreamTest, RefusedStreamInformationChangesNothing)
{
    Envelope<net_stream_info_list_v20_t> message(prepared<net_stream_info_list_v20_t>);
    std::memset(message.payload(), 0x5A, sizeof *message);
    const std::string before(static_cast<const char *>(message.param.data), sizeof *message);
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(message.read(nets_param_stream_info_x2s,
                                         "<L>" + entry_text("1") +
                                             "<StreamInfo><encodeTable><resolution><width>-1</width></resolution>"
                                             "</encodeTable></StreamInfo></L>"),
                            -1);
              }),
              "Func(get_resolution_from_xmlnode) Line(#) width(-1)\nFunc(get_encodeTable_from_xmlnode) Line(#)\n"
              "Func(get_streamInfo_from_xmlnode) Line(#)\nFunc(nets_param_stream_info_x2s) Line(#)\n");
    EXPECT_EQ(std::string(static_cast<const char *>(message.param.data), sizeof *message), before);
    message.param.dataSize = 10240;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(nets_param_stream_info_x2s, "<L/>"), -1); }),
              "<red net_xml_stream.cpp>Func(nets_param_stream_info_x2s) Line(#) \n");
}

// Encoding list -----------------------------------------------------------------------------------

TEST_F(StreamTest, EncodingListIsReadAndCounted)
{
    Envelope<net_enc_list_v20_t> message(net_param_enc_list_init);
    message.param.reserved1 = 99;
    message->entries[0].mainStream.defaultGop = 8;
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(message.read(xml_enc_info_list_x2s,
                                         "<L>" + repeated(16, entry_text("4")) + entry_text("bad") + "</L>"),
                            0);
              }),
              "<red net_xml_stream.cpp>enc list is too large\n");
    EXPECT_EQ(message.param.reserved1, 16u);
    EXPECT_EQ(message.param.inited, 2u);
    EXPECT_EQ(message->entries[15].channelBits, 4u);
    EXPECT_EQ(message->entries[0].mainStream.defaultGop, 8); // what an entry does not name stays

    message.param.inited = 1;
    const std::string log = log_of([&] {
        EXPECT_EQ(message.read(xml_enc_info_list_x2s, "<L>" + entry_text("5") + entry_text("bad") + "</L>"), -1);
    });
    EXPECT_EQ(log, "Func(get_streamInfo_from_xmlnode) Line(#)\n<red net_xml_stream.cpp>get stram info failed \n");
    EXPECT_EQ(message.param.reserved1, 1u);
    EXPECT_EQ(message.param.inited, 1u);
    EXPECT_EQ(message->entries[0].channelBits, 5u);
    message.param.dataSize = 40960;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(xml_enc_info_list_x2s, "<L/>"), -1); }),
              "<red net_xml_stream.cpp>Func(xml_enc_info_list_x2s) Line(#) \n");
    EXPECT_EQ(message.param.reserved1, 1u);
}

class EncodingListWriter : public StreamTest {
protected:
    // Entries of different printed sizes.
    EncodingListWriter() : list_(net_param_enc_list_init)
    {
        Xml document(example("encoding_list"));
        EXPECT_EQ(xml_enc_info_list_x2s(&list_.param, message_of(document)), 0);
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

TEST_F(EncodingListWriter, WritesAnEntry)
{
    list_->entries[0] = {};
    list_->entries[0].channelBits = 1ULL << 63;
    net_encode_table_v20_t &main = list_->entries[0].mainStream;
    main.videoEncType = 1;
    main.resolution.width = 3840;
    main.resolution.height = 2160;
    main.defaultFramerate = 25;
    main.defaultBitrate = 8192;
    main.defaultGop = 2;
    main.framerateTable[0] = 25;
    main.framerateTable[2] = 10;
    for (int &rate : main.bitrateTable)
        rate = 100000000; // cut after 127 characters
    const std::string rates = repeated(15, "100000000,").substr(0, 127);
    int cursor = 0;
    EXPECT_EQ(page(1, &cursor, 100000),
              "<StreamInfoList version=\"1.1\"><StreamInfo><channelBits>9223372036854775808</channelBits>"
              "<encodeTable><type>mainStream</type><resolution><width>3840</width><height>2160</height></resolution>"
              "<videoEncType>1</videoEncType><defaultFramerate>25</defaultFramerate>"
              "<defaultBitrate>8192</defaultBitrate><defaultGop>2</defaultGop>"
              "<framerateTable>25,0,10</framerateTable><bitrateTable>" +
                  rates +
                  "</bitrateTable></encodeTable>"
                  "<encodeTable><type>subStream</type><resolution><width>0</width><height>0</height></resolution>"
                  "<videoEncType>0</videoEncType><defaultFramerate>0</defaultFramerate>"
                  "<defaultBitrate>0</defaultBitrate><defaultGop>0</defaultGop>"
                  "<framerateTable></framerateTable><bitrateTable></bitrateTable></encodeTable>"
                  "</StreamInfo></StreamInfoList>");
    EXPECT_EQ(cursor, 1);
}

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
    const std::string empty_page = "<StreamInfoList version=\"1.1\">" + more + tail;
    const int whole_size = static_cast<int>(running_sizes(whole).back());
    for (int budget = 1; budget <= whole_size; ++budget) {
        std::string joined;
        bool stuck = false;
        cursor = 0;
        for (bool left = true; left && !stuck;) {
            const int before = cursor;
            std::string text = page(entries, &cursor, budget);
            ASSERT_TRUE(starts(text, head)) << text;
            text = text.substr(head.size(), text.size() - head.size() - tail.size());
            left = text.size() >= more.size() && text.compare(text.size() - more.size(), more.size(), more) == 0;
            ASSERT_EQ(left, cursor < entries) << budget;
            joined += left ? text.substr(0, text.size() - more.size()) : text;
            stuck = left && cursor == before; // the budget has no room for this entry
        }
        const std::string written = head + joined + tail;
        if (!stuck)
            ASSERT_EQ(written, whole) << budget;
        else
            ASSERT_TRUE(starts(whole, head + joined)) << budget;
    }
    cursor = 2;
    EXPECT_EQ(page(entries, &cursor, 1), empty_page);
    EXPECT_EQ(cursor, 2);
    cursor = entries;
    EXPECT_EQ(page(entries, &cursor, 1), "<StreamInfoList version=\"1.1\" />");
}

TEST_F(EncodingListWriter, RefusedArgumentsLeaveTheCursor)
{
    TiXmlElement parent("body");
    int cursor = 3;
    EXPECT_EQ(page(2, &cursor, 1000), "failed");
    EXPECT_EQ(page(16, &cursor, 0), "failed");
    EXPECT_EQ(page(16, &cursor, -1), "failed");
    EXPECT_EQ(page(-1, &cursor, 1000), "failed");
    EXPECT_EQ(page(16, nullptr, 1000), "failed");
    EXPECT_EQ(xml_enc_info_list_s2x(list_->entries, 16, nullptr, &cursor, 1000), -1);
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
