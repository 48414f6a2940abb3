#include "cases.h"

#include <net_public.h>

#include <fcntl.h>
#include <ifaddrs.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <regex>
#include <thread>
#include <utility>
#include <vector>

namespace {

using test::Arguments;
using test::log_of;
using test::number;
using test::outcome;
using test::output_of;
using test::pointer;

constexpr int unset = 77;

// A buffer of garbage, to see which bytes a function writes.
template <std::size_t Size> struct Buffer {
    Buffer()
    {
        std::memset(bytes, 0x5A, Size);
    }
    operator char *()
    {
        return bytes;
    }
    bool zero_from(std::size_t at) const
    {
        return std::all_of(bytes + at, bytes + Size, [](char byte) { return byte == '\0'; });
    }
    bool untouched_from(std::size_t at) const
    {
        return std::all_of(bytes + at, bytes + Size, [](char byte) { return byte == 0x5A; });
    }
    char bytes[Size];
};

int lowest_free_descriptor()
{
    const int descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(descriptor);
    return descriptor;
}

// Envelope and allocation

class EnvelopeTest : public test::HostTest {};

TEST_F(EnvelopeTest, InitialiserStampsAndZeroes)
{
    test::AnyEnvelope message;
    const net_param_t before = message.param;
    EXPECT_EQ(net_param_init_size_id(&message.param, nullptr, 100, 77), 0);
    EXPECT_EQ(message.param.inited, 1u);
    EXPECT_EQ(message.param.status, 0);
    EXPECT_EQ(message.param.paramId, 77);
    EXPECT_EQ(message.param.dataSize, 100u);
    EXPECT_EQ(message.param.reserved0, before.reserved0);
    EXPECT_EQ(message.param.reserved1, before.reserved1);
    const std::string payload(static_cast<char *>(message.param.data), 100);
    EXPECT_EQ(payload, std::string(100, '\0'));
    EXPECT_EQ(net_host_memory().last_size, 100u);

    test::AnyEnvelope empty; // what no bytes are is the allocator's affair
    EXPECT_EQ(net_param_init_size_id(&empty.param, nullptr, 0, 1), 0);
    EXPECT_EQ(net_host_memory().total, 2u);
}

TEST_F(EnvelopeTest, NullEnvelopeLogsAtItsFixedLine)
{
    EXPECT_EQ(output_of([] { EXPECT_EQ(net_param_init_size_id(nullptr, nullptr, 8, -3), -1); }),
              "\033[0;31m[net_public.cpp:6]:\033[0mparam is null, param id: -3\n");
    EXPECT_EQ(net_host_memory().total, 0u);
}

TEST_F(EnvelopeTest, FailedAllocationLeavesTheStamp)
{
    test::AnyEnvelope message;
    message.param.data = &message; // must not survive
    net_host_fail_allocation(1);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_param_init_size_id(&message.param, nullptr, 1234, 9), -1); }),
              "<red net_public.cpp>malloc failed\n"
              "<red net_public.cpp>malloc failed, param id: 9, size: 1234\n");
    EXPECT_EQ(message.param.inited, 1u);
    EXPECT_EQ(message.param.status, 0);
    EXPECT_EQ(message.param.paramId, 9);
    EXPECT_EQ(message.param.dataSize, 1234u);
    EXPECT_EQ(message.param.data, nullptr);
}

TEST_F(EnvelopeTest, SecondReleaseIsLoggedAndHarmless)
{
    void *block = net_malloc(4);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(log_of([&] { net_free(&block); }), "");
    EXPECT_EQ(block, nullptr);
    EXPECT_EQ(log_of([&] { net_free(&block); }), "<red net_public.cpp>pptr already be freed\n");
    EXPECT_EQ(log_of([&] { net_free(nullptr); }), "<red net_public.cpp>pptr already be freed\n");
}

