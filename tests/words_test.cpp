// Words of codes and codes of words, lists of numbers. Exact copies, cuts and texts at random: the fuzz targets
// "words" and "lists".
#include "support.h"
#include "values/tables.h"

#include <net_public.h>

#include <climits>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

using test::log_of;

class WordsTest : public test::HostTest {};

// A function that writes the word of a code and one that reads it, without their differences in type.
using ToWord = int (*)(int, char *, int);
using ToCode = int (*)(int *, char *);

int osd_format_index(int *code, char *word)
{
    return get_osd_format_index(code, word);
}

int language_index(int *code, char *word)
{
    return get_language_index(code, word);
}

int databit_index(int *code, char *word)
{
    return get_databit_index(code, word);
}

int stream_type_word(int code, char *dst, int size)
{
    return get_streamtype_str(static_cast<STREAM_TYPE_E>(code), dst, size) == dst && dst != nullptr ? 0 : -1;
}

int stream_type_index(int *code, char *word)
{
    return get_streamtype_from_str(code, word, word != nullptr ? static_cast<int>(std::strlen(word)) : 4);
}

int rule_less_type(int code, char *dst, int size)
{
    return get_alarm_in_type_string(code, dst, size, nullptr);
}

std::string word_of(ToWord to_word, int code)
{
    char word[64] = "~";
    return to_word(code, word, sizeof word) == 0 ? word : "refused";
}

constexpr int refused = -8;
constexpr int kept = -7; // accepted, and the code left alone

int code_of(ToCode to_code, std::string word)
{
    int code = kept;
    const int result = to_code(&code, word.data());
    EXPECT_TRUE(result == 0 || code == kept) << word;
    return result == 0 ? code : refused;
}

