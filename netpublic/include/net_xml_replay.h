/**
 * @file net_xml_replay.h
 * Finding and replaying recordings: which days of a month hold recordings, which files a period holds,
 * starting and steering the replay of several channels and periods, cover pictures, deleting files.
 *
 * Every message parser here refuses an envelope whose `dataSize` is not the size of its payload. A
 * refused child ends the parse; what was stored before it stays. A stream type is a whole word, case
 * aside, "mainStream" 0, "subStream" 1, "mobileStream" 2, "externStream" 4; any other word,
 * "snapStream" too, reads as 0.
 * What all message functions share stands in net_types.h.
 */
#ifndef NET_XML_REPLAY_H
#define NET_XML_REPLAY_H

#include <stddef.h>

#include "net_types.h"

class TiXmlElement;
class TiXmlNode;

/** What caused a recording: the bits of tag_net_file_info_v20_t::recordType. */
enum NET_RECORD_TYPE_E {
    NET_RECORD_MANUAL = 0x1,
    NET_RECORD_SCHED = 0x2,
    NET_RECORD_MD = 0x4,
    NET_RECORD_IO = 0x8,
    NET_RECORD_PEOPLE = 0x10,
    NET_RECORD_VEHICLE = 0x20,
    NET_RECORD_FACE = 0x40,
    NET_RECORD_PIR = 0x80,
    NET_RECORD_OTHER = 0x100,
    NET_RECORD_DOG_CAT = 0x200,
    NET_RECORD_VISITOR = 0x400,
    NET_RECORD_PACKAGE = 0x800,
    NET_RECORD_CROSSLINE = 0x1000, /**< Read only: it is never written back. */
    NET_RECORD_INTRUSION = 0x2000, /**< Its word contains "io", so it is read together with NET_RECORD_IO. */
    NET_RECORD_LOITERING = 0x4000,
    NET_RECORD_LEGACY = 0x8000,
    NET_RECORD_LOSS = 0x10000,
    NET_RECORD_CRY = 0x20000,
};

/** Which days of a month hold recordings of a channel. */
struct tag_net_rec_info_v20_t {
    int channelId;   /**< 0 and above; negative: no record. */
    int dayType[31]; /**< By day of the month - 1: 0 none, 1 normal, 2 alarm, 3 all. */
    char uid[32];    /**< Terminated. */
};

/** The search for days with recordings: message 5701. */
struct tag_net_recfile_schedule_v20_t {
    tag_net_time_v20_t startTime;      /**< Start of the span. */
    tag_net_time_v20_t endTime;        /**< End of the span. */
    tag_net_rec_info_v20_t records[4]; /**< The writer stops at the first one with a negative channel. */
};

/** A recorded file, and the search for one. */
struct tag_net_file_info_v20_t {
    int channelId;                     /**< 0 and above. */
    int streamType;                    /**< A STREAM_TYPE_E code. */
    int handle;                        /**< The host's handle; any number. */
    char name[32];                     /**< Terminated. */
    char Id[256];                      /**< Terminated. */
    tag_net_time_v20_t startTime;      /**< Start of the span. */
    tag_net_time_v20_t endTime;        /**< End of the span. */
    int recordType;                    /**< NET_RECORD_TYPE_E bits. */
    int typeExtension;                 /**< Any number. */
    unsigned int sizeL;                /**< Size in bytes, the low 32 bits. */
    unsigned int sizeH;                /**< Size in bytes, the high 32 bits. */
    int reserved0;                     /**< Not interpreted here. */
    int supportSub;                    /**< 0 or 1; always written as 1. */
    int fileType;                      /**< 0 h264, 1 mp4, 2 flv. */
    int containsAudio;                 /**< 0 or 1. */
    int playSpeed;                     /**< 0 to 32; set to 1 when a search starts. */
    int FileCount;                     /**< 0 and above. */
    int reserved1;                     /**< Not interpreted here. */
    unsigned long long logicChnBitmap; /**< One bit per logical channel. */
    char uid[32];                      /**< Terminated. */
};

/** A stretch of a day. */
struct net_replay_period_v20_t {
    unsigned char startHour;     /**< 0 to 23 as a rule, see get_hms_from_pts(). */
    unsigned char startMinute;   /**< 0 to 59. */
    unsigned char startSecond;   /**< 0 to 59. */
    unsigned char offsetOfStart; /**< The low 8 bits. */
    unsigned char endHour;       /**< 0 to 23 as a rule, see get_hms_from_pts(). */
    unsigned char endMinute;     /**< 0 to 59. */
    unsigned char endSecond;     /**< 0 to 59. */
    unsigned char offsetOfEnd;   /**< The low 8 bits. */
};

