/**
 * @file net_xml_alarm.h
 * Alarm and intelligent detection: motion detection and detector areas, alarm and day/night reports,
 * alarm-video and event-log search, smart-AI rules and AI settings, floodlights; and the payloads of
 * the scene, linkage and radio-alarm messages.
 *
 * Parsers read the children of the element that they are given, writers append their root element to
 * the parent. A failing parser keeps what it has stored so far; a failing writer leaves the parent as
 * it was. Component readers check the node's name against @p key when one is given.
 * What all message functions share stands in net_types.h.
 */
#ifndef NET_XML_ALARM_H
#define NET_XML_ALARM_H

#include "net_types.h"
#include "net_xml_public.h"

/** Columns and rows of the largest detection grid. */
enum {
    NET_GRID_COLUMNS = 155,
    NET_GRID_ROWS = 100,
};

/** @name Motion detection
 * @{ */

/** A daily period with its sensitivity. */
struct tag_net_sensitivity_info_v20_t {
    int enable;      /**< 1 when the period counts; set whenever the period is parsed. */
    int beginHour;   /**< 0 to 23. */
    int beginMinute; /**< 0 to 59. */
    int endHour;     /**< 0 to 23. */
    int endMinute;   /**< 0 to 59. */
    int sensitivity; /**< 1 to 50. */
};

/** The prioritised sensitivity list of newer clients. */
struct net_md_sens_v20_t {
    int valid;                                  /**< 1 once a list was parsed; else it is not written. */
    tag_net_sensitivity_info_v20_t sensInfo[4]; /**< Those with `enable` are present. */
    int priority[4];                            /**< One per period; no range. */
    int sensitivityDefault;                     /**< Outside all periods; no range. */
};

/** What the device does about an event. Read only, never written. */
struct tag_net_handle_exception_v20_t {
    int reserved;          /**< Filled by no message. An arming slot counts as armed when it differs from this. */
    int handleType;        /**< Mask of alarm actions, see get_handleType_string(). */
    int chnHandleType[64]; /**< One per channel. */
    int relAlarmOut[96];   /**< One per alarm output. */
};

/** "MD", motion detection of one channel. */
struct tag_net_pic_motion_cfg_v20_t {
    int channelId; /**< 0 to 63. */
    int enable;    /**< 0 or 1. */
    int width;     /**< Grid columns, 1 to 155. */
    int height;    /**< Grid rows, 1 to 100. */
    /** Row by row: scope[row][column] is 1 when the cell is watched. */
    unsigned char scope[NET_GRID_ROWS][NET_GRID_COLUMNS];
    tag_net_sensitivity_info_v20_t sensitivityInfo[4]; /**< The four periods of the older list. */
    net_md_sens_v20_t sensInfoNew;                     /**< The list of newer clients. */
    tag_net_handle_exception_v20_t handleException;    /**< What to do about motion; read only. */
    int timeBlock[7][24];                              /**< By weekday (0 Sunday) and hour; non-zero is armed. */
    int usepir;                                        /**< Use the infrared sensor; no range. */
};

/** The grid of one detector. */
struct net_ai_area_t {
    int width;  /**< Columns, 1 to 155. */
    int height; /**< Rows, 1 to 100. */
    /** Column by column, unlike the motion grid: cells[column][row]. */
    unsigned char cells[NET_GRID_COLUMNS][NET_GRID_ROWS];
};

/** Bits of net_alarm_area_t::type. */
enum NET_ALARM_AREA_E {
    NET_ALARM_AREA_MD = 0x01,
    NET_ALARM_AREA_PERSON = 0x02,
    NET_ALARM_AREA_VEHICLE = 0x04,
    NET_ALARM_AREA_FACE = 0x08,
    NET_ALARM_AREA_DOG_CAT = 0x10,
    NET_ALARM_AREA_OTHER = 0x20,
    NET_ALARM_AREA_PACKAGE = 0x40,
};

/** The detector areas of one channel. */
struct net_alarm_area_t {
    int chn;                   /**< No range. */
    unsigned int type;         /**< Mask of the areas present, NET_ALARM_AREA_E. */
    net_ai_area_t mdArea;      /**< Where motion counts. */
    net_ai_area_t personArea;  /**< Where people count. */
    net_ai_area_t vehicleArea; /**< Where vehicles count. */
    net_ai_area_t faceArea;    /**< Where faces count. */
    net_ai_area_t dogCatArea;  /**< Where dogs and cats count. */
    net_ai_area_t otherArea;   /**< Where other objects count. */
    net_ai_area_t packageArea; /**< Where packages count. */
};

static_assert(sizeof(tag_net_sensitivity_info_v20_t) == 24, "tag_net_sensitivity_info_v20_t");
static_assert(sizeof(net_md_sens_v20_t) == 120, "net_md_sens_v20_t");
static_assert(sizeof(tag_net_handle_exception_v20_t) == 648, "tag_net_handle_exception_v20_t");
static_assert(sizeof(tag_net_pic_motion_cfg_v20_t) == 17056, "tag_net_pic_motion_cfg_v20_t");
static_assert(sizeof(net_ai_area_t) == 15508, "net_ai_area_t");
static_assert(sizeof(net_alarm_area_t) == 108564, "net_alarm_area_t");

