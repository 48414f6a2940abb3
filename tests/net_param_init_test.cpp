// Every initialiser against a table of its own: id, size, what it copies, what it logs.
#include "support.h"

#include <catalogue.h>
#include <net_public.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

namespace {

using test::log_of;

constexpr char file_info[] = "init param file info failed\n";
constexpr char silent[] = "";

// What the payload holds afterwards, besides zeroes.
enum Content {
    nothing,
    channel,
    valid_channel, // 0 when the channel is negative
    garbage,       // as it was allocated
    name,
    list, // 20 records
    name_in_list,
    patrol,
    channel_type,
    rf,
    shelter,
    disks,
    support,
    destination,
    chimes,
};

struct Row {
    const char *name;
    test::Init init;
    int id;
    unsigned int size;
    Content content;
    const char *failure;
};

// clang-format off
#define ROW(function, id, size, content, failure) {#function, function, id, size, content, failure}

const Row rows[] = {
    ROW(net_param_encrypt_init, 5, 36, nothing, silent),
    ROW(net_param_login_err_info_init, 6, 8, nothing, silent),
    ROW(net_param_isp_base_init, 201, 36, channel, file_info),
    ROW(nets_param_isp_base_init, 201, 36, channel, file_info),
    ROW(ntes_param_isp_advance_init, 202, 336, channel, file_info),
    ROW(nets_param_led_state_init, 203, 28, channel, file_info),
    ROW(nets_param_day_nignt_threshold_init, 204, 24, channel, file_info),
    ROW(nets_param_dst_cfg_init, 301, 64, garbage, file_info),
    ROW(nets_param_sys_general_init, 601, 92, nothing, file_info),
    ROW(nets_param_version_init, 701, 3696, nothing, file_info),
    ROW(nets_param_chn_version_init, 702, 3700, channel, file_info),
    ROW(nets_param_ethernet_init, 801, 512, nothing, silent),
    ROW(nets_param_uid_info_init, 807, 128, nothing, file_info),
    ROW(nets_param_dhcp_init, 809, 4, nothing, silent),
    ROW(nets_param_autodns_init, 810, 4, nothing, silent),
    ROW(nets_param_dns_info_init, 814, 256, nothing, silent),
    ROW(net_param_cert_info_init, 818, 82440, nothing, file_info),
    ROW(nets_param_rec_schedule_init, 1101, 1368, channel, file_info),
    ROW(nets_param_rec_init, 1201, 296, channel, file_info),
    ROW(net_param_delay_rec_stat_init, 1203, 4, nothing, "init param delay rec stat failed\n"),
    ROW(net_param_longrun_mode_cfg_init, 1204, 1048, valid_channel, silent),
    ROW(net_param_power_mode_init, 1205, 304, nothing, silent),
    ROW(net_param_battery_flag_init, 1206, 4, nothing, "init param battery flag failed\n"),
    ROW(nets_param_ability_init, 1301, 6192, nothing, silent),
    ROW(nets_param_ability_support_init, 1302, 84, nothing, file_info),
    ROW(nets_param_user_cfg_init, 1303, 96, name_in_list, file_info),
    ROW(net_param_auth_info_init, 1304, 64, nothing, "init param auth info failed\n"),
    ROW(net_param_shared_user_cfg_init, 1305, 88, name, "init param shared user cfg failed\n"),
    ROW(net_param_shared_user_list_init, 1305, 88, list, "init param shared user cfg failed\n"),
    ROW(net_param_alarm_init, 1501, 224, channel, file_info),
    ROW(net_param_day_night_init, 1502, 16, nothing, file_info),
    ROW(net_param_scene_mode_cfg_init, 1503, 8, nothing, "init param scene mode failed\n"),
    ROW(net_param_scene_list_id_init, 1504, 24, nothing, "init param scene list id failed\n"),
    ROW(net_param_scene_init, 1505, 464, nothing, "init param scene failed\n"),
    ROW(net_param_linkage_list_init, 1506, 6504, nothing, "init param linkage list failed\n"),
    ROW(net_param_linkage_add_init, 1507, 4164, nothing, "init param linkage add failed\n"),
    ROW(net_param_linkage_del_init, 1508, 68, nothing, "init param linkage del failed\n"),
    ROW(net_param_linkage_update_init, 1509, 4164, nothing, "init param linkage update failed\n"),
    ROW(net_param_dev_info_init, 1801, 1020, nothing, silent),
    ROW(nets_param_osd_chn_init, 1901, 88, channel, file_info),
    ROW(nets_param_osd_date_init, 1902, 28, channel, file_info),
    ROW(nets_param_md_init, 1903, 17056, channel, silent),
    ROW(nets_param_pic_shelter_init, 1906, 244, shelter, file_info),
    ROW(nets_param_ftp_cfg_init, 2001, 1220, channel, file_info),
    ROW(nets_param_ftp_task_init, 2101, 1364, channel, file_info),
    ROW(net_param_manual_rec_init, 2301, 12, channel, "init param manual rec failed\n"),
    ROW(nets_param_aging_test_init, 2402, 140, nothing, file_info),
    ROW(net_param_sleep_state_init, 2412, 52, nothing, "init param sleep state failed\n"),
    ROW(net_param_sleep_status_init, 2413, 4, nothing, "init param sleep status failed\n"),
    ROW(nets_param_update_cfg_init, 2503, 4, nothing, file_info),
    ROW(net_param_replay_header_init, 2702, 44, nothing, "init param file header failed\n"),
    ROW(net_param_enc_list_init, 2801, 10240, nothing, silent),
    ROW(nets_param_email_cfg_init, 2901, 1468, channel, file_info),
    ROW(nets_param_email_task_init, 2904, 1364, channel, file_info),
    ROW(nets_param_hdd_cfg_init, 3301, 448, disks, file_info),
    ROW(nets_param_init_hdd_init, 3401, 36, nothing, file_info),
    ROW(nets_param_performance_init, 3601, 12, nothing, file_info),
    ROW(net_param_wifi_signal_init, 4101, 4, nothing, silent),
    ROW(nets_param_wifi_init, 4201, 36692, nothing, file_info),
    ROW(nets_param_scan_ap_init, 4202, 35332, nothing, file_info),
    ROW(nets_param_wifi_sdb_init, 4206, 8200, nothing, file_info),
    ROW(nets_param_expand_wifi_init, 4207, 2476, nothing, file_info),
    ROW(nets_param_wlan_sta_info_init, 4208, 6664, nothing, file_info),
    ROW(net_param_heart_beat_init, 4401, 12, nothing, file_info),
    ROW(net_param_ptz_init, 4501, 800, nothing, file_info),
    ROW(nets_param_ptz_info_init, 4601, 32, nothing, file_info),
    ROW(net_param_ptz_preset_init, 4603, 21504, channel, file_info),
    ROW(nets_param_ptz_cruise_init, 4604, 3712, patrol, file_info),
    ROW(nets_param_ptz_zoom_focus_info_init, 4606, 44, channel, file_info),
    ROW(nets_param_ptz_zoom_focus_start_init, 4607, 12, channel, file_info),
    ROW(nets_param_ptz_guard_init, 4608, 56, nothing, silent),
    ROW(nets_param_auto_test_init, 4609, 12, channel, file_info),
    ROW(nets_param_zf_backlash_init, 4610, 8, nothing, file_info),
    ROW(net_param_ptz_curpos_init, 4611, 8, nothing, "init param ptz curpos failed\n"),
    ROW(net_param_ptz_3Dlocation_init, 4612, 28, channel, "init param ptz 3Dlocation failed\n"),
    ROW(net_param_af_algorithm_init, 4613, 8, nothing, "init param af algorithm failed\n"),
    ROW(nets_param_enc_init, 4701, 564, channel, silent),
    ROW(nets_param_crop_init, 4702, 40, channel, file_info),
    ROW(net_param_snap_init, 5101, 192, channel, file_info),
    ROW(nets_param_bino_adjust_init, 5102, 24, nothing, file_info),
    ROW(nets_param_bino_adjust_result_init, 5103, 24, nothing, file_info),
    ROW(nets_param_bino_linewidth_init, 5104, 8, nothing, file_info),
    ROW(nets_param_offset_adjust_init, 5109, 16, nothing, file_info),
    ROW(nets_param_offset_adjust_result_init, 5110, 12, nothing, file_info),
    ROW(net_param_bino_stitch_cfg_init, 5113, 48, nothing, file_info),
    ROW(net_param_snaptlps_init, 5120, 140, channel, file_info),
    ROW(net_param_day_record_init, 5701, 688, nothing, "init param failed\n"),
    ROW(net_param_push_client_id_init, 6104, 512, nothing, file_info),
    ROW(net_param_create_push_listener_init, 6105, 160, nothing, file_info),
    ROW(net_param_push_client_state_init, 6106, 2180, nothing, file_info),
    ROW(nets_param_support_init, 6201, 30948, support, silent),
    ROW(net_find_alarm_video_init, 6251, 112, destination, file_info),
    ROW(net_alarm_video_info_init, 6252, 20896, channel, file_info),
    ROW(nets_param_talk_ability_init, 6301, 840, nothing, file_info),
    ROW(nets_param_auto_reply_init, 6303, 496, nothing, file_info),
    ROW(nets_param_push_task_init, 6501, 1360, channel, file_info),
    ROW(nets_param_audio_task_init, 6601, 1364, channel, file_info),
    ROW(net_param_dev_manage_init, 6642, 4048, channel_type, file_info),
    ROW(nets_param_alarm_area_init, 6700, 108564, nothing, silent),
    ROW(net_param_snaptlps_enable_cfg_init, 6702, 8, valid_channel, silent),
    ROW(nets_param_af_learn_result_init, 6801, 32, nothing, file_info),
    ROW(net_param_third_cloud_init, 6909, 4576, valid_channel, silent),
    ROW(net_param_third_cloud_task_init, 6910, 1360, valid_channel, silent),
    ROW(nets_param_rf_init, 6921, 968, rf, silent),
    ROW(nets_param_battery_init, 6931, 40, channel, silent),
    ROW(net_param_battery_list_init, 6932, 1284, nothing, silent),
    ROW(nets_param_4gmodule_info_init, 6941, 56, nothing, silent),
    ROW(nets_param_audio_file_info_list_init, 6970, 8080, nothing, file_info),
    ROW(nets_param_audio_file_info_init, 6971, 252, channel, file_info),
    ROW(nets_param_audio_cfg_init, 6973, 48, channel, file_info),
    ROW(nets_param_floodlight_status_init, 6976, 12, channel, silent),
    ROW(nets_param_floodlight_status_report_init, 6976, 24, nothing, silent),
    ROW(nets_param_floodlight_task_init, 6977, 2716, channel, silent),
    ROW(nets_param_ai_cfg_init, 6978, 52, channel, silent),
    ROW(nets_param_ai_area_detect_init, 6979, 15540, channel, silent),
    ROW(net_param_ai_track_limit_init, 6981, 84, channel, "init param ai track limit failed\n"),
    ROW(net_param_ai_track_task_init, 6982, 176, nothing, silent),
    ROW(net_param_ai_denoise_init, 6983, 12, nothing, "init param ai denoise failed\n"),
    ROW(net_param_dingdong_ctrl_init, 6984, 24, nothing, "init param dingdong ctrl failed\n"),
    ROW(net_param_dingdong_list_init, 6985, 488, nothing, "init param dingdong list failed\n"),
    ROW(net_param_dingdong_dev_opt_init, 6986, 52, nothing, "init param dingdong dev opt failed\n"),
    ROW(net_param_dingdong_cfg_init, 6987, 1080, chimes, "init param dingdong cfg failed\n"),
    ROW(net_param_device_audio_cfg_init, 6988, 524, nothing, file_info),
    ROW(net_param_ai_snaptlps_init, 6989, 8, nothing, "init param ai snaptlps failed\n"),
    ROW(nets_param_timelapse_cfg_init, 7000, 464, channel, file_info),
    ROW(nets_param_doorbell_test_init, 7008, 16, nothing, file_info),
    ROW(net_param_image_file_info_init, 7202, 268, channel, file_info),
    ROW(net_param_fish_eye_cfg_init, 7401, 24, nothing, file_info),
    ROW(net_param_homebase_wakeup_task_init, 7501, 169, nothing, file_info),
    ROW(net_param_fsk_rf_pair_init, 7607, 84, nothing, file_info),
    ROW(net_param_export_video_inspection_init, 7615, 1080, nothing, file_info),
    ROW(net_param_smart_ai_crossline_detect_init, 8002, 1000, valid_channel, silent),
    ROW(net_param_smart_ai_intrusion_detect_init, 8003, 1000, valid_channel, silent),
    ROW(net_param_smart_ai_loitering_detect_init, 8004, 1000, valid_channel, silent),
    ROW(net_param_smart_ai_legacy_detect_init, 8005, 488, valid_channel, silent),
    ROW(net_param_smart_ai_loss_detect_init, 8006, 488, valid_channel, silent),
    ROW(net_param_cfg_modify_init, 9000, 8, nothing, silent),
};
// clang-format on

unsigned int allocated_size(const Row &row)
{
    return row.content == list || row.content == name_in_list ? 20 * row.size : row.size;
}

// A payload as it should be, written byte by byte.
std::string expected_payload(const Row &row, const net_ext_t &ext)
{
    std::string payload(allocated_size(row), row.content == garbage ? '\xA5' : '\0');
    const auto put = [&](std::size_t offset, int value) { std::memcpy(&payload[offset], &value, sizeof value); };
    // The same number at the head of each record.
    const auto put_in_each = [&](std::size_t first, std::size_t count, std::size_t size) {
        for (std::size_t i = 0; i < count; ++i)
            put(first + i * size, -1);
    };
    const bool has_channel = row.content == channel || row.content == patrol || row.content == channel_type ||
                             row.content == shelter || row.content == destination;
    if (has_channel)
        put(0, ext.channelId);
    switch (row.content) {
    case valid_channel:
        put(0, std::max(ext.channelId, 0));
        break;
    case name:
    case name_in_list:
        payload.replace(0, std::strlen(ext.userName), ext.userName);
        break;
    case patrol:
        put(4, ext.patrolId);
        break;
    case channel_type:
        put(4, ext.chnType);
        break;
    case rf:
        put(0, ext.rfId);
        break;
    case shelter:
        put(16, -1);
        break;
    case destination:
        put(52, -1);
        break;
    case disks:
        put_in_each(0, 8, 56);
        break;
    case support:
        put(4, ext.chnType);
        put_in_each(77 * 4, 64, 200);
        break;
    case chimes:
        put_in_each(0, 10, 108);
        break;
    default:
        break;
    }
    return payload;
}

// The encoding list counts in this word, and these five clear it.
bool clears_reserved1(const std::string &name)
{
    return name == "net_param_encrypt_init" || name == "net_param_dev_info_init" || name == "net_param_enc_list_init" ||
           name == "net_param_wifi_signal_init" || name == "net_param_login_err_info_init";
}

net_ext_t request(int channel_id)
{
    net_ext_t ext{};
    ext.channelId = channel_id;
    ext.inputId = 101;
    ext.outputId = 102;
    ext.patrolId = 4;
    std::strcpy(ext.userName, "operator");
    ext.rfId = 17;
    ext.chnType = 9;
    ext.streamType = 103;
    return ext;
}

class InitTest : public test::HostTest {
protected:
    static void check_stamp(const Row &row, const net_param_t &param, const net_param_t &before)
    {
        EXPECT_EQ(param.inited, 1u);
        EXPECT_EQ(param.status, 0);
        EXPECT_EQ(param.paramId, row.id);
        EXPECT_EQ(param.dataSize, row.size);
        EXPECT_EQ(param.reserved0, before.reserved0);
        EXPECT_EQ(param.reserved1, clears_reserved1(row.name) ? 0 : before.reserved1);
    }
};

TEST_F(InitTest, EveryMessage)
{
    for (const Row &row : rows) {
        // No initialiser judges the channel.
        for (int channel_id : {7, 0, -2, 1000}) {
            SCOPED_TRACE(row.name + std::string(" with channel ") + std::to_string(channel_id));
            test::AnyEnvelope message;
            const net_param_t before = message.param;
            net_ext_t ext = request(channel_id);
            EXPECT_EQ(test::output_of([&] { EXPECT_EQ(row.init(&message.param, &ext), 0); }), "");
            check_stamp(row, message.param, before);
            EXPECT_EQ(net_host_memory().last_size, allocated_size(row));
            ASSERT_NE(message.param.data, nullptr);
            const std::string expected = expected_payload(row, ext);
            EXPECT_EQ(std::memcmp(message.param.data, expected.data(), expected.size()), 0);
        }
    }
}

TEST_F(InitTest, EveryMessageWithoutMemory)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        test::AnyEnvelope message;
        const net_param_t before = message.param;
        message.param.data = &message; // must not survive
        net_ext_t ext = request(7);
        net_host_fail_allocation(1);
        std::string expected = "<red net_public.cpp>malloc failed\n";
        if (*row.failure != '\0')
            expected += std::string("<red net_param_init.cpp>") + row.failure;
        EXPECT_EQ(log_of([&] { EXPECT_EQ(row.init(&message.param, &ext), -1); }), expected);
        check_stamp(row, message.param, before);
        EXPECT_EQ(message.param.data, nullptr);
        message.param.data = nullptr;
    }
}

