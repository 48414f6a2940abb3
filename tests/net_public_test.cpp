#include "support.h"

#include <net_public.h>

#include <fcntl.h>
#include <ifaddrs.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>
#include <utility>
#include <vector>

namespace {

using test::log_of;
using test::output_of;

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
        for (; at < Size; ++at)
            if (bytes[at] != '\0')
                return false;
        return true;
    }
    bool untouched_from(std::size_t at) const
    {
        for (; at < Size; ++at)
            if (bytes[at] != 0x5A)
                return false;
        return true;
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

TEST_F(EnvelopeTest, ZeroSizeIsTheAllocatorsAffair)
{
    test::AnyEnvelope message;
    EXPECT_EQ(net_param_init_size_id(&message.param, nullptr, 0, 1), 0);
    EXPECT_EQ(net_host_memory().total, 1u);
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

// Identity of the device

class IdentityTest : public test::HostTest {};

TEST_F(IdentityTest, Uid)
{
    net_host().uid = "ABCDEF";
    Buffer<40> uid;
    EXPECT_EQ(net_uid_get(uid), 0);
    EXPECT_STREQ(uid, "ABCDEF");
    EXPECT_EQ(std::string(uid + 6, 26), std::string(26, '\0'));
    EXPECT_TRUE(uid.untouched_from(32));

    net_host().uid = "0123456789012345678901234567890";
    EXPECT_EQ(net_uid_get(uid), 0);
    EXPECT_STREQ(uid, "0123456789012345678901234567890");
}

TEST_F(IdentityTest, FailedUidIsTakenWhenOneIsConfigured)
{
    net_host().uid = "LEFTOVER";
    net_host().uid_result = -1;
    net_host().support_uid = 1;
    Buffer<32> uid;
    EXPECT_EQ(net_uid_get(uid), 0);
    EXPECT_STREQ(uid, "LEFTOVER");

    Buffer<32> untouched;
    net_host().support_uid = 2; // only 1 counts
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_uid_get(untouched), -1); }),
              "<red net_public.cpp>get uid failed, support:2\n");
    EXPECT_TRUE(untouched.untouched_from(0));
}

TEST_F(IdentityTest, Key)
{
    net_host().key = "abcdefghi"; // one character too many, and no terminator
    Buffer<12> key;
    EXPECT_EQ(net_key_get(key), 0);
    EXPECT_STREQ(key, "abcdefgh");
    EXPECT_TRUE(key.untouched_from(9));

    net_host().key_result = -1;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_key_get(key), -1); }), "<red net_public.cpp>get key failed \n");
    EXPECT_STREQ(key, "abcdefgh");
    EXPECT_EQ(net_key_get(nullptr), -1);
}

TEST_F(IdentityTest, MacFallsBackToTheTemporaryOne)
{
    const unsigned char mac[] = {0xEC, 0x71, 0x00, 0x0A, 0xFF, 0x3B};
    std::memcpy(net_host().mac, mac, sizeof(mac));
    Buffer<20> text;
    EXPECT_EQ(net_mac_get(text), 0);
    EXPECT_STREQ(text, "EC:71:00:0A:FF:3B");

    net_host().mac_result = -1;
    net_host().temporary_mac[5] = 0x7D;
    EXPECT_EQ(net_mac_get(text), 0);
    EXPECT_STREQ(text, "02:00:00:00:00:7D");

    net_host().temporary_mac_result = 1;
    Buffer<20> untouched;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_mac_get(untouched), -1); }), "<red net_public.cpp>get key failed \n");
    EXPECT_TRUE(untouched.untouched_from(0));
}

TEST_F(IdentityTest, Model)
{
    Buffer<70> model;
    net_host().display_type = "RC-410W";
    EXPECT_EQ(_nets_get_model_info(model), 1);
    EXPECT_STREQ(model, "RC-410W");
    const std::string longer(80, 'm');
    net_host().display_type = longer.c_str();
    EXPECT_EQ(_nets_get_model_info(model), 1);
    EXPECT_EQ(std::string(model), std::string(63, 'm'));
    EXPECT_TRUE(model.untouched_from(64));
    EXPECT_EQ(_nets_get_model_info(nullptr), 1);
}

