/**
 * @file net_xml_snap.h
 * Still pictures: the request for a snapshot (plain, time-lapse or cropped), the settings of the crop,
 * a stored picture, and the switch of AI time-lapse snapshots.
 *
 * The parsers do not compare `dataSize` and leave `inited` alone: the host hands over the payload that
 * is named, prepared by the matching initialiser.
 * What all message functions share stands in net_types.h.
 */
#ifndef NET_XML_SNAP_H
#define NET_XML_SNAP_H

#include "net_types.h"

class TiXmlElement;
class TiXmlNode;

/** How a time-lapse snapshot is taken. */
struct net_snap_tlp_t {
    int specificTime; /**< Any number. */
    int tlpType;      /**< 1 for "IFrame", else 0. */
    int width;        /**< Pixels. */
    int height;       /**< Pixels. */
    int encType;      /**< Any number. */
    int utcTime;      /**< Seconds since the epoch; any number. */
    int iFrameOffset; /**< Any number. */
};

/** A request for a snapshot: message 5101. */
struct net_snap_v20_t {
    int channelId;               /**< 0 and above. */
    int logicChannel;            /**< 0 and above. */
    int reserved;                /**< Not interpreted here. */
    int time;                    /**< Any number. */
    int pictureSize;             /**< Any number. */
    char fileName[128];          /**< Terminated. */
    int fullFrame;               /**< Any number. */
    int utcTime;                 /**< Seconds since the epoch; any number. */
    int streamType;              /**< 0 main, 1 sub, 4 external. */
    int snapType;                /**< 1 for a time-lapse picture, else 0. */
    net_snap_tlp_t snapTlpParam; /**< For time-lapse pictures. */
};

/** The file of a time-lapse snapshot: message 5120. */
struct net_snaptlps_t {
    int channelId;       /**< 0 and above. */
    unsigned int aiType; /**< Any number. */
    int fileSize;        /**< Bytes. */
    char fileName[128];  /**< Terminated. */
};

/** The settings of the crop: message 4702. */
struct net_crop_cfg_t {
    int channelId;  /**< 0 to 63. */
    int topLeftX;   /**< Left edge; any number. */
    int topLeftY;   /**< Upper edge; any number. */
    int cropWidth;  /**< Pixels, 0 and above. */
    int cropHeight; /**< Pixels, 0 and above. */
    /** @{ */
    /** Pixels; any number. */
    int mainWidth;
    int mainHeight;
    int subWidth;
    int subHeight;
    /** @} */
    int version; /**< Any number. */
};

/** A request for a cropped snapshot. */
struct net_crop_snap_t {
    int channelId; /**< 0 and above. */
    int width;     /**< Pixels, 0 to 65535. */
    int height;    /**< Pixels, 0 to 65535; spelled "heigth" in the message. */
};

/** A stored picture: message 7202. */
struct net_image_file_info_t {
    int channelId;       /**< 0 and above. */
    int fileSize;        /**< Bytes. */
    char imageName[256]; /**< Terminated. */
    int delete_;         /**< The element "delete", whose name the language keeps for itself. */
};

/** The switch of AI time-lapse snapshots: message 6989. */
struct net_ai_snaptlps_t {
    int enable;    /**< Whether it is on; any number. */
    int osdEnable; /**< Any number. */
};

/** The switch of a channel's time-lapse snapshots: message 6702. */
struct net_snaptlps_enable_cfg_t {
    int channelId; /**< Video channel; no range is checked here. */
    int reserved;  /**< Not interpreted here. */
};

static_assert(sizeof(net_snap_tlp_t) == 28, "net_snap_tlp_t");
static_assert(sizeof(net_snap_v20_t) == 192, "net_snap_v20_t");
static_assert(sizeof(net_snaptlps_t) == 140, "net_snaptlps_t");
static_assert(sizeof(net_crop_cfg_t) == 40, "net_crop_cfg_t");
static_assert(sizeof(net_crop_snap_t) == 12, "net_crop_snap_t");
static_assert(sizeof(net_image_file_info_t) == 268, "net_image_file_info_t");
static_assert(sizeof(net_ai_snaptlps_t) == 8, "net_ai_snaptlps_t");
static_assert(sizeof(net_snaptlps_enable_cfg_t) == 8, "net_snaptlps_enable_cfg_t");

/**
 * Parses a request for a snapshot. Stream types are spelled "main", "sub" and "ext" here, and their case
 * counts; any other word leaves the field as it was.
 * @param param payload net_snap_v20_t
 * @param node the body
 */
NETPUBLIC_API int nets_param_snap_x2s(net_param_t *param, TiXmlNode *node);
/** Parses the file of a time-lapse snapshot. @param param payload net_snaptlps_t @param node the body */
NETPUBLIC_API int nets_param_snaptlps_x2s(net_param_t *param, TiXmlNode *node);
/** Parses the settings of the crop. @param param payload net_crop_cfg_t @param node the body */
NETPUBLIC_API int nets_param_crop_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Parses a request for a cropped snapshot; "height" is not read, "heigth" is.
 * @param param payload net_crop_snap_t
 * @param node the body
 */
NETPUBLIC_API int nets_param_crop_snap_x2s(net_param_t *param, TiXmlNode *node);

/** Parses a stored picture. @param param payload net_image_file_info_t @param node the body */
NETPUBLIC_API int net_param_image_file_info_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "imageFileInfo". @param param net_image_file_info_t, size checked @param parent gets the element */
NETPUBLIC_API int net_param_image_file_info_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses the switch of AI time-lapse snapshots. @param param payload net_ai_snaptlps_t @param node the body */
NETPUBLIC_API int net_ai_snaptlps_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Appends "aiSnapTlps", whose attribute is spelled "Version".
 * @param param net_ai_snaptlps_t
 * @param parent gets it
 */
NETPUBLIC_API int net_ai_snaptlps_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Reads how a time-lapse snapshot is taken. A null record or node is -1, and so is a name that does not
 * answer to @p key, unless that is null.
 */
NETPUBLIC_API int get_snaptlp_ctrl_from_xmlnode(net_snap_tlp_t *control, TiXmlNode *node, const char *key);

#endif