TEST_F(EnvelopeTest, ErrorsNeedBothSwitches)
{
    const auto fail = [] { net_free(nullptr); };
    modulemask = 0xFFFFFFFF;
    loglevel = 0xFFFFFFFE;
    EXPECT_EQ(output_of(fail), "");
    modulemask = 0xFFFFFBFF;
    loglevel = 0xFFFFFFFF;
    EXPECT_EQ(output_of(fail), "");
    modulemask = 0x400;
    loglevel = 0x1;
    EXPECT_EQ(log_of(fail), "<red net_public.cpp>pptr already be freed\n");
}

TEST_F(EnvelopeTest, Banner)
{
    const std::string banner = g_error_big_string;
    EXPECT_EQ(banner.size(), 314u);
    EXPECT_EQ(banner.substr(0, 56), "\n ______     _____     _____       ____     _____   \n|  ");
    EXPECT_NE(banner.find("| |__      | |__) |  | |__) |   | |  | |  | |__) | \n"), std::string::npos);
    EXPECT_EQ(banner.substr(banner.size() - 53), "|______|   |_|  \\_\\  |_|  \\_\\    \\____/   |_|  \\_\\ \n\n");
}

// Cases -------------------------------------------------------------------------------------------

std::vector<unsigned int> words_of(const std::string &text)
{
    std::istringstream in(text);
    std::vector<unsigned int> words;
    for (std::string word; in >> word;)
        words.push_back(static_cast<unsigned int>(std::stoll(word, nullptr, 0)));
    return words;
}

// The result and a buffer of so many bytes.
template <class Get> std::string got(std::size_t size, Get get)
{
    int result = 0;
    const std::string buffer = test::left_in(size, [&](char *out) { result = get(out); });
    return outcome(result, buffer);
}

std::string product_and_device(Arguments &arguments)
{
    net_host().type = arguments.at(0).c_str();
    net_host().nvr_wifi_type = number(arguments.at(1));
    net_host().support_wifi = number(arguments.at(2));
    net_host().solo_ipc = number(arguments.at(3));
    return outcome(net_product_type_get(), net_dev_type_get());
}

std::string local_time(Arguments &arguments)
{
    const auto words = words_of(arguments.at(0));
    struct tm src {
    }, dst{};
    int *const fields[] = {&src.tm_year, &src.tm_mon, &src.tm_mday, &src.tm_hour, &src.tm_min, &src.tm_sec};
    for (std::size_t i = 0; i < std::size(fields); ++i)
        *fields[i] = static_cast<int>(words.at(i));
    const int result = net_local_time_get(&src, &dst);
    return outcome(result, dst.tm_year, dst.tm_mon, dst.tm_mday, dst.tm_hour, dst.tm_min, dst.tm_sec, dst.tm_wday,
                   dst.tm_yday);
}

template <class Point> std::string shown_points(int count, const Point (&points)[8])
{
    std::string text = outcome(count);
    for (const Point &point : points)
        text += outcome("", point.x, point.y);
    return text;
}

std::string points_to_protocol(Arguments &arguments)
{
    point_t local[10];
    for (int i = 0; i < 10; ++i)
        local[i] = {static_cast<float>(i + 1), 0.5f};
    net_smart_ai_points_t net;
    std::memset(&net, 0x5A, sizeof(net));
    net_points_local_to_net(&net, local, number(arguments.at(0)));
    return shown_points(net.pointNum, net.points);
}

std::string points_from_protocol(Arguments &arguments)
{
    net_smart_ai_points_t net{};
    for (int i = 0; i < 8; ++i)
        net.points[i] = {static_cast<float>(i + 1), 0.5f};
    net.pointNum = number(arguments.at(0));
    struct {
        point_t points[8], beyond;
    } local;
    std::memset(&local, 0x5A, sizeof(local));
    const point_t beyond = local.beyond;
    int count = unset;
    net_points_net_to_local(&net, local.points, count);
    EXPECT_EQ(std::memcmp(&beyond, &local.beyond, sizeof(beyond)), 0);
    return shown_points(count, local.points);
}

std::string points_change(Arguments &arguments)
{
    point_t a[9] = {}, b[9] = {};
    std::istringstream change(arguments.at(2));
    std::size_t index = 0;
    change >> index >> b[index].x >> b[index].y;
    return outcome(net_check_points_change(a, number(arguments.at(0)), b, number(arguments.at(1))));
}

