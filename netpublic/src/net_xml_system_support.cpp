// The device system: the support and ability descriptions and the heart beat.
#define NETPUBLIC_LOGGED_AS "net_xml_system.cpp"
#include "engine/describe.h"
#include "engine/matching.h"
#include "engine/registry.h"
#include "values/tables.h"

#include <net_host.h>
#include <net_public.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

namespace netpublic {
namespace {

// Linkage features --------------------------------------------------------------------------------

struct PlugFields : Description {
    using T = net_iot_linkage_support_t;
    static constexpr Field fields[] = {
        bit("openClose", AT(smartPlug), 1),
        bit("duration", AT(smartPlug), 2),
    };
    static constexpr Traits traits = HERE.entry(Line::green_empty).failure(Line::green_empty);
};
constexpr auto plug_record = describe<PlugFields>();

// Bell and light share a word.
struct BellFields : Description {
    using T = net_iot_linkage_support_t;
    static constexpr Field fields[] = {
        bit("startStop", AT(alertor), 1),   bit("type", AT(alertor), 2),    bit("duration", AT(alertor), 4),
        bit("repeatCount", AT(alertor), 8), bit("volume", AT(alertor), 16), bit("audioID", AT(alertor), 32),
    };
    static constexpr Traits traits = PlugFields::traits;
};
constexpr auto bell_record = describe<BellFields>();

struct LightFields : Description {
    using T = net_iot_linkage_support_t;
    static constexpr Field fields[] = {
        bit("openClose", AT(alertor), 64), bit("type", AT(alertor), 128),        bit("flashfreq", AT(alertor), 256),
        bit("duration", AT(alertor), 512), bit("brightness", AT(alertor), 1024),
    };
    static constexpr Traits traits = PlugFields::traits;
};
constexpr auto light_record = describe<LightFields>();

struct LinkageFields : Description {
    using T = net_iot_linkage_support_t;
    static constexpr Field fields[] = {
        part("smartPlug", plug_record),
        part("alertorBell", bell_record),
        part("alertorLight", light_record),
    };
    static constexpr Traits traits = PlugFields::traits;
};
constexpr auto linkage_record = describe<LinkageFields>();

// Channels ----------------------------------------------------------------------------------------

constexpr Word channel_type_list[] = {
    {0, "ipc"},   {1, "plug"}, {2, "usb"},         {3, "KT3"},      {4, "Doorbell"},
    {5, "Light"}, {6, "R58"},  {7, "fisheye_ipc"}, {8, "repeater"},
};
constexpr auto channel_types = words<channel_type_list>();

using Channel = net_chn_support_v20_t;

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

struct ItemFields : Description {
    using T = Channel;
    static constexpr Field fields[] = {
        place("chnID", AT(chnID)),
        integer("ptzType", AT(ptzType)),
        integer("rfCfg", AT(rfCfg)),
        integer("newRfCfg", AT(newRfCfg)),
        integer("noAudio", AT(noAudio)),
        integer("osdCfg", AT(osdCfg)),
        integer("videoClip", AT(videoClip)),
        integer("dynamicReso", AT(dynamicReso)),
        integer("ptzPreset", AT(ptzPreset)).absent<derive_ptz>(), // always channel 0's, meant
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
    static constexpr auto written = order(
        "chnID", "noAudio", "newRfCfg", "videoClip", "osdCfg", "dynamicReso", "aitype", "aiAnimalType", "ptzPreset",
        "ptzPatrol", "ptzTattern", "ptzType", "ptzControl", "newIspCfg", "audioVersion", "ledCtrl", "ipcAudioTalk",
        "channelType", "encCtrl", "autoPt", "fishEye", "lightType", "binoCfg", "networkVersion", "timelapse", "battery",
        "recordCfg", "pushAlarm", "emailVersion", "ftp", "rfVersion", "reboot", "wifiVersion", "doorbellVersion",
        "snaptlpsVersion", "replayVersion", "aiUpdateAbility", "largeBattery", "batteryMode", "remoteAbility",
        "thumbnail", "eventTypeVersion", "mdConfig", "snap", "wifiTest", "smartAI");
    static constexpr Traits traits = HERE.parser("get_item_from_xmlnode").failure(Line::plain);
};
constexpr auto item_record = describe<ItemFields>();

using Support = tag_net_support_v20_t;

// Support -----------------------------------------------------------------------------------------

// A service of the smart home.
struct Service {
    const char *name = nullptr;
    unsigned int version = 0;
};

struct ServiceFields : Description {
    using T = Service;
    static constexpr Field fields[] = {
        view("name", AT(name)),
        unsigned_integer("ver", AT(version)),
    };
};
constexpr auto service_record = describe<ServiceFields>();

using Support = tag_net_support_v20_t;

Give give_service(const Support &support, Service &service, const Item &item)
{
    if (item.index == 0)
        service = {"googleHome", support.googleHomeVer};
    else if (item.index == 1)
        service = {"amazonAlexa", support.amazonAlexaVer};
    else
        return Give::ended;
    return service.version != 0 ? Give::written : Give::left_out;
}

bool has_cloud_smart_home(const Support &support)
{
    constexpr int cloud_smart_home = 8;
    return (support.cloudVersion & cloud_smart_home) != 0;
}

struct SmartHomeFields : Description {
    using T = Support;
    static constexpr Field fields[] = {
        constant("version", 1).when<has_cloud_smart_home>(),
        wires_part<T, nullptr, give_service>("item", service_record, 2),
    };
};
constexpr auto smart_home = describe<SmartHomeFields>();

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
        list("item", AT(channel), item_record).indexed().counted_by(AT(count)), // the count is the host's
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
        part("smartHome", smart_home).write_only(),
    };
    static constexpr Field also_shown[] = {
        shown("count", AT(count)),
        shown("googleHomeVer", AT(googleHomeVer)),
        shown("amazonAlexaVer", AT(amazonAlexaVer)),
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
    static constexpr Traits traits =
        HERE.parser("net_support_x2s")
            .writer("net_support_s2x", "Support")
            .before<T, preset_image_features>()
            .failure(Line::plain)
            .any_size_read()
            .title("supported features",
                   "Which features the device and each of its channels have, and in which versions.");
};
constexpr auto support_message = describe<SupportFields>();

// Abilities ---------------------------------------------------------------------------------------

using Operation = NET_ABILITY_OPERATION_V20_E;

// An ability: its module, its name and its operation.
struct AbilityName {
    const char *module;
    Field operation;
};

// Those without a channel, module by module, in the order in which they are written.
struct DeviceAbilities {
    using T = net_ability_device_t;
    static constexpr AbilityName list[] = {
        {"system", integer("general", AT(general))},
        {"system", integer("norm", AT(norm))},
        {"system", integer("version", AT(version))},
        {"system", integer("channelVersion", AT(channelVersion))},
        {"system", integer("uid", AT(uid))},
        {"system", integer("autoReboot", AT(autoReboot))},
        {"system", integer("restore", AT(restore))},
        {"system", integer("reboot", AT(reboot))},
        {"system", integer("shutdown", AT(shutdown))},
        {"system", integer("dst", AT(dst))},
        {"system", integer("log", AT(log))},
        {"system", integer("output", AT(output))},
        {"system", integer("performance", AT(performance))},
        {"system", integer("upgrade", AT(upgrade))},
        {"system", integer("export", AT(systemExport))},
        {"system", integer("import", AT(systemImport))},
        {"system", integer("bootPwd", AT(bootPwd))},
        {"system", integer("polling", AT(polling))},
        {"network", integer("port", AT(port))},
        {"network", integer("dns", AT(dns))},
        {"network", integer("email", AT(email))},
        {"network", integer("ftp", AT(ftp))},
        {"network", integer("ftpSchedule", AT(ftpSchedule))},
        {"network", integer("ipFilter", AT(ipFilter))},
        {"network", integer("3g", AT(network3g))},
        {"network", integer("localLink", AT(localLink))},
        {"network", integer("pppoe", AT(pppoe))},
        {"network", integer("upnp", AT(upnp))},
        {"network", integer("wifi", AT(wifi))},
        {"network", integer("ntp", AT(ntp))},
        {"network", integer("netStatus", AT(netStatus))},
        {"network", integer("push", AT(push))},
        {"network", integer("ptop", AT(ptop))},
        {"network", integer("autontp", AT(autontp))},
        {"PTZ", integer("control", AT(control))},
        {"PTZ", integer("preset", AT(preset))},
        {"PTZ", integer("cruise", AT(cruise))},
        {"PTZ", integer("track", AT(track))},
        {"PTZ", integer("decoder", AT(decoder))},
        {"PTZ", integer("ptzInfo", AT(ptzInfo))},
        {"IO", integer("manualAlarm", AT(manualAlarm))},
        {"IO", integer("ioAlarmIn", AT(ioAlarmIn))},
        {"IO", integer("ioAlarmOut", AT(ioAlarmOut))},
        {"alarm", integer("hddFull", AT(hddFull))},
        {"alarm", integer("hddError", AT(hddError))},
        {"alarm", integer("disconnect", AT(disconnect))},
        {"alarm", integer("ipConflict", AT(ipConflict))},
        {"alarm", integer("rfAlarm", AT(rfAlarm))},
        {"audio", integer("talk", AT(talk))},
        {"security", integer("user", AT(user))},
        {"security", integer("userOnline", AT(userOnline))},
        {"security", integer("bootPwd", AT(securityBootPwd))},
        {"disk", integer("format", AT(format))},
        {"disk", integer("hddCfg", AT(hddCfg))},
        {"disk", integer("hddInit", AT(hddInit))},
    };
};

// Those of a channel.
struct ChannelAbilities {
    using T = net_ability_channel_t;
    static constexpr AbilityName list[] = {
        {"streaming", integer("preview", AT(preview))},
        {"streaming", integer("compress", AT(compress))},
        {"streaming", integer("snap", AT(snap))},
        {"streaming", integer("rtsp", AT(rtsp))},
        {"streaming", integer("streamTable", AT(streamTable))},
        {"record", integer("download", AT(download))},
        {"record", integer("fileFind", AT(fileFind))},
        {"record", integer("manualRecord", AT(manualRecord))},
        {"record", integer("recordCfg", AT(recordCfg))},
        {"record", integer("recordSchedule", AT(recordSchedule))},
        {"record", integer("subStreamRecord", AT(subStreamRecord))},
        {"alarm", integer("motion", AT(motion))},
        {"alarm", integer("videoLost", AT(videoLost))},
        {"alarm", integer("hide", AT(hide))},
        {"alarm", integer("smart", AT(smart))},
        {"image", integer("ispBasic", AT(ispBasic))},
        {"image", integer("ispAdvance", AT(ispAdvance))},
        {"image", integer("ledState", AT(ledState))},
        {"video", integer("osdName", AT(osdName))},
        {"video", integer("osdTime", AT(osdTime))},
        {"video", integer("shelter", AT(shelter))},
        {"replay", integer("replay", AT(replay))},
        {"replay", integer("seek", AT(seek))},
    };
};

// A name among the others: its length, its characters and a terminator.
constexpr std::size_t room_of(const AbilityName &ability)
{
    return length_of(ability.operation.key) + 2;
}

template <class Abilities> constexpr std::size_t name_characters()
{
    std::size_t characters = 0;
    for (const AbilityName &ability : Abilities::list)
        characters += room_of(ability);
    return characters;
}

template <class Abilities> constexpr auto names_of()
{
    std::array<char, name_characters<Abilities>()> names{};
    std::size_t at = 0;
    for (const AbilityName &ability : Abilities::list) {
        const char *name = ability.operation.key;
        names[at] = static_cast<char>(length_of(name));
        for (std::size_t i = 0; name[i] != '\0'; ++i)
            names[at + 1 + i] = name[i];
        at += room_of(ability);
    }
    return names;
}
constexpr auto device_names = names_of<DeviceAbilities>();
constexpr auto channel_names = names_of<ChannelAbilities>();

// A module's share of a record: where the names begin, and which of the operations are its.
struct Share {
    std::uint16_t name;
    std::uint8_t first, count;
};

template <class Abilities> constexpr Share share_of(const char *module)
{
    std::size_t name = 0, first = 0, count = 0;
    for (const AbilityName &ability : Abilities::list) {
        if (same_text(ability.module, module)) {
            ++count;
        } else if (count == 0) {
            name += room_of(ability);
            ++first;
        }
    }
    return {narrowed<std::uint16_t>(name), narrowed<std::uint8_t>(first), narrowed<std::uint8_t>(count)};
}

struct Module {
    char name[10];
    Share device, channel;
};

constexpr Module module_of(const char *name)
{
    Module module = {{}, share_of<DeviceAbilities>(name), share_of<ChannelAbilities>(name)};
    for (std::size_t i = 0; name[i] != '\0'; ++i)
        module.name[i] = name[i];
    return module;
}

// In the order of their sections.
constexpr Module modules[] = {
    module_of("system"),   module_of("streaming"), module_of("record"), module_of("network"), module_of("PTZ"),
    module_of("IO"),       module_of("alarm"),     module_of("image"),  module_of("video"),   module_of("audio"),
    module_of("security"), module_of("replay"),    module_of("disk"),
};
static_assert(std::size(modules) == NET_ABILITY_SECTIONS, "one module a section");

// A record is written as an array of operations: they lie in the order of their names, and those of a module stand
// together. All of them are some module's.
template <class Abilities> constexpr bool stand_in_order(Share Module::*share)
{
    std::size_t place = 0, shared = 0;
    for (const AbilityName &ability : Abilities::list)
        if (ability.operation.offset != place++ * sizeof(Operation))
            return false;
    for (const Module &module : modules)
        for (std::size_t i = 0; i < (module.*share).count; ++i, ++shared)
            if (!same_text(Abilities::list[(module.*share).first + i].module, module.name))
                return false;
    return shared == place && place * sizeof(Operation) == sizeof(typename Abilities::T);
}
static_assert(stand_in_order<DeviceAbilities>(&Module::device) && stand_in_order<ChannelAbilities>(&Module::channel),
              "an operation a name");

// Characters of a module's longest list of tokens.
template <class Abilities> constexpr std::size_t longest_list(Share Module::*share)
{
    std::size_t longest = 0;
    for (const Module &module : modules) {
        std::size_t length = 0;
        for (std::size_t i = 0; i < (module.*share).count; ++i)
            length += length_of(Abilities::list[(module.*share).first + i].operation.key) + length_of(", _rw");
        longest = length > longest ? length : longest;
    }
    return longest;
}
constexpr std::size_t list_size = 512;
constexpr std::size_t longest_device_list = longest_list<DeviceAbilities>(&Module::device);
static_assert(longest_list<ChannelAbilities>(&Module::channel) <= longest_device_list,
              "the device's lists are the longest");
static_assert(longest_device_list < list_size, "no list is cut");

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

using Ability = net_ability_v20_t;

// A module's element.
struct ModuleElement {
    Ability *target = nullptr; // that is read into
    const Ability *source = nullptr;
    const Module *module = nullptr; // that is written, for so many channels
    unsigned channels = 0;

