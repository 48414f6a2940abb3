/**
 * @file net_xml_ptz.h
 * Pan, tilt and zoom: movement commands, presets, cruises, the serial line to an external dome, zoom
 * and focus positions, the guard position, the self-test, backlash, the current position, the rectangle
 * to zoom to, and the autofocus algorithm.
 *
 * Every parser refuses an envelope whose `dataSize` is not the size of the payload that is named; `inited`
 * stays as it is. A value out of range is refused and ends the parse; what was stored before it stays.
 * "0 to" ranges refuse negative numbers.
 * What all message functions share stands in net_types.h.
 */
#ifndef NET_XML_PTZ_H
#define NET_XML_PTZ_H

#include <stddef.h>

#include "net_types.h"

class TiXmlElement;
class TiXmlNode;

/** The values of the `command` fields. Codes 22 to 24 are not used. */
enum NET_PTZ_CMD_E {
    NET_PTZ_STOP = 0,
    NET_PTZ_LEFT = 1,
    NET_PTZ_RIGHT = 2,
    NET_PTZ_UP = 3,
    NET_PTZ_DOWN = 4,
    NET_PTZ_LEFT_UP = 5,
    NET_PTZ_LEFT_DOWN = 6,
    NET_PTZ_RIGHT_UP = 7,
    NET_PTZ_RIGHT_DOWN = 8,
    NET_PTZ_IRIS_DEC = 9,
    NET_PTZ_IRIS_INC = 10,
    NET_PTZ_ZOOM_DEC = 11,
    NET_PTZ_ZOOM_INC = 12,
    NET_PTZ_FOCUS_DEC = 13,
    NET_PTZ_FOCUS_INC = 14,
    NET_PTZ_SET_POS = 15,
    NET_PTZ_TO_POS = 16,
    NET_PTZ_DEL_POS = 17,
    NET_PTZ_AUTO = 18,
    NET_PTZ_HIGH_SPEED = 19,
    NET_PTZ_START_PATROL = 20,
    NET_PTZ_STOP_PATROL = 21,
    NET_PTZ_CLEAR_PATROL = 25,
    NET_PTZ_ENABLE_PATTERN = 26,
    NET_PTZ_START_PATTERN = 27,
    NET_PTZ_STOP_PATTERN = 28,
    NET_PTZ_START_SAVE_PATTERN = 29,
    NET_PTZ_STOP_SAVE_PATTERN = 30,
    NET_PTZ_CLEAN_PATTERN = 31,
    NET_PTZ_ZOOM_POS = 32,
    NET_PTZ_FOCUS_POS = 33,
    NET_PTZ_ZOOM_STEP_DEC = 34,
    NET_PTZ_ZOOM_STEP_INC = 35,
    NET_PTZ_FOCUS_STEP_DEC = 36,
    NET_PTZ_FOCUS_STEP_INC = 37,
    NET_PTZ_SET_GRD = 38,
    NET_PTZ_TO_GRD = 39,
};

/** A movement command: message 4601. */
struct net_ptz_info_v20_t {
    int channelId; /**< 0 to 63. */
    int speed;     /**< 0 to 100. */
    int command;   /**< A NET_PTZ_CMD_E code. */
    int presetId;  /**< 0 to 63. */
    int patrolId;  /**< 0 to 5. */
    int keyPos;    /**< 0 to 15. */
    int dwellTime; /**< 1 and above. */
    int patternId; /**< 0 to 5. */
};

/** A preset position. */
struct net_ptz_preset_v20_t {
    int channelId;       /**< 0 to 63; -1 in a record without preset. */
    int command;         /**< A NET_PTZ_CMD_E code, or -1. */
    int id;              /**< 0 to 255; -1 in a record without preset. */
    char name[32];       /**< Terminated; "invalid" in a record without preset, and of a preset without name. */
    char imageName[32];  /**< Terminated; stays as it is when the message does not give it. */
    int maxPresetNum;    /**< Any number, the same in all presets; 0 when the message does not give it. */
    int maxPresetPicNum; /**< Any number, the same in all presets; 0 when the message does not give it. */
};

