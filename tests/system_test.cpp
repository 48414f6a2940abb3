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

void expect_counted(const net_counted_text_t &text, const std::string &expected)
{
    EXPECT_EQ(text.text, expected);
    EXPECT_EQ(text.capacity, 256);
    EXPECT_EQ(text.length, static_cast<int>(expected.size()));
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

TEST_F(DeviceInfoTest, Parse)
{
    Envelope<net_device_info_v20_t> message(net_param_dev_info_init);
    std::memset(message.payload(), 0x5A, sizeof *message);
    const std::string body =
        "<DeviceInfo version=\"1.1\"><firmVersion>v1.2 &amp; more</firmVersion><IOInputPortNum>1</IOInputPortNum>"
        "<IOOutputPortNum>2</IOOutputPortNum><diskNum>3</diskNum><type>NVR</type><detailType>RN</detailType>"
        "<channelNum>4</channelNum><analogChnNum>5</analogChnNum><audioNum>6</audioNum>"
        "<resolution><width>1920</width><height>1080</height></resolution><language>Kor</language>"
        "<sdCard>1</sdCard><ptzMode>PT</ptzMode><typeInfo>info</typeInfo><softVer>-7</softVer><hardVer>8</hardVer>"
        "<panelVer>9</panelVer><norm>ntsc</norm><osdFormat>dmy</osdFormat><B485>1</B485><binoType>10</binoType>"
        "<bodyCode>code</bodyCode><needRotate>11</needRotate><doorbellCoverCrop>0.75</doorbellCoverCrop>"
        "<sleep>12</sleep><IOTNum>1</IOTNum><ipChannel>1</ipChannel><hdChannel1>1</hdChannel1><bnasBind>1</bnasBind>"
        "<authMode>1</authMode><secretCode>s</secretCode><deviceNum>1</deviceNum></DeviceInfo>";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(net_xml_device_info_x2s, body), 0); }), "");
    EXPECT_EQ(message.param.inited, 2u);

    // All that the message does not say, and what is only written, is zero.
    net_device_info_v20_t expected;
    std::memset(&expected, 0, sizeof expected);
    expected.firmVersion.capacity = 256;
    expected.firmVersion.length = 11;
    set(expected.firmVersion.text, "v1.2 & more");
    expected.ioInputPortNum = 1;
    expected.ioOutputPortNum = 2;
    expected.diskNum = 3;
    expected.devType = 3;
    set(expected.detailType, "RN");
    expected.channelNum = 4;
    expected.analogChnNum = 5;
    expected.audioNum = 6;
    expected.resolution.width = 1920;
    expected.resolution.height = 1080;
    expected.language = 11;
    expected.sdCard = 1;
    expected.ptzMode = 3;
    expected.typeInfo.capacity = 256;
    expected.typeInfo.length = 4;
    set(expected.typeInfo.text, "info");
    expected.softVer = -7;
    expected.hardVer = 8;
    expected.panelVer = 9;
    expected.norm = 1;
    expected.osdFormat = 2;
    expected.b485 = 1;
    expected.binoType = 10;
    set(expected.bodyCode, "code");
    expected.needRotate = 11;
    expected.doorbellCoverCrop = 0.75f;
    expected.sleep = 12;
    EXPECT_EQ(std::memcmp(message.payload(), &expected, sizeof expected), 0);
}

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

