// The samples of docs/embedding.md do what the page says. Their code is taken from there, when the build is
// configured.
#include "support.h"

#include "embedding_samples.inc"

namespace {

class DocsSamplesTest : public test::HostTest {};

TEST_F(DocsSamplesTest, MotionReply)
{
    net_ext_t extension = {};
    extension.channelId = 5;
    TiXmlElement reply("body");
    ASSERT_EQ(motion_reply(extension, &reply), 0);
    const std::string beginning = "<MD version=\"1.1\"><channelId>5</channelId><enable>1</enable>";
    EXPECT_EQ(test::print_children(reply).substr(0, beginning.size()), beginning);

    log_errors_only();
    net_host_fail_allocation(1);
    TiXmlElement none("body");
    const std::string log = test::log_of([&] { EXPECT_EQ(motion_reply(extension, &none), -1); });
    EXPECT_EQ(log.substr(0, 20), "<red net_public.cpp>");
    EXPECT_EQ(test::print_children(none), "");
}

TEST_F(DocsSamplesTest, ReplyOf)
{
    test::Envelope<tag_net_pic_motion_cfg_v20_t> message(nets_param_md_init);
    const std::string text = reply_of(net_md_s2x, message.param);
    test::Xml reply(text);
    ASSERT_STREQ(reply.root()->Value(), "body");
    EXPECT_EQ(test::print_children(*reply.root()), message.write(net_md_s2x));
    message.param.dataSize = 0;
    loglevel = 0;
    EXPECT_EQ(reply_of(net_md_s2x, message.param), "");
}

TEST_F(DocsSamplesTest, ParseBody)
{
    const auto parses = [](const std::string &text, std::size_t limit = 3) {
        TiXmlDocument document;
        return parse_body(text.data(), text.size(), limit, document);
    };
    EXPECT_TRUE(parses("<a><b>1</b><c/></a>"));
    EXPECT_FALSE(parses("<a><b>1</b><c/></a>", 2));
    EXPECT_FALSE(parses("<a b=\"\" c=\"\" d=\"\" e=\"\"/>"));
    EXPECT_FALSE(parses("<a>\xE2"));
    EXPECT_FALSE(parses("<!DOCTYPE a>"));
    EXPECT_FALSE(parses("<a>" + std::string(64 * 1024, ' ') + "</a>"));
    std::string nested;
    for (int level = 0; level < 50000; ++level)
        nested += "<a>";
    EXPECT_FALSE(parses(nested, 1000));
}

TEST_F(DocsSamplesTest, Masked)
{
    test::Xml request("<LoginUser><userName>admin</userName><password>hunter2</password></LoginUser>");
    EXPECT_EQ(masked(*request.root()), "<LoginUser><userName>admin</userName><password>*******</password></LoginUser>");
}

} // namespace
