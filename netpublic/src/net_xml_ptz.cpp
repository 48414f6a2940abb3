// Pan, tilt and zoom: commands, presets, cruises, the serial line, zoom and focus, guard and positions.
#include "engine/engine.h"
#include "engine/registry.h"
#include "values/tables.h"
#include "values/values.h"

#include <net_public.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace netpublic {
namespace {

constexpr int last_channel = 63;

// The codes keep their gaps and their odd order: 22 to 24 are not used, and of the steps the decreasing
// one has the smaller code.
constexpr Word command_list[] = {
    {NET_PTZ_STOP, "stop"},
    {NET_PTZ_LEFT, "left"},
    {NET_PTZ_RIGHT, "right"},
    {NET_PTZ_UP, "up"},
    {NET_PTZ_DOWN, "down"},
    {NET_PTZ_LEFT_UP, "leftUp"},
    {NET_PTZ_LEFT_DOWN, "leftDown"},
    {NET_PTZ_RIGHT_UP, "rightUp"},
    {NET_PTZ_RIGHT_DOWN, "rightDown"},
    {NET_PTZ_IRIS_DEC, "irisDec"},
    {NET_PTZ_IRIS_INC, "irisInc"},
    {NET_PTZ_ZOOM_DEC, "zoomDec"},
    {NET_PTZ_ZOOM_INC, "zoomInc"},
    {NET_PTZ_FOCUS_DEC, "focusDec"},
    {NET_PTZ_FOCUS_INC, "focusInc"},
    {NET_PTZ_SET_POS, "setPos"},
    {NET_PTZ_DEL_POS, "delPos"},
    {NET_PTZ_TO_POS, "toPos"},
    {NET_PTZ_AUTO, "auto"},
    {NET_PTZ_HIGH_SPEED, "highSpeed"},
    {NET_PTZ_START_PATROL, "startPatrol"},
    {NET_PTZ_STOP_PATROL, "stopPatrol"},
    {NET_PTZ_CLEAR_PATROL, "clearPatrol"},
    {NET_PTZ_ENABLE_PATTERN, "enablePattern"},
    {NET_PTZ_START_PATTERN, "startPattern"},
    {NET_PTZ_STOP_PATTERN, "stopPattern"},
    {NET_PTZ_START_SAVE_PATTERN, "startSavePattern"},
    {NET_PTZ_STOP_SAVE_PATTERN, "stopSavePattern"},
    {NET_PTZ_CLEAN_PATTERN, "cleanPattern"},
    {NET_PTZ_ZOOM_POS, "zoomPos"},
    {NET_PTZ_FOCUS_POS, "focusPos"},
    {NET_PTZ_ZOOM_STEP_INC, "zoomStepInc"},
    {NET_PTZ_ZOOM_STEP_DEC, "zoomStepDec"},
    {NET_PTZ_FOCUS_STEP_INC, "focusStepInc"},
    {NET_PTZ_FOCUS_STEP_DEC, "focusStepDec"},
    {NET_PTZ_SET_GRD, "setGrd"},
    {NET_PTZ_TO_GRD, "toGrd"},
};
constexpr auto commands = words<command_list>();

// Movement commands -------------------------------------------------------------------------------

struct ControlFields : Description {
    using T = net_ptz_info_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, last_channel),
        word("command", AT(command), commands).upto(63),
        integer("patrolId", AT(patrolId)).in(0, 5),
        integer("keyPos", AT(keyPos)).in(0, 15),
        integer("presetId", AT(presetId)).in(0, 63),
        integer("patternId", AT(patternId)).in(0, 5),
        integer("speed", AT(speed)).in(0, 100),
        integer("dwellTime", AT(dwellTime)).at_least(1),
    };
    static constexpr Traits traits = HERE.parser("net_ptz_info_x2s")
                                         .writer("net_ptz_info_s2x", "")
                                         .title("pan, tilt and zoom commands",
                                                "Moves the camera once, or works on a preset, a cruise or a pattern.");
};
constexpr auto control_message = describe<ControlFields>();

