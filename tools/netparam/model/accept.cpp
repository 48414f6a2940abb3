#include "model/accept.h"

#include "engine/matching.h"
#include "engine/member.h"
#include "model/nearest.h"
#include "model/rows.h"
#include "model/text.h"
#include "values/grid.h"

#include <tinyxml.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace netparam {
namespace {

using netpublic::Kind;
using netpublic::Row;
using netpublic::Table;
using netpublic::Use;

constexpr char no_text[] = "the element has no text", refused_number[] = "the number is refused";

constexpr char ordinary_number[] = "a whole number of at most 12 characters";

// What a function of the message accepts, in words; empty where the row says it all.
std::string own_words(const Table &table, const Row &row)
{
    return table.detail(table.index_of(row)).accepts;
}

// Characters that the number readers take, a sign among them; 0 for what is no number.
std::size_t longest_number(Kind kind)
{
    switch (kind) {
    case Kind::flag:
        return 9;
    case Kind::unsigned_integer:
        return 10;
    case Kind::int64:
    case Kind::unsigned_longlong:
        return 20;
    case Kind::integer:
    case Kind::byte:
    case Kind::place:
    case Kind::int_items:
        return 12;
    default:
        return 0;
    }
}

std::string range_of(const Table &table, const Row &row)
{
    const netpublic::Limits &range = table.limit(row.limits);
    if (range.low == INT_MIN)
        return "a whole number up to " + std::to_string(range.high);
    if (range.high == INT_MAX)
        return "a whole number from " + std::to_string(range.low);
    return "a whole number from " + std::to_string(range.low) + " to " + std::to_string(range.high);
}

std::string at_most(std::size_t characters)
{
    return std::to_string(characters) + (characters == 1 ? " character" : " characters");
}

std::size_t longest_text(const Table &table, const Row &row)
{
    return row.limits != netpublic::no_limits ? static_cast<std::size_t>(table.limit(row.limits).low) : SIZE_MAX;
}

std::string words_of(const Table &table, const Row &row)
{
    return joined(spellings(*row_words(table, row), Use::read), ", ");
}

// Another table may read the same elements once more.
std::string children_of(const Table &table, const Row &row)
{
    std::vector<std::string> keys = keys_of(*table.ref(row.ref).table);
    if (const Row *again = table.attachment(row, Kind::again))
        for (const std::string &key : keys_of(*table.ref(again->offset).table))
            if (std::find(keys.begin(), keys.end(), key) == keys.end())
                keys.push_back(key);
    return (keys.size() == 1 ? "the child " : "the children ") + joined(keys, ", ");
}

// "exactly 4 "
std::string list_size(const Table &table, const Row &row)
{
    const std::string capacity = std::to_string(table.capacity(row));
    return table.capacity(row) == INT_MAX             ? ""
           : (row.flags & netpublic::list_exact) != 0 ? "exactly " + capacity + " "
                                                      : "at most " + capacity + " ";
}

bool has_range(const Row &row)
{
    return (row.kind == Kind::integer || row.kind == Kind::place || row.kind == Kind::byte) &&
           (row.flags & netpublic::row_checked) != 0;
}

int stored_count(const Table &table, const Row &row, const void *record)
{
    const Row *kept = table.attachment(row, Kind::count);
    if (kept == nullptr)
        return -1;
    int count;
    std::memcpy(&count, static_cast<const char *>(record) + kept->offset, sizeof count);
    return count;
}

std::string number_fault(const Table &table, const Row &row, const char *text)
{
    const std::size_t length = std::strlen(text);
    if (length > longest_number(row.kind))
        return "the number is too long";
    if (std::strspn(text + (*text == '-' ? 1 : 0), "0123456789") != length - (*text == '-' ? 1 : 0))
        return "this is no whole number";
    const long long number = std::strtoll(text, nullptr, 10);
    if (has_range(row) && number >= table.limit(row.limits).low && number <= table.limit(row.limits).high &&
        table.hook(row, netpublic::Moment::then) != nullptr)
        return "the message's own code refuses this number";
    if (row.kind == Kind::flag || row.kind == Kind::place || has_range(row))
        return "the number is out of range";
    return refused_number;
}

std::string word_fault(const Table &table, const Row &row, const char *text)
{
    if (std::strlen(text) > longest_text(table, row))
        return "the word is too long";
    return no_such_word(text, spellings(*row_words(table, row), Use::read));
}

} // namespace

std::size_t longest_of(const Table &table, const Row &row)
{
    switch (row.kind) {
    case Kind::int_list:
    case Kind::grid:
        return table.longest(row);
    case Kind::text:
    case Kind::counted_text:
    case Kind::view:
    case Kind::word:
    case Kind::mask:
    case Kind::events:
    case Kind::converted:
        return longest_text(table, row) < INT_MAX ? longest_text(table, row) : 0;
    default:
        return longest_number(row.kind);
    }
}

std::vector<std::string> spellings(const netpublic::WordTable &words, Use direction)
{
    std::vector<std::string> texts;
    for (const auto &entry : words)
        if (entry.use == Use::both || entry.use == Use::whole || entry.use == direction)
            texts.emplace_back(words.text(entry));
    return texts;
}

std::vector<std::string> all_words(const netpublic::WordTable &words)
{
    std::vector<std::string> texts;
    for (const auto &entry : words)
        if (std::find(texts.begin(), texts.end(), words.text(entry)) == texts.end())
            texts.emplace_back(words.text(entry));
    return texts;
}

std::vector<std::string> keys_of(const Table &table)
{
    std::vector<std::string> keys;
    for (unsigned i = 0; i < table.keys; ++i)
        keys.emplace_back(table.key(table.row(i)));
    return keys;
}

