// Recording: schedule, timing, switch, key and prompt of encrypted recordings, manual recording, deletion.
#include "engine/engine.h"
#include "engine/records.h"
#include "engine/registry.h"
#include "toolkit/schedules.h"

#include <net_public.h>

namespace netpublic {
namespace {

constexpr char unknown_node[] = "not parse this node :%s"; // without a line break

// Schedule ----------------------------------------------------------------------------------------

constexpr int per_type = 1;
constexpr int per_combination = 0;
constexpr int motion_type = 0; // alarm type "MD"

using Schedule = net_record_schedule_v20_t;

bool is_per_type(const Schedule &record)
{
    return record.scheduleFormat == per_type;
}

bool is_per_combination(const Schedule &record)
{
    return !is_per_type(record);
}

// Whatever types it names, a schedule of this form counts as one that mentions motion detection.
int add_motion(Schedule &record)
{
    alarm_in_add_event(&record.schedule.types, motion_type);
    return 0;
}

// With a line of the message's own for a refused list.
struct RecordCombinationFields : CombinationListFields {
    static constexpr Traits traits =
        HERE.parser("net_record_schedule_x2s").exact_names().others_fail().failure(Line::plain_arrow);
};
constexpr auto record_combinations = describe<RecordCombinationFields>();

// The one schedule is written in the form that the record names: any format but 1 is the per-combination form.
struct ScheduleFields : Description {
    using T = Schedule;
    static constexpr Field fields[] = {
        preset(AT(reserved), 0),
        integer("channelId", AT(channelId)).in(0, 63),
        flag("enable", AT(enable)),
        group("typeScheduleList", AT(schedule), type_schedule).marks(AT(scheduleFormat), per_type).when<is_per_type>(),
        group("ScheduleList", AT(schedule), record_combinations)
            .then<add_motion>()
            .marks(AT(scheduleFormat), per_combination)
            .when<is_per_combination>(),
    };
    static constexpr Field also_shown[] = {shown("scheduleFormat", AT(scheduleFormat))};
    static constexpr Traits traits =
        HERE.parser("net_record_schedule_x2s")
            .writer("net_record_schedule_s2x", "Record")
            .write_entry(Line::parser)
            .any_size_written()
            .sets_inited()
            .title("recording schedule", "What a channel records in which hour of the week.");
};
constexpr auto schedule_message = describe<ScheduleFields>();

// Timing ------------------------------------------------------------------------------------------

struct TimeListFields : Description {
    using T = tag_record_time_list_t;
    static constexpr Field fields[] = {
        int_items("time", AT(time)).counted_by(AT(count)),
        int_items("item", AT(time)).counted_by(AT(count)), // both spellings fill the same list
    };
    static constexpr Traits traits = HERE.clears();
};
constexpr auto time_list = describe<TimeListFields>();

struct TimingFields : Description {
    using T = net_record_cfg_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, 63),   integer("cycle", AT(cycle)),
        integer("recordDelayTime", AT(recordDelayTime)), integer("preRecordTime", AT(preRecordTime)),
        integer("packageTime", AT(packageTime)),         group("cyclelist", AT(cyclelist), time_list),
        group("timeList", AT(timeList), time_list),      integer("recordAbility", AT(recordAbility)),
        integer("recordMaxTime", AT(recordMaxTime)),     integer("recordMinTime", AT(recordMinTime)),
    };
    static constexpr auto written = order("cycle", "recordDelayTime", "preRecordTime", "packageTime");
    static constexpr Traits traits =
        HERE.parser("nets_rec_x2s")
            .writer("net_record_cfg_s2x", "RecordCfg")
            .entry(Line::none)
            .write_entry(Line::parser)
            .unknown(unknown_node)
            .any_size()
            .title("recording settings",
                   "How long recordings are, what precedes and follows an event, and what may be chosen.");
};
constexpr auto timing_message = describe<TimingFields>();

// Switch ------------------------------------------------------------------------------------------

struct SwitchFields : Description {
    using T = net_record_enable_t;
    static constexpr Field fields[] = {
        int64("enable", AT(enable)),
        integer("mainSwitch", AT(mainSwitch)),
    };
    static constexpr Traits traits = HERE.parser("nets_record_enable_x2s")
                                         .writer("nets_record_enable_s2x", "RecordEnable")
                                         .entry(Line::none)
                                         .write_entry(Line::parser)
                                         .failure(Line::plain_arrow)
                                         .any_size()
                                         .title("recording switch", "Switches recording on and off.");
};
constexpr auto switch_message = describe<SwitchFields>();

// Encrypted recordings ----------------------------------------------------------------------------

// Only the state is written; key and prompt stay here.
struct KeyAndPromptFields : Description {
    using T = net_record_key_and_prompt_t;
    static constexpr Field fields[] = {
        text("key", AT(key)),
        text("prompt", AT(prompt)),
        integer("enable", AT(enable)),
        integer("mode", AT(mode)),
        integer("pwdValid", AT(pwdValid)).write_only(),
    };
    static constexpr auto written = order("enable", "pwdValid");
    static constexpr Traits traits =
        HERE.parser("net_param_record_key_and_prompt_x2s")
            .writer("net_param_record_key_and_prompt_s2x", "RecEncCfg")
            .entry(Line::none)
            .write_entry(Line::parser)
            .any_size()
            .title("recording encryption", "Key and prompt of encrypted recordings; the reply tells only the state.");
};
constexpr auto key_and_prompt_message = describe<KeyAndPromptFields>();