TEST_F(IdentityTest, ProductAndDeviceType)
{
    struct {
        const char *type;
        int nvr_wifi, support_wifi, solo;
        int product, device;
    } const cases[] = {
        {"NVR-16", 0, 1, 1, 3, 3},   {"NVR-16", 2, 0, 0, 5, 3},       {"HVR", 1, 0, 0, 3, 3},
        {"X-IPC", 0, 0, 1, 2, 2},    {"X-IPC", 0, 1, 0, 4, 2},        {"X-IPC", 0, 1, 1, 7, 2},
        {"DVR", 1, 1, 1, 1, 1},      {"BASE", 1, 1, 1, 8, 4},         {"HOMEHUB", 1, 1, 1, 14, 7},
        {"", 1, 1, 1, 127, 127},     {"nvr", 0, 0, 0, 127, 127}, // case matters
        {"BASE IPC", 0, 0, 0, 2, 2}, {"IPC NVR", 0, 1, 0, 3, 3}, // the order of the words decides
        {"DVR BASE", 0, 0, 0, 1, 1}, {"HOMEHUB BASE", 0, 0, 0, 8, 4},
    };
    for (const auto &c : cases) {
        net_host().type = c.type;
        net_host().nvr_wifi_type = c.nvr_wifi;
        net_host().support_wifi = c.support_wifi;
        net_host().solo_ipc = c.solo;
        EXPECT_EQ(net_product_type_get(), c.product) << c.type;
        EXPECT_EQ(net_dev_type_get(), c.device) << c.type;
    }
}

TEST_F(IdentityTest, CountryCode)
{
    EXPECT_STREQ(get_country_code(), "US");
    net_host().country_code = nullptr;
    EXPECT_STREQ(get_country_code(), "US");
    net_host().country_code = "DE";
    EXPECT_EQ(get_country_code(), net_host().country_code);
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

TEST_F(InterfaceTest, RawMac)
{
    struct {
        const char *mac;
        unsigned int size;
        const char *raw;
    } const cases[] = {{"ec:71:00:0a:ff:3b", 20, "ec71000aff3b"},
                       {"ec:71:00:0a:ff:3b", 13, "ec71000aff3b"},
                       {"ec:71:00:0a:ff:3b", 6, "ec710"},
                       {"::a::", 20, "a"},
                       {"abc", 20, "abc"},
                       {"", 20, ""},
                       {"abc", 1, ""},
                       {"a:c", 0, "a:c"}};
    for (const auto &c : cases) {
        Buffer<24> mac;
        std::strcpy(mac, c.mac);
        get_raw_mac(mac, c.size);
        EXPECT_STREQ(mac, c.raw) << c.mac << " " << c.size;
    }
    get_raw_mac(nullptr, 20);
}

// Files

class FileTest : public test::HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        modulemask = 0; // file lines know no switches
        loglevel = 0;
        std::string name = testing::TempDir() + "net_public_XXXXXX";
        ASSERT_NE(mkdtemp(&name[0]), nullptr);
        directory = name;
        path = directory + "/file";
        free_descriptor_ = lowest_free_descriptor();
    }
    void TearDown() override
    {
        EXPECT_EQ(lowest_free_descriptor(), free_descriptor_) << "descriptor left open";
        unlink(path.c_str());
        rmdir(directory.c_str());
        HostTest::TearDown();
    }

    std::string content() const
    {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    std::string directory;
    std::string path;

private:
    int free_descriptor_ = 0;
};

TEST_F(FileTest, WriteReplacesTheContent)
{
    char text[] = "one\0two";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_file_write(path.c_str(), text, 7), 0); }),
              "<green net_public.cpp>write file(" + path + ")\n");
    EXPECT_EQ(content(), std::string("one\0two", 7));
    EXPECT_EQ(net_file_exist(path.c_str()), 1);
    int size = -5;
    EXPECT_EQ(nets_get_file_size(&path[0], &size), 0);
    EXPECT_EQ(size, 7);

    output_of([&] { EXPECT_EQ(net_file_write(path.c_str(), text, 2), 0); });
    EXPECT_EQ(content(), "on");
}

