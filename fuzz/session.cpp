#include "session.h"

#include "oracle.h"
#include "promises.h"

#include <net_public.h>
#include <tinyxml.h>

#include <algorithm>
#include <cstring>

namespace fuzz {
namespace {

using netpublic::Message;

constexpr unsigned char garbage = 0xA5;

std::vector<const Message *> collect()
{
    std::vector<const Message *> all;
#define COLLECT(domain)                                                                                                \
    for (const Message &message : netpublic::domain##_messages())                                                      \
        all.push_back(&message);
    NETPUBLIC_DOMAINS(COLLECT)
#undef COLLECT
    std::sort(all.begin(), all.end(), [](const Message *a, const Message *b) {
        return number_of(*a) != number_of(*b) ? number_of(*a) < number_of(*b) : std::strcmp(a->name, b->name) < 0;
    });
    return all;
}

int prepare(const Message &message, net_param_t *param, net_ext_t *ext)
{
    return message.initialise != nullptr ? message.initialise(param, ext)
                                         : net_param_init_size_id(param, ext, message.size, 1);
}

// The user list's payload begins with a name of up to 32 characters without a terminator.
const void *unterminated(const Message &message, const void *payload)
{
    return std::strcmp(message.name, "user") == 0 ? payload : nullptr;
}

} // namespace

const std::vector<const Message *> &messages()
{
    static const std::vector<const Message *> all = collect();
    return all;
}

std::uint16_t number_of(const Message &message)
{
    std::uint32_t hash = 2166136261u;
    for (const char *at = message.name; *at != '\0'; ++at)
        hash = (hash ^ static_cast<unsigned char>(*at)) * 16777619u;
    return static_cast<std::uint16_t>(hash ^ hash >> 16);
}

const Message &message_of(std::uint16_t number, Wanted wanted)
{
    const auto &all = messages();
    auto found =
        std::lower_bound(all.begin(), all.end(), number, [](const Message *message, std::uint16_t wanted_number) {
            return number_of(*message) < wanted_number;
        });
    for (;; ++found) {
        if (found == all.end())
            found = all.begin();
        if (wanted(**found))
            return **found;
    }
}

std::string plain_head(const Message &message)
{
    const std::uint16_t number = number_of(message);
    //                                channels, device, inputs, outputs, allocation, switches
    const unsigned char answers[Host::answers_size] = {16, 1, 16, 4, 0, 1, 1, 1, 1, 0};
    std::string head = {static_cast<char>(number & 0xFF), static_cast<char>(number >> 8)};
    return head.append(reinterpret_cast<const char *>(answers), sizeof answers);
}

Session::Session(const Message &message, net_ext_t ext, Host &host) : message_(message), host_(host)
{
    std::memset(&param_, garbage, sizeof param_);
    param_.data = nullptr;
    const int result = prepare(message, &param_, &ext);
    require(result == 0 || result == -1, "P1", "an initialiser's result");
    require((result == 0) == (param_.data != nullptr), "P13", "an initialiser without memory");
    if (param_.data != nullptr)
        require(guards_intact(param_.data), "P2", "an initialiser wrote beside the payload");
    // This payload comes as it was allocated, which is meant: the host fills it.
    if (param_.data != nullptr && std::strcmp(message.name, "dst") == 0)
        std::memset(param_.data, garbage, size());
}

Session::~Session()
{
    if (param_.data != nullptr)
        net_free(&param_.data);
}

std::size_t Session::size() const
{
    return guarded_size(param_.data);
}

int Session::parse(TiXmlNode *body)
{
    const long live = guarded_live();
    const std::uint64_t tree = fingerprint(*body);
    int result;
    {
        Oracle oracle(close_ ? param_.data : nullptr);
        result = message_.parse(&param_, body);
        taken_ = oracle.taken();
        ignored_ = oracle.ignored();
        if (oracle.met_secrets())
            oracle.check_log(host_.log(), print(*body));
        members_ = oracle.members();
        refused_ = oracle.refused();
    }
    require(result == 0 || result == -1, "P1", "a parser's result");
    require(guards_intact(param_.data), "P2", "a parser wrote beside the payload");
    require(guarded_live() == live, "P6", "a parser kept a block");
    require(fingerprint(*body) == tree, "P7", "a parser changed the tree");
    const netpublic::Table *layout = netpublic::payload_table(message_);
    if (message_.read != nullptr && layout != nullptr && trusted_)
        check_record(*layout, param_.data, unterminated(message_, param_.data));
    return result;
}

int Session::parse_closely(TiXmlNode *body)
{
    close_ = true;
    return parse(body);
}

bool Session::may_refuse(const Session &other) const
{
    return members_.count(other.refused_) == 0;
}

void Session::parse(TiXmlNode *body, const netpublic::Watch *watch)
{
    netpublic::watch = watch;
    message_.parse(&param_, body);
    netpublic::watch = nullptr;
}

Written Session::write(TiXmlElement *parent)
{
    TiXmlElement own("body");
    own.LinkEndChild(new TiXmlComment("before"));
    TiXmlElement &body = parent != nullptr ? *parent : own;
    const long live = guarded_live();
    const std::uint64_t before = fingerprint(body);
    const TiXmlNode *last = body.LastChild();
    Guarded copy(param_.data, size());
    const int result = message_.write(&param_, &body);
    require(result == 0 || result == -1, "P1", "a writer's result");
    require(guards_intact(param_.data), "P2", "a writer wrote beside the payload");
    require(std::memcmp(copy.as<>(), param_.data, size()) == 0, "P7", "a writer changed the payload");
    require(guarded_live() == live + 1, "P6", "a writer kept a block");
    const TiXmlNode *added = body.LastChild() != last ? body.LastChild() : nullptr;
    if (result != 0 || added == nullptr) {
        require(fingerprint(body) == before, "P8", "a failing writer changed the parent");
        return {result, ""};
    }
    require(added->PreviousSibling() == last, "P8", "a writer added more than one child");
    return {result, print(*added)};
}

void distrust(Session &session)
{
    session.trusted_ = false;
}

Text::Text(const std::uint8_t *data, std::size_t size) : refused_(true)
{
    text_.assign(reinterpret_cast<const char *>(data), size);
    std::string copy = text_;
    netpublic::ScannedText scanned;
    refused_ = scanned.scan(copy.data(), static_cast<unsigned int>(size), netpublic::header_limits) != 0 &&
               netpublic::is_limit(scanned.error().fault);
    text_.resize(size + xml_padding, '\0');
}

std::string print(const TiXmlNode &node)
{
    TiXmlPrinter printer;
    printer.SetStreamPrinting();
    node.Accept(&printer);
    return printer.Str();
}

} // namespace fuzz