    ModuleElement() = default;
    explicit ModuleElement(Ability &ability) : target(&ability) {}
};

// Its abilities on a channel, or without one.
struct SubModule {
    int channelId = 0; // what names no channel is channel 0's
    const char *tokens = "";
};
struct WrittenSubModule : SubModule {
    char list[longest_device_list + 1];

    // cppcheck-suppress uninitMemberVar // the list is not cleared
    WrittenSubModule() {}
    Give give(const char *names, const void *operations, Share share);
};

// The tokens of a module's share of the names and operations.
Give WrittenSubModule::give(const char *names, const void *operations, Share share)
{
    const Operation *operation = static_cast<const Operation *>(operations) + share.first;
    char *end = list;
    *end = '\0';
    names += share.name;
    for (; share.count != 0; --share.count, ++operation, names += *names + 2)
        if (has_token(*operation) && append_token(end, std::end(list) - 1, end == list, names + 1, *operation) != 0)
            return Give::failed;
    tokens = list;
    return Give::written;
}

// Only "image" is read.
int take_sub_module(ModuleElement &element, const SubModule &sub)
{
    net_ability_channel_t &channel = element.target->channel[sub.channelId];
    // The parameter is not const, but the text is only searched.
    char *list = const_cast<char *>(sub.tokens);
    make_string_to_enum(list, "ledState", channel.ledState);
    make_string_to_enum(list, "ispBasic", channel.ispBasic);
    make_string_to_enum(list, "ispAdvance", channel.ispAdvance);
    return 0;
}

Give give_device(const ModuleElement &element, WrittenSubModule &sub)
{
    const Share &share = element.module->device;
    return share.count != 0 ? sub.give(device_names.data(), &element.source->device, share) : Give::left_out;
}

Give give_channel(const ModuleElement &element, WrittenSubModule &sub, const Item &item)
{
    const Share &share = element.module->channel;
    if (share.count == 0 || item.index >= element.channels)
        return Give::ended;
    sub.channelId = static_cast<int>(item.index);
    return sub.give(channel_names.data(), &element.source->channel[item.index], share);
}

struct SubModuleFields : Description {
    using T = SubModule;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, 15).complain("get channelId failed!\n"),
        view("abilityValue", AT(tokens))
            .upto(list_size - 1)
            .complain("get cString failed!\n")
            .accepts("names that end in _ro or _rw; ledState, ispBasic and ispAdvance are looked for")
            .sample("ledState_rw"),
    };
    static constexpr Traits traits = HERE;
};
constexpr auto sub_module = describe<SubModuleFields>();

