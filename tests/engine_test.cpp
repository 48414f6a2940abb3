// Log lines carry the name of a source of the library.
#define NETPUBLIC_LOGGED_AS "net_xml_alarm.cpp"

#include "cases.h"
#include "engine/engine.h"
#include "engine/matching.h"
#include "engine/records.h"
#include "memory.h"

#include <net_public.h>

#include <climits>
#include <cstring>
#include <memory>
#include <string>

namespace netpublic {
namespace {

using test::allocations_of;
using test::Arguments;
using test::log_of;
using test::number;
using test::outcome;
using test::print_children;
using test::Xml;

class EngineTest : public test::HostTest {};

struct Pair {
    int channelId;
    int enable;
};
struct PairFields : Description {
    using T = Pair;
    static constexpr Field fields[] = {integer("channelId", AT(channelId)), integer("enable", AT(enable))};
};
constexpr auto pair_table = describe<PairFields>();

// Rows ------------------------------------------------------------------------------------------------

constexpr Word colour_list[] = {
    {1, "red"}, {2, "redder"}, {4, "blue"}, {8, "rosy", Use::read}, {8, "pink", Use::write}};
constexpr auto colours = words<colour_list>();

struct Inner {
    int a;
    int b;
};
struct InnerFields : Description {
    using T = Inner;
    static constexpr Field fields[] = {integer("a", AT(a)).in(-1, 9), integer("b", AT(b))};
};
constexpr auto inner = describe<InnerFields>();

struct Payload {
    int number;
    int seen;
    int word;
    int mask;
    int preset;
    float real;
    char text[8];
    net_counted_text_t counted;
    int count;
    Inner list[2];
    Inner group;
    int numbers[4];
    time_section_t events;
    long long big;
    unsigned long long huge;
    unsigned int natural;
};

int failing_write(const Payload &, char *text, std::size_t size)
{
    std::memset(text, 'x', size);
    return -1;
}

template <class D> struct Message {
    static constexpr auto table = describe<D>();
};

template <class D> std::string read(Payload &payload, const std::string &children)
{
    Xml node("<p>" + children + "</p>");
    int result = 1;
    const std::string log = log_of([&] { result = read_record(Message<D>::table, &payload, node); });
    return log.empty() ? std::to_string(result) : std::to_string(result) + " " + log;
}

template <class D> std::string read(const std::string &children)
{
    Payload payload = {};
    return read<D>(payload, children);
}

template <class D> std::string write(const Payload &payload)
{
    TiXmlElement parent("p");
    const int result = write_record(Message<D>::table, &payload, &parent);
    return std::to_string(result) + " " + print_children(parent);
}

struct MarkFields : Description {
    using T = Payload;
    static constexpr Field fields[] = {
        preset(AT(preset), -1),
        preset(AT(seen), 0),
        integer("number", AT(number)).in(0, 9).marks(AT(seen), 5).read_only(),
        integer("preset", AT(preset)).when(AT(seen), When::positive),
        integer("always", AT(number)).write_only().when(AT(preset), When::nonnegative),
        constant("version", 2),
        text("text", AT(text)).when(AT(word)),
    };
};

TEST_F(EngineTest, PresetsMarksAndConditions)
{
    Payload payload = {};
    payload.seen = 77;
    EXPECT_EQ(read<MarkFields>(payload, ""), "0");
    EXPECT_EQ(payload.preset, -1) << "stored although nothing names it";
    EXPECT_EQ(payload.seen, 0);
    EXPECT_EQ(write<MarkFields>(payload), "0 <version>2</version>");
    EXPECT_EQ(read<MarkFields>(payload, "<preset>4</preset><number>3</number><version>x</version><always>x</always>"),
              "0")
        << "no child answers to what is only written";
    EXPECT_EQ(payload.preset, 4);
    EXPECT_EQ(payload.seen, 5);
    EXPECT_EQ(read<MarkFields>(payload, "<number>10</number>"), "-1");
    EXPECT_EQ(payload.number, 10) << "stored, then refused";
    EXPECT_EQ(payload.seen, 0) << "no mark for a refused child";
    payload = {};
    std::strcpy(payload.text, "hi");
    EXPECT_EQ(write<MarkFields>(payload), "0 <always>0</always><version>2</version>");
    payload.seen = payload.preset = payload.word = -1;
    EXPECT_EQ(write<MarkFields>(payload), "0 <version>2</version><text>hi</text>");
    payload.seen = 1;
    payload.preset = INT_MIN;
    EXPECT_EQ(write<MarkFields>(payload), "0 <preset>-2147483648</preset><version>2</version><text>hi</text>");
}

struct RequiredFields : Description {
    using T = Payload;
    static constexpr Field fields[] = {
        integer("number", AT(number)).required(),
        integer("numbers", AT(seen)),
        flag("word", AT(word)).required(),
    };
    static constexpr Traits traits = HERE.parser("reader").failure(Line::plain_failed);
};

// P3. Lists: beyond the capacity of two.
template <int policy> struct ListOf : Description {
    using T = Payload;
    static constexpr Field plain =
        list("item", AT(list), inner).counted_by(AT(count)).complain("func:%s line:%d full\n");
    static constexpr Field fields[] = {
        policy == 0   ? plain
        : policy == 1 ? plain.refuse_more()
        : policy == 2 ? plain.overwrite_last()
                      : plain.stop_when_full(),
        integer("number", AT(number)),
    };
    static constexpr Traits traits = HERE.parser("reader").failure(Line::plain_failed);
};

template <int policy> std::string list_read(Arguments &arguments)
{
    Payload p = {};
    p.count = number(arguments.at(0));
    const std::string result = read<ListOf<policy>>(p, arguments.at(1));
    return result + ", " + outcome(p.count) + ": " + outcome(p.list[0].a, p.list[0].b, p.list[1].a, p.list[1].b) +
           ", " + outcome(p.number);
}

struct WriteListFields : Description {
    using T = Payload;
    static constexpr Field fields[] = {
        list("item", AT(list), inner).counted_by(AT(count)),
        int_items("n", AT(numbers)),
        group("group", AT(group), inner),
        int_list("list", AT(numbers), -1),
    };
};

TEST_F(EngineTest, ListsAndGroupsWritten)
{
    Payload p = {};
    p.list[0] = {1, 2};
    p.list[1] = {3, 4};
    p.group = {5, 6};
    p.numbers[1] = -7;
    const std::string rest = "<n>0</n><n>-7</n><n>0</n><n>0</n><group><a>5</a><b>6</b></group><list>0,-7</list>";
    const std::string one = "<item><a>1</a><b>2</b></item>", two = "<item><a>3</a><b>4</b></item>";
    p.count = 1;
    EXPECT_EQ(write<WriteListFields>(p), "0 " + one + rest);
    for (int count : {2, 3, INT_MAX}) {
        p.count = count;
        EXPECT_EQ(write<WriteListFields>(p), "0 " + one + two + rest);
    }
    for (int count : {0, -1, INT_MIN}) {
        p.count = count;
        EXPECT_EQ(write<WriteListFields>(p), "0 " + rest);
    }
    EXPECT_EQ(read<WriteListFields>(p, "<list>3,4</list>"), "0");
    EXPECT_EQ(p.numbers[1], 4);
    EXPECT_EQ(p.numbers[3], -1) << "what the text does not name";
    EXPECT_EQ(read<WriteListFields>(p, "<list>" + std::string(127, ',') + "</list>"), "0");
    EXPECT_EQ(read<WriteListFields>(p, "<list>" + std::string(128, ',') + "</list>"), "-1");
    EXPECT_EQ(read<WriteListFields>(p, "<group><a>9</a></group>"), "0");
    EXPECT_EQ(p.group.a, 9);
    EXPECT_EQ(p.group.b, 6);
}

// Words.
template <int policy> struct WordOf : Description {
    using T = Payload;
    static constexpr Field plain = word("word", AT(word), colours);
    static constexpr Field fields[] = {
        policy == 0   ? plain
        : policy == 1 ? plain.prefix()
        : policy == 2 ? plain.exact().upto(4)
        : policy == 3 ? plain.kept().complain("unknown %s\n")
        : policy == 4 ? plain.otherwise(99).reported()
        : policy == 5 ? plain.fallback(4).complain("bad %s\n")
                      : plain.complain_plainly("bad %s\n").quiet(),
    };
    static constexpr Traits traits = HERE.parser("reader").failure(Line::plain_failed);
};

struct WordWrittenFields : Description {
    using T = Payload;
    static constexpr Field fields[] = {
        word("word", AT(word), colours).read_only().complain("unknown %s\n"),
        word("word", AT(word), colours).write_only().complain("no word for %d\n"),
    };
    static constexpr Traits traits = HERE;
};

template <int policy> std::string word_read(Arguments &arguments)
{
    Payload payload = {};
    payload.word = 77;
    const std::string result = read<WordOf<policy>>(payload, "<word>" + arguments.at(0) + "</word>");
    return outcome(payload.word) + ": " + result;
}

TEST_F(EngineTest, WordsWritten)
{
    Payload payload = {};
    payload.word = 8;
    EXPECT_EQ(write<WordOf<0>>(payload), "0 <word>pink</word>");
    payload.word = 3;
    EXPECT_EQ(write<WordOf<0>>(payload), "-1 ");
    EXPECT_EQ(write<WordOf<5>>(payload), "0 <word>blue</word>");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(write<WordWrittenFields>(payload), "-1 "); }),
              "<red net_xml_alarm.cpp>no word for 3\n");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(write<WordOf<6>>(payload), "-1 "); }), "") << "the line wants a text";
}

