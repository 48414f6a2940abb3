/**
 * @file net_xml_isp.h
 * Image signal processing, lamps, binocular stitching and fisheye: payloads that the library allocates
 * for the host and does not read or write.
 */
#ifndef NET_XML_ISP_H
#define NET_XML_ISP_H

#include "net_types.h"

/** The basic image settings of one channel. */
struct net_isp_base_t {
    int channelId;   /**< The request's channel. */
    int reserved[8]; /**< Not interpreted here. */
};

/** The advanced image settings of one channel. */
struct net_isp_advance_t {
    int channelId;    /**< The request's channel. */
    int reserved[83]; /**< Not interpreted here. */
};

/** The lamps of one channel. */
struct net_led_state_t {
    int channelId;   /**< The request's channel. */
    int reserved[6]; /**< Not interpreted here. */
};

/** Between which brightness values a channel takes it for day or night. */
struct net_day_night_threshold_t {
    int channelId;   /**< The request's channel. */
    int reserved[5]; /**< Not interpreted here. */
};

/** An adjustment of two lenses. */
struct net_bino_adjust_t {
    int reserved[6]; /**< Not interpreted here. */
};

/** The result of an adjustment of two lenses. */
struct net_bino_adjust_result_t {
    int reserved[6]; /**< Not interpreted here. */
};

/** The line width of the adjustment picture. */
struct net_bino_linewidth_t {
    int reserved[2]; /**< Not interpreted here. */
};

/** An adjustment of the lenses' offset. */
struct net_offset_adjust_t {
    int reserved[4]; /**< Not interpreted here. */
};

/** The result of an adjustment of the lenses' offset. */
struct net_offset_adjust_result_t {
    int reserved[3]; /**< Not interpreted here. */
};

/** How the pictures of two lenses are stitched. */
struct net_bino_stitch_cfg_t {
    int reserved[12]; /**< Not interpreted here. */
};

/** How a fisheye picture is shown. */
struct net_fish_eye_cfg_t {
    int reserved[6]; /**< Not interpreted here. */
};

static_assert(sizeof(net_isp_base_t) == 36, "net_isp_base_t");
static_assert(sizeof(net_isp_advance_t) == 336, "net_isp_advance_t");
static_assert(sizeof(net_led_state_t) == 28, "net_led_state_t");
static_assert(sizeof(net_day_night_threshold_t) == 24, "net_day_night_threshold_t");
static_assert(sizeof(net_bino_adjust_t) == 24, "net_bino_adjust_t");
static_assert(sizeof(net_bino_adjust_result_t) == 24, "net_bino_adjust_result_t");
static_assert(sizeof(net_bino_linewidth_t) == 8, "net_bino_linewidth_t");
static_assert(sizeof(net_offset_adjust_t) == 16, "net_offset_adjust_t");
static_assert(sizeof(net_offset_adjust_result_t) == 12, "net_offset_adjust_result_t");
static_assert(sizeof(net_bino_stitch_cfg_t) == 48, "net_bino_stitch_cfg_t");
static_assert(sizeof(net_fish_eye_cfg_t) == 24, "net_fish_eye_cfg_t");

#endif
