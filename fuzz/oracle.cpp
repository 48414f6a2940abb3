#include "oracle.h"

#include "engine/matching.h"
#include "promises.h"

#include <net_types.h>

#include <cstdlib>
#include <cstring>
#include <strings.h>

namespace fuzz {

RowCounters row_counters = {nullptr, 0};

namespace {

using namespace netpublic;

std::string place(const Table &table, const Row *row, Node node)
{
    return std::string(table.place().file()) + ":" + std::to_string(table.place().line()) + ", key \"" +
           (row != nullptr ? table.key(*row) : "") + "\", child \"" + node.name() + "\"";
}

// The rule of names, as plainly as it can be said.
bool answers(const Table &table, const char *name, const Row &row)
{
    const char *key = table.key(row);
    switch (table.names) {
    case Names::whole:
        return strncasecmp(name, key, 31) == 0;
    case Names::longer:
        return strncasecmp(name, key, std::strlen(key)) == 0;
    case Names::looked_up:
        return std::strcmp(name, key) == 0;
    default:
        return strncasecmp(name, key, std::strlen(name)) == 0;
    }
}

// Is it the first row of its chain that the name answers to?
bool takes(const Table &table, const char *name, unsigned index)
{
    unsigned first = index;
    while (first > 0 && (table.row(first).flags & row_own_test) == 0)
        --first;
    for (unsigned i = first; i < index; ++i)
        if (answers(table, name, table.row(i)))
            return false;
    return index < table.keys && answers(table, name, table.row(index));
}

bool nobody_takes(const Table &table, const char *name)
{
    for (unsigned i = 0; i < table.keys; ++i)
        if (answers(table, name, table.row(i)))
            return false;
    return true;
}

// What a reader must find. `known` is false where the rule is another one.
struct Expected {
    bool known = true;
    bool accepted = false;
    char bytes[8] = {};
    std::size_t size = 0; // of `bytes`, which the member then holds; 0 when nothing is stored
    const char *text = nullptr;

