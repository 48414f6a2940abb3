#include "verbs/schema.h"

#include "drawing/drawing.h"
#include "model/accept.h"
#include "model/facts.h"
#include "model/rows.h"

#include <algorithm>
#include <climits>
#include <limits>
#include <set>

namespace netparam {
namespace {

using netpublic::Detail;
using netpublic::Kind;
using netpublic::Row;
using netpublic::Shape;
using netpublic::Table;

// Payloads ----------------------------------------------------------------------------------------

Json one_of(std::initializer_list<Json> schemas)
{
    return {{"anyOf", Json(schemas)}};
}

template <class Type> Json whole()
{
    return {{"type", "integer"},
            {"minimum", std::numeric_limits<Type>::min()},
            {"maximum", std::numeric_limits<Type>::max()}};
}

Json text(std::size_t longest)
{
    return {{"type", "string"}, {"maxLength", longest}};
}

Json array_of(const Json &items, std::size_t most, std::size_t least = 0)
{
    Json array = {{"type", "array"}, {"items", items}};
    if (least > 0)
        array["minItems"] = least;
    array["maxItems"] = most;
    return array;
}

Json word(const netpublic::WordTable &words)
{
    return one_of({{{"enum", all_words(words)}}, whole<std::int32_t>()});
}

// Joined by commas, or a list.
Json set_of_words()
{
    const Json any = {{"type", "string"}};
    return one_of({any, {{"type", "array"}, {"items", any}}});
}

Json mask()
{
    Json schema = set_of_words();
    schema["anyOf"].push_back(whole<std::uint32_t>());
    return schema;
}

Json real()
{
    return one_of({{{"type", "number"}}, {{"enum", {"nan", "-nan", "inf", "-inf"}}}});
}

Json row_of_cells(const Json &cell, std::size_t width)
{
    return one_of({{{"type", "string"}, {"pattern", "^[01]*$"}, {"maxLength", width}}, array_of(cell, width)});
}

Json week_of_sets()
{
    return array_of(array_of(set_of_words(), day_hours, day_hours), week_days, week_days);
}

Json scalar(const Detail &detail)
{
    switch (detail.shape) {
    case Shape::i32:
        return whole<std::int32_t>();
    case Shape::u32:
        return whole<std::uint32_t>();
    case Shape::i64:
        return whole<std::int64_t>();
    case Shape::u64:
        return whole<std::uint64_t>();
    case Shape::u8:
        return whole<std::uint8_t>();
    case Shape::f32:
        return real();
    case Shape::counted:
        return one_of({text(sizeof(net_counted_text_t::text) - 1), {{"type", "null"}}});
    case Shape::section:
        return set_of_words();
    case Shape::points:
        return array_of(array_of(real(), 2, 2), std::size(net_smart_ai_points_t().points));
    case Shape::schedule:
        return {{"type", "object"},
                {"properties", {{"types", set_of_words()}, {"section", week_of_sets()}}},
                {"additionalProperties", false}};
    default:
        return array_of(whole<std::int32_t>(), detail.element_size / sizeof(std::int32_t));
    }
}

using View = RecordView<const char>;

Json record(const View &view);

Json member(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    const Detail &detail = table.detail(index);
    const std::size_t capacity = capacity_of(table, index);
    const auto inner = [&] {
        const Table &of = *table.ref(row.ref).table;
        return record({of, nullptr, 0, of.record_size});
    };
    const auto shown = [&] { return record({*detail.shown, nullptr, detail.shown_offset, detail.element_size}); };
    switch (form_of(table, index)) {
    case Form::word:
        return word(*row_words(table, row));
    case Form::words:
    case Form::month:
        return array_of(word(*row_words(table, row)), capacity);
    case Form::mask:
        return mask();
    case Form::masks:
        return array_of(mask(), capacity);
    case Form::group:
        return inner();
    case Form::list:
        return array_of(inner(), capacity);
    case Form::record:
        return shown();
    case Form::records:
        return array_of(shown(), capacity);
    case Form::text:
        return text(capacity);
    case Form::texts:
        return array_of(text(detail.dimensions[1]), detail.dimensions[0]);
    case Form::scalar:
        return scalar(detail);
    case Form::scalars:
    case Form::numbers:
        return array_of(scalar(detail), capacity);
    case Form::grid: {
        const GridLayout layout(detail);
        return array_of(row_of_cells(whole<std::uint8_t>(), static_cast<std::size_t>(layout.columns)),
                        static_cast<std::size_t>(layout.rows));
    }
    case Form::week:
        return array_of(row_of_cells(whole<std::int32_t>(), day_hours), week_days, week_days);
    case Form::hours:
        return array_of({{"type", "string"}, {"pattern", "^[01]{24}$"}}, week_days, week_days);
    case Form::sets:
        return week_of_sets();
    case Form::none:
        break;
    }
    return Json::object();
}

Json record(const View &view)
{
    Json properties = Json::object();
    for (unsigned i = 0; i < view.table.rows; ++i) {
        if (!view.holds(view.table.row(i)) || !is_shown(view.table, i))
            continue;
        Json schema = member(view.table, i);
        std::string said = limits_text(view.table, i);
        if (const netpublic::WordTable *words = row_words(view.table, view.table.row(i)))
            said += (said.empty() ? "" : ": ") + words_text(*words, is_mask(view.table, i));
        if (!said.empty() && i < view.table.keys)
            schema["description"] = "in a body: " + said;
        properties[name_of(view.table, i)] = schema;
    }
    return {{"type", "object"}, {"properties", properties}, {"additionalProperties", false}};
}

// Bodies ------------------------------------------------------------------------------------------

constexpr char rule[] =
    "The library takes more than a schema can say: names in any case, beginnings of a name where no earlier one begins "
    "like that, children that it does not know, words in any case. It takes children in any order; where one may occur "
    "several times, the schema does not say which are required, nor how many there may be.";

class Xsd {
public:
    Xsd(std::ostream &out, bool written) : out_(out), written_(written) {}

