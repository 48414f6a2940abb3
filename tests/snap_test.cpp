#include "support.h"

#include <net_public.h>

#include <cstring>
#include <string>

namespace {

using test::Envelope;
using test::log_of;
using test::Xml;

class SnapTest : public test::HostTest {};

template <class Payload> int prepare(net_param_t *param, net_ext_t *ext)
{
    return net_param_init_size_id(param, ext, sizeof(Payload), 1);
}

TEST_F(SnapTest, ASnapshotRequestIsRead)
{
    Envelope<net_snap_v20_t> message(net_param_snap_init);
    message.param.dataSize = 1; // not compared
    EXPECT_EQ(message.read(nets_param_snap_x2s,
                           "<Snap><channelId>2</channelId><logicChannel>1</logicChannel><fileName>" +
                               std::string(127, 'f') +
                               "</fileName><time>-3</time><pictureSize>4</pictureSize><fullFrame>5</fullFrame>"
                               "<utcTime>6</utcTime><streamType>ext</streamType>"
                               "<snapTlpParam><specificTime>7</specificTime><tlpType>iframe</tlpType><width>8</width>"
                               "<height>9</height><encType>10</encType><utcTime>11</utcTime>"
                               "<iFrameOffset>-12</iFrameOffset></snapTlpParam><snapType>TLP</snapType></Snap>"),
              0);
    EXPECT_EQ(message->channelId, 2);
    EXPECT_EQ(message->logicChannel, 1);
    EXPECT_EQ(message->fileName, std::string(127, 'f'));
    EXPECT_EQ(message->time, -3);
    EXPECT_EQ(message->pictureSize, 4);
    EXPECT_EQ(message->fullFrame, 5);
    EXPECT_EQ(message->utcTime, 6);
    EXPECT_EQ(message->streamType, 4);
    EXPECT_EQ(message->snapType, 1);
    const net_snap_tlp_t &control = message->snapTlpParam;
    EXPECT_EQ(control.specificTime, 7);
    EXPECT_EQ(control.tlpType, 1);
    EXPECT_EQ(control.width, 8);
    EXPECT_EQ(control.height, 9);
    EXPECT_EQ(control.encType, 10);
    EXPECT_EQ(control.utcTime, 11);
    EXPECT_EQ(control.iFrameOffset, -12);
    EXPECT_EQ(message.param.inited, 1U);
}

TEST_F(SnapTest, SnapshotWords)
{
    Envelope<net_snap_v20_t> message(net_param_snap_init);
    const auto read = [&](const std::string &child) {
        return message.read(nets_param_snap_x2s, "<Snap>" + child + "</Snap>");
    };
    EXPECT_EQ(read("<streamType>sub</streamType><snapType>tlp</snapType>"), 0);
    for (const std::string other : {"Main", "mainStream", "ma", ""}) {
        EXPECT_EQ(read("<streamType>" + other + "</streamType>"), 0);
        EXPECT_EQ(message->streamType, 1) << other;
    }
    EXPECT_EQ(read("<streamType>main</streamType>"), 0);
    EXPECT_EQ(message->streamType, 0);
    EXPECT_EQ(read("<snapType>timelapse</snapType>"), 0);
    EXPECT_EQ(message->snapType, 0);
    // The beginning of two keys goes to the first one: the control record, not the type.
    EXPECT_EQ(read("<snapT><tlpType>IFrame</tlpType></snapT>"), 0);
    EXPECT_EQ(message->snapTlpParam.tlpType, 1);

    const std::string words(32, 'w');
    for (const std::string &bad :
         {"<streamType>" + words + "</streamType>", "<snapType>" + words + "</snapType>",
          "<snapTlpParam><tlpType>" + words + "</tlpType></snapTlpParam>",
          "<fileName>" + std::string(128, 'f') + "</fileName>", std::string("<channelId>-1</channelId>"),
          std::string("<logicChannel>-1</logicChannel>"), std::string("<time/>")})
        EXPECT_EQ(log_of([&] { EXPECT_EQ(read(bad), -1) << bad; }), "");
    EXPECT_EQ(message->logicChannel, -1) << "stored, then refused";
    EXPECT_EQ(log_of([] { EXPECT_EQ(nets_param_snap_x2s(nullptr, Xml("<Snap/>")), -1); }), "");
}

TEST_F(SnapTest, TheTimeLapseControlChecksItsName)
{
    net_snap_tlp_t control{};
    control.tlpType = 1;
    EXPECT_EQ(get_snaptlp_ctrl_from_xmlnode(&control, Xml("<SNAPTLP><tlpType>P</tlpType></SNAPTLP>"), "snapTlpParam"),
              0);
    EXPECT_EQ(control.tlpType, 0);
    EXPECT_EQ(get_snaptlp_ctrl_from_xmlnode(&control, Xml("<snapType/>"), "snapTlpParam"), -1);
    EXPECT_EQ(get_snaptlp_ctrl_from_xmlnode(&control, Xml("<any><width>3</width></any>"), nullptr), 0);
    EXPECT_EQ(control.width, 3);
    EXPECT_EQ(get_snaptlp_ctrl_from_xmlnode(nullptr, Xml("<any/>"), nullptr), -1);
    EXPECT_EQ(get_snaptlp_ctrl_from_xmlnode(&control, nullptr, nullptr), -1);
}

TEST_F(SnapTest, TimeLapseFilesAndCropsAreRead)
{
    Envelope<net_snaptlps_t> file(net_param_snaptlps_init);
    EXPECT_EQ(file.read(nets_param_snaptlps_x2s, "<s><channelId>1</channelId><fileName>a.jpg</fileName>"
                                                 "<fileSize>2</fileSize><aiType>4294967295</aiType></s>"),
              0);
    EXPECT_EQ(file->channelId, 1);
    EXPECT_STREQ(file->fileName, "a.jpg");
    EXPECT_EQ(file->fileSize, 2);
    EXPECT_EQ(file->aiType, 4294967295U);
    EXPECT_EQ(file.read(nets_param_snaptlps_x2s, "<s><channelId>-1</channelId></s>"), -1);

    Envelope<net_crop_cfg_t> crop(nets_param_crop_init);
    EXPECT_EQ(crop.read(nets_param_crop_x2s, "<c><channelId>63</channelId><cropWidth>1</cropWidth>"
                                             "<cropHeight>2</cropHeight><mainWidth>3</mainWidth>"
                                             "<mainHeight>4</mainHeight><subWidth>5</subWidth><subHeight>6</subHeight>"
                                             "<topLeftX>-7</topLeftX><topLeftY>-8</topLeftY><version>9</version></c>"),
              0);
    const net_crop_cfg_t expected = {63, -7, -8, 1, 2, 3, 4, 5, 6, 9};
    EXPECT_EQ(std::memcmp(crop.payload(), &expected, sizeof expected), 0);
    for (const char *bad : {"<channelId>64</channelId>", "<channelId>-1</channelId>", "<cropWidth>-1</cropWidth>",
                            "<cropHeight>-1</cropHeight>"})
        EXPECT_EQ(crop.read(nets_param_crop_x2s, "<c>" + std::string(bad) + "</c>"), -1) << bad;
    EXPECT_EQ(crop.read(nets_param_crop_x2s, "<c><crop>11</crop></c>"), 0);
    EXPECT_EQ(crop->cropWidth, 11);
}

TEST_F(SnapTest, TheHeightOfACropSnapshotIsMisspelled)
{
    Envelope<net_crop_snap_t> message(prepare<net_crop_snap_t>);
    EXPECT_EQ(message.read(nets_param_crop_snap_x2s, "<c><channelId>100</channelId><width>65535</width>"
                                                     "<height>1080</height></c>"),
              0);
    EXPECT_EQ(message->channelId, 100);
    EXPECT_EQ(message->width, 65535);
    EXPECT_EQ(message->height, 0);
    EXPECT_EQ(message.read(nets_param_crop_snap_x2s, "<c><heigth>1080</heigth></c>"), 0);
    EXPECT_EQ(message->height, 1080);
    for (const char *bad : {"<width>65536</width>", "<width>-1</width>", "<heigth>65536</heigth>",
                            "<heigth>-1</heigth>", "<channelId>-1</channelId>"})
        EXPECT_EQ(message.read(nets_param_crop_snap_x2s, "<c>" + std::string(bad) + "</c>"), -1) << bad;
}

TEST_F(SnapTest, OnlyTheWriterOfAnImageFileComparesTheSize)
{
    Envelope<net_image_file_info_t> message(net_param_image_file_info_init);
    const std::string body =
        "<imageFileInfo version=\"1.1\"><channelId>1</channelId><fileSize>2</fileSize><imageName>" +
        std::string(255, 'n') + "</imageName><delete>3</delete></imageFileInfo>";
    message.param.dataSize = 267;
    EXPECT_EQ(message.read(net_param_image_file_info_x2s, body), 0);
    EXPECT_EQ(message->channelId, 1);
    EXPECT_EQ(message->fileSize, 2);
    EXPECT_EQ(message->delete_, 3);
    EXPECT_EQ(message.param.inited, 1U);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_param_image_file_info_s2x), "failed"); }),
              "<red net_xml_snap.cpp>func:net_param_image_file_info_s2x line:#\n");
    message.param.dataSize = 268;
    EXPECT_EQ(message.write(net_param_image_file_info_s2x), body);
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(message.read(net_param_image_file_info_x2s, "<i><channelId>-1</channelId></i>"), -1);
                  EXPECT_EQ(net_param_image_file_info_x2s(&message.param, nullptr), -1);
              }),
              "");
}

TEST_F(SnapTest, TheSwitchOfAiTimeLapseIsWrittenWithACapital)
{
    Envelope<net_ai_snaptlps_t> message(net_param_ai_snaptlps_init);
    EXPECT_EQ(message.read(net_ai_snaptlps_x2s, "<a><enable>1</enable><osdEnable>-2</osdEnable></a>"), 0);
    EXPECT_EQ(message->enable, 1);
    EXPECT_EQ(message->osdEnable, -2);
    EXPECT_EQ(message.param.inited, 1U);
    EXPECT_EQ(message.write(net_ai_snaptlps_s2x),
              "<aiSnapTlps Version=\"1.1\"><enable>1</enable><osdEnable>-2</osdEnable></aiSnapTlps>");
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(message.read(net_ai_snaptlps_x2s, "<a><osd>x</osd></a>"), -1);
                  EXPECT_EQ(net_ai_snaptlps_s2x(&message.param, nullptr), -1);
              }),
              "");
}

} // namespace
