// Users and login: login requests, accounts, users who are online, rights, failed logins, authorisation,
// shared users, and camera firmware. Secrets are copied, never logged.
#include "engine/engine.h"
#include "engine/registry.h"
#include "values/values.h"

#include <net_public.h>

#include <cstring>

namespace netpublic {
namespace {

constexpr int most_users = 20; // of every list

// Unlike other component readers, those of users log null arguments.
bool is_user_component(Place place, const char *function, const void *record, const TiXmlNode *node, const char *key)
{
    if (record != nullptr && node != nullptr)
        return is_component(record, node, key);
    log_line(Line::parser, place, function);
    return false;
}

// Login -------------------------------------------------------------------------------------------

struct AuthModeFields : Description {
    using T = net_auth_mode_info_t;
    static constexpr Field fields[] = {
        text("authCode", AT(authCode)),
        text("phoneModel", AT(phoneModel)),
    };
};
constexpr auto auth_mode_record = describe<AuthModeFields>();

constexpr Word auth_type_list[] = {{1, "getAccesskey"}, {2, "authLogin"}};
constexpr auto auth_types = words<auth_type_list>();

struct LoginFields : Description {
    using T = net_login_info_v20_t;
    static constexpr Field fields[] = {
        text("userName", AT(userName)),
        text("password", AT(password)),
        word("authType", AT(authType), auth_types),
        group("authInfo", AT(authMode), auth_mode_record),
        integer("userVer", AT(userVer)),
        integer("handleSpecial", AT(handleSpecial)),
        text("authSignature", AT(authSignature)),
        text("authToken", AT(authToken)),
        text("authUser", AT(authUser)),
        text("uid", AT(uid)),
        text("nasToken", AT(nasToken)),
    };
    static constexpr Traits traits = HERE.parser("net_login_info_x2s").failure(Line::parser).sets_inited();
};
constexpr auto login_message = describe<LoginFields>();

constexpr Word login_net_list[] = {{0, "LAN"}, {1, "WAN"}};
constexpr auto login_nets = words<login_net_list>();

struct LoginNetFields : Description {
    using T = net_login_net_info_v20_t;
    static constexpr Field fields[] = {
        word("type", AT(type), login_nets).upto(15),
        integer("udpPort", AT(udpPort)),
    };
    static constexpr Traits traits = HERE.parser("net_login_net_info_x2s").sets_inited();
};
constexpr auto login_net_message = describe<LoginNetFields>();

constexpr Word encryption_list[] = {{0, "md5"}, {1, "base64"}};
constexpr auto encryptions = words<encryption_list>();

struct EncryptFields : Description {
    using T = net_encrypt_v20_t;
    static constexpr Field fields[] = {
        word("type", AT(type), encryptions).upto(15),
        text("nonce", AT(nonce)),
    };
    static constexpr Traits traits = HERE.parser("net_encrypt_x2s").failure(Line::parser).sets_inited();
};
constexpr auto encrypt_message = describe<EncryptFields>();

struct LoginErrorFields : Description {
    using T = net_login_err_info_v20_t;
    static constexpr Field fields[] = {
        integer("remainTimes", AT(remainTimes)),
        integer("unlockTime", AT(unlockTime)),
    };
    static constexpr Traits traits = HERE.parser("net_param_login_err_info_x2s").any_size_read();
};
constexpr auto login_error_message = describe<LoginErrorFields>();

// Accounts ----------------------------------------------------------------------------------------

constexpr Word set_state_list[] = {
    {NET_USER_SET_NONE, "none"},
    {NET_USER_SET_ADD, "add"},
    {NET_USER_SET_DELETE, "delete"},
    {NET_USER_SET_MODIFY, "modify"},
};
constexpr auto set_states = words<set_state_list>();

// For ever, or at least one hour.
int read_valid_hours(tag_net_userinfo_all__v20_t &user, TiXmlNode *node)
{
    return read_int(&user.validHours, node) == 0 && user.validHours >= -1 && user.validHours != 0 ? 0 : -1;
}

struct UserFields : Description {
    using T = tag_net_userinfo_all__v20_t;
    static constexpr Field fields[] = {
        // While a user is read, in a copy, the reserved word tells whether there was an id or a name.
        integer("userId", AT(userId)).at_least(0).marks(AT(reserved)),
        text("userName", AT(userName)).marks(AT(reserved)),
        text("password", AT(password)),
        integer("userLevel", AT(userLevel)).in(0, 1),
        flag("loginState", AT(loginState)),
        word("userSetState", AT(userSetState), set_states).upto(15),
        custom<read_valid_hours>("validHours", AT(validHours)),
        unsigned_longlong("channelAbility", AT(channelAbility)),
    };
    static constexpr Traits traits = Traits{}.clears();
};
constexpr auto user_record = describe<UserFields>();

// The record replaces what was there before, but a refused one leaves nothing.
int read_user(tag_net_userinfo_all__v20_t &user, TiXmlNode *node)
{
    tag_net_userinfo_all__v20_t copy;
    user = tag_net_userinfo_all__v20_t{};
    if (read_record(user_record, &copy, node) != 0 || copy.reserved == 0)
        return -1;
    copy.reserved = 0;
    user = copy;
    return 0;
}

constexpr char user_key[] = "User";

// For the envelope's check and for the tools; the users are read one by one.
struct UsersFields : Description {
    using T = tag_net_userinfo_all__v20_t; // one of the payload's: the envelope has its size
    static constexpr Field fields[] = {
        part(user_key, user_record),
    };
    static constexpr Traits traits = HERE.parser("nets_user_cfg_x2s").any_size_read();
};
constexpr auto users_message = describe<UsersFields>();

// Users online ------------------------------------------------------------------------------------

struct OnlineUserFields : Description {
    using T = tag_net_userinfo_online_v20_t;
    static constexpr Field fields[] = {
        integer("userId", AT(userId)).at_least(0),
        integer("sessionId", AT(sessionId)).at_least(0),
        text("userName", AT(userName)),
        text("password", AT(password)),
        integer("userLevel", AT(userLevel)).in(0, 1),
        text("ipAddress", AT(ipAddress)),
        text("macAddress", AT(macAddress)),
        flag("enableOutoffLine", AT(enableOutoffLine)),
        integer("isOnline", AT(isOnline)),
    };
};
constexpr auto online_user_record = describe<OnlineUserFields>();

constexpr char online_user_key[] = "OnlineUser";

// For the envelope's check and for the tools; the users are read one by one.
struct OnlineUsersFields : Description {
    using T = net_user_online_list_v20_t;
    static constexpr Field fields[] = {
        list(online_user_key, AT(user), online_user_record),
    };
    static constexpr Traits traits = HERE.parser("nets_param_user_online_x2s").any_size_read();
};
constexpr auto online_users_message = describe<OnlineUsersFields>();

// Cleared also when the element is another one.
int read_online_user(tag_net_userinfo_online_v20_t &user, TiXmlNode *node, const char *key)
{
    std::memset(&user, 0, sizeof user); // the padding, too
    return read_component(&user, node, key, online_user_record);
}

// Authorisation and shared users ------------------------------------------------------------------

struct AuthorisationFields : Description {
    using T = net_auth_info_v20_t;
    static constexpr Field fields[] = {
        text("notes", AT(notes)).read_only(),
        integer("validhours", AT(validhours)).read_only(), // not "validHours" as in accounts, meant
        integer("userLevel", AT(userLevel)).read_only(),
        unsigned_integer("ability", AT(ability)).read_only(),
        unsigned_longlong("channelAbility", AT(channelAbility)).read_only(),
        integer("code", AT(code)).write_only(),
    };
    static constexpr Traits traits =
        HERE.parser("net_auth_info_x2s").writer("net_auth_info_s2x", "authInfo").any_size_read();
};
constexpr auto authorisation_message = describe<AuthorisationFields>();

constexpr Word shared_state_list[] = {{NET_USER_SET_DELETE, "delete"}, {NET_USER_SET_MODIFY, "modify"}};
constexpr auto shared_states = words<shared_state_list>();

int read_shared_state(net_shared_user_info_t &user, TiXmlNode *node)
{
    constexpr std::size_t longest = 15;
    const char *text;
    if (view_text(&text, longest, node) != 0)
        return -1;
    const auto *state = find_whole(shared_states, text);
    if (state == nullptr) {
        const Place here = NET_HERE;
        log_error(here, "%s, %d, wrong state:%s\n", "get_shared_user_from_xmlnode", here.line, text);
        return -1;
    }
    user.userSetState = state->code;
    return 0;
}

struct SharedUserFields : Description {
    using T = net_shared_user_info_t;
    static constexpr Field fields[] = {
        preset(AT(userLevel), -1),
        custom<read_shared_state>("userSetState", AT(userSetState)),
        text("userId", AT(userId)),
        unsigned_integer("ability", AT(ability)),
        integer("validHours", AT(validHours)),
        unsigned_longlong("channelAbility", AT(channelAbility)),
        integer("userLevel", AT(userLevel)).at_most(1),
        text("notes", AT(notes)),
    };
};
constexpr auto shared_user_record = describe<SharedUserFields>();

constexpr char shared_user_key[] = "user";

struct SharedUserMessageFields : Description {
    using T = net_shared_user_info_t;
    static constexpr Field fields[] = {
        part(shared_user_key, shared_user_record),
    };
    static constexpr Traits traits = HERE.parser("net_shared_user_cfg_x2s").any_size_read();
};
constexpr auto shared_user_message = describe<SharedUserMessageFields>();

// For the envelope's check, which has one record's size, and for the tools.
struct SharedUsersFields : SharedUserMessageFields {
    static constexpr Traits traits = HERE.parser("net_shared_user_list_x2s").any_size_read();
};
constexpr auto shared_users_message = describe<SharedUsersFields>();

// Rights ------------------------------------------------------------------------------------------

struct RightsFields : Description {
    using T = net_device_ability_support_v20_t;
    static constexpr Field fields[] = {
        text("userName", AT(userName)),
        flag("system", AT(system)),
        flag("streaming", AT(streaming)),
        flag("record", AT(record)),
        flag("network", AT(network)),
        flag("PTZ", AT(PTZ)),
        flag("IO", AT(IO)),
        flag("alarm", AT(alarm)),
        flag("image", AT(image)),
        flag("video", AT(video)),
        flag("audio", AT(audio)),
        flag("security", AT(security)),
        flag("replay", AT(replay)),
        flag("disk", AT(disk)),
    };
    // The root has three p, as the protocol has it. The writer has a line of its own.
    static constexpr Traits traits = HERE.parser("nets_ability_support_x2s")
                                         .writer("nets_ability_support_s2x", "AbilitySuppport")
                                         .write_entry(Line::none)
                                         .any_size_read();
};
constexpr auto rights_message = describe<RightsFields>();

// Camera firmware ---------------------------------------------------------------------------------

struct FirmwareFields : Description {
    using T = net_ipc_ver_v20_t;
    static constexpr Field fields[] = {
        counted_text("platform", AT(platform)),
        counted_text("version", AT(version)),
        counted_text("url", AT(url)),
    };
};
constexpr auto firmware_record = describe<FirmwareFields>();

struct FirmwareListFields : Description {
    using T = net_ipc_ver_list_v20_t;
    static constexpr Field fields[] = {
        preset(AT(count), 0),
        list("IpcVersion", AT(entries), firmware_record).counted_by(AT(count)),
    };
    static constexpr Traits traits = HERE.parser("net_ipc_version_x2s");
};
constexpr auto firmware_message = describe<FirmwareListFields>();

} // namespace
} // namespace netpublic

