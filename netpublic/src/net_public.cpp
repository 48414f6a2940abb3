#include "ground/log.h"
#include "values/tables.h"

#include <net_host.h>
#include <net_public.h>

#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

using namespace netpublic;

// Envelope and allocation

const char *const g_error_big_string = "\n"
                                       " ______     _____     _____       ____     _____   \n"
                                       "|  ____|   |  __ \\   |  __ \\     / __ \\   |  __ \\  \n"
                                       "| |__      | |__) |  | |__) |   | |  | |  | |__) | \n"
                                       "|  __|     |  _  /   |  _  /    | |  | |  |  _  /  \n"
                                       "| |____    | | \\ \\   | | \\ \\    | |__| |  | | \\ \\  \n"
                                       "|______|   |_|  \\_\\  |_|  \\_\\    \\____/   |_|  \\_\\ \n"
                                       "\n";

void *net_malloc(unsigned int size)
{
    void *block = bc_malloc(size);
    if (block == nullptr)
        log_error(NET_HERE, "malloc failed\n");
    return block;
}

void net_free(void **pptr)
{
    if (pptr == nullptr || *pptr == nullptr) {
        log_error(NET_HERE, "pptr already be freed\n");
        return;
    }
    bc_free(*pptr);
    *pptr = nullptr;
}

int net_param_init_size_id(net_param_t *param, net_ext_t *, unsigned int size, int id)
{
    if (param == nullptr) {
        // The line number is fixed, wherever this stands.
        log_error(NET_PLACE(6), "param is null, param id: %d\n", id);
        return -1;
    }
    param->inited = 1;
    param->paramId = id;
    param->dataSize = size;
    param->status = 0;
    param->data = net_malloc(size);
    if (param->data == nullptr) {
        log_error(NET_HERE, "malloc failed, param id: %d, size: %zu\n", id, std::size_t{size});
        return -1;
    }
    std::memset(param->data, 0, size);
    return 0;
}

namespace {

// Fills a buffer with a text, cut at size - 1 characters, and zeroes behind it.
void fill_text(char *out, std::size_t size, const char *text)
{
    const std::size_t length = strnlen(text, size - 1);
    std::memcpy(out, text, length);
    std::memset(out + length, 0, size - length);
}

// Appends to the text in a buffer; at most size - 1 characters stand.
void append(char *out, std::size_t size, const char *text)
{
    std::size_t at = strnlen(out, size);
    for (; *text != '\0' && at + 1 < size; ++text)
        out[at++] = *text;
    if (at < size)
        out[at] = '\0';
}

} // namespace

// Identity of the device

namespace {

constexpr std::size_t uid_size = 32;
constexpr std::size_t key_size = 9;
constexpr std::size_t mac_text_size = 20;
constexpr std::size_t model_size = 64;

} // namespace

int net_uid_get(char *uid)
{
    if (uid == nullptr)
        return -1;
    char found[uid_size + 1] = {};
    // What the host left in the buffer counts even after a failure, when a uid is configured.
    if (Sp_get_uid(found) != 0 && sc_get_support_uid() != 1) {
        log_error(NET_HERE, "get uid failed, support:%d\n", sc_get_support_uid());
        return -1;
    }
    fill_text(uid, uid_size, found);
    return 0;
}

int net_key_get(char *key)
{
    if (key == nullptr)
        return -1;
    char found[32] = {};
    if (Sp_get_uidkey(found) != 0) {
        log_error(NET_HERE, "get key failed \n");
        return -1;
    }
    fill_text(key, key_size, found);
    return 0;
}

int net_mac_get(char *mac)
{
    if (mac == nullptr)
        return -1;
    unsigned char b[6] = {};
    if (Sp_get_mac_addr(b) != 0 && Sp_get_temporary_mac_addr(b) != 0) {
        log_error(NET_HERE, "get key failed \n"); // "key", although it is the hardware address
        return -1;
    }
    std::snprintf(mac, mac_text_size, "%02X:%02X:%02X:%02X:%02X:%02X", b[0], b[1], b[2], b[3], b[4], b[5]);
    return 0;
}

int _nets_get_model_info(char *model)
{
    if (model != nullptr)
        fill_text(model, model_size, sc_get_display_type());
    return 1;
}

