// Weekly schedules: the per-type form, the per-combination form and the runs of hours in both.
#include "engine/engine.h"
#include "toolkit/time_blocks.h"
#include "values/tables.h"
#include "values/values.h"

#include <net_xml_public.h>

#include <cstring>

namespace netpublic {
namespace {

constexpr int days = 7;
constexpr int hours_a_day = 24;
constexpr int most_blocks = days * hours_a_day;
constexpr int words_a_cell = sizeof(time_section_t) / sizeof(unsigned int);
constexpr int most_combinations = 9;
constexpr int alarm_types_total = alarm_type_last + 1;

struct TimeBlockFields : Description {
    using T = TimeBlock;
    static constexpr Field fields[] = {
        flag("enable", AT(enable)).required(),
        word("weekDay", AT(weekDay), weekdays).upto(15).prefix().required(),
        integer("beginHour", AT(beginHour)).in(0, 23).required(),
        integer("endHour", AT(endHour)).in(0, 23).required(),
    };
};
constexpr auto time_block = describe<TimeBlockFields>();

// One item of the per-type form.
struct TypeItem {
    const char *type;
    int index; // of a smart-AI rule
    const char *table;
};

struct TypeItemFields : Description {
    using T = TypeItem;
    static constexpr Field fields[] = {
        view("type", AT(type)).upto(127),
        integer("index", AT(index)).own_test(),
        view("valueTable", AT(table)).upto(168),
    };
    static constexpr Traits traits = HERE.parser("get_type_schedule_list_from_xmlnode").failure(Line::plain_failed);
};
constexpr auto type_item = describe<TypeItemFields>();

int read_type_item(net_schedule_t &schedule, TiXmlNode *node)
{
    TypeItem item = {"", 0, ""};
    if (read_record(type_item, &item, node) != 0)
        return -1;
    if (*item.type == '\0' || *item.table == '\0') {
        log_line(Line::plain_failed, NET_HERE, "get_type_schedule_list_from_xmlnode");
        return -1;
    }
    int code = -1;
    if (get_alarm_in_type_intValue(&code, const_cast<char *>(item.type), item.index) != 0 || code < 0)
        return 0; // an unknown type or rule is skipped
    alarm_in_add_event(&schedule.types, code);
    // A table that ends early clears the rest of the week.
    char hours[days * hours_a_day] = {};
    std::memcpy(hours, item.table, std::strlen(item.table));
    const unsigned int bit = 1u << code % 32;
    unsigned int *word = &schedule.section[0][0].bits[code / 32];
    for (const char hour : hours) {
        *word = hour == '1' ? *word | bit : *word & ~bit;
        word += words_a_cell;
    }
    return 0;
}

struct TypeScheduleFields : Description {
    using T = net_schedule_t;
    static constexpr Field fields[] = {
        custom<read_type_item>("item", AT(section)),
    };
};
constexpr auto type_schedule = describe<TypeScheduleFields>();

struct BlockTarget {
    net_schedule_t *schedule;
    time_section_t types;
};

void enable_hours(void *context, const TimeBlock &block)
{
    const auto &target = *static_cast<BlockTarget *>(context);
    if (block.enable != 1)
        return;
    for (int hour = block.beginHour; hour <= block.endHour; ++hour)
        target.schedule->section[block.weekDay][hour] = target.types;
}

// One combination of types: first its word, then its runs of hours.
int read_combination(net_schedule_t *schedule, TiXmlNode *node)
{
    TiXmlNode *word = node->FirstChild();
    const char *text;
    if (word == nullptr || !is_named(word->Value(), "alarmType") || view_text(&text, 62, word) != 0)
        return -1;
    int code = -1;
    time_section_t types = {};
    // A combined word yields the one code of its last matching part.
    if (get_alarm_in_type_intValue(&code, const_cast<char *>(text), 0) == 0)
        alarm_in_add_event(&types, code);
    return get_time_block_list_from_xmlnode(schedule, types, word->NextSibling(), "timeBlockList");
}

// The combinations of the four classic types that are written. An hour belongs to the one that equals
// its types; the last one collects the hours that have none of them.
struct Combination {
    char word[18];
    unsigned char types; // as classic_types_of() gives them
};
constexpr Combination combinations[] = {
    {"IO", 4},           {"MD", 1},           {"videoloss", 2},       {"IO,MD", 5},
    {"IO,videoloss", 6}, {"MD,videoloss", 3}, {"IO,MD,videoloss", 7}, {"Normal", 8},
    {"none", 0},
};
static_assert(sizeof combinations / sizeof combinations[0] == most_combinations, "all of them are written");

// The types 0, 1, 2 and 16 of an hour; 9 and above are no combination that is written.
unsigned int classic_types_of(const time_section_t &hour)
{
    return (hour.bits[0] & 7) | (hour.bits[0] >> 13 & 8);
}

} // namespace

int read_time_blocks(TiXmlNode *list, void *context, void (*apply)(void *context, const TimeBlock &block))
{
    int count = 0;
    for (TiXmlNode *child = list->FirstChild(); child != nullptr && count < most_blocks; child = child->NextSibling()) {
        TimeBlock block = {};
        if (!is_named(child->Value(), "timeBlock") || read_record(time_block, &block, child) != 0 ||
            block.beginHour > block.endHour)
            return -1;
        apply(context, block);
        ++count;
    }
    return 0;
}

int append_time_blocks(TiXmlElement *list, int weekday, unsigned int hours)
{
    for (int hour = 0; hour < hours_a_day; ++hour) {
        if ((hours >> hour & 1) == 0)
            continue;
        const int begin = hour;
        while (hour + 1 < hours_a_day && (hours >> (hour + 1) & 1) != 0)
            ++hour;
        const TimeBlock block = {1, weekday, begin, hour};
        if (write_record(time_block, &block, append_element(list, "timeBlock")) != 0)
            return -1;
    }
    return 0;
}

} // namespace netpublic