// The tools' list knows the same initialisers, and with them the ones that have no payload.
TEST_F(InitTest, ListForTools)
{
    std::vector<std::string> without_payload;
    std::size_t found = 0;
    for (const netpublic::Initialiser &entry : netpublic::initialisers) {
        SCOPED_TRACE(entry.name);
        const auto *row =
            std::find_if(std::begin(rows), std::end(rows), [&](const Row &one) { return one.init == entry.function; });
        if (row == std::end(rows)) {
            without_payload.push_back(entry.name);
            EXPECT_EQ(entry.size, 0u);
            continue;
        }
        ++found;
        EXPECT_STREQ(entry.name, row->name);
        EXPECT_EQ(entry.id, row->id);
        EXPECT_EQ(entry.size, row->size);
    }
    EXPECT_EQ(found, std::size(rows));
    EXPECT_EQ(found, 137u);
    EXPECT_EQ(without_payload,
              (std::vector<std::string>{"nets_param_file_info_init", "nets_param_fty_result_init",
                                        "net_param_fty_ir_cut_init", "nets_param_fty_range_init",
                                        "nets_param_fty_peripheral_image_check_stat_init",
                                        "nets_param_fty_peripheral_body_code_init", "net_param_large_battery_init"}));
}

TEST_F(InitTest, MessagesWithoutAnything)
{
    for (test::Init init : {nets_param_fty_result_init, net_param_fty_ir_cut_init, nets_param_fty_range_init,
                            nets_param_fty_peripheral_image_check_stat_init, nets_param_fty_peripheral_body_code_init,
                            net_param_large_battery_init}) {
        test::AnyEnvelope message;
        const net_param_t before = message.param;
        net_ext_t ext = request(7);
        EXPECT_EQ(init(&message.param, &ext), 0);
        EXPECT_EQ(std::memcmp(&message.param, &before, sizeof(before)), 0);
        EXPECT_EQ(init(nullptr, nullptr), 0);
    }
    EXPECT_EQ(net_host_memory().total, 0u);
}

