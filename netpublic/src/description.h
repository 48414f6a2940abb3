// How a message is described: one row a field, in the order in which the keys are tried, and next to
// it the order in which the children are written. Everything here runs at compile time and leaves the
// packed tables of table.h; a row whose kind does not fit its member does not compile.
//
//     struct Sensitivity : Description {
//         using T = net_sensitivity_t;
//         static constexpr Field fields[] = {
//             integer("sensitivity", AT(sensitivity)).in(1, 50),
//             flag("enable", AT(enable)),
//         };
//         static constexpr auto written = order("enable", "sensitivity");
//     };
//     constexpr auto sensitivity = describe<Sensitivity>();
#ifndef NETPUBLIC_DESCRIPTION_H
#define NETPUBLIC_DESCRIPTION_H

#include "table.h"

#include <net_types.h>

#include <array>
#include <climits>
#include <type_traits>
#include <utility>

namespace netpublic {

// Never defined: a description that calls it does not compile.
void wrong_description(const char *why);

// A member of a record: its type, its place and its name.
template <class Record, class Type> struct Member {
    std::uint32_t offset;
    const char *name;
};

// The member `field` of the record T that is being described; nested members are fine.
#define AT(field)                                                                                                      \
    ::netpublic::Member<T, std::remove_reference_t<decltype(std::declval<T &>().field)>>                               \
    {                                                                                                                  \
        offsetof(T, field), #field                                                                                     \
    }

#ifdef NETPUBLIC_DESCRIBED
template <class Type> constexpr Shape shape_of()
{
    using Element = std::remove_all_extents_t<Type>;
    if constexpr (std::is_same_v<Element, char>)
        return Shape::characters;
    else if constexpr (std::is_same_v<Element, unsigned char>)
        return Shape::u8;
    else if constexpr (std::is_same_v<Element, float>)
        return Shape::f32;
    else if constexpr (std::is_same_v<Element, net_counted_text_t>)
        return Shape::counted;
    else if constexpr (std::is_same_v<Element, time_section_t>)
        return Shape::section;
    else if constexpr (std::is_same_v<Element, net_schedule_t>)
        return Shape::schedule;
    else if constexpr (std::is_same_v<Element, net_smart_ai_points_t>)
        return Shape::points;
    else if constexpr (std::is_class_v<Element>)
        return Shape::record;
    else if constexpr (std::is_pointer_v<Element>)
        return Shape::none;
    else if constexpr (sizeof(Element) == 8)
        return std::is_signed<Element>::value ? Shape::i64 : Shape::u64;
    else if constexpr (std::is_unsigned_v<Element>)
        return Shape::u32;
    else
        return Shape::i32;
}
#endif

enum class Direction : std::uint8_t { both, read, write };

// One row as its author writes it. The setters return a changed copy, so they can be chained.
struct Field {
    struct Attachment {
        bool given = false;
        std::uint32_t offset = 0;
        std::int32_t value = 0;
    };

    const char *key = nullptr;
    Kind kind = Kind::custom;
    Direction direction = Direction::both;
    std::uint32_t offset = 0;
    std::uint32_t size = 0;
    std::uint32_t record_size = 0; // of a part's record, to compare with the record that it is a part of
    Ref refs[2];
    std::uint8_t ref_count = 0;
    bool limited = false;
    Limits limits = {0, 0};
    std::uint16_t flags = 0;
    Attachment count, mark, condition;
    const char *complaint = nullptr;
#ifdef NETPUBLIC_DESCRIBED
    const char *member_name = "";
    Shape shape = Shape::none;
    std::uint32_t dimensions[2] = {1, 1};
    std::uint32_t element_size = 0;
    const Table *shown_table = nullptr;
    std::uint32_t shown_offset = 0;
    const WordTable *spelling = nullptr;
#endif

    // The field itself, if it is of such a kind; what is said of another kind does not compile.
    constexpr Field of(Kind one, Kind other) const
    {
        if (kind != one && kind != other)
            wrong_description("rows of this kind know no such thing");
        return *this;
    }
    constexpr Field of(Kind one) const
    {
        return of(one, one);
    }
    constexpr Field with(std::uint16_t flag) const
    {
        Field changed = *this;
        changed.flags = static_cast<std::uint16_t>(changed.flags | flag);
        return changed;
    }
    constexpr Field limited_to(std::int32_t low, std::int32_t high) const
    {
        Field changed = *this;
        changed.limited = true;
        changed.limits = {low, high};
        return changed;
    }

