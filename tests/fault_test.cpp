// Allocations fail, one after the other, in every parser and writer: the host's and operator new.
// P1, P6, P7, P8, P13.
#include "memory.h"
#include "messages.h"

#include <net_public.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <set>

namespace {

using netpublic::Kind;
using netpublic::Message;
using test::FailingNew;
using test::MessageEnvelope;

// Every failure point of a call is tried up to so many; of a longer call, these many spread over it.
constexpr long most_points = 150;

class FaultTest : public test::HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        loglevel = 0;
    }
    void TearDown() override
    {
        RecordProperty("failures", std::to_string(failures_));
        HostTest::TearDown();
    }

    long failures_ = 0;
};

// A call that may write below a parent.
using Call = std::function<int(TiXmlElement &parent)>;

struct Outcome {
    int result;
    bool parent_untouched;
    long blocks_left; // of operator new, beyond the parent's new children
    long host_blocks_left;

    bool clean() const
    {
        return parent_untouched && blocks_left == 0 && host_blocks_left == 0;
    }
};

enum class Source { host, operator_new };

// One call with one failing allocation, or all failing from one on; 0 fails none.
Outcome call_failing(const Call &call, Source source, long which, bool onwards)
{
    test::Output quiet; // some lines know no mask
    TiXmlElement parent("a parent with a name that needs memory");
    parent.LinkEndChild(new TiXmlElement("before"));
    const std::string before = test::print(parent);
    const long blocks = test::live_blocks();
    const long host_blocks = net_host_memory().live;
    Outcome outcome = {};
    if (source == Source::host) {
        net_host_fail_allocation(static_cast<unsigned long>(which), onwards);
        outcome.result = call(parent);
        net_host_fail_allocation(0);
    } else if (which == 0) {
        outcome.result = call(parent);
    } else {
        const FailingNew failing(which, onwards);
        outcome.result = call(parent);
    }
    outcome.blocks_left = test::live_blocks() - blocks;
    outcome.host_blocks_left = net_host_memory().live - host_blocks;
    outcome.parent_untouched = test::print(parent) == before;
    return outcome;
}

// How many allocations a call makes.
long count(const Call &call, Source source)
{
    test::Output quiet;
    TiXmlElement parent("parent");
    const auto host_blocks = static_cast<long>(net_host_memory().total);
    const long blocks = test::allocations_of([&] { call(parent); });
    return source == Source::host ? static_cast<long>(net_host_memory().total) - host_blocks : blocks;
}

// The failure points of a call, spread over it if there are too many.
std::set<long> points(long count)
{
    std::set<long> chosen;
    for (long i = 0; i < std::min(count, most_points); ++i)
        chosen.insert(count <= most_points ? i + 1 : 1 + i * (count - 1) / (most_points - 1));
    return chosen;
}

// Lets each allocation of the call fail, alone and with all behind it. Returns how many calls were made to
// fail; each must fail as a whole.
long expect_failures(const Call &call, const std::string &name, Source source)
{
    long failures = 0;
    const Outcome unbroken = call_failing(call, source, 0, false);
    for (const long which : points(count(call, source))) {
        for (const bool onwards : {false, true}) {
            const Outcome outcome = call_failing(call, source, which, onwards);
            ++failures;
            EXPECT_EQ(outcome.result, -1) << name << ", allocation " << which;
            EXPECT_TRUE(outcome.clean()) << name << ", allocation " << which << " of "
                                         << (source == Source::host ? "the host" : "operator new") << ": left "
                                         << outcome.blocks_left << " and " << outcome.host_blocks_left
                                         << (outcome.parent_untouched ? "" : ", touched the parent");
        }
    }
    EXPECT_EQ(call_failing(call, source, 0, false).result, unbroken.result) << name << " afterwards";
    return failures;
}

// There is nothing that can fail: parsers take memory neither from operator new nor from the host.
TEST_F(FaultTest, Parsers)
{
    for (const Message &message : test::all_messages()) {
        if (message.parse == nullptr)
            continue;
        test::Xml body(test::best_example(message));
        const std::string tree = test::print(*body.root());
        for (const Source source : {Source::operator_new, Source::host}) {
            MessageEnvelope envelope(message);
            const Call parse = [&](TiXmlElement &) { return message.parse(&envelope.param, body); };
            EXPECT_EQ(count(parse, source), 0) << message.name;
        }
        EXPECT_EQ(test::print(*body.root()), tree) << message.name;
    }
}

// The texts of the body itself, filled by a host to the last byte.
void fill_texts(const Message &message, void *payload)
{
    const netpublic::Table &table = *message.written;
    for (unsigned i = 0; i < table.rows; ++i)
        if (table.row(i).kind == Kind::text)
            std::memset(static_cast<char *>(payload) + table.row(i).offset, 'x',
                        static_cast<std::size_t>(table.limit(table.row(i).limits).high));
}

TEST_F(FaultTest, Writers)
{
    for (const Message &message : test::all_messages()) {
        if (message.write == nullptr)
            continue;
        MessageEnvelope envelope(message);
        if (message.parse != nullptr) {
            EXPECT_EQ(envelope.read(message.parse, test::best_example(message)), 0) << message.name;
        }
        const Call write = [&](TiXmlElement &parent) { return message.write(&envelope.param, &parent); };
        for (const int variant : {0, 1, 2}) {
            if (variant == 1 && message.written != nullptr)
                fill_texts(message, envelope.param.data);
            if (variant == 2) // every list has items, every switch is on
                std::memset(envelope.param.data, 1, envelope.size());
            const std::string payload = envelope.content();
            failures_ += expect_failures(write, message.name, Source::operator_new);
            failures_ += expect_failures(write, message.name, Source::host);
            EXPECT_EQ(envelope.content(), payload) << message.name << ": the writer changed its payload";
        }
    }
    EXPECT_GT(failures_, 4000);
}

