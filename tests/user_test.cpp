// Users and login: what each message stores, refuses, writes and logs.
#include "support.h"

#include <net_public.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

using namespace test;

namespace {

class UserTest : public HostTest {};

// The payload of messages that the host prepares itself: all zero.
template <class Payload> int host_payload(net_param_t *param, net_ext_t *ext)
{
    return net_param_init_size_id(param, ext, sizeof(Payload), 1);
}

std::string element(const std::string &name, const std::string &inside)
{
    return "<" + name + ">" + inside + "</" + name + ">";
}

// The log of a refused child. Source lines that stand bare behind a comma become "#".
template <class Payload> std::string refusal(Envelope<Payload> &message, Parser parser, const std::string &text)
{
    std::string log = log_of([&] { EXPECT_EQ(message.read(parser, text), -1) << text; });
    for (std::size_t at; (at = log.find_first_of("0123456789", log.find(", "))) != std::string::npos;)
        log.replace(at, log.find_first_not_of("0123456789", at) - at, "#");
    return log;
}

std::string entry_line(const char *function)
{
    return "<red net_xml_user.cpp>Func(" + std::string(function) + ") Line(#) \n";
}

const std::string x32(32, 'x');

} // namespace

TEST_F(UserTest, LoginStoresItsFields)
{
    Envelope<net_login_info_v20_t> message(host_payload<net_login_info_v20_t>);
    EXPECT_EQ(message.read(net_login_info_x2s,
                           "<LoginUser><userName>owner</userName><password>tulip</password>"
                           "<authType>AUTHLOGIN</authType><authInfo><authCode>4711</authCode><other/>"
                           "<phone>Pixel</phone></authInfo><userVer>1</userVer><handleSpecial>-2</handleSpecial>"
                           "<authSignature>" +
                               std::string(63, 's') + "</authSignature><authToken>" + std::string(63, 't') +
                               "</authToken><authUser>boss</authUser><uid>0123456789ABCDEF</uid><nasToken>" +
                               std::string(127, 'n') + "</nasToken></LoginUser>"),
              0);
    EXPECT_STREQ(message->userName, "owner");
    EXPECT_STREQ(message->password, "tulip");
    EXPECT_EQ(message->authType, 2);
    EXPECT_STREQ(message->authMode.authCode, "4711");
    EXPECT_STREQ(message->authMode.phoneModel, "Pixel");
    EXPECT_EQ(message->userVer, 1);
    EXPECT_EQ(message->handleSpecial, -2);
    EXPECT_EQ(message->authSignature, std::string(63, 's'));
    EXPECT_EQ(message->authToken, std::string(63, 't'));
    EXPECT_STREQ(message->authUser, "boss");
    EXPECT_STREQ(message->uid, "0123456789ABCDEF");
    EXPECT_EQ(message->nasToken, std::string(127, 'n'));
    EXPECT_EQ(message.param.inited, 2u);

    // The first key that a beginning answers to: of four, the type; of two, the name.
    EXPECT_EQ(message.read(net_login_info_x2s, "<L><auth>getaccesskey</auth><user>guest</user><authS>x</authS></L>"),
              0);
    EXPECT_EQ(message->authType, 1);
    EXPECT_STREQ(message->userName, "guest");
    EXPECT_STREQ(message->authSignature, "x");
}

TEST_F(UserTest, LoginRefusalsNameTheFunctionAndNoSecret)
{
    for (const std::string &body :
         {element("password", x32), element("authType", "authLog"), element("authType", ""), element("userVer", "x"),
          element("authInfo", element("authCode", x32)), element("authSignature", x32 + x32),
          element("authToken", x32 + x32), element("nasToken", x32 + x32 + x32 + x32), element("uid", x32)}) {
        Envelope<net_login_info_v20_t> message(host_payload<net_login_info_v20_t>);
        EXPECT_EQ(
            refusal(message, net_login_info_x2s, "<L><authUser>me</authUser>" + body + "<userName>me</userName></L>"),
            entry_line("net_login_info_x2s"))
            << body;
        EXPECT_STREQ(message->authUser, "me");
        EXPECT_STREQ(message->userName, "");
        EXPECT_EQ(message.param.inited, 1u);
    }
    net_auth_mode_info_t info = {"old", "old"};
    Xml body("<anything><phoneModel>new</phoneModel></anything>");
    EXPECT_EQ(get_auth_mode_info_from_xmlnode(&info, body), 0);
    EXPECT_STREQ(info.authCode, "old");
    EXPECT_STREQ(info.phoneModel, "new");
}

