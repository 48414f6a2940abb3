#include "verbs/describe.h"

#include "model/accept.h"
#include "model/facts.h"
#include "model/rows.h"
#include "verbs/command_line.h"
#include "verbs/reference.h"
#include "verbs/schema.h"

#include <algorithm>
#include <climits>

namespace netparam {
namespace {

using netpublic::Kind;
using netpublic::Row;
using netpublic::Table;
using netpublic::Use;
using netpublic::WordTable;

struct DescribeOptions {
    std::string message, examples, schema;
    bool all = false, json = false, page = false, rows = false;
    Style style;
};

// Backquotes are for the page alone.
std::string plain(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '`'), text.end());
    return text;
}

struct Line {
    std::string name, member, text;
};

// `writes`: the message has a writer, too.
void add_lines(std::vector<Line> &lines, const Table &table, const std::string &indent, bool writes)
{
    for (const RowFacts &row : facts_of(table, writes)) {
        Line line = {indent + (row.has_key ? row.name : "-"), row.declared(), row.accepts};
        if (row.words != nullptr)
            line.text += (line.text.empty() ? "words: " : ": ") + row.spelled;
        for (const std::string &note : row.notes)
            line.text += (line.text.empty() ? "" : "; ") + plain(note);
        if (!row.order.empty())
            line.text += "; written in this order: " + joined(row.order, ", ");
        for (const RowFacts::Inner &inner : row.inner)
            line.text += inner.notes.empty() ? "" : "; " + plain(inner.notes);
        lines.push_back(line);
        for (const RowFacts::Inner &inner : row.inner)
            add_lines(lines, *inner.table, indent + "  ", inner.written);
    }
}

void print_aside(std::ostream &out, const std::string &label, const std::string &text, std::size_t column,
                 const Style &style)
{
    constexpr std::size_t least = 30;
    const std::size_t room = style.width > column + least ? style.width - column : least;
    std::string aligned = wrapped(text, room);
    for (std::size_t at = 0; (at = aligned.find('\n', at)) != std::string::npos;)
        aligned.insert(++at, std::string(column, ' '));
    const std::size_t gap = label.size() + 2 <= column ? column - label.size() : 0;
    out << label << (gap > 0 ? std::string(gap, ' ') : "\n" + std::string(column, ' ')) << aligned << '\n';
}

// The members alone, not how they are read.
void add_members(std::vector<Line> &lines, const Table &table, const std::string &indent)
{
    for (const RowFacts &row : facts_of(table, false)) {
        lines.push_back({indent + row.name, row.type + " " + row.member, row.spelled});
        for (const RowFacts::Inner &inner : row.inner)
            add_members(lines, *inner.table, indent + "  ");
    }
}

void print_lines(std::ostream &out, const std::string &heading, const std::vector<Line> &lines, const Style &style)
{
    std::size_t column = 0;
    for (const Line &line : lines)
        column = std::max(column, line.name.size() + 2);
    column = std::min<std::size_t>(column, 34);
    out << '\n' << style.heading(heading) << '\n';
    for (const Line &line : lines)
        print_aside(out, line.name, line.member + (line.member.empty() || line.text.empty() ? "" : ": ") + line.text,
                    column, style);
}

void print_table(std::ostream &out, const std::string &heading, const Table &table, bool writes, const Style &style)
{
    std::vector<Line> lines;
    add_lines(lines, table, "  ", writes);
    print_lines(out, heading, lines, style);
    if (writes && table.written > 0) {
        out << '\n' << style.heading("Written in this order") << '\n';
        print_aside(out, "", joined(written_order(table), ", "), 2, style);
    }
}

void print_message(std::ostream &out, const Entry &entry, const Style &style)
{
    constexpr std::size_t column = 16;
    const Table *read = entry.message->read, *written = entry.message->written;
    const auto line = [&](const char *label, const std::string &text) {
        print_aside(out, std::string("  ") + label, plain(text), column, style);
    };
    out << style.heading(entry.name()) << ": " << entry.title() << '\n';
    line("", entry.summary());
    line("initialiser", entry.initialiser != nullptr ? entry.initialiser->name + (", id " + id_text(entry))
                                                     : "none: the host prepares the envelope");
    line("payload", (entry.table() != nullptr ? entry.table()->record + std::string(", ") : "") +
                        std::to_string(entry.size()) + " bytes");
    line("parser", !entry.parses()
                       ? "none"
                       : entry.parser() + (read != nullptr ? ": " + read_check(*read) : ": code of its own"));
    line("writer", !entry.writes() ? "none"
                                   : entry.writer() + (entry.root().empty() ? "" : ", root <" + entry.root() + ">") +
                                         (written != nullptr ? ": " + write_check(*written) : ": writes nothing"));
    for (const Table *table : {read, read != written ? written : nullptr}) {
        if (table == nullptr)
            continue;
        if (table == written && read != nullptr && read != written)
            out << '\n' << style.heading("What is written") << '\n';
        for (const std::string &note : table_notes(*table))
            line("note", note);
        print_table(out, table->keys != 0 ? "Keys, in the order in which they are tried" : "Elements", *table,
                    table == written, style);
    }
    if (const Table *payload = entry.table(); payload != nullptr && payload != read && payload != written) {
        std::vector<Line> lines;
        add_members(lines, *payload, "  ");
        print_lines(out, "What the payload holds", lines, style);
    }
}