// Presets -----------------------------------------------------------------------------------------

constexpr std::size_t most_presets = 256;

struct PresetFields : Description {
    using T = net_ptz_preset_v20_t;
    static constexpr Field fields[] = {
        integer("id", AT(id)).in(0, 255).required(),
        word("command", AT(command), commands).upto(63),
        text("name", AT(name)),
        text("imageName", AT(imageName)),
    };
    // What the message says of all its presets.
    static constexpr Field also_shown[] = {
        shown("channelId", AT(channelId)),
        shown("maxPresetNum", AT(maxPresetNum)),
        shown("maxPresetPicNum", AT(maxPresetPicNum)),
    };
};
constexpr auto preset_record = describe<PresetFields>();

struct PresetListFields : Description {
    using T = net_ptz_preset_list_v20_t;
    static constexpr Field fields[] = {
        list("preset", AT(preset), preset_record),
    };
};
constexpr auto preset_payload = describe<PresetListFields>();

// A record without a preset; what stands behind the name is left alone.
constexpr net_ptz_preset_v20_t no_preset = {-1, -1, -1, "invalid", {}, 0, 0};
constexpr std::size_t no_preset_size = offsetof(net_ptz_preset_v20_t, imageName);

struct PresetWalk {
    net_ptz_preset_v20_t *presets;
    int count = 0;
    int channelId = 0;
    int maxPresetNum = 0;
    int maxPresetPicNum = 0;

    explicit PresetWalk(net_ptz_preset_list_v20_t &payload) : presets(payload.preset)
    {
        for (auto &preset : payload.preset)
            std::memcpy(&preset, &no_preset, no_preset_size);
    }
};

int take_presets(net_param_t &, const PresetWalk &walk)
{
    for (int i = 0; i < walk.count; ++i) {
        walk.presets[i].channelId = walk.channelId;
        walk.presets[i].maxPresetNum = walk.maxPresetNum;
        walk.presets[i].maxPresetPicNum = walk.maxPresetPicNum;
    }
    return 0;
}

struct PresetItemsFields : Description {
    using T = PresetWalk;
    static constexpr Field fields[] = {
        list_behind<most_presets>("preset", AT(presets), preset_record).counted_by(AT(count)).stop_when_full(),
    };
    static constexpr Traits traits = Traits{}.others_fail();
};
constexpr auto preset_items = describe<PresetItemsFields>();

struct PresetMessageFields : Description {
    using T = PresetWalk;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, last_channel).required(),
        integer("maxPresetNum", AT(maxPresetNum)),
        integer("maxPresetPicNum", AT(maxPresetPicNum)),
        part("presetList", preset_items),
    };
    static constexpr Traits traits =
        HERE.parser("net_ptz_preset_x2s")
            .walk<net_ptz_preset_list_v20_t, take_presets>()
            .layout(preset_payload)
            .title("presets", "The positions that a pan-tilt-zoom camera can be sent to by number.");
};
constexpr auto preset_message = describe<PresetMessageFields>();

// Cruises -----------------------------------------------------------------------------------------

constexpr int most_cruises = 6;
constexpr int most_key_positions = 16; // of one cruise
constexpr int cruise_records = 32;     // of the payload

// What a key position says, in a record that has room for it.
template <class Record> struct KeyPositionFields : Description {
    using T = Record;
    static constexpr Field fields[] = {
        integer("keyPosId", AT(keyPosId)).in(0, 15).required(),
        integer("presetId", AT(presetId)).in(-1, 255).required(),
        integer("speed", AT(speed)).in(0, 100),
        integer("dwellTime", AT(dwellTime)).at_least(1),
        integer("trackEnable", AT(trackEnable)).marks(AT(hasTrackValue)),
        integer("trackTime", AT(trackTime)).marks(AT(hasTrackValue)),
    };
};

