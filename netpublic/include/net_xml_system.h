/**
 * @file net_xml_system.h
 * The device system: device information, general settings and clock, daylight saving, disks,
 * configuration files, automatic reboot, performance and versions, output settings, the support and
 * ability descriptions and the heart beat; and the payloads of the battery, sleep and maintenance
 * messages.
 *
 * Parsers read the children of the element that they are given, writers append their root element to
 * the parent. A failing parser keeps what it has stored so far; a failing writer leaves the parent as
 * it was.
 * What all message functions share stands in net_types.h.
 */
#ifndef NET_XML_SYSTEM_H
#define NET_XML_SYSTEM_H

#include "net_types.h"
#include "net_xml_stream.h"

class TiXmlElement;
class TiXmlNode;

/** @name Device information
 * @{ */

/** "DeviceInfo". */
struct net_device_info_v20_t {
    net_counted_text_t firmVersion;       /**< At most 255 characters. */
    int ioInputPortNum;                   /**< 0 and above. */
    int ioOutputPortNum;                  /**< 0 and above. */
    int diskNum;                          /**< 0 and above. */
    int devType;                          /**< Device type, see net_xml_device_info_s2x(). */
    char detailType[64];                  /**< Terminated; read only. */
    int analogChnNum;                     /**< 0 and above. */
    int channelNum;                       /**< 0 and above. */
    int iotNum;                           /**< Written only. */
    int reserved;                         /**< Not interpreted here. */
    int audioNum;                         /**< 0 and above. */
    int ipChannel;                        /**< Written only. */
    net_resolution_info_v20_t resolution; /**< Written when it is at least 1 x 1. */
    int language;                         /**< Code of get_language_string(). */
    int sdCard;                           /**< 0 or 1. */
    int ptzMode;                          /**< 0 none, 1 af, 2 ptz, 3 pt, 4 p. */
    net_counted_text_t typeInfo;          /**< At most 255 characters. */
    int softVer;                          /**< Any number. */
    int hardVer;                          /**< Any number. */
    int panelVer;                         /**< Any number. */
    int hdChannel1;                       /**< Written only, like the next three. */
    int hdChannel2;                       /**< Any number. */
    int hdChannel3;                       /**< Any number. */
    int hdChannel4;                       /**< Any number. */
    int norm;                             /**< 0 PAL, 1 NTSC. */
    int osdFormat;                        /**< Code of get_osd_format_string(). */
    int b485;                             /**< 0 or 1. */
    int reserved2[2];                     /**< Not interpreted here. */
    int bnasBind;                         /**< Written only. */
    int authMode;                         /**< Written only. */
    char secretCode[32];                  /**< Terminated; written only, as "secretCode" and as "bootSecret". */
    int binoType;                         /**< -1 when absent, but 0 with two channels; read only. */
    char bodyCode[128];                   /**< Terminated. */
    int needRotate;                       /**< Read only. */
    int deviceNum;                        /**< Written only. */
    int adaptorDeviceNum;                 /**< Written only. */
    float doorbellCoverCrop;              /**< Read only. */
    int sleep;                            /**< -1 when absent; read only. */
};
static_assert(sizeof(net_device_info_v20_t) == 1020, "net_device_info_v20_t");

/**
 * Parses a net_device_info_v20_t, cleared first; `inited` becomes 2. An unknown "ptzMode", "norm" or
 * "language" leaves its field, an unknown "osdFormat" fails. A refused child is reported whatever the log
 * switches say. @return 0 or -1
 */
NETPUBLIC_API int net_xml_device_info_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Writes "DeviceInfo". The device types 1 dvr, 2 ipc, 3 nvr, 4 wifi_ipc, 5 wifi_nvr, 6 nxp_ipc,
 * 7 wifi_solo_ipc, 8 base and 14 homehub have a spelling, all others are written as "ipc". The parser knows
 * 1 to 6, 10 smart_plug, 11 smart_bell, 12 light, 13 fisheye_ipc and 15 repeater, and 2 for everything else.
 * @return 0, or -1, as for a negative language or an unknown date format
 */
NETPUBLIC_API int net_xml_device_info_s2x(net_param_t *param, TiXmlElement *parent);

/** @} */
/** @name General settings and clock
 * @{ */

