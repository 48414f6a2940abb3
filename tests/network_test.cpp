// Network settings: what each message stores, refuses and writes.
#include "support.h"

#include <net_public.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

using namespace test;

namespace {

class NetworkTest : public HostTest {};

// The payload of messages that the host prepares itself: all zero.
template <class Payload> int host_payload(net_param_t *param, net_ext_t *ext)
{
    return net_param_init_size_id(param, ext, sizeof(Payload), 1);
}

const std::string x16(16, 'x');

} // namespace

TEST_F(NetworkTest, LinkTypeIsOnlyWritten)
{
    Envelope<net_link_v20_t> message(host_payload<net_link_v20_t>);
    const struct {
        int type;
        const char *word;
    } cases[] = {{0, "LAN"}, {1, "PPPOE"}, {2, "CDMA"}, {3, "LAN"}, {7, "LAN"}, {-1, "LAN"}};
    for (const auto &each : cases) {
        message->type = each.type;
        EXPECT_EQ(message.write(net_link_s2x),
                  "<LinkType version=\"1.1\"><type>" + std::string(each.word) + "</type></LinkType>");
    }
    message.param.dataSize = 8;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_link_s2x), "failed"); }),
              "<red net_xml_network.cpp>func:net_link_s2x line:#\n");
}

TEST_F(NetworkTest, SwitchesLookAtTheFirstChildOnly)
{
    const struct {
        Init init;
        Parser parser;
        Writer writer;
        const char *root;
    } switches[] = {
        {nets_param_dhcp_init, net_dhcp_x2s, net_dhcp_s2x, "Dhcp"},
        {nets_param_autodns_init, net_autodns_x2s, net_autodns_s2x, "AutoDns"},
    };
    for (const auto &each : switches) {
        Envelope<net_dhcp_v20_t> message(each.init);
        for (const char *body :
             {"<d/>", "<d><state>1</state><enable>1</enable></d>", "<d><!--x--><enable>1</enable></d>",
              "<d><enable>2</enable></d>", "<d><enable>true</enable></d>", "<d><enables>1</enables></d>", "<d>1</d>"}) {
            EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(each.parser, body), -1) << body; }), "");
            EXPECT_EQ(message.param.inited, 1u);
        }
        EXPECT_EQ(message->enable, 2) << "stored, then refused";
        EXPECT_EQ(message.read(each.parser, "<d><En>1</En><enable>x</enable></d>"), 0);
        EXPECT_EQ(message->enable, 1);
        EXPECT_EQ(message.param.inited, 2u);
        message->enable = 5;
        EXPECT_EQ(message.write(each.writer),
                  "<" + std::string(each.root) + " version=\"1.1\"><enable>5</enable></" + each.root + ">");
    }
}

TEST_F(NetworkTest, EthernetBothWays)
{
    Envelope<net_ethernet_v20_t> message(nets_param_ethernet_init);
    std::memset(message.payload(), 'z', sizeof(net_ethernet_v20_t));
    EXPECT_EQ(message.read(net_ethernet_x2s, "<Ip><ip>192.168.100.200</ip><m>255.255.255.0</m><mtu>1500</mtu>"
                                             "<MAC>00:11:22:33:44:55</MAC><g>192.168.100.1</g></Ip>"),
              0);
    EXPECT_STREQ(message->ip, "192.168.100.200");
    EXPECT_STREQ(message->mask, "255.255.255.0") << "\"m\" is the mask";
    EXPECT_STREQ(message->mac, "00:11:22:33:44:55");
    EXPECT_STREQ(message->gateway, "192.168.100.1");
    EXPECT_EQ(message.param.inited, 2u);
    EXPECT_EQ(message.write(net_ethernet_s2x),
              "<Ip version=\"1.1\"><ip>192.168.100.200</ip><mask>255.255.255.0</mask><mac>00:11:22:33:44:55</mac>"
              "<gateway>192.168.100.1</gateway></Ip>");
    EXPECT_EQ(message->mac[18], 'z') << "beyond the longest address nothing is touched";
    // A text that the host has not terminated ends with its field.
    std::memset(message->ip, 'i', sizeof message->ip);
    EXPECT_NE(message.write(net_ethernet_s2x).find("<ip>" + std::string(128, 'i') + "</ip>"), std::string::npos);
}

