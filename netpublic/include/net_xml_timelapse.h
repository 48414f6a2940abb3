/**
 * @file net_xml_timelapse.h
 * Time-lapse recording, which turns a long period into a short film (mp4) or a series of pictures
 * (jpeg): the configuration of a task, the calendar of days that hold material, the tasks and their
 * states, the file search, downloads, deletion, and the cover picture. A task is named by a text `id`,
 * a device by a text `uid`, so that one hub can hold the material of several cameras.
 *
 * Times are elements with the children "year" to "second". Task types and stream types are whole words,
 * case aside: an unknown task type is logged and read as jpeg, an unknown stream type is logged and read
 * as main. An unknown task state is refused. The writers log a value without a word and fail. Items
 * beyond the capacity of their list are logged and skipped. The parsers and writers do not compare
 * `dataSize` and leave `inited` alone: the host hands over the payload that is named. Writers append one
 * element with `version` "1.1" to the parent.
 * What all message functions share stands in net_types.h.
 */
#ifndef NET_XML_TIMELAPSE_H
#define NET_XML_TIMELAPSE_H

#include <stddef.h>

#include "net_types.h"

class TiXmlElement;
class TiXmlNode;

/** The result of a task: the values of the `taskType` fields. */
enum NET_TIMELAPSE_TYPE_E {
    NET_TIMELAPSE_MP4 = 0,
    NET_TIMELAPSE_JPEG = 1,
};

/** What a task is doing: the values of the `taskState` fields, "IDLE", "RUNNING" and "DELETING". */
enum NET_TIMELAPSE_STATE_E {
    NET_TIMELAPSE_IDLE = 0,
    NET_TIMELAPSE_RUNNING = 1,
    NET_TIMELAPSE_DELETING = 2,
};

/** A period in which a task records. */
struct net_timelapse_duration_t {
    tag_net_time_v20_t startTime; /**< Start of the span. */
    tag_net_time_v20_t endTime;   /**< End of the span. */
    int valid;                    /**< Whether the span counts; any number. */
};

/** The configuration of a task. */
struct net_timelapse_cfg_item_t {
    int enable;                           /**< Whether it is on; any number. */
    char id[32];                          /**< Terminated. */
    char properties[128];                 /**< Terminated. */
    int saveLocation;                     /**< Any number. */
    int taskType;                         /**< A NET_TIMELAPSE_TYPE_E code. */
    int neverEnd;                         /**< Any number. */
    int streamType;                       /**< 0 main, 1 sub, 2 mobile, 4 external. */
    int interval;                         /**< Any number. */
    int frameRate;                        /**< Frames per second. */
    int buseThumbnail;                    /**< Any number. */
    tag_net_time_v20_t startTime;         /**< Start of the span. */
    tag_net_time_v20_t endTime;           /**< End of the span. */
    net_timelapse_duration_t duration[4]; /**< The spans; further ones are logged and ignored. */
    int durationCount;                    /**< Durations held, 0 to 4. */
};

/** The configuration of a channel's time-lapse recording: message 7000. */
struct net_timelapse_cfg_t {
    int channelId;                    /**< Video channel; no range is checked here. */
    int overwrite;                    /**< Any number. */
    net_timelapse_cfg_item_t item[1]; /**< The message carries a list, of which one entry is accepted. */
    int maxFileNum;                   /**< Written only. */
};

/** The days of a year that hold material. */
struct net_timelapse_date_item_t {
    int year;            /**< Calendar year. */
    char dateTable[373]; /**< Marks the days; carried as it stands. Terminated. */
    char reserved[3];    /**< Not interpreted here. */
};

/** The calendar of a task. */
struct net_timelapse_date_t {
    int channelId;                      /**< Video channel; no range is checked here. */
    char uid[32];                       /**< Terminated. */
    char id[32];                        /**< Terminated. */
    net_timelapse_date_item_t item[10]; /**< One per year; further ones are logged and ignored. */
    int itemCount;                      /**< Items held, 0 to 10. */
};

/** A task and its state. */
struct net_timelapse_task_item_t {
    char id[32];          /**< Terminated. */
    int taskType;         /**< A NET_TIMELAPSE_TYPE_E code. */
    char properties[128]; /**< Terminated. */
    int taskState;        /**< A NET_TIMELAPSE_STATE_E code. */
};

