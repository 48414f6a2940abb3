// P1, P2: each exported function that is no message's, called with all that its description promises to
// survive. What lies beside a buffer is the address sanitizer's to see.
#include "components.h"
#include "support.h"

#include <net_public.h>

#include <climits>
#include <cstring>
#include <fstream>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace {

struct Row {
    const char *function;
    std::function<bool()> holds;
};

// A component reader refuses a null record, a null node, and a node of another name.
template <class Record> bool refuses(int (*read)(Record *, TiXmlNode *, const char *), bool named = true)
{
    Record record{};
    TiXmlElement element("other");
    return read(nullptr, &element, nullptr) == -1 && read(&record, nullptr, nullptr) == -1 &&
           (!named || read(&record, &element, "key") == -1);
}

template <class Record> bool refuses(int (*read)(Record *, TiXmlNode *))
{
    Record record{};
    TiXmlElement element("other");
    return read(nullptr, &element) == -1 && read(&record, nullptr) == -1;
}

template <class Value> bool refuses(int (*insert)(TiXmlElement *, const char *, Value, int, int))
{
    TiXmlElement element("other");
    return insert(nullptr, "a", Value{}, 0, 0) == -1 && insert(&element, nullptr, Value{}, 0, 0) == -1 &&
           insert(nullptr, nullptr, Value{}, 1, 1) == -1 && element.NoChildren();
}

template <class Record> bool refuses(int (*write)(Record *, TiXmlElement *))
{
    Record record{};
    TiXmlElement element("other");
    return write(nullptr, &element) == -1 && write(&record, nullptr) == -1 && element.NoChildren();
}

// No code, buffer or size is one too much.
bool survives(int (*word_of)(int, char *, int))
{
    char word[3] = {};
    for (const int code : {INT_MIN, -1, 0, 1, 19, INT_MAX})
        for (const int size : {INT_MIN, -1, 0, 1, 2, 3})
            if (word_of(code, word, size) == 0 && size < 1)
                return false;
    return word_of(0, nullptr, 3) == -1 && word_of(0, word, 0) == -1;
}

template <class Text> bool survives(int (*code_of)(int *, Text))
{
    int code = 77;
    char word[] = "";
    return code_of(nullptr, word) == -1 && code_of(&code, nullptr) == -1 && code == 77 && code_of(&code, word) == 0;
}

#define HOLDS(function, condition) Row({#function, [&]() -> bool { return condition; }})

class ContractTest : public test::HostTest {};