TEST_F(UserTest, EntryFailuresAreLogged)
{
    const struct {
        Parser parser;
        const char *name;
        bool size_matters;
    } parsers[] = {
        {net_login_info_x2s, "net_login_info_x2s", true},
        {net_login_net_info_x2s, "net_login_net_info_x2s", true},
        {net_encrypt_x2s, "net_encrypt_x2s", true},
        {net_ipc_version_x2s, "net_ipc_version_x2s", true},
        {net_param_login_err_info_x2s, "net_param_login_err_info_x2s", false},
        {nets_user_cfg_x2s, "nets_user_cfg_x2s", false},
        {nets_param_user_online_x2s, "nets_param_user_online_x2s", false},
        {net_auth_info_x2s, "net_auth_info_x2s", false},
        {net_shared_user_cfg_x2s, "net_shared_user_cfg_x2s", false},
        {net_shared_user_list_x2s, "net_shared_user_list_x2s", false},
        {nets_ability_support_x2s, "nets_ability_support_x2s", false},
    };
    for (const auto &each : parsers) {
        Envelope<net_ipc_ver_list_v20_t> message(host_payload<net_ipc_ver_list_v20_t>);
        message.param.dataSize = 1;
        net_param_t empty = {};
        Xml body("<x/>");
        const std::string line = entry_line(each.name);
        EXPECT_EQ(log_of([&] {
                      EXPECT_EQ(each.parser(nullptr, body), -1);
                      EXPECT_EQ(each.parser(&message.param, nullptr), -1);
                      EXPECT_EQ(each.parser(&empty, body), -1);
                  }),
                  line + line + line);
        EXPECT_EQ(log_of([&] { EXPECT_EQ(each.parser(&message.param, body), each.size_matters ? -1 : 0); }),
                  each.size_matters ? line : "");
    }
    tag_net_userinfo_all__v20_t user = {};
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_user_from_xmlnode(&user, nullptr, "User"), -1); }),
              entry_line("get_user_from_xmlnode"));
    Xml other("<Guest/>");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_user_from_xmlnode(&user, other, "User"), -1); }), "");
}

TEST_F(UserTest, LoginNetwork)
{
    Envelope<net_login_net_info_v20_t> message(host_payload<net_login_net_info_v20_t>);
    EXPECT_EQ(message.read(net_login_net_info_x2s, "<LoginNet><type>wan</type><udpPort>-9000</udpPort></LoginNet>"), 0);
    EXPECT_EQ(message->type, 1);
    EXPECT_EQ(message->udpPort, -9000);
    EXPECT_EQ(message.param.inited, 2u);
    EXPECT_EQ(message.read(net_login_net_info_x2s, "<L><type>LAN</type></L>"), 0);
    EXPECT_EQ(message->type, 0);
    for (const char *word : {"LA", "WLAN", ""})
        EXPECT_EQ(refusal(message, net_login_net_info_x2s, element("L", element("type", word))), "") << word;
}

TEST_F(UserTest, PasswordEncryption)
{
    Envelope<net_encrypt_v20_t> message(net_param_encrypt_init);
    EXPECT_EQ(message.read(net_encrypt_x2s,
                           "<Encryption><type>BASE64</type><nonce>" + std::string(31, 'n') + "</nonce></Encryption>"),
              0);
    EXPECT_EQ(message->type, 1);
    EXPECT_EQ(message->nonce, std::string(31, 'n'));
    EXPECT_EQ(message.param.inited, 2u);
    EXPECT_EQ(message.read(net_encrypt_x2s, "<E><type>md5</type></E>"), 0);
    EXPECT_EQ(message->type, 0);
    for (const std::string &body : {element("type", "md"), element("type", "sha1"), element("nonce", x32)})
        EXPECT_EQ(refusal(message, net_encrypt_x2s, element("E", body)), entry_line("net_encrypt_x2s")) << body;
}

