/**
 * @file net_xml_user.h
 * Users and login: the login request, the password encryption that is offered, failed logins, the
 * accounts of a device and their rights, the users who are online, authorisation by code and shared
 * users, and the camera firmware that is offered to a user.
 *
 * Passwords, tokens, nonces, signatures and codes are copied between XML and payload as they are: never
 * checked, hashed or logged. All texts are terminated. A null argument, a missing payload and, where the
 * size is checked, one of the wrong size are logged. A refused child ends a parse; what was stored before
 * it stays. Where nothing else is said, `inited` stays as it is.
 * What all message functions share stands in net_types.h.
 */
#ifndef NET_XML_USER_H
#define NET_XML_USER_H

#include <stddef.h>

#include "net_types.h"

class TiXmlElement;
class TiXmlNode;

/** The second factor of a login. */
struct net_auth_mode_info_t {
    char authCode[32];   /**< Secret. */
    char phoneModel[32]; /**< Terminated, at most 31 characters. */
};

/** A login request. */
struct net_login_info_v20_t {
    char authToken[64];            /**< Secret. */
    char authUser[32];             /**< Terminated, at most 31 characters. */
    char authSignature[64];        /**< Secret. */
    char userName[32];             /**< Terminated, at most 31 characters. */
    char password[32];             /**< Secret. */
    int userVer;                   /**< Any number. */
    int handleSpecial;             /**< Any number. */
    char uid[32];                  /**< Terminated, at most 31 characters. */
    char nasToken[128];            /**< Secret. */
    int authType;                  /**< 1 "getAccesskey", 2 "authLogin". */
    net_auth_mode_info_t authMode; /**< The device that signs in. */
};

/** What a change does to an account: the values of the `userSetState` fields. */
enum NET_USER_SET_STATE_E {
    NET_USER_SET_NONE = 0,
    NET_USER_SET_ADD = 1,
    NET_USER_SET_DELETE = 2,
    NET_USER_SET_MODIFY = 3,
};

/** A user's account: a record of message 1303. */
struct tag_net_userinfo_all__v20_t {
    char userName[32];                 /**< Terminated, at most 31 characters. */
    char password[32];                 /**< Secret. */
    int userLevel;                     /**< 0 or 1. */
    int loginState;                    /**< 0 or 1. */
    int userSetState;                  /**< A NET_USER_SET_STATE_E code. */
    int userId;                        /**< 0 and above. */
    int validHours;                    /**< -1, or 1 and above. */
    int reserved;                      /**< Not interpreted here; 0 in an account that was read. */
    unsigned long long channelAbility; /**< The channels of the user: one bit each. */
};

/**
 * The payload of message 1303. The envelope's `dataSize` is the size of one record although the initialiser
 * allocates all of them.
 */
struct net_user_list_v20_t {
    tag_net_userinfo_all__v20_t user[20]; /**< The accounts. */
};

/** A user who is online. Two bytes of padding follow the addresses. */
struct tag_net_userinfo_online_v20_t {
    char userName[32];    /**< Terminated, at most 31 characters. */
    char password[32];    /**< Secret. */
    char ipAddress[16];   /**< Terminated, at most 15 characters. */
    char macAddress[18];  /**< Terminated, at most 17 characters. */
    int userLevel;        /**< 0 or 1. */
    int userId;           /**< 0 and above. */
    int enableOutoffLine; /**< 0 or 1. */
    int isOnline;         /**< Any number. */
    int sessionId;        /**< 0 and above. */
};

/** The users who are online. */
struct net_user_online_list_v20_t {
    tag_net_userinfo_online_v20_t user[20]; /**< The users. */
};

/** From which network a client logs in. */
struct net_login_net_info_v20_t {
    int type;    /**< 0 LAN, 1 WAN. */
    int udpPort; /**< Any number. */
};

/** The password encryption that a device offers: message 5. */
struct net_encrypt_v20_t {
    int type;       /**< 0 md5, 1 base64. */
    char nonce[32]; /**< Secret. */
};

/** Failed logins: message 6. */
struct net_login_err_info_v20_t {
    int remainTimes; /**< Attempts that are left. */
    int unlockTime;  /**< Any number. */
};

