/**
 * @file net_public.h
 * netpublic turns the XML messages of the device-control protocol into fixed-layout structures and
 * back. This header brings in the whole library.
 *
 * One exchange, driven by the host:
 *
 *     net_param_t param;
 *     nets_param_md_init(&param, &ext);           // stamps the envelope, allocates the payload
 *     net_md_x2s(&param, body);                   // request: XML to structure
 *     ...                                         // act on it, or fill in the reply
 *     net_md_s2x(&param, parent);                 // reply: structure to XML
 *     net_free(&param.data);
 *
 * Functions return 0 on success and -1 on failure unless they say otherwise. A null pointer makes a
 * function fail, or do nothing where it has no result, unless its description says that it must not be
 * null: then it is the caller's to see to, as are the terminators of texts and the sizes of buffers.
 * Failures are logged to standard output while the host's switches (net_host.h) allow it. The library
 * keeps no state, so that envelopes used on different threads are independent; the two functions that
 * return static buffers say so.
 */
#ifndef NET_PUBLIC_H
#define NET_PUBLIC_H

#include <time.h>

#include <string>

#include "net_param_init.h"
#include "net_text.h"
#include "net_types.h"
#include "net_version.h"
#include "net_xml_alarm.h"
#include "net_xml_backup.h"
#include "net_xml_buzzer.h"
#include "net_xml_cloud.h"
#include "net_xml_email.h"
#include "net_xml_isp.h"
#include "net_xml_nas.h"
#include "net_xml_network.h"
#include "net_xml_osd.h"
#include "net_xml_ptz.h"
#include "net_xml_public.h"
#include "net_xml_push.h"
#include "net_xml_recode.h"
#include "net_xml_replay.h"
#include "net_xml_snap.h"
#include "net_xml_stream.h"
#include "net_xml_system.h"
#include "net_xml_talk.h"
#include "net_xml_timelapse.h"
#include "net_xml_update.h"
#include "net_xml_user.h"

/** @name Envelope and allocation
 * @{ */

/** The word ERROR as six lines of ASCII art, for the host to print in front of fatal messages. */
extern NETPUBLIC_API const char *const g_error_big_string;

/** Allocates through the host's bc_malloc(). @return the block, or null (logged). */
NETPUBLIC_API void *net_malloc(unsigned int size);

/**
 * Releases the block that @p *pptr points to through the host's bc_free() and nulls the pointer.
 * A null @p pptr, or a pointer that is null already, is logged and has no other effect.
 */
NETPUBLIC_API void net_free(void **pptr);

/**
 * Stamps an envelope (`inited` 1, `status` 0, id, size) and allocates its payload, zeroed.
 * A failed allocation leaves the envelope stamped with a null payload.
 * @param param the envelope; `reserved0` and `reserved1` are left alone
 * @param ext not used
 * @param size of the payload, bytes
 * @param id of the message
 */
NETPUBLIC_API int net_param_init_size_id(net_param_t *param, net_ext_t *ext, unsigned int size, int id);

/** @} */

/** @name Identity of the device
 * @{ */

/**
 * Copies the device's uid, 31 characters at most, into @p uid (32 bytes, all of them written).
 * A host that cannot tell its uid although it claims to have one is believed: what it left is copied.
 */
NETPUBLIC_API int net_uid_get(char *uid);

/** Copies the device's key, 8 characters at most, into @p key (9 bytes, all of them written). */
NETPUBLIC_API int net_key_get(char *key);

/** Writes the hardware address, or else the provisional one, as "AA:BB:CC:00:11:22" into @p mac (20 bytes). */
NETPUBLIC_API int net_mac_get(char *mac);

/**
 * Copies the model text, 63 characters at most, into @p model (64 bytes, all of them written); null is ignored.
 * @return always 1
 */
NETPUBLIC_API int _nets_get_model_info(char *model);

/**
 * The product type, from the first word that the host's type text holds (NVR, HVR, IPC, DVR, BASE, HOMEHUB).
 * @return 1 DVR; 2 camera without Wi-Fi; 3 NVR without Wi-Fi, or HVR; 4 camera with Wi-Fi; 5 NVR with
 *         Wi-Fi; 7 stand-alone camera with Wi-Fi; 8 base station; 14 home hub; 127 unknown
 */
NETPUBLIC_API int net_product_type_get();