TEST_F(FileTest, WriteRefusesWhatItCannotWrite)
{
    char text[] = "text";
    EXPECT_EQ(output_of([&] {
                  EXPECT_EQ(net_file_write(nullptr, text, 4), -1);
                  EXPECT_EQ(net_file_write(path.c_str(), nullptr, 4), -1);
                  EXPECT_EQ(net_file_write(path.c_str(), text, 0), -1);
              }),
              "");
    EXPECT_EQ(net_file_exist(path.c_str()), 0);

    const std::string nowhere = directory + "/missing/file";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_file_write(nowhere.c_str(), text, 4), -1); }),
              "<green net_public.cpp>write file(" + nowhere + ")\n<red net_public.cpp>open file(" + nowhere +
                  ") failed\n");
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
    EXPECT_EQ(content(), std::string(limit, 'd'));
}

TEST_F(FileTest, Remove)
{
    EXPECT_EQ(output_of([&] {
                  EXPECT_EQ(net_file_remove(""), 0);
                  EXPECT_EQ(net_file_remove(path.c_str()), 0);
                  EXPECT_EQ(net_file_remove(nullptr), -1);
              }),
              "");
    std::ofstream(path) << "x";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_file_remove(path.c_str()), 0); }),
              "<green net_public.cpp>delete file:" + path + " success\n");
    EXPECT_EQ(net_file_exist(path.c_str()), 0);

    std::ofstream(path) << "x"; // a directory that is not empty stays
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_file_remove(directory.c_str()), -1); }),
              "<red net_public.cpp>delete file:" + directory + " failed\n");
    EXPECT_EQ(net_file_exist(path.c_str()), 1);
}

TEST_F(FileTest, SizeAndExistence)
{
    int size = -5;
    EXPECT_EQ(nets_get_file_size(&path[0], &size), -1);
    std::ofstream(path).flush();
    EXPECT_EQ(nets_get_file_size(&path[0], nullptr), -1);
    EXPECT_EQ(size, -5);
    EXPECT_EQ(nets_get_file_size(&path[0], &size), 0);
    EXPECT_EQ(size, 0);
    // A file with a hole takes no room.
    std::filesystem::resize_file(path, INT_MAX);
    EXPECT_EQ(nets_get_file_size(&path[0], &size), 0);
    EXPECT_EQ(size, INT_MAX);
    std::filesystem::resize_file(path, INT_MAX + std::uintmax_t{1});
    EXPECT_EQ(nets_get_file_size(&path[0], &size), -1);
    EXPECT_EQ(net_file_exist(nullptr), 0);
    EXPECT_EQ(net_file_exist(""), 0);
    EXPECT_EQ(net_file_exist(directory.c_str()), 1);
}

TEST_F(FileTest, Certificates)
{
    char data[] = "pem";
    char empty[] = "";
    char name[] = "no-such-directory/client.pem";
    EXPECT_EQ(output_of([&] {
                  EXPECT_EQ(net_cert_write(nullptr, data, 3), -1);
                  EXPECT_EQ(net_cert_write(name, nullptr, 3), -1);
                  EXPECT_EQ(net_cert_write(name, data, 0), -1);
                  EXPECT_EQ(net_cert_write(empty, data, 0), -1);
                  EXPECT_EQ(net_cert_remove(nullptr), -1);
              }),
              "");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_cert_write(empty, data, 3), -1); }),
              "<green net_public.cpp>need input cert filename\n");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_cert_write(name, data, 3), -1); }),
              "<green net_public.cpp>write file(/mnt/para/no-such-directory/client.pem)\n"
              "<red net_public.cpp>open file(/mnt/para/no-such-directory/client.pem) failed\n");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_cert_remove(empty), -1); }), "<green net_public.cpp>remove file()\n");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_cert_remove(name), 0); }),
              "<green net_public.cpp>remove file(no-such-directory/client.pem)\n");
}

