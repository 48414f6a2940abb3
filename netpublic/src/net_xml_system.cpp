// Device system: device information, general settings with the clock, daylight saving, video standard,
// disks, configuration files, automatic reboot, factory restore, performance, versions and the local output.
#include "engine/describe.h"
#include "engine/records.h"
#include "engine/registry.h"
#include "values/tables.h"

#include <net_public.h>

namespace netpublic {
namespace {

constexpr Word norm_list[] = {{0, "PAL"}, {1, "NTSC"}};
constexpr auto norms = words<norm_list>();

// An unknown language leaves the member as it was. Unlike other words, a code beyond the last has a spelling and
// only a negative one has none.
template <class Record> constexpr Field language_word(Member<Record, int> member)
{
    return word("language", member, languages)
        .prefix()
        .upto(15)
        .kept()
        .fallback(language_english)
        .demands(member, When::nonnegative);
}

// Device information ------------------------------------------------------------------------------

// What is read and what is written differ, meant: a type that only one side knows becomes an ipc on the
// other.
constexpr Word device_type_list[] = {
    {1, "dvr"},
    {2, "ipc"},
    {3, "nvr"},
    {4, "wifi_ipc"},
    {5, "wifi_nvr"},
    {6, "nxp_ipc"},
    {7, "wifi_solo_ipc", Use::write},
    {8, "base", Use::write},
    {10, "smart_plug", Use::read},
    {11, "smart_bell", Use::read},
    {12, "light", Use::read},
    {13, "fisheye_ipc", Use::read},
    {14, "homehub", Use::write},
    {15, "repeater", Use::read},
};
constexpr auto device_types = words<device_type_list>();
constexpr int device_ipc = 2;

// A device with two channels is binocular until "binoType" tells otherwise.
int note_binocular(net_device_info_v20_t &info)
{
    if (info.channelNum == 2 && info.binoType == -1)
        info.binoType = 0;
    return 0;
}

bool has_picture(const net_device_info_v20_t &info)
{
    return info.resolution.width >= 1 && info.resolution.height >= 1;
}

struct DeviceInfoFields : Description {
    using T = net_device_info_v20_t;
    static constexpr Field fields[] = {
        preset(AT(binoType), -1),
        preset(AT(sleep), -1),
        counted_text("firmVersion", AT(firmVersion)),
        integer("IOInputPortNum", AT(ioInputPortNum)).at_least(0),
        integer("IOOutputPortNum", AT(ioOutputPortNum)).at_least(0),
        integer("diskNum", AT(diskNum)).at_least(0),
        word("type", AT(devType), device_types).upto(15).otherwise(device_ipc).fallback(device_ipc),
        text("detailType", AT(detailType)).read_only(),
        integer("channelNum", AT(channelNum)).at_least(0).then<note_binocular>(),
        integer("analogChnNum", AT(analogChnNum)).at_least(0),
        integer("audioNum", AT(audioNum)).at_least(0).quiet(),
        group("resolution", AT(resolution), named_resolution_record).when<has_picture>(),
        language_word(AT(language)),
        flag("sdCard", AT(sdCard)).quiet(),
        word("ptzMode", AT(ptzMode), ptz_modes).upto(15).kept().reported().fallback(0),
        counted_text("typeInfo", AT(typeInfo)),
        integer("softVer", AT(softVer)),
        integer("hardVer", AT(hardVer)).quiet(),
        integer("panelVer", AT(panelVer)),
        word("norm", AT(norm), norms).upto(15).kept().reported().fallback(0),
        word("osdFormat", AT(osdFormat), date_formats).prefix().upto(15),
        flag("B485", AT(b485)),
        integer("binoType", AT(binoType)).read_only(),
        text("bodyCode", AT(bodyCode)),
        integer("needRotate", AT(needRotate)).read_only(),
        real("doorbellCoverCrop", AT(doorbellCoverCrop)).read_only(),
        integer("sleep", AT(sleep)).read_only(),
        integer("deviceNum", AT(deviceNum)).write_only(),
        integer("adaptorDeviceNum", AT(adaptorDeviceNum)).write_only(),
        integer("IOTNum", AT(iotNum)).write_only(),
        integer("ipChannel", AT(ipChannel)).write_only(),
        text("secretCode", AT(secretCode)).write_only(),
        text("bootSecret", AT(secretCode)).write_only(), // the same secret once more, meant
        integer("hdChannel1", AT(hdChannel1)).write_only(),
        integer("hdChannel2", AT(hdChannel2)).write_only(),
        integer("hdChannel3", AT(hdChannel3)).write_only(),
        integer("hdChannel4", AT(hdChannel4)).write_only(),
        constant("userVer", 1),
        integer("bnasBind", AT(bnasBind)).write_only(),
        integer("authMode", AT(authMode)).write_only(),
    };
    static constexpr auto written = order(
        "firmVersion", "IOInputPortNum", "IOOutputPortNum", "diskNum", "type", "channelNum", "deviceNum",
        "adaptorDeviceNum", "IOTNum", "audioNum", "ipChannel", "analogChnNum", "resolution", "secretCode", "bootSecret",
        "language", "sdCard", "ptzMode", "typeInfo", "softVer", "hardVer", "panelVer", "hdChannel1", "hdChannel2",
        "hdChannel3", "hdChannel4", "norm", "osdFormat", "B485", "userVer", "bnasBind", "authMode", "bodyCode");
    static constexpr Traits traits =
        HERE.parser("net_xml_device_info_x2s")
            .writer("net_xml_device_info_s2x", "DeviceInfo")
            .failure(Line::plain)
            .write_failure_logged()
            .clears()
            .sets_inited()
            .title("device information", "What the device is, what it has and how it shows itself.");
};
constexpr auto device_info_message = describe<DeviceInfoFields>();

// General settings and clock ----------------------------------------------------------------------

int check_device_name(net_sys_general_v20_t &settings)
{
    return net_check_dev_name(settings.deviceName);
}

struct GeneralFields : Description {
    using T = net_sys_general_v20_t;
    static constexpr Field fields[] = {
        preset(AT(isDst), -1),
        preset(AT(year), 0),
        integer("timeZone", AT(timeZone)),
        word("osdFormat", AT(osdFormat), date_formats).prefix().upto(15),
        integer("year", AT(year)).at_least(0),
        integer("timeFormat", AT(timeFormat)).at_least(0),
        integer("month", AT(month)).in(1, 12),
        integer("day", AT(day)).in(1, 31), // in any month
        integer("hour", AT(hour)).in(0, 23),
        integer("minute", AT(minute)).in(0, 59),
        integer("second", AT(second)).in(0, 59),
        integer("deviceId", AT(deviceId)),
        language_word(AT(language)),
        text("deviceName", AT(deviceName))
            .then<check_device_name>()
            .accepts("printable ASCII without $ & * / : ; < > ? \\ ` |"),
        integer("loginLock", AT(loginLock)),
        integer("lockTime", AT(lockTime)),
        integer("allowedTimes", AT(allowedTimes)),
        integer("isDst", AT(isDst)),
    };
    static constexpr auto written =
        order("timeZone", "osdFormat", "year", "month", "day", "hour", "minute", "second", "deviceId", "timeFormat",
              "language", "deviceName", "loginLock", "lockTime", "allowedTimes", "isDst");
    static constexpr Traits traits =
        HERE.parser("nets_sys_general_x2s")
            .writer("net_sys_general_cfg_s2x", "SystemGeneral")
            .entry(Line::none)
            .write_entry(Line::none)
            .any_size_read()
            .title("general settings", "The clock, the formats of date and time, the language, the name of the device "
                                       "and the lock of its login.");
};
constexpr auto general_message = describe<GeneralFields>();

struct DstFields : Description {
    using T = net_dst_cfg_v20_t;
    static constexpr Field fields[] = {
        flag("enable", AT(enable)),
        integer("offset", AT(offset)),
        integer("startMonth", AT(startMonth)).in(1, 12),
        integer("startWeekIndex", AT(startWeekIndex)),
        word("startWeekday", AT(startWeekday), weekdays).prefix().upto(15),
        integer("startHour", AT(startHour)).in(0, 23),
        integer("startMinute", AT(startMinute)).in(0, 59),
        integer("startSecond", AT(startSecond)).in(0, 59),
        integer("endMonth", AT(endMonth)).in(1, 12),
        integer("endWeekIndex", AT(endWeekIndex)),
        word("endWeekday", AT(endWeekday), weekdays).prefix().upto(15),
        integer("endHour", AT(endHour)).in(0, 23),
        integer("endMinute", AT(endMinute)).in(0, 59),
        integer("endSecond", AT(endSecond)).in(0, 59),
        integer("version", AT(dstVersion)).write_only(), // a child beside the root's attribute of this name, meant
    };
    static constexpr Traits traits =
        HERE.parser("nets_param_dst_cfg_x2s")
            .writer("nets_dst_cfg_s2x", "Dst")
            .entry(Line::none)
            .any_size()
            .title("daylight saving time", "When daylight saving begins and ends, and by how much the clock moves.");
};
constexpr auto dst_message = describe<DstFields>();

struct NormFields : Description {
    using T = net_video_form_v20_t;
    static constexpr Field fields[] = {
        preset(AT(norm), 0),
        word("norm", AT(norm), norms).upto(15).fallback(0).required(),
    };
    static constexpr Traits traits = HERE.parser("nets_sys_videoform_x2s")
                                         .writer("net_sys_videoform_cfg_s2x", "Norm")
                                         .entry(Line::none)
                                         .write_entry(Line::none)
                                         .first_child_only()
                                         .others_fail()
                                         .any_size_read()
                                         .title("video standard", "PAL or NTSC.");
};
constexpr auto norm_message = describe<NormFields>();

// Disks -------------------------------------------------------------------------------------------

struct DiskFields : Description {
    using T = net_hdd_disk_v20_t;
    static constexpr Field fields[] = {
        integer("number", AT(number)),
        integer("capacity", AT(capacity)),
        integer("capacityM", AT(capacityM)),
        integer("format", AT(format)),
        integer("mount", AT(mount)),
        integer("remainSize", AT(remainSize)),
        integer("remainSizeM", AT(remainSizeM)),
        unsigned_longlong("capacityV2", AT(capacityV2)),
        unsigned_longlong("remainSizeV2", AT(remainSizeV2)),
    };
};
constexpr auto disk_record = describe<DiskFields>();

struct DisksFields : Description {
    using T = net_hdd_info_v20_t;
    static constexpr Field fields[] = {
        list("HddInfo", AT(disk), disk_record),
    };
    static constexpr Traits traits = HERE.parser("net_param_hdd_cfg_x2s")
                                         .entry(Line::none)
                                         .any_size()
                                         .title("disks", "The sizes and states of the disks, at most eight.");
};
constexpr auto disks_message = describe<DisksFields>();

// Which disk to initialise. One whose id cannot be read leaves its slot alone, and is counted all the same.
struct DiskSlotFields : Description {
    using T = int;
    static constexpr Field fields[] = {integer("initId", itself<T>("disk")).tolerant()};
    static constexpr Traits traits = Traits{}.first_child_only();
};
constexpr auto disk_slot = describe<DiskSlotFields>();

// Added to what the payload holds, which may be any number.
int count_disk(net_hdd_init_v20_t &disks)
{
    disks.count = static_cast<int>(static_cast<unsigned int>(disks.count) + 1);
    return 0;
}

struct DiskSlotsFields : Description {
    using T = net_hdd_init_v20_t;
    static constexpr Field fields[] = {
        list("HddInit", AT(disk), disk_slot).by_position().stop_when_full().then<count_disk>(),
    };
    static constexpr Field also_shown[] = {shown("count", AT(count))};
    static constexpr Traits traits =
        HERE.parser("nets_param_init_hdd_x2s")
            .entry(Line::none)
            .longer_names()
            .any_size()
            .title("disks to initialise", "Which disks are to be formatted, by their ids.");
};
constexpr auto disk_slots_message = describe<DiskSlotsFields>();

// Configuration files, reboot, restore ------------------------------------------------------------

struct ConfigFileFields : Description {
    using T = net_cfg_file_v20_t;
    static constexpr Field fields[] = {
        counted_text("fileName", AT(fileName)),
        unsigned_integer("fileSize", AT(fileSize)),
        unsigned_integer("curSize", AT(curSize)),
        flag("updateParameter", AT(updateParameter)),
        integer("usedForFactory", AT(usedForFactory)).read_only(),
    };
    static constexpr Traits traits =
        HERE.parser("nets_param_cfg_file_x2s")
            .writer("nets_log_s2x", "ConfigFileInfo")
            .entry(Line::none)
            .write_entry(Line::none)
            .any_size()
            .title("configuration file transfer", "A configuration file on its way, and how much of it has come.");
};
constexpr auto config_file_message = describe<ConfigFileFields>();

struct ConfigFileInfoFields : Description {
    using T = net_cfg_file_v20_t;
    static constexpr Field fields[] = {
        ConfigFileFields::fields[0], ConfigFileFields::fields[1],
        ConfigFileFields::fields[2], ConfigFileFields::fields[3],
        ConfigFileFields::fields[4], unsigned_longlong("channelBits", AT(channelBits)).read_only(),
    };
    static constexpr Traits traits = HERE.parser("net_cfg_file_info_x2s")
                                         .sets_inited()
                                         .title("configuration file and its channels",
                                                "A configuration file on its way, and the channels that it is for.");
};
constexpr auto config_file_info_message = describe<ConfigFileInfoFields>();

constexpr Word reboot_day_list[] = {
    {0, "everyday", Use::whole},
    {1, "Sunday"},
    {2, "Monday"},
    {3, "Tuesday"},
    {4, "Wednesday"},
    {5, "Thursday"},
    {6, "Friday"},
    {7, "Saturday"},
};
constexpr auto reboot_days = words<reboot_day_list>();

struct AutoRebootFields : Description {
    using T = net_auto_reboot_v20_t;
    static constexpr Field fields[] = {
        flag("enable", AT(enable)),
        word("weekDay", AT(weekDay), reboot_days).prefix().upto(15),
        integer("hour", AT(hour)).in(0, 23),
        integer("minute", AT(minute)).in(0, 59),
        integer("second", AT(second)).in(0, 59),
    };
    // Only the writer logs and compares the size.
    static constexpr Traits traits =
        HERE.parser("nets_auto_reboot_x2s")
            .writer("nets_auto_reboot_s2x", "AutoReboot")
            .entry(Line::none)
            .write_entry(Line::parser)
            .any_size_read()
            .title("automatic reboot", "The day and the time at which the device restarts by itself.");
};
constexpr auto auto_reboot_message = describe<AutoRebootFields>();

struct RestoreFields : Description {
    using T = net_restore_cfg_v20_t;
    static constexpr Field fields[] = {
        flag("all", AT(all)),         flag("display", AT(display)), flag("recording", AT(recording)),
        flag("network", AT(network)), flag("alarm", AT(alarm)),     flag("device", AT(device)),
        flag("system", AT(system)),   flag("wifi", AT(wifi)),       flag("IPC", AT(IPC)),
    };
    static constexpr Traits traits = HERE.parser("nets_param_restore_cfg_x2s")
                                         .entry(Line::none)
                                         .any_size()
                                         .title("factory restore", "Which settings go back to those of the factory.");
};
constexpr auto restore_message = describe<RestoreFields>();

// Performance and versions ------------------------------------------------------------------------

struct PerformanceFields : Description {
    using T = net_performance_v20_t;
    static constexpr Field fields[] = {
        integer("cpuUseRate", AT(cpuUseRate)),
        integer("codeRate", AT(codeRate)),
        integer("netDataRate", AT(netDataRate)),
    };
    static constexpr Traits traits = HERE.parser("net_param_performance_x2s")
                                         .writer("nets_performance_info_s2x", "PerformanceInfo")
                                         .entry(Line::none)
                                         .write_entry(Line::none)
                                         .any_size()
                                         .title("performance", "How busy the processor and the network are.");
};
constexpr auto performance_message = describe<PerformanceFields>();

struct VersionFields : Description {
    using T = net_version_v20_t;
    static constexpr Field fields[] = {
        counted_text("name", AT(name)),
        counted_text("type", AT(type)),
        counted_text("serialNumber", AT(serialNumber)),
        counted_text("buildDay", AT(buildDay)),
        counted_text("hardwareVersion", AT(hardwareVersion)),
        counted_text("cfgVersion", AT(cfgVersion)),
        counted_text("firmwareVersion", AT(firmwareVersion)),
        counted_text("detail", AT(detail)),
        counted_text("IEClient", AT(IEClient)),
        counted_text("cc3200Version", AT(cc3200Version)),
        counted_text("spVersion", AT(spVersion)),
        counted_text("pakSuffix", AT(pakSuffix)),
        counted_text("helpVersion", AT(helpVersion)),
        counted_text("aiVersion", AT(aiVersion)),
    };
    static constexpr Traits traits = HERE.parser("net_param_version_x2s")
                                         .entry(Line::none)
                                         .any_size()
                                         .title("versions", "The versions of firmware, hardware and their parts.");
};
constexpr auto version_message = describe<VersionFields>();

// Local output ------------------------------------------------------------------------------------

struct ResolutionListFields : Description {
    using T = net_resolution_table_v20_t;
    static constexpr Field fields[] = {
        preset(AT(count), 0),
        list("resolution", AT(list), resolution_record).counted_by(AT(count)).refuse_more(),
    };
};
constexpr auto resolution_list = describe<ResolutionListFields>();

struct ResolutionTableFields : Description {
    using T = net_resolution_table_v20_t;
    static constexpr Field fields[] = {
        group("currentResolution", AT(current), resolution_record),
        part("resolutionList", resolution_list),
    };
};
constexpr auto resolution_table = describe<ResolutionTableFields>();

template <class Record> struct LevelFields : Description {
    using T = Record;
    static constexpr Field fields[] = {
        integer("max", AT(max)).at_least(0),
        integer("min", AT(min)).at_least(0),
        integer("current", AT(current)).at_least(0),
    };
};
constexpr auto transparency_record = describe<LevelFields<net_ui_trans_v20_t>>();
constexpr auto mouse_record = describe<LevelFields<net_mouse_sense_v20_t>>();

struct DwellListFields : Description {
    using T = net_dwelltable_v20_t;
    static constexpr Field fields[] = {
        preset(AT(count), 0),
        int_items("dwell", AT(dwell)).counted_by(AT(count)).refuse_more(),
    };
};
constexpr auto dwell_list = describe<DwellListFields>();

struct DwellTableFields : Description {
    using T = net_dwelltable_v20_t;
    static constexpr Field fields[] = {
        integer("current", AT(current)).at_least(0),
        part("dwellList", dwell_list),
    };
};
constexpr auto dwell_table = describe<DwellTableFields>();

struct OutputFields : Description {
    using T = net_output_cfg_v20_t;
    static constexpr Field fields[] = {
        group("resolutionTable", AT(resolutionTable), resolution_table),
        group("transparency", AT(transparency), transparency_record),
        group("mousesense", AT(mousesense), mouse_record),
        group("dwellTable", AT(dwellTable), dwell_table),
        flag("mute", AT(mute)),
    };
    static constexpr Traits traits =
        HERE.parser("net_param_output_cfg_x2s")
            .title("local output", "Resolution, menus, mouse and dwell times of the monitor at the device.");
};
constexpr auto output_message = describe<OutputFields>();

} // namespace
} // namespace netpublic