TEST_F(InitTest, FileInfoIsAStampOnly)
{
    test::AnyEnvelope message;
    int payload = 0;
    message.param.data = &payload;
    const net_param_t before = message.param;
    net_ext_t ext = request(7);
    EXPECT_EQ(nets_param_file_info_init(&message.param, &ext), 0);
    EXPECT_EQ(message.param.inited, 1u);
    EXPECT_EQ(message.param.status, 0);
    EXPECT_EQ(message.param.paramId, 1401);
    EXPECT_EQ(message.param.reserved0, before.reserved0);
    EXPECT_EQ(message.param.reserved1, before.reserved1);
    EXPECT_EQ(message.param.dataSize, before.dataSize);
    EXPECT_EQ(message.param.data, &payload);
    EXPECT_EQ(net_host_memory().total, 0u);
    message.param.data = nullptr;
}

TEST_F(InitTest, TwoCheckTheEnvelope)
{
    net_ext_t ext = request(7);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_param_fish_eye_cfg_init(nullptr, &ext), -1); }),
              "<red net_param_init.cpp>Func: net_param_fish_eye_cfg_init, Line:#\n");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_param_cert_info_init(nullptr, &ext), -1); }),
              "<red net_param_init.cpp>Func: net_param_cert_info_init, Line\xEF\xBC\x9A #\n");
    EXPECT_EQ(net_host_memory().total, 0u);
}

