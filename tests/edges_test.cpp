// Values at the edge of what is told apart, typed from the protocol's description and not from the tables.
#include "support.h"

#include <net_public.h>

#include <climits>
#include <cstring>
#include <string>

namespace {

using test::Envelope;

class EdgeTest : public test::HostTest {};

TEST_F(EdgeTest, EqualPolygonsAreEqualWhereverTheyLie)
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

TEST_F(EdgeTest, NumbersAreWrittenWhole)
{
    TiXmlElement parent("p");
    for (const long long value : {0LL, -1LL, LLONG_MIN, LLONG_MAX}) {
        EXPECT_EQ(InsertChildToXmlElement_longlong(&parent, "l", value), 0);
        EXPECT_STREQ(parent.LastChild()->ToElement()->GetText(), std::to_string(value).c_str());
        EXPECT_EQ(InsertChildToXmlElement_int64(&parent, "l", value, 0, 0), 0);
        EXPECT_STREQ(parent.LastChild()->ToElement()->GetText(), std::to_string(value).c_str());
    }
}

TEST_F(EdgeTest, AGridWithASideOfTheClassicSizeIsClassic)
{
    Envelope<tag_net_pic_motion_cfg_v20_t> message(nets_param_md_init);
    const struct {
        int width, height;
    } sizes[] = {{96, 1}, {1, 64}, {96, 63}, {95, 64}};
    for (const auto &size : sizes) {
        message->width = size.width;
        message->height = size.height;
        EXPECT_NE(message.write(net_md_s2x).find("<columns>96</columns><rows>64</rows>"), std::string::npos)
            << size.width << " x " << size.height;
    }
}

TEST_F(EdgeTest, OnlyStreamInformationIsAnEntry)
{
    Envelope<net_enc_list_v20_t> message(net_param_enc_list_init);
    EXPECT_EQ(message.read(xml_enc_info_list_x2s,
                           "<L><channelId>3</channelId><StreamInfo><channelBits>5</channelBits></StreamInfo>"
                           "<StreamInfos><channelBits>6</channelBits></StreamInfos></L>"),
              0);
    EXPECT_EQ(message.param.reserved1, 1u);
    EXPECT_EQ(message->entries[0].channelBits, 5u);
}

TEST_F(EdgeTest, AnImageAbilityWithoutAChannelIsTheFirstOnes)
{
    Envelope<net_ability_v20_t> message(nets_param_ability_init);
    EXPECT_EQ(message.read(net_ability_x2s, "<A><image><subModule><abilityValue>ispBasic_rw</abilityValue></subModule>"
                                            "</image></A>"),
              0);
    EXPECT_EQ(message->channel[0].ispBasic, NET_ABILITY_OPERATION_RW);
    EXPECT_EQ(message->channel[1].ispBasic, NET_ABILITY_OPERATION_NONE);
}

// Where an unknown word is no failure, its length is what is refused.
TEST_F(EdgeTest, WordsHaveALongestText)
{
    const struct {
        test::Init init;
        test::Parser parser;
        const char *front, *back;
        std::size_t longest;
    } words[] = {
        {test::prepared<net_preview_v20_t>, net_preview_x2s, "<p><streamType>", "</streamType></p>", 30},
        {net_param_dev_info_init, net_xml_device_info_x2s, "<d><type>", "</type></d>", 15},
        {net_param_dev_info_init, net_xml_device_info_x2s, "<d><ptzMode>", "</ptzMode></d>", 15},
        {net_param_dev_info_init, net_xml_device_info_x2s, "<d><norm>", "</norm></d>", 15},
        {net_param_dev_info_init, net_xml_device_info_x2s, "<d><language>", "</language></d>", 15},
        {nets_param_sys_general_init, nets_sys_general_x2s, "<g><language>", "</language></g>", 15},
        {nets_param_osd_date_init, nets_osd_date_x2s, "<o><language>", "</language></o>", 31},
        {test::prepared<net_cover_preview_v20_t>, net_cover_preview_x2s, "<c><streamType>", "</streamType></c>", 30},
        {test::prepared<net_new_replay_start_v20_t>, nets_param_new_replay_start_x2s, "<r><streamType>",
         "</streamType></r>", 30},
    };
    for (const auto &word : words)
        for (const std::size_t more : {0u, 1u}) {
            test::AnyEnvelope message;
            net_ext_t ext = {};
            ASSERT_EQ(word.init(&message.param, &ext), 0);
            const std::string body = word.front + std::string(word.longest + more, 'x') + word.back;
            int result = 0;
            test::output_of([&] { result = message.read(word.parser, body); });
            EXPECT_EQ(result, more != 0 ? -1 : 0) << body;
        }
}

TEST_F(EdgeTest, ACruiseThatIsOffKeepsItsDefaults)
{
    Envelope<net_ptz_cruise_list_v20_t> message(nets_param_ptz_cruise_init);
    EXPECT_EQ(message.read(net_ptz_cruise_x2s, "<P><channelId>6</channelId><cruiseList><cruise><enable>0</enable>"
                                               "<patrolId>2</patrolId></cruise></cruiseList></P>"),
              0);
    const auto &record = message->keyPos[0];
    EXPECT_EQ(record.patrolId, 2);
    EXPECT_EQ(record.keyPosId, -1);
    EXPECT_EQ(record.presetId, -1);
    EXPECT_EQ(record.speed, 0);
    EXPECT_EQ(record.reserved, 7);
}

TEST_F(EdgeTest, OverlayFlags)
{
    Envelope<net_osd_chn_v20_t> name(nets_param_osd_chn_init);
    for (const char *refused : {"2", "-1", "10"})
        EXPECT_EQ(name.read(nets_osd_chn_x2s, std::string("<o><enable>") + refused + "</enable></o>"), -1);
    EXPECT_EQ(
        name.read(nets_osd_chn_x2s, "<o><enable>1</enable><enWatermark>7</enWatermark><enBgcolor>-1</enBgcolor></o>"),
        0);
    EXPECT_EQ(name->enable, 1);
    EXPECT_EQ(name->enWatermark, 7);
    EXPECT_EQ(name->enBgcolor, -1);
}

} // namespace