struct DecryptKeyFields : Description {
    using T = net_record_decrypt_key_t;
    static constexpr Field fields[] = {
        text("key", AT(key)),
        text("fileName", AT(fileName)),
        integer("type", AT(type)),
    };
    static constexpr Traits traits = HERE.parser("net_param_record_decrypt_key_x2s")
                                         .entry(Line::none)
                                         .any_size()
                                         .title("decryption key", "The key that opens an encrypted recording.");
};
constexpr auto decrypt_key_message = describe<DecryptKeyFields>();

struct PromptFields : Description {
    using T = net_record_prompt_t;
    static constexpr Field fields[] = {
        text("prompt", AT(prompt)).write_only(),
        text("fileName", AT(fileName)).write_only(),
    };
    static constexpr Traits traits = HERE.writer("net_rec_prompt_s2x", "RecordPrompt")
                                         .write_entry(Line::parser)
                                         .any_size()
                                         .title("password prompt", "The hint at the key of an encrypted recording.");
};
constexpr auto prompt_message = describe<PromptFields>();

// Manual and delayed recording --------------------------------------------------------------------

struct ManualFields : Description {
    using T = net_manual_rec_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)),
        integer("stat", AT(stat)),
        integer("duration", AT(duration)),
    };
    static constexpr Traits traits = HERE.parser("net_manual_rec_x2s")
                                         .entry(Line::none)
                                         .any_size()
                                         .title("manual recording", "Starts and stops a recording by hand.");
};
constexpr auto manual_message = describe<ManualFields>();

struct DelayFields : Description {
    using T = net_delay_rec_stat_t;
    static constexpr Field fields[] = {
        integer("delayRecStat", AT(delayRecStat)),
    };
    static constexpr Traits traits = HERE.parser("net_delay_rec_stat_x2s")
                                         .entry(Line::none)
                                         .any_size()
                                         .title("delayed recording", "Whether recording begins with a delay.");
};
constexpr auto delay_message = describe<DelayFields>();

// Deletion ----------------------------------------------------------------------------------------

struct DeletionFields : Description {
    using T = net_delete_record_file_t;
    static constexpr Field fields[] = {
        unsigned_longlong("chnbits", AT(chnbits)),
        integer("streamType", AT(streamType)).at_most(4),
        integer("bmerge", AT(bmerge)),
        group("startTime", AT(startTime), time_record),
        group("endTime", AT(endTime), time_record),
    };
    static constexpr Traits traits =
        HERE.parser("net_delete_record_file_x2s")
            .entry(Line::none)
            .unknown(unknown_node)
            .any_size()
            .title("recording deletion", "Deletes what channels have recorded in a period.");
};
constexpr auto deletion_message = describe<DeletionFields>();

} // namespace
} // namespace netpublic

using namespace netpublic;

int net_record_schedule_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, schedule_message);
}

int net_record_schedule_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, schedule_message);
}

int nets_rec_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, timing_message);
}

int net_record_cfg_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, timing_message);
}

int nets_record_enable_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, switch_message);
}

int nets_record_enable_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, switch_message);
}

int net_param_record_key_and_prompt_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, key_and_prompt_message);
}

int net_param_record_key_and_prompt_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, key_and_prompt_message);
}

int net_param_record_decrypt_key_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, decrypt_key_message);
}

int net_rec_prompt_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, prompt_message);
}

int net_manual_rec_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, manual_message);
}

int net_delay_rec_stat_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, delay_message);
}

int net_delete_record_file_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, deletion_message);
}

int get_recordTimeList_from_xmlnode(tag_record_time_list_t *list, TiXmlNode *node, const char *key)
{
    return read_component(list, node, key, time_list);
}

MESSAGES(recode, //
         MESSAGE("record-schedule", nets_param_rec_schedule_init, net_record_schedule_x2s, net_record_schedule_s2x,
                 schedule_message),
         MESSAGE("record-configuration", nets_param_rec_init, nets_rec_x2s, net_record_cfg_s2x, timing_message),
         HOST_MESSAGE("record-switch", net_record_enable_t, nets_record_enable_x2s, nets_record_enable_s2x,
                      switch_message),
         HOST_MESSAGE("record-key-and-prompt", net_record_key_and_prompt_t, net_param_record_key_and_prompt_x2s,
                      net_param_record_key_and_prompt_s2x, key_and_prompt_message),
         HOST_MESSAGE("record-decrypt-key", net_record_decrypt_key_t, net_param_record_decrypt_key_x2s, nullptr,
                      decrypt_key_message, "RecordKey"),
         HOST_MESSAGE("record-prompt", net_record_prompt_t, nullptr, net_rec_prompt_s2x, prompt_message),
         MESSAGE("manual-record", net_param_manual_rec_init, net_manual_rec_x2s, nullptr, manual_message, "ManualRec"),
         MESSAGE("delayed-record", net_param_delay_rec_stat_init, net_delay_rec_stat_x2s, nullptr, delay_message,
                 "DelayRec"),
         HOST_MESSAGE("record-deletion", net_delete_record_file_t, net_delete_record_file_x2s, nullptr,
                      deletion_message, "DeleteRecordFile"))