    void print(const Entry &entry, const Table &table)
    {
        const std::string root = entry.element();
        out_ << "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n"
                "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n  <xs:annotation><xs:documentation>"
             << in_xml(entry.name() + ": " + entry.title() + ". " + entry.summary() + ' ' + rule)
             << "</xs:documentation></xs:annotation>\n"
             << "  <xs:element name=\"body\"><xs:complexType><xs:sequence><xs:element ref=\"" << root
             << "\"/></xs:sequence></xs:complexType></xs:element>\n"
             << "  <xs:element name=\"" << root << "\">\n";
        print_type({&table}, "    ");
        out_ << "  </xs:element>\n</xs:schema>\n";
    }

private:
    struct Child {
        const Table *table;
        unsigned index;
    };

    // Each name once: an earlier row takes its children.
    std::vector<Child> children_of(const std::vector<const Table *> &tables) const
    {
        std::vector<Child> children;
        std::set<std::string> names;
        for (const Table *table : tables) {
            for (unsigned index = 0; index < table->keys && !written_; ++index) {
                const auto readers = readers_of(*table, table->key(table->row(index)));
                if (std::find(readers.begin(), readers.end(), index) != readers.end() &&
                    names.insert(table->key(table->row(index))).second)
                    children.push_back({table, index});
            }
            // What is only written does no harm to a reader.
            for (unsigned i = 0; i < table->written && table->names == netpublic::Names::beginnings; ++i)
                if (names.insert(table->key(table->row(table->ordered(i)))).second)
                    children.push_back({table, table->ordered(i)});
        }
        return children;
    }

    void print_type(const std::vector<const Table *> &tables, const std::string &indent)
    {
        using netpublic::Names;
        const std::vector<Child> children = children_of(tables);
        const bool any =
            std::any_of(tables.begin(), tables.end(), [](const Table *table) { return table->names == Names::any; });
        const bool repeats = std::any_of(children.begin(), children.end(), [](const Child &child) {
            return netpublic::is_list(child.table->row(child.index).kind);
        });
        const char *model = tables.front()->names == Names::in_order ? "sequence" : repeats || any ? "choice" : "all";
        out_ << indent << "<xs:complexType><xs:" << model
             << (repeats || any ? " minOccurs=\"0\" maxOccurs=\"unbounded\"" : "") << ">\n";
        if (any)
            out_ << indent << "  <xs:any processContents=\"skip\"/>\n";
        for (const Child &child : children)
            if (!any)
                print_child(child, indent + "  ", repeats || model == std::string("sequence"));
        out_ << indent << "</xs:" << model << '>' << "<xs:anyAttribute processContents=\"skip\"/>"
             << "</xs:complexType>\n";
    }

