// A message's description as the engine reads it: one block per record, without pointers except the
// references that need them, so that a thousand rows cost a shared library few load-time relocations.
// This unit, describe.h, which builds the block, and matching.h, which searches it, are the only ones that know the
// packed form:
//
//     Table | rows | limits | Source | references | order | texts
//
// The limits, the Source, the references and the order are there only where a table needs them.
#ifndef NETPUBLIC_TABLE_H
#define NETPUBLIC_TABLE_H

#include "engine/common.h"
#include "ground/element.h"
#include "ground/for_size.h"
#include "ground/log.h"
#include "ground/node.h"
#include "ground/words.h"

#include <net_types.h>

#include <cstddef>
#include <cstdint>

namespace netpublic {

struct Table;

// What a row does with the child that answers to its key, and with its member when it is written.
enum class Kind : std::uint8_t {
    integer,           // int
    flag,              // int, 0 or 1
    byte,              // unsigned char: the low byte of a number; unsigned int: a bit, see number_bit
    unsigned_integer,  // unsigned int
    int64,             // long long
    unsigned_longlong, // unsigned long long
    real,              // float
    text,              // char[]
    counted_text,      // net_counted_text_t
    view,              // const char *: the text stays where it is; only in records of a walk's own
    word,              // int: the code of a spelling
    mask,              // int: the codes of all spellings that the text contains
    events,            // time_section_t: the alarm types that the text contains
    int_list,          // int[]: numbers joined by commas
    converted,         // a text that a function makes something of, and makes
    grid,              // unsigned char[][]: a cell a byte, base64 in the text
    place,             // int: the item's place in its list, which chooses the item's record when it is read
    group,             // a record: an element with children of its own
    wire,              // an element that says something in another form than the payload keeps it
    list,              // record[]: the elements of this name fill one after another
    int_items,         // int[]: the same with plain numbers
    wires,             // elements of one name that do so
    constant,          // written only: a fixed number
    named,             // neither read nor written: a member that the tools show
    // Rows behind the keys; no child answers to them. They stand in this order, and are looked for from the last one
    // on: first what reading wants.
    preset,      // int: a number stored before the walk
    second_line, // a further line of the row's own: see Field::code_line(), item_line() and too_large()
    shows,       // int: what the row's own line shows instead of its member
    condition,   // int: decides whether the row is written
    hook,        // a function around reading the row
    mark,        // int: a number stored once the row has been read
    count,       // int: how many items the list holds
    again,       // another table that reads the same element once more
};

// Rows of elements of one name that fill one after another, and of elements whose children a table describes.
constexpr bool is_list(Kind kind)
{
    return kind >= Kind::list && kind <= Kind::wires;
}
constexpr bool has_table(Kind kind)
{
    return kind == Kind::group || kind == Kind::list || kind == Kind::wire || kind == Kind::wires;
}

// What a row's flags mean. Those of one kind of rows share bits with those of others, as the kinds never meet.
enum RowFlag : std::uint16_t {
    row_required = 0x1,          // the walk fails without such a child
    row_own_test = 0x2,          // tried even when an earlier key has taken the child
    row_quiet = 0x4,             // its failure is not logged as the record's failures are
    row_complains = 0x8,         // has a log line of its own
    row_shadowed = 0x10,         // a child of its full name answers to another key
    row_plain = 0x20,            // that line is neither gated nor prefixed
    row_skipped = 0x40,          // takes the child and reads nothing
    row_attached = 0x80,         // hooks, a mark, a condition or a second table stand behind the keys
    row_checked = 0x100,         // a number must lie within the limits
    number_tolerant = 0x200,     // one that cannot be read leaves the member as it was
    number_bit = 0x400,          // one other than 0 adds limits.low to the member
    view_whole = 0x100,          // the name must be the whole key
    word_prefix = 0x100,         // the text may be the beginning of the spelling
    word_exact = 0x200,          // case matters
    word_keep = 0x400,           // an unknown spelling leaves the member as it was
    word_otherwise = 0x800,      // an unknown spelling stores limits.high
    word_adds = 0xC00,           // both: the code is added to the bits that the member holds
    word_reported = 0x1000,      // an unknown spelling is logged as the record's failures are
    word_fallback = 0x2000,      // a code without spelling is written as the spelling of code limits.high
    mask_none_clears = 0x100,    // a text with "none" in it is the empty mask
    mask_none_conflicts = 0x200, // "none" together with any spelling is refused
    mask_accumulates = 0x400,    // added to what the member holds
    mask_last = 0x800,           // only the last spelling of the table that is found counts; written as a word
    mask_wordless = 0x1000,      // written as an empty text when the bits that are set have no spelling
    int_list_late = 0x100,       // converted behind the walk
    grid_columns_first = 0x100,  // cell (row r, column c) is cells[c][r]; else cells[r][c]
    grid_behind_pointer = 0x200, // the member points to the cells
    list_refuse = 0x100,         // an item beyond the capacity is refused
    list_last = 0x200,           // ... overwrites the last one
    list_stop = 0x300,           // both: the walk ends when the list is full
    list_behind_pointer = 0x400, // the member points to the records
    list_exact = 0x800,          // the walk fails when the list is not full
    list_by_position = 0x1000,   // a child's place among all children is the item's
    list_indexed = 0x2000,       // an item's `place` row chooses its record
};

// Conditions under which a row is written, in a condition row's `limits` column. Of `function`, the `offset`
// column is the number of the reference. With the bit `demanded`, the writer fails where it is not met.
enum class When : std::uint8_t { nonzero, nonnegative, positive, function };
constexpr unsigned demanded = 4;

// When a hook runs, in its `limits` column; the `offset` column is the number of the reference.
enum class Moment : std::uint8_t { ahead, then, absent };

// One element that a function is about.
struct Item {
    const char *key;
    unsigned index;  // its place in its list
    unsigned cursor; // of a list that is written: the function's own, 0 in front of the first item
    int result;      // of a record that was read: 0 or -1
};

// What becomes of an item that is to be written.
enum class Give : int { failed = -1, written = 0, left_out, ended }; // the first two as of write_record()

using ReadWire = int (*)(void *record, const Table &wire, Item &item, Node element);
using WriteWire = Give (*)(const void *record, const Table &wire, Item &item, Element parent);
using ReadText = int (*)(void *record, const char *text);
using WriteText = int (*)(const void *record, char *text, std::size_t size);
using Before = void (*)(void *record);
using After = int (*)(void *record, std::uint32_t seen);
using Ahead = void (*)(void *record, const Item &item);
using Then = int (*)(void *record, const Item &item);
using Test = bool (*)(const void *record);
using ParseBody = int (*)(const Table &message, net_param_t *param, Node body);

// What a row or a table refers to outside its block.
union Ref {
    const Table *table;
    const WordTable *words;
    ReadWire read_wire;
    WriteWire write_wire;
    ReadText read_text;
    WriteText write_text;
    Before before;
    After after;
    Ahead ahead;
    Then then;
    Test test;
    ParseBody parse;