/** Parses a motion message into a tag_net_pic_motion_cfg_v20_t; `inited` becomes 2. @return 0 or -1 */
NETPUBLIC_API int net_md_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Writes "MD". Grids up to 96 x 64 are always written in that size; a larger one with a side of 0 is written
 * without cells, and a side that the grid cannot hold fails. The exception handling and the day-part periods'
 * `enable` are not written. @return 0 or -1
 */
NETPUBLIC_API int net_md_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses the areas of a channel into a net_alarm_area_t; there is no writer. @return 0 or -1 */
NETPUBLIC_API int net_alarm_area_x2s(net_param_t *param, TiXmlNode *node);

/** Reads "scope". Cells outside the given size are left alone, and so are `width` and `height`. */
NETPUBLIC_API int get_scope_from_xmlnode(tag_net_pic_motion_cfg_v20_t *motion, TiXmlNode *node, const char *key);
/** Reads a detector's "width", "height" and "area". Cells outside the given size are left alone. */
NETPUBLIC_API int get_area_from_xmlnode(net_ai_area_t *area, TiXmlNode *node, const char *key);
/** Reads the four periods, no fewer, of "sensitivityInfoList" into @p list of 4. */
NETPUBLIC_API int get_sensitivity_info_list_from_xmlnode(tag_net_sensitivity_info_v20_t *list, TiXmlNode *node,
                                                         const char *key);
/** Reads "sensInfoNew". */
NETPUBLIC_API int get_sensitivity_new_info_x2s(net_md_sens_v20_t *sensitivity, TiXmlNode *node, const char *key);
/** Reads the periods of "sensInfoList", 4 at most, into @p list of 4. */
NETPUBLIC_API int get_sensitivity_new_info_list_from_xmlnode(tag_net_sensitivity_info_v20_t *list, TiXmlNode *node,
                                                             const char *key);
/** Reads the priorities of "sensInfoList", 4 at most, into @p list of 4; a period without one is a failure. */
NETPUBLIC_API int get_sensitivity_priority_list_from_xmlnode(int *list, TiXmlNode *node, const char *key);
/** Reads "timeBlockList", 168 blocks at most; later blocks overwrite earlier ones. */
NETPUBLIC_API int get_md_time_block_list_from_xmlnode(tag_net_pic_motion_cfg_v20_t *motion, TiXmlNode *node,
                                                      const char *key);
/** Reads "handleException". */
NETPUBLIC_API int get_handleException_from_xmlnode(tag_net_handle_exception_v20_t *exception, TiXmlNode *node,
                                                   const char *key);

/** @} */
/** @name Alarm and day/night reports
 * @{ */

/** Bits of net_state_v20_t::status. */
enum NET_ALARM_STATUS_E {
    NET_ALARM_STATUS_MD = 0x1,
    NET_ALARM_STATUS_VIDEO_LOSS = 0x2,
    NET_ALARM_STATUS_IO = 0x4,
    NET_ALARM_STATUS_BLIND = 0x8,
    NET_ALARM_STATUS_VISITOR = 0x800000,
};

/** The smart-AI part of an alarm report. Object masks: 1 people, 2 vehicle, 4 dog_cat. */
struct net_smart_ai_stat_t {
    time_section_t events;         /**< Codes 29 to 43. */
    unsigned int crossline[3];     /**< Object mask per rule. Read only, like all below. */
    unsigned int intrusion[3];     /**< Object mask per rule. */
    unsigned int loitering[3];     /**< Object mask per rule. */
    unsigned long long pts;        /**< Any number. */
    unsigned long long frameIndex; /**< Any number. */
};

/** "AlarmEvent", the state of one channel; the payload of the writer. */
struct net_state_v20_t {
    int channelId;               /**< 0 and above. */
    int status;                  /**< Mask of NET_ALARM_STATUS_E. */
    time_section_t aiEvents;     /**< Codes 18 to 27 and 44. */
    int recording;               /**< 0 or 1. */
    int timeStamp;               /**< 0 and above. */
    int previewOnly;             /**< 0 and above; read only, like all below. */
    int timeSec;                 /**< 0 and above. */
    int timeUsec;                /**< 0 and above. */
    int wakeAlarm;               /**< 0 and above. */
    unsigned long long offset;   /**< Any number. */
    net_smart_ai_stat_t smartAi; /**< Of the smart-AI detections, the events are written too. */
};

/** The payload of the alarm-report parser. */
struct net_alarm_report_t {
    net_state_v20_t state[2]; /**< The first and the last "AlarmEvent"; one alone leaves the second as it was. */
};

/** "DayNightEvent". */
struct net_day_night_state_v20_t {
    int switching; /**< Any number. */
    int mode;      /**< 0 day, 1 night, 2 led_day, 3 preset, 4 unknown. */
};

/** The payload of the day/night-report parser. */
struct net_day_night_report_t {
    net_day_night_state_v20_t state[2]; /**< The first and the last "DayNightEvent". */
};

