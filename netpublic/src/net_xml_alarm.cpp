// Alarm and intelligent detection: motion detection and detector areas, alarm reports and searches,
// smart-AI rules and AI settings, floodlights.
#include "engine/engine.h"
#include "engine/records.h"
#include "engine/registry.h"
#include "toolkit/detections.h"
#include "toolkit/schedules.h"
#include "values/grid.h"
#include "values/tables.h"

#include <net_public.h>

#include <climits>
#include <cstring>
#include <iterator>

namespace netpublic {
namespace {

// Motion detection --------------------------------------------------------------------------------

using Motion = tag_net_pic_motion_cfg_v20_t;
using Period = tag_net_sensitivity_info_v20_t;

// The grid with the size in which it is sent. What is read only describes the table: the payload's own width and
// height come from the message's children of these names.
struct Scope {
    int columns = 0;
    int rows = 0;
    unsigned char (*cells)[grid_columns] = nullptr;

    Scope() = default;
    explicit Scope(Motion &motion) : cells(motion.scope) {}
};

struct ScopeFields : Description {
    using T = Scope;
    static constexpr Field fields[] = {
        integer("columns", AT(columns)).in(1, grid_columns).required().accepts("those of the table").sample("6"),
        integer("rows", AT(rows)).in(1, grid_rows).required().accepts("those of the table").sample("4"),
        grid_behind("valueTable", AT(cells), AT(columns), AT(rows))
            .upto(2710)
            .required()
            .complain_plainly("Func(get_scope_from_xmlnode) Line(%d) ret(%d) columns(%d) rows(%d)\n"),
    };
    static constexpr Traits traits = HERE.writer("net_md_s2x", "");
};
constexpr auto scope_record = describe<ScopeFields>();

// The cells have been stored as they were read.
int take_scope(Motion &, const Scope &)
{
    return 0;
}

// Grids up to the classic 96 x 64 are always written in that size, padded.
Give give_scope(const Motion &motion, Scope &scope)
{
    constexpr int classic_columns = 96;
    constexpr int classic_rows = 64;
    const bool classic = motion.width <= classic_columns && motion.height <= classic_rows;
    scope.columns = classic ? classic_columns : motion.width;
    scope.rows = classic ? classic_rows : motion.height;
    scope.cells = const_cast<Motion &>(motion).scope; // only read
    const bool fits = scope.columns >= 0 && scope.columns <= grid_columns && scope.rows >= 0 && scope.rows <= grid_rows;
    return fits ? Give::written : Give::failed;
}

constexpr int periods = 4;

// A sensitivity period and its place in its list. It counts as present unless it says otherwise.
struct ListedPeriod {
    Period period = {};
    int place = 0;
    int id = 0;
    int priority = 0;

    ListedPeriod() = default;
    ListedPeriod(const Period &old, unsigned index) : period(old), place(static_cast<int>(index))
    {
        period.enable = 1;
    }
    ListedPeriod(const Period (&list)[periods], unsigned index) : ListedPeriod(list[index], index) {}
    ListedPeriod(const net_md_sens_v20_t &list, unsigned index) : ListedPeriod(list.sensInfo, index) {}
};

struct PrioritisedFields : Description {
    using T = ListedPeriod;
    static constexpr Field fields[] = {
        integer("priority", AT(priority)).write_only(),       integer("sensitivity", AT(period.sensitivity)).in(1, 50),
        integer("beginHour", AT(period.beginHour)).in(0, 23), integer("beginMinute", AT(period.beginMinute)).in(0, 59),
        integer("endHour", AT(period.endHour)).in(0, 23),     integer("endMinute", AT(period.endMinute)).in(0, 59),
    };
    static constexpr Field also_shown[] = {shown("enable", AT(period.enable))};
};
constexpr auto prioritised = describe<PrioritisedFields>();

// What was read of a period stays, even if the rest is refused.
int take_prioritised(net_md_sens_v20_t &list, const ListedPeriod &period, const Item &item)
{
    list.sensInfo[item.index] = period.period;
    return item.result;
}

Give give_prioritised(const net_md_sens_v20_t &list, ListedPeriod &period, const Item &item)
{
    if (item.index == periods)
        return Give::ended;
    period.period = list.sensInfo[item.index];
    period.priority = list.priority[item.index];
    return period.period.enable != 0 ? Give::written : Give::left_out;
}

struct PrioritisedListFields : Description {
    using T = net_md_sens_v20_t;
    static constexpr Field fields[] = {
        wires_part<T, take_prioritised, give_prioritised>("sensInfo", prioritised, periods).stop_when_full(),
    };
    static constexpr Field also_shown[] = {
        shown("sensInfo", AT(sensInfo)).shown(prioritised, offsetof(ListedPeriod, period)),
        shown("priority", AT(priority)),
    };
    static constexpr Traits traits = Traits{}.exact_names().others_fail();
};
constexpr auto prioritised_list = describe<PrioritisedListFields>();

// The priority of a period. Unlike everywhere else, the child is looked up by its exact name, case included.
constexpr char no_priority[] = "func(get_sensitivity_priority_list_from_xmlnode)sensitivity priority node none found\n";

struct Priority {
    int priority;
};

struct PriorityFields : Description {
    using T = Priority;
    static constexpr Field fields[] = {integer("priority", AT(priority)).required()};
    static constexpr Traits traits = HERE.looked_up().missing(no_priority);
};
constexpr auto priority_record = describe<PriorityFields>();

int take_priority(net_md_sens_v20_t &list, const Priority &priority, const Item &item)
{
    if (item.result == 0)
        list.priority[item.index] = priority.priority;
    return item.result;
}

struct PriorityListFields : Description {
    using T = net_md_sens_v20_t;
    static constexpr Field fields[] = {
        wires_part<T, take_priority>("sensInfo", priority_record, periods).stop_when_full(),
    };
    static constexpr Traits traits = HERE.any_name().others_fail().unknown(no_priority); // a comment has none
};
constexpr auto priority_list = describe<PriorityListFields>();

struct NewSensitivityFields : Description {
    using T = net_md_sens_v20_t;
    static constexpr Field fields[] = {
        preset(AT(valid), 1), // the element alone counts
        integer("sensitivityDefault", AT(sensitivityDefault)),
        part("sensInfoList", prioritised_list).again(priority_list), // the periods first, then their priorities
    };
};
constexpr auto new_sensitivity = describe<NewSensitivityFields>();

int check_id(ListedPeriod &period)
{
    return period.id == period.place ? 0 : -1;
}

// A period of the older list; whether it counts is read and never written.
struct DayPartFields : Description {
    using T = ListedPeriod;
    static constexpr Field fields[] = {
        integer("id", AT(id))
            .in(0, periods - 1)
            .then<check_id>()
            .accepts("the period's place in the list, from 0")
            .sample("#"),
        PrioritisedFields::fields[1],
        PrioritisedFields::fields[2],
        PrioritisedFields::fields[3],
        PrioritisedFields::fields[4],
        PrioritisedFields::fields[5],
        integer("enable", AT(period.enable)).read_only(),
    };
};
constexpr auto day_part = describe<DayPartFields>();

int take_day_part(Period (&list)[periods], const ListedPeriod &period, const Item &item)
{
    list[item.index] = period.period;
    return item.result;
}

Give give_day_part(const Period (&list)[periods], ListedPeriod &period, const Item &item)
{
    if (item.index == periods)
        return Give::ended;
    period.period = list[item.index];
    period.id = static_cast<int>(item.index);
    return Give::written;
}

struct DayPartListFields : Description {
    using T = Period[periods];
    static constexpr Field fields[] = {
        wires<take_day_part, give_day_part>("sensitivityInfo", itself<T>("sensitivityInfo"), day_part, periods)
            .exactly()
            .shown(day_part, offsetof(ListedPeriod, period)),
    };
    static constexpr Traits traits = Traits{}.exact_names().others_fail();
};
constexpr auto day_part_list = describe<DayPartListFields>();

int take_arming(Motion &motion, const TimeBlock &block)
{
    for (int hour = block.beginHour; hour <= block.endHour; ++hour)
        motion.timeBlock[block.weekDay][hour] = block.enable;
    return 0;
}

// A slot is armed when it differs from the exception record's unused word, which is 0 in every payload that comes
// from here.
Give give_arming(const Motion &motion, TimeBlock &block, Item &item)
{
    return next_block(block, item, [&motion](int day, int hour) {
        return motion.timeBlock[day][hour] != motion.handleException.reserved;
    });
}

struct ArmingFields : Description {
    using T = Motion;
    static constexpr Field fields[] = {
        wires_part<T, take_arming, give_arming>("timeBlock", time_block, week_hours)
            .stop_when_full()
            .accepts("the last hour is not before the first"),
    };
    static constexpr Field also_shown[] = {shown("timeBlock", AT(timeBlock))};
    static constexpr Traits traits = Traits{}.exact_names().others_fail();
};
constexpr auto arming = describe<ArmingFields>();

struct ExceptionFields : Description {
    using T = tag_net_handle_exception_v20_t;
    static constexpr Field fields[] = {
        mask("handleType", AT(handleType), alarm_actions).upto(63).none_clears(),
        // A refused child leaves them alone.
        int_list("chnHandleType", AT(chnHandleType), 0).upto(1023).late(),
        int_list("relAlarmOut", AT(relAlarmOut), 0).upto(1023).late(),
    };
};
constexpr auto exception_record = describe<ExceptionFields>();

struct MotionFields : Description {
    using T = Motion;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, 63),
        flag("enable", AT(enable)),
        integer("usepir", AT(usepir)),
        integer("width", AT(width)).in(1, grid_columns),
        integer("height", AT(height)).in(1, grid_rows),
        wire_part<T, take_scope, give_scope>("scope", scope_record),
        group("sensitivityInfoList", AT(sensitivityInfo), day_part_list),
        group("sensInfoNew", AT(sensInfoNew), new_sensitivity).when(AT(sensInfoNew.valid)),
        part("timeBlockList", arming),
        group("handleException", AT(handleException), exception_record).read_only(),
    };
    static constexpr Field also_shown[] = {shown("scope", AT(scope))};
    static constexpr Traits traits =
        HERE.parser("net_md_x2s")
            .writer("net_md_s2x", "MD")
            .sets_inited()
            .title("motion detection settings",
                   "Where, when and how sensitively a channel watches for motion, and what it does about it.");
};
constexpr auto motion_message = describe<MotionFields>();