/** The stretches of a day that are replayed of one channel. */
struct net_replay_duration_v20_t {
    int channelId;                        /**< 0 and above. */
    int streamType;                       /**< A STREAM_TYPE_E code. */
    char uid[32];                         /**< Terminated. */
    int periodCount;                      /**< Periods held, 0 to 100. */
    int reserved;                         /**< Not interpreted here. */
    unsigned long long logicChnBitmap;    /**< One bit per logical channel. */
    net_replay_period_v20_t periods[100]; /**< Further ones are logged and ignored. */
};

/** What is replayed of a day, up to four channels. */
struct net_replay_duration_list_v20_t {
    int year;                               /**< 0 and above. */
    int month;                              /**< 1 to 12. */
    int day;                                /**< 1 to 31. */
    int durationCount;                      /**< Durations held, 0 to 4. */
    net_replay_duration_v20_t durations[4]; /**< Further ones are ignored. */
};

/** Starts a replay. */
struct net_new_replay_start_v20_t {
    int seq;                      /**< Sequence number; any. */
    int playSpeed;                /**< At most 32. */
    int streamType;               /**< A STREAM_TYPE_E code; reading it sets the four durations' as well. */
    tag_net_time_v20_t startTime; /**< Start of the span. */
    tag_net_time_v20_t endTime;   /**< End of the span. */
    int sOffset;                  /**< Any number. */
    int eOffset;                  /**< Any number. */
    int reserved;                 /**< Not interpreted here. */
    net_replay_duration_list_v20_t durationList; /**< The spans to play. */
};

/** Moves a replay of several channels to another time. */
struct net_new_replay_seek_v20_t {
    tag_net_time_v20_t seekTime;                 /**< The moment to play from. */
    int seq;                                     /**< Sequence number; any. */
    int reserved;                                /**< Not interpreted here. */
    net_replay_duration_list_v20_t durationList; /**< The spans to play. */
};

/** Moves the replay of one channel to another time. */
struct net_replay_seek_v20_t {
    int channelId;               /**< 0 and above. */
    tag_net_time_v20_t seekTime; /**< The moment to play from. */
    int seq;                     /**< Sequence number; any. */
};

/** A recorded file to delete. */
struct net_rec_del_item_t {
    char fileIdentity[256]; /**< Terminated; empty for an item that names no file. */
};

/** Deletes recorded files. */
struct net_rec_del_v20_t {
    int count;                   /**< Slots used, 0 to 40. */
    net_rec_del_item_t item[40]; /**< The files; further ones are ignored. */
};

/** Asks for cover pictures of a recording. */
struct net_cover_preview_v20_t {
    int channelId;                     /**< Video channel; no range is checked here. */
    int destination;                   /**< Any number. */
    unsigned long long logicChnBitmap; /**< One bit per logical channel. */
    int streamType;                    /**< A STREAM_TYPE_E code. */
    tag_net_time_v20_t startTime;      /**< Start of the span. */
    tag_net_time_v20_t endTime;        /**< End of the span. */
    int frameCount;                    /**< Numbers held, 0 to 40. */
    int frameNo[40];                   /**< Any numbers. */
    char uid[32];                      /**< Terminated. */
    int reserved[2];                   /**< Not interpreted here. */
};

static_assert(sizeof(tag_net_rec_info_v20_t) == 160, "tag_net_rec_info_v20_t");
static_assert(sizeof(tag_net_recfile_schedule_v20_t) == 688, "tag_net_recfile_schedule_v20_t");
static_assert(offsetof(tag_net_file_info_v20_t, logicChnBitmap) == 392, "logicChnBitmap");
static_assert(sizeof(tag_net_file_info_v20_t) == 432, "tag_net_file_info_v20_t");
static_assert(sizeof(net_replay_period_v20_t) == 8, "net_replay_period_v20_t");
static_assert(sizeof(net_replay_duration_v20_t) == 856, "net_replay_duration_v20_t");
static_assert(sizeof(net_replay_duration_list_v20_t) == 3440, "net_replay_duration_list_v20_t");
static_assert(sizeof(net_new_replay_start_v20_t) == 3512, "net_new_replay_start_v20_t");
static_assert(sizeof(net_new_replay_seek_v20_t) == 3472, "net_new_replay_seek_v20_t");
static_assert(sizeof(net_replay_seek_v20_t) == 32, "net_replay_seek_v20_t");
static_assert(sizeof(net_rec_del_item_t) == 256, "net_rec_del_item_t");
static_assert(sizeof(net_rec_del_v20_t) == 10244, "net_rec_del_v20_t");
static_assert(offsetof(net_cover_preview_v20_t, uid) == 232, "uid");
static_assert(sizeof(net_cover_preview_v20_t) == 272, "net_cover_preview_v20_t");

/** @name Messages
 * @{ */

/**
 * Parses a search for days with recordings, or its answer. The second record's channel is -1 unless the
 * message fills it; a fifth record and those behind it are skipped.
 * @param param payload tag_net_recfile_schedule_v20_t; `inited` becomes 2
 * @param node the body
 */
