/**
 * @file net_host.h
 * What the library asks of its host. The firmware supplies every symbol of this file; a build
 * without a firmware links the stand-in netpublic::host instead.
 *
 * Every function may be called from any thread that calls into the library.
 */
#ifndef NET_HOST_H
#define NET_HOST_H

#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Bit set of the modules whose log lines are printed; this library's bit is 0x400. */
extern unsigned int modulemask;
/** Bit set of the levels that are printed: 1 errors, 4 and 8 traces. */
extern unsigned int loglevel;

/** Allocates @p size bytes. @return the block, aligned as malloc() does and owned by the caller, or null. */
void *bc_malloc(unsigned int size);
/** Releases a block of bc_malloc(). */
void bc_free(void *block);

/**
 * Writes an IPv4 address as dotted text.
 * @param address in network byte order
 * @param text, size the buffer and its size in bytes
 * @return 0 on success
 */
int bc_ntoa(unsigned int address, char *text, int size);

/** @return milliseconds since some fixed point; @p unused is 0. */
unsigned long long get_tick_count(int unused);
/** @return the seconds since the epoch that @p calendar, a local time with calendar year and month, names. */
time_t mktime_abs(struct tm *calendar);

/** Fills @p uid (32 bytes) with the device's unique id. @return 0 on success. */
int Sp_get_uid(char *uid);
/** Fills @p key (9 bytes or more) with the device's key. @return 0 on success. */
int Sp_get_uidkey(char *key);
/** Fills the 6 bytes of @p mac with the device's hardware address. @return 0 on success. */
int Sp_get_mac_addr(unsigned char *mac);
/** Fills the 6 bytes of @p mac with a provisional hardware address. @return 0 on success. */
int Sp_get_temporary_mac_addr(unsigned char *mac);

/** @return the product's type text, which holds "NVR", "IPC" or the like; never null. */
const char *sc_get_type(void);
/** @return the model text that is shown to people; never null. */
const char *sc_get_display_type(void);
/** @return the country code configured for the access point; null or empty when none is. */
const char *sc_get_nvr_ap_def_country_code(void);
/** @return 1 when the device has a uid. */
int sc_get_support_uid(void);
/** @return non-zero when a camera has Wi-Fi. */
int sc_get_support_wifi(void);
/** @return non-zero when a recorder has Wi-Fi. */
int sc_get_nvr_wifi_type(void);
/** @return non-zero for a stand-alone camera. */
int sc_get_solo_ipc(void);
/** @return the number of video channels. */
int sc_get_channel_num(void);
/** @return the number of alarm inputs. */
int sc_get_default_alarmin_num(void);
/** @return the number of alarm outputs. */
int sc_get_default_alarmout_num(void);
/** @return non-zero for a Wi-Fi kit. The library itself does not ask. */
int sc_get_is_wifi_kit(void);

#ifdef __cplusplus
}
#endif

#endif