TEST_F(ContractTest, EveryToolkitFunctionSurvivesWhatItPromises)
{
    TiXmlElement element("e");
    char text[8] = {}, full[4] = {'a', 'b', ',', 'c'}, raw[] = "::::::", path[] = "", markup[] = "<a/>", name32[32];
    std::memset(name32, 'n', sizeof name32);
    const char *items[] = {"a", "b"};
    int number = 7, index = 0;
    unsigned char bytes[8] = {};
    point_t corners[8] = {};
    net_smart_ai_points_t polygon{};
    time_section_t set{};
    net_ext_t ext{};
    tag_net_support_v20_t support{};
    net_video_inpsection_info_t inspected{};
    net_query_deive_t queried{};
    net_stream_info_v20_t stream{};
    net_schedule_t schedule{};
    NET_ABILITY_OPERATION_V20_E op{};
    tm calendar{};
    net_int_value_t range{};
    intvalue_t local{};
    net_float_value_t floats{};
    floatvalue_t local_floats{};
    TiXmlPrinter printer;
    void *block = nullptr;
    std::string masked = "<a>x</a>";
    const auto smart = static_cast<NET_SMAER_AI_OP_E>(0);
    const auto crossing = static_cast<NET_CROSSLINE_DETECT_DIRECTION_E>(0);

#define PLAIN(function) {#function, [] { return refuses(function); }},
    std::vector<Row> rows = {NETPUBLIC_INSERTERS(PLAIN) NETPUBLIC_COMPONENTS(PLAIN)};
#undef PLAIN
    const std::vector<Row> others = {
        // Envelope, identity, interfaces, files
        HOLDS(net_param_init_size_id, net_param_init_size_id(nullptr, &ext, 4, 1) == -1),
        HOLDS(net_malloc, (block = net_malloc(0), true)),
        HOLDS(net_free, (net_free(nullptr), net_free(&block), net_free(&block), block == nullptr)),
        HOLDS(net_uid_get, net_uid_get(nullptr) == -1),
        HOLDS(net_key_get, net_key_get(nullptr) == -1),
        HOLDS(net_mac_get, net_mac_get(nullptr) == -1),
        HOLDS(_nets_get_model_info, _nets_get_model_info(nullptr) == 1),
        HOLDS(net_product_type_get, net_product_type_get() > 0),
        HOLDS(net_dev_type_get, net_dev_type_get() > 0),
        HOLDS(get_country_code, get_country_code() != nullptr),
        HOLDS(net_ip_and_mac_get, net_ip_and_mac_get(nullptr, name32, name32) == -1 &&
                                      net_ip_and_mac_get("lo", nullptr, name32) == -1 &&
                                      net_ip_and_mac_get("lo", name32, nullptr) == -1),
        HOLDS(net_link_status_get, net_link_status_get(nullptr) == -1),
        HOLDS(get_raw_mac, (get_raw_mac(nullptr, 6), get_raw_mac(raw, 0), *raw == ':') &&
                               (get_raw_mac(raw, 1), *raw == '\0' && raw[1] == ':')),
        HOLDS(net_file_exist, net_file_exist(nullptr) == 0 && net_file_exist("") == 0),
        HOLDS(net_file_remove, net_file_remove(nullptr) == -1 && net_file_remove("") == 0),
        HOLDS(net_file_write, net_file_write(nullptr, text, 1) == -1 && net_file_write("", nullptr, 1) == -1 &&
                                  net_file_write("", text, 0) == -1 && net_file_write("", text, 1) == -1),
        HOLDS(nets_get_file_size,
              nets_get_file_size(nullptr, &number) == -1 && nets_get_file_size(path, nullptr) == -1),
        HOLDS(net_cert_write, net_cert_write(nullptr, text, 1) == -1 && net_cert_write(path, nullptr, 1) == -1 &&
                                  net_cert_write(path, text, 0) == -1 && net_cert_write(path, text, 1) == -1),
        HOLDS(net_cert_remove, net_cert_remove(nullptr) == -1 && net_cert_remove(path) == -1),
        // Random values, time, log filter
        HOLDS(net_random_string, net_random_string(nullptr, 4, 2) == -1 && net_random_string(text, 4, 5) == -1 &&
                                     net_random_string(text, -1, -2) == -1 && net_random_string(text, 0, 0) == 0 &&
                                     net_random_string(text, 8, INT_MIN) == 0 && *text == '\0'),
        HOLDS(net_random_num_get, net_random_num_get(0) == 0 && net_random_num_get(1) == 0),
        HOLDS(net_tick_msec_get, net_tick_msec_get() / 1000 >= net_tick_sec_get()),
        HOLDS(net_tick_sec_get, net_tick_sec_get() <= net_tick_msec_get()),
        HOLDS(net_local_time_get,
              net_local_time_get(nullptr, &calendar) == 0 && net_local_time_get(&calendar, nullptr) == 0),
        HOLDS(net_xml_printf_filter, *net_xml_printf_filter(nullptr) == '\0' && *net_xml_printf_filter("") == '\0'),
        HOLDS(net_xml_filter, (net_xml_filter(masked, "<a>", "</a>"), masked == "<a>*</a>")),
        // Conversions
        HOLDS(string_join, string_join(text, 8, items, -1, ',') == -1 && string_join(text, 3, items, 2, ',') == -1 &&
                               string_join(text, 0, items, 0, ',') == 0 && *text == '\0' &&
                               string_join(text, 4, items, 2, ',') == 0 && std::strcmp(text, "a,b") == 0),
        HOLDS(net_ai_type_local_to_net,
              (net_ai_type_local_to_net(nullptr, 4, 7), net_ai_type_local_to_net(full, 0, 7), *full == 'a')),
        HOLDS(net_ai_type_net_to_local,
              (net_ai_type_net_to_local(nullptr, 4, number), net_ai_type_net_to_local(text, 0, number), number == 7)),
        HOLDS(net_points_local_to_net,
              (net_points_local_to_net(nullptr, corners, 8), net_points_local_to_net(&polygon, nullptr, 8),
               net_points_local_to_net(&polygon, corners, INT_MIN), polygon.pointNum == 0) &&
                  (net_points_local_to_net(&polygon, corners, INT_MAX), polygon.pointNum == 8)),
        HOLDS(net_points_net_to_local,
              (net_points_net_to_local(nullptr, corners, number), net_points_net_to_local(&polygon, nullptr, number),
               number == 7) &&
                  (polygon.pointNum = INT_MAX, net_points_net_to_local(&polygon, corners, index), index == 8)),
        HOLDS(net_direction_local_to_net, net_direction_local_to_net(static_cast<AI_TRIP_WIRE_DIRECTION>(0)) == 0),
        HOLDS(net_direction_net_to_local, net_direction_net_to_local(crossing) == 0),
        HOLDS(net_check_points_change, net_check_points_change(nullptr, 3, corners, 3) == 1 &&
                                           net_check_points_change(nullptr, 0, nullptr, 0) == 0 &&
                                           net_check_points_change(corners, INT_MAX, corners, INT_MAX) == 0 &&
                                           net_check_points_change(corners, -1, nullptr, -1) == 0),
        HOLDS(get_alarm_str, get_alarm_str(nullptr, 8, 1, set, set) == -1 &&
                                 get_alarm_str(text, 0, 1, set, set) == -1 &&
                                 get_alarm_str(full, sizeof full, -1, set, set) == 0 && full[3] == '\0'),
        HOLDS(net_get_streanm_type_string, net_get_streanm_type_string(static_cast<STREAM_TYPE_E>(7)) == nullptr),
        HOLDS(is_stream_cmd, is_stream_cmd(INT_MIN) == 0),
        HOLDS(net_check_dev_name, net_check_dev_name(nullptr) == -1 && net_check_dev_name(name32) == 0),
        HOLDS(net_check_cert_name, net_check_cert_name(nullptr) == -1 && net_check_cert_name(path) == 0),
        HOLDS(net_int_value_to_local, net_int_value_to_local(&range, &local) == 0),
        HOLDS(local_int_value_to_net, local_int_value_to_net(&range, &local) == 0),
        HOLDS(net_float_value_to_local, net_float_value_to_local(&floats, &local_floats) == 0),
        HOLDS(local_float_value_to_net, local_float_value_to_net(&floats, &local_floats) == 0),
        // Words
        HOLDS(get_weekday_string, survives(get_weekday_string)),
        HOLDS(get_osd_format_string, survives(get_osd_format_string)),
        HOLDS(get_language_string, survives(get_language_string)),
        HOLDS(get_databit_string, survives(get_databit_string)),
        HOLDS(get_handleType_string, survives(get_handleType_string)),
        HOLDS(get_streamtype_str, survives([](int code, char *dst, int size) {
                  return get_streamtype_str(static_cast<STREAM_TYPE_E>(code), dst, size) == nullptr ? -1 : 0;
              })),
        HOLDS(get_alarm_in_type_string, survives([](int code, char *dst, int size) {
                  return get_alarm_in_type_string(code, dst, size, nullptr);
              })),
        HOLDS(get_weekday_index, survives(get_weekday_index)),
        HOLDS(get_osd_format_index, survives(get_osd_format_index)),
        HOLDS(get_language_index, survives(get_language_index)),
        HOLDS(get_databit_index, survives(get_databit_index)),
        HOLDS(get_handleType_intValue, survives(get_handleType_intValue)),
        HOLDS(get_ddns_type_index, survives(get_ddns_type_index)),
        HOLDS(get_streamtype_from_str, get_streamtype_from_str(nullptr, "sub", 3) == -1 &&
                                           get_streamtype_from_str(&index, nullptr, 3) == -1 &&
                                           get_streamtype_from_str(&index, "sub", 0) == -1 &&
                                           get_streamtype_from_str(&index, "sub", INT_MIN) == -1),
        HOLDS(get_alarm_in_type_intValue,
              survives<char *>([](int *code, char *word) { return get_alarm_in_type_intValue(code, word, 0); }) &&
                  get_alarm_in_type_intValue(&index, text, -1) == -1 &&
                  get_alarm_in_type_intValue(&index, text, 3) == -1),
        HOLDS(_get_ptz_cmd, _get_ptz_cmd(nullptr) == -1),
        HOLDS(alarm_in_add_event,
              (alarm_in_add_event(nullptr, 0), alarm_in_add_event(&set, -1), alarm_in_add_event(&set, INT_MAX),
               alarm_in_add_event(&set, 45), set.bits[0] == 0 && set.bits[1] == 0)),
        HOLDS(alarm_in_check_event, alarm_in_check_event(nullptr, 0) == 0 && alarm_in_check_event(&set, UINT_MAX) == 0),
        HOLDS(get_type_and_index_from_smart_ai, get_type_and_index_from_smart_ai(set, nullptr, number) == -1),
        HOLDS(evt_log_alarm_type_to_string,
              evt_log_alarm_type_to_string(nullptr, 8, 4) == -1 && evt_log_alarm_type_to_string(text, 2, 4) == -1),
        HOLDS(make_enum_to_string, make_enum_to_string(nullptr, 8, "a", op, &number) == -1 &&
                                       make_enum_to_string(text, 0, "a", op, &number) == -1 &&
                                       make_enum_to_string(text, 8, nullptr, op, &number) == -1 &&
                                       make_enum_to_string(text, 8, "a", op, nullptr) == -1),
        HOLDS(make_string_to_enum, make_string_to_enum(nullptr, "a", op) == -1 &&
                                       make_string_to_enum(text, nullptr, op) == -1 &&
                                       test::log_of([&] { make_string_to_enum(nullptr, "a", op); }) ==
                                           "<red net_xml_system.cpp>param is invalid\n"),
        HOLDS(get_hms_from_pts, get_hms_from_pts(1, nullptr, bytes, bytes) == -1 &&
                                    get_hms_from_pts(1, bytes, nullptr, bytes) == -1 &&
                                    get_hms_from_pts(INT_MIN, bytes, bytes, nullptr) == -1),
        // Numbers and base64
        HOLDS(changeIntTableToString, changeIntTableToString(nullptr, 8, &number, 1, 0) == -1 &&
                                          changeIntTableToString(text, 0, &number, 1, 0) == -1 &&
                                          changeIntTableToString(text, 8, nullptr, 1, 0) == -1 &&
                                          changeIntTableToString(text, 8, &number, INT_MIN, 0) == -1),
        HOLDS(changeStringToIntTable, changeStringToIntTable(nullptr, &number, 1, 0) == -1 &&
                                          changeStringToIntTable(text, nullptr, 1, 0) == -1 &&
                                          changeStringToIntTable(text, &number, 0, 0) == -1),
        HOLDS(EncodeBinaryArrayToBase64, EncodeBinaryArrayToBase64(nullptr, text, 8, 9) == -1 &&
                                             EncodeBinaryArrayToBase64(bytes, nullptr, 8, 9) == -1 &&
                                             EncodeBinaryArrayToBase64(bytes, text, -1, 9) == -1 &&
                                             EncodeBinaryArrayToBase64(bytes, text, 8, INT_MIN) == 4),
        HOLDS(Base64DecodeToBinaryArray, Base64DecodeToBinaryArray(nullptr, 8, text, 4) == -1 &&
                                             Base64DecodeToBinaryArray(text, 8, nullptr, 4) == -1 &&
                                             Base64DecodeToBinaryArray(text, -1, text, 4) == -1 &&
                                             Base64DecodeToBinaryArray(full, 4, text, INT_MIN) == -1),
        HOLDS(base64_encode, base64_encode(nullptr, 8, bytes, 1) == -1 && base64_encode(bytes, 8, nullptr, 1) == -1 &&
                                 base64_encode(bytes, 0, bytes, 0) == -3 && base64_encode(bytes, 4, bytes, 1) == -3),
        HOLDS(base64_decode, base64_decode(nullptr, 8, bytes, 4) == -1 && base64_decode(bytes, 8, nullptr, 4) == -1 &&
                                 base64_decode(bytes, 8, bytes, 3) == -2 && base64_decode(bytes, 0, bytes, 4) == -3),
        HOLDS(is_base64_char, is_base64_char('\xFF') == 0),
        HOLDS(GetBase64Value, GetBase64Value('\x80') == 0),
        // XML toolkit
        HOLDS(get_str_from_xmlnode, get_str_from_xmlnode(nullptr, 8, &element, nullptr) == -1 &&
                                        get_str_from_xmlnode(text, 8, nullptr, nullptr) == -1 &&
                                        get_str_from_xmlnode(text, -1, &element, nullptr) == -1 &&
                                        get_str_from_xmlnode(text, 0, &element, nullptr) == 0 &&
                                        get_str_from_xmlnode(text, 8, &element, "other") == -1),
        HOLDS(atoi64, atoi64("") == 0 && atoi64("-") == 0),
        HOLDS(get_query_device_from_xmlnode,
              get_query_device_from_xmlnode(static_cast<net_query_deive_t *>(nullptr), 1, &element, nullptr) == -1 &&
                  get_query_device_from_xmlnode(&queried, 1, nullptr, nullptr) == -1 &&
                  get_query_device_from_xmlnode(&queried, INT_MIN, &element, nullptr) == 0 &&
                  get_query_device_from_xmlnode(static_cast<net_video_inpsection_info_t *>(nullptr), 1, &element,
                                                nullptr) == -1 &&
                  get_query_device_from_xmlnode(&inspected, 1, nullptr, nullptr) == -1),
        HOLDS(InsertChildToXmlElement_string, refuses(InsertChildToXmlElement_string) &&
                                                  InsertChildToXmlElement_string(&element, "a", nullptr, 1, 1) == -1),
        HOLDS(InsertChildToXmlElement_longlong, InsertChildToXmlElement_longlong(nullptr, "a", 0) == -1 &&
                                                    InsertChildToXmlElement_longlong(&element, nullptr, 0) == -1),
        HOLDS(InsertChildToXmlElement_time, InsertChildToXmlElement_time(nullptr, nullptr) == -1 &&
                                                InsertChildToXmlElement_time(&element, nullptr) == -1),
        HOLDS(net_text_x2s, net_text_x2s(nullptr, nullptr, text, 0) == -1 &&
                                net_text_x2s(net_md_x2s, nullptr, nullptr, 0) == -1 &&
                                net_text_x2s(net_md_x2s, nullptr, markup, 4) == -1),
        HOLDS(net_text_s2x, net_text_s2x(nullptr, nullptr, text, 8) == -1 &&
                                net_text_s2x(net_md_s2x, nullptr, nullptr, 1) == -1 &&
                                net_text_s2x(net_md_s2x, nullptr, nullptr, 0) == -1),
        HOLDS(net_get_exten_xml, net_get_exten_xml(printer, INT_MIN) == 0),
        HOLDS(net_exten_x2s, net_exten_x2s(nullptr, &ext) == -1 && net_exten_x2s(text, nullptr) == -1),
        HOLDS(get_type_schedule_list_from_xmlnode, refuses(get_type_schedule_list_from_xmlnode, false)),
        HOLDS(get_time_block_list_from_xmlnode,
              get_time_block_list_from_xmlnode(nullptr, set, &element, nullptr) == -1 &&
                  get_time_block_list_from_xmlnode(&schedule, set, nullptr, nullptr) == -1 &&
                  get_time_block_list_from_xmlnode(&schedule, set, &element, "key") == -1),
        HOLDS(net_smart_ai_direction_s2x, net_smart_ai_direction_s2x(crossing, nullptr) == -1),
        HOLDS(net_smart_ai_op_s2x, net_smart_ai_op_s2x(smart, nullptr) == -1),
        HOLDS(get_item_from_xmlnode, get_item_from_xmlnode(nullptr, &element, nullptr, &index) == -1 &&
                                         get_item_from_xmlnode(&support, nullptr, nullptr, &index) == -1 &&
                                         get_item_from_xmlnode(&support, &element, nullptr, nullptr) == -1),
        HOLDS(xml_enc_info_list_s2x, xml_enc_info_list_s2x(nullptr, 1, &element, &(index = 0), 99) == -1 &&
                                         xml_enc_info_list_s2x(&stream, 1, nullptr, &index, 99) == -1 &&
                                         xml_enc_info_list_s2x(&stream, 1, &element, nullptr, 99) == -1 &&
                                         xml_enc_info_list_s2x(&stream, 1, &element, &index, 0) == -1 &&
                                         xml_enc_info_list_s2x(&stream, 1, &element, &(index = -1), 99) == -1 &&
                                         xml_enc_info_list_s2x(&stream, 1, &element, &(index = 2), 99) == -1),
    };

    rows.insert(rows.end(), others.begin(), others.end());
    std::set<std::string> called;
    for (const Row &row : rows) {
        called.insert(row.function);
        bool holds = false;
        test::output_of([&] { holds = row.holds(); });
        EXPECT_TRUE(holds) << row.function;
    }
    EXPECT_TRUE(element.NoChildren());

    std::ifstream symbols(NETPUBLIC_GOLDEN_DIR "/symbols.txt");
    int exported = 0;
    for (std::string line; std::getline(symbols, line); ++exported)
        if (line.find('(') != line.find("(net_param_t*") && line != "g_error_big_string") {
            EXPECT_EQ(called.count(line.substr(0, line.find('('))), 1u) << "no row for " << line;
        }
    EXPECT_GT(exported, 400);
}

} // namespace
