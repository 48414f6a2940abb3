/**
 * @file net_types.h
 * The types that every message family shares: the envelope of a message, the extension record of a
 * request, ranged values, date-times, alarm-type sets, weekly schedules and polygons.
 *
 * All of them are plain structures of natural alignment that the host reads and writes directly.
 *
 * What the functions of all message headers share, unless they say otherwise:
 *
 * - `<name>_x2s(param, node)` reads the children of the element `node` into the payload of `param`. The tree
 *   is only read, and nothing of it is kept.
 * - `<name>_s2x(param, parent)` appends one element, made from the payload of `param`, to `parent`, which
 *   owns it. The payload is only read. After a failure the parent is as it was.
 * - `get_..._from_xmlnode(record, node, key)` reads one element into a record of the caller. When `key` is
 *   not null, the element's name must answer to it: be, case aside, a beginning of it.
 * - All return 0, or -1 for a null argument, a missing payload, a refused value, or no memory.
 * - A number without a range in its comment may be any. A text field of N bytes takes N - 1 characters and
 *   ends with a zero; a longer text is refused.
 */
#ifndef NET_TYPES_H
#define NET_TYPES_H

// Written by the build, so that it stands beside the other headers only where the library is installed.
#if __has_include("net_tinyxml.h")
#include "net_tinyxml.h"
#endif

/**
 * Marks what the shared library exports; everything else in it is hidden. With NETPUBLIC_STATIC, which the
 * CMake package and netpublic.pc of a static build define, nothing is exported.
 */
#ifdef NETPUBLIC_STATIC
#define NETPUBLIC_API
#else
#define NETPUBLIC_API __attribute__((visibility("default")))
#endif

/**
 * The envelope of one message. The host owns it, usually on its stack; the payload belongs to the
 * envelope from its initialiser until net_free(&param->data).
 */
struct net_param_t {
    unsigned int inited;    /**< 1 after an initialiser, 2 after the parsers that say so; never cleared here. */
    int status;             /**< Set to 0 by the initialisers, otherwise the host's. */
    int paramId;            /**< Message id of the catalogue. */
    unsigned int reserved0; /**< The host's; never read or written here. */
    unsigned int reserved1; /**< Entry count of the encoding list; cleared by five initialisers, else the host's. */
    unsigned int dataSize;  /**< Size of the payload structure in bytes. */
    void *data;             /**< The payload, allocated by the initialiser through net_malloc(). */
};

/** What a request's "ExtenSion" header says; filled by net_exten_x2s(), read by the initialisers. */
struct net_ext_t {
    int channelId;     /**< Video channel, 0 and above. */
    int inputId;       /**< Alarm input, 0 to the device's number of inputs - 1. */
    int outputId;      /**< Alarm output, 0 to the device's number of outputs - 1. */
    int patrolId;      /**< Cruise, 0 to 5. */
    int binaryData;    /**< 1 when binary data follow the text. */
    int encryptLen;    /**< Length of the encrypted part, bytes. */
    int encryptPos;    /**< Start of the encrypted part, bytes. */
    char userName[32]; /**< Name of the requesting user, terminated. */
    char token[256];   /**< Token of the request, terminated; also names ability sections. */
    int rfId;          /**< Radio device, 0 to 31. */
    int chnType;       /**< Channel type, 0 and above. */
    int streamType;    /**< A STREAM_TYPE_E code. */
};

/** Stream types. The snapshot stream has a word and a code here but is no live stream everywhere. */
enum STREAM_TYPE_E {
    STREAM_TYPE_MAIN = 0,
    STREAM_TYPE_SUB = 1,
    STREAM_TYPE_MOBILE = 2,
    STREAM_TYPE_SNAP = 3,
    STREAM_TYPE_EXTERN = 4,
};

/** A protocol value with its range, in the protocol's order. */
struct net_int_value_t {
    int min; /**< Smallest value. */
    int max; /**< Largest value. */
    int cur; /**< Value in use. */
    int def; /**< Default value. */
};

/** A protocol value with its range, in the protocol's order. */
struct net_float_value_t {
    float min; /**< Smallest value. */
    float max; /**< Largest value. */
    float cur; /**< Value in use. */
    float def; /**< Default value. */
};

/** A value with its range in the host's order. */
struct intvalue_t {
    int cur; /**< Value in use. */
    int min; /**< Smallest value. */
    int max; /**< Largest value. */
    int def; /**< Default value. */
};

/** A value with its range in the host's order. */
struct floatvalue_t {
    float cur; /**< Value in use. */
    float min; /**< Smallest value. */
    float max; /**< Largest value. */
    float def; /**< Default value. */
};

/** A calendar date and time of day; whether the day exists in its month is not checked. */
struct tag_net_time_v20_t {
    int year;   /**< 0 and above. */
    int month;  /**< 1 to 12. */
    int day;    /**< 1 to 31. */
    int hour;   /**< 0 to 23. */
    int minute; /**< 0 to 59. */
    int second; /**< 0 to 59. */
};

/** A text that carries its capacity and its length in front of the characters. */
struct net_counted_text_t {
    int capacity;   /**< Set to 256 whenever the text is parsed. */
    int length;     /**< Number of characters, terminator excluded. */
    char text[256]; /**< Terminated. */
};

/** A set of alarm-type codes 0 to 44: code c is bit c % 32 of word c / 32. */
struct time_section_t {
    unsigned int bits[2]; /**< Word 0 holds codes 0 to 31, word 1 codes 32 to 44. */
};

/** A weekly schedule: which alarm types are active in which hour of the week. */
struct net_schedule_t {
    time_section_t types;          /**< The alarm types that the schedule mentions. */
    time_section_t section[7][24]; /**< By weekday (0 Sunday) and hour: the types active in that hour. */
};

/** A point of the picture, normalised coordinates; no range is enforced. */
struct point_t {
    float x; /**< From the left; no range. */
    float y; /**< From the top; no range. */
};

/** The protocol's own name for point_t. */
typedef point_t net_smart_ai_point_t;

/** A polygon or line of at most 8 points. */
struct net_smart_ai_points_t {
    int pointNum;      /**< Points held, 0 to 8. */
    point_t points[8]; /**< The corners in their order. */
};

/** The side of a trip wire that the host counts. */
enum AI_TRIP_WIRE_DIRECTION {
    AI_TRIP_WIRE_NONE = 0,
    AI_TRIP_WIRE_ANTICLOCKWISE = 1,
    AI_TRIP_WIRE_CLOCKWISE = 2,
    AI_TRIP_WIRE_BOTH = 3,
};

/** The side of a trip wire on the wire: "none", "antiClockwise", "clockwise", "both". */
enum NET_CROSSLINE_DETECT_DIRECTION_E {
    NET_CROSSLINE_DETECT_NONE = 0,
    NET_CROSSLINE_DETECT_ANTICLOCKWISE = 1,
    NET_CROSSLINE_DETECT_CLOCKWISE = 2,
    NET_CROSSLINE_DETECT_BOTH = 3,
};

static_assert(sizeof(net_param_t) == 24 + sizeof(void *), "seven words, the last one a pointer");
static_assert(sizeof(net_ext_t) == 328, "net_ext_t");
static_assert(sizeof(tag_net_time_v20_t) == 24, "tag_net_time_v20_t");
static_assert(sizeof(net_counted_text_t) == 264, "net_counted_text_t");
static_assert(sizeof(net_schedule_t) == 1352, "net_schedule_t");
static_assert(sizeof(net_smart_ai_points_t) == 68, "net_smart_ai_points_t");

#endif
