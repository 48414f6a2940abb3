// Network settings: link type, DHCP, automatic DNS, addresses, DNS servers, service ports, NTP and DDNS.
#include "engine/engine.h"
#include "engine/registry.h"

#include <net_public.h>

#include <cstring>

namespace netpublic {
namespace {

constexpr int address_length = 15; // the longest dotted address
constexpr int mac_length = 17;     // "00:11:22:33:44:55"
constexpr int last_port = 65535;

// Link and addresses ------------------------------------------------------------------------------

constexpr Word link_list[] = {{0, "LAN"}, {1, "PPPOE"}, {2, "CDMA"}};
constexpr auto links = words<link_list>();

struct LinkFields : Description {
    using T = net_link_v20_t;
    static constexpr Field fields[] = {
        word("type", AT(type), links).fallback(0).write_only(),
    };
    static constexpr Traits traits =
        HERE.writer("net_link_s2x", "LinkType").title("link type", "Over which kind of link the device is connected.");
};
constexpr auto link_message = describe<LinkFields>();

// Only the first child counts: an "enable" behind another one is not looked for.
template <class Switch> struct SwitchFields : Description {
    using T = Switch;
    static constexpr Field fields[] = {
        flag("enable", AT(enable)).required(),
    };
    static constexpr Traits at(Traits here)
    {
        return here.first_child_only().others_fail().sets_inited();
    }
};

struct DhcpFields : SwitchFields<net_dhcp_v20_t> {
    static constexpr Traits traits = at(HERE)
                                         .parser("net_dhcp_x2s")
                                         .writer("net_dhcp_s2x", "Dhcp")
                                         .title("DHCP", "Whether the device gets its addresses by DHCP.");
};
constexpr auto dhcp_message = describe<DhcpFields>();

struct AutoDnsFields : SwitchFields<net_autodns_v20_t> {
    static constexpr Traits traits = at(HERE)
                                         .parser("net_autodns_x2s")
                                         .writer("net_autodns_s2x", "AutoDns")
                                         .title("automatic DNS", "Whether the device is told its DNS servers.");
};
constexpr auto autodns_message = describe<AutoDnsFields>();

// The only address with a length of its own; its characters are not looked at.
int check_mac(const net_ethernet_v20_t &addresses)
{
    return std::strlen(addresses.mac) == mac_length ? 0 : -1;
}

struct EthernetFields : Description {
    using T = net_ethernet_v20_t;
    static constexpr Field fields[] = {
        text("ip", AT(ip)).upto(address_length),
        text("mask", AT(mask)).upto(address_length),
        text("mac", AT(mac))
            .upto(mac_length)
            .then<check_mac>()
            .accepts("exactly 17 characters")
            .sample("00:11:22:33:44:55"),
        text("gateway", AT(gateway)).upto(address_length),
    };
    static constexpr Traits traits = HERE.parser("net_ethernet_x2s")
                                         .writer("net_ethernet_s2x", "Ip")
                                         .sets_inited()
                                         .title("addresses", "The device's IP and MAC address, mask and gateway.");
};
constexpr auto ethernet_message = describe<EthernetFields>();

struct DnsFields : Description {
    using T = net_dns_info_v20_t;
    static constexpr Field fields[] = {
        text("dns1", AT(dns1)).upto(address_length),
        text("dns2", AT(dns2)).upto(address_length),
    };
    static constexpr Traits traits = HERE.parser("net_dns_info_x2s")
                                         .writer("net_dns_info_s2x", "Dns")
                                         .sets_inited()
                                         .title("DNS servers", "The two DNS servers that the device asks.");
};
constexpr auto dns_message = describe<DnsFields>();

// Services ----------------------------------------------------------------------------------------

struct Service {
    const char *port_key;
    const char *title;
};
constexpr Service surv_service = {"serverPort", "media port"};
constexpr Service http_service = {"httpPort", "HTTP port"};
constexpr Service https_service = {"httpsPort", "HTTPS port"};
constexpr Service rtsp_service = {"rtspPort", "RTSP port"};
constexpr Service rtmp_service = {"rtmpPort", "RTMP port"};
constexpr Service onvif_service = {"onvifPort", "ONVIF port"};

// The services differ in nothing but the name of the port.
template <const Service &service> struct PortFields : Description {
    using T = net_port_cfg_t;
    static constexpr Field fields[] = {
        integer(service.port_key, AT(port)).in(1, last_port),
        integer("enable", AT(enable)).at_least(0),
    };
    static constexpr Traits traits = HERE.entry(Line::none)
                                         .any_size_read()
                                         .title(service.title, "On which port the service runs, and whether it does.");
};
constexpr auto surv_port_message = describe<PortFields<surv_service>>();
constexpr auto http_port_message = describe<PortFields<http_service>>();
constexpr auto https_port_message = describe<PortFields<https_service>>();
constexpr auto rtsp_port_message = describe<PortFields<rtsp_service>>();
constexpr auto rtmp_port_message = describe<PortFields<rtmp_service>>();
constexpr auto onvif_port_message = describe<PortFields<onvif_service>>();

struct NtpFields : Description {
    using T = net_ntp_cfg_t;
    static constexpr Field fields[] = {
        flag("enable", AT(enable)), counted_text("server", AT(server)),
        integer("synchronizeInterval", AT(synchronizeInterval)),
        integer("port", AT(port)).in(0, last_port), // unlike a service's it may be 0
    };
    static constexpr Traits traits = HERE.entry(Line::none)
                                         .any_size_read()
                                         .title("NTP", "From which server the device takes the time, and how often.");
};
constexpr auto ntp_message = describe<NtpFields>();

// "peatnuts" is the protocol's spelling.
constexpr Word ddns_list[] = {{0, "kelvo"}, {1, "dyndns"}, {2, "peatnuts"}, {3, "3322"}, {4, "no-ip"}};
constexpr auto ddns_types = words<ddns_list>();

struct DdnsFields : Description {
    using T = net_ddns_cfg_t;
    static constexpr Field fields[] = {
        flag("enable", AT(enable)),
        word("ddnsType", AT(ddnsType), ddns_types).prefix(),
        counted_text("ddnsName", AT(ddnsName)),
        counted_text("userName", AT(userName)),
        counted_text("password", AT(password)),
    };
    static constexpr Traits traits =
        HERE.entry(Line::none).any_size_read().title("DDNS", "The account with a provider of dynamic host names.");
};
constexpr auto ddns_message = describe<DdnsFields>();

} // namespace
} // namespace netpublic

