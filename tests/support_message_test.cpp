#include "support.h"

#include <net_public.h>

#include <cstring>
#include <string>

namespace {

using test::Envelope;
using test::log_of;
using test::Xml;

using Support = tag_net_support_v20_t;
using Channel = net_chn_support_v20_t;

constexpr char refused[] = "Func(net_support_x2s) Line(#)\n";
constexpr char refused_linkage[] = "<green net_xml_system.cpp>\n";

// A "Support" with these children; after a success the envelope must not claim more than the initialiser did.
int read(Envelope<Support> &support, const std::string &children)
{
    const int result = support.read(net_support_x2s, "<Support>" + children + "</Support>");
    EXPECT_EQ(support.param.inited, 1u);
    return result;
}

std::string log_of_refusal(Envelope<Support> &support, const std::string &children)
{
    return log_of([&] { EXPECT_EQ(read(support, children), -1) << children; });
}

class SupportTest : public test::HostTest {
protected:
    Envelope<Support> support{nets_param_support_init};
};

TEST_F(SupportTest, TakesImageFeaturesForGranted)
{
    support->channel[0].newIspCfg = 0x50000;
    ASSERT_EQ(read(support, "<item><chnID>1</chnID><newIspCfg>3</newIspCfg></item>"), 0);
    EXPECT_EQ(support->channel[0].newIspCfg, 0x51fff);
    EXPECT_EQ(support->channel[1].newIspCfg, 3);
    ASSERT_EQ(read(support, "<item><chnID>0</chnID><newIspCfg>5</newIspCfg></item>"), 0);
    EXPECT_EQ(support->channel[0].newIspCfg, 5);
}

TEST_F(SupportTest, DerivesTheFirstChannelsPanTiltFlags)
{
    struct Case {
        int type, preset, patrol, other, automatic;
    };
    const Case cases[] = {{0, 9, 9, 9, 9}, {1, 0, 0, 0, 1}, {2, 1, 1, 0, 1}, {3, 1, 1, 0, 1},
                          {4, 1, 1, 0, 1}, {5, 1, 0, 0, 1}, {6, 9, 9, 9, 9}, {-1, 9, 9, 9, 9}};
    for (const Case &one : cases) {
        SCOPED_TRACE(one.type);
        Channel &first = support->channel[0];
        first.ptzPreset = first.ptzPatrol = first.ptzTattern = first.ptzControl = first.autoPt = 9;
        first.ptzType = one.type;
        // The item is about another channel.
        ASSERT_EQ(read(support, "<item><chnID>3</chnID><ptzType>2</ptzType></item>"), 0);
        EXPECT_EQ(first.ptzPreset, one.preset);
        EXPECT_EQ(first.ptzPatrol, one.patrol);
        EXPECT_EQ(first.ptzTattern, one.other);
        EXPECT_EQ(first.ptzControl, one.other);
        EXPECT_EQ(first.autoPt, one.automatic);
        EXPECT_EQ(support->channel[3].ptzPreset, 0);
    }
    support->channel[0].ptzType = 2;
    ASSERT_EQ(read(support, "<item><chnID>3</chnID><ptzPreset>0</ptzPreset></item>"), 0);
    EXPECT_EQ(support->channel[0].ptzPreset, 9);
}

TEST_F(SupportTest, AnItemTellsWhetherItCarriesAPreset)
{
    int carried = 0;
    Xml without("<item><chnID>1</chnID><ptzType>2</ptzType></item>");
    EXPECT_EQ(get_item_from_xmlnode(support.payload(), without, nullptr, &carried), 0);
    EXPECT_EQ(carried, 0);
    Xml with("<item><chnID>1</chnID><ptzPreset>x</ptzPreset></item>");
    EXPECT_EQ(get_item_from_xmlnode(support.payload(), with, nullptr, &carried), -1);
    EXPECT_EQ(carried, 1) << "whether or not it is read";
}

TEST_F(SupportTest, LogsRefusedLinkageInEachReader)
{
    modulemask = 0;
    EXPECT_EQ(log_of_refusal(support,
                             "<IOTsupport><smartPlug><openClose>1</openClose><duration>on</duration></smartPlug>"
                             "</IOTsupport>"),
              refused_linkage + std::string(refused_linkage) + refused);
    EXPECT_EQ(support->IOTsupport.smartPlug, 1u);

    net_iot_linkage_support_t linkage = {0, 0};
    Xml bad("<any><type>x</type><openClose>x</openClose></any>");
    using Reader = int (*)(net_iot_linkage_support_t *, TiXmlNode *);
    for (const Reader reader :
         {get_smartPlug_from_xmlnode, get_alertorBell_from_xmlnode, get_alertorLight_from_xmlnode}) {
        EXPECT_EQ(log_of([&] { EXPECT_EQ(reader(&linkage, bad.root()), -1); }), refused_linkage);
        EXPECT_EQ(log_of([&] { EXPECT_EQ(reader(&linkage, nullptr), -1); }), refused_linkage);
        EXPECT_EQ(log_of([&] { EXPECT_EQ(reader(nullptr, bad.root()), -1); }), refused_linkage);
    }
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_iot_support_from_xmlnode(nullptr, bad.root()), -1); }), refused_linkage);
}

