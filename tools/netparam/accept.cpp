#include "accept.h"

#include "engine/member.h"
#include "nearest.h"
#include "text.h"

#include <tinyxml.h>

#include <climits>
#include <cstring>
#include <limits>

namespace netparam {
namespace {

using netpublic::Kind;
using netpublic::Row;
using netpublic::Table;
using netpublic::Use;

bool is_number(Kind kind)
{
    return kind == Kind::integer || kind == Kind::byte || kind == Kind::place || kind == Kind::flag ||
           kind == Kind::unsigned_integer || kind == Kind::int64 || kind == Kind::unsigned_longlong ||
           kind == Kind::int_items;
}

constexpr char no_text[] = "the element has no text", refused_number[] = "the number is refused";

constexpr char ordinary_number[] = "a whole number of at most 12 characters";

// What a function of the message accepts, in words; empty where the row says it all.
std::string own_words(const Table &table, const Row &row)
{
    return table.detail(static_cast<unsigned>(&row - &table.row(0))).accepts;
}

// Characters that the number readers take, a sign among them.
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
    default:
        return 12;
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
    return joined(spellings(*table.ref(row.ref).words, Use::read), ", ");
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

std::string number_fault(const Row &row, const char *text)
{
    const std::size_t length = std::strlen(text);
    if (length > longest_number(row.kind))
        return "the number is too long";
    if (std::strspn(text + (*text == '-' ? 1 : 0), "0123456789") != length - (*text == '-' ? 1 : 0))
        return "this is no whole number";
    if (row.kind == Kind::flag || (row.kind == Kind::integer && (row.flags & netpublic::row_checked) != 0))
        return "the number is out of range";
    return refused_number;
}

std::string word_fault(const Table &table, const Row &row, const char *text)
{
    if (std::strlen(text) > longest_text(table, row))
        return "the word is too long";
    const auto near = nearest(text, spellings(*table.ref(row.ref).words, Use::read), 1);
    return near.empty() ? "no such word" : "no such word; did you mean \"" + near.front() + "\"?";
}

} // namespace

std::vector<std::string> spellings(const netpublic::WordTable &words, Use direction)
{
    std::vector<std::string> texts;
    for (const auto &entry : words)
        if (entry.use == Use::both || entry.use == direction)
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

std::string accepted_by(const Table &table, const Row &row)
{
    if (const std::string words = own_words(table, row); !words.empty())
        return words;
    switch (row.kind) {
    case Kind::integer:
    case Kind::byte:
    case Kind::place:
        return (row.flags & netpublic::row_checked) != 0 ? range_of(table, row) : ordinary_number;
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
        return longest_text(table, row) == INT_MAX ? "a text"
                                                   : "a text of at most " + at_most(longest_text(table, row));
    case Kind::word:
        return ((row.flags & netpublic::word_prefix) != 0 ? "one of these words or its beginning: "
                                                          : "one of these words: ") +
               words_of(table, row) + ((row.flags & netpublic::word_exact) != 0 ? " (case matters)" : "");
    case Kind::mask:
    case Kind::events:
        return "a text of at most " + at_most(longest_text(table, row)) + " with any of: none, " + words_of(table, row);
    case Kind::int_list:
        return "whole numbers joined by commas, at most " + std::to_string(table.capacity(row)) + " of them in " +
               at_most(table.longest(row));
    case Kind::int_items:
        return "a whole number of at most 12 characters, " + std::to_string(table.capacity(row)) + " of them";
    case Kind::group:
    case Kind::wire:
    case Kind::list:
    case Kind::wires: {
        const std::vector<std::string> keys = keys_of(*table.ref(row.ref).table);
        const bool list = row.kind == Kind::list || row.kind == Kind::wires;
        return (!list                            ? "an element with "
                : table.capacity(row) == INT_MAX ? "elements with "
                : (row.flags & netpublic::list_exact) != 0
                    ? std::to_string(table.capacity(row)) + " elements with "
                    : "at most " + std::to_string(table.capacity(row)) + " elements with ") +
               "the children " + joined(keys, ", ");
    }
    case Kind::converted:
        return longest_text(table, row) == INT_MAX ? "a text"
                                                   : "a text of at most " + at_most(longest_text(table, row));
    case Kind::grid:
        return "a text of at most " + at_most(table.longest(row)) + ": the cells of the grid in base64";
    default:
        return "";
    }
}

namespace {

// What is wrong with a grid's text that has the right length.
std::string grid_fault(const Table &table, const Row &row, const void *record, const char *text)
{
    const netpublic::Limits &sides = table.limit(row.limits);
    const int columns = netpublic::member_at<int>(record, sides.low),
              rows = netpublic::member_at<int>(record, sides.high);
    if (*text == '\0')
        return no_text;
    return "these are not the cells of a grid of " + std::to_string(columns) + " x " + std::to_string(rows) +
           " in base64";
}

} // namespace

Verdict judge(const Table &table, const Row &row, const void *record, const TiXmlNode &node)
{
    Verdict verdict = {"the value is refused", accepted_by(table, row), true};
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
            verdict.reason = text != nullptr ? number_fault(row, text) : no_text;
            verdict.text_is_to_blame = text != nullptr;
        }
    } else if (row.kind == Kind::grid && std::strlen(text != nullptr ? text : "") <= table.longest(row)) {
        verdict.reason = grid_fault(table, row, record, text != nullptr ? text : "");
    } else if (text == nullptr) {
        verdict.reason = no_text;
    } else if (is_number(row.kind)) {
        verdict.reason = number_fault(row, text);
    } else if (row.kind == Kind::word) {
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
