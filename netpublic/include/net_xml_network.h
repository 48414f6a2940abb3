/**
 * @file net_xml_network.h
 * Network settings: how a device is linked and addressed, its DNS servers, the ports of its services,
 * the NTP and DDNS clients; and the payloads of the Wi-Fi, mobile network and certificate messages,
 * whose inside is the host's.
 *
 * A refused child ends a parse without a log line; what was stored before it stays. Writers append one
 * element with `version` "1.1" to the parent.
 * What all message functions share stands in net_types.h.
 */
#ifndef NET_XML_NETWORK_H
#define NET_XML_NETWORK_H

#include "net_types.h"

class TiXmlElement;
class TiXmlNode;

/** The kind of link. */
struct net_link_v20_t {
    int type; /**< 0 LAN, 1 PPPOE, 2 CDMA; anything else is written as LAN. */
};

/** The DHCP switch: message 809. */
struct net_dhcp_v20_t {
    int enable; /**< 0 or 1. */
};

/** The automatic DNS switch: message 810. */
struct net_autodns_v20_t {
    int enable; /**< 0 or 1. */
};

/** The addresses of the wired interface: message 801. Terminated texts. */
struct net_ethernet_v20_t {
    char ip[128];      /**< At most 15 characters are read. */
    char mask[128];    /**< At most 15 characters are read. */
    char mac[128];     /**< "00:11:22:33:44:55": exactly 17 characters are read. */
    char gateway[128]; /**< At most 15 characters are read. */
};

/** The DNS servers: message 814. Terminated texts. */
struct net_dns_info_v20_t {
    char dns1[128]; /**< At most 15 characters are read. */
    char dns2[128]; /**< At most 15 characters are read. */
};

/** The port of a service. */
struct net_port_cfg_t {
    int port;   /**< 1 to 65535. */
    int enable; /**< 0 and above. */
};

/** The NTP client. */
struct net_ntp_cfg_t {
    net_counted_text_t server; /**< Counted text, at most 255 characters. */
    int synchronizeInterval;   /**< Any number. */
    int port;                  /**< 0 to 65535. */
    int enable;                /**< 0 or 1. */
};

/** The DDNS client. */
struct net_ddns_cfg_t {
    int enable;                  /**< 0 or 1. */
    int ddnsType;                /**< As get_ddns_type_index() tells. */
    net_counted_text_t userName; /**< Counted text, at most 255 characters. */
    net_counted_text_t password; /**< Secret. */
    net_counted_text_t ddnsName; /**< Counted text, at most 255 characters. */
};

/** Certificates: message 818. */
struct net_cert_info_t {
    int reserved[20610]; /**< Not interpreted here. */
};

/** The device's uid: message 807. */
struct net_uid_info_t {
    int reserved[32]; /**< Not interpreted here. */
};

/** Wi-Fi signal: message 4101. */
struct net_wifi_signal_t {
    int reserved; /**< Not interpreted here. */
};

/** Wi-Fi settings: message 4201. */
struct net_wifi_cfg_t {
    int reserved[9173]; /**< Not interpreted here. */
};

/** Access points in reach: message 4202. */
struct net_scan_ap_t {
    int reserved[8833]; /**< Not interpreted here. */
};

/** Wi-Fi side band: message 4206. */
struct net_wifi_sdb_t {
    int reserved[2050]; /**< Not interpreted here. */
};

/** Wi-Fi range extension: message 4207. */
struct net_expand_wifi_t {
    int reserved[619]; /**< Not interpreted here. */
};

/** Stations of the device's own wireless network: message 4208. */
struct net_wlan_sta_info_t {
    int reserved[1666]; /**< Not interpreted here. */
};

/** The 4G module: message 6941. */
struct net_4gmodule_info_t {
    int reserved[14]; /**< Not interpreted here. */
};

static_assert(sizeof(net_link_v20_t) == 4, "net_link_v20_t");
static_assert(sizeof(net_dhcp_v20_t) == 4, "net_dhcp_v20_t");
static_assert(sizeof(net_autodns_v20_t) == 4, "net_autodns_v20_t");
static_assert(sizeof(net_ethernet_v20_t) == 512, "net_ethernet_v20_t");
static_assert(sizeof(net_dns_info_v20_t) == 256, "net_dns_info_v20_t");
static_assert(sizeof(net_port_cfg_t) == 8, "net_port_cfg_t");
static_assert(sizeof(net_ntp_cfg_t) == 276, "net_ntp_cfg_t");
static_assert(sizeof(net_ddns_cfg_t) == 800, "net_ddns_cfg_t");
static_assert(sizeof(net_cert_info_t) == 82440, "net_cert_info_t");
static_assert(sizeof(net_uid_info_t) == 128, "net_uid_info_t");
static_assert(sizeof(net_wifi_signal_t) == 4, "net_wifi_signal_t");
static_assert(sizeof(net_wifi_cfg_t) == 36692, "net_wifi_cfg_t");
static_assert(sizeof(net_scan_ap_t) == 35332, "net_scan_ap_t");
static_assert(sizeof(net_wifi_sdb_t) == 8200, "net_wifi_sdb_t");
static_assert(sizeof(net_expand_wifi_t) == 2476, "net_expand_wifi_t");
static_assert(sizeof(net_wlan_sta_info_t) == 6664, "net_wlan_sta_info_t");
static_assert(sizeof(net_4gmodule_info_t) == 56, "net_4gmodule_info_t");

