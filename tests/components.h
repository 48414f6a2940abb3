// The exported functions that read or write one record, by their forms: read(Record *, TiXmlNode *, const char *key),
// without the key, write(Record *, TiXmlElement *parent), and insert(TiXmlElement *parent, key, Value, int, int).
#ifndef NETPUBLIC_TESTS_COMPONENTS_H
#define NETPUBLIC_TESTS_COMPONENTS_H

// clang-format off
#define NETPUBLIC_COMPONENTS(X) \
    X(get_int_from_xmlnode) X(get_bool_from_xmlnode) X(get_unsignedint_from_xmlnode) X(get_int64_from_xmlnode) \
    X(get_longlong_from_xmlnode) X(get_unsignedlonglong_from_xmlnode) X(get_float_from_xmlnode) \
    X(get_time_from_xmlnode) X(get_net_int_value_from_xmlnode) X(get_net_float_value_from_xmlnode) \
    X(net_int_value_s2x) X(net_float_value_s2x) X(get_schedule_list_from_xmlnode) \
    X(insert_type_schedule_list_to_xmlnode) X(insert_schedule_list_to_xmlnode) X(_get_file_info) \
    X(get_AlarmEvent_from_xmlnode) X(get_ability_support_from_xmlnode) X(get_alarm_video_file_list_from_xmlnode) \
    X(get_alertorBell_from_xmlnode) X(get_alertorLight_from_xmlnode) X(get_area_from_xmlnode) \
    X(get_auth_mode_info_from_xmlnode) X(get_compression_info_from_xmlnode) X(get_crossline_from_xmlnode) \
    X(get_day_night_event_from_xmlnode) X(get_day_record_list_from_xmlnode) X(get_day_type_list_from_xmlnode) \
    X(get_direction_from_xmlnode) X(get_duration_from_xmlnode) X(get_duration_item_from_xmlnode) \
    X(get_duration_list_from_xmlnode) X(get_duration_times_from_xmlnode) X(get_encodeTable_from_xmlnode) \
    X(get_file_header_from_xmlnode) X(get_floodlight_schedule_from_xmlnode) \
    X(get_floodlight_schedule_item_from_xmlnode) X(get_handleException_from_xmlnode) X(get_intrusion_from_xmlnode) \
    X(get_iot_support_from_xmlnode) X(get_ipc_version_from_xmlnode) X(get_legacy_from_xmlnode) \
    X(get_lightsens_threshold_from_xmlnode) X(get_loitering_from_xmlnode) X(get_loss_from_xmlnode) \
    X(get_md_time_block_list_from_xmlnode) X(get_night_multi_brightness_from_xmlnode) X(get_online_user_from_xmlnode) \
    X(get_op_from_xmlnode) X(get_recordTimeList_from_xmlnode) X(get_resolution_from_xmlnode) \
    X(get_schedule_val_from_xmlnode) X(get_scope_from_xmlnode) X(get_sensitivity_info_list_from_xmlnode) \
    X(get_sensitivity_new_info_list_from_xmlnode) X(get_sensitivity_new_info_x2s) \
    X(get_sensitivity_priority_list_from_xmlnode) X(get_shared_user_from_xmlnode) X(get_shelterList_from_xmlnode) \
    X(get_shelter_from_xmlnode) X(get_smartPlug_from_xmlnode) X(get_smart_ai_from_xmlnode) \
    X(get_smart_ai_point_from_xmlnode) X(get_smart_ai_point_list_from_xmlnode) X(get_smartai_sublist_from_xmlnode) \
    X(get_snaptlp_ctrl_from_xmlnode) X(get_streamInfo_from_xmlnode) X(get_user_from_xmlnode) X(net_ptz_param_s2x) \
    X(net_smart_ai_points_s2x)
#define NETPUBLIC_INSERTERS(X) \
    X(InsertChildToXmlElement_int) X(InsertChildToXmlElement_unsignedint) X(InsertChildToXmlElement_int64) \
    X(InsertChildToXmlElement_unsignedlonglong) X(InsertChildToXmlElement_float)
// clang-format on

#endif
