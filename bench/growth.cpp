// The same work on inputs of 1, 10, 100 and 1000 times the size: the time should grow as the size does.
#include "samples.h"
#include "work.h"

#include <net_public.h>
#include <tinyxml.h>

#include <cstring>

namespace bench {
namespace {

constexpr std::size_t factors[] = {1, 10, 100, 1000};

// So many calls that the clock does not matter.
unsigned calls_for(std::size_t bytes)
{
    constexpr std::size_t wanted = 32 * 1024;
    return static_cast<unsigned>(bytes < wanted ? wanted / bytes : 1);
}

std::string repeated(std::size_t count, const std::string &text)
{
    std::string all;
    while (count-- > 0)
        all += text;
    return all;
}

template <class Made> void add(Entries &entries, const std::string &what, Made make)
{
    for (const std::size_t factor : factors)
        entries.push_back({"growth/" + what + "/" + std::to_string(factor), [=] { return make(factor); }});
}

// A parser, on a message with so many items; beyond the payload's capacity they are read past.
std::unique_ptr<Work> read_items(const std::string &text, Initialise initialise, Parse parse, unsigned int size = 0)
{
    const auto document = std::make_shared<TiXmlDocument>();
    document->Parse(padded(text).c_str());
    require(!document->Error(), "not well formed", "growth");
    const Sample sample = {"", "growth", initialise, size, parse, nullptr, text, ""};
    const auto envelope = std::make_shared<Envelope>(sample);
    const auto read = [=] { parse(envelope->param(), document->RootElement()); };
    require(parse(envelope->param(), document->RootElement()) == 0, "refused", "growth");
    return std::make_unique<Plain>(calls_for(text.size()), read);
}

std::string secrets(std::size_t bytes)
{
    return repeated(bytes / 50 + 1, "<user><password>open-sesame</password></user><a>1</a>");
}

// Open tags without close tags, the text that takes a search for each open tag the longest.
std::string open_secrets(std::size_t bytes)
{
    return repeated(bytes / 10 + 1, "<password>");
}

std::unique_ptr<Work> filter(const std::string &text)
{
    return std::make_unique<Plain>(calls_for(text.size()), [=] { net_xml_printf_filter(text.c_str()); });
}

std::unique_ptr<Work> decode_bytes(std::size_t size)
{
    const auto text = std::make_shared<std::string>(size / 4 * 4, 'A');
    const auto bytes = std::make_shared<std::string>(size, '\0');
    return std::make_unique<Plain>(calls_for(size), [=] {
        base64_decode(reinterpret_cast<unsigned char *>(&(*bytes)[0]), static_cast<unsigned>(size),
                      reinterpret_cast<const unsigned char *>(text->data()), static_cast<unsigned>(text->size()));
    });
}

std::unique_ptr<Work> encode_bytes(std::size_t size)
{
    const auto bytes = std::make_shared<std::string>(size, 'x');
    const auto text = std::make_shared<std::string>(size * 2, '\0');
    return std::make_unique<Plain>(calls_for(size), [=] {
        base64_encode(reinterpret_cast<unsigned char *>(&(*text)[0]), static_cast<unsigned>(text->size()),
                      reinterpret_cast<const unsigned char *>(bytes->data()), static_cast<unsigned>(size));
    });
}

std::unique_ptr<Work> decode_cells(std::size_t size)
{
    const auto text = std::make_shared<std::string>(size / 4 * 4, 'k');
    const auto cells = std::make_shared<std::string>(size * 6, '\0');
    return std::make_unique<Plain>(calls_for(size), [=] {
        Base64DecodeToBinaryArray(&(*cells)[0], static_cast<int>(cells->size()), &(*text)[0],
                                  static_cast<int>(text->size()));
    });
}

std::unique_ptr<Work> encode_cells(std::size_t size)
{
    const auto cells = std::make_shared<std::string>(size, '\1');
    const auto text = std::make_shared<std::string>(size, '\0');
    return std::make_unique<Plain>(calls_for(size), [=] {
        EncodeBinaryArrayToBase64(reinterpret_cast<unsigned char *>(&(*cells)[0]), &(*text)[0],
                                  static_cast<int>(cells->size()), static_cast<int>(cells->size()));
    });
}

// An extension header, of 64 KiB at most: a longer one is not looked at.
std::unique_ptr<Work> read_header(const std::string &text)
{
    const auto header = std::make_shared<std::string>(text);
    return std::make_unique<Plain>(calls_for(text.size()), [=] {
        net_ext_t extension = {};
        net_exten_x2s(&(*header)[0], &extension);
    });
}

} // namespace

void add_growth(Entries &entries)
{
    constexpr std::size_t unit = 1000; // bytes
    add(entries, "deleted_files", [](std::size_t factor) {
        return read_items("<DeleteFiles>" + repeated(10 * factor, "<item><fileIdentity>a</fileIdentity></item>") +
                              "</DeleteFiles>",
                          nullptr, net_rec_del_x2s, sizeof(net_rec_del_v20_t));
    });
    add(entries, "encoding_list", [](std::size_t factor) {
        return read_items("<StreamInfoList>" +
                              repeated(10 * factor, "<StreamInfo><channelBits>1</channelBits></StreamInfo>") +
                              "</StreamInfoList>",
                          net_param_enc_list_init, xml_enc_info_list_x2s);
    });
    add(entries, "unknown_children", [](std::size_t factor) {
        return read_items("<MD>" + repeated(20 * factor, "<unknown>1</unknown>") + "</MD>", nets_param_md_init,
                          net_md_x2s);
    });
    add(entries, "filter", [](std::size_t factor) { return filter(secrets(unit * factor)); });
    add(entries, "filter_unclosed", [](std::size_t factor) { return filter(open_secrets(unit * factor)); });
    add(entries, "base64_decode", [](std::size_t factor) { return decode_bytes(unit * factor); });
    add(entries, "base64_encode", [](std::size_t factor) { return encode_bytes(unit * factor); });
    add(entries, "grid_decode", [](std::size_t factor) { return decode_cells(unit * factor); });
    add(entries, "grid_encode", [](std::size_t factor) { return encode_cells(unit * factor); });
    add(entries, "header_accepted", [](std::size_t factor) {
        return read_header("<Extension>" + repeated(4 * factor, "<a>1</a><b/>") + "</Extension>");
    });
    add(entries, "header_refused", // for its attributes
        [](std::size_t factor) { return read_header("<Extension" + repeated(8 * factor, " a='1'") + "/>"); });
}

} // namespace bench
