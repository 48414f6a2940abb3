/**
 * @file net_xml_stream.h
 * Live view and encoding: the request for a live stream, the encoder settings of a channel's three
 * streams, the table of what a device can encode, and the header of a recorded file that goes ahead of
 * the replayed data.
 *
 * Every message parser here refuses an envelope whose `dataSize` is not the size of its payload. A
 * refused child ends the parse; what was stored before it stays.
 * What all message functions share stands in net_types.h.
 */
#ifndef NET_XML_STREAM_H
#define NET_XML_STREAM_H

#include <stddef.h>

#include "net_types.h"

class TiXmlElement;
class TiXmlNode;

/** A request for a live stream. */
struct net_preview_v20_t {
    int channelId;            /**< 0 and above. */
    int handle;               /**< The host's handle; any number. */
    STREAM_TYPE_E streamType; /**< An unknown word, "snapStream" among them, reads as the main stream. */
    int preRec;               /**< Any number. */
    int resolution;           /**< Any number. */
    int fps;                  /**< Any number. */
};

/** The encoder settings of one stream. */
struct net_compression_info_v20_t {
    int audio;                 /**< 1 with sound, else 0. */
    char resolutionName[128];  /**< Written only. */
    int width;                 /**< Pixels, 0 and above. */
    int height;                /**< Pixels, 0 and above. */
    int encoderType;           /**< 1 constant bit rate, anything else variable; written only. */
    int reserved0;             /**< Not interpreted here. */
    int frame;                 /**< Frames per second, 0 to 30. */
    int reserved1;             /**< Not interpreted here. */
    int bitRate;               /**< 0 and above. */
    int videoEncType;          /**< 0 and above; chosen by the picture's size when the message does not tell. */
    int videoEncTypeDefaulted; /**< Set to 1 when the parser chose `videoEncType`; never reset by it. */
    int encoderProfile;        /**< 0 default, 1 baseLine, 2 high, 3 main. */
    int gopMin;                /**< 0 and above. */
    int gopMax;                /**< 0 and above. */
    int gopCur;                /**< `gopMin` to `gopMax`. */
};

/** The encoder settings of a channel: message 4701. */
struct net_enc_cfg_v20_t {
    int channelId;                          /**< 0 to 63. */
    int isNoTranslateFrame;                 /**< 0 or 1. */
    net_compression_info_v20_t mainStream;  /**< Settings of the main stream. */
    net_compression_info_v20_t subStream;   /**< Settings of the sub stream. */
    net_compression_info_v20_t thirdStream; /**< Settings of the third stream. */
    int reserved;                           /**< Not interpreted here. */
};

/** A picture size. */
struct net_resolution_info_v20_t {
    char name[128]; /**< The messages of this header neither read nor write it. */
    int width;      /**< Pixels, 1 and above. */
    int height;     /**< Pixels, 1 and above. */
};

/** What one stream can encode at one picture size. */
struct net_encode_table_v20_t {
    int videoEncType;                     /**< Any number. */
    net_resolution_info_v20_t resolution; /**< The picture size. */
    int defaultFramerate;                 /**< 0 and above. */
    int defaultBitrate;                   /**< 0 and above. */
    int framerateTable[25];               /**< Frame rates to choose from; 0 behind the last. */
    int bitrateTable[16];                 /**< Bit rates to choose from; 0 behind the last. */
    int defaultGop;                       /**< 0 and above. */
};

/** What a set of channels can encode. */
struct net_stream_info_v20_t {
    unsigned long long channelBits;    /**< The channels: one bit each. */
    net_encode_table_v20_t mainStream; /**< What the main stream can be. */
    net_encode_table_v20_t subStream;  /**< What the sub stream can be. */
};

/** The stream information message. */
struct net_stream_info_list_v20_t {
    net_stream_info_v20_t entries[16]; /**< Without a count; those behind the last one read stay as they are. */
    int reserved[7680];                /**< Not interpreted here. */
};

/** The encoding list: message 2801. The number of entries is the envelope's `reserved1`. */
struct net_enc_list_v20_t {
    net_stream_info_v20_t entries[16]; /**< The envelope's `reserved1` says how many. */
};

/**
 * A date and time in a recorded file: the low 8 bits of each number, of the year too (2023 is 0xE7). What the message
 * leaves out of one is 0.
 */
struct tag_net_file_time_v20_t {
    unsigned char year;   /**< The low 8 bits of the calendar year: 2023 is 0xE7. */
    unsigned char month;  /**< 1 to 12. */
    unsigned char day;    /**< 1 to 31. */
    unsigned char hour;   /**< 0 to 23. */
    unsigned char minute; /**< 0 to 59. */
    unsigned char second; /**< 0 to 59. */
};

/** The header of a recorded file, as it stands in front of the replayed data; numbers are little-endian. */
struct tag_net_file_header_v20_t {
    char ver[4];                       /**< The first four characters of the version, not terminated. */
    unsigned char reserved[4];         /**< Not interpreted here. */
    unsigned int width;                /**< Pixels. */
    unsigned int height;               /**< Pixels. */
    unsigned char streamType;          /**< A STREAM_TYPE_E code. */
    unsigned char frameRate;           /**< Frames per second, the low 8 bits. */
    tag_net_file_time_v20_t beginTime; /**< Start of the recording. */
    tag_net_file_time_v20_t endTime;   /**< End of the recording. */
    unsigned char padding[2];          /**< Not interpreted here. */
};

/** The header of replayed data: message 2702. */
struct net_replay_header_v20_t {
    tag_net_file_header_v20_t streamHeader; /**< The header of the recorded file. */
    int frm_tm_sec;                         /**< Any number. */
    int play_tm_ms;                         /**< Any number. */
    int seq;                                /**< Sequence number; any. */
};