// Detector areas ----------------------------------------------------------------------------------

// Unlike the motion grid, an area is stored column by column and keeps its size.
struct AreaFields : Description {
    using T = net_ai_area_t;
    static constexpr Field fields[] = {
        integer("width", AT(width)).in(1, grid_columns).required().accepts("the area's columns").sample("6"),
        integer("height", AT(height)).in(1, grid_rows).required().accepts("the area's rows").sample("4"),
        column_grid("area", AT(cells), AT(width), AT(height))
            .upto(2999)
            .required()
            .complain_plainly("Func(get_area_from_xmlnode) Line(%d) ret(%d) width(%d) rows(%d)\n"),
    };
    static constexpr Traits traits = HERE.parser("get_area_from_xmlnode").entry(Line::error).failure(Line::error);
};
constexpr auto area_record = describe<AreaFields>();

// The detectors in the order of their bits, NET_ALARM_AREA_E: their keys and their names in the trace.
struct Detector {
    char key[12];
    char name[8];
};
constexpr Detector detectors[] = {
    {"mdArea", "md"},          {"personArea", "person"}, {"vehicleArea", "vehicle"}, {"faceArea", "face"},
    {"dogCatArea", "dog_cat"}, {"otherArea", "other"},   {"packageArea", "package"},
};

unsigned detector_of(const Item &item)
{
    // The first characters tell nearly all of them apart.
    unsigned detector = 0;
    while (*detectors[detector].key != *item.key || std::strcmp(detectors[detector].key, item.key) != 0)
        ++detector;
    return detector;
}

void trace_detector(net_alarm_area_t &, const Item &item)
{
    log_trace(NET_HERE, "%s area xml\n", detectors[detector_of(item)].name);
}

int trace_type(net_alarm_area_t &areas)
{
    log_trace(NET_HERE, "pAi->type(%d)\n", static_cast<int>(areas.type));
    return 0;
}

int add_detector(net_alarm_area_t &areas, const Item &item)
{
    areas.type |= 1u << detector_of(item);
    return trace_type(areas);
}

constexpr Field detector_area(const Detector &detector, Member<net_alarm_area_t, net_ai_area_t> member)
{
    return group(detector.key, member, area_record).ahead<trace_detector>().then<add_detector>();
}

struct AlarmAreaFields : Description {
    using T = net_alarm_area_t;
    static constexpr Field fields[] = {
        integer("chn", AT(chn)).then<trace_type>().quiet(), detector_area(detectors[0], AT(mdArea)),
        detector_area(detectors[1], AT(personArea)),        detector_area(detectors[2], AT(vehicleArea)),
        detector_area(detectors[3], AT(faceArea)),          detector_area(detectors[4], AT(dogCatArea)),
        detector_area(detectors[5], AT(otherArea)),         detector_area(detectors[6], AT(packageArea)),
    };
    static constexpr Field also_shown[] = {shown("type", AT(type))};
    static constexpr Traits traits =
        HERE.parser("net_alarm_area_x2s")
            .entry(Line::error)
            .failure(Line::error)
            .any_size()
            .title("detector areas", "The part of the picture in which each detector of a channel watches.");
};
constexpr auto alarm_area_message = describe<AlarmAreaFields>();

// Alarm and day/night reports ---------------------------------------------------------------------

constexpr Word status_list[] = {
    {NET_ALARM_STATUS_MD, "MD"},      {NET_ALARM_STATUS_VIDEO_LOSS, "videoLoss"}, {NET_ALARM_STATUS_BLIND, "blind"},
    {NET_ALARM_STATUS_IO, "IOAlarm"}, {NET_ALARM_STATUS_VISITOR, "visitor"},
};
constexpr auto status_words = words<status_list>();

// Alarm-type codes.
constexpr Word ai_event_list[] = {
    {18, "people"}, {19, "vehicle"}, {20, "face"}, {22, "dog_cat"}, {21, "other"}, {27, "package"}, {44, "cry"},
};
constexpr auto ai_events = words<ai_event_list>();

// Where the object masks of the first detections are kept; left and missing objects have none.
using RuleMasks = unsigned int[smart_ai_rules];
constexpr RuleMasks net_smart_ai_stat_t::*detection_masks[] = {
    &net_smart_ai_stat_t::crossline, &net_smart_ai_stat_t::intrusion, &net_smart_ai_stat_t::loitering};

constexpr Word smart_object_list[] = {{0x1, "people"}, {0x2, "vehicle"}, {0x4, "dog_cat"}};
constexpr auto smart_objects = words<smart_object_list>();

// What a rule has seen.
struct Sublist {
    int index = -1;
    int objects = 0;
};

struct SublistFields : Description {
    using T = Sublist;
    static constexpr Field fields[] = {
        integer("index", AT(index)).accepts("a rule, 0 to 2; entries of others are dropped").sample("1"),
        word("type", AT(objects), smart_objects).upto(INT_MAX).adds(),
    };
    static constexpr Traits traits = HERE.parser("get_smartai_sublist_from_xmlnode").failure(Line::parser);
};
constexpr auto sublist_record = describe<SublistFields>();

// A rule number that is no rule's drops the sublist; the rest of the report still counts.
int take_sublist(RuleMasks &masks, const Sublist &sublist)
{
    if (sublist.index < 0 || sublist.index >= smart_ai_rules)
        log_error(NET_HERE, "invalid param index:%d\n", sublist.index);
    else
        masks[sublist.index] |= static_cast<unsigned int>(sublist.objects);
    return 0;
}