/** "SystemGeneral". */
struct net_sys_general_v20_t {
    int timeZone;        /**< Any number. */
    int osdFormat;       /**< Code of get_osd_format_string(). */
    int timeFormat;      /**< 0 and above. */
    int year;            /**< 0 and above; 0 when absent. */
    int month;           /**< 1 to 12. */
    int day;             /**< 1 to 31. */
    int hour;            /**< 0 to 23. */
    int minute;          /**< 0 to 59. */
    int second;          /**< 0 to 59. */
    int deviceId;        /**< Any number. */
    int language;        /**< Code of get_language_string(). */
    char deviceName[32]; /**< Terminated; passes net_check_dev_name(). */
    int loginLock;       /**< Any number. */
    int lockTime;        /**< Any number. */
    int allowedTimes;    /**< Any number. */
    int isDst;           /**< -1 when absent. */
};

/** "Dst", daylight saving. The initialiser leaves the payload as it was allocated. */
struct net_dst_cfg_v20_t {
    int enable;         /**< 0 or 1. */
    int offset;         /**< Any number. */
    int reserved;       /**< Not interpreted here. */
    int startMonth;     /**< 1 to 12. */
    int startWeekIndex; /**< Any number. */
    int startWeekday;   /**< 0 Sunday to 6. */
    int startHour;      /**< 0 to 23. */
    int startMinute;    /**< 0 to 59. */
    int startSecond;    /**< 0 to 59. */
    int endMonth;       /**< 1 to 12. */
    int endWeekIndex;   /**< Any number. */
    int endWeekday;     /**< 0 Sunday to 6. */
    int endHour;        /**< 0 to 23. */
    int endMinute;      /**< 0 to 59. */
    int endSecond;      /**< 0 to 59. */
    int dstVersion;     /**< Written only, as a child "version". */
};

/** "Norm", the video standard. The host provides this payload. */
struct net_video_form_v20_t {
    int norm; /**< 0 PAL, 1 NTSC. */
};

static_assert(sizeof(net_sys_general_v20_t) == 92, "net_sys_general_v20_t");
static_assert(sizeof(net_dst_cfg_v20_t) == 64, "net_dst_cfg_v20_t");
static_assert(sizeof(net_video_form_v20_t) == 4, "net_video_form_v20_t");

/**
 * Parses a net_sys_general_v20_t of any `dataSize`; only `isDst` and `year` are preset. Nothing is logged.
 * @return 0 or -1
 */
NETPUBLIC_API int nets_sys_general_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "SystemGeneral". A negative language or an unknown date format fails. @return 0 or -1 */
NETPUBLIC_API int net_sys_general_cfg_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses a net_dst_cfg_v20_t of any `dataSize`; what the body does not name stays. @return 0 or -1 */
NETPUBLIC_API int nets_param_dst_cfg_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Writes "Dst" from a payload of any `dataSize`; unlike other writers it takes any node, a document too, as parent.
 * @return 0 or -1
 */
NETPUBLIC_API int nets_dst_cfg_s2x(net_param_t *param, TiXmlNode *parent);
/**
 * Parses the first child, "norm", into a net_video_form_v20_t of any `dataSize`. Without such a child or with
 * an unknown word it fails and the norm is 0. @return 0 or -1
 */
NETPUBLIC_API int nets_sys_videoform_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "Norm"; all codes but 1 are PAL. @return 0 or -1 */
NETPUBLIC_API int net_sys_videoform_cfg_s2x(net_param_t *param, TiXmlElement *parent);

/** @} */
/** @name Disks
 * @{ */

/** Which disks to initialise. */
struct net_hdd_init_v20_t {
    int count;   /**< Each "HddInit" among the first 8 children adds 1; the parser does not start from 0. */
    int disk[8]; /**< Disk ids by the children's positions: other children leave their slots alone. */
};

/** One disk. */
struct net_hdd_disk_v20_t {
    int number; /**< -1 after initialisation. */
    /** @{ */
    /** As the device counts them; any number. */
    int capacity;
    int capacityM;
    int format;
    int mount;
    int remainSize;
    int remainSizeM;
    unsigned long long capacityV2;
    unsigned long long remainSizeV2;
    /** @} */
    int reserved[2]; /**< Not interpreted here. */
};

/** The disks of the device. */
struct net_hdd_info_v20_t {
    net_hdd_disk_v20_t disk[8]; /**< Further ones are ignored. */
};

static_assert(sizeof(net_hdd_init_v20_t) == 36, "net_hdd_init_v20_t");
static_assert(sizeof(net_hdd_disk_v20_t) == 56, "net_hdd_disk_v20_t");
static_assert(sizeof(net_hdd_info_v20_t) == 448, "net_hdd_info_v20_t");