TEST_F(UserTest, FailedLogins)
{
    Envelope<net_login_err_info_v20_t> message(net_param_login_err_info_init);
    EXPECT_EQ(message.read(net_param_login_err_info_x2s,
                           "<LoginErr><unlockTime>300</unlockTime><remainTimes>-1</remainTimes></LoginErr>"),
              0);
    EXPECT_EQ(message->remainTimes, -1);
    EXPECT_EQ(message->unlockTime, 300);
    EXPECT_EQ(message.param.inited, 1u);
}

TEST_F(UserTest, AccountsReplaceTheirRecords)
{
    net_ext_t extension{};
    std::strcpy(extension.userName, "leftover");
    Envelope<net_user_list_v20_t> message(nets_param_user_cfg_init, extension);
    message->user[2].userLevel = 9;
    EXPECT_EQ(message.read(nets_user_cfg_x2s,
                           "<UserList><User><userId>3</userId><userLevel>1</userLevel></User>"
                           "<user><userName>guest</userName><password>" +
                               std::string(31, 'p') +
                               "</password><loginState>1</loginState><userSetState>MODIFY</userSetState>"
                               "<validHours>-1</validHours><channelAbility>18446744073709551615</channelAbility>"
                               "<other/></user></UserList>"),
              0);
    const auto *user = message->user;
    EXPECT_STREQ(user[0].userName, "") << "not what the extension named";
    EXPECT_STREQ(user[0].password, "");
    EXPECT_EQ(user[0].userId, 3);
    EXPECT_EQ(user[0].userLevel, 1);
    EXPECT_STREQ(user[1].userName, "guest");
    EXPECT_EQ(user[1].password, std::string(31, 'p'));
    EXPECT_EQ(user[1].userId, 0);
    EXPECT_EQ(user[1].userLevel, 0);
    EXPECT_EQ(user[1].loginState, 1);
    EXPECT_EQ(user[1].userSetState, NET_USER_SET_MODIFY);
    EXPECT_EQ(user[1].validHours, -1);
    EXPECT_EQ(user[1].channelAbility, 18446744073709551615ull);
    EXPECT_EQ(user[1].reserved, 0);
    EXPECT_EQ(user[2].userLevel, 9) << "no child, no record";
    EXPECT_EQ(message.param.inited, 1u);

    // A list without users leaves no first one.
    EXPECT_EQ(message.read(nets_user_cfg_x2s, "<UserList/>"), 0);
    EXPECT_EQ(user[0].userId, 0);
    EXPECT_STREQ(user[1].userName, "guest");
}

TEST_F(UserTest, AccountRefusals)
{
    const std::string good = "<User><userName>a</userName></User>";
    for (const std::string &wrong :
         {std::string("<User/>"), std::string("<User><userLevel>1</userLevel></User>"), std::string("<Users/>"),
          std::string("<!--note-->"), element("User", "<userId>-1</userId>"),
          element("User", "<userId>4</userId><userLevel>2</userLevel>"),
          element("User", "<userId>4</userId><userLevel>-1</userLevel>"),
          element("User", "<userId>4</userId><validHours>0</validHours>"),
          element("User", "<userId>4</userId><validHours>-2</validHours>"),
          element("User", "<userId>4</userId><userSetState>del</userSetState>"),
          element("User", "<userId>4</userId><loginState>2</loginState>"),
          element("User", "<userId>4</userId>" + element("password", x32)),
          element("User", "<userId>4</userId><channelAbility>x</channelAbility>")}) {
        Envelope<net_user_list_v20_t> message(nets_param_user_cfg_init);
        message->user[1].userId = 7;
        message->user[1].loginState = 1;
        EXPECT_EQ(refusal(message, nets_user_cfg_x2s, element("UserList", good + wrong + good)),
                  "<red net_xml_user.cpp>nets_user_cfg_x2s, #\n")
            << wrong;
        EXPECT_STREQ(message->user[0].userName, "a") << "those before it stay";
        EXPECT_EQ(message->user[1].userId, 0) << "of the refused one nothing";
        EXPECT_EQ(message->user[1].loginState, 0);
        EXPECT_STREQ(message->user[2].userName, "");
    }
    for (const char *state : {"none", "Add", "DELETE", "modify"}) {
        Envelope<net_user_list_v20_t> message(nets_param_user_cfg_init);
        EXPECT_EQ(message.read(nets_user_cfg_x2s, "<L><User><userName/><validHours>1</validHours>" +
                                                      element("userSetState", state) + "</User></L>"),
                  0)
            << state << ": an empty name is one";
    }
}