TEST_F(FileTest, CertificateNameThatDoesNotFitIsRefused)
{
    char data[] = "pem";
    std::string fits(511 - std::strlen("/mnt/para/"), 'n');
    std::string too_long = fits + 'n';
    EXPECT_EQ(output_of([&] { EXPECT_EQ(net_cert_write(&too_long[0], data, 3), -1); }), "");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_cert_remove(&too_long[0]), -1); }),
              "<green net_public.cpp>remove file(" + too_long + ")\n");
    // The longest name that fits is tried; no file system takes so long a name.
    EXPECT_NE(log_of([&] { EXPECT_EQ(net_cert_write(&fits[0], data, 3), -1); }).find("open file(/mnt/para/" + fits),
              std::string::npos);
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

TEST_F(RandomAndTimeTest, LocalTime)
{
    const char *zone = std::getenv("TZ");
    const std::string before = zone != nullptr ? zone : "";
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    tzset();
    struct Case {
        std::array<int, 6> in, out;
        int weekday, yearday;
    } const cases[] = {
        {{2024, 7, 1, 12, 30, 45}, {2024, 7, 1, 12, 30, 45}, 1, 182}, // summer time
        {{2024, 2, 30, 23, 59, 59}, {2024, 3, 1, 23, 59, 59}, 5, 60}, // a day too many
        {{2023, 12, 31, 24, 0, 0}, {2024, 1, 1, 0, 0, 0}, 1, 0},
    };
    for (const Case &c : cases) {
        struct tm src {};
        src.tm_year = c.in[0];
        src.tm_mon = c.in[1];
        src.tm_mday = c.in[2];
        src.tm_hour = c.in[3];
        src.tm_min = c.in[4];
        src.tm_sec = c.in[5];
        struct tm dst {};
        EXPECT_EQ(net_local_time_get(&src, &dst), 1);
        EXPECT_EQ((std::array<int, 6>{dst.tm_year, dst.tm_mon, dst.tm_mday, dst.tm_hour, dst.tm_min, dst.tm_sec}),
                  c.out);
        EXPECT_EQ(dst.tm_wday, c.weekday);
        EXPECT_EQ(dst.tm_yday, c.yearday);
    }
    struct tm any {};
    EXPECT_EQ(net_local_time_get(nullptr, &any), 0);
    EXPECT_EQ(net_local_time_get(&any, nullptr), 0);
    if (zone != nullptr)
        setenv("TZ", before.c_str(), 1);
    else
        unsetenv("TZ");
    tzset();
}

// Log filter

TEST(LogFilter, MasksEverySecret)
{
    for (const std::string name :
         {"password", "key", "authToken", "authSignature", "refreshToken", "accessToken", "clientSecret", "mac", "ip",
          "accessKey", "secretKey", "ipAddress", "macAddress", "gateway", "mask", "dns1", "dns2"}) {
        const std::string text = "<a>1</a><" + name + ">s3cret</" + name + "><b>2</b>";
        const std::string expected = "<a>1</a><" + name + ">******</" + name + "><b>2</b>";
        EXPECT_EQ(net_xml_printf_filter(text.c_str()), expected);
    }
}