struct CruiseRecordFields : KeyPositionFields<net_ptz_cruise_v20_t> {
    // What the message says of the cruise, and the cruise of all its key positions.
    static constexpr Field also_shown[] = {
        shown("channelId", AT(channelId)),
        shown("patrolId", AT(patrolId)),
        shown("enable", AT(enable)),
        shown("starting", AT(starting)),
        shown("cruising", AT(cruising)),
        shown("name", AT(name)),
        shown("valueTable", AT(dayMask)).hours(),
        shown("hasValueTable", AT(hasValueTable)),
        shown("hasTrackValue", AT(hasTrackValue)),
        shown("reserved", AT(reserved)),
    };
};
constexpr auto cruise_payload_record = describe<CruiseRecordFields>();

struct CruiseListFields : Description {
    using T = net_ptz_cruise_list_v20_t;
    static constexpr Field fields[] = {
        list("keyPos", AT(keyPos), cruise_payload_record),
    };
};
constexpr auto cruise_payload = describe<CruiseListFields>();

struct KeyPosition {
    int keyPosId = -1;
    int presetId = -1;
    int speed = 0;
    int dwellTime = 0;
    int trackEnable = 0;
    int trackTime = 0;
    int hasTrackValue = 0;
};
constexpr auto key_position = describe<KeyPositionFields<KeyPosition>>();

// The first walk checks and counts, without a payload; the second one fills it.
struct CruiseWalk {
    int channelId = 0;
    int cruises = 0;
    int count = 0;                           // records
    unsigned int off = 0;                    // the cruises that are switched off, by bit; known after the first walk
    net_ptz_cruise_v20_t *records = nullptr; // null in the first walk

    CruiseWalk() = default;
    CruiseWalk(const CruiseWalk &first, net_ptz_cruise_list_v20_t &payload) : off(first.off), records(payload.keyPos) {}
};

struct Cruise {
    net_ptz_cruise_v20_t *records; // for its key positions; null when they are only checked
    int patrolId = -1;
    int enable = 1;
    int starting = 0;
    int cruising = 0;
    const char *name = "";
    const char *valueTable = nullptr; // null without one
    int keyPositions = 0;

    Cruise(const CruiseWalk &walk, unsigned int index)
        : records(walk.records != nullptr && (walk.off >> index & 1) == 0 ? walk.records + walk.count : nullptr)
    {
    }
};

// What nothing is said of is 0, but for the identifiers and a word of unknown meaning.
void clear_record(net_ptz_cruise_v20_t &record)
{
    record = {};
    record.channelId = -1;
    record.patrolId = -1;
    record.keyPosId = -1;
    record.presetId = -1;
    record.reserved = 7;
}

int take_key_position(Cruise &cruise, const KeyPosition &position)
{
    if (cruise.records == nullptr)
        return 0;
    net_ptz_cruise_v20_t &record = cruise.records[cruise.keyPositions];
    clear_record(record);
    record.keyPosId = position.keyPosId;
    record.presetId = position.presetId;
    record.speed = position.speed;
    record.dwellTime = position.dwellTime;
    record.trackEnable = position.trackEnable;
    record.trackTime = position.trackTime;
    record.hasTrackValue = position.hasTrackValue;
    return 0;
}

struct KeyPositionItemsFields : Description {
    using T = Cruise;
    static constexpr Field fields[] = {
        wires_part<T, take_key_position>("keyPos", key_position, most_key_positions)
            .counted_by(AT(keyPositions))
            .stop_when_full(),
    };
};
constexpr auto key_position_items = describe<KeyPositionItemsFields>();

struct CruiseFields : Description {
    using T = Cruise;
    static constexpr Field fields[] = {
        integer("patrolId", AT(patrolId)).in(0, 5).required(),
        flag("enable", AT(enable)).accepts("0 leaves a single record with nothing but the cruise's and channel's ids"),
        flag("starting", AT(starting)),
        flag("cruising", AT(cruising)),
        view("name", AT(name)).upto(31),
        view("valueTable", AT(valueTable)).upto(168).accepts("24 characters a day; 1 sets an hour, others clear it"),
        part("keyPosList", key_position_items),
    };
};
constexpr auto cruise_record = describe<CruiseFields>();

