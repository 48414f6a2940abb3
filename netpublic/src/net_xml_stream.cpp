// Live view and encoding: live-view requests, encoder settings, encode tables, recorded-file headers.
#include "engine/engine.h"
#include "engine/records.h"
#include "engine/registry.h"
#include "toolkit/paging.h"
#include "values/tables.h"

#include <net_public.h>

#include <algorithm>
#include <climits>
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
    static constexpr Traits traits =
        HERE.parser("net_preview_x2s").sets_inited().title("live view", "Asks for the live stream of a channel.");
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
        integer("min", AT(gopMin)).at_least(0).accepts("not above the current one").sample("25"),
        integer("max", AT(gopMax)).at_least(0).accepts("not below the current one").sample("100"),
        integer("cur", AT(gopCur)).at_least(0).accepts("between the least and the most").sample("50"),
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
        part("gop", gop_part).accepts("the current length lies between the ends"),
        word("encoderProfile", AT(encoderProfile), encoder_profiles).otherwise(0).fallback(0),
        integer("videoEncType", AT(videoEncType)).at_least(0),
        text("resolutionName", AT(resolutionName)).write_only(),
    };
    static constexpr auto written = order("audio", "resolutionName", "width", "height", "encoderType", "frame",
                                          "bitRate", "encoderProfile", "videoEncType", "gop");
    static constexpr Field also_shown[] = {shown("videoEncTypeDefaulted", AT(videoEncTypeDefaulted))};
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
    static constexpr Traits traits =
        HERE.parser("net_enc_x2s")
            .writer("net_enc_s2x", "Compression")
            .sets_inited()
            .title("encoder settings", "Size, frame rate, bit rate and codec of a channel's three streams.");
};
constexpr auto encoder_message = describe<EncoderFields>();

// Encode tables -----------------------------------------------------------------------------------

constexpr int no_stream = -1;

// An encode table without its resolution's name, which no message carries.
struct PictureSize {
    int width;
    int height;
};
constexpr auto picture_size = describe<SizeFields<PictureSize>>();

struct EncodeTable {
    int videoEncType;
    PictureSize resolution;
    int defaultFramerate;
    int defaultBitrate;
    int framerateTable[25];
    int bitrateTable[16];
    int defaultGop;
};

// A table with the stream that it is for.
template <class Table> struct Typed {
    int type = no_stream;
    Table table = {};
};
using TypedTable = Typed<EncodeTable>;

template <class Table, const auto &size> struct EncodeTableFields : Description {
    using T = Typed<Table>;
    static constexpr Field fields[] = {
        word("type", AT(type), video_streams).otherwise(no_stream),
        group("resolution", AT(table.resolution), size),
        integer("defaultFramerate", AT(table.defaultFramerate)).at_least(0),
        integer("defaultGop", AT(table.defaultGop)).at_least(0),
        integer("defaultBitrate", AT(table.defaultBitrate)).at_least(0),
        int_list("framerateTable", AT(table.framerateTable), 0),
        int_list("bitrateTable", AT(table.bitrateTable), 0),
        integer("videoEncType", AT(table.videoEncType)),
    };
    static constexpr auto written = order("type", "resolution", "videoEncType", "defaultFramerate", "defaultBitrate",
                                          "defaultGop", "framerateTable", "bitrateTable");
    static constexpr Traits traits =
        HERE.parser("get_encodeTable_from_xmlnode").entry(Line::plain).failure(Line::plain);
};
constexpr auto encode_table = describe<EncodeTableFields<EncodeTable, picture_size>>();
// The payload's tables.
using PayloadTable = Typed<net_encode_table_v20_t>;
constexpr auto payload_table = describe<EncodeTableFields<net_encode_table_v20_t, resolution_record>>();

template <class To, class From> void copy_table(To &to, const From &from)
{
    to.videoEncType = from.videoEncType;
    to.resolution.width = from.resolution.width;
    to.resolution.height = from.resolution.height;
    to.defaultFramerate = from.defaultFramerate;
    to.defaultBitrate = from.defaultBitrate;
    std::memcpy(to.framerateTable, from.framerateTable, sizeof to.framerateTable);
    std::memcpy(to.bitrateTable, from.bitrateTable, sizeof to.bitrateTable);
    to.defaultGop = from.defaultGop;
}

// Tables of the other streams, and those that do not say whose they are, are dropped on purpose.
int take_encode_table(net_stream_info_v20_t &info, const TypedTable &typed)
{
    if (typed.type != STREAM_TYPE_MAIN && typed.type != STREAM_TYPE_SUB)
        return 0;
    net_encode_table_v20_t &table = typed.type == STREAM_TYPE_MAIN ? info.mainStream : info.subStream;
    std::memset(table.resolution.name, 0, sizeof table.resolution.name);
    copy_table(table, typed.table);
    return 0;
}

Give give_encode_table(const net_stream_info_v20_t &info, TypedTable &typed, Item &item)
{
    if (item.index > STREAM_TYPE_SUB)
        return Give::ended;
    typed.type = static_cast<int>(item.index);
    copy_table(typed.table, item.index == STREAM_TYPE_MAIN ? info.mainStream : info.subStream);
    return Give::written;
}

