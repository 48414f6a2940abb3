// Finding and replaying recordings: day records, file search, replay, cover pictures, deletion.
#include "engine/engine.h"
#include "engine/records.h"
#include "engine/registry.h"
#include "values/tables.h"
#include "values/values.h"

#include <net_public.h>

namespace netpublic {
namespace {

// "snapStream" is no spelling here: it reads as the main stream, like any unknown word.
constexpr int main_stream = 0;
constexpr int longest_stream = 30; // characters

// Day records -------------------------------------------------------------------------------------

using Schedule = tag_net_recfile_schedule_v20_t;
using DayRecord = tag_net_rec_info_v20_t;

constexpr int days = 31;
constexpr int most_day_records = 4;
constexpr int no_recording = 0;
constexpr Word day_type_list[] = {{no_recording, "none"}, {1, "normal"}, {2, "alarm"}, {3, "all"}};
constexpr auto day_types = words<day_type_list>();

struct DayType {
    int index; // day of the month - 1
    int type;
};

struct DayTypeFields : Description {
    using T = DayType;
    static constexpr Field fields[] = {
        integer("index", AT(index)).in(0, days - 1).required(),
        word("type", AT(type), day_types).upto(15).required().sample("all"),
    };
};
constexpr auto day_type = describe<DayTypeFields>();

int take_day_type(int (&types)[days], const DayType &day)
{
    types[day.index] = day.type;
    return 0;
}

struct MonthFields : Description {
    using T = DayRecord;
    static constexpr Field fields[] = {
        wires<take_day_type>("dayType", AT(dayType), day_type, days).stop_when_full().spelled(day_types),
    };
    static constexpr Traits traits = Traits{}.exact_names().others_fail();
};
constexpr auto month = describe<MonthFields>();

struct DayRecordFields : Description {
    using T = DayRecord;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        part("dayTypeList", month),
        text("uid", AT(uid)).quiet(),
    };
    static constexpr Traits traits = HERE.parser("get_day_record_list_from_xmlnode").failure(Line::parser);
};
constexpr auto day_record = describe<DayRecordFields>();

// A day record as it is written.
struct WrittenDayRecord {
    int index;
    int channelId;
    const int *types;
};

// The month up to its first negative type; days without a recording are left out. The cursor is the next day.
Give give_day_type(const WrittenDayRecord &record, DayType &day, Item &item)
{
    while (item.cursor < days && record.types[item.cursor] == no_recording)
        ++item.cursor;
    if (item.cursor == days || record.types[item.cursor] < 0)
        return Give::ended;
    day = {static_cast<int>(item.cursor), record.types[item.cursor]};
    ++item.cursor;
    if (word_of(day_types, day.type) != nullptr)
        return Give::written;
    const Place here = NET_HERE;
    log_error(here, "Func(%s) Line(%d) [%d]cRecType[%d]=%d\n", "net_day_rec_s2x", here.line(), record.index, day.index,
              day.type);
    return Give::failed;
}

struct WrittenMonthFields : Description {
    using T = WrittenDayRecord;
    static constexpr Field fields[] = {
        wires_part<T, nullptr, give_day_type>("dayType", day_type),
    };
};
constexpr auto written_month = describe<WrittenMonthFields>();

struct WrittenDayRecordFields : Description {
    using T = WrittenDayRecord;
    static constexpr Field fields[] = {
        integer("index", AT(index)).write_only(),
        integer("channelId", AT(channelId)).write_only(),
        part("dayTypeList", written_month).write_only(),
    };
};
constexpr auto written_day_record = describe<WrittenDayRecordFields>();

// The records in front of the first negative channel.
Give give_day_record(const DayRecord (&records)[most_day_records], WrittenDayRecord &written, Item &item)
{
    if (item.index == most_day_records || records[item.index].channelId < 0)
        return Give::ended;
    written = {static_cast<int>(item.index), records[item.index].channelId, records[item.index].dayType};
    return Give::written;
}

struct DayRecordListFields : Description {
    using T = Schedule;
    static constexpr Field fields[] = {
        list("DayRecord", AT(records), day_record).read_only(),
        wires<nullptr, give_day_record>("DayRecord", AT(records), written_day_record, most_day_records),
    };
    static constexpr Traits traits = HERE.parser("get_day_record_list_from_xmlnode").exact_names();
};
constexpr auto day_record_list = describe<DayRecordListFields>();

struct ScheduleFields : Description {
    using T = Schedule;
    static constexpr Field fields[] = {
        preset(AT(records[1].channelId), -1), // ends an answer that holds one record
        group("startTime", AT(startTime), time_record),
        group("endTime", AT(endTime), time_record),
        part("DayRecordList", day_record_list),
    };
    static constexpr Traits traits =
        HERE.parser("net_day_rec_x2s")
            .writer("net_day_rec_s2x", "DayRecords")
            .sets_inited()
            .title("days with recordings", "On which days of a month channels have recorded.");
};
constexpr auto day_records_message = describe<ScheduleFields>();

// File search -------------------------------------------------------------------------------------

using FileInfo = tag_net_file_info_v20_t;

// In the order in which they are written. The words are searched for anywhere in the text, so that
// "intrusion" is read as NET_RECORD_IO as well: peers depend on it. "crossline" is never written.
constexpr Word record_type_list[] = {
    {NET_RECORD_MANUAL, "manual"},
    {NET_RECORD_IO, "io"},
    {NET_RECORD_MD, "md"},
    {NET_RECORD_PIR, "pir"},
    {NET_RECORD_SCHED, "sched"},
    {NET_RECORD_PEOPLE, "people"},
    {NET_RECORD_VEHICLE, "vehicle"},
    {NET_RECORD_FACE, "face"},
    {NET_RECORD_OTHER, "other"},
    {NET_RECORD_DOG_CAT, "dog_cat"},
    {NET_RECORD_VISITOR, "visitor"},
    {NET_RECORD_PACKAGE, "package"},
    {NET_RECORD_INTRUSION, "intrusion"},
    {NET_RECORD_LOITERING, "loitering"},
    {NET_RECORD_LEGACY, "legacy"},
    {NET_RECORD_LOSS, "loss"},
    {NET_RECORD_CRY, "cry"},
    {NET_RECORD_CROSSLINE, "crossline", Use::read},
};
constexpr auto record_types = words<record_type_list>();

constexpr Word file_type_list[] = {{0, "h264"}, {1, "mp4"}, {2, "flv"}};
constexpr auto file_types = words<file_type_list>();

struct FileInfoFields : Description {
    using T = FileInfo;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        word("streamType", AT(streamType), video_streams).upto(longest_stream).otherwise(main_stream),
        flag("supportSub", AT(supportSub)),
        integer("handle", AT(handle)),
        text("name", AT(name)),
        integer("typeExtension", AT(typeExtension)),
        mask("recordType", AT(recordType), record_types).none_conflicts().wordless(),
        unsigned_integer("sizeL", AT(sizeL)),
        unsigned_integer("sizeH", AT(sizeH)),
        integer("FileCount", AT(FileCount)).at_least(0),
        group("startTime", AT(startTime), time_record),
        group("endTime", AT(endTime), time_record),
        flag("containsAudio", AT(containsAudio)),
        word("fileType", AT(fileType), file_types).kept(),
        integer("playSpeed", AT(playSpeed)).in(0, 32),
        text("uid", AT(uid)),
        text("Id", AT(Id)),
        unsigned_longlong("logicChnBitmap", AT(logicChnBitmap)),
    };
    static constexpr Traits traits =
        HERE.writer("net_file_file_s2x", "FileInfo").title("recorded file", "All that is known of a recorded file.");
};
constexpr auto file_info = describe<FileInfoFields>();