static_assert(sizeof(net_preview_v20_t) == 24, "net_preview_v20_t");
static_assert(sizeof(net_compression_info_v20_t) == 184, "net_compression_info_v20_t");
static_assert(sizeof(net_enc_cfg_v20_t) == 564, "net_enc_cfg_v20_t");
static_assert(sizeof(net_resolution_info_v20_t) == 136, "net_resolution_info_v20_t");
static_assert(sizeof(net_encode_table_v20_t) == 316, "net_encode_table_v20_t");
static_assert(sizeof(net_stream_info_v20_t) == 640, "net_stream_info_v20_t");
static_assert(sizeof(net_stream_info_list_v20_t) == 40960, "net_stream_info_list_v20_t");
static_assert(sizeof(net_enc_list_v20_t) == 10240, "net_enc_list_v20_t");
static_assert(sizeof(tag_net_file_time_v20_t) == 6, "tag_net_file_time_v20_t");
static_assert(sizeof(tag_net_file_header_v20_t) == 32, "tag_net_file_header_v20_t");
static_assert(offsetof(tag_net_file_header_v20_t, ver) == 0, "ver");
static_assert(offsetof(tag_net_file_header_v20_t, width) == 8, "width");
static_assert(offsetof(tag_net_file_header_v20_t, height) == 12, "height");
static_assert(offsetof(tag_net_file_header_v20_t, streamType) == 16, "streamType");
static_assert(offsetof(tag_net_file_header_v20_t, frameRate) == 17, "frameRate");
static_assert(offsetof(tag_net_file_header_v20_t, beginTime) == 18, "beginTime");
static_assert(offsetof(tag_net_file_header_v20_t, endTime) == 24, "endTime");
static_assert(offsetof(tag_net_file_header_v20_t, padding) == 30, "padding");
static_assert(sizeof(net_replay_header_v20_t) == 44, "net_replay_header_v20_t");

/** @name Messages
 * @{ */

/**
 * Parses a live-view request. The stream type is a whole word, case aside; unknown ones read as main.
 * @param param payload net_preview_v20_t, set up by the host; `inited` becomes 2
 * @param node the body
 */
NETPUBLIC_API int net_preview_x2s(net_param_t *param, TiXmlNode *node);

/** Parses encoder settings. @param param payload net_enc_cfg_v20_t; `inited` becomes 2 @param node the body */
NETPUBLIC_API int net_enc_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "Compression". @param param payload net_enc_cfg_v20_t, size checked @param parent gets the element */
NETPUBLIC_API int net_enc_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Parses the "StreamInfo" children of the body, at most 16; further ones are ignored. The payload is changed
 * only when all of them could be read.
 * @param param payload net_stream_info_list_v20_t, set up by the host; `inited` stays as it is
 * @param node the body
 */
NETPUBLIC_API int nets_param_stream_info_x2s(net_param_t *param, TiXmlNode *node);
/** Writes nothing: a device does not send this message. @return 0 */
NETPUBLIC_API int nets_param_stream_info_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Parses the "StreamInfo" children of the body, at most 16; further ones are logged and skipped.
 * @param param payload net_enc_list_v20_t; `reserved1` becomes the number of entries, `inited` becomes
 *        2
 * @param node the body
 */
NETPUBLIC_API int xml_enc_info_list_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Appends "StreamInfoList" with as many entries as fit into a reply; a child "more" = 1 says that some are
 * left. Call again until there is none.
 * @param entries, count the whole list
 * @param parent gets the element
 * @param cursor the first entry to write; becomes the first one that was not written. It stays where
 *        it was when not even that entry fits, so a budget must have room for one
 * @param budget the most bytes that the root without children and the entries may take, printed without
 *        indentation but with line breaks, 1 and above; leave room for the closing tag and "more"
 * @return 0, or -1 for a null argument, a budget below 1, a negative cursor or one beyond @p count
 */
NETPUBLIC_API int xml_enc_info_list_s2x(net_stream_info_v20_t *entries, int count, TiXmlElement *parent, int *cursor,
                                        int budget);

/** Parses the header of replayed data. @param param payload net_replay_header_v20_t @param node the body */
NETPUBLIC_API int net_param_replay_header_x2s(net_param_t *param, TiXmlNode *node);

/** @} */
/** @name Component readers
 * A null record or node is -1, and so is a name that does not answer to @p key, unless that is null.
 * @{ */

/**
 * Reads the settings of one stream. Without "videoEncType" the codec is 1 for 6291456 pixels and more, else
 * 0, and `videoEncTypeDefaulted` is set.
 */
NETPUBLIC_API int get_compression_info_from_xmlnode(net_compression_info_v20_t *info, TiXmlNode *node, const char *key);
/** Reads "width" and "height", 1 and above each; the name of the resolution stays as it is. */
NETPUBLIC_API int get_resolution_from_xmlnode(net_resolution_info_v20_t *resolution, TiXmlNode *node, const char *key);
/**
 * Reads one encode table into the main or the sub stream's, as its "type" says. A table of another type, or
 * without one, is read and dropped. The record is changed only when all of the table could be read.
 */
NETPUBLIC_API int get_encodeTable_from_xmlnode(net_stream_info_v20_t *info, TiXmlNode *node, const char *key);
/** Reads "channelBits" and any number of "encodeTable". */
NETPUBLIC_API int get_streamInfo_from_xmlnode(net_stream_info_v20_t *info, TiXmlNode *node, const char *key);
/** Reads the header of a recorded file. An unknown stream type is refused; a date's missing children are 0. */
NETPUBLIC_API int get_file_header_from_xmlnode(tag_net_file_header_v20_t *header, TiXmlNode *node);

/** @} */

#endif
