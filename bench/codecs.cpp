// The grid codec against OpenSSL's base64 with the packing of cells on top, and the log filter against one
// pass over the text for each kind of element.
#include "samples.h"
#include "work.h"

#include <net_public.h>

#include <cstring>

#ifdef NETPUBLIC_HAVE_OPENSSL
#include <openssl/evp.h>
#endif

namespace bench {
namespace {

constexpr int columns = NET_GRID_COLUMNS, rows = NET_GRID_ROWS;
constexpr int cells = columns * rows;
constexpr int one_line = 20000;
constexpr unsigned calls = 8;

std::string some_cells()
{
    std::string grid;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            grid += (row / 7 + column / 11) % 3 != 0 ? '\1' : '\0';
    return grid;
}

unsigned char *bytes(std::string &text)
{
    return reinterpret_cast<unsigned char *>(&text[0]);
}

std::string encoded(std::string grid)
{
    std::string text(grid.size(), '\0');
    text.resize(static_cast<std::size_t>(
        EncodeBinaryArrayToBase64(bytes(grid), &text[0], static_cast<int>(grid.size()), one_line)));
    return text;
}

#ifdef NETPUBLIC_HAVE_OPENSSL
// As one would write it: a byte at a time.
void pack(std::string &packed, const std::string &grid)
{
    packed.assign((grid.size() + 7) / 8, '\0');
    for (std::size_t i = 0; i < grid.size(); ++i)
        if (grid[i] != 0)
            packed[i / 8] = static_cast<char>(packed[i / 8] | 0x80 >> i % 8);
}

void unpack(std::string &grid, const std::string &packed)
{
    for (std::size_t i = 0; i < grid.size(); ++i)
        grid[i] = static_cast<char>(packed[i / 8] >> (7 - i % 8) & 1);
}
#endif

void add_grid(Entries &entries)
{
    entries.push_back({"grid_decode/netpublic", [] {
                           auto grid = std::make_shared<std::string>(cells, '\0');
                           const auto text = std::make_shared<std::string>(encoded(some_cells()));
                           const auto decode = [=] {
                               Base64DecodeToBinaryArray(&(*grid)[0], cells, &(*text)[0],
                                                         static_cast<int>(text->size()));
                           };
                           decode();
                           require(*grid == some_cells(), "wrong cells", "grid");
                           return std::make_unique<Plain>(calls, decode);
                       }});
    entries.push_back({"grid_encode/netpublic", [] {
                           auto grid = std::make_shared<std::string>(some_cells());
                           auto text = std::make_shared<std::string>(cells, '\0');
                           return std::make_unique<Plain>(
                               calls, [=] { EncodeBinaryArrayToBase64(bytes(*grid), &(*text)[0], cells, one_line); });
                       }});
#ifdef NETPUBLIC_HAVE_OPENSSL
    entries.push_back({"grid_decode/openssl", [] {
                           auto grid = std::make_shared<std::string>(cells, '\0');
                           auto packed = std::make_shared<std::string>(cells, '\0');
                           auto text = std::make_shared<std::string>(encoded(some_cells()));
                           const auto decode = [=] {
                               EVP_DecodeBlock(bytes(*packed), bytes(*text), static_cast<int>(text->size()));
                               unpack(*grid, *packed);
                           };
                           decode();
                           require(*grid == some_cells(), "wrong cells", "openssl");
                           return std::make_unique<Plain>(calls, decode);
                       }});
    entries.push_back({"grid_encode/openssl", [] {
                           auto grid = std::make_shared<std::string>(some_cells());
                           auto packed = std::make_shared<std::string>();
                           auto text = std::make_shared<std::string>(cells, '\0');
                           const auto encode = [=] {
                               pack(*packed, *grid);
                               EVP_EncodeBlock(bytes(*text), bytes(*packed), static_cast<int>(packed->size()));
                           };
                           encode();
                           require(text->c_str() == encoded(*grid), "another text", "openssl");
                           return std::make_unique<Plain>(calls, encode);
                       }});
#endif
}

const char *const secrets[] = {"password",     "key",     "authToken", "authSignature", "refreshToken", "accessToken",
                               "clientSecret", "mac",     "ip",        "accessKey",     "secretKey",    "ipAddress",
                               "macAddress",   "gateway", "mask",      "dns1",          "dns2"};

// The filter as it is described: each kind of element is looked for in the whole text.
void mask_kind_by_kind(std::string &text)
{
    for (const char *name : secrets) {
        const std::string open = std::string("<") + name + ">", close = std::string("</") + name + ">";
        std::size_t at = text.find(open);
        while (at != std::string::npos) {
            const std::size_t end = text.find(close, at);
            if (end != std::string::npos) {
                const std::size_t content = at + open.size();
                text.replace(content, end - content, end - content, '*');
                at = content;
            }
            at = text.find(open, at + 1);
        }
    }
}

// A log text of at least so many bytes: replies as the host prints them, the secrets included.
std::string log_text(std::size_t size)
{
    std::string text;
    for (std::size_t i = 0; text.size() < size; ++i) {
        const std::string number = std::to_string(i % 250);
        text += "<User>\n<userId>" + number + "</userId>\n<userName>operator" + number +
                "</userName>\n<password>open-sesame-" + number + "</password>\n<userLevel>1</userLevel>\n</User>\n" +
                "<ethernet>\n<type>static</type>\n<ip>192.168.1." + number +
                "</ip>\n<mask>255.255.255.0</mask>\n<gateway>192.168.1.1</gateway>\n<mac>02:00:00:00:00:01</mac>\n" +
                "</ethernet>\n<channelId>" + number + "</channelId>\n<enable>1</enable>\n<bitRate>4096</bitRate>\n";
    }
    return text;
}

void check_filter(const std::string &text)
{
    std::string expected = text;
    mask_kind_by_kind(expected);
    require(expected != text && net_xml_printf_filter(text.c_str()) == expected, "filtered differently", "log filter");
}

void add_filter(Entries &entries)
{
    constexpr std::size_t size = 13000;
    const auto text = std::make_shared<std::string>(log_text(size));
    entries.push_back({"filter/netpublic", [=] {
                           check_filter(*text);
                           return std::make_unique<Plain>(calls, [=] { net_xml_printf_filter(text->c_str()); });
                       }});
    entries.push_back({"filter/pass_per_element", [=] {
                           return std::make_unique<Plain>(calls, [=] {
                               static std::string result;
                               result = text->c_str();
                               mask_kind_by_kind(result);
                           });
                       }});
    entries.push_back({"filter/memcpy", [=] {
                           const auto copy = std::make_shared<std::string>(*text);
                           return std::make_unique<Plain>(calls, [=] {
                               std::memcpy(&(*copy)[0], text->data(), text->size());
                               asm volatile("" : : "r"(copy->data()) : "memory");
                           });
                       }});
}

} // namespace

void add_codecs(Entries &entries)
{
    add_grid(entries);
    add_filter(entries);
}

} // namespace bench