static_assert(sizeof(net_smart_ai_stat_t) == 64, "net_smart_ai_stat_t");
static_assert(sizeof(net_state_v20_t) == 112, "net_state_v20_t");
static_assert(sizeof(net_alarm_report_t) == 224, "net_alarm_report_t");
static_assert(sizeof(net_day_night_report_t) == 16, "net_day_night_report_t");

/** Parses "AlarmEvent" children into a net_alarm_report_t; `inited` becomes 2. @return 0 or -1 */
NETPUBLIC_API int net_alarm_report_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Writes "AlarmEvent" from a payload of exactly one net_state_v20_t (the initialiser makes two records: the
 * host adjusts `dataSize`). @return 0 or -1
 */
NETPUBLIC_API int net_alarm_report_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses "DayNightEvent" children into a net_day_night_report_t; `inited` becomes 2. @return 0 or -1 */
NETPUBLIC_API int net_day_night_report_x2s(net_param_t *param, TiXmlNode *node);

/** Reads one "AlarmEvent". `status` and the event sets only grow; a detection's object masks are replaced. */
NETPUBLIC_API int get_AlarmEvent_from_xmlnode(net_state_v20_t *state, TiXmlNode *node, const char *key);
/** Reads one "DayNightEvent". */
NETPUBLIC_API int get_day_night_event_from_xmlnode(net_day_night_state_v20_t *state, TiXmlNode *node, const char *key);
/** Reads "smartAiTypeList". Entries of unknown types or with invalid indexes are logged and dropped. */
NETPUBLIC_API int get_smart_ai_from_xmlnode(net_smart_ai_stat_t *smart, TiXmlNode *node, const char *key);
/** Reads one "sublist" into the object masks of three rules. An invalid rule number is logged and dropped. */
NETPUBLIC_API int get_smartai_sublist_from_xmlnode(unsigned int *masks, TiXmlNode *node, const char *key);

/** @} */
/** @name Alarm-video and event-log search
 * @{ */

/** Bits of the alarm types of both searches. */
enum NET_SEARCH_TYPE_E {
    NET_SEARCH_MD = 0x4,
    NET_SEARCH_TIME_REC = 0x8,
    NET_SEARCH_MAN_REC = 0x10,
    NET_SEARCH_PEOPLE = 0x20,
    NET_SEARCH_VEHICLE = 0x40,
    NET_SEARCH_FACE = 0x80,
    NET_SEARCH_DOG_CAT = 0x100,
    NET_SEARCH_OTHER = 0x200,
    NET_SEARCH_VISITOR = 0x400,
    NET_SEARCH_IO = 0x800,
    NET_SEARCH_PIR = 0x1000,
    NET_SEARCH_PACKAGE = 0x2000,
    NET_SEARCH_CRY = 0x4000,
    NET_SEARCH_CROSSLINE = 0x8000,
    NET_SEARCH_INTRUDE = 0x10000,
    NET_SEARCH_LOITERING = 0x20000,
    NET_SEARCH_LEGACY = 0x40000,
    NET_SEARCH_LOSS = 0x80000,
    NET_SEARCH_LINKAGE = 0x100000,
};

/** The criteria of an alarm-video search. */
struct net_find_alarm_video_t {
    int channelId;                     /**< 0 to 63. */
    char uid[32];                      /**< Terminated. */
    int fileHandle;                    /**< 0 and above. */
    int streamType;                    /**< 0 to 4. */
    int alarmType;                     /**< Mask of NET_SEARCH_TYPE_E. */
    int notSearchVideo;                /**< Any number. */
    int destination;                   /**< -1 unless the request names one. */
    unsigned long long logicChnBitmap; /**< One bit per logical channel. */
    tag_net_time_v20_t startTime;      /**< Start of the span. */
    tag_net_time_v20_t endTime;        /**< End of the span. */
};

/** One video that was found. */
struct net_alarm_video_item_t {
    tag_net_time_v20_t startTime; /**< Start of the span. */
    tag_net_time_v20_t endTime;   /**< End of the span. */
    char fileId[256];             /**< Terminated. */
    char fileName[31];            /**< Terminated. */
    int typeExtension;            /**< Any number. */
    int alarmType;                /**< Record-type code; several types OR-ed together. */
    int bEncrypted;               /**< Any number. */
};

/** The result of an alarm-video search. */
struct tag_net_alarm_video_v20_t {
    int channelId;                   /**< 0 to 63. */
    int fileHandle;                  /**< 0 and above. */
    int bFinished;                   /**< Whether the search is over; any number. */
    int itemNum;                     /**< Items held, 0 to 60. */
    net_alarm_video_item_t item[60]; /**< Further ones are ignored. */
};

/** The criteria of an event-log search. The host provides this payload. */
struct net_find_event_log_t {
    int logTypeBits;               /**< 0 and above. */
    int desc;                      /**< 0 and above. */
    int alarmType;                 /**< Mask of NET_SEARCH_TYPE_E; the parser only adds bits. */
    int notSearchVideo;            /**< Any number. */
    int handle;                    /**< The host's handle; any number. */
    int maxEventCount;             /**< 0 and above. */
    net_query_deive_t devices[36]; /**< The devices asked about; further ones are ignored. */
    tag_net_time_v20_t startTime;  /**< Start of the span. */
    tag_net_time_v20_t endTime;    /**< End of the span. */
};

