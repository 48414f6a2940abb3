#include "support.h"

#include <net_public.h>
#include <unistd.h>

#include <cstring>
#include <fstream>
#include <regex>
#include <sstream>

namespace test {
namespace {

constexpr std::size_t padding = 8; // the XML library reads past the end of a cut UTF-8 sequence

} // namespace

void HostTest::SetUp()
{
    net_host_reset();
    net_host().block_fill = garbage;
    live_ = net_host_memory().live;
}

void HostTest::TearDown()
{
    EXPECT_EQ(net_host_memory().live, live_) << "blocks of net_malloc() left behind (or released too often)";
    net_host_reset();
}

Xml::Xml(const std::string &text)
{
    const std::string padded = text + std::string(padding, '\0');
    document_.Parse(padded.c_str(), nullptr, TIXML_ENCODING_UTF8);
    EXPECT_FALSE(document_.Error()) << document_.ErrorDesc() << " in " << text;
    EXPECT_NE(document_.RootElement(), nullptr) << "no root element in " << text;
}

TiXmlElement *Xml::root()
{
    return document_.RootElement();
}

std::string print(const TiXmlNode &node)
{
    TiXmlPrinter printer;
    printer.SetStreamPrinting();
    node.Accept(&printer);
    return printer.Str();
}

std::string print_children(const TiXmlNode &node)
{
    std::string text;
    for (const TiXmlNode *child = node.FirstChild(); child != nullptr; child = child->NextSibling())
        text += print(*child);
    return text;
}

Output::Output() : saved_(-1), file_(tmpfile())
{
    fflush(stdout);
    saved_ = dup(STDOUT_FILENO);
    EXPECT_NE(file_, nullptr);
    EXPECT_NE(saved_, -1);
    if (file_ != nullptr) {
        EXPECT_NE(dup2(fileno(file_), STDOUT_FILENO), -1);
    }
}

Output::~Output()
{
    text();
}

const std::string &Output::text()
{
    if (saved_ != -1) {
        fflush(stdout);
        dup2(saved_, STDOUT_FILENO);
        close(saved_);
        saved_ = -1;
    }
    if (file_ != nullptr) {
        rewind(file_);
        char part[4096];
        for (std::size_t got; (got = fread(part, 1, sizeof(part), file_)) > 0;)
            text_.append(part, got);
        fclose(file_);
        file_ = nullptr;
    }
    return text_;
}

std::string tidy(const std::string &log)
{
    const std::pair<const char *, const char *> shortened[] = {
        {"\033\\[0;31m\\[([^:]*):[0-9]+\\]:\033\\[0m", "<red $1>"},
        {"\033\\[0;32m\\[([^:]*):[0-9]+\\]:\033\\[0m", "<green $1>"},
        {"([Ll]ine(?::|\\(|\\[|\xEF\xBC\x9A) *)[0-9]+", "$1#"}};
    std::string result = log;
    for (const auto &[pattern, replacement] : shortened)
        result = std::regex_replace(result, std::regex(pattern), replacement);
    return result;
}

std::string written(net_param_t *param, Writer writer)
{
    TiXmlElement parent("body");
    const int result = writer(param, &parent);
    if (result == 0)
        return print_children(parent);
    EXPECT_EQ(result, -1);
    EXPECT_EQ(parent.FirstChild(), nullptr) << "a failing writer left " << print(parent);
    return "failed";
}

AnyEnvelope::AnyEnvelope()
{
    std::memset(&param, garbage, sizeof(param));
    param.data = nullptr;
}

AnyEnvelope::~AnyEnvelope()
{
    if (param.data != nullptr)
        net_free(&param.data);
}

int AnyEnvelope::read(Parser parser, const std::string &text)
{
    Xml body(text);
    return parser(&param, body.root());
}

std::string example(const std::string &name)
{
    std::ifstream file(NETPUBLIC_EXAMPLES_DIR "/" + name + ".xml");
    std::stringstream text;
    text << file.rdbuf();
    EXPECT_FALSE(text.str().empty()) << name;
    return text.str();
}

std::string repeated(int count, const std::string &text)
{
    std::string all;
    while (count-- > 0)
        all += text;
    return all;
}

} // namespace test
