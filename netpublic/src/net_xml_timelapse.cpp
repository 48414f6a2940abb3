// Time-lapse recording: configuration, calendar, tasks, file search, download, deletion, cover.
#include "engine/engine.h"
#include "engine/records.h"
#include "engine/registry.h"
#include "values/tables.h"
#include "values/values.h"

#include <net_public.h>

namespace netpublic {
namespace {

constexpr Word task_type_list[] = {{NET_TIMELAPSE_MP4, "mp4"}, {NET_TIMELAPSE_JPEG, "jpeg"}};
constexpr auto task_types = words<task_type_list>();

constexpr Word task_state_list[] = {
    {NET_TIMELAPSE_IDLE, "IDLE"}, {NET_TIMELAPSE_RUNNING, "RUNNING"}, {NET_TIMELAPSE_DELETING, "DELETING"}};
constexpr auto task_states = words<task_state_list>();

constexpr char too_many_items[] = "func:%s line:%d too many items\n";

// An unknown type or stream is logged and replaced when it is read, and refused when it is written.
template <class Record> constexpr Field read_task_type(Member<Record, int> member)
{
    return word("taskType", member, task_types)
        .otherwise(NET_TIMELAPSE_JPEG)
        .complain("timelapse file type err:%s\n")
        .read_only();
}

template <class Record> constexpr Field written_task_type(Member<Record, int> member)
{
    return word("taskType", member, task_types).complain("timelapse xml file type err:%d\n").write_only();
}

// A failure anywhere in a message is one line of the message's own; the size is the host's affair.
constexpr Traits message_at(Traits here)
{
    return here.entry(Line::writer).failure(Line::writer).any_size();
}

// Configuration -----------------------------------------------------------------------------------

struct DurationFields : Description {
    using T = net_timelapse_duration_t;
    static constexpr Field fields[] = {
        group("startTime", AT(startTime), time_record),
        group("endTime", AT(endTime), time_record),
        integer("valid", AT(valid)),
    };
};
constexpr auto duration = describe<DurationFields>();

struct ConfigurationItemFields : Description {
    using T = net_timelapse_cfg_item_t;
    static constexpr Field fields[] = {
        preset(AT(durationCount), 0),
        integer("enable", AT(enable)),
        text("id", AT(id)),
        text("properties", AT(properties)),
        integer("saveLocation", AT(saveLocation)),
        read_task_type(AT(taskType)),
        written_task_type(AT(taskType)),
        integer("neverEnd", AT(neverEnd)),
        word("streamType", AT(streamType), video_streams)
            .otherwise(0)
            .complain("timelapse stream type err:%s\n")
            .read_only(),
        word("streamType", AT(streamType), video_streams).complain("timelapse xml stream type err:%d\n").write_only(),
        integer("interval", AT(interval)),
        integer("frameRate", AT(frameRate)),
        integer("buseThumbnail", AT(buseThumbnail)),
        group("startTime", AT(startTime), time_record),
        group("endTime", AT(endTime), time_record),
        list("duration", AT(duration), duration)
            .counted_by(AT(durationCount))
            .complain("func:%s line:%d too many durations\n"),
    };
    static constexpr Traits traits = HERE.parser("net_timelapse_cfg_x2s");
};
constexpr auto configuration_item = describe<ConfigurationItemFields>();

struct ConfigurationFields : Description {
    using T = net_timelapse_cfg_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)),
        integer("overwrite", AT(overwrite)),
        integer("maxFileNum", AT(maxFileNum)).write_only(),
        list("item", AT(item), configuration_item).complain(too_many_items),
    };
    static constexpr Traits traits =
        message_at(HERE).parser("net_timelapse_cfg_x2s").writer("net_timelapse_cfg_s2x", "timelapseCfg");
};
constexpr auto configuration_message = describe<ConfigurationFields>();

// Calendar ----------------------------------------------------------------------------------------