/**
 * Parses "HddInit" children into a net_hdd_init_v20_t; ids that cannot be read are ignored.
 * @return 0, or -1 for a null argument or payload
 */
NETPUBLIC_API int nets_param_init_hdd_x2s(net_param_t *param, TiXmlNode *node);
/** Parses "HddInfo" children into a net_hdd_info_v20_t. @return 0 or -1 */
NETPUBLIC_API int net_param_hdd_cfg_x2s(net_param_t *param, TiXmlNode *node);

/** @} */
/** @name Configuration files, reboot and restore
 * The host provides these payloads.
 * @{ */

/** A configuration file on its way. */
struct net_cfg_file_v20_t {
    unsigned long long channelBits; /**< One bit per channel; read by net_cfg_file_info_x2s() only. */
    net_counted_text_t fileName;    /**< Counted text, at most 255 characters. */
    unsigned int fileSize;          /**< Bytes. */
    unsigned int curSize;           /**< Bytes. */
    int updateParameter;            /**< 0 or 1. */
    int usedForFactory;             /**< Read only. */
};

/** "AutoReboot". */
struct net_auto_reboot_v20_t {
    int enable;  /**< 0 or 1. */
    int weekDay; /**< 0 every day, 1 Sunday to 7 Saturday. */
    int hour;    /**< 0 to 23. */
    int minute;  /**< 0 to 59. */
    int second;  /**< 0 to 59. */
};

/** Which settings go back to the factory's; each 0 or 1. */
struct net_restore_cfg_v20_t {
    /** @{ */
    /** 0 or 1. */
    int all;
    int display;
    int recording;
    int network;
    int alarm;
    int device;
    int system;
    int wifi;
    int IPC;
    /** @} */
};

static_assert(sizeof(net_cfg_file_v20_t) == 288, "net_cfg_file_v20_t");
static_assert(sizeof(net_auto_reboot_v20_t) == 20, "net_auto_reboot_v20_t");
static_assert(sizeof(net_restore_cfg_v20_t) == 36, "net_restore_cfg_v20_t");

/** Parses a net_cfg_file_v20_t of any `dataSize`, without "channelBits". @return 0 or -1 */
NETPUBLIC_API int nets_param_cfg_file_x2s(net_param_t *param, TiXmlNode *node);
/** Parses a net_cfg_file_v20_t; `inited` becomes 2. @return 0 or -1 */
NETPUBLIC_API int net_cfg_file_info_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "ConfigFileInfo" from a net_cfg_file_v20_t of any `dataSize`, without `channelBits`. @return 0 or -1 */
NETPUBLIC_API int nets_log_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses a net_auto_reboot_v20_t of any `dataSize`. @return 0 or -1 */
NETPUBLIC_API int nets_auto_reboot_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "AutoReboot". A `weekDay` outside 0 to 7 fails. @return 0 or -1 */
NETPUBLIC_API int nets_auto_reboot_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses a net_restore_cfg_v20_t; there is no writer. @return 0 or -1 */
NETPUBLIC_API int nets_param_restore_cfg_x2s(net_param_t *param, TiXmlNode *node);

/** @} */
/** @name Performance, versions and output
 * @{ */

/** "PerformanceInfo". */
struct net_performance_v20_t {
    int cpuUseRate;  /**< Any number. */
    int codeRate;    /**< Any number. */
    int netDataRate; /**< Any number. */
};

/** The versions of a device. */
struct net_version_v20_t {
    /** @{ */
    /** Counted text, at most 255 characters. */
    net_counted_text_t name;
    net_counted_text_t type;
    net_counted_text_t serialNumber;
    net_counted_text_t buildDay;
    net_counted_text_t hardwareVersion;
    net_counted_text_t cfgVersion;
    net_counted_text_t firmwareVersion;
    net_counted_text_t detail;
    net_counted_text_t IEClient;
    net_counted_text_t cc3200Version;
    net_counted_text_t spVersion;
    net_counted_text_t helpVersion;
    net_counted_text_t pakSuffix;
    net_counted_text_t aiVersion;
    /** @} */
};

/** The versions of the device on one channel. */
struct net_chn_version_v20_t {
    int channelId;             /**< The request's channel. */
    net_version_v20_t version; /**< The versions. */
};

/** The resolutions of the local output. */
struct net_resolution_table_v20_t {
    int count;                          /**< Listed resolutions, 0 to 32. */
    net_resolution_info_v20_t current;  /**< The one in use. */
    net_resolution_info_v20_t list[32]; /**< Those offered; more are refused. */
};

