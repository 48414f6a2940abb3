// Alarm and intelligent detection: motion detection and detector areas, alarm reports and searches,
// smart-AI rules and AI settings, floodlights.
#include "engine/engine.h"
#include "engine/records.h"
#include "engine/registry.h"
#include "toolkit/time_blocks.h"
#include "values/grid.h"
#include "values/tables.h"
#include "values/values.h"

#include <net_public.h>

#include <climits>
#include <cstring>

namespace netpublic {
namespace {

constexpr int most_cells = grid_columns * grid_rows;

// Detection grids ---------------------------------------------------------------------------------

// The decoder yields whole bytes, but never more cells than the largest grid has.
bool fills_grid(int count, int columns, int rows)
{
    const int wanted = (columns * rows + 7) / 8 * 8;
    return count == (wanted < most_cells ? wanted : most_cells);
}

// Characters of the base64 text of so many cells, terminator included.
constexpr unsigned int grid_text_size(int cells)
{
    return static_cast<unsigned int>((cells + 23) / 24 * 4 + 1);
}

using Collect = void (*)(unsigned char *buffer, const unsigned char *cells, int columns, int rows, int stride);

// Appends the grid as base64, or nothing when it encodes to nothing. The scratch holds the cells and
// behind them the text.
int append_grid(TiXmlElement *parent, const char *key, const unsigned char *cells, int columns, int rows, int stride,
                Collect collect, const char *function)
{
    const int count = columns * rows;
    void *scratch = net_malloc(static_cast<unsigned int>(count) + grid_text_size(count));
    if (scratch == nullptr) {
        const Place here = NET_HERE;
        log_error(here, "File[%s] Func[%s] Line[%d],malloc error!\n", here.file, function, here.line);
        return -1;
    }
    auto *bits = static_cast<unsigned char *>(scratch);
    char *text = static_cast<char *>(scratch) + count;
    constexpr int no_line_breaks = 20000;
    int result = 0;
    collect(bits, cells, columns, rows, stride);
    if (EncodeBinaryArrayToBase64(bits, text, count, no_line_breaks) > 0)
        result = append_text(parent, key, text);
    net_free(&scratch);
    return result;
}

// Motion detection --------------------------------------------------------------------------------

using Motion = tag_net_pic_motion_cfg_v20_t;
using Period = tag_net_sensitivity_info_v20_t;

struct ScopeText {
    int columns;
    int rows;
    const char *table;
};

struct ScopeFields : Description {
    using T = ScopeText;
    static constexpr Field fields[] = {
        integer("columns", AT(columns)).in(1, grid_columns).required(),
        integer("rows", AT(rows)).in(1, grid_rows).required(),
        view("valueTable", AT(table)).upto(2710).required(),
    };
};
constexpr auto scope_text = describe<ScopeFields>();

// The size that the element gives only describes the table: the payload's own width and height come
// from the message's children of these names.
int read_scope(Motion &motion, TiXmlNode *node)
{
    ScopeText scope = {0, 0, ""};
    if (read_record(scope_text, &scope, node) != 0 || *scope.table == '\0')
        return -1;
    const int count = count_cells(scope.table, static_cast<int>(std::strlen(scope.table)), most_cells);
    if (!fills_grid(count, scope.columns, scope.rows)) {
        log_plain("Func(%s) Line(%d) ret(%d) columns(%d) rows(%d)\n", "get_scope_from_xmlnode", __LINE__, count,
                  scope.columns, scope.rows);
        return -1;
    }
    read_rows(scope.table, motion.scope[0], scope.columns, scope.rows, grid_columns);
    return 0;
}

// Grids up to the classic 96 x 64 are always written in that size, padded.
int write_scope(const Motion &motion, TiXmlElement *parent)
{
    constexpr int classic_columns = 96;
    constexpr int classic_rows = 64;
    const bool classic = motion.width <= classic_columns && motion.height <= classic_rows;
    const int columns = classic ? classic_columns : motion.width;
    const int rows = classic ? classic_rows : motion.height;
    if (columns < 1 || columns > grid_columns || rows < 1 || rows > grid_rows)
        return -1;
    TiXmlElement *scope = append_element(parent, "scope");
    if (append_int(scope, "columns", columns) != 0 || append_int(scope, "rows", rows) != 0)
        return -1;
    return append_grid(scope, "valueTable", motion.scope[0], columns, rows, grid_columns, collect_rows, "net_md_s2x");
}

// One sensitivity period and its place in its list.
struct PlacedPeriod {
    int place;
    int priority;
    Period period;
};

// A period of the day-part list must say which one it is.
int read_place(PlacedPeriod &placed, TiXmlNode *node)
{
    int id;
    return read_int(&id, node) == 0 && id == placed.place ? 0 : -1;
}

struct PeriodFields : Description {
    using T = PlacedPeriod;
    static constexpr Field fields[] = {
        custom<read_place>("id", AT(place)),
        integer("sensitivity", AT(period.sensitivity)).in(1, 50),
        integer("beginHour", AT(period.beginHour)).in(0, 23),
        integer("beginMinute", AT(period.beginMinute)).in(0, 59),
        integer("endHour", AT(period.endHour)).in(0, 23),
        integer("endMinute", AT(period.endMinute)).in(0, 59),
        integer("enable", AT(period.enable)),
        integer("id", AT(place)).write_only(),
    };
    static constexpr auto written = order("id", "sensitivity", "beginHour", "beginMinute", "endHour", "endMinute");
};
constexpr auto day_part = describe<PeriodFields>();

struct PrioritisedFields : Description {
    using T = PlacedPeriod;
    static constexpr Field fields[] = {
        integer("sensitivity", AT(period.sensitivity)).in(1, 50), integer("beginHour", AT(period.beginHour)).in(0, 23),
        integer("beginMinute", AT(period.beginMinute)).in(0, 59), integer("endHour", AT(period.endHour)).in(0, 23),
        integer("endMinute", AT(period.endMinute)).in(0, 59),     integer("priority", AT(priority)).write_only(),
    };
    static constexpr auto written =
        order("priority", "sensitivity", "beginHour", "beginMinute", "endHour", "endMinute");
    static constexpr Field also_shown[] = {shown("enable", AT(period.enable))};
};
constexpr auto prioritised = describe<PrioritisedFields>();

constexpr int periods = 4;

// The first four children, all of the given name, into periods that count as present. Returns how many
// there were, or -1; what was read before a failure stays.
int read_periods(Period *list, TiXmlNode *node, const char *name, const Table &table)
{
    int count = 0;
    for (TiXmlNode *child = node->FirstChild(); child != nullptr && count < periods; child = child->NextSibling()) {
        if (!is_named(child->Value(), name))
            return -1;
        PlacedPeriod placed = {count, 0, list[count]};
        placed.period.enable = 1;
        const int result = read_record(table, &placed, child);
        list[count] = placed.period;
        if (result != 0)
            return -1;
        ++count;
    }
    return count;
}

int read_day_parts(Motion &motion, TiXmlNode *node)
{
    return get_sensitivity_info_list_from_xmlnode(motion.sensitivityInfo, node, nullptr);
}

// The periods' `enable` is not written.
int write_day_parts(const Motion &motion, TiXmlElement *parent)
{
    TiXmlElement *list = append_element(parent, "sensitivityInfoList");
    for (int i = 0; i < periods; ++i) {
        const PlacedPeriod placed = {i, 0, motion.sensitivityInfo[i]};
        if (write_record(day_part, &placed, append_element(list, "sensitivityInfo")) != 0)
            return -1;
    }
    return 0;
}

// The list is walked twice: the periods first, then their priorities.
int read_prioritised(net_md_sens_v20_t &sensitivity, TiXmlNode *node)
{
    if (get_sensitivity_new_info_list_from_xmlnode(sensitivity.sensInfo, node, nullptr) != 0)
        return -1;
    return get_sensitivity_priority_list_from_xmlnode(sensitivity.priority, node, nullptr);
}

int write_prioritised(const net_md_sens_v20_t &sensitivity, TiXmlElement *parent)
{
    TiXmlElement *list = append_element(parent, "sensInfoList");
    if (list == nullptr)
        return -1;
    for (int i = 0; i < periods; ++i) {
        if (sensitivity.sensInfo[i].enable == 0)
            continue;
        const PlacedPeriod placed = {i, sensitivity.priority[i], sensitivity.sensInfo[i]};
        if (write_record(prioritised, &placed, append_element(list, "sensInfo")) != 0)
            return -1;
    }
    return 0;
}

struct NewSensitivityFields : Description {
    using T = net_md_sens_v20_t;
    static constexpr Field fields[] = {
        preset(AT(valid), 1), // the element alone counts
        integer("sensitivityDefault", AT(sensitivityDefault)),
        custom<read_prioritised, write_prioritised>("sensInfoList", AT(sensInfo))
            .shown(prioritised, offsetof(PlacedPeriod, period)),
    };
    static constexpr Field also_shown[] = {shown("priority", AT(priority))};
};
constexpr auto new_sensitivity = describe<NewSensitivityFields>();

void arm_hours(void *context, const TimeBlock &block)
{
    auto &motion = *static_cast<Motion *>(context);
    for (int hour = block.beginHour; hour <= block.endHour; ++hour)
        motion.timeBlock[block.weekDay][hour] = block.enable;
}

int read_arming(Motion &motion, TiXmlNode *node)
{
    return read_time_blocks(node, &motion, arm_hours);
}

int write_arming(const Motion &motion, TiXmlElement *parent)
{
    TiXmlElement *list = append_element(parent, "timeBlockList");
    if (list == nullptr)
        return -1;
    for (int day = 0; day < 7; ++day) {
        // A slot is armed when it differs from the exception record's unused word, which is 0 in every
        // payload that comes from here.
        unsigned int armed = 0;
        for (int hour = 0; hour < 24; ++hour)
            if (motion.timeBlock[day][hour] != motion.handleException.reserved)
                armed |= 1u << hour;
        if (append_time_blocks(list, day, armed) != 0)
            return -1;
    }
    return 0;
}

// The number lists are converted behind the walk, so that a refused child leaves them alone.
struct ExceptionText {
    int handleType;
    const char *channels;
    const char *outputs;
};

struct ExceptionFields : Description {
    using T = ExceptionText;
    static constexpr Field fields[] = {
        mask("handleType", AT(handleType), alarm_actions).upto(63).none_clears(),
        view("chnHandleType", AT(channels)).upto(1023),
        view("relAlarmOut", AT(outputs)).upto(1023),
    };
};
constexpr auto exception_text = describe<ExceptionFields>();

struct ExceptionShown : Description {
    using T = tag_net_handle_exception_v20_t;
    static constexpr Field fields[] = {
        mask("handleType", AT(handleType), alarm_actions),
        shown("chnHandleType", AT(chnHandleType)),
        shown("relAlarmOut", AT(relAlarmOut)),
    };
};
constexpr auto exception_shown = describe<ExceptionShown>();

template <int count> int read_numbers(int (&numbers)[count], const char *text)
{
    return text != nullptr && changeStringToIntTable(const_cast<char *>(text), numbers, count, 0) < 0 ? -1 : 0;
}

int read_exception(tag_net_handle_exception_v20_t &exception, TiXmlNode *node)
{
    ExceptionText text = {exception.handleType, nullptr, nullptr};
    const int result = read_record(exception_text, &text, node);
    exception.handleType = text.handleType;
    if (result != 0 || read_numbers(exception.chnHandleType, text.channels) != 0)
        return -1;
    return read_numbers(exception.relAlarmOut, text.outputs);
}

int read_motion_exception(Motion &motion, TiXmlNode *node)
{
    return read_exception(motion.handleException, node);
}

struct MotionFields : Description {
    using T = Motion;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, 63),
        flag("enable", AT(enable)),
        integer("usepir", AT(usepir)),
        integer("width", AT(width)).in(1, grid_columns),
        integer("height", AT(height)).in(1, grid_rows),
        custom<read_scope, write_scope>("scope", AT(scope)),
        custom<read_day_parts, write_day_parts>("sensitivityInfoList", AT(sensitivityInfo))
            .shown(day_part, offsetof(PlacedPeriod, period)),
        group("sensInfoNew", AT(sensInfoNew), new_sensitivity).when(AT(sensInfoNew.valid)),
        custom<read_arming, write_arming>("timeBlockList", AT(timeBlock)),
        custom<read_motion_exception>("handleException", AT(handleException)).shown(exception_shown), // never written
    };
    static constexpr auto written = order("channelId", "enable", "usepir", "width", "height", "scope",
                                          "sensitivityInfoList", "sensInfoNew", "timeBlockList");
    static constexpr Traits traits = HERE.parser("net_md_x2s").writer("net_md_s2x", "MD").sets_inited();
};
constexpr auto motion_message = describe<MotionFields>();