struct DeviceSubModuleFields : Description {
    using T = SubModule;
    static constexpr Field fields[] = {
        view("abilityValue", AT(tokens)).write_only().accepts("the module's names, each with _ro or _rw")};
};
constexpr auto device_sub_module = describe<DeviceSubModuleFields>();

// What the module has without a channel, then channel by channel. Of what is read, each child is a "subModule",
// whatever its name.
struct ModuleFields : Description {
    using T = ModuleElement;
    static constexpr Field fields[] = {
        wire_part<T, nullptr, give_device>("subModule", device_sub_module),
        wires_part<T, take_sub_module, give_channel>("subModule", sub_module),
    };
    static constexpr Traits traits = Traits{}.any_name();
};
constexpr auto module_element = describe<ModuleFields>();

// Its sub-modules have been stored as they were read.
int take_module(Ability &, const ModuleElement &)
{
    return 0;
}

Give give_module(const Ability &ability, ModuleElement &element, const Item &item)
{
    element.source = &ability;
    element.module = modules;
    while (!same_text(element.module->name, item.key))
        ++element.module;
    element.channels = static_cast<unsigned>(std::clamp<int>(sc_get_channel_num(), 0, NET_SUPPORT_CHANNELS));
    return Give::written;
}

template <auto take = nullptr> constexpr Field module(const char *name, Member<Ability, int> section)
{
    return wire_part<Ability, take, give_module>(name, module_element).when(section);
}