// One detection's entry in a report.
struct SmartType {
    const char *type = "";
    int index = 0; // bit b: rule b has fired
    RuleMasks masks = {};
};

struct SmartTypeFields : Description {
    using T = SmartType;
    static constexpr Field fields[] = {
        view("type", AT(type))
            .upto(19)
            .accepts("crossline, intrusion, loitering, legacy or loss, in this case; other entries are dropped")
            .sample("crossline"),
        integer("index", AT(index)).accepts("bit b stands for rule b; entries with a negative number are dropped"),
        wires<take_sublist>("sublist", AT(masks), sublist_record),
    };
};
constexpr auto smart_type = describe<SmartTypeFields>();

// Entries that make no sense are logged and dropped, not refused.
int take_smart_type(net_smart_ai_stat_t &smart, const SmartType &entry)
{
    if (*entry.type == '\0' || entry.index < 0) {
        log_error(NET_HERE, "invalid param type:%s index:%d\n", entry.type, entry.index);
        return 0;
    }
    const auto *detection = find_whole(detections, entry.type, true);
    if (detection == nullptr) {
        log_red(NET_HERE, "unkonwn type:%s\n", entry.type); // spelled so, and never gated
        return 0;
    }
    for (int rule = 0; rule < smart_ai_rules; ++rule)
        if ((entry.index >> rule & 1) != 0)
            alarm_in_add_event(&smart.events, detection->code() + rule);
    const auto place = static_cast<unsigned>(detection->code() - smart_ai_first) / smart_ai_rules;
    if (place < std::size(detection_masks))
        std::memcpy(smart.*detection_masks[place], entry.masks, sizeof entry.masks);
    return 0;
}

// Which rules of the detection have fired.
int fired_rules(const net_smart_ai_stat_t &smart, int first)
{
    int rules = 0;
    for (int rule = 0; rule < smart_ai_rules; ++rule)
        if (alarm_in_check_event(&smart.events, static_cast<unsigned int>(first + rule)) != 0)
            rules |= 1 << rule;
    return rules;
}

Give give_smart_type(const net_smart_ai_stat_t &smart, SmartType &entry, const Item &item)
{
    const WordTable &words = detections;
    if (item.index == words.count)
        return Give::ended;
    const auto &detection = words.begin()[item.index];
    entry.type = words.text(detection);
    entry.index = fired_rules(smart, detection.code());
    return entry.index != 0 ? Give::written : Give::left_out;
}

// Only which rules have fired is written.
struct SmartFields : Description {
    using T = net_smart_ai_stat_t;
    static constexpr Field fields[] = {
        unsigned_longlong("pts", AT(pts)).read_only(),
        unsigned_longlong("frameIndex", AT(frameIndex)).read_only(),
        wires_part<T, take_smart_type, give_smart_type>("smartAiType", smart_type),
    };
    static constexpr Field also_shown[] = {
        shown("events", AT(events)),
        shown("crossline", AT(crossline)).spelled(smart_objects),
        shown("intrusion", AT(intrusion)).spelled(smart_objects),
        shown("loitering", AT(loitering)).spelled(smart_objects),
    };
    static constexpr Traits traits = HERE.parser("get_smart_ai_from_xmlnode").failure(Line::parser);
};
constexpr auto smart_record = describe<SmartFields>();

bool has_fired(const net_state_v20_t &state)
{
    const WordTable &words = detections;
    for (const auto &detection : words)
        if (fired_rules(state.smartAi, detection.code()) != 0)
            return true;
    return false;
}

// Read as an item of a report, written as a message of its own.
struct AlarmEventFields : Description {
    using T = net_state_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        mask("status", AT(status), status_words).accumulates().none_conflicts(),
        events("AItype", AT(aiEvents), ai_events),
        flag("recording", AT(recording)),
        integer("timeStamp", AT(timeStamp)).at_least(0),
        unsigned_longlong("offset", AT(offset)).read_only(),
        integer("timeSec", AT(timeSec)).at_least(0).read_only(),
        integer("timeUsec", AT(timeUsec)).at_least(0).read_only(),
        integer("wakeAlarm", AT(wakeAlarm)).at_least(0).read_only(),
        integer("previewOnly", AT(previewOnly)).at_least(0).read_only(),
        group("smartAiTypeList", AT(smartAi), smart_record).when<has_fired>(),
    };
    static constexpr Traits traits =
        HERE.parser("get_AlarmEvent_from_xmlnode")
            .writer("net_alarm_report_s2x", "AlarmEvent")
            .failure(Line::parser)
            .title("alarm event", "What one channel has just seen: motion, detected objects, rules that have fired.");
};
constexpr auto alarm_event = describe<AlarmEventFields>();

struct AlarmReportFields : Description {
    using T = net_alarm_report_t;
    static constexpr Field fields[] = {
        list("AlarmEvent", AT(state), alarm_event).overwrite_last(),
    };
    static constexpr Traits traits = HERE.parser("net_alarm_report_x2s")
                                         .failure(Line::parser)
                                         .sets_inited()
                                         .title("alarm report", "The first and the last alarm event of a message.");
};
constexpr auto alarm_report = describe<AlarmReportFields>();

constexpr Word day_night_mode_list[] = {{0, "day"}, {1, "night"}, {2, "led_day"}, {3, "preset"}, {4, "unknown"}};
constexpr auto day_night_modes = words<day_night_mode_list>();

struct DayNightEventFields : Description {
    using T = net_day_night_state_v20_t;
    static constexpr Field fields[] = {
        integer("switching", AT(switching)),
        word("mode", AT(mode), day_night_modes).otherwise(0),
    };
    static constexpr Traits traits = HERE.parser("get_day_night_event_from_xmlnode").failure(Line::parser);
};
constexpr auto day_night_event = describe<DayNightEventFields>();

struct DayNightReportFields : Description {
    using T = net_day_night_report_t;
    static constexpr Field fields[] = {
        list("DayNightEvent", AT(state), day_night_event).overwrite_last(),
    };
    static constexpr Traits traits =
        HERE.parser("net_day_night_report_x2s")
            .failure(Line::parser)
            .sets_inited()
            .title("day and night report",
                   "Whether the picture is switching between day and night, and to which mode.");
};
constexpr auto day_night_report = describe<DayNightReportFields>();

// Alarm-video and event-log search ----------------------------------------------------------------

// What an alarm-video search looks for. Only the first ones are ever written, in this order.
constexpr Word search_type_list[] = {
    {NET_SEARCH_MD, "md"},
    {NET_SEARCH_TIME_REC, "time_rec"},
    {NET_SEARCH_MAN_REC, "man_rec"},
    {NET_SEARCH_IO, "io"},
    {NET_SEARCH_PEOPLE, "people"},
    {NET_SEARCH_FACE, "face"},
    {NET_SEARCH_VEHICLE, "vehicle"},
    {NET_SEARCH_DOG_CAT, "dog_cat"},
    {NET_SEARCH_VISITOR, "visitor"},
    {NET_SEARCH_PIR, "pir"},
    {NET_SEARCH_OTHER, "other"},
    {NET_SEARCH_PACKAGE, "package"},
    {NET_SEARCH_CRY, "cry", Use::read},
    {NET_SEARCH_CROSSLINE, "crossline", Use::read},
    {NET_SEARCH_INTRUDE, "intrude", Use::read},
    {NET_SEARCH_LOITERING, "loitering", Use::read},
    {NET_SEARCH_LEGACY, "legacy", Use::read},
    {NET_SEARCH_LOSS, "loss", Use::read},
};
constexpr auto search_types = words<search_type_list>();