    // Any row.
    constexpr Field read_only() const
    {
        Field changed = *this;
        changed.direction = Direction::read;
        return changed;
    }
    constexpr Field write_only() const
    {
        Field changed = *this;
        changed.direction = Direction::write;
        return changed;
    }
    // The walk fails when no child has answered to the key.
    constexpr Field required() const
    {
        return with(row_required);
    }
    // Tried even when an earlier key has taken the child; the keys from here on are a chain of their own.
    constexpr Field own_test() const
    {
        return with(row_own_test);
    }
    // Its failure is not logged.
    constexpr Field quiet() const
    {
        return with(row_quiet);
    }
    // Takes the child, whatever it holds, and leaves the member alone.
    constexpr Field skipped() const
    {
        return with(row_skipped);
    }
    // An error line when the row is refused. It is given the number or the text as stored; for a list,
    // the function and the source line; for an unknown spelling, the text. A word that is only written
    // is given the code that has no spelling.
    constexpr Field complain(const char *line) const
    {
        if (kind != Kind::integer && kind != Kind::flag && kind != Kind::text && kind != Kind::view &&
            kind != Kind::word && kind != Kind::list && kind != Kind::int_items)
            wrong_description("rows of this kind have no line of their own");
        Field changed = with(row_complains);
        changed.complaint = line;
        return changed;
    }
    // The same, but without prefix and gate.
    constexpr Field complain_plainly(const char *line) const
    {
        return complain(line).with(row_plain);
    }
    // Stores a number in another member once the row has been read.
    template <class Record> constexpr Field marks(Member<Record, int> member, int value = 1) const
    {
        Field changed = *this;
        changed.mark = {true, member.offset, value};
        return changed;
    }
    // Written only when that member meets the condition.
    template <class Record, class Type>
    constexpr Field when(Member<Record, Type> member, When test = When::nonzero) const
    {
        static_assert(sizeof(Type) == sizeof(int) && !std::is_floating_point_v<Type>, "a condition looks at an int");
        Field changed = *this;
        changed.condition = {true, member.offset, static_cast<std::int32_t>(test)};
        return changed;
    }

    // For the tools: the rows that name the members of a custom row's record. Where they describe a
    // record that holds it, `offset` is its place there.
#ifdef NETPUBLIC_DESCRIBED
    template <class Described> constexpr Field shown(const Described &record, std::size_t offset_there = 0) const
    {
        Field changed = *this;
        changed.shown_table = &record.head;
        changed.shown_offset = static_cast<std::uint32_t>(offset_there);
        return changed;
    }
    // The spellings of a custom member's code or, where it is unsigned, of its bits.
    constexpr Field spelled(const WordTable &words) const
    {
        Field changed = *this;
        changed.spelling = &words;
        return changed;
    }
    // Each number of a custom member holds a day's hours: bit h is hour h.
    constexpr Field hours() const
    {
        Field changed = *this;
        changed.shape = Shape::hours;
        return changed;
    }
#else
    template <class Described> constexpr Field shown(const Described &, std::size_t = 0) const
    {
        return *this;
    }
    constexpr Field spelled(const WordTable &) const
    {
        return *this;
    }
    constexpr Field hours() const
    {
        return *this;
    }
#endif

    // Numbers: the accepted range, both ends included. A number out of range is stored, then refused.
    constexpr Field in(std::int32_t low, std::int32_t high) const
    {
        if (kind != Kind::integer)
            wrong_description("only an int has a range");
        return limited_to(low, high).with(row_checked);
    }
    constexpr Field at_least(std::int32_t low) const
    {
        return in(low, INT_MAX);
    }
    constexpr Field at_most(std::int32_t high) const
    {
        return in(INT_MIN, high);
    }

    // Texts: the longest accepted, in characters.
    constexpr Field upto(std::int32_t characters) const
    {
        if (kind != Kind::text && kind != Kind::view && kind != Kind::word && kind != Kind::mask &&
            kind != Kind::events)
            wrong_description("only a text has a length");
        if (kind == Kind::text && characters >= static_cast<std::int32_t>(size))
            wrong_description("the text does not fit its member");
        return limited_to(characters, limits.high);
    }