Json words_json(const WordTable &words)
{
    Json list = Json::array();
    for (const auto &entry : words)
        list.push_back({{"code", entry.code()},
                        {"word", words.text(entry)},
                        {"use", entry.use == Use::both    ? "both"
                                : entry.use == Use::read  ? "read"
                                : entry.use == Use::whole ? "whole"
                                                          : "write"}});
    return list;
}

Json plain_list(const std::vector<std::string> &texts)
{
    Json list = Json::array();
    for (const std::string &text : texts)
        list.push_back(plain(text));
    return list;
}

Json table_json(const Table &table, bool writes);

const char *names_rule(netpublic::Names names)
{
    constexpr const char *rules[] = {"beginnings", "whole", "longer", "any", "in_order", "looked_up"};
    return rules[static_cast<std::size_t>(names)];
}

// Which of a table's keys are the grid's columns and rows.
Json sides_of(const Table &table, const Row &grid)
{
    const netpublic::Limits &sides = table.limit(grid.limits);
    Json keys = Json::array();
    for (const int side : {sides.low, sides.high})
        for (unsigned i = 0; i < table.keys; ++i)
            if (table.row(i).kind == Kind::integer && static_cast<int>(table.row(i).offset) == side)
                keys.push_back(table.key(table.row(i)));
    return keys;
}

// How a child is matched and judged, where that is not the rule.
void add_rules(Json &json, const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    const auto add = [&](unsigned flag, const char *name) {
        if ((row.flags & flag) == flag)
            json[name] = true;
    };
    add(netpublic::row_own_test, "own_test");
    add(netpublic::row_skipped, "skipped");
    if (row.kind == Kind::integer)
        add(netpublic::number_tolerant, "tolerant");
    if (row.kind == Kind::word) {
        add(netpublic::word_prefix, "prefix");
        add(netpublic::word_exact, "case");
        if ((row.flags & netpublic::word_adds) != 0)
            json["unknown"] = "taken";
    }
    if (row.kind == Kind::mask)
        add(netpublic::mask_none_conflicts, "none_alone");
    if (netpublic::is_list(row.kind)) {
        add(netpublic::list_exact, "exactly");
        const unsigned beyond = row.flags & netpublic::list_stop;
        json["beyond"] = beyond == netpublic::list_refuse ? "refused"
                         : beyond == netpublic::list_last ? "overwrites the last one"
                                                          : "ignored";
    }
    if (row.kind == Kind::grid)
        json["sides"] = sides_of(table, row);
    if (table.detail(index).sample != nullptr && *table.detail(index).sample != '\0')
        json["sample"] = table.detail(index).sample;
}

Json row_json(const Table &table, const RowFacts &facts)
{
    const unsigned index = facts.index;
    const Row &row = table.row(index);
    Json json;
    json["key"] = facts.has_key ? Json(table.key(row)) : Json();
    json["kind"] = kind_name(row.kind);
    if (facts.in_payload) {
        json["member"] = facts.member;
        json["type"] = facts.type;
        json["offset"] = row.offset;
        json["bytes"] = facts.bytes;
    }
    json["read"] = index < table.keys;
    json["written"] = facts.written;
    json["required"] = (row.flags & netpublic::row_required) != 0;
    add_rules(json, table, index);
    if ((row.kind == Kind::integer || (row.kind == Kind::byte && (row.flags & netpublic::number_bit) == 0)) &&
        (row.flags & netpublic::row_checked) != 0)
        json["range"] = {table.limit(row.limits).low, table.limit(row.limits).high};
    if (const std::size_t longest = longest_of(table, row); longest != 0)
        json["longest"] = longest;
    if (netpublic::is_list(row.kind) && table.capacity(row) != INT_MAX)
        json["capacity"] = table.capacity(row);
    json["accepts"] = plain(facts.accepts);
    if (facts.words != nullptr)
        json["words"] = words_json(*facts.words);
    json["notes"] = plain_list(facts.notes);
    for (const RowFacts::Inner &inner : facts.inner)
        json[&inner == &facts.inner.front() ? "record" : "again"] = table_json(*inner.table, inner.written);
    return json;
}

Json table_json(const Table &table, bool writes)
{
    Json json = {{"type", table.record},
                 {"size", in_payload(table) ? Json(table.record_size) : Json()}, // another one is each machine's own
                 {"names", names_rule(table.names)},
                 {"others_fail", (table.flags & netpublic::table_others_fail) != 0},
                 {"first_only", (table.flags & netpublic::table_first_only) != 0},
                 {"notes", plain_list(table_notes(table))}};
    Json rows = Json::array();
    for (const RowFacts &row : facts_of(table, writes))
        rows.push_back(row_json(table, row));
    json["keys"] = rows;
    json["order"] = writes ? Json(written_order(table)) : Json::array();
    return json;
}