TEST_F(NetworkTest, AddressesOfAnotherLengthAreRefused)
{
    const auto read = [](const std::string &child, net_ethernet_v20_t *stored = nullptr) {
        Envelope<net_ethernet_v20_t> message(nets_param_ethernet_init);
        int result = 0;
        EXPECT_EQ(log_of([&] {
                      result = message.read(net_ethernet_x2s,
                                            "<Ip><gateway>10.0.0.1</gateway>" + child + "<ip>10.0.0.2</ip></Ip>");
                  }),
                  "");
        EXPECT_EQ(message.param.inited, result == 0 ? 2u : 1u);
        EXPECT_STREQ(message->gateway, "10.0.0.1");
        EXPECT_STREQ(message->ip, result == 0 ? "10.0.0.2" : "") << "nothing behind a refused child is read";
        if (stored != nullptr)
            *stored = *message;
        return result;
    };
    net_ethernet_v20_t stored;
    EXPECT_EQ(read("<mac>00:11:22:33:44:5</mac>", &stored), -1);
    EXPECT_STREQ(stored.mac, "00:11:22:33:44:5") << "stored, then refused";
    EXPECT_EQ(read("<mac>00:11:22:33:44:555</mac>", &stored), -1);
    EXPECT_STREQ(stored.mac, "");
    EXPECT_EQ(read("<mac/>"), -1);
    EXPECT_EQ(read("<mac>any eighteen......</mac>"), -1);
    EXPECT_EQ(read("<mac>any seventeen....</mac>"), 0) << "only the length counts";
    for (const char *key : {"ip", "mask", "gateway"}) {
        Envelope<net_ethernet_v20_t> message(nets_param_ethernet_init);
        const std::string name(key);
        EXPECT_EQ(message.read(net_ethernet_x2s, "<Ip><" + name + ">" + x16 + "</" + name + "></Ip>"), -1) << name;
        EXPECT_EQ(message.read(net_ethernet_x2s, "<Ip><" + name + "/></Ip>"), 0) << name << " may be empty";
    }
}

TEST_F(NetworkTest, DnsBothWays)
{
    Envelope<net_dns_info_v20_t> message(nets_param_dns_info_init);
    EXPECT_EQ(message.read(net_dns_info_x2s, "<Dns><dns2>8.8.4.4</dns2><dns>8.8.8.8</dns></Dns>"), 0);
    EXPECT_STREQ(message->dns1, "8.8.8.8") << "\"dns\" is the first";
    EXPECT_STREQ(message->dns2, "8.8.4.4");
    EXPECT_EQ(message.param.inited, 2u);
    EXPECT_EQ(message.write(net_dns_info_s2x), "<Dns version=\"1.1\"><dns1>8.8.8.8</dns1><dns2>8.8.4.4</dns2></Dns>");
    EXPECT_EQ(message.read(net_dns_info_x2s, "<Dns><dns2>" + x16 + "</dns2></Dns>"), -1);
}