/** The events of one device. */
struct net_event_log_device_t {
    char uid[32];              /**< Terminated; empty when the record is unused. */
    int eventCount;            /**< Any number. */
    int logicChnEventCount[2]; /**< Per logical channel; any number. */
    int logicChnNum;           /**< Logical channels counted, 0 to 2. */
};

/** "EventLogBrief", the summary of an event log. The host provides this payload. */
struct net_event_log_brief_t {
    int logType;                  /**< Any number; read only. */
    tag_net_time_v20_t startTime; /**< Start of the span. */
    tag_net_time_v20_t endTime;   /**< End of the span. */
    /** @{ */
    /** Events of one kind; any number. Written only. */
    int mdCount;
    int peopleCount;
    int vehicleCount;
    int petCount;
    int visitorCount;
    int pirCount;
    int otherCount;
    int packageCount;
    int loiteringCount;
    int intrusionCount;
    int cryCount;
    int crossCount;
    int lossCount;
    int legacyCount;
    int linkageCount;
    /** @} */
    net_event_log_device_t device[36]; /**< Written are those with a `uid`. */
    int dayNum;                        /**< Days counted; 30 are written at most. */
    int dailyEventCount[30];           /**< Per day, in the order of the days; any number. */
};

static_assert(sizeof(net_find_alarm_video_t) == 112, "net_find_alarm_video_t");
static_assert(sizeof(net_alarm_video_item_t) == 348, "net_alarm_video_item_t");
static_assert(sizeof(tag_net_alarm_video_v20_t) == 20896, "tag_net_alarm_video_v20_t");
static_assert(sizeof(net_find_event_log_t) == 1512, "net_find_event_log_t");
static_assert(sizeof(net_event_log_device_t) == 48, "net_event_log_device_t");
static_assert(sizeof(net_event_log_brief_t) == 1964, "net_event_log_brief_t");

/** Parses the criteria of an alarm-video search into a net_find_alarm_video_t. @return 0 or -1 */
NETPUBLIC_API int net_find_alarm_video_x2s(net_param_t *param, TiXmlNode *node);
/** Parses the result of an alarm-video search into a tag_net_alarm_video_v20_t. @return 0 or -1 */
NETPUBLIC_API int net_alarm_video_info_x2s(net_param_t *param, TiXmlNode *node);
/** Parses the criteria of an event-log search into a net_find_event_log_t. @return 0 or -1 */
NETPUBLIC_API int net_find_event_log_x2s(net_param_t *param, TiXmlNode *node);
/** Parses the times and the type of a summary request into a net_event_log_brief_t. @return 0 or -1 */
NETPUBLIC_API int net_ev_log_brief_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "EventLogBrief" from a net_event_log_brief_t. @return 0 or -1 */
NETPUBLIC_API int net_ev_log_brief_s2x(net_param_t *param, TiXmlElement *parent);

/** Reads the "alarmVideo" children of "alarmVideoList" behind the items that are held. */
NETPUBLIC_API int get_alarm_video_file_list_from_xmlnode(tag_net_alarm_video_v20_t *video, TiXmlNode *node,
                                                         const char *key);
/**
 * Writes the words of a search mask, joined by commas, or "none". "cry", the smart-AI types and "linkage"
 * have no words here.
 * @param out, size the buffer and its size in bytes
 * @param mask NET_SEARCH_TYPE_E
 * @return 0, or -1 for a null buffer or one that is too small, which is left as it was
 */
NETPUBLIC_API int evt_log_alarm_type_to_string(char *out, unsigned int size, int mask);

/** @} */
/** @name Smart-AI rules
 * Five detections with up to four rules each. A parsed message replaces the whole list.
 * @{ */

/** What a rule-list message does; spelled so. */
enum NET_SMAER_AI_OP_E {
    NET_SMAER_AI_OP_NONE = 0,
    NET_SMAER_AI_OP_ADD = 1,
    NET_SMAER_AI_OP_DELETE = 2,
    NET_SMAER_AI_OP_MODIFY = 3,
};

/** One rule of line crossing. */
struct net_crossline_detect_t {
    int location;                               /**< Place of the rule; any number. */
    int index;                                  /**< Number of the rule; any. */
    char name[32];                              /**< Terminated. */
    char aiType[128];                           /**< Terminated. */
    int sesensitivity;                          /**< Spelled so, in the protocol too. */
    net_smart_ai_points_t pointList;            /**< The line or polygon of the rule. */
    NET_CROSSLINE_DETECT_DIRECTION_E direction; /**< The side that counts; an unknown word reads as none. */
};

/** One rule of intrusion. */
struct net_intrusion_detect_t {
    int location;                    /**< Place of the rule; any number. */
    int index;                       /**< Number of the rule; any. */
    char name[32];                   /**< Terminated. */
    int sesensitivity;               /**< Any number. */
    char aiType[128];                /**< Terminated. */
    int stayTime;                    /**< Any number. */
    net_smart_ai_points_t pointList; /**< The line or polygon of the rule. */
};

