// Overlays and privacy masks: what is stored, refused, merged and written.
#include "support.h"

#include <net_public.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

using namespace test;

namespace {

class OsdTest : public HostTest {};

std::string mask(int id, const std::string &inside = "")
{
    return "<Shelter><id>" + std::to_string(id) + "</id>" + inside + "</Shelter>";
}

std::string masks(const std::string &list)
{
    return "<PicShelter><shelterList>" + list + "</shelterList></PicShelter>";
}

void expect_mask(const tag_net_shelter_v20_t &mask, const tag_net_shelter_v20_t &expected)
{
    EXPECT_EQ(mask.id, expected.id);
    EXPECT_EQ(mask.layer, expected.layer);
    EXPECT_EQ(mask.color, expected.color);
    EXPECT_EQ(mask.topLeftX, expected.topLeftX);
    EXPECT_EQ(mask.topLeftY, expected.topLeftY);
    EXPECT_EQ(mask.width, expected.width);
    EXPECT_EQ(mask.height, expected.height);
}

} // namespace

TEST_F(OsdTest, DateOverlay)
{
    Envelope<net_osd_date_v20_t> message(nets_param_osd_date_init, channel(5));
    message.param.dataSize = 0; // not compared
    EXPECT_EQ(message.read(nets_osd_date_x2s, "<OsdDate/>"), 0);
    EXPECT_EQ(message->channelId, 5);
    const std::string body = "<channelId>2</channelId><enable>1</enable><topLeftX>-10</topLeftX>"
                             "<topLeftY>65536</topLeftY><width>0</width><height>48</height>";
    EXPECT_EQ(message.read(nets_osd_date_x2s, "<OsdDate>" + body + "<language>German</language><other/></OsdDate>"), 0);
    EXPECT_EQ(message->channelId, 2);
    EXPECT_EQ(message->enable, 1);
    EXPECT_EQ(message->topLeftX, -10);
    EXPECT_EQ(message->topLeftY, 65536);
    EXPECT_EQ(message->width, 0);
    EXPECT_EQ(message->height, 48);
    EXPECT_EQ(message.param.inited, 1u);
    EXPECT_EQ(message.write(nets_osd_date_s2x),
              "<OsdDate version=\"1.1\">" + body + "<language>English</language></OsdDate>");
    message->language = 0;
    EXPECT_NE(message.write(nets_osd_date_s2x).find("<language>Chinese</language>"), std::string::npos);
    message->language = 9;
    EXPECT_NE(message.write(nets_osd_date_s2x).find("<language>English</language>"), std::string::npos);

    const struct {
        const char *text;
        int language;
    } languages[] = {{"English", 1}, {"chinese", 0}, {"CHINESE", 0}, {"Chin", 1}, {"Chinesee", 1}, {"", 1}};
    for (const auto &each : languages) {
        message->language = 7;
        EXPECT_EQ(message.read(nets_osd_date_x2s, "<d><language>" + std::string(each.text) + "</language></d>"), 0);
        EXPECT_EQ(message->language, each.language) << each.text;
    }
    EXPECT_EQ(message.read(nets_osd_date_x2s, "<d><language>" + std::string(31, 'x') + "</language></d>"), 0);
    EXPECT_EQ(message.read(nets_osd_date_x2s, "<d><language>" + std::string(32, 'x') + "</language></d>"), -1);
}