/** The presets of a channel: message 4603. */
struct net_ptz_preset_list_v20_t {
    net_ptz_preset_v20_t preset[256]; /**< In the order of the message. */
};

/** One key position of a cruise, together with the cruise's own values. */
struct net_ptz_cruise_v20_t {
    int channelId;     /**< 0 to 63. */
    int patrolId;      /**< 0 to 5. */
    int enable;        /**< 0 for a cruise that is switched off: it has one record and no key position. */
    int starting;      /**< 0 or 1. */
    int cruising;      /**< 0 or 1. */
    char name[32];     /**< Terminated. */
    int hasValueTable; /**< 1 when the message gave the days' hours. */
    int dayMask[7];    /**< The hours of each day: bit h is hour h. */
    int keyPosId;      /**< 0 to 15; -1 in the record of a cruise that is switched off. */
    int presetId;      /**< -1 to 255. */
    int speed;         /**< 0 to 100. */
    int dwellTime;     /**< 1 and above. */
    int trackEnable;   /**< Any number. */
    int trackTime;     /**< Any number. */
    int hasTrackValue; /**< 1 when the message gave `trackEnable` or `trackTime`. */
    int reserved;      /**< Set to 7 by the parser. */
};

/** The cruises of a channel: message 4604. The envelope's `dataSize` tells how many records are used. */
struct net_ptz_cruise_list_v20_t {
    net_ptz_cruise_v20_t keyPos[32]; /**< Further ones are refused. */
};

/** The serial line to an external dome. */
struct tag_net_ptz_param_v20_t {
    int channelId;       /**< 0 to 63. */
    int baudRate;        /**< 0 1200, 1 2400, 2 4800, 3 9600; anything else is written as 9600. */
    int dataBit;         /**< As get_databit_index() tells. */
    int stopBit;         /**< 0 one, 1 two. */
    int parity;          /**< 0 none, 1 odd, 2 even. */
    int flowControl;     /**< 0 none, 1 hard, 2 xon:xoff. */
    int controlProtocol; /**< 0 PELCO_D, 1 PELCO_P; "decoderType" is stored here too, 0 and above. */
    int controlAddress;  /**< 0 to 255. */
};

/** The payload of the serial line's message, 4501. */
struct net_ptz_serial_v20_t {
    tag_net_ptz_param_v20_t param; /**< The line; the only part in use. */
    int reserved[192];             /**< Not interpreted here. */
};

/** A position of the zoom or the focus. */
struct net_zf_pos_v20_t {
    int maxPos;    /**< Largest position; any number. */
    int minPos;    /**< Smallest position; any number. */
    int curPos;    /**< Current position; any number. */
    int defPos;    /**< Default position; any number. */
    int hasDefPos; /**< Set to 1 when the message gave `defPos`. */
};

/** Zoom and focus positions: message 4606. */
struct net_ptz_zoom_focus_info_v20_t {
    int channelId;          /**< 0 to 63. */
    net_zf_pos_v20_t zoom;  /**< Position of the zoom. */
    net_zf_pos_v20_t focus; /**< Position of the focus. */
};

/** Moves the zoom or the focus: message 4607. */
struct net_ptz_zoom_focus_start_v20_t {
    int channelId; /**< 0 to 63. */
    int movePos;   /**< 0 and above. */
    int command;   /**< A NET_PTZ_CMD_E code. */
};

/** The guard position, to which the camera returns: message 4608. */
struct net_ptz_guard_v20_t {
    int channelId; /**< 0 to 63. */
    int command;   /**< A NET_PTZ_CMD_E code. */
    /** @{ */
    /** Any number. */
    int benable;
    int bvalid;
    int timeout;
    int needSetPos;
    /** @} */
    char imageName[32]; /**< Terminated. */
};