    constexpr Ref() : table(nullptr) {}
    constexpr Ref(const Table *to) : table(to) {}
    constexpr Ref(const WordTable *to) : words(to) {}
    constexpr Ref(ReadWire to) : read_wire(to) {}
    constexpr Ref(WriteWire to) : write_wire(to) {}
    constexpr Ref(ReadText to) : read_text(to) {}
    constexpr Ref(WriteText to) : write_text(to) {}
    constexpr Ref(Before to) : before(to) {}
    constexpr Ref(After to) : after(to) {}
    constexpr Ref(Ahead to) : ahead(to) {}
    constexpr Ref(Then to) : then(to) {}
    constexpr Ref(Test to) : test(to) {}
    constexpr Ref(ParseBody to) : parse(to) {}
};

constexpr unsigned longest_int_list = 127; // characters

// Whole names are told apart by so many characters.
constexpr std::size_t compared_characters = 31;

// Only the first keys of a table can be required: so many bits keep what has been seen.
constexpr unsigned required_keys = 32;

// The widths of a row's columns.
constexpr unsigned offset_bits = 18;
constexpr unsigned flag_bits = 14;
constexpr unsigned kind_bits = 5;
constexpr unsigned key_bits = 13;
constexpr unsigned index_bits = 7;

constexpr unsigned no_limits = (1u << index_bits) - 1;
constexpr unsigned no_ref = (1u << index_bits) - 1;

struct Row {
    std::uint32_t offset : offset_bits; // of the member in its record
    std::uint32_t flags : flag_bits;
    Kind kind : kind_bits;
    std::uint32_t ref : index_bits;    // first of its references, or no_ref; the row that a count, mark or
                                       // condition is attached to
    std::uint32_t limits : index_bits; // which limits, or no_limits; a condition's When
    std::uint32_t key : key_bits;      // a text; behind it stands the row's own log line, if it has one
};
static_assert(sizeof(Row) == 8, "rows are packed");

// How the names of a record's children are compared with the keys.
enum class Names : std::uint8_t {
    beginnings, // the name is a beginning of the key, case aside
    whole,      // ... is the key
    longer,     // ... begins with the key
    any,        // every element answers to the first key, and nothing else answers to any
    in_order,   // the first child must answer to the first key, the second one to the second; the rest is ignored
    looked_up,  // each key takes the first child of exactly its name, case included; the rest is ignored
};

enum TableFlag : std::uint16_t {
    table_write_any = 0x1,    // the writer does not compare the envelope's size with the record's
    table_read_any = 0x2,     // ... nor does the parser
    table_sets_inited = 0x4,  // the envelope's `inited` becomes 2 after a whole message
    table_clears = 0x8,       // the record is zeroed before the walk
    table_walked = 0x10,      // a message whose body is read into a record of the walk's own: see Traits::walk()
    table_others_fail = 0x20, // a child that answers to no key is refused
    table_first_only = 0x40,  // only the first child is looked at
    table_own_tests = 0x80,   // some row has row_own_test
    table_finish = 0x100,     // some row has row_required or list_exact, or is read behind the walk
    table_capital = 0x200,    // the root's attribute is spelled "Version"
    table_before = 0x400,     // the first reference is the hook before the walk
    table_after = 0x800,      // the next one is the hook after the walk
    table_ordered = 0x1000,   // is written in another order than that of the rows
    table_source = 0x2000,    // there is a Source
    table_unknown = 0x4000,   // behind the parser's name stands the line for a child that answers to no key
    table_presets = 0x8000,   // some row is a preset
};

// Rarer ones.
enum TableTrait : std::uint8_t {
    trait_late = 0x1,       // some row is read behind the walk
    trait_missing = 0x2,    // behind the parser's name (and the line for others) stands one for what is missing
    trait_empty_done = 0x4, // a body without children is over at once; only with table_sets_inited
    trait_write_line = 0x8, // a writer that fails behind its check logs as the check does
};

// How a message's body reaches the payload: see Traits::walk(), tried() and envelope().
enum class ParsedAs : std::uint8_t { record, walk, tried, envelope };

#ifdef NETPUBLIC_DESCRIBED
// What the tools want to know of a member beyond its row.
enum class Shape : std::uint8_t {
    none,
    i32,
    u32,
    i64,
    u64,
    f32,
    u8,
    characters,
    counted,
    section,
    schedule, // net_schedule_t
    points,   // net_smart_ai_points_t
    hours,    // int[7]: the days' hours; bit h is hour h
    record,
};

struct Detail {
    const char *type;     // its C type, or its elements'
    std::uint16_t member; // its C name, in the table's texts
    Shape shape;
    std::uint32_t dimensions[2]; // of an array; 1 each otherwise
    std::uint32_t element_size;
    // Rows that name the members of the record, where the row's own table describes a record of a walk; and
    // where the payload's record begins in theirs.
    const Table *shown;
    std::uint32_t shown_offset;
    // The spellings of the code or, where it is unsigned, of the bits that a function makes of the text.
    const WordTable *words;
    // What a function accepts, in words; and a text that it accepts. A "#" in it is the item's place in its list.
    const char *accepts;
    const char *sample;
};
#endif

// What messages and the records that log have besides.
struct Source {
    Place place;
    std::uint16_t parser; // these three are texts
    std::uint16_t writer;
    std::uint16_t root;
    Line entry : 4;       // logged when a parser's arguments are no good
    Line write_entry : 4; // logged when a writer's arguments are no good
    Line failure : 4;     // logged when a child is refused
};
static_assert(sizeof(Source) == 12, "a source is packed");

struct Table {
    std::uint32_t record_size : offset_bits;
    std::uint32_t keys : 7; // rows that children can answer to
    Names names : 3;
    std::uint32_t traits : 4;
    std::uint16_t flags;
    std::uint8_t rows;    // all of them
    std::uint8_t written; // how many are written
    std::uint16_t refs;   // where these two start, in bytes from the table's start
    std::uint16_t texts;
#ifdef NETPUBLIC_DESCRIBED
    std::uint32_t details;
    const char *record;  // the C name of its type
    const char *title;   // a few words
    const char *summary; // one sentence
    const Table *layout; // the payload's rows, where this table describes a record of a walk
    ParsedAs parsed;
#endif