int write_contains_audio(const FileInfo &info, char *text, std::size_t)
{
    text[0] = info.containsAudio != 0 ? '1' : '0';
    text[1] = '\0';
    return 0;
}

// What the answer to a search says of a file; only written.
struct FoundFileFields : Description {
    using T = FileInfo;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).write_only(),
        integer("handle", AT(handle)).write_only(),
        text("name", AT(name)).write_only(),
        converted<nullptr, write_contains_audio>("containsAudio", AT(containsAudio)),
        mask("recordType", AT(recordType), record_types).wordless().write_only(),
        constant("supportSub", 1), // whatever the record says
        unsigned_integer("sizeL", AT(sizeL)).write_only(),
        unsigned_integer("sizeH", AT(sizeH)).write_only(),
        group("startTime", AT(startTime), time_record).write_only(),
        group("endTime", AT(endTime), time_record).write_only(),
    };
};
constexpr auto found_file = describe<FoundFileFields>();

// A search that names no file is over at once: neither the payload nor `inited` is touched.
struct FileInfoListFields : Description {
    using T = FileInfo;
    static constexpr Field fields[] = {
        preset(AT(playSpeed), 1),
        part("FileInfo", file_info).read_only(),
        part("FileInfo", found_file).write_only(),
    };
    static constexpr Traits traits =
        HERE.parser("net_file_info_list_x2s")
            .writer("net_file_info_list_s2x", "FileInfoList")
            .first_child_only()
            .others_fail()
            .empty_is_done()
            .sets_inited()
            .title("file search", "Which file is searched for; the reply is a file that was found.");
};
constexpr auto file_info_list_message = describe<FileInfoListFields>();