/** Transparency of the local menus; 0 and above. */
struct net_ui_trans_v20_t {
    int max;     /**< Largest value. */
    int min;     /**< Smallest value. */
    int current; /**< Value in use. */
};

/** Sensitivity of the mouse; 0 and above. */
struct net_mouse_sense_v20_t {
    int max;     /**< Largest value. */
    int min;     /**< Smallest value. */
    int current; /**< Value in use. */
};

/** Dwell times of the local output. */
struct net_dwelltable_v20_t {
    int count;     /**< Listed times, 0 to 16. */
    int current;   /**< 0 and above. */
    int dwell[16]; /**< Any numbers; more than 16 are refused. */
};

/** The local output. The host provides this payload. */
struct net_output_cfg_v20_t {
    net_resolution_table_v20_t resolutionTable; /**< Resolutions. */
    net_ui_trans_v20_t transparency;            /**< Of the menus. */
    net_mouse_sense_v20_t mousesense;           /**< Of the mouse. */
    net_dwelltable_v20_t dwellTable;            /**< Dwell times. */
    int mute;                                   /**< 0 or 1. */
};

static_assert(sizeof(net_performance_v20_t) == 12, "net_performance_v20_t");
static_assert(sizeof(net_version_v20_t) == 3696, "net_version_v20_t");
static_assert(sizeof(net_chn_version_v20_t) == 3700, "net_chn_version_v20_t");
static_assert(sizeof(net_output_cfg_v20_t) == 4592, "net_output_cfg_v20_t");

/** Parses a net_performance_v20_t. @return 0 or -1 */
NETPUBLIC_API int net_param_performance_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "PerformanceInfo". @return 0 or -1 */
NETPUBLIC_API int nets_performance_info_s2x(net_param_t *param, TiXmlElement *parent);
/** Parses a net_version_v20_t; there is no writer. @return 0 or -1 */
NETPUBLIC_API int net_param_version_x2s(net_param_t *param, TiXmlNode *node);
/** Parses a net_output_cfg_v20_t; there is no writer. Lists that are too long fail. @return 0 or -1 */
NETPUBLIC_API int net_param_output_cfg_x2s(net_param_t *param, TiXmlNode *node);

/** @} */
/** @name Support
 * Which features a device and each of its channels support: 0 absent, 1 present, or a version.
 * @{ */

/** Channel records of a support payload, and channels of an ability payload. */
enum {
    NET_SUPPORT_CHANNELS = 64,
};

/** Features of one channel; an "item". */
struct net_chn_support_v20_t {
    int chnID;     /**< Index of the channel; -1 after initialisation. */
    int reboot;    /**< 0 absent, 1 present, or the version of the feature. */
    int pushAlarm; /**< 0 absent, 1 present, or the version of the feature. */
    int ftp;       /**< 0 absent, 1 present, or the version of the feature. */
    int audioTalk; /**< Written as "ipcAudioTalk". */
    /** @{ */
    /** 0 absent, 1 present, or the version of the feature. */
    int wifiTest;
    int rfVersion;
    int ptzType;
    int rfCfg;
    int newRfCfg;
    int noAudio;
    int emailVersion;
    int aitype;
    int aiAnimalType;
    int timelapse;
    int videoClip;
    int replayVersion;
    int osdCfg;
    /** @} */
    int battery;     /**< Also decides whether `recordCfg` is written. */
    int batteryMode; /**< 0 absent, 1 present, or the version of the feature. */
    int newIspCfg;   /**< Mask of image features; the parser presets the low 13 bits for channel 0. */
    /** @{ */
    /** 0 absent, 1 present, or the version of the feature. */
    int motion;
    int dynamicReso;
    int audioVersion;
    int ledCtrl;
    int ptzPreset;
    int ptzPatrol;
    /** @} */
    int ptzTattern; /**< Spelled so, in the protocol too. */
    /** @{ */
    /** 0 absent, 1 present, or the version of the feature. */
    int ptzControl;
    int autoPt;
    int snap;
    int encCtrl;
    int zfBacklash;
    /** @} */
    int channelType; /**< 1 plug, 2 usb, 3 KT3, 4 Doorbell, 5 Light, 6 R58, 7 fisheye_ipc, 8 repeater, else ipc. */
    /** @{ */
    /** 0 absent, 1 present, or the version of the feature. */
    int report;
    int largeBattery;
    int fishEye;
    int binoCfg;
    int lightType;
    int wifiVersion;
    int networkVersion;
    int recordCfg;
    int doorbellVersion;
    int snaptlpsVersion;
    int aiUpdateAbility;
    int smartAI;
    int remoteAbility;
    int eventTypeVersion;
    int compatibleAbility;
    int thumbnail;
    /** @} */
};