TEST_F(UserTest, TheTwentyFirstUserIsIgnored)
{
    const auto twenty = [](const char *name) { return repeated(20, element(name, "<userId>5</userId>")); };
    Envelope<net_user_list_v20_t> accounts(nets_param_user_cfg_init);
    EXPECT_EQ(accounts.read(nets_user_cfg_x2s, element("L", twenty("User") + "<User/>")), 0);
    EXPECT_EQ(accounts->user[19].userId, 5);

    Envelope<net_user_online_list_v20_t> online(host_payload<net_user_online_list_v20_t>);
    EXPECT_EQ(online.read(nets_param_user_online_x2s, element("L", twenty("OnlineUser") + "<other/>")), 0);
    EXPECT_EQ(online->user[19].userId, 5);

    Envelope<net_shared_user_list_t> shared(net_param_shared_user_list_init);
    EXPECT_EQ(shared.read(net_shared_user_list_x2s,
                          element("L", twenty("user") + element("user", "<userLevel>2</userLevel>"))),
              0);
    EXPECT_STREQ(shared->user[19].userId, "5");
}

TEST_F(UserTest, AccountComponent)
{
    tag_net_userinfo_all__v20_t user;
    std::memset(&user, 'z', sizeof user);
    Xml other("<Guest><userId>1</userId></Guest>");
    EXPECT_EQ(get_user_from_xmlnode(&user, other, "User"), -1);
    EXPECT_EQ(user.userName[0], 'z') << "another element changes nothing";
    EXPECT_EQ(get_user_from_xmlnode(&user, other, nullptr), 0);
    EXPECT_EQ(user.userId, 1);
    EXPECT_STREQ(user.userName, "");
    Xml nobody("<Us><userLevel>1</userLevel></Us>");
    EXPECT_EQ(get_user_from_xmlnode(&user, nobody, "User"), -1);
    EXPECT_EQ(user.userId, 0) << "cleared, then refused";
    EXPECT_EQ(user.userLevel, 0);
}

TEST_F(UserTest, UsersOnline)
{
    Envelope<net_user_online_list_v20_t> message(host_payload<net_user_online_list_v20_t>);
    std::memset(message.payload(), 'z', sizeof(net_user_online_list_v20_t));
    EXPECT_EQ(message.read(nets_param_user_online_x2s,
                           "<List><OnlineUser><userId>0</userId><sessionId>77</sessionId><userName>owner</userName>"
                           "<password>tulip</password><userLevel>1</userLevel><ipAddress>192.168.100.200</ipAddress>"
                           "<macAddress>00:11:22:33:44:55</macAddress><enableOutoffLine>1</enableOutoffLine>"
                           "<isOnline>-3</isOnline></OnlineUser><Online><user>12</user></Online></List>"),
              0);
    const auto *user = message->user;
    EXPECT_EQ(user[0].userId, 0);
    EXPECT_EQ(user[0].sessionId, 77);
    EXPECT_STREQ(user[0].userName, "owner");
    EXPECT_STREQ(user[0].password, "tulip");
    EXPECT_EQ(user[0].userLevel, 1);
    EXPECT_STREQ(user[0].ipAddress, "192.168.100.200");
    EXPECT_STREQ(user[0].macAddress, "00:11:22:33:44:55");
    EXPECT_EQ(user[0].enableOutoffLine, 1);
    EXPECT_EQ(user[0].isOnline, -3);
    EXPECT_EQ(user[1].userId, 12) << "\"user\" is the id";
    EXPECT_STREQ(user[1].userName, "");
    EXPECT_EQ(user[1].isOnline, 0);
    EXPECT_EQ(user[2].userName[0], 'z');

    const std::string good = "<OnlineUser><sessionId>1</sessionId></OnlineUser>";
    for (const std::string &wrong :
         {std::string("<User/>"), element("OnlineUser", "<userId>-1</userId>"),
          element("OnlineUser", "<sessionId>-1</sessionId>"), element("OnlineUser", "<userLevel>2</userLevel>"),
          element("OnlineUser", "<enableOutoffLine>2</enableOutoffLine>"),
          element("OnlineUser", "<ipAddress>192.168.100.2000</ipAddress>"),
          element("OnlineUser", "<macAddress>00:11:22:33:44:555</macAddress>")}) {
        message->user[1].isOnline = 9;
        EXPECT_EQ(refusal(message, nets_param_user_online_x2s, element("L", good + wrong + good)), "") << wrong;
        EXPECT_EQ(message->user[0].sessionId, 1);
        EXPECT_EQ(message->user[1].isOnline, 0) << "also when the element is another one";
        EXPECT_EQ(message->user[2].userName[0], 'z');
    }
}

