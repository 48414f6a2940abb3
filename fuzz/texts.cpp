// The targets of texts as a whole: the extension header, the log filter, weekly schedules, and the
// catalogue of initialisers.
#include "catalogue.h"
#include "host.h"
#include "oracle.h"
#include "promises.h"
#include "targets.h"
#include "tree_code.h"
#include "typed.h"
#include "values/tables.h"

#include <net_host_standin.h>
#include <net_public.h>
#include <tinyxml.h>

#include <cstring>
#include <random>

namespace fuzz {
namespace {

// What stands between the tags; an open tag without a close tag is left alone.
std::string masked(std::string text, const std::string &open, const std::string &close)
{
    for (std::size_t at = text.find(open); at != std::string::npos; at = text.find(open, at + 1)) {
        const std::size_t end = text.find(close, at);
        if (end == std::string::npos)
            break;
        at += open.size();
        if (end > at)
            text.replace(at, end - at, end - at, '*');
    }
    return text;
}

// One kind after the other, as the filter is described.
std::string plain_filter(std::string text)
{
    for (const std::string name :
         {"password", "key", "authToken", "authSignature", "refreshToken", "accessToken", "clientSecret", "mac", "ip",
          "accessKey", "secretKey", "ipAddress", "macAddress", "gateway", "mask", "dns1", "dns2"})
        text = masked(text, "<" + name + ">", "</" + name + ">");
    return text;
}

bool terminated(const char *text, std::size_t size)
{
    return std::memchr(text, '\0', size) != nullptr;
}

void check_extension(const net_ext_t &ext)
{
    require(terminated(ext.userName, sizeof ext.userName) && terminated(ext.token, sizeof ext.token), "P4",
            "a text of the extension header");
}

void check_accepted(const net_ext_t &ext)
{
    const net_host_answers &host = net_host();
    const auto within = [](int value, int count) { return value == 0 || (value > 0 && value < count); };
    require(ext.channelId >= 0 && within(ext.inputId, host.alarm_inputs) && within(ext.outputId, host.alarm_outputs) &&
                within(ext.patrolId, 6) && within(ext.rfId, 32) && within(ext.binaryData, 2) && ext.encryptLen >= 0 &&
                ext.encryptPos >= 0 && ext.chnType >= 0 && within(ext.streamType, 5),
            "P9", "a value of the extension header out of range");
}

} // namespace

// The last byte of the host's answers says whether the limits are the library's own.
void run_header(const std::uint8_t *data, std::size_t size)
{
    const LowLimits limits(size >= Host::answers_size && data[Host::answers_size - 1] % 2 != 0);
    Host host;
    Bytes input(data, size);
    host.play(input);
    modulemask = 0x400;
    loglevel |= 1; // the lines tell why a header is refused
    Guarded record(sizeof(net_ext_t));
    std::memset(record.as<>(), 0, sizeof(net_ext_t));
    Guarded text(sizeof(char) * (input.left() + 1));
    std::memcpy(text.as<>(), input.rest(), input.left());
    text.as<char>()[input.left()] = '\0';
    int result;
    {
        Oracle oracle;
        result = net_exten_x2s(text.as<char>(), record.as<net_ext_t>());
        oracle.check_log(host.log(), text.as<char>());
    }
    require(result == 0 || result == -1, "P1", "the result of the extension header");
    require(std::memcmp(text.as<>(), input.rest(), input.left()) == 0, "P7", "the text of the header has changed");
    check_extension(*record.as<net_ext_t>());
    check_header(text.as<char>(), header_refusal(host.log()));
    if (result == 0)
        check_accepted(*record.as<net_ext_t>());
}

void run_filter(const std::uint8_t *data, std::size_t size)
{
    std::string text(reinterpret_cast<const char *>(data), size);
    text.resize(std::strlen(text.c_str()));
    Guarded in(text.c_str(), text.size() + 1);
    require(plain_filter(text) == net_xml_printf_filter(in.as<char>()), "P12", "the filter's text");
    // Any tags, out of the text's own front.
    const std::size_t half = text.size() < 8 ? 0 : 2u + data[0] % 3u;
    if (half != 0 && text.find('*') == std::string::npos) {
        const std::string open = text.substr(0, half), close = text.substr(half, half);
        std::string got = text;
        net_xml_filter(got, open, close);
        require(got == masked(text, open, close), "P12", "the text with one kind masked");
    }
}

void filter_seeds(const Sink &sink)
{
    typed_seeds("filter.txt", sink);
    // Few kinds in one text, so that they close and cross each other.
    const char *const pieces[] = {"<key>", "</key>", "<ip>", "</ip>", "<mac>",  "</mac>", "<password>", "</password>",
                                  "abc",   "<",      "/>",   "</",    "<keyx>", "<Key>",  "\n",         "<ipAddress>"};
    std::mt19937 random(20240229);
    for (int round = 0; round < 1000; ++round) {
        const std::size_t kinds = 2 + random() % (sizeof pieces / sizeof pieces[0] - 1);
        std::string text;
        for (std::size_t count = random() % 30; count > 0; --count)
            text += pieces[random() % kinds];
        sink("mixed", text);
    }
}

// With the library's own limits, and with lower ones.
void header_seeds(const Sink &sink)
{
    const std::string head("\x10\x01\x10\x04\x00\x01\x01\x01\x01\x00", Host::answers_size);
    for (const char limits : {'\0', '\1'})
        typed_seeds("header.txt", sink, head.substr(0, Host::answers_size - 1) + limits);
}

namespace {

// The plain readers of both forms, over the children of a list.
const char *text_of(const TiXmlNode *node, std::size_t longest)
{
    const TiXmlElement *element = node != nullptr ? node->ToElement() : nullptr;
    if (element == nullptr)
        return nullptr;
    const char *text = element->GetText() != nullptr ? element->GetText() : "";
    return std::strlen(text) <= longest ? text : nullptr;
}

void check_week(const net_schedule_t &schedule)
{
    for (const auto &day : schedule.section)
        for (const time_section_t &hour : day)
            require((hour.bits[1] >> (netpublic::alarm_type_last - 32 + 1)) == 0, "P9", "an alarm type that is none");
}

// Written in the form by types and read again: the hours of all types that the schedule mentions.
void return_types(const net_schedule_t &schedule)
{
    TiXmlElement parent("body");
    Guarded copy(&schedule, sizeof schedule);
    require(insert_type_schedule_list_to_xmlnode(copy.as<net_schedule_t>(), &parent) == 0, "P1", "a schedule's writer");
    require(std::memcmp(copy.as<>(), &schedule, sizeof schedule) == 0, "P7", "a writer changed the schedule");
    const TiXmlElement *list = parent.FirstChildElement();
    require(list != nullptr && list->ValueStr() == "typeScheduleList", "P8", "what a schedule's writer adds");
    Guarded again(sizeof schedule);
    std::memset(again.as<>(), 0, sizeof schedule);
    // Codes without a word are written as "none", which is skipped.
    require(get_type_schedule_list_from_xmlnode(again.as<net_schedule_t>(), parent.FirstChild(), nullptr) == 0, "P9",
            "a written schedule is refused");
    const auto &read = *again.as<net_schedule_t>();
    for (unsigned code = 0; code <= 44; ++code) {
        char word[64] = {};
        int rule = 0;
        get_alarm_in_type_string(static_cast<int>(code), word, sizeof word, &rule);
        // "videoloss" reads as "loss": meant.
        if (std::strcmp(word, "none") == 0 || code == 1 || (code >= 41 && code <= 43) ||
            alarm_in_check_event(&schedule.types, code) == 0)
            continue;
        require(alarm_in_check_event(&read.types, code) == 1, "P9", "a type of a written schedule");
        for (int day = 0; day < 7; ++day)
            for (int hour = 0; hour < 24; ++hour)
                require(alarm_in_check_event(&read.section[day][hour], code) ==
                            alarm_in_check_event(&schedule.section[day][hour], code),
                        "P9", "an hour of a written schedule");
    }
}

// Written by combinations: every hour stands in exactly one of them, under the types that it has.
void check_combinations(const net_schedule_t &schedule)
{
    TiXmlElement parent("body");
    Guarded copy(&schedule, sizeof schedule);
    require(insert_schedule_list_to_xmlnode(copy.as<net_schedule_t>(), &parent) == 0, "P1", "a schedule's writer");
    TiXmlElement *list = parent.FirstChildElement();
    require(list != nullptr && parent.LastChild() == list, "P8", "what a schedule's writer adds");
    int seen[7][24] = {};
    for (TiXmlElement *item = list->FirstChildElement(); item != nullptr; item = item->NextSiblingElement()) {
        const std::string word = text_of(item->FirstChild(), 62);
        const auto has = [&word](const char *part) {
            return ("," + word + ",").find(std::string(",") + part + ",") != std::string::npos;
        };
        const unsigned types =
            (has("MD") ? 1u : 0) | (has("videoloss") ? 2u : 0) | (has("IO") ? 4u : 0) | (has("Normal") ? 0x10000u : 0);
        TiXmlElement *blocks = item->FirstChildElement()->NextSiblingElement();
        for (TiXmlElement *block = blocks->FirstChildElement(); block != nullptr; block = block->NextSiblingElement()) {
            int day = -1, begin = -1, end = -1;
            get_weekday_index(&day, const_cast<char *>(block->FirstChildElement("weekDay")->GetText()));
            get_int_from_xmlnode(&begin, block->FirstChildElement("beginHour"), nullptr);
            get_int_from_xmlnode(&end, block->FirstChildElement("endHour"), nullptr);
            require(day >= 0 && day < 7 && begin >= 0 && end < 24 && begin <= end, "P9", "a block of hours");
            for (int hour = begin; hour <= end; ++hour) {
                ++seen[day][hour];
                require((schedule.section[day][hour].bits[0] & 0x10007) == types, "P9", "the types of an hour");
            }
        }
    }
    for (int day = 0; day < 7; ++day)
        for (int hour = 0; hour < 24; ++hour) {
            const unsigned types = schedule.section[day][hour].bits[0] & 0x10007;
            const bool spelled = types <= 7 || types == 0x10000; // "Normal" stands alone
            require(seen[day][hour] == (spelled ? 1 : 0), "P9", "an hour in more or less than one combination");
        }
    Guarded again(sizeof schedule);
    std::memset(again.as<>(), 0, sizeof schedule);
    require(get_schedule_list_from_xmlnode(again.as<net_schedule_t>(), parent.FirstChild(), "ScheduleList") == 0, "P9",
            "a written schedule is refused");
}

} // namespace

// A form, then a tree; or the bits of a schedule.
void run_schedule(const std::uint8_t *data, std::size_t size)
{
    Host host;
    modulemask = 0;
    Bytes input(data, size);
    const std::uint8_t form = input.byte();
    Guarded record(sizeof(net_schedule_t));
    auto &schedule = *record.as<net_schedule_t>();
    std::memset(&schedule, 0, sizeof schedule);
    if (form % 4 == 3) {
        schedule.types.bits[0] = input.number<std::uint32_t>();
        schedule.types.bits[1] = input.number<std::uint32_t>();
        const bool classic = form >= 128;
        for (auto &day : schedule.section)
            for (time_section_t &hour : day) {
                hour.bits[0] = classic ? input.byte() & 7u : input.number<std::uint32_t>();
                hour.bits[1] = classic ? 0 : input.number<std::uint16_t>();
            }
    } else {
        TiXmlElement list("List");
        decode_tree(input, list);
        const std::uint64_t tree = fingerprint(list);
        time_section_t types = {{form, 0}};
        if (form % 4 == 0)
            get_type_schedule_list_from_xmlnode(&schedule, &list, nullptr);
        else if (form % 4 == 1)
            get_schedule_list_from_xmlnode(&schedule, &list, nullptr);
        else
            get_time_block_list_from_xmlnode(&schedule, types, &list, nullptr);
        require(fingerprint(list) == tree, "P7", "a reader changed the tree");
        check_week(schedule);
    }
    return_types(schedule);
    check_combinations(schedule);
}

void schedule_seeds(const Sink &sink)
{
    char form = 0;
    typed_seeds("schedule.txt", [&](const std::string &name, const std::string &text) {
        TiXmlDocument document;
        document.Parse((text + std::string(xml_padding, '\0')).c_str());
        sink(name, form++ + encode_tree(*document.RootElement()));
    });
    std::string bits(1, '\x83');
    for (int i = 0; i < 176; ++i)
        bits += static_cast<char>(i * 37 >> 2);
    sink("bits", bits);
    bits[0] = 3;
    sink("bits", bits + bits + bits + bits);
}

// Any initialiser of the catalogue.
void run_init(const std::uint8_t *data, std::size_t size)
{
    Host host;
    Bytes input(data, size);
    constexpr std::size_t count = sizeof netpublic::initialisers / sizeof netpublic::initialisers[0];
    const netpublic::Initialiser &initialiser = netpublic::initialisers[input.number<std::uint16_t>() % count];
    net_ext_t ext = host.play(input);
    const std::string token = input.text(input.left() < sizeof ext.token ? input.left() : sizeof ext.token - 1);
    if (!token.empty())
        std::memcpy(ext.token, token.c_str(), token.size() + 1);
    net_param_t param;
    std::memset(&param, 0xA5, sizeof param);
    param.data = nullptr;
    const int result = initialiser.function(&param, &ext);
    require(result == 0 || result == -1, "P1", "an initialiser's result");
    require(result == 0 || param.data == nullptr, "P13", "a failed initialiser left a payload");
    if (param.data != nullptr) {
        require(guarded_size(param.data) >= initialiser.size, "P2", "a payload that is too small");
        require(param.inited == 1 && param.status == 0 && param.paramId == initialiser.id, "P9",
                "the stamps of an envelope");
        net_free(&param.data);
    }
}

} // namespace fuzz
