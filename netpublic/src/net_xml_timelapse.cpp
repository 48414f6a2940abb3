// Time-lapse recording: configuration, calendar, tasks, file search, download, deletion, cover.
#include "engine/engine.h"
#include "engine/records.h"
#include "engine/registry.h"
#include "values/tables.h"

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
template <class Record> constexpr Field task_type(Member<Record, int> member)
{
    return word("taskType", member, task_types)
        .otherwise(NET_TIMELAPSE_JPEG)
        .complain("timelapse file type err:%s\n")
        .code_line("timelapse xml file type err:%d\n");
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
        task_type(AT(taskType)),
        integer("neverEnd", AT(neverEnd)),
        word("streamType", AT(streamType), video_streams)
            .otherwise(0)
            .complain("timelapse stream type err:%s\n")
            .code_line("timelapse xml stream type err:%d\n"),
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
        message_at(HERE)
            .parser("net_timelapse_cfg_x2s")
            .writer("net_timelapse_cfg_s2x", "timelapseCfg")
            .title("time-lapse recording settings", "When and how a channel makes time-lapse films or pictures.");
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
        message_at(HERE)
            .parser("net_timelapse_date_x2s")
            .writer("net_timelapse_date_s2x", "timelapseDateTbl")
            .title("time-lapse calendar", "On which days of which years a time-lapse task has material.");
};
constexpr auto date_message = describe<DateFields>();

// Tasks -------------------------------------------------------------------------------------------

struct TaskItemFields : Description {
    using T = net_timelapse_task_item_t;
    static constexpr Field fields[] = {
        text("id", AT(id)),
        task_type(AT(taskType)),
        text("properties", AT(properties)),
        word("taskState", AT(taskState), task_states).code_line("timelapse xml task state err:%d\n"),
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
    static constexpr Traits traits = message_at(HERE)
                                         .parser("net_timelapse_task_x2s")
                                         .writer("net_timelapse_task_s2x", "timelapseTasks")
                                         .title("time-lapse tasks", "The tasks of a device and their states.");
};
constexpr auto task_message = describe<TaskFields>();

// File search -------------------------------------------------------------------------------------

using Search = net_timelapse_file_t;
using File = net_timelapse_file_item_t;

// Fewer than the parser holds: a longer result takes several messages.
constexpr int most_files_written = 40;

// The width is read as "resoWidth" and written as "resowidth"; peers know both.
struct OriginalFields : Description {
    using T = net_timelapse_original_t;
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

// A picture: the small one, or the full one of a jpeg task, which is only written.
template <class Picture> struct PictureFields : Description {
    using T = Picture;
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
constexpr auto thumbnail = describe<PictureFields<net_timelapse_thumbnail_t>>();
constexpr auto full_picture = describe<PictureFields<net_timelapse_original_t>>();

template <int flag> int add_flag(File &file)
{
    file.flags |= flag;
    return 0;
}

template <int flag> bool has_flag(const File &file)
{
    return (file.flags & flag) != 0;
}

struct FileFields : Description {
    using T = File;
    static constexpr Field fields[] = {
        preset(AT(flags), 0),
        group("original", AT(original), original).then<add_flag<NET_TIMELAPSE_FILE_ORIGINAL>>(),
        group("thumbnail", AT(thumbnail), thumbnail).then<add_flag<NET_TIMELAPSE_FILE_THUMBNAIL>>(),
    };
};
constexpr auto file_item = describe<FileFields>();

// Of a film, the film is written whatever the flags say, and nothing else.
struct FilmFields : Description {
    using T = File;
    static constexpr Field fields[] = {group("original", AT(original), original).write_only()};
};
constexpr auto film_item = describe<FilmFields>();

struct PictureItemFields : Description {
    using T = File;
    static constexpr Field fields[] = {
        group("original", AT(original), full_picture).when<has_flag<NET_TIMELAPSE_FILE_ORIGINAL>>().write_only(),
        group("thumbnail", AT(thumbnail), thumbnail).when<has_flag<NET_TIMELAPSE_FILE_THUMBNAIL>>().write_only(),
    };
};
constexpr auto picture_item = describe<PictureItemFields>();

bool is_film(const Search &search)
{
    return search.taskType == NET_TIMELAPSE_MP4;
}

bool is_picture(const Search &search)
{
    return !is_film(search);
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
        task_type(AT(taskType)),
        integer("totalNum", AT(totalNum)),
        integer("finished", AT(finished)),
        list("item", AT(item), file_item).counted_by(AT(itemCount)).complain(too_many_items).read_only(),
        list("item", AT(item), film_item)
            .counted_by(AT(itemCount))
            .when<is_film>()
            .write_only()
            .first(most_files_written),
        list("item", AT(item), picture_item)
            .counted_by(AT(itemCount))
            .when<is_picture>()
            .write_only()
            .first(most_files_written),
    };
    static constexpr auto written =
        order("channelId", "handle", "totalNum", "finished", "uid", "id", "taskType", "item", "item");
    static constexpr Traits traits =
        message_at(HERE)
            .parser("net_timelapse_file_x2s")
            .writer("net_timelapse_file_s2x", "timelapseFileSearch")
            .title("time-lapse file search",
                   "Which films or pictures of a task are searched for; the reply holds at most 40 of them.");
};
constexpr auto search_message = describe<SearchFields>();

// Download, deletion, cover -----------------------------------------------------------------------

struct DownloadFields : Description {
    using T = net_timelapse_download_t;
    static constexpr Field fields[] = {
        text("id", AT(id)),
        task_type(AT(taskType)),
        text("position", AT(position)),
    };
    static constexpr Traits traits =
        message_at(HERE)
            .parser("net_timelapse_download_x2s")
            .writer("net_timelapse_download_s2x", "timelapseDownload")
            .title("time-lapse download", "Which file of a task is fetched, and from where on.");
};
constexpr auto download_message = describe<DownloadFields>();

struct TaskDeletionFields : Description {
    using T = net_timelapse_task_delete_t;
    static constexpr Field fields[] = {text("uid", AT(uid)), text("id", AT(id))};
    static constexpr Traits traits = message_at(HERE)
                                         .parser("net_timelapse_task_delete_x2s")
                                         .writer("net_timelapse_task_delete_s2x", "timelapseTaskDel")
                                         .title("time-lapse task deletion", "Deletes a task together with its files.");
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
        task_type(AT(taskType)),
        list("item", AT(item), deleted_file).counted_by(AT(itemCount)).complain(too_many_items),
    };
    static constexpr Traits traits = message_at(HERE)
                                         .parser("net_timelapse_file_delete_x2s")
                                         .writer("net_timelapse_file_delete_s2x", "timelapseFileDel")
                                         .title("time-lapse file deletion", "Deletes files of tasks, at most 128.");
};
constexpr auto file_deletion_message = describe<FileDeletionFields>();

struct CoverFields : Description {
    using T = net_timelapse_file_cover_t;
    static constexpr Field fields[] = {text("id", AT(id))};
    static constexpr Traits traits = message_at(HERE)
                                         .parser("net_timelapse_file_cover_x2s")
                                         .writer("net_timelapse_file_cover_s2x", "timelapseCover")
                                         .title("time-lapse cover picture", "Asks for the cover picture of a file.");
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