TEST_F(InitTest, FailureLinesAreGated)
{
    test::AnyEnvelope message;
    net_ext_t ext = request(7);
    loglevel = 0xFFFFFFFE;
    net_host_fail_allocation(1);
    EXPECT_EQ(test::output_of([&] { EXPECT_EQ(nets_param_version_init(&message.param, &ext), -1); }), "");
    EXPECT_EQ(test::output_of([&] { EXPECT_EQ(net_param_cert_info_init(nullptr, &ext), -1); }), "");
}

TEST_F(InitTest, LongUserNames)
{
    net_ext_t ext = request(7);
    std::memset(ext.token, 'T', sizeof(ext.token)); // what follows an unterminated name
    for (std::size_t length : {0u, 30u, 31u, 32u}) {
        std::memset(ext.userName, 0, sizeof(ext.userName));
        std::memset(ext.userName, 'u', length);
        const auto head = [&](test::Init init) { return std::string(test::Envelope<char>(init, ext).payload(), 40); };
        const auto padded = [](std::size_t kept) { return std::string(kept, 'u') + std::string(40 - kept, '\0'); };
        EXPECT_EQ(head(nets_param_user_cfg_init), padded(length)) << "all 32 characters fit";
        EXPECT_EQ(head(net_param_shared_user_cfg_init), padded(std::min<std::size_t>(length, 31)));
    }
}