NETPUBLIC_API int net_day_rec_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Appends "DayRecords" with the records in front of the first negative channel.
 * @param param payload tag_net_recfile_schedule_v20_t, size checked
 * @param parent gets the element
 * @return 0, or -1 also for a day type above 3; days from the first negative type on are left out
 */
NETPUBLIC_API int net_day_rec_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Parses a file search. A body without children is success and changes nothing, `inited` included; else its
 * first child must be "FileInfo".
 * @param param payload tag_net_file_info_v20_t; `inited` becomes 2
 * @param node the body
 */
NETPUBLIC_API int net_file_info_list_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Appends "FileInfoList" with one "FileInfo".
 * @param param tag_net_file_info_v20_t, size checked
 * @param parent gets it
 */
NETPUBLIC_API int net_file_info_list_s2x(net_param_t *param, TiXmlElement *parent);
/**
 * The client's side: parses the answer to a file search, a "FileInfoList" as net_file_info_list_s2x() writes
 * it. Its "FileInfo" may hold whatever _get_file_info() reads.
 * @param param payload tag_net_file_info_v20_t, size checked; gets the first "FileInfo"
 * @param node the "FileInfoList"
 */
NETPUBLIC_API int netc_file_info_list_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "FileInfo" with all that _get_file_info() reads. @param param tag_net_file_info_v20_t, size checked @param
 * parent gets the element */
NETPUBLIC_API int net_file_file_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Parses a seek; the payload is cleared first.
 * @param param net_replay_seek_v20_t; `inited` becomes 2
 * @param node the body
 */
NETPUBLIC_API int net_replay_seek_x2s(net_param_t *param, TiXmlNode *node);

/**
 * Parses a deletion of files; the payload is cleared first. Each "item" takes a slot, items beyond 40 are
 * ignored.
 * @param param payload net_rec_del_v20_t; `inited` stays as it is
 * @param node the body
 */
NETPUBLIC_API int net_rec_del_x2s(net_param_t *param, TiXmlNode *node);

/**
 * Parses a request for cover pictures; numbers beyond 40 are ignored and `inited` stays.
 * @param param net_cover_preview_v20_t
 * @param node the body
 */
NETPUBLIC_API int net_cover_preview_x2s(net_param_t *param, TiXmlNode *node);

/**
 * Parses the start of a replay.
 * @param param payload net_new_replay_start_v20_t; `inited` stays
 * @param node the body
 */
NETPUBLIC_API int nets_param_new_replay_start_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Parses a seek; the payload is cleared first.
 * @param param net_new_replay_seek_v20_t; `inited` stays
 * @param node the body
 */
NETPUBLIC_API int nets_param_new_replay_seek_x2s(net_param_t *param, TiXmlNode *node);

/** @} */
/** @name Component readers
 * A null record or node is -1, and so is a name that does not answer to @p key, unless that is null.
 * @{ */

/**
 * Reads the "dayType" children, each with "index", 0 to 30, and "type", a whole word; both are required. A
 * child of another name is refused; after 31 children the rest is ignored.
 */
NETPUBLIC_API int get_day_type_list_from_xmlnode(tag_net_rec_info_v20_t *record, TiXmlNode *node);
/** Reads the children named "DayRecord", whole and case aside, into the four records; others are skipped. */
NETPUBLIC_API int get_day_record_list_from_xmlnode(tag_net_recfile_schedule_v20_t *schedule, TiXmlNode *node);
/** Reads a "FileInfo". In its "recordType", "none" beside any other word is refused. */
NETPUBLIC_API int _get_file_info(tag_net_file_info_v20_t *info, TiXmlNode *node, const char *key);
/** Splits seconds since midnight, the low 8 bits of each part. @return 0, or -1 for a null pointer */
NETPUBLIC_API int get_hms_from_pts(int pts, unsigned char *hour, unsigned char *minute, unsigned char *second);
/** Reads one period: "s" and "e" in seconds since midnight, "offsetOfStart", "offsetOfEnd". */
NETPUBLIC_API int get_duration_item_from_xmlnode(net_replay_period_v20_t *period, TiXmlNode *node, const char *key);
/** Reads the "i" children into the periods, counted from 0; each one beyond 100 is logged and skipped. */
NETPUBLIC_API int get_duration_times_from_xmlnode(net_replay_duration_v20_t *duration, TiXmlNode *node,
                                                  const char *key);
/** Reads one channel's duration. */
NETPUBLIC_API int get_duration_from_xmlnode(net_replay_duration_v20_t *duration, TiXmlNode *node, const char *key);
/**
 * Reads a day and its "duration" children, counted from 0; each one beyond 4 is logged and skipped. A child
 * named "d" is both the day and a duration.
 */
NETPUBLIC_API int get_duration_list_from_xmlnode(net_replay_duration_list_v20_t *list, TiXmlNode *node,
                                                 const char *key);

/** @} */

#endif