TEST_F(OsdTest, NegativesAndFlagsAreRefusedWithoutALine)
{
    const auto refused = [](Init init, Parser parser, const std::string &name, const char *value) {
        Envelope<net_osd_date_v20_t> message(init);
        EXPECT_EQ(log_of([&] {
                      EXPECT_EQ(message.read(parser, "<d><" + name + ">" + value + "</" + name + "></d>"), -1) << name;
                  }),
                  "");
    };
    for (const char *name : {"channelId", "width", "height"})
        refused(nets_param_osd_date_init, nets_osd_date_x2s, name, "-1");
    refused(nets_param_osd_date_init, nets_osd_date_x2s, "enable", "2");
    refused(nets_param_osd_date_init, nets_osd_date_x2s, "topLeftX", "left");
    refused(nets_param_osd_chn_init, nets_osd_chn_x2s, "channelId", "-1");
    refused(nets_param_osd_chn_init, nets_osd_chn_x2s, "enable", "-1");
    for (const char *name : {"channelId", "logicChannel", "maxNum"})
        refused(nets_param_pic_shelter_init, nets_pic_shelter_x2s, name, "-1");
    refused(nets_param_pic_shelter_init, nets_pic_shelter_x2s, "enable", "2");

    // Without an envelope there is no line either.
    EXPECT_EQ(log_of([] {
                  net_param_t empty = {};
                  TiXmlElement element("x");
                  for (Parser parser : {nets_osd_date_x2s, nets_osd_chn_x2s, nets_pic_shelter_x2s}) {
                      EXPECT_EQ(parser(nullptr, &element), -1);
                      EXPECT_EQ(parser(&empty, &element), -1);
                  }
                  for (Writer writer : {nets_osd_date_s2x, nets_osd_chn_s2x, nets_pic_shelter_s2x}) {
                      EXPECT_EQ(writer(nullptr, &element), -1);
                      EXPECT_EQ(writer(&empty, &element), -1);
                  }
                  EXPECT_TRUE(element.NoChildren());
              }),
              "");
}

TEST_F(OsdTest, ChannelNameOverlay)
{
    Envelope<net_osd_chn_v20_t> message(nets_param_osd_chn_init, channel(3));
    message.param.dataSize = 0;
    const std::string body = "<channelId>4</channelId><name>Gate (north), #2</name><enable>1</enable>"
                             "<topLeftX>12</topLeftX><topLeftY>-34</topLeftY><enWatermark>1</enWatermark>"
                             "<enBgcolor>7</enBgcolor>";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(nets_osd_chn_x2s, "<OsdChn>" + body + "</OsdChn>"), 0); }), "");
    EXPECT_EQ(message->channelId, 4);
    EXPECT_STREQ(message->name, "Gate (north), #2");
    EXPECT_EQ(message->enable, 1);
    EXPECT_EQ(message->topLeftX, 12);
    EXPECT_EQ(message->topLeftY, -34);
    EXPECT_EQ(message->enWatermark, 1);
    EXPECT_EQ(message->enBgcolor, 7);
    for (int word : message->reserved)
        EXPECT_EQ(word, 0);
    EXPECT_EQ(message.write(nets_osd_chn_s2x), "<OsdChn version=\"1.1\">" + body + "</OsdChn>");
    EXPECT_EQ(message.param.inited, 1u);

    // Unknown children are logged, each without a line break, and the walk goes on.
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(message.read(nets_osd_chn_x2s, "<O><names>x</names><color>%s%n</color><en>0</en></O>"), 0);
              }),
              "<red net_xml_osd.cpp>xml parse not exist this one<red net_xml_osd.cpp>xml parse not exist this one");
    EXPECT_EQ(message->enable, 0) << "\"en\" is the switch";

    EXPECT_EQ(message.read(nets_osd_chn_x2s, "<O><name>in/out</name><enable>1</enable></O>"), -1);
    EXPECT_STREQ(message->name, "in/out") << "stored, then refused";
    EXPECT_EQ(message->enable, 0);
    EXPECT_EQ(message.read(nets_osd_chn_x2s, "<O><name>Stra\xC3\x9F"
                                             "e</name></O>"),
              -1);
    EXPECT_EQ(message.read(nets_osd_chn_x2s, "<O><name>" + std::string(31, 'n') + "</name></O>"), 0);
    EXPECT_EQ(message.read(nets_osd_chn_x2s, "<O><name>" + std::string(32, 'n') + "</name></O>"), -1);
    EXPECT_STREQ(message->name, "");
    EXPECT_EQ(message.read(nets_osd_chn_x2s, "<O><name/></O>"), 0) << "an overlay may have no name";
}