/** One rule of loitering. */
struct net_loitering_detect_t {
    int location;                    /**< Place of the rule; any number. */
    int index;                       /**< Number of the rule; any. */
    char name[32];                   /**< Terminated. */
    int sesensitivity;               /**< Any number. */
    char aiType[128];                /**< Terminated. */
    int stayTime;                    /**< Any number. */
    net_smart_ai_points_t pointList; /**< The line or polygon of the rule. */
};

/** One rule of left objects. */
struct net_legacy_detect_t {
    int location;                    /**< Place of the rule; any number. */
    int index;                       /**< Number of the rule; any. */
    char name[32];                   /**< Terminated. */
    int timeThresh;                  /**< Any number. */
    int sesensitivity;               /**< Any number. */
    net_smart_ai_points_t pointList; /**< The line or polygon of the rule. */
};

/** One rule of missing objects. */
struct net_loss_detect_t {
    int location;                    /**< Place of the rule; any number. */
    int index;                       /**< Number of the rule; any. */
    char name[32];                   /**< Terminated. */
    int timeThresh;                  /**< Any number. */
    int sesensitivity;               /**< Any number. */
    net_smart_ai_points_t pointList; /**< The line or polygon of the rule. */
};

/** "CrosslineDetect". */
struct net_crossline_detect_list_t {
    int channelId;                  /**< Video channel; no range is checked here. */
    int maxNum;                     /**< Written unless 0. */
    int num;                        /**< Rules held, 0 to 4. */
    NET_SMAER_AI_OP_E op;           /**< A NET_SMAER_AI_OP_E code. */
    int pointMinNum;                /**< Both are written unless this one is 0. */
    int pointMaxNUm;                /**< Spelled so, in the protocol too. */
    net_crossline_detect_t item[4]; /**< The rules; `num` of them count. */
};

/** "IntrusionDetect"; fields as in net_crossline_detect_list_t. */
struct net_intrusion_detect_list_t {
    int channelId;                  /**< Video channel; no range is checked here. */
    int maxNum;                     /**< Most entries the device takes; any number. */
    int num;                        /**< Rules held, 0 to 4. */
    NET_SMAER_AI_OP_E op;           /**< A NET_SMAER_AI_OP_E code. */
    int pointMinNum;                /**< Fewest points of a rule; any number. */
    int pointMaxNUm;                /**< Most points of a rule; any number. */
    net_intrusion_detect_t item[4]; /**< The rules; `num` of them count. */
};

/** "LoiteringDetect"; fields as in net_crossline_detect_list_t. */
struct net_loitering_detect_list_t {
    int channelId;                  /**< Video channel; no range is checked here. */
    int maxNum;                     /**< Most entries the device takes; any number. */
    int num;                        /**< Rules held, 0 to 4. */
    NET_SMAER_AI_OP_E op;           /**< A NET_SMAER_AI_OP_E code. */
    int pointMinNum;                /**< Fewest points of a rule; any number. */
    int pointMaxNUm;                /**< Most points of a rule; any number. */
    net_loitering_detect_t item[4]; /**< The rules; `num` of them count. */
};

/** "LegacyDetect"; fields as in net_crossline_detect_list_t. */
struct net_legacy_detect_list_t {
    int channelId;               /**< Video channel; no range is checked here. */
    int maxNum;                  /**< Most entries the device takes; any number. */
    int num;                     /**< Rules held, 0 to 4. */
    NET_SMAER_AI_OP_E op;        /**< A NET_SMAER_AI_OP_E code. */
    int pointMinNum;             /**< Fewest points of a rule; any number. */
    int pointMaxNUm;             /**< Most points of a rule; any number. */
    net_legacy_detect_t item[4]; /**< The rules; `num` of them count. */
};

/** "LossDetect"; fields as in net_crossline_detect_list_t. */
struct net_loss_detect_list_t {
    int channelId;             /**< Video channel; no range is checked here. */
    int maxNum;                /**< Most entries the device takes; any number. */
    int num;                   /**< Rules held, 0 to 4. */
    NET_SMAER_AI_OP_E op;      /**< A NET_SMAER_AI_OP_E code. */
    int pointMinNum;           /**< Fewest points of a rule; any number. */
    int pointMaxNUm;           /**< Most points of a rule; any number. */
    net_loss_detect_t item[4]; /**< The rules; `num` of them count. */
};

static_assert(sizeof(net_crossline_detect_list_t) == 1000, "net_crossline_detect_list_t");
static_assert(sizeof(net_intrusion_detect_list_t) == 1000, "net_intrusion_detect_list_t");
static_assert(sizeof(net_loitering_detect_list_t) == 1000, "net_loitering_detect_list_t");
static_assert(sizeof(net_legacy_detect_list_t) == 488, "net_legacy_detect_list_t");
static_assert(sizeof(net_loss_detect_list_t) == 488, "net_loss_detect_list_t");

