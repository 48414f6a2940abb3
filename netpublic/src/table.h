// A message's description as the engine reads it: one block per record, without pointers except the
// references that need them, so that a thousand rows cost a shared library few load-time relocations.
// This unit and description.h, which builds the block, are the only ones that know the packed form.
#ifndef NETPUBLIC_TABLE_H
#define NETPUBLIC_TABLE_H

#include "log.h"
#include "words.h"

#include <cstddef>
#include <cstdint>

class TiXmlNode;
class TiXmlElement;

namespace netpublic {

struct Table;

// What a row does with the child that answers to its key, and with its member when it is written.
enum class Kind : std::uint8_t {
    integer,           // int
    flag,              // int, 0 or 1
    unsigned_integer,  // unsigned int
    int64,             // long long
    unsigned_longlong, // unsigned long long
    real,              // float
    text,              // char[]
    counted_text,      // net_counted_text_t
    view,              // const char *: the text stays in the tree; only in records of a walk's own
    word,              // int: the code of a spelling
    mask,              // int: the codes of all spellings that the text contains
    events,            // time_section_t: the alarm types that the text contains
    int_list,          // int[]: numbers joined by commas
    group,             // a record: an element with children of its own
    list,              // record[]: the elements of this name fill one after another
    int_items,         // int[]: the same with plain numbers
    custom,            // what the other kinds cannot say
    constant,          // written only: a fixed number
    // Rows behind the keys; no child answers to them.
    preset,    // int: a number stored before the walk
    count,     // int: how many items the list holds
    mark,      // int: a number stored once the row has been read
    condition, // int: decides whether the row is written
};

// What a row's flags mean. The words' and the lists' flags share bits, as their kinds never meet.
enum RowFlag : std::uint16_t {
    row_checked = 0x1,           // a number must lie within the limits
    row_required = 0x2,          // the walk fails without such a child
    row_own_test = 0x4,          // tried even when an earlier key has taken the child
    row_quiet = 0x8,             // its failure is not logged
    row_complains = 0x10,        // has a log line of its own
    row_shadowed = 0x20,         // a child of its full name answers to another key
    row_plain = 0x40,            // that line is neither gated nor prefixed
    row_skipped = 0x80,          // takes the child and reads nothing
    word_prefix = 0x100,         // the text may be the beginning of the spelling
    word_exact = 0x200,          // case matters
    word_keep = 0x400,           // an unknown spelling leaves the member as it was
    word_otherwise = 0x800,      // an unknown spelling stores limits.high
    word_reported = 0x1000,      // an unknown spelling is logged as the record's failures are
    word_fallback = 0x2000,      // a code without spelling is written as the spelling of code `size`
    mask_none_clears = 0x100,    // a text with "none" in it is the empty mask
    mask_none_conflicts = 0x200, // "none" together with any spelling is refused
    mask_accumulates = 0x400,    // added to what the member holds
    mask_last = 0x800,           // only the last spelling of the table that is found counts
    list_refuse = 0x100,         // an item beyond the capacity is refused
    list_last = 0x200,           // ... overwrites the last one
    list_stop = 0x400,           // the walk ends when the list is full
};

// Conditions under which a row is written, in a condition row's `limits`.
enum class When : std::uint8_t { nonzero, nonnegative, positive };

using Read = int (*)(void *record, TiXmlNode *node);
using Write = int (*)(const void *record, TiXmlElement *parent);
using Before = void (*)(void *record);
using After = int (*)(void *record);

// What a row or a table refers to outside its block.
union Ref {
    const Table *table;
    const WordTable *words;
    Read read;
    Write write;
    Before before;
    After after;

