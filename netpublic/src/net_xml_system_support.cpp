// The device system: the support and ability descriptions and the heart beat.
#include "engine/engine.h"
#include "engine/registry.h"
#include "values/tables.h"
#include "values/values.h"

#include <net_host.h>
#include <net_public.h>

#include <array>
#include <cstring>
#include <iterator>

namespace netpublic {
namespace {

// Linkage features --------------------------------------------------------------------------------

// The codes are bits.
constexpr Word plug_bit_list[] = {{1, "openClose"}, {2, "duration"}};
constexpr auto plug_bits = words<plug_bit_list>();

constexpr Word bell_bit_list[] = {
    {1, "startStop"}, {2, "type"}, {4, "duration"}, {8, "repeatCount"}, {16, "volume"}, {32, "audioID"},
};
constexpr auto bell_bits = words<bell_bit_list>();

constexpr Word light_bit_list[] = {
    {64, "openClose"}, {128, "type"}, {256, "flashfreq"}, {512, "duration"}, {1024, "brightness"},
};
constexpr auto light_bits = words<light_bit_list>();

int refuse_linkage()
{
    log_line(Line::green_empty, NET_HERE, "");
    return -1;
}

// Adds the bit of each child that holds another number than 0; a 0 takes none away.
int read_bits(unsigned int &mask, const WordTable &bits, TiXmlNode *node)
{
    for (TiXmlNode *child = node->FirstChild(); child != nullptr; child = child->NextSibling()) {
        const auto *bit = find_prefix(bits, child->Value(), std::strlen(child->Value()));
        if (bit == nullptr)
            continue;
        int value;
        if (read_int(&value, child) != 0)
            return refuse_linkage();
        if (value != 0)
            mask |= static_cast<unsigned int>(bit->code);
    }
    return 0;
}

int read_plug(net_iot_linkage_support_t &linkage, TiXmlNode *node)
{
    return read_bits(linkage.smartPlug, plug_bits, node);
}

int read_bell(net_iot_linkage_support_t &linkage, TiXmlNode *node)
{
    return read_bits(linkage.alertor, bell_bits, node);
}

int read_light(net_iot_linkage_support_t &linkage, TiXmlNode *node)
{
    return read_bits(linkage.alertor, light_bits, node);
}

struct LinkageFields : Description {
    using T = net_iot_linkage_support_t;
    static constexpr Field fields[] = {
        custom<read_plug>("smartPlug", AT(smartPlug)),
        custom<read_bell>("alertorBell", AT(alertor)),
        custom<read_light>("alertorLight", AT(alertor)),
    };
    static constexpr Traits traits = HERE.failure(Line::green_empty);
};
constexpr auto linkage_record = describe<LinkageFields>();

// Channels ----------------------------------------------------------------------------------------

constexpr Word channel_type_list[] = {
    {0, "ipc"},   {1, "plug"}, {2, "usb"},         {3, "KT3"},      {4, "Doorbell"},
    {5, "Light"}, {6, "R58"},  {7, "fisheye_ipc"}, {8, "repeater"},
};
constexpr auto channel_types = words<channel_type_list>();

using Channel = net_chn_support_v20_t;

struct ItemFields : Description {
    using T = Channel;
    static constexpr Field fields[] = {
        integer("chnID", AT(chnID)).in(0, NET_SUPPORT_CHANNELS - 1),
        integer("ptzType", AT(ptzType)),
        integer("rfCfg", AT(rfCfg)),
        integer("newRfCfg", AT(newRfCfg)),
        integer("noAudio", AT(noAudio)),
        integer("osdCfg", AT(osdCfg)),
        integer("videoClip", AT(videoClip)),
        integer("dynamicReso", AT(dynamicReso)),
        integer("ptzPreset", AT(ptzPreset)),
        integer("ptzPatrol", AT(ptzPatrol)),
        integer("ptzTattern", AT(ptzTattern)),
        integer("ptzControl", AT(ptzControl)),
        integer("autoPt", AT(autoPt)),
        integer("ledCtrl", AT(ledCtrl)),
        integer("aitype", AT(aitype)),
        integer("aiAnimalType", AT(aiAnimalType)),
        integer("newIspCfg", AT(newIspCfg)),
        integer("audioVersion", AT(audioVersion)),
        integer("audioTalk", AT(audioTalk)),
        integer("motion", AT(motion)),
        integer("battery", AT(battery)),
        integer("encCtrl", AT(encCtrl)),
        integer("zfBacklash", AT(zfBacklash)),
        integer("snap", AT(snap)),
        integer("report", AT(report)),
        integer("fishEye", AT(fishEye)),
        integer("lightType", AT(lightType)),
        integer("binoCfg", AT(binoCfg)),
        integer("networkVersion", AT(networkVersion)),
        integer("doorbellVersion", AT(doorbellVersion)),
        integer("snaptlpsVersion", AT(snaptlpsVersion)),
        integer("timelapse", AT(timelapse)),
        integer("aiUpdateAbility", AT(aiUpdateAbility)),
        integer("smartAI", AT(smartAI)),
        integer("remoteAbility", AT(remoteAbility)),
        integer("eventTypeVersion", AT(eventTypeVersion)),
        integer("compatibleAbility", AT(compatibleAbility)),
        integer("thumbnail", AT(thumbnail)),
        integer("ipcAudioTalk", AT(audioTalk)).write_only(), // not the name under which it is read
        word("channelType", AT(channelType), channel_types).fallback(0).write_only(),
        integer("recordCfg", AT(recordCfg)).when(AT(battery)).write_only(),
        integer("pushAlarm", AT(pushAlarm)).write_only(),
        integer("emailVersion", AT(emailVersion)).write_only(),
        integer("ftp", AT(ftp)).write_only(),
        integer("rfVersion", AT(rfVersion)).write_only(),
        integer("reboot", AT(reboot)).write_only(),
        integer("wifiVersion", AT(wifiVersion)).write_only(),
        integer("replayVersion", AT(replayVersion)).write_only(),
        integer("largeBattery", AT(largeBattery)).write_only(),
        integer("batteryMode", AT(batteryMode)).write_only(),
        integer("wifiTest", AT(wifiTest)).write_only(),
        constant("mdConfig", 0),
    };
    // Behind "chnID", which is the record's place and not its member.
    static constexpr auto written = order(
        "noAudio", "newRfCfg", "videoClip", "osdCfg", "dynamicReso", "aitype", "aiAnimalType", "ptzPreset", "ptzPatrol",
        "ptzTattern", "ptzType", "ptzControl", "newIspCfg", "audioVersion", "ledCtrl", "ipcAudioTalk", "channelType",
        "encCtrl", "autoPt", "fishEye", "lightType", "binoCfg", "networkVersion", "timelapse", "battery", "recordCfg",
        "pushAlarm", "emailVersion", "ftp", "rfVersion", "reboot", "wifiVersion", "doorbellVersion", "snaptlpsVersion",
        "replayVersion", "aiUpdateAbility", "largeBattery", "batteryMode", "remoteAbility", "thumbnail",
        "eventTypeVersion", "mdConfig", "snap", "wifiTest", "smartAI");
    static constexpr Traits traits = HERE.parser("get_item_from_xmlnode").failure(Line::plain);
};
constexpr auto item_record = describe<ItemFields>();

using Support = tag_net_support_v20_t;

// The record of the channel that a "chnID" names; null when it names none.
Channel *channel_of(Support &support, TiXmlNode *index)
{
    int number;
    if (read_int(&number, index) != 0 || number < 0 || number >= NET_SUPPORT_CHANNELS)
        return nullptr;
    return &support.channel[number];
}

// The index chooses the record, so it must come in front of everything that is read into it.
int read_item(Support &support, TiXmlNode *item, int &preset)
{
    const Table &table = item_record;
    Channel *channel = nullptr;
    unsigned likely = 0;
    for (TiXmlNode *child = item->FirstChild(); child != nullptr; child = child->NextSibling()) {
        const unsigned row = find_child(table, child, &likely);
        if (row == no_row)
            continue;
        const std::size_t member = table.row(row).offset;
        if (member == offsetof(Channel, ptzPreset))
            preset = 1;
        else if (member == offsetof(Channel, chnID))
            channel = channel_of(support, child);
        if (channel == nullptr) {
            log_line(Line::plain, table.place(), table.parser());
            return -1;
        }
        if (read_child(table, channel, row, child) != 0)
            return -1;
    }
    return 0;
}

// What older devices, which only tell the type, can do.
void derive_ptz(Channel &channel)
{
    constexpr int turns_only = 1, first = 1, last = 5; // 5 has presets, but no patrols
    const int type = channel.ptzType;
    if (type < first || type > last)
        return;
    channel.ptzPreset = type != turns_only;
    channel.ptzPatrol = type != turns_only && type != last;
    channel.ptzTattern = 0;
    channel.ptzControl = 0;
    channel.autoPt = 1;
}

int read_items(Support &support, TiXmlNode *item)
{
    int preset = 0;
    if (read_item(support, item, preset) != 0)
        return -1;
    // Always channel 0's, whichever channel the item is about. Meant.
    if (preset == 0)
        derive_ptz(support.channel[0]);
    return 0;
}

int write_items(const Support &support, TiXmlElement *parent)
{
    for (int i = 0; i < support.count && i < NET_SUPPORT_CHANNELS; ++i) {
        TiXmlElement *item = append_element(parent, "item");
        if (append_int(item, "chnID", i) != 0 || write_record(item_record, &support.channel[i], item) != 0)
            return -1;
    }
    return 0;
}

// Support -----------------------------------------------------------------------------------------

int append_service(TiXmlElement *parent, const char *name, unsigned int version)
{
    if (version == 0)
        return 0;
    TiXmlElement *item = append_element(parent, "item");
    return append_text(item, "name", name) != 0 ? -1 : append_unsigned(item, "ver", version);
}

int write_smart_home(const Support &support, TiXmlElement *parent)
{
    constexpr int cloud_smart_home = 8;
    TiXmlElement *home = append_element(parent, "smartHome");
    if (home == nullptr || ((support.cloudVersion & cloud_smart_home) != 0 && append_int(home, "version", 1) != 0) ||
        append_service(home, "googleHome", support.googleHomeVer) != 0)
        return -1;
    return append_service(home, "amazonAlexa", support.amazonAlexaVer);
}

// A device that does not say which image features it has has all thirteen.
void preset_image_features(Support &support)
{
    support.channel[0].newIspCfg |= 0x1fff;
}

struct SupportFields : Description {
    using T = Support;
    static constexpr Field fields[] = {
        integer("IOInputPortNum", AT(IOInputPortNum)).at_least(0),
        integer("IOOutputPortNum", AT(IOOutputPortNum)).at_least(0),
        integer("diskNum", AT(diskNum)).at_least(0), // takes "disk" as well, which is written behind it
        integer("channelNum", AT(channelNum)).at_least(0),
        integer("audioNum", AT(audioNum)).at_least(0),
        word("ptzMode", AT(ptzMode), ptz_modes).upto(15).kept().reported().fallback(0),
        integer("ptzCfg", AT(ptzCfg)),
        integer("B485", AT(B485)),
        integer("autoUpdate", AT(autoUpdate)),
        integer("pushAlarm", AT(pushAlarm)),
        integer("ftp", AT(ftp)),
        integer("ftpTest", AT(ftpTest)),
        integer("email", AT(email)),
        integer("wifi", AT(wifi)),
        integer("heightDiffAdjust", AT(heightDiffAdjust)),
        integer("record", AT(record)),
        integer("wifiTest", AT(wifiTest)),
        integer("rtsp", AT(rtsp)),
        integer("rtmp", AT(rtmp)),
        integer("onvif", AT(onvif)),
        integer("audioTalk", AT(channel[0].audioTalk)), // the device's own is channel 0's
        integer("rfVersion", AT(rfVersion)),
        integer("noExternStream", AT(noExternStream)),
        integer("timeFormat", AT(timeFormat)),
        integer("ddnsVersion", AT(ddnsVersion)),
        integer("emailVersion", AT(emailVersion)),
        integer("buzzerVersion", AT(buzzerVersion)),
        integer("pushVersion", AT(pushVersion)),
        integer("replayVersion", AT(replayVersion)),
        integer("videoStandard", AT(videoStandard)),
        integer("autoTest", AT(autoTest)),
        group("IOTsupport", AT(IOTsupport), linkage_record),
        integer("largeBattery", AT(largeBattery)),
        integer("previewVersion", AT(previewVersion)),
        integer("nasVersion", AT(nasVersion)),
        integer("recordCfg", AT(recordCfg)),
        integer("reboot", AT(reboot)),
        integer("wifiVersion", AT(wifiVersion)),
        integer("user", AT(user)),
        integer("batteryMode", AT(batteryMode)),
        custom<read_items, write_items>("item", AT(channel)).shown(item_record),
        integer("chnType", AT(chnType)).write_only(),
        integer("disk", AT(disk)).write_only(),
        integer("IOTNum", AT(IOTNum)).write_only(),
        integer("scheduleVersion", AT(scheduleVersion)).write_only(),
        integer("logVersion", AT(logVersion)).write_only(),
        integer("newRecordType", AT(record)).write_only(), // not the name under which it is read
        integer("ddnsCfg", AT(ddnsCfg)).write_only(),
        integer("SupportUpgrade", AT(SupportUpgrade)).write_only(),
        integer("upgrade", AT(upgrade)).write_only(),
        integer("pushType", AT(pushType)).write_only(),
        integer("pppoe", AT(pppoe)).write_only(),
        integer("cloudVersion", AT(cloudVersion)).write_only(),
        integer("thirdCloudVersion", AT(thirdCloudVersion)).write_only(),
        integer("ExportImport", AT(ExportImport)).write_only(),
        integer("storagemode", AT(storagemode)).write_only(),
        integer("sambaVer", AT(sambaVer)).write_only(),
        integer("netPort", AT(netPort)).write_only(),
        integer("chVerInfo", AT(chVerInfo)).write_only(),
        integer("networkDiagnosis", AT(networkDiagnosis)).write_only(),
        integer("remoteUpgrade", AT(remoteUpgrade)).write_only(),
        integer("IOInputNum", AT(IOInputNum)).write_only(),
        integer("IOOutputNum", AT(IOOutputNum)).write_only(),
        integer("switchCtrl", AT(switchCtrl)).write_only(),
        integer("loginLocked", AT(loginLocked)).write_only(),
        integer("snaptlpsEnableCfg", AT(snaptlpsEnableCfg)).write_only(),
        integer("sceneModeCfg", AT(sceneModeCfg)).write_only(),
        integer("linkages", AT(linkages)).write_only(),
        integer("replayIpcVersion", AT(replayIpcVersion)).write_only(),
        integer("IOTLink", AT(IOTLink)).write_only(),
        integer("netSecurity", AT(netSecurity)).write_only(),
        integer("ledCtrl", AT(ledCtrl)).write_only(),
        integer("batteryVersion", AT(batteryVersion)).write_only(),
        integer("videoInspection", AT(videoInspection)).write_only(),
        integer("timelapse", AT(timelapse)).write_only(),
        integer("topologyVersion", AT(topologyVersion)).write_only(),
        integer("eventLogVersion", AT(eventLogVersion)).write_only(),
        integer("doorbellVersion", AT(doorbellVersion)).write_only(),
        custom<nullptr, write_smart_home>("smartHome", AT(cloudVersion)),
    };
    static constexpr auto written = order(
        "chnType", "IOInputPortNum", "IOOutputPortNum", "diskNum", "disk", "channelNum", "IOTNum", "audioNum",
        "scheduleVersion", "ptzMode", "ptzCfg", "B485", "autoUpdate", "pushAlarm", "logVersion", "ftp", "ftpTest",
        "email", "wifi", "wifiVersion", "newRecordType", "wifiTest", "rtsp", "onvif", "rfVersion", "rtmp", "timeFormat",
        "ddnsVersion", "ddnsCfg", "SupportUpgrade", "upgrade", "emailVersion", "buzzerVersion", "pushVersion",
        "pushType", "pppoe", "cloudVersion", "thirdCloudVersion", "replayVersion", "ExportImport", "storagemode",
        "sambaVer", "netPort", "chVerInfo", "networkDiagnosis", "remoteUpgrade", "IOInputNum", "IOOutputNum",
        "switchCtrl", "loginLocked", "snaptlpsEnableCfg", "sceneModeCfg", "linkages", "replayIpcVersion", "IOTLink",
        "netSecurity", "user", "nasVersion", "ledCtrl", "batteryVersion", "videoInspection", "timelapse",
        "topologyVersion", "eventLogVersion", "doorbellVersion", "smartHome", "item");
    static constexpr Traits traits = HERE.parser("net_support_x2s")
                                         .writer("net_support_s2x", "Support")
                                         .before<T, preset_image_features>()
                                         .failure(Line::plain)
                                         .any_size_read();
};
constexpr auto support_message = describe<SupportFields>();

// Abilities ---------------------------------------------------------------------------------------

using Operation = NET_ABILITY_OPERATION_V20_E;
using DeviceOperations = net_ability_device_t;
using ChannelOperations = net_ability_channel_t;

// The names as a list, module by module, and for the tools where each operation lies.
struct DeviceFields : Description {
    using T = DeviceOperations;
    static constexpr Field fields[] = {
        // system
        integer("general", AT(general)),
        integer("norm", AT(norm)),
        integer("version", AT(version)),
        integer("channelVersion", AT(channelVersion)),
        integer("uid", AT(uid)),
        integer("autoReboot", AT(autoReboot)),
        integer("restore", AT(restore)),
        integer("reboot", AT(reboot)),
        integer("shutdown", AT(shutdown)),
        integer("dst", AT(dst)),
        integer("log", AT(log)),
        integer("output", AT(output)),
        integer("performance", AT(performance)),
        integer("upgrade", AT(upgrade)),
        integer("export", AT(systemExport)),
        integer("import", AT(systemImport)),
        integer("bootPwd", AT(bootPwd)),
        integer("polling", AT(polling)),
        // network
        integer("port", AT(port)),
        integer("dns", AT(dns)),
        integer("email", AT(email)),
        integer("ftp", AT(ftp)),
        integer("ftpSchedule", AT(ftpSchedule)),
        integer("ipFilter", AT(ipFilter)),
        integer("3g", AT(network3g)),
        integer("localLink", AT(localLink)),
        integer("pppoe", AT(pppoe)),
        integer("upnp", AT(upnp)),
        integer("wifi", AT(wifi)),
        integer("ntp", AT(ntp)),
        integer("netStatus", AT(netStatus)),
        integer("push", AT(push)),
        integer("ptop", AT(ptop)),
        integer("autontp", AT(autontp)),
        // PTZ
        integer("control", AT(control)),
        integer("preset", AT(preset)),
        integer("cruise", AT(cruise)),
        integer("track", AT(track)),
        integer("decoder", AT(decoder)),
        integer("ptzInfo", AT(ptzInfo)),
        // IO
        integer("manualAlarm", AT(manualAlarm)),
        integer("ioAlarmIn", AT(ioAlarmIn)),
        integer("ioAlarmOut", AT(ioAlarmOut)),
        // alarm
        integer("hddFull", AT(hddFull)),
        integer("hddError", AT(hddError)),
        integer("disconnect", AT(disconnect)),
        integer("ipConflict", AT(ipConflict)),
        integer("rfAlarm", AT(rfAlarm)),
        // audio
        integer("talk", AT(talk)),
        // security
        integer("user", AT(user)),
        integer("userOnline", AT(userOnline)),
        integer("bootPwd", AT(securityBootPwd)),
        // disk
        integer("format", AT(format)),
        integer("hddCfg", AT(hddCfg)),
        integer("hddInit", AT(hddInit)),
    };
};
constexpr auto device_operations = describe<DeviceFields>();

struct ChannelFields : Description {
    using T = ChannelOperations;
    static constexpr Field fields[] = {
        // streaming
        integer("preview", AT(preview)),
        integer("compress", AT(compress)),
        integer("snap", AT(snap)),
        integer("rtsp", AT(rtsp)),
        integer("streamTable", AT(streamTable)),
        // record
        integer("download", AT(download)),
        integer("fileFind", AT(fileFind)),
        integer("manualRecord", AT(manualRecord)),
        integer("recordCfg", AT(recordCfg)),
        integer("recordSchedule", AT(recordSchedule)),
        integer("subStreamRecord", AT(subStreamRecord)),
        // alarm
        integer("motion", AT(motion)),
        integer("videoLost", AT(videoLost)),
        integer("hide", AT(hide)),
        integer("smart", AT(smart)),
        // image
        integer("ispBasic", AT(ispBasic)),
        integer("ispAdvance", AT(ispAdvance)),
        integer("ledState", AT(ledState)),
        // video
        integer("osdName", AT(osdName)),
        integer("osdTime", AT(osdTime)),
        integer("shelter", AT(shelter)),
        // replay
        integer("replay", AT(replay)),
        integer("seek", AT(seek)),
    };
};
constexpr auto channel_operations = describe<ChannelFields>();

// How many of the names above are each module's. The modules stand in the order of their sections.
struct Module {
    char name[10];
    std::uint8_t device, channel;
};
constexpr Module modules[] = {
    {"system", 18, 0},  {"streaming", 0, 5}, {"record", 0, 6}, {"network", 16, 0}, {"PTZ", 6, 0},
    {"IO", 3, 0},       {"alarm", 5, 4},     {"image", 0, 3},  {"video", 0, 3},    {"audio", 1, 0},
    {"security", 3, 0}, {"replay", 0, 2},    {"disk", 3, 0},
};
static_assert(std::size(modules) == NET_ABILITY_SECTIONS, "one module a section");

// The names one behind the other, each with its terminator.
template <class D> constexpr std::size_t name_characters()
{
    std::size_t characters = 0;
    for (const Field &field : D::fields)
        characters += length_of(field.key) + 1;
    return characters;
}

template <class D> constexpr auto names_of()
{
    std::array<char, name_characters<D>()> names{};
    std::size_t at = 0;
    for (const Field &field : D::fields) {
        for (const char *from = field.key; *from != '\0'; ++from)
            names[at++] = *from;
        ++at;
    }
    return names;
}
constexpr auto device_names = names_of<DeviceFields>();
constexpr auto channel_names = names_of<ChannelFields>();

// The writer takes the operations of a record for an array in the order of the names.
template <class D> constexpr bool stand_in_order()
{
    std::size_t place = 0;
    for (const Field &field : D::fields)
        if (field.offset != place++ * sizeof(Operation))
            return false;
    return place * sizeof(Operation) == sizeof(typename D::T);
}
static_assert(stand_in_order<DeviceFields>() && stand_in_order<ChannelFields>(), "an operation a name");

// Characters of the longest list of tokens, and whether each name is some module's.
template <class D> constexpr std::size_t longest_list(std::uint8_t Module::*count)
{
    std::size_t longest = 0, name = 0;
    for (const Module &module : modules) {
        std::size_t length = 0;
        for (unsigned int i = 0; i < module.*count; ++i)
            length += length_of(D::fields[name++].key) + length_of(", _rw");
        longest = length > longest ? length : longest;
    }
    return name == std::size(D::fields) ? longest : 0;
}
constexpr std::size_t list_size = 512;
constexpr std::size_t longest_device_list = longest_list<DeviceFields>(&Module::device);
static_assert(longest_list<ChannelFields>(&Module::channel) != 0 &&
                  longest_list<ChannelFields>(&Module::channel) <= longest_device_list,
              "the device's lists are the longest");
static_assert(longest_device_list != 0 && longest_device_list < list_size, "no list is cut");

// Appends what fits in front of `end`.
char *append_cut(char *to, const char *end, const char *text)
{
    while (to != end && *text != '\0')
        *to++ = *text++;
    return to;
}

// One token behind the others, `to` being their end, which moves on.
int append_token(char *&to, const char *end, bool first, const char *name, Operation operation)
{
    if (operation == NET_ABILITY_OPERATION_BUTT) {
        log_error(NET_HERE, "Func(%s) Line(%d) error. enum value is BUTT\n", "make_enum_to_string", __LINE__);
        return -1;
    }
    if (!first)
        to = append_cut(to, end, ", ");
    to = append_cut(to, end, name);
    to = append_cut(to, end, operation == NET_ABILITY_OPERATION_RO ? "_ro" : "_rw");
    *to = '\0';
    return 0;
}

bool has_token(Operation operation)
{
    return operation >= NET_ABILITY_OPERATION_RO && operation <= NET_ABILITY_OPERATION_BUTT;
}

// A module's share of a record: its names and its operations.
struct Share {
    const char *names;
    const Operation *operations;
    unsigned int count;
};

// Behind the share, the next module's begins.
Share behind(Share share)
{
    for (; share.count != 0; --share.count) {
        share.names += std::strlen(share.names) + 1;
        ++share.operations;
    }
    return share;
}

constexpr int no_channel = -1;

int append_share(TiXmlElement *module, int channel, Share share)
{
    char list[longest_device_list + 1];
    char *end = list;
    *end = '\0';
    for (; share.count != 0; --share.count, ++share.operations) {
        if (has_token(*share.operations) &&
            append_token(end, std::end(list) - 1, end == list, share.names, *share.operations) != 0)
            return -1;
        share.names += std::strlen(share.names) + 1;
    }
    TiXmlElement *element = append_element(module, "subModule");
    if (channel != no_channel && append_int(element, "channelId", channel) != 0)
        return -1;
    return append_text(element, "abilityValue", list);
}

// What the module has without a channel, then channel by channel.
int append_module(TiXmlElement *module, const Share &device, const Share &first_channel, int channels)
{
    if (module == nullptr)
        return -1;
    if (device.count != 0 && append_share(module, no_channel, device) != 0)
        return -1;
    Share share = first_channel;
    for (int channel = 0; share.count != 0 && channel < channels; ++channel) {
        if (append_share(module, channel, share) != 0)
            return -1;
        share.operations += std::size(ChannelFields::fields);
    }
    return 0;
}

using Ability = net_ability_v20_t;

int write_modules(const Ability &ability, TiXmlElement *parent)
{
    const int wired = sc_get_channel_num();
    const int channels = wired < NET_SUPPORT_CHANNELS ? wired : NET_SUPPORT_CHANNELS;
    Share device = {device_names.data(), reinterpret_cast<const Operation *>(&ability.device), 0};
    Share channel = {channel_names.data(), reinterpret_cast<const Operation *>(ability.channel), 0};
    for (int i = 0; i < NET_ABILITY_SECTIONS; ++i) {
        device.count = modules[i].device;
        channel.count = modules[i].channel;
        if (ability.section[i] != 0 &&
            append_module(append_element(parent, modules[i].name), device, channel, channels) != 0)
            return -1;
        device = behind(device);
        channel = behind(channel);
    }
    return 0;
}

struct ImageText {
    int channelId;
    const char *operations;
};

struct ImageFields : Description {
    using T = ImageText;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, 15).complain("get channelId failed!\n"),
        view("abilityValue", AT(operations)).upto(list_size - 1).complain("get cString failed!\n"),
    };
    static constexpr Traits traits = HERE;
};
constexpr auto image_text = describe<ImageFields>();