struct StreamInfoFields : Description {
    using T = net_stream_info_v20_t;
    static constexpr Field fields[] = {
        unsigned_longlong("channelBits", AT(channelBits)),
        wires_part<T, take_encode_table, give_encode_table>("encodeTable", encode_table)
            .accepts("the table of the main or the sub stream; others are read and dropped"),
    };
    // What the tables are stored in.
    static constexpr Field also_shown[] = {
        shown("mainStream", AT(mainStream)).shown(payload_table, offsetof(PayloadTable, table)),
        shown("subStream", AT(subStream)).shown(payload_table, offsetof(PayloadTable, table)),
    };
    static constexpr Traits traits = HERE.parser("get_streamInfo_from_xmlnode").entry(Line::plain).failure(Line::plain);
};
constexpr auto stream_info = describe<StreamInfoFields>();

// Stream information ------------------------------------------------------------------------------

constexpr int most_entries = 16;

struct StreamInfoListFields : Description {
    using T = net_stream_info_list_v20_t;
    static constexpr Field fields[] = {
        list("StreamInfo", AT(entries), stream_info),
    };
};
constexpr auto stream_info_payload = describe<StreamInfoListFields>();

struct StreamInfoWalk {
    net_stream_info_v20_t *entries = nullptr; // null in the first walk

    StreamInfoWalk() = default;
    StreamInfoWalk(const StreamInfoWalk &, net_stream_info_list_v20_t &payload) : entries(payload.entries) {}
};

// One entry; the two tables of a record of its own would be too much for the stack.
struct Entry {
    net_stream_info_v20_t *info; // null when it is only checked
    unsigned long long channelBits = 0;

    Entry(const StreamInfoWalk &walk, unsigned int index)
        : info(walk.entries != nullptr ? &walk.entries[index] : nullptr)
    {
        if (info != nullptr)
            *info = {};
    }
};

int take_entry_table(Entry &entry, const TypedTable &typed)
{
    return entry.info != nullptr ? take_encode_table(*entry.info, typed) : 0;
}

struct EntryFields : Description {
    using T = Entry;
    static constexpr Field fields[] = {
        unsigned_longlong("channelBits", AT(channelBits)),
        wires_part<T, take_entry_table>("encodeTable", encode_table)
            .accepts("the table of the main or the sub stream; others are read and dropped"),
    };
    static constexpr Traits traits = HERE.parser("get_streamInfo_from_xmlnode").failure(Line::plain);
};
constexpr auto entry_record = describe<EntryFields>();

int take_entry(StreamInfoWalk &, const Entry &entry)
{
    if (entry.info != nullptr)
        entry.info->channelBits = entry.channelBits;
    return 0;
}

int take_stream_info(net_param_t &, const StreamInfoWalk &)
{
    return 0; // the entries have been stored as they were read
}

struct StreamInfoMessageFields : Description {
    using T = StreamInfoWalk;
    static constexpr Field fields[] = {
        wires_part<T, take_entry>("StreamInfo", entry_record, most_entries).stop_when_full(),
    };
    static constexpr Traits traits =
        HERE.parser("nets_param_stream_info_x2s")
            .failure(Line::plain)
            .tried<net_stream_info_list_v20_t, take_stream_info>()
            .layout(stream_info_payload)
            .title("stream information", "What the streams of a peer's channels can encode.");
};
constexpr auto stream_info_message = describe<StreamInfoMessageFields>();

// Encoding list -----------------------------------------------------------------------------------

struct EncodingListFields : Description {
    using T = net_enc_list_v20_t;
    static constexpr Field fields[] = {
        list("StreamInfo", AT(entries), stream_info),
    };
};
constexpr auto encoding_payload = describe<EncodingListFields>();

struct EncodingMessageFields : Description {
    using T = net_param_t;
    static constexpr Field fields[] = {
        preset(AT(reserved1), 0),
        list_behind<most_entries>("StreamInfo", AT(data), stream_info)
            .counted_by(AT(reserved1))
            .complain("enc list is too large\n")
            .item_line("get stram info failed \n"), // spelled so
    };
    static constexpr Traits traits =
        HERE.parser("xml_enc_info_list_x2s")
            .sets_inited()
            .envelope<net_enc_list_v20_t>()
            .layout(encoding_payload)
            .title("encoding list", "What the streams of the channels can encode, one reply or several.");
};
constexpr auto encoding_list_message = describe<EncodingMessageFields>();

// A reply, which ends where the host's budget does.
struct EncodingPage {
    net_stream_info_v20_t *entries;
    int count;
    int more;
};

struct EncodingPageFields : Description {
    using T = EncodingPage;
    static constexpr Field fields[] = {
        list_behind<INT_MAX>("StreamInfo", AT(entries), stream_info).counted_by(AT(count)).write_only(),
        integer("more", AT(more)).when(AT(more)).write_only(),
    };
    static constexpr Traits traits =
        HERE.writer("xml_enc_info_list_s2x", "StreamInfoList").write_entry(Line::none).layout(encoding_payload);
};
constexpr auto encoding_page = describe<EncodingPageFields>();