using namespace netpublic;

int get_type_schedule_list_from_xmlnode(net_schedule_t *schedule, TiXmlNode *node, const char *)
{
    return read_component(schedule, node, nullptr, type_schedule);
}

int get_time_block_list_from_xmlnode(net_schedule_t *schedule, time_section_t types, TiXmlNode *node, const char *key)
{
    if (!is_component(schedule, node, key))
        return -1;
    BlockTarget target = {schedule, types};
    return read_time_blocks(node, &target, enable_hours);
}

int get_schedule_list_from_xmlnode(net_schedule_t *schedule, TiXmlNode *node, const char *key)
{
    if (!is_component(schedule, node, key))
        return -1;
    int count = 0;
    for (TiXmlNode *child = node->FirstChild(); child != nullptr && count < most_combinations;
         child = child->NextSibling(), ++count)
        if (!is_named(child->Value(), "Schedule") || read_combination(schedule, child) != 0)
            return -1;
    return 0;
}

namespace {

int write_type_schedule_list(const net_schedule_t &schedule, TiXmlElement *list)
{
    if (list == nullptr)
        return -1;
    for (int code = 0; code < alarm_types_total; ++code) {
        if (!alarm_in_check_event(&schedule.types, static_cast<unsigned int>(code)))
            continue;
        char type[64] = {};
        int index = 0;
        get_alarm_in_type_string(code, type, sizeof type, &index);
        char table[most_blocks + 1];
        const unsigned int *word = &schedule.section[0][0].bits[code / 32];
        for (int hour = 0; hour < most_blocks; ++hour, word += words_a_cell)
            table[hour] = static_cast<char>('0' + (*word >> code % 32 & 1));
        table[most_blocks] = '\0';
        TiXmlElement *item = append_element(list, "item");
        const bool indexed = code >= smart_ai_first && code <= smart_ai_last;
        if (append_text(item, "type", type) != 0 || (indexed && append_int(item, "index", index) != 0) ||
            append_text(item, "valueTable", table) != 0)
            return -1;
    }
    return 0;
}

int write_schedule_list(const net_schedule_t &schedule, TiXmlElement *list)
{
    if (list == nullptr)
        return -1;
    unsigned int hours_of[most_combinations][days] = {};
    unsigned int present = 0;
    for (int day = 0; day < days; ++day)
        for (int hour = 0; hour < hours_a_day; ++hour) {
            const unsigned int types = classic_types_of(schedule.section[day][hour]);
            if (types < most_combinations)
                hours_of[types][day] |= 1u << hour;
            present |= 1u << types;
        }
    for (const Combination &combination : combinations) {
        if ((present >> combination.types & 1) == 0)
            continue;
        TiXmlElement *entry = append_element(list, "Schedule");
        if (append_text(entry, "alarmType", combination.word) != 0)
            return -1;
        TiXmlElement *blocks = append_element(entry, "timeBlockList");
        for (int day = 0; day < days; ++day)
            if (append_time_blocks(blocks, day, hours_of[combination.types][day]) != 0)
                return -1;
    }
    return 0;
}

} // namespace

// The lists are all there, or not at all.

int insert_type_schedule_list_to_xmlnode(net_schedule_t *schedule, TiXmlElement *parent)
{
    if (schedule == nullptr || parent == nullptr)
        return -1;
    const TiXmlNode *last = parent->LastChild();
    const int result = write_type_schedule_list(*schedule, append_element(parent, "typeScheduleList"));
    return result != 0 ? remove_children(parent, last) : 0;
}

int insert_schedule_list_to_xmlnode(net_schedule_t *schedule, TiXmlElement *parent)
{
    if (schedule == nullptr || parent == nullptr)
        return -1;
    const TiXmlNode *last = parent->LastChild();
    const int result = write_schedule_list(*schedule, append_element(parent, "ScheduleList"));
    return result != 0 ? remove_children(parent, last) : 0;
}