/** Features of linked devices, as bits. */
struct net_iot_linkage_support_t {
    /**
     * Bell: 1 startStop, 2 type, 4 duration, 8 repeatCount, 16 volume, 32 audioID. Light: 64 openClose,
     * 128 type, 256 flashfreq, 512 duration, 1024 brightness.
     */
    unsigned int alertor;
    unsigned int smartPlug; /**< 1 openClose, 2 duration. */
};

/** "Support". */
struct tag_net_support_v20_t {
    int count;           /**< Channel records that are written, 0 to 64; set by the host. */
    int chnType;         /**< The request's channel type. */
    int IOInputPortNum;  /**< 0 and above. */
    int IOOutputPortNum; /**< 0 and above. */
    int diskNum;         /**< 0 and above. */
    int channelNum;      /**< 0 and above. */
    int IOTNum;          /**< 0 absent, 1 present, or the version of the feature. */
    int audioNum;        /**< 0 and above. */
    int reboot;          /**< 0 absent, 1 present, or the version of the feature. */
    int ptzMode;         /**< 0 none, 1 af, 2 ptz, 3 pt, 4 p. */
    /** @{ */
    /** 0 absent, 1 present, or the version of the feature. */
    int ptzCfg;
    int B485;
    int autoUpdate;
    int pushAlarm;
    int ftp;
    int ftpTest;
    int email;
    int wifi;
    /** @} */
    int record; /**< Written as "newRecordType". */
    /** @{ */
    /** 0 absent, 1 present, or the version of the feature. */
    int wifiTest;
    int rtsp;
    int onvif;
    int rfVersion;
    int rtmp;
    int noExternStream;
    int timeFormat;
    int ddnsVersion;
    int emailVersion;
    int buzzerVersion;
    int pushVersion;
    int nasVersion;
    int timelapse;
    int pushType;
    /** @} */
    int cloudVersion;      /**< Bit 3 also stands for the smart-home "version". */
    int thirdCloudVersion; /**< 0 absent, 1 present, or the version of the feature. */
    int replayVersion;     /**< 0 absent, 1 present, or the version of the feature. */
    int batteryMode;       /**< Read only; each channel's own is written. */
    /** @{ */
    /** 0 absent, 1 present, or the version of the feature. */
    unsigned int googleHomeVer;
    unsigned int amazonAlexaVer;
    int ledCtrl;
    int ExportImport;
    int videoStandard;
    int disk;
    int pppoe;
    int ddnsCfg;
    int SupportUpgrade;
    int storagemode;
    int upgrade;
    int scheduleVersion;
    int sambaVer;
    int chVerInfo;
    int heightDiffAdjust;
    int networkDiagnosis;
    int remoteUpgrade;
    int IOInputNum;
    int IOOutputNum;
    int autoTest;
    int netPort;
    int switchCtrl;
    int largeBattery;
    int loginLocked;
    int wifiVersion;
    int previewVersion;
    int user;
    int logVersion;
    int topologyVersion;
    int recordCfg;
    int netSecurity;
    int doorbellVersion;
    int batteryVersion;
    int videoInspection;
    int snaptlpsEnableCfg;
    int sceneModeCfg;
    int linkages;
    int replayIpcVersion;
    int IOTLink;
    int eventLogVersion;
    /** @} */
    net_chn_support_v20_t channel[NET_SUPPORT_CHANNELS]; /**< By channel index. */
    net_iot_linkage_support_t IOTsupport;                /**< What linked devices can do. */
    int reserved[4458];                                  /**< Not interpreted here. */
};

static_assert(sizeof(net_chn_support_v20_t) == 200, "net_chn_support_v20_t");
static_assert(sizeof(tag_net_support_v20_t) == 30948, "tag_net_support_v20_t");

/** Parses a tag_net_support_v20_t of any `dataSize`. @return 0 or -1 */
NETPUBLIC_API int net_support_x2s(net_param_t *param, TiXmlNode *node);
/** Writes "Support" with the first `count` channels. @return 0 or -1 */
NETPUBLIC_API int net_support_s2x(net_param_t *param, TiXmlElement *parent);
/**
 * Reads one "item" into the record of the channel that its "chnID", which comes first, names.
 * @param support the payload
 * @param node the item
 * @param key checked against the node's name when not null
 * @param ptzPreset set to 1 when the item carries a "ptzPreset", also one that is refused; else left alone
 * @return 0 or -1
 */
