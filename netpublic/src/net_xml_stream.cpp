// Live view and encoding: live-view requests, encoder settings, encode tables, recorded-file headers.
#include "engine/engine.h"
#include "engine/records.h"
#include "engine/registry.h"
#include "toolkit/printed_size.h"
#include "values/tables.h"
#include "values/values.h"

#include <net_public.h>

#include <cstring>

namespace netpublic {
namespace {

// Live view ---------------------------------------------------------------------------------------

struct PreviewFields : Description {
    using T = net_preview_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        integer("handle", AT(handle)),
        word("streamType", AT(streamType), video_streams).upto(30).otherwise(STREAM_TYPE_MAIN),
        integer("preRec", AT(preRec)),
        integer("resolution", AT(resolution)),
        integer("fps", AT(fps)),
    };
    static constexpr Traits traits = HERE.parser("net_preview_x2s").sets_inited();
};
constexpr auto preview_message = describe<PreviewFields>();

// Encoder settings --------------------------------------------------------------------------------

constexpr int codec_untold = -1;
constexpr int codec_small = 0;
constexpr int codec_large = 1;
constexpr long long large_picture = 0x600000; // pixels

constexpr Word rate_control_list[] = {{1, "cbr"}, {0, "vbr"}};
constexpr auto rate_controls = words<rate_control_list>();

constexpr Word encoder_profile_list[] = {{0, "default"}, {1, "baseLine"}, {2, "high"}, {3, "main"}};
constexpr auto encoder_profiles = words<encoder_profile_list>();

int check_gop(net_compression_info_v20_t &info)
{
    return info.gopCur < info.gopMin || info.gopCur > info.gopMax ? -1 : 0;
}

struct GopFields : Description {
    using T = net_compression_info_v20_t;
    static constexpr Field fields[] = {
        integer("min", AT(gopMin)).at_least(0),
        integer("max", AT(gopMax)).at_least(0),
        integer("cur", AT(gopCur)).at_least(0),
    };
    static constexpr auto written = order("cur", "max", "min");
    static constexpr Traits traits = HERE.after<T, check_gop>();
};
constexpr auto gop_part = describe<GopFields>();

int choose_codec(net_compression_info_v20_t &info)
{
    if (info.videoEncType < 0) {
        info.videoEncTypeDefaulted = 1;
        info.videoEncType =
            static_cast<long long>(info.width) * info.height >= large_picture ? codec_large : codec_small;
    }
    return 0;
}

struct CompressionFields : Description {
    using T = net_compression_info_v20_t;
    static constexpr Field fields[] = {
        preset(AT(videoEncType), codec_untold),
        flag("audio", AT(audio)),
        integer("width", AT(width)).at_least(0),
        integer("height", AT(height)).at_least(0),
        word("encoderType", AT(encoderType), rate_controls).skipped().fallback(0), // not the client's to set
        integer("frame", AT(frame)).in(0, 30),
        integer("bitRate", AT(bitRate)).at_least(0),
        part("gop", gop_part),
        word("encoderProfile", AT(encoderProfile), encoder_profiles).otherwise(0).fallback(0),
        integer("videoEncType", AT(videoEncType)).at_least(0),
        text("resolutionName", AT(resolutionName)).write_only(),
    };
    static constexpr auto written = order("audio", "resolutionName", "width", "height", "encoderType", "frame",
                                          "bitRate", "encoderProfile", "videoEncType", "gop");
    static constexpr Traits traits = HERE.after<T, choose_codec>();
};
constexpr auto compression = describe<CompressionFields>();

struct EncoderFields : Description {
    using T = net_enc_cfg_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, 63),      flag("isNoTranslateFrame", AT(isNoTranslateFrame)),
        group("mainStream", AT(mainStream), compression),   group("subStream", AT(subStream), compression),
        group("thirdStream", AT(thirdStream), compression),
    };
    static constexpr Traits traits = HERE.parser("net_enc_x2s").writer("net_enc_s2x", "Compression").sets_inited();
};
constexpr auto encoder_message = describe<EncoderFields>();

// Encode tables -----------------------------------------------------------------------------------

constexpr int no_stream = -1;

// An encode table with the stream that it is for.
struct TypedTable {
    int type;
    net_encode_table_v20_t table;
};

