// Base64, grids, words and lists of numbers against the plain algorithms.
#include "bytes.h"
#include "host.h"
#include "promises.h"
#include "targets.h"
#include "typed.h"
#include "values/grid.h"
#include "values/tables.h"

#include <net_public.h>
#include <net_xml_words.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <random>
#include <strings.h>

namespace fuzz {
namespace {

constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

bool is_base64(char c)
{
    return c == '=' || (c != '\0' && std::strchr(alphabet, c) != nullptr);
}

unsigned value_of(char c)
{
    const char *found = c == '\0' ? nullptr : std::strchr(alphabet, c);
    return found != nullptr ? static_cast<unsigned>(found - alphabet) : 0;
}

// Bytes as base64, broken after each group with which a line reaches length - 3 characters.
std::string plain_encode(const std::string &bytes, long long line_length)
{
    std::string text;
    long long line = 0;
    std::size_t at = 0;
    const auto byte = [&](std::size_t i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u; };
    for (; at < bytes.size(); at += 3) {
        const unsigned group = byte(at) << 16 | byte(at + 1) << 8 | byte(at + 2);
        const std::size_t given = std::min<std::size_t>(bytes.size() - at, 3);
        for (std::size_t i = 0; i < 4; ++i)
            text += i <= given ? alphabet[group >> (18 - 6 * i) & 63] : '=';
        line += 4;
        if (given == 3 && line >= line_length - 3) {
            text += "\r\n";
            line = 0;
        }
    }
    return text;
}

struct Decoded {
    bool valid;
    std::string bits; // one character a bit, '\0' or '\1'
};

Decoded plain_bits(const std::string &text, std::size_t most)
{
    Decoded decoded{text.size() % 4 == 0, ""};
    if (!decoded.valid)
        return decoded;
    for (std::size_t at = 0; at < text.size() && decoded.bits.size() < most; at += 4) {
        unsigned group = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            if (!is_base64(text[at + i]))
                return {false, decoded.bits};
            group = group << 6 | value_of(text[at + i]);
        }
        const unsigned bytes = text[at + 2] == '=' ? 1 : text[at + 3] == '=' ? 2 : 3;
        for (unsigned bit = 0; bit < bytes * 8 && decoded.bits.size() < most; ++bit)
            decoded.bits += static_cast<char>(group >> (23 - bit) & 1);
        if (bytes < 3)
            break;
    }
    return decoded;
}

std::string pack_bits(const std::string &bits)
{
    std::string bytes((bits.size() + 7) / 8, '\0');
    for (std::size_t i = 0; i < bits.size(); ++i)
        if (bits[i] != 0)
            bytes[i / 8] = static_cast<char>(static_cast<unsigned char>(bytes[i / 8]) | 0x80u >> i % 8);
    return bytes;
}

void check_bit_encoder(const std::string &bits, int line_length)
{
    const std::string expected = plain_encode(pack_bits(bits), line_length);
    Guarded in(bits.data(), bits.size());
    Guarded out(expected.size() + 1);
    const int length = EncodeBinaryArrayToBase64(in.as<>(), out.as<char>(), static_cast<int>(bits.size()), line_length);
    require(length == static_cast<int>(expected.size()), "P9", "the length of encoded bits");
    require(expected == out.as<char>(), "P9", "encoded bits");
}

void check_bit_decoder(const std::string &text, std::size_t most)
{
    const Decoded expected = plain_bits(text, most);
    Guarded in(text.data(), text.size());
    Guarded out(most);
    const int count =
        Base64DecodeToBinaryArray(out.as<char>(), static_cast<int>(most), in.as<char>(), static_cast<int>(text.size()));
    require(count == (expected.valid ? static_cast<int>(expected.bits.size()) : -1), "P9", "the number of bits");
    const std::string padded = expected.bits + std::string(most - expected.bits.size(), '\0');
    require(std::memcmp(out.as<>(), padded.data(), most) == 0, "P9", "decoded bits");
}

void check_byte_encoder(const std::string &bytes, unsigned size)
{
    const std::string expected = plain_encode(bytes, 1LL << 60);
    Guarded in(bytes.data(), bytes.size());
    Guarded out(size);
    const int length = base64_encode(out.as<>(), size, in.as<>(), static_cast<unsigned>(bytes.size()));
    const bool fits = size > expected.size();
    require(length == (fits ? static_cast<int>(expected.size()) : -3), "P9", "the length of encoded bytes");
    if (fits)
        require(expected == out.as<char>(), "P9", "encoded bytes");
}

void check_byte_decoder(const std::string &text, unsigned size)
{
    std::size_t padding = 0;
    if (text.size() >= 2)
        padding = std::size_t{text[text.size() - 1] == '='} + std::size_t{text[text.size() - 2] == '='};
    int expected = 0;
    bool ends_early = false; // then the text may decode to more or less than its length says
    std::string bytes;
    if (text.size() % 4 != 0) {
        expected = -2;
    } else if (text.size() * 3 > 4 * (size + padding)) {
        expected = -3;
    } else if (!std::all_of(text.begin(), text.end(), is_base64)) {
        expected = -4;
    } else {
        for (std::size_t at = 0; at < text.size(); at += 4) {
            const Decoded group = plain_bits(text.substr(at, 4), 24);
            bytes += pack_bits(group.bits);
            ends_early |= group.bits.size() < 24 && at + 4 < text.size();
        }
        expected = static_cast<int>(bytes.size());
    }
    Guarded in(text.data(), text.size());
    Guarded out(size);
    const int count = base64_decode(out.as<>(), size, in.as<>(), static_cast<unsigned>(text.size()));
    require(count <= static_cast<int>(size), "P2", "more bytes than there is room for");
    if (ends_early)
        return;
    require(count == expected, "P9", "the result of decoding bytes");
    if (expected > 0)
        require(std::memcmp(out.as<>(), bytes.data(), bytes.size()) == 0, "P9", "decoded bytes");
}

void check_rectangle(const std::string &text, int columns, int rows, bool by_columns)
{
    const int stride = by_columns ? netpublic::grid_rows : netpublic::grid_columns;
    const int count = columns * rows;
    const Decoded decoded = plain_bits(text, 15500);
    const std::string &cells = decoded.bits;
    const int held = netpublic::count_cells(text.data(), static_cast<int>(text.size()), 15500);
    require(held == (decoded.valid ? static_cast<int>(cells.size()) : -1), "P9", "how many cells a text holds");
    if (held < count)
        return;
    constexpr std::size_t whole = netpublic::grid_columns * netpublic::grid_rows;
    const std::string before(whole, '\x5A');
    Guarded in(text.data(), text.size());
    Guarded grid(before.data(), whole);
    if (by_columns) {
        netpublic::read_columns(in.as<char>(), grid.as<>(), columns, rows, stride);
    } else {
        netpublic::read_rows(in.as<char>(), grid.as<>(), columns, rows, stride);
    }
    std::string expected = before;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            expected[static_cast<std::size_t>(by_columns ? column * stride + row : row * stride + column)] =
                cells[static_cast<std::size_t>(row * columns + column)];
    require(std::memcmp(grid.as<>(), expected.data(), whole) == 0, "P9", "the cells of a grid");

    Guarded bits(cells.data(), static_cast<std::size_t>(count));
    std::string encoded(static_cast<std::size_t>(count) / 6 + 8, '~');
    const int length = EncodeBinaryArrayToBase64(bits.as<>(), encoded.data(), count, INT_MAX);
    const netpublic::Grid rectangle = {grid.as<>(), columns, rows, by_columns};
    encoded.resize(static_cast<std::size_t>(length));
    require(netpublic::encoded_length(rectangle) == encoded.size(), "P9", "the length of a grid's text");
    for (const std::size_t part : {encoded.size(), encoded.size() - 1, encoded.size() / 2, std::size_t{1}}) {
        Guarded made(part);
        netpublic::encode_grid(rectangle, made.as<char>(), part);
        require(std::string(made.as<char>(), part) == encoded.substr(0, part), "P9", "the text of a grid");
    }
}

// Word tables

using netpublic::WordTable;

// Not inlined: gcc cannot see that the words follow the table.
[[gnu::noinline]] const WordTable::Entry *plain_prefix(const WordTable &words, const std::string &text)
{
    for (const auto &entry : words)
        if (entry.use != netpublic::Use::write && strncasecmp(words.text(entry), text.c_str(), text.size()) == 0)
            return &entry;
    return nullptr;
}

constexpr int untouched = 0x5A5A5A;

// The lookup stores a code, or leaves it alone.
template <class Word>
void check_index(int (*lookup)(int *, Word *), const WordTable &words, const std::string &text, bool lenient)
{
    Guarded word(text.c_str(), text.size() + 1);
    int code = untouched;
    const WordTable::Entry *expected = plain_prefix(words, text);
    const int result = lookup(&code, word.as<Word>());
    require(result == (expected != nullptr || lenient ? 0 : -1), "P9", "whether a word has a code");
    require(code == (expected != nullptr ? expected->code() : untouched), "P9", "the code of a word");
}

void check_word_lookups(const std::string &text, int length)
{
    check_index(get_weekday_index, netpublic::weekdays, text, false);
    check_index(get_osd_format_index, netpublic::date_formats, text, false);
    check_index(get_language_index, netpublic::languages, text, true);
    check_index(get_databit_index, netpublic::data_bits, text, false);
    Guarded copy(text.c_str(), text.size() + 1);
    int code = untouched, expected = untouched;
    if (length > 0)
        for (const auto &stream : netpublic::stream_type_list)
            if (expected == untouched && strncasecmp(text.c_str(), stream.text, static_cast<std::size_t>(length)) == 0)
                expected = stream.code;
    const int result = get_streamtype_from_str(&code, copy.as<char>(), length);
    require(result == (expected != untouched ? 0 : -1) && code == expected, "P9", "a stream type");
}

void check_sets(const std::string &text, int index)
{
    Guarded copy(text.c_str(), text.size() + 1);
    int mask = untouched, expected = 0;
    if (strcasestr(text.c_str(), "none") == nullptr)
        for (const auto &word : netpublic::alarm_action_list)
            expected |= strcasestr(text.c_str(), word.text) != nullptr ? word.code : 0;
    const int result = get_handleType_intValue(&mask, copy.as<char>());
    require(result == 0 && mask == expected, "P9", "alarm actions");
    int code = untouched, last = untouched;
    for (const auto &word : netpublic::alarm_type_list)
        if (strcasestr(text.c_str(), word.text) != nullptr)
            last = word.code >= netpublic::smart_ai_first && word.code <= netpublic::smart_ai_last ? word.code + index
                                                                                                   : word.code;
    const bool refused = index < 0 || index > 2;
    require(get_alarm_in_type_intValue(&code, copy.as<char>(), index) == (refused ? -1 : 0), "P9",
            "an alarm type's result");
    require(code == (refused ? untouched : last), "P9", "an alarm type");
}

// What a bounded copy makes of a buffer: the text, zeros behind it, and nothing of the last byte.
std::string copied(std::string buffer, const std::string &text)
{
    for (std::size_t i = 0; i + 1 < buffer.size(); ++i)
        buffer[i] = i < text.size() ? text[i] : '\0';
    return buffer;
}

constexpr char filling = '~';

// The buffer as `write` leaves it.
template <class Write> void check_buffer(const std::string &expected, Write write, const char *what)
{
    Guarded out(expected.size());
    std::memset(out.as<>(), filling, expected.size());
    write(out.as<char>());
    require(std::memcmp(out.as<>(), expected.data(), expected.size()) == 0, "P9", what);
}

void check_word_of(int code, int size, const char *expected, int (*get)(int code, char *out, int size))
{
    const std::string before(static_cast<std::size_t>(size), filling);
    const auto write = [&](char *out) {
        require((get(code, out, size) == 0) == (expected != nullptr), "P9", "whether a code has a word");
    };
    check_buffer(expected != nullptr ? copied(before, expected) : before, write, "the word of a code");
}

void check_words_of(int code, int size)
{
    const auto word = [code](const WordTable &words) { return netpublic::word_of(words, code); };
    const bool language_beyond = code > netpublic::language_last;
    check_word_of(code, size, word(netpublic::weekdays), get_weekday_string);
    check_word_of(code, size, word(netpublic::date_formats), get_osd_format_string);
    check_word_of(code, size, language_beyond ? "English" : word(netpublic::languages), get_language_string);
    check_word_of(code, size, word(netpublic::data_bits), get_databit_string);
    if (code >= 0 && code <= 7) // what the enumeration can hold
        check_word_of(code, size, word(netpublic::stream_types), [](int c, char *dst, int s) {
            return get_streamtype_str(static_cast<STREAM_TYPE_E>(c), dst, s) == dst ? 0 : -1;
        });
}

// The writers of words empty the front of their buffer first.
std::string emptied(int size)
{
    std::string buffer(static_cast<std::size_t>(size), filling);
    std::fill_n(buffer.begin(), std::min(size, 4), '\0');
    return buffer;
}

// In small steps: each word is appended to the text in the buffer, cut at size - 2 characters, and copied back.
void check_actions_out(int mask, int size)
{
    std::string expected = emptied(size);
    bool any = false;
    for (const auto &word : netpublic::alarm_action_list) {
        if ((mask & word.code) == 0)
            continue;
        any = true;
        const std::string text = expected.c_str() + std::string(word.text);
        expected = copied(expected, text.substr(0, static_cast<std::size_t>(std::max(size - 2, 0))));
    }
    check_buffer(
        any ? expected : copied(expected, "none"),
        [&](char *out) { require(get_handleType_string(mask, out, size) == 0, "P9", "alarm actions as words"); },
        "the words of alarm actions");
}

void check_type_out(int code, int size)
{
    const bool smart = code >= netpublic::smart_ai_first && code <= netpublic::smart_ai_last;
    const int rule = smart ? (code - netpublic::smart_ai_first) % netpublic::smart_ai_rules : 0;
    const char *word = netpublic::word_of(netpublic::alarm_types, code - rule);
    int index = untouched;
    check_buffer(
        copied(emptied(size), word != nullptr ? word : "none"),
        [&](char *out) {
            require(get_alarm_in_type_string(code, out, size, &index) == 0, "P9", "an alarm type as a word");
        },
        "the word of an alarm type");
    require(index == (smart ? rule : untouched), "P9", "the rule of an alarm type");
}

// Lists of numbers

void check_numbers_out(const std::vector<int> &numbers, int size, int trailing)
{
    std::size_t count = numbers.size();
    while (count > 0 && numbers[count - 1] == trailing)
        --count;
    std::string expected;
    for (std::size_t i = 0; i < count; ++i)
        expected += (i != 0 ? "," : "") + std::to_string(numbers[i]);
    Guarded table(numbers.data(), numbers.size() * sizeof(int));
    Guarded out(static_cast<std::size_t>(size));
    const int result =
        changeIntTableToString(out.as<char>(), size, table.as<int>(), static_cast<int>(numbers.size()), trailing);
    require(result == 0, "P9", "numbers as a list");
    require(expected.substr(0, static_cast<std::size_t>(size) - 1) == out.as<char>(), "P9", "the list of numbers");
}

void check_numbers_in(const std::string &text, std::size_t count, int fill)
{
    std::vector<int> expected(count, fill);
    int filled = 0;
    std::size_t at = 0;
    while (at < text.size() && static_cast<std::size_t>(filled) < count && filled >= 0) {
        std::size_t end = at;
        while (end < text.size() && text[end] != ',' && end - at < 31)
            ++end;
        if (end - at == 31) {
            filled = -1;
            break;
        }
        // What does not fit an int is the platform's to say.
        const long value = std::strtol(text.substr(at, end - at).c_str(), nullptr, 10);
        expected[static_cast<std::size_t>(filled++)] = static_cast<int>(value);
        at = end + 1;
    }
    Guarded in(text.c_str(), text.size() + 1);
    Guarded table(count * sizeof(int));
    const int result = changeStringToIntTable(in.as<char>(), table.as<int>(), static_cast<int>(count), fill);
    require(result == filled, "P9", "how many numbers a list holds");
    require(std::memcmp(table.as<>(), expected.data(), count * sizeof(int)) == 0, "P9", "the numbers of a list");
}

std::string without_nul(std::string text)
{
    return text.substr(0, text.find('\0'));
}

} // namespace