TEST_F(DeviceInfoTest, UnknownWords)
{
    const std::string line = "Func(net_xml_device_info_x2s) Line(#)\n";
    // An unknown mode or norm is reported and leaves the field.
    OneInfo mode("<ptzMode>ptz</ptzMode><ptzMode>zoom</ptzMode><diskNum>1</diskNum>");
    EXPECT_EQ(mode.result, 0);
    EXPECT_EQ(mode->ptzMode, 2);
    EXPECT_EQ(mode->diskNum, 1);
    EXPECT_EQ(mode.log, line);
    OneInfo norm("<norm>NTSC</norm><norm>NTS</norm>");
    EXPECT_EQ(norm.result, 0);
    EXPECT_EQ(norm->norm, 1);
    EXPECT_EQ(norm.log, line);
    // An unknown language is accepted, a beginning finds the first one.
    OneInfo language("<language>Thai</language><language>Klingon</language>");
    EXPECT_EQ(language.result, 0);
    EXPECT_EQ(language->language, 17);
    EXPECT_EQ(language.log, "");
    // An unknown date format is refused; so is the one that only the writer knows.
    EXPECT_EQ(OneInfo("<osdFormat>YDM</osdFormat>").log, line);
    EXPECT_EQ(OneInfo("<osdFormat>MDY_CN</osdFormat>").result, -1);
    EXPECT_EQ(OneInfo("<osdFormat>YMD_CN</osdFormat>")->osdFormat, 4);
    for (const char *key : {"ptzMode", "norm", "language", "osdFormat"}) {
        OneInfo refused(element(key, "sixteen letters."));
        EXPECT_EQ(refused.result, -1) << key;
        EXPECT_EQ(refused.log, line) << key;
    }
}

TEST_F(DeviceInfoTest, RefusedChildren)
{
    const std::string line = "Func(net_xml_device_info_x2s) Line(#)\n";
    loglevel = 0; // the line is not gated
    for (const char *key : {"IOInputPortNum", "IOOutputPortNum", "diskNum", "channelNum", "analogChnNum"}) {
        for (const char *value : {"-1", "x"}) {
            OneInfo refused(element(key, value));
            EXPECT_EQ(refused.result, -1) << key;
            EXPECT_EQ(refused.log, line) << key;
            EXPECT_EQ(refused.message.param.inited, 1u);
        }
    }
    for (const char *key : {"softVer", "panelVer", "binoType", "needRotate", "sleep", "B485", "doorbellCoverCrop"})
        EXPECT_EQ(OneInfo(element(key, "<x/>")).log, line) << key;
    EXPECT_EQ(OneInfo("<B485>2</B485>")->b485, 2);
    EXPECT_EQ(OneInfo(element("firmVersion", std::string(256, 'x'))).log, line);
    EXPECT_EQ(OneInfo(element("typeInfo", std::string(256, 'x'))).log, line);
    EXPECT_EQ(OneInfo(element("detailType", std::string(64, 'x'))).log, line);
    EXPECT_EQ(OneInfo(element("bodyCode", std::string(128, 'x'))).log, line);
    OneInfo fitting(element("firmVersion", std::string(255, 'x')) + element("detailType", std::string(63, 'x')) +
                    element("bodyCode", std::string(127, 'x')));
    EXPECT_EQ(fitting.result, 0);
    EXPECT_EQ(fitting->firmVersion.length, 255);
    // These three say nothing.
    for (const char *child : {"<audioNum>-1</audioNum>", "<hardVer>x</hardVer>", "<sdCard>2</sdCard>"}) {
        OneInfo refused(child);
        EXPECT_EQ(refused.result, -1) << child;
        EXPECT_EQ(refused.log, "") << child;
    }
    EXPECT_EQ(OneInfo("<audioNum>-1</audioNum>")->audioNum, -1);
    OneInfo resolution("<resolution><width>0</width></resolution>");
    EXPECT_EQ(resolution.result, -1);
    EXPECT_EQ(resolution.log.substr(resolution.log.size() - line.size()), line);
    // What was read in front of the refused child stays.
    OneInfo kept("<diskNum>3</diskNum><softVer>x</softVer><panelVer>4</panelVer>");
    EXPECT_EQ(kept->diskNum, 3);
    EXPECT_EQ(kept->panelVer, 0);
}

