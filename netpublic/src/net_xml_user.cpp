// Users and login: login requests, accounts, users who are online, rights, failed logins, authorisation,
// shared users, and camera firmware. Secrets are copied, never logged.
#include "engine/engine.h"
#include "engine/registry.h"

#include <net_public.h>

#include <cstring>

namespace netpublic {
namespace {

constexpr int most_users = 20; // of every list

// Login -------------------------------------------------------------------------------------------

struct AuthModeFields : Description {
    using T = net_auth_mode_info_t;
    static constexpr Field fields[] = {
        text("authCode", AT(authCode)),
        text("phoneModel", AT(phoneModel)),
    };
    static constexpr Traits traits = HERE.parser("get_auth_mode_info_from_xmlnode");
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
    static constexpr Traits traits = HERE.parser("net_login_info_x2s")
                                         .failure(Line::parser)
                                         .sets_inited()
                                         .title("login", "Who logs in, with a password or a token.");
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
    static constexpr Traits traits =
        HERE.parser("net_login_net_info_x2s")
            .sets_inited()
            .title("network of a login", "Whether a client comes from the local network or from outside.");
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
    static constexpr Traits traits = HERE.parser("net_encrypt_x2s")
                                         .failure(Line::parser)
                                         .sets_inited()
                                         .title("password encryption", "How a client is to encrypt its password.");
};
constexpr auto encrypt_message = describe<EncryptFields>();

struct LoginErrorFields : Description {
    using T = net_login_err_info_v20_t;
    static constexpr Field fields[] = {
        integer("remainTimes", AT(remainTimes)),
        integer("unlockTime", AT(unlockTime)),
    };
    static constexpr Traits traits =
        HERE.parser("net_param_login_err_info_x2s")
            .any_size_read()
            .title("failed logins", "How many attempts a locked-out client has left, and when it may try again.");
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

using User = tag_net_userinfo_all__v20_t;

// A user as it is read. It takes its record's place as a whole: a refused one leaves the record empty.
struct ReadUser : User {
    User *record;
    bool named = false; // it has an id or a name