TEST_F(SupportTest, WritesNoMoreChannelsThanThereAre)
{
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

// Abilities

class AbilityTest : public test::HostTest {
protected:
    static constexpr auto ro = NET_ABILITY_OPERATION_RO;
    static constexpr auto rw = NET_ABILITY_OPERATION_RW;
    static constexpr auto none = NET_ABILITY_OPERATION_NONE;
    Envelope<net_ability_v20_t> ability{nets_param_ability_init};

    int read_image(const std::string &children)
    {
        return ability.read(net_ability_x2s, "<AbilityInfo><image>" + children + "</image></AbilityInfo>");
    }
};

TEST_F(AbilityTest, AppendsTokens)
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

TEST_F(AbilityTest, CutsListsAtTheirSize)
{
    struct Case {
        int size;
        const char *first, *second;
    };
    for (const Case &one :
         {Case{13, "uid_ro", "uid_ro, norm"}, Case{9, "uid_ro", "uid_ro, "}, Case{8, "uid_ro", "uid_ro,"},
          Case{7, "uid_ro", "uid_ro"}, Case{5, "uid_", "uid_"}, Case{1, "", ""}}) {
        SCOPED_TRACE(one.size);
        std::string list(20, '#');
        int count = 0;
        EXPECT_EQ(make_enum_to_string(&list[0], one.size, "uid", ro, &count), 0);
        EXPECT_STREQ(list.c_str(), one.first);
        EXPECT_EQ(make_enum_to_string(&list[0], one.size, "norm", rw, &count), 0);
        EXPECT_STREQ(list.c_str(), one.second);
        EXPECT_EQ(list[static_cast<std::size_t>(one.size)], '#');
    }
}

TEST_F(AbilityTest, RefusesBadTokens)
{
    char list[16] = "uid_ro";
    int count = 1;
    constexpr char invalid[] = "<red net_xml_system.cpp>Func(make_enum_to_string) Line(#) error. param is invalid\n";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(nullptr, 16, "a", ro, &count), -1); }), invalid);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(list, 16, nullptr, ro, &count), -1); }), invalid);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(list, 16, "a", ro, nullptr), -1); }), invalid);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(list, 0, "a", none, &count), -1); }), invalid);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(list, 16, "a", NET_ABILITY_OPERATION_BUTT, &count), -1); }),
              "<red net_xml_system.cpp>Func(make_enum_to_string) Line(#) error. enum value is BUTT\n");
    EXPECT_STREQ(list, "uid_ro");
}