TEST(LogFilter, HandWrittenCases)
{
    const char *const cases[][2] = {
        {"", ""},
        {"no tags at all", "no tags at all"},
        {"<password></password>", "<password></password>"},
        {"<password>a</password><password>bc</password>", "<password>*</password><password>**</password>"},
        {"<Password>abc</Password>", "<Password>abc</Password>"},
        {"<password >abc</password>", "<password >abc</password>"},
        {"<password a=\"1\">abc</password>", "<password a=\"1\">abc</password>"},
        {"<password>abc</password >", "<password>abc</password >"},
        {"<password>abc", "<password>abc"},
        {"abc</password>", "abc</password>"},
        {"</password>abc<password>", "</password>abc<password>"},
        // names that begin alike are separate
        {"<ip>1</ip><ipAddress>22</ipAddress>", "<ip>*</ip><ipAddress>**</ipAddress>"},
        {"<ip>1</ipAddress>2</ip>", "<ip>**************</ip>"},
        {"<mac>1</macAddress>", "<mac>1</macAddress>"},
        // markup and line breaks are content too
        {"<key>\n<x>1</x></key>", "<key>*********</key>"},
        // a nested open tag of the same kind is content; the outer one ends at the first close tag
        {"<key>1<key>2</key>3</key>", "<key>*******</key>3</key>"},
        // the first kind of the list wins, whichever stands outside
        {"<password>1<key>2</key>3</password>", "<password>**************</password>"},
        {"<key>1<password>2</password>3</key>", "<key>************************</key>"},
        // overlapping: the open tag of the later kind is gone when its turn comes
        {"<password>1<key>2</password>3</key>", "<password>*******</password>3</key>"},
        // overlapping: the close tag of the later kind is gone, a further one takes its place
        {"<key>1<password>2</key>3</password>4", "<key>1<password>********</password>4"},
        {"<key>1<password>2</key>3</password>4</key>5", "<key>*******************************</key>5"},
        // the content that a later kind masks does not hide an earlier kind's tags
        {"<key>1<password>2</key>3</password></key><password>4</password>",
         "<key>******************************</key><password>*</password>"},
        {"<key>1<key>2<password>3</password>4", "<key>1<key>2<password>*</password>4"},
        {"<<key>>1</key>", "<<key>**</key>"},
        {"<key></key</key>", "<key>*****</key>"},
    };
    for (const auto &c : cases)
        EXPECT_STREQ(net_xml_printf_filter(c[0]), c[1]) << c[0];
    EXPECT_STREQ(net_xml_printf_filter(nullptr), "");
}

TEST(LogFilter, ResultLastsUntilTheNextCall)
{
    const char *first = net_xml_printf_filter("<key>a long enough text to be on the heap, if it is long</key>");
    EXPECT_EQ(net_xml_printf_filter("<key>b</key>"), first);
    EXPECT_STREQ(first, "<key>*</key>");
}

TEST(LogFilter, SingleKind)
{
    struct {
        const char *text, *open, *close, *expected;
    } const cases[] = {
        {"<key>ab</key><ip>1</ip>", "<key>", "</key>", "<key>**</key><ip>1</ip>"},
        {"<pin>12</pin><pin></pin><pin>3</pin>", "<pin>", "</pin>", "<pin>**</pin><pin></pin><pin>*</pin>"},
        {"<pin>12<pin>34</pin>5</pin>", "<pin>", "</pin>", "<pin>*********</pin>5</pin>"},
        {"<pin>12", "<pin>", "</pin>", "<pin>12"},
        {"x=1;y=2;x=3;", "x=", ";", "x=*;y=2;x=*;"},
        {"abcab", "ab", "b", "abcab"}, // a close tag inside the open tag leaves nothing to mask
        {"", "<pin>", "</pin>", ""},
    };
    for (const auto &c : cases) {
        std::string text = c.text;
        net_xml_filter(text, c.open, c.close);
        EXPECT_EQ(text, c.expected) << c.text;
    }
}

// Conversions

class ConversionTest : public test::HostTest {};

TEST_F(ConversionTest, StringJoin)
{
    EXPECT_EQ(string_join(nullptr, 9, nullptr, -1, ','), -1);
    const char *items[] = {"one", "", "three"};
    Buffer<16> out;
    EXPECT_EQ(string_join(out, 10, items, 3, '|'), -1); // 8 characters, 2 separators, the terminator
    EXPECT_TRUE(out.untouched_from(0));
    EXPECT_EQ(string_join(out, 11, items, 3, '|'), 0);
    EXPECT_STREQ(out, "one||three");
    EXPECT_TRUE(out.untouched_from(11));
    EXPECT_EQ(string_join(out, 16, items, 1, ','), 0);
    EXPECT_STREQ(out, "one");
    EXPECT_TRUE(out.zero_from(3));
    EXPECT_EQ(string_join(out, 16, items, 0, ','), 0);
    EXPECT_TRUE(out.zero_from(0));
}