void run_base64(const std::uint8_t *data, std::size_t size)
{
    Host host;
    Bytes input(data, size);
    const unsigned room = input.number<std::uint16_t>() % 1024;
    const int line = input.number<std::int8_t>();
    const std::string text = input.text(input.left());
    check_bit_encoder(text, line);
    check_bit_encoder(text, 20000);
    check_bit_decoder(text, room);
    check_bit_decoder(text, 15500);
    check_byte_encoder(text, room);
    check_byte_decoder(text, room);
    check_byte_decoder(plain_encode(text, 1LL << 60), static_cast<unsigned>(text.size()));
}

void run_grid(const std::uint8_t *data, std::size_t size)
{
    Host host;
    Bytes input(data, size);
    const int columns = 1 + input.byte() % netpublic::grid_columns;
    const int rows = 1 + input.byte() % netpublic::grid_rows;
    const bool by_columns = input.byte() % 2 != 0;
    std::string text = input.text(input.left());
    // Short inputs fill large grids as well.
    const std::size_t wanted = (static_cast<std::size_t>(columns * rows) + 23) / 24 * 4;
    if (!text.empty() && text.find_first_of("=") == std::string::npos)
        while (text.size() < wanted)
            text += text.substr(0, wanted - text.size());
    check_rectangle(text, columns, rows, by_columns);
}

