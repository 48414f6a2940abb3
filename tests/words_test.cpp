// Words of codes and codes of words, lists of numbers, base64. Exact copies, cuts and texts at random: the
// fuzz targets "words", "lists", "base64" and "grid".
#include "cases.h"
#include "ground/words.h"

#include <net_public.h>

#include <climits>
#include <cstring>
#include <string>
#include <vector>

namespace {

using test::Arguments;
using test::Call;
using test::left_in;
using test::log_of;
using test::number;
using test::outcome;
using test::pointer;

class WordsTest : public test::HostTest {};

constexpr int untouched = 77;

// The result and the word in a buffer that begins with '~'.
template <class Get> Call word_of_code(Get get)
{
    return [get](Arguments &arguments) {
        char word[64] = "~";
        const bool nowhere = pointer(arguments.at(1)) == nullptr;
        const int size = nowhere ? 16 : number(arguments[1]);
        const int result = get(number(arguments.at(0)), nowhere ? nullptr : word, size);
        return outcome(result, word);
    };
}

template <class Text> Call code_of_word(int (*get)(int *, Text *))
{
    return [get](Arguments &arguments) {
        int code = untouched;
        char any[] = "x";
        EXPECT_EQ(get(nullptr, any), -1);
        const int result = get(&code, pointer(arguments.at(0)));
        return outcome(result, code);
    };
}

std::vector<int> numbers_of(const std::string &text)
{
    std::istringstream in(text);
    std::vector<int> numbers;
    for (int next; in >> next;)
        numbers.push_back(next);
    return numbers;
}

time_section_t events_of(const std::string &codes)
{
    time_section_t set = {};
    for (const int code : numbers_of(codes))
        alarm_in_add_event(&set, code);
    return set;
}

std::string rules_of(Arguments &arguments, bool known)
{
    int mask = 0x40; // is not cleared
    const int result = get_type_and_index_from_smart_ai(events_of("29 31 33 37 42 44"), arguments.at(0).data(), mask);
    EXPECT_TRUE(known || result != 0);
    return (known ? outcome(result) + " " : "") + outcome(mask);
}

std::string list_of_numbers(Arguments &arguments)
{
    std::vector<int> numbers = numbers_of(arguments.at(0));
    const int size = number(arguments.at(2)), count = static_cast<int>(numbers.size());
    numbers.reserve(1); // no numbers are no null pointer
    int result = 0;
    const std::string text = left_in(static_cast<std::size_t>(size), [&](char *out) {
        result = changeIntTableToString(out, size, numbers.data(), count, number(arguments.at(1)));
    });
    return outcome(result, text);
}

std::string numbers_of_list(Arguments &arguments)
{
    std::vector<int> numbers(static_cast<std::size_t>(number(arguments.at(1))) + 1, 99);
    const int room = static_cast<int>(numbers.size()) - 1;
    const int result = changeStringToIntTable(arguments.at(0).data(), numbers.data(), room, -1);
    EXPECT_EQ(numbers.back(), 99);
    numbers.pop_back();
    return outcome(result, test::all_of(numbers));
}

std::string encode_cells(Arguments &arguments)
{
    char out[64];
    std::string cells = arguments.at(0);
    auto *bits = reinterpret_cast<unsigned char *>(cells.data());
    const int result = EncodeBinaryArrayToBase64(bits, out, static_cast<int>(cells.size()), number(arguments.at(1)));
    EXPECT_EQ(result, static_cast<int>(std::strlen(out)));
    return outcome(result, out);
}

// A converter to a buffer, of which so many bytes are shown, or as many as it may fill.
template <class Char, class Size, class Text, class Length>
Call converter(int (*convert)(Char *, Size, Text *, Length), int shown = -1)
{
    return [=](Arguments &arguments) {
        int result = 0;
        std::string &in = arguments.at(0);
        const int size = number(arguments.at(1));
        const std::string out = left_in(static_cast<std::size_t>(shown < 0 ? size : shown), [&](char *to) {
            result = convert(reinterpret_cast<Char *>(to), static_cast<Size>(size), reinterpret_cast<Text *>(in.data()),
                             static_cast<Length>(in.size()));
        });
        return outcome(result, out);
    };
}

// The packed tables themselves, with what the shared ones do not have.
constexpr netpublic::Word fruit_list[] = {
    {1, "apple"}, {2, "Apple pie"}, {2, "pie", netpublic::Use::read}, {4, "plum", netpublic::Use::write}, {8, "pea"}};
constexpr auto fruits = netpublic::words<fruit_list>();

std::string code_in(const netpublic::WordTable::Entry *entry)
{
    return entry != nullptr ? std::to_string(entry->code()) : "none";
}

TEST_F(WordsTest, Cases)
{
    test::run_cases(
        "words.txt",
        {{"get_weekday_string", word_of_code(get_weekday_string)},
         {"get_osd_format_string", word_of_code(get_osd_format_string)},
         {"get_language_string", word_of_code(get_language_string)},
         {"get_databit_string", word_of_code(get_databit_string)},
         {"get_streamtype_str", word_of_code([](int code, char *dst, int size) {
              const char *word = get_streamtype_str(static_cast<STREAM_TYPE_E>(code), dst, size);
              return word == dst && dst != nullptr ? 0 : -1;
          })},
         {"get_handleType_string", word_of_code(get_handleType_string)},
         {"get_alarm_in_type_string",
          [](Arguments &arguments) {
              int index = untouched;
              const auto get = [&](int code, char *dst, int size) {
                  return get_alarm_in_type_string(code, dst, size, &index);
              };
              const std::string word = word_of_code(get)(arguments);
              EXPECT_EQ(word_of_code([](int code, char *dst, int size) {
                            return get_alarm_in_type_string(code, dst, size, nullptr);
                        })(arguments),
                        word);
              return outcome(word, index);
          }},
         {"get_weekday_index", code_of_word(get_weekday_index)},
         {"get_osd_format_index", code_of_word(get_osd_format_index)},
         {"get_language_index", code_of_word(get_language_index)},
         {"get_databit_index", code_of_word(get_databit_index)},
         {"get_streamtype_from_str",
          [](Arguments &arguments) {
              int code = untouched;
              const int size = number(arguments.at(1));
              EXPECT_EQ(get_streamtype_from_str(nullptr, arguments.at(0).data(), size), -1);
              const int result = get_streamtype_from_str(&code, pointer(arguments[0]), size);
              return outcome(result, code);
          }},
         {"get_handleType_intValue", code_of_word(get_handleType_intValue)},
         {"get_alarm_in_type_intValue",
          [](Arguments &arguments) {
              int code = untouched;
              const int result = get_alarm_in_type_intValue(&code, arguments.at(0).data(), number(arguments.at(1)));
              return outcome(result, code);
          }},
         {"alarm_in_add_event",
          [](Arguments &arguments) {
              const time_section_t set = events_of(arguments.at(0));
              return outcome(set.bits[0], set.bits[1]);
          }},
         {"get_type_and_index_from_smart_ai", [](Arguments &arguments) { return rules_of(arguments, true); }},
         {"get_type_and_index_from_smart_ai, unknown", [](Arguments &arguments) { return rules_of(arguments, false); }},
         {"changeIntTableToString", list_of_numbers},
         {"changeStringToIntTable", numbers_of_list},
         {"EncodeBinaryArrayToBase64", encode_cells},
         {"Base64DecodeToBinaryArray", converter(Base64DecodeToBinaryArray)},
         {"base64_encode", converter(base64_encode)},
         {"base64_decode", converter(base64_decode, 6)},
         {"find_whole",
          [](Arguments &arguments) {
              return code_in(netpublic::find_whole(fruits, arguments.at(0).c_str(), arguments.at(1) == "exact"));
          }},
         {"find_prefix",
          [](Arguments &arguments) {
              return code_in(netpublic::find_prefix(fruits, arguments.at(0).c_str(),
                                                    static_cast<std::size_t>(number(arguments.at(1)))));
          }},
         {"word_of",
          [](Arguments &arguments) {
              const char *word = netpublic::word_of(fruits, number(arguments.at(0)));
              return std::string(word != nullptr ? word : "none");
          }},
         {"mask_in", [](Arguments &arguments) { return outcome(netpublic::mask_in(fruits, arguments.at(0).c_str())); }},
         {"write_mask", [](Arguments &arguments) {
              const auto size = static_cast<std::size_t>(number(arguments.at(1)));
              return std::string(left_in(size, [&](char *out) {
                                     netpublic::write_mask(fruits, number(arguments.at(0)), out, size);
                                 }).c_str());
          }}});
}

TEST_F(WordsTest, EventsOfASet)
{
    alarm_in_add_event(nullptr, 3);
    const unsigned int all[2] = {0xffffffff, 0xffffffff};
    EXPECT_EQ(alarm_in_check_event(all, 44), 1);
    EXPECT_EQ(alarm_in_check_event(all, 45), 0) << "no such type";
    EXPECT_EQ(alarm_in_check_event(all, static_cast<unsigned int>(-1)), 0);
    EXPECT_EQ(alarm_in_check_event(nullptr, 0), 0);
    const time_section_t set = events_of("0 31 32 44");
    for (unsigned int code = 0; code <= 44; ++code)
        EXPECT_EQ(alarm_in_check_event(&set, code), code == 0 || code == 31 || code == 32 || code == 44) << code;
}

TEST_F(WordsTest, NullPointersAndMemory)
{
    int numbers[] = {1, 2};
    char text[16] = "~";
    EXPECT_EQ(changeIntTableToString(text, 8, nullptr, 2, 0), -1);
    EXPECT_EQ(Base64DecodeToBinaryArray(text, 8, nullptr, 4), -1);
    EXPECT_EQ(Base64DecodeToBinaryArray(text, -1, text, 4), -1);
    unsigned char byte = 0, bits[16] = {};
    EXPECT_EQ(base64_encode(&byte, 8, nullptr, 1), -1);
    EXPECT_EQ(base64_encode(&byte, 1, &byte, UINT_MAX), -3) << "sizes do not wrap around";
    EXPECT_EQ(base64_decode(&byte, 8, nullptr, 4), -1);
    EXPECT_EQ(EncodeBinaryArrayToBase64(bits, text, -1, 20000), -1);
    net_host_fail_allocation(1);
    EXPECT_EQ(EncodeBinaryArrayToBase64(bits, text, 8, 20000), -1);
    EXPECT_STREQ(text, "~");
    EXPECT_EQ(EncodeBinaryArrayToBase64(bits, text, 16, 20000), 4);
    EXPECT_EQ(net_host_memory().last_size, 3u);
    char cells[1] = {9}, some[] = "QQ==";
    EXPECT_EQ(Base64DecodeToBinaryArray(cells, 1, some, -4), -1);
    EXPECT_EQ(cells[0], 0);

    modulemask = 0; // the line is printed all the same
    net_host_fail_allocation(1);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(changeIntTableToString(text, 8, numbers, 2, 0), -1); }), "pbuff malloc fail\n");
    EXPECT_EQ(std::string(text, 8), std::string(8, '\0'));
    EXPECT_EQ(changeIntTableToString(text, 8, numbers, 2, 0), 0);
    EXPECT_EQ(net_host_memory().last_size, 8u);
}

TEST_F(WordsTest, CharactersOfBase64)
{
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (int c = 0; c < 256; ++c) {
        const std::size_t value = alphabet.find(static_cast<char>(c));
        const bool known = value != std::string::npos;
        EXPECT_EQ(GetBase64Value(static_cast<char>(c)), known ? static_cast<int>(value) : 0) << c;
        EXPECT_EQ(is_base64_char(static_cast<char>(c)), known || c == '=') << c;
    }
}

} // namespace