TEST_F(NetworkTest, EnvelopesOfAddressesAreCheckedAndLogged)
{
    const struct {
        Init init;
        Parser parser;
        const char *parser_name;
        Writer writer;
        const char *writer_name;
    } messages[] = {
        {nets_param_dhcp_init, net_dhcp_x2s, "net_dhcp_x2s", net_dhcp_s2x, "net_dhcp_s2x"},
        {nets_param_autodns_init, net_autodns_x2s, "net_autodns_x2s", net_autodns_s2x, "net_autodns_s2x"},
        {nets_param_ethernet_init, net_ethernet_x2s, "net_ethernet_x2s", net_ethernet_s2x, "net_ethernet_s2x"},
        {nets_param_dns_info_init, net_dns_info_x2s, "net_dns_info_x2s", net_dns_info_s2x, "net_dns_info_s2x"},
    };
    for (const auto &each : messages) {
        Envelope<int> message(each.init);
        ++message.param.dataSize;
        const std::string refused = "<red net_xml_network.cpp>Func(" + std::string(each.parser_name) + ") Line(#) \n";
        const std::string unwritten = "<red net_xml_network.cpp>func:" + std::string(each.writer_name) + " line:#\n";
        EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(each.parser, "<x><enable>1</enable></x>"), -1); }), refused);
        EXPECT_EQ(log_of([&] { EXPECT_EQ(each.parser(nullptr, nullptr), -1); }), refused);
        EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(each.writer), "failed"); }), unwritten);
        EXPECT_EQ(log_of([&] { EXPECT_EQ(each.writer(nullptr, nullptr), -1); }), unwritten);
    }
}

TEST_F(NetworkTest, ServicePorts)
{
    const struct {
        Parser parser;
        const char *key;
    } services[] = {
        {nets_param_surv_port_cfg_x2s, "serverPort"}, {nets_param_http_port_cfg_x2s, "httpPort"},
        {nets_param_https_port_cfg_x2s, "httpsPort"}, {nets_param_rtsp_port_cfg_x2s, "rtspPort"},
        {nets_param_rtmp_port_cfg_x2s, "rtmpPort"},   {nets_param_onvif_port_cfg_x2s, "onvifPort"},
    };
    for (const auto &each : services) {
        Envelope<net_port_cfg_t> message(host_payload<net_port_cfg_t>);
        message.param.dataSize = 0; // not compared
        const auto port = [&](const std::string &value) {
            return message.read(each.parser, "<p><" + std::string(each.key) + ">" + value + "</" + each.key + "></p>");
        };
        EXPECT_EQ(port("65535"), 0);
        EXPECT_EQ(message->port, 65535);
        EXPECT_EQ(port("1"), 0);
        const std::string log = log_of([&] {
            EXPECT_EQ(port("0"), -1);
            EXPECT_EQ(port("-1"), -1);
            EXPECT_EQ(port("http"), -1);
            EXPECT_EQ(port("65536"), -1);
            EXPECT_EQ(message->port, 65536) << "stored, then refused";
            EXPECT_EQ(message.read(each.parser, "<p><enable>-1</enable></p>"), -1);
            EXPECT_EQ(each.parser(&message.param, nullptr), -1);
            EXPECT_EQ(each.parser(nullptr, nullptr), -1);
        });
        EXPECT_EQ(log, "");
        EXPECT_EQ(message.read(each.parser, "<p><port>x</port><enable>7</enable></p>"), 0);
        EXPECT_EQ(message->enable, 7);
        EXPECT_EQ(message.param.inited, 1u);
    }
    // Another service's port is skipped; a beginning of both is this one's.
    Envelope<net_port_cfg_t> message(host_payload<net_port_cfg_t>);
    EXPECT_EQ(message.read(nets_param_http_port_cfg_x2s, "<p><httpsPort>443</httpsPort><http>80</http></p>"), 0);
    EXPECT_EQ(message->port, 80);
}