/** @name Addresses
 * These refuse an envelope whose `dataSize` is not the size of the payload that is named.
 * @{ */

/** Appends "LinkType". @param param payload net_link_v20_t, set up by the host @param parent gets the element */
NETPUBLIC_API int net_link_s2x(net_param_t *param, TiXmlElement *parent);

/** Reads the body's first child, which must be "enable". @param param net_dhcp_v20_t; `inited` becomes 2 @param node
 * the body */
NETPUBLIC_API int net_dhcp_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "Dhcp". @param param payload net_dhcp_v20_t @param parent gets the element */
NETPUBLIC_API int net_dhcp_s2x(net_param_t *param, TiXmlElement *parent);

/** Reads the body's first child, which must be "enable". @param param net_autodns_v20_t; `inited` becomes 2 @param node
 * the body */
NETPUBLIC_API int net_autodns_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "AutoDns". @param param payload net_autodns_v20_t @param parent gets the element */
NETPUBLIC_API int net_autodns_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses the addresses. @param param payload net_ethernet_v20_t; `inited` becomes 2 @param node the body */
NETPUBLIC_API int net_ethernet_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "Ip". @param param payload net_ethernet_v20_t @param parent gets the element */
NETPUBLIC_API int net_ethernet_s2x(net_param_t *param, TiXmlElement *parent);

/** Parses the DNS servers. @param param payload net_dns_info_v20_t; `inited` becomes 2 @param node the body */
NETPUBLIC_API int net_dns_info_x2s(net_param_t *param, TiXmlNode *node);
/** Appends "Dns". @param param payload net_dns_info_v20_t @param parent gets the element */
NETPUBLIC_API int net_dns_info_s2x(net_param_t *param, TiXmlElement *parent);

/** @} */
/** @name Services
 * The host provides the payload that is named; its `dataSize` is not compared and `inited` stays as it is.
 * @{ */

/** Parses "serverPort" and "enable". @param param payload net_port_cfg_t @param node the body */
NETPUBLIC_API int nets_param_surv_port_cfg_x2s(net_param_t *param, TiXmlNode *node);
/** Parses "httpPort" and "enable". @param param payload net_port_cfg_t @param node the body */
NETPUBLIC_API int nets_param_http_port_cfg_x2s(net_param_t *param, TiXmlNode *node);
/** Parses "httpsPort" and "enable". @param param payload net_port_cfg_t @param node the body */
NETPUBLIC_API int nets_param_https_port_cfg_x2s(net_param_t *param, TiXmlNode *node);
/** Parses "rtspPort" and "enable". @param param payload net_port_cfg_t @param node the body */
NETPUBLIC_API int nets_param_rtsp_port_cfg_x2s(net_param_t *param, TiXmlNode *node);
/** Parses "rtmpPort" and "enable". @param param payload net_port_cfg_t @param node the body */
NETPUBLIC_API int nets_param_rtmp_port_cfg_x2s(net_param_t *param, TiXmlNode *node);
/** Parses "onvifPort" and "enable". @param param payload net_port_cfg_t @param node the body */
NETPUBLIC_API int nets_param_onvif_port_cfg_x2s(net_param_t *param, TiXmlNode *node);

/** Parses the NTP client's settings. @param param payload net_ntp_cfg_t @param node the body */
NETPUBLIC_API int nets_param_ntp_cfg_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Parses the DDNS client's settings; an unknown provider is refused.
 * @param param net_ddns_cfg_t
 * @param node the body
 */
NETPUBLIC_API int nets_param_ddns_cfg_x2s(net_param_t *param, TiXmlNode *node);

/**
 * Reads a DDNS provider: 0 "kelvo", 1 "dyndns", 2 "peatnuts", 3 "3322", 4 "no-ip". A text finds the first
 * word that begins with it, case aside; the empty one finds 0.
 * @return 0, or -1 for a null pointer or a text that no word begins with
 */
NETPUBLIC_API int get_ddns_type_index(int *index, const char *text);

/** @} */

#endif
