// Weekly schedules: the per-type form, the per-combination form and the runs of hours in both.
#define NETPUBLIC_LOGGED_AS "net_xml_public.cpp"
#include "toolkit/schedules.h"

#include "ground/for_size.h"

#include <net_xml_public.h>

#include <cstring>
#include <iterator>

namespace netpublic {
namespace {

constexpr int words_a_cell = sizeof(time_section_t) / sizeof(unsigned int);
constexpr unsigned alarm_types_total = alarm_type_last + 1;

// The combinations of the four classic types that are written. An hour belongs to the one that equals
// its types; the last one collects the hours that have none of them.
struct CombinationWord {
    char word[18];
    unsigned char types; // as classic_types_of() gives them
};
constexpr CombinationWord combination_words[] = {
    {"IO", 4},           {"MD", 1},           {"videoloss", 2},       {"IO,MD", 5},
    {"IO,videoloss", 6}, {"MD,videoloss", 3}, {"IO,MD,videoloss", 7}, {"Normal", 8},
    {"none", 0},
};
static_assert(sizeof combination_words / sizeof combination_words[0] == most_combinations, "all of them are written");

// The types 0, 1, 2 and 16 of an hour; 9 and above are no combination that is written.
unsigned int classic_types_of(const time_section_t &hour)
{
    return (hour.bits[0] & 7) | (hour.bits[0] >> 13 & 8);
}
// And back, to the bits of an hour.
constexpr unsigned int bits_of(unsigned int classic_types)
{
    return (classic_types & 7) | (classic_types & 8) << 13;
}
constexpr unsigned int classic_bits = bits_of(15);

} // namespace

static bool is_empty(const char *text)
{
    return text == nullptr || *text == '\0';
}

// Most hours are like their neighbours.
constexpr int run_hours = 8;
static_assert(week_hours % run_hours == 0, "a week is whole runs");

static void store_run(unsigned int *word, unsigned int bit, const char *hours)
{
    const unsigned int *end = word + run_hours * words_a_cell;
    if (std::memcmp(hours, "00000000", run_hours) == 0)
        for (; word != end; word += words_a_cell)
            *word &= ~bit;
    else if (std::memcmp(hours, "11111111", run_hours) == 0)
        for (; word != end; word += words_a_cell)
            *word |= bit;
    else
        for (; word != end; word += words_a_cell)
            *word = *hours++ == '1' ? *word | bit : *word & ~bit;
}

int take_type_item(net_schedule_t &schedule, const TypeItem &item)
{
    if (is_empty(item.type) || is_empty(item.hours))
        return -1;
    int code = -1;
    if (get_alarm_in_type_intValue(&code, const_cast<char *>(item.type), item.index) != 0 || code < 0)
        return 0; // an unknown type or rule is skipped
    alarm_in_add_event(&schedule.types, code);
    // A table that ends early clears the rest of the week.
    char hours[week_hours] = {};
    std::memcpy(hours, item.hours, std::strlen(item.hours));
    unsigned int *word = &schedule.section[0][0].bits[code / 32];
    for (const char *run = hours; run != std::end(hours); run += run_hours, word += run_hours * words_a_cell)
        store_run(word, 1u << code % 32, run);
    return 0;
}

Give give_type_item(const net_schedule_t &schedule, WrittenTypeItem &written, Item &item)
{
    const unsigned code = item.index;
    if (code >= alarm_types_total)
        return Give::ended;
    if (!alarm_in_check_event(&schedule.types, code))
        return Give::left_out;
    get_alarm_in_type_string(static_cast<int>(code), written.word, sizeof written.word, &written.index);
    written.type = written.word;
    written.indexed = code >= smart_ai_first && code <= smart_ai_last ? 1 : 0;
    const unsigned int *word = &schedule.section[0][0].bits[code / 32];
    NETPUBLIC_UNROLL_FOR_SPEED
    for (int hour = 0; hour < week_hours; ++hour, word += words_a_cell)
        written.text[hour] = static_cast<char>('0' + (*word >> code % 32 & 1));
    written.text[week_hours] = '\0';
    written.hours = written.text;
    return Give::written;
}

Give give_block(const Combination &combination, TimeBlock &block, Item &item)
{
    return next_block(block, item, [&](int day, int hour) { return (combination.hours[day] >> hour & 1) != 0; });
}

// A combined word yields the one code of its last matching part.
int find_types(Combination &combination)
{
    int code = -1;
    if (get_alarm_in_type_intValue(&code, const_cast<char *>(combination.word), 0) == 0)
        alarm_in_add_event(&combination.types, code);
    return 0;
}

// Its blocks have been stored as they were read.
int take_combination(net_schedule_t &, const Combination &)
{
    return 0;
}

// The cursor keeps which combinations there are: bit 0 says that it does, bit t + 1 is combination t.
Give give_combination(const net_schedule_t &schedule, Combination &combination, Item &item)
{
    if (item.index == most_combinations)
        return Give::ended;
    if (item.cursor == 0) {
        item.cursor = 1;
        for (const auto &day : schedule.section)
            for (const time_section_t &hour : day)
                item.cursor |= 2u << classic_types_of(hour);
    }
    const CombinationWord &chosen = combination_words[item.index];
    if ((item.cursor >> (chosen.types + 1) & 1) == 0)
        return Give::left_out;
    combination.word = chosen.word;
    const unsigned int wanted = bits_of(chosen.types);
    for (int day = 0; day < week_days; ++day) {
        const time_section_t *hours = schedule.section[day];
        NETPUBLIC_UNROLL_FOR_SPEED
        for (int hour = day_hours - 1; hour >= 0; --hour)
            combination.hours[day] =
                combination.hours[day] << 1 | ((hours[hour].bits[0] & classic_bits) == wanted ? 1 : 0);
    }
    return Give::written;
}

// The lists as children of an element of the host's.
namespace {

struct TypeScheduleChild : Description {
    using T = net_schedule_t;
    static constexpr Field fields[] = {part("typeScheduleList", type_schedule).write_only()};
};
constexpr auto type_schedule_child = describe<TypeScheduleChild>();

struct CombinationListChild : Description {
    using T = net_schedule_t;
    static constexpr Field fields[] = {part("ScheduleList", combination_list).write_only()};
};
constexpr auto combination_list_child = describe<CombinationListChild>();

} // namespace
} // namespace netpublic

using namespace netpublic;

int get_type_schedule_list_from_xmlnode(net_schedule_t *schedule, TiXmlNode *node, const char *)
{
    return read_component(schedule, node, nullptr, type_schedule);
}

int get_time_block_list_from_xmlnode(net_schedule_t *schedule, time_section_t types, TiXmlNode *node, const char *key)
{
    if (schedule == nullptr)
        return -1;
    Combination combination(*schedule);
    combination.types = types;
    return read_component(&combination, node, key, block_list);
}

int get_schedule_list_from_xmlnode(net_schedule_t *schedule, TiXmlNode *node, const char *key)
{
    return read_component(schedule, node, key, combination_list);
}

int insert_type_schedule_list_to_xmlnode(net_schedule_t *schedule, TiXmlElement *parent)
{
    return schedule != nullptr && parent != nullptr ? write_component(type_schedule_child, schedule, parent) : -1;
}

int insert_schedule_list_to_xmlnode(net_schedule_t *schedule, TiXmlElement *parent)
{
    return schedule != nullptr && parent != nullptr ? write_component(combination_list_child, schedule, parent) : -1;
}