struct DateItemFields : Description {
    using T = net_timelapse_date_item_t;
    static constexpr Field fields[] = {integer("year", AT(year)), text("dateTable", AT(dateTable))};
};
constexpr auto date_item = describe<DateItemFields>();

struct DateFields : Description {
    using T = net_timelapse_date_t;
    static constexpr Field fields[] = {
        preset(AT(itemCount), 0),
        integer("channelId", AT(channelId)),
        text("uid", AT(uid)),
        text("id", AT(id)),
        list("item", AT(item), date_item).counted_by(AT(itemCount)).complain(too_many_items),
    };
    static constexpr Traits traits =
        message_at(HERE).parser("net_timelapse_date_x2s").writer("net_timelapse_date_s2x", "timelapseDateTbl");
};
constexpr auto date_message = describe<DateFields>();

// Tasks -------------------------------------------------------------------------------------------

struct TaskItemFields : Description {
    using T = net_timelapse_task_item_t;
    static constexpr Field fields[] = {
        text("id", AT(id)),
        read_task_type(AT(taskType)),
        written_task_type(AT(taskType)),
        text("properties", AT(properties)),
        word("taskState", AT(taskState), task_states).read_only(),
        word("taskState", AT(taskState), task_states).complain("timelapse xml task state err:%d\n").write_only(),
    };
    static constexpr Traits traits = HERE;
};
constexpr auto task_item = describe<TaskItemFields>();

struct TaskFields : Description {
    using T = net_timelapse_task_t;
    static constexpr Field fields[] = {
        preset(AT(itemCount), 0),
        integer("channelId", AT(channelId)),
        text("uid", AT(uid)),
        list("item", AT(item), task_item).counted_by(AT(itemCount)).complain(too_many_items),
    };
    static constexpr Traits traits =
        message_at(HERE).parser("net_timelapse_task_x2s").writer("net_timelapse_task_s2x", "timelapseTasks");
};
constexpr auto task_message = describe<TaskFields>();

// File search -------------------------------------------------------------------------------------

using Search = net_timelapse_file_t;
using File = net_timelapse_file_item_t;
using Original = net_timelapse_original_t;
using Thumbnail = net_timelapse_thumbnail_t;

// Fewer than the parser holds: a longer result takes several messages.
constexpr int most_files_written = 40;

// The width is read as "resoWidth" and written as "resowidth"; peers know both.
struct OriginalFields : Description {
    using T = Original;
    static constexpr Field fields[] = {
        text("id", AT(id)),
        text("fileName", AT(fileName)),
        integer("resoWidth", AT(resoWidth)).read_only(),
        integer("resoHight", AT(resoHight)),
        integer("resowidth", AT(resoWidth)).write_only(),
        unsigned_longlong("size", AT(size)),
        integer("duration", AT(duration)),
        integer("frameRate", AT(frameRate)),
        integer("encodeType", AT(encodeType)),
        integer("needMuxMp4", AT(needMuxMp4)),
        integer("encrypted", AT(encrypted)),
        integer("generating", AT(generating)),
        group("startTime", AT(startTime), time_record),
        group("endTime", AT(endTime), time_record),
    };
};
constexpr auto original = describe<OriginalFields>();

// The full picture of a jpeg task; only written.
struct PictureFields : Description {
    using T = Original;
    static constexpr Field fields[] = {
        text("id", AT(id)),
        text("fileName", AT(fileName)),
        integer("resoHight", AT(resoHight)),
        integer("resowidth", AT(resoWidth)),
        unsigned_longlong("size", AT(size)),
        integer("encrypted", AT(encrypted)),
    };
};
constexpr auto picture = describe<PictureFields>();

struct ThumbnailFields : Description {
    using T = Thumbnail;
    static constexpr Field fields[] = {
        text("id", AT(id)),
        text("fileName", AT(fileName)),
        integer("resoWidth", AT(resoWidth)).read_only(),
        integer("resoHight", AT(resoHight)),
        integer("resowidth", AT(resoWidth)).write_only(),
        unsigned_longlong("size", AT(size)),
        integer("encrypted", AT(encrypted)),
    };
};
constexpr auto thumbnail = describe<ThumbnailFields>();