std::string alarm_summary(Arguments &arguments)
{
    const int size = number(arguments.at(1));
    const auto ai = words_of(arguments.at(3)), smart = words_of(arguments.at(4));
    std::string text = std::string(256, '~');
    text.replace(0, arguments.at(0).size() + 1, arguments[0].c_str(), arguments[0].size() + 1);
    const std::string beyond = text.substr(static_cast<std::size_t>(std::max(size, 8)));
    const int result = get_alarm_str(text.data(), static_cast<unsigned int>(size), number(arguments.at(2)),
                                     {{ai.at(0), ai.at(1)}}, {{smart.at(0), smart.at(1)}});
    EXPECT_EQ(text.substr(static_cast<std::size_t>(std::max(size, 8))), beyond);
    return outcome(result, text.c_str());
}

class PublicTest : public test::HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        const char *zone = std::getenv("TZ");
        zone_ = zone != nullptr ? zone : "";
        set_zone("CET-1CEST,M3.5.0,M10.5.0/3");
    }
    void TearDown() override
    {
        set_zone(zone_);
        HostTest::TearDown();
    }

private:
    static void set_zone(const std::string &zone)
    {
        if (zone.empty())
            unsetenv("TZ");
        else
            setenv("TZ", zone.c_str(), 1);
        tzset();
    }

    std::string zone_;
};

TEST_F(PublicTest, Cases)
{
    test::run_cases(
        "public.txt",
        {{"net_uid_get",
          [](Arguments &arguments) {
              net_host().uid = arguments.at(0).c_str();
              net_host().uid_result = number(arguments.at(1));
              net_host().support_uid = number(arguments.at(2));
              return got(34, net_uid_get);
          }},
         {"net_key_get",
          [](Arguments &arguments) {
              net_host().key = arguments.at(0).c_str();
              net_host().key_result = number(arguments.at(1));
              return got(12, net_key_get);
          }},
         {"net_mac_get",
          [](Arguments &arguments) {
              const unsigned char mac[] = {0xEC, 0x71, 0x00, 0x0A, 0xFF, 0x3B};
              std::memcpy(net_host().mac, mac, sizeof(mac));
              net_host().mac_result = number(arguments.at(0));
              net_host().temporary_mac[5] = 0x7D;
              net_host().temporary_mac_result = number(arguments.at(1));
              return got(20, net_mac_get);
          }},
         {"_nets_get_model_info",
          [](Arguments &arguments) {
              net_host().display_type = arguments.at(0).c_str();
              return got(66, _nets_get_model_info);
          }},
         {"get_country_code",
          [](Arguments &arguments) {
              net_host().country_code = pointer(arguments.at(0));
              return std::string(get_country_code());
          }},
         {"net_product_type_get, net_dev_type_get", product_and_device},
         {"get_raw_mac",
          [](Arguments &arguments) {
              get_raw_mac(arguments.at(0).data(), static_cast<unsigned int>(number(arguments.at(1))));
              return std::string(arguments[0].c_str());
          }},
         {"net_local_time_get", local_time},
         {"string_join",
          [](Arguments &arguments) {
              const char *items[] = {"one", "", "three"};
              const int count = number(arguments.at(0)), size = number(arguments.at(1));
              return got(16, [&](char *out) { return string_join(out, size, items, count, '/'); });
          }},
         {"net_ai_type_local_to_net",
          [](Arguments &arguments) {
              const auto size = static_cast<unsigned int>(number(arguments.at(1)));
              return std::string(test::left_in(size, [&](char *out) {
                                     net_ai_type_local_to_net(out, size, number(arguments.at(0)));
                                 }).c_str());
          }},
         {"net_ai_type_net_to_local",
          [](Arguments &arguments) {
              int types = unset;
              const auto size = static_cast<unsigned int>(number(arguments.at(1)));
              net_ai_type_net_to_local(pointer(arguments.at(0)), size, types);
              return outcome(types);
          }},
         {"net_points_local_to_net", points_to_protocol},
         {"net_points_net_to_local", points_from_protocol},
         {"net_check_points_change", points_change},
         {"directions",
          [](Arguments &arguments) {
              const int code = number(arguments.at(0));
              return outcome(net_direction_local_to_net(static_cast<AI_TRIP_WIRE_DIRECTION>(code)),
                             net_direction_net_to_local(static_cast<NET_CROSSLINE_DETECT_DIRECTION_E>(code)));
          }},
         {"get_alarm_str", alarm_summary},
         {"net_get_streanm_type_string",
          [](Arguments &arguments) {
              modulemask = 0;
              const char *word = net_get_streanm_type_string(static_cast<STREAM_TYPE_E>(number(arguments.at(0))));
              const std::string text = word != nullptr ? word : "null";
              EXPECT_TRUE(word == nullptr || word == net_get_streanm_type_string(STREAM_TYPE_SUB)) << "one buffer";
              return text;
          }},
         {"net_xml_printf_filter",
          [](Arguments &arguments) { return std::string(net_xml_printf_filter(pointer(arguments.at(0)))); }},
         {"net_xml_filter", [](Arguments &arguments) {
              net_xml_filter(arguments.at(0), arguments.at(1), arguments.at(2));
              return arguments[0];
          }}});
}

