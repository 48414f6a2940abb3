/**
 * @file net_xml_public.h
 * The XML toolkit: typed values out of child elements and into them, weekly schedules, and the
 * extension header of a request. Words, number lists and base64 are in net_xml_words.h.
 *
 * Readers take one node, check its text, convert it and store it. A name answers to a key when it is,
 * case aside, a beginning of the key: "Ch" answers to "channelId", "channelIdX" does not, the empty
 * name answers to every key. A reader that is given a key checks the node's name first; with a null
 * key the caller has done so.
 *
 * Unless stated otherwise a function returns 0, or -1 when an argument is null, the name does not
 * answer to the key, the node is no element or its text is refused. Texts are terminated. Nothing here takes
 * memory, except the writers, which build the nodes of their result, and net_exten_x2s(); when memory is short
 * they return -1, and the writers leave their parent as it was.
 */
#ifndef NET_XML_PUBLIC_H
#define NET_XML_PUBLIC_H

#include "net_types.h"
#include "net_xml_words.h"

class TiXmlElement;
class TiXmlNode;
class TiXmlPrinter;

/** One entry of a device inspection query; spelled so. */
struct net_video_inpsection_info_t {
    int channelId;  /**< 0 and above. */
    int type;       /**< 0 and above. */
    int checkFrame; /**< Any number. */
};

/** One entry of a device query; spelled so. */
struct net_query_deive_t {
    unsigned long long logicChnBitmap; /**< One bit per logical channel. */
    char uid[32];                      /**< Terminated, at most 31 characters. */
};

/** @name Numbers
 * An optional '-' and decimal digits, nothing else; a lone "-" reads as 0. Only the text's length is
 * bounded: a number that does not fit becomes what the C library's conversion makes of it.
 * @{ */
/** 1 to 12 characters, converted by atoi(). */
NETPUBLIC_API int get_int_from_xmlnode(int *value, TiXmlNode *node, const char *key);
/** 1 to 9 characters; the number is stored first and refused when it is neither 0 nor 1. */
NETPUBLIC_API int get_bool_from_xmlnode(int *value, TiXmlNode *node, const char *key);
/** 1 to 10 characters, converted by strtoul(): a negative number wraps around. */
NETPUBLIC_API int get_unsignedint_from_xmlnode(unsigned int *value, TiXmlNode *node, const char *key);
/** 1 to 20 characters, converted by atoi64(). */
NETPUBLIC_API int get_int64_from_xmlnode(long long *value, TiXmlNode *node, const char *key);
/** 1 to 21 characters, converted by strtoll(). */
NETPUBLIC_API int get_longlong_from_xmlnode(long long *value, TiXmlNode *node, const char *key);
/** 1 to 20 characters, converted by strtoull(). */
NETPUBLIC_API int get_unsignedlonglong_from_xmlnode(unsigned long long *value, TiXmlNode *node, const char *key);
/** Any text; what is no number reads as 0. The decimal point is '.', whatever the locale. */
NETPUBLIC_API int get_float_from_xmlnode(float *value, TiXmlNode *node, const char *key);
/** @} */

/**
 * Copies an element's text.
 * @param dst the buffer, zeroed over all its @p size bytes first
 * @param size of the buffer in bytes, not negative; a text of @p size characters or more is refused, never cut
 * @param node the element; one without text is an empty text
 * @param key if not null, must equal the name over 31 characters, case aside: no prefix here
 */
NETPUBLIC_API int get_str_from_xmlnode(char *dst, int size, TiXmlNode *node, const char *key);

/** Digits to a 64-bit number, wrapping around; no character is checked. @p text must not be null. */
NETPUBLIC_API long long atoi64(const char *text);

/**
 * Reads the children "year", "month", "day", "hour", "minute" and "second". A value out of its range
 * is stored and refused; fields without a child keep what they held.
 */
NETPUBLIC_API int get_time_from_xmlnode(tag_net_time_v20_t *time, TiXmlNode *node, const char *key);
/**
 * Reads the children "min", "max", "def" and "cur". Each is tested on its own: a child named "m" is
 * read into both min and max.
 */
NETPUBLIC_API int get_net_int_value_from_xmlnode(net_int_value_t *value, TiXmlNode *node, const char *key);
/** As get_net_int_value_from_xmlnode(), with floats. */
NETPUBLIC_API int get_net_float_value_from_xmlnode(net_float_value_t *value, TiXmlNode *node, const char *key);

/**
 * Reads the "deviceInfo" children of an inspection query, at most @p max of them, none for a negative one.
 * @return how many entries were filled, or -1; entries filled before a failure stay filled
 */
NETPUBLIC_API int get_query_device_from_xmlnode(net_video_inpsection_info_t *list, int max, TiXmlNode *node,
                                                const char *key);