TEST_F(DeviceInfoTest, ShortNames)
{
    OneInfo info("<d>3</d><a>7</a><type>dvr</type><typeI>t</typeI><hard>5</hard><an>6</an>");
    EXPECT_EQ(info.result, 0);
    EXPECT_EQ(info->diskNum, 3);
    EXPECT_EQ(info->analogChnNum, 6); // "a" and "an" are both "analogChnNum", which is tried before "audioNum"
    EXPECT_EQ(info->audioNum, 0);
    EXPECT_EQ(info->devType, 1);
    expect_counted(info->typeInfo, "t");
    EXPECT_EQ(info->hardVer, 5);
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

TEST_F(SystemTest, GeneralSettings)
{
    Envelope<net_sys_general_v20_t> message(nets_param_sys_general_init);
    message->timeZone = 5;
    message->year = 1999;
    message->lockTime = 6;
    message.param.dataSize = 0; // not looked at
    EXPECT_EQ(message.read(nets_sys_general_x2s, "<SystemGeneral/>"), 0);
    EXPECT_EQ(message->isDst, -1);
    EXPECT_EQ(message->year, 0);
    EXPECT_EQ(message->timeZone, 5);
    EXPECT_EQ(message->lockTime, 6);

    const std::string body =
        "<SystemGeneral version=\"1.1\"><timeZone>-3600</timeZone><osdFormat>YMD</osdFormat><year>2024</year>"
        "<month>2</month><day>31</day><hour>23</hour><minute>59</minute><second>58</second><deviceId>7</deviceId>"
        "<timeFormat>1</timeFormat><language>German</language><deviceName>Yard (1)</deviceName>"
        "<loginLock>8</loginLock><lockTime>9</lockTime><allowedTimes>10</allowedTimes><isDst>11</isDst>"
        "</SystemGeneral>";
    EXPECT_EQ(message.read(nets_sys_general_x2s, body), 0);
    EXPECT_EQ(message.param.inited, 1u);
    net_sys_general_v20_t expected = {-3600, 1, 1, 2024, 2, 31, 23, 59, 58, 7, 15, "Yard (1)", 8, 9, 10, 11};
    EXPECT_EQ(std::memcmp(message.payload(), &expected, sizeof expected), 0);

    message.param.dataSize = sizeof(net_sys_general_v20_t);
    EXPECT_EQ(message.write(net_sys_general_cfg_s2x), body);
}

TEST_F(SystemTest, GeneralSettingsRefused)
{
    const struct {
        const char *key;
        const char *good;
        const char *bad;
    } cases[] = {{"timeFormat", "0", "-1"},
                 {"year", "0", "-1"},
                 {"month", "1", "0"},
                 {"month", "12", "13"},
                 {"day", "31", "32"},
                 {"day", "1", "0"},
                 {"hour", "0", "24"},
                 {"hour", "23", "-1"},
                 {"minute", "59", "60"},
                 {"second", "59", "60"},
                 {"isDst", "-5", "x"},
                 {"osdFormat", "D", "DMYX"},
                 {"language", "?", "sixteen letters."},
                 {"deviceName", "", "a/b"}};
    for (const auto &one : cases) {
        EXPECT_EQ(OneGeneral(element(one.key, one.good)).result, 0) << one.key << one.good;
        OneGeneral bad(element(one.key, one.bad));
        EXPECT_EQ(bad.result, -1) << one.key << one.bad;
        EXPECT_EQ(bad.log, "") << one.key;
    }
    EXPECT_EQ(OneGeneral("<hour>24</hour>")->hour, 24);
    EXPECT_STREQ(OneGeneral("<deviceName>a/b</deviceName>")->deviceName, "a/b");
    EXPECT_EQ(OneGeneral(element("deviceName", std::string(31, 'n'))).result, 0);
    EXPECT_EQ(OneGeneral(element("deviceName", std::string(32, 'n'))).result, -1);
    // "time" begins "timeZone" first, "d" begins "day", "l" begins "language".
    OneGeneral prefixes("<time>9</time><d>3</d><l>Thai</l><device>4</device>");
    EXPECT_EQ(prefixes->timeZone, 9);
    EXPECT_EQ(prefixes->day, 3);
    EXPECT_EQ(prefixes->language, 17);
    EXPECT_EQ(prefixes->deviceId, 4);

    Envelope<net_sys_general_v20_t> message(nets_param_sys_general_init);
    message->osdFormat = -1;
    EXPECT_EQ(message.write(net_sys_general_cfg_s2x), "failed");
    message->osdFormat = 0;
    message->language = -1;
    EXPECT_EQ(message.write(net_sys_general_cfg_s2x), "failed");
}

struct OneDst : One<net_dst_cfg_v20_t> {
    explicit OneDst(const std::string &child) : One(nets_param_dst_cfg_init, nets_param_dst_cfg_x2s, child) {}
};

TEST_F(SystemTest, DaylightSaving)
{
    Envelope<net_dst_cfg_v20_t> message(nets_param_dst_cfg_init);
    message.param.dataSize = 0; // not looked at, in either direction
    message->reserved = 77;
    message->dstVersion = 2;
    const std::string body =
        "<enable>1</enable><offset>-1</offset><startMonth>3</startMonth><startWeekIndex>99</startWeekIndex>"
        "<startWeekday>Sunday</startWeekday><startHour>2</startHour><startMinute>4</startMinute>"
        "<startSecond>5</startSecond><endMonth>10</endMonth><endWeekIndex>-99</endWeekIndex>"
        "<endWeekday>Saturday</endWeekday><endHour>6</endHour><endMinute>7</endMinute><endSecond>8</endSecond>";
    // The child "version" is not read.
    EXPECT_EQ(message.read(nets_param_dst_cfg_x2s, element("Dst", body + "<version>9</version>")), 0);
    const net_dst_cfg_v20_t expected = {1, -1, 77, 3, 99, 0, 2, 4, 5, 10, -99, 6, 6, 7, 8, 2};
    EXPECT_EQ(std::memcmp(message.payload(), &expected, sizeof expected), 0);

    TiXmlDocument document;
    EXPECT_EQ(nets_dst_cfg_s2x(&message.param, &document), 0);
    EXPECT_EQ(test::print_children(document), "<Dst version=\"1.1\">" + body + "<version>2</version></Dst>");

    for (const char *refused :
         {"<enable>2</enable>", "<offset/>", "<startMonth>0</startMonth>", "<endMonth>13</endMonth>",
          "<startWeekday>Someday</startWeekday>", "<endWeekday>7</endWeekday>", "<startHour>24</startHour>",
          "<endMinute>60</endMinute>", "<endSecond>-1</endSecond>"}) {
        OneDst dst(refused);
        EXPECT_EQ(dst.result, -1) << refused;
        EXPECT_EQ(dst.log, "") << refused;
    }
    // "startM" is the month, "startW" the index of the week.
    OneDst prefixes("<startM>4</startM><startW>5</startW><startWeekd>we</startWeekd><end>6</end>");
    EXPECT_EQ(prefixes->startMonth, 4);
    EXPECT_EQ(prefixes->startWeekIndex, 5);
    EXPECT_EQ(prefixes->startWeekday, 3);
    EXPECT_EQ(prefixes->endMonth, 6);

    for (int day : {-1, 7}) {
        TiXmlDocument empty;
        message->endWeekday = day;
        EXPECT_EQ(nets_dst_cfg_s2x(&message.param, &empty), -1);
        EXPECT_TRUE(empty.NoChildren());
    }
}

TEST_F(SystemTest, VideoStandard)
{
    Envelope<net_video_form_v20_t> message(host_init<net_video_form_v20_t>);
    message.param.dataSize = 0;
    EXPECT_EQ(message.read(nets_sys_videoform_x2s, "<Norm><norm>ntsc</norm><norm>PAL</norm></Norm>"), 0);
    EXPECT_EQ(message->norm, 1); // only the first child counts
    EXPECT_EQ(message.read(nets_sys_videoform_x2s, "<Norm><n>PAL</n></Norm>"), 0);
    EXPECT_EQ(message->norm, 0);
    for (const char *body : {"<Norm/>", "<Norm><x>NTSC</x><norm>NTSC</norm></Norm>", "<Norm><norm>NTS</norm></Norm>",
                             "<Norm><norm/></Norm>", "<Norm>norm</Norm>"}) {
        message->norm = 5;
        EXPECT_EQ(message.read(nets_sys_videoform_x2s, body), -1) << body;
        EXPECT_EQ(message->norm, 0) << body;
    }

    message.param.dataSize = sizeof(net_video_form_v20_t);
    message->norm = 1;
    EXPECT_EQ(message.write(net_sys_videoform_cfg_s2x), "<Norm version=\"1.1\"><norm>NTSC</norm></Norm>");
    message->norm = -3;
    EXPECT_EQ(message.write(net_sys_videoform_cfg_s2x), "<Norm version=\"1.1\"><norm>PAL</norm></Norm>");
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

std::string shown(const net_hdd_disk_v20_t &disk)
{
    std::string text;
    for (int number :
         {disk.number, disk.capacity, disk.capacityM, disk.format, disk.mount, disk.remainSize, disk.remainSizeM})
        text += std::to_string(number) + " ";
    return text + std::to_string(disk.capacityV2) + " " + std::to_string(disk.remainSizeV2);
}

TEST_F(SystemTest, DiskList)
{
    Envelope<net_hdd_info_v20_t> message(nets_param_hdd_cfg_init);
    message.param.dataSize = 0;
    const std::string whole =
        "<HddInfo><number>1</number><capacity>2</capacity><capacityM>3</capacityM><format>4</format><mount>5</mount>"
        "<remainSize>6</remainSize><remainSizeM>7</remainSizeM><capacityV2>18446744073709551615</capacityV2>"
        "<remainSizeV2>9</remainSizeV2></HddInfo>";
    EXPECT_EQ(message.read(net_param_hdd_cfg_x2s, "<x>" + whole + "<other/><Hdd><number>11</number></Hdd></x>"), 0);
    EXPECT_EQ(shown(message->disk[0]), "1 2 3 4 5 6 7 18446744073709551615 9");
    EXPECT_EQ(message->disk[1].number, 11); // the other child took no record
    EXPECT_EQ(message->disk[2].number, -1);

    // What does not fit is ignored, whatever it holds.
    Envelope<net_hdd_info_v20_t> full(nets_param_hdd_cfg_init);
    EXPECT_EQ(full.read(net_param_hdd_cfg_x2s, "<x>" + repeat(whole, 8) + "<HddInfo><number>x</number></HddInfo></x>"),
              0);
    EXPECT_EQ(full->disk[7].remainSizeV2, 9u);

    Envelope<net_hdd_info_v20_t> refused(nets_param_hdd_cfg_init);
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(
                      refused.read(net_param_hdd_cfg_x2s, "<x>" + whole + "<HddInfo><mount>x</mount></HddInfo></x>"),
                      -1);
              }),
              "");
    EXPECT_EQ(refused->disk[0].mount, 5);
}

