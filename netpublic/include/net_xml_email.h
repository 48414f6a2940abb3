/**
 * @file net_xml_email.h
 * E-mail and FTP upload: payloads that the library allocates for the host and does not read or write.
 */
#ifndef NET_XML_EMAIL_H
#define NET_XML_EMAIL_H

#include "net_types.h"

/** The FTP server of one channel. */
struct net_ftp_cfg_t {
    int channelId;     /**< The request's channel. */
    int reserved[304]; /**< Not interpreted here. */
};

/** When one channel uploads by FTP. */
struct net_ftp_task_t {
    int channelId;     /**< The request's channel. */
    int reserved[340]; /**< Not interpreted here. */
};

/** The mail account and the recipients of one channel. */
struct net_email_cfg_t {
    int channelId;     /**< The request's channel. */
    int reserved[366]; /**< Not interpreted here. */
};

/** When one channel sends mail. */
struct net_email_task_t {
    int channelId;     /**< The request's channel. */
    int reserved[340]; /**< Not interpreted here. */
};

static_assert(sizeof(net_ftp_cfg_t) == 1220, "net_ftp_cfg_t");
static_assert(sizeof(net_ftp_task_t) == 1364, "net_ftp_task_t");
static_assert(sizeof(net_email_cfg_t) == 1468, "net_email_cfg_t");
static_assert(sizeof(net_email_task_t) == 1364, "net_email_task_t");

#endif