struct EncodeTableFields : Description {
    using T = TypedTable;
    static constexpr Field fields[] = {
        word("type", AT(type), video_streams).otherwise(no_stream),
        group("resolution", AT(table.resolution), resolution_record),
        integer("defaultFramerate", AT(table.defaultFramerate)).at_least(0),
        integer("defaultGop", AT(table.defaultGop)).at_least(0),
        integer("defaultBitrate", AT(table.defaultBitrate)).at_least(0),
        int_list("framerateTable", AT(table.framerateTable), 0),
        int_list("bitrateTable", AT(table.bitrateTable), 0),
        integer("videoEncType", AT(table.videoEncType)),
    };
    static constexpr auto written = order("type", "resolution", "videoEncType", "defaultFramerate", "defaultBitrate",
                                          "defaultGop", "framerateTable", "bitrateTable");
    static constexpr Traits traits = HERE.parser("get_encodeTable_from_xmlnode").failure(Line::plain);
};
constexpr auto encode_table = describe<EncodeTableFields>();

int read_typed_table(TypedTable &typed, TiXmlNode *node)
{
    typed = {};
    typed.type = no_stream;
    return read_record(encode_table, &typed, node);
}

int read_encode_table(net_stream_info_v20_t &info, TiXmlNode *node)
{
    TypedTable typed;
    if (read_typed_table(typed, node) != 0)
        return -1;
    // Tables of the other streams, and those that do not say whose they are, are dropped on purpose.
    if (typed.type == STREAM_TYPE_MAIN)
        info.mainStream = typed.table;
    else if (typed.type == STREAM_TYPE_SUB)
        info.subStream = typed.table;
    return 0;
}

int write_encode_table(int type, const net_encode_table_v20_t &table, TiXmlElement *parent)
{
    const TypedTable typed = {type, table};
    return write_record(encode_table, &typed, append_element(parent, "encodeTable"));
}

int write_encode_tables(const net_stream_info_v20_t &info, TiXmlElement *parent)
{
    if (write_encode_table(STREAM_TYPE_MAIN, info.mainStream, parent) != 0)
        return -1;
    return write_encode_table(STREAM_TYPE_SUB, info.subStream, parent);
}

struct StreamInfoFields : Description {
    using T = net_stream_info_v20_t;
    static constexpr Field fields[] = {
        unsigned_longlong("channelBits", AT(channelBits)),
        custom<read_encode_table, write_encode_tables>("encodeTable", AT(mainStream))
            .shown(encode_table, offsetof(TypedTable, table)),
    };
    // The other table of the same name.
    static constexpr Field also_shown[] = {
        shown("subStream", AT(subStream)).shown(encode_table, offsetof(TypedTable, table)),
    };
    static constexpr Traits traits = HERE.parser("get_streamInfo_from_xmlnode").failure(Line::plain);
};
constexpr auto stream_info = describe<StreamInfoFields>();

// Stream information ------------------------------------------------------------------------------

constexpr int most_entries = 16;

// For a first walk that only finds out whether an entry can be read.
struct Trial {
    unsigned long long channelBits;
};

int try_encode_table(Trial &, TiXmlNode *node)
{
    TypedTable dropped;
    return read_typed_table(dropped, node);
}

struct TrialFields : Description {
    using T = Trial;
    static constexpr Field fields[] = {
        unsigned_longlong("channelBits", AT(channelBits)),
        custom<try_encode_table>("encodeTable", AT(channelBits)),
    };
    static constexpr Traits traits = HERE.parser("get_streamInfo_from_xmlnode").failure(Line::plain);
};
constexpr auto trial = describe<TrialFields>();

struct StreamInfoListFields : Description {
    using T = net_stream_info_list_v20_t;
    static constexpr Field fields[] = {
        list("StreamInfo", AT(entries), stream_info),
    };
    static constexpr Traits traits = HERE.parser("nets_param_stream_info_x2s").failure(Line::plain);
};
constexpr auto stream_info_message = describe<StreamInfoListFields>();

bool is_entry(const TiXmlNode *node)
{
    return answers_to(node->Value(), "StreamInfo");
}

// The number of entries that the list holds, at most most_entries; -1 when one of them cannot be read.
int try_entries(TiXmlNode *list)
{
    int count = 0;
    for (TiXmlNode *child = list->FirstChild(); child != nullptr && count < most_entries;
         child = child->NextSibling()) {
        if (!is_entry(child))
            continue;
        Trial dropped;
        if (read_record(trial, &dropped, child) != 0) {
            log_line(Line::plain, NET_HERE, "nets_param_stream_info_x2s");
            return -1;
        }
        ++count;
    }
    return count;
}