struct ClientFileInfoListFields : Description {
    using T = FileInfo;
    static constexpr Field fields[] = {part("FileInfo", file_info)};
    static constexpr Traits traits =
        HERE.parser("netc_file_info_list_x2s")
            .first_child_only()
            .others_fail()
            .title("answer to a file search", "The file that a search has found, as a client reads it.");
};
constexpr auto client_file_info_list_message = describe<ClientFileInfoListFields>();

// Replay ------------------------------------------------------------------------------------------

struct ReplaySeekFields : Description {
    using T = net_replay_seek_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        group("seekTime", AT(seekTime), time_record),
        integer("seq", AT(seq)),
    };
    static constexpr Traits traits = HERE.parser("net_replay_seek_x2s")
                                         .clears()
                                         .sets_inited()
                                         .title("replay position", "Moves the replay of one channel to another time.");
};
constexpr auto replay_seek_message = describe<ReplaySeekFields>();

using Period = net_replay_period_v20_t;
using Byte = unsigned char Period::*;

template <Byte hour, Byte minute, Byte second> int read_clock(const char *text, Period &period)
{
    int seconds;
    if (to_int(&seconds, text) != 0 || seconds < 0)
        return -1;
    return get_hms_from_pts(seconds, &(period.*hour), &(period.*minute), &(period.*second));
}
constexpr char seconds_of_day[] = "a whole number from 0: seconds since midnight";

struct PeriodFields : Description {
    using T = Period;
    static constexpr Field fields[] = {
        converted<read_clock<&T::startHour, &T::startMinute, &T::startSecond>>("s", AT(startHour))
            .accepts(seconds_of_day),
        converted<read_clock<&T::endHour, &T::endMinute, &T::endSecond>>("e", AT(endHour))
            .own_test()
            .accepts(seconds_of_day),
        byte("offsetOfStart", AT(offsetOfStart)),
        byte("offsetOfEnd", AT(offsetOfEnd)),
    };
    static constexpr Field also_shown[] = {
        shown("startMinute", AT(startMinute)),
        shown("startSecond", AT(startSecond)),
        shown("endMinute", AT(endMinute)),
        shown("endSecond", AT(endSecond)),
    };
};
constexpr auto period = describe<PeriodFields>();

struct TimesFields : Description {
    using T = net_replay_duration_v20_t;
    static constexpr Field fields[] = {
        preset(AT(periodCount), 0),
        list("i", AT(periods), period).counted_by(AT(periodCount)).complain("get too many period, ignore others\n"),
    };
    static constexpr Traits traits = HERE.parser("get_duration_times_from_xmlnode");
};
constexpr auto times = describe<TimesFields>();

struct DurationFields : Description {
    using T = net_replay_duration_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        word("streamType", AT(streamType), video_streams).upto(longest_stream).otherwise(main_stream),
        text("uid", AT(uid)),
        unsigned_longlong("logicChnBitmap", AT(logicChnBitmap)),
        part("times", times),
    };
};
constexpr auto duration = describe<DurationFields>();