using namespace netpublic;

int net_link_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, link_message);
}

int net_dhcp_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, dhcp_message);
}

int net_dhcp_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, dhcp_message);
}

int net_autodns_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, autodns_message);
}

int net_autodns_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, autodns_message);
}

int net_ethernet_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, ethernet_message);
}

int net_ethernet_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, ethernet_message);
}

int net_dns_info_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, dns_message);
}

int net_dns_info_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, dns_message);
}

int nets_param_surv_port_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, surv_port_message);
}

int nets_param_http_port_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, http_port_message);
}

int nets_param_https_port_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, https_port_message);
}

int nets_param_rtsp_port_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, rtsp_port_message);
}

int nets_param_rtmp_port_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, rtmp_port_message);
}

int nets_param_onvif_port_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, onvif_port_message);
}

int nets_param_ntp_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, ntp_message);
}

int nets_param_ddns_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, ddns_message);
}

int get_ddns_type_index(int *index, const char *text)
{
    if (index == nullptr || text == nullptr)
        return -1;
    const auto *entry = find_prefix(ddns_types, text, std::strlen(text));
    if (entry == nullptr)
        return -1;
    *index = entry->code();
    return 0;
}

MESSAGES(
    network, //
    HOST_MESSAGE("link", net_link_v20_t, nullptr, net_link_s2x, link_message),
    MESSAGE("dhcp", nets_param_dhcp_init, net_dhcp_x2s, net_dhcp_s2x, dhcp_message),
    MESSAGE("autodns", nets_param_autodns_init, net_autodns_x2s, net_autodns_s2x, autodns_message),
    MESSAGE("ethernet", nets_param_ethernet_init, net_ethernet_x2s, net_ethernet_s2x, ethernet_message),
    MESSAGE("dns-info", nets_param_dns_info_init, net_dns_info_x2s, net_dns_info_s2x, dns_message),
    HOST_MESSAGE("surv-port", net_port_cfg_t, nets_param_surv_port_cfg_x2s, nullptr, surv_port_message, "ServerPort"),
    HOST_MESSAGE("http-port", net_port_cfg_t, nets_param_http_port_cfg_x2s, nullptr, http_port_message, "HttpPort"),
    HOST_MESSAGE("https-port", net_port_cfg_t, nets_param_https_port_cfg_x2s, nullptr, https_port_message, "HttpsPort"),
    HOST_MESSAGE("rtsp-port", net_port_cfg_t, nets_param_rtsp_port_cfg_x2s, nullptr, rtsp_port_message, "RtspPort"),
    HOST_MESSAGE("rtmp-port", net_port_cfg_t, nets_param_rtmp_port_cfg_x2s, nullptr, rtmp_port_message, "RtmpPort"),
    HOST_MESSAGE("onvif-port", net_port_cfg_t, nets_param_onvif_port_cfg_x2s, nullptr, onvif_port_message, "OnvifPort"),
    HOST_MESSAGE("ntp", net_ntp_cfg_t, nets_param_ntp_cfg_x2s, nullptr, ntp_message, "Ntp"),
    HOST_MESSAGE("ddns", net_ddns_cfg_t, nets_param_ddns_cfg_x2s, nullptr, ddns_message, "Ddns"))
