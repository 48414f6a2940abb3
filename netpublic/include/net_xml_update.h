/**
 * @file net_xml_update.h
 * Online updates: a payload that the library allocates for the host and does not read or write.
 */
#ifndef NET_XML_UPDATE_H
#define NET_XML_UPDATE_H

#include "net_types.h"

/** The update settings. */
struct net_update_cfg_t {
    int reserved[1]; /**< Not interpreted here. */
};

static_assert(sizeof(net_update_cfg_t) == 4, "net_update_cfg_t");

#endif
