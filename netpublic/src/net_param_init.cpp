// The initialisers of all messages. What they have in common is a table, catalogue.inc; what is special
// about some of them is code, here.
#include "ground/log.h"
#include "ground/words.h"

#include <net_public.h>

#include <cstring>
#include <string_view>

using namespace netpublic;

namespace {

// What a row does beyond stamping the envelope and zeroing the payload.
enum Extra : unsigned int {
    plain = 0,
    channel = 0x1,          // the request's channel goes to the payload's first word
    valid_channel = 0x2,    // the same, but a negative one leaves it 0
    clears_reserved1 = 0x4, // meant for these five messages only
    unzeroed = 0x8,         // the payload stays as it was allocated
    records = 0x10,         // the payload is a list, `dataSize` the size of one record
};

constexpr unsigned int list_records = 20;

// A row as the catalogue gives it.
struct Source {
    int id;
    unsigned int size;
    unsigned int extra;
    const char *failure; // "X" stands for the line "init param X failed"; null for no line
};

constexpr Source sources[] = {
#define INITIALISER(name, id, payload, extra, failure) {id, sizeof(payload), extra, failure},
#define DEVIATION(name, id, payload, extra, failure) {id, sizeof(payload), extra, failure},
#define STAMP_ONLY(name, id)
#define NOTHING(name)
#include "catalogue.inc"
};

enum RowIndex : unsigned int {
#define INITIALISER(name, id, payload, extra, failure) row_##name,
#define DEVIATION(name, id, payload, extra, failure) row_##name,
#define STAMP_ONLY(name, id)
#define NOTHING(name)
#include "catalogue.inc"
    row_count,
};
static_assert(row_count == sizeof(sources) / sizeof(sources[0]), "one index a row");

#ifdef NETPUBLIC_STATIC

// Each initialiser brings its own row, so that a firmware has those of the initialisers that it names.
using RowKey = const Source &;
template <RowIndex index> constexpr Source own_row = sources[index];
#define ROW(name) own_row<row_##name>

const Source &row_at(RowKey row)
{
    return row;
}

int id_at(RowKey row)
{
    return row.id;
}

const char *failure_of(const Source &row)
{
    return row.failure;
}

#else

// A row as it is kept: packed, and without pointers that a shared library would have to relocate.
struct Row {
    std::uint32_t size : 18;
    std::uint32_t extra : 5;
    std::uint32_t failure : 9; // where its text starts; 0 for no line
};
static_assert(sizeof(Row) == 4, "packed");

// The first row that has this row's failure text.
constexpr unsigned int first_with_text_of(unsigned int row)
{
    unsigned int first = 0;
    while (sources[first].failure == nullptr || std::string_view(sources[first].failure) != sources[row].failure)
        ++first;
    return first;
}

constexpr std::size_t text_characters()
{
    std::size_t characters = 1;
    for (unsigned int row = 0; row < row_count; ++row)
        if (sources[row].failure != nullptr && first_with_text_of(row) == row)
            characters += length_of(sources[row].failure) + 1;
    return characters;
}

struct Catalogue {
    Row rows[row_count];
    std::int16_t ids[row_count];
    char texts[text_characters()];
};

constexpr Catalogue pack()
{
    Catalogue packed{};
    std::size_t at = 1;
    for (unsigned int i = 0; i < row_count; ++i) {
        const Source &source = sources[i];
        Row &row = packed.rows[i];
        row.size = source.size & 0x3FFFF;
        row.extra = source.extra & 0x1F;
        packed.ids[i] = static_cast<std::int16_t>(source.id);
        if (source.failure == nullptr)
            continue;
        const unsigned int first = first_with_text_of(i);
        if (first != i) {
            row.failure = packed.rows[first].failure;
            continue;
        }
        row.failure = at & 0x1FF;
        for (const char *from = source.failure; *from != '\0'; ++from)
            packed.texts[at++] = *from;
        packed.texts[at++] = '\0';
    }
    return packed;
}

constexpr Catalogue catalogue = pack();

constexpr bool fits()
{
    for (const Source &source : sources)
        if (source.size > 0x3FFFF || source.extra > 0x1F || source.id > INT16_MAX)
            return false;
    return text_characters() <= 0x200;
}
static_assert(fits(), "the packed columns hold every row");

// A number is shorter to hand over than an address.
using RowKey = RowIndex;
#define ROW(name) row_##name

const Row &row_at(RowKey index)
{
    return catalogue.rows[index];
}

int id_at(RowKey index)
{
    return catalogue.ids[index];
}

// Null for no line.
const char *failure_of(const Row &row)
{
    return row.failure != 0 ? catalogue.texts + row.failure : nullptr;
}

#endif

// Stamps the envelope and allocates the payload as the row says. A failed allocation leaves the
// envelope stamped.
int initialise(net_param_t *param, const net_ext_t *ext, RowKey key)
{
    const auto &row = row_at(key);
    param->inited = 1;
    param->status = 0;
    param->paramId = id_at(key);
    param->dataSize = row.size;
    if ((row.extra & clears_reserved1) != 0)
        param->reserved1 = 0;
    const unsigned int bytes = (row.extra & records) != 0 ? row.size * list_records : row.size;
    param->data = net_malloc(bytes);
    if (param->data == nullptr) {
        if (const char *what = failure_of(row))
            log_error(NET_HERE, "init param%s%s failed\n", *what == '\0' ? "" : " ", what);
        return -1;
    }
    if ((row.extra & unzeroed) == 0)
        std::memset(param->data, 0, bytes);
    if ((row.extra & channel) != 0 || ((row.extra & valid_channel) != 0 && ext->channelId >= 0))
        *static_cast<int *>(param->data) = ext->channelId;
    return 0;
}

template <class Payload> Payload *payload_of(net_param_t *param)
{
    return static_cast<Payload *>(param->data);
}

// Copies at most `size` characters into a zeroed text.
void copy_user_name(char *name, const net_ext_t *ext, std::size_t size)
{
    std::memcpy(name, ext->userName, strnlen(ext->userName, size));
}

} // namespace