// What a host builds its own elements with: several children are all there, or none.
TEST_F(FaultTest, Toolkit)
{
    net_schedule_t schedule = {};
    schedule.types.bits[0] = 0x20000005;
    schedule.section[3][3].bits[0] = 0x5;
    schedule.section[4][9].bits[0] = 0x1;
    net_int_value_t range = {};
    net_float_value_t floats = {};
    tag_net_time_v20_t time = {};
    net_smart_ai_points_t polygon = {};
    polygon.pointNum = 3;
    tag_net_ptz_param_v20_t serial = {};
    net_stream_info_v20_t streams[2] = {};
    constexpr char name[] = "a name of more than fifteen characters";
    int cursor = 0;
    const std::map<std::string, Call> calls = {
        {"string", [&](auto &p) { return InsertChildToXmlElement_string(&p, name, name, 0, 0); }},
        {"int", [&](auto &p) { return InsertChildToXmlElement_int(&p, name, -7, 0, 0); }},
        {"unsigned", [&](auto &p) { return InsertChildToXmlElement_unsignedint(&p, name, 7, 0, 0); }},
        {"int64", [&](auto &p) { return InsertChildToXmlElement_int64(&p, name, -7, 0, 0); }},
        {"longlong", [&](auto &p) { return InsertChildToXmlElement_longlong(&p, name, -7); }},
        {"unsignedlonglong", [&](auto &p) { return InsertChildToXmlElement_unsignedlonglong(&p, name, 7, 0, 0); }},
        {"float", [&](auto &p) { return InsertChildToXmlElement_float(&p, name, 0.25F, 0, 0); }},
        {"time", [&](auto &p) { return InsertChildToXmlElement_time(&p, &time); }},
        {"int value", [&](auto &p) { return net_int_value_s2x(&range, &p); }},
        {"float value", [&](auto &p) { return net_float_value_s2x(&floats, &p); }},
        {"type schedule", [&](auto &p) { return insert_type_schedule_list_to_xmlnode(&schedule, &p); }},
        {"schedule", [&](auto &p) { return insert_schedule_list_to_xmlnode(&schedule, &p); }},
        {"points", [&](auto &p) { return net_smart_ai_points_s2x(&polygon, &p); }},
        {"direction", [&](auto &p) { return net_smart_ai_direction_s2x(NET_CROSSLINE_DETECT_DIRECTION_E{}, &p); }},
        {"operation", [&](auto &p) { return net_smart_ai_op_s2x(NET_SMAER_AI_OP_E{}, &p); }},
        {"serial", [&](auto &p) { return net_ptz_param_s2x(&serial, &p); }},
        {"encodings", [&](auto &p) { return cursor = 0, xml_enc_info_list_s2x(streams, 2, &p, &cursor, 5000); }},
        {"cut encodings", [&](auto &p) { return cursor = 0, xml_enc_info_list_s2x(streams, 2, &p, &cursor, 900); }},
    };
    for (const auto &[what, call] : calls)
        failures_ += expect_failures(call, what, Source::operator_new);
    EXPECT_GT(failures_, 300);
}

TEST_F(FaultTest, ExtensionHeaders)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?><ExtenSion version=\"1.1\"><channelId>3</channelId>"
                       "<userName>more than fifteen bytes</userName><!-- and a comment --></ExtenSion>";
    net_ext_t ext = {};
    const Call read = [&](TiXmlElement &) { return net_exten_x2s(&text[0], &ext); };
    failures_ += expect_failures(read, "header", Source::host);
    EXPECT_EQ(failures_, 4) << "a copy and its tokens, alone and from there on";
    EXPECT_EQ(test::allocations_of([&] { net_exten_x2s(&text[0], &ext); }), 0);
    EXPECT_EQ(read(*test::Xml("<p/>").root()), 0);
    EXPECT_EQ(ext.channelId, 3);

    const Call write = [](TiXmlElement &) {
        TiXmlPrinter printer;
        return net_get_exten_xml(printer, 7);
    };
    failures_ += expect_failures(write, "reply", Source::operator_new);
    EXPECT_GT(failures_, 15);
}

// P12: what cannot be masked is not shown.
TEST_F(FaultTest, LogFilter)
{
    const std::string text = "<password>secret</password><key>secret</key><ip>secret</ip>";
    // Longer than what any other test has made the result buffer hold.
    const std::string longest(16 << 20, 'x');
    const auto failing_at = [](const std::string &shown, long which) {
        const FailingNew failing(which, true);
        return net_xml_printf_filter(shown.c_str());
    };
    EXPECT_STREQ(failing_at(longest, 1), "");
    net_xml_printf_filter(text.c_str());   // has made room for the result
    EXPECT_STREQ(failing_at(text, 1), ""); // the list of tags
    EXPECT_STREQ(failing_at(text, 2), "<password>******</password><key>******</key><ip>******</ip>");
    std::string many, masked;
    for (int i = 0; i < 10; ++i) {
        many += "<ip>1</ip>";
        masked += "<ip>*</ip>";
    }
    net_xml_printf_filter(many.c_str());
    EXPECT_STREQ(failing_at(many, 2), ""); // the list grows
    EXPECT_EQ(failing_at(many, 3), masked);
}

} // namespace