// The payload's own rows, for the tools.
template <class Abilities> constexpr auto operations_of()
{
    std::array<Field, std::size(Abilities::list)> fields{};
    for (std::size_t i = 0; i < fields.size(); ++i)
        fields[i] = Abilities::list[i].operation;
    return fields;
}
template <class Abilities> struct OperationFields : Description {
    using T = typename Abilities::T;
    static constexpr auto fields = operations_of<Abilities>();
};
constexpr auto device_operations = describe<OperationFields<DeviceAbilities>>();
constexpr auto channel_operations = describe<OperationFields<ChannelAbilities>>();

struct AbilityLayout : Description {
    using T = Ability;
    static constexpr Field fields[] = {
        text("userName", AT(userName)),
        shown("section", AT(section)),
        group("device", AT(device), device_operations),
        list("channel", AT(channel), channel_operations),
    };
};
constexpr auto ability_layout = describe<AbilityLayout>();

// All modules are written, each if its section is asked for, but only "image" is read.
struct AbilityFields : Description {
    using T = Ability;
    static constexpr Field fields[] = {
        text("userName", AT(userName)).write_only(),
        module("system", AT(section[NET_ABILITY_SECTION_SYSTEM])),
        module("streaming", AT(section[NET_ABILITY_SECTION_STREAMING])),
        module("record", AT(section[NET_ABILITY_SECTION_RECORD])),
        module("network", AT(section[NET_ABILITY_SECTION_NETWORK])),
        module("PTZ", AT(section[NET_ABILITY_SECTION_PTZ])),
        module("IO", AT(section[NET_ABILITY_SECTION_IO])),
        module("alarm", AT(section[NET_ABILITY_SECTION_ALARM])),
        module<take_module>("image", AT(section[NET_ABILITY_SECTION_IMAGE])),
        module("video", AT(section[NET_ABILITY_SECTION_VIDEO])),
        module("audio", AT(section[NET_ABILITY_SECTION_AUDIO])),
        module("security", AT(section[NET_ABILITY_SECTION_SECURITY])),
        module("replay", AT(section[NET_ABILITY_SECTION_REPLAY])),
        module("disk", AT(section[NET_ABILITY_SECTION_DISK])),
    };
    static constexpr Traits traits = HERE.parser("net_ability_x2s")
                                         .writer("net_ability_s2x", "AbilityInfo")
                                         .entry(Line::null_error)
                                         .any_size_read()
                                         .layout(ability_layout)
                                         .title("abilities", "Which operations a user may perform, module by module.");
};
constexpr auto ability_message = describe<AbilityFields>();