int net_product_type_get()
{
    // The host is asked afresh for each word.
    const auto type_has = [](const char *word) { return std::strstr(sc_get_type(), word) != nullptr; };
    if (type_has("NVR"))
        return sc_get_nvr_wifi_type() != 0 ? 5 : 3;
    if (type_has("HVR"))
        return 3;
    if (type_has("IPC")) {
        if (sc_get_support_wifi() == 0)
            return 2;
        return sc_get_solo_ipc() != 0 ? 7 : 4;
    }
    if (type_has("DVR"))
        return 1;
    if (type_has("BASE"))
        return 8;
    return type_has("HOMEHUB") ? 14 : 127;
}

int net_dev_type_get()
{
    switch (net_product_type_get()) {
    case 1:
        return 1;
    case 2:
    case 4:
    case 6: // reserved for a camera; no host reports it yet
    case 7:
        return 2;
    case 3:
    case 5:
        return 3;
    case 8:
        return 4;
    case 14:
        return 7;
    default:
        return 127;
    }
}

const char *get_country_code()
{
    const char *configured = sc_get_nvr_ap_def_country_code();
    if (configured == nullptr || *configured == '\0')
        return "US";
    return sc_get_nvr_ap_def_country_code(); // asked again: the first answer may have been the host's scratch
}

// Network interfaces. Their lines carry no prefix and ignore the host's switches.

namespace {

constexpr int interface_capacity = 16;
constexpr std::size_t ip_text_size = 32;

// Finds the interface in the kernel's list, last one first, and fills in its address.
bool find_interface(int socket, const char *ifname, ifreq &found)
{
    ifreq list[interface_capacity] = {};
    ifconf table{};
    table.ifc_len = sizeof(list);
    table.ifc_req = list;
    if (ioctl(socket, SIOCGIFCONF, &table) < 0)
        return false;
    for (int i = table.ifc_len / static_cast<int>(sizeof(ifreq)); i-- > 0;) {
        // One interface that has no address spoils the search, even when it is not the one sought.
        if (ioctl(socket, SIOCGIFADDR, &list[i]) < 0)
            return false;
        if (std::strncmp(list[i].ifr_name, ifname, sizeof(list[i].ifr_name)) == 0) {
            found = list[i];
            return true;
        }
    }
    return false;
}

int read_addresses(int socket, const char *ifname, char *ip, char *mac)
{
    ifreq request{};
    if (!find_interface(socket, ifname, request))
        return -1;
    int result = 0;
    sockaddr_in address{};
    std::memcpy(&address, &request.ifr_addr, sizeof(address));
    if (bc_ntoa(address.sin_addr.s_addr, ip, ip_text_size) != 0) {
        log_plain("get ip failed\n");
        result = -1; // the hardware address is still told
    }
    if (ioctl(socket, SIOCGIFHWADDR, &request) == 0) {
        unsigned char b[6];
        std::memcpy(b, request.ifr_hwaddr.sa_data, sizeof(b));
        // Small letters, unlike net_mac_get().
        std::snprintf(mac, mac_text_size, "%02x:%02x:%02x:%02x:%02x:%02x", b[0], b[1], b[2], b[3], b[4], b[5]);
    }
    return result;
}

} // namespace

int net_ip_and_mac_get(const char *ifname, char *ip, char *mac)
{
    if (ifname == nullptr || ip == nullptr || mac == nullptr)
        return -1;
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return -1;
    const int result = read_addresses(descriptor, ifname, ip, mac);
    close(descriptor);
    return result;
}

int net_link_status_get(const char *ifname)
{
    if (ifname == nullptr)
        return -1;
    ethtool_value link{};
    link.cmd = ETHTOOL_GLINK;
    ifreq request{};
    fill_text(request.ifr_name, sizeof(request.ifr_name), ifname);
    request.ifr_data = reinterpret_cast<char *>(&link);

    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0) {
        log_plain("create socket failed.\n");
        std::perror("error: ");
        return -2;
    }
    const int result = ioctl(descriptor, SIOCETHTOOL, &request);
    close(descriptor);
    if (result < 0) {
        log_plain("SIOCETHTOOL failed.\n");
        return -1;
    }
    return static_cast<int>(link.data);
}

void get_raw_mac(char *mac, unsigned int size)
{
    if (mac == nullptr || size == 0)
        return;
    unsigned int length = 0;
    for (const char *from = mac; *from != '\0' && length < size - 1; ++from)
        if (*from != ':')
            mac[length++] = *from;
    mac[length] = '\0';
}

// Files. Their lines ignore the host's switches.