using namespace netpublic;

int get_auth_mode_info_from_xmlnode(net_auth_mode_info_t *info, TiXmlNode *node)
{
    if (!is_user_component(NET_HERE, __func__, info, node, nullptr))
        return -1;
    return read_record(auth_mode_record, info, node);
}

int net_login_info_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, login_message);
}

int net_login_net_info_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, login_net_message);
}

int net_encrypt_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, encrypt_message);
}

int net_param_login_err_info_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, login_error_message);
}

int get_user_from_xmlnode(tag_net_userinfo_all__v20_t *user, TiXmlNode *node, const char *key)
{
    if (!is_user_component(NET_HERE, __func__, user, node, key))
        return -1;
    return read_user(*user, node);
}

// Every child is a user, or the list is refused.
int nets_user_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    if (check_parser(users_message, param, node) != 0)
        return -1;
    auto *user = static_cast<tag_net_userinfo_all__v20_t *>(param->data);
    *user = tag_net_userinfo_all__v20_t{}; // the initialiser has left a name there
    TiXmlNode *child = node->FirstChild();
    for (int i = 0; i < most_users && child != nullptr; ++i, child = child->NextSibling()) {
        user[i] = tag_net_userinfo_all__v20_t{};
        if (get_user_from_xmlnode(&user[i], child, user_key) != 0) {
            const Place here = NET_HERE;
            log_error(here, "%s, %d\n", __func__, here.line);
            return -1;
        }
    }
    return 0;
}