// Configuration files, reboot, restore ------------------------------------------------------------

TEST_F(SystemTest, ConfigurationFile)
{
    const std::string written = "<ConfigFileInfo version=\"1.1\"><fileName>a&lt;b</fileName>"
                                "<fileSize>4294967295</fileSize><curSize>2</curSize>"
                                "<updateParameter>1</updateParameter></ConfigFileInfo>";
    const std::string body = "<x><fileName>a&lt;b</fileName><fileSize>4294967295</fileSize><curSize>2</curSize>"
                             "<updateParameter>1</updateParameter><usedForFactory>-3</usedForFactory>"
                             "<channelBits>18446744073709551615</channelBits></x>";
    Envelope<net_cfg_file_v20_t> plain(host_init<net_cfg_file_v20_t>);
    plain.param.dataSize = 0;
    Envelope<net_cfg_file_v20_t> checked(host_init<net_cfg_file_v20_t>);
    EXPECT_EQ(plain.read(nets_param_cfg_file_x2s, body), 0);
    EXPECT_EQ(checked.read(net_cfg_file_info_x2s, body), 0);
    EXPECT_EQ(plain->channelBits, 0u);
    EXPECT_EQ(checked->channelBits, 18446744073709551615ull);
    EXPECT_EQ(plain.param.inited, 1u);
    EXPECT_EQ(checked.param.inited, 2u);
    for (auto *file : {plain.payload(), checked.payload()}) {
        expect_counted(file->fileName, "a<b");
        EXPECT_EQ(file->fileSize, 4294967295u);
        EXPECT_EQ(file->curSize, 2u);
        EXPECT_EQ(file->updateParameter, 1);
        EXPECT_EQ(file->usedForFactory, -3);
    }
    EXPECT_EQ(plain.write(nets_log_s2x), written);

    for (const std::string &refused : {element("fileName", std::string(256, 'f')), element("fileSize", "12345678901"),
                                       element("updateParameter", "2"), element("usedForFactory", "")})
        EXPECT_EQ(log_of([&] {
                      EXPECT_EQ(plain.read(nets_param_cfg_file_x2s, "<x>" + refused + "</x>"), -1) << refused;
                      EXPECT_EQ(checked.read(net_cfg_file_info_x2s, "<x>" + refused + "</x>"), -1) << refused;
                  }),
                  "");
    EXPECT_EQ(plain.read(nets_param_cfg_file_x2s, "<x><channelBits>x</channelBits></x>"), 0);
    EXPECT_EQ(checked.read(net_cfg_file_info_x2s, "<x><channelBits>x</channelBits></x>"), -1);
}

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