/** The self-test: message 4609. */
struct net_auto_test_v20_t {
    int channelId;      /**< 0 to 63. */
    int needPtAutotest; /**< Any number. */
    int reserved;       /**< Not interpreted here. */
};

/** The play of the zoom and focus drives: message 4610. */
struct net_zf_backlash_v20_t {
    unsigned int zBacklash; /**< Any number. */
    unsigned int fBacklash; /**< Any number. */
};

/** The current position: message 4611. */
struct net_ptz_curpos_v20_t {
    int pPos; /**< Pan. */
    int tPos; /**< Tilt. */
};

/** The rectangle to zoom to, in parts of the picture's size: message 4612. */
struct net_ptz_3Dlocation_v20_t {
    int channelId;            /**< Video channel; no range is checked here. */
    float topLeftX;           /**< Left edge; any number. */
    float topLeftY;           /**< Upper edge; any number. */
    float width;              /**< Any number. */
    float height;             /**< Any number. */
    STREAM_TYPE_E streamType; /**< Of the picture; the snapshot stream is refused. */
    int speed;                /**< Any number. */
};

/** The autofocus algorithm: message 4613. */
struct net_af_algorithm_v20_t {
    int channelId; /**< Video channel; no range is checked here. */
    int algorithm; /**< Any number. */
};

/** The result of the autofocus learning: message 6801. */
struct net_af_learn_result_t {
    int reserved[8]; /**< Not interpreted here. */
};

static_assert(sizeof(net_ptz_info_v20_t) == 32, "net_ptz_info_v20_t");
static_assert(sizeof(net_ptz_preset_v20_t) == 84, "net_ptz_preset_v20_t");
static_assert(sizeof(net_ptz_preset_list_v20_t) == 21504, "net_ptz_preset_list_v20_t");
static_assert(sizeof(net_ptz_cruise_v20_t) == 116, "net_ptz_cruise_v20_t");
static_assert(offsetof(net_ptz_cruise_v20_t, patrolId) == 4, "the initialiser writes the second word");
static_assert(sizeof(net_ptz_cruise_list_v20_t) == 3712, "net_ptz_cruise_list_v20_t");
static_assert(sizeof(tag_net_ptz_param_v20_t) == 32, "tag_net_ptz_param_v20_t");
static_assert(sizeof(net_ptz_serial_v20_t) == 800, "net_ptz_serial_v20_t");
static_assert(sizeof(net_zf_pos_v20_t) == 20, "net_zf_pos_v20_t");
static_assert(sizeof(net_ptz_zoom_focus_info_v20_t) == 44, "net_ptz_zoom_focus_info_v20_t");
static_assert(sizeof(net_ptz_zoom_focus_start_v20_t) == 12, "net_ptz_zoom_focus_start_v20_t");
static_assert(sizeof(net_ptz_guard_v20_t) == 56, "net_ptz_guard_v20_t");
static_assert(sizeof(net_auto_test_v20_t) == 12, "net_auto_test_v20_t");
static_assert(sizeof(net_zf_backlash_v20_t) == 8, "net_zf_backlash_v20_t");
static_assert(sizeof(net_ptz_curpos_v20_t) == 8, "net_ptz_curpos_v20_t");
static_assert(sizeof(net_ptz_3Dlocation_v20_t) == 28, "net_ptz_3Dlocation_v20_t");
static_assert(sizeof(net_af_algorithm_v20_t) == 8, "net_af_algorithm_v20_t");
static_assert(sizeof(net_af_learn_result_t) == 32, "net_af_learn_result_t");

/** Parses a movement command. @param param payload net_ptz_info_v20_t @param node the body */
NETPUBLIC_API int net_ptz_info_x2s(net_param_t *param, TiXmlNode *node);
/** Writes nothing. @return 0, or -1 (logged) when the payload is not a net_ptz_info_v20_t */
NETPUBLIC_API int net_ptz_info_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Parses presets; those beyond 256 are ignored. "channelId" is required, and "id" in every preset.
 * @param param payload net_ptz_preset_list_v20_t; records behind the last preset are marked "invalid"
 * @param node the body
 */