constexpr bool rows_are_modules()
{
    for (std::size_t i = 0; i < std::size(modules); ++i)
        if (!same_text(AbilityFields::fields[i + 1].key, modules[i].name))
            return false;
    return std::size(AbilityFields::fields) == std::size(modules) + 1;
}
static_assert(rows_are_modules(), "give_module() finds every row's module");

// Heart beat --------------------------------------------------------------------------------------

struct HeartBeatFields : Description {
    using T = net_heart_beat_t;
    static constexpr Field fields[] = {
        integer("size", AT(size)).at_least(0),
        // The two lines differ by a blank.
        integer("sec", AT(sec))
            .at_least(0)
            .required()
            .quiet()
            .complain_plainly("Func(nets_param_heart_beat_x2s) Line(%2$d) %1$d\n"),
        integer("usec", AT(usec))
            .at_least(0)
            .required()
            .quiet()
            .complain_plainly("Func(nets_param_heart_beat_x2s) Line(%2$d) %1$d \n"),
    };
    static constexpr Traits traits = HERE.parser("nets_param_heart_beat_x2s")
                                         .failure(Line::plain)
                                         .missing("0 == fSec || 0 == fUsec\n")
                                         .any_size()
                                         .title("heart beat", "The peer is there; its size and its time.");
};
constexpr auto heart_beat_message = describe<HeartBeatFields>();

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
    if (ptzPreset == nullptr || !is_component(support, node, key))
        return -1;
    std::uint32_t seen;
    const int result = read_indexed(item_record, support->channel, NET_SUPPORT_CHANNELS, node, &seen);
    if ((seen >> item_record.table().index_of(*find_key(item_record, "ptzPreset")) & 1) != 0)
        *ptzPreset = 1;
    return result;
}