/** Parses a net_crossline_detect_list_t, cleared first. @return 0 or -1 */
NETPUBLIC_API int net_smart_ai_crossline_detect_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "CrosslineDetect". @return 0 or -1 */
NETPUBLIC_API int net_smart_ai_crossline_detect_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses a net_intrusion_detect_list_t, cleared first. @return 0 or -1 */
NETPUBLIC_API int net_smart_ai_intrusion_detect_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "IntrusionDetect". @return 0 or -1 */
NETPUBLIC_API int net_smart_ai_intrusion_detect_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses a net_loitering_detect_list_t, cleared first. @return 0 or -1 */
NETPUBLIC_API int net_smart_ai_loitering_detect_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "LoiteringDetect". @return 0 or -1 */
NETPUBLIC_API int net_smart_ai_loitering_detect_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses a net_legacy_detect_list_t, cleared first. @return 0 or -1 */
NETPUBLIC_API int net_smart_ai_legacy_detect_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "LegacyDetect". @return 0 or -1 */
NETPUBLIC_API int net_smart_ai_legacy_detect_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses a net_loss_detect_list_t, cleared first. @return 0 or -1 */
NETPUBLIC_API int net_smart_ai_loss_detect_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "LossDetect". @return 0 or -1 */
NETPUBLIC_API int net_smart_ai_loss_detect_s2x(net_param_t *param, TiXmlElement *parent);

/** Reads one "crosslineDetectItem". */
NETPUBLIC_API int get_crossline_from_xmlnode(net_crossline_detect_t *rule, TiXmlNode *node, const char *key);
/** Reads one "intrusionDetectItem". */
NETPUBLIC_API int get_intrusion_from_xmlnode(net_intrusion_detect_t *rule, TiXmlNode *node, const char *key);
/** Reads one "loiteringDetectItem". */
NETPUBLIC_API int get_loitering_from_xmlnode(net_loitering_detect_t *rule, TiXmlNode *node, const char *key);
/** Reads one "legacyDetectItem". */
NETPUBLIC_API int get_legacy_from_xmlnode(net_legacy_detect_t *rule, TiXmlNode *node, const char *key);
/** Reads one "lossDetectItem". */
NETPUBLIC_API int get_loss_from_xmlnode(net_loss_detect_t *rule, TiXmlNode *node, const char *key);
/** Reads "pointList", which replaces the polygon; points behind the eighth are ignored. */
NETPUBLIC_API int get_smart_ai_point_list_from_xmlnode(net_smart_ai_points_t *points, TiXmlNode *node, const char *key);
/** Reads "x" and "y" of one "point". */
NETPUBLIC_API int get_smart_ai_point_from_xmlnode(net_smart_ai_point_t *point, TiXmlNode *node, const char *key);
/** Reads a direction's word; an unknown one is 0. */
NETPUBLIC_API int get_direction_from_xmlnode(NET_CROSSLINE_DETECT_DIRECTION_E *direction, TiXmlNode *node,
                                             const char *key);
/** Reads an operation's word; an unknown one is 0. */
NETPUBLIC_API int get_op_from_xmlnode(NET_SMAER_AI_OP_E *op, TiXmlNode *node, const char *key);
/** Appends "pointList". */
NETPUBLIC_API int net_smart_ai_points_s2x(net_smart_ai_points_t *points, TiXmlElement *parent);
/** Appends "direction". */
NETPUBLIC_API int net_smart_ai_direction_s2x(NET_CROSSLINE_DETECT_DIRECTION_E direction, TiXmlElement *parent);
/** Appends "op". */
NETPUBLIC_API int net_smart_ai_op_s2x(NET_SMAER_AI_OP_E op, TiXmlElement *parent);

/** @} */
/** @name AI settings
 * @{ */

/** Bits of object masks: the alarm-type codes as bit positions. */
enum NET_AI_OBJECT_E {
    NET_AI_OBJECT_PEOPLE = 0x40000,
    NET_AI_OBJECT_VEHICLE = 0x80000,
    NET_AI_OBJECT_FACE = 0x100000,
    NET_AI_OBJECT_OTHER = 0x200000,
    NET_AI_OBJECT_DOG_CAT = 0x400000,
    NET_AI_OBJECT_PACKAGE = 0x8000000,
};

/** "AiCfg". */
struct net_ai_cfg_t {
    int channelId;                      /**< Up to 63. */
    int smartTrack;                     /**< Any number. */
    int detectType;                     /**< Mask of NET_AI_OBJECT_E; the "other" bit is read, never written. */
    int smartTrackMode;                 /**< Any number. */
    int smartTrackModeAbility;          /**< Written when not negative. */
    int smartTrackType;                 /**< Mask of NET_AI_OBJECT_E. */
    int smartTrackPt;                   /**< Any number. */
    int delayValid;                     /**< 1 once a delay was parsed; else the delays are not written. */
    int smartTrackObjectStopDelay;      /**< Any number. */
    int smartTrackObjectDisappearDelay; /**< Any number. */
    int reserved;                       /**< The host's; neither read nor written. */
    int cryDetectLevel;                 /**< Any number. */
    int cryDetectAbility;               /**< Written unless 0. */
};

