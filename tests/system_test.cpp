#include "support.h"

#include <net_public.h>

#include <climits>
#include <cstring>
#include <string>

namespace {

using test::element;
using test::Envelope;
using test::log_of;
using test::prepared;

class DeviceInfoTest : public test::HostTest {};
class SystemTest : public test::HostTest {};

// One child into a fresh payload.
template <class Payload> struct One {
    One(test::Init init, test::Parser parser, const std::string &child) : message(init)
    {
        log = log_of([&] { result = message.read(parser, "<x>" + child + "</x>"); });
    }
    Payload *operator->()
    {
        return message.payload();
    }

    Envelope<Payload> message;
    int result = 0;
    std::string log;
};

// Device information ------------------------------------------------------------------------------

struct OneInfo : One<net_device_info_v20_t> {
    explicit OneInfo(const std::string &child) : One(net_param_dev_info_init, net_xml_device_info_x2s, child) {}
};

TEST_F(DeviceInfoTest, TwoChannelsAreBinocularUnlessToldOtherwise)
{
    EXPECT_EQ(OneInfo("<channelNum>2</channelNum>")->binoType, 0);
    EXPECT_EQ(OneInfo("<channelNum>3</channelNum>")->binoType, -1);
    EXPECT_EQ(OneInfo("<channelNum>2</channelNum><binoType>1</binoType>")->binoType, 1);
    EXPECT_EQ(OneInfo("<binoType>1</binoType><channelNum>2</channelNum>")->binoType, 1);
    EXPECT_EQ(OneInfo("<channelNum>2</channelNum><channelNum>4</channelNum>")->binoType, 0);
}

TEST_F(DeviceInfoTest, WriteDefaultsAndRefusals)
{
    const auto writes = [](void (*change)(net_device_info_v20_t &), const std::string &part) {
        Envelope<net_device_info_v20_t> message(net_param_dev_info_init);
        message->resolution.width = message->resolution.height = 1;
        change(*message);
        return message.write(net_xml_device_info_s2x).find(part) != std::string::npos;
    };
    EXPECT_TRUE(writes([](auto &) {}, "<resolution>"));
    EXPECT_FALSE(writes([](auto &info) { info.resolution.width = 0; }, "<resolution>"));
    EXPECT_FALSE(writes([](auto &info) { info.resolution.height = -1; }, "<resolution>"));
    EXPECT_TRUE(writes([](auto &info) { info.ptzMode = 5; }, "<ptzMode>none</ptzMode>"));
    EXPECT_TRUE(writes([](auto &info) { info.norm = 2; }, "<norm>PAL</norm>"));
    EXPECT_TRUE(writes([](auto &info) { info.language = 18; }, "<language>Hebrew</language>"));

    Envelope<net_device_info_v20_t> message(net_param_dev_info_init);
    const std::string line = "<red net_xml_system.cpp>func:net_xml_device_info_s2x line:#\n";
    message->language = -1;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_xml_device_info_s2x), "failed"); }), line);
    message->language = 0;
    message->osdFormat = 6;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_xml_device_info_s2x), "failed"); }), line);
    loglevel = 0;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_xml_device_info_s2x), "failed"); }), "");
}

// Disks -------------------------------------------------------------------------------------------

std::string init_disk(int id)
{
    return "<HddInit><initId>" + std::to_string(id) + "</initId></HddInit>";
}

// The count and the slots.
std::string shown(const net_hdd_init_v20_t &disks)
{
    std::string text = std::to_string(disks.count) + ":";
    for (int id : disks.disk)
        text += " " + std::to_string(id);
    return text;
}