TEST_F(PublicTest, NullPointers)
{
    struct tm any {};
    EXPECT_EQ(net_key_get(nullptr), -1);
    EXPECT_EQ(_nets_get_model_info(nullptr), 1);
    get_raw_mac(nullptr, 20);
    EXPECT_EQ(net_local_time_get(nullptr, &any), 0);
    EXPECT_EQ(net_local_time_get(&any, nullptr), 0);
    EXPECT_EQ(string_join(nullptr, 9, nullptr, -1, ','), -1);
    Buffer<4> text;
    net_ai_type_local_to_net(text, 0, 1);
    EXPECT_TRUE(text.untouched_from(0));
    net_ai_type_local_to_net(nullptr, 4, 1);
    net_smart_ai_points_t net = {5, {}};
    point_t points[8] = {};
    int count = unset;
    net_points_local_to_net(&net, nullptr, 1);
    net_points_local_to_net(nullptr, points, 1);
    net_points_net_to_local(&net, nullptr, count);
    net_points_net_to_local(nullptr, points, count);
    EXPECT_EQ(net.pointNum, 5);
    EXPECT_EQ(count, unset);
    EXPECT_EQ(net_check_points_change(nullptr, 1, points, 1), 1);
    EXPECT_EQ(net_check_points_change(points, 1, nullptr, 1), 1);
    EXPECT_EQ(net_check_points_change(nullptr, 1, nullptr, 1), 0);
}

TEST_F(PublicTest, RangedValues)
{
    const net_int_value_t net = {-1, 100, 50, 25};
    net_int_value_t copy = net, back{};
    intvalue_t local{};
    EXPECT_EQ(net_int_value_to_local(&copy, &local), 0);
    EXPECT_EQ(outcome(local.cur, local.min, local.max, local.def), "50 -1 100 25");
    EXPECT_EQ(local_int_value_to_net(&back, &local), 0);
    EXPECT_EQ(std::memcmp(&back, &net, sizeof(net)), 0);

    net_float_value_t ratio = {0.5f, 2.5f, 1.25f, -0.0f}, ratio_back{};
    const unsigned int signalling = 0x7FA00001; // a conversion would quieten it
    std::memcpy(&ratio.max, &signalling, sizeof(signalling));
    floatvalue_t local_ratio{};
    EXPECT_EQ(net_float_value_to_local(&ratio, &local_ratio), 0);
    EXPECT_EQ(outcome(local_ratio.cur, local_ratio.min), "1.25 0.5");
    EXPECT_EQ(std::memcmp(&local_ratio.max, &signalling, sizeof(signalling)), 0);
    EXPECT_EQ(local_float_value_to_net(&ratio_back, &local_ratio), 0);
    EXPECT_EQ(std::memcmp(&ratio_back, &ratio, sizeof(ratio)), 0);
}

