/**
 * @file net_host_standin.h
 * A stand-in for the firmware: the services of net_host.h, answered from one settable structure, so
 * that tests and tools can play any device.
 *
 * The answers are read by the services without locking: set them before other threads call the
 * library. Allocation may go on in any number of threads at once; its counts are exact.
 */
#ifndef NET_HOST_STANDIN_H
#define NET_HOST_STANDIN_H

#include <net_host.h>

/** What the services answer. The texts are borrowed: they must stay alive while they are set. */
struct net_host_answers {
    const char *type = "IPC";              /**< sc_get_type() */
    const char *display_type = "Stand-in"; /**< sc_get_display_type() */
    const char *country_code = "";         /**< sc_get_nvr_ap_def_country_code(); null is allowed. */
    const char *uid = "95270000STANDIN0";  /**< Sp_get_uid(), 31 characters at most; filled in whatever it returns. */
    const char *key = "00000000";          /**< Sp_get_uidkey(), 9 bytes at most; filled in whatever it returns. */
    unsigned char mac[6] = {0x02, 0x00, 0x00, 0x00, 0x00, 0x01};           /**< Sp_get_mac_addr() */
    unsigned char temporary_mac[6] = {0x02, 0x00, 0x00, 0x00, 0x00, 0x02}; /**< Sp_get_temporary_mac_addr() */
    int uid_result = 0;                                                    /**< What Sp_get_uid() returns. */
    int key_result = 0;                                                    /**< What Sp_get_uidkey() returns. */
    int mac_result = 0;                                                    /**< What Sp_get_mac_addr() returns. */
    int temporary_mac_result = 0; /**< What Sp_get_temporary_mac_addr() returns. */
    int support_uid = 1;          /**< sc_get_support_uid() */
    int support_wifi = 0;         /**< sc_get_support_wifi() */
    int nvr_wifi_type = 0;        /**< sc_get_nvr_wifi_type() */
    int solo_ipc = 0;             /**< sc_get_solo_ipc() */
    int wifi_kit = 0;             /**< sc_get_is_wifi_kit() */
    int channels = 16;            /**< sc_get_channel_num() */
    int alarm_inputs = 16;        /**< sc_get_default_alarmin_num() */
    int alarm_outputs = 4;        /**< sc_get_default_alarmout_num() */
    int ntoa_result = 0;          /**< Non-zero makes bc_ntoa() fail with this value. */
    bool tick_fixed = false;      /**< Let get_tick_count() answer @ref tick instead of the real time. */
    unsigned long long tick = 0;  /**< The fixed tick, milliseconds. */
    int block_fill = -1;          /**< Byte value that new blocks are filled with; -1 leaves them as they come. */

    /** Serves bc_malloc() instead of the C library. Set it and @ref release together, while no block is live. */
    void *(*allocate)(unsigned int size) = nullptr;
    /** Serves bc_free() when @ref allocate is set. */
    void (*release)(void *block) = nullptr;
};

/** What the allocator has done. */
struct net_host_blocks {
    long live;              /**< Blocks allocated and not released, ever. */
    unsigned long total;    /**< Successful allocations since net_host_reset(). */
    unsigned int last_size; /**< Size asked for by the latest allocation, bytes. */
};

/** The answers in use. */
net_host_answers &net_host();

/** Back to the default answers, no failing allocation, a total of 0, errors switched on (0x400, 0x1). */
void net_host_reset();

/** The allocator's counts. */
net_host_blocks net_host_memory();

/**
 * Lets allocations fail.
 * @param which the how-manieth allocation from now on fails: 1 is the next one, 0 none
 * @param onwards whether all later ones fail too
 */
void net_host_fail_allocation(unsigned long which, bool onwards = false);

#endif
