#include "support.h"
#include "values/tables.h"

#include <net_public.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using test::log_of;

constexpr char untouched = '~';

class WordsTest : public test::HostTest {};

// A buffer of exactly `size` bytes, so that a sanitizer sees the first byte beyond.
struct Buffer {
    explicit Buffer(int size, char fill = '\0') : bytes(static_cast<std::size_t>(size), fill) {}
    char *data()
    {
        return bytes.data();
    }
    int size() const
    {
        return static_cast<int>(bytes.size());
    }
    std::string text() const
    {
        return std::string(bytes.begin(), std::find(bytes.begin(), bytes.end(), '\0'));
    }

    std::vector<char> bytes;
};

// What a bounded copy makes of a buffer.
std::vector<char> copied(std::vector<char> buffer, const std::string &text, std::size_t bound)
{
    for (std::size_t i = 0; i < bound; ++i)
        buffer[i] = i < text.size() ? text[i] : '\0';
    return buffer;
}

std::string swapped_case(std::string word)
{
    for (char &c : word)
        if (std::isalpha(static_cast<unsigned char>(c)) != 0)
            c = static_cast<char>(c ^ 0x20);
    return word;
}

using ToWord = int (*)(int, char *, int);

template <class Character> struct Enumeration {
    ToWord to_word;
    int (*to_code)(int *, Character *);
    std::vector<std::string> words;
};

template <class Character> void check_both_ways(const Enumeration<Character> &e)
{
    for (int code = 0; code < static_cast<int>(e.words.size()); ++code) {
        const std::string &word = e.words[static_cast<std::size_t>(code)];
        Buffer buffer(32);
        EXPECT_EQ(e.to_word(code, buffer.data(), buffer.size()), 0);
        EXPECT_EQ(buffer.text(), word);
        for (std::string spelling : {word, swapped_case(word)}) {
            int read = -7;
            EXPECT_EQ(e.to_code(&read, spelling.data()), 0) << spelling;
            EXPECT_EQ(read, code) << spelling;
        }
    }
    int read = -7;
    std::string empty;
    std::string longer = e.words[0] + "s";
    EXPECT_EQ(e.to_code(&read, empty.data()), 0);
    EXPECT_EQ(read, 0);
    EXPECT_EQ(e.to_code(nullptr, empty.data()), -1);
    EXPECT_EQ(e.to_code(&read, nullptr), -1);
    Buffer buffer(32, untouched);
    EXPECT_EQ(e.to_word(-1, buffer.data(), buffer.size()), -1);
    EXPECT_EQ(e.to_word(INT_MIN, buffer.data(), buffer.size()), -1);
    EXPECT_EQ(e.to_word(0, buffer.data(), 0), -1);
    EXPECT_EQ(e.to_word(0, nullptr, buffer.size()), -1);
    EXPECT_EQ(buffer.bytes, std::vector<char>(32, untouched)) << "a failure writes nothing";
}