namespace {

constexpr char parameter_directory[] = "/mnt/para/";
constexpr std::size_t path_size = 512;

// A name that does not fit is refused: a cut one would name another file.
bool build_parameter_path(char (&path)[path_size], const char *name)
{
    const int length = std::snprintf(path, path_size, "%s%s", parameter_directory, name);
    return length >= 0 && static_cast<std::size_t>(length) < path_size;
}

} // namespace

int net_file_exist(const char *path)
{
    return path != nullptr && access(path, F_OK) == 0;
}

int net_file_remove(const char *path)
{
    if (path == nullptr)
        return -1;
    if (*path == '\0' || net_file_exist(path) == 0)
        return 0;
    std::remove(path);
    if (net_file_exist(path) != 0) {
        log_red(NET_HERE, "delete file:%s failed\n", path);
        return -1;
    }
    log_green(NET_HERE, "delete file:%s success\n", path);
    return 0;
}

int net_file_write(const char *path, void *buf, unsigned int len)
{
    if (path == nullptr || buf == nullptr || len == 0)
        return -1;
    log_green(NET_HERE, "write file(%s)\n", path);
    std::FILE *file = std::fopen(path, "wb+");
    if (file == nullptr) {
        log_red(NET_HERE, "open file(%s) failed\n", path);
        return -1;
    }
    // Unbuffered, so that a full disk shows in the write itself and not unnoticed when closing.
    std::setvbuf(file, nullptr, _IONBF, 0);
    int result = 0;
    const std::size_t count = std::fwrite(buf, 1, len, file);
    if (count != len) {
        log_red(NET_HERE, "write file error(%zu), ferror(%d)\n", count, std::ferror(file));
        result = -1;
    }
    if (std::fclose(file) != 0)
        result = -1;
    return result;
}

int nets_get_file_size(char *path, int *size)
{
    struct stat status;
    if (path == nullptr || size == nullptr || stat(path, &status) != 0 || status.st_size > INT_MAX)
        return -1;
    *size = static_cast<int>(status.st_size);
    return 0;
}

int net_cert_write(char *name, void *buf, unsigned int len)
{
    if (name == nullptr || buf == nullptr || len == 0)
        return -1;
    if (*name == '\0') {
        log_green(NET_HERE, "need input cert filename\n");
        return -1;
    }
    char path[path_size];
    return build_parameter_path(path, name) ? net_file_write(path, buf, len) : -1;
}

int net_cert_remove(char *name)
{
    if (name == nullptr)
        return -1;
    log_green(NET_HERE, "remove file(%s)\n", name);
    char path[path_size];
    return *name != '\0' && build_parameter_path(path, name) ? net_file_remove(path) : -1;
}

// Random values and time

namespace {

constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
constexpr int alphabet_size = sizeof(alphabet) - 1;
constexpr unsigned int random_string_module = 0x8000000; // not this library's own bit

} // namespace

int net_random_string(char *buf, int bufLen, int strLen)
{
    if (strLen > bufLen) {
        if ((modulemask & random_string_module) != 0 && (loglevel & log_errors) != 0)
            log_red(NET_HERE, "buf len:%d is less than str len:%d\n", bufLen, strLen);
        return -1;
    }
    if (buf == nullptr || bufLen < 0)
        return -1;
    std::memset(buf, 0, static_cast<std::size_t>(bufLen));
    std::srand(static_cast<unsigned int>(std::time(nullptr)));
    for (int i = 0; i < strLen; ++i)
        buf[i] = alphabet[std::rand() % alphabet_size];
    return 0;
}

int net_random_num_get(int n)
{
    std::srand(net_tick_sec_get());
    return n != 0 ? std::rand() % n : 0;
}

unsigned long long net_tick_msec_get()
{
    return get_tick_count(0);
}

unsigned int net_tick_sec_get()
{
    return static_cast<unsigned int>(get_tick_count(0) / 1000);
}

int net_local_time_get(struct tm *src, struct tm *dst)
{
    if (src == nullptr || dst == nullptr)
        return 0;
    const time_t seconds = mktime_abs(src);
    if (localtime_r(&seconds, dst) == nullptr)
        return 0;
    dst->tm_year += 1900;
    dst->tm_mon += 1;
    return 1;
}

// Conversions between the host's forms and the protocol's