// A child named "d" is both the day and a duration.
struct DurationListFields : Description {
    using T = net_replay_duration_list_v20_t;
    static constexpr Field fields[] = {
        preset(AT(durationCount), 0),
        integer("year", AT(year)).at_least(0),
        integer("month", AT(month)).in(1, 12),
        integer("day", AT(day)).in(1, 31),
        list("duration", AT(durations), duration)
            .own_test()
            .counted_by(AT(durationCount))
            .complain("get too many duration, ignore others\n"),
    };
    static constexpr Traits traits = HERE.parser("get_duration_list_from_xmlnode");
};
constexpr auto duration_list = describe<DurationListFields>();

using ReplayStart = net_new_replay_start_v20_t;

// The stream type is the durations' as well, whatever an earlier duration list says.
int spread_stream(ReplayStart &start)
{
    for (auto &each : start.durationList.durations)
        each.streamType = start.streamType;
    return 0;
}

struct ReplayStartFields : Description {
    using T = ReplayStart;
    static constexpr Field fields[] = {
        integer("seq", AT(seq)),
        word("streamType", AT(streamType), video_streams)
            .upto(longest_stream)
            .otherwise(main_stream)
            .then<spread_stream>()
            .accepts("counts for all durations; their own come after it"),
        integer("playSpeed", AT(playSpeed)).at_most(32),
        group("startTime", AT(startTime), time_record),
        integer("sOffset", AT(sOffset)),
        group("endTime", AT(endTime), time_record),
        integer("eOffset", AT(eOffset)),
        group("durationList", AT(durationList), duration_list),
    };
    static constexpr Traits traits =
        HERE.parser("nets_param_new_replay_start_x2s")
            .title("replay start", "Starts the replay of recordings of up to four channels of a day.");
};
constexpr auto replay_start_message = describe<ReplayStartFields>();

struct NewReplaySeekFields : Description {
    using T = net_new_replay_seek_v20_t;
    static constexpr Field fields[] = {
        group("seekTime", AT(seekTime), time_record),
        integer("seq", AT(seq)),
        group("durationList", AT(durationList), duration_list),
    };
    static constexpr Traits traits =
        HERE.parser("nets_param_new_replay_seek_x2s")
            .clears()
            .title("replay position of several channels", "Moves the replay of up to four channels to another time.");
};
constexpr auto new_replay_seek_message = describe<NewReplaySeekFields>();

// Deletion ----------------------------------------------------------------------------------------

struct DeletedFileFields : Description {
    using T = net_rec_del_item_t;
    static constexpr Field fields[] = {text("fileIdentity", AT(fileIdentity))};
    static constexpr Traits traits = HERE.parser("net_rec_del_x2s").failure(Line::plain_failed);
};
constexpr auto deleted_file = describe<DeletedFileFields>();

struct DeletionFields : Description {
    using T = net_rec_del_v20_t;
    static constexpr Field fields[] = {list("item", AT(item), deleted_file).counted_by(AT(count))};
    static constexpr Traits traits = HERE.parser("net_rec_del_x2s")
                                         .clears()
                                         .title("file deletion", "Deletes recorded files by their names, at most 40.");
};
constexpr auto deletion_message = describe<DeletionFields>();

// Cover pictures ----------------------------------------------------------------------------------

struct FrameListFields : Description {
    using T = net_cover_preview_v20_t;
    static constexpr Field fields[] = {
        preset(AT(frameCount), 0),
        int_items("frameNo", AT(frameNo)).counted_by(AT(frameCount)),
    };
};
constexpr auto frame_list = describe<FrameListFields>();

struct CoverPreviewFields : Description {
    using T = net_cover_preview_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)),
        integer("destination", AT(destination)),
        unsigned_longlong("logicChnBitmap", AT(logicChnBitmap)),
        word("streamType", AT(streamType), video_streams).upto(longest_stream).otherwise(main_stream),
        group("startTime", AT(startTime), time_record),
        group("endTime", AT(endTime), time_record),
        text("uid", AT(uid)),
        part("frameList", frame_list),
    };
    static constexpr Traits traits =
        HERE.parser("net_cover_preview_x2s")
            .title("cover pictures", "Asks for pictures of a recording, by the numbers of its frames.");
};
constexpr auto cover_preview_message = describe<CoverPreviewFields>();

} // namespace
} // namespace netpublic

