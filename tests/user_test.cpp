// Users and login: what each message stores, refuses, writes and logs.
#include "support.h"

#include <net_public.h>

#include <cstring>
#include <string>

using namespace test;

namespace {

class UserTest : public HostTest {};

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
        Envelope<net_login_info_v20_t> message(prepared<net_login_info_v20_t>);
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
    EXPECT_EQ(refusal(message, net_shared_user_cfg_x2s, user(element("userSetState", std::string(15, 'm')))),
              "<red net_xml_user.cpp>get_shared_user_from_xmlnode, #, wrong state:mmmmmmmmmmmmmmm\n");
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