using namespace netpublic;

int net_xml_device_info_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, device_info_message);
}

int net_xml_device_info_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, device_info_message);
}

int nets_sys_general_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, general_message);
}

int net_sys_general_cfg_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, general_message);
}

int nets_param_dst_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, dst_message);
}

// The parent need not be an element: it may be the document itself.
int nets_dst_cfg_s2x(net_param_t *param, TiXmlNode *parent)
{
    const bool complete = param != nullptr && parent != nullptr && param->data != nullptr;
    return complete ? append_root(dst_message, param->data, parent) : -1;
}

int nets_sys_videoform_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, norm_message);
}

int net_sys_videoform_cfg_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, norm_message);
}

int nets_param_init_hdd_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, disk_slots_message);
}

int net_param_hdd_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, disks_message);
}

int nets_param_cfg_file_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, config_file_message);
}

int net_cfg_file_info_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, config_file_info_message);
}

int nets_log_s2x(net_param_t *param, TiXmlElement *parent)
{
    if (param == nullptr || parent == nullptr) {
        log_error(NET_HERE, "pparam = %p, pxml_node = %p\n", static_cast<void *>(param), static_cast<void *>(parent));
        return -1;
    }
    if (param->data == nullptr) {
        log_error(NET_HERE, "NULL == p\n");
        return -1;
    }
    return write_message(param, parent, config_file_message);
}