// Detector areas ----------------------------------------------------------------------------------

struct AreaText {
    int width;
    int height;
    const char *cells;
};

struct AreaFields : Description {
    using T = AreaText;
    static constexpr Field fields[] = {
        integer("width", AT(width)).in(1, grid_columns).required(),
        integer("height", AT(height)).in(1, grid_rows).required(),
        view("area", AT(cells)).upto(2999).required(),
    };
};
constexpr auto area_text = describe<AreaFields>();

struct AreaShown : Description {
    using T = net_ai_area_t;
    static constexpr Field fields[] = {
        integer("width", AT(width)),
        integer("height", AT(height)),
        shown("area", AT(cells)),
    };
};
constexpr auto area_shown = describe<AreaShown>();

// Unlike the motion grid, an area is stored column by column and keeps its size.
int read_area(net_ai_area_t &area, TiXmlNode *node)
{
    AreaText text = {area.width, area.height, ""};
    const int result = read_record(area_text, &text, node);
    area.width = text.width;
    area.height = text.height;
    if (result != 0 || *text.cells == '\0') {
        log_error(NET_HERE, " error \n");
        return -1;
    }
    const int count = count_cells(text.cells, static_cast<int>(std::strlen(text.cells)), most_cells);
    if (!fills_grid(count, area.width, area.height)) {
        log_plain("Func(%s) Line(%d) ret(%d) width(%d) rows(%d)\n", "get_area_from_xmlnode", __LINE__, count,
                  area.width, area.height);
        return -1;
    }
    read_columns(text.cells, area.cells[0], area.width, area.height, grid_rows);
    return 0;
}