// Network interfaces

class InterfaceTest : public test::HostTest {
protected:
    // Does the loopback interface have its usual address here? Where every interface is hidden, it has not.
    static bool has_loopback()
    {
        ifaddrs *list = nullptr;
        if (getifaddrs(&list) != 0)
            return false;
        bool found = false;
        for (const ifaddrs *i = list; i != nullptr; i = i->ifa_next) {
            if (i->ifa_addr == nullptr || i->ifa_addr->sa_family != AF_INET || std::strcmp(i->ifa_name, "lo") != 0)
                continue;
            sockaddr_in address;
            std::memcpy(&address, i->ifa_addr, sizeof(address));
            found = found || address.sin_addr.s_addr == htonl(INADDR_LOOPBACK);
        }
        freeifaddrs(list);
        return found;
    }
};

TEST_F(InterfaceTest, LoopbackHasAddresses)
{
    if (!has_loopback())
        GTEST_SKIP() << "no loopback interface";
    const int free_descriptor = lowest_free_descriptor();
    Buffer<32> ip;
    Buffer<20> mac;
    EXPECT_EQ(output_of([&] { EXPECT_EQ(net_ip_and_mac_get("lo", ip, mac), 0); }), "");
    EXPECT_STREQ(ip, "127.0.0.1");
    EXPECT_STREQ(mac, "00:00:00:00:00:00");

    // A failing conversion fails the call, but the hardware address is told.
    net_host().ntoa_result = -1;
    modulemask = 0; // the line knows no switches
    Buffer<32> untouched;
    Buffer<20> second;
    EXPECT_EQ(output_of([&] { EXPECT_EQ(net_ip_and_mac_get("lo", untouched, second), -1); }), "get ip failed\n");
    EXPECT_TRUE(untouched.untouched_from(0));
    EXPECT_STREQ(second, "00:00:00:00:00:00");
    EXPECT_EQ(lowest_free_descriptor(), free_descriptor);
}

// A real interface has a hardware address whose bytes differ; the kernel's text of it is the one wanted.
TEST_F(InterfaceTest, HardwareAddressOfRealInterfaces)
{
    int compared = 0;
    std::error_code missing;
    for (const auto &entry : std::filesystem::directory_iterator("/sys/class/net", missing)) {
        std::ifstream file(entry.path() / "address");
        std::string kernel;
        Buffer<32> ip;
        Buffer<20> mac;
        if (file >> kernel && net_ip_and_mac_get(entry.path().filename().c_str(), ip, mac) == 0) {
            EXPECT_EQ(std::string(mac), kernel) << entry.path();
            ++compared;
        }
    }
    if (compared == 0)
        GTEST_SKIP() << "no interface with an address to compare with";
}

TEST_F(InterfaceTest, UnknownInterfaceHasNone)
{
    const int free_descriptor = lowest_free_descriptor();
    Buffer<32> ip;
    Buffer<20> mac;
    for (const char *name : {"nosuch0", "", "l"}) {
        EXPECT_EQ(net_ip_and_mac_get(name, ip, mac), -1) << name;
    }
    EXPECT_EQ(net_ip_and_mac_get("lo", nullptr, mac), -1);
    EXPECT_EQ(net_ip_and_mac_get("lo", ip, nullptr), -1);
    EXPECT_TRUE(ip.untouched_from(0));
    EXPECT_TRUE(mac.untouched_from(0));
    EXPECT_EQ(lowest_free_descriptor(), free_descriptor);
}

TEST_F(InterfaceTest, LinkStatus)
{
    const int free_descriptor = lowest_free_descriptor();
    modulemask = 0; // bare lines know no switches
    EXPECT_EQ(output_of([] { EXPECT_EQ(net_link_status_get("nosuch0"), -1); }), "SIOCETHTOOL failed.\n");
    int status = -2;
    const std::string output = output_of([&] { status = net_link_status_get("lo"); });
    // An emulated kernel may not know the question.
    EXPECT_EQ(output, status == -1 ? "SIOCETHTOOL failed.\n" : "");
    EXPECT_TRUE(status == -1 || status == 0 || status == 1) << status;
    EXPECT_EQ(lowest_free_descriptor(), free_descriptor);
}

