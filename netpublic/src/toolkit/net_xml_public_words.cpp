#include "ground/log.h"
#include "toolkit/detections.h"
#include "values/tables.h"
#include "values/values.h"

#include <net_public.h>
#include <net_xml_words.h>

#include <cstdlib>
#include <cstring>

using namespace netpublic;

namespace {

constexpr int longest_item = 30; // characters of one number in a list

// The last byte of the buffer is never written: callers hand over a cleared one.
void copy_word(char *dst, int size, const char *word)
{
    std::strncpy(dst, word, static_cast<std::size_t>(size) - 1);
}

// The first four bytes, as far as the buffer has them.
void clear_head(char *dst, int size)
{
    std::memset(dst, 0, size < 4 ? static_cast<std::size_t>(size) : 4);
}

int code_to_word(const WordTable &table, int code, char *dst, int size)
{
    const char *word = word_of(table, code);
    if (dst == nullptr || size < 1 || word == nullptr)
        return -1;
    copy_word(dst, size, word);
    return 0;
}

int prefix_to_code(const WordTable &table, int *code, const char *text, std::size_t length)
{
    const WordTable::Entry *found = find_prefix(table, text, length);
    if (found == nullptr)
        return -1;
    *code = found->code();
    return 0;
}

int word_to_code(const WordTable &table, int *code, const char *text)
{
    if (code == nullptr || text == nullptr)
        return -1;
    return prefix_to_code(table, code, text, std::strlen(text));
}

bool is_smart_ai(int code)
{
    return code >= smart_ai_first && code <= smart_ai_last;
}

} // namespace

int get_weekday_string(int code, char *dst, int size)
{
    return code_to_word(weekdays, code, dst, size);
}

int get_weekday_index(int *code, char *word)
{
    return word_to_code(weekdays, code, word);
}

int get_osd_format_string(int code, char *dst, int size)
{
    return code_to_word(date_formats, code, dst, size);
}

int get_osd_format_index(int *code, const char *word)
{
    return word_to_code(date_formats, code, word);
}

int get_language_string(int code, char *dst, int size)
{
    return code_to_word(languages, code > language_last ? language_english : code, dst, size);
}

// An unknown language is no failure: the device keeps the one it has.
int get_language_index(int *code, const char *word)
{
    if (code == nullptr || word == nullptr)
        return -1;
    word_to_code(languages, code, word);
    return 0;
}

int get_databit_string(int code, char *dst, int size)
{
    return code_to_word(data_bits, code, dst, size);
}

int get_databit_index(int *code, const char *word)
{
    return word_to_code(data_bits, code, word);
}

char *get_streamtype_str(STREAM_TYPE_E code, char *dst, int size)
{
    return code_to_word(stream_types, static_cast<int>(code), dst, size) == 0 ? dst : nullptr;
}

int get_streamtype_from_str(int *code, const char *word, int len)
{
    if (code == nullptr || word == nullptr || len < 1)
        return -1;
    return prefix_to_code(stream_types, code, word, static_cast<std::size_t>(len));
}

// The words follow each other without any separator: peers depend on it. The text is cut at
// size - 2 characters, one earlier than elsewhere.
int get_handleType_string(int mask, char *dst, int size)
{
    if (dst == nullptr || size < 1)
        return -1;
    clear_head(dst, size);
    const std::size_t end = static_cast<std::size_t>(size) - 1;
    std::size_t at = 0;
    bool any = false;
    for (const auto &entry : alarm_actions.head) {
        if ((mask & entry.code()) == 0)
            continue;
        any = true;
        for (const char *word = alarm_actions.head.text(entry); *word != '\0' && at + 1 < end; ++word)
            dst[at++] = *word;
    }
    if (any)
        std::memset(dst + at, 0, end - at);
    else
        copy_word(dst, size, "none");
    return 0;
}

int get_handleType_intValue(int *mask, char *text)
{
    if (mask == nullptr || text == nullptr)
        return -1;
    *mask = contains_folded(text, "none") ? 0 : mask_in(alarm_actions, text);
    return 0;
}

int get_alarm_in_type_string(int code, char *dst, int size, int *index)
{
    if (dst == nullptr || size < 1)
        return -1;
    clear_head(dst, size);
    if (is_smart_ai(code)) {
        const int rule = (code - smart_ai_first) % smart_ai_rules;
        if (index != nullptr)
            *index = rule;
        code -= rule;
    }
    const char *word = word_of(alarm_types, code);
    copy_word(dst, size, word != nullptr ? word : "none");
    return 0;
}

int get_alarm_in_type_intValue(int *code, char *text, int index)
{
    if (code == nullptr || text == nullptr || index < 0 || index >= smart_ai_rules)
        return -1;
    const std::uint32_t found = words_in(alarm_types, text);
    if (found == 0)
        return 0;
    const int last = alarm_types.entries[31 - __builtin_clz(found)].code();
    *code = is_smart_ai(last) ? last + index : last;
    return 0;
}

// The detection that alarm words call "intrude" is "intrusion" here. The result is that of the last
// bit test, or of the last comparison for an unknown name.
int get_type_and_index_from_smart_ai(time_section_t set, char *name, int &mask)
{
    if (name == nullptr)
        return -1;
    const auto *detection = find_whole(detections, name, true);
    if (detection == nullptr)
        return std::strcmp(name, "loss"); // what the comparison with the last one has given
    const auto first = static_cast<unsigned int>(detection->code());
    int result = 0;
    for (unsigned int rule = 0; rule < smart_ai_rules; ++rule) {
        result = alarm_in_check_event(&set, first + rule);
        mask |= result << rule;
    }
    return result;
}

void alarm_in_add_event(time_section_t *set, int code)
{
    if (set != nullptr && code >= 0 && code <= alarm_type_last)
        set->bits[code / 32] |= 1U << code % 32;
}

int alarm_in_check_event(const void *set, unsigned int code)
{
    if (set == nullptr || code > alarm_type_last)
        return 0;
    return static_cast<int>(static_cast<const unsigned int *>(set)[code / 32] >> code % 32 & 1);
}

int changeIntTableToString(char *dst, int size, int *table, int count, int trailing)
{
    if (dst == nullptr || table == nullptr || count < 1 || size < 1)
        return -1;
    const std::size_t bytes = static_cast<std::size_t>(size);
    std::memset(dst, 0, bytes);
    void *block = net_malloc(static_cast<unsigned int>(size));
    if (block == nullptr) {
        log_plain("pbuff malloc fail\n");
        return -1;
    }
    char *scratch = static_cast<char *>(block);
    const std::size_t length = join_ints(scratch, bytes - 1, table, count, trailing);
    std::memcpy(dst, scratch, length);
    net_free(&block);
    return 0;
}

int changeStringToIntTable(char *text, int *table, int count, int fill)
{
    if (text == nullptr || table == nullptr || count < 1)
        return -1;
    for (int i = 0; i < count; ++i)
        table[i] = fill;
    int filled = 0;
    while (*text != '\0' && filled < count) {
        const char *item = text;
        int value = 0;
        for (; static_cast<unsigned char>(*text - '0') <= 9 && text - item < safe_digits; ++text)
            value = value * 10 + (*text - '0');
        if (*text != '\0' && *text != ',') {
            value = std::atoi(item); // which ends at the comma by itself
            for (; *text != '\0' && *text != ','; ++text)
                if (text - item == longest_item)
                    return -1;
        }
        table[filled++] = value;
        if (*text == ',')
            ++text;
    }
    return filled;
}