// The rows without deviations, and the messages that have neither payload nor id.
#define INITIALISER(name, id, payload, extra, failure)                                                                 \
    int name(net_param_t *param, net_ext_t *ext)                                                                       \
    {                                                                                                                  \
        return initialise(param, ext, ROW(name));                                                                      \
    }
#define DEVIATION(name, id, payload, extra, failure)
// No size, no payload: the envelope keeps whatever it held.
#define STAMP_ONLY(name, number)                                                                                       \
    int name(net_param_t *param, net_ext_t *)                                                                          \
    {                                                                                                                  \
        param->inited = 1;                                                                                             \
        param->paramId = number;                                                                                       \
        param->status = 0;                                                                                             \
        return 0;                                                                                                      \
    }
// They exist so that the host can call an initialiser for every message.
#define NOTHING(name)                                                                                                  \
    int name(net_param_t *, net_ext_t *)                                                                               \
    {                                                                                                                  \
        return 0;                                                                                                      \
    }
#include "catalogue.inc"

// Further fields of the request

// The name fills its 32 characters without a terminator when it is that long: meant.
int nets_param_user_cfg_init(net_param_t *param, net_ext_t *ext)
{
    if (initialise(param, ext, ROW(nets_param_user_cfg_init)) != 0)
        return -1;
    copy_user_name(payload_of<char>(param), ext, 32);
    return 0;
}

int net_param_shared_user_cfg_init(net_param_t *param, net_ext_t *ext)
{
    if (initialise(param, ext, ROW(net_param_shared_user_cfg_init)) != 0)
        return -1;
    copy_user_name(payload_of<char>(param), ext, 31);
    return 0;
}

int nets_param_ptz_cruise_init(net_param_t *param, net_ext_t *ext)
{
    if (initialise(param, ext, ROW(nets_param_ptz_cruise_init)) != 0)
        return -1;
    payload_of<net_ptz_cruise_list_v20_t>(param)->keyPos[0].patrolId = ext->patrolId;
    return 0;
}

int net_param_dev_manage_init(net_param_t *param, net_ext_t *ext)
{
    if (initialise(param, ext, ROW(net_param_dev_manage_init)) != 0)
        return -1;
    payload_of<net_dev_manage_t>(param)->chnType = ext->chnType;
    return 0;
}

int nets_param_rf_init(net_param_t *param, net_ext_t *ext)
{
    if (initialise(param, ext, ROW(nets_param_rf_init)) != 0)
        return -1;
    payload_of<net_rf_t>(param)->rfId = ext->rfId;
    return 0;
}