/** Reads the "deviceInfo" children of a device query, at most @p max of them. @return 0 or -1 */
NETPUBLIC_API int get_query_device_from_xmlnode(net_query_deive_t *list, int max, TiXmlNode *node, const char *key);

/** @name Typed children
 * @{ */
/**
 * Appends an element of the given name that holds the value as text. When both omit1 and omit2 are 1,
 * nothing is written. The texts are copied.
 * @return 0, or -1 when the parent, the name or the text is null
 */
NETPUBLIC_API int InsertChildToXmlElement_string(TiXmlElement *parent, const char *name, const char *text, int omit1,
                                                 int omit2);
NETPUBLIC_API int InsertChildToXmlElement_int(TiXmlElement *parent, const char *name, int value, int omit1, int omit2);
NETPUBLIC_API int InsertChildToXmlElement_unsignedint(TiXmlElement *parent, const char *name, unsigned int value,
                                                      int omit1, int omit2);
NETPUBLIC_API int InsertChildToXmlElement_int64(TiXmlElement *parent, const char *name, long long value, int omit1,
                                                int omit2);
NETPUBLIC_API int InsertChildToXmlElement_longlong(TiXmlElement *parent, const char *name, long long value);
NETPUBLIC_API int InsertChildToXmlElement_unsignedlonglong(TiXmlElement *parent, const char *name,
                                                           unsigned long long value, int omit1, int omit2);
/** As the others, with eight significant digits and '.' as decimal point whatever the locale. */
NETPUBLIC_API int InsertChildToXmlElement_float(TiXmlElement *parent, const char *name, float value, int omit1,
                                                int omit2);
/** @} */

/**
 * Appends "year" to "second" directly to @p parent.
 * @return always -1, also when it has written: the result says nothing
 */
NETPUBLIC_API int InsertChildToXmlElement_time(TiXmlElement *parent, tag_net_time_v20_t *time);
/** Appends "min", "max", "cur" and "def" directly to @p element. @return 0, or -1 (logged) for a null argument */
NETPUBLIC_API int net_int_value_s2x(net_int_value_t *value, TiXmlElement *element);
/** Appends "min", "max", "cur" and "def" directly to @p element. @return 0, or -1 (logged) for a null argument */
NETPUBLIC_API int net_float_value_s2x(net_float_value_t *value, TiXmlElement *element);
/**
 * Prints the extension document of a reply, "Extension" (unlike a request's "ExtenSion") with the
 * channel, into @p printer without indentation. @return 0, or -1 when memory is short: part of it may be printed then
 */
NETPUBLIC_API int net_get_exten_xml(TiXmlPrinter &printer, int channelId);

/**
 * Parses the extension header of a request.
 * @param text the document, terminated; it is not changed. Text that is not well formed is refused,
 *        and so is text beyond 64 KiB, 64 levels of nesting or 64 attributes in one element, a numeric
 *        reference that is not digits, or 'x' and hexadecimal digits, up to its ';', and a UTF-8 sequence
 *        that is cut so that it would swallow markup.
 * @param ext cleared by the host before; only fields whose child is present are written, and they keep
 *        their values when a later child is refused
 * @return 0 or -1; a refused value is logged
 */
NETPUBLIC_API int net_exten_x2s(char *text, net_ext_t *ext);

/** @name Weekly schedules
 * The readers add to the record, which the message's initialiser has zeroed.
 * @{ */
/**
 * The per-type form, "typeScheduleList": one "item" with a table of 168 characters per alarm type.
 * Items of unknown types are skipped. @p key is not checked.
 */
NETPUBLIC_API int get_type_schedule_list_from_xmlnode(net_schedule_t *schedule, TiXmlNode *node, const char *key);
/**
 * The per-combination form, "ScheduleList": runs of hours per weekday for a combination of types. A
 * later run replaces what an earlier one put into its hours; `types` is left alone.
 */
NETPUBLIC_API int get_schedule_list_from_xmlnode(net_schedule_t *schedule, TiXmlNode *node, const char *key);
/** The "timeBlock" children of one combination: enabled hours are set to @p types. At most 168 are read. */
NETPUBLIC_API int get_time_block_list_from_xmlnode(net_schedule_t *schedule, time_section_t types, TiXmlNode *node,
                                                   const char *key);
/** Appends "typeScheduleList" for the types that the schedule mentions. */
NETPUBLIC_API int insert_type_schedule_list_to_xmlnode(net_schedule_t *schedule, TiXmlElement *parent);
/** Appends "ScheduleList": nine combinations of the four classic types, each with its runs of hours. */
NETPUBLIC_API int insert_schedule_list_to_xmlnode(net_schedule_t *schedule, TiXmlElement *parent);
/** @} */

#endif