TEST_F(ConversionTest, AiTypesToWords)
{
    struct {
        int types;
        unsigned int size;
        const char *words;
    } const cases[] = {
        {0, 32, "none"},
        {1, 32, "people"},
        {2, 32, "vehicle"},
        {4, 32, "dog_cat"},
        {5, 32, "people,dog_cat"},
        {8, 32, "none"},
        {7, 24, "people,vehicle,dog_cat"},
        {7, 23, "people,vehicle,dog_cat"},
        {7, 22, "people,vehicle,dog_ca"},
        {3, 8, "people"},
        {3, 10, "people,ve"},
        {3, 4, "peo"},
        {0, 3, "no"},
        {7, 1, ""},
    };
    for (const auto &c : cases) {
        Buffer<32> out;
        net_ai_type_local_to_net(out, c.size, c.types);
        EXPECT_STREQ(out, c.words) << c.types << " " << c.size;
        EXPECT_TRUE(out.untouched_from(c.size));
    }
    Buffer<4> untouched;
    net_ai_type_local_to_net(untouched, 0, 1);
    EXPECT_TRUE(untouched.untouched_from(0));
    net_ai_type_local_to_net(nullptr, 4, 1);
}

TEST_F(ConversionTest, AiTypesFromWords)
{
    struct {
        const char *text;
        int types;
    } const cases[] = {{"", 0},           {"none", 0}, {"people", 1},       {"PEOPLE,Dog_Cat", 5},
                       {"xvehiclesx", 2}, {"dog", 0},  {"face,vehicle", 2}, {"dog_cat vehicle people", 7}};
    for (const auto &c : cases) {
        std::string text = c.text;
        int types = 99;
        net_ai_type_net_to_local(&text[0], 32, types);
        EXPECT_EQ(types, c.types) << c.text;
    }
    char text[] = "people";
    int types = 99;
    net_ai_type_net_to_local(text, 0, types);
    net_ai_type_net_to_local(nullptr, 8, types);
    EXPECT_EQ(types, 99);
}

TEST_F(ConversionTest, PointsToTheProtocol)
{
    point_t local[10];
    for (int i = 0; i < 10; ++i)
        local[i] = {static_cast<float>(i), static_cast<float>(-i)};
    for (const auto &[count, expected] : {std::pair(10, 8), {8, 8}, {3, 3}, {0, 0}, {-1, 0}}) {
        net_smart_ai_points_t net;
        std::memset(&net, 0x5A, sizeof(net));
        net_points_local_to_net(&net, local, count);
        EXPECT_EQ(net.pointNum, expected);
        for (int i = 0; i < 8; ++i) {
            EXPECT_EQ(net.points[i].x, i < expected ? static_cast<float>(i) : 0.0f) << count;
            EXPECT_EQ(net.points[i].y, i < expected ? static_cast<float>(-i) : 0.0f) << count;
        }
    }
    net_smart_ai_points_t net = {5, {}};
    net_points_local_to_net(&net, nullptr, 1);
    EXPECT_EQ(net.pointNum, 5);
    net_points_local_to_net(nullptr, local, 1);
}

TEST_F(ConversionTest, PointsFromTheProtocol)
{
    net_smart_ai_points_t net{};
    for (int i = 0; i < 8; ++i)
        net.points[i] = {static_cast<float>(i + 1), 0.5f};
    for (const auto &[held, expected] : {std::pair(9, 8), {8, 8}, {2, 2}, {0, 0}, {-4, 0}}) {
        net.pointNum = held;
        point_t local[9];
        std::memset(local, 0x5A, sizeof(local));
        const point_t beyond = local[8];
        int count = 99;
        net_points_net_to_local(&net, local, count);
        EXPECT_EQ(count, expected);
        for (int i = 0; i < 8; ++i) {
            EXPECT_EQ(local[i].x, i < expected ? static_cast<float>(i + 1) : 0.0f) << held;
            EXPECT_EQ(local[i].y, i < expected ? 0.5f : 0.0f) << held;
        }
        EXPECT_EQ(std::memcmp(&beyond, &local[8], sizeof(beyond)), 0);
    }
    int count = 99;
    net_points_net_to_local(&net, nullptr, count);
    net_points_net_to_local(nullptr, net.points, count);
    EXPECT_EQ(count, 99);
}

