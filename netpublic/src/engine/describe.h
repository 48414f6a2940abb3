// Packs a description into a table: constexpr auto siren_message = describe<SirenFields>();
#ifndef NETPUBLIC_DESCRIBE_H
#define NETPUBLIC_DESCRIBE_H

#include "engine/description.h"

namespace netpublic {

// Rows as they are being packed, in arrays that are long enough for any description of so many fields.
template <std::size_t Fields, std::size_t Characters> struct Draft {
    static constexpr std::size_t room = (1 + Field::most_attachments) * Fields; // a field and what is attached to it
    Row rows[room]{};
    Limits limits[room]{};
    Ref refs[(3 + Field::most_attachments) * Fields + 3]{};
    std::uint8_t order[room]{};
    TextPool<Characters> texts;
#ifdef NETPUBLIC_DESCRIBED
    Detail details[room]{};
#endif
    Source source{};
    std::size_t row_count = 0, key_count = 0, limit_count = 0, ref_count = 0, written = 0;
    std::uint16_t flags = 0;
    std::uint8_t rare = 0;

    constexpr bool has_source() const
    {
        return (flags & table_source) != 0;
    }
    // The order is kept only if it is not that of the rows.
    constexpr std::size_t kept_order() const
    {
        return (flags & table_ordered) != 0 ? written : 0;
    }
};

// Rows and limits are of one size; so a table without limits of its own needs no empty array.
union Cell {
    Row row;
    Limits limits;

    constexpr Cell() : row() {}
    constexpr Cell(const Row &from) : row(from) {}
    constexpr Cell(const Limits &from) : limits(from) {}
};
static_assert(sizeof(Cell) == sizeof(Row), "limits follow the rows");

// The end of a table, with and without what only some tables need.
template <std::size_t Refs, std::size_t Bytes> struct End {
    Ref refs[Refs];
    char bytes[Bytes]; // the order and the texts

    constexpr void set(std::size_t index, Ref ref)
    {
        refs[index] = ref;
    }
};
template <std::size_t Bytes> struct End<0, Bytes> {
    char bytes[Bytes];

    constexpr void set(std::size_t, Ref) {}
};
template <bool Sourced, class End> struct Rest {
    Source source;
    alignas(Ref) End end;
};
template <class End> struct Rest<false, End> {
    End end;
};

// A packed table and the record that it describes.
template <class Record, bool Sourced, std::size_t Rows, std::size_t Cells, std::size_t Refs, std::size_t Bytes>
struct Described {
    using T = Record;

    Table head;
    Cell cells[Cells];
#ifdef NETPUBLIC_DESCRIBED
    Detail details[Rows];
#endif
    Rest<Sourced, End<Refs, Bytes>> rest;