    constexpr Ref() : table(nullptr) {}
    constexpr Ref(const Table *to) : table(to) {}
    constexpr Ref(const WordTable *to) : words(to) {}
    constexpr Ref(Read to) : read(to) {}
    constexpr Ref(Write to) : write(to) {}
    constexpr Ref(Before to) : before(to) {}
    constexpr Ref(After to) : after(to) {}
};

struct Limits {
    std::int32_t low;
    std::int32_t high;
};

// Only the first keys of a table can be required: so many bits keep what has been seen.
constexpr unsigned required_keys = 32;

constexpr std::uint8_t no_limits = 0xff;
constexpr std::uint8_t no_ref = 0xff;

struct Row {
    std::uint16_t key; // in the table's texts; behind its terminator stands the row's own log line, if it has one
    std::uint8_t key_length;
    Kind kind;
    std::uint32_t offset;  // of the member in its record
    std::uint16_t size;    // bytes of a text, capacity of a list, code that a word falls back to
    std::uint8_t ref;      // first of its references, or no_ref
    std::uint8_t limits;   // which limits: a range, or (longest text, other code); a condition's When
    std::uint8_t attached; // its count, mark or condition: a row behind the keys; 0 for none
    std::uint8_t next;     // the row whose name the following child most likely bears
    std::uint16_t flags;
};
static_assert(sizeof(Row) == 16, "rows are packed");

enum TableFlag : std::uint16_t {
    table_unchecked = 0x1,    // the envelope's size is not compared with the record's
    table_sets_inited = 0x2,  // the envelope's `inited` becomes 2 after a whole message
    table_clears = 0x4,       // the record is zeroed before the walk
    table_exact = 0x8,        // names are compared as a whole
    table_others_fail = 0x10, // a child that answers to no key is refused
    table_first_only = 0x20,  // only the first child is looked at
    table_own_tests = 0x40,   // some row has row_own_test
    table_required = 0x80,    // some row has row_required
    table_capital = 0x100,    // the root's attribute is spelled "Version"
    table_write_any = 0x200,  // the same as table_unchecked, for the writer alone
    table_read_any = 0x400,   // ... for the parser alone
};

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
    std::uint16_t member; // its C name, in the table's texts
    Shape shape;
    std::uint32_t dimensions[2]; // of an array; 1 each otherwise
    std::uint32_t element_size;
    // Rows that name the members of a custom row's record, and where that record begins in theirs.
    const Table *shown;
    std::uint32_t shown_offset;
    // The spellings of a custom row's code or, where it is unsigned, of its bits.
    const WordTable *words;
};
#endif

struct Table {
    std::uint32_t record_size;
    std::uint16_t refs; // these four: where they start, in bytes from the table's start
    std::uint16_t limits;
    std::uint16_t order;
    std::uint16_t texts;
    std::uint8_t keys;    // rows that children can answer to
    std::uint8_t rows;    // all of them
    std::uint8_t written; // length of the order
    std::uint8_t before;  // reference of the hook before the walk, or no_ref
    std::uint8_t after;   // reference of the hook after the walk, or no_ref
    Line entry;           // logged when a parser's arguments are no good
    Line write_entry;     // logged when a writer's arguments are no good
    Line failure;         // logged when a child is refused
    std::uint16_t flags;
    std::uint16_t root; // these five in the table's texts; 0 is the empty text
    std::uint16_t parser;
    std::uint16_t writer;
    std::uint16_t unknown; // the line for a child that answers to no key
    std::uint16_t file;
    std::uint16_t line;
    std::uint16_t details;

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
    const Ref &ref(unsigned index) const
    {
        return reinterpret_cast<const Ref *>(bytes(refs))[index];
    }
    const Limits &limit(unsigned index) const
    {
        return reinterpret_cast<const Limits *>(bytes(limits))[index];
    }
    unsigned ordered(unsigned index) const
    {
        return static_cast<unsigned char>(bytes(order)[index]);
    }
    const char *text(unsigned offset) const
    {
        return bytes(texts) + offset;
    }
    const char *key(const Row &of) const
    {
        return text(of.key);
    }
    // The row's own log line; only with row_complains.
    const char *complaint(const Row &of) const
    {
        return text(of.key) + of.key_length + 1;
    }
    Place place() const
    {
        return {text(file), line};
    }
#ifdef NETPUBLIC_DESCRIBED
    const Detail &detail(unsigned index) const
    {
        return reinterpret_cast<const Detail *>(bytes(details))[index];
    }
#endif
};
static_assert(sizeof(Table) % alignof(Row) == 0, "the rows follow the table");

} // namespace netpublic

#endif