TEST_F(ConversionTest, PointsChange)
{
    point_t a[9] = {};
    point_t b[9] = {};
    EXPECT_EQ(net_check_points_change(a, 3, b, 3), 0);
    EXPECT_EQ(net_check_points_change(a, 3, b, 4), 1);
    b[8].x = 1; // beyond the capacity
    EXPECT_EQ(net_check_points_change(a, 9, b, 9), 0);
    b[7].y = 0.5e-6f; // within the tolerance
    EXPECT_EQ(net_check_points_change(a, 9, b, 9), 0);
    b[7].y = -2e-6f;
    EXPECT_EQ(net_check_points_change(a, 9, b, 9), 1);
    EXPECT_EQ(net_check_points_change(a, 7, b, 7), 0);
    b[0].x = 1;
    EXPECT_EQ(net_check_points_change(a, 1, b, 1), 1);
    EXPECT_EQ(net_check_points_change(a, 0, b, 0), 0);
    EXPECT_EQ(net_check_points_change(a, -1, b, -1), 0);
    EXPECT_EQ(net_check_points_change(a, -1, b, 0), 1);
    EXPECT_EQ(net_check_points_change(nullptr, 1, b, 1), 1);
    EXPECT_EQ(net_check_points_change(a, 1, nullptr, 1), 1);
    EXPECT_EQ(net_check_points_change(nullptr, 1, nullptr, 1), 0);
}

TEST_F(ConversionTest, Directions)
{
    for (const int value : {-1, 0, 1, 2, 3, 4, 100}) {
        const int expected = value >= 1 && value <= 3 ? value : 0;
        EXPECT_EQ(net_direction_local_to_net(static_cast<AI_TRIP_WIRE_DIRECTION>(value)), expected);
        EXPECT_EQ(net_direction_net_to_local(static_cast<NET_CROSSLINE_DETECT_DIRECTION_E>(value)), expected);
    }
}

TEST_F(ConversionTest, AlarmSummary)
{
    struct {
        int alarms;
        time_section_t ai, smart_ai;
        const char *text;
    } const cases[] = {
        {0, {}, {}, "alarm 0 ai (0x0, 0x0) smart ai (0x0, 0x0)"},
        {0x1, {}, {}, "MD"},
        {0x80000F, {}, {}, "MD,videoLoss,blind,IOAlarm,visitor"},
        {0, {{0x087C0000, 0}}, {}, "people,vehicle,face,dog_cat,other,package"},
        {0, {}, {{0xE0000000, 0}}, "crossline_0,crossline_1,crossline_2"},
        {0,
         {},
         {{0, 0xFFF}},
         "intrude_0,intrude_1,intrude_2,loitering_0,loitering_1,loitering_2,legacy_0,legacy_1,legacy_2,loss_0,loss_1,"
         "loss_2"},
        {0x4, {{0x200000, 0}}, {{0x40000000, 0x200}}, "IOAlarm,other,crossline_1,loss_0"},
        // nothing that has a word
        {static_cast<int>(0x8F2BC000),
         {{0x1FFFF, 0xFFF}},
         {{0x1FFFFFFF, 0xF000}},
         "alarm 8F2BC000 ai (0x1ffff, 0xfff) smart ai (0x1fffffff, 0xf000)"},
    };
    for (const auto &c : cases) {
        char text[256] = "";
        EXPECT_EQ(get_alarm_str(text, sizeof(text), c.alarms, c.ai, c.smart_ai), 0);
        EXPECT_STREQ(text, c.text);
    }
}

