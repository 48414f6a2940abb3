// What is laid over the picture: the date, the channel's name, and the privacy masks.
#include "engine/engine.h"
#include "engine/registry.h"
#include "values/values.h"

#include <net_public.h>

namespace netpublic {
namespace {

// Overlays ----------------------------------------------------------------------------------------

// Every other language reads as 1, which is written as English.
constexpr int language_other = 1;
constexpr Word overlay_language_list[] = {{0, "Chinese"}, {language_other, "English", Use::write}};
constexpr auto overlay_languages = words<overlay_language_list>();

struct DateFields : Description {
    using T = net_osd_date_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        flag("enable", AT(enable)),
        integer("topLeftX", AT(topLeftX)),
        integer("topLeftY", AT(topLeftY)),
        integer("width", AT(width)).at_least(0),
        integer("height", AT(height)).at_least(0),
        word("language", AT(language), overlay_languages).otherwise(language_other).fallback(language_other),
    };
    static constexpr Traits traits = HERE.parser("nets_osd_date_x2s")
                                         .writer("nets_osd_date_s2x", "OsdDate")
                                         .entry(Line::none)
                                         .write_entry(Line::none)
                                         .any_size();
};
constexpr auto date_message = describe<DateFields>();

int read_name(net_osd_chn_v20_t &overlay, TiXmlNode *node)
{
    return read_text(overlay.name, sizeof overlay.name, node) == 0 && net_check_dev_name(overlay.name) == 0 ? 0 : -1;
}

struct NameFields : Description {
    using T = net_osd_chn_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        custom<read_name>("name", AT(name)),
        flag("enable", AT(enable)),
        integer("topLeftX", AT(topLeftX)),
        integer("topLeftY", AT(topLeftY)),
        integer("enWatermark", AT(enWatermark)),
        integer("enBgcolor", AT(enBgcolor)),
        text("name", AT(name)).write_only(),
    };
    static constexpr auto written =
        order("channelId", "name", "enable", "topLeftX", "topLeftY", "enWatermark", "enBgcolor");
    static constexpr Traits traits = HERE.parser("nets_osd_chn_x2s")
                                         .writer("nets_osd_chn_s2x", "OsdChn")
                                         .entry(Line::none)
                                         .write_entry(Line::none)
                                         .unknown("xml parse not exist this one") // without a line break, meant
                                         .any_size();
};
constexpr auto name_message = describe<NameFields>();

// Privacy masks -----------------------------------------------------------------------------------

constexpr int most_masks = 8;

// A mask as its element tells it; in `present`, what it does tell is not 0.
struct Mask {
    tag_net_shelter_v20_t values;
    tag_net_shelter_v20_t present;
    int enable;
};

struct MaskFields : Description {
    using T = Mask;
    static constexpr Field fields[] = {
        preset(AT(enable), 1),
        integer("id", AT(values.id)).in(0, most_masks - 1).required(),
        flag("enable", AT(enable)),
        integer("layer", AT(values.layer)).marks(AT(present.layer)),
        integer("color", AT(values.color)).marks(AT(present.color)),
        integer("topLeftX", AT(values.topLeftX)).marks(AT(present.topLeftX)),
        integer("topLeftY", AT(values.topLeftY)).marks(AT(present.topLeftY)),
        integer("width", AT(values.width)).at_least(0).marks(AT(present.width)),
        integer("height", AT(values.height)).at_least(0).marks(AT(present.height)),
    };
    static constexpr Traits traits = Traits{}.clears();
};
constexpr auto mask_record = describe<MaskFields>();

// The place of the mask that has the id, or the next free one; null without. The host may have left any
// count in the payload.
tag_net_shelter_v20_t *place_of(tag_net_shelter_cfg_v20_t &config, int id)
{
    const int held = config.shelterNum < most_masks ? config.shelterNum : most_masks;
    for (int i = 0; i < held; ++i)
        if (config.shelter[i].id == id)
            return &config.shelter[i];
    if (config.shelterNum < 0 || config.shelterNum >= most_masks)
        return nullptr;
    return &config.shelter[config.shelterNum++];
}

