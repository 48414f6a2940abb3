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

constexpr char no_text[] = "the element has no text", refused_number[] = "the number is refused";

constexpr char device_name[] =
    "a text of at most 31 characters, printable ASCII without any of $ & * / : ; < > ? \\ ` |";
constexpr char ordinary_number[] = "a whole number of at most 12 characters";

// What the messages' own code accepts, by the key; for a key that several messages read in different ways, by
// the function, too. A longest text of 0 stands for a number.
constexpr struct {
    const char *key, *function, *accepted;
    std::size_t longest_text;
} own_readers[] = {
    {"area", "net_ai_area_detect_x2s", "a text of at most 2999 characters: the cells in base64", 2999},
    {"baudRate", nullptr, "one of these numbers: 1200, 2400, 4800, 9600", 0},
    {"channelNum", nullptr, "a whole number from 0", 0},
    {"checkFrame", nullptr, ordinary_number, 0},
    {"chn", nullptr, ordinary_number, 0},
    {"deviceName", nullptr, device_name, 31},
    {"e", nullptr, "a whole number from 0: seconds since midnight", 0},
    {"frameRate", nullptr, ordinary_number, 0},
    {"id", "", "the item's place in the list, from 0", 0},
    {"inputId", nullptr, "a whole number from 0, less than the device has alarm inputs", 0},
    {"mac", nullptr, "a text of 17 characters, such as 00:1a:2b:3c:4d:5e", 17},
    {"name", "nets_osd_chn_x2s", device_name, 31},
    {"offsetOfEnd", nullptr, ordinary_number, 0},
    {"offsetOfStart", nullptr, ordinary_number, 0},
    {"outputId", nullptr, "a whole number from 0, less than the device has alarm outputs", 0},
    {"s", nullptr, "a whole number from 0: seconds since midnight", 0},
    {"stopBit", nullptr, "1 or 2", 0},
    {"streamType", "get_file_header_from_xmlnode", "a stream's word of at most 31 characters", 31},
    {"streamType", "nets_param_new_replay_start_x2s", "a text of at most 30 characters", 30},
    {"userSetState", nullptr, "one of these words: delete, modify", 15},
    {"validHours", nullptr, "-1, or a whole number from 1", 0},
    {"ver", nullptr, "a text of at most 15 characters", 15},
    {"weekDay", nullptr, "everyday, or a weekday or its beginning", 15},
};

const auto *own_reader(const Table &table, const Row &row)
{
    for (const auto &reader : own_readers)
        if (std::strcmp(reader.key, table.key(row)) == 0 &&
            (reader.function == nullptr || std::strcmp(reader.function, table.parser()) == 0))
            return &reader;
    return static_cast<decltype(&own_readers[0])>(nullptr);
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

std::string own_fault(const Table &table, const Row &row, const char *text)
{
    constexpr char unknown[] = "the message's own code refuses this element";
    const auto *reader = own_reader(table, row);
    if (reader == nullptr)
        return unknown;
    if (reader->longest_text > 0)
        return text != nullptr && std::strlen(text) > reader->longest_text
                   ? "the text is too long: " + at_most(std::strlen(text))
                   : "the message's own code refuses this text";
    if (text == nullptr)
        return no_text;
    const std::string fault = number_fault(row, text);
    return fault == refused_number ? "the number is out of range" : fault;
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
        return "whole numbers joined by commas, at most " + std::to_string(table.capacity(row)) + " of them in " +
               at_most(netpublic::longest_int_list);
    case Kind::int_items:
        return "a whole number of at most 12 characters, " + std::to_string(table.capacity(row)) + " of them";
    case Kind::group:
    case Kind::list: {
        const std::vector<std::string> keys = keys_of(*table.ref(row.ref).table);
        return (row.kind == Kind::list ? "at most " + std::to_string(table.capacity(row)) + " elements with "
                                       : "an element with ") +
               "the children " + joined(keys, ", ");
    }
    case Kind::custom: {
        const auto *reader = own_reader(table, row);
        return reader != nullptr ? reader->accepted : "";
    }
    default:
        return "";
    }
}

namespace {

// Of an element whose reader is the message's own code, the rows at least name the members.
std::string accepted_by_own_code(const Table &table, const Row &row)
{
    unsigned index = 0;
    while (&table.row(index) != &row)
        ++index;
    const Table *inner = table.detail(index).shown;
    if (inner == nullptr || inner->keys == 0)
        return "";
    return "an element with children such as " + joined(keys_of(*inner), ", ") + "; the message's own code decides";
}

} // namespace

Verdict judge(const Table &table, const Row &row, const void *record, const TiXmlNode &node)
{
    Verdict verdict = {"the value is refused", accepted_by(table, row), true};
    const TiXmlElement *element = node.ToElement();
    const char *text = element != nullptr ? element->GetText() : nullptr;
    if (element == nullptr) {
        verdict.reason = "this is no element; a comment or text that answers to a key is refused";
    } else if (row.kind == Kind::group) {
        verdict.reason = "its children, taken together, are refused";
        verdict.text_is_to_blame = false;
    } else if (row.kind == Kind::custom) {
        verdict.reason = own_fault(table, row, text);
        if (verdict.accepted.empty())
            verdict.accepted = accepted_by_own_code(table, row);
        verdict.text_is_to_blame = text != nullptr;
    } else if (row.kind == Kind::list || row.kind == Kind::int_items) {
        const int count = stored_count(table, row, record);
        const bool full = (row.flags & netpublic::list_refuse) != 0 && (count < 0 || count >= table.capacity(row));
        verdict.text_is_to_blame = false;
        verdict.reason = full ? "the list is full" : "the item is refused";
        if (!full && row.kind == Kind::int_items) {
            verdict.reason = text != nullptr ? number_fault(row, text) : no_text;
            verdict.text_is_to_blame = text != nullptr;
        }
    } else if (text == nullptr) {
        verdict.reason = no_text;
    } else if (is_number(row.kind)) {
        verdict.reason = number_fault(row, text);
    } else if (row.kind == Kind::word) {
        verdict.reason = word_fault(table, row, text);
    } else if (std::strlen(text) > longest_text(table, row)) {
        verdict.reason = "the text is too long: " + at_most(std::strlen(text));
    } else if (row.kind == Kind::mask && (row.flags & netpublic::mask_none_conflicts) != 0) {
        verdict.reason = "\"none\" cannot stand beside other words";
    }
    return verdict;
}

} // namespace netparam