int nets_auto_reboot_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, auto_reboot_message);
}

int nets_auto_reboot_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, auto_reboot_message);
}

int nets_param_restore_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, restore_message);
}

int net_param_performance_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, performance_message);
}

int nets_performance_info_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, performance_message);
}

int net_param_version_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, version_message);
}

int net_param_output_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, output_message);
}

#ifdef NETPUBLIC_DESCRIBED
namespace netpublic {

// The tools hand every writer an element; the list below finds this one in front of the exported one.
static int nets_dst_cfg_s2x(net_param_t *param, TiXmlElement *parent)
{
    return ::nets_dst_cfg_s2x(param, reinterpret_cast<TiXmlNode *>(parent));
}

} // namespace netpublic
#endif

MESSAGES(
    system, //
    MESSAGE("device-info", net_param_dev_info_init, net_xml_device_info_x2s, net_xml_device_info_s2x,
            device_info_message),
    MESSAGE("system-general", nets_param_sys_general_init, nets_sys_general_x2s, net_sys_general_cfg_s2x,
            general_message),
    MESSAGE("dst", nets_param_dst_cfg_init, nets_param_dst_cfg_x2s, nets_dst_cfg_s2x, dst_message),
    HOST_MESSAGE("norm", net_video_form_v20_t, nets_sys_videoform_x2s, net_sys_videoform_cfg_s2x, norm_message),
    MESSAGE("hdd-init", nets_param_init_hdd_init, nets_param_init_hdd_x2s, nullptr, disk_slots_message, "HddInitList"),
    MESSAGE("hdd-info", nets_param_hdd_cfg_init, net_param_hdd_cfg_x2s, nullptr, disks_message, "HddInfoList"),
    HOST_MESSAGE("config-file", net_cfg_file_v20_t, nets_param_cfg_file_x2s, nets_log_s2x, config_file_message),
    HOST_MESSAGE("config-file-info", net_cfg_file_v20_t, net_cfg_file_info_x2s, nullptr, config_file_info_message,
                 "ConfigFileInfo"),
    HOST_MESSAGE("auto-reboot", net_auto_reboot_v20_t, nets_auto_reboot_x2s, nets_auto_reboot_s2x, auto_reboot_message),
    HOST_MESSAGE("restore", net_restore_cfg_v20_t, nets_param_restore_cfg_x2s, nullptr, restore_message, "Restore"),
    MESSAGE("performance", nets_param_performance_init, net_param_performance_x2s, nets_performance_info_s2x,
            performance_message),
    MESSAGE("version", nets_param_version_init, net_param_version_x2s, nullptr, version_message, "VersionInfo"),
    HOST_MESSAGE("output", net_output_cfg_v20_t, net_param_output_cfg_x2s, nullptr, output_message, "Output"))