// Recorded-file header ----------------------------------------------------------------------------

using FileHeader = tag_net_file_header_v20_t;

int read_version(const char *text, FileHeader &header)
{
    std::memset(header.ver, 0, sizeof header.ver);
    std::memcpy(header.ver, text, strnlen(text, sizeof header.ver));
    return 0;
}

int read_header_stream(const char *text, FileHeader &header)
{
    int code;
    if (get_streamtype_from_str(&code, text, 32) != 0)
        return -1;
    header.streamType = static_cast<unsigned char>(code);
    return 0;
}

// The low bytes of what a time's children may hold.
struct FileTimeFields : Description {
    using T = tag_net_file_time_v20_t;
    static constexpr Field fields[] = {
        byte("year", AT(year)).at_least(0), byte("month", AT(month)).in(1, 12),   byte("day", AT(day)).in(1, 31),
        byte("hour", AT(hour)).in(0, 23),   byte("minute", AT(minute)).in(0, 59), byte("second", AT(second)).in(0, 59),
    };
};
constexpr auto file_time = describe<FileTimeFields>();

// Stored as a whole: what is missing is 0.
struct FileTime : tag_net_file_time_v20_t {};

int take_file_time(tag_net_file_time_v20_t &time, const FileTime &read)
{
    time = read;
    return 0;
}

struct FileHeaderFields : Description {
    using T = FileHeader;
    static constexpr Field fields[] = {
        converted<read_version>("ver", AT(ver)).upto(15).accepts("any text, of which four characters are kept"),
        unsigned_integer("width", AT(width)),
        unsigned_integer("height", AT(height)),
        converted<read_header_stream>("streamType", AT(streamType))
            .upto(31)
            .spelled(stream_types)
            .accepts("the beginning of a stream's word"),
        byte("frameRate", AT(frameRate)),
        wire<take_file_time>("beginTime", AT(beginTime), file_time),
        wire<take_file_time>("endTime", AT(endTime), file_time),
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
    static constexpr Traits traits =
        HERE.parser("net_param_replay_header_x2s")
            .failure(Line::parser)
            .title("replay header", "The header of a recorded file, ahead of the replayed data.");
};
constexpr auto replay_header_message = describe<ReplayHeaderFields>();

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
    return parse_message(param, node, stream_info_message);
}

int nets_param_stream_info_s2x(net_param_t *, TiXmlElement *)
{
    return 0;
}

int xml_enc_info_list_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, encoding_list_message);
}

int xml_enc_info_list_s2x(net_stream_info_v20_t *entries, int count, TiXmlElement *parent, int *cursor, int budget)
{
    if (entries == nullptr || parent == nullptr || cursor == nullptr || budget < 1 || *cursor < 0 || *cursor > count)
        return -1;
    std::size_t size = 0;
    const int end = append_page(encoding_page, entries, *cursor, count, parent, budget, &size);
    if (size > static_cast<std::size_t>(budget))
        log_error(NET_HERE, "encord table too big %d, cut down to less than %d\n", static_cast<int>(size), budget);
    if (end < 0)
        return -1;
    *cursor = end;
    return 0;
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
    return read_component_wire_logged<take_encode_table>(info, node, key, encode_table);
}

int get_streamInfo_from_xmlnode(net_stream_info_v20_t *info, TiXmlNode *node, const char *key)
{
    return read_component_logged(info, node, key, stream_info);
}

int get_file_header_from_xmlnode(tag_net_file_header_v20_t *header, TiXmlNode *node)
{
    return read_component_logged(header, node, nullptr, file_header);
}

#ifdef NETPUBLIC_DESCRIBED
// The encoding list's writer as the tools call all of them: all entries in one reply.
static int xml_enc_info_list_s2x(net_param_t *param, TiXmlElement *parent)
{
    if (param == nullptr || param->data == nullptr || param->dataSize != sizeof(net_enc_list_v20_t))
        return -1;
    int cursor = 0;
    const int count = static_cast<int>(std::min<unsigned int>(param->reserved1, most_entries));
    return xml_enc_info_list_s2x(static_cast<net_enc_list_v20_t *>(param->data)->entries, count, parent, &cursor,
                                 INT_MAX);
}
#endif

MESSAGES(stream, //
         HOST_MESSAGE("preview", net_preview_v20_t, net_preview_x2s, nullptr, preview_message, "Preview"),
         MESSAGE("encoder", nets_param_enc_init, net_enc_x2s, net_enc_s2x, encoder_message),
         HOST_MESSAGE("stream-info", net_stream_info_list_v20_t, nets_param_stream_info_x2s, nets_param_stream_info_s2x,
                      stream_info_message, nullptr, "StreamInfoList"),
         MESSAGE("encoding-list", net_param_enc_list_init, xml_enc_info_list_x2s, xml_enc_info_list_s2x,
                 encoding_list_message, encoding_page),
         MESSAGE("replay-header", net_param_replay_header_init, net_param_replay_header_x2s, nullptr,
                 replay_header_message, "ReplayHeader"))