// The payload is changed only when the whole list can be read.
int read_stream_info(net_param_t *param, TiXmlNode *node)
{
    if (check_parser(stream_info_message, param, node) != 0)
        return -1;
    const int count = try_entries(node);
    if (count < 0)
        return -1;
    auto *entry = static_cast<net_stream_info_list_v20_t *>(param->data)->entries;
    const auto *end = entry + count;
    for (TiXmlNode *child = node->FirstChild(); entry != end; child = child->NextSibling()) {
        if (!is_entry(child))
            continue;
        std::memset(entry, 0, sizeof *entry);
        if (read_record(stream_info, entry, child) != 0)
            return -1;
        ++entry;
    }
    return 0;
}

// Encoding list -----------------------------------------------------------------------------------

struct EncodingListFields : Description {
    using T = net_enc_list_v20_t;
    static constexpr Field fields[] = {
        list("StreamInfo", AT(entries), stream_info).complain("enc list is too large\n"),
    };
    static constexpr Traits traits = HERE.parser("xml_enc_info_list_x2s").sets_inited();
};
constexpr auto encoding_list_message = describe<EncodingListFields>();

// The entries are counted in the envelope, out of the rows' reach.
int read_encoding_list(net_param_t *param, TiXmlNode *node)
{
    if (check_parser(encoding_list_message, param, node) != 0)
        return -1;
    auto &list = *static_cast<net_enc_list_v20_t *>(param->data);
    param->reserved1 = 0;
    for (TiXmlNode *child = node->FirstChild(); child != nullptr; child = child->NextSibling()) {
        if (!is_entry(child))
            continue;
        if (param->reserved1 == most_entries) {
            log_error(NET_HERE, "enc list is too large\n");
            continue;
        }
        if (read_record(stream_info, &list.entries[param->reserved1], child) != 0) {
            log_error(NET_HERE, "get stram info failed \n");
            return -1;
        }
        ++param->reserved1;
    }
    param->inited = 2;
    return 0;
}

// The printed size of the whole list is kept up as it grows: the root without children, then every
// entry. Its closing tag and the "more" child are not counted.
int write_encoding_list(const net_stream_info_v20_t *entries, int count, TiXmlElement *parent, int *cursor, int budget)
{
    auto *list = new_element("StreamInfoList", "version");
    if (list == nullptr)
        return -1;
    std::size_t size = printed_size(*list);
    int index = *cursor;
    for (; index < count; ++index) {
        auto *entry = new_element("StreamInfo");
        if (write_record(stream_info, &entries[index], entry) != 0) {
            delete entry;
            delete list;
            return -1;
        }
        size += printed_size(*entry);
        if (size > static_cast<std::size_t>(budget)) {
            log_error(NET_HERE, "encord table too big %d, cut down to less than %d\n", static_cast<int>(size), budget);
            delete entry;
            if (append_int(list, "more", 1) != 0) {
                delete list;
                return -1;
            }
            break;
        }
        list->LinkEndChild(entry);
    }
    *cursor = index;
    parent->LinkEndChild(list);
    return 0;
}

// Recorded-file header ----------------------------------------------------------------------------

using FileHeader = tag_net_file_header_v20_t;

int read_version(FileHeader &header, TiXmlNode *node)
{
    char version[16];
    if (read_text(version, sizeof version, node) != 0)
        return -1;
    std::memcpy(header.ver, version, sizeof header.ver);
    return 0;
}

int read_header_stream(FileHeader &header, TiXmlNode *node)
{
    const char *text;
    int code;
    if (view_text(&text, 31, node) != 0 || get_streamtype_from_str(&code, text, 32) != 0)
        return -1;
    header.streamType = static_cast<unsigned char>(code);
    return 0;
}

int read_frame_rate(FileHeader &header, TiXmlNode *node)
{
    int rate;
    if (read_int(&rate, node) != 0)
        return -1;
    header.frameRate = static_cast<unsigned char>(rate);
    return 0;
}

int read_file_time(tag_net_file_time_v20_t &time, TiXmlNode *node)
{
    tag_net_time_v20_t full = {};
    if (read_record(time_record, &full, node) != 0)
        return -1;
    time.year = static_cast<unsigned char>(full.year);
    time.month = static_cast<unsigned char>(full.month);
    time.day = static_cast<unsigned char>(full.day);
    time.hour = static_cast<unsigned char>(full.hour);
    time.minute = static_cast<unsigned char>(full.minute);
    time.second = static_cast<unsigned char>(full.second);
    return 0;
}

template <tag_net_file_time_v20_t FileHeader::*time> int read_header_time(FileHeader &header, TiXmlNode *node)
{
    return read_file_time(header.*time, node);
}

// Names the members; a time's children are read by their own record.
struct FileTimeFields : Description {
    using T = tag_net_file_time_v20_t;
    static constexpr Field fields[] = {
        shown("year", AT(year)), shown("month", AT(month)),   shown("day", AT(day)),
        shown("hour", AT(hour)), shown("minute", AT(minute)), shown("second", AT(second)),
    };
};
constexpr auto file_time = describe<FileTimeFields>();

