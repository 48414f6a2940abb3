/**
 * @file net_xml_recode.h
 * Recording: a channel's weekly recording schedule and its timing, the recording switch, the key and
 * the prompt of encrypted recordings, manual recording, and the deletion of recordings by channel and
 * period.
 *
 * Where nothing is said of the size, a parser does not compare `dataSize`: the host hands over the
 * payload that is named. Writers append one element with `version` "1.1" to the parent.
 * What all message functions share stands in net_types.h.
 */
#ifndef NET_XML_RECODE_H
#define NET_XML_RECODE_H

#include <stddef.h>

#include "net_types.h"

class TiXmlElement;
class TiXmlNode;

/** The recording schedule of a channel: message 1101. */
struct net_record_schedule_v20_t {
    int channelId;           /**< 0 to 63. */
    int enable;              /**< 0 or 1. */
    int reserved;            /**< Set to 0 by the parser. */
    int scheduleFormat;      /**< 1 per type ("typeScheduleList"), 0 per combination ("ScheduleList"). */
    net_schedule_t schedule; /**< What is recorded in which hour of the week. */
};

/** A list of times to choose from. */
struct tag_record_time_list_t {
    int count;    /**< Times held, 0 to 32. */
    int time[32]; /**< Any numbers. */
};

/** The timing of a channel's recordings: message 1201. */
struct net_record_cfg_v20_t {
    int channelId; /**< 0 to 63. */
    /** @{ */
    /** Any number. */
    int cycle;
    int recordDelayTime;
    int preRecordTime;
    int packageTime;
    int recordAbility;
    int recordMaxTime;
    int recordMinTime;
    /** @} */
    tag_record_time_list_t cyclelist; /**< The cycles offered. */
    tag_record_time_list_t timeList;  /**< The times offered. */
};

/** The recording switch. */
struct net_record_enable_t {
    long long enable; /**< Whether it is on; any number. */
    int mainSwitch;   /**< Any number. */
    int reserved;     /**< Not interpreted here. */
};

/** Key and prompt of encrypted recordings. */
struct net_record_key_and_prompt_t {
    int mode;         /**< Any number. */
    int enable;       /**< Whether it is on; any number. */
    int pwdValid;     /**< Written only. */
    char key[64];     /**< Secret. Terminated. */
    char prompt[256]; /**< Terminated. */
};

/** The key that opens an encrypted recording. */
struct net_record_decrypt_key_t {
    char fileName[256]; /**< Terminated. */
    char key[64];       /**< Secret. Terminated. */
    int type;           /**< Any number. */
};

/** The prompt for the key of an encrypted recording. */
struct net_record_prompt_t {
    char fileName[256]; /**< Terminated. */
    char prompt[256];   /**< Terminated. */
};

/** Manual recording: message 2301. */
struct net_manual_rec_t {
    int channelId; /**< Video channel; no range is checked here. */
    int stat;      /**< Any number. */
    int duration;  /**< Any number. */
};

/** Delayed recording: message 1203. */
struct net_delay_rec_stat_t {
    int delayRecStat; /**< Any number. */
};

/** Deletes the recordings of a period. */
struct net_delete_record_file_t {
    unsigned long long chnbits;   /**< The channels: one bit each. */
    int streamType;               /**< At most 4. */
    int bmerge;                   /**< Any number. */
    tag_net_time_v20_t startTime; /**< Start of the span. */
    tag_net_time_v20_t endTime;   /**< End of the span. */
};

/** Long-run mode: message 1204. */
struct net_longrun_mode_cfg_t {
    int channelId;     /**< Video channel; no range is checked here. */
    int reserved[261]; /**< Not interpreted here. */
};

/** Power mode: message 1205. */
struct net_power_mode_t {
    int reserved[76]; /**< Not interpreted here. */
};

/** Battery flag: message 1206. */
struct net_battery_flag_t {
    int reserved; /**< Not interpreted here. */
};