int get_online_user_from_xmlnode(tag_net_userinfo_online_v20_t *user, TiXmlNode *node, const char *key)
{
    if (!is_user_component(NET_HERE, __func__, user, node, nullptr))
        return -1;
    return read_online_user(*user, node, key);
}

int nets_param_user_online_x2s(net_param_t *param, TiXmlNode *node)
{
    if (check_parser(online_users_message, param, node) != 0)
        return -1;
    auto *user = static_cast<net_user_online_list_v20_t *>(param->data)->user;
    TiXmlNode *child = node->FirstChild();
    for (int i = 0; i < most_users && child != nullptr; ++i, child = child->NextSibling())
        if (read_online_user(user[i], child, online_user_key) != 0)
            return -1;
    return 0;
}

int net_auth_info_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, authorisation_message);
}

int net_auth_info_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, authorisation_message);
}

int get_shared_user_from_xmlnode(net_shared_user_info_t *user, TiXmlNode *node, const char *key)
{
    if (!is_user_component(NET_HERE, __func__, user, node, key))
        return -1;
    return read_record(shared_user_record, user, node);
}

int net_shared_user_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, shared_user_message);
}

// The record follows the child's position: a child of another name leaves an empty one, also where an
// earlier message has left a user.
int net_shared_user_list_x2s(net_param_t *param, TiXmlNode *node)
{
    if (check_parser(shared_users_message, param, node) != 0)
        return -1;
    auto *user = static_cast<net_shared_user_info_t *>(param->data);
    TiXmlNode *child = node->FirstChild();
    for (int i = 0; i < most_users && child != nullptr; ++i, child = child->NextSibling()) {
        if (!answers_to(child->Value(), shared_user_key))
            user[i] = net_shared_user_info_t{};
        else if (read_record(shared_user_record, &user[i], child) != 0)
            return -1;
    }
    return 0;
}