// Masks.
template <int policy> struct MaskOf : Description {
    using T = Payload;
    static constexpr Field plain = mask("mask", AT(mask), colours).upto(20);
    static constexpr Field fields[] = {
        policy == 0   ? plain
        : policy == 1 ? plain.none_clears()
        : policy == 2 ? plain.none_conflicts().accumulates()
        : policy == 3 ? plain.last_wins()
                      : plain.starting(0x100),
    };
};

template <int policy> std::string mask_read(Arguments &arguments)
{
    Payload payload = {};
    payload.mask = 0x40;
    const std::string result = read<MaskOf<policy>>(payload, "<mask>" + arguments.at(0) + "</mask>");
    return outcome(payload.mask) + ": " + result;
}

TEST_F(EngineTest, MasksWritten)
{
    Payload payload = {};
    payload.mask = 1 | 8 | 0x100;
    EXPECT_EQ(write<MaskOf<0>>(payload), "0 <mask>red,pink</mask>");
    payload.mask = 0x100;
    EXPECT_EQ(write<MaskOf<0>>(payload), "0 <mask>none</mask>");
}

struct TextFields : Description {
    using T = Payload;
    static constexpr Field fields[] = {
        text("text", AT(text)),
        text("short", AT(text)).upto(3).complain("bad text '%s'\n").read_only(),
        counted_text("counted", AT(counted)),
        events("events", AT(events), colours).upto(12).read_only(),
        integer("skipped", AT(number)).skipped().marks(AT(seen)),
        int64("big", AT(big)),
        unsigned_longlong("huge", AT(huge)),
        unsigned_integer("natural", AT(natural)),
        real("real", AT(real)),
    };
    static constexpr Traits traits = HERE;
};