TEST_F(SystemTest, DiskInitialisation)
{
    const auto read = [](const std::string &children) {
        Envelope<net_hdd_init_v20_t> message(nets_param_init_hdd_init);
        message.param.dataSize = 0;
        for (int &id : message->disk)
            id = -1;
        EXPECT_EQ(message.read(nets_param_init_hdd_x2s, "<x>" + children + "</x>"), 0) << children;
        return shown(*message);
    };
    EXPECT_EQ(read(""), "0: -1 -1 -1 -1 -1 -1 -1 -1");
    EXPECT_EQ(read(init_disk(4) + "<X/>" + init_disk(5)), "2: 4 -1 5 -1 -1 -1 -1 -1");
    // Unreadable ids count, too; only the first child is looked at.
    EXPECT_EQ(read("<HddInit/><HddInit><initId>x</initId></HddInit><HddInit><id>1</id></HddInit>"
                   "<HddInit>7</HddInit><HddInit><x/><initId>1</initId></HddInit><HDDINIT><i>6</i></HDDINIT>"),
              "6: -1 -1 -1 -1 -1 6 -1 -1");
    // The name is a beginning of the child's, not the other way round.
    EXPECT_EQ(read("<HddInitialise><initId>1</initId></HddInitialise><Hdd><initId>2</initId></Hdd>"),
              "1: 1 -1 -1 -1 -1 -1 -1 -1");
    std::string ten;
    for (int id = 1; id <= 10; ++id)
        ten += init_disk(id);
    EXPECT_EQ(read(ten), "8: 1 2 3 4 5 6 7 8");

    Envelope<net_hdd_init_v20_t> message(nets_param_init_hdd_init);
    message->count = INT_MAX;
    EXPECT_EQ(message.read(nets_param_init_hdd_x2s, "<x>" + init_disk(1) + "</x>"), 0);
    EXPECT_EQ(message->count, INT_MIN);
}

// Configuration files, reboot, restore ------------------------------------------------------------

TEST_F(SystemTest, AutoReboot)
{
    const auto day = [](const std::string &word) {
        One<net_auto_reboot_v20_t> reboot(prepared<net_auto_reboot_v20_t>, nets_auto_reboot_x2s,
                                          "<enable>1</enable>" + element("weekDay", word));
        EXPECT_EQ(reboot.log, "");
        return reboot.result == 0 ? reboot->weekDay : -1;
    };
    EXPECT_EQ(day("EVERYDAY"), 0);
    EXPECT_EQ(day("Every"), -1); // compared as a whole, unlike the weekdays
    EXPECT_EQ(day("everydays"), -1);
    EXPECT_EQ(day("Sunday"), 1);
    EXPECT_EQ(day("t"), 3);
    EXPECT_EQ(day("saturday"), 7);
    EXPECT_EQ(day(""), 1); // the empty text begins every weekday
    EXPECT_EQ(day("Someday"), -1);
    EXPECT_EQ(day("sixteen letters."), -1);

    Envelope<net_auto_reboot_v20_t> message(prepared<net_auto_reboot_v20_t>);
    message.param.dataSize = 0;
    EXPECT_EQ(message.read(nets_auto_reboot_x2s,
                           "<AutoReboot><enable>1</enable><weekDay>Friday</weekDay><hour>23</hour>"
                           "<minute>59</minute><second>58</second></AutoReboot>"),
              0);
    for (const char *refused :
         {"<enable>2</enable>", "<hour>24</hour>", "<minute>60</minute>", "<second>-1</second>"}) {
        One<net_auto_reboot_v20_t> one(prepared<net_auto_reboot_v20_t>, nets_auto_reboot_x2s, refused);
        EXPECT_EQ(one.result, -1) << refused;
    }
    message.param.dataSize = sizeof(net_auto_reboot_v20_t);
    const std::string rest = "<hour>23</hour><minute>59</minute><second>58</second></AutoReboot>";
    EXPECT_EQ(message.write(nets_auto_reboot_s2x),
              "<AutoReboot version=\"1.1\"><enable>1</enable><weekDay>Friday</weekDay>" + rest);
    message->weekDay = 0;
    EXPECT_EQ(message.write(nets_auto_reboot_s2x),
              "<AutoReboot version=\"1.1\"><enable>1</enable><weekDay>everyday</weekDay>" + rest);
    for (int unknown : {-1, 8, INT_MIN}) {
        message->weekDay = unknown;
        EXPECT_EQ(message.write(nets_auto_reboot_s2x), "failed") << unknown;
    }
}

} // namespace