int read_area_channel(net_alarm_area_t &areas, TiXmlNode *node)
{
    if (read_int(&areas.chn, node) != 0)
        return -1;
    log_trace(NET_HERE, "pAi->type(%d)\n", static_cast<int>(areas.type));
    return 0;
}

constexpr net_ai_area_t net_alarm_area_t::*detector_areas[] = {
    &net_alarm_area_t::mdArea,      &net_alarm_area_t::personArea, &net_alarm_area_t::vehicleArea,
    &net_alarm_area_t::faceArea,    &net_alarm_area_t::dogCatArea, &net_alarm_area_t::otherArea,
    &net_alarm_area_t::packageArea,
};
constexpr char detector_names[][8] = {"md", "person", "vehicle", "face", "dog_cat", "other", "package"};

int read_detector_area(net_alarm_area_t &areas, int detector, TiXmlNode *node)
{
    log_trace(NET_HERE, "%s area xml\n", detector_names[detector]);
    if (read_area(areas.*detector_areas[detector], node) != 0)
        return -1;
    areas.type |= 1u << detector;
    log_trace(NET_HERE, "pAi->type(%d)\n", static_cast<int>(areas.type));
    return 0;
}

template <int detector> int read_detector(net_alarm_area_t &areas, TiXmlNode *node)
{
    return read_detector_area(areas, detector, node);
}