    // Words: how they are compared (as a whole and without case by default) and what an unknown
    // spelling does (refused by default).
    constexpr Field prefix() const
    {
        return of(Kind::word).with(word_prefix);
    }
    constexpr Field exact() const
    {
        return of(Kind::word).with(word_exact);
    }
    constexpr Field kept() const
    {
        return of(Kind::word).with(word_keep);
    }
    constexpr Field otherwise(int code) const
    {
        return of(Kind::word).limited_to(limits.low, code).with(word_otherwise);
    }
    constexpr Field reported() const
    {
        return of(Kind::word).with(word_reported);
    }
    // Codes without a spelling are written as this code's.
    constexpr Field fallback(unsigned int code) const
    {
        Field changed = of(Kind::word).with(word_fallback);
        changed.size = code;
        return changed;
    }

    // Masks: what the word "none" in the text does (nothing by default), whether the spellings found are
    // added to what the member holds, whether only the last of the table's counts, and the mask to start from.
    constexpr Field none_clears() const
    {
        return of(Kind::mask).with(mask_none_clears);
    }
    constexpr Field none_conflicts() const
    {
        return of(Kind::mask).with(mask_none_conflicts);
    }
    constexpr Field accumulates() const
    {
        return of(Kind::mask).with(mask_accumulates);
    }
    constexpr Field last_wins() const
    {
        return of(Kind::mask).with(mask_last);
    }
    constexpr Field starting(std::int32_t mask) const
    {
        return of(Kind::mask).limited_to(limits.low, mask);
    }