// What an event-log search looks for: motion takes in other objects and the infrared sensor, people and
// faces are one.
constexpr int log_motion = NET_SEARCH_MD | NET_SEARCH_OTHER | NET_SEARCH_PIR;
constexpr int log_person = NET_SEARCH_PEOPLE | NET_SEARCH_FACE;
constexpr Word log_type_list[] = {
    {log_motion, "md"},
    {NET_SEARCH_TIME_REC, "time_rec"},
    {NET_SEARCH_MAN_REC, "man_rec"},
    {NET_SEARCH_IO, "io"},
    {log_person, "people"},
    {log_person, "face"},
    {NET_SEARCH_VEHICLE, "vehicle"},
    {NET_SEARCH_DOG_CAT, "dog_cat"},
    {NET_SEARCH_VISITOR, "visitor"},
    {NET_SEARCH_PIR, "pir"},
    {NET_SEARCH_OTHER, "other"},
    {NET_SEARCH_PACKAGE, "package"},
    {NET_SEARCH_CRY, "cry"},
    {NET_SEARCH_CROSSLINE, "crossline"},
    {NET_SEARCH_INTRUDE, "intrude"},
    {NET_SEARCH_LOITERING, "loitering"},
    {NET_SEARCH_LEGACY, "legacy"},
    {NET_SEARCH_LOSS, "loss"},
    {NET_SEARCH_LINKAGE, "linkage"},
};
constexpr auto log_types = words<log_type_list>();

// The types of a found video are codes, not bits, and are OR-ed all the same.
constexpr Word record_type_list[] = {
    {2, "md"},      {12, "pir"},    {11, "io"},      {5, "people"},   {7, "face"},
    {6, "vehicle"}, {8, "dog_cat"}, {10, "visitor"}, {13, "package"}, {9, "other"},
};
constexpr auto record_types = words<record_type_list>();

constexpr Word event_type_list[] = {{NET_SEARCH_CRY, "cry"}};
constexpr auto event_type_words = words<event_type_list>();

struct EventTypeFields : Description {
    using T = net_find_alarm_video_t;
    static constexpr Field fields[] = {
        word("i", AT(alarmType), event_type_words).upto(INT_MAX).adds(),
    };
};
constexpr auto event_types = describe<EventTypeFields>();

struct FindAlarmVideoFields : Description {
    using T = net_find_alarm_video_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, 63),
        text("uid", AT(uid)),
        integer("destination", AT(destination)),
        integer("fileHandle", AT(fileHandle)).at_least(0),
        integer("streamType", AT(streamType)).in(0, 4),
        group("startTime", AT(startTime), time_record),
        group("endTime", AT(endTime), time_record),
        unsigned_longlong("logicChnBitmap", AT(logicChnBitmap)),
        integer("notSearchVideo", AT(notSearchVideo)),
        mask("alarmType", AT(alarmType), search_types).upto(INT_MAX).starting(NET_SEARCH_MD), // motion always counts
        part("eventAlarmType", event_types),
    };
    static constexpr Traits traits =
        HERE.parser("net_find_alarm_video_x2s")
            .failure(Line::parser)
            .any_size()
            .title("alarm video search", "The time span and the alarm types for which recorded videos are searched.");
};
constexpr auto find_alarm_video = describe<FindAlarmVideoFields>();

struct AlarmVideoFields : Description {
    using T = net_alarm_video_item_t;
    static constexpr Field fields[] = {
        group("startTime", AT(startTime), time_record),
        group("endTime", AT(endTime), time_record),
        text("fileName", AT(fileName)),
        text("fileId", AT(fileId)),
        integer("typeExtension", AT(typeExtension)),
        mask("alarmType", AT(alarmType), record_types),
        integer("bEncrypted", AT(bEncrypted)),
    };
};
constexpr auto alarm_video = describe<AlarmVideoFields>();

struct AlarmVideoListFields : Description {
    using T = tag_net_alarm_video_v20_t;
    static constexpr Field fields[] = {
        list("alarmVideo", AT(item), alarm_video).counted_by(AT(itemNum)),
    };
    static constexpr Traits traits = HERE.parser("get_alarm_video_file_list_from_xmlnode").failure(Line::parser);
};
constexpr auto alarm_video_list = describe<AlarmVideoListFields>();

struct AlarmVideoInfoFields : Description {
    using T = tag_net_alarm_video_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, 63),
        integer("bFinished", AT(bFinished)),
        integer("fileHandle", AT(fileHandle)).at_least(0),
        part("alarmVideoList", alarm_video_list),
    };
    static constexpr Traits traits =
        HERE.parser("net_alarm_video_info_x2s")
            .failure(Line::parser)
            .any_size()
            .title("alarm video search result",
                   "The recorded videos that a search has found, with their times, names and alarm types.");
};
constexpr auto alarm_video_info = describe<AlarmVideoInfoFields>();

struct SearchedDevicesFields : Description {
    using T = net_find_event_log_t;
    static constexpr Field fields[] = {
        list("deviceInfo", AT(devices), query_device)
            .stop_when_full()
            .item_line("get_query_device_info_from_xmlnode error\n"),
    };
    static constexpr Traits traits = HERE.logged_as("net_xml_public.cpp");
};
constexpr auto searched_devices = describe<SearchedDevicesFields>();

struct FindEventLogFields : Description {
    using T = net_find_event_log_t;
    static constexpr Field fields[] = {
        part("devices", searched_devices),
        integer("logTypeBits", AT(logTypeBits)).at_least(0),
        integer("desc", AT(desc)).at_least(0),
        integer("notSearchVideo", AT(notSearchVideo)),
        integer("handle", AT(handle)),
        integer("maxEventCount", AT(maxEventCount)).at_least(0),
        group("startTime", AT(startTime), time_record),
        group("endTime", AT(endTime), time_record),
        // Unlike the alarm-video search it adds to what is there and brings no motion of its own.
        mask("alarmType", AT(alarmType), log_types).upto(INT_MAX).accumulates(),
    };
    static constexpr Traits traits =
        HERE.parser("net_find_event_log_x2s")
            .failure(Line::parser)
            .any_size()
            .title("event log search",
                   "The devices, the time span and the alarm types for which the event log is searched.");
};
constexpr auto find_event_log = describe<FindEventLogFields>();

struct LogDeviceFields : Description {
    using T = net_event_log_device_t;
    static constexpr Field fields[] = {
        text("uid", AT(uid)),
        integer("eventCount", AT(eventCount)),
        int_items("logicChnEventCount", AT(logicChnEventCount)).counted_by(AT(logicChnNum)),
    };
};
constexpr auto log_device = describe<LogDeviceFields>();

// Only devices with a name are written.
using CountedDevices = net_event_log_device_t[36];
Give give_device(const CountedDevices &devices, net_event_log_device_t &device, const Item &item)
{
    if (item.index == std::size(devices))
        return Give::ended;
    if (devices[item.index].uid[0] == '\0')
        return Give::left_out;
    device = devices[item.index];
    return Give::written;
}

struct DeviceCountFields : Description {
    using T = net_event_log_brief_t;
    static constexpr Field fields[] = {wires<nullptr, give_device>("device", AT(device), log_device)};
};
constexpr auto device_counts = describe<DeviceCountFields>();

struct DailyCountFields : Description {
    using T = net_event_log_brief_t;
    static constexpr Field fields[] = {
        int_items("eventCount", AT(dailyEventCount)).counted_by(AT(dayNum)),
    };
};
constexpr auto daily_counts = describe<DailyCountFields>();