NETPUBLIC_API int net_ptz_preset_x2s(net_param_t *param, TiXmlNode *node);
/** Writes nothing. @return 0 */
NETPUBLIC_API int net_ptz_preset_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Parses cruises: at most 6, of at most 16 key positions each; the ones beyond are ignored.
 * @param param payload net_ptz_cruise_list_v20_t; `dataSize` becomes the size of the records used, so
 *        the envelope serves one message. More than 32 records are refused. A refused message leaves the
 *        payload as it was.
 * @param node the body
 */
NETPUBLIC_API int net_ptz_cruise_x2s(net_param_t *param, TiXmlNode *node);
/** Writes nothing. @return 0 */
NETPUBLIC_API int net_ptz_cruise_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Parses the serial line. An unknown control protocol is no failure.
 * @param param net_ptz_serial_v20_t
 * @param node the body
 */
NETPUBLIC_API int net_ptz_param_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "Serial", of the record itself. @return 0, or -1 for a null argument or a data bit without a word */
NETPUBLIC_API int net_ptz_param_s2x(tag_net_ptz_param_v20_t *record, TiXmlElement *parent);

/** Parses zoom and focus positions. @param param payload net_ptz_zoom_focus_info_v20_t @param node the body */
NETPUBLIC_API int nets_param_zoom_focus_info_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "PtzZoomFocus". @param param payload net_ptz_zoom_focus_info_v20_t @param parent gets the element */
NETPUBLIC_API int nets_param_zoom_focus_info_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Parses a move of the zoom or the focus.
 * @param param payload net_ptz_zoom_focus_start_v20_t
 * @param node the body
 */
NETPUBLIC_API int nets_param_start_zoom_focus_x2s(net_param_t *param, TiXmlNode *node);

/** Parses the guard position. @param param payload net_ptz_guard_v20_t @param node the body */
NETPUBLIC_API int nets_param_guard_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Appends "PtzGuard", without the command.
 * @param param payload net_ptz_guard_v20_t
 * @param parent gets the element
 */
NETPUBLIC_API int nets_param_guard_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses a request for the self-test. @param param payload net_auto_test_v20_t @param node the body */
NETPUBLIC_API int net_ptz_auto_test_x2s(net_param_t *param, TiXmlNode *node);

/** Parses the drives' play. @param param payload net_zf_backlash_v20_t @param node the body */
NETPUBLIC_API int nets_param_zf_backlash_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "ZfBacklash". @param param payload net_zf_backlash_v20_t @param parent gets the element */
NETPUBLIC_API int nets_param_zf_backlash_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses the current position. @param param payload net_ptz_curpos_v20_t @param node the body */
NETPUBLIC_API int net_param_ptz_curpos_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "ptzCurPos". @param param payload net_ptz_curpos_v20_t @param parent gets the element */
NETPUBLIC_API int net_param_ptz_curpos_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses a rectangle to zoom to; an unknown stream type is refused. @param param net_ptz_3Dlocation_v20_t @param node
 * the body */
NETPUBLIC_API int net_ptz_3Dlocation_x2s(net_param_t *param, TiXmlNode *node);

/** Parses the autofocus algorithm. @param param payload net_af_algorithm_v20_t @param node the body */
NETPUBLIC_API int net_af_algorithm_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "afAlgorithm". @param param payload net_af_algorithm_v20_t @param parent gets the element */
NETPUBLIC_API int net_af_algorithm_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Reads a command: a whole word, case aside, of which the first 63 characters count.
 * @return a NET_PTZ_CMD_E code, or -1 for an unknown word and a null text
 */
NETPUBLIC_API int _get_ptz_cmd(const char *text);

#endif
