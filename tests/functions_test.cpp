// Functions of the domains that no body leads to: what they make of their arguments.
#include "support.h"

#include <net_public.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>

namespace {

using test::Envelope;
using test::log_of;
using test::Xml;

class FunctionTest : public test::HostTest {};

constexpr auto ro = NET_ABILITY_OPERATION_RO, rw = NET_ABILITY_OPERATION_RW, none = NET_ABILITY_OPERATION_NONE;

// "type" is tested on its own: a name that is empty answers to it and to "index". No text has such a name.
TEST_F(FunctionTest, TypeIsTestedApartFromTheRest)
{
    TiXmlElement list("typeScheduleList");
    auto *entry = new TiXmlElement("ITEM");
    list.LinkEndChild(entry);
    const auto add = [&](const char *name, const char *text) {
        entry->LinkEndChild(new TiXmlElement(name))->LinkEndChild(new TiXmlText(text));
    };
    add("", "2");
    add("T", "legacy");
    add("v", "1");
    net_schedule_t schedule = {};
    EXPECT_EQ(get_type_schedule_list_from_xmlnode(&schedule, &list, nullptr), 0);
    EXPECT_EQ(schedule.section[0][0].bits[1], 1U << (40 - 32)) << "legacy, rule 2";
}

TEST_F(FunctionTest, ASupportItemTellsWhetherItCarriesAPreset)
{
    Envelope<tag_net_support_v20_t> support(nets_param_support_init);
    int carried = 0;
    Xml without("<item><chnID>1</chnID><ptzType>2</ptzType></item>");
    EXPECT_EQ(get_item_from_xmlnode(support.payload(), without, nullptr, &carried), 0);
    EXPECT_EQ(carried, 0);
    Xml with("<item><chnID>1</chnID><ptzPreset>x</ptzPreset></item>");
    EXPECT_EQ(get_item_from_xmlnode(support.payload(), with, nullptr, &carried), -1);
    EXPECT_EQ(carried, 1) << "whether or not it is read";
}

TEST_F(FunctionTest, NoMoreChannelsAreWrittenThanThereAre)
{
    Envelope<tag_net_support_v20_t> support(nets_param_support_init);
    const auto items = [&](int count) {
        support->count = count;
        const std::string text = support.write(net_support_s2x);
        int found = 0;
        for (std::size_t at = text.find("<chnID>"); at != std::string::npos; at = text.find("<chnID>", at + 1))
            ++found;
        return found;
    };
    EXPECT_EQ(items(0), 0);
    EXPECT_EQ(items(-1), 0);
    EXPECT_EQ(items(64), 64);
    EXPECT_EQ(items(65), 64);
}

TEST_F(FunctionTest, AbilityTokensAreAppended)
{
    char list[32] = "left from before";
    int count = 0;
    EXPECT_EQ(make_enum_to_string(list, sizeof list, "general", none, &count), 0);
    EXPECT_EQ(make_enum_to_string(list, sizeof list, "general", static_cast<NET_ABILITY_OPERATION_V20_E>(4), &count),
              0);
    EXPECT_STREQ(list, "left from before");
    EXPECT_EQ(count, 0);
    EXPECT_EQ(make_enum_to_string(list, sizeof list, "uid", ro, &count), 0);
    EXPECT_STREQ(list, "uid_ro");
    EXPECT_EQ(count, 1);
    EXPECT_EQ(make_enum_to_string(list, sizeof list, "norm", rw, &count), 0);
    EXPECT_STREQ(list, "uid_ro, norm_rw");
    EXPECT_EQ(count, 1);
}

TEST_F(FunctionTest, AbilityListsAreCutAtTheirSize)
{
    const std::string whole = "uid_ro, norm_rw";
    for (const std::size_t size : {13u, 9u, 8u, 7u, 5u, 1u}) {
        std::string list(20, '#');
        int count = 0;
        EXPECT_EQ(make_enum_to_string(&list[0], static_cast<int>(size), "uid", ro, &count), 0);
        EXPECT_EQ(list.c_str(), whole.substr(0, std::min<std::size_t>(6, size - 1)));
        EXPECT_EQ(make_enum_to_string(&list[0], static_cast<int>(size), "norm", rw, &count), 0);
        EXPECT_EQ(list.c_str(), whole.substr(0, size - 1));
        EXPECT_EQ(list[size], '#');
    }
}

TEST_F(FunctionTest, BadAbilityTokensAreRefused)
{
    char list[16] = "uid_ro";
    int count = 1;
    constexpr char invalid[] = "<red net_xml_system.cpp>Func(make_enum_to_string) Line(#) error. param is invalid\n";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(nullptr, 16, "a", ro, &count), -1); }), invalid);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(list, 16, nullptr, ro, &count), -1); }), invalid);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(list, 16, "a", ro, nullptr), -1); }), invalid);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(list, 0, "a", none, &count), -1); }), invalid);
    EXPECT_EQ(make_enum_to_string(list, 16, "a", NET_ABILITY_OPERATION_BUTT, &count), -1);
    EXPECT_STREQ(list, "uid_ro");
}