TEST_F(NetworkTest, NtpClient)
{
    Envelope<net_ntp_cfg_t> message(host_payload<net_ntp_cfg_t>);
    message.param.dataSize = 0;
    EXPECT_EQ(message.read(nets_param_ntp_cfg_x2s, "<Ntp><port>0</port><enable>1</enable><s>pool.ntp.org</s>"
                                                   "<synchronizeInterval>-7</synchronizeInterval></Ntp>"),
              0);
    EXPECT_EQ(message->enable, 1);
    EXPECT_EQ(message->port, 0);
    EXPECT_EQ(message->synchronizeInterval, -7);
    EXPECT_STREQ(message->server.text, "pool.ntp.org") << "\"s\" is the server";
    EXPECT_EQ(message->server.capacity, 256);
    EXPECT_EQ(message->server.length, 12);
    EXPECT_EQ(message.param.inited, 1u);
    const auto refused = [&](const std::string &child) {
        EXPECT_EQ(
            log_of([&] { EXPECT_EQ(message.read(nets_param_ntp_cfg_x2s, "<Ntp>" + child + "</Ntp>"), -1) << child; }),
            "");
    };
    refused("<port>-1</port>");
    refused("<port>65536</port>");
    refused("<enable>2</enable>");
    refused("<server>" + std::string(256, 's') + "</server>");
    EXPECT_STREQ(message->server.text, "");
    EXPECT_EQ(message->server.length, 12) << "only a text that was read has its length told";
    EXPECT_EQ(message.read(nets_param_ntp_cfg_x2s, "<Ntp><server>" + std::string(255, 's') + "</server></Ntp>"), 0);
    EXPECT_EQ(message->server.length, 255);
}

TEST_F(NetworkTest, DdnsProviders)
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
    int index;
    EXPECT_EQ(get_ddns_type_index(nullptr, "kelvo"), -1);
    EXPECT_EQ(get_ddns_type_index(&index, nullptr), -1);
}

TEST_F(NetworkTest, DdnsClient)
{
    Envelope<net_ddns_cfg_t> message(host_payload<net_ddns_cfg_t>);
    message.param.dataSize = 0;
    EXPECT_EQ(
        message.read(nets_param_ddns_cfg_x2s,
                     "<Ddns><enable>1</enable><d>NO-IP</d><userName>owner</userName><ddnsN>cam.example.org</ddnsN>"
                     "<password>tulip</password></Ddns>"),
        0);
    EXPECT_EQ(message->enable, 1);
    EXPECT_EQ(message->ddnsType, 4);
    EXPECT_STREQ(message->userName.text, "owner");
    EXPECT_EQ(message->userName.length, 5);
    EXPECT_STREQ(message->password.text, "tulip");
    EXPECT_EQ(message->password.capacity, 256);
    EXPECT_STREQ(message->ddnsName.text, "cam.example.org");
    EXPECT_EQ(message->ddnsName.length, 15);
    EXPECT_EQ(message.param.inited, 1u);
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(
                      message.read(nets_param_ddns_cfg_x2s, "<Ddns><ddnsType>noip</ddnsType><enable>0</enable></Ddns>"),
                      -1);
                  EXPECT_EQ(message.read(nets_param_ddns_cfg_x2s,
                                         "<Ddns><password>" + std::string(256, 's') + "</password></Ddns>"),
                            -1);
              }),
              "");
    EXPECT_EQ(message->ddnsType, 4);
    EXPECT_EQ(message->enable, 1);
    EXPECT_EQ(message.read(nets_param_ddns_cfg_x2s, "<Ddns><ddnsType/></Ddns>"), 0);
    EXPECT_EQ(message->ddnsType, 0) << "no text is the first provider";
}

TEST_F(NetworkTest, Examples)
{
    const struct {
        const char *name;
        Init init;
        Parser parser;
    } examples[] = {
        {"dhcp", nets_param_dhcp_init, net_dhcp_x2s},
        {"autodns", nets_param_autodns_init, net_autodns_x2s},
        {"ethernet", nets_param_ethernet_init, net_ethernet_x2s},
        {"dns", nets_param_dns_info_init, net_dns_info_x2s},
        {"service_port_http", host_payload<net_port_cfg_t>, nets_param_http_port_cfg_x2s},
        {"service_port_rtsp", host_payload<net_port_cfg_t>, nets_param_rtsp_port_cfg_x2s},
        {"ntp", host_payload<net_ntp_cfg_t>, nets_param_ntp_cfg_x2s},
        {"ddns", host_payload<net_ddns_cfg_t>, nets_param_ddns_cfg_x2s},
    };
    for (const auto &each : examples) {
        Envelope<int> message(each.init);
        EXPECT_EQ(message.read(each.parser, example(each.name)), 0) << each.name;
    }
}
