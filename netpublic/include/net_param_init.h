/**
 * @file net_param_init.h
 * The initialisers: one for every message, to be called before the message's parser or writer.
 *
 * An initialiser writes `inited` 1, `status` 0, the message's id and the size of its payload structure,
 * allocates the payload through net_malloc(), zeroes it and copies what the message needs of the request.
 * The envelope may hold anything before; a payload that it owned is lost. `reserved0` and `reserved1` are
 * left alone except where it says so. Neither argument is checked for null except where it says so; @p ext
 * may be null only where nothing of the request is copied. What is copied is not checked either.
 *
 * All return 0, or -1 without memory: the envelope is then stamped and its payload null.
 */
#ifndef NET_PARAM_INIT_H
#define NET_PARAM_INIT_H

#include "net_types.h"

/** @name Login and encryption
 * @{ */
/** Message 5, payload net_encrypt_v20_t. Clears `reserved1`. */
NETPUBLIC_API int net_param_encrypt_init(net_param_t *param, net_ext_t *ext);
/** Message 6, payload net_login_err_info_v20_t. Clears `reserved1`. */
NETPUBLIC_API int net_param_login_err_info_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Image signal processing
 * @{ */
/** Message 201, payload net_isp_base_t. With the request's channel. */
NETPUBLIC_API int net_param_isp_base_init(net_param_t *param, net_ext_t *ext);
/** Message 201, payload net_isp_base_t. With the request's channel. */
NETPUBLIC_API int nets_param_isp_base_init(net_param_t *param, net_ext_t *ext);
/** Message 202, payload net_isp_advance_t. With the request's channel. */
NETPUBLIC_API int ntes_param_isp_advance_init(net_param_t *param, net_ext_t *ext);
/** Message 203, payload net_led_state_t. With the request's channel. */
NETPUBLIC_API int nets_param_led_state_init(net_param_t *param, net_ext_t *ext);
/** Message 204, payload net_day_night_threshold_t. With the request's channel. */
NETPUBLIC_API int nets_param_day_nignt_threshold_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name System time and general
 * @{ */
/**
 * Message 301, payload net_dst_cfg_v20_t. The payload is not cleared: clear or fill all of it before it is written,
 * or what the allocator's block held before goes into the reply.
 */
NETPUBLIC_API int nets_param_dst_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 601, payload net_sys_general_v20_t. */
NETPUBLIC_API int nets_param_sys_general_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Versions
 * @{ */
/** Message 701, payload net_version_v20_t. */
NETPUBLIC_API int nets_param_version_init(net_param_t *param, net_ext_t *ext);
/** Message 702, payload net_chn_version_v20_t. With the request's channel. */
NETPUBLIC_API int nets_param_chn_version_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Network basics and certificates
 * @{ */
/** Message 801, payload net_ethernet_v20_t. */
NETPUBLIC_API int nets_param_ethernet_init(net_param_t *param, net_ext_t *ext);
/** Message 807, payload net_uid_info_t. */
NETPUBLIC_API int nets_param_uid_info_init(net_param_t *param, net_ext_t *ext);
/** Message 809, payload net_dhcp_v20_t. */
NETPUBLIC_API int nets_param_dhcp_init(net_param_t *param, net_ext_t *ext);
/** Message 810, payload net_autodns_v20_t. */
NETPUBLIC_API int nets_param_autodns_init(net_param_t *param, net_ext_t *ext);
/** Message 814, payload net_dns_info_v20_t. */
NETPUBLIC_API int nets_param_dns_info_init(net_param_t *param, net_ext_t *ext);
/** Message 818, payload net_cert_info_t. A null envelope is -1. */
NETPUBLIC_API int net_param_cert_info_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Recording
 * @{ */
/** Message 1101, payload net_record_schedule_v20_t. With the request's channel. */
NETPUBLIC_API int nets_param_rec_schedule_init(net_param_t *param, net_ext_t *ext);
/** Message 1201, payload net_record_cfg_v20_t. With the request's channel. */
NETPUBLIC_API int nets_param_rec_init(net_param_t *param, net_ext_t *ext);
/** Message 1203, payload net_delay_rec_stat_t. */
NETPUBLIC_API int net_param_delay_rec_stat_init(net_param_t *param, net_ext_t *ext);
/** Message 1204, payload net_longrun_mode_cfg_t. With the request's channel unless that is negative. */
NETPUBLIC_API int net_param_longrun_mode_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 1205, payload net_power_mode_t. */
NETPUBLIC_API int net_param_power_mode_init(net_param_t *param, net_ext_t *ext);
/** Message 1206, payload net_battery_flag_t. */
NETPUBLIC_API int net_param_battery_flag_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Abilities and users
 * @{ */
/** Message 1301, payload net_ability_v20_t. With a flag for each section whose name occurs in the request's `token`,
 * case aside, anywhere: "audio" sets the flag of "IO" too. */
NETPUBLIC_API int nets_param_ability_init(net_param_t *param, net_ext_t *ext);
/** Message 1302, payload net_device_ability_support_v20_t. */
NETPUBLIC_API int nets_param_ability_support_init(net_param_t *param, net_ext_t *ext);
/** Message 1303, payload tag_net_userinfo_all__v20_t. 20 accounts are allocated, `dataSize` is the size of one. The
 * first one gets the request's `userName`, without a terminator when that has 32 characters. */
NETPUBLIC_API int nets_param_user_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 1304, payload net_auth_info_v20_t. */
NETPUBLIC_API int net_param_auth_info_init(net_param_t *param, net_ext_t *ext);
/** Message 1305, payload net_shared_user_info_t. One record with the first 31 characters of the request's `userName`.
 */
NETPUBLIC_API int net_param_shared_user_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 1305, payload net_shared_user_info_t. 20 records are allocated, `dataSize` is the size of one. */
NETPUBLIC_API int net_param_shared_user_list_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Files
 * @{ */
/** Message 1401. Stamps `inited`, `paramId` and `status` only: no size, no payload. */
NETPUBLIC_API int nets_param_file_info_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Alarm, scenes and linkage
 * @{ */
/** Message 1501, payload net_alarm_report_t. With the request's channel. */
NETPUBLIC_API int net_param_alarm_init(net_param_t *param, net_ext_t *ext);
/** Message 1502, payload net_day_night_report_t. */
NETPUBLIC_API int net_param_day_night_init(net_param_t *param, net_ext_t *ext);
/** Message 1503, payload net_scene_mode_cfg_t. */
NETPUBLIC_API int net_param_scene_mode_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 1504, payload net_scene_list_id_t. */
NETPUBLIC_API int net_param_scene_list_id_init(net_param_t *param, net_ext_t *ext);
/** Message 1505, payload net_scene_t. */
NETPUBLIC_API int net_param_scene_init(net_param_t *param, net_ext_t *ext);
/** Message 1506, payload net_linkage_list_t. */
NETPUBLIC_API int net_param_linkage_list_init(net_param_t *param, net_ext_t *ext);
/** Message 1507, payload net_linkage_add_t. */
NETPUBLIC_API int net_param_linkage_add_init(net_param_t *param, net_ext_t *ext);
/** Message 1508, payload net_linkage_del_t. */
NETPUBLIC_API int net_param_linkage_del_init(net_param_t *param, net_ext_t *ext);
/** Message 1509, payload net_linkage_update_t. */
NETPUBLIC_API int net_param_linkage_update_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Device information, OSD, motion, privacy masks
 * @{ */
/** Message 1801, payload net_device_info_v20_t. Clears `reserved1`. */
NETPUBLIC_API int net_param_dev_info_init(net_param_t *param, net_ext_t *ext);
/** Message 1901, payload net_osd_chn_v20_t. With the request's channel. */
NETPUBLIC_API int nets_param_osd_chn_init(net_param_t *param, net_ext_t *ext);
/** Message 1902, payload net_osd_date_v20_t. With the request's channel. */
NETPUBLIC_API int nets_param_osd_date_init(net_param_t *param, net_ext_t *ext);
/** Message 1903, payload tag_net_pic_motion_cfg_v20_t. With the request's channel. */
NETPUBLIC_API int nets_param_md_init(net_param_t *param, net_ext_t *ext);
/** Message 1906, payload tag_net_shelter_cfg_v20_t. With the request's channel; `maxNum` is -1. */
NETPUBLIC_API int nets_param_pic_shelter_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name FTP, manual record, maintenance, update, replay, encoder list, e-mail
 * @{ */
/** Message 2001, payload net_ftp_cfg_t. With the request's channel. */
NETPUBLIC_API int nets_param_ftp_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 2101, payload net_ftp_task_t. With the request's channel. */
NETPUBLIC_API int nets_param_ftp_task_init(net_param_t *param, net_ext_t *ext);
/** Message 2301, payload net_manual_rec_t. With the request's channel. */
NETPUBLIC_API int net_param_manual_rec_init(net_param_t *param, net_ext_t *ext);
/** Message 2402, payload net_aging_test_t. */
NETPUBLIC_API int nets_param_aging_test_init(net_param_t *param, net_ext_t *ext);
/** Message 2412, payload net_sleep_state_t. */
NETPUBLIC_API int net_param_sleep_state_init(net_param_t *param, net_ext_t *ext);
/** Message 2413, payload net_sleep_status_t. */
NETPUBLIC_API int net_param_sleep_status_init(net_param_t *param, net_ext_t *ext);
/** Message 2503, payload net_update_cfg_t. */
NETPUBLIC_API int nets_param_update_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 2702, payload net_replay_header_v20_t. */
NETPUBLIC_API int net_param_replay_header_init(net_param_t *param, net_ext_t *ext);
/** Message 2801, payload net_enc_list_v20_t. Clears `reserved1`. */
NETPUBLIC_API int net_param_enc_list_init(net_param_t *param, net_ext_t *ext);
/** Message 2901, payload net_email_cfg_t. With the request's channel. */
NETPUBLIC_API int nets_param_email_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 2904, payload net_email_task_t. With the request's channel. */
NETPUBLIC_API int nets_param_email_task_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Disks and performance
 * @{ */
/** Message 3301, payload net_hdd_info_v20_t. All disk numbers are -1. */
NETPUBLIC_API int nets_param_hdd_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 3401, payload net_hdd_init_v20_t. */
NETPUBLIC_API int nets_param_init_hdd_init(net_param_t *param, net_ext_t *ext);
/** Message 3601, payload net_performance_v20_t. */
NETPUBLIC_API int nets_param_performance_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Wi-Fi and heartbeat
 * @{ */
/** Message 4101, payload net_wifi_signal_t. Clears `reserved1`. */
NETPUBLIC_API int net_param_wifi_signal_init(net_param_t *param, net_ext_t *ext);
/** Message 4201, payload net_wifi_cfg_t. */
NETPUBLIC_API int nets_param_wifi_init(net_param_t *param, net_ext_t *ext);
/** Message 4202, payload net_scan_ap_t. */
NETPUBLIC_API int nets_param_scan_ap_init(net_param_t *param, net_ext_t *ext);
/** Message 4206, payload net_wifi_sdb_t. */
NETPUBLIC_API int nets_param_wifi_sdb_init(net_param_t *param, net_ext_t *ext);
/** Message 4207, payload net_expand_wifi_t. */
NETPUBLIC_API int nets_param_expand_wifi_init(net_param_t *param, net_ext_t *ext);
/** Message 4208, payload net_wlan_sta_info_t. */
NETPUBLIC_API int nets_param_wlan_sta_info_init(net_param_t *param, net_ext_t *ext);
/** Message 4401, payload net_heart_beat_t. */
NETPUBLIC_API int net_param_heart_beat_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Pan-tilt-zoom
 * @{ */
/** Message 4501, payload net_ptz_serial_v20_t. */
NETPUBLIC_API int net_param_ptz_init(net_param_t *param, net_ext_t *ext);
/** Message 4601, payload net_ptz_info_v20_t. */
NETPUBLIC_API int nets_param_ptz_info_init(net_param_t *param, net_ext_t *ext);
/** Message 4603, payload net_ptz_preset_list_v20_t. With the request's channel. */
NETPUBLIC_API int net_param_ptz_preset_init(net_param_t *param, net_ext_t *ext);
/** Message 4604, payload net_ptz_cruise_list_v20_t. The first key position gets the request's `channelId` and
 * `patrolId`. */
NETPUBLIC_API int nets_param_ptz_cruise_init(net_param_t *param, net_ext_t *ext);
/** Message 4606, payload net_ptz_zoom_focus_info_v20_t. With the request's channel. */
NETPUBLIC_API int nets_param_ptz_zoom_focus_info_init(net_param_t *param, net_ext_t *ext);
/** Message 4607, payload net_ptz_zoom_focus_start_v20_t. With the request's channel. */
NETPUBLIC_API int nets_param_ptz_zoom_focus_start_init(net_param_t *param, net_ext_t *ext);
/** Message 4608, payload net_ptz_guard_v20_t. */
NETPUBLIC_API int nets_param_ptz_guard_init(net_param_t *param, net_ext_t *ext);
/** Message 4609, payload net_auto_test_v20_t. With the request's channel. */
NETPUBLIC_API int nets_param_auto_test_init(net_param_t *param, net_ext_t *ext);
/** Message 4610, payload net_zf_backlash_v20_t. */
NETPUBLIC_API int nets_param_zf_backlash_init(net_param_t *param, net_ext_t *ext);
/** Message 4611, payload net_ptz_curpos_v20_t. */
NETPUBLIC_API int net_param_ptz_curpos_init(net_param_t *param, net_ext_t *ext);
/** Message 4612, payload net_ptz_3Dlocation_v20_t. With the request's channel. */
NETPUBLIC_API int net_param_ptz_3Dlocation_init(net_param_t *param, net_ext_t *ext);
/** Message 4613, payload net_af_algorithm_v20_t. The channel stays 0. */
NETPUBLIC_API int net_param_af_algorithm_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Encoder
 * @{ */
/** Message 4701, payload net_enc_cfg_v20_t. With the request's channel. */
NETPUBLIC_API int nets_param_enc_init(net_param_t *param, net_ext_t *ext);
/** Message 4702, payload net_crop_cfg_t. With the request's channel. */
NETPUBLIC_API int nets_param_crop_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Snapshot, binocular, day record
 * @{ */
/** Message 5101, payload net_snap_v20_t. With the request's channel. */
NETPUBLIC_API int net_param_snap_init(net_param_t *param, net_ext_t *ext);
/** Message 5102, payload net_bino_adjust_t. */
NETPUBLIC_API int nets_param_bino_adjust_init(net_param_t *param, net_ext_t *ext);
/** Message 5103, payload net_bino_adjust_result_t. */
NETPUBLIC_API int nets_param_bino_adjust_result_init(net_param_t *param, net_ext_t *ext);
/** Message 5104, payload net_bino_linewidth_t. */
NETPUBLIC_API int nets_param_bino_linewidth_init(net_param_t *param, net_ext_t *ext);
/** Message 5109, payload net_offset_adjust_t. */
NETPUBLIC_API int nets_param_offset_adjust_init(net_param_t *param, net_ext_t *ext);
/** Message 5110, payload net_offset_adjust_result_t. */
NETPUBLIC_API int nets_param_offset_adjust_result_init(net_param_t *param, net_ext_t *ext);
/** Message 5113, payload net_bino_stitch_cfg_t. */
NETPUBLIC_API int net_param_bino_stitch_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 5120, payload net_snaptlps_t. With the request's channel. */
NETPUBLIC_API int net_param_snaptlps_init(net_param_t *param, net_ext_t *ext);
/** Message 5701, payload tag_net_recfile_schedule_v20_t. */
NETPUBLIC_API int net_param_day_record_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Push, support, alarm video, talk, audio task, device management
 * @{ */
/** Message 6104, payload net_push_client_id_t. */
NETPUBLIC_API int net_param_push_client_id_init(net_param_t *param, net_ext_t *ext);
/** Message 6105, payload net_create_push_listener_t. */
NETPUBLIC_API int net_param_create_push_listener_init(net_param_t *param, net_ext_t *ext);
/** Message 6106, payload net_push_client_state_t. */
NETPUBLIC_API int net_param_push_client_state_init(net_param_t *param, net_ext_t *ext);
/** Message 6201, payload tag_net_support_v20_t. With the request's `chnType`; all channel indexes are -1. */
NETPUBLIC_API int nets_param_support_init(net_param_t *param, net_ext_t *ext);
/** Message 6251, payload net_find_alarm_video_t. With the request's channel; `destination` is -1. */
NETPUBLIC_API int net_find_alarm_video_init(net_param_t *param, net_ext_t *ext);
/** Message 6252, payload tag_net_alarm_video_v20_t. With the request's channel. */
NETPUBLIC_API int net_alarm_video_info_init(net_param_t *param, net_ext_t *ext);
/** Message 6301, payload net_talk_ability_t. */
NETPUBLIC_API int nets_param_talk_ability_init(net_param_t *param, net_ext_t *ext);
/** Message 6303, payload net_auto_reply_t. */
NETPUBLIC_API int nets_param_auto_reply_init(net_param_t *param, net_ext_t *ext);
/** Message 6501, payload net_push_task_t. With the request's channel. */
NETPUBLIC_API int nets_param_push_task_init(net_param_t *param, net_ext_t *ext);
/** Message 6601, payload net_audio_task_t. With the request's channel. */
NETPUBLIC_API int nets_param_audio_task_init(net_param_t *param, net_ext_t *ext);
/** Message 6642, payload net_dev_manage_t. With the request's `channelId` and `chnType`. */
NETPUBLIC_API int net_param_dev_manage_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Alarm area, snapshot time-lapse switch, AF learning
 * @{ */
/** Message 6700, payload net_alarm_area_t. */
NETPUBLIC_API int nets_param_alarm_area_init(net_param_t *param, net_ext_t *ext);
/** Message 6702, payload net_snaptlps_enable_cfg_t. With the request's channel unless that is negative. */
NETPUBLIC_API int net_param_snaptlps_enable_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 6801, payload net_af_learn_result_t. */
NETPUBLIC_API int nets_param_af_learn_result_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Cloud, RF, batteries, audio files, floodlight, AI, chime
 * @{ */
/** Message 6909, payload net_third_cloud_t. With the request's channel unless that is negative. */
NETPUBLIC_API int net_param_third_cloud_init(net_param_t *param, net_ext_t *ext);
/** Message 6910, payload net_third_cloud_task_t. With the request's channel unless that is negative. */
NETPUBLIC_API int net_param_third_cloud_task_init(net_param_t *param, net_ext_t *ext);
/** Message 6921, payload net_rf_t. With the request's `rfId`. */
NETPUBLIC_API int nets_param_rf_init(net_param_t *param, net_ext_t *ext);
/** Message 6931, payload net_battery_t. With the request's channel. */
NETPUBLIC_API int nets_param_battery_init(net_param_t *param, net_ext_t *ext);
/** Message 6932, payload net_battery_list_t. */
NETPUBLIC_API int net_param_battery_list_init(net_param_t *param, net_ext_t *ext);
/** Message 6941, payload net_4gmodule_info_t. */
NETPUBLIC_API int nets_param_4gmodule_info_init(net_param_t *param, net_ext_t *ext);
/** Message 6970, payload net_audio_file_info_list_t. */
NETPUBLIC_API int nets_param_audio_file_info_list_init(net_param_t *param, net_ext_t *ext);
/** Message 6971, payload net_audio_file_info_t. With the request's channel. */
NETPUBLIC_API int nets_param_audio_file_info_init(net_param_t *param, net_ext_t *ext);
/** Message 6973, payload net_audio_cfg_t. With the request's channel. */
NETPUBLIC_API int nets_param_audio_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 6976, payload net_floodlight_status_t. With the request's channel. */
NETPUBLIC_API int nets_param_floodlight_status_init(net_param_t *param, net_ext_t *ext);
/** Message 6976, payload net_floodlight_status_report_t. */
NETPUBLIC_API int nets_param_floodlight_status_report_init(net_param_t *param, net_ext_t *ext);
/** Message 6977, payload net_floodlight_task_t. With the request's channel. */
NETPUBLIC_API int nets_param_floodlight_task_init(net_param_t *param, net_ext_t *ext);
/** Message 6978, payload net_ai_cfg_t. With the request's channel. */
NETPUBLIC_API int nets_param_ai_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 6979, payload net_ai_area_detect_t. With the request's channel. */
NETPUBLIC_API int nets_param_ai_area_detect_init(net_param_t *param, net_ext_t *ext);
/** Message 6981, payload net_ai_track_limit_t. With the request's channel. */
NETPUBLIC_API int net_param_ai_track_limit_init(net_param_t *param, net_ext_t *ext);
/** Message 6982, payload net_ai_track_task_t. */
NETPUBLIC_API int net_param_ai_track_task_init(net_param_t *param, net_ext_t *ext);
/** Message 6983, payload net_ai_denoise_t. */
NETPUBLIC_API int net_param_ai_denoise_init(net_param_t *param, net_ext_t *ext);
/** Message 6984, payload net_dingdong_ctrl_t. */
NETPUBLIC_API int net_param_dingdong_ctrl_init(net_param_t *param, net_ext_t *ext);
/** Message 6985, payload net_dingdong_list_t. */
NETPUBLIC_API int net_param_dingdong_list_init(net_param_t *param, net_ext_t *ext);
/** Message 6986, payload net_dingdong_dev_opt_t. */
NETPUBLIC_API int net_param_dingdong_dev_opt_init(net_param_t *param, net_ext_t *ext);
/** Message 6987, payload net_dingdong_cfg_t. All chime ids are -1. */
NETPUBLIC_API int net_param_dingdong_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 6988, payload net_device_audio_cfg_t. */
NETPUBLIC_API int net_param_device_audio_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 6989, payload net_ai_snaptlps_t. */
NETPUBLIC_API int net_param_ai_snaptlps_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Time-lapse, doorbell, images, fisheye, hub, RF pairing, export
 * @{ */
/** Message 7000, payload net_timelapse_cfg_t. With the request's channel. */
NETPUBLIC_API int nets_param_timelapse_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 7008, payload net_doorbell_test_t. */
NETPUBLIC_API int nets_param_doorbell_test_init(net_param_t *param, net_ext_t *ext);
/** Message 7202, payload net_image_file_info_t. With the request's channel. */
NETPUBLIC_API int net_param_image_file_info_init(net_param_t *param, net_ext_t *ext);
/** Message 7401, payload net_fish_eye_cfg_t. A null envelope is -1. */
NETPUBLIC_API int net_param_fish_eye_cfg_init(net_param_t *param, net_ext_t *ext);
/** Message 7501, payload net_homebase_wakeup_task_t. */
NETPUBLIC_API int net_param_homebase_wakeup_task_init(net_param_t *param, net_ext_t *ext);
/** Message 7607, payload net_fsk_rf_pair_t. */
NETPUBLIC_API int net_param_fsk_rf_pair_init(net_param_t *param, net_ext_t *ext);
/** Message 7615, payload net_export_video_inspection_t. */
NETPUBLIC_API int net_param_export_video_inspection_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Smart AI rules
 * @{ */
/** Message 8002, payload net_crossline_detect_list_t. With the request's channel unless that is negative. */
NETPUBLIC_API int net_param_smart_ai_crossline_detect_init(net_param_t *param, net_ext_t *ext);
/** Message 8003, payload net_intrusion_detect_list_t. With the request's channel unless that is negative. */
NETPUBLIC_API int net_param_smart_ai_intrusion_detect_init(net_param_t *param, net_ext_t *ext);
/** Message 8004, payload net_loitering_detect_list_t. With the request's channel unless that is negative. */
NETPUBLIC_API int net_param_smart_ai_loitering_detect_init(net_param_t *param, net_ext_t *ext);
/** Message 8005, payload net_legacy_detect_list_t. With the request's channel unless that is negative. */
NETPUBLIC_API int net_param_smart_ai_legacy_detect_init(net_param_t *param, net_ext_t *ext);
/** Message 8006, payload net_loss_detect_list_t. With the request's channel unless that is negative. */
NETPUBLIC_API int net_param_smart_ai_loss_detect_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Configuration change
 * @{ */
/** Message 9000, payload net_cfg_modify_t. */
NETPUBLIC_API int net_param_cfg_modify_init(net_param_t *param, net_ext_t *ext);

/** @} */

/** @name Messages without anything to initialise
 * They leave the envelope alone and return 0, so that the host can call an initialiser for every message.
 * @{ */
/** Does nothing. @return 0 */
NETPUBLIC_API int nets_param_fty_result_init(net_param_t *param, net_ext_t *ext);
NETPUBLIC_API int net_param_fty_ir_cut_init(net_param_t *param, net_ext_t *ext);
NETPUBLIC_API int nets_param_fty_range_init(net_param_t *param, net_ext_t *ext);
NETPUBLIC_API int nets_param_fty_peripheral_image_check_stat_init(net_param_t *param, net_ext_t *ext);
NETPUBLIC_API int nets_param_fty_peripheral_body_code_init(net_param_t *param, net_ext_t *ext);
NETPUBLIC_API int net_param_large_battery_init(net_param_t *param, net_ext_t *ext);
/** @} */

#endif