// A daemon's first descriptor may be 0.
TEST_F(InterfaceTest, WithoutStandardInput)
{
    Buffer<32> ip;
    Buffer<20> mac;
    const test::Output output;
    const int usual = net_link_status_get("lo");
    const int kept = dup(STDIN_FILENO);
    close(STDIN_FILENO);
    const int status = net_link_status_get("lo");
    const int addresses = net_ip_and_mac_get("lo", ip, mac);
    dup2(kept, STDIN_FILENO);
    close(kept);
    EXPECT_EQ(status, usual);
    EXPECT_EQ(addresses, 0);
}

TEST_F(InterfaceTest, LinkStatusWithoutDescriptorsLeft)
{
    // Output first: capturing needs descriptors of its own.
    test::Output output;
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    rlimit none = before;
    none.rlim_cur = static_cast<rlim_t>(lowest_free_descriptor());
    setrlimit(RLIMIT_NOFILE, &none);
    Buffer<32> ip;
    Buffer<20> mac;
    const int status = net_link_status_get("lo");
    const int addresses = net_ip_and_mac_get("lo", ip, mac);
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(status, -2);
    EXPECT_EQ(addresses, -1);
    EXPECT_EQ(output.text(), "create socket failed.\n");
}

// Files

class FileTest : public test::HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        modulemask = 0; // file lines know no switches
        loglevel = 0;
        directory = testing::TempDir() + "net_public_XXXXXX";
        ASSERT_NE(mkdtemp(directory.data()), nullptr);
        path = directory + "/file";
        free_descriptor_ = lowest_free_descriptor();
    }
    void TearDown() override
    {
        EXPECT_EQ(lowest_free_descriptor(), free_descriptor_) << "descriptor left open";
        std::filesystem::remove_all(directory);
        HostTest::TearDown();
    }

    static std::string content(const std::string &of)
    {
        std::ifstream file(of, std::ios::binary);
        return file ? std::string(std::istreambuf_iterator<char>(file), {}) : "none";
    }

    // A call with paths that begin with DIR, on the files that the cases tell of, and what it logs.
    template <class Function> test::Call on_files(Function call)
    {
        return [this, call](Arguments &arguments) {
            modulemask = loglevel = 0;
            unlink(path.c_str());
            for (const auto &[name, size] : std::initializer_list<std::pair<const char *, std::uintmax_t>>{
                     {"/one", 1}, {"/empty", 0}, {"/hole", INT_MAX}, {"/beyond", INT_MAX + std::uintmax_t{1}}}) {
                std::ofstream(directory + name).flush();
                std::filesystem::resize_file(directory + name, size); // what is not written takes no room
            }
            for (std::string &argument : arguments)
                if (argument.rfind("DIR", 0) == 0)
                    argument.replace(0, 3, directory);
            std::string text;
            const std::string log = log_of([&] { text = call(arguments); });
            return text + " " + std::regex_replace(log, std::regex(directory), "DIR");
        };
    }

    std::string directory;
    std::string path;

private:
    int free_descriptor_ = 0;
};

// A function that writes data to a file of a name.
template <class Write> auto writing(Write write)
{
    return [write](Arguments &arguments) {
        std::string &data = arguments.at(1);
        return write(pointer(arguments.at(0)), pointer(data), static_cast<unsigned int>(data.size()));
    };
}

