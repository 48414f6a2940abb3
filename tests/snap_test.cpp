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

} // namespace