TEST_F(SystemTest, FactoryRestore)
{
    Envelope<net_restore_cfg_v20_t> message(host_init<net_restore_cfg_v20_t>);
    message.param.dataSize = 0;
    EXPECT_EQ(message.read(nets_param_restore_cfg_x2s,
                           "<x><all>0</all><display>1</display><recording>0</recording><network>1</network>"
                           "<alarm>0</alarm><device>0</device><system>1</system><wifi>1</wifi><IPC>1</IPC></x>"),
              0);
    const net_restore_cfg_v20_t expected = {0, 1, 0, 1, 0, 0, 1, 1, 1};
    EXPECT_EQ(std::memcmp(message.payload(), &expected, sizeof expected), 0);
    // "a" is all and not alarm, "d" display and not device.
    EXPECT_EQ(message.read(nets_param_restore_cfg_x2s, "<x><a>1</a><d>0</d><de>1</de></x>"), 0);
    EXPECT_EQ(message->all, 1);
    EXPECT_EQ(message->alarm, 0);
    EXPECT_EQ(message->display, 0);
    EXPECT_EQ(message->device, 1);
    EXPECT_EQ(message.read(nets_param_restore_cfg_x2s, "<x><wifi>2</wifi></x>"), -1);
}

// Performance and versions ------------------------------------------------------------------------