int merge_mask(tag_net_shelter_cfg_v20_t &config, TiXmlNode *node)
{
    using Mine = tag_net_shelter_v20_t;
    static constexpr int Mine::*partial[] = {&Mine::layer,    &Mine::color, &Mine::topLeftX,
                                             &Mine::topLeftY, &Mine::width, &Mine::height};
    Mask mask = {};
    if (read_record(mask_record, &mask, node) != 0)
        return -1;
    Mine *place = place_of(config, mask.values.id);
    if (place == nullptr)
        return -1;
    if (mask.enable == 0)
        *place = Mine{}; // it keeps its place, but no rectangle
    else
        for (int Mine::*value : partial)
            if (mask.present.*value != 0)
                place->*value = mask.values.*value;
    place->id = mask.values.id;
    return 0;
}

// A mask that is switched off is one that holds only its id.
int write_enable(const tag_net_shelter_v20_t &mask, TiXmlElement *parent)
{
    const int held = mask.layer | mask.color | mask.topLeftX | mask.topLeftY | mask.width | mask.height;
    return append_int(parent, "enable", held != 0 ? 1 : 0);
}

struct WrittenMaskFields : Description {
    using T = tag_net_shelter_v20_t;
    static constexpr Field fields[] = {
        integer("id", AT(id)),
        custom<nullptr, write_enable>("enable", AT(id)),
        integer("layer", AT(layer)),
        integer("color", AT(color)),
        integer("topLeftX", AT(topLeftX)),
        integer("topLeftY", AT(topLeftY)),
        integer("width", AT(width)),
        integer("height", AT(height)),
    };
};
constexpr auto written_mask = describe<WrittenMaskFields>();

struct MaskListFields : Description {
    using T = tag_net_shelter_cfg_v20_t;
    static constexpr Field fields[] = {
        custom<merge_mask>("Shelter", AT(shelter)).shown(written_mask),
        list("Shelter", AT(shelter), written_mask).counted_by(AT(shelterNum)).write_only(),
    };
};
constexpr auto mask_list = describe<MaskListFields>();

struct MasksFields : Description {
    using T = tag_net_shelter_cfg_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        integer("logicChannel", AT(logicChannel)).at_least(0),
        integer("maxNum", AT(maxNum)).at_least(0).when(AT(maxNum), When::nonnegative),
        flag("enable", AT(enable)),
        part("shelterList", mask_list),
    };
    static constexpr Field also_shown[] = {shown("shelterNum", AT(shelterNum))};
    static constexpr Traits traits = HERE.parser("nets_pic_shelter_x2s")
                                         .writer("nets_pic_shelter_s2x", "PicShelter")
                                         .entry(Line::none)
                                         .write_entry(Line::none)
                                         .any_size();
};
constexpr auto masks_message = describe<MasksFields>();

} // namespace
} // namespace netpublic

using namespace netpublic;

int nets_osd_date_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, date_message);
}

int nets_osd_date_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, date_message);
}

int nets_osd_chn_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, name_message);
}

int nets_osd_chn_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, name_message);
}

int nets_pic_shelter_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, masks_message);
}

int nets_pic_shelter_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, masks_message);
}

int get_shelterList_from_xmlnode(tag_net_shelter_cfg_v20_t *config, TiXmlNode *node, const char *name)
{
    return read_component(config, node, name, mask_list);
}

int get_shelter_from_xmlnode(tag_net_shelter_cfg_v20_t *config, TiXmlNode *node, const char *name)
{
    return is_component(config, node, name) ? merge_mask(*config, node) : -1;
}

MESSAGES(osd, //
         MESSAGE("osd-date", nets_param_osd_date_init, nets_osd_date_x2s, nets_osd_date_s2x, date_message),
         MESSAGE("osd-chn", nets_param_osd_chn_init, nets_osd_chn_x2s, nets_osd_chn_s2x, name_message),
         MESSAGE("pic-shelter", nets_param_pic_shelter_init, nets_pic_shelter_x2s, nets_pic_shelter_s2x, masks_message))
