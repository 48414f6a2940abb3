/**
 * @file net_xml_cloud.h
 * Cloud upload: payloads that the library allocates for the host and does not read or write.
 */
#ifndef NET_XML_CLOUD_H
#define NET_XML_CLOUD_H

#include "net_types.h"

/** The cloud account of one channel. */
struct net_third_cloud_t {
    int channelId;      /**< The request's channel; 0 when that is negative. */
    int reserved[1143]; /**< Not interpreted here. */
};

/** When one channel uploads to the cloud. */
struct net_third_cloud_task_t {
    int channelId;     /**< The request's channel; 0 when that is negative. */
    int reserved[339]; /**< Not interpreted here. */
};

static_assert(sizeof(net_third_cloud_t) == 4576, "net_third_cloud_t");
static_assert(sizeof(net_third_cloud_task_t) == 1360, "net_third_cloud_task_t");

#endif