    // Lists: where the number of items is kept, and what happens to items beyond the capacity (skipped by
    // default). A count that a member keeps goes on from what the member holds: a preset() resets it. Without
    // a member the walk itself counts, for one list of the record, and all items are written.
    template <class Record> constexpr Field counted_by(Member<Record, int> member) const
    {
        Field changed = of(Kind::list, Kind::int_items);
        changed.count = {true, member.offset, 0};
        return changed;
    }
    constexpr Field refuse_more() const
    {
        return of(Kind::list, Kind::int_items).with(list_refuse);
    }
    constexpr Field overwrite_last() const
    {
        return of(Kind::list, Kind::int_items).with(list_last);
    }
    constexpr Field stop_when_full() const
    {
        return of(Kind::list, Kind::int_items).with(list_stop);
    }
};

template <class Record, class Type> constexpr Field field_of(Kind kind, const char *key, Member<Record, Type> member)
{
    Field field;
    field.key = key;
    field.kind = kind;
    field.offset = member.offset;
    field.size = sizeof(Type);
#ifdef NETPUBLIC_DESCRIBED
    field.member_name = member.name;
    field.shape = shape_of<Type>();
    if constexpr (std::rank_v<Type> >= 1)
        field.dimensions[0] = std::extent_v<Type, 0>;
    if constexpr (std::rank_v<Type> >= 2)
        field.dimensions[1] = std::extent_v<Type, 1>;
    field.element_size = sizeof(std::remove_all_extents_t<Type>);
#endif
    return field;
}

template <class Type> constexpr bool is_int = std::is_same_v<Type, int> || (std::is_enum_v<Type> && sizeof(Type) == 4);

template <class Record, class Type> constexpr Field integer(const char *key, Member<Record, Type> member)
{
    static_assert(is_int<Type>, "an int or an enumeration");
    return field_of(Kind::integer, key, member);
}
template <class Record> constexpr Field flag(const char *key, Member<Record, int> member)
{
    return field_of(Kind::flag, key, member);
}
template <class Record> constexpr Field unsigned_integer(const char *key, Member<Record, unsigned int> member)
{
    return field_of(Kind::unsigned_integer, key, member);
}
template <class Record> constexpr Field int64(const char *key, Member<Record, long long> member)
{
    return field_of(Kind::int64, key, member);
}
template <class Record> constexpr Field unsigned_longlong(const char *key, Member<Record, unsigned long long> member)
{
    return field_of(Kind::unsigned_longlong, key, member);
}
template <class Record> constexpr Field real(const char *key, Member<Record, float> member)
{
    return field_of(Kind::real, key, member);
}
// A terminated text that fills its member, unless upto() says less.
template <class Record, std::size_t Size> constexpr Field text(const char *key, Member<Record, char[Size]> member)
{
    static_assert(Size <= UINT16_MAX, "a text");
    return field_of(Kind::text, key, member).limited_to(static_cast<std::int32_t>(Size) - 1, 0);
}
// A text with its capacity and length in front; both are stored whenever it is read.
template <class Record> constexpr Field counted_text(const char *key, Member<Record, net_counted_text_t> member)
{
    return field_of(Kind::counted_text, key, member).limited_to(255, 0);
}
// The text of the child, left in the tree. Only for records that live no longer than the walk.
template <class Record> constexpr Field view(const char *key, Member<Record, const char *> member)
{
    return field_of(Kind::view, key, member).read_only();
}
// The code of the spelling that the text is.
template <class Record, class Type>
constexpr Field word(const char *key, Member<Record, Type> member, const WordTable &words)
{
    static_assert(is_int<Type>, "an int or an enumeration");
    Field field = field_of(Kind::word, key, member).limited_to(31, 0);
    field.refs[0] = Ref(&words);
    field.ref_count = 1;
    return field;
}
// The codes of all spellings that the text contains, OR-ed together; written joined by commas.
template <class Record, class Type>
constexpr Field mask(const char *key, Member<Record, Type> member, const WordTable &words)
{
    static_assert(sizeof(Type) == sizeof(int) && std::is_integral_v<Type>, "a 32-bit mask");
    if (words.count > most_searched_words)
        wrong_description("a text is searched for so many words");
    Field field = field_of(Kind::mask, key, member).limited_to(127, 0);
    field.refs[0] = Ref(&words);
    field.ref_count = 1;
    return field;
}
// Adds the alarm types that the text contains to a set, unless it contains "none".
template <class Record>
constexpr Field events(const char *key, Member<Record, time_section_t> member, const WordTable &words)
{
    if (words.count > most_searched_words)
        wrong_description("a text is searched for so many words");
    Field field = field_of(Kind::events, key, member).limited_to(127, 0).read_only();
    field.refs[0] = Ref(&words);
    field.ref_count = 1;
    return field;
}
// Numbers joined by commas; what the text does not name becomes `fill`.
template <class Record, std::size_t Count>
constexpr Field int_list(const char *key, Member<Record, int[Count]> member, std::int32_t longest, int fill)
{
    Field field = field_of(Kind::int_list, key, member).limited_to(longest, fill);
    field.size = Count;
    return field;
}
// An element whose children are a record of their own.
template <class Record, class Type, class Described>
constexpr Field group(const char *key, Member<Record, Type> member, const Described &record)
{
    static_assert(std::is_same_v<Type, typename Described::T>, "the group describes another record");
    Field field = field_of(Kind::group, key, member);
    field.refs[0] = Ref(&record.head);
    field.ref_count = 1;
    return field;
}
// An element whose children are further members of the record that is being described.
template <class Described> constexpr Field part(const char *key, const Described &record)
{
    Field field;
    field.key = key;
    field.kind = Kind::group;
    field.record_size = sizeof(typename Described::T);
    field.refs[0] = Ref(&record.head);
    field.ref_count = 1;
    return field;
}
// Elements of one name, one record each.
template <class Record, class Type, std::size_t Capacity, class Described>
constexpr Field list(const char *key, Member<Record, Type[Capacity]> member, const Described &record)
{
    static_assert(std::is_same_v<Type, typename Described::T>, "the list describes other records");
    Field field = field_of(Kind::list, key, member);
    field.size = Capacity;
    field.refs[0] = Ref(&record.head);
    field.ref_count = 1;
    return field;
}
// Elements of one name, one int each.
template <class Record, std::size_t Capacity>
constexpr Field int_items(const char *key, Member<Record, int[Capacity]> member)
{
    Field field = field_of(Kind::int_items, key, member);
    field.size = Capacity;
    return field;
}
// A child that is always written with this number.
constexpr Field constant(const char *key, int value)
{
    Field field;
    field.key = key;
    field.kind = Kind::constant;
    return field.limited_to(value, 0).write_only();
}
// A number that is stored before the walk.
template <class Record, class Type> constexpr Field preset(Member<Record, Type> member, int value)
{
    static_assert(is_int<Type> || std::is_same_v<Type, unsigned int>, "a preset is an int");
    return field_of(Kind::preset, nullptr, member).limited_to(value, 0);
}

// Typed functions behind the engine's untyped ones.
template <class Record, auto function> int read_thunk(void *record, TiXmlNode *node)
{
    return function(*static_cast<Record *>(record), node);
}
template <class Record, auto function> int write_thunk(const void *record, TiXmlElement *parent)
{
    return function(*static_cast<const Record *>(record), parent);
}
template <class Record, auto function> void before_thunk(void *record)
{
    function(*static_cast<Record *>(record));
}
template <class Record, auto function> int after_thunk(void *record)
{
    return function(*static_cast<Record *>(record));
}

// What the other kinds cannot say: int read(T &record, TiXmlNode *child), int write(const T &record,
// TiXmlElement *parent); either may be nullptr.
template <auto read, auto write = nullptr, class Record, class Type>
constexpr Field custom(const char *key, Member<Record, Type> member)
{
    Field field = field_of(Kind::custom, key, member);
    field.size = 0;
    field.ref_count = 2;
    if constexpr (!std::is_null_pointer_v<decltype(read)>)
        field.refs[0] = Ref(read_thunk<Record, read>);
    else
        field.direction = Direction::write;
    if constexpr (!std::is_null_pointer_v<decltype(write)>)
        field.refs[1] = Ref(write_thunk<Record, write>);
    else
        field.direction = Direction::read;
    return field;
}

// A member of any type, for `also_shown`.
template <class Record, class Type> constexpr Field shown(const char *key, Member<Record, Type> member)
{
    return field_of(Kind::custom, key, member);
}

// What belongs to the message as a whole. HERE names the source for the log lines.
struct Traits {
    const char *file = "";
    int line = 0;
    const char *root_name = "";
    const char *parser_name = "";
    const char *writer_name = "";
    const char *unknown_line = "";
    Line entry_line = Line::parser;
    Line write_entry_line = Line::writer;
    Line failure_line = Line::none;
    std::uint16_t flags = 0;
    Before before_hook = nullptr;
    After after_hook = nullptr;
    // Under the undefined-behaviour sanitizer gcc takes no function's address for a constant non-null.
    bool has_before = false;
    bool has_after = false;