TEST_F(SystemTest, Performance)
{
    Envelope<net_performance_v20_t> message(nets_param_performance_init);
    message.param.dataSize = 0; // not looked at, in either direction
    const std::string body = "<PerformanceInfo version=\"1.1\"><cpuUseRate>-1</cpuUseRate><codeRate>2</codeRate>"
                             "<netDataRate>3</netDataRate></PerformanceInfo>";
    EXPECT_EQ(message.read(net_param_performance_x2s, body), 0);
    EXPECT_EQ(message->cpuUseRate, -1);
    EXPECT_EQ(message->codeRate, 2);
    EXPECT_EQ(message->netDataRate, 3);
    EXPECT_EQ(message.write(nets_performance_info_s2x), body);
    EXPECT_EQ(message.read(net_param_performance_x2s, "<x><c>7</c><codeRate>1.5</codeRate></x>"), -1);
    EXPECT_EQ(message->cpuUseRate, 7);
    EXPECT_EQ(message->codeRate, 2);
}

TEST_F(SystemTest, Versions)
{
    Envelope<net_version_v20_t> message(nets_param_version_init);
    message.param.dataSize = 0;
    EXPECT_EQ(message.read(net_param_version_x2s,
                           "<x><name>n</name><type>ty</type><serialNumber>ser</serialNumber><buildDay>day4</buildDay>"
                           "<hardwareVersion>hardw</hardwareVersion><cfgVersion>cfg456</cfgVersion>"
                           "<firmwareVersion>firm567</firmwareVersion><detail>detail78</detail><IEClient/>"
                           "<cc3200Version>c</cc3200Version><spVersion>sp</spVersion><pakSuffix>pak</pakSuffix>"
                           "<helpVersion>help</helpVersion><aiVersion>ai345</aiVersion></x>"),
              0);
    expect_counted(message->name, "n");
    expect_counted(message->type, "ty");
    expect_counted(message->serialNumber, "ser");
    expect_counted(message->buildDay, "day4");
    expect_counted(message->hardwareVersion, "hardw");
    expect_counted(message->cfgVersion, "cfg456");
    expect_counted(message->firmwareVersion, "firm567");
    expect_counted(message->detail, "detail78");
    expect_counted(message->IEClient, "");
    expect_counted(message->cc3200Version, "c");
    expect_counted(message->spVersion, "sp");
    expect_counted(message->helpVersion, "help");
    expect_counted(message->pakSuffix, "pak");
    expect_counted(message->aiVersion, "ai345");
    // "h" is the hardware, "c" the configuration.
    EXPECT_EQ(message.read(net_param_version_x2s, "<x><h>other</h><c>one</c></x>"), 0);
    EXPECT_STREQ(message->hardwareVersion.text, "other");
    EXPECT_STREQ(message->cfgVersion.text, "one");
    EXPECT_STREQ(message->helpVersion.text, "help");
    EXPECT_EQ(message.read(net_param_version_x2s, "<x>" + element("aiVersion", std::string(256, 'v')) + "</x>"), -1);
    EXPECT_STREQ(message->aiVersion.text, "");
}

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

