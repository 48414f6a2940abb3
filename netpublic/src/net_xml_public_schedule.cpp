// Weekly schedules: the per-type form, the per-combination form and the runs of hours in both.
#include "engine.h"
#include "tables.h"
#include "time_blocks.h"
#include "values.h"

#include <net_xml_public.h>

#include <cstring>

namespace netpublic {
namespace {

constexpr int days = 7;
constexpr int hours_a_day = 24;
constexpr int most_blocks = 168;
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
    const int bit = code % 32;
    for (int day = 0; day < days; ++day)
        for (int hour = 0; hour < hours_a_day; ++hour) {
            unsigned int &word = schedule.section[day][hour].bits[code / 32];
            const unsigned int on = hours[day * hours_a_day + hour] == '1';
            word = (word & ~(1u << bit)) | on << bit;
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
    unsigned int types; // over the first word of a cell
};
constexpr unsigned int classic_types = 0x10007;
constexpr Combination combinations[] = {
    {"IO", 0x4},           {"MD", 0x1},           {"videoloss", 0x2},       {"IO,MD", 0x5},
    {"IO,videoloss", 0x6}, {"MD,videoloss", 0x3}, {"IO,MD,videoloss", 0x7}, {"Normal", 0x10000},
    {"none", 0x0},
};

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

void append_time_blocks(TiXmlElement *list, int weekday, unsigned int hours)
{
    for (int hour = 0; hour < hours_a_day; ++hour) {
        if ((hours >> hour & 1) == 0)
            continue;
        const int begin = hour;
        while (hour + 1 < hours_a_day && (hours >> (hour + 1) & 1) != 0)
            ++hour;
        const TimeBlock block = {1, weekday, begin, hour};
        write_record(time_block, &block, append_element(list, "timeBlock"));
    }
}

} // namespace netpublic

using namespace netpublic;

int get_type_schedule_list_from_xmlnode(net_schedule_t *schedule, TiXmlNode *node, const char *)
{
    return read_component(type_schedule, schedule, node, nullptr);
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

int insert_type_schedule_list_to_xmlnode(net_schedule_t *schedule, TiXmlElement *parent)
{
    if (schedule == nullptr || parent == nullptr)
        return -1;
    TiXmlElement *list = append_element(parent, "typeScheduleList");
    for (int code = 0; code < alarm_types_total; ++code) {
        if (!alarm_in_check_event(&schedule->types, static_cast<unsigned int>(code)))
            continue;
        char type[64] = {};
        int index = 0;
        get_alarm_in_type_string(code, type, sizeof type, &index);
        char table[days * hours_a_day + 1] = {};
        for (int day = 0; day < days; ++day)
            for (int hour = 0; hour < hours_a_day; ++hour)
                table[day * hours_a_day + hour] =
                    static_cast<char>('0' + (schedule->section[day][hour].bits[code / 32] >> code % 32 & 1));
        TiXmlElement *item = append_element(list, "item");
        append_text(item, "type", type);
        if (code >= smart_ai_first && code <= smart_ai_last)
            append_int(item, "index", index);
        append_text(item, "valueTable", table);
    }
    return 0;
}

int insert_schedule_list_to_xmlnode(net_schedule_t *schedule, TiXmlElement *parent)
{
    if (schedule == nullptr || parent == nullptr)
        return -1;
    TiXmlElement *list = append_element(parent, "ScheduleList");
    for (const Combination &combination : combinations) {
        unsigned int marked[days] = {};
        unsigned int any = 0;
        for (int day = 0; day < days; ++day) {
            for (int hour = 0; hour < hours_a_day; ++hour)
                if ((schedule->section[day][hour].bits[0] & classic_types) == combination.types)
                    marked[day] |= 1u << hour;
            any |= marked[day];
        }
        if (any == 0)
            continue;
        TiXmlElement *entry = append_element(list, "Schedule");
        append_text(entry, "alarmType", combination.word);
        TiXmlElement *blocks = append_element(entry, "timeBlockList");
        for (int day = 0; day < days; ++day)
            append_time_blocks(blocks, day, marked[day]);
    }
    return 0;
}