/** An authorisation by code: message 1304. Four bytes of padding stand in front of `channelAbility`. */
struct net_auth_info_v20_t {
    char notes[32];                    /**< Terminated, at most 31 characters. */
    int validhours;                    /**< Spelled so in the message too, unlike an account's. */
    int userLevel;                     /**< Any number. */
    unsigned int ability;              /**< Any number. */
    unsigned long long channelAbility; /**< The channels: one bit each. */
    int code;                          /**< Secret. Written only. */
    int reserved;                      /**< Not interpreted here. */
};

/** A shared user: message 1305. */
struct net_shared_user_info_t {
    char userId[32];                   /**< Terminated, at most 31 characters. */
    int userLevel;                     /**< At most 1; -1 when the message does not tell. */
    int userSetState;                  /**< NET_USER_SET_DELETE or NET_USER_SET_MODIFY. */
    int validHours;                    /**< Any number. */
    unsigned int ability;              /**< Any number. */
    unsigned long long channelAbility; /**< The channels: one bit each. */
    char notes[32];                    /**< Terminated, at most 31 characters. */
};

/** The shared users of message 1305; as with the accounts, `dataSize` is the size of one record. */
struct net_shared_user_list_t {
    net_shared_user_info_t user[20]; /**< A gap in the list is emptied. */
};

/** A user's rights: message 1302. Each is 0 or 1. */
struct net_device_ability_support_v20_t {
    char userName[32]; /**< Terminated, at most 31 characters. */
    /** @{ */
    /** 0 or 1. */
    int system;
    int streaming;
    int record;
    int network;
    int PTZ;
    int IO;
    int alarm;
    int image;
    int video;
    int audio;
    int security;
    int replay;
    int disk;
    /** @} */
};

/** A camera firmware. */
struct net_ipc_ver_v20_t {
    net_counted_text_t platform; /**< Counted text, at most 255 characters. */
    net_counted_text_t version;  /**< Counted text, at most 255 characters. */
    net_counted_text_t url;      /**< Counted text, at most 255 characters. */
};

/** The camera firmware that is offered. */
struct net_ipc_ver_list_v20_t {
    net_ipc_ver_v20_t entries[4]; /**< Further ones are ignored. */
    int count;                    /**< Entries held, 0 to 4. */
};

static_assert(sizeof(net_auth_mode_info_t) == 64, "net_auth_mode_info_t");
static_assert(sizeof(net_login_info_v20_t) == 460, "net_login_info_v20_t");
static_assert(offsetof(tag_net_userinfo_all__v20_t, channelAbility) == 88, "channelAbility");
static_assert(sizeof(tag_net_userinfo_all__v20_t) == 96, "tag_net_userinfo_all__v20_t");
static_assert(sizeof(net_user_list_v20_t) == 1920, "net_user_list_v20_t");
static_assert(offsetof(tag_net_userinfo_online_v20_t, userLevel) == 100, "userLevel");
static_assert(sizeof(tag_net_userinfo_online_v20_t) == 120, "tag_net_userinfo_online_v20_t");
static_assert(sizeof(net_user_online_list_v20_t) == 2400, "net_user_online_list_v20_t");
static_assert(sizeof(net_login_net_info_v20_t) == 8, "net_login_net_info_v20_t");
static_assert(sizeof(net_encrypt_v20_t) == 36, "net_encrypt_v20_t");
static_assert(sizeof(net_login_err_info_v20_t) == 8, "net_login_err_info_v20_t");
static_assert(offsetof(net_auth_info_v20_t, channelAbility) == 48, "channelAbility");
static_assert(sizeof(net_auth_info_v20_t) == 64, "net_auth_info_v20_t");
static_assert(offsetof(net_shared_user_info_t, channelAbility) == 48, "channelAbility");
static_assert(sizeof(net_shared_user_info_t) == 88, "net_shared_user_info_t");
static_assert(sizeof(net_shared_user_list_t) == 1760, "net_shared_user_list_t");
static_assert(sizeof(net_device_ability_support_v20_t) == 84, "net_device_ability_support_v20_t");
static_assert(sizeof(net_ipc_ver_v20_t) == 792, "net_ipc_ver_v20_t");
static_assert(sizeof(net_ipc_ver_list_v20_t) == 3172, "net_ipc_ver_list_v20_t");

/** @name Messages
 * @{ */

/**
 * Parses a login request; an unknown "authType" is refused.
 * @param param payload net_login_info_v20_t, set up by the host, size checked; `inited` becomes 2
 * @param node the body
 */
NETPUBLIC_API int net_login_info_x2s(net_param_t *param, TiXmlNode *node);

