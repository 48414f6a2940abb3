// Overlays and privacy masks: what is stored, refused, merged and written.
#include "support.h"

#include <net_public.h>

#include <cstring>
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