TEST_F(WordsTest, enumerations_both_ways)
{
    check_both_ways<char>({get_weekday_string,
                           get_weekday_index,
                           {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"}});
    check_both_ways<const char>({get_osd_format_string, get_osd_format_index, {"MDY", "YMD", "DMY"}});
    check_both_ways<const char>(
        {get_language_string,
         get_language_index,
         {"Chinese", "English", "Japanese", "Russian", "Italian", "Czech", "Romania", "Hungary", "France", "Spanish",
          "Portugal", "Korean", "BigCHN", "Polish", "Bulgarian", "German", "Persian", "Thai", "Hebrew"}});
    check_both_ways<const char>({get_databit_string, get_databit_index, {"CS8", "CS7", "CS6", "CS5"}});
}

TEST_F(WordsTest, code_beyond_the_table)
{
    Buffer buffer(16, untouched);
    EXPECT_EQ(get_weekday_string(7, buffer.data(), buffer.size()), -1);
    EXPECT_EQ(get_osd_format_string(6, buffer.data(), buffer.size()), -1);
    EXPECT_EQ(get_databit_string(4, buffer.data(), buffer.size()), -1);
    EXPECT_EQ(buffer.bytes, std::vector<char>(16, untouched));
    for (int code : {19, 25, INT_MAX}) {
        EXPECT_EQ(get_language_string(code, buffer.data(), buffer.size()), 0);
        EXPECT_EQ(buffer.text(), "English");
    }
}

TEST_F(WordsTest, abbreviated_and_foreign_words)
{
    int code = -7;
    const auto weekday = [&](std::string word) {
        code = -7;
        return get_weekday_index(&code, word.data());
    };
    EXPECT_EQ(weekday("t"), 0);
    EXPECT_EQ(code, 2);
    EXPECT_EQ(weekday("Th"), 0);
    EXPECT_EQ(code, 4);
    EXPECT_EQ(weekday("sA"), 0);
    EXPECT_EQ(code, 6);
    EXPECT_EQ(weekday("Sundays"), -1);
    EXPECT_EQ(code, -7);
    EXPECT_EQ(get_databit_index(&code, "CS9"), -1);
    EXPECT_EQ(get_databit_index(&code, "c"), 0);
    EXPECT_EQ(code, 0);

    code = 5;
    EXPECT_EQ(get_language_index(&code, "Klingon"), 0);
    EXPECT_EQ(code, 5) << "an unknown language leaves the code alone";
    EXPECT_EQ(get_language_index(&code, "P"), 0);
    EXPECT_EQ(code, 10) << "Portugal stands before Polish and Persian";
}

TEST_F(WordsTest, date_format_3_is_written_and_read_differently)
{
    for (auto [code, word] : {std::pair{3, "MDY_CN"}, {4, "YMD_CN"}, {5, "DMY_CN"}}) {
        Buffer buffer(8);
        EXPECT_EQ(get_osd_format_string(code, buffer.data(), buffer.size()), 0);
        EXPECT_EQ(buffer.text(), word);
    }
    const auto read = [](const char *word) {
        int code = -7;
        return get_osd_format_index(&code, word) == 0 ? code : -1;
    };
    EXPECT_EQ(read("MDY_CN"), -1);
    EXPECT_EQ(read("MDY_"), -1);
    EXPECT_EQ(read(" MDY_CN"), 3);
    EXPECT_EQ(read(" "), 3);
    EXPECT_EQ(read("ymd_cn"), 4);
    EXPECT_EQ(read("DMY_C"), 5);
}

TEST_F(WordsTest, stream_types)
{
    const char *const names[] = {"mainStream", "subStream", "mobileStream", "snapStream", "externStream"};
    for (int i = 0; i < 5; ++i) {
        Buffer buffer(20);
        EXPECT_EQ(get_streamtype_str(static_cast<STREAM_TYPE_E>(i), buffer.data(), buffer.size()), buffer.data());
        EXPECT_EQ(buffer.text(), names[i]);
        int code = -7;
        EXPECT_EQ(get_streamtype_from_str(&code, names[i], static_cast<int>(std::strlen(names[i]))), 0);
        EXPECT_EQ(code, i);
    }
    Buffer buffer(20, untouched);
    EXPECT_EQ(get_streamtype_str(static_cast<STREAM_TYPE_E>(5), buffer.data(), buffer.size()), nullptr);
    EXPECT_EQ(get_streamtype_str(STREAM_TYPE_SUB, buffer.data(), 0), nullptr);
    EXPECT_EQ(get_streamtype_str(STREAM_TYPE_SUB, nullptr, 20), nullptr);
    EXPECT_EQ(buffer.bytes, std::vector<char>(20, untouched));

    int code = -7;
    EXPECT_EQ(get_streamtype_from_str(&code, "MOBILE", 2), 0) << "only the first characters count";
    EXPECT_EQ(code, 2);
    EXPECT_EQ(get_streamtype_from_str(&code, "snapshot", 4), 0);
    EXPECT_EQ(code, 3);
    EXPECT_EQ(get_streamtype_from_str(&code, "subStream", 31), 0) << "the text may end earlier";
    EXPECT_EQ(code, 1);
    EXPECT_EQ(get_streamtype_from_str(&code, "sub", 31), -1) << "... but then it is compared whole";
    EXPECT_EQ(get_streamtype_from_str(&code, "snapshot", 8), -1);
    EXPECT_EQ(get_streamtype_from_str(&code, "mainStream", 0), -1);
    EXPECT_EQ(get_streamtype_from_str(&code, nullptr, 4), -1);
    EXPECT_EQ(get_streamtype_from_str(nullptr, "main", 4), -1);
    EXPECT_EQ(code, 1);
}

TEST_F(WordsTest, a_word_is_cut_and_the_last_byte_never_written)
{
    for (int size = 1; size <= 14; ++size) {
        const std::vector<char> before(static_cast<std::size_t>(size), untouched);
        Buffer buffer(size, untouched);
        EXPECT_EQ(get_weekday_string(3, buffer.data(), size), 0);
        EXPECT_EQ(buffer.bytes, copied(before, "Wednesday", before.size() - 1)) << size;
    }
}

const std::vector<std::pair<int, std::string>> actions = {
    {0x1, "io"},   {0x2, "snap"}, {0x4, "rec"},     {0x8, "led"},         {0x10, "buzz"},
    {0x20, "ptz"}, {0x40, "ftp"}, {0x80, "screen"}, {0x100, "rfspeaker"}, {0x200, "push"}};

// The writer in small steps: each word is appended to the text in the buffer, cut at size - 2
// characters, and copied back over size - 1 bytes.
std::vector<char> actions_in_steps(int mask, std::vector<char> buffer)
{
    const std::size_t size = buffer.size();
    std::fill_n(buffer.begin(), std::min<std::size_t>(size, 4), '\0');
    bool any = false;
    for (const auto &[bit, word] : actions) {
        if ((mask & bit) == 0)
            continue;
        any = true;
        const std::string text = buffer.data() + word;
        buffer = copied(buffer, text.substr(0, size < 2 ? 0 : size - 2), size - 1);
    }
    return any ? buffer : copied(buffer, "none", size - 1);
}

TEST_F(WordsTest, alarm_actions_are_written_without_separators)
{
    const auto written = [](int mask) {
        Buffer buffer(64);
        EXPECT_EQ(get_handleType_string(mask, buffer.data(), buffer.size()), 0);
        return buffer.text();
    };
    EXPECT_EQ(written(0x3), "iosnap");
    EXPECT_EQ(written(0x201), "iopush");
    EXPECT_EQ(written(0x400), "none");
    EXPECT_EQ(written(0), "none");
    EXPECT_EQ(written(-1), "iosnaprecledbuzzptzftpscreenrfspeakerpush");

    for (int size = 1; size <= 50; ++size)
        for (int mask = 0; mask < 0x800; mask += mask < 16 || mask > 0x3f0 ? 1 : 7) {
            Buffer buffer(size, untouched);
            const std::vector<char> expected = actions_in_steps(mask, buffer.bytes);
            EXPECT_EQ(get_handleType_string(mask, buffer.data(), size), 0);
            ASSERT_EQ(buffer.bytes, expected) << "size " << size << " mask " << mask;
        }
    Buffer large(2000, untouched); // larger than any scratch text
    const std::vector<char> expected = actions_in_steps(0x3ff, large.bytes);
    EXPECT_EQ(get_handleType_string(0x3ff, large.data(), large.size()), 0);
    EXPECT_EQ(large.bytes, expected);
    EXPECT_EQ(get_handleType_string(1, large.data(), 0), -1);
    EXPECT_EQ(get_handleType_string(1, nullptr, 10), -1);
}

TEST_F(WordsTest, alarm_actions_are_read_wherever_they_stand)
{
    const auto read = [](std::string text) {
        int mask = -7;
        EXPECT_EQ(get_handleType_intValue(&mask, text.data()), 0);
        return mask;
    };
    EXPECT_EQ(read("io,snap"), 0x3);
    EXPECT_EQ(read("iosnap"), 0x3);
    EXPECT_EQ(read("none,io"), 0);
    EXPECT_EQ(read("IO xNONEx"), 0);
    EXPECT_EQ(read("PUSH;Screen"), 0x280);
    EXPECT_EQ(read("radio"), 0x1) << "inside a longer word";
    EXPECT_EQ(read("sna"), 0);
    EXPECT_EQ(read(""), 0);
    for (int mask = 1; mask < 0x400; ++mask) {
        Buffer buffer(64);
        get_handleType_string(mask, buffer.data(), buffer.size());
        EXPECT_EQ(read(buffer.text()), mask);
    }
    char text[] = "io";
    int mask = 0;
    EXPECT_EQ(get_handleType_intValue(nullptr, text), -1);
    EXPECT_EQ(get_handleType_intValue(&mask, nullptr), -1);
}

std::string alarm_word(int code)
{
    const std::pair<int, const char *> words[] = {
        {0, "MD"},       {1, "videoloss"}, {2, "IO"},    {8, "RF"},     {16, "Normal"},
        {18, "people"},  {19, "vehicle"},  {20, "face"}, {21, "other"}, {22, "dog_cat"},
        {23, "visitor"}, {27, "package"},  {44, "cry"},
    };
    for (const auto &[known, word] : words)
        if (known == code)
            return word;
    const char *const groups[] = {"crossline", "intrude", "loitering", "legacy", "loss"};
    return code >= 29 && code <= 43 ? groups[(code - 29) / 3] : "none";
}

TEST_F(WordsTest, alarm_types_are_written)
{
    for (int code = -2; code <= 50; ++code)
        for (int size = 1; size <= 12; ++size) {
            Buffer buffer(size, untouched);
            std::vector<char> expected = buffer.bytes;
            std::fill_n(expected.begin(), std::min(size, 4), '\0');
            expected = copied(expected, alarm_word(code), expected.size() - 1);
            int index = -7;
            EXPECT_EQ(get_alarm_in_type_string(code, buffer.data(), size, &index), 0);
            EXPECT_EQ(buffer.bytes, expected) << code << " in " << size;
            EXPECT_EQ(index, code >= 29 && code <= 43 ? (code - 29) % 3 : -7) << code;
        }
    Buffer buffer(12);
    EXPECT_EQ(get_alarm_in_type_string(34, buffer.data(), 12, nullptr), 0) << "the rule need not be asked for";
    EXPECT_EQ(buffer.text(), "intrude");
    int index = -7;
    EXPECT_EQ(get_alarm_in_type_string(34, nullptr, 12, &index), -1);
    EXPECT_EQ(get_alarm_in_type_string(34, buffer.data(), 0, &index), -1);
    EXPECT_EQ(index, -7);
}

TEST_F(WordsTest, alarm_types_are_read_and_the_last_match_wins)
{
    const auto read = [](std::string text, int index = 0) {
        int code = -7;
        EXPECT_EQ(get_alarm_in_type_intValue(&code, text.data(), index), 0);
        return code;
    };
    EXPECT_EQ(read("videoloss"), 41);
    EXPECT_EQ(read("videoloss", 2), 43);
    EXPECT_EQ(read("IO,MD"), 0);
    EXPECT_EQ(read("MD,IO"), 0);
    EXPECT_EQ(read("rf,md"), 8);
    EXPECT_EQ(read("cry,people"), 44);
    EXPECT_EQ(read("legacy crossline", 1), 39);
    EXPECT_EQ(read("crossline", 2), 31);
    EXPECT_EQ(read("visitor"), 23);
    EXPECT_EQ(read("none"), -7);
    EXPECT_EQ(read(""), -7);
    for (int code = 0; code <= 44; ++code) {
        const std::string word = alarm_word(code);
        const bool smart = code >= 29 && code <= 43;
        if (word == "none" || word == "videoloss")
            continue;
        EXPECT_EQ(read(word, smart ? (code - 29) % 3 : 0), code) << word;
    }
    char text[] = "crossline";
    int code = -7;
    EXPECT_EQ(get_alarm_in_type_intValue(&code, text, 3), -1);
    EXPECT_EQ(get_alarm_in_type_intValue(&code, text, -1), -1);
    EXPECT_EQ(get_alarm_in_type_intValue(&code, nullptr, 0), -1);
    EXPECT_EQ(get_alarm_in_type_intValue(nullptr, text, 0), -1);
    EXPECT_EQ(code, -7);
}

TEST_F(WordsTest, alarm_type_sets)
{
    time_section_t set = {};
    for (int code : {-1, 45, 63, 64, INT_MAX, INT_MIN})
        alarm_in_add_event(&set, code);
    EXPECT_EQ(set.bits[0], 0u);
    EXPECT_EQ(set.bits[1], 0u);
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

TEST_F(WordsTest, rules_of_a_smart_ai_detection)
{
    time_section_t set = {};
    for (int code : {29, 31, 33, 37, 42, 44})
        alarm_in_add_event(&set, code);
    const auto rules = [&](std::string name, int before, int *result) {
        int mask = before;
        *result = get_type_and_index_from_smart_ai(set, name.data(), mask);
        return mask;
    };
    int last = -7;
    EXPECT_EQ(rules("crossline", 0, &last), 0x5);
    EXPECT_EQ(last, 1);
    EXPECT_EQ(rules("intrusion", 0, &last), 0x2);
    EXPECT_EQ(last, 0) << "the last rule of the detection decides the result";
    EXPECT_EQ(rules("loitering", 0x40, &last), 0x44) << "the mask is not cleared";
    EXPECT_EQ(last, 1);
    EXPECT_EQ(rules("legacy", 0, &last), 0);
    EXPECT_EQ(last, 0);
    EXPECT_EQ(rules("loss", 0, &last), 0x2);
    EXPECT_EQ(last, 0);
    for (const char *unknown : {"intrude", "Crossline", "los", "crossline ", ""}) {
        EXPECT_EQ(rules(unknown, 0x10, &last), 0x10) << unknown;
        EXPECT_NE(last, 0) << unknown;
    }
    int mask = 0;
    EXPECT_EQ(get_type_and_index_from_smart_ai(set, nullptr, mask), -1);
}

std::string joined(const std::vector<int> &numbers, int trailing)
{
    std::size_t kept = numbers.size();
    while (kept > 0 && numbers[kept - 1] == trailing)
        --kept;
    std::string text;
    for (std::size_t i = 0; i < kept; ++i)
        text += (i == 0 ? "" : ",") + std::to_string(numbers[i]);
    return text;
}

TEST_F(WordsTest, numbers_to_list)
{
    const auto list = [](std::vector<int> numbers, int trailing, int size = 64) {
        Buffer buffer(size, untouched);
        EXPECT_EQ(
            changeIntTableToString(buffer.data(), size, numbers.data(), static_cast<int>(numbers.size()), trailing), 0);
        return buffer.bytes;
    };
    const auto text = [](const std::string &expected, int size = 64) {
        return copied(std::vector<char>(static_cast<std::size_t>(size)), expected, static_cast<std::size_t>(size) - 1);
    };
    EXPECT_EQ(list({1, 0, 2, 0, 0}, 0), text("1,0,2"));
    EXPECT_EQ(list({1, 0, 2, 0, 0}, 7), text("1,0,2,0,0"));
    EXPECT_EQ(list({-1, -1}, -1), text(""));
    EXPECT_EQ(list({INT_MIN, INT_MAX}, 0), text("-2147483648,2147483647"));
    EXPECT_EQ(list({12, 34}, 0, 5), text("12,3", 5)) << "cut within a number";
    EXPECT_EQ(list({12, 34}, 0, 4), text("12,", 4));

    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
        std::vector<int> numbers(1 + random() % 12);
        for (int &number : numbers)
            number = static_cast<int>(random()) >> random() % 32;
        const int trailing = round % 3 - 1;
        for (int size = 1; size <= 40; ++size)
            ASSERT_EQ(list(numbers, trailing, size),
                      text(joined(numbers, trailing).substr(0, static_cast<std::size_t>(size) - 1), size));
    }
}

TEST_F(WordsTest, numbers_to_list_refused)
{
    int numbers[] = {1, 2};
    Buffer buffer(8, untouched);
    EXPECT_EQ(changeIntTableToString(nullptr, 8, numbers, 2, 0), -1);
    EXPECT_EQ(changeIntTableToString(buffer.data(), 0, numbers, 2, 0), -1);
    EXPECT_EQ(changeIntTableToString(buffer.data(), 8, nullptr, 2, 0), -1);
    EXPECT_EQ(changeIntTableToString(buffer.data(), 8, numbers, 0, 0), -1);
    EXPECT_EQ(buffer.bytes, std::vector<char>(8, untouched));

    modulemask = 0; // the line is printed all the same
    net_host_fail_allocation(1);
    const std::string log = log_of([&] { EXPECT_EQ(changeIntTableToString(buffer.data(), 8, numbers, 2, 0), -1); });
    EXPECT_EQ(log, "pbuff malloc fail\n");
    EXPECT_EQ(buffer.bytes, std::vector<char>(8, '\0'));
    EXPECT_EQ(changeIntTableToString(buffer.data(), 8, numbers, 2, 0), 0);
    EXPECT_EQ(net_host_memory().last_size, 8u);
}

// The reader in small steps, one character at a time into a token.
int list_in_steps(const std::string &text, std::vector<int> &numbers, int fill)
{
    std::fill(numbers.begin(), numbers.end(), fill);
    std::size_t at = 0;
    std::size_t filled = 0;
    while (at < text.size() && filled < numbers.size()) {
        std::string token;
        bool comma = false;
        while (at < text.size() && token.size() < 31 && !comma) {
            comma = text[at] == ',';
            if (!comma)
                token += text[at];
            ++at;
        }
        if (token.size() == 31)
            return -1;
        numbers[filled++] = std::atoi(token.c_str());
    }
    return static_cast<int>(filled);
}

TEST_F(WordsTest, list_to_numbers)
{
    using Numbers = std::vector<int>;
    const auto read = [](std::string text, int count, int fill, int expected) {
        Numbers numbers(static_cast<std::size_t>(count), 99);
        EXPECT_EQ(changeStringToIntTable(text.data(), numbers.data(), count, fill), expected) << text;
        return numbers;
    };
    EXPECT_EQ(read("5,,7", 4, -1, 3), (Numbers{5, 0, 7, -1}));
    EXPECT_EQ(read("", 2, 3, 0), (Numbers{3, 3}));
    EXPECT_EQ(read("8,", 2, 3, 1), (Numbers{8, 3})) << "a comma at the end begins no item";
    EXPECT_EQ(read(",", 2, 3, 1), (Numbers{0, 3}));
    EXPECT_EQ(read("1,2,3", 2, 0, 2), (Numbers{1, 2}));
    EXPECT_EQ(read(" -4x9, +6", 2, 0, 2), (Numbers{-4, 6}));
    const std::string longest(29, '0');
    EXPECT_EQ(read(longest + "7", 2, 1, 1), (Numbers{7, 1}));
    EXPECT_EQ(read(longest + "7,2", 2, 1, 2), (Numbers{7, 2}));
    EXPECT_EQ(read("5," + longest + "07", 3, 1, -1), (Numbers{5, 1, 1})) << "31 characters at the end";
    EXPECT_EQ(read(longest + "07,2", 2, 1, -1), (Numbers{1, 1})) << "31 characters before a comma";
    EXPECT_EQ(read("5," + longest + "07", 1, 1, 1), (Numbers{5})) << "what is behind the last element is not looked at";

    std::mt19937 random(2);
    const char alphabet[] = "0123456789999,,,,- +x\n";
    for (int round = 0; round < 20000; ++round) {
        std::string text(random() % 90, ' ');
        for (char &c : text)
            c = alphabet[random() % (sizeof(alphabet) - (round % 2 ? 1 : 9))];
        Numbers expected(1 + random() % 9);
        const int result = list_in_steps(text, expected, round);
        ASSERT_EQ(read(text, static_cast<int>(expected.size()), round, result), expected) << text;
    }

    char text[] = "1";
    int number = 9;
    EXPECT_EQ(changeStringToIntTable(nullptr, &number, 1, 0), -1);
    EXPECT_EQ(changeStringToIntTable(text, nullptr, 1, 0), -1);
    EXPECT_EQ(changeStringToIntTable(text, &number, 0, 0), -1);
    EXPECT_EQ(number, 9);
}

// The packed tables themselves, with what the shared ones do not have.
constexpr netpublic::Word fruit_list[] = {
    {1, "apple"}, {2, "Apple pie"}, {2, "pie", netpublic::Use::read}, {4, "plum", netpublic::Use::write}, {8, "pea"}};
constexpr auto fruits = netpublic::words<fruit_list>();

TEST(WordTables, lookups_respect_direction_case_and_length)
{
    const auto whole = [](const char *text, bool exact) {
        const auto *entry = netpublic::find_whole(fruits, text, exact);
        return entry != nullptr ? entry->code : -1;
    };
    EXPECT_EQ(whole("APPLE", false), 1);
    EXPECT_EQ(whole("APPLE", true), -1);
    EXPECT_EQ(whole("Apple pie", true), 2);
    EXPECT_EQ(whole("Pie", false), 2);
    EXPECT_EQ(whole("plum", false), -1) << "written only";
    EXPECT_EQ(whole("appl", false), -1);
    EXPECT_EQ(whole("apples", false), -1);
    EXPECT_EQ(whole("", false), -1);

    EXPECT_EQ(netpublic::find_prefix(fruits, "applepie", 5)->code, 1);
    EXPECT_EQ(netpublic::find_prefix(fruits, "apple p", 7)->code, 2);
    EXPECT_EQ(netpublic::find_prefix(fruits, "plum", 1)->code, 2) << "pie";
    EXPECT_EQ(netpublic::find_prefix(fruits, "plum", 4), nullptr);

    EXPECT_STREQ(netpublic::word_of(fruits, 2), "Apple pie");
    EXPECT_STREQ(netpublic::word_of(fruits, 4), "plum");
    EXPECT_EQ(netpublic::word_of(fruits, 3), nullptr);
}

TEST(WordTables, masks)
{
    EXPECT_EQ(netpublic::mask_in(fruits, "xAPPLE-PLUM"), 1);
    EXPECT_EQ(netpublic::mask_in(fruits, "a pie and a pear"), 2 | 8);
    const auto written = [](int mask, std::size_t size) {
        std::vector<char> text(size, untouched);
        netpublic::write_mask(fruits, mask, text.data(), size);
        return std::string(text.data());
    };
    EXPECT_EQ(written(1 | 2 | 4 | 8, 64), "apple,Apple pie,plum,pea");
    EXPECT_EQ(written(16, 64), "none");
    EXPECT_EQ(written(1 | 8, 8), "apple,p");
    EXPECT_EQ(written(1 | 8, 1), "");
}

} // namespace