int nets_param_support_init(net_param_t *param, net_ext_t *ext)
{
    if (initialise(param, ext, ROW(nets_param_support_init)) != 0)
        return -1;
    auto *support = payload_of<tag_net_support_v20_t>(param);
    support->chnType = ext->chnType;
    for (net_chn_support_v20_t &record : support->channel)
        record.chnID = -1;
    return 0;
}

namespace {

// The codes are bits of the sections' places.
constexpr Word section_list[] = {
    {1 << NET_ABILITY_SECTION_SYSTEM, "system"},     {1 << NET_ABILITY_SECTION_STREAMING, "streaming"},
    {1 << NET_ABILITY_SECTION_RECORD, "record"},     {1 << NET_ABILITY_SECTION_NETWORK, "network"},
    {1 << NET_ABILITY_SECTION_PTZ, "PTZ"},           {1 << NET_ABILITY_SECTION_IO, "IO"},
    {1 << NET_ABILITY_SECTION_ALARM, "alarm"},       {1 << NET_ABILITY_SECTION_IMAGE, "image"},
    {1 << NET_ABILITY_SECTION_VIDEO, "video"},       {1 << NET_ABILITY_SECTION_AUDIO, "audio"},
    {1 << NET_ABILITY_SECTION_SECURITY, "security"}, {1 << NET_ABILITY_SECTION_REPLAY, "replay"},
    {1 << NET_ABILITY_SECTION_DISK, "disk"},
};
constexpr auto section_words = words<section_list>();

} // namespace

// A name counts wherever it occurs in the token: "audio" asks for "IO" as well. Meant.
int nets_param_ability_init(net_param_t *param, net_ext_t *ext)
{
    if (initialise(param, ext, ROW(nets_param_ability_init)) != 0)
        return -1;
    const int asked = mask_in(section_words, ext->token);
    int *section = payload_of<net_ability_v20_t>(param)->section;
    for (int i = 0; i < NET_ABILITY_SECTIONS; ++i)
        section[i] = asked >> i & 1;
    return 0;
}

// Fields that start as "none"

int nets_param_pic_shelter_init(net_param_t *param, net_ext_t *ext)
{
    if (initialise(param, ext, ROW(nets_param_pic_shelter_init)) != 0)
        return -1;
    payload_of<tag_net_shelter_cfg_v20_t>(param)->maxNum = -1;
    return 0;
}

int nets_param_hdd_cfg_init(net_param_t *param, net_ext_t *ext)
{
    if (initialise(param, ext, ROW(nets_param_hdd_cfg_init)) != 0)
        return -1;
    for (net_hdd_disk_v20_t &disk : payload_of<net_hdd_info_v20_t>(param)->disk)
        disk.number = -1;
    return 0;
}

int net_find_alarm_video_init(net_param_t *param, net_ext_t *ext)
{
    if (initialise(param, ext, ROW(net_find_alarm_video_init)) != 0)
        return -1;
    payload_of<net_find_alarm_video_t>(param)->destination = -1;
    return 0;
}

int net_param_dingdong_cfg_init(net_param_t *param, net_ext_t *ext)
{
    if (initialise(param, ext, ROW(net_param_dingdong_cfg_init)) != 0)
        return -1;
    for (net_dingdong_cfg_item_t &chime : payload_of<net_dingdong_cfg_t>(param)->item)
        chime.id = -1;
    return 0;
}

// The only two that check the envelope

int net_param_fish_eye_cfg_init(net_param_t *param, net_ext_t *ext)
{
    if (param == nullptr) {
        const Place here = NET_HERE;
        log_error(here, "Func: %s, Line:%d\n", "net_param_fish_eye_cfg_init", here.line());
        return -1;
    }
    return initialise(param, ext, ROW(net_param_fish_eye_cfg_init));
}

int net_param_cert_info_init(net_param_t *param, net_ext_t *ext)
{
    if (param == nullptr) {
        const Place here = NET_HERE;
        // A full-width colon and a blank: meant.
        log_error(here, "Func: %s, Line\uFF1A %d\n", "net_param_cert_info_init", here.line());
        return -1;
    }
    return initialise(param, ext, ROW(net_param_cert_info_init));
}