// Seven runs of 24 characters; what a short table lacks is off.
void read_day_masks(int (&masks)[7], const char *table)
{
    const std::size_t length = std::strlen(table);
    for (std::size_t day = 0; day < 7; ++day) {
        unsigned int mask = 0;
        for (std::size_t hour = 0; hour < 24 && day * 24 + hour < length; ++hour)
            if (table[day * 24 + hour] == '1')
                mask |= 1u << hour;
        masks[day] = static_cast<int>(mask);
    }
}

// A cruise gives its own values to each of its key positions.
void fill_records(const Cruise &cruise)
{
    for (int i = 0; i < cruise.keyPositions; ++i) {
        net_ptz_cruise_v20_t &record = cruise.records[i];
        record.patrolId = cruise.patrolId;
        record.enable = 1;
        record.starting = cruise.starting;
        record.cruising = cruise.cruising;
        std::strncpy(record.name, cruise.name, sizeof record.name - 1);
        if (cruise.valueTable != nullptr) {
            record.hasValueTable = 1;
            if (i == 0)
                read_day_masks(record.dayMask, cruise.valueTable);
            else
                std::memcpy(record.dayMask, cruise.records->dayMask, sizeof record.dayMask);
        }
    }
}

int take_cruise(CruiseWalk &walk, const Cruise &cruise)
{
    int count = cruise.keyPositions;
    if (cruise.enable == 0) {
        // One that is switched off has a single record, whose other identifiers stay -1.
        walk.off |= 1u << walk.cruises;
        count = 1;
        if (walk.records != nullptr) {
            clear_record(walk.records[walk.count]);
            walk.records[walk.count].patrolId = cruise.patrolId;
        }
    } else if (cruise.records != nullptr) {
        fill_records(cruise);
    }
    walk.count += count;
    return walk.count > cruise_records ? -1 : 0;
}

int take_cruises(net_param_t &param, const CruiseWalk &walk)
{
    for (int i = 0; i < walk.count; ++i)
        walk.records[i].channelId = walk.channelId;
    // From here on the envelope tells how many records are used.
    param.dataSize = static_cast<unsigned int>(walk.count) * static_cast<unsigned int>(sizeof(net_ptz_cruise_v20_t));
    return 0;
}

struct CruiseItemsFields : Description {
    using T = CruiseWalk;
    static constexpr Field fields[] = {
        wires_part<T, take_cruise>("cruise", cruise_record, most_cruises)
            .counted_by(AT(cruises))
            .stop_when_full()
            .accepts("at most 32 records in all: one for each key position or cruise that is switched off"),
    };
    static constexpr Traits traits = Traits{}.others_fail();
};
constexpr auto cruise_items = describe<CruiseItemsFields>();

struct CruiseMessageFields : Description {
    using T = CruiseWalk;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, last_channel).required(),
        part("cruiseList", cruise_items),
    };
    static constexpr Traits traits =
        HERE.parser("net_ptz_cruise_x2s")
            .tried<net_ptz_cruise_list_v20_t, take_cruises>()
            .layout(cruise_payload)
            .title("cruises (patrols)",
                   "Rounds that a pan-tilt-zoom camera makes of key positions, with a weekly schedule.");
};
constexpr auto cruise_message = describe<CruiseMessageFields>();

// Serial line -------------------------------------------------------------------------------------

constexpr int baud_rates[] = {1200, 2400, 4800, 9600};
constexpr Word baud_rate_list[] = {{0, "1200"}, {1, "2400"}, {2, "4800"}, {3, "9600"}};
constexpr auto baud_rate_words = words<baud_rate_list>();
constexpr Word parity_list[] = {{0, "none"}, {1, "odd"}, {2, "even"}};
constexpr auto parities = words<parity_list>();
constexpr Word flow_control_list[] = {{0, "none"}, {1, "hard"}, {2, "xon:xoff"}};
constexpr auto flow_controls = words<flow_control_list>();
constexpr Word protocol_list[] = {{0, "PELCO_D"}, {1, "PELCO_P"}};
constexpr auto protocols = words<protocol_list>();