TEST_F(FileTest, Cases)
{
    const auto write = writing(net_file_write);
    const auto write_cert = writing(net_cert_write);
    test::run_cases("files.txt",
                    {{"net_file_write", on_files([=](Arguments &arguments) {
                          const int result = write(arguments);
                          return outcome(result, content(arguments[0]));
                      })},
                     {"net_file_remove", on_files([](Arguments &arguments) {
                          const int result = net_file_remove(pointer(arguments.at(0)));
                          return outcome(result, net_file_exist(pointer(arguments[0])));
                      })},
                     {"nets_get_file_size", on_files([](Arguments &arguments) {
                          int size = -5;
                          EXPECT_EQ(nets_get_file_size(arguments.at(0).data(), nullptr), -1);
                          const int result = nets_get_file_size(arguments[0].data(), &size);
                          return outcome(result, size);
                      })},
                     {"net_file_exist",
                      on_files([](Arguments &arguments) { return outcome(net_file_exist(pointer(arguments.at(0)))); })},
                     {"net_cert_write", on_files([=](Arguments &arguments) { return outcome(write_cert(arguments)); })},
                     {"net_cert_remove", on_files([](Arguments &arguments) {
                          return outcome(net_cert_remove(pointer(arguments.at(0))));
                      })}});
}

TEST_F(FileTest, WriteReportsAFullDisk)
{
    if (access("/dev/full", W_OK) != 0)
        GTEST_SKIP() << "no /dev/full";
    char text[] = "text";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_file_write("/dev/full", text, 4), -1); }),
              "<green net_public.cpp>write file(/dev/full)\n"
              "<red net_public.cpp>write file error(0), ferror(1)\n");
}

TEST_F(FileTest, WriteReportsAPartialWrite)
{
    constexpr unsigned int limit = 65536;
    std::string data(100000, 'd');
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit small = before;
    small.rlim_cur = limit;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    int result = 0;
    const std::string log =
        log_of([&] { result = net_file_write(path.c_str(), &data[0], static_cast<unsigned int>(data.size())); });
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(result, -1);
    EXPECT_EQ(log, "<green net_public.cpp>write file(" + path +
                       ")\n<red net_public.cpp>write file error(65536), ferror(1)\n");
    EXPECT_EQ(content(path), std::string(limit, 'd'));
}

// Random values and time

class RandomAndTimeTest : public test::HostTest {};

TEST_F(RandomAndTimeTest, StringFillsWhatIsAskedFor)
{
    Buffer<12> text;
    EXPECT_EQ(net_random_string(text, 8, 8), 0);
    const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    for (int i = 0; i < 8; ++i)
        EXPECT_NE(std::memchr(alphabet, text[i], 62), nullptr) << i;
    EXPECT_TRUE(text.untouched_from(8));

    EXPECT_EQ(net_random_string(text, 12, 5), 0);
    EXPECT_EQ(std::strlen(text), 5u);
    EXPECT_TRUE(text.zero_from(5));
    EXPECT_EQ(net_random_string(text, 12, 0), 0);
    EXPECT_TRUE(text.zero_from(0));
    EXPECT_EQ(net_random_string(nullptr, 8, 8), -1);
    EXPECT_EQ(net_random_string(text, 0, 0), 0);
    EXPECT_EQ(net_random_string(text, -1, -1), -1);
    EXPECT_EQ(net_random_num_get(0), 0);
}

TEST_F(RandomAndTimeTest, StringFollowsTheSeededGenerator)
{
    // The second may change between the call and the comparison; then it is made again.
    for (int attempt = 0; attempt < 3; ++attempt) {
        const time_t before = time(nullptr);
        Buffer<63> text;
        ASSERT_EQ(net_random_string(text, 63, 62), 0);
        if (time(nullptr) != before)
            continue;
        std::srand(static_cast<unsigned int>(before));
        const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
        std::string expected;
        for (int i = 0; i < 62; ++i)
            expected += alphabet[static_cast<std::size_t>(std::rand() % 62)];
        EXPECT_EQ(std::string(text), expected);
        return;
    }
    FAIL() << "the clock never held still";
}

