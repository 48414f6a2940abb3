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

#include "engine/reading.h"
#include "engine/table.h"
#include "engine/writing.h"
#include "values/grid.h"

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

// The record as its own member, where it is a number or an array.
template <class Record> constexpr Member<Record, Record> itself(const char *name)
{
    return {0, name};
}

#ifdef NETPUBLIC_DESCRIBED
// A type's name without its namespace, as the compiler shows it: "... [with Type = net_motion_t]". Of a template's
// argument, the argument's name.
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
        } else if (found && (*at == ']' || *at == ';' || *at == '>')) {
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
    using Base = std::remove_all_extents_t<Type>;
    if constexpr (std::is_same_v<Base, char>)
        return Shape::characters;
    else if constexpr (std::is_same_v<Base, unsigned char>)
        return Shape::u8;
    else if constexpr (std::is_same_v<Base, float>)
        return Shape::f32;
    else if constexpr (std::is_same_v<Base, net_counted_text_t>)
        return Shape::counted;
    else if constexpr (std::is_same_v<Base, time_section_t>)
        return Shape::section;
    else if constexpr (std::is_same_v<Base, net_schedule_t>)
        return Shape::schedule;
    else if constexpr (std::is_same_v<Base, net_smart_ai_points_t>)
        return Shape::points;
    else if constexpr (std::is_class_v<Base>)
        return Shape::record;
    else if constexpr (std::is_pointer_v<Base>)
        return Shape::none;
    else if constexpr (sizeof(Base) == 8)
        return std::is_signed<Base>::value ? Shape::i64 : Shape::u64;
    else if constexpr (std::is_unsigned_v<Base>)
        return Shape::u32;
    else
        return Shape::i32;
}
#endif

enum class Direction : std::uint8_t { both, read, write };

// Typed functions behind the engine's untyped ones.
template <auto function> struct Signature;
template <class Result, class Record, class... Rest, Result (*function)(Record, Rest...)> struct Signature<function> {
    using First = std::remove_cv_t<std::remove_reference_t<Record>>;
};
template <class... Arguments> struct SecondOf {
    using Type = void;
};
template <class First, class Second, class... Rest> struct SecondOf<First, Second, Rest...> {
    using Type = std::remove_cv_t<std::remove_reference_t<Second>>;
};
template <class Function> struct Parameters;
template <class Result, class... Arguments> struct Parameters<Result (*)(Arguments...)> {
    using Second = typename SecondOf<Arguments...>::Type;
};

template <auto function> bool test_thunk(const void *record)
{
    return function(*static_cast<const typename Signature<function>::First *>(record));
}
template <auto function> void ahead_thunk(void *record, [[maybe_unused]] const Item &item)
{
    auto &target = *static_cast<typename Signature<function>::First *>(record);
    if constexpr (std::is_invocable_v<decltype(function), decltype(target), const Item &>)
        function(target, item);
    else
        function(target);
}
template <auto function> int then_thunk(void *record, [[maybe_unused]] const Item &item)
{
    auto &target = *static_cast<typename Signature<function>::First *>(record);
    if constexpr (std::is_invocable_v<decltype(function), decltype(target), const Item &>)
        return function(target, item);
    else
        return function(target);
}

// One row as its author writes it. The setters return a changed copy, so they can be chained.
struct Field {
    // Something behind the keys that belongs to the row.
    struct Attachment {
        Kind kind = Kind::count;
        std::uint32_t offset = 0;
        std::int32_t value = 0;
        const char *text = nullptr;
        Ref ref{};
    };
    static constexpr std::size_t most_attachments = 4;

    const char *key = nullptr;
    Kind kind = Kind::named;
    Direction direction = Direction::both;
    std::uint32_t offset = 0;
    std::uint32_t record_size = 0; // of a part's record, to compare with the record that it is a part of
    Ref refs[3];
    std::uint8_t ref_count = 0;
    bool limited = false;
    Limits limits = {0, 0};
    std::uint16_t flags = 0;
    std::int32_t longest = 0; // characters of a grid's text
    Attachment attachments[most_attachments];
    std::uint8_t attachment_count = 0;
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
    const char *acceptance = "";
    const char *sample_text = "";
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