TEST_F(OsdTest, MasksBothWays)
{
    Envelope<tag_net_shelter_cfg_v20_t> message(nets_param_pic_shelter_init, channel(6));
    message.param.dataSize = 0;
    EXPECT_EQ(message.read(nets_pic_shelter_x2s, "<PicShelter/>"), 0);
    EXPECT_EQ(message->channelId, 6);
    EXPECT_EQ(message->maxNum, -1);
    EXPECT_EQ(message.write(nets_pic_shelter_s2x),
              "<PicShelter version=\"1.1\"><channelId>6</channelId><logicChannel>0</logicChannel><enable>0</enable>"
              "<shelterList /></PicShelter>")
        << "what is not known is not told";

    const std::string body =
        "<channelId>1</channelId><logicChannel>2</logicChannel><maxNum>4</maxNum><enable>1</enable>"
        "<shelterList><Shelter><id>7</id><enable>1</enable><layer>-1</layer><color>16711680</color>"
        "<topLeftX>-5</topLeftX><topLeftY>6</topLeftY><width>100</width><height>0</height></Shelter>"
        "<Shelter><id>0</id><enable>0</enable><layer>0</layer><color>0</color><topLeftX>0</topLeftX>"
        "<topLeftY>0</topLeftY><width>0</width><height>0</height></Shelter></shelterList>";
    EXPECT_EQ(message.read(nets_pic_shelter_x2s, "<PicShelter>" + body + "</PicShelter>"), 0);
    EXPECT_EQ(message->channelId, 1);
    EXPECT_EQ(message->logicChannel, 2);
    EXPECT_EQ(message->maxNum, 4);
    EXPECT_EQ(message->enable, 1);
    EXPECT_EQ(message->shelterNum, 2);
    expect_mask(message->shelter[0], {7, -1, 16711680, -5, 6, 100, 0});
    expect_mask(message->shelter[1], {0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(message.param.inited, 1u);
    EXPECT_EQ(message.write(nets_pic_shelter_s2x), "<PicShelter version=\"1.1\">" + body + "</PicShelter>");
}

TEST_F(OsdTest, MasksAreMergedById)
{
    Envelope<tag_net_shelter_cfg_v20_t> message(nets_param_pic_shelter_init);
    EXPECT_EQ(
        message.read(nets_pic_shelter_x2s, masks(mask(3, "<layer>1</layer><color>2</color><topLeftX>3</topLeftX>"
                                                         "<topLeftY>4</topLeftY><width>5</width><height>6</height>") +
                                                 "<other><id>9</id></other><shelters/>" + // no masks
                                                 mask(5, "<width>50</width><height>60</height>") +
                                                 "<she><width>55</width><color>0</color><id>3</id></she>")),
        0);
    EXPECT_EQ(message->shelterNum, 2);
    expect_mask(message->shelter[0], {3, 1, 0, 3, 4, 55, 6});
    expect_mask(message->shelter[1], {5, 0, 0, 0, 0, 50, 60});

    // What an earlier message left is merged into, too; switched off, a mask keeps its place.
    EXPECT_EQ(message.read(nets_pic_shelter_x2s,
                           masks(mask(3, "<enable>0</enable><width>99</width>") + mask(5, "<layer>8</layer>"))),
              0);
    EXPECT_EQ(message->shelterNum, 2);
    expect_mask(message->shelter[0], {3, 0, 0, 0, 0, 0, 0});
    expect_mask(message->shelter[1], {5, 8, 0, 0, 0, 50, 60});
}

TEST_F(OsdTest, ARefusedMaskLeavesTheOthers)
{
    Envelope<tag_net_shelter_cfg_v20_t> message(nets_param_pic_shelter_init);
    EXPECT_EQ(message.read(nets_pic_shelter_x2s, masks(mask(1, "<width>10</width>"))), 0);
    for (const std::string &wrong :
         {mask(8), mask(-1), mask(1, "<width>20</width><height>-1</height>"), mask(1, "<width>-1</width>"),
          mask(1, "<enable>2</enable>"), std::string("<Shelter><width>5</width></Shelter>"), std::string("<Shelter/>")})
        EXPECT_EQ(message.read(nets_pic_shelter_x2s, masks(wrong + mask(2))), -1) << wrong;
    EXPECT_EQ(message->shelterNum, 1);
    expect_mask(message->shelter[0], {1, 0, 0, 0, 0, 10, 0});
}

TEST_F(OsdTest, EightMasksFit)
{
    Envelope<tag_net_shelter_cfg_v20_t> message(nets_param_pic_shelter_init);
    std::string list;
    for (int id = 0; id < 8; ++id)
        list = mask(id, "<width>" + std::to_string(id) + "0</width>") + list;
    EXPECT_EQ(message.read(nets_pic_shelter_x2s, masks(list)), 0);
    EXPECT_EQ(message->shelterNum, 8);
    expect_mask(message->shelter[0], {7, 0, 0, 0, 0, 70, 0});
    expect_mask(message->shelter[7], {0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(message.read(nets_pic_shelter_x2s, masks(mask(0, "<width>9</width>"))), 0) << "it has its place";
    EXPECT_EQ(message->shelter[7].width, 9);
    message->shelter[7].id = 20;
    EXPECT_EQ(message.read(nets_pic_shelter_x2s, masks(mask(0))), -1) << "a ninth id";

    // Counts that no parser leaves.
    for (int count : {-1, -2147483647, 9, 2147483647}) {
        message->shelterNum = count;
        EXPECT_EQ(message.read(nets_pic_shelter_x2s, masks(mask(0))), -1);
        EXPECT_EQ(message->shelterNum, count);
        const std::string text = message.write(nets_pic_shelter_s2x);
        EXPECT_EQ(text.find("<id>20</id>") != std::string::npos, count > 0) << "the eighth mask is the last";
    }
}

TEST_F(OsdTest, MaskComponentsCheckTheirNames)
{
    tag_net_shelter_cfg_v20_t config = {};
    Xml one(mask(4));
    EXPECT_EQ(get_shelter_from_xmlnode(&config, one, "shelterList"), 0) << "a beginning of the key";
    EXPECT_EQ(get_shelter_from_xmlnode(&config, one, nullptr), 0);
    EXPECT_EQ(get_shelter_from_xmlnode(&config, one, "mask"), -1);
    EXPECT_EQ(get_shelter_from_xmlnode(nullptr, one, nullptr), -1);
    EXPECT_EQ(get_shelter_from_xmlnode(&config, nullptr, nullptr), -1);
    EXPECT_EQ(config.shelterNum, 1);

    Xml list("<shelterList>" + mask(5) + "</shelterList>");
    EXPECT_EQ(get_shelterList_from_xmlnode(&config, list, "shelter"), -1);
    EXPECT_EQ(config.shelterNum, 1);
    EXPECT_EQ(get_shelterList_from_xmlnode(&config, list, "SHELTERLIST"), 0);
    EXPECT_EQ(config.shelterNum, 2);
    EXPECT_EQ(get_shelterList_from_xmlnode(nullptr, list, nullptr), -1);
    EXPECT_EQ(get_shelterList_from_xmlnode(&config, nullptr, nullptr), -1);
}

TEST_F(OsdTest, Examples)
{
    Envelope<net_osd_date_v20_t> date(nets_param_osd_date_init);
    EXPECT_EQ(date.read(nets_osd_date_x2s, example("osd_date")), 0);
    Envelope<net_osd_chn_v20_t> name(nets_param_osd_chn_init);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(name.read(nets_osd_chn_x2s, example("osd_channel")), 0); }),
              "<red net_xml_osd.cpp>xml parse not exist this one");
    Envelope<tag_net_shelter_cfg_v20_t> masks(nets_param_pic_shelter_init);
    EXPECT_EQ(masks.read(nets_pic_shelter_x2s, example("privacy_masks")), 0);
    EXPECT_EQ(masks->shelterNum, 3);
    expect_mask(masks->shelter[0], {0, 0, 0, 140, 120, 320, 240});
    expect_mask(masks->shelter[1], {3, 1, 8421504, 1500, 900, 200, 100});
    expect_mask(masks->shelter[2], {1, 0, 0, 0, 0, 0, 0});
}