using namespace netpublic;

int net_day_rec_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, day_records_message);
}

int net_day_rec_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, day_records_message);
}

int net_file_info_list_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, file_info_list_message);
}

int net_file_info_list_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, file_info_list_message);
}

int netc_file_info_list_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, client_file_info_list_message);
}

int net_file_file_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, file_info);
}

int net_replay_seek_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, replay_seek_message);
}

int net_rec_del_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, deletion_message);
}

int net_cover_preview_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, cover_preview_message);
}

int nets_param_new_replay_start_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, replay_start_message);
}

int nets_param_new_replay_seek_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, new_replay_seek_message);
}

int get_day_type_list_from_xmlnode(tag_net_rec_info_v20_t *record, TiXmlNode *node)
{
    return read_component(record, node, nullptr, month);
}

int get_day_record_list_from_xmlnode(tag_net_recfile_schedule_v20_t *schedule, TiXmlNode *node)
{
    return read_component_logged(schedule, node, nullptr, day_record_list);
}

int _get_file_info(tag_net_file_info_v20_t *info, TiXmlNode *node, const char *key)
{
    return read_component(info, node, key, file_info);
}

int get_hms_from_pts(int pts, unsigned char *hour, unsigned char *minute, unsigned char *second)
{
    if (hour == nullptr || minute == nullptr || second == nullptr)
        return -1;
    *hour = static_cast<unsigned char>(pts / 3600);
    *minute = static_cast<unsigned char>(pts % 3600 / 60);
    *second = static_cast<unsigned char>(pts % 60);
    return 0;
}

int get_duration_item_from_xmlnode(net_replay_period_v20_t *item, TiXmlNode *node, const char *key)
{
    return read_component(item, node, key, period);
}

int get_duration_times_from_xmlnode(net_replay_duration_v20_t *item, TiXmlNode *node, const char *key)
{
    return read_component(item, node, key, times);
}

int get_duration_from_xmlnode(net_replay_duration_v20_t *item, TiXmlNode *node, const char *key)
{
    return read_component(item, node, key, duration);
}

int get_duration_list_from_xmlnode(net_replay_duration_list_v20_t *list, TiXmlNode *node, const char *key)
{
    return read_component(list, node, key, duration_list);
}

MESSAGES(replay, //
         MESSAGE("day-record", net_param_day_record_init, net_day_rec_x2s, net_day_rec_s2x, day_records_message),
         HOST_MESSAGE("file-info-list", tag_net_file_info_v20_t, net_file_info_list_x2s, net_file_info_list_s2x,
                      file_info_list_message),
         HOST_MESSAGE("client-file-info-list", tag_net_file_info_v20_t, netc_file_info_list_x2s, nullptr,
                      client_file_info_list_message, "FileInfoList"),
         HOST_MESSAGE("file-file", tag_net_file_info_v20_t, nullptr, net_file_file_s2x, file_info),
         HOST_MESSAGE("replay-seek", net_replay_seek_v20_t, net_replay_seek_x2s, nullptr, replay_seek_message,
                      "ReplaySeek"),
         HOST_MESSAGE("rec-del", net_rec_del_v20_t, net_rec_del_x2s, nullptr, deletion_message, "DeleteFiles"),
         HOST_MESSAGE("cover-preview", net_cover_preview_v20_t, net_cover_preview_x2s, nullptr, cover_preview_message,
                      "CoverPreview"),
         HOST_MESSAGE("new-replay-start", net_new_replay_start_v20_t, nets_param_new_replay_start_x2s, nullptr,
                      replay_start_message, "ReplayStart"),
         HOST_MESSAGE("new-replay-seek", net_new_replay_seek_v20_t, nets_param_new_replay_seek_x2s, nullptr,
                      new_replay_seek_message, "ReplaySeek"))