TEST_F(UserTest, Authorisation)
{
    Envelope<net_auth_info_v20_t> message(net_param_auth_info_init);
    message.param.dataSize = 1; // compared by the writer only
    EXPECT_EQ(message.read(net_auth_info_x2s,
                           "<authInfo><notes>gardener</notes><validhours>0</validhours><userLevel>5</userLevel>"
                           "<ability>4294967295</ability><channelAbility>9223372036854775808</channelAbility>"
                           "<code>12</code></authInfo>"),
              0);
    EXPECT_STREQ(message->notes, "gardener");
    EXPECT_EQ(message->validhours, 0);
    EXPECT_EQ(message->userLevel, 5);
    EXPECT_EQ(message->ability, 4294967295u);
    EXPECT_EQ(message->channelAbility, 9223372036854775808ull);
    EXPECT_EQ(message->code, 0) << "written only";
    EXPECT_EQ(message.param.inited, 1u);
    message->code = 471100;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(net_auth_info_s2x), "failed"); }),
              "<red net_xml_user.cpp>func:net_auth_info_s2x line:#\n");
    message.param.dataSize = 64;
    EXPECT_EQ(message.write(net_auth_info_s2x), "<authInfo version=\"1.1\"><code>471100</code></authInfo>");
    EXPECT_EQ(message.read(net_auth_info_x2s, "<a>" + element("notes", x32) + "</a>"), -1);
}

TEST_F(UserTest, OneSharedUser)
{
    net_ext_t extension{};
    std::strcpy(extension.userName, "owner");
    Envelope<net_shared_user_info_t> message(net_param_shared_user_cfg_init, extension);
    EXPECT_EQ(message.read(net_shared_user_cfg_x2s, "<SharedUser><users/><other/></SharedUser>"), 0);
    EXPECT_STREQ(message->userId, "owner") << "no user, no change";
    EXPECT_EQ(message->userLevel, 0);
    EXPECT_EQ(message.read(net_shared_user_cfg_x2s,
                           "<SharedUser><user><userId>first</userId><userLevel>1</userLevel><notes>son</notes></user>"
                           "<note/><USER><userSetState>DELETE</userSetState><userId>second</userId>"
                           "<ability>7</ability><validHours>-5</validHours><channelAbility>3</channelAbility></USER>"
                           "</SharedUser>"),
              0);
    EXPECT_STREQ(message->userId, "second");
    EXPECT_EQ(message->userLevel, -1) << "the last one does not tell";
    EXPECT_EQ(message->userSetState, NET_USER_SET_DELETE);
    EXPECT_EQ(message->ability, 7u);
    EXPECT_EQ(message->validHours, -5);
    EXPECT_EQ(message->channelAbility, 3ull);
    EXPECT_STREQ(message->notes, "son");
    EXPECT_EQ(message.param.inited, 1u);

    const auto user = [](const std::string &inside) { return element("S", element("user", inside)); };
    EXPECT_EQ(message.read(net_shared_user_cfg_x2s, user("<user>modify</user>")), 0) << "\"user\" is the state";
    EXPECT_EQ(message->userSetState, NET_USER_SET_MODIFY);
    EXPECT_EQ(message.read(net_shared_user_cfg_x2s, user("<userLevel>-7</userLevel>")), 0);
    EXPECT_EQ(refusal(message, net_shared_user_cfg_x2s, user("<userLevel>2</userLevel>")), "");
    EXPECT_EQ(refusal(message, net_shared_user_cfg_x2s, user("<userSetState>add</userSetState>")),
              "<red net_xml_user.cpp>get_shared_user_from_xmlnode, #, wrong state:add\n");
    EXPECT_EQ(refusal(message, net_shared_user_cfg_x2s, user("<userSetState/>")),
              "<red net_xml_user.cpp>get_shared_user_from_xmlnode, #, wrong state:\n");
    EXPECT_EQ(refusal(message, net_shared_user_cfg_x2s, user(element("userSetState", std::string(16, 'm')))), "")
        << "not even a text";
}