/** @return 1 DVR, 2 camera, 3 NVR, 4 base station, 7 home hub, 127 unknown. */
NETPUBLIC_API int net_dev_type_get();

/** @return the host's configured country code, or "US". The text belongs to the host. */
NETPUBLIC_API const char *get_country_code();

/** @} */

/** @name Network interfaces
 * @{ */

/**
 * The IPv4 address and the hardware address of an interface.
 * Fails as well when any interface that is listed behind the sought one has no address.
 * @param ifname name of the interface
 * @param ip 32 bytes: dotted address
 * @param mac 20 bytes: "aa:bb:cc:00:11:22"; left alone when the interface has none to tell, which is no failure
 */
NETPUBLIC_API int net_ip_and_mac_get(const char *ifname, char *ip, char *mac);

/** @return 1 link up, 0 link down, -1 the interface cannot be asked, -2 no socket. */
NETPUBLIC_API int net_link_status_get(const char *ifname);

/**
 * Removes the colons of a text in place.
 * @param mac a terminated text; it is read until its terminator or until it is full
 * @param size how many bytes may be written, terminator included; what does not fit is cut. 0 leaves all as it is
 */
NETPUBLIC_API void get_raw_mac(char *mac, unsigned int size);

/** @} */

/** @name Files
 * These log whatever the host's switches say.
 * @{ */

/** @return 1 when the path exists, else 0. */
NETPUBLIC_API int net_file_exist(const char *path);

/** Removes a file. An empty path and a file that is not there are success. */
NETPUBLIC_API int net_file_remove(const char *path);

/** Replaces a file's content by the @p len bytes of @p buf. A partial write is a failure; an empty one too. */
NETPUBLIC_API int net_file_write(const char *path, void *buf, unsigned int len);

/** Stores a file's size in bytes. A size that an int cannot hold is a failure. */
NETPUBLIC_API int nets_get_file_size(char *path, int *size);

/** net_file_write() for a file of the parameter directory. Have the name pass net_check_cert_name() first. */
NETPUBLIC_API int net_cert_write(char *name, void *buf, unsigned int len);

/** net_file_remove() for a file of the parameter directory. Have the name pass net_check_cert_name() first. */
NETPUBLIC_API int net_cert_remove(char *name);

/** @} */

/** @name Random values and time
 * @{ */

/**
 * Fills a text with letters and digits, for labels; they are not fit for secrets, since the process-wide
 * rand() is seeded with the current second.
 * @param buf, bufLen the buffer, zeroed first
 * @param strLen number of characters, at most @p bufLen; when equal, there is no terminator; below 1 none
 * @return 0, or -1 for a null or negative buffer or one that is too small
 */
NETPUBLIC_API int net_random_string(char *buf, int bufLen, int strLen);

/**
 * @return a number of 0 to n - 1, the same one for all calls within a second, with which the process-wide rand() is
 *         seeded; 0 for 0. @p n must not be negative.
 */
NETPUBLIC_API int net_random_num_get(int n);

/** @return the host's tick in milliseconds. */
NETPUBLIC_API unsigned long long net_tick_msec_get();

/** @return the host's tick in seconds. */
NETPUBLIC_API unsigned int net_tick_sec_get();

/**
 * Brings a local time into its normal form through the host's mktime_abs().
 * @param src, dst calendar year (2024) and month (1 to 12), unlike the C library's
 * @return 1, or 0 for a null argument or a time that does not exist
 */
NETPUBLIC_API int net_local_time_get(struct tm *src, struct tm *dst);

/** @} */

/** @name Log filter
 * @{ */

/**
 * Replaces the content of passwords, keys, tokens and addresses by as many asterisks, so that a message
 * can be logged. Only tags without attributes and blanks are recognised; case matters. An element ends at the
 * next close tag of its name: where elements of one name nest, the rest of the outer one is shown.
 * @return a static buffer that lasts until the next call: not for two threads at once. Empty for a null text.
 */
NETPUBLIC_API const char *net_xml_printf_filter(const char *xml);

/**
 * Replaces what stands between @p openTag and the next @p closeTag by as many asterisks, wherever it finds the two.
 * @param text changed in place; its length stays
 * @param openTag, closeTag as they stand in the text; neither may be empty or hold an asterisk
 */
NETPUBLIC_API void net_xml_filter(std::string &text, std::string openTag, std::string closeTag);

/** @} */

/** @name Conversions between the host's forms and the protocol's
 * @{ */