int get_ability_support_from_xmlnode(net_device_ability_support_v20_t *rights, TiXmlNode *node, const char *key)
{
    if (!is_user_component(NET_HERE, __func__, rights, node, key))
        return -1;
    return read_record(rights_message, rights, node);
}

int nets_ability_support_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, rights_message);
}

int nets_ability_support_s2x(net_param_t *param, TiXmlElement *parent)
{
    if (write_message(param, parent, rights_message) == 0)
        return 0;
    log_error(NET_HERE, "nets_ability_support_s2x fail\n");
    return -1;
}

int get_ipc_version_from_xmlnode(net_ipc_ver_v20_t *version, TiXmlNode *node, const char *key)
{
    if (!is_user_component(NET_HERE, __func__, version, node, key))
        return -1;
    return read_record(firmware_record, version, node);
}

int net_ipc_version_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, firmware_message);
}

MESSAGES(user, //
         HOST_MESSAGE("login-info", net_login_info_v20_t, net_login_info_x2s, nullptr, login_message),
         HOST_MESSAGE("login-net-info", net_login_net_info_v20_t, net_login_net_info_x2s, nullptr, login_net_message),
         MESSAGE("encrypt", net_param_encrypt_init, net_encrypt_x2s, nullptr, encrypt_message),
         MESSAGE("login-err-info", net_param_login_err_info_init, net_param_login_err_info_x2s, nullptr,
                 login_error_message),
         MESSAGE("user", nets_param_user_cfg_init, nets_user_cfg_x2s, nullptr, users_message),
         HOST_MESSAGE("user-online", net_user_online_list_v20_t, nets_param_user_online_x2s, nullptr,
                      online_users_message),
         MESSAGE("auth-info", net_param_auth_info_init, net_auth_info_x2s, net_auth_info_s2x, authorisation_message),
         MESSAGE("shared-user", net_param_shared_user_cfg_init, net_shared_user_cfg_x2s, nullptr, shared_user_message),
         MESSAGE("shared-user-list", net_param_shared_user_list_init, net_shared_user_list_x2s, nullptr,
                 shared_users_message),
         MESSAGE("ability-support", nets_param_ability_support_init, nets_ability_support_x2s, nets_ability_support_s2x,
                 rights_message),
         HOST_MESSAGE("ipc-version", net_ipc_ver_list_v20_t, net_ipc_version_x2s, nullptr, firmware_message))