    // The block goes on behind this head; the empty instruction keeps the compiler from knowing better.
    const char *bytes(std::size_t offset) const
    {
        const char *start = reinterpret_cast<const char *>(this);
        asm("" : "+r"(start));
        return start + offset;
    }
    const Row &row(unsigned index) const
    {
        return reinterpret_cast<const Row *>(bytes(sizeof(Table)))[index];
    }
    unsigned index_of(const Row &row) const
    {
        return static_cast<unsigned>(&row - &this->row(0));
    }
    const Ref &ref(unsigned index) const
    {
        return reinterpret_cast<const Ref *>(bytes(refs))[index];
    }
    const Limits &limit(unsigned index) const
    {
        return index < common_limit_count ? common_limits[index]
                                          : reinterpret_cast<const Limits *>(&row(rows))[index - common_limit_count];
    }
    // Does a record of this table forget what it held when it is read?
    bool begins_anew() const
    {
        return (flags & (table_clears | table_presets)) != 0;
    }
    // How many items a list holds.
    int capacity(const Row &of) const
    {
        return limit(of.limits).low;
    }
    // Characters of the longest text of a grid or of a list of numbers.
    std::size_t longest(const Row &of) const
    {
        return of.ref != no_ref ? static_cast<std::size_t>(limit(of.ref).low) : longest_int_list;
    }
    // What of this kind is attached to the row; null when nothing is.
    const Row *attachment(const Row &of, Kind kind) const
    {
        return find_attachment(of, kind, any_column);
    }
    const Row *hook(const Row &of, Moment moment) const
    {
        return find_attachment(of, Kind::hook, static_cast<unsigned>(moment));
    }
    static constexpr unsigned any_column = 1u << index_bits;
    // Those of the last kinds are soon known not to be there, and often the last row itself.
    const Row *last_attachment(const Row &of, Kind kind) const
    {
        const Row &last = row(rows - 1u);
        if (for_size || last.kind > kind)
            return attachment(of, kind);
        if (last.kind < kind)
            return nullptr;
        return last.ref == index_of(of) ? &last : attachment(of, kind);
    }
    const Row *find_attachment(const Row &of, Kind kind, unsigned limits_column) const;
    // The row at a place of the written order; that of a record which is only read is the order of its keys.
    unsigned ordered(unsigned place) const
    {
        return (flags & table_ordered) != 0 ? static_cast<unsigned char>(*bytes(texts - written + place)) : place;
    }
    unsigned places() const
    {
        return (flags & table_ordered) != 0 ? written : keys;
    }