void run_words(const std::uint8_t *data, std::size_t size)
{
    Host host;
    Bytes input(data, size);
    const int code = input.number<std::int8_t>();
    const int mask = input.number<std::int16_t>();
    const int room = 1 + input.byte();
    const int length = input.number<std::int8_t>();
    const int index = input.byte() % 8 - 2;
    const std::string text = without_nul(input.text(input.left()));
    check_word_lookups(text, length);
    check_sets(text, index);
    check_words_of(code, room);
    check_actions_out(mask, room);
    check_type_out(code, room);
}

void run_lists(const std::uint8_t *data, std::size_t size)
{
    Host host;
    Bytes input(data, size);
    const int room = 1 + input.byte();
    const int other = input.number<std::int8_t>();
    const std::size_t count = 1 + input.byte() % 64;
    const bool wide = input.byte() % 2 != 0;
    const std::string text = without_nul(std::string(reinterpret_cast<const char *>(input.rest()), input.left()));
    check_numbers_in(text, count, other);
    std::vector<int> numbers;
    while (input.left() != 0 && numbers.size() < 200)
        numbers.push_back(wide ? input.number<std::int32_t>() : input.number<std::int8_t>());
    if (!numbers.empty())
        check_numbers_out(numbers, room, other);
}

namespace {

// Of the characters that make up such inputs, behind a head of any bytes.
void random_seeds(const Sink &sink, const char *name, const std::string &characters, int count)
{
    std::mt19937 random(7);
    for (; count > 0; --count) {
        std::string input(random() % 90, '\0');
        for (std::size_t i = 0; i < input.size(); ++i)
            input[i] = i < 6 ? static_cast<char>(random()) : characters[random() % characters.size()];
        sink(name, input);
    }
}

} // namespace