    void print_child(const Child &child, const std::string &indent, bool once)
    {
        const Row &row = child.table->row(child.index);
        const bool required = (row.flags & netpublic::row_required) != 0;
        const std::vector<const Table *> inner = inner_tables(*child.table, child.index);
        out_ << indent << "<xs:element name=\"" << child.table->key(row) << '"'
             << (once || required ? "" : " minOccurs=\"0\"") << ">\n"
             << indent << "  <xs:annotation><xs:documentation>" << in_xml(accepted_by(*child.table, row))
             << "</xs:documentation></xs:annotation>\n";
        if (!inner.empty() && (row.flags & netpublic::row_skipped) == 0)
            print_type(inner, indent + "  ");
        else if (written_ || child.index < child.table->keys)
            print_text(*child.table, row, indent + "  ");
        out_ << indent << "</xs:element>\n";
    }

    // What the row says of a text, and no more: functions may say more.
    void print_text(const Table &table, const Row &row, const std::string &indent)
    {
        const auto restriction = [&](const char *base, const std::string &facets) {
            out_ << indent << "<xs:simpleType><xs:restriction base=\"xs:" << base << "\">" << facets
                 << "</xs:restriction></xs:simpleType>\n";
        };
        const auto facet = [](const char *name, const std::string &value) {
            std::string text; // with its quotes encoded
            TiXmlBase::EncodeString(value, &text);
            return std::string("<xs:") + name + " value=\"" + text + "\"/>";
        };
        const bool tolerant = (row.flags & netpublic::number_tolerant) != 0;
        if ((row.flags & netpublic::row_skipped) != 0 || row.kind == Kind::byte || tolerant)
            return restriction("string", "");
        switch (row.kind) {
        case Kind::flag:
            return restriction("integer", facet("minInclusive", "0") + facet("maxInclusive", "1"));
        case Kind::integer:
        case Kind::place: {
            if ((row.flags & netpublic::row_checked) == 0)
                return restriction("integer", "");
            const netpublic::Limits &range = table.limit(row.limits);
            return restriction("integer",
                               (range.low > INT_MIN ? facet("minInclusive", std::to_string(range.low)) : "") +
                                   (range.high < INT_MAX ? facet("maxInclusive", std::to_string(range.high)) : ""));
        }
        case Kind::unsigned_integer:
        case Kind::int64:
        case Kind::unsigned_longlong:
        case Kind::int_items:
            return restriction("integer", "");
        case Kind::text:
        case Kind::view:
        case Kind::counted_text:
            return restriction("string", facet("maxLength", std::to_string(table.limit(row.limits).low)));
        case Kind::word: {
            std::string words;
            if ((row.flags & (netpublic::word_keep | netpublic::word_otherwise | netpublic::word_prefix)) == 0)
                for (const std::string &one :
                     spellings(*table.ref(row.ref).words, written_ ? netpublic::Use::write : netpublic::Use::read))
                    words += facet("enumeration", one);
            return restriction("string", words);
        }
        default:
            return restriction("string", "");
        }
    }

    std::ostream &out_;
    const bool written_;
};

[[noreturn]] void undescribed(const Entry &entry)
{
    throw Failure(exit_usage, "no rows describe " + entry.name());
}

} // namespace

Json payload_schema(const Entry &entry)
{
    const Table *table = entry.table();
    if (table == nullptr)
        undescribed(entry);
    const Options options;
    Session session(entry, options);
    session.prepare();
    Json schema = record({*table, nullptr, 0, table->record_size});
    if (session.is_list(*table)) {
        schema = {{"type", "object"},
                  {"properties", {{"record", array_of(schema, session.records())}}},
                  {"additionalProperties", false}};
    }
    Json head = {{"$schema", "https://json-schema.org/draft/2020-12/schema"},
                 {"title", entry.name() + ": " + entry.title()},
                 {"description", entry.summary()}};
    head.update(schema);
    return head;
}

void print_xsd(std::ostream &out, const Entry &entry)
{
    const Table *table = entry.parses() ? entry.read() : entry.written();
    if (table == nullptr)
        undescribed(entry);
    Xsd(out, !entry.parses()).print(entry, *table);
}

} // namespace netparam