    constexpr const Table &table() const
    {
        return head;
    }
    constexpr operator const Table &() const
    {
        return head;
    }
};

constexpr bool same_text(const char *a, const char *b)
{
    for (; *a != '\0' && *a == *b; ++a, ++b) {
    }
    return *a == *b;
}

constexpr bool begins(const char *text, const char *beginning)
{
    for (; *beginning != '\0'; ++text, ++beginning)
        if (fold(*text) != fold(*beginning))
            return false;
    return true;
}

template <unsigned bits> constexpr std::uint32_t low_bits = static_cast<std::uint32_t>((std::uint64_t{1} << bits) - 1);

// The number, which must fit so many bits.
template <unsigned bits> constexpr std::uint32_t fitting(std::size_t number)
{
    if (number > low_bits<bits>)
        wrong_description("a number does not fit its column");
    return static_cast<std::uint32_t>(number);
}

template <class Narrow> constexpr Narrow narrowed(std::size_t number)
{
    return static_cast<Narrow>(fitting<8 * sizeof(Narrow)>(number));
}

constexpr Row pack_row(Kind kind, std::size_t offset, std::size_t flags, std::size_t key, std::size_t ref,
                       std::size_t limits)
{
    Row row{};
    row.offset = fitting<offset_bits>(offset) & low_bits<offset_bits>;
    row.flags = fitting<flag_bits>(flags) & low_bits<flag_bits>;
    row.kind = kind;
    row.key = fitting<key_bits>(key) & low_bits<key_bits>;
    row.ref = fitting<index_bits>(ref) & low_bits<index_bits>;
    row.limits = fitting<index_bits>(limits) & low_bits<index_bits>;
    return row;
}

// Can a child answer to it?
constexpr bool is_key(const Field &field)
{
    return field.kind != Kind::preset && field.direction != Direction::write;
}

constexpr bool is_written(const Field &field)
{
    return field.kind != Kind::preset && field.direction != Direction::read;
}

// The rows: first the keys that children can answer to, then the written ones, then the presets. Which
// is a field's?
template <class D> constexpr std::size_t row_of(std::size_t wanted)
{
    const auto group_of = [](const Field &field) { return field.kind == Kind::preset ? 2 : is_key(field) ? 0 : 1; };
    std::size_t row = 0;
    for (std::size_t i = 0; i < std::size(D::fields); ++i) {
        const int mine = group_of(D::fields[wanted]), its = group_of(D::fields[i]);
        if (its < mine || (its == mine && i < wanted))
            ++row;
    }
    return row;
}

// The field at a place of the written order: for a key that stands there for the second time, the second one.
template <class D> constexpr std::size_t written_field(std::size_t place)
{
    const char *key = D::written[place];
    std::size_t earlier = 0;
    for (std::size_t i = 0; i < place; ++i)
        earlier += same_text(D::written[i], key) ? 1 : 0;
    for (std::size_t i = 0; i < std::size(D::fields); ++i)
        if (is_written(D::fields[i]) && same_text(D::fields[i].key, key) && earlier-- == 0)
            return i;
    wrong_description("a written key is not among the fields");
    return 0;
}

constexpr bool alike_as_a_whole(const char *a, const char *b)
{
    std::size_t same = 0;
    while (same < compared_characters && a[same] != '\0' && fold(a[same]) == fold(b[same]))
        ++same;
    return same == compared_characters;
}

// An earlier key that begins with this key takes this key's full name, and so does one that is no other as a whole
// name, and where names may be longer, one that this key begins with; any key that does, the name of one that is only
// written.
template <class D> constexpr bool is_shadowed(std::size_t index)
{
    const Field &field = D::fields[index];
    for (std::size_t other = 0; other < (is_key(field) ? index : std::size(D::fields)); ++other) {
        const char *key = D::fields[other].key;
        if (is_key(D::fields[other]) &&
            (field.key == nullptr || begins(key, field.key) || alike_as_a_whole(key, field.key) ||
             (D::traits.names == Names::longer && begins(field.key, key))))
            return true;
    }
    return false;
}

constexpr std::size_t room_for(const char *text)
{
    return text == nullptr ? 0 : length_of(text) + 1;
}

// More characters than the texts of a description can have.
template <class D> constexpr std::size_t characters_of()
{
    const Traits &traits = D::traits;
    std::size_t characters = 1;
    for (const char *text :
         {traits.root_name, traits.parser_name, traits.writer_name, traits.unknown_line, traits.missing_line})
        characters += room_for(text);
    for (const Field &field : D::fields) {
        characters += room_for(field.key) + room_for(field.complaint);
        for (const Field::Attachment &attachment : field.attachments)
            characters += room_for(attachment.text);
    }
#ifdef NETPUBLIC_DESCRIBED
    for (const Field &field : D::fields)
        characters += room_for(field.member_name);
    for (const Field &field : D::also_shown)
        characters += room_for(field.key) + room_for(field.member_name);
#endif
    return characters;
}

template <class Draft> constexpr std::size_t add_text(Draft &draft, const char *text)
{
    const std::size_t common = common_texts.find(text);
    return common < common_texts.size ? common : common_texts.size + draft.texts.add(text);
}

// A text and, directly behind it, others.
template <class Draft, class... Texts> constexpr std::size_t add_texts(Draft &draft, const char *text, Texts... others)
{
    const std::size_t at = draft.texts.append(text);
    (draft.texts.append(others), ...);
    return common_texts.size + at;
}

template <class Draft> constexpr std::size_t add_limits(Draft &draft, Limits pair)
{
    for (std::size_t i = 0; i < common_limit_count; ++i)
        if (common_limits[i].low == pair.low && common_limits[i].high == pair.high)
            return i;
    std::size_t own = 0;
    while (own < draft.limit_count && (draft.limits[own].low != pair.low || draft.limits[own].high != pair.high))
        ++own;
    if (own == draft.limit_count)
        draft.limits[draft.limit_count++] = pair;
    return common_limit_count + own;
}

// Of a row's functions for reading and writing, which are its last two references, only those that can be called.
template <class Draft> constexpr std::size_t add_refs(Draft &draft, const Field &field)
{
    const std::size_t first = draft.ref_count;
    const bool functions = field.kind == Kind::converted || field.kind == Kind::wire || field.kind == Kind::wires;
    for (std::size_t i = 0; i < field.ref_count; ++i) {
        const bool reads = i + 2 == field.ref_count, writes = i + 1 == field.ref_count;
        if (!functions ||
            (!(reads && field.direction == Direction::write) && !(writes && field.direction == Direction::read)))
            draft.refs[draft.ref_count++] = field.refs[i];
    }
    return field.ref_count == 0 ? no_ref : first;
}

// A row behind the keys, with the number of the row that it belongs to.
template <class Draft>
constexpr void add_attachment(Draft &draft, std::size_t owner, const Field::Attachment &attachment)
{
    std::size_t offset = attachment.offset, key = 0, limits = no_limits;
    const bool function =
        attachment.kind == Kind::hook || attachment.kind == Kind::again ||
        (attachment.kind == Kind::condition && attachment.value == static_cast<std::int32_t>(When::function));
    if (function) {
        offset = draft.ref_count;
        draft.refs[draft.ref_count++] = attachment.ref;
    }
    if (attachment.kind == Kind::mark)
        limits = add_limits(draft, {attachment.value, 0});
    else if (attachment.kind == Kind::condition || attachment.kind == Kind::hook)
        limits = static_cast<std::size_t>(attachment.value);
    if (attachment.text != nullptr)
        key = add_text(draft, attachment.text);
    draft.rows[draft.row_count++] = pack_row(attachment.kind, offset, 0, key, owner, limits);
}

#ifdef NETPUBLIC_DESCRIBED
template <class Draft> constexpr Detail detail_of(Draft &draft, const Field &field)
{
    return {field.member_type,  narrowed<std::uint16_t>(add_text(draft, field.member_name)),
            field.shape,        {field.dimensions[0], field.dimensions[1]},
            field.element_size, field.shown_table,
            field.shown_offset, field.spelling,
            field.acceptance,   field.sample_text};
}
#endif

// A field's row, at its place, and what is attached to it, behind all others.
template <class Draft> constexpr void add_field(Draft &draft, const Field &field, std::size_t index, bool shadowed)
{
    std::size_t flags = field.flags;
    if (shadowed)
        flags |= row_shadowed;
    for (std::size_t i = 0; i < field.attachment_count; ++i) {
        const Kind kind = field.attachments[i].kind;
        if (kind == Kind::hook && field.attachments[i].value == static_cast<std::int32_t>(Moment::absent) &&
            index >= required_keys)
            wrong_description("only the first keys can be known to be absent");
        // A list's count and lines are looked for whenever they are wanted.
        if (kind != Kind::count && kind != Kind::shows && kind != Kind::second_line)
            flags |= row_attached;
    }
    if ((field.flags & row_own_test) != 0)
        draft.flags |= table_own_tests;
    if (field.kind == Kind::preset)
        draft.flags |= table_presets;
    if (field.kind == Kind::grid || (field.kind == Kind::int_list && (field.flags & int_list_late) != 0)) {
        draft.rare |= trait_late;
        draft.flags |= table_finish;
    }
    if ((field.flags & row_required) != 0 || (is_list(field.kind) && (field.flags & list_exact) != 0)) {
        draft.flags |= table_finish;
        if (index >= required_keys)
            wrong_description("only the first keys can be required");
    }
    const std::size_t key = field.complaint != nullptr ? add_texts(draft, field.key, field.complaint)
                            : field.key != nullptr     ? add_text(draft, field.key)
                                                       : 0;
    const std::size_t limits = field.limited ? add_limits(draft, field.limits) : no_limits;
    const std::size_t ref = field.longest != 0 ? add_limits(draft, {field.longest, 0}) : add_refs(draft, field);
    draft.rows[index] = pack_row(field.kind, field.offset, flags, key, ref, limits);
    for (std::size_t i = 0; i < field.attachment_count; ++i)
        add_attachment(draft, index, field.attachments[i]);
#ifdef NETPUBLIC_DESCRIBED
    draft.details[index] = detail_of(draft, field);
#endif
}

// The attachments, in the order of their kinds; those of a kind stay as they are.
template <class Draft> constexpr void sort_attachments(Draft &draft, std::size_t first)
{
    for (std::size_t i = first + 1; i < draft.row_count; ++i) {
        const Row row = draft.rows[i];
        std::size_t to = i;
        for (; to > first && draft.rows[to - 1].kind > row.kind; --to)
            draft.rows[to] = draft.rows[to - 1];
        draft.rows[to] = row;
    }
}

// The written order: as given, or the fields as they stand.
template <class D, class Draft> constexpr void add_order(Draft &draft)
{
    if constexpr (std::size(D::written) == 0) {
        for (std::size_t i = 0; i < std::size(D::fields); ++i)
            if (is_written(D::fields[i]))
                draft.order[draft.written++] = narrowed<std::uint8_t>(row_of<D>(i));
    } else {
        for (std::size_t place = 0; place < std::size(D::written); ++place)
            draft.order[draft.written++] = narrowed<std::uint8_t>(row_of<D>(written_field<D>(place)));
    }
    for (std::size_t place = 0; place < draft.written; ++place)
        if (draft.order[place] != place)
            draft.flags |= table_ordered;
}

template <class Draft> constexpr void add_traits(Draft &draft, const Traits &traits)
{
    draft.flags |= traits.flags;
    if (traits.has_before) {
        draft.flags |= table_before;
        draft.refs[draft.ref_count++] = Ref(traits.before_hook);
    }
    if (traits.has_after) {
        draft.flags |= table_after;
        draft.refs[draft.ref_count++] = Ref(traits.after_hook);
    }
    if ((traits.flags & table_walked) != 0)
        draft.refs[draft.ref_count++] = Ref(traits.parse_function);
    draft.rare |= traits.rare;
    const bool unnamed = *traits.file == '\0' && *traits.root_name == '\0' && *traits.parser_name == '\0' &&
                         *traits.writer_name == '\0' && *traits.unknown_line == '\0' && *traits.missing_line == '\0';
    if (unnamed && traits.entry_line == Line::parser && traits.write_entry_line == Line::writer &&
        traits.failure_line == Line::none)
        return; // what a table without a Source says
    draft.flags |= table_source;
    Source &source = draft.source;
    source.place.word = place_word(traits.file, traits.line);
    source.writer = narrowed<std::uint16_t>(add_text(draft, traits.writer_name));
    source.root = narrowed<std::uint16_t>(add_text(draft, traits.root_name));
    // Behind the parser's name: the line for other children, the line for a missing one.
    const bool unknown = *traits.unknown_line != '\0', missing = *traits.missing_line != '\0';
    if (unknown)
        draft.flags |= table_unknown;
    source.parser = narrowed<std::uint16_t>(
        unknown && missing ? add_texts(draft, traits.parser_name, traits.unknown_line, traits.missing_line)
        : unknown          ? add_texts(draft, traits.parser_name, traits.unknown_line)
        : missing          ? add_texts(draft, traits.parser_name, traits.missing_line)
                           : add_text(draft, traits.parser_name));
    source.entry = traits.entry_line;
    source.write_entry = traits.write_entry_line;
    source.failure = traits.failure_line;
}

template <class D> constexpr auto draft_of()
{
    Draft<std::size(D::fields) + std::size(D::also_shown), characters_of<D>()> draft;
    add_traits(draft, D::traits); // first, since the hooks are the first references
    draft.row_count = std::size(D::fields);
#ifdef NETPUBLIC_DESCRIBED
    for (const Field &field : D::also_shown) // neither read nor written
        add_field(draft, field, draft.row_count++, false);
#endif
    const std::size_t first_attachment = draft.row_count;
    for (std::size_t i = 0; i < std::size(D::fields); ++i) {
        const Field &field = D::fields[i];
        if (field.record_size != 0 && field.record_size != sizeof(typename D::T))
            wrong_description("a part describes another record");
        draft.key_count += is_key(field) ? 1 : 0;
        add_field(draft, field, row_of<D>(i), is_shadowed<D>(i));
    }
    if ((draft.rare & trait_empty_done) != 0 && (draft.flags & table_sets_inited) == 0)
        wrong_description("a body that is over at once must be one that else sets `inited`");
    const bool noting = (draft.flags & (table_finish | table_after)) != 0 || D::traits.names > Names::longer;
    if (noting && draft.key_count > required_keys)
        wrong_description("what has been seen of so many keys cannot be kept");
    if (D::traits.names == Names::looked_up && (draft.flags & (table_others_fail | table_unknown)) != 0)
        wrong_description("children beside those that are looked up are ignored");
    sort_attachments(draft, first_attachment);
    add_order<D>(draft);
    return draft;
}

template <class D> constexpr auto describe()
{
    constexpr auto draft = draft_of<D>();
    constexpr std::size_t order = draft.kept_order(), bytes = order + draft.texts.size;
    Described<typename D::T, draft.has_source(), draft.row_count, draft.row_count + draft.limit_count, draft.ref_count,
              bytes != 0 ? bytes : 1>
        out{};
    using Out = decltype(out);
    if constexpr (draft.has_source())
        out.rest.source = draft.source;
    for (std::size_t i = 0; i < draft.row_count; ++i)
        out.cells[i] = draft.rows[i];
    for (std::size_t i = 0; i < draft.limit_count; ++i)
        out.cells[draft.row_count + i] = draft.limits[i];
    for (std::size_t i = 0; i < draft.ref_count; ++i)
        out.rest.end.set(i, draft.refs[i]);
    for (std::size_t i = 0; i < order; ++i)
        out.rest.end.bytes[i] = static_cast<char>(draft.order[i]);
    for (std::size_t i = 0; i < draft.texts.size; ++i)
        out.rest.end.bytes[order + i] = draft.texts.pool[i];

    Table &head = out.head;
    constexpr std::size_t end = offsetof(Out, rest) + offsetof(decltype(out.rest), end);
    head.record_size = fitting<offset_bits>(sizeof(typename D::T)) & low_bits<offset_bits>;
    head.keys = fitting<7>(draft.key_count) & low_bits<7>;
    head.names = D::traits.names;
    head.traits = fitting<4>(draft.rare) & low_bits<4>;
    head.flags = draft.flags;
    head.rows = narrowed<std::uint8_t>(draft.row_count);
    head.written = narrowed<std::uint8_t>(draft.written);
    head.refs = narrowed<std::uint16_t>(end);
    head.texts = narrowed<std::uint16_t>(end + offsetof(decltype(out.rest.end), bytes) + order);
#ifdef NETPUBLIC_DESCRIBED
    head.record = type_name<typename D::T>.data();
    head.title = D::traits.title_text;
    head.summary = D::traits.summary_text;
    head.layout = D::traits.layout_table;
    head.parsed = D::traits.parsed;
    head.details = narrowed<std::uint16_t>(offsetof(Out, details));
    for (std::size_t i = 0; i < draft.row_count; ++i)
        out.details[i] = draft.details[i];
#endif
    return out;
}

} // namespace netpublic

#endif