// The request names the times and the type, the reply holds the counts.
struct LogBriefFields : Description {
    using T = net_event_log_brief_t;
    static constexpr Field fields[] = {
        group("startTime", AT(startTime), time_record).read_only(),
        group("endTime", AT(endTime), time_record).read_only(),
        integer("logType", AT(logType)).read_only(),
        integer("mdCount", AT(mdCount)).write_only(),
        integer("peopleCount", AT(peopleCount)).write_only(),
        integer("vehicleCount", AT(vehicleCount)).write_only(),
        integer("petCount", AT(petCount)).write_only(),
        integer("visitorCount", AT(visitorCount)).write_only(),
        integer("pirCount", AT(pirCount)).write_only(),
        integer("otherCount", AT(otherCount)).write_only(),
        integer("packageCount", AT(packageCount)).write_only(),
        integer("loiteringCount", AT(loiteringCount)).write_only(),
        integer("intrusionCount", AT(intrusionCount)).write_only(),
        integer("cryCount", AT(cryCount)).write_only(),
        integer("crossCount", AT(crossCount)).write_only(),
        integer("lossCount", AT(lossCount)).write_only(),
        integer("legacyCount", AT(legacyCount)).write_only(),
        integer("linkageCount", AT(linkageCount)).write_only(),
        part("deviceStatistics", device_counts).write_only(),
        part("dailyEventCounts", daily_counts).write_only(),
    };
    static constexpr Traits traits =
        HERE.parser("net_ev_log_brief_x2s")
            .writer("net_ev_log_brief_s2x", "EventLogBrief")
            .failure(Line::parser)
            .title("event log summary", "How many events of each kind there were, by device and by day.");
};
constexpr auto log_brief = describe<LogBriefFields>();

// Smart-AI rules ----------------------------------------------------------------------------------

constexpr Word operation_list[] = {
    {NET_SMAER_AI_OP_NONE, "none"},
    {NET_SMAER_AI_OP_ADD, "add"},
    {NET_SMAER_AI_OP_DELETE, "delete"},
    {NET_SMAER_AI_OP_MODIFY, "modify"},
};
constexpr auto operations = words<operation_list>();

constexpr Word direction_list[] = {
    {NET_CROSSLINE_DETECT_NONE, "none"},
    {NET_CROSSLINE_DETECT_ANTICLOCKWISE, "antiClockwise"},
    {NET_CROSSLINE_DETECT_CLOCKWISE, "clockwise"},
    {NET_CROSSLINE_DETECT_BOTH, "both"},
};
constexpr auto directions = words<direction_list>();

struct OperationFields : Description {
    using T = NET_SMAER_AI_OP_E;
    static constexpr Field fields[] = {word("op", itself<T>("op"), operations).otherwise(0).fallback(0)};
};
constexpr auto operation_value = describe<OperationFields>();

struct DirectionFields : Description {
    using T = NET_CROSSLINE_DETECT_DIRECTION_E;
    static constexpr Field fields[] = {word("direction", itself<T>("direction"), directions).otherwise(0).fallback(0)};
};
constexpr auto direction_value = describe<DirectionFields>();

struct PointFields : Description {
    using T = net_smart_ai_point_t;
    static constexpr Field fields[] = {real("x", AT(x)), real("y", AT(y))};
};
constexpr auto point_record = describe<PointFields>();

struct PointsFields : Description {
    using T = net_smart_ai_points_t;
    static constexpr Field fields[] = {
        preset(AT(pointNum), 0),
        list("point", AT(points), point_record).counted_by(AT(pointNum)),
    };
};
constexpr auto points_record = describe<PointsFields>();

// The list as a child of an element of the host's.
struct PointsChild : Description {
    using T = net_smart_ai_points_t;
    static constexpr Field fields[] = {part("pointList", points_record).write_only()};
};
constexpr auto points_child = describe<PointsChild>();

struct CrosslineRule : Description {
    using T = net_crossline_detect_t;
    static constexpr Field fields[] = {
        integer("index", AT(index)),
        integer("location", AT(location)),
        text("name", AT(name)),
        text("aiType", AT(aiType)),
        integer("sesensitivity", AT(sesensitivity)), // spelled so; "sensitivity" is not understood
        group("pointList", AT(pointList), points_record),
        word("direction", AT(direction), directions).otherwise(0).fallback(0),
    };
    static constexpr auto written =
        order("location", "index", "name", "aiType", "sesensitivity", "pointList", "direction");
};
constexpr auto crossline_rule = describe<CrosslineRule>();

// Somebody stays too long.
template <class Rule> struct StayRule : Description {
    using T = Rule;
    static constexpr Field fields[] = {
        integer("index", AT(index)),
        integer("location", AT(location)),
        text("name", AT(name)),
        text("aiType", AT(aiType)),
        integer("sesensitivity", AT(sesensitivity)), // spelled so
        integer("stayTime", AT(stayTime)),
        group("pointList", AT(pointList), points_record),
    };
    static constexpr auto written =
        order("location", "index", "name", "aiType", "sesensitivity", "stayTime", "pointList");
};
constexpr auto intrusion_rule = describe<StayRule<net_intrusion_detect_t>>();
constexpr auto loitering_rule = describe<StayRule<net_loitering_detect_t>>();

// Something is left or taken away.
template <class Rule> struct ThingRule : Description {
    using T = Rule;
    static constexpr Field fields[] = {
        integer("index", AT(index)),
        integer("location", AT(location)),
        text("name", AT(name)),
        integer("sesensitivity", AT(sesensitivity)), // spelled so
        integer("timeThresh", AT(timeThresh)),
        group("pointList", AT(pointList), points_record),
    };
    static constexpr auto written = order("location", "index", "name", "timeThresh", "sesensitivity", "pointList");
};
constexpr auto legacy_rule = describe<ThingRule<net_legacy_detect_t>>();
constexpr auto loss_rule = describe<ThingRule<net_loss_detect_t>>();

// The five rule lists differ in these only.
struct Crossline {
    using List = net_crossline_detect_list_t;
    static constexpr const auto &rule = crossline_rule;
    static constexpr const char *item = "crosslineDetectItem";
    static constexpr Traits traits =
        HERE.parser("net_smart_ai_crossline_detect_x2s")
            .writer("net_smart_ai_crossline_detect_s2x", "CrosslineDetect")
            .title("line crossing detection", "Up to four rules that fire when an object crosses a line.");
};
struct Intrusion {
    using List = net_intrusion_detect_list_t;
    static constexpr const auto &rule = intrusion_rule;
    static constexpr const char *item = "intrusionDetectItem";
    static constexpr Traits traits =
        HERE.parser("net_smart_ai_intrusion_detect_x2s")
            .writer("net_smart_ai_intrusion_detect_s2x", "IntrusionDetect")
            .title("intrusion detection", "Up to four rules that fire when an object stays in a region.");
};
struct Loitering {
    using List = net_loitering_detect_list_t;
    static constexpr const auto &rule = loitering_rule;
    static constexpr const char *item = "loiteringDetectItem";
    static constexpr Traits traits =
        HERE.parser("net_smart_ai_loitering_detect_x2s")
            .writer("net_smart_ai_loitering_detect_s2x", "LoiteringDetect")
            .title("loitering detection", "Up to four rules that fire when somebody lingers in a region.");
};
struct Legacy {
    using List = net_legacy_detect_list_t;
    static constexpr const auto &rule = legacy_rule;
    static constexpr const char *item = "legacyDetectItem";
    static constexpr Traits traits =
        HERE.parser("net_smart_ai_legacy_detect_x2s")
            .writer("net_smart_ai_legacy_detect_s2x", "LegacyDetect")
            .title("left object detection", "Up to four rules that fire when something is left in a region.");
};
struct Loss {
    using List = net_loss_detect_list_t;
    static constexpr const auto &rule = loss_rule;
    static constexpr const char *item = "lossDetectItem";
    static constexpr Traits traits =
        HERE.parser("net_smart_ai_loss_detect_x2s")
            .writer("net_smart_ai_loss_detect_s2x", "LossDetect")
            .title("missing object detection", "Up to four rules that fire when something is taken out of a region.");
};