NETPUBLIC_API int get_item_from_xmlnode(tag_net_support_v20_t *support, TiXmlNode *node, char *key, int *ptzPreset);
/** Reads "IOTsupport"; bits are only added. @return 0 or -1 */
NETPUBLIC_API int get_iot_support_from_xmlnode(tag_net_support_v20_t *support, TiXmlNode *node);
/** Reads "smartPlug"; bits are only added. @return 0 or -1 */
NETPUBLIC_API int get_smartPlug_from_xmlnode(net_iot_linkage_support_t *support, TiXmlNode *node);
/** Reads "alertorBell"; bits are only added. @return 0 or -1 */
NETPUBLIC_API int get_alertorBell_from_xmlnode(net_iot_linkage_support_t *support, TiXmlNode *node);
/** Reads "alertorLight"; bits are only added. @return 0 or -1 */
NETPUBLIC_API int get_alertorLight_from_xmlnode(net_iot_linkage_support_t *support, TiXmlNode *node);

/** @} */
/** @name Abilities
 * Which operations a user may perform, per module.
 * @{ */

/** An operation on an ability. */
enum NET_ABILITY_OPERATION_V20_E : int {
    NET_ABILITY_OPERATION_NONE = 0,
    NET_ABILITY_OPERATION_RO = 1,
    NET_ABILITY_OPERATION_RW = 2,
    NET_ABILITY_OPERATION_BUTT = 3, /**< Never a valid value. */
};

/** The sections of an ability request, in the order of the payload's flags. */
enum NET_ABILITY_SECTION_E {
    NET_ABILITY_SECTION_SYSTEM = 0,
    NET_ABILITY_SECTION_STREAMING = 1,
    NET_ABILITY_SECTION_RECORD = 2,
    NET_ABILITY_SECTION_NETWORK = 3,
    NET_ABILITY_SECTION_PTZ = 4,
    NET_ABILITY_SECTION_IO = 5,
    NET_ABILITY_SECTION_ALARM = 6,
    NET_ABILITY_SECTION_IMAGE = 7,
    NET_ABILITY_SECTION_VIDEO = 8,
    NET_ABILITY_SECTION_AUDIO = 9,
    NET_ABILITY_SECTION_SECURITY = 10,
    NET_ABILITY_SECTION_REPLAY = 11,
    NET_ABILITY_SECTION_DISK = 12,
    NET_ABILITY_SECTIONS = 13,
};