    constexpr Traits with(std::uint16_t flag) const
    {
        Traits changed = *this;
        changed.flags = static_cast<std::uint16_t>(changed.flags | flag);
        return changed;
    }
    // The names of the exported functions, as the log lines show them.
    constexpr Traits parser(const char *name) const
    {
        Traits changed = *this;
        changed.parser_name = name;
        return changed;
    }
    constexpr Traits writer(const char *name, const char *root) const
    {
        Traits changed = *this;
        changed.writer_name = name;
        changed.root_name = root;
        return changed;
    }
    // The lines for bad arguments and for refused children.
    constexpr Traits entry(Line line_kind) const
    {
        Traits changed = *this;
        changed.entry_line = line_kind;
        return changed;
    }
    constexpr Traits write_entry(Line line_kind) const
    {
        Traits changed = *this;
        changed.write_entry_line = line_kind;
        return changed;
    }
    constexpr Traits failure(Line line_kind) const
    {
        Traits changed = *this;
        changed.failure_line = line_kind;
        return changed;
    }
    // An error line for children that answer to no key; it is given the child's name.
    constexpr Traits unknown(const char *text) const
    {
        Traits changed = *this;
        changed.unknown_line = text;
        return changed;
    }
    // The envelope's size is not compared with the record's; the second: by the parser only.
    constexpr Traits any_size() const
    {
        return with(table_unchecked);
    }
    constexpr Traits any_size_read() const
    {
        return with(table_read_any);
    }
    constexpr Traits any_size_written() const
    {
        return with(table_write_any);
    }
    constexpr Traits sets_inited() const
    {
        return with(table_sets_inited);
    }
    constexpr Traits clears() const
    {
        return with(table_clears);
    }
    constexpr Traits exact_names() const
    {
        return with(table_exact);
    }
    constexpr Traits others_fail() const
    {
        return with(table_others_fail);
    }
    constexpr Traits first_child_only() const
    {
        return with(table_first_only);
    }
    constexpr Traits capital_version() const
    {
        return with(table_capital);
    }
    // void before(T &record) runs in front of the walk, int after(T &record) behind it.
    template <class Record, auto function> constexpr Traits before() const
    {
        Traits changed = *this;
        changed.before_hook = before_thunk<Record, function>;
        changed.has_before = true;
        return changed;
    }
    template <class Record, auto function> constexpr Traits after() const
    {
        Traits changed = *this;
        changed.after_hook = after_thunk<Record, function>;
        changed.has_after = true;
        return changed;
    }
};

#define HERE                                                                                                           \
    ::netpublic::Traits                                                                                                \
    {                                                                                                                  \
        NET_FILE, __LINE__                                                                                             \
    }

// The order in which the children are written, by key.
template <class... Keys> constexpr std::array<const char *, sizeof...(Keys)> order(Keys... keys)
{
    return {keys...};
}

// What a description may leave out: it is then written in the order of its fields.
struct Description {
    static constexpr std::array<const char *, 0> written{};
    static constexpr Traits traits{};
    // Members that no row of `fields` speaks of, for the tools to show: static constexpr Field also_shown[].
    static constexpr std::array<Field, 0> also_shown{};
};

// A packed table and the record that it describes.
template <class Record, std::size_t Rows, std::size_t Refs, std::size_t LimitPairs, std::size_t Order,
          std::size_t Characters>
struct Described {
    using T = Record;