int get_iot_support_from_xmlnode(tag_net_support_v20_t *support, TiXmlNode *node)
{
    return read_component_logged(support != nullptr ? &support->IOTsupport : nullptr, node, nullptr, linkage_record);
}

int get_smartPlug_from_xmlnode(net_iot_linkage_support_t *support, TiXmlNode *node)
{
    return read_component_logged(support, node, nullptr, plug_record);
}

int get_alertorBell_from_xmlnode(net_iot_linkage_support_t *support, TiXmlNode *node)
{
    return read_component_logged(support, node, nullptr, bell_record);
}

int get_alertorLight_from_xmlnode(net_iot_linkage_support_t *support, TiXmlNode *node)
{
    return read_component_logged(support, node, nullptr, light_record);
}

int net_ability_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, ability_message);
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
        if (length != 0 && !(alike(*at, *name) && same_folded(at, name, length)))
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
    return parse_message(param, node, heart_beat_message);
}

MESSAGES(support, //
         MESSAGE("support", nets_param_support_init, net_support_x2s, net_support_s2x, support_message),
         MESSAGE("ability", nets_param_ability_init, net_ability_x2s, net_ability_s2x, ability_message),
         MESSAGE("heart-beat", net_param_heart_beat_init, nets_param_heart_beat_x2s, nullptr, heart_beat_message,
                 "HeartBeat"))