    constexpr Field attach(Attachment attachment) const
    {
        if (attachment_count == most_attachments)
            wrong_description("too much is attached to a row");
        for (std::size_t i = 0; i < attachment_count; ++i)
            if (attachments[i].kind == attachment.kind &&
                (attachment.kind != Kind::hook || attachments[i].value == attachment.value))
                wrong_description("a row has one of each");
        Field changed = *this;
        changed.attachments[changed.attachment_count++] = attachment;
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
    // An error line when the row is refused. It is given the number or the text as stored, and the source line;
    // for a list that is full, the function and the source line; for an unknown spelling, the text; for a grid
    // of the wrong size, the source line, the number of cells and both sides. A word that is only written is
    // given the code that has no spelling.
    constexpr Field complain(const char *line) const
    {
        if (kind != Kind::integer && kind != Kind::flag && kind != Kind::text && kind != Kind::view &&
            kind != Kind::word && kind != Kind::mask && kind != Kind::list && kind != Kind::int_items &&
            kind != Kind::grid)
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
    // As complain(), but the line shows another member.
    template <class Record> constexpr Field complain(const char *line, Member<Record, int> member) const
    {
        return complain(line).attach({Kind::shows, member.offset, 0, nullptr, {}});
    }
    constexpr Field second_line(const char *line) const
    {
        return attach({Kind::second_line, 0, 0, line, {}});
    }
    // Words: an error line when a code without a spelling is to be written; it is given the code.
    constexpr Field code_line(const char *line) const
    {
        return of(Kind::word, Kind::mask).second_line(line);
    }
    // Lists: an error line for each refused item; it is given the function and the source line.
    constexpr Field item_line(const char *line) const
    {
        if (!is_list(kind))
            wrong_description("only lists have items");
        return second_line(line);
    }
    // Grids: an error line when the text would be too long to be written; it is given the source line and the
    // characters. The grid is left out then.
    constexpr Field too_large(const char *line) const
    {
        return of(Kind::grid).second_line(line);
    }
    // Stores a number in another member once the row has been read.
    template <class Record> constexpr Field marks(Member<Record, int> member, int value = 1) const
    {
        return attach({Kind::mark, member.offset, value, nullptr, {}});
    }
    // Written only when that member meets the condition, or when bool test(const T &record) says so.
    template <class Record, class Type>
    constexpr Field when(Member<Record, Type> member, When test = When::nonzero) const
    {
        static_assert(sizeof(Type) == sizeof(int) && !std::is_floating_point_v<Type>, "a condition looks at an int");
        return attach({Kind::condition, member.offset, static_cast<std::int32_t>(test), nullptr, {}});
    }
    template <auto test> constexpr Field when() const
    {
        return attach({Kind::condition, 0, static_cast<std::int32_t>(When::function), nullptr, Ref(test_thunk<test>)});
    }
    // Writing fails unless that member meets the condition.
    template <class Record, class Type>
    constexpr Field demands(Member<Record, Type> member, When test = When::nonzero) const
    {
        static_assert(sizeof(Type) == sizeof(int) && !std::is_floating_point_v<Type>, "a condition looks at an int");
        return attach({Kind::condition,
                       member.offset,
                       static_cast<std::int32_t>(test) | static_cast<int>(demanded),
                       nullptr,
                       {}});
    }
    // Groups: void function(T &record[, const Item &]) in front of reading the row.
    template <auto function> constexpr Field ahead() const
    {
        return of(Kind::group)
            .attach({Kind::hook, 0, static_cast<std::int32_t>(Moment::ahead), nullptr, Ref(ahead_thunk<function>)});
    }
    // int function(T &record[, const Item &]) once the row has been read; -1 refuses it after all.
    template <auto function> constexpr Field then() const
    {
        return attach({Kind::hook, 0, static_cast<std::int32_t>(Moment::then), nullptr, Ref(then_thunk<function>)});
    }
    // void function(T &record) behind an item of an indexed list in which no child has answered to this key. It is
    // handed the list's first record, whichever one the item has chosen. Of a list by position: at the place of a
    // child of another name.
    template <auto function> constexpr Field absent() const
    {
        return attach({Kind::hook, 0, static_cast<std::int32_t>(Moment::absent), nullptr, Ref(ahead_thunk<function>)});
    }
    // Groups: the element is read a second time, by the rows of another description of the same record.
    template <class Described> constexpr Field again(const Described &record) const
    {
        return of(Kind::group).attach({Kind::again, 0, 0, nullptr, Ref(&record.table())});
    }

    // For the tools: the rows that name the members of the record that a wire, or a row of `also_shown`, is about.
    // Where they describe a record that holds it, `offset` is its place there.
#ifdef NETPUBLIC_DESCRIBED
    template <class Described> constexpr Field shown(const Described &record, std::size_t offset_there = 0) const
    {
        Field changed = *this;
        changed.shown_table = &record.table();
        changed.shown_offset = static_cast<std::uint32_t>(offset_there);
        return changed;
    }
    // The spellings of a converted member's code or, where it is unsigned, of its bits.
    constexpr Field spelled(const WordTable &words) const
    {
        Field changed = *this;
        changed.spelling = &words;
        return changed;
    }
    // What a conversion or a hook accepts beyond what the row says, in words.
    constexpr Field accepts(const char *words) const
    {
        Field changed = *this;
        changed.acceptance = words;
        return changed;
    }
    // A text that is accepted, where the row alone does not tell one; a "#" in it is the item's place in its list.
    constexpr Field sample(const char *text) const
    {
        Field changed = *this;
        changed.sample_text = text;
        return changed;
    }
    // Each number of the member holds a day's hours: bit h is hour h.
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
    constexpr Field accepts(const char *) const
    {
        return *this;
    }
    constexpr Field sample(const char *) const
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
        if (kind != Kind::integer && kind != Kind::byte && kind != Kind::place)
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
    // What is no number leaves the member as it was and is not refused.
    constexpr Field tolerant() const
    {
        return of(Kind::integer).with(number_tolerant);
    }

    // Texts: the longest accepted, in characters.
    constexpr Field upto(std::int32_t characters) const
    {
        if (kind == Kind::grid || kind == Kind::int_list) {
            Field changed = *this;
            changed.longest = characters;
            return changed;
        }
        if (kind != Kind::text && kind != Kind::view && kind != Kind::word && kind != Kind::mask &&
            kind != Kind::events && kind != Kind::converted)
            wrong_description("only a text has a length");
        if (kind == Kind::text && characters >= limits.high)
            wrong_description("the text does not fit its member");
        return limited_to(characters, limits.high);
    }

    // Views: the child's name must be the whole key.
    constexpr Field whole_name() const
    {
        return of(Kind::view).with(view_whole);
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
    // The code is added to the bits that the member holds; an unknown word adds none.
    constexpr Field adds() const
    {
        return of(Kind::word).with(word_adds);
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
    // added to what the member holds, whether only the last of the table's counts, the mask to start from, and
    // whether bits without a spelling are written as an empty text instead of "none".
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
    constexpr Field wordless() const
    {
        return of(Kind::mask).with(mask_wordless);
    }

    // Lists of numbers: converted once all children have been looked at, from the last one's text.
    constexpr Field late() const
    {
        return of(Kind::int_list).with(int_list_late);
    }

    // Lists: where the number of items is kept, and what happens to items beyond the capacity (skipped by
    // default). A count that a member keeps goes on from what the member holds: a preset() resets it. Without
    // a member the walk itself counts, for one list of the record, and all items are written.
    template <class Record, class Type> constexpr Field counted_by(Member<Record, Type> member) const
    {
        static_assert(std::is_same_v<Type, int> || std::is_same_v<Type, unsigned int>, "a count is an int");
        return of_list().attach({Kind::count, member.offset, 0, nullptr, {}});
    }
    // Lists that are written: the first items only.
    constexpr Field first(std::int32_t items) const
    {
        if (!is_list(kind) || direction != Direction::write || items > limits.low)
            wrong_description("only so many items of a written list");
        return limited_to(items, limits.high);
    }
    constexpr Field refuse_more() const
    {
        return of_list().with(list_refuse);
    }
    constexpr Field overwrite_last() const
    {
        return of(Kind::list, Kind::int_items).with(list_last);
    }
    // What stands behind the last item that fits is not even looked at.
    constexpr Field stop_when_full() const
    {
        return of_list().with(list_stop);
    }
    // The same, and fewer items fail.
    constexpr Field exactly() const
    {
        return of_list().with(list_stop | list_exact);
    }
    // An item's index is its place among all children. A child of another name empties its record, even where it
    // fails, if the items' records begin anew (clears(), preset()); else it leaves it as it is. That of a wire is left
    // to absent().
    constexpr Field by_position() const
    {
        return of_list().with(list_by_position);
    }
    // An item's record is chosen by the item's `place` row, in front of everything that is read into it.
    constexpr Field indexed() const
    {
        return of(Kind::list).with(list_indexed);
    }
    constexpr Field of_list() const
    {
        if (!is_list(kind))
            wrong_description("rows of this kind are no lists");
        return *this;
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
// The low byte of a number.
template <class Record> constexpr Field byte(const char *key, Member<Record, unsigned char> member)
{
    return field_of(Kind::byte, key, member);
}
// A bit of the member: a number other than 0 sets it, a 0 takes none away.
template <class Record> constexpr Field bit(const char *key, Member<Record, unsigned int> member, std::int32_t mask)
{
    return field_of(Kind::byte, key, member).limited_to(mask, 0).with(number_bit).read_only();
}
// The item's place in its list, written as such. When it is read, it chooses the item's record, and is stored there.
template <class Record> constexpr Field place(const char *key, Member<Record, int> member)
{
    return field_of(Kind::place, key, member);
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
// The text of the child, left where it is; a null one is not written. Only for records that live no longer than
// the walk.
template <class Record> constexpr Field view(const char *key, Member<Record, const char *> member)
{
    return field_of(Kind::view, key, member).limited_to(INT_MAX, 0);
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
// Adds the alarm types that the text contains to a set, unless it contains "none"; written joined by commas.
template <class Record>
constexpr Field events(const char *key, Member<Record, time_section_t> member, const WordTable &words)
{
    if (words.count > most_searched_words)
        wrong_description("a text is searched for so many words");
    Field field = field_of(Kind::events, key, member).limited_to(127, 0);
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
// The same, of records that the member points to. Only in the envelope and in records that live no longer than the
// walk.
template <std::size_t capacity, class Record, class Type, class Described>
constexpr Field list_behind(const char *key, Member<Record, Type *> member, const Described &record)
{
    static_assert(std::is_same_v<Type, typename Described::T> || std::is_void_v<Type>,
                  "the list describes other records");
    Field field = field_of(Kind::list, key, member).limited_to(capacity, 0).with(list_behind_pointer);
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

// A grid of one byte a cell, 0 or 1, at the head of its array; on the wire the base64 of its bits, row after row.
// It is decoded behind the walk, when both sides are known. cells[r][c] is row r, column c ...
template <class Record>
constexpr Field grid(const char *key, Member<Record, unsigned char[grid_rows][grid_columns]> member,
                     Member<Record, int> columns, Member<Record, int> rows)
{
    return field_of(Kind::grid, key, member)
        .limited_to(static_cast<std::int32_t>(columns.offset), static_cast<std::int32_t>(rows.offset));
}
// ... or cells[c][r] is.
template <class Record>
constexpr Field column_grid(const char *key, Member<Record, unsigned char[grid_columns][grid_rows]> member,
                            Member<Record, int> columns, Member<Record, int> rows)
{
    return field_of(Kind::grid, key, member)
        .limited_to(static_cast<std::int32_t>(columns.offset), static_cast<std::int32_t>(rows.offset))
        .with(grid_columns_first);
}
// Rows of cells that the member points to.
template <class Record>
constexpr Field grid_behind(const char *key, Member<Record, unsigned char (*)[grid_columns]> member,
                            Member<Record, int> columns, Member<Record, int> rows)
{
    return field_of(Kind::grid, key, member)
        .limited_to(static_cast<std::int32_t>(columns.offset), static_cast<std::int32_t>(rows.offset))
        .with(grid_behind_pointer);
}

template <class Record, auto function> void before_thunk(void *record)
{
    function(*static_cast<Record *>(record));
}
template <class Record, auto function> int after_thunk(void *record, [[maybe_unused]] std::uint32_t seen)
{
    if constexpr (std::is_invocable_v<decltype(function), Record &, std::uint32_t>)
        return function(*static_cast<Record *>(record), seen);
    else
        return function(*static_cast<Record *>(record));
}
// A text that functions of the domain make something of, and make: int read(const char *text, T &record), which
// refuses with -1, and int write(const T &record, char *text, std::size_t size); either may be nullptr.
template <auto read> int read_text_thunk(void *record, const char *text)
{
    using Record = typename Parameters<decltype(read)>::Second;
    return read(text, *static_cast<Record *>(record));
}
template <auto write> int write_text_thunk(const void *record, char *text, std::size_t size)
{
    return write(*static_cast<const typename Signature<write>::First *>(record), text, size);
}
template <auto read, auto write = nullptr, class Record, class Type>
constexpr Field converted(const char *key, Member<Record, Type> member)
{
    Field field = field_of(Kind::converted, key, member).limited_to(INT_MAX, 0);
    field.ref_count = 2;
    if constexpr (std::is_null_pointer_v<decltype(read)>) {
        field.direction = Direction::write;
    } else {
        static_assert(std::is_same_v<typename Parameters<decltype(read)>::Second, Record>, "of another record");
        field.refs[0] = Ref(read_text_thunk<read>);
    }
    if constexpr (std::is_null_pointer_v<decltype(write)>) {
        field.direction = Direction::read;
    } else {
        static_assert(std::is_same_v<typename Signature<write>::First, Record>, "of another record");
        field.refs[1] = Ref(write_text_thunk<write>);
    }
    return field;
}

// An element that says something in another form than the payload keeps it is read into a record of its own,
// a wire, which lives no longer than the walk; a function of the domain stores what it says. For the way back
// another one makes a wire of what the payload holds, which is written by the same rows.
//
//     int take(Target &target, const Wire &wire[, const Item &item])
//     Give give(const Target &target, Wire &wire[, Item &item])
//
// The target is the member, or, of a wire_part() and of wires_part(), the record. take() refuses with -1; it is
// not called for a wire that was refused already, unless it wants the item, whose `result` tells. A wire begins as
// Wire(target, index), Wire(target) or Wire{}, whichever there is. give() may fill a type derived from the wire
// that has room for texts.
template <class Wire, class Target> Wire begin_wire(Target &target, [[maybe_unused]] const Item &item)
{
    if constexpr (std::is_constructible_v<Wire, Target &, unsigned>)
        return Wire(target, item.index);
    else if constexpr (std::is_constructible_v<Wire, Target &>)
        return Wire(target);
    else
        return Wire{};
}
template <class Target, auto take>
int read_wire_thunk(void *target_record, const Table &table, Item &item, Node element)
{
    using Wire = typename Parameters<decltype(take)>::Second;
    auto &target = *static_cast<Target *>(target_record);
    Wire wire = begin_wire<Wire>(target, item);
    item.result = read_record(table, &wire, element);
    if constexpr (std::is_invocable_v<decltype(take), Target &, Wire &, Item &>)
        return take(target, wire, item);
    else
        return item.result != 0 ? -1 : take(target, wire);
}
template <class Target, auto give>
Give write_wire_thunk(const void *target_record, const Table &table, Item &item, Element parent)
{
    using Wire = typename Parameters<decltype(give)>::Second;
    const auto &target = *static_cast<const Target *>(target_record);
    Wire wire = {};
    if constexpr (std::is_invocable_v<decltype(give), const Target &, Wire &, Item &>)
        return write_given(give(target, wire, item), table, &wire, item, parent);
    else
        return write_given(give(target, wire), table, &wire, item, parent);
}
// The same of a list, which goes on from what is left out to what is not without a call for each.
template <class Target, auto give>
Give write_wires_thunk(const void *target_record, const Table &table, Item &item, Element parent)
{
    using Wire = typename Parameters<decltype(give)>::Second;
    const auto &target = *static_cast<const Target *>(target_record);
    for (;; ++item.index) {
        Wire wire = {};
        const Give decision = give(target, wire, item);
        if (decision != Give::left_out)
            return write_given(decision, table, &wire, item, parent);
    }
}
template <Kind kind, class Target, auto take, auto give, class Described>
constexpr Field wire_of(const char *key, const Described &described)
{
    Field field;
    field.key = key;
    field.kind = kind;
    field.refs[0] = Ref(&described.table());
    field.ref_count = 3;
    if constexpr (std::is_null_pointer_v<decltype(take)>) {
        field.direction = Direction::write;
    } else {
        using Wire = typename Parameters<decltype(take)>::Second;
        static_assert(std::is_base_of_v<typename Described::T, Wire>, "the rows describe another wire");
        field.refs[1] = Ref(read_wire_thunk<Target, take>);
    }
    if constexpr (std::is_null_pointer_v<decltype(give)>) {
        field.direction = Direction::read;
    } else {
        using Wire = typename Parameters<decltype(give)>::Second;
        static_assert(std::is_base_of_v<typename Described::T, Wire>, "the rows describe another wire");
        if constexpr (kind == Kind::wires && !for_size)
            field.refs[2] = Ref(write_wires_thunk<Target, give>);
        else
            field.refs[2] = Ref(write_wire_thunk<Target, give>);
    }
    return field;
}
template <class Record, class Type> constexpr Field about(Field field, Member<Record, Type> member)
{
    const Field shape = field_of(field.kind, field.key, member);
    field.offset = shape.offset;
#ifdef NETPUBLIC_DESCRIBED
    field.member_name = shape.member_name;
    field.member_type = shape.member_type;
    field.shape = shape.shape;
    field.dimensions[0] = shape.dimensions[0];
    field.dimensions[1] = shape.dimensions[1];
    field.element_size = shape.element_size;
#endif
    return field;
}
// The rows of a wire of the member's own type name the member's members.
template <class Type, class Described> constexpr Field naming(Field field, const Described &described)
{
    if constexpr (std::is_same_v<std::remove_all_extents_t<Type>, typename Described::T>)
        return field.shown(described);
    else
        return field;
}
// One element; its target is the member.
template <auto take, auto give = nullptr, class Record, class Type, class Described>
constexpr Field wire(const char *key, Member<Record, Type> member, const Described &described)
{
    return naming<Type>(about(wire_of<Kind::wire, Type, take, give>(key, described), member), described);
}
// One element; its target is the record.
template <class Record, auto take, auto give = nullptr, class Described>
constexpr Field wire_part(const char *key, const Described &described)
{
    return wire_of<Kind::wire, Record, take, give>(key, described);
}
// The elements of one name, up to a capacity; their target is the member, a list's the whole array.
template <auto take, auto give = nullptr, class Record, class Type, class Described>
constexpr Field wires(const char *key, Member<Record, Type> member, const Described &described, int capacity = INT_MAX)
{
    return naming<Type>(about(wire_of<Kind::wires, Type, take, give>(key, described), member), described)
        .limited_to(capacity, 0);
}
// The same; their target is the record.
template <class Record, auto take, auto give = nullptr, class Described>
constexpr Field wires_part(const char *key, const Described &described, int capacity = INT_MAX)
{
    return wire_of<Kind::wires, Record, take, give>(key, described).limited_to(capacity, 0);
}

// The bodies of exported readers of such an element: see read_component() and read_component_logged().
template <auto take, class Target>
int read_component_wire(Target *target, Node element, const char *key, const Table &wire)
{
    Item item = {"", 0, 0, 0};
    return is_component(target, element, key) ? read_wire_thunk<Target, take>(target, wire, item, element) : -1;
}
template <auto take, class Target>
int read_component_wire_logged(Target *target, Node element, const char *key, const Table &wire)
{
    if (is_component(target, element, key))
        return read_component_wire<take>(target, element, nullptr, wire);
    return read_component_logged(nullptr, element, key, wire);
}

// A member of any type, for `also_shown`.
template <class Record, class Type> constexpr Field shown(const char *key, Member<Record, Type> member)
{
    return field_of(Kind::named, key, member);
}

// A message whose rows do not describe the payload itself.
//
// Its body is read into a walk, a record that lives no longer than that, and then stored:
//     int take(net_param_t &param, const Walk &walk)
// A walk begins as Walk(payload) or Walk{}.
template <class Payload, auto take> int parse_walk(const Table &message, net_param_t *param, Node body)
{
    using Walk = typename Parameters<decltype(take)>::Second;
    if (check_parser(message, param, body, sizeof(Payload)) != 0)
        return -1;
    Walk walk = begin_wire<Walk>(*static_cast<Payload *>(param->data), Item{});
    return read_record(message, &walk, body) != 0 ? -1 : take(*param, walk);
}
// The same, and a refused body leaves the payload alone: the body is read twice, first into Walk{}, then into
// Walk(first, payload).
template <class Payload, auto take> int parse_tried(const Table &message, net_param_t *param, Node body)
{
    using Walk = typename Parameters<decltype(take)>::Second;
    if (check_parser(message, param, body, sizeof(Payload)) != 0)
        return -1;
    Walk walk = {};
    if (read_record(message, &walk, body) != 0)
        return -1;
    walk = Walk(walk, *static_cast<Payload *>(param->data));
    return read_record(message, &walk, body) != 0 ? -1 : take(*param, walk);
}
// The rows describe the envelope, whose `data` points to the payload.
template <class Payload> int parse_envelope(const Table &message, net_param_t *param, Node body)
{
    return check_parser(message, param, body, sizeof(Payload)) != 0 ? -1 : read_record(message, param, body);
}

// What belongs to the message as a whole. HERE names the source for the log lines.
struct Traits {
    const char *file = "";
    int line = 0;
    const char *root_name = "";
    const char *parser_name = "";
    const char *writer_name = "";
    const char *unknown_line = "";
    const char *missing_line = "";
    const char *title_text = "";
    const char *summary_text = "";
    Line entry_line = Line::parser;
    Line write_entry_line = Line::writer;
    Line failure_line = Line::none;
    Names names = Names::beginnings;
    std::uint16_t flags = 0;
    std::uint8_t rare = 0;
    Before before_hook = nullptr;
    After after_hook = nullptr;
    ParseBody parse_function = nullptr;
    ParsedAs parsed = ParsedAs::record;
    // Under the undefined-behaviour sanitizer gcc takes no function's address for a constant non-null.
    bool has_before = false;
    bool has_after = false;
#ifdef NETPUBLIC_DESCRIBED
    const Table *layout_table = nullptr;
#endif

    constexpr Traits with(std::uint16_t flag) const
    {
        Traits changed = *this;
        changed.flags = static_cast<std::uint16_t>(changed.flags | flag);
        return changed;
    }
    constexpr Traits with_trait(std::uint8_t trait) const
    {
        Traits changed = *this;
        changed.rare = static_cast<std::uint8_t>(changed.rare | trait);
        return changed;
    }
    constexpr Traits named(Names rule) const
    {
        Traits changed = *this;
        changed.names = rule;
        return changed;
    }
    // For the tools: a few words and one sentence about the message.
#ifdef NETPUBLIC_DESCRIBED
    constexpr Traits title(const char *words, const char *sentence) const
    {
        Traits changed = *this;
        changed.title_text = words;
        changed.summary_text = sentence;
        return changed;
    }
    // For the tools: the rows of the payload, where the message's own describe a walk.
    template <class Described> constexpr Traits layout(const Described &payload) const
    {
        Traits changed = *this;
        changed.layout_table = &payload.table();
        return changed;
    }
#else
    constexpr Traits title(const char *, const char *) const
    {
        return *this;
    }
    template <class Described> constexpr Traits layout(const Described &) const
    {
        return *this;
    }
#endif
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
    // An error line for a required child that is missing.
    constexpr Traits missing(const char *text) const
    {
        Traits changed = with_trait(trait_missing);
        changed.missing_line = text;
        return changed;
    }
    // A writer that fails behind its check logs the line for bad arguments, too.
    constexpr Traits write_failure_logged() const
    {
        return with_trait(trait_write_line);
    }
    // A body without children is accepted and changes nothing.
    constexpr Traits empty_is_done() const
    {
        return with_trait(trait_empty_done);
    }
    // The source whose name the log lines carry, where it is not the one that the code stands in.
    constexpr Traits logged_as(const char *source) const
    {
        Traits changed = *this;
        changed.file = source;
        return changed;
    }
    // The rows describe a walk, or the envelope: see parse_walk(), parse_tried() and parse_envelope().
    template <class Payload, auto take> constexpr Traits walk() const
    {
        return parsed_by(parse_walk<Payload, take>, ParsedAs::walk);
    }
    template <class Payload, auto take> constexpr Traits tried() const
    {
        return parsed_by(parse_tried<Payload, take>, ParsedAs::tried);
    }
    template <class Payload> constexpr Traits envelope() const
    {
        return parsed_by(parse_envelope<Payload>, ParsedAs::envelope);
    }
    constexpr Traits parsed_by(ParseBody function, ParsedAs way) const
    {
        Traits changed = with(table_walked);
        changed.parsed = way;
        changed.parse_function = function;
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
    // How children's names are compared; see Names.
    constexpr Traits exact_names() const
    {
        return named(Names::whole);
    }
    constexpr Traits longer_names() const
    {
        return named(Names::longer);
    }
    constexpr Traits any_name() const
    {
        return named(Names::any);
    }
    constexpr Traits in_order() const
    {
        return named(Names::in_order);
    }
    constexpr Traits looked_up() const
    {
        return named(Names::looked_up);
    }
    // A child that answers to no key fails, with the record's failure line.
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
    // void before(T &record) runs in front of the walk, int after(T &record[, std::uint32_t seen]) behind it; -1
    // refuses the record. Bit i of `seen` tells that a child has answered to the i-th key, of the first 32.
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

// The order in which the children are written, by key; a key that stands there twice is that of two fields.
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