TEST_F(ConversionTest, AlarmSummaryIsAppendedAndCut)
{
    char text[256] = "at 12:00 ";
    EXPECT_EQ(get_alarm_str(text, sizeof(text), 0x2, {}, {}), 0);
    EXPECT_STREQ(text, "at 12:00 videoLoss");
    EXPECT_EQ(get_alarm_str(text, sizeof(text), 0, {}, {}), 0); // the last character goes, comma or not
    EXPECT_STREQ(text, "at 12:00 videoLos");

    struct {
        unsigned int size;
        const char *text;
    } const cases[] = {{14, "MD,videoLoss"}, {13, "MD,videoLos"}, {6, "MD,v"}, {4, "MD"}, {2, ""}, {1, ""}};
    for (const auto &c : cases) {
        Buffer<16> buffer;
        buffer[0] = '\0';
        EXPECT_EQ(get_alarm_str(buffer, c.size, 0x3, {}, {}), 0);
        EXPECT_STREQ(buffer, c.text) << c.size;
        EXPECT_TRUE(buffer.untouched_from(c.size));
    }
    char small[8] = "";
    EXPECT_EQ(get_alarm_str(small, sizeof(small), 0, {}, {}), 0);
    EXPECT_STREQ(small, "alarm 0");
    EXPECT_EQ(get_alarm_str(small, 0, 1, {}, {}), -1);
    EXPECT_STREQ(small, "alarm 0");
}

TEST_F(ConversionTest, StreamTypeWords)
{
    EXPECT_STREQ(net_get_streanm_type_string(STREAM_TYPE_MAIN), "mainStream");
    EXPECT_STREQ(net_get_streanm_type_string(STREAM_TYPE_MOBILE), "mobileStream");
    EXPECT_STREQ(net_get_streanm_type_string(STREAM_TYPE_EXTERN), "externStream");
    const char *sub = net_get_streanm_type_string(STREAM_TYPE_SUB);
    EXPECT_STREQ(sub, "subStream");
    modulemask = 0; // the line knows no switches
    for (const int type : {3, 5, -1}) {
        EXPECT_EQ(log_of([&] { EXPECT_EQ(net_get_streanm_type_string(static_cast<STREAM_TYPE_E>(type)), nullptr); }),
                  "<green net_public.cpp>unknow stream type:" + std::to_string(type) + ".\n");
    }
    EXPECT_STREQ(sub, "subStream");
    EXPECT_EQ(net_get_streanm_type_string(STREAM_TYPE_MAIN), sub);
}

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

TEST_F(ConversionTest, RangedValues)
{
    net_int_value_t net = {-1, 100, 50, 25};
    intvalue_t local{};
    EXPECT_EQ(net_int_value_to_local(&net, &local), 0);
    EXPECT_EQ(local.cur, 50);
    EXPECT_EQ(local.min, -1);
    EXPECT_EQ(local.max, 100);
    EXPECT_EQ(local.def, 25);
    net_int_value_t back{};
    EXPECT_EQ(local_int_value_to_net(&back, &local), 0);
    EXPECT_EQ(std::memcmp(&back, &net, sizeof(net)), 0);

    net_float_value_t ratio = {0.5f, 2.5f, 1.25f, -0.0f};
    const unsigned int signalling = 0x7FA00001; // a conversion would quieten it
    std::memcpy(&ratio.max, &signalling, sizeof(signalling));
    floatvalue_t local_ratio{};
    EXPECT_EQ(net_float_value_to_local(&ratio, &local_ratio), 0);
    EXPECT_EQ(local_ratio.cur, 1.25f);
    EXPECT_EQ(local_ratio.min, 0.5f);
    EXPECT_EQ(std::memcmp(&local_ratio.max, &signalling, sizeof(signalling)), 0);
    net_float_value_t ratio_back{};
    EXPECT_EQ(local_float_value_to_net(&ratio_back, &local_ratio), 0);
    EXPECT_EQ(std::memcmp(&ratio_back, &ratio, sizeof(ratio)), 0);
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