// Each child, whatever its name, is one channel's; one that names no channel is channel 0's.
int read_image(Ability &ability, TiXmlNode *node)
{
    for (TiXmlNode *child = node->FirstChild(); child != nullptr; child = child->NextSibling()) {
        if (!is_element(child))
            continue; // a comment would clear channel 0's
        ImageText text = {0, ""};
        if (read_record(image_text, &text, child) != 0)
            return -1;
        ChannelOperations &channel = ability.channel[text.channelId];
        // The parameter is not const, but the text is only searched.
        char *list = const_cast<char *>(text.operations);
        make_string_to_enum(list, "ledState", channel.ledState);
        make_string_to_enum(list, "ispBasic", channel.ispBasic);
        make_string_to_enum(list, "ispAdvance", channel.ispAdvance);
    }
    return 0;
}

// All modules are written, but only "image" is read.
struct AbilityFields : Description {
    using T = Ability;
    static constexpr Field fields[] = {
        text("userName", AT(userName)).write_only(),
        custom<nullptr, write_modules>("system", AT(device)).shown(device_operations),
        custom<read_image>("image", AT(channel)).shown(channel_operations),
    };
    static constexpr Traits traits =
        HERE.parser("net_ability_x2s").writer("net_ability_s2x", "AbilityInfo").any_size_read();
};
constexpr auto ability_message = describe<AbilityFields>();

