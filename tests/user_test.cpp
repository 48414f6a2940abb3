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