TEST_F(UserTest, SharedUsersKeepTheirPositions)
{
    Envelope<net_shared_user_list_t> message(net_param_shared_user_list_init);
    EXPECT_EQ(message.read(net_shared_user_list_x2s, "<SharedUserList><user><userId>a</userId></user><gap/>"
                                                     "<user><userId>c</userId><userLevel>0</userLevel></user>"
                                                     "</SharedUserList>"),
              0);
    EXPECT_STREQ(message->user[0].userId, "a");
    EXPECT_EQ(message->user[0].userLevel, -1);
    EXPECT_STREQ(message->user[1].userId, "");
    EXPECT_EQ(message->user[1].userLevel, 0) << "an empty record";
    EXPECT_STREQ(message->user[2].userId, "c");
    EXPECT_EQ(message->user[2].userLevel, 0);
    EXPECT_EQ(message.read(net_shared_user_list_x2s, "<L><gap/><user><userId>b</userId></user></L>"), 0);
    EXPECT_STREQ(message->user[0].userId, "") << "no user of an earlier message in a gap";
    EXPECT_EQ(message->user[0].userLevel, 0);
    EXPECT_STREQ(message->user[1].userId, "b");
    EXPECT_EQ(message.read(net_shared_user_list_x2s,
                           "<L><user><userId>d</userId></user><user><userLevel>2</userLevel></user>"
                           "<user><userId>e</userId></user></L>"),
              -1);
    EXPECT_STREQ(message->user[0].userId, "d");
    EXPECT_STREQ(message->user[2].userId, "c");
}

TEST_F(UserTest, RightsBothWays)
{
    Envelope<net_device_ability_support_v20_t> message(nets_param_ability_support_init);
    const std::string body = "<userName>guest</userName><system>1</system><streaming>0</streaming><record>1</record>"
                             "<network>0</network><PTZ>1</PTZ><IO>0</IO><alarm>1</alarm><image>0</image>"
                             "<video>1</video><audio>0</audio><security>1</security><replay>0</replay><disk>1</disk>";
    EXPECT_EQ(message.read(nets_ability_support_x2s, element("AbilitySupport", body)), 0);
    EXPECT_STREQ(message->userName, "guest");
    EXPECT_EQ(message->PTZ, 1);
    EXPECT_EQ(message->IO, 0);
    EXPECT_EQ(message->replay, 0);
    EXPECT_EQ(message->disk, 1);
    EXPECT_EQ(message.param.inited, 1u);
    EXPECT_EQ(message.write(nets_ability_support_s2x),
              "<AbilitySuppport version=\"1.1\">" + body + "</AbilitySuppport>");
    EXPECT_EQ(message.read(nets_ability_support_x2s, "<A><s>0</s><a>0</a><disk>2</disk></A>"), -1);
    EXPECT_EQ(message->system, 0) << "\"s\" is the first of three";
    EXPECT_EQ(message->security, 1);
    EXPECT_EQ(message->alarm, 0);

    message.param.dataSize = 80;
    EXPECT_EQ(message.read(nets_ability_support_x2s, "<A/>"), 0);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(message.write(nets_ability_support_s2x), "failed"); }),
              "<red net_xml_user.cpp>nets_ability_support_s2x fail\n");

    net_device_ability_support_v20_t rights = {};
    Xml node("<Ability><video>1</video></Ability>");
    EXPECT_EQ(get_ability_support_from_xmlnode(&rights, node, "AbilitySupport"), 0);
    EXPECT_EQ(rights.video, 1);
    EXPECT_EQ(get_ability_support_from_xmlnode(&rights, node, "User"), -1);
}

