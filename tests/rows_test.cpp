// Rows that the ordinary tables of numbers and texts do not have: wires, conversions, grids, hooks, and the
// lists and names that follow rules of their own. What they read, store, write and log is spelled out.
// Log lines carry the name of a source of the library.
#define NETPUBLIC_LOGGED_AS "net_xml_stream.cpp"

#include "engine/engine.h"
#include "support.h"

#include <cstring>
#include <string>

namespace netpublic {
namespace {

using test::Xml;

class RowsTest : public test::HostTest {};

struct Entry {
    int index;
    int value;
};

struct Store {
    Entry entries[3];
    int numbers[3];
    int count;
    int flag;
    int width, height;
    unsigned char cells[grid_columns][grid_rows];
    unsigned char byte;
    int *behind;
};

// The result, the log with its line numbers and, for a writer, the children.
template <class D> std::string read(typename D::T &record, const std::string &children)
{
    static constexpr auto table = describe<D>();
    Xml node("<p>" + children + "</p>");
    int result = 0;
    const std::string log = test::log_of([&] { result = read_record(table, &record, node); });
    return std::to_string(result) + (log.empty() ? "" : " ") + log;
}
template <class D> std::string write(const typename D::T &record)
{
    static constexpr auto table = describe<D>();
    TiXmlElement parent("p");
    const int result = write_record(table, &record, &parent);
    return result == 0 ? test::print_children(parent) : std::to_string(result);
}

// Wires ---------------------------------------------------------------------------------------------

struct Wire {
    int twice = 0;
    unsigned place = 99;