struct AlarmAreaFields : Description {
    using T = net_alarm_area_t;
    static constexpr Field fields[] = {
        custom<read_area_channel>("chn", AT(chn)).quiet(),
        custom<read_detector<0>>("mdArea", AT(mdArea)).shown(area_shown),
        custom<read_detector<1>>("personArea", AT(personArea)).shown(area_shown),
        custom<read_detector<2>>("vehicleArea", AT(vehicleArea)).shown(area_shown),
        custom<read_detector<3>>("faceArea", AT(faceArea)).shown(area_shown),
        custom<read_detector<4>>("dogCatArea", AT(dogCatArea)).shown(area_shown),
        custom<read_detector<5>>("otherArea", AT(otherArea)).shown(area_shown),
        custom<read_detector<6>>("packageArea", AT(packageArea)).shown(area_shown),
    };
    static constexpr Field also_shown[] = {shown("type", AT(type))};
    static constexpr Traits traits =
        HERE.parser("net_alarm_area_x2s").entry(Line::error).failure(Line::error).any_size();
};
constexpr auto alarm_area_message = describe<AlarmAreaFields>();

// Alarm and day/night reports ---------------------------------------------------------------------

// The body of the readers that log under their own name whatever they refuse.
int read_reported(const Table &table, void *record, TiXmlNode *node, const char *key)
{
    if (is_component(record, node, key))
        return read_record(table, record, node);
    log_line(table.failure(), table.place(), table.parser());
    return -1;
}

// Joins the words that `chosen` picks by their codes, or writes "none". -1 when they do not fit.
template <class Chosen> int join_words(char *out, unsigned int size, const WordTable &words, Chosen chosen)
{
    const char *names[16];
    int count = 0;
    for (const auto &entry : words)
        if (entry.use != Use::read && chosen(entry.code))
            names[count++] = words.text(entry);
    if (count == 0)
        names[count++] = "none";
    return string_join(out, size, names, count, ',');
}

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

// The detections by the alarm-type code of their first rule. Here it is "intrusion", although the
// alarm type is called "intrude".
constexpr int crossline_first = smart_ai_first;
constexpr int intrusion_first = crossline_first + smart_ai_rules;
constexpr int loitering_first = intrusion_first + smart_ai_rules;
constexpr int legacy_first = loitering_first + smart_ai_rules;
constexpr int loss_first = legacy_first + smart_ai_rules;
constexpr Word detection_list[] = {
    {crossline_first, "crossline"}, {intrusion_first, "intrusion"}, {loitering_first, "loitering"},
    {legacy_first, "legacy"},       {loss_first, "loss"},
};
constexpr auto detections = words<detection_list>();

constexpr Word smart_object_list[] = {{0x1, "people"}, {0x2, "vehicle"}, {0x4, "dog_cat"}};
constexpr auto smart_objects = words<smart_object_list>();

// What a rule has seen.
struct Sublist {
    int index;
    unsigned int objects;
};

int read_smart_object(Sublist &sublist, TiXmlNode *node)
{
    const char *text;
    if (view_text(&text, INT_MAX, node) != 0)
        return -1;
    if (const auto *object = find_whole(smart_objects, text))
        sublist.objects |= static_cast<unsigned int>(object->code);
    return 0;
}

struct SublistFields : Description {
    using T = Sublist;
    static constexpr Field fields[] = {
        integer("index", AT(index)),
        custom<read_smart_object>("type", AT(objects)),
    };
    static constexpr Traits traits = HERE.parser("get_smartai_sublist_from_xmlnode").failure(Line::parser);
};
constexpr auto sublist_record = describe<SublistFields>();

// A rule number that is no rule's drops the sublist; the rest of the report still counts.
int read_sublist(unsigned int *masks, TiXmlNode *node)
{
    Sublist sublist = {-1, 0};
    if (read_record(sublist_record, &sublist, node) != 0)
        return -1;
    if (sublist.index < 0 || sublist.index >= smart_ai_rules)
        log_error(NET_HERE, "invalid param index:%d\n", sublist.index);
    else
        masks[sublist.index] |= sublist.objects;
    return 0;
}

// One detection's entry in a report.
struct SmartType {
    const char *type;
    int index; // bit b: rule b has fired
    unsigned int masks[smart_ai_rules];
};