/** "AiDetectCfg", the detection area of one object type. */
struct net_ai_area_detect_t {
    int chn;  /**< 0 to 63. */
    int type; /**< One bit of NET_AI_OBJECT_E. */
    /** @{ */
    /** Any number. */
    int sensitivity;
    int stayTime;
    float minTargetHeight;
    float minTargetWidth;
    float maxTargetHeight;
    float maxTargetWidth;
    /** @} */
    int width;  /**< Columns, 1 to 155. */
    int height; /**< Rows, 1 to 100. */
    /** Column by column: cells[column][row]. */
    unsigned char cells[NET_GRID_COLUMNS][NET_GRID_ROWS];
};

/** "trackLimit", the limits of a pan-tilt track. */
struct net_ai_track_limit_t {
    int channelId;           /**< Video channel; no range is checked here. */
    int leftLimit;           /**< Any number. */
    int rightLimit;          /**< Any number. */
    char leftImageName[32];  /**< Terminated. */
    char rightImageName[32]; /**< Terminated. */
    int reserved[2];         /**< Not interpreted here. */
};

/** "trackSchedule". */
struct net_ai_track_task_t {
    int channelId;       /**< Video channel; no range is checked here. */
    char timeTable[172]; /**< Terminated; carried as it is. */
};

static_assert(sizeof(net_ai_cfg_t) == 52, "net_ai_cfg_t");
static_assert(sizeof(net_ai_area_detect_t) == 15540, "net_ai_area_detect_t");
static_assert(sizeof(net_ai_track_limit_t) == 84, "net_ai_track_limit_t");
static_assert(sizeof(net_ai_track_task_t) == 176, "net_ai_track_task_t");

/** Parses a net_ai_cfg_t. @return 0 or -1 */
NETPUBLIC_API int nets_param_ai_cfg_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "AiCfg". @return 0 or -1 */
NETPUBLIC_API int nets_param_ai_cfg_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses a net_ai_area_detect_t. The cells are required, a size only if the payload has none. @return 0 or -1 */
NETPUBLIC_API int net_ai_area_detect_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Writes "AiDetectCfg", without cells when the grid cannot hold their number.
 * @return 0, or -1 also when `type` is not exactly one of NET_AI_OBJECT_E
 */
NETPUBLIC_API int net_ai_area_detect_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses a net_ai_track_limit_t. @return 0 or -1 */
NETPUBLIC_API int net_param_ai_track_limit_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "trackLimit". @return 0 or -1 */
NETPUBLIC_API int net_param_ai_track_limit_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses a net_ai_track_task_t. @return 0 or -1 */
NETPUBLIC_API int net_param_ai_track_task_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "trackSchedule". @return 0 or -1 */
NETPUBLIC_API int net_param_ai_track_task_s2x(net_param_t *param, TiXmlElement *parent);

/** @} */
/** @name Floodlights
 * Parsers only.
 * @{ */

/** A command that switches a light. */
struct net_floodlight_status_t {
    int channel;  /**< 0 to 63; the initialiser copies the request's. */
    int status;   /**< Any number. */
    int duration; /**< 0 and above. */
};

/** The state of one light. */
struct net_floodlight_state_t {
    int channel;  /**< 0 and above. */
    int status;   /**< Any number. */
    int reserved; /**< Not filled. */
};

/** The report of the lights' states. */
struct net_floodlight_status_report_t {
    net_floodlight_state_t state[2]; /**< The first and the last "FloodlightStatus". */
};

/** A daily period; no ranges. */
struct net_floodlight_period_t {
    /** @{ */
    /** Any number. */
    int startHour;
    int startMin;
    int endHour;
    int endMin;
    /** @} */
};

/** Between which light-sensor values it is day or night; no ranges. */
struct net_light_sens_threshold_t {
    int min; /**< Smallest value. */
    int max; /**< Largest value. */
    /** @{ */
    /** Any number. */
    int lightCur;
    int darkCur;
    int lightDef;
    int darkDef;
    /** @} */
};

/** One scheduled switch. */
struct net_floodlight_schedule_item_t {
    tag_net_time_v20_t time; /**< A moment; no range is set beyond its own. */
    int enable;              /**< Whether it is on; any number. */
    int timeStamp;           /**< Any number. */
    int action;              /**< Any number. */
    int daymap;              /**< Any number. */
};

/** "FloodlightScheduleList". */
struct net_floodlight_schedule_t {
    int num;                                 /**< Items held, 0 to 64. */
    int maxNum;                              /**< Most entries the device takes; any number. */
    net_floodlight_schedule_item_t item[64]; /**< Further ones are ignored. */
};

/** "nightLongViewMultiBrightness". */
struct net_night_multi_brightness_t {
    int enable;                      /**< Whether it is on; any number. */
    net_int_value_t alarmBrightness; /**< Brightness while an alarm lasts. */
    net_int_value_t alarmDelay;      /**< How long the light stays on. */
};