/** The tasks of a device. */
struct net_timelapse_task_t {
    int channelId;                       /**< Video channel; no range is checked here. */
    char uid[32];                        /**< Terminated. */
    net_timelapse_task_item_t item[128]; /**< The tasks; further ones are logged and ignored. */
    int itemCount;                       /**< Items held, 0 to 128. */
};

/** What a file search item holds: the bits of net_timelapse_file_item_t::flags. */
enum NET_TIMELAPSE_FILE_E {
    NET_TIMELAPSE_FILE_ORIGINAL = 0x1,
    NET_TIMELAPSE_FILE_THUMBNAIL = 0x2,
};

/** The film or full picture of a file search item. */
struct net_timelapse_original_t {
    char id[256];            /**< Terminated. */
    char fileName[256];      /**< Terminated. */
    int resoWidth;           /**< Pixels. Written as "resowidth", read as "resoWidth", which takes both. */
    int resoHight;           /**< Pixels. Spelled so. */
    unsigned long long size; /**< Bytes. */
    int duration;            /**< From here on of films only, save `encrypted`. */
    int frameRate;           /**< Frames per second. */
    /** @{ */
    /** Any number. */
    int encodeType;
    int needMuxMp4;
    int encrypted;
    int generating;
    /** @} */
    tag_net_time_v20_t startTime; /**< Start of the span. */
    tag_net_time_v20_t endTime;   /**< End of the span. */
};

/** The small picture of a file search item. */
struct net_timelapse_thumbnail_t {
    char id[256];            /**< Terminated. */
    char fileName[256];      /**< Terminated. */
    int resoWidth;           /**< Pixels. */
    int resoHight;           /**< Pixels. */
    unsigned long long size; /**< Bytes. */
    int encrypted;           /**< Any number. */
    int reserved;            /**< Not interpreted here. */
};

/** A file that was found. */
struct net_timelapse_file_item_t {
    int flags;    /**< NET_TIMELAPSE_FILE_E bits. Of films the original is written whatever they say. */
    int reserved; /**< Not interpreted here. */
    net_timelapse_original_t original;   /**< The film, or the full picture. */
    net_timelapse_thumbnail_t thumbnail; /**< The small picture. */
};

/** The file search and its result. */
struct net_timelapse_file_t {
    int channelId;                       /**< Video channel; no range is checked here. */
    char uid[32];                        /**< Terminated. */
    char id[32];                         /**< Terminated. */
    int handle;                          /**< The host's handle; any number. */
    int fromWhere;                       /**< Any number. */
    tag_net_time_v20_t startTime;        /**< Start of the span. */
    tag_net_time_v20_t endTime;          /**< End of the span. */
    int taskType;                        /**< A NET_TIMELAPSE_TYPE_E code. */
    int totalNum;                        /**< Files of the whole search, which may take several results. */
    int finished;                        /**< Any number. */
    net_timelapse_file_item_t item[128]; /**< The files found; further ones are logged and ignored. */
    int itemCount;                       /**< Items held here, 0 to 128. */
    int reserved;                        /**< Not interpreted here. */
};

/** A download. */
struct net_timelapse_download_t {
    char id[256];       /**< Terminated. */
    int taskType;       /**< A NET_TIMELAPSE_TYPE_E code. */
    char position[256]; /**< Terminated. */
};

/** The deletion of a task with its files. */
struct net_timelapse_task_delete_t {
    char uid[32]; /**< Terminated. */
    char id[32];  /**< Terminated. */
};

/** A file to delete. */
struct net_timelapse_file_delete_item_t {
    char id[256]; /**< Terminated. */
};

/** The deletion of files. */
struct net_timelapse_file_delete_t {
    int taskType;                               /**< A NET_TIMELAPSE_TYPE_E code. */
    net_timelapse_file_delete_item_t item[128]; /**< The files to delete; further ones are logged and ignored. */
    int itemCount;                              /**< Items held, 0 to 128. */
};

/** The cover picture of a file. */
struct net_timelapse_file_cover_t {
    char id[256]; /**< Terminated. */
};