int read_smart_sublist(SmartType &entry, TiXmlNode *node)
{
    return read_sublist(entry.masks, node);
}

struct SmartTypeFields : Description {
    using T = SmartType;
    static constexpr Field fields[] = {
        view("type", AT(type)).upto(19),
        integer("index", AT(index)),
        custom<read_smart_sublist>("sublist", AT(masks)),
    };
};
constexpr auto smart_type = describe<SmartTypeFields>();

// Where a detection's object masks are kept; left and missing objects have none.
unsigned int *masks_of(net_smart_ai_stat_t &smart, int first)
{
    switch (first) {
    case crossline_first:
        return smart.crossline;
    case intrusion_first:
        return smart.intrusion;
    case loitering_first:
        return smart.loitering;
    default:
        return nullptr;
    }
}

// Entries that make no sense are logged and dropped, not refused.
int read_smart_type(net_smart_ai_stat_t &smart, TiXmlNode *node)
{
    SmartType entry = {"", 0, {}};
    if (read_record(smart_type, &entry, node) != 0)
        return -1;
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
            alarm_in_add_event(&smart.events, detection->code + rule);
    if (unsigned int *masks = masks_of(smart, detection->code))
        std::memcpy(masks, entry.masks, sizeof entry.masks);
    return 0;
}

struct SmartFields : Description {
    using T = net_smart_ai_stat_t;
    static constexpr Field fields[] = {
        unsigned_longlong("pts", AT(pts)),
        unsigned_longlong("frameIndex", AT(frameIndex)),
        custom<read_smart_type>("smartAiType", AT(events)),
    };
    static constexpr Field also_shown[] = {
        shown("crossline", AT(crossline)).spelled(smart_objects),
        shown("intrusion", AT(intrusion)).spelled(smart_objects),
        shown("loitering", AT(loitering)).spelled(smart_objects),
    };
    static constexpr Traits traits = HERE.parser("get_smart_ai_from_xmlnode").failure(Line::parser);
};
constexpr auto smart_record = describe<SmartFields>();

int write_ai_events(const net_state_v20_t &state, TiXmlElement *parent)
{
    char text[128];
    const auto is_set = [&](int code) {
        return alarm_in_check_event(&state.aiEvents, static_cast<unsigned int>(code)) != 0;
    };
    if (join_words(text, sizeof text, ai_events, is_set) != 0)
        return -1;
    return append_text(parent, "AItype", text);
}

// Only which rules have fired; object masks, time stamp and frame are never written.
int write_smart(const net_state_v20_t &state, TiXmlElement *parent)
{
    const WordTable &words = detections;
    TiXmlElement *list = nullptr;
    for (const auto &detection : words) {
        int rules = 0;
        for (int rule = 0; rule < smart_ai_rules; ++rule)
            if (alarm_in_check_event(&state.smartAi.events, static_cast<unsigned int>(detection.code + rule)) != 0)
                rules |= 1 << rule;
        if (rules == 0)
            continue;
        if (list == nullptr)
            list = append_element(parent, "smartAiTypeList");
        TiXmlElement *entry = append_element(list, "smartAiType");
        if (append_text(entry, "type", words.text(detection)) != 0 || append_int(entry, "index", rules) != 0)
            return -1;
    }
    return 0;
}

// Read as an item of a report, written as a message of its own.
struct AlarmEventFields : Description {
    using T = net_state_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        mask("status", AT(status), status_words).accumulates().none_conflicts(),
        events("AItype", AT(aiEvents), ai_events).read_only(),
        flag("recording", AT(recording)),
        integer("timeStamp", AT(timeStamp)).at_least(0),
        unsigned_longlong("offset", AT(offset)),
        integer("timeSec", AT(timeSec)).at_least(0),
        integer("timeUsec", AT(timeUsec)).at_least(0),
        integer("wakeAlarm", AT(wakeAlarm)).at_least(0),
        integer("previewOnly", AT(previewOnly)).at_least(0),
        group("smartAiTypeList", AT(smartAi), smart_record).read_only(),
        custom<nullptr, write_ai_events>("AItype", AT(aiEvents)),
        custom<nullptr, write_smart>("smartAiTypeList", AT(smartAi)),
    };
    static constexpr auto written = order("channelId", "status", "AItype", "recording", "timeStamp", "smartAiTypeList");
    static constexpr Traits traits =
        HERE.parser("get_AlarmEvent_from_xmlnode").writer("net_alarm_report_s2x", "AlarmEvent").failure(Line::parser);
};
constexpr auto alarm_event = describe<AlarmEventFields>();