    Table head;
    Row rows[Rows];
    Ref refs[Refs];
    Limits limits[LimitPairs];
#ifdef NETPUBLIC_DESCRIBED
    Detail details[Rows];
#endif
    std::uint8_t order[Order];
    char texts[Characters];

    constexpr operator const Table &() const
    {
        return head;
    }
};

// How much room a description takes. Nothing is of size 0, since arrays are not.
struct Census {
    std::size_t keys = 0, written_keys = 0, presets = 0, attachments = 0, shown = 0;
    std::size_t refs = 0, limits = 0, order = 0, characters = 0;

    constexpr std::size_t rows() const
    {
        return keys + written_keys + presets + attachments + shown;
    }
};

constexpr std::size_t at_least_one(std::size_t count)
{
    return count == 0 ? 1 : count;
}

// Can a child answer to it?
constexpr bool is_key(const Field &field)
{
    return field.kind != Kind::preset && field.direction != Direction::write;
}

// The row of a field: the keys that children can answer to, then the written ones, then the presets.
template <class D> constexpr std::size_t row_of(std::size_t wanted)
{
    const auto group_of = [](const Field &field) {
        return field.kind == Kind::preset ? 2 : field.direction == Direction::write ? 1 : 0;
    };
    std::size_t row = 0;
    for (std::size_t i = 0; i < std::size(D::fields); ++i) {
        const int mine = group_of(D::fields[wanted]), its = group_of(D::fields[i]);
        if (its < mine || (its == mine && i < wanted))
            ++row;
    }
    return row;
}

template <class D> constexpr bool limits_seen_before(std::size_t index)
{
    const Limits &mine = D::fields[index].limits;
    for (std::size_t i = 0; i < index; ++i)
        if (D::fields[i].limited && D::fields[i].limits.low == mine.low && D::fields[i].limits.high == mine.high)
            return true;
    return false;
}

template <class D> constexpr Census census_of()
{
    Census census;
    const Traits &traits = D::traits;
    census.characters = 1; // the empty text
    for (const char *text :
         {traits.root_name, traits.parser_name, traits.writer_name, traits.unknown_line, traits.file})
        census.characters += length_of(text) + 1;
    census.refs = std::size_t{traits.has_before} + std::size_t{traits.has_after};
    for (std::size_t i = 0; i < std::size(D::fields); ++i) {
        const Field &field = D::fields[i];
        if (field.kind == Kind::preset)
            ++census.presets;
        else if (field.direction == Direction::write)
            ++census.written_keys;
        else
            ++census.keys;
        census.attachments += std::size_t{field.count.given} + field.mark.given + field.condition.given;
        census.refs += field.ref_count;
        census.limits += (field.limited && !limits_seen_before<D>(i)) + std::size_t{field.mark.given};
        if (field.kind != Kind::preset && field.direction != Direction::read)
            ++census.order;
        if (field.key != nullptr)
            census.characters += length_of(field.key) + 1;
        if (field.complaint != nullptr)
            census.characters += length_of(field.complaint) + 1;
#ifdef NETPUBLIC_DESCRIBED
        census.characters += length_of(field.member_name) + 1;
#endif
    }
#ifdef NETPUBLIC_DESCRIBED
    for (const Field &field : D::also_shown) {
        census.refs += field.ref_count;
        census.characters += length_of(field.key) + length_of(field.member_name) + 2;
    }
    census.shown = std::size(D::also_shown);
#endif
    if (std::size(D::written) != 0)
        census.order = std::size(D::written);
    return census;
}

constexpr bool same_text(const char *a, const char *b)
{
    for (; *a != '\0' && *a == *b; ++a, ++b) {
    }
    return *a == *b;
}

constexpr char folded(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

constexpr bool begins(const char *text, const char *beginning)
{
    for (; *beginning != '\0'; ++text, ++beginning)
        if (folded(*text) != folded(*beginning))
            return false;
    return true;
}

// Checks that a number fits the packed column.
template <class Narrow, class Wide> constexpr Narrow packed(Wide value)
{
    const auto narrow = static_cast<Narrow>(value);
    if (static_cast<Wide>(narrow) != value)
        wrong_description("a number does not fit its column");
    return narrow;
}

template <class D> constexpr auto describe()
{
    constexpr Census census = census_of<D>();
    constexpr std::size_t field_count = std::size(D::fields);
    constexpr const Traits &traits = D::traits;
    Described<typename D::T, census.rows(), at_least_one(census.refs), at_least_one(census.limits),
              at_least_one(census.order), census.characters>
        out{};
    using Out = decltype(out);
    Table &head = out.head;

    std::size_t texts = 1, refs = 0, limits = 0, attachments = census.keys + census.written_keys + census.presets;
    const auto add_text = [&](const char *text) {
        if (*text == '\0')
            return std::uint16_t{0};
        const auto at = packed<std::uint16_t>(texts);
        for (; *text != '\0'; ++text)
            out.texts[texts++] = *text;
        out.texts[texts++] = '\0';
        return at;
    };
#ifdef NETPUBLIC_DESCRIBED
    const auto detail_of = [&](const Field &field) {
        return Detail{add_text(field.member_name),
                      field.shape,
                      {field.dimensions[0], field.dimensions[1]},
                      field.element_size,
                      field.shown_table,
                      field.shown_offset,
                      field.spelling};
    };
#endif
    const auto add_limits = [&](Limits pair, bool shared) {
        if (shared)
            for (std::size_t i = 0; i < limits; ++i)
                if (out.limits[i].low == pair.low && out.limits[i].high == pair.high)
                    return packed<std::uint8_t>(i);
        out.limits[limits] = pair;
        return packed<std::uint8_t>(limits++);
    };
    const auto attach = [&](std::uint8_t *&link, const Field::Attachment &attachment, Kind kind) {
        if (!attachment.given)
            return;
        Row &row = out.rows[attachments];
        row.kind = kind;
        row.offset = attachment.offset;
        row.ref = no_ref;
        row.limits = kind == Kind::mark        ? add_limits({attachment.value, 0}, false)
                     : kind == Kind::condition ? packed<std::uint8_t>(attachment.value)
                                               : no_limits;
        *link = packed<std::uint8_t>(attachments++);
        link = &row.attached;
    };

    std::uint16_t flags = traits.flags;
    for (std::size_t i = 0; i < field_count; ++i) {
        const Field &field = D::fields[i];
        const std::size_t index = row_of<D>(i);
        Row &row = out.rows[index];
        row.kind = field.kind;
        row.offset = field.offset;
        row.size = packed<std::uint16_t>(field.kind == Kind::list || field.kind == Kind::int_items ||
                                                 field.kind == Kind::int_list || field.kind == Kind::text ||
                                                 field.kind == Kind::word
                                             ? field.size
                                             : 0);
        row.flags = field.flags;
        row.ref = field.ref_count == 0 ? no_ref : packed<std::uint8_t>(refs);
        for (std::size_t r = 0; r < field.ref_count; ++r)
            out.refs[refs++] = field.refs[r];
        row.limits = field.limited ? add_limits(field.limits, true) : no_limits;
        if (field.key != nullptr) {
            row.key = packed<std::uint16_t>(texts);
            row.key_length = packed<std::uint8_t>(length_of(field.key));
            add_text(field.key);
        }
        if (field.complaint != nullptr)
            add_text(field.complaint);
        if (field.record_size != 0 && field.record_size != sizeof(typename D::T))
            wrong_description("a part describes another record");
        if ((field.flags & row_own_test) != 0)
            flags |= table_own_tests;
        if ((field.flags & row_required) != 0) {
            flags |= table_required;
            if (index >= required_keys)
                wrong_description("only the first keys can be required");
        }
        std::uint8_t *link = &row.attached;
        attach(link, field.count, Kind::count);
        attach(link, field.mark, Kind::mark);
        attach(link, field.condition, Kind::condition);
        // An earlier key that begins with this key takes this key's full name; any key that does, the name of
        // one that is only written.
        for (std::size_t other = 0; other < (is_key(field) ? i : field_count); ++other)
            if (is_key(D::fields[other]) && (field.key == nullptr || begins(D::fields[other].key, field.key)))
                row.flags = static_cast<std::uint16_t>(row.flags | row_shadowed);
#ifdef NETPUBLIC_DESCRIBED
        out.details[index] = detail_of(field);
#endif
    }

#ifdef NETPUBLIC_DESCRIBED
    // Neither read nor written: they stand behind all others.
    std::size_t at = census.rows() - census.shown;
    for (const Field &field : D::also_shown) {
        out.rows[at].kind = field.kind;
        out.rows[at].offset = field.offset;
        out.rows[at].size =
            packed<std::uint16_t>(field.kind == Kind::list || field.kind == Kind::text ? field.size : 0);
        out.rows[at].limits = no_limits;
        out.rows[at].ref = field.ref_count == 0 ? no_ref : packed<std::uint8_t>(refs);
        for (std::size_t r = 0; r < field.ref_count; ++r)
            out.refs[refs++] = field.refs[r];
        out.rows[at].key = packed<std::uint16_t>(texts);
        out.rows[at].key_length = packed<std::uint8_t>(length_of(field.key));
        add_text(field.key);
        out.details[at++] = detail_of(field);
    }
#endif

    // The written order: as given, or the fields as they stand.
    std::size_t ordered = 0;
    if constexpr (std::size(D::written) == 0) {
        for (std::size_t i = 0; i < field_count; ++i)
            if (D::fields[i].kind != Kind::preset && D::fields[i].direction != Direction::read)
                out.order[ordered++] = packed<std::uint8_t>(row_of<D>(i));
    } else {
        for (const char *key : D::written) {
            std::size_t found = field_count;
            for (std::size_t i = field_count; i-- > 0;)
                if (D::fields[i].key != nullptr && D::fields[i].direction != Direction::read &&
                    same_text(D::fields[i].key, key))
                    found = i;
            if (found == field_count)
                wrong_description("a written key is not among the fields");
            out.order[ordered++] = packed<std::uint8_t>(row_of<D>(found));
        }
    }

    // Children usually arrive in the order in which they are written. Where a name has a row of its own
    // for each direction, the one that is read counts.
    const auto expected = [&](std::size_t place) {
        const std::uint8_t row = out.order[place];
        for (std::size_t r = 0; r < census.keys && row >= census.keys; ++r)
            if (same_text(out.texts + out.rows[r].key, out.texts + out.rows[row].key))
                return packed<std::uint8_t>(r);
        return row;
    };
    for (std::size_t r = 0; r < census.keys; ++r)
        out.rows[r].next = packed<std::uint8_t>(r + 1 < census.keys ? r + 1 : 0);
    for (std::size_t i = 0; i + 1 < ordered; ++i)
        out.rows[expected(i)].next = expected(i + 1);
    for (std::size_t r = 0; r < census.keys; ++r)
        if (out.rows[r].kind == Kind::list || out.rows[r].kind == Kind::int_items)
            out.rows[r].next = packed<std::uint8_t>(r);

    head.record_size = sizeof(typename D::T);
    head.refs = packed<std::uint16_t>(offsetof(Out, refs));
    head.limits = packed<std::uint16_t>(offsetof(Out, limits));
    head.order = packed<std::uint16_t>(offsetof(Out, order));
    head.texts = packed<std::uint16_t>(offsetof(Out, texts));
#ifdef NETPUBLIC_DESCRIBED
    head.details = packed<std::uint16_t>(offsetof(Out, details));
#endif
    head.keys = packed<std::uint8_t>(census.keys);
    head.rows = packed<std::uint8_t>(census.rows());
    head.written = packed<std::uint8_t>(ordered);
    head.before = head.after = no_ref;
    if (traits.has_before) {
        head.before = packed<std::uint8_t>(refs);
        out.refs[refs++] = Ref(traits.before_hook);
    }
    if (traits.has_after) {
        head.after = packed<std::uint8_t>(refs);
        out.refs[refs++] = Ref(traits.after_hook);
    }
    head.entry = traits.entry_line;
    head.write_entry = traits.write_entry_line;
    head.failure = traits.failure_line;
    head.flags = flags;
    head.root = add_text(traits.root_name);
    head.parser = add_text(traits.parser_name);
    head.writer = add_text(traits.writer_name);
    head.unknown = add_text(traits.unknown_line);
    head.file = add_text(traits.file);
    head.line = packed<std::uint16_t>(traits.line);
    return out;
}

} // namespace netpublic

#endif
