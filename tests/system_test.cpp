#include "support.h"

#include <net_public.h>

#include <climits>
#include <cstring>
#include <string>

namespace {

using test::Envelope;
using test::log_of;
using test::Xml;

class DeviceInfoTest : public test::HostTest {};
class SystemTest : public test::HostTest {};

// The payload of messages that the host prepares itself: all zero.
template <class Payload> int host_init(net_param_t *param, net_ext_t *ext)
{
    return net_param_init_size_id(param, ext, sizeof(Payload), 1);
}

std::string element(const std::string &name, const std::string &inside)
{
    return "<" + name + ">" + inside + "</" + name + ">";
}

std::string repeat(const std::string &text, int times)
{
    std::string result;
    while (times-- > 0)
        result += text;
    return result;
}

template <std::size_t size> void set(char (&text)[size], const char *to)
{
    ASSERT_LT(std::strlen(to), size);
    std::strcpy(text, to);
}

// What a function logs about null arguments, a missing payload and, where it is compared, a wrong size.
template <class Node>
std::string refuse_envelopes(int (*function)(net_param_t *, Node *), Node *node, bool size_matters)
{
    char payload[sizeof(net_output_cfg_v20_t)] = {};
    net_param_t empty = {}, param = {};
    param.data = payload;
    param.dataSize = 1; // no payload's size
    return log_of([&] {
        EXPECT_EQ(function(nullptr, node), -1);
        EXPECT_EQ(function(&param, nullptr), -1);
        EXPECT_EQ(function(&empty, node), -1);
        if (size_matters) {
            EXPECT_EQ(function(&param, node), -1);
        }
    });
}

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

TEST_F(DeviceInfoTest, EmptyBodyClears)
{
    Envelope<net_device_info_v20_t> message(net_param_dev_info_init);
    std::memset(message.payload(), 0x5A, sizeof *message);
    EXPECT_EQ(message.read(net_xml_device_info_x2s, "<DeviceInfo/>"), 0);
    EXPECT_EQ(message->binoType, -1);
    EXPECT_EQ(message->sleep, -1);
    EXPECT_EQ(message->firmVersion.capacity, 0);
    EXPECT_EQ(message->deviceNum, 0);
    EXPECT_EQ(message->secretCode[31], '\0');
}

TEST_F(DeviceInfoTest, TwoChannelsAreBinocularUnlessToldOtherwise)
{
    EXPECT_EQ(OneInfo("<channelNum>2</channelNum>")->binoType, 0);
    EXPECT_EQ(OneInfo("<channelNum>3</channelNum>")->binoType, -1);
    EXPECT_EQ(OneInfo("<channelNum>2</channelNum><binoType>1</binoType>")->binoType, 1);
    EXPECT_EQ(OneInfo("<binoType>1</binoType><channelNum>2</channelNum>")->binoType, 1);
    EXPECT_EQ(OneInfo("<channelNum>2</channelNum><channelNum>4</channelNum>")->binoType, 0);
}

TEST_F(DeviceInfoTest, DeviceTypesDifferByDirection)
{
    const struct {
        const char *word;
        int code;
    } parsed[] = {{"dvr", 1},         {"IPC", 2},
                  {"nvr", 3},         {"wifi_ipc", 4},
                  {"wifi_nvr", 5},    {"nxp_ipc", 6},
                  {"light", 12},      {"smart_plug", 10},
                  {"smart_bell", 11}, {"fisheye_ipc", 13},
                  {"repeater", 15},   {"homehub", 2},
                  {"base", 2},        {"wifi_solo_ipc", 2},
                  {"nv", 2},          {"", 2},
                  {"nvrs", 2},        {"15 characters..", 2}};
    for (const auto &type : parsed) {
        OneInfo info(element("type", type.word));
        EXPECT_EQ(info.result, 0) << type.word;
        EXPECT_EQ(info->devType, type.code) << type.word;
        EXPECT_EQ(info.log, "");
    }
    EXPECT_EQ(OneInfo("<type>sixteen letters.</type>").result, -1);

    const struct {
        int code;
        const char *word;
    } written[] = {{0, "ipc"},     {1, "dvr"},           {2, "ipc"},      {3, "nvr"},  {4, "wifi_ipc"}, {5, "wifi_nvr"},
                   {6, "nxp_ipc"}, {7, "wifi_solo_ipc"}, {8, "base"},     {9, "ipc"},  {10, "ipc"},     {11, "ipc"},
                   {12, "ipc"},    {13, "ipc"},          {14, "homehub"}, {15, "ipc"}, {-1, "ipc"}};
    for (const auto &type : written) {
        Envelope<net_device_info_v20_t> message(net_param_dev_info_init);
        message->devType = type.code;
        EXPECT_NE(message.write(net_xml_device_info_s2x).find(element("type", type.word)), std::string::npos)
            << type.code;
    }
}

TEST_F(DeviceInfoTest, Write)
{
    Envelope<net_device_info_v20_t> message(net_param_dev_info_init);
    auto &info = *message;
    set(info.firmVersion.text, "v1");
    info.ioInputPortNum = 1;
    info.ioOutputPortNum = 2;
    info.diskNum = 3;
    info.devType = 5;
    set(info.detailType, "never written");
    info.analogChnNum = 4;
    info.channelNum = 5;
    info.iotNum = 6;
    info.audioNum = 7;
    info.ipChannel = 8;
    set(info.resolution.name, "full");
    info.resolution.width = 1;
    info.resolution.height = 9;
    info.language = 99;
    info.sdCard = 1;
    info.ptzMode = 4;
    set(info.typeInfo.text, "<t>");
    info.softVer = 10;
    info.hardVer = 11;
    info.panelVer = 12;
    info.hdChannel1 = 13;
    info.hdChannel2 = 14;
    info.hdChannel3 = 15;
    info.hdChannel4 = 16;
    info.norm = 1;
    info.osdFormat = 3;
    info.b485 = 1;
    info.bnasBind = 17;
    info.authMode = 18;
    set(info.secretCode, "key");
    info.binoType = 19;
    std::memset(info.bodyCode, 'b', sizeof info.bodyCode); // filled to the last byte
    info.needRotate = 20;
    info.deviceNum = 21;
    info.adaptorDeviceNum = 22;
    info.doorbellCoverCrop = 0.5f;
    info.sleep = 23;
    EXPECT_EQ(message.write(net_xml_device_info_s2x),
              "<DeviceInfo version=\"1.1\"><firmVersion>v1</firmVersion><IOInputPortNum>1</IOInputPortNum>"
              "<IOOutputPortNum>2</IOOutputPortNum><diskNum>3</diskNum><type>wifi_nvr</type>"
              "<channelNum>5</channelNum><deviceNum>21</deviceNum><adaptorDeviceNum>22</adaptorDeviceNum>"
              "<IOTNum>6</IOTNum><audioNum>7</audioNum><ipChannel>8</ipChannel><analogChnNum>4</analogChnNum>"
              "<resolution><resolutionName>full</resolutionName><width>1</width><height>9</height></resolution>"
              "<secretCode>key</secretCode><bootSecret>key</bootSecret><language>English</language><sdCard>1</sdCard>"
              "<ptzMode>p</ptzMode><typeInfo>&lt;t&gt;</typeInfo><softVer>10</softVer><hardVer>11</hardVer>"
              "<panelVer>12</panelVer><hdChannel1>13</hdChannel1><hdChannel2>14</hdChannel2>"
              "<hdChannel3>15</hdChannel3><hdChannel4>16</hdChannel4><norm>NTSC</norm><osdFormat>MDY_CN</osdFormat>"
              "<B485>1</B485><userVer>1</userVer><bnasBind>17</bnasBind><authMode>18</authMode><bodyCode>" +
                  std::string(128, 'b') + "</bodyCode></DeviceInfo>");
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

// General settings and clock ----------------------------------------------------------------------

struct OneGeneral : One<net_sys_general_v20_t> {
    explicit OneGeneral(const std::string &child) : One(nets_param_sys_general_init, nets_sys_general_x2s, child) {}
};

struct OneDst : One<net_dst_cfg_v20_t> {
    explicit OneDst(const std::string &child) : One(nets_param_dst_cfg_init, nets_param_dst_cfg_x2s, child) {}
};

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
        One<net_auto_reboot_v20_t> reboot(host_init<net_auto_reboot_v20_t>, nets_auto_reboot_x2s,
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

    Envelope<net_auto_reboot_v20_t> message(host_init<net_auto_reboot_v20_t>);
    message.param.dataSize = 0;
    EXPECT_EQ(message.read(nets_auto_reboot_x2s,
                           "<AutoReboot><enable>1</enable><weekDay>Friday</weekDay><hour>23</hour>"
                           "<minute>59</minute><second>58</second></AutoReboot>"),
              0);
    for (const char *refused :
         {"<enable>2</enable>", "<hour>24</hour>", "<minute>60</minute>", "<second>-1</second>"}) {
        One<net_auto_reboot_v20_t> one(host_init<net_auto_reboot_v20_t>, nets_auto_reboot_x2s, refused);
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

// Performance and versions ------------------------------------------------------------------------

// Local output ------------------------------------------------------------------------------------

struct OneOutput : One<net_output_cfg_v20_t> {
    explicit OneOutput(const std::string &child) : One(host_init<net_output_cfg_v20_t>, net_param_output_cfg_x2s, child)
    {
    }
};

std::string resolution(const std::string &name, int width, int height)
{
    return element(name, element("width", std::to_string(width)) + element("height", std::to_string(height)));
}

TEST_F(SystemTest, OutputLists)
{
    const auto resolutions = [](int count) {
        return OneOutput("<resolutionTable><resolutionList>" + repeat(resolution("resolution", 1, 2), count) +
                         "</resolutionList></resolutionTable>")
            .result;
    };
    EXPECT_EQ(resolutions(32), 0);
    EXPECT_EQ(resolutions(33), -1);
    OneOutput sixteen("<dwellTable><dwellList>" + repeat("<dwell>4</dwell>", 16) + "</dwellList></dwellTable>");
    EXPECT_EQ(sixteen.result, 0);
    EXPECT_EQ(sixteen->dwellTable.count, 16);
    OneOutput seventeen("<dwellTable><dwellList>" + repeat("<dwell>4</dwell>", 17) +
                        "</dwellList></dwellTable><mute>1</mute>");
    EXPECT_EQ(seventeen.result, -1);
    EXPECT_EQ(seventeen->dwellTable.count, 16);
    EXPECT_EQ(seventeen->mute, 0);

    // A list counts from 0, whatever the payload held.
    Envelope<net_output_cfg_v20_t> message(host_init<net_output_cfg_v20_t>);
    message->resolutionTable.count = INT_MAX;
    message->dwellTable.count = -5;
    EXPECT_EQ(message.read(net_param_output_cfg_x2s,
                           "<x><resolutionTable><resolutionList>" + resolution("resolution", 5, 6) +
                               "</resolutionList></resolutionTable><dwellTable><dwellList><dwell>7</dwell>"
                               "</dwellList></dwellTable></x>"),
              0);
    EXPECT_EQ(message->resolutionTable.count, 1);
    EXPECT_EQ(message->resolutionTable.list[0].width, 5);
    EXPECT_EQ(message->dwellTable.count, 1);
    EXPECT_EQ(message->dwellTable.dwell[0], 7);

    for (const char *refused :
         {"<transparency><max>-1</max></transparency>", "<mousesense><min>-1</min></mousesense>",
          "<mousesense><current>x</current></mousesense>", "<dwellTable><current>-1</current></dwellTable>",
          "<dwellTable><dwellList><dwell/></dwellList></dwellTable>", "<mute>2</mute>"}) {
        OneOutput output(refused);
        EXPECT_EQ(output.result, -1) << refused;
        EXPECT_EQ(output.log, "") << refused;
    }
    EXPECT_EQ(OneOutput(element("resolutionTable", resolution("currentResolution", 0, 1))).result, -1);
}

// Envelopes ---------------------------------------------------------------------------------------

TEST_F(SystemTest, Envelopes)
{
    const struct {
        test::Parser parser;
        const char *line; // of those that compare the size; the others are silent
    } parsers[] = {{net_xml_device_info_x2s, "Func(net_xml_device_info_x2s) Line(#) \n"},
                   {net_cfg_file_info_x2s, "Func(net_cfg_file_info_x2s) Line(#) \n"},
                   {net_param_output_cfg_x2s, "Func(net_param_output_cfg_x2s) Line(#) \n"},
                   {nets_sys_general_x2s, nullptr},
                   {nets_param_dst_cfg_x2s, nullptr},
                   {nets_sys_videoform_x2s, nullptr},
                   {nets_param_init_hdd_x2s, nullptr},
                   {net_param_hdd_cfg_x2s, nullptr},
                   {nets_param_cfg_file_x2s, nullptr},
                   {nets_auto_reboot_x2s, nullptr},
                   {nets_param_restore_cfg_x2s, nullptr},
                   {net_param_performance_x2s, nullptr},
                   {net_param_version_x2s, nullptr},
                   {nets_dst_cfg_s2x, nullptr}};
    const std::string red = "<red net_xml_system.cpp>";
    Xml xml("<x/>");
    TiXmlElement *parent = xml;
    for (const auto &one : parsers)
        EXPECT_EQ(refuse_envelopes<TiXmlNode>(one.parser, parent, one.line != nullptr),
                  one.line != nullptr ? repeat(red + one.line, 4) : "");

    EXPECT_EQ(refuse_envelopes(net_xml_device_info_s2x, parent, true),
              repeat(red + "func:net_xml_device_info_s2x line:#\n", 4));
    // A writer with the line of the parsers.
    EXPECT_EQ(refuse_envelopes(nets_auto_reboot_s2x, parent, true),
              repeat(red + "Func(nets_auto_reboot_s2x) Line(#) \n", 4));
    EXPECT_EQ(refuse_envelopes(net_sys_general_cfg_s2x, parent, true), "");
    EXPECT_EQ(refuse_envelopes(net_sys_videoform_cfg_s2x, parent, true), "");
    EXPECT_EQ(refuse_envelopes(nets_performance_info_s2x, parent, false), "");
    const std::string log = refuse_envelopes(nets_log_s2x, parent, false);
    EXPECT_EQ(log.find(red + "pparam = (nil), pxml_node = 0x"), 0u) << log;
    EXPECT_NE(log.find(", pxml_node = (nil)\n" + red + "NULL == p\n"), std::string::npos) << log;
    EXPECT_TRUE(parent->NoChildren());
}

} // namespace