// Heart beat --------------------------------------------------------------------------------------

struct HeartBeatFields : Description {
    using T = net_heart_beat_t;
    static constexpr Field fields[] = {
        integer("size", AT(size)).at_least(0),
        integer("sec", AT(sec)).at_least(0).quiet(),
        integer("usec", AT(usec)).at_least(0).quiet(),
    };
    static constexpr Traits traits = HERE.parser("nets_param_heart_beat_x2s").failure(Line::plain).any_size();
};
constexpr auto heart_beat_message = describe<HeartBeatFields>();

enum HeartBeatRow : unsigned { row_size, row_sec, row_usec };

// The two lines differ by a blank.
void log_refused_beat(unsigned row, const net_heart_beat_t &beat)
{
    if (row == row_sec)
        log_plain("Func(%s) Line(%d) %d\n", "nets_param_heart_beat_x2s", __LINE__, beat.sec);
    else if (row == row_usec)
        log_plain("Func(%s) Line(%d) %d \n", "nets_param_heart_beat_x2s", __LINE__, beat.usec);
}

int read_heart_beat(net_heart_beat_t &beat, TiXmlNode *node)
{
    unsigned likely = 0;
    bool seen[3] = {};
    for (TiXmlNode *child = node->FirstChild(); child != nullptr; child = child->NextSibling()) {
        const unsigned row = find_child(heart_beat_message, child, &likely);
        if (row == no_row)
            continue;
        if (read_child(heart_beat_message, &beat, row, child) != 0) {
            log_refused_beat(row, beat);
            return -1;
        }
        seen[row] = true;
    }
    if (seen[row_sec] && seen[row_usec])
        return 0;
    log_error(NET_HERE, "0 == fSec || 0 == fUsec\n");
    return -1;
}

} // namespace
} // namespace netpublic