std::string texts_read(Arguments &arguments)
{
    Payload p = {};
    const std::string result = read<TextFields>(p, arguments.at(0));
    return result + ", " +
           outcome(p.text, p.counted.capacity, p.counted.length, p.counted.text, p.events.bits[0], p.number, p.seen);
}

TEST_F(EngineTest, NumbersBothWays)
{
    Payload p = {};
    EXPECT_EQ(read<TextFields>(p, "<counted/><skipped/>"), "0");
    EXPECT_EQ(read<TextFields>(p, "<big>-9223372036854775808</big><huge>18446744073709551615</huge>"
                                  "<natural>4294967295</natural><real>0.1</real>"),
              "0");
    std::memset(p.text, 'f', sizeof p.text); // the host may fill it to the last byte
    EXPECT_EQ(write<TextFields>(p),
              "0 <text>ffffffff</text><counted></counted><skipped>0</skipped><big>-9223372036854775808</big>"
              "<huge>18446744073709551615</huge><natural>4294967295</natural>"
              "<real>0.1</real>");
}

void start(Payload &payload)
{
    payload.number = 100;
}

int check(Payload &payload)
{
    payload.seen = payload.number;
    return payload.number > 200 ? -1 : 0;
}

struct HookFields : Description {
    using T = Payload;
    static constexpr Field fields[] = {preset(AT(preset), 3), integer("number", AT(number))};
    static constexpr Traits traits = HERE.parser("hook_x2s")
                                         .writer("hook_s2x", "Hook")
                                         .clears()
                                         .sets_inited()
                                         .before<Payload, start>()
                                         .after<Payload, check>()
                                         .unknown("unknown %s\n");
};