struct AlarmReportFields : Description {
    using T = net_alarm_report_t;
    static constexpr Field fields[] = {
        list("AlarmEvent", AT(state), alarm_event).overwrite_last(),
    };
    static constexpr Traits traits = HERE.parser("net_alarm_report_x2s").failure(Line::parser).sets_inited();
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
    static constexpr Traits traits = HERE.parser("net_day_night_report_x2s").failure(Line::parser).sets_inited();
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

int read_event_type(net_find_alarm_video_t &search, TiXmlNode *node)
{
    const char *text;
    if (view_text(&text, INT_MAX, node) != 0)
        return -1;
    if (is_named(text, "cry"))
        search.alarmType |= NET_SEARCH_CRY;
    return 0;
}

struct EventTypeFields : Description {
    using T = net_find_alarm_video_t;
    static constexpr Field fields[] = {
        custom<read_event_type>("i", AT(alarmType)),
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
    static constexpr Traits traits = HERE.parser("net_find_alarm_video_x2s").failure(Line::parser).any_size();
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
    static constexpr Traits traits = HERE.parser("net_alarm_video_info_x2s").failure(Line::parser).any_size();
};
constexpr auto alarm_video_info = describe<AlarmVideoInfoFields>();

template <int capacity> int read_devices(net_find_event_log_t &search, TiXmlNode *node)
{
    return get_query_device_from_xmlnode(search.devices, capacity, node, nullptr);
}

struct FindEventLogFields : Description {
    using T = net_find_event_log_t;
    static constexpr Field fields[] = {
        custom<read_devices<std::extent_v<decltype(T::devices)>>>("devices", AT(devices)).shown(query_device),
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
    static constexpr Traits traits = HERE.parser("net_find_event_log_x2s").failure(Line::parser).any_size();
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

int write_devices(const net_event_log_brief_t &brief, TiXmlElement *parent)
{
    TiXmlElement *list = append_element(parent, "deviceStatistics");
    if (list == nullptr)
        return -1;
    for (const auto &device : brief.device)
        if (device.uid[0] != '\0' && write_record(log_device, &device, append_element(list, "device")) != 0)
            return -1;
    return 0;
}

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
        custom<nullptr, write_devices>("deviceStatistics", AT(device)),
        part("dailyEventCounts", daily_counts).write_only(),
    };
    static constexpr Traits traits =
        HERE.parser("net_ev_log_brief_x2s").writer("net_ev_log_brief_s2x", "EventLogBrief").failure(Line::parser);
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

// The element itself holds the word; an unknown one is code 0.
int read_code(int *code, const WordTable &words, TiXmlNode *node, const char *key)
{
    const char *text;
    if (!is_component(code, node, key) || view_text(&text, 31, node) != 0)
        return -1;
    const auto *entry = find_whole(words, text);
    *code = entry != nullptr ? entry->code : 0;
    return 0;
}

// A code without a word is written as code 0.
int append_code(const WordTable &words, int code, const char *key, TiXmlElement *parent)
{
    if (parent == nullptr)
        return -1;
    const char *word = word_of(words, code);
    return append_text(parent, key, word != nullptr ? word : word_of(words, 0));
}

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
        HERE.parser("net_smart_ai_crossline_detect_x2s").writer("net_smart_ai_crossline_detect_s2x", "CrosslineDetect");
};
struct Intrusion {
    using List = net_intrusion_detect_list_t;
    static constexpr const auto &rule = intrusion_rule;
    static constexpr const char *item = "intrusionDetectItem";
    static constexpr Traits traits =
        HERE.parser("net_smart_ai_intrusion_detect_x2s").writer("net_smart_ai_intrusion_detect_s2x", "IntrusionDetect");
};
struct Loitering {
    using List = net_loitering_detect_list_t;
    static constexpr const auto &rule = loitering_rule;
    static constexpr const char *item = "loiteringDetectItem";
    static constexpr Traits traits =
        HERE.parser("net_smart_ai_loitering_detect_x2s").writer("net_smart_ai_loitering_detect_s2x", "LoiteringDetect");
};
struct Legacy {
    using List = net_legacy_detect_list_t;
    static constexpr const auto &rule = legacy_rule;
    static constexpr const char *item = "legacyDetectItem";
    static constexpr Traits traits =
        HERE.parser("net_smart_ai_legacy_detect_x2s").writer("net_smart_ai_legacy_detect_s2x", "LegacyDetect");
};
struct Loss {
    using List = net_loss_detect_list_t;
    static constexpr const auto &rule = loss_rule;
    static constexpr const char *item = "lossDetectItem";
    static constexpr Traits traits =
        HERE.parser("net_smart_ai_loss_detect_x2s").writer("net_smart_ai_loss_detect_s2x", "LossDetect");
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
    static constexpr Traits traits = HERE.parser("nets_param_ai_cfg_x2s").writer("nets_param_ai_cfg_s2x", "AiCfg");
};
constexpr auto ai_cfg = describe<AiCfgFields>();

// An area is for one object type.
constexpr Word area_object_list[] = {
    {NET_AI_OBJECT_PEOPLE, "people"},   {NET_AI_OBJECT_VEHICLE, "vehicle"}, {NET_AI_OBJECT_FACE, "face"},
    {NET_AI_OBJECT_DOG_CAT, "dog_cat"}, {NET_AI_OBJECT_OTHER, "other"},     {NET_AI_OBJECT_PACKAGE, "package"},
};
constexpr auto area_objects = words<area_object_list>();

constexpr int area_characters = 2999;

// The cells can only be stored once all children are known.
int check_detect_cells(net_ai_area_detect_t &, TiXmlNode *node)
{
    const char *text;
    return view_text(&text, area_characters, node);
}

// The text of the last element that the walk has taken for the cells.
const char *find_detect_cells(TiXmlNode *node)
{
    const char *text = "";
    for (TiXmlNode *child = node->LastChild(); child != nullptr; child = child->PreviousSibling())
        if (answers_to(child->Value(), "area")) {
            view_text(&text, area_characters, child);
            break;
        }
    return text;
}

int store_detect_cells(net_ai_area_detect_t &area, const char *text)
{
    if (area.width < 1 || area.width > grid_columns || area.height < 1 || area.height > grid_rows || *text == '\0') {
        log_error(NET_HERE, "width or height is error\n");
        return -1;
    }
    const int count = count_cells(text, static_cast<int>(std::strlen(text)), most_cells);
    if (!fills_grid(count, area.width, area.height)) {
        log_error(NET_HERE, "Func(%s) Line(%d) ret(%d) width(%d) rows(%d)\n", "net_ai_area_detect_x2s", __LINE__, count,
                  area.width, area.height);
        return -1;
    }
    read_columns(text, area.cells[0], area.width, area.height, grid_rows);
    return 0;
}

// A grid that is too large leaves the area out and does not fail.
int write_detect_cells(const net_ai_area_detect_t &area, TiXmlElement *parent)
{
    constexpr int most_characters = 3000;
    // A host's payload may hold any size: the product wraps around.
    const int cells = static_cast<int>(static_cast<unsigned int>(area.width) * static_cast<unsigned int>(area.height));
    const int needed = cells / 8 * 4 / 3 + 2;
    const bool fits = area.width >= 0 && area.width <= grid_columns && area.height >= 0 && area.height <= grid_rows;
    if (needed > most_characters || !fits) {
        const Place here = NET_HERE;
        log_error(here, "func:%s line:%d, base64 need size is too large:%d\n", "net_ai_area_detect_s2x", here.line,
                  needed);
        return 0;
    }
    return append_grid(parent, "area", area.cells[0], area.width, area.height, grid_rows, collect_columns,
                       "net_ai_area_detect_s2x");
}

struct AreaDetectFields : Description {
    using T = net_ai_area_detect_t;
    static constexpr Field fields[] = {
        integer("chn", AT(chn)).in(0, 63),
        mask("type", AT(type), area_objects).last_wins().read_only(),
        integer("sensitivity", AT(sensitivity)),
        integer("stayTime", AT(stayTime)),
        real("minTargetHeight", AT(minTargetHeight)),
        real("minTargetWidth", AT(minTargetWidth)),
        real("maxTargetHeight", AT(maxTargetHeight)),
        real("maxTargetWidth", AT(maxTargetWidth)),
        integer("width", AT(width)),
        integer("height", AT(height)),
        custom<check_detect_cells, write_detect_cells>("area", AT(cells)),
        word("type", AT(type), area_objects).write_only().complain("ai type is error"), // without a line break
    };
    static constexpr auto written = order("chn", "type", "sensitivity", "stayTime", "minTargetHeight", "minTargetWidth",
                                          "maxTargetHeight", "maxTargetWidth", "width", "height", "area");
    static constexpr Traits traits =
        HERE.parser("net_ai_area_detect_x2s").writer("net_ai_area_detect_s2x", "AiDetectCfg");
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
        HERE.parser("net_param_ai_track_limit_x2s").writer("net_param_ai_track_limit_s2x", "trackLimit");
};
constexpr auto track_limit = describe<TrackLimitFields>();

struct TrackTaskFields : Description {
    using T = net_ai_track_task_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)),
        text("timeTable", AT(timeTable)),
    };
    static constexpr Traits traits =
        HERE.parser("net_param_ai_track_task_x2s").writer("net_param_ai_track_task_s2x", "trackSchedule");
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
    static constexpr Traits traits = HERE.parser("nets_param_floodlight_status_x2s").entry(Line::none).any_size();
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
    static constexpr Traits traits =
        HERE.parser("nets_param_floodlight_status_report_x2s").entry(Line::none).any_size();
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
        HERE.parser("nets_param_floodlight_task_x2s").entry(Line::none).failure(Line::xml_error).any_size();
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
    return is_component(motion, node, name) ? read_scope(*motion, node) : -1;
}

