// What is laid over the picture: the date, the channel's name, and the privacy masks.
#include "engine/engine.h"
#include "engine/registry.h"

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
    static constexpr Traits traits =
        HERE.parser("nets_osd_date_x2s")
            .writer("nets_osd_date_s2x", "OsdDate")
            .entry(Line::none)
            .write_entry(Line::none)
            .any_size()
            .title("date overlay", "Date and time as text over the picture, and where they stand.");
};
constexpr auto date_message = describe<DateFields>();

int check_name(net_osd_chn_v20_t &overlay)
{
    return net_check_dev_name(overlay.name);
}

struct NameFields : Description {
    using T = net_osd_chn_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0),
        text("name", AT(name)).then<check_name>().accepts("printable ASCII without $ & * / : ; < > ? \\ ` |"),
        flag("enable", AT(enable)),
        integer("topLeftX", AT(topLeftX)),
        integer("topLeftY", AT(topLeftY)),
        integer("enWatermark", AT(enWatermark)),
        integer("enBgcolor", AT(enBgcolor)),
    };
    static constexpr Traits traits =
        HERE.parser("nets_osd_chn_x2s")
            .writer("nets_osd_chn_s2x", "OsdChn")
            .entry(Line::none)
            .write_entry(Line::none)
            .unknown("xml parse not exist this one") // without a line break, meant
            .any_size()
            .title("channel name overlay", "The channel's name as text over the picture, and where it stands.");
};
constexpr auto name_message = describe<NameFields>();

// Privacy masks -----------------------------------------------------------------------------------

constexpr int most_masks = 8;

// A mask as its element tells it, or a part of it.
struct Mask {
    tag_net_shelter_v20_t values = {};
    int enable = 1;
    std::uint32_t seen = 0; // bit i: the i-th of the rows below was told
};

int note_seen(Mask &mask, std::uint32_t seen)
{
    mask.seen = seen;
    return 0;
}

struct MaskFields : Description {
    using T = Mask;
    static constexpr Field fields[] = {
        integer("id", AT(values.id)).in(0, most_masks - 1).required(),
        flag("enable", AT(enable)).accepts("0 takes the mask's rectangle away"),
        integer("layer", AT(values.layer)),
        integer("color", AT(values.color)),
        integer("topLeftX", AT(values.topLeftX)),
        integer("topLeftY", AT(values.topLeftY)),
        integer("width", AT(values.width)).at_least(0),
        integer("height", AT(values.height)).at_least(0),
    };
    static constexpr Traits traits = Traits{}.after<T, note_seen>();
};
constexpr auto mask_record = describe<MaskFields>();

// What an element may leave out, as rows of the above.
constexpr std::size_t first_partial = 2;
constexpr int tag_net_shelter_v20_t::*partial_values[] = {
    &tag_net_shelter_v20_t::layer,    &tag_net_shelter_v20_t::color, &tag_net_shelter_v20_t::topLeftX,
    &tag_net_shelter_v20_t::topLeftY, &tag_net_shelter_v20_t::width, &tag_net_shelter_v20_t::height,
};

// The masks that are held. The host may have left any count in the payload.
int held_masks(const tag_net_shelter_cfg_v20_t &config)
{
    return config.shelterNum < most_masks ? config.shelterNum : most_masks;
}

// The place of the mask that has the id, or the next free one; null without.
tag_net_shelter_v20_t *place_of(tag_net_shelter_cfg_v20_t &config, int id)
{
    for (int i = 0; i < held_masks(config); ++i)
        if (config.shelter[i].id == id)
            return &config.shelter[i];
    if (config.shelterNum < 0 || config.shelterNum >= most_masks)
        return nullptr;
    return &config.shelter[config.shelterNum++];
}

int merge_mask(tag_net_shelter_cfg_v20_t &config, const Mask &mask)
{
    tag_net_shelter_v20_t *place = place_of(config, mask.values.id);
    if (place == nullptr)
        return -1;
    if (mask.enable == 0)
        *place = {}; // it keeps its place, but no rectangle
    else
        for (std::size_t i = 0; i < std::size(partial_values); ++i)
            if ((mask.seen >> (first_partial + i) & 1) != 0)
                place->*partial_values[i] = mask.values.*partial_values[i];
    place->id = mask.values.id;
    return 0;
}

// A mask that is switched off is one that holds only its id.
Give give_mask(const tag_net_shelter_cfg_v20_t &config, Mask &mask, Item &item)
{
    if (static_cast<int>(item.index) >= held_masks(config))
        return Give::ended;
    mask.values = config.shelter[item.index];
    int held = 0;
    for (const auto value : partial_values)
        held |= mask.values.*value;
    mask.enable = held != 0 ? 1 : 0;
    return Give::written;
}

struct MaskListFields : Description {
    using T = tag_net_shelter_cfg_v20_t;
    static constexpr Field fields[] = {
        wires_part<T, merge_mask, give_mask>("Shelter", mask_record)
            .accepts("a mask that is held, or another one while fewer than eight are"),
    };
    // What the masks are merged into.
    static constexpr Field also_shown[] = {
        shown("Shelter", AT(shelter)).shown(mask_record, offsetof(Mask, values)),
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
    static constexpr Traits traits =
        HERE.parser("nets_pic_shelter_x2s")
            .writer("nets_pic_shelter_s2x", "PicShelter")
            .entry(Line::none)
            .write_entry(Line::none)
            .any_size()
            .title("privacy masks", "Opaque rectangles over the picture; parsed ones are merged by their id.");
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
    return read_component_wire<merge_mask>(config, node, name, mask_record);
}

MESSAGES(osd, //
         MESSAGE("osd-date", nets_param_osd_date_init, nets_osd_date_x2s, nets_osd_date_s2x, date_message),
         MESSAGE("osd-chn", nets_param_osd_chn_init, nets_osd_chn_x2s, nets_osd_chn_s2x, name_message),
         MESSAGE("pic-shelter", nets_param_pic_shelter_init, nets_pic_shelter_x2s, nets_pic_shelter_s2x, masks_message))
