/* The smallest possible host: a camera with 4 channels that prints nothing of the library's log. */
#include <net_host.h>

#include <stdlib.h>
#include <string.h>

unsigned int modulemask = 0;
unsigned int loglevel = 0;

void *bc_malloc(unsigned int size)
{
    return malloc(size);
}

void bc_free(void *block)
{
    free(block);
}

int bc_ntoa(unsigned int address, char *text, int size)
{
    (void)address;
    if (size < 8)
        return -1;
    strcpy(text, "0.0.0.0");
    return 0;
}

unsigned long long get_tick_count(int unused)
{
    (void)unused;
    return 0;
}

time_t mktime_abs(struct tm *calendar)
{
    (void)calendar;
    return 0;
}

int Sp_get_uid(char *uid)
{
    strcpy(uid, "CONSUMER");
    return 0;
}

int Sp_get_uidkey(char *key)
{
    strcpy(key, "KEY");
    return 0;
}

int Sp_get_mac_addr(unsigned char *mac)
{
    memset(mac, 2, 6);
    return 0;
}

int Sp_get_temporary_mac_addr(unsigned char *mac)
{
    memset(mac, 4, 6);
    return 0;
}

const char *sc_get_type(void)
{
    return "IPC";
}

const char *sc_get_display_type(void)
{
    return "Consumer";
}

const char *sc_get_nvr_ap_def_country_code(void)
{
    return "";
}

int sc_get_support_uid(void)
{
    return 1;
}

int sc_get_support_wifi(void)
{
    return 0;
}

int sc_get_nvr_wifi_type(void)
{
    return 0;
}

int sc_get_solo_ipc(void)
{
    return 1;
}

int sc_get_channel_num(void)
{
    return 4;
}

int sc_get_default_alarmin_num(void)
{
    return 1;
}

int sc_get_default_alarmout_num(void)
{
    return 1;
}

int sc_get_is_wifi_kit(void)
{
    return 0;
}