// A message replaces the whole list.
template <class Detection> struct RuleListFields : Description {
    using T = typename Detection::List;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)),
        integer("maxNum", AT(maxNum)).when(AT(maxNum)),
        word("op", AT(op), operations).otherwise(0).fallback(0),
        integer("pointMinNum", AT(pointMinNum)).when(AT(pointMinNum)),
        integer("pointMaxNUm", AT(pointMaxNUm)).when(AT(pointMinNum)), // spelled so
        list(Detection::item, AT(item), Detection::rule).counted_by(AT(num)),
    };
    static constexpr Traits traits = Detection::traits.clears();
};
constexpr auto crossline_message = describe<RuleListFields<Crossline>>();
constexpr auto intrusion_message = describe<RuleListFields<Intrusion>>();
constexpr auto loitering_message = describe<RuleListFields<Loitering>>();
constexpr auto legacy_message = describe<RuleListFields<Legacy>>();
constexpr auto loss_message = describe<RuleListFields<Loss>>();

// AI settings -------------------------------------------------------------------------------------

// What is detected; "other" is understood and never written back.
constexpr Word detect_object_list[] = {
    {NET_AI_OBJECT_PEOPLE, "people"},   {NET_AI_OBJECT_VEHICLE, "vehicle"},        {NET_AI_OBJECT_FACE, "face"},
    {NET_AI_OBJECT_DOG_CAT, "dog_cat"}, {NET_AI_OBJECT_OTHER, "other", Use::read},
};
constexpr auto detect_objects = words<detect_object_list>();

constexpr Word track_object_list[] = {
    {NET_AI_OBJECT_PEOPLE, "people"},
    {NET_AI_OBJECT_VEHICLE, "vehicle"},
    {NET_AI_OBJECT_FACE, "face"},
    {NET_AI_OBJECT_DOG_CAT, "dog_cat"},
};
constexpr auto track_objects = words<track_object_list>();

struct AiCfgFields : Description {
    using T = net_ai_cfg_t;
    static constexpr Field fields[] = {
        integer("smartTrack", AT(smartTrack)),
        integer("smartTrackMode", AT(smartTrackMode)),
        integer("smartTrackModeAbility", AT(smartTrackModeAbility)).when(AT(smartTrackModeAbility), When::nonnegative),
        integer("channelId", AT(channelId)).in(0, 63),
        integer("smartTrackPt", AT(smartTrackPt)),
        integer("smartTrackObjectStopDelay", AT(smartTrackObjectStopDelay)).marks(AT(delayValid)).when(AT(delayValid)),
        integer("smartTrackObjectDisappearDelay", AT(smartTrackObjectDisappearDelay))
            .marks(AT(delayValid))
            .when(AT(delayValid)),
        mask("detectType", AT(detectType), detect_objects).none_clears(),
        mask("smartTrackType", AT(smartTrackType), track_objects).none_clears(),
        integer("cryDetectLevel", AT(cryDetectLevel)),
        integer("cryDetectAbility", AT(cryDetectAbility)).when(AT(cryDetectAbility)),
    };
    static constexpr auto written = order("channelId", "smartTrack", "smartTrackMode", "smartTrackModeAbility",
                                          "detectType", "smartTrackType", "smartTrackPt", "smartTrackObjectStopDelay",
                                          "smartTrackObjectDisappearDelay", "cryDetectAbility", "cryDetectLevel");
    static constexpr Field also_shown[] = {shown("delayValid", AT(delayValid))};
    static constexpr Traits traits =
        HERE.parser("nets_param_ai_cfg_x2s")
            .writer("nets_param_ai_cfg_s2x", "AiCfg")
            .title("AI settings", "Which objects are detected and tracked, and how; cry detection.");
};
constexpr auto ai_cfg = describe<AiCfgFields>();

// An area is for one object type.
constexpr Word area_object_list[] = {
    {NET_AI_OBJECT_PEOPLE, "people"},   {NET_AI_OBJECT_VEHICLE, "vehicle"}, {NET_AI_OBJECT_FACE, "face"},
    {NET_AI_OBJECT_DOG_CAT, "dog_cat"}, {NET_AI_OBJECT_OTHER, "other"},     {NET_AI_OBJECT_PACKAGE, "package"},
};
constexpr auto area_objects = words<area_object_list>();

struct AreaDetectFields : Description {
    using T = net_ai_area_detect_t;
    static constexpr Field fields[] = {
        integer("chn", AT(chn)).in(0, 63),
        mask("type", AT(type), area_objects).last_wins().code_line("ai type is error"), // without a line break
        integer("sensitivity", AT(sensitivity)),
        integer("stayTime", AT(stayTime)),
        real("minTargetHeight", AT(minTargetHeight)),
        real("minTargetWidth", AT(minTargetWidth)),
        real("maxTargetHeight", AT(maxTargetHeight)),
        real("maxTargetWidth", AT(maxTargetWidth)),
        integer("width", AT(width)).accepts("the area's columns, 1 to 155").sample("6"),
        integer("height", AT(height)).accepts("the area's rows, 1 to 100").sample("4"),
        column_grid("area", AT(cells), AT(width), AT(height))
            .upto(2999)
            .required()
            .complain_plainly("Func(net_ai_area_detect_x2s) Line(%d) ret(%d) width(%d) rows(%d)\n")
            .too_large("func:net_ai_area_detect_s2x line:%d, base64 need size is too large:%d\n"),
    };
    static constexpr Traits traits =
        HERE.parser("net_ai_area_detect_x2s")
            .writer("net_ai_area_detect_s2x", "AiDetectCfg")
            .missing("width or height is error\n")
            .title("AI detection area", "Where one type of object is looked for, and how large it has to be.");
};
constexpr auto area_detect = describe<AreaDetectFields>();

struct TrackLimitFields : Description {
    using T = net_ai_track_limit_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)),        integer("leftLimit", AT(leftLimit)),
        integer("rightLimit", AT(rightLimit)),      text("leftImageName", AT(leftImageName)),
        text("rightImageName", AT(rightImageName)),
    };
    static constexpr auto written = order("channelId", "leftLimit", "leftImageName", "rightLimit", "rightImageName");
    static constexpr Traits traits =
        HERE.parser("net_param_ai_track_limit_x2s")
            .writer("net_param_ai_track_limit_s2x", "trackLimit")
            .title("tracking limits",
                   "How far the camera turns to the left and to the right when it tracks an object.");
};
constexpr auto track_limit = describe<TrackLimitFields>();

struct TrackTaskFields : Description {
    using T = net_ai_track_task_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)),
        text("timeTable", AT(timeTable)),
    };
    static constexpr Traits traits = HERE.parser("net_param_ai_track_task_x2s")
                                         .writer("net_param_ai_track_task_s2x", "trackSchedule")
                                         .title("tracking schedule", "The hours in which the camera tracks objects.");
};
constexpr auto track_task = describe<TrackTaskFields>();

// Floodlights -------------------------------------------------------------------------------------

struct LightSwitchFields : Description {
    using T = net_floodlight_status_t;
    static constexpr Field fields[] = {
        integer("status", AT(status)),
        integer("channel", AT(channel)).in(0, 63),
        integer("duration", AT(duration)).at_least(0),
    };
    static constexpr Traits traits = HERE.parser("nets_param_floodlight_status_x2s")
                                         .entry(Line::none)
                                         .any_size()
                                         .title("floodlight switch", "Switches a floodlight for some time.");
};
constexpr auto light_switch = describe<LightSwitchFields>();

struct LightStateFields : Description {
    using T = net_floodlight_state_t;
    static constexpr Field fields[] = {
        integer("status", AT(status)),
        integer("channel", AT(channel)).at_least(0),
    };
};
constexpr auto light_state = describe<LightStateFields>();

struct LightReportFields : Description {
    using T = net_floodlight_status_report_t;
    static constexpr Field fields[] = {
        list("FloodlightStatus", AT(state), light_state).overwrite_last(),
    };
    static constexpr Traits traits = HERE.parser("nets_param_floodlight_status_report_x2s")
                                         .entry(Line::none)
                                         .any_size()
                                         .title("floodlight status report", "Whether the floodlights are on.");
};
constexpr auto light_report = describe<LightReportFields>();