// A number, not a word: "09600" is 9600 too.
int read_baud_rate(const char *text, net_ptz_serial_v20_t &serial)
{
    int rate;
    const int *last = std::end(baud_rates);
    if (to_int(&rate, text) != 0)
        return -1;
    const int *found = std::find(std::begin(baud_rates), last, rate);
    if (found == last)
        return -1;
    serial.param.baudRate = static_cast<int>(found - baud_rates);
    return 0;
}

int write_baud_rate(const net_ptz_serial_v20_t &serial, char *text, std::size_t)
{
    const auto code = static_cast<unsigned int>(serial.param.baudRate);
    from_int(text, code < std::size(baud_rates) ? baud_rates[code] : 9600);
    return 0;
}

// Kept as one less than it is on the wire.
int read_stop_bit(const char *text, net_ptz_serial_v20_t &serial)
{
    int bits;
    if (to_int(&bits, text) != 0 || bits < 1 || bits > 2)
        return -1;
    serial.param.stopBit = bits - 1;
    return 0;
}

int write_stop_bit(const net_ptz_serial_v20_t &serial, char *text, std::size_t)
{
    from_int(text, serial.param.stopBit + 1LL);
    return 0;
}

struct SerialFields : Description {
    using T = net_ptz_serial_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(param.channelId)).in(0, last_channel),
        converted<read_baud_rate, write_baud_rate>("baudRate", AT(param.baudRate))
            .spelled(baud_rate_words)
            .accepts("a number: 1200, 2400, 4800 or 9600"),
        word("dataBit", AT(param.dataBit), data_bits).prefix().upto(15),
        converted<read_stop_bit, write_stop_bit>("stopBit", AT(param.stopBit)).accepts("a number: 1 or 2").sample("2"),
        word("parity", AT(param.parity), parities).fallback(0),
        word("flowControl", AT(param.flowControl), flow_controls).fallback(0),
        word("controlProtocol", AT(param.controlProtocol), protocols).kept().fallback(0),
        // Stored in the same member as the protocol.
        integer("decoderType", AT(param.controlProtocol)).at_least(0).read_only(),
        integer("controlAddress", AT(param.controlAddress)).in(0, 255),
    };
    static constexpr Traits traits =
        HERE.parser("net_ptz_param_x2s")
            .writer("net_ptz_param_s2x", "Serial")
            .title("serial line", "The serial line (RS-485) to an external dome: speed, bits, protocol and address.");
};
constexpr auto serial_message = describe<SerialFields>();

// Zoom and focus ----------------------------------------------------------------------------------

struct PositionFields : Description {
    using T = net_zf_pos_v20_t;
    static constexpr Field fields[] = {
        integer("maxPos", AT(maxPos)),
        integer("minPos", AT(minPos)),
        integer("curPos", AT(curPos)),
        integer("defPos", AT(defPos)).marks(AT(hasDefPos)),
    };
    static constexpr Field also_shown[] = {shown("hasDefPos", AT(hasDefPos))};
};
constexpr auto position = describe<PositionFields>();

struct ZoomFocusFields : Description {
    using T = net_ptz_zoom_focus_info_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, last_channel),
        group("zoom", AT(zoom), position),
        group("focus", AT(focus), position),
    };
    static constexpr Traits traits =
        HERE.parser("nets_param_zoom_focus_info_x2s")
            .writer("nets_param_zoom_focus_info_s2x", "PtzZoomFocus")
            .title("zoom and focus positions", "Where the lens's zoom and focus stand, and their ends.");
};
constexpr auto zoom_focus_message = describe<ZoomFocusFields>();

struct MoveFields : Description {
    using T = net_ptz_zoom_focus_start_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, last_channel),
        word("command", AT(command), commands).upto(63),
        integer("movePos", AT(movePos)).at_least(0),
    };
    static constexpr Traits traits =
        HERE.parser("nets_param_start_zoom_focus_x2s").title("zoom and focus moves", "Moves the lens's zoom or focus.");
};
constexpr auto move_message = describe<MoveFields>();

// Guard, self-test, backlash, positions -----------------------------------------------------------