TEST_F(AbilityTest, RefusesBadImageAbilities)
{
    constexpr char no_channel[] = "<red net_xml_system.cpp>get channelId failed!\n";
    constexpr char no_text[] = "<red net_xml_system.cpp>get cString failed!\n";
    const auto sub_module = [](const std::string &channel, const std::string &value) {
        return "<subModule><channelId>" + channel + "</channelId><abilityValue>" + value +
               "</abilityValue></subModule>";
    };
    const auto log = [&](const std::string &children) { return log_of([&] { EXPECT_EQ(read_image(children), -1); }); };
    EXPECT_EQ(log(sub_module("16", "ispBasic_ro")), no_channel);
    EXPECT_EQ(log(sub_module("-1", "ispBasic_ro")), no_channel);
    EXPECT_EQ(log(sub_module("", "ispBasic_ro")), no_channel);
    const std::string longest(511 - std::strlen("ledState_rw"), 'x');
    EXPECT_EQ(read_image(sub_module("4", longest + "ledState_rw")), 0);
    EXPECT_EQ(ability->channel[4].ledState, rw);
    EXPECT_EQ(log(sub_module("4", longest + "xledState_ro")), no_text);
    EXPECT_EQ(ability->channel[4].ledState, rw);

    Xml xml("<AbilityInfo />");
    net_param_t empty = ability.param;
    empty.data = nullptr;
    const std::string null = "<red net_xml_system.cpp>arguments are null.\n";
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(net_ability_x2s(nullptr, xml.root()), -1);
                  EXPECT_EQ(net_ability_x2s(&ability.param, nullptr), -1);
                  EXPECT_EQ(net_ability_x2s(&empty, xml.root()), -1);
              }),
              null + null + null);
}

TEST_F(AbilityTest, FailsToWriteWhatIsNoOperation)
{
    ability->section[NET_ABILITY_SECTION_DISK] = 1;
    ability->device.hddCfg = NET_ABILITY_OPERATION_BUTT;
    ability->device.hddInit = static_cast<NET_ABILITY_OPERATION_V20_E>(-7); // as good as none
    EXPECT_EQ(log_of([&] { EXPECT_EQ(ability.write(net_ability_s2x), "failed"); }),
              "<red net_xml_system.cpp>Func(make_enum_to_string) Line(#) error. enum value is BUTT\n");
    ability->device.hddCfg = ro;
    EXPECT_NE(ability.write(net_ability_s2x).find("<abilityValue>hddCfg_ro</abilityValue>"), std::string::npos);
    ability.param.dataSize += 4;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(ability.write(net_ability_s2x), "failed"); }),
              "<red net_xml_system.cpp>func:net_ability_s2x line:#\n");
}

// Heart beat

class HeartBeatTest : public test::HostTest {
protected:
    Envelope<net_heart_beat_t> beat{net_param_heart_beat_init};

    int read(const std::string &children)
    {
        return beat.read(nets_param_heart_beat_x2s, "<HeartBeat>" + children + "</HeartBeat>");
    }
    std::string log_of_refusal(const std::string &children)
    {
        return log_of([&] { EXPECT_EQ(read(children), -1) << children; });
    }
};

TEST_F(HeartBeatTest, RefusesBadNumbersWithUngatedLines)
{
    modulemask = 0;
    EXPECT_EQ(log_of_refusal("<size>-1</size>"), "Func(nets_param_heart_beat_x2s) Line(#)\n");
    EXPECT_EQ(log_of_refusal("<sec>-2</sec>"), "Func(nets_param_heart_beat_x2s) Line(#) -2\n");
    EXPECT_EQ(log_of_refusal("<usec>-3</usec>"), "Func(nets_param_heart_beat_x2s) Line(#) -3 \n");
    EXPECT_EQ(log_of_refusal("<usec>soon</usec>"), "Func(nets_param_heart_beat_x2s) Line(#) -3 \n");
}

} // namespace
