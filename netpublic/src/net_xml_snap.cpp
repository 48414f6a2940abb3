// Still pictures: snapshot requests, crop, stored pictures, AI time-lapse snapshots.
#include "engine/engine.h"
#include "engine/registry.h"

#include <net_public.h>

namespace netpublic {
namespace {

// These messages spell the stream types differently from all others, and their case counts.
constexpr Word snap_stream_list[] = {{0, "main"}, {1, "sub"}, {4, "ext"}};
constexpr auto snap_streams = words<snap_stream_list>();

constexpr Word snap_type_list[] = {{1, "tlp"}};
constexpr auto snap_types = words<snap_type_list>();

constexpr Word tlp_type_list[] = {{1, "IFrame"}};
constexpr auto tlp_types = words<tlp_type_list>();

// The parsers take any payload size and log nothing.
constexpr Traits silent = Traits{}.any_size().entry(Line::none);

struct TlpControlFields : Description {
    using T = net_snap_tlp_t;
    static constexpr Field fields[] = {
        integer("specificTime", AT(specificTime)),
        word("tlpType", AT(tlpType), tlp_types).otherwise(0),
        integer("width", AT(width)),
        integer("height", AT(height)),
        integer("encType", AT(encType)),
        integer("utcTime", AT(utcTime)),
        integer("iFrameOffset", AT(iFrameOffset)),
    };
};
constexpr auto tlp_control = describe<TlpControlFields>();

struct SnapFields : Description {
    using T = net_snap_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        integer("logicChannel", AT(logicChannel)).at_least(0),
        text("fileName", AT(fileName)),
        integer("time", AT(time)),
        integer("pictureSize", AT(pictureSize)),
        integer("fullFrame", AT(fullFrame)),
        integer("utcTime", AT(utcTime)),
        word("streamType", AT(streamType), snap_streams).exact().kept(),
        group("snapTlpParam", AT(snapTlpParam), tlp_control),
        word("snapType", AT(snapType), snap_types).otherwise(0),
    };
    static constexpr Traits traits = silent.title("snapshot", "Asks for a still picture of a channel.");
};
constexpr auto snap_message = describe<SnapFields>();

struct SnapTlpFileFields : Description {
    using T = net_snaptlps_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        text("fileName", AT(fileName)),
        integer("fileSize", AT(fileSize)),
        unsigned_integer("aiType", AT(aiType)),
    };
    static constexpr Traits traits = silent.title("time-lapse snapshot", "Names a file of time-lapse snapshots.");
};
constexpr auto snap_tlp_file_message = describe<SnapTlpFileFields>();

struct CropFields : Description {
    using T = net_crop_cfg_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, 63),
        integer("cropWidth", AT(cropWidth)).at_least(0),
        integer("cropHeight", AT(cropHeight)).at_least(0),
        integer("mainWidth", AT(mainWidth)),
        integer("mainHeight", AT(mainHeight)),
        integer("subWidth", AT(subWidth)),
        integer("subHeight", AT(subHeight)),
        integer("topLeftX", AT(topLeftX)),
        integer("topLeftY", AT(topLeftY)),
        integer("version", AT(version)),
    };
    static constexpr Traits traits = silent.title("picture crop", "Which part of the picture a channel shows.");
};
constexpr auto crop_message = describe<CropFields>();

struct CropSnapFields : Description {
    using T = net_crop_snap_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0), integer("width", AT(width)).in(0, 65535),
        integer("heigth", AT(height)).in(0, 65535), // spelled so by the peers
    };
    static constexpr Traits traits = silent.title("cropped snapshot", "Asks for a still picture of the cropped part.");
};
constexpr auto crop_snap_message = describe<CropSnapFields>();

// Only the writer compares the payload's size.
struct ImageFileFields : Description {
    using T = net_image_file_info_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        integer("fileSize", AT(fileSize)),
        text("imageName", AT(imageName)),
        integer("delete", AT(delete_)),
    };
    static constexpr Traits traits = HERE.writer("net_param_image_file_info_s2x", "imageFileInfo")
                                         .entry(Line::none)
                                         .any_size_read()
                                         .title("stored picture", "Name and size of a picture file, and its deletion.");
};
constexpr auto image_file_message = describe<ImageFileFields>();

// The root's attribute is "Version", with a capital.
struct AiSnapTlpsFields : Description {
    using T = net_ai_snaptlps_t;
    static constexpr Field fields[] = {integer("enable", AT(enable)), integer("osdEnable", AT(osdEnable))};
    static constexpr Traits traits =
        silent.writer("", "aiSnapTlps")
            .write_entry(Line::none)
            .capital_version()
            .title("AI time-lapse snapshots", "Switches time-lapse snapshots of detections, and their captions.");
};
constexpr auto ai_snap_tlps_message = describe<AiSnapTlpsFields>();

} // namespace
} // namespace netpublic

using namespace netpublic;

int nets_param_snap_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, snap_message);
}

int nets_param_snaptlps_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, snap_tlp_file_message);
}

int nets_param_crop_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, crop_message);
}

int nets_param_crop_snap_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, crop_snap_message);
}

int net_param_image_file_info_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, image_file_message);
}

int net_param_image_file_info_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, image_file_message);
}

int net_ai_snaptlps_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, ai_snap_tlps_message);
}

int net_ai_snaptlps_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, ai_snap_tlps_message);
}

int get_snaptlp_ctrl_from_xmlnode(net_snap_tlp_t *control, TiXmlNode *node, const char *key)
{
    return read_component(control, node, key, tlp_control);
}

MESSAGES(snap, //
         MESSAGE("snap", net_param_snap_init, nets_param_snap_x2s, nullptr, snap_message, "Snap"),
         MESSAGE("snaptlps", net_param_snaptlps_init, nets_param_snaptlps_x2s, nullptr, snap_tlp_file_message,
                 "SnapTlps"),
         MESSAGE("crop", nets_param_crop_init, nets_param_crop_x2s, nullptr, crop_message, "Crop"),
         HOST_MESSAGE("crop-snap", net_crop_snap_t, nets_param_crop_snap_x2s, nullptr, crop_snap_message, "CropSnap"),
         MESSAGE("image-file-info", net_param_image_file_info_init, net_param_image_file_info_x2s,
                 net_param_image_file_info_s2x, image_file_message),
         MESSAGE("ai-snaptlps", net_param_ai_snaptlps_init, net_ai_snaptlps_x2s, net_ai_snaptlps_s2x,
                 ai_snap_tlps_message))