/**
 * Joins texts with a separator. No pointer may be null, nor any of the items.
 * @param out, size the buffer and its size in bytes, zeroed first; left alone when the result would not fit
 * @param items, count the terminated texts and their number
 * @param sep the separator
 * @return 0, or -1 for a negative count or a buffer that is too small
 */
NETPUBLIC_API int string_join(char *out, unsigned int size, const char **items, int count, char sep);

/** Writes object types (1 people, 2 vehicle, 4 dog_cat) as words joined by commas, or "none"; silently cut. */
NETPUBLIC_API void net_ai_type_local_to_net(char *out, unsigned int size, int types);

/**
 * Reads the object types whose words a text contains, case aside.
 * @param text a terminated text: @p size does not bound it
 * @param size of 0 leaves @p types alone, as a null text does; any other counts for nothing
 * @param types 1 people, 2 vehicle, 4 dog_cat
 */
NETPUBLIC_API void net_ai_type_net_to_local(char *text, unsigned int size, int &types);

/** Copies the first 8 of @p count points of the host; a negative count is none. A null pointer changes nothing. */
NETPUBLIC_API void net_points_local_to_net(net_smart_ai_points_t *net, point_t *local, int count);

/** Copies a polygon into the host's array of 8 points, of which the unused ones are zeroed; none for a null pointer. */
NETPUBLIC_API void net_points_net_to_local(net_smart_ai_points_t *net, point_t *local, int &count);

/** Values other than 1, 2 and 3 become 0. */
NETPUBLIC_API NET_CROSSLINE_DETECT_DIRECTION_E net_direction_local_to_net(AI_TRIP_WIRE_DIRECTION direction);

/** Values other than 1, 2 and 3 become 0. */
NETPUBLIC_API AI_TRIP_WIRE_DIRECTION net_direction_net_to_local(NET_CROSSLINE_DETECT_DIRECTION_E direction);

/**
 * @return 1 when two polygons differ in their number of points, or by more than 1e-6 in one of the first 8, or when
 *         one of them has points and is null; else 0
 */
NETPUBLIC_API int net_check_points_change(point_t *a, int countA, point_t *b, int countB);

/**
 * Appends a summary of the alarms that fired to @p buf, which holds a text already (an empty one, as a rule).
 * @param buf, size the buffer and its size in bytes; the text is silently cut, and loses its last character then
 * @param alarmTypes 0x1 motion, 0x2 video loss, 0x4 input, 0x8 blind, 0x800000 visitor
 * @param aiTypes, smartAiTypes sets of alarm-type codes
 * @return 0, or -1 for a null buffer or a size of 0
 */
NETPUBLIC_API int get_alarm_str(char *buf, unsigned int size, int alarmTypes, time_section_t aiTypes,
                                time_section_t smartAiTypes);

/**
 * The protocol's word for a live stream.
 * @return a static buffer that lasts until the next call: not for two threads at once. Null for a code that is
 *         no live stream, STREAM_TYPE_SNAP among them.
 */
NETPUBLIC_API char *net_get_streanm_type_string(STREAM_TYPE_E type);

/** @return 1 for the commands that carry a stream (3, 5, 143, 298, 381), else 0. */
NETPUBLIC_API int is_stream_cmd(int cmd);

/** @return 0 when the first 32 bytes of a device name are printable ASCII without $ & * / : ; < > ? \ ` |, else -1. */
NETPUBLIC_API int net_check_dev_name(char *name);

/** @return 0 when a certificate name holds no line feed and none of " $ & ' ; < > ` |, else -1. Slashes pass. */
NETPUBLIC_API int net_check_cert_name(char *name);

/** Copies a ranged value into the host's order; neither argument may be null. @return 0. */
NETPUBLIC_API int net_int_value_to_local(net_int_value_t *net, intvalue_t *local);
/** Copies a ranged value into the protocol's order; neither argument may be null. @return 0. */
NETPUBLIC_API int local_int_value_to_net(net_int_value_t *net, intvalue_t *local);
/** Copies a ranged value into the host's order, bit by bit; neither argument may be null. @return 0. */
NETPUBLIC_API int net_float_value_to_local(net_float_value_t *net, floatvalue_t *local);
/** Copies a ranged value into the protocol's order, bit by bit; neither argument may be null. @return 0. */
NETPUBLIC_API int local_float_value_to_net(net_float_value_t *net, floatvalue_t *local);

/** @} */

#endif