// The numbers, from 1, of the section flags that a token sets. They follow the name of 32 bytes.
std::vector<int> sections(const std::string &token)
{
    net_ext_t ext = request(7);
    token.copy(ext.token, sizeof(ext.token) - 1);
    test::Envelope<char> message(nets_param_ability_init, ext);
    std::vector<int> set;
    for (int i = 0; i < 13; ++i) {
        int flag;
        std::memcpy(&flag, message.payload() + 32 + i * 4, sizeof(flag));
        EXPECT_TRUE(flag == 0 || flag == 1) << flag;
        if (flag != 0)
            set.push_back(i + 1);
    }
    // Nothing else is set.
    EXPECT_EQ(std::count(message.payload(), message.payload() + 6192, '\0'), 6192 - static_cast<int>(set.size()));
    return set;
}

TEST_F(InitTest, AbilitySections)
{
    const struct {
        std::string token;
        std::vector<int> numbers;
    } cases[] = {
        {"", {}},
        {"none of them", {}},
        {"system,PTZ,disk", {1, 5, 13}},
        {"audio", {6, 10}}, // IO is in it
        {"ptz SYSTEM Streaming", {1, 2, 5}},
        {"subsystems", {1}},
        {"systeM-recorD", {1, 3}},
        {std::string(251, 'x') + "disk", {13}}, // up to the end of the token
        {"streaming record network IO alarm", {2, 3, 4, 6, 7}},
        {"image video security replay", {8, 9, 11, 12}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(sections(c.token), c.numbers) << c.token;
}

// Where the named fields lie that the initialisers fill.
TEST_F(InitTest, NamedFields)
{
    net_ext_t ext = request(7);
    test::Envelope<tag_net_support_v20_t> features(nets_param_support_init, ext);
    EXPECT_EQ(features->chnType, 9);
    EXPECT_EQ(features->channel[63].chnID, -1);
    test::Envelope<net_find_alarm_video_t> search(net_find_alarm_video_init, ext);
    EXPECT_EQ(search->channelId, 7);
    EXPECT_EQ(search->destination, -1);
    test::Envelope<net_rf_t> radio(nets_param_rf_init, ext);
    EXPECT_EQ(radio->rfId, 17);
    test::Envelope<tag_net_shelter_cfg_v20_t> masks(nets_param_pic_shelter_init, ext);
    EXPECT_EQ(masks->maxNum, -1);
    test::Envelope<net_alarm_report_t> report(net_param_alarm_init, ext);
    EXPECT_EQ(report->state[0].channelId, 7);
    EXPECT_EQ(report->state[1].channelId, 0);
}

} // namespace
