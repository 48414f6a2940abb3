// Weekly schedules: runs of hours of a weekday, the per-type form and the per-combination form.
#ifndef NETPUBLIC_SCHEDULES_H
#define NETPUBLIC_SCHEDULES_H

#include "engine/describe.h"
#include "values/tables.h"

#include <net_types.h>

namespace netpublic {

constexpr int week_days = 7;
constexpr int day_hours = 24;
constexpr int week_hours = week_days * day_hours;

// A run of hours of one weekday, "timeBlock".
struct TimeBlock {
    int enable;
    int weekDay;   // 0 Sunday to 6 Saturday
    int beginHour; // 0 to 23
    int endHour;   // the last hour of the run, not before the first
};

inline int check_block(TimeBlock &block)
{
    return block.beginHour > block.endHour ? -1 : 0;
}

struct TimeBlockFields : Description {
    using T = TimeBlock;
    static constexpr Field fields[] = {
        flag("enable", AT(enable)).required(),
        word("weekDay", AT(weekDay), weekdays).upto(15).prefix().required(),
        integer("beginHour", AT(beginHour)).in(0, day_hours - 1).required(),
        integer("endHour", AT(endHour))
            .in(0, day_hours - 1)
            .required()
            .accepts("not before the first hour")
            .sample("23"),
    };
    static constexpr Traits traits = Traits{}.after<T, check_block>();
};
inline constexpr auto time_block = describe<TimeBlockFields>();

// The next enabled run of the hours for which `is_set(day, hour)` holds, for the writer of a list of blocks.
template <class IsSet> Give next_block(TimeBlock &block, Item &item, IsSet is_set)
{
    int day = static_cast<int>(item.cursor) / day_hours, hour = static_cast<int>(item.cursor) % day_hours;
    for (; day < week_days; ++day, hour = 0)
        for (; hour < day_hours; ++hour) {
            if (!is_set(day, hour))
                continue;
            block = {1, day, hour, hour};
            while (block.endHour + 1 < day_hours && is_set(day, block.endHour + 1))
                ++block.endHour;
            item.cursor = static_cast<unsigned>(day * day_hours + block.endHour + 1);
            return Give::written;
        }
    return Give::ended;
}

// The per-type form: the week's hours of one alarm type, "item".
struct TypeItem {
    const char *type = nullptr;
    int index = 0; // of a smart-AI rule
    const char *hours = nullptr;
    int indexed = 0; // the rule is written
};
struct WrittenTypeItem : TypeItem {
    // The texts are not cleared for each type that is left out.
    // cppcheck-suppress uninitMemberVar
    WrittenTypeItem() {}
    char word[64];
    char text[week_hours + 1];
};

int take_type_item(net_schedule_t &schedule, const TypeItem &item);
Give give_type_item(const net_schedule_t &schedule, WrittenTypeItem &written, Item &item);

struct TypeItemFields : Description {
    using T = TypeItem;
    static constexpr Field fields[] = {
        view("type", AT(type))
            .upto(127)
            .accepts("an alarm type's word, not missing; an item with an unknown one is skipped")
            .sample("crossline"),
        integer("index", AT(index))
            .own_test()
            .when(AT(indexed))
            .accepts("the rule of a smart-AI type; an item with a number that is none is skipped")
            .sample("1"),
        view("valueTable", AT(hours))
            .upto(week_hours)
            .accepts("24 characters a day, not missing; 1 sets an hour, others and those that are missing clear it")
            .sample("11"),
    };
};
inline constexpr auto type_item = describe<TypeItemFields>();

struct TypeScheduleFields : Description {
    using T = net_schedule_t;
    static constexpr Field fields[] = {
        wires_part<T, take_type_item, give_type_item>("item", type_item).accepts("an item with a type and a table"),
    };
    static constexpr Traits traits =
        HERE.logged_as("net_xml_public.cpp").parser("get_type_schedule_list_from_xmlnode").failure(Line::plain_failed);
};
inline constexpr auto type_schedule = describe<TypeScheduleFields>();

// The per-combination form: the hours that have one combination of types, "Schedule".
struct Combination {
    net_schedule_t *schedule = nullptr;
    const char *word = nullptr;         // there before it is looked at
    time_section_t types = {};          // what is read sets them in the hours of its blocks
    unsigned int hours[week_days] = {}; // what is written; bit h is hour h

    Combination() = default;
    explicit Combination(net_schedule_t &target) : schedule(&target) {}
};

inline int take_block(Combination &combination, const TimeBlock &block)
{
    for (int hour = block.beginHour; block.enable == 1 && hour <= block.endHour; ++hour)
        combination.schedule->section[block.weekDay][hour] = combination.types;
    return 0;
}
Give give_block(const Combination &combination, TimeBlock &block, Item &item);
int find_types(Combination &combination);
int take_combination(net_schedule_t &schedule, const Combination &combination);
Give give_combination(const net_schedule_t &schedule, Combination &combination, Item &item);

struct BlockListFields : Description {
    using T = Combination;
    static constexpr Field fields[] = {
        wires_part<T, take_block, give_block>("timeBlock", time_block, week_hours)
            .stop_when_full()
            .accepts("the last hour is not before the first"),
    };
    static constexpr Traits traits = Traits{}.exact_names().others_fail();
};
inline constexpr auto block_list = describe<BlockListFields>();

struct CombinationFields : Description {
    using T = Combination;
    static constexpr Field fields[] = {
        view("alarmType", AT(word))
            .upto(62)
            .whole_name()
            .required()
            .then<find_types>()
            .accepts("an alarm type's word; an unknown one clears the hours")
            .sample("MD"),
        part("timeBlockList", block_list).required(),
    };
    static constexpr Traits traits = Traits{}.in_order().others_fail();
};
inline constexpr auto combination_record = describe<CombinationFields>();

constexpr int most_combinations = 9;

struct CombinationListFields : Description {
    using T = net_schedule_t;
    static constexpr Field fields[] = {
        wires_part<T, take_combination, give_combination>("Schedule", combination_record, most_combinations)
            .stop_when_full(),
    };
    static constexpr Traits traits = Traits{}.exact_names().others_fail();
};
inline constexpr auto combination_list = describe<CombinationListFields>();

} // namespace netpublic

#endif