    const char *text(unsigned offset) const
    {
        return offset < common_texts.size ? common_texts.pool + offset : bytes(texts) + (offset - common_texts.size);
    }
    const char *key(const Row &of) const
    {
        return text(of.key);
    }
    // The row's own log line; only with row_complains.
    const char *complaint(const Row &of) const;
    // A further line of the row's own; null without one.
    const char *second_line(const Row &of) const;
    // The line for a child that answers to no key; only with table_unknown.
    const char *unknown() const;
    // The line for a required child that is missing; only with trait_missing.
    const char *missing() const;

    const Source &source() const;
    const char *parser() const;
    const char *writer() const;
    const char *root() const;
    // Log the lines that the Source names; the parser may be called otherwise.
    void log_failure() const;
    void log_entry(const char *function = nullptr) const;
    void log_write_entry() const;
    // The first reference behind those of the hooks around the walk.
    const Ref &parse_function() const
    {
        return ref(((flags & table_before) != 0 ? 1u : 0u) + ((flags & table_after) != 0 ? 1u : 0u));
    }
    Place place() const
    {
        return source().place;
    }
#ifdef NETPUBLIC_DESCRIBED
    const Detail &detail(unsigned index) const
    {
        return reinterpret_cast<const Detail *>(bytes(details))[index];
    }
#endif
};
static_assert(sizeof(Table) % alignof(Row) == 0 && alignof(Row) == alignof(Limits), "the rows follow the table");
// From a Source to the references behind it.
constexpr std::size_t source_room = (sizeof(Source) + alignof(Ref) - 1) / alignof(Ref) * alignof(Ref);

} // namespace netpublic

#endif
