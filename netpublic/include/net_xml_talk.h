/**
 * @file net_xml_talk.h
 * Audio and chimes: two-way talk, automatic replies, audio files, audio settings and wireless chimes;
 * payloads that the library allocates for the host and does not read or write.
 */
#ifndef NET_XML_TALK_H
#define NET_XML_TALK_H

#include "net_types.h"

/** The audio encodings of two-way talk. */
struct net_talk_ability_t {
    int reserved[210]; /**< Not interpreted here. */
};

/** The automatic reply. */
struct net_auto_reply_t {
    int reserved[124]; /**< Not interpreted here. */
};

/** When one channel sounds its siren. */
struct net_audio_task_t {
    int channelId;     /**< The request's channel. */
    int reserved[340]; /**< Not interpreted here. */
};

/** The audio files of a device. */
struct net_audio_file_info_list_t {
    int reserved[2020]; /**< Not interpreted here. */
};

/** One audio file of a channel. */
struct net_audio_file_info_t {
    int channelId;    /**< The request's channel. */
    int reserved[62]; /**< Not interpreted here. */
};

/** The audio settings of one channel. */
struct net_audio_cfg_t {
    int channelId;    /**< The request's channel. */
    int reserved[11]; /**< Not interpreted here. */
};

/** The audio settings of the device. */
struct net_device_audio_cfg_t {
    int reserved[131]; /**< Not interpreted here. */
};

/** Noise reduction. */
struct net_ai_denoise_t {
    int reserved[3]; /**< Not interpreted here. */
};

/** A command to a chime. */
struct net_dingdong_ctrl_t {
    int reserved[6]; /**< Not interpreted here. */
};

/** The paired chimes. */
struct net_dingdong_list_t {
    int reserved[122]; /**< Not interpreted here. */
};

/** An operation on one chime. */
struct net_dingdong_dev_opt_t {
    int reserved[13]; /**< Not interpreted here. */
};

/** The settings of one chime. */
struct net_dingdong_cfg_item_t {
    int id;           /**< -1 after initialisation. */
    int reserved[26]; /**< Not interpreted here. */
};

/** The settings of all chimes. */
struct net_dingdong_cfg_t {
    net_dingdong_cfg_item_t item[10]; /**< Not interpreted here. */
};

static_assert(sizeof(net_talk_ability_t) == 840, "net_talk_ability_t");
static_assert(sizeof(net_auto_reply_t) == 496, "net_auto_reply_t");
static_assert(sizeof(net_audio_task_t) == 1364, "net_audio_task_t");
static_assert(sizeof(net_audio_file_info_list_t) == 8080, "net_audio_file_info_list_t");
static_assert(sizeof(net_audio_file_info_t) == 252, "net_audio_file_info_t");
static_assert(sizeof(net_audio_cfg_t) == 48, "net_audio_cfg_t");
static_assert(sizeof(net_device_audio_cfg_t) == 524, "net_device_audio_cfg_t");
static_assert(sizeof(net_ai_denoise_t) == 12, "net_ai_denoise_t");
static_assert(sizeof(net_dingdong_ctrl_t) == 24, "net_dingdong_ctrl_t");
static_assert(sizeof(net_dingdong_list_t) == 488, "net_dingdong_list_t");
static_assert(sizeof(net_dingdong_dev_opt_t) == 52, "net_dingdong_dev_opt_t");
static_assert(sizeof(net_dingdong_cfg_item_t) == 108, "net_dingdong_cfg_item_t");
static_assert(sizeof(net_dingdong_cfg_t) == 1080, "net_dingdong_cfg_t");

#endif