using namespace netpublic;

int net_support_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, support_message);
}

int net_support_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, support_message);
}

int get_item_from_xmlnode(tag_net_support_v20_t *support, TiXmlNode *node, char *key, int *ptzPreset)
{
    return ptzPreset != nullptr && is_component(support, node, key) ? read_item(*support, node, *ptzPreset) : -1;
}

int get_iot_support_from_xmlnode(tag_net_support_v20_t *support, TiXmlNode *node)
{
    return is_component(support, node, nullptr) ? read_record(linkage_record, &support->IOTsupport, node)
                                                : refuse_linkage();
}

int get_smartPlug_from_xmlnode(net_iot_linkage_support_t *support, TiXmlNode *node)
{
    return is_component(support, node, nullptr) ? read_plug(*support, node) : refuse_linkage();
}

int get_alertorBell_from_xmlnode(net_iot_linkage_support_t *support, TiXmlNode *node)
{
    return is_component(support, node, nullptr) ? read_bell(*support, node) : refuse_linkage();
}

int get_alertorLight_from_xmlnode(net_iot_linkage_support_t *support, TiXmlNode *node)
{
    return is_component(support, node, nullptr) ? read_light(*support, node) : refuse_linkage();
}

int net_ability_x2s(net_param_t *param, TiXmlNode *node)
{
    if (param != nullptr && node != nullptr && param->data != nullptr)
        return read_record(ability_message, param->data, node);
    log_error(NET_HERE, "arguments are null.\n");
    return -1;
}