struct LightPeriodFields : Description {
    using T = net_floodlight_period_t;
    static constexpr Field fields[] = {
        integer("startHour", AT(startHour)),
        integer("startMin", AT(startMin)),
        integer("endHour", AT(endHour)),
        integer("endMin", AT(endMin)),
    };
};
constexpr auto light_period = describe<LightPeriodFields>();

struct LightThresholdFields : Description {
    using T = net_light_sens_threshold_t;
    static constexpr Field fields[] = {
        integer("min", AT(min)),         integer("max", AT(max)),           integer("lightCur", AT(lightCur)),
        integer("darkCur", AT(darkCur)), integer("lightDef", AT(lightDef)), integer("darkDef", AT(darkDef)),
    };
};
constexpr auto light_threshold = describe<LightThresholdFields>();

struct LightItemFields : Description {
    using T = net_floodlight_schedule_item_t;
    static constexpr Field fields[] = {
        integer("enable", AT(enable)),       integer("daymap", AT(daymap)),
        integer("action", AT(action)),       group("time", AT(time), time_record), // in front of the longer key
        integer("timeStamp", AT(timeStamp)),
    };
};
constexpr auto light_item = describe<LightItemFields>();

struct LightScheduleFields : Description {
    using T = net_floodlight_schedule_t;
    static constexpr Field fields[] = {
        preset(AT(num), 0),
        list("item", AT(item), light_item).counted_by(AT(num)),
        integer("maxNum", AT(maxNum)),
    };
};
constexpr auto light_schedule = describe<LightScheduleFields>();

struct NightBrightnessFields : Description {
    using T = net_night_multi_brightness_t;
    static constexpr Field fields[] = {
        integer("enable", AT(enable)),
        group("alarmBrightness", AT(alarmBrightness), int_value_record),
        group("alarmDelay", AT(alarmDelay), int_value_record),
    };
};
constexpr auto night_brightness = describe<NightBrightnessFields>();

struct LightTaskFields : Description {
    using T = net_floodlight_task_t;
    static constexpr Field fields[] = {
        // They tell the host that the message did not say.
        preset(AT(auto_bright), 2),
        preset(AT(detectType), -1),
        preset(AT(lastAlarmMode), -1),
        integer("enable", AT(alarmMode)), // the older name
        integer("alarmMode", AT(alarmMode)),
        integer("channel", AT(channel)).in(0, 63),
        integer("preview_auto", AT(preview_auto)),
        integer("duration", AT(duration)),
        integer("brightness_cur", AT(brightness_cur)),
        integer("brightness_max", AT(brightness_max)),
        integer("brightness_min", AT(brightness_min)),
        group("schedule", AT(schedule), light_period),
        group("lightAlarmSchedule", AT(lightAlarmSchedule), light_period),
        integer("auto_bright", AT(auto_bright)),
        mask("detectType", AT(detectType), detect_objects).none_clears(),
        integer("lastAlarmMode", AT(lastAlarmMode)),
        group("lightSensThreshold", AT(lightSensThreshold), light_threshold),
        group("FloodlightScheduleList", AT(FloodlightScheduleList), light_schedule),
        group("nightLongViewMultiBrightness", AT(nightLongViewMultiBrightness), night_brightness),
    };
    static constexpr Traits traits =
        HERE.parser("nets_param_floodlight_task_x2s")
            .entry(Line::none)
            .failure(Line::xml_error)
            .any_size()
            .title("floodlight settings", "When a floodlight shines, how brightly, and what switches it on.");
};
constexpr auto light_task = describe<LightTaskFields>();

} // namespace
} // namespace netpublic

using namespace netpublic;

int net_md_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, motion_message);
}

int net_md_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, motion_message);
}

int net_alarm_area_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, alarm_area_message);
}

int get_scope_from_xmlnode(tag_net_pic_motion_cfg_v20_t *motion, TiXmlNode *node, const char *name)
{
    return read_component_wire<take_scope>(motion, node, name, scope_record);
}

int get_area_from_xmlnode(net_ai_area_t *area, TiXmlNode *node, const char *name)
{
    return read_component_logged(area, node, name, area_record);
}

int get_sensitivity_info_list_from_xmlnode(tag_net_sensitivity_info_v20_t *list, TiXmlNode *node, const char *name)
{
    return read_component(list, node, name, day_part_list);
}

int get_sensitivity_new_info_x2s(net_md_sens_v20_t *sensitivity, TiXmlNode *node, const char *name)
{
    return read_component(sensitivity, node, name, new_sensitivity);
}

// The next two are handed one of the record's arrays alone.

int get_sensitivity_new_info_list_from_xmlnode(tag_net_sensitivity_info_v20_t *list, TiXmlNode *node, const char *name)
{
    if (!is_component(list, node, name))
        return -1;
    net_md_sens_v20_t sensitivity;
    std::memcpy(sensitivity.sensInfo, list, sizeof sensitivity.sensInfo);
    const int result = read_record(prioritised_list, &sensitivity, node);
    std::memcpy(list, sensitivity.sensInfo, sizeof sensitivity.sensInfo);
    return result;
}

int get_sensitivity_priority_list_from_xmlnode(int *priorities, TiXmlNode *node, const char *name)
{
    if (!is_component(priorities, node, name))
        return -1;
    net_md_sens_v20_t sensitivity;
    std::memcpy(sensitivity.priority, priorities, sizeof sensitivity.priority);
    const int result = read_record(priority_list, &sensitivity, node);
    std::memcpy(priorities, sensitivity.priority, sizeof sensitivity.priority);
    return result;
}

int get_md_time_block_list_from_xmlnode(tag_net_pic_motion_cfg_v20_t *motion, TiXmlNode *node, const char *name)
{
    return read_component(motion, node, name, arming);
}

int get_handleException_from_xmlnode(tag_net_handle_exception_v20_t *exception, TiXmlNode *node, const char *name)
{
    return read_component(exception, node, name, exception_record);
}

int net_alarm_report_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, alarm_report);
}

int net_alarm_report_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, alarm_event);
}

int net_day_night_report_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, day_night_report);
}

int get_AlarmEvent_from_xmlnode(net_state_v20_t *state, TiXmlNode *node, const char *key)
{
    return read_component_logged(state, node, key, alarm_event);
}

int get_day_night_event_from_xmlnode(net_day_night_state_v20_t *state, TiXmlNode *node, const char *key)
{
    return read_component_logged(state, node, key, day_night_event);
}

int get_smart_ai_from_xmlnode(net_smart_ai_stat_t *smart, TiXmlNode *node, const char *key)
{
    return read_component_logged(smart, node, key, smart_record);
}

int get_smartai_sublist_from_xmlnode(unsigned int *masks, TiXmlNode *node, const char *key)
{
    return read_component_wire_logged<take_sublist>(reinterpret_cast<RuleMasks *>(masks), node, key, sublist_record);
}

int net_find_alarm_video_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, find_alarm_video);
}

int net_alarm_video_info_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, alarm_video_info);
}

int get_alarm_video_file_list_from_xmlnode(tag_net_alarm_video_v20_t *video, TiXmlNode *node, const char *key)
{
    return read_component_logged(video, node, key, alarm_video_list);
}

int net_find_event_log_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, find_event_log);
}

int net_ev_log_brief_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, log_brief);
}

int net_ev_log_brief_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, log_brief);
}

int evt_log_alarm_type_to_string(char *out, unsigned int size, int mask)
{
    if (out == nullptr)
        return -1;
    const WordTable &words = search_types;
    const char *names[std::size(search_type_list)];
    int count = 0;
    for (const auto &entry : words)
        if (entry.use != Use::read && (mask & entry.code()) != 0)
            names[count++] = words.text(entry);
    if (count == 0)
        names[count++] = "none";
    return string_join(out, size, names, count, ',');
}

int net_smart_ai_crossline_detect_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, crossline_message);
}

int net_smart_ai_crossline_detect_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, crossline_message);
}