/** What a floodlight does and when. */
struct net_floodlight_task_t {
    int channel;                      /**< 0 to 63. */
    int alarmMode;                    /**< From "enable" or "alarmMode". */
    int preview_auto;                 /**< Any number. */
    int duration;                     /**< Of the light after an alarm. */
    int brightness_min;               /**< Any number. */
    int brightness_max;               /**< Any number. */
    int brightness_cur;               /**< Any number. */
    net_floodlight_period_t schedule; /**< A period of the day. */
    int auto_bright;                  /**< 2 when the message does not carry it. */
    int detectType;                   /**< Mask of NET_AI_OBJECT_E; -1 when the message does not carry it. */
    int lastAlarmMode;                /**< -1 when the message does not carry it. */
    net_light_sens_threshold_t lightSensThreshold;             /**< What counts as dark. */
    net_floodlight_schedule_t FloodlightScheduleList;          /**< The times the light is switched. */
    net_night_multi_brightness_t nightLongViewMultiBrightness; /**< Brightness at night. */
    net_floodlight_period_t lightAlarmSchedule;                /**< A period of the day. */
    int reserved[4];                                           /**< Not interpreted here. */
};

static_assert(sizeof(net_floodlight_status_t) == 12, "net_floodlight_status_t");
static_assert(sizeof(net_floodlight_status_report_t) == 24, "net_floodlight_status_report_t");
static_assert(sizeof(net_floodlight_schedule_t) == 2568, "net_floodlight_schedule_t");
static_assert(sizeof(net_floodlight_task_t) == 2716, "net_floodlight_task_t");

/** Parses a net_floodlight_status_t. @return 0 or -1 */
NETPUBLIC_API int nets_param_floodlight_status_x2s(net_param_t *param, TiXmlNode *node);
/** Parses "FloodlightStatus" children into a net_floodlight_status_report_t. @return 0 or -1 */
NETPUBLIC_API int nets_param_floodlight_status_report_x2s(net_param_t *param, TiXmlNode *node);
/** Parses a net_floodlight_task_t; the defaults are stored first. @return 0 or -1 */
NETPUBLIC_API int nets_param_floodlight_task_x2s(net_param_t *param, TiXmlNode *node);

/** Reads "schedule" or "lightAlarmSchedule". */
NETPUBLIC_API int get_schedule_val_from_xmlnode(net_floodlight_period_t *period, TiXmlNode *node, const char *key);
/** Reads "lightSensThreshold". */
NETPUBLIC_API int get_lightsens_threshold_from_xmlnode(net_light_sens_threshold_t *threshold, TiXmlNode *node,
                                                       const char *key);
/** Reads "FloodlightScheduleList", which replaces the items. */
NETPUBLIC_API int get_floodlight_schedule_from_xmlnode(net_floodlight_schedule_t *schedule, TiXmlNode *node,
                                                       const char *key);
/** Reads one "item" of the schedule. */
NETPUBLIC_API int get_floodlight_schedule_item_from_xmlnode(net_floodlight_schedule_item_t *item, TiXmlNode *node,
                                                            const char *key);
/** Reads "nightLongViewMultiBrightness". */
NETPUBLIC_API int get_night_multi_brightness_from_xmlnode(net_night_multi_brightness_t *brightness, TiXmlNode *node,
                                                          const char *key);

/** @} */
/** @name Scenes, linkage and radio alarms
 * Payloads that the library allocates for the host and does not read or write.
 * @{ */

/** The active scene. */
struct net_scene_mode_cfg_t {
    int reserved[2]; /**< Not interpreted here. */
};

/** The scenes' ids. */
struct net_scene_list_id_t {
    int reserved[6]; /**< Not interpreted here. */
};

/** One scene. */
struct net_scene_t {
    int reserved[116]; /**< Not interpreted here. */
};

/** The linkage rules. */
struct net_linkage_list_t {
    int reserved[1626]; /**< Not interpreted here. */
};

/** A linkage rule to add. */
struct net_linkage_add_t {
    int reserved[1041]; /**< Not interpreted here. */
};

/** A linkage rule to delete. */
struct net_linkage_del_t {
    int reserved[17]; /**< Not interpreted here. */
};

/** A linkage rule to change. */
struct net_linkage_update_t {
    int reserved[1041]; /**< Not interpreted here. */
};

/** A radio alarm device. */
struct net_rf_t {
    int rfId;          /**< The request's radio device. */
    int reserved[241]; /**< Not interpreted here. */
};

static_assert(sizeof(net_scene_mode_cfg_t) == 8, "net_scene_mode_cfg_t");
static_assert(sizeof(net_scene_list_id_t) == 24, "net_scene_list_id_t");
static_assert(sizeof(net_scene_t) == 464, "net_scene_t");
static_assert(sizeof(net_linkage_list_t) == 6504, "net_linkage_list_t");
static_assert(sizeof(net_linkage_add_t) == 4164, "net_linkage_add_t");
static_assert(sizeof(net_linkage_del_t) == 68, "net_linkage_del_t");
static_assert(sizeof(net_linkage_update_t) == 4164, "net_linkage_update_t");
static_assert(sizeof(net_rf_t) == 968, "net_rf_t");

/** @} */

#endif