TEST_F(UserTest, CameraFirmware)
{
    Envelope<net_ipc_ver_list_v20_t> message(host_payload<net_ipc_ver_list_v20_t>);
    message->count = 3; // of an earlier message, which no longer counts
    const std::string one = "<IpcVersion><platform>dome</platform><version>2.4.1-rc.3</version>"
                            "<url>https://example.org/dome.bin</url></IpcVersion>";
    EXPECT_EQ(message.read(net_ipc_version_x2s, element("List", one + "<other/><ipc><url/></ipc>")), 0);
    EXPECT_EQ(message->count, 2);
    EXPECT_STREQ(message->entries[0].platform.text, "dome");
    EXPECT_EQ(message->entries[0].platform.capacity, 256);
    EXPECT_EQ(message->entries[0].platform.length, 4);
    EXPECT_STREQ(message->entries[0].version.text, "2.4.1-rc.3");
    EXPECT_STREQ(message->entries[0].url.text, "https://example.org/dome.bin");
    EXPECT_EQ(message->entries[1].url.capacity, 256);
    EXPECT_EQ(message->entries[1].url.length, 0);
    EXPECT_EQ(message.param.inited, 1u);
    EXPECT_EQ(message.read(net_ipc_version_x2s, element("List", repeated(4, one) + "<IpcVersion><url>" +
                                                                    std::string(256, 'u') + "</url></IpcVersion>")),
              0)
        << "a fifth is not looked at";
    EXPECT_EQ(message->count, 4);
    EXPECT_STREQ(message->entries[3].version.text, "2.4.1-rc.3");
    EXPECT_EQ(refusal(message, net_ipc_version_x2s,
                      element("List", one + element("IpcVersion", element("url", std::string(256, 'u'))))),
              "");
    EXPECT_EQ(message->count, 1) << "the refused one does not count";

    net_ipc_ver_v20_t version = {};
    Xml node(one);
    EXPECT_EQ(get_ipc_version_from_xmlnode(&version, node, "IpcVersion"), 0);
    EXPECT_EQ(version.version.length, 10);
    EXPECT_EQ(get_ipc_version_from_xmlnode(&version, node, "User"), -1);
}

TEST_F(UserTest, Examples)
{
    const struct {
        const char *name;
        Init init;
        Parser parser;
    } examples[] = {
        {"login", host_payload<net_login_info_v20_t>, net_login_info_x2s},
        {"login_network", host_payload<net_login_net_info_v20_t>, net_login_net_info_x2s},
        {"encryption", net_param_encrypt_init, net_encrypt_x2s},
        {"login_failures", net_param_login_err_info_init, net_param_login_err_info_x2s},
        {"users", nets_param_user_cfg_init, nets_user_cfg_x2s},
        {"online_users", host_payload<net_user_online_list_v20_t>, nets_param_user_online_x2s},
        {"authorisation", net_param_auth_info_init, net_auth_info_x2s},
        {"shared_user", net_param_shared_user_cfg_init, net_shared_user_cfg_x2s},
        {"shared_users", net_param_shared_user_list_init, net_shared_user_list_x2s},
        {"rights", nets_param_ability_support_init, nets_ability_support_x2s},
        {"firmware_entries", host_payload<net_ipc_ver_list_v20_t>, net_ipc_version_x2s},
    };
    for (const auto &each : examples) {
        Envelope<int> message(each.init);
        EXPECT_EQ(log_of([&] { EXPECT_EQ(message.read(each.parser, example(each.name)), 0) << each.name; }), "");
    }
}