/**
 * Parses accounts: the first 20 children, each of which must be a "User".
 * @param param payload net_user_list_v20_t; its size is not compared
 * @param node the body
 */
NETPUBLIC_API int nets_user_cfg_x2s(net_param_t *param, TiXmlNode *node);

/**
 * Parses the users who are online: the first 20 children, each of which must be an "OnlineUser".
 * @param param payload net_user_online_list_v20_t, set up by the host; its size is not compared
 * @param node the body
 */
NETPUBLIC_API int nets_param_user_online_x2s(net_param_t *param, TiXmlNode *node);

/**
 * Parses the network of a login.
 * @param param net_login_net_info_v20_t, set up by the host, size checked; `inited` becomes 2
 * @param node the body
 */
NETPUBLIC_API int net_login_net_info_x2s(net_param_t *param, TiXmlNode *node);

/**
 * Parses the password encryption; an unknown one is refused.
 * @param param net_encrypt_v20_t, size checked; `inited` becomes 2
 * @param node the body
 */
NETPUBLIC_API int net_encrypt_x2s(net_param_t *param, TiXmlNode *node);

/** Parses the failed logins. @param param payload net_login_err_info_v20_t, size not compared @param node the body */
NETPUBLIC_API int net_param_login_err_info_x2s(net_param_t *param, TiXmlNode *node);

/** Parses an authorisation. @param param payload net_auth_info_v20_t, size not compared @param node the body */
NETPUBLIC_API int net_auth_info_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Appends "authInfo" with nothing but the code.
 * @param param net_auth_info_v20_t, size checked
 * @param parent gets the element
 */
NETPUBLIC_API int net_auth_info_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Parses the "user" children into one record, the last one wins.
 * @param param net_shared_user_info_t, size not compared
 * @param node the body
 */
NETPUBLIC_API int net_shared_user_cfg_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Parses shared users: of the first 20 children, a "user" fills the record of its position; the record of any
 * other child is emptied.
 * @param param payload net_shared_user_list_t; its size is not compared
 * @param node the body
 */
NETPUBLIC_API int net_shared_user_list_x2s(net_param_t *param, TiXmlNode *node);

/**
 * Parses a user's rights.
 * @param param net_device_ability_support_v20_t, size not compared
 * @param node the rights element itself
 */
NETPUBLIC_API int nets_ability_support_x2s(net_param_t *param, TiXmlNode *node);
/**
 * Appends "AbilitySuppport", spelled so.
 * @param param net_device_ability_support_v20_t, size checked
 * @param parent gets the element
 */
NETPUBLIC_API int nets_ability_support_s2x(net_param_t *param, TiXmlElement *parent);

/**
 * Parses the "IpcVersion" children, at most 4; further ones are ignored.
 * @param param payload net_ipc_ver_list_v20_t, set up by the host, size checked
 * @param node the body
 */
NETPUBLIC_API int net_ipc_version_x2s(net_param_t *param, TiXmlNode *node);

/** @} */
/** @name Component readers
 * A null record or node is -1 and logged. A name that does not answer to @p key is -1 without a log line; a null key
 * takes any name.
 * @{ */

/** Reads the second factor of a login. */
NETPUBLIC_API int get_auth_mode_info_from_xmlnode(net_auth_mode_info_t *info, TiXmlNode *node);
/**
 * Reads an account, which replaces the record: what the element does not name is zero, also after a failure.
 * At least one of "userId" and "userName" is required.
 */
NETPUBLIC_API int get_user_from_xmlnode(tag_net_userinfo_all__v20_t *user, TiXmlNode *node, const char *key);
/** Reads a user who is online; the record is cleared first, also when the name does not answer. */
NETPUBLIC_API int get_online_user_from_xmlnode(tag_net_userinfo_online_v20_t *user, TiXmlNode *node, const char *key);
/** Reads a shared user; the level is -1 when the element does not tell. A state that is not accepted is logged. */
NETPUBLIC_API int get_shared_user_from_xmlnode(net_shared_user_info_t *user, TiXmlNode *node, const char *key);
/** Reads a user's rights. */
NETPUBLIC_API int get_ability_support_from_xmlnode(net_device_ability_support_v20_t *rights, TiXmlNode *node,
                                                   const char *key);
/** Reads a camera firmware. */
NETPUBLIC_API int get_ipc_version_from_xmlnode(net_ipc_ver_v20_t *version, TiXmlNode *node, const char *key);

/** @} */

#endif
