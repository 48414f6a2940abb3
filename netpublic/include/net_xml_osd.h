/**
 * @file net_xml_osd.h
 * What is laid over the picture: the date, the channel's name, and the privacy masks.
 *
 * The parsers do not compare `dataSize`: the host hands over the payload that is named, prepared by the
 * matching initialiser. A body without children is success and changes nothing; `inited` stays as it is.
 * Writers append one element with `version` "1.1" to the parent; its children are those that the parser
 * reads.
 * What all message functions share stands in net_types.h.
 */
#ifndef NET_XML_OSD_H
#define NET_XML_OSD_H

#include <stddef.h>

#include "net_types.h"

class TiXmlElement;
class TiXmlNode;

/** The date overlay: message 1902. */
struct net_osd_date_v20_t {
    int channelId; /**< 0 and above. */
    int enable;    /**< 0 or 1. */
    int topLeftX;  /**< Left edge; any number. */
    int topLeftY;  /**< Upper edge; any number. */
    int width;     /**< 0 and above. */
    int height;    /**< 0 and above. */
    int language;  /**< 0 Chinese, 1 any other. */
};

/** The overlay with the channel's name: message 1901. */
struct net_osd_chn_v20_t {
    int channelId;   /**< 0 and above. */
    char name[32];   /**< Terminated; passes net_check_dev_name(). */
    int enable;      /**< 0 or 1. */
    int topLeftX;    /**< Left edge; any number. */
    int topLeftY;    /**< Upper edge; any number. */
    int enWatermark; /**< Any number. */
    int enBgcolor;   /**< Any number. */
    int reserved[8]; /**< Not interpreted here. */
};

/** A privacy mask: an opaque rectangle. */
struct tag_net_shelter_v20_t {
    int id;       /**< 0 to 7. */
    int layer;    /**< Any number. */
    int color;    /**< Any number. */
    int topLeftX; /**< Left edge; any number. */
    int topLeftY; /**< Upper edge; any number. */
    int width;    /**< 0 and above. */
    int height;   /**< 0 and above. */
};

/** The privacy masks of a channel: message 1906. */
struct tag_net_shelter_cfg_v20_t {
    int channelId;                    /**< 0 and above. */
    int logicChannel;                 /**< 0 and above. */
    int enable;                       /**< 0 or 1. */
    int shelterNum;                   /**< Masks held, 0 to 8. */
    int maxNum;                       /**< 0 and above; -1 unknown, as the initialiser leaves it. */
    tag_net_shelter_v20_t shelter[8]; /**< Parsed masks are merged by identifier; `shelterNum` of them are written. */
};

static_assert(sizeof(net_osd_date_v20_t) == 28, "net_osd_date_v20_t");
static_assert(sizeof(net_osd_chn_v20_t) == 88, "net_osd_chn_v20_t");
static_assert(offsetof(net_osd_chn_v20_t, reserved) == 56, "reserved");
static_assert(sizeof(tag_net_shelter_v20_t) == 28, "tag_net_shelter_v20_t");
static_assert(sizeof(tag_net_shelter_cfg_v20_t) == 244, "tag_net_shelter_cfg_v20_t");

/** Parses the date overlay. @param param payload net_osd_date_v20_t @param node the body */
NETPUBLIC_API int nets_osd_date_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "OsdDate". @param param payload net_osd_date_v20_t @param parent gets the element */
NETPUBLIC_API int nets_osd_date_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Parses the overlay with the channel's name; a name with a forbidden character is refused.
 * @param param payload net_osd_chn_v20_t
 * @param node the body; unknown children are logged and skipped
 */
NETPUBLIC_API int nets_osd_chn_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "OsdChn". @param param payload net_osd_chn_v20_t @param parent gets the element */
NETPUBLIC_API int nets_osd_chn_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses privacy masks into the ones held, see get_shelter_from_xmlnode(). @param param tag_net_shelter_cfg_v20_t
 * @param node the body */
NETPUBLIC_API int nets_pic_shelter_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Appends "PicShelter" with the masks held; "maxNum" is left out while it is unknown, and a mask that holds only
 * its id is written with "enable" 0.
 * @param param payload tag_net_shelter_cfg_v20_t
 * @param parent gets the element
 */
NETPUBLIC_API int nets_pic_shelter_s2x(net_param_t *param, TiXmlElement *parent);

/** Reads the "Shelter" children with get_shelter_from_xmlnode(); others are skipped. @p name may be null. */
NETPUBLIC_API int get_shelterList_from_xmlnode(tag_net_shelter_cfg_v20_t *config, TiXmlNode *node, const char *name);
/**
 * Merges one mask: the mask of its "id" gets the values that the element carries and keeps the others; an id
 * that is not held takes the next free place. A mask with "enable" 0 keeps its place but only its id.
 * @param config the masks held
 * @param node the mask
 * @param name if not null, the node's name must answer to it
 * @return 0, or -1 also without an "id" of 0 to 7, or when there is no free place
 */
NETPUBLIC_API int get_shelter_from_xmlnode(tag_net_shelter_cfg_v20_t *config, TiXmlNode *node, const char *name);

#endif