    // What the analysers miss: User{} clears all of it.
    // cppcheck-suppress uninitDerivedMemberVar
    // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.UninitializedObject)
    explicit ReadUser(User *target) : User{}, record(target) {}
    // cppcheck-suppress uninitDerivedMemberVar
    ReadUser(User (&users)[most_users], unsigned index) : ReadUser(&users[index]) {}
};

void empty_record(ReadUser &user)
{
    *user.record = User{};
}

int note_name(ReadUser &user)
{
    user.named = true;
    return 0;
}

int check_hours(const ReadUser &user)
{
    return user.validHours != 0 ? 0 : -1;
}

int replace_record(ReadUser &user)
{
    if (!user.named)
        return -1;
    *user.record = user;
    return 0;
}

struct UserFields : Description {
    using T = User;
    static constexpr Field fields[] = {
        integer("userId", AT(userId)).at_least(0).then<note_name>(),
        text("userName", AT(userName)).then<note_name>(),
        text("password", AT(password)),
        integer("userLevel", AT(userLevel)).in(0, 1),
        flag("loginState", AT(loginState)),
        word("userSetState", AT(userSetState), set_states).upto(15),
        integer("validHours", AT(validHours))
            .at_least(-1)
            .then<check_hours>()
            .accepts("-1, for ever, or a whole number of hours from 1"),
        unsigned_longlong("channelAbility", AT(channelAbility)),
    };
    static constexpr Traits traits =
        HERE.parser("get_user_from_xmlnode").before<ReadUser, empty_record>().after<ReadUser, replace_record>();
};
constexpr auto user_record = describe<UserFields>();

using UserList = net_user_list_v20_t;

int take_user(User (&)[most_users], const ReadUser &)
{
    return 0; // it has stored itself
}

// The initialiser has left a name in the first record.
void empty_first(UserList &list)
{
    list.user[0] = User{};
}

void empty_user(UserList &list, const Item &item)
{
    list.user[item.index] = User{};
}

// The envelope has the size of one record.
struct UsersFields : Description {
    using T = UserList;
    static constexpr Field fields[] = {
        wires<take_user>("User", AT(user), user_record, most_users)
            .by_position()
            .absent<empty_user>()
            .stop_when_full()
            .shown(user_record)
            .accepts("an account with an id or a name"),
    };
    static constexpr Traits traits = HERE.parser("nets_user_cfg_x2s")
                                         .before<T, empty_first>()
                                         .others_fail()
                                         .failure(Line::location)
                                         .any_size_read()
                                         .title("user accounts", "The accounts to add, change or delete, at most 20.");
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
    static constexpr Traits traits = HERE.parser("get_online_user_from_xmlnode").clears();
};
constexpr auto online_user_record = describe<OnlineUserFields>();

struct OnlineUsersFields : Description {
    using T = net_user_online_list_v20_t;
    static constexpr Field fields[] = {
        list("OnlineUser", AT(user), online_user_record).by_position().stop_when_full(),
    };
    static constexpr Traits traits = HERE.parser("nets_param_user_online_x2s")
                                         .others_fail()
                                         .any_size_read()
                                         .title("users online", "Who is logged in, at most 20 users.");
};
constexpr auto online_users_message = describe<OnlineUsersFields>();

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
        HERE.parser("net_auth_info_x2s")
            .writer("net_auth_info_s2x", "authInfo")
            .any_size_read()
            .title("authorisation by code", "What a code gives access to, and for how long; the reply is the code.");
};
constexpr auto authorisation_message = describe<AuthorisationFields>();

constexpr Word shared_state_list[] = {{NET_USER_SET_DELETE, "delete"}, {NET_USER_SET_MODIFY, "modify"}};
constexpr auto shared_states = words<shared_state_list>();

int read_shared_state(const char *text, net_shared_user_info_t &user)
{
    const auto *state = find_whole(shared_states, text);
    if (state == nullptr) {
        const Place here = NET_HERE;
        log_error(here, "%s, %d, wrong state:%s\n", "get_shared_user_from_xmlnode", here.line(), text);
        return -1;
    }
    user.userSetState = state->code();
    return 0;
}

struct SharedUserFields : Description {
    using T = net_shared_user_info_t;
    static constexpr Field fields[] = {
        preset(AT(userLevel), -1),
        converted<read_shared_state>("userSetState", AT(userSetState)).upto(15).spelled(shared_states),
        text("userId", AT(userId)),
        unsigned_integer("ability", AT(ability)),
        integer("validHours", AT(validHours)),
        unsigned_longlong("channelAbility", AT(channelAbility)),
        integer("userLevel", AT(userLevel)).at_most(1),
        text("notes", AT(notes)),
    };
    static constexpr Traits traits = HERE.parser("get_shared_user_from_xmlnode");
};
constexpr auto shared_user_record = describe<SharedUserFields>();

// Of several users the last one counts.
struct SharedUserMessageFields : Description {
    using T = net_shared_user_info_t;
    static constexpr Field fields[] = {
        part("user", shared_user_record),
    };
    static constexpr Traits traits = HERE.parser("net_shared_user_cfg_x2s")
                                         .any_size_read()
                                         .title("shared user", "What another person's account may do, and until when.");
};
constexpr auto shared_user_message = describe<SharedUserMessageFields>();

// The record follows the child's position: a child of another name leaves an empty one, also where an earlier
// message has left a user. The envelope has the size of one record.
struct SharedUsersFields : Description {
    using T = net_shared_user_list_t;
    static constexpr Field fields[] = {
        list("user", AT(user), shared_user_record).by_position().stop_when_full(),
    };
    static constexpr Traits traits = HERE.parser("net_shared_user_list_x2s")
                                         .any_size_read()
                                         .title("shared users", "With whom a device is shared, at most 20 users.");
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
    // The root has three p, as the protocol has it. Any failure of the writer is the one line.
    static constexpr Traits traits = HERE.parser("nets_ability_support_x2s")
                                         .writer("nets_ability_support_s2x", "AbilitySuppport")
                                         .write_entry(Line::rights_error)
                                         .write_failure_logged()
                                         .any_size_read()
                                         .title("rights of a user", "Which parts of the device a user may work with.");
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
    static constexpr Traits traits = HERE.parser("get_ipc_version_from_xmlnode");
};
constexpr auto firmware_record = describe<FirmwareFields>();

struct FirmwareListFields : Description {
    using T = net_ipc_ver_list_v20_t;
    static constexpr Field fields[] = {
        preset(AT(count), 0),
        list("IpcVersion", AT(entries), firmware_record).counted_by(AT(count)),
    };
    static constexpr Traits traits =
        HERE.parser("net_ipc_version_x2s")
            .title("camera firmware", "Which firmware is offered for which camera platform, at most four.");
};
constexpr auto firmware_message = describe<FirmwareListFields>();

} // namespace
} // namespace netpublic