struct StrictFields : Description {
    using T = Payload;
    static constexpr Field fields[] = {integer("number", AT(number)), integer("word", AT(word))};
    static constexpr Traits traits = HERE.others_fail().exact_names().unknown("no %s\n");
};

struct FirstFields : Description {
    using T = Payload;
    static constexpr Field fields[] = {integer("number", AT(number)), integer("word", AT(word))};
    static constexpr Traits traits = HERE.first_child_only();
};

TEST_F(EngineTest, Walks)
{
    Payload p;
    std::memset(&p, 0x55, sizeof p);
    EXPECT_EQ(read<HookFields>(p, "<x/>"), "0 <red net_xml_alarm.cpp>unknown x\n");
    EXPECT_EQ(p.number, 100) << "the hook runs behind the clearing";
    EXPECT_EQ(p.seen, 100);
    EXPECT_EQ(p.preset, 3);
    EXPECT_EQ(p.word, 0) << "cleared";
    EXPECT_EQ(read<HookFields>(p, "<number>201</number>"), "-1");
}

template <class D> std::string two_read(Arguments &arguments)
{
    Payload p = {};
    const std::string result = read<D>(p, arguments.at(0));
    return result + ", " + outcome(p.number, p.word);
}

TEST_F(EngineTest, Cases)
{
    test::run_cases("engine.txt",
                    {{"name",
                      [](Arguments &arguments) {
                          const char *name = arguments.at(0).c_str(), *key = arguments.at(1).c_str();
                          return outcome(answers_to(name, key), is_named(name, key));
                      }},
                     {"pair",
                      [](Arguments &arguments) {
                          Xml node("<p>" + arguments.at(0) + "</p>");
                          Pair pair = {};
                          const int result = read_record(pair_table, &pair, node);
                          return outcome(result, pair.channelId, pair.enable);
                      }},
                     {"required", [](Arguments &arguments) { return read<RequiredFields>(arguments.at(0)); }},
                     {"list", list_read<0>},
                     {"list, refuse_more", list_read<1>},
                     {"list, overwrite_last", list_read<2>},
                     {"list, stop_when_full", list_read<3>},
                     {"word", word_read<0>},
                     {"word, prefix", word_read<1>},
                     {"word, exact, upto 4", word_read<2>},
                     {"word, kept", word_read<3>},
                     {"word, otherwise 99, reported", word_read<4>},
                     {"word, fallback", word_read<5>},
                     {"word, complain_plainly, quiet", word_read<6>},
                     {"mask", mask_read<0>},
                     {"mask, none_clears", mask_read<1>},
                     {"mask, none_conflicts, accumulates", mask_read<2>},
                     {"mask, last_wins", mask_read<3>},
                     {"mask, starting 0x100", mask_read<4>},
                     {"texts", texts_read},
                     {"strict", two_read<StrictFields>},
                     {"first child only", two_read<FirstFields>}});
}

TEST_F(EngineTest, Messages)
{
    Payload p = {};
    net_param_t param = {1, 0, 0, 0, 0, sizeof p, &p};
    Xml good("<Hook><number>150</number></Hook>"), bad("<Hook><number>250</number></Hook>");
    const Table &table = Message<HookFields>::table;
    EXPECT_EQ(parse_message(&param, bad, table), -1);
    EXPECT_EQ(param.inited, 1U);
    EXPECT_EQ(parse_message(&param, good, table), 0);
    EXPECT_EQ(param.inited, 2U);
    EXPECT_EQ(p.number, 150);
    TiXmlElement parent("p");
    EXPECT_EQ(write_message(&param, &parent, table), 0);
    EXPECT_EQ(print_children(parent), "<Hook version=\"1.1\"><number>150</number></Hook>");
    param.dataSize = 1;
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(parse_message(&param, good, table), -1);
                  EXPECT_EQ(write_message(&param, &parent, table), -1);
              }),
              "<red net_xml_alarm.cpp>Func(hook_x2s) Line(#) \n<red net_xml_alarm.cpp>func:hook_s2x line:#\n");
    Inner record = {};
    Xml inside("<inn><a>4</a></inn>");
    EXPECT_EQ(read_component(&record, inside, "inner", inner), 0);
    EXPECT_EQ(read_component(&record, inside, "in", inner), -1);
    EXPECT_EQ(read_component(nullptr, inside, nullptr, inner), -1);
    EXPECT_EQ(read_component(&record, nullptr, nullptr, inner), -1);
    EXPECT_EQ(record.a, 4);
}

