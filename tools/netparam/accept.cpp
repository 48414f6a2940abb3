#include "accept.h"

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
    return kind == Kind::integer || kind == Kind::flag || kind == Kind::unsigned_integer || kind == Kind::int64 ||
           kind == Kind::unsigned_longlong || kind == Kind::int_items;
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
    for (unsigned at = row.attached; at != 0; at = table.row(at).attached)
        if (table.row(at).kind == Kind::count) {
            int count;
            std::memcpy(&count, static_cast<const char *>(record) + table.row(at).offset, sizeof count);
            return count;
        }
    return -1;
}

std::string number_fault(const Table &table, const Row &row, const char *text)
{
    const std::size_t length = std::strlen(text);
    if (length > longest_number(row.kind))
        return "the number is too long";
    if (std::strspn(text + (*text == '-' ? 1 : 0), "0123456789") != length - (*text == '-' ? 1 : 0))
        return "this is no whole number";
    if (row.kind == Kind::flag || ((row.flags & netpublic::row_checked) != 0 && row.limits != netpublic::no_limits))
        return "the number is out of range";
    static_cast<void>(table);
    return "the number is refused";
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

std::string accepted_by(const Table &table, const Row &row)
{
    switch (row.kind) {
    case Kind::integer:
        return (row.flags & netpublic::row_checked) != 0 ? range_of(table, row)
                                                         : "a whole number of at most 12 characters";
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
        return "a text of at most " + at_most(longest_text(table, row));
    case Kind::word:
        return ((row.flags & netpublic::word_prefix) != 0 ? "one of these words or its beginning: "
                                                          : "one of these words: ") +
               words_of(table, row) + ((row.flags & netpublic::word_exact) != 0 ? " (case matters)" : "");
    case Kind::mask:
    case Kind::events:
        return "a text of at most " + at_most(longest_text(table, row)) + " with any of: none, " + words_of(table, row);
    case Kind::int_list:
        return "whole numbers joined by commas, at most " + std::to_string(row.size) + " of them in " +
               at_most(longest_text(table, row));
    case Kind::int_items:
        return "a whole number of at most 12 characters, " + std::to_string(row.size) + " of them";
    case Kind::group:
    case Kind::list: {
        const Table &inner = *table.ref(row.ref).table;
        std::vector<std::string> keys;
        for (unsigned i = 0; i < inner.keys; ++i)
            keys.emplace_back(inner.key(inner.row(i)));
        return (row.kind == Kind::list ? "at most " + std::to_string(row.size) + " elements with "
                                       : "an element with ") +
               "the children " + joined(keys, ", ");
    }
    default:
        return "";
    }
}

Verdict judge(const Table &table, const Row &row, const void *record, const TiXmlNode &node)
{
    Verdict verdict = {"the value is refused", accepted_by(table, row), true};
    const TiXmlElement *element = node.ToElement();
    const char *text = element != nullptr ? element->GetText() : nullptr;
    if (element == nullptr) {
        verdict.reason = "this is no element; a comment or text that answers to a key is refused";
    } else if (row.kind == Kind::group || row.kind == Kind::custom) {
        verdict.reason = row.kind == Kind::group ? "its children, taken together, are refused"
                                                 : "the message's own code refuses this element";
        verdict.text_is_to_blame = text != nullptr;
    } else if (row.kind == Kind::list || row.kind == Kind::int_items) {
        const int count = stored_count(table, row, record);
        const bool full = (row.flags & netpublic::list_refuse) != 0 && (count < 0 || count >= row.size);
        verdict.text_is_to_blame = false;
        verdict.reason = full ? "the list is full" : "the item is refused";
        if (!full && row.kind == Kind::int_items && text != nullptr) {
            verdict.reason = number_fault(table, row, text);
            verdict.text_is_to_blame = true;
        }
    } else if (text == nullptr) {
        verdict.reason = "the element has no text";
    } else if (is_number(row.kind)) {
        verdict.reason = number_fault(table, row, text);
    } else if (row.kind == Kind::word) {
        verdict.reason = word_fault(table, row, text);
    } else if (std::strlen(text) > longest_text(table, row)) {
        verdict.reason = "the text is too long: " + at_most(std::strlen(text));
    }
    return verdict;
}

} // namespace netparam