int read_original(File &file, TiXmlNode *node)
{
    if (read_record(original, &file.original, node) != 0)
        return -1;
    file.flags |= NET_TIMELAPSE_FILE_ORIGINAL;
    return 0;
}

int read_thumbnail(File &file, TiXmlNode *node)
{
    if (read_record(thumbnail, &file.thumbnail, node) != 0)
        return -1;
    file.flags |= NET_TIMELAPSE_FILE_THUMBNAIL;
    return 0;
}

struct FileFields : Description {
    using T = File;
    static constexpr Field fields[] = {
        preset(AT(flags), 0),
        custom<read_original>("original", AT(original)).shown(original),
        custom<read_thumbnail>("thumbnail", AT(thumbnail)).shown(thumbnail),
    };
};
constexpr auto file_item = describe<FileFields>();

int write_files(const Search &search, TiXmlElement *parent)
{
    for (int index = 0; index < search.itemCount && index < most_files_written; ++index) {
        const File &file = search.item[index];
        TiXmlElement *item = append_element(parent, "item");
        const bool film = search.taskType == NET_TIMELAPSE_MP4;
        const Table &full = film ? original.table() : picture.table();
        if (item == nullptr || ((film || (file.flags & NET_TIMELAPSE_FILE_ORIGINAL) != 0) &&
                                write_record(full, &file.original, append_element(item, "original")) != 0))
            return -1;
        if (!film && (file.flags & NET_TIMELAPSE_FILE_THUMBNAIL) != 0 &&
            write_record(thumbnail, &file.thumbnail, append_element(item, "thumbnail")) != 0)
            return -1;
    }
    return 0;
}

struct SearchFields : Description {
    using T = Search;
    static constexpr Field fields[] = {
        preset(AT(itemCount), 0),
        integer("channelId", AT(channelId)),
        text("uid", AT(uid)),
        text("id", AT(id)),
        integer("handle", AT(handle)),
        integer("fromWhere", AT(fromWhere)).read_only(),
        group("startTime", AT(startTime), time_record).read_only(),
        group("endTime", AT(endTime), time_record).read_only(),
        read_task_type(AT(taskType)),
        written_task_type(AT(taskType)),
        integer("totalNum", AT(totalNum)),
        integer("finished", AT(finished)),
        list("item", AT(item), file_item).counted_by(AT(itemCount)).complain(too_many_items).read_only(),
        custom<nullptr, write_files>("item", AT(item)).shown(file_item),
    };
    static constexpr auto written =
        order("channelId", "handle", "totalNum", "finished", "uid", "id", "taskType", "item");
    static constexpr Traits traits =
        message_at(HERE).parser("net_timelapse_file_x2s").writer("net_timelapse_file_s2x", "timelapseFileSearch");
};
constexpr auto search_message = describe<SearchFields>();

// Download, deletion, cover -----------------------------------------------------------------------

struct DownloadFields : Description {
    using T = net_timelapse_download_t;
    static constexpr Field fields[] = {
        text("id", AT(id)),
        read_task_type(AT(taskType)),
        written_task_type(AT(taskType)),
        text("position", AT(position)),
    };
    static constexpr auto written = order("id", "taskType", "position");
    static constexpr Traits traits =
        message_at(HERE).parser("net_timelapse_download_x2s").writer("net_timelapse_download_s2x", "timelapseDownload");
};
constexpr auto download_message = describe<DownloadFields>();

struct TaskDeletionFields : Description {
    using T = net_timelapse_task_delete_t;
    static constexpr Field fields[] = {text("uid", AT(uid)), text("id", AT(id))};
    static constexpr Traits traits = message_at(HERE)
                                         .parser("net_timelapse_task_delete_x2s")
                                         .writer("net_timelapse_task_delete_s2x", "timelapseTaskDel");
};
constexpr auto task_deletion_message = describe<TaskDeletionFields>();