void base64_seeds(const Sink &sink)
{
    sink("alphabet", std::string("\x40\x00\x10", 3) + alphabet);
    typed_seeds("base64.txt", sink, std::string("\xFF\x00\x08", 3));
    // Of grids, the first bytes are the columns and rows less one.
    for (const auto &[columns, rows] : {std::pair{1, 1}, {155, 100}, {96, 64}, {155, 1}, {1, 100}, {7, 9}, {8, 8}})
        for (const char by_columns : {'\0', '\1'})
            sink("shape",
                 std::string{static_cast<char>(columns - 1), static_cast<char>(rows - 1), by_columns} + alphabet);
    std::string all(alphabet);
    random_seeds(sink, "good", all, 300);
    random_seeds(sink, "padded", all + "==", 300);
    random_seeds(sink, "foreign", all + "=!\x80", 100);
}

void list_seeds(const Sink &sink)
{
    typed_seeds("lists.txt", sink, std::string("\x20\x00\x04\x00", 4));
    random_seeds(sink, "short", "0123456789999,,,,", 300);
    random_seeds(sink, "long", "0123456789, -+x\n", 300);
}

// Each word, then codes, masks and sizes of all kinds.
void word_seeds(const Sink &sink)
{
    const std::string head("\x1D\x03\x02\x10\x20\x02", 6);
    for (const auto &word : netpublic::alarm_type_list)
        sink("type", head + word.text);
    typed_seeds("words.txt", sink, head);
    for (int code = -2; code < 50; ++code)
        for (const char room : {'\0', '\1', '\3', '\5', '\11', '\100'})
            sink("code", {static_cast<char>(code), static_cast<char>(code * 37), static_cast<char>(code % 4), room});
    random_seeds(sink, "words", "MDYCNS_io,snaprecv ", 100);
}

} // namespace fuzz