std::string bounded_text(const Table &table, const Row &row)
{
    return longest_text(table, row) == INT_MAX ? "a text" : "a text of at most " + at_most(longest_text(table, row));
}

namespace {

// What the row itself accepts.
std::string accepted_by_row(const Table &table, const Row &row)
{
    switch (row.kind) {
    case Kind::place:
        return "the item's place in the list, from 0";
    case Kind::integer:
    case Kind::byte:
        return has_range(row) ? range_of(table, row) : ordinary_number;
    case Kind::flag:
        return "0 or 1";
    case Kind::unsigned_integer:
    case Kind::int64:
    case Kind::unsigned_longlong:
        return "a whole number of at most " + at_most(longest_number(row.kind));
    case Kind::real:
        return "a number";
    case Kind::text:
    case Kind::counted_text:
    case Kind::view:
        return bounded_text(table, row);
    case Kind::converted:
        return row_words(table, row) != nullptr && own_words(table, row).empty()
                   ? "one of these words: " + words_of(table, row)
                   : bounded_text(table, row);
    case Kind::word:
        return ((row.flags & netpublic::word_prefix) != 0 ? "one of these words or its beginning: "
                                                          : "one of these words: ") +
               words_of(table, row) + ((row.flags & netpublic::word_exact) != 0 ? " (case matters)" : "");
    case Kind::mask:
    case Kind::events:
        return bounded_text(table, row) + " with any of: none, " + words_of(table, row);
    case Kind::int_list:
        return "whole numbers joined by commas, at most " + std::to_string(table.capacity(row)) + " of them in " +
               at_most(table.longest(row));
    case Kind::int_items:
        return "a whole number of at most 12 characters, " + list_size(table, row) + "of them";
    case Kind::group:
    case Kind::wire:
        return "an element with " + children_of(table, row);
    case Kind::list:
    case Kind::wires:
        return list_size(table, row) + "elements with " + children_of(table, row);
    case Kind::grid:
        return "a text of at most " + at_most(table.longest(row)) +
               ": the grid's cells in base64, row after row, eight to a byte";
    default:
        return "";
    }
}

} // namespace

std::string accepted_by(const Table &table, const Row &row)
{
    const std::string words = own_words(table, row), says = accepted_by_row(table, row);
    if (words.empty() || says.empty() || says == ordinary_number || says == "a text")
        return words.empty() ? says : words;
    return says + ": " + words;
}

namespace {

// What is wrong with a grid's text that has the right length.
std::string grid_fault(const Table &table, const Row &row, const void *record, const char *text)
{
    const netpublic::Limits &sides = table.limit(row.limits);
    const int columns = netpublic::member_at<int>(record, sides.low),
              rows = netpublic::member_at<int>(record, sides.high);
    const std::string size = std::to_string(columns) + " x " + std::to_string(rows);
    if (*text == '\0')
        return no_text;
    if (columns < 1 || columns > netpublic::grid_columns || rows < 1 || rows > netpublic::grid_rows)
        return "there is no grid of " + size + " cells";
    const int count = netpublic::count_cells(text, static_cast<int>(std::strlen(text)),
                                             netpublic::grid_columns * netpublic::grid_rows);
    if (count < 0)
        return "this is no base64";
    return "these are " + std::to_string(count) + " cells, but a grid of " + size + " has " +
           std::to_string((columns * rows + 7) / 8 * 8) + ", filled up to whole bytes";
}

} // namespace

Verdict judge(const Table &table, const Row &row, const void *record, const TiXmlNode &node)
{
    Verdict verdict = {"the message's own code refuses this text", accepted_by(table, row), true};
    const TiXmlElement *element = node.ToElement();
    const char *text = element != nullptr ? element->GetText() : nullptr;
    if (element == nullptr) {
        verdict.reason = "this is no element; a comment or text that answers to a key is refused";
    } else if (row.kind == Kind::group || row.kind == Kind::wire) {
        verdict.reason = "its children, taken together, are refused";
        verdict.text_is_to_blame = false;
    } else if (row.kind == Kind::list || row.kind == Kind::int_items || row.kind == Kind::wires) {
        const int count = stored_count(table, row, record);
        const bool full =
            (row.flags & netpublic::list_stop) == netpublic::list_refuse && (count < 0 || count >= table.capacity(row));
        verdict.text_is_to_blame = false;
        verdict.reason = full ? "the list is full" : "the item is refused";
        if (!full && row.kind == Kind::int_items) {
            verdict.reason = text != nullptr ? number_fault(table, row, text) : no_text;
            verdict.text_is_to_blame = text != nullptr;
        }
    } else if (row.kind == Kind::grid && std::strlen(text != nullptr ? text : "") <= table.longest(row)) {
        verdict.reason = grid_fault(table, row, record, text != nullptr ? text : "");
    } else if (text == nullptr) {
        verdict.reason = no_text;
    } else if (longest_number(row.kind) > 0) {
        verdict.reason = number_fault(table, row, text);
    } else if (row.kind == Kind::word ||
               (row.kind == Kind::converted && row_words(table, row) != nullptr && own_words(table, row).empty())) {
        verdict.reason = word_fault(table, row, text);
    } else if (std::strlen(text) >
               (row.kind == Kind::grid || row.kind == Kind::int_list ? table.longest(row) : longest_text(table, row))) {
        verdict.reason = "the text is too long: " + at_most(std::strlen(text));
    } else if (row.kind == Kind::mask && (row.flags & netpublic::mask_none_conflicts) != 0) {
        verdict.reason = "\"none\" cannot stand beside other words";
    }
    return verdict;
}

} // namespace netparam