struct FileHeaderFields : Description {
    using T = FileHeader;
    static constexpr Field fields[] = {
        custom<read_version>("ver", AT(ver)),
        unsigned_integer("width", AT(width)),
        unsigned_integer("height", AT(height)),
        custom<read_header_stream>("streamType", AT(streamType)),
        custom<read_frame_rate>("frameRate", AT(frameRate)),
        custom<read_header_time<&FileHeader::beginTime>>("beginTime", AT(beginTime)).shown(file_time),
        custom<read_header_time<&FileHeader::endTime>>("endTime", AT(endTime)).shown(file_time),
    };
    static constexpr Traits traits = HERE.parser("get_file_header_from_xmlnode").failure(Line::parser);
};
constexpr auto file_header = describe<FileHeaderFields>();

struct ReplayHeaderFields : Description {
    using T = net_replay_header_v20_t;
    static constexpr Field fields[] = {
        group("streamHeader", AT(streamHeader), file_header),
        integer("frm_tm_sec", AT(frm_tm_sec)),
        integer("play_tm_ms", AT(play_tm_ms)),
        integer("seq", AT(seq)),
    };
    static constexpr Traits traits = HERE.parser("net_param_replay_header_x2s").failure(Line::parser);
};
constexpr auto replay_header_message = describe<ReplayHeaderFields>();

// The body of a component reader that logs bad arguments as well.
int read_logged(const Table &table, Line line, const char *function, void *record, TiXmlNode *node, const char *key)
{
    if (is_component(record, node, key))
        return read_record(table, record, node);
    log_line(line, table.place(), function);
    return -1;
}

} // namespace
} // namespace netpublic

using namespace netpublic;

int net_preview_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, preview_message);
}

int net_enc_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, encoder_message);
}

int net_enc_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, encoder_message);
}

int nets_param_stream_info_x2s(net_param_t *param, TiXmlNode *node)
{
    return read_stream_info(param, node);
}

int nets_param_stream_info_s2x(net_param_t *, TiXmlElement *)
{
    return 0;
}

int xml_enc_info_list_x2s(net_param_t *param, TiXmlNode *node)
{
    return read_encoding_list(param, node);
}

int xml_enc_info_list_s2x(net_stream_info_v20_t *entries, int count, TiXmlElement *parent, int *cursor, int budget)
{
    if (entries == nullptr || parent == nullptr || cursor == nullptr || budget < 1 || *cursor < 0 || *cursor > count)
        return -1;
    return write_encoding_list(entries, count, parent, cursor, budget);
}

int net_param_replay_header_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, replay_header_message);
}

int get_compression_info_from_xmlnode(net_compression_info_v20_t *info, TiXmlNode *node, const char *key)
{
    return read_component(info, node, key, compression);
}

int get_resolution_from_xmlnode(net_resolution_info_v20_t *resolution, TiXmlNode *node, const char *key)
{
    return read_component_logged(resolution, node, key, resolution_record);
}

int get_encodeTable_from_xmlnode(net_stream_info_v20_t *info, TiXmlNode *node, const char *key)
{
    if (is_component(info, node, key))
        return read_encode_table(*info, node);
    log_line(Line::plain, NET_HERE, "get_encodeTable_from_xmlnode");
    return -1;
}

int get_streamInfo_from_xmlnode(net_stream_info_v20_t *info, TiXmlNode *node, const char *key)
{
    return read_logged(stream_info, Line::plain, "get_streamInfo_from_xmlnode", info, node, key);
}

int get_file_header_from_xmlnode(tag_net_file_header_v20_t *header, TiXmlNode *node)
{
    return read_logged(file_header, Line::parser, "get_file_header_from_xmlnode", header, node, nullptr);
}

MESSAGES(stream, //
         HOST_MESSAGE("preview", net_preview_v20_t, net_preview_x2s, nullptr, preview_message),
         MESSAGE("encoder", nets_param_enc_init, net_enc_x2s, net_enc_s2x, encoder_message),
         HOST_MESSAGE("stream-info", net_stream_info_list_v20_t, nets_param_stream_info_x2s, nets_param_stream_info_s2x,
                      stream_info_message, nullptr),
         MESSAGE("encoding-list", net_param_enc_list_init, xml_enc_info_list_x2s, nullptr, encoding_list_message),
         MESSAGE("replay-header", net_param_replay_header_init, net_param_replay_header_x2s, nullptr,
                 replay_header_message))