    template <class Type> void store(Type value)
    {
        std::memcpy(bytes, &value, sizeof value);
        size = sizeof value;
    }
};

bool is_number(const char *text, std::size_t longest)
{
    if (text == nullptr)
        return false;
    const std::size_t length = std::strlen(text);
    if (length < 1 || length > longest)
        return false;
    const char *digits = text + (*text == '-');
    return std::strspn(digits, "0123456789") == std::strlen(digits);
}

std::uint64_t wrapped(const char *text)
{
    const bool negative = *text == '-';
    std::uint64_t value = 0;
    for (const char *at = text + negative; *at != '\0'; ++at)
        value = value * 10 + static_cast<std::uint64_t>(*at - '0');
    return negative ? 0 - value : value;
}

const WordTable::Entry *lookup(const WordTable &words, const char *text, unsigned flags)
{
    for (const auto &entry : words) {
        if (entry.use == Use::write)
            continue;
        const char *word = words.text(entry);
        const bool begins = (flags & word_prefix) != 0 && entry.use != Use::whole;
        const bool same = begins                      ? strncasecmp(text, word, std::strlen(text)) == 0
                          : (flags & word_exact) != 0 ? std::strcmp(text, word) == 0
                                                      : strcasecmp(text, word) == 0;
        if (same)
            return &entry;
    }
    return nullptr;
}

void expect_word(Expected &expected, const Table &table, const Row &row, const char *text)
{
    const auto *entry = lookup(*table.ref(row.ref).words, text, row.flags);
    expected.accepted = entry != nullptr || (row.flags & (word_keep | word_otherwise)) != 0;
    if ((row.flags & word_adds) == word_adds)
        expected.known = false; // depends on what the member held
    else if (entry != nullptr)
        expected.store(static_cast<int>(entry->code()));
    else if ((row.flags & word_otherwise) != 0)
        expected.store(static_cast<int>(table.limit(row.limits).high));
}

void expect_mask(Expected &expected, const Table &table, const Row &row, const char *text)
{
    if ((row.flags & (mask_accumulates | mask_last)) != 0) {
        expected.known = false; // depends on what the member held
        return;
    }
    const bool none = strcasestr(text, "none") != nullptr;
    expected.accepted = true;
    if (none && (row.flags & mask_none_clears) != 0)
        return expected.store(0);
    const WordTable &words = *table.ref(row.ref).words;
    int found = 0;
    for (const auto &entry : words)
        if (entry.use != Use::write && strcasestr(text, words.text(entry)) != nullptr)
            found |= entry.code();
    expected.store(found | table.limit(row.limits).high);
    expected.accepted = !(none && found != 0 && (row.flags & mask_none_conflicts) != 0);
}

void expect_integer(Expected &expected, const Table &table, const Row &row, const char *text)
{
    if (!is_number(text, 12))
        return;
    const int value = std::atoi(text);
    expected.store(value);
    expected.accepted = (row.flags & row_checked) == 0 ||
                        (value >= table.limit(row.limits).low && value <= table.limit(row.limits).high);
}

Expected expect(const Table &table, const Row &row, Node node)
{
    Expected expected;
    const bool element = node.is_element();
    const char *text = node.text();
    const char *or_empty = text != nullptr ? text : "";
    const auto fits = [&](std::size_t longest) { return element && std::strlen(or_empty) <= longest; };
    const auto low = [&] { return static_cast<std::size_t>(table.limit(row.limits).low); };
    switch (row.kind) {
    case Kind::integer:
        if ((row.flags & number_tolerant) != 0)
            expected.known = false;
        else
            expect_integer(expected, table, row, text);
        break;
    case Kind::flag:
        if (is_number(text, 9)) {
            expected.store(std::atoi(text));
            expected.accepted = static_cast<unsigned>(std::atoi(text)) <= 1;
        }
        break;
    case Kind::unsigned_integer:
        if ((expected.accepted = is_number(text, 10)))
            expected.store(static_cast<unsigned>(std::strtoul(text, nullptr, 10)));
        break;
    case Kind::int64:
        if ((expected.accepted = is_number(text, 20)))
            expected.store(wrapped(text));
        break;
    case Kind::unsigned_longlong:
        if ((expected.accepted = is_number(text, 20)))
            expected.store(std::strtoull(text, nullptr, 10));
        break;
    case Kind::real:
        if ((expected.accepted = text != nullptr))
            expected.store(static_cast<float>(std::atof(text)));
        break;
    case Kind::text:
        if ((expected.accepted = fits(low())))
            expected.text = or_empty;
        break;
    case Kind::counted_text:
        expected.accepted = fits(sizeof(net_counted_text_t::text) - 1);
        break;
    case Kind::view:
        expected.accepted = fits(low());
        break;
    case Kind::word:
        if (fits(low()))
            expect_word(expected, table, row, or_empty);
        break;
    case Kind::mask:
        if (fits(low()))
            expect_mask(expected, table, row, or_empty);
        break;
    case Kind::events:
        expected.accepted = fits(low());
        break;
    default:
        expected.known = false;
        break;
    }
    return expected;
}

// Does a function of the message have the last word?
bool has_hook(const Table &table, const Row &row)
{
    return table.hook(row, Moment::then) != nullptr;
}

void check_value(const Table &table, const Row &row, const char *member, Node node, bool taken)
{
    Expected expected = expect(table, row, node);
    if (expected.known && expected.accepted && !taken && has_hook(table, row))
        expected.accepted = false;
    if (!expected.known)
        return;
    if (expected.accepted != taken)
        broken("P9", place(table, &row, node) + (taken ? ": taken against the rule" : ": refused against the rule"));
    if (expected.size != 0 && std::memcmp(member, expected.bytes, expected.size) != 0)
        broken("P9", place(table, &row, node) + ": another value than the text says");
    if (expected.text != nullptr && std::strcmp(member, expected.text) != 0)
        broken("P9", place(table, &row, node) + ": another text");
}

void count(const Table &table, unsigned row, Event event)
{
    if (row_counters.size == 0)
        return;
    const std::size_t slot =
        (reinterpret_cast<std::uintptr_t>(&table) / sizeof(void *) * 40503 + row * 8 + static_cast<unsigned>(event));
    std::uint8_t &counter = row_counters.counters[slot % row_counters.size];
    if (counter != UINT8_MAX)
        ++counter;
}

} // namespace

bool is_secret_key(const char *key)
{
    for (const char *secret : {"password", "token", "key", "secret", "pwd"})
        if (strcasestr(key, secret) != nullptr)
            return true;
    return false;
}

Oracle::Oracle(const void *payload) : watch_{this, happened}, payload_(static_cast<const char *>(payload))
{
    netpublic::watch = &watch_;
}

Oracle::~Oracle()
{
    netpublic::watch = nullptr;
}

void Oracle::check_log(std::string_view log, const std::string &source) const
{
    const std::string_view beginning = std::string_view(secret_mark).substr(0, 3);
    const auto count = [beginning](std::string_view text) {
        std::size_t found = 0;
        for (std::size_t at = 0; (at = text.find(beginning, at)) != std::string_view::npos; ++at)
            ++found;
        return found;
    };
    std::size_t secret = 0;
    for (const std::string &text : secrets_) {
        require(log.find(text) == std::string_view::npos, "P12", "a secret in a log line");
        secret += count(text);
    }
    require(secret == 0 || secret != count(source) || count(log) == 0, "P12",
            "the first characters of a secret in a log line");
}

void Oracle::happened(void *self, Event event, const Table &table, const Row *row, void *record, Node node)
{
    Oracle &oracle = *static_cast<Oracle *>(self);
    // Where names do not decide alone, the children's order or their number does.
    const bool by_name = table.names != Names::any && table.names != Names::in_order && table.names != Names::looked_up;
    const unsigned index = row != nullptr ? table.index_of(*row) : 0;
    count(table, index, event);
    if (oracle.payload_ != nullptr) {
        const Member member = {row, static_cast<const char *>(record) - oracle.payload_};
        if (event == Event::taken)
            oracle.members_.insert(member);
        else if ((event == Event::refused || event == Event::placeless) && oracle.refused_.first == nullptr)
            oracle.refused_ = member;
    }
    switch (event) {
    case Event::taken:
    case Event::refused:
        oracle.taken_ += event == Event::taken;
        if (by_name && !takes(table, node.name(), index))
            broken("P9", place(table, row, node) + ": another row's child");
        if ((row->flags & row_skipped) == 0)
            check_value(table, *row, static_cast<const char *>(record) + row->offset, node, event == Event::taken);
        if (is_secret_key(table.key(*row)) && node.is_element()) {
            const char *text = node.text();
            if (text != nullptr && std::strncmp(text, secret_mark, sizeof secret_mark - 1) == 0)
                oracle.secrets_.push_back(text);
        }
        break;
    case Event::ignored:
        ++oracle.ignored_;
        if (by_name && !nobody_takes(table, node.name()))
            broken("P9", place(table, row, node) + ": ignored, although a key is there");
        break;
    case Event::placeless: // not read at all
    case Event::missing:
    case Event::unwritten: // not while a body is read
        break;
    }
}

} // namespace fuzz
