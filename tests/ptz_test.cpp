// Pan, tilt and zoom: what each message stores, refuses and writes.
#include "support.h"

#include <net_public.h>

#include <cstring>
#include <string>

using namespace test;

namespace {

class PtzTest : public HostTest {};

std::string key_positions(int count)
{
    return element("keyPosList", repeated(count, "<keyPos><keyPosId>1</keyPosId><presetId>-1</presetId></keyPos>"));
}

} // namespace

TEST_F(PtzTest, PresetListsAreStrictAndBounded)
{
    const std::string good = "<preset><id>1</id></preset>";
    const auto body = [](const std::string &presets) {
        return "<P><channelId>0</channelId>" + element("presetList", presets) + "</P>";
    };
    const auto result = [&](const std::string &text) {
        Envelope<net_ptz_preset_list_v20_t> message(net_param_ptz_preset_init);
        return message.read(net_ptz_preset_x2s, text);
    };
    EXPECT_EQ(result("<P>" + element("presetList", good) + "</P>"), -1) << "no channel";
    EXPECT_EQ(result(body("<preset><id>256</id></preset>")), -1);
    EXPECT_EQ(result(body("<preset><id>-1</id></preset>")), -1);
    EXPECT_EQ(result(body("<preset><name>x</name></preset>")), -1) << "no id";
    EXPECT_EQ(result(body("<preset><id>1</id><command>sto</command></preset>")), -1);
    EXPECT_EQ(result(body(good + "<other/>")), -1) << "not a preset";
    EXPECT_EQ(result(body(repeated(256, good))), 0);
    EXPECT_EQ(result(body(repeated(256, good) + "<other/>")), 0) << "what follows the 256th is not looked at";
}

TEST_F(PtzTest, CruisesBeyondTheirLimits)
{
    const auto cruise = [](const std::string &inside) {
        return "<cruise><patrolId>0</patrolId>" + inside + "</cruise>";
    };
    const auto body = [](const std::string &cruises) {
        return "<P><channelId>0</channelId>" + element("cruiseList", cruises) + "</P>";
    };
    const auto records = [&](const std::string &text) {
        Envelope<net_ptz_cruise_list_v20_t> message(nets_param_ptz_cruise_init, channel(3));
        const net_ptz_cruise_list_v20_t before = *message;
        if (message.read(net_ptz_cruise_x2s, text) == 0)
            return static_cast<int>(message.param.dataSize / 116);
        EXPECT_EQ(std::memcmp(&before, message.payload(), sizeof before), 0) << "a refused message leaves the payload";
        EXPECT_EQ(message.param.dataSize, 3712u);
        return -1;
    };
    EXPECT_EQ(records(body(cruise(key_positions(17)))), 16) << "the rest is cut";
    EXPECT_EQ(records(body(repeated(2, cruise(key_positions(16))))), 32);
    EXPECT_EQ(records(body(repeated(2, cruise(key_positions(16))) + cruise(key_positions(1)))), -1) << "33 records";
    EXPECT_EQ(records(body(repeated(6, cruise("")) + "<other/>")), 0) << "what follows the sixth is not looked at";
    EXPECT_EQ(records(body(cruise(key_positions(16)) + cruise(key_positions(15)) +
                           cruise("<enable>0</enable>" + key_positions(16)))),
              32)
        << "key positions of a cruise that is off do not count";
    EXPECT_EQ(records(body(cruise(key_positions(3)) + "<other/>")), -1) << "not a cruise";
    EXPECT_EQ(records(body("<cruise>" + key_positions(1) + "</cruise>")), -1) << "no patrol";
    EXPECT_EQ(records("<P>" + element("cruiseList", cruise("")) + "</P>"), -1) << "no channel";
    EXPECT_EQ(records(body(cruise(element("valueTable", std::string(169, '1'))))), -1);
    for (const char *position :
         {"<presetId>0</presetId>", "<keyPosId>0</keyPosId>", "<keyPosId>16</keyPosId><presetId>0</presetId>",
          "<keyPosId>0</keyPosId><presetId>-2</presetId>", "<keyPosId>0</keyPosId><presetId>256</presetId>",
          "<keyPosId>0</keyPosId><presetId>0</presetId><dwellTime>0</dwellTime>"})
        EXPECT_EQ(records(body(cruise(element("keyPosList", element("keyPos", position))))), -1) << position;
}

TEST_F(PtzTest, SerialLineBothWays)
{
    Envelope<net_ptz_serial_v20_t> message(net_param_ptz_init);
    EXPECT_EQ(message.read(net_ptz_param_x2s,
                           "<Serial><channelId>1</channelId><baudRate>2400</baudRate><dataBit>cs7</dataBit>"
                           "<stopBit>2</stopBit><parity>EVEN</parity><flowControl>xon:xoff</flowControl>"
                           "<controlProtocol>pelco_p</controlProtocol><controlAddress>255</controlAddress></Serial>"),
              0);
    tag_net_ptz_param_v20_t &line = message->param;
    EXPECT_EQ(line.baudRate, 1);
    EXPECT_EQ(line.dataBit, 1);
    EXPECT_EQ(line.stopBit, 1);
    EXPECT_EQ(line.parity, 2);
    EXPECT_EQ(line.flowControl, 2);
    EXPECT_EQ(line.controlProtocol, 1);
    EXPECT_EQ(line.controlAddress, 255);

    for (const char *bits : {"0", "3", "-1", "", "x"})
        EXPECT_EQ(message.read(net_ptz_param_x2s, element("Serial", element("stopBit", bits))), -1) << bits;

    const auto written_line = [&] {
        TiXmlElement parent("body");
        EXPECT_EQ(net_ptz_param_s2x(&line, &parent), 0);
        return print_children(parent);
    };
    EXPECT_EQ(written_line(), "<Serial version=\"1.1\"><channelId>1</channelId><baudRate>2400</baudRate>"
                              "<dataBit>CS7</dataBit><stopBit>2</stopBit><parity>even</parity>"
                              "<flowControl>xon:xoff</flowControl><controlProtocol>PELCO_P</controlProtocol>"
                              "<controlAddress>255</controlAddress></Serial>");
    // Indexes without a word are written as the table's fallback.
    line = {1, 7, 0, 0, 9, -1, 4, 0};
    EXPECT_EQ(written_line(), "<Serial version=\"1.1\"><channelId>1</channelId><baudRate>9600</baudRate>"
                              "<dataBit>CS8</dataBit><stopBit>1</stopBit><parity>none</parity>"
                              "<flowControl>none</flowControl><controlProtocol>PELCO_D</controlProtocol>"
                              "<controlAddress>0</controlAddress></Serial>");
    line.dataBit = 4;
    TiXmlElement parent("body");
    EXPECT_EQ(net_ptz_param_s2x(&line, &parent), -1);
    EXPECT_EQ(print_children(parent), "");
}