static_assert(sizeof(net_timelapse_duration_t) == 52, "net_timelapse_duration_t");
static_assert(sizeof(net_timelapse_cfg_item_t) == 452, "net_timelapse_cfg_item_t");
static_assert(sizeof(net_timelapse_cfg_t) == 464, "net_timelapse_cfg_t");
static_assert(sizeof(net_timelapse_date_item_t) == 380, "net_timelapse_date_item_t");
static_assert(sizeof(net_timelapse_date_t) == 3872, "net_timelapse_date_t");
static_assert(sizeof(net_timelapse_task_item_t) == 168, "net_timelapse_task_item_t");
static_assert(sizeof(net_timelapse_task_t) == 21544, "net_timelapse_task_t");
static_assert(sizeof(net_timelapse_original_t) == 600, "net_timelapse_original_t");
static_assert(sizeof(net_timelapse_thumbnail_t) == 536, "net_timelapse_thumbnail_t");
static_assert(sizeof(net_timelapse_file_item_t) == 1144, "net_timelapse_file_item_t");
static_assert(offsetof(net_timelapse_file_t, item) == 136, "item");
static_assert(sizeof(net_timelapse_file_t) == 146576, "net_timelapse_file_t");
static_assert(sizeof(net_timelapse_download_t) == 516, "net_timelapse_download_t");
static_assert(sizeof(net_timelapse_task_delete_t) == 64, "net_timelapse_task_delete_t");
static_assert(sizeof(net_timelapse_file_delete_item_t) == 256, "net_timelapse_file_delete_item_t");
static_assert(sizeof(net_timelapse_file_delete_t) == 32776, "net_timelapse_file_delete_t");
static_assert(sizeof(net_timelapse_file_cover_t) == 256, "net_timelapse_file_cover_t");

/** Parses a configuration. @param param payload net_timelapse_cfg_t @param node the body */
NETPUBLIC_API int net_timelapse_cfg_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "timelapseCfg". @param param payload net_timelapse_cfg_t @param parent gets the element */
NETPUBLIC_API int net_timelapse_cfg_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses a calendar. @param param payload net_timelapse_date_t @param node the body */
NETPUBLIC_API int net_timelapse_date_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "timelapseDateTbl". @param param payload net_timelapse_date_t @param parent gets the element */
NETPUBLIC_API int net_timelapse_date_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses a list of tasks. @param param payload net_timelapse_task_t @param node the body */
NETPUBLIC_API int net_timelapse_task_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "timelapseTasks". @param param payload net_timelapse_task_t @param parent gets the element */
NETPUBLIC_API int net_timelapse_task_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses a file search or its result. @param param payload net_timelapse_file_t @param node the body */
NETPUBLIC_API int net_timelapse_file_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "timelapseFileSearch" with the first 40 items at most. @param param payload net_timelapse_file_t @param
 * parent gets the element */
NETPUBLIC_API int net_timelapse_file_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses a download. @param param payload net_timelapse_download_t @param node the body */
NETPUBLIC_API int net_timelapse_download_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "timelapseDownload". @param param payload net_timelapse_download_t @param parent gets the element */
NETPUBLIC_API int net_timelapse_download_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses the deletion of a task. @param param payload net_timelapse_task_delete_t @param node the body */
NETPUBLIC_API int net_timelapse_task_delete_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "timelapseTaskDel". @param param payload net_timelapse_task_delete_t @param parent gets the element */
NETPUBLIC_API int net_timelapse_task_delete_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses the deletion of files. @param param payload net_timelapse_file_delete_t @param node the body */
NETPUBLIC_API int net_timelapse_file_delete_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "timelapseFileDel". @param param payload net_timelapse_file_delete_t @param parent gets the element */
NETPUBLIC_API int net_timelapse_file_delete_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses the request for a cover. @param param payload net_timelapse_file_cover_t @param node the body */
NETPUBLIC_API int net_timelapse_file_cover_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "timelapseCover". @param param payload net_timelapse_file_cover_t @param parent gets the element */
NETPUBLIC_API int net_timelapse_file_cover_s2x(net_param_t *param, TiXmlElement *parent);

#endif