TEST_F(WordsTest, EnumerationsBothWays)
{
    const struct {
        ToWord to_word;
        ToCode to_code;
        std::vector<const char *> words;
        const char *beyond;
    } enumerations[] = {
        {get_weekday_string,
         get_weekday_index,
         {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"},
         "refused"},
        {get_osd_format_string, osd_format_index, {"MDY", "YMD", "DMY"}, "MDY_CN"},
        {get_language_string,
         language_index,
         {"Chinese", "English", "Japanese", "Russian", "Italian", "Czech", "Romania", "Hungary", "France", "Spanish",
          "Portugal", "Korean", "BigCHN", "Polish", "Bulgarian", "German", "Persian", "Thai", "Hebrew"},
         "English"},
        {get_databit_string, databit_index, {"CS8", "CS7", "CS6", "CS5"}, "refused"},
        {stream_type_word,
         stream_type_index,
         {"mainStream", "subStream", "mobileStream", "snapStream", "externStream"},
         "refused"},
    };
    for (const auto &e : enumerations) {
        const int count = static_cast<int>(e.words.size());
        for (int code = 0; code < count; ++code) {
            EXPECT_EQ(word_of(e.to_word, code), e.words[static_cast<std::size_t>(code)]);
            EXPECT_EQ(code_of(e.to_code, e.words[static_cast<std::size_t>(code)]), code);
        }
        EXPECT_EQ(word_of(e.to_word, count), e.beyond);
        EXPECT_EQ(word_of(e.to_word, -1), "refused");
        char word[] = "x";
        int code = kept;
        EXPECT_EQ(e.to_code(nullptr, word), -1);
        EXPECT_EQ(e.to_code(&code, nullptr), -1);
        EXPECT_EQ(e.to_word(0, word, 0), -1);
        EXPECT_EQ(e.to_word(0, nullptr, 16), -1);
    }
    EXPECT_EQ(word_of(get_osd_format_string, 6), "refused");
    EXPECT_EQ(word_of(get_language_string, INT_MAX), "English");
}

TEST_F(WordsTest, AbbreviatedAndForeignWords)
{
    const struct {
        ToCode to_code;
        const char *word;
        int code;
    } cases[] = {
        {get_weekday_index, "t", 2},
        {get_weekday_index, "Th", 4},
        {get_weekday_index, "sA", 6},
        {get_weekday_index, "", 0},
        {get_weekday_index, "Sundays", refused},
        {databit_index, "CS9", refused},
        {databit_index, "c", 0},
        {language_index, "Klingon", kept},
        {language_index, "P", 10}, // Portugal stands before Polish and Persian
        {osd_format_index, "MDY_CN", refused},
        {osd_format_index, " MDY_CN", 3}, // is written without the blank
        {osd_format_index, " ", 3},
        {osd_format_index, "ymd_cn", 4},
        {osd_format_index, "DMY_C", 5},
        {stream_type_index, "MOBILE", 2},
        {stream_type_index, "snapshot", refused},
    };
    for (const auto &c : cases)
        EXPECT_EQ(code_of(c.to_code, c.word), c.code) << c.word;
    int code = kept;
    EXPECT_EQ(get_streamtype_from_str(&code, "subStream", 31), 0) << "the text may end earlier";
    EXPECT_EQ(get_streamtype_from_str(&code, "sub", 31), -1) << "... but then it is compared whole";
    EXPECT_EQ(get_streamtype_from_str(&code, "mainStream", 0), -1);
    EXPECT_EQ(code, 1);
}

TEST_F(WordsTest, AlarmActions)
{
    EXPECT_EQ(word_of(get_handleType_string, 0x3), "iosnap");
    EXPECT_EQ(word_of(get_handleType_string, 0x400), "none");
    EXPECT_EQ(word_of(get_handleType_string, -1), "iosnaprecledbuzzptzftpscreenrfspeakerpush");
    for (const auto &[text, mask] : {std::pair{"io,snap", 0x3},
                                     {"iosnap", 0x3},
                                     {"none,io", 0},
                                     {"IO xNONEx", 0},
                                     {"PUSH;Screen", 0x280},
                                     {"radio", 0x1}, // inside a longer word
                                     {"rec led buzz ptz ftp rfspeaker", 0x17C},
                                     {"sna", 0}})
        EXPECT_EQ(code_of(get_handleType_intValue, text), mask) << text;
    char text[] = "io";
    EXPECT_EQ(get_handleType_string(1, text, 0), -1);
}

TEST_F(WordsTest, AlarmTypes)
{
    const std::pair<int, const char *> words[] = {
        {-1, "none"},      {0, "MD"},      {1, "videoloss"}, {2, "IO"},         {3, "none"},       {8, "RF"},
        {16, "Normal"},    {18, "people"}, {19, "vehicle"},  {20, "face"},      {21, "other"},     {22, "dog_cat"},
        {23, "visitor"},   {24, "none"},   {27, "package"},  {29, "crossline"}, {31, "crossline"}, {32, "intrude"},
        {36, "loitering"}, {38, "legacy"}, {41, "loss"},     {43, "loss"},      {44, "cry"},       {45, "none"},
    };
    for (const auto &[code, word] : words)
        EXPECT_EQ(word_of(rule_less_type, code), word) << code;
    int index = kept;
    char word[12];
    EXPECT_EQ(get_alarm_in_type_string(34, word, 12, &index), 0);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(get_alarm_in_type_string(34, word, 0, &index), -1);

    const struct {
        const char *text;
        int index, code;
    } cases[] = {
        {"videoloss", 0, 41}, {"videoloss", 2, 43},  {"IO,MD", 0, 0},    {"MD,IO", 0, 0}, // the last of the table
        {"rf,md", 0, 8},      {"cry,people", 0, 44}, {"visitor", 0, 23}, {"legacy crossline", 1, 39},
        {"crossline", 2, 31}, {"none", 0, kept},     {"", 0, kept}};
    for (const auto &c : cases) {
        int code = kept;
        std::string text = c.text;
        EXPECT_EQ(get_alarm_in_type_intValue(&code, text.data(), c.index), 0);
        EXPECT_EQ(code, c.code) << c.text;
    }
    char text[] = "crossline";
    int code = kept;
    EXPECT_EQ(get_alarm_in_type_intValue(&code, text, 3), -1);
    EXPECT_EQ(get_alarm_in_type_intValue(&code, text, -1), -1);
    EXPECT_EQ(code, kept);
}

TEST_F(WordsTest, AlarmTypeSets)
{
    time_section_t set = {};
    for (int code : {-1, 45, 63, 64, INT_MAX, INT_MIN})
        alarm_in_add_event(&set, code);
    EXPECT_EQ(set.bits[0] | set.bits[1], 0u);
    for (int code : {0, 31, 32, 44})
        alarm_in_add_event(&set, code);
    EXPECT_EQ(set.bits[0], 0x80000001u);
    EXPECT_EQ(set.bits[1], 0x1001u);
    alarm_in_add_event(nullptr, 3);

    const unsigned int all[2] = {0xffffffff, 0xffffffff};
    EXPECT_EQ(alarm_in_check_event(all, 44), 1);
    EXPECT_EQ(alarm_in_check_event(all, 45), 0) << "no such type";
    EXPECT_EQ(alarm_in_check_event(all, static_cast<unsigned int>(-1)), 0);
    EXPECT_EQ(alarm_in_check_event(nullptr, 0), 0);
    for (unsigned int code = 0; code <= 44; ++code)
        EXPECT_EQ(alarm_in_check_event(&set, code), code == 0 || code == 31 || code == 32 || code == 44) << code;
}

TEST_F(WordsTest, RulesOfADetection)
{
    time_section_t set = {};
    for (int code : {29, 31, 33, 37, 42, 44})
        alarm_in_add_event(&set, code);
    const struct {
        const char *name;
        int added, result; // whether the last rule of the detection is set
    } cases[] = {
        {"crossline", 0x5, 1}, {"intrusion", 0x2, 0}, {"loitering", 0x4, 1}, {"legacy", 0, 0}, {"loss", 0x2, 0}};
    int mask = 0x40; // is not cleared
    for (const auto &c : cases) {
        std::string name = c.name;
        mask = 0x40;
        EXPECT_EQ(get_type_and_index_from_smart_ai(set, name.data(), mask), c.result) << name;
        EXPECT_EQ(mask, 0x40 | c.added) << name;
    }
    for (std::string unknown : {"intrude", "Crossline", "los", "crossline ", ""})
        EXPECT_NE(get_type_and_index_from_smart_ai(set, unknown.data(), mask), 0) << unknown;
    EXPECT_EQ(mask, 0x42);
}

TEST_F(WordsTest, ListsOfNumbers)
{
    const auto list = [](std::vector<int> numbers, int trailing, int size) {
        std::string buffer(static_cast<std::size_t>(size), '~');
        EXPECT_EQ(
            changeIntTableToString(buffer.data(), size, numbers.data(), static_cast<int>(numbers.size()), trailing), 0);
        return buffer;
    };
    EXPECT_EQ(list({1, 0, 2, 0, 0}, 0, 9), std::string("1,0,2\0\0\0\0", 9)) << "all of the buffer is written";
    EXPECT_EQ(list({-1, -1}, -1, 2), std::string(2, '\0'));
    EXPECT_EQ(list({INT_MIN, INT_MAX}, 0, 23).c_str(), std::string("-2147483648,2147483647"));
    EXPECT_EQ(list({12, 34}, 0, 5), std::string("12,3\0", 5)) << "cut within a number";

    const std::string longest(29, '0');
    using Numbers = std::vector<int>;
    const struct {
        std::string text;
        int result;
        Numbers numbers;
    } cases[] = {{"5,,7", 3, {5, 0, 7, -1}},
                 {"", 0, {-1, -1}},
                 {"8,", 1, {8, -1}}, // a comma at the end begins no item
                 {",", 1, {0, -1}},
                 {"1,2,3", 2, {1, 2}},
                 {" -4x9, +6", 2, {-4, 6}},
                 {longest + "7,2", 2, {7, 2}},
                 {"5," + longest + "07", -1, {5, -1, -1}},
                 {"5," + longest + "07", 1, {5}}}; // what is behind the last element is not looked at
    for (const auto &c : cases) {
        std::string text = c.text;
        Numbers numbers(c.numbers.size(), 99);
        EXPECT_EQ(changeStringToIntTable(text.data(), numbers.data(), static_cast<int>(numbers.size()), -1), c.result);
        EXPECT_EQ(numbers, c.numbers) << text;
    }
}

TEST_F(WordsTest, ListsOfNumbersRefused)
{
    int numbers[] = {1, 2};
    char text[8] = "~";
    EXPECT_EQ(changeIntTableToString(text, 0, numbers, 2, 0), -1);
    EXPECT_EQ(changeIntTableToString(text, 8, nullptr, 2, 0), -1);
    EXPECT_EQ(changeIntTableToString(text, 8, numbers, 0, 0), -1);
    EXPECT_EQ(changeStringToIntTable(text, numbers, 0, 0), -1);
    EXPECT_STREQ(text, "~");
    EXPECT_EQ(numbers[0], 1);

    modulemask = 0; // the line is printed all the same
    net_host_fail_allocation(1);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(changeIntTableToString(text, 8, numbers, 2, 0), -1); }), "pbuff malloc fail\n");
    EXPECT_EQ(std::string(text, 8), std::string(8, '\0'));
    EXPECT_EQ(changeIntTableToString(text, 8, numbers, 2, 0), 0);
    EXPECT_EQ(net_host_memory().last_size, 8u);
}