int net_ability_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, ability_message);
}

int make_enum_to_string(char *dst, int size, char const *name, NET_ABILITY_OPERATION_V20_E op, int *count)
{
    if (dst == nullptr || name == nullptr || count == nullptr || size < 1) {
        log_error(NET_HERE, "Func(%s) Line(%d) error. param is invalid\n", "make_enum_to_string", __LINE__);
        return -1;
    }
    if (!has_token(op))
        return 0;
    const auto longest = static_cast<std::size_t>(size) - 1;
    const bool first = *count == 0;
    char *to = first ? dst : dst + ::strnlen(dst, longest);
    if (append_token(to, dst + longest, first, name, op) != 0)
        return -1;
    if (first)
        *count = 1;
    return 0;
}

int make_string_to_enum(char *list, char const *name, NET_ABILITY_OPERATION_V20_E &op)
{
    op = NET_ABILITY_OPERATION_NONE;
    if (list == nullptr || name == nullptr) {
        log_error(NET_HERE, "param is invalid\n");
        return -1;
    }
    const std::size_t length = std::strlen(name);
    for (const char *at = list; *at != '\0' && op != NET_ABILITY_OPERATION_RW; ++at) {
        if (!same_folded(at, name, length))
            continue;
        if (same_folded(at + length, "_rw", 3))
            op = NET_ABILITY_OPERATION_RW; // counts more than a "_ro", wherever that is
        else if (same_folded(at + length, "_ro", 3))
            op = NET_ABILITY_OPERATION_RO;
    }
    return 0;
}

int nets_param_heart_beat_x2s(net_param_t *param, TiXmlNode *node)
{
    if (check_parser(heart_beat_message, param, node) != 0)
        return -1;
    return read_heart_beat(*static_cast<net_heart_beat_t *>(param->data), node);
}

MESSAGES(support, //
         MESSAGE("support", nets_param_support_init, net_support_x2s, net_support_s2x, support_message),
         MESSAGE("ability", nets_param_ability_init, net_ability_x2s, net_ability_s2x, ability_message),
         MESSAGE("heart-beat", net_param_heart_beat_init, nets_param_heart_beat_x2s, nullptr, heart_beat_message))