int net_smart_ai_intrusion_detect_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, intrusion_message);
}

int net_smart_ai_intrusion_detect_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, intrusion_message);
}

int net_smart_ai_loitering_detect_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, loitering_message);
}

int net_smart_ai_loitering_detect_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, loitering_message);
}

int net_smart_ai_legacy_detect_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, legacy_message);
}

int net_smart_ai_legacy_detect_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, legacy_message);
}

int net_smart_ai_loss_detect_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, loss_message);
}

int net_smart_ai_loss_detect_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, loss_message);
}

int get_crossline_from_xmlnode(net_crossline_detect_t *rule, TiXmlNode *node, const char *key)
{
    return read_component(rule, node, key, crossline_rule);
}

int get_intrusion_from_xmlnode(net_intrusion_detect_t *rule, TiXmlNode *node, const char *key)
{
    return read_component(rule, node, key, intrusion_rule);
}

int get_loitering_from_xmlnode(net_loitering_detect_t *rule, TiXmlNode *node, const char *key)
{
    return read_component(rule, node, key, loitering_rule);
}

int get_legacy_from_xmlnode(net_legacy_detect_t *rule, TiXmlNode *node, const char *key)
{
    return read_component(rule, node, key, legacy_rule);
}

int get_loss_from_xmlnode(net_loss_detect_t *rule, TiXmlNode *node, const char *key)
{
    return read_component(rule, node, key, loss_rule);
}

int get_smart_ai_point_list_from_xmlnode(net_smart_ai_points_t *points, TiXmlNode *node, const char *key)
{
    return read_component(points, node, key, points_record);
}

int get_smart_ai_point_from_xmlnode(net_smart_ai_point_t *point, TiXmlNode *node, const char *key)
{
    return read_component(point, node, key, point_record);
}

int get_direction_from_xmlnode(NET_CROSSLINE_DETECT_DIRECTION_E *direction, TiXmlNode *node, const char *key)
{
    return read_component_value(direction, node, key, direction_value);
}

int get_op_from_xmlnode(NET_SMAER_AI_OP_E *op, TiXmlNode *node, const char *key)
{
    return read_component_value(op, node, key, operation_value);
}

int net_smart_ai_points_s2x(net_smart_ai_points_t *points, TiXmlElement *parent)
{
    return points != nullptr && parent != nullptr ? write_component(points_child, points, parent) : -1;
}

int net_smart_ai_direction_s2x(NET_CROSSLINE_DETECT_DIRECTION_E direction, TiXmlElement *parent)
{
    return parent != nullptr ? write_component(direction_value, &direction, parent) : -1;
}

int net_smart_ai_op_s2x(NET_SMAER_AI_OP_E op, TiXmlElement *parent)
{
    return parent != nullptr ? write_component(operation_value, &op, parent) : -1;
}

int nets_param_ai_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, ai_cfg);
}

int nets_param_ai_cfg_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, ai_cfg);
}

int net_ai_area_detect_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, area_detect);
}

int net_ai_area_detect_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, area_detect);
}

int net_param_ai_track_limit_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, track_limit);
}

int net_param_ai_track_limit_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, track_limit);
}

int net_param_ai_track_task_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, track_task);
}

int net_param_ai_track_task_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, track_task);
}

int nets_param_floodlight_status_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, light_switch);
}

int nets_param_floodlight_status_report_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, light_report);
}

int nets_param_floodlight_task_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, light_task);
}

int get_schedule_val_from_xmlnode(net_floodlight_period_t *period, TiXmlNode *node, const char *key)
{
    return read_component(period, node, key, light_period);
}

int get_lightsens_threshold_from_xmlnode(net_light_sens_threshold_t *threshold, TiXmlNode *node, const char *key)
{
    return read_component(threshold, node, key, light_threshold);
}

int get_floodlight_schedule_from_xmlnode(net_floodlight_schedule_t *schedule, TiXmlNode *node, const char *key)
{
    return read_component(schedule, node, key, light_schedule);
}

int get_floodlight_schedule_item_from_xmlnode(net_floodlight_schedule_item_t *item, TiXmlNode *node, const char *key)
{
    return read_component(item, node, key, light_item);
}

int get_night_multi_brightness_from_xmlnode(net_night_multi_brightness_t *brightness, TiXmlNode *node, const char *key)
{
    return read_component(brightness, node, key, night_brightness);
}

MESSAGES(alarm, //
         MESSAGE("md", nets_param_md_init, net_md_x2s, net_md_s2x, motion_message),
         MESSAGE("alarm-area", nets_param_alarm_area_init, net_alarm_area_x2s, nullptr, alarm_area_message,
                 "AlarmArea"),
         MESSAGE("alarm-report", net_param_alarm_init, net_alarm_report_x2s, nullptr, alarm_report, "AlarmEventList"),
         HOST_MESSAGE("alarm-event", net_state_v20_t, nullptr, net_alarm_report_s2x, nullptr, alarm_event),
         MESSAGE("day-night-report", net_param_day_night_init, net_day_night_report_x2s, nullptr, day_night_report,
                 "DayNightEventList"),
         MESSAGE("find-alarm-video", net_find_alarm_video_init, net_find_alarm_video_x2s, nullptr, find_alarm_video,
                 "findAlarmVideo"),
         MESSAGE("alarm-video-info", net_alarm_video_info_init, net_alarm_video_info_x2s, nullptr, alarm_video_info,
                 "alarmVideoInfo"),
         HOST_MESSAGE("find-event-log", net_find_event_log_t, net_find_event_log_x2s, nullptr, find_event_log,
                      "findEventLog"),
         HOST_MESSAGE("event-log-brief", net_event_log_brief_t, net_ev_log_brief_x2s, net_ev_log_brief_s2x, log_brief),
         MESSAGE("crossline-detect", net_param_smart_ai_crossline_detect_init, net_smart_ai_crossline_detect_x2s,
                 net_smart_ai_crossline_detect_s2x, crossline_message),
         MESSAGE("intrusion-detect", net_param_smart_ai_intrusion_detect_init, net_smart_ai_intrusion_detect_x2s,
                 net_smart_ai_intrusion_detect_s2x, intrusion_message),
         MESSAGE("loitering-detect", net_param_smart_ai_loitering_detect_init, net_smart_ai_loitering_detect_x2s,
                 net_smart_ai_loitering_detect_s2x, loitering_message),
         MESSAGE("legacy-detect", net_param_smart_ai_legacy_detect_init, net_smart_ai_legacy_detect_x2s,
                 net_smart_ai_legacy_detect_s2x, legacy_message),
         MESSAGE("loss-detect", net_param_smart_ai_loss_detect_init, net_smart_ai_loss_detect_x2s,
                 net_smart_ai_loss_detect_s2x, loss_message),
         MESSAGE("ai-cfg", nets_param_ai_cfg_init, nets_param_ai_cfg_x2s, nets_param_ai_cfg_s2x, ai_cfg),
         MESSAGE("ai-area-detect", nets_param_ai_area_detect_init, net_ai_area_detect_x2s, net_ai_area_detect_s2x,
                 area_detect),
         MESSAGE("ai-track-limit", net_param_ai_track_limit_init, net_param_ai_track_limit_x2s,
                 net_param_ai_track_limit_s2x, track_limit),
         MESSAGE("ai-track-task", net_param_ai_track_task_init, net_param_ai_track_task_x2s,
                 net_param_ai_track_task_s2x, track_task),
         MESSAGE("floodlight-status", nets_param_floodlight_status_init, nets_param_floodlight_status_x2s, nullptr,
                 light_switch, "FloodlightManual"),
         MESSAGE("floodlight-status-report", nets_param_floodlight_status_report_init,
                 nets_param_floodlight_status_report_x2s, nullptr, light_report, "FloodlightStatusList"),
         MESSAGE("floodlight-task", nets_param_floodlight_task_init, nets_param_floodlight_task_x2s, nullptr,
                 light_task, "FloodlightTask"))