// The members alone, not how they are read.
Json members_json(const Table &table)
{
    Json members = Json::array();
    for (const RowFacts &row : facts_of(table, false)) {
        Json json = {{"name", row.name},
                     {"member", row.member},
                     {"type", row.type},
                     {"offset", table.row(row.index).offset},
                     {"bytes", row.bytes}};
        if (row.words != nullptr)
            json["words"] = words_json(*row.words);
        for (const RowFacts::Inner &inner : row.inner)
            json["record"] = members_json(*inner.table);
        members.push_back(json);
    }
    return members;
}

} // namespace

Json entry_json(const Entry &entry)
{
    const auto optional = [](const std::string &text) { return text.empty() ? Json() : Json(text); };
    return {{"name", optional(entry.message != nullptr ? entry.name() : "")},
            {"title", optional(entry.title())},
            {"summary", optional(entry.summary())},
            {"id", id_text(entry) == "-" ? Json() : Json(entry.initialiser->id)},
            {"size", entry.size()},
            {"initialiser", optional(entry.initialiser != nullptr ? entry.initialiser->name : "")},
            {"parser", optional(entry.parser())},
            {"writer", optional(entry.writer())},
            {"root", optional(entry.root())},
            {"element", optional(entry.element())}};
}

Json message_json(const Entry &entry)
{
    const Table *read = entry.message->read, *written = entry.message->written;
    Json json = entry_json(entry);
    json["domain"] = entry.domain();
    json["read_check"] = read != nullptr ? Json(plain(read_check(*read))) : Json();
    json["write_check"] = written != nullptr ? Json(plain(write_check(*written))) : Json();
    // One table for both directions stands under "read" alone.
    json["read"] = read != nullptr ? table_json(*read, read == written) : Json();
    json["written"] = written != nullptr && written != read ? table_json(*written, true) : Json();
    const Table *payload = entry.table();
    if (payload != nullptr && payload != read && payload != written)
        json["payload"] = members_json(*payload);
    return json;
}

namespace {

ExitCode describe(std::ostream &out, std::ostream & /*errors*/, const DescribeOptions &options)
{
    if (options.all == !options.message.empty())
        throw Failure(exit_usage, options.all ? "describe takes a MESSAGE or --all, not both"
                                              : "which message? \"netparam list\" shows them; --all describes all");
    if (options.page) {
        print_page(out, options.examples.empty() ? Examples() : read_examples(options.examples));
        return exit_ok;
    }
    if (options.rows) {
        print_rows(out);
        return exit_ok;
    }
    if (!options.schema.empty()) {
        const Entry &entry = find_message(options.message);
        if (options.schema == "xsd")
            print_xsd(out, entry);
        else
            out << payload_schema(entry).dump(2) << '\n';
        return exit_ok;
    }
    std::vector<const Entry *> wanted;
    if (!options.all)
        wanted.push_back(&find_message(options.message));
    else
        for (const Entry &entry : entries())
            if (entry.message != nullptr)
                wanted.push_back(&entry);
    Json list = Json::array();
    for (const Entry *entry : wanted) {
        if (options.json)
            list.push_back(message_json(*entry));
        else
            print_message(out << (entry == wanted.front() ? "" : "\n\n"), *entry, options.style);
    }
    if (options.json)
        out << (options.all ? list : list.front()).dump(2) << '\n';
    return exit_ok;
}

} // namespace

void add_describe(CommandLine &line)
{
    auto [verb, options] = line.add_verb("describe", "What a message's keys accept, and how it is written", describe);
    verb.add_option("MESSAGE", options.message,
                    "Its name, or that of its initialiser, parser, writer or root element; see \"netparam list\"");
    CLI::Option *all = verb.add_flag("--all", options.all, "All messages");
    CLI::Option *json = verb.add_flag("--json", options.json, "As JSON");
    verb.add_option("--schema", options.schema,
                    "Of the payload in JSON as a JSON Schema, or of the bodies as an XML Schema")
        ->check(CLI::IsMember({"json", "xsd"}))
        ->excludes(all)
        ->excludes(json);
    CLI::Option *page = verb.add_flag("--markdown", options.page, "All messages as a page in Markdown")->needs(all);
    verb.add_option("--examples", options.examples,
                    "A folder with a list of examples, messages.txt: one of each message goes into the page")
        ->type_name("FOLDER")
        ->needs(page);
    verb.add_flag("--rows", options.rows, "All tables, a line a row, for comparisons")
        ->needs(all)
        ->excludes(json)
        ->excludes(page);
    page->excludes(json);
    line.explain(
        verb,
        "Shows what the tables say: keys, members, ranges, words, the order in which the children are written, "
        "and what is unusual. Where code of the message's own takes part, that is said.",
        {"netparam describe md", "netparam describe md --json | jq '.read.keys[].key'",
         "netparam describe md --schema xsd > md.xsd",
         "netparam describe --all --markdown --examples examples > messages.md"});
}

} // namespace netparam