/** The abilities of the device as a whole, module by module. Members whose names would clash say their module. */
struct net_ability_device_t {
    NET_ABILITY_OPERATION_V20_E general; /**< The first of "system". */
    /** @{ */
    /** What the user may do. */
    NET_ABILITY_OPERATION_V20_E norm;
    NET_ABILITY_OPERATION_V20_E version;
    NET_ABILITY_OPERATION_V20_E channelVersion;
    NET_ABILITY_OPERATION_V20_E uid;
    NET_ABILITY_OPERATION_V20_E autoReboot;
    NET_ABILITY_OPERATION_V20_E restore;
    NET_ABILITY_OPERATION_V20_E reboot;
    NET_ABILITY_OPERATION_V20_E shutdown;
    NET_ABILITY_OPERATION_V20_E dst;
    NET_ABILITY_OPERATION_V20_E log;
    NET_ABILITY_OPERATION_V20_E output;
    NET_ABILITY_OPERATION_V20_E performance;
    NET_ABILITY_OPERATION_V20_E upgrade;
    /** @} */
    NET_ABILITY_OPERATION_V20_E systemExport; /**< "export" */
    NET_ABILITY_OPERATION_V20_E systemImport; /**< "import" */
    NET_ABILITY_OPERATION_V20_E bootPwd;      /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E polling;      /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E port;         /**< The first of "network". */
    /** @{ */
    /** What the user may do. */
    NET_ABILITY_OPERATION_V20_E dns;
    NET_ABILITY_OPERATION_V20_E email;
    NET_ABILITY_OPERATION_V20_E ftp;
    NET_ABILITY_OPERATION_V20_E ftpSchedule;
    NET_ABILITY_OPERATION_V20_E ipFilter;
    /** @} */
    NET_ABILITY_OPERATION_V20_E network3g; /**< "3g" */
    /** @{ */
    /** What the user may do. */
    NET_ABILITY_OPERATION_V20_E localLink;
    NET_ABILITY_OPERATION_V20_E pppoe;
    NET_ABILITY_OPERATION_V20_E upnp;
    NET_ABILITY_OPERATION_V20_E wifi;
    NET_ABILITY_OPERATION_V20_E ntp;
    NET_ABILITY_OPERATION_V20_E netStatus;
    NET_ABILITY_OPERATION_V20_E push;
    NET_ABILITY_OPERATION_V20_E ptop;
    NET_ABILITY_OPERATION_V20_E autontp;
    /** @} */
    NET_ABILITY_OPERATION_V20_E control; /**< The first of "PTZ". */
    /** @{ */
    /** What the user may do. */
    NET_ABILITY_OPERATION_V20_E preset;
    NET_ABILITY_OPERATION_V20_E cruise;
    NET_ABILITY_OPERATION_V20_E track;
    NET_ABILITY_OPERATION_V20_E decoder;
    NET_ABILITY_OPERATION_V20_E ptzInfo;
    /** @} */
    NET_ABILITY_OPERATION_V20_E manualAlarm; /**< The first of "IO". */
    NET_ABILITY_OPERATION_V20_E ioAlarmIn;   /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E ioAlarmOut;  /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E hddFull;     /**< The first of "alarm"; the rest of it is each channel's. */
    /** @{ */
    /** What the user may do. */
    NET_ABILITY_OPERATION_V20_E hddError;
    NET_ABILITY_OPERATION_V20_E disconnect;
    NET_ABILITY_OPERATION_V20_E ipConflict;
    NET_ABILITY_OPERATION_V20_E rfAlarm;
    /** @} */
    NET_ABILITY_OPERATION_V20_E talk;            /**< "audio" */
    NET_ABILITY_OPERATION_V20_E user;            /**< The first of "security". */
    NET_ABILITY_OPERATION_V20_E userOnline;      /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E securityBootPwd; /**< "bootPwd" */
    NET_ABILITY_OPERATION_V20_E format;          /**< The first of "disk". */
    NET_ABILITY_OPERATION_V20_E hddCfg;          /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E hddInit;         /**< What the user may do. */
};

/** The abilities on one channel, module by module. */
struct net_ability_channel_t {
    NET_ABILITY_OPERATION_V20_E preview; /**< The first of "streaming". */
    /** @{ */
    /** What the user may do. */
    NET_ABILITY_OPERATION_V20_E compress;
    NET_ABILITY_OPERATION_V20_E snap;
    NET_ABILITY_OPERATION_V20_E rtsp;
    NET_ABILITY_OPERATION_V20_E streamTable;
    /** @} */
    NET_ABILITY_OPERATION_V20_E download; /**< The first of "record". */
    /** @{ */
    /** What the user may do. */
    NET_ABILITY_OPERATION_V20_E fileFind;
    NET_ABILITY_OPERATION_V20_E manualRecord;
    NET_ABILITY_OPERATION_V20_E recordCfg;
    NET_ABILITY_OPERATION_V20_E recordSchedule;
    NET_ABILITY_OPERATION_V20_E subStreamRecord;
    /** @} */
    NET_ABILITY_OPERATION_V20_E motion;     /**< The first of "alarm" with a channel. */
    NET_ABILITY_OPERATION_V20_E videoLost;  /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E hide;       /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E smart;      /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E ispBasic;   /**< The first of "image". */
    NET_ABILITY_OPERATION_V20_E ispAdvance; /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E ledState;   /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E osdName;    /**< The first of "video". */
    NET_ABILITY_OPERATION_V20_E osdTime;    /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E shelter;    /**< What the user may do. */
    NET_ABILITY_OPERATION_V20_E replay;     /**< The first of "replay". */
    NET_ABILITY_OPERATION_V20_E seek;       /**< What the user may do. */
};

/** "AbilityInfo". */
struct net_ability_v20_t {
    char userName[32];                 /**< Terminated. */
    int section[NET_ABILITY_SECTIONS]; /**< 1 for each NET_ABILITY_SECTION_E that the request's token names. */
    net_ability_device_t device;       /**< Abilities without a channel. */
    net_ability_channel_t channel[NET_SUPPORT_CHANNELS]; /**< Abilities by channel. */
};

static_assert(sizeof(net_ability_device_t) == 55 * 4, "net_ability_device_t");
static_assert(sizeof(net_ability_channel_t) == 23 * 4, "net_ability_channel_t");
static_assert(sizeof(net_ability_v20_t) == 6192, "net_ability_v20_t");