int string_join(char *out, unsigned int size, const char **items, int count, char sep)
{
    if (count < 0)
        return -1;
    std::size_t total = static_cast<std::size_t>(count); // separators and terminator
    for (int i = 0; i < count; ++i)
        total += std::strlen(items[i]);
    if (total > size)
        return -1;
    std::memset(out, 0, size);
    for (int i = 0; i < count; ++i) {
        if (i != 0)
            *out++ = sep;
        const std::size_t length = std::strlen(items[i]);
        std::memcpy(out, items[i], length);
        out += length;
    }
    return 0;
}

void net_ai_type_local_to_net(char *out, unsigned int size, int types)
{
    if (out == nullptr || size == 0)
        return;
    std::memset(out, 0, size);
    if ((types & 1) != 0)
        append(out, size, "people,");
    if ((types & 2) != 0)
        append(out, size, "vehicle,");
    if ((types & 4) != 0)
        append(out, size, "dog_cat,");
    if (*out == '\0')
        append(out, size, "none");
    // A cut text may end without a comma.
    const std::size_t length = std::strlen(out);
    if (length != 0 && out[length - 1] == ',')
        out[length - 1] = '\0';
}

void net_ai_type_net_to_local(char *text, unsigned int size, int &types)
{
    if (text == nullptr || size == 0)
        return;
    types = 0;
    if (contains_folded(text, "people"))
        types |= 1;
    if (contains_folded(text, "vehicle"))
        types |= 2;
    if (contains_folded(text, "dog_cat"))
        types |= 4;
}

namespace {

constexpr int polygon_capacity = 8;

}

void net_points_local_to_net(net_smart_ai_points_t *net, point_t *local, int count)
{
    if (net == nullptr || local == nullptr)
        return;
    *net = net_smart_ai_points_t{};
    for (int i = 0; i < count && i < polygon_capacity; ++i) {
        net->points[i] = local[i];
        ++net->pointNum;
    }
}

void net_points_net_to_local(net_smart_ai_points_t *net, point_t *local, int &count)
{
    if (net == nullptr || local == nullptr)
        return;
    std::fill_n(local, polygon_capacity, point_t{});
    count = 0;
    for (int i = 0; i < polygon_capacity && i < net->pointNum; ++i) {
        local[i] = net->points[i];
        ++count;
    }
}

NET_CROSSLINE_DETECT_DIRECTION_E net_direction_local_to_net(AI_TRIP_WIRE_DIRECTION direction)
{
    switch (direction) {
    case AI_TRIP_WIRE_ANTICLOCKWISE:
        return NET_CROSSLINE_DETECT_ANTICLOCKWISE;
    case AI_TRIP_WIRE_CLOCKWISE:
        return NET_CROSSLINE_DETECT_CLOCKWISE;
    case AI_TRIP_WIRE_BOTH:
        return NET_CROSSLINE_DETECT_BOTH;
    default:
        return NET_CROSSLINE_DETECT_NONE;
    }
}

AI_TRIP_WIRE_DIRECTION net_direction_net_to_local(NET_CROSSLINE_DETECT_DIRECTION_E direction)
{
    switch (direction) {
    case NET_CROSSLINE_DETECT_ANTICLOCKWISE:
        return AI_TRIP_WIRE_ANTICLOCKWISE;
    case NET_CROSSLINE_DETECT_CLOCKWISE:
        return AI_TRIP_WIRE_CLOCKWISE;
    case NET_CROSSLINE_DETECT_BOTH:
        return AI_TRIP_WIRE_BOTH;
    default:
        return AI_TRIP_WIRE_NONE;
    }
}

int net_check_points_change(point_t *a, int countA, point_t *b, int countB)
{
    constexpr double tolerance = 1e-6;
    if (countA != countB)
        return 1;
    if (countA < 1)
        return 0;
    if (a == nullptr || b == nullptr)
        return a != b;
    for (int i = 0; i < countA && i < polygon_capacity; ++i)
        if (std::fabs(a[i].x - b[i].x) > tolerance || std::fabs(a[i].y - b[i].y) > tolerance)
            return 1;
    return 0;
}