struct DeletedFileFields : Description {
    using T = net_timelapse_file_delete_item_t;
    static constexpr Field fields[] = {text("id", AT(id))};
};
constexpr auto deleted_file = describe<DeletedFileFields>();

struct FileDeletionFields : Description {
    using T = net_timelapse_file_delete_t;
    static constexpr Field fields[] = {
        preset(AT(itemCount), 0),
        read_task_type(AT(taskType)),
        written_task_type(AT(taskType)),
        list("item", AT(item), deleted_file).counted_by(AT(itemCount)).complain(too_many_items),
    };
    static constexpr auto written = order("taskType", "item");
    static constexpr Traits traits = message_at(HERE)
                                         .parser("net_timelapse_file_delete_x2s")
                                         .writer("net_timelapse_file_delete_s2x", "timelapseFileDel");
};
constexpr auto file_deletion_message = describe<FileDeletionFields>();

struct CoverFields : Description {
    using T = net_timelapse_file_cover_t;
    static constexpr Field fields[] = {text("id", AT(id))};
    static constexpr Traits traits = message_at(HERE)
                                         .parser("net_timelapse_file_cover_x2s")
                                         .writer("net_timelapse_file_cover_s2x", "timelapseCover");
};
constexpr auto cover_message = describe<CoverFields>();

} // namespace
} // namespace netpublic

using namespace netpublic;

int net_timelapse_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, configuration_message);
}

int net_timelapse_cfg_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, configuration_message);
}

int net_timelapse_date_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, date_message);
}

int net_timelapse_date_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, date_message);
}

int net_timelapse_task_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, task_message);
}

int net_timelapse_task_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, task_message);
}

int net_timelapse_file_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, search_message);
}

int net_timelapse_file_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, search_message);
}

int net_timelapse_download_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, download_message);
}

int net_timelapse_download_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, download_message);
}

int net_timelapse_task_delete_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, task_deletion_message);
}

int net_timelapse_task_delete_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, task_deletion_message);
}

int net_timelapse_file_delete_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, file_deletion_message);
}

int net_timelapse_file_delete_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, file_deletion_message);
}

int net_timelapse_file_cover_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, cover_message);
}

int net_timelapse_file_cover_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, cover_message);
}

MESSAGES(timelapse, //
         MESSAGE("timelapse-cfg", nets_param_timelapse_cfg_init, net_timelapse_cfg_x2s, net_timelapse_cfg_s2x,
                 configuration_message),
         HOST_MESSAGE("timelapse-date", net_timelapse_date_t, net_timelapse_date_x2s, net_timelapse_date_s2x,
                      date_message),
         HOST_MESSAGE("timelapse-task", net_timelapse_task_t, net_timelapse_task_x2s, net_timelapse_task_s2x,
                      task_message),
         HOST_MESSAGE("timelapse-file", net_timelapse_file_t, net_timelapse_file_x2s, net_timelapse_file_s2x,
                      search_message),
         HOST_MESSAGE("timelapse-download", net_timelapse_download_t, net_timelapse_download_x2s,
                      net_timelapse_download_s2x, download_message),
         HOST_MESSAGE("timelapse-task-delete", net_timelapse_task_delete_t, net_timelapse_task_delete_x2s,
                      net_timelapse_task_delete_s2x, task_deletion_message),
         HOST_MESSAGE("timelapse-file-delete", net_timelapse_file_delete_t, net_timelapse_file_delete_x2s,
                      net_timelapse_file_delete_s2x, file_deletion_message),
         HOST_MESSAGE("timelapse-file-cover", net_timelapse_file_cover_t, net_timelapse_file_cover_x2s,
                      net_timelapse_file_cover_s2x, cover_message))