/** Parses the "image" abilities of channels 0 to 15 into a net_ability_v20_t; all others are skipped. @return 0 or -1
 */
NETPUBLIC_API int net_ability_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Writes "AbilityInfo" with the modules whose section flag is set, per-channel ones for the host's number of
 * channels. @return 0 or -1
 */
NETPUBLIC_API int net_ability_s2x(net_param_t *param, TiXmlElement *parent);
/**
 * Appends one token, the name with "_ro" or "_rw", to a list.
 * @param dst, size the list, a terminated text, and its buffer's size in bytes; size - 1 characters are kept
 * @param name of the ability
 * @param op no token for NET_ABILITY_OPERATION_NONE; NET_ABILITY_OPERATION_BUTT fails
 * @param count 0 before the first token, which replaces the list; 1 from then on
 * @return 0 or -1
 */
NETPUBLIC_API int make_enum_to_string(char *dst, int size, char const *name, NET_ABILITY_OPERATION_V20_E op,
                                      int *count);
/** Finds an ability's operation in a list; a name that another token ends with matches too. @return 0 or -1 */
NETPUBLIC_API int make_string_to_enum(char *list, char const *name, NET_ABILITY_OPERATION_V20_E &op);

/** @} */
/** @name Heart beat
 * @{ */

/** A heart beat; all 0 and above. */
struct net_heart_beat_t {
    int size; /**< Any number. */
    int sec;  /**< Any number. */
    int usec; /**< Any number. */
};
static_assert(sizeof(net_heart_beat_t) == 12, "net_heart_beat_t");

/** Parses a net_heart_beat_t; "sec" and "usec" are required. @return 0 or -1 */
NETPUBLIC_API int nets_param_heart_beat_x2s(net_param_t *param, TiXmlNode *node);

/** @} */
/** @name Batteries, sleep, maintenance and pairing
 * Payloads that the library allocates for the host and does not read or write.
 * @{ */

/** The battery of one channel. */
struct net_battery_t {
    int channelId;   /**< The request's channel. */
    int reserved[9]; /**< Not interpreted here. */
};

/** The batteries of all channels. */
struct net_battery_list_t {
    int reserved[321]; /**< Not interpreted here. */
};

/** The sleep states of the channels. */
struct net_sleep_state_t {
    int reserved[13]; /**< Not interpreted here. */
};

/** The device's own sleep state. */
struct net_sleep_status_t {
    int reserved[1]; /**< Not interpreted here. */
};

/** An aging test. */
struct net_aging_test_t {
    int reserved[35]; /**< Not interpreted here. */
};

/** A doorbell test. */
struct net_doorbell_test_t {
    int reserved[4]; /**< Not interpreted here. */
};

/** A device on a channel. */
struct net_dev_manage_t {
    int channelId;      /**< The request's channel. */
    int chnType;        /**< The request's channel type. */
    int reserved[1010]; /**< Not interpreted here. */
};

/** A wake-up of the home hub; a byte layout. */
struct net_homebase_wakeup_task_t {
    unsigned char reserved[169]; /**< Not interpreted here. */
};

/** The pairing of a radio device. */
struct net_fsk_rf_pair_t {
    int reserved[21]; /**< Not interpreted here. */
};

/** An export of inspection videos. */
struct net_export_video_inspection_t {
    int reserved[270]; /**< Not interpreted here. */
};

/** A changed configuration. */
struct net_cfg_modify_t {
    int reserved[2]; /**< Not interpreted here. */
};

static_assert(sizeof(net_battery_t) == 40, "net_battery_t");
static_assert(sizeof(net_battery_list_t) == 1284, "net_battery_list_t");
static_assert(sizeof(net_sleep_state_t) == 52, "net_sleep_state_t");
static_assert(sizeof(net_sleep_status_t) == 4, "net_sleep_status_t");
static_assert(sizeof(net_aging_test_t) == 140, "net_aging_test_t");
static_assert(sizeof(net_doorbell_test_t) == 16, "net_doorbell_test_t");
static_assert(sizeof(net_dev_manage_t) == 4048, "net_dev_manage_t");
static_assert(sizeof(net_homebase_wakeup_task_t) == 169, "net_homebase_wakeup_task_t");
static_assert(sizeof(net_fsk_rf_pair_t) == 84, "net_fsk_rf_pair_t");
static_assert(sizeof(net_export_video_inspection_t) == 1080, "net_export_video_inspection_t");
static_assert(sizeof(net_cfg_modify_t) == 8, "net_cfg_modify_t");

/** @} */

#endif