struct GuardFields : Description {
    using T = net_ptz_guard_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, last_channel),
        integer("benable", AT(benable)),
        integer("timeout", AT(timeout)),
        integer("needSetPos", AT(needSetPos)),
        integer("bvalid", AT(bvalid)),
        text("imageName", AT(imageName)),
        word("command", AT(command), commands).upto(63),
    };
    static constexpr auto written = order("channelId", "timeout", "benable", "bvalid", "imageName");
    static constexpr Traits traits = HERE.parser("nets_param_guard_x2s")
                                         .writer("nets_param_guard_s2x", "PtzGuard")
                                         .entry(Line::plain_param)
                                         .failure(Line::xml_err)
                                         .title("guard position", "The home position that the camera returns to.");
};
constexpr auto guard_message = describe<GuardFields>();

struct AutoTestFields : Description {
    using T = net_auto_test_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).in(0, last_channel),
        integer("needPtAutotest", AT(needPtAutotest)),
    };
    static constexpr Traits traits =
        HERE.parser("net_ptz_auto_test_x2s")
            .title("pan-tilt self-test", "Asks for a self-test of the pan and tilt drives.");
};
constexpr auto auto_test_message = describe<AutoTestFields>();

struct BacklashFields : Description {
    using T = net_zf_backlash_v20_t;
    static constexpr Field fields[] = {
        unsigned_integer("fBacklash", AT(fBacklash)),
        unsigned_integer("zBacklash", AT(zBacklash)),
    };
    static constexpr Traits traits = HERE.parser("nets_param_zf_backlash_x2s")
                                         .writer("nets_param_zf_backlash_s2x", "ZfBacklash")
                                         .title("zoom and focus backlash", "The play of the zoom and focus drives.");
};
constexpr auto backlash_message = describe<BacklashFields>();

struct CurrentPositionFields : Description {
    using T = net_ptz_curpos_v20_t;
    static constexpr Field fields[] = {
        integer("pPos", AT(pPos)),
        integer("tPos", AT(tPos)),
    };
    static constexpr Traits traits = HERE.parser("net_param_ptz_curpos_x2s")
                                         .writer("net_param_ptz_curpos_s2x", "ptzCurPos")
                                         .title("current position", "Where pan and tilt stand.");
};
constexpr auto current_position_message = describe<CurrentPositionFields>();

struct LocationFields : Description {
    using T = net_ptz_3Dlocation_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)),
        real("topLeftX", AT(topLeftX)),
        real("topLeftY", AT(topLeftY)),
        real("width", AT(width)),
        real("height", AT(height)),
        integer("speed", AT(speed)),
        word("streamType", AT(streamType), video_streams), // the snapshot stream is none of these
    };
    static constexpr Traits traits =
        HERE.parser("net_ptz_3Dlocation_x2s")
            .failure(Line::param_error)
            .title("3D positioning (click to zoom)", "Turns and zooms the camera to a rectangle of the picture.");
};
constexpr auto location_message = describe<LocationFields>();

struct AlgorithmFields : Description {
    using T = net_af_algorithm_v20_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)),
        integer("algorithm", AT(algorithm)),
    };
    static constexpr Traits traits = HERE.parser("net_af_algorithm_x2s")
                                         .writer("net_af_algorithm_s2x", "afAlgorithm")
                                         .failure(Line::param_error)
                                         .title("autofocus algorithm", "Which algorithm the autofocus uses.");
};
constexpr auto algorithm_message = describe<AlgorithmFields>();

} // namespace
} // namespace netpublic

using namespace netpublic;

int _get_ptz_cmd(const char *text)
{
    const auto *entry = text != nullptr ? find_whole(commands, text) : nullptr;
    return entry != nullptr ? entry->code() : -1;
}

int net_ptz_info_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, control_message);
}

int net_ptz_info_s2x(net_param_t *param, TiXmlElement *parent)
{
    return check_writer(control_message, param, parent); // it has no reply
}

int net_ptz_preset_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, preset_message);
}