using namespace netpublic;

int get_auth_mode_info_from_xmlnode(net_auth_mode_info_t *info, TiXmlNode *node)
{
    return read_component_noting_null(info, node, nullptr, auth_mode_record);
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
    ReadUser read(user);
    return read_component_noting_null(user != nullptr ? &read : nullptr, node, key, user_record);
}

int nets_user_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, users_message);
}

int get_online_user_from_xmlnode(tag_net_userinfo_online_v20_t *user, TiXmlNode *node, const char *key)
{
    // Cleared also when the element is another one.
    if (is_component(user, node, nullptr))
        std::memset(user, 0, sizeof *user);
    return read_component_noting_null(user, node, key, online_user_record);
}

int nets_param_user_online_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, online_users_message);
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
    return read_component_noting_null(user, node, key, shared_user_record);
}

int net_shared_user_cfg_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, shared_user_message);
}

int net_shared_user_list_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, shared_users_message);
}

int get_ability_support_from_xmlnode(net_device_ability_support_v20_t *rights, TiXmlNode *node, const char *key)
{
    return read_component_noting_null(rights, node, key, rights_message, __func__);
}

int nets_ability_support_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, rights_message);
}

int nets_ability_support_s2x(net_param_t *param, TiXmlElement *parent)
{
    return write_message(param, parent, rights_message);
}

int get_ipc_version_from_xmlnode(net_ipc_ver_v20_t *version, TiXmlNode *node, const char *key)
{
    return read_component_noting_null(version, node, key, firmware_record);
}

int net_ipc_version_x2s(net_param_t *param, TiXmlNode *node)
{
    return parse_message(param, node, firmware_message);
}

MESSAGES(user, //
         HOST_MESSAGE("login-info", net_login_info_v20_t, net_login_info_x2s, nullptr, login_message, "LoginUser"),
         HOST_MESSAGE("login-net-info", net_login_net_info_v20_t, net_login_net_info_x2s, nullptr, login_net_message,
                      "LoginNet"),
         MESSAGE("encrypt", net_param_encrypt_init, net_encrypt_x2s, nullptr, encrypt_message, "Encryption"),
         MESSAGE("login-err-info", net_param_login_err_info_init, net_param_login_err_info_x2s, nullptr,
                 login_error_message, "LoginErrInfo"),
         MESSAGE("user", nets_param_user_cfg_init, nets_user_cfg_x2s, nullptr, users_message, "UserList"),
         HOST_MESSAGE("user-online", net_user_online_list_v20_t, nets_param_user_online_x2s, nullptr,
                      online_users_message, "OnlineUserList"),
         MESSAGE("auth-info", net_param_auth_info_init, net_auth_info_x2s, net_auth_info_s2x, authorisation_message),
         MESSAGE("shared-user", net_param_shared_user_cfg_init, net_shared_user_cfg_x2s, nullptr, shared_user_message,
                 "SharedUser"),
         MESSAGE("shared-user-list", net_param_shared_user_list_init, net_shared_user_list_x2s, nullptr,
                 shared_users_message, "SharedUserList"),
         MESSAGE("ability-support", nets_param_ability_support_init, nets_ability_support_x2s, nets_ability_support_s2x,
                 rights_message),
         HOST_MESSAGE("ipc-version", net_ipc_ver_list_v20_t, net_ipc_version_x2s, nullptr, firmware_message,
                      "IpcVersionList"))