    Wire() = default;
    Wire(Store &, unsigned index) : place(index) {}
};

int take(Store &store, const Wire &wire, Item &item)
{
    store.entries[item.index] = {static_cast<int>(wire.place), wire.twice / 2};
    store.flag = item.result;
    return item.result;
}

Give give(const Store &store, Wire &wire, Item &item)
{
    if (item.index == 3)
        return Give::ended;
    wire.twice = store.entries[item.index].value * 2;
    return store.entries[item.index].value < 0    ? Give::failed
           : store.entries[item.index].value == 0 ? Give::left_out
                                                  : Give::written;
}

struct WireFields : Description {
    using T = Wire;
    static constexpr Field fields[] = {integer("twice", AT(twice)).at_most(100)};
};
constexpr auto wire_record = describe<WireFields>();

struct WiresFields : Description {
    using T = Store;
    static constexpr Field fields[] = {
        wires_part<T, take, give>("e", wire_record, 3).exactly().item_line("no %s\n"),
    };
    static constexpr Traits traits = HERE.parser("rows").others_fail();
};

TEST_F(RowsTest, WiresAreStoredByTheirFunction)
{
    const std::string three = "<e><twice>2</twice></e><e/><e><twice>8</twice></e>";
    Store store = {};
    EXPECT_EQ(read<WiresFields>(store, three + "<other/>"), "0") << "what stands behind a full list is ignored";
    EXPECT_EQ(store.entries[0].value, 1);
    EXPECT_EQ(store.entries[2].index, 2) << "a wire may begin from its target and its place";
    EXPECT_EQ(store.entries[2].value, 4);
    EXPECT_EQ(write<WiresFields>(store), "<e><twice>2</twice></e><e><twice>8</twice></e>");
    store.entries[1].value = -1;
    EXPECT_EQ(write<WiresFields>(store), "-1");
    store = {};
    EXPECT_EQ(read<WiresFields>(store, "<e/><e><twice>200</twice></e>"), "-1 <red net_xml_stream.cpp>no rows\n");
    EXPECT_EQ(store.flag, -1) << "a function that wants the item is told of a refusal";
    EXPECT_EQ(store.entries[1].value, 100);
    EXPECT_EQ(read<WiresFields>(store, "<e/><e/>"), "-1") << "too few";
    EXPECT_EQ(read<WiresFields>(store, "<e/><other/><e/>"), "-1");
    EXPECT_EQ(read<WiresFields>(store, "<e/><!--e--><e/>"), "-1 <red net_xml_stream.cpp>no rows\n");
}

// Lists and names -----------------------------------------------------------------------------------

struct EntryFields : Description {
    using T = Entry;
    static constexpr Field fields[] = {place("index", AT(index)), integer("value", AT(value)).in(0, 9)};
    static constexpr Traits traits = HERE.parser("entry").failure(Line::plain);
};
constexpr auto entry_record = describe<EntryFields>();

void note_absence(Entry &first)
{
    first.value = 77;
}

struct WatchedEntryFields : Description {
    using T = Entry;
    static constexpr Field fields[] = {place("index", AT(index)), integer("value", AT(value)).absent<note_absence>()};
    static constexpr Traits traits = HERE.parser("entry").failure(Line::plain);
};
constexpr auto watched_entry = describe<WatchedEntryFields>();

struct IndexedFields : Description {
    using T = Store;
    static constexpr Field fields[] = {list("e", AT(entries), watched_entry).indexed().counted_by(AT(count))};
};

struct EmptiedEntryFields : EntryFields {
    static constexpr Traits traits = EntryFields::traits.clears();
};
constexpr auto emptied_entry = describe<EmptiedEntryFields>();

struct PositionFields : Description {
    using T = Store;
    static constexpr Field fields[] = {list("e", AT(entries), emptied_entry).by_position()};
};
struct KeptPositionFields : Description {
    using T = Store;
    static constexpr Field fields[] = {list("e", AT(entries), entry_record).by_position()};
};

TEST_F(RowsTest, ItemsChooseTheirRecords)
{
    Store store = {};
    EXPECT_EQ(read<IndexedFields>(store, "<e><index>2</index><value>5</value></e><e><index>1</index></e>"), "0");
    EXPECT_EQ(store.entries[2].value, 5);
    EXPECT_EQ(store.entries[1].index, 1);
    EXPECT_EQ(store.entries[0].value, 77) << "the hook for an absent child is handed the first record";
    const std::string refused = "-1 Func(entry) Line(#)\n";
    EXPECT_EQ(read<IndexedFields>(store, "<e><value>5</value></e>"), refused) << "the index comes first";
    EXPECT_EQ(read<IndexedFields>(store, "<e><index>3</index></e>"), refused);
    EXPECT_EQ(read<IndexedFields>(store, "<e><index>-1</index></e>"), refused);
    store.count = 2;
    EXPECT_EQ(write<IndexedFields>(store),
              "<e><index>0</index><value>77</value></e><e><index>1</index><value>0</value></e>");

    store = {{{1, 1}, {2, 2}, {3, 3}}, {}, 0, 0, 0, 0, {}, 0, nullptr};
    EXPECT_EQ(
        read<PositionFields>(store, "<e><value>4</value></e><other/><e><value>6</value></e><e><value>x</value></e>"),
        "0");
    EXPECT_EQ(store.entries[0].value, 4);
    EXPECT_EQ(store.entries[1].value, 0) << "another child leaves its record empty";
    EXPECT_EQ(store.entries[2].value, 6) << "and nothing behind the last record is looked at";

    EXPECT_EQ(read<KeptPositionFields>(store, "<other/><e><value>7</value></e>"), "0");
    EXPECT_EQ(store.entries[0].value, 4) << "a record that does not begin anew is left as it is";
    EXPECT_EQ(store.entries[1].value, 7);
}

struct OrderedFields : Description {
    using T = Store;
    static constexpr Field fields[] = {integer("first", AT(flag)).required(), integer("second", AT(count)).required()};
    static constexpr Traits traits = Traits{}.in_order().others_fail();
};
struct LongerFields : Description {
    using T = Store;
    static constexpr Field fields[] = {integer("value", AT(flag)).tolerant()};
    static constexpr Traits traits = Traits{}.longer_names();
};
struct LookedUpFields : Description {
    using T = Store;
    static constexpr Field fields[] = {integer("value", AT(flag)).required()};
    static constexpr Traits traits = HERE.parser("rows").looked_up().missing("none in %s\n");
};

TEST_F(RowsTest, NamesByOtherRules)
{
    Store store = {};
    EXPECT_EQ(read<OrderedFields>(store, "<f>1</f><SECOND>2</SECOND><third>x</third>"), "0");
    EXPECT_EQ(store.count, 2);
    EXPECT_EQ(read<OrderedFields>(store, "<second>2</second><first>1</first>"), "-1");
    EXPECT_EQ(read<OrderedFields>(store, "<first>1</first>"), "-1");
    EXPECT_EQ(read<LongerFields>(store, "<ValueOfAll>7</ValueOfAll><val>8</val><value>x</value>"), "0");
    EXPECT_EQ(store.flag, 7) << "what is no number is let pass";
    EXPECT_EQ(read<LookedUpFields>(store, "<Value>1</Value><value>3</value><value>x</value>"), "0");
    EXPECT_EQ(store.flag, 3);
    EXPECT_EQ(read<LookedUpFields>(store, "<val>1</val>"), "-1 <red net_xml_stream.cpp>none in rows\n");
}

// Conversions, hooks, grids -------------------------------------------------------------------------

int read_roman(const char *text, Store &store)
{
    store.flag = static_cast<int>(std::strlen(text));
    return std::strspn(text, "I") == std::strlen(text) ? 0 : -1;
}

int write_roman(const Store &store, char *text, std::size_t)
{
    std::memset(text, 'I', static_cast<std::size_t>(store.flag));
    text[store.flag] = '\0';
    return 0;
}

int not_thirteen(Store &store)
{
    return store.count == 13 ? -1 : 0;
}

struct ConvertedFields : Description {
    using T = Store;
    static constexpr Field fields[] = {
        converted<read_roman, write_roman>("roman", AT(flag)).upto(3),
        integer("count", AT(count)).then<not_thirteen>().complain("unlucky %d\n"),
        byte("byte", AT(byte)).at_least(0),
    };
    static constexpr Traits traits = HERE;
};

TEST_F(RowsTest, FunctionsOfTheMessage)
{
    Store store = {};
    EXPECT_EQ(read<ConvertedFields>(store, "<roman>III</roman><count>12</count><byte>258</byte>"), "0");
    EXPECT_EQ(write<ConvertedFields>(store), "<roman>III</roman><count>12</count><byte>2</byte>");
    EXPECT_EQ(read<ConvertedFields>(store, "<roman>IV</roman>"), "-1");
    EXPECT_EQ(read<ConvertedFields>(store, "<roman>IIII</roman>"), "-1");
    EXPECT_EQ(store.flag, 2) << "a text that is too long is not converted";
    EXPECT_EQ(read<ConvertedFields>(store, "<count>13</count>"), "-1 <red net_xml_stream.cpp>unlucky 13\n");
    EXPECT_EQ(read<ConvertedFields>(store, "<byte>-1</byte>"), "-1");
}

struct GridFields : Description {
    using T = Store;
    static constexpr Field fields[] = {
        column_grid("cells", AT(cells), AT(width), AT(height))
            .upto(8)
            .complain_plainly("Line(%d) %d cells for %d x %d\n")
            .too_large("Line(%d) %d is too large\n"),
        integer("width", AT(width)),
        integer("height", AT(height)),
    };
    static constexpr Traits traits = HERE.parser("rows").missing("no size\n");
};

TEST_F(RowsTest, GridsWaitForTheirSides)
{
    Store store = {};
    EXPECT_EQ(read<GridFields>(store, "<cells>////</cells><width>4</width><cells>gUL/</cells><height>6</height>"), "0");
    EXPECT_EQ(store.cells[0][0], 1) << "the last text counts";
    EXPECT_EQ(store.cells[1][0], 0);
    EXPECT_EQ(store.cells[3][1], 1);
    EXPECT_EQ(write<GridFields>(store), "<cells>gUL/</cells><width>4</width><height>6</height>");
    EXPECT_EQ(read<GridFields>(store, "<cells>gUL/</cells><width>5</width>"), "-1 Line(#) 24 cells for 5 x 6\n");
    EXPECT_EQ(read<GridFields>(store, "<cells/>"), "-1 <red net_xml_stream.cpp>no size\n");
    EXPECT_EQ(read<GridFields>(store, "<cells>123456789</cells>"), "-1");
    store.width = 156;
    EXPECT_EQ(read<GridFields>(store, "<cells>gUL/</cells>"), "-1 <red net_xml_stream.cpp>no size\n");
    EXPECT_EQ(test::log_of([&] { EXPECT_EQ(write<GridFields>(store), "<width>156</width><height>6</height>"); }), "")
        << "sides that no grid has leave it out";
    store.width = 6000;
    EXPECT_EQ(test::log_of([&] { EXPECT_EQ(write<GridFields>(store), "<width>6000</width><height>6</height>"); }),
              "<red net_xml_stream.cpp>Line(#) 6002 is too large\n");
}

struct WordFields : Description {
    using T = Store;
    static constexpr Word list[] = {{1, "one"}, {2, "two"}};
    static constexpr auto words_of = words<list>();
    static constexpr Field fields[] = {
        word("add", AT(flag), words_of).adds(),
        word("code", AT(count), words_of).otherwise(2).complain("unknown %s\n").code_line("code %d\n"),
    };
    static constexpr Traits traits = HERE;
};

TEST_F(RowsTest, WordsWithTwoLines)
{
    Store store = {};
    EXPECT_EQ(read<WordFields>(store, "<add>one</add><add>x</add><add>TWO</add><code>x</code>"),
              "0 <red net_xml_stream.cpp>unknown x\n");
    EXPECT_EQ(store.flag, 3);
    EXPECT_EQ(store.count, 2);
    store.flag = 1;
    store.count = 9;
    EXPECT_EQ(test::log_of([&] { EXPECT_EQ(write<WordFields>(store), "-1"); }), "<red net_xml_stream.cpp>code 9\n");
}

} // namespace
} // namespace netpublic