int get_area_from_xmlnode(net_ai_area_t *area, TiXmlNode *node, const char *name)
{
    if (is_component(area, node, name))
        return read_area(*area, node);
    log_error(NET_HERE, " error \n");
    return -1;
}

int get_sensitivity_info_list_from_xmlnode(tag_net_sensitivity_info_v20_t *list, TiXmlNode *node, const char *name)
{
    // All four periods are demanded.
    return is_component(list, node, name) && read_periods(list, node, "sensitivityInfo", day_part) == periods ? 0 : -1;
}

int get_sensitivity_new_info_x2s(net_md_sens_v20_t *sensitivity, TiXmlNode *node, const char *name)
{
    return read_component(sensitivity, node, name, new_sensitivity);
}

int get_sensitivity_new_info_list_from_xmlnode(tag_net_sensitivity_info_v20_t *list, TiXmlNode *node, const char *name)
{
    return is_component(list, node, name) && read_periods(list, node, "sensInfo", prioritised) >= 0 ? 0 : -1;
}

int get_sensitivity_priority_list_from_xmlnode(int *priorities, TiXmlNode *node, const char *name)
{
    if (!is_component(priorities, node, name))
        return -1;
    int count = 0;
    for (TiXmlNode *child = node->FirstChild(); child != nullptr && count < periods; child = child->NextSibling()) {
        // Unlike everywhere else, this child is looked up by its exact name, case included.
        TiXmlNode *priority = child->FirstChild("priority");
        if (priority == nullptr) {
            log_error(NET_HERE, "func(%s)sensitivity priority node none found\n",
                      "get_sensitivity_priority_list_from_xmlnode");
            return -1;
        }
        if (read_int(&priorities[count], priority) != 0)
            return -1;
        ++count;
    }
    return 0;
}