static_assert(sizeof(net_record_schedule_v20_t) == 1368, "net_record_schedule_v20_t");
static_assert(sizeof(tag_record_time_list_t) == 132, "tag_record_time_list_t");
static_assert(sizeof(net_record_cfg_v20_t) == 296, "net_record_cfg_v20_t");
static_assert(sizeof(net_record_enable_t) == 16, "net_record_enable_t");
static_assert(offsetof(net_record_key_and_prompt_t, key) == 12, "key");
static_assert(offsetof(net_record_key_and_prompt_t, prompt) == 76, "prompt");
static_assert(sizeof(net_record_key_and_prompt_t) == 332, "net_record_key_and_prompt_t");
static_assert(sizeof(net_record_decrypt_key_t) == 324, "net_record_decrypt_key_t");
static_assert(sizeof(net_record_prompt_t) == 512, "net_record_prompt_t");
static_assert(sizeof(net_manual_rec_t) == 12, "net_manual_rec_t");
static_assert(sizeof(net_delay_rec_stat_t) == 4, "net_delay_rec_stat_t");
static_assert(sizeof(net_delete_record_file_t) == 64, "net_delete_record_file_t");
static_assert(sizeof(net_longrun_mode_cfg_t) == 1048, "net_longrun_mode_cfg_t");
static_assert(sizeof(net_power_mode_t) == 304, "net_power_mode_t");
static_assert(sizeof(net_battery_flag_t) == 4, "net_battery_flag_t");

/**
 * Parses a recording schedule in either of its forms; `scheduleFormat` tells which. "MD" is added to the
 * types of one that comes as "ScheduleList".
 * @param param payload net_record_schedule_v20_t, size checked; `inited` becomes 2
 * @param node the body
 */
NETPUBLIC_API int net_record_schedule_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "Record", the schedule in the form that `scheduleFormat` names. @param param net_record_schedule_v20_t
 * @param parent gets the element */
NETPUBLIC_API int net_record_schedule_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses the timing of recordings; unknown children are logged and skipped. @param param net_record_cfg_v20_t @param
 * node the body */
NETPUBLIC_API int nets_rec_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Appends "RecordCfg" with the cycle and the three times, without channel and lists.
 * @param param net_record_cfg_v20_t
 * @param parent gets the element
 */
NETPUBLIC_API int net_record_cfg_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses the recording switch. @param param payload net_record_enable_t @param node the body */
NETPUBLIC_API int nets_record_enable_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "RecordEnable". @param param payload net_record_enable_t @param parent gets the element */
NETPUBLIC_API int nets_record_enable_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Parses key and prompt of encrypted recordings.
 * @param param payload net_record_key_and_prompt_t
 * @param node the body
 */
NETPUBLIC_API int net_param_record_key_and_prompt_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "RecEncCfg" with `enable` and `pwdValid`; the key stays here. @param param net_record_key_and_prompt_t
 * @param parent gets the element */
NETPUBLIC_API int net_param_record_key_and_prompt_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses the key that opens a recording. @param param payload net_record_decrypt_key_t @param node the body */
NETPUBLIC_API int net_param_record_decrypt_key_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Appends "RecordPrompt".
 * @param param payload net_record_prompt_t, not the net_record_decrypt_key_t of the parser above
 * @param parent gets the element
 */
NETPUBLIC_API int net_rec_prompt_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses a manual recording request. @param param payload net_manual_rec_t @param node the body */
NETPUBLIC_API int net_manual_rec_x2s(net_param_t *param, TiXmlNode *node);

/** Parses the state of delayed recording. @param param payload net_delay_rec_stat_t @param node the body */
NETPUBLIC_API int net_delay_rec_stat_x2s(net_param_t *param, TiXmlNode *node);

/** Parses a deletion by period; unknown children are logged and skipped. @param param net_delete_record_file_t @param
 * node the body */
NETPUBLIC_API int net_delete_record_file_x2s(net_param_t *param, TiXmlNode *node);

/**
 * Reads the "time" and "item" children into a list, which is cleared first; those beyond 32 are skipped. A
 * null list or node is -1, and so is a name that does not answer to @p key, unless that is null.
 */
NETPUBLIC_API int get_recordTimeList_from_xmlnode(tag_record_time_list_t *list, TiXmlNode *node, const char *key);

#endif