struct FailingFields : Description {
    using T = Payload;
    static constexpr Field fields[] = {
        integer("number", AT(number)),
        group("group", AT(group), inner),
        converted<nullptr, failing_write>("bad", AT(number)),
        integer("behind", AT(number)).write_only(),
    };
    static constexpr Traits traits = HERE.writer("failing_s2x", "Failing").any_size().capital_version();
};

TEST_F(EngineTest, AFailingWriterLeavesTheParentAlone)
{
    Payload p = {};
    net_param_t param = {1, 0, 0, 0, 0, 5, &p};
    TiXmlElement parent("p");
    parent.LinkEndChild(new TiXmlElement("before"));
    EXPECT_EQ(write_message(&param, &parent, Message<FailingFields>::table), -1);
    EXPECT_EQ(print_children(parent), "<before />");
}

// Heap -----------------------------------------------------------------------------------------------

// That parsers allocate nothing, the fault test sees for every message.
TEST_F(EngineTest, WritersAllocateOnlyTheirResult)
{
    auto motion = std::make_unique<tag_net_pic_motion_cfg_v20_t>();
    net_param_t param = {1, 0, 0, 0, 0, sizeof *motion, motion.get()};
    Xml request(test::example("motion_request"));
    EXPECT_EQ(net_md_x2s(&param, request.root()->FirstChild()), 0);

    TiXmlElement parent("p");
    const long written = allocations_of([&] { EXPECT_EQ(net_md_s2x(&param, &parent), 0); });
    TiXmlNode *copy = nullptr;
    const long copied = allocations_of([&] { copy = parent.FirstChild()->Clone(); });
    EXPECT_LE(written, copied + 1) << "more than the nodes of the result and the text of the grid";
    EXPECT_GT(written, 50);
    delete copy;

    // The same for the toolkit's own writers, and for schedules both ways.
    net_schedule_t schedule = {};
    schedule.types.bits[0] = 0x5;
    schedule.section[3][3].bits[0] = 0x5;
    TiXmlElement lists("p");
    const long schedules = allocations_of([&] {
        EXPECT_EQ(insert_type_schedule_list_to_xmlnode(&schedule, &lists), 0);
        EXPECT_EQ(insert_schedule_list_to_xmlnode(&schedule, &lists), 0);
    });
    const long cloned = allocations_of([&] { copy = lists.Clone(); });
    delete copy;
    EXPECT_LE(schedules, cloned);
    EXPECT_EQ(allocations_of([&] {
                  EXPECT_EQ(get_type_schedule_list_from_xmlnode(&schedule, lists.FirstChild(), nullptr), 0);
                  EXPECT_EQ(get_schedule_list_from_xmlnode(&schedule, lists.LastChild(), nullptr), 0);
              }),
              0);
    EXPECT_EQ(net_host_memory().total, 0U);
}

#ifdef NETPUBLIC_DESCRIBED
// What the tools hear of a walk: the rows that took the children, and where it failed.
TEST_F(EngineTest, ToolsCanWatchAWalk)
{
    std::string heard;
    const Watch listener = {
        &heard, [](void *context, Event event, const Table &table, const Row *row, void *, Node node) {
            const char *const names[] = {"taken", "ignored", "refused", "placeless", "missing", "unwritten"};
            *static_cast<std::string *>(context) += std::string(names[static_cast<int>(event)]) + " " + node.name() +
                                                    ":" + (row != nullptr ? table.key(*row) : "") + "; ";
        }};
    watch = &listener;
    EXPECT_EQ(read<RequiredFields>("<n>1</n><x/><numbers>x</numbers>"), "-1 func:reader line:# failed\n");
    EXPECT_EQ(read<RequiredFields>("<n>1</n>"), "-1 func:reader line:# failed\n");
    watch = nullptr;
    EXPECT_EQ(heard, "taken n:number; ignored x:; refused numbers:numbers; taken n:number; missing p:word; ");
}
#endif

} // namespace
} // namespace netpublic