namespace {

struct AlarmWord {
    unsigned int bit;
    char text[11];
};

// In the order of the summary: blind stands before the alarm input although its bit is the higher one.
constexpr AlarmWord alarm_words[] = {
    {0x1, "MD,"}, {0x2, "videoLoss,"}, {0x8, "blind,"}, {0x4, "IOAlarm,"}, {0x800000, "visitor,"}};

constexpr AlarmWord ai_words[] = {{0x40000, "people,"},   {0x80000, "vehicle,"}, {0x100000, "face,"},
                                  {0x400000, "dog_cat,"}, {0x200000, "other,"},  {0x8000000, "package,"}};

template <std::size_t Count>
void append_words(char *out, unsigned int size, const AlarmWord (&words)[Count], unsigned int bits)
{
    for (const AlarmWord &word : words)
        if ((bits & word.bit) != 0)
            append(out, size, word.text);
}

void append_smart_ai_rules(char *out, unsigned int size, const time_section_t &set)
{
    for (int code = smart_ai_first; code <= smart_ai_last; ++code) {
        if (alarm_in_check_event(&set, static_cast<unsigned int>(code)) == 0)
            continue;
        const int rule = (code - smart_ai_first) % smart_ai_rules;
        const char number[] = {'_', static_cast<char>('0' + rule), ',', '\0'};
        append(out, size, word_of(alarm_types, code - rule));
        append(out, size, number);
    }
}

} // namespace

int get_alarm_str(char *buf, unsigned int size, int alarmTypes, time_section_t aiTypes, time_section_t smartAiTypes)
{
    if (buf == nullptr || size == 0)
        return -1;
    const unsigned int alarms = static_cast<unsigned int>(alarmTypes);
    append_words(buf, size, alarm_words, alarms);
    append_words(buf, size, ai_words, aiTypes.bits[0]);
    append_smart_ai_rules(buf, size, smartAiTypes);
    if (*buf == '\0')
        std::snprintf(buf, size, "alarm %X ai (0x%x, 0x%x) smart ai (0x%x, 0x%x)", alarms, aiTypes.bits[0],
                      aiTypes.bits[1], smartAiTypes.bits[0], smartAiTypes.bits[1]);
    else
        buf[strnlen(buf, size) - 1] = '\0'; // the last character, even where a cut has taken the comma
    return 0;
}

char *net_get_streanm_type_string(STREAM_TYPE_E type)
{
    static char streamType[32];
    const char *word = word_of(video_streams, type);
    if (word == nullptr) { // snapshots, too, are no live stream
        log_green(NET_HERE, "unknow stream type:%d.\n", type);
        return nullptr;
    }
    fill_text(streamType, sizeof(streamType), word);
    return streamType;
}

int is_stream_cmd(int cmd)
{
    return cmd == 3 || cmd == 5 || cmd == 143 || cmd == 298 || cmd == 381;
}

int net_check_dev_name(char *name)
{
    constexpr int examined = 32; // of a longer name only the beginning counts
    if (name == nullptr)
        return -1;
    for (int i = 0; i < examined && name[i] != '\0'; ++i) {
        const unsigned char c = static_cast<unsigned char>(name[i]);
        if (c < ' ' || c > '~' || std::strchr("$&*/:;<>?\\`|", c) != nullptr)
            return -1;
    }
    return 0;
}

int net_check_cert_name(char *name)
{
    if (name == nullptr) {
        log_plain("err str, null pointer\n");
        return -1;
    }
    if (std::strpbrk(name, "\n\"$&';<>`|") != nullptr) {
        log_plain("err str!\n");
        return -1;
    }
    return 0;
}

namespace {

// Ranged values are moved as words, so that a float keeps every bit.
struct ValueWords {
    unsigned int words[4];
};

// min max cur def to cur min max def
void to_local(const void *net, void *local)
{
    ValueWords from;
    std::memcpy(&from, net, sizeof(from));
    const ValueWords to = {{from.words[2], from.words[0], from.words[1], from.words[3]}};
    std::memcpy(local, &to, sizeof(to));
}

// cur min max def to min max cur def
void to_net(void *net, const void *local)
{
    ValueWords from;
    std::memcpy(&from, local, sizeof(from));
    const ValueWords to = {{from.words[1], from.words[2], from.words[0], from.words[3]}};
    std::memcpy(net, &to, sizeof(to));
}

} // namespace

int net_int_value_to_local(net_int_value_t *net, intvalue_t *local)
{
    to_local(net, local);
    return 0;
}

int local_int_value_to_net(net_int_value_t *net, intvalue_t *local)
{
    to_net(net, local);
    return 0;
}

int net_float_value_to_local(net_float_value_t *net, floatvalue_t *local)
{
    to_local(net, local);
    return 0;
}

int local_float_value_to_net(net_float_value_t *net, floatvalue_t *local)
{
    to_net(net, local);
    return 0;
}
