/**
 * @file net_xml_push.h
 * Push notifications: payloads that the library allocates for the host and does not read or write.
 */
#ifndef NET_XML_PUSH_H
#define NET_XML_PUSH_H

#include "net_types.h"

/** The id of a push client. */
struct net_push_client_id_t {
    int reserved[128]; /**< Not interpreted here. */
};

/** A new push listener. */
struct net_create_push_listener_t {
    int reserved[40]; /**< Not interpreted here. */
};

/** The state of a push client. */
struct net_push_client_state_t {
    int reserved[545]; /**< Not interpreted here. */
};

/** When one channel pushes. */
struct net_push_task_t {
    int channelId;     /**< The request's channel. */
    int reserved[339]; /**< Not interpreted here. */
};

static_assert(sizeof(net_push_client_id_t) == 512, "net_push_client_id_t");
static_assert(sizeof(net_create_push_listener_t) == 160, "net_create_push_listener_t");
static_assert(sizeof(net_push_client_state_t) == 2180, "net_push_client_state_t");
static_assert(sizeof(net_push_task_t) == 1360, "net_push_task_t");

#endif