TEST_F(RandomAndTimeTest, TooLongStringHasAGateOfItsOwn)
{
    Buffer<9> text;
    const auto fail = [&] { EXPECT_EQ(net_random_string(text, 8, 9), -1); };
    modulemask = 0x400; // this library's own bit does not count
    EXPECT_EQ(output_of(fail), "");
    modulemask = 0x8000000;
    EXPECT_EQ(log_of(fail), "<red net_public.cpp>buf len:8 is less than str len:9\n");
    EXPECT_EQ(log_of([] { EXPECT_EQ(net_random_string(nullptr, -1, 3), -1); }),
              "<red net_public.cpp>buf len:-1 is less than str len:3\n");
    loglevel = 0xFFFFFFFE;
    EXPECT_EQ(output_of(fail), "");
    EXPECT_TRUE(text.untouched_from(0));
}

TEST_F(RandomAndTimeTest, NumberDependsOnTheSecond)
{
    net_host().tick_fixed = true;
    net_host().tick = 77000;
    const int number = net_random_num_get(1000);
    net_host().tick = 77999;
    EXPECT_EQ(net_random_num_get(1000), number);
    std::srand(77);
    EXPECT_EQ(number, std::rand() % 1000);
    EXPECT_EQ(net_random_num_get(1), 0);
}

TEST_F(RandomAndTimeTest, TickIsSixtyFourBitsWide)
{
    net_host().tick_fixed = true;
    net_host().tick = 4294967296ull + 1999;
    EXPECT_EQ(net_tick_msec_get(), 4294969295ull);
    EXPECT_EQ(net_tick_sec_get(), 4294969u);
}

// Log filter

TEST(LogFilter, ResultLastsUntilTheNextCall)
{
    const char *first = net_xml_printf_filter("<key>a long enough text to be on the heap, if it is long</key>");
    EXPECT_EQ(net_xml_printf_filter("<key>b</key>"), first);
    EXPECT_STREQ(first, "<key>*</key>");
}

// Conversions

class ConversionTest : public test::HostTest {};

TEST_F(ConversionTest, StreamCommands)
{
    std::vector<int> found;
    for (int cmd = -1000; cmd <= 1000; ++cmd)
        if (is_stream_cmd(cmd) == 1)
            found.push_back(cmd);
        else
            EXPECT_EQ(is_stream_cmd(cmd), 0) << cmd;
    EXPECT_EQ(found, (std::vector<int>{3, 5, 143, 298, 381}));
}

TEST_F(ConversionTest, DeviceNames)
{
    const std::string valid = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 !\"#%'()+,-.=[]^_{}~@";
    for (int c = 1; c < 256; ++c) {
        std::string name = {'a', static_cast<char>(c)};
        EXPECT_EQ(net_check_dev_name(&name[0]), valid.find(name[1]) != std::string::npos ? 0 : -1) << c;
    }
    std::string name(31, 'n');
    name += '/';
    EXPECT_EQ(net_check_dev_name(&name[0]), -1); // the 32nd byte counts
    name.insert(0, "n");
    EXPECT_EQ(net_check_dev_name(&name[0]), 0); // the 33rd does not
    name.clear();
    EXPECT_EQ(net_check_dev_name(&name[0]), 0);
}

TEST_F(ConversionTest, CertificateNames)
{
    modulemask = 0; // bare lines know no switches
    const std::string invalid = "\n\"$&';<>`|";
    for (int c = 1; c < 256; ++c) {
        std::string name = std::string(600, 'n') + static_cast<char>(c); // examined to its end
        const bool bad = invalid.find(name.back()) != std::string::npos;
        int result = 5;
        EXPECT_EQ(output_of([&] { result = net_check_cert_name(&name[0]); }), bad ? "err str!\n" : "") << c;
        EXPECT_EQ(result, bad ? -1 : 0) << c;
    }
    char empty[] = "";
    EXPECT_EQ(net_check_cert_name(empty), 0);
    EXPECT_EQ(output_of([] { EXPECT_EQ(net_check_cert_name(nullptr), -1); }), "err str, null pointer\n");
}

// The stand-in host itself

class StandInTest : public test::HostTest {};

TEST_F(StandInTest, TickRuns)
{
    const unsigned long long before = get_tick_count(0);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const unsigned long long passed = get_tick_count(0) - before;
    EXPECT_GE(passed, 19u);
    EXPECT_LT(passed, 60000u);
}

} // namespace