// The packed tables themselves, with what the shared ones do not have.
constexpr netpublic::Word fruit_list[] = {
    {1, "apple"}, {2, "Apple pie"}, {2, "pie", netpublic::Use::read}, {4, "plum", netpublic::Use::write}, {8, "pea"}};
constexpr auto fruits = netpublic::words<fruit_list>();

TEST(WordTables, LookupsRespectDirectionCaseAndLength)
{
    const struct {
        const char *text;
        bool exact;
        int code;
    } cases[] = {{"APPLE", false, 1}, {"APPLE", true, -1},   {"Apple pie", true, 2},
                 {"Pie", false, 2},   {"plum", false, -1}, // written only
                 {"appl", false, -1}, {"apples", false, -1}, {"", false, -1}};
    for (const auto &c : cases) {
        const auto *entry = netpublic::find_whole(fruits, c.text, c.exact);
        EXPECT_EQ(entry != nullptr ? entry->code : -1, c.code) << c.text;
    }
    EXPECT_EQ(netpublic::find_prefix(fruits, "applepie", 5)->code, 1);
    EXPECT_EQ(netpublic::find_prefix(fruits, "apple p", 7)->code, 2);
    EXPECT_EQ(netpublic::find_prefix(fruits, "plum", 1)->code, 2) << "pie";
    EXPECT_EQ(netpublic::find_prefix(fruits, "plum", 4), nullptr);

    EXPECT_STREQ(netpublic::word_of(fruits, 2), "Apple pie");
    EXPECT_STREQ(netpublic::word_of(fruits, 4), "plum");
    EXPECT_EQ(netpublic::word_of(fruits, 3), nullptr);
}

TEST(WordTables, Masks)
{
    EXPECT_EQ(netpublic::mask_in(fruits, "xAPPLE-PLUM"), 1);
    EXPECT_EQ(netpublic::mask_in(fruits, "a pie and a pear"), 2 | 8);
    const struct {
        int mask;
        std::size_t size;
        const char *text;
    } cases[] = {
        {1 | 2 | 4 | 8, 64, "apple,Apple pie,plum,pea"}, {16, 64, "none"}, {1 | 8, 8, "apple,p"}, {1 | 8, 1, ""}};
    for (const auto &c : cases) {
        std::string text(c.size, '~');
        netpublic::write_mask(fruits, c.mask, text.data(), c.size);
        EXPECT_STREQ(text.c_str(), c.text);
    }
}

} // namespace