int get_md_time_block_list_from_xmlnode(tag_net_pic_motion_cfg_v20_t *motion, TiXmlNode *node, const char *name)
{
    return is_component(motion, node, name) ? read_arming(*motion, node) : -1;
}

int get_handleException_from_xmlnode(tag_net_handle_exception_v20_t *exception, TiXmlNode *node, const char *name)
{
    return is_component(exception, node, name) ? read_exception(*exception, node) : -1;
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
    return read_reported(alarm_event, state, node, key);
}

int get_day_night_event_from_xmlnode(net_day_night_state_v20_t *state, TiXmlNode *node, const char *key)
{
    return read_reported(day_night_event, state, node, key);
}

int get_smart_ai_from_xmlnode(net_smart_ai_stat_t *smart, TiXmlNode *node, const char *key)
{
    return read_reported(smart_record, smart, node, key);
}

int get_smartai_sublist_from_xmlnode(unsigned int *masks, TiXmlNode *node, const char *key)
{
    if (is_component(masks, node, key))
        return read_sublist(masks, node);
    const Table &table = sublist_record;
    log_line(Line::parser, table.place(), table.parser());
    return -1;
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
    return read_reported(alarm_video_list, video, node, key);
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
    return join_words(out, size, search_types, [mask](int code) { return (mask & code) != 0; });
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
    int code = 0;
    if (direction == nullptr || read_code(&code, directions, node, key) != 0)
        return -1;
    *direction = static_cast<NET_CROSSLINE_DETECT_DIRECTION_E>(code);
    return 0;
}

int get_op_from_xmlnode(NET_SMAER_AI_OP_E *op, TiXmlNode *node, const char *key)
{
    int code = 0;
    if (op == nullptr || read_code(&code, operations, node, key) != 0)
        return -1;
    *op = static_cast<NET_SMAER_AI_OP_E>(code);
    return 0;
}

int net_smart_ai_points_s2x(net_smart_ai_points_t *points, TiXmlElement *parent)
{
    if (points == nullptr || parent == nullptr)
        return -1;
    const TiXmlNode *last = parent->LastChild();
    return write_record(points_record, points, append_element(parent, "pointList")) != 0 ? remove_children(parent, last)
                                                                                         : 0;
}

int net_smart_ai_direction_s2x(NET_CROSSLINE_DETECT_DIRECTION_E direction, TiXmlElement *parent)
{
    return append_code(directions, direction, "direction", parent);
}

int net_smart_ai_op_s2x(NET_SMAER_AI_OP_E op, TiXmlElement *parent)
{
    return append_code(operations, op, "op", parent);
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
    if (parse_message(param, node, area_detect) != 0)
        return -1;
    return store_detect_cells(*static_cast<net_ai_area_detect_t *>(param->data), find_detect_cells(node));
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
         MESSAGE("alarm-area", nets_param_alarm_area_init, net_alarm_area_x2s, nullptr, alarm_area_message),
         MESSAGE("alarm-report", net_param_alarm_init, net_alarm_report_x2s, nullptr, alarm_report),
         HOST_MESSAGE("alarm-event", net_state_v20_t, nullptr, net_alarm_report_s2x, nullptr, alarm_event),
         MESSAGE("day-night-report", net_param_day_night_init, net_day_night_report_x2s, nullptr, day_night_report),
         MESSAGE("find-alarm-video", net_find_alarm_video_init, net_find_alarm_video_x2s, nullptr, find_alarm_video),
         MESSAGE("alarm-video-info", net_alarm_video_info_init, net_alarm_video_info_x2s, nullptr, alarm_video_info),
         HOST_MESSAGE("find-event-log", net_find_event_log_t, net_find_event_log_x2s, nullptr, find_event_log),
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
                 light_switch),
         MESSAGE("floodlight-status-report", nets_param_floodlight_status_report_init,
                 nets_param_floodlight_status_report_x2s, nullptr, light_report),
         MESSAGE("floodlight-task", nets_param_floodlight_task_init, nets_param_floodlight_task_x2s, nullptr,
                 light_task))