TEST_F(FunctionTest, DdnsProviders)
{
    const struct {
        const char *text;
        int index;
    } cases[] = {
        {"kelvo", 0}, {"DynDNS", 1}, {"peatnuts", 2}, {"3322", 3},  {"NO-IP", 4},    {"", 0},        {"d", 1},
        {"p", 2},     {"33", 3},     {"no", 4},       {"noip", -1}, {"peanuts", -1}, {"kelvos", -1}, {"x", -1},
    };
    for (const auto &each : cases) {
        int index = 99;
        EXPECT_EQ(get_ddns_type_index(&index, each.text), each.index < 0 ? -1 : 0) << each.text;
        EXPECT_EQ(index, each.index < 0 ? 99 : each.index) << each.text;
    }
}

TEST_F(FunctionTest, SearchMaskAsText)
{
    const auto text_of = [](int mask) {
        char text[128];
        std::memset(text, '~', sizeof text);
        EXPECT_EQ(evt_log_alarm_type_to_string(text, sizeof text, mask), 0);
        return std::string(text);
    };
    EXPECT_EQ(text_of(-1), "md,time_rec,man_rec,io,people,face,vehicle,dog_cat,visitor,pir,other,package");
    EXPECT_EQ(text_of(0x4), "md");
    EXPECT_EQ(text_of(0x800 | 0x20 | 0x80 | 0x200), "io,people,face,other");
    EXPECT_EQ(text_of(0), "none");
    EXPECT_EQ(text_of(0x1FC003), "none") << "the later types are never written";

    char room[8] = "kept";
    EXPECT_EQ(evt_log_alarm_type_to_string(room, 6, 0x4 | 0x800), 0);
    EXPECT_STREQ(room, "md,io");
    EXPECT_EQ(evt_log_alarm_type_to_string(room, 5, 0x4 | 0x800), -1);
    EXPECT_STREQ(room, "md,io") << "untouched";
    EXPECT_EQ(evt_log_alarm_type_to_string(room, 4, 0), -1);
}

TEST_F(FunctionTest, EqualPolygonsAreEqualWhereverTheyLie)
{
    const point_t corners[] = {{0.25F, 0.75F}, {-3, 5}, {0.5F, -0.125F}};
    point_t a[3], b[3];
    std::memcpy(a, corners, sizeof a);
    std::memcpy(b, corners, sizeof b);
    EXPECT_EQ(net_check_points_change(a, 3, b, 3), 0);
    for (float *side : {&b[2].x, &b[2].y}) {
        std::memcpy(b, corners, sizeof b);
        *side = -*side;
        EXPECT_EQ(net_check_points_change(a, 3, b, 3), 1);
    }
}

TEST_F(FunctionTest, NumbersAreWrittenWhole)
{
    TiXmlElement parent("p");
    for (const long long value : {0LL, -1LL, LLONG_MIN, LLONG_MAX}) {
        EXPECT_EQ(InsertChildToXmlElement_longlong(&parent, "l", value), 0);
        EXPECT_STREQ(parent.LastChild()->ToElement()->GetText(), std::to_string(value).c_str());
        EXPECT_EQ(InsertChildToXmlElement_int64(&parent, "l", value, 0, 0), 0);
        EXPECT_STREQ(parent.LastChild()->ToElement()->GetText(), std::to_string(value).c_str());
    }
}

} // namespace
