// How a message is described: one row a field, in the order in which the keys are tried, and next to
// it the order in which the children are written. Everything here runs at compile time, and describe.h
// makes the packed tables of table.h of it; a row whose kind does not fit its member does not compile.
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

#include "engine/table.h"

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
// A type's name without its namespace, as the compiler shows it: "... [with Type = net_motion_t]".
template <class Type> constexpr auto spelled_type()
{
    std::array<char, 64> name{};
    std::size_t length = 0;
    constexpr char before[] = "Type = ";
    bool found = false;
    for (const char *at = __PRETTY_FUNCTION__; *at != '\0'; ++at) {
        std::size_t same = 0;
        while (!found && before[same] != '\0' && at[same] == before[same])
            ++same;
        if (before[same] == '\0' && !found) {
            found = true;
            at += same - 1;
        } else if (found && (*at == ']' || *at == ';')) {
            break;
        } else if (found && *at == ':') {
            length = 0;
        } else if (found && length + 1 < name.size()) {
            name[length++] = *at;
        }
    }
    while (length < name.size() && name[length] != '\0')
        name[length++] = '\0'; // what is left of a longer namespace
    return name;
}
template <class Type> inline constexpr auto type_name = spelled_type<Type>();

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
    const char *member_type = "";
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
        changed.shown_table = &record.table();
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
        if (kind == Kind::text && characters >= limits.high)
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
        if ((flags & word_fallback) != 0 && limits.high != code)
            wrong_description("an unknown word and a code without a word have different codes");
        return of(Kind::word).limited_to(limits.low, code).with(word_otherwise);
    }
    constexpr Field reported() const
    {
        return of(Kind::word).with(word_reported);
    }
    // Codes without a spelling are written as this code's.
    constexpr Field fallback(int code) const
    {
        if ((flags & word_otherwise) != 0 && limits.high != code)
            wrong_description("an unknown word and a code without a word have different codes");
        return of(Kind::word).limited_to(limits.low, code).with(word_fallback);
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
#ifdef NETPUBLIC_DESCRIBED
    field.member_name = member.name;
    field.member_type = type_name<std::remove_all_extents_t<Type>>.data();
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
    return field_of(Kind::text, key, member).limited_to(Size - 1, Size);
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
constexpr Field int_list(const char *key, Member<Record, int[Count]> member, int fill)
{
    return field_of(Kind::int_list, key, member).limited_to(Count, fill);
}
// An element whose children are a record of their own.
template <class Record, class Type, class Described>
constexpr Field group(const char *key, Member<Record, Type> member, const Described &record)
{
    static_assert(std::is_same_v<Type, typename Described::T>, "the group describes another record");
    Field field = field_of(Kind::group, key, member);
    field.refs[0] = Ref(&record.table());
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
    field.refs[0] = Ref(&record.table());
    field.ref_count = 1;
    return field;
}
// Elements of one name, one record each.
template <class Record, class Type, std::size_t Capacity, class Described>
constexpr Field list(const char *key, Member<Record, Type[Capacity]> member, const Described &record)
{
    static_assert(std::is_same_v<Type, typename Described::T>, "the list describes other records");
    Field field = field_of(Kind::list, key, member).limited_to(Capacity, 0);
    field.refs[0] = Ref(&record.table());
    field.ref_count = 1;
    return field;
}
// Elements of one name, one int each.
template <class Record, std::size_t Capacity>
constexpr Field int_items(const char *key, Member<Record, int[Capacity]> member)
{
    return field_of(Kind::int_items, key, member).limited_to(Capacity, 0);
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
        return with(table_read_any | table_write_any);
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

} // namespace netpublic

#endif
