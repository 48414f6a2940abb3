// What many tables say alike is kept once: texts and limits. What is not listed here, a table keeps itself; so
// the lists are about size alone, and tests/gates/footprint.py tells what else is worth a place in them.
#ifndef NETPUBLIC_COMMON_H
#define NETPUBLIC_COMMON_H

#include <cstddef>
#include <cstdint>

namespace netpublic {

// Texts one behind the other, each with its terminator, in an array of this capacity. Compile time only.
template <std::size_t Capacity> struct TextPool {
    std::uint16_t size = 0;
    char pool[Capacity]{};

    // Where the text stands, be it as the end of another one; `size` when it does not.
    constexpr std::size_t find(const char *text) const
    {
        for (std::size_t at = 0; at < size; ++at) {
            std::size_t same = 0;
            while (pool[at + same] == text[same] && text[same] != '\0')
                ++same;
            if (pool[at + same] == text[same])
                return at;
        }
        return size;
    }
    // Puts a text behind the others and tells where.
    constexpr std::size_t append(const char *text)
    {
        const std::size_t at = size;
        do
            pool[size++] = *text;
        while (*text++ != '\0');
        return at;
    }
    constexpr std::size_t add(const char *text)
    {
        const std::size_t at = find(text);
        return at < size ? at : append(text);
    }
};

inline constexpr const char *common_text_list[] = {
    // clang-format off
    "", // the empty text is at 0
    // Keys and roots
    "ability", "aiType", "alarm", "AlarmEvent", "alarmType", "area", "audio", "audioNum", "audioTalk", "authInfo",
    "B485", "batteryMode", "beginHour", "beginMinute", "channel", "channelAbility", "channelBits", "channelId",
    "channelNum", "chn", "color", "command", "containsAudio", "cur", "current", "curSize", "day", "dayType",
    "dayTypeList", "def", "destination", "detectType", "device", "direction", "disk", "diskNum", "doorbellVersion",
    "duration", "durationList", "dwellTime", "emailVersion", "enable", "encodeTable", "encrypted", "endHour",
    "endMinute", "endTime", "eventCount", "fileHandle", "FileInfo", "fileName", "fileSize", "frameRate", "ftp",
    "handle", "height", "hour", "id", "image", "imageName", "index", "IO", "IOInputPortNum", "IOOutputPortNum",
    "IOTNum", "item", "key", "keyPos", "language", "largeBattery", "layer", "ledCtrl", "location", "logicChannel",
    "logicChnBitmap", "max", "maxNum", "min", "minute", "mode", "month", "name", "network", "norm", "notes",
    "notSearchVideo", "offset", "op", "openClose", "original", "osdFormat", "password", "patrolId", "playSpeed",
    "pointList", "pointMaxNUm", "pointMinNum", "presetId", "priority", "prompt", "properties", "PTZ", "ptzMode",
    "pushAlarm", "reboot", "record", "recordCfg", "recording", "recordType", "replay", "replayVersion", "resoHight",
    "resolution", "resolutionName", "resoWidth", "resowidth", "rfVersion", "Schedule", "ScheduleList", "second",
    "security", "seekTime", "sensInfo", "sensitivity", "seq", "sesensitivity", "size", "sizeH", "sizeL", "speed",
    "startHour", "startTime", "status", "stayTime", "StreamInfo", "streaming", "streamType", "supportSub", "system",
    "thumbnail", "time", "timeBlock", "timeBlockList", "timeFormat", "timelapse", "timeStamp", "timeThresh",
    "topLeftX", "topLeftY", "type", "typeExtension", "typeScheduleList", "uid", "updateParameter", "usedForFactory",
    "user", "userId", "userLevel", "userName", "userSetState", "userVer", "utcTime", "validHours", "valueTable", "ver",
    "version", "video", "videoEncType", "weekDay", "width", "wifi", "wifiTest", "wifiVersion", "year",
    // Functions
    "get_day_record_list_from_xmlnode", "get_resolution_from_xmlnode", "get_streamInfo_from_xmlnode", "net_md_s2x",
    "net_rec_del_x2s", "net_record_schedule_x2s", "net_timelapse_cfg_x2s",
    // Lines
    "timelapse xml file type err:%d\n",
    // clang-format on
};

template <std::size_t Capacity> constexpr TextPool<Capacity> pack_common_texts()
{
    TextPool<Capacity> texts;
    for (const char *text : common_text_list)
        texts.add(text);
    return texts;
}
inline constexpr auto common_texts = pack_common_texts<pack_common_texts<4096>().size>();

// What bounds a value: the smallest and the largest number; the longest text and the size of its member; the
// longest word and the code of others; the capacity of a list; or one number alone.
struct Limits {
    std::int32_t low;
    std::int32_t high;
};

inline constexpr Limits common_limits[] = {
    {-1, 0},    {0, 0},     {0, 1},         {0, 5},         {0, 15},    {0, 23},   {0, 30},        {0, 59},   {0, 63},
    {0, 100},   {0, 255},   {0, 65535},     {0, INT32_MAX}, {1, 0},     {1, 12},   {1, 31},        {1, 50},   {1, 100},
    {1, 155},   {1, 65535}, {1, INT32_MAX}, {2, 0},         {4, 0},     {8, 0},    {15, 0},        {15, 128}, {16, 0},
    {30, 0},    {31, 0},    {31, 1},        {31, 32},       {32, 0},    {40, 0},   {63, 0},        {63, 64},  {127, 0},
    {127, 128}, {128, 0},   {168, 0},       {255, 0},       {255, 256}, {1023, 0}, {INT32_MAX, 0}, {64, 0},   {0, 4},
    {20, 0},    {256, 0},   {2999, 0},      {9, 0},         {15, 1},
};
constexpr unsigned common_limit_count = sizeof common_limits / sizeof common_limits[0];

} // namespace netpublic

#endif