int net_ptz_preset_s2x(net_param_t *, TiXmlElement *)
{
    return 0; // it has no reply
}

int net_ptz_cruise_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, cruise_message);
}

int net_ptz_cruise_s2x(net_param_t *, TiXmlElement *)
{
    return 0; // it has no reply
}

int net_ptz_param_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, serial_message);
}

int net_ptz_param_s2x(tag_net_ptz_param_v20_t *record, TiXmlElement *parent)
{
    static_assert(offsetof(net_ptz_serial_v20_t, param) == 0, "the record heads the payload that the rows describe");
    net_param_t envelope = {0, 0, 0, 0, 0, sizeof(net_ptz_serial_v20_t), record};
    return write_message(&envelope, parent, serial_message);
}

int nets_param_zoom_focus_info_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, zoom_focus_message);
}

int nets_param_zoom_focus_info_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, zoom_focus_message);
}

int nets_param_start_zoom_focus_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, move_message);
}

int nets_param_guard_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, guard_message);
}

int nets_param_guard_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, guard_message);
}

int net_ptz_auto_test_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, auto_test_message);
}

int nets_param_zf_backlash_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, backlash_message);
}

int nets_param_zf_backlash_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, backlash_message);
}

int net_param_ptz_curpos_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, current_position_message);
}

int net_param_ptz_curpos_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, current_position_message);
}

int net_ptz_3Dlocation_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, location_message);
}

int net_af_algorithm_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, algorithm_message);
}

int net_af_algorithm_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, algorithm_message);
}

#ifdef NETPUBLIC_DESCRIBED
// The serial line's writer as the tools call all of them.
static int net_ptz_param_s2x(net_param_t *param, TiXmlElement *parent)
{
    if (check_writer(serial_message, param, parent) != 0)
        return -1;
    return net_ptz_param_s2x(&static_cast<net_ptz_serial_v20_t *>(param->data)->param, parent);
}
#endif

MESSAGES(ptz, //
         MESSAGE("ptz", nets_param_ptz_info_init, net_ptz_info_x2s, net_ptz_info_s2x, control_message, nullptr,
                 "PtzControl"),
         MESSAGE("ptz-preset", net_param_ptz_preset_init, net_ptz_preset_x2s, net_ptz_preset_s2x, preset_message,
                 nullptr, "PtzPreset"),
         MESSAGE("ptz-cruise", nets_param_ptz_cruise_init, net_ptz_cruise_x2s, net_ptz_cruise_s2x, cruise_message,
                 nullptr, "PtzPatrol"),
         MESSAGE("ptz-serial", net_param_ptz_init, net_ptz_param_x2s, net_ptz_param_s2x, serial_message),
         MESSAGE("zoom-focus", nets_param_ptz_zoom_focus_info_init, nets_param_zoom_focus_info_x2s,
                 nets_param_zoom_focus_info_s2x, zoom_focus_message),
         MESSAGE("zoom-focus-move", nets_param_ptz_zoom_focus_start_init, nets_param_start_zoom_focus_x2s, nullptr,
                 move_message, "StartZoomFocus"),
         MESSAGE("ptz-guard", nets_param_ptz_guard_init, nets_param_guard_x2s, nets_param_guard_s2x, guard_message),
         MESSAGE("ptz-auto-test", nets_param_auto_test_init, net_ptz_auto_test_x2s, nullptr, auto_test_message,
                 "PtzAutoTest"),
         MESSAGE("backlash", nets_param_zf_backlash_init, nets_param_zf_backlash_x2s, nets_param_zf_backlash_s2x,
                 backlash_message),
         MESSAGE("ptz-position", net_param_ptz_curpos_init, net_param_ptz_curpos_x2s, net_param_ptz_curpos_s2x,
                 current_position_message),
         MESSAGE("3d-location", net_param_ptz_3Dlocation_init, net_ptz_3Dlocation_x2s, nullptr, location_message,
                 "PtzLocation"),
         MESSAGE("af-algorithm", net_param_af_algorithm_init, net_af_algorithm_x2s, net_af_algorithm_s2x,
                 algorithm_message))