TEST_F(SystemTest, OutputSettings)
{
    OneOutput output("<resolutionTable>" + resolution("currentResolution", 1280, 720) + "<resolutionList>" +
                     resolution("resolution", 1, 2) + "<other/>" + resolution("Resolution", 3, 4) +
                     "</resolutionList></resolutionTable><transparency><max>5</max><min>6</min><current>7</current>"
                     "</transparency><mousesense><max>8</max><min>9</min><current>10</current></mousesense>"
                     "<dwellTable><current>11</current><dwellList><dwell>-12</dwell><x/><dwell>13</dwell></dwellList>"
                     "</dwellTable><mute>1</mute>");
    EXPECT_EQ(output.result, 0);
    EXPECT_EQ(output.log, "");
    EXPECT_EQ(output.message.param.inited, 1u);
    net_output_cfg_v20_t expected;
    std::memset(&expected, 0, sizeof expected);
    expected.resolutionTable.count = 2;
    expected.resolutionTable.current.width = 1280;
    expected.resolutionTable.current.height = 720;
    expected.resolutionTable.list[0].width = 1;
    expected.resolutionTable.list[0].height = 2;
    expected.resolutionTable.list[1].width = 3;
    expected.resolutionTable.list[1].height = 4;
    expected.transparency = {5, 6, 7};
    expected.mousesense = {8, 9, 10};
    expected.dwellTable.count = 2;
    expected.dwellTable.current = 11;
    expected.dwellTable.dwell[0] = -12;
    expected.dwellTable.dwell[1] = 13;
    expected.mute = 1;
    EXPECT_EQ(std::memcmp(output.message.payload(), &expected, sizeof expected), 0);
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
