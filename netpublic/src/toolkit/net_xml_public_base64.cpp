#include "ground/base64.h"
#include "ground/cells.h"
#include "values/grid.h"

#include <net_public.h>
#include <net_xml_words.h>

#include <cstdint>
#include <cstring>

using namespace netpublic;

namespace {

char *put_whole(char *out, const unsigned char *in)
{
    const std::uint32_t group =
        static_cast<std::uint32_t>(in[0]) << 16 | static_cast<std::uint32_t>(in[1]) << 8 | in[2];
    return put_base64(out, group);
}

// The last one or two bytes, padded; nothing for none.
char *put_rest(char *out, const unsigned char *in, unsigned int count)
{
    if (count == 0)
        return out;
    std::uint32_t group = static_cast<std::uint32_t>(in[0]) << 16;
    if (count == 2)
        group |= static_cast<std::uint32_t>(in[1]) << 8;
    out = put_base64(out, group);
    out[-1] = '=';
    if (count == 1)
        out[-2] = '=';
    return out;
}

void pack(unsigned char *bytes, const unsigned char *cells, int count)
{
    for (; count >= 8; count -= 8, cells += 8)
        *bytes++ = pack_eight(load_cells(cells));
    if (count == 0)
        return;
    unsigned char last[8] = {};
    std::memcpy(last, cells, static_cast<std::size_t>(count));
    *bytes = pack_eight(load_cells(last));
}

char *put_lines(char *out, const unsigned char *bytes, unsigned int groups, long long line_length)
{
    long long line = 0;
    for (; groups != 0; --groups, bytes += 3) {
        out = put_whole(out, bytes);
        line += 4;
        if (line >= line_length - 3) {
            *out++ = '\r';
            *out++ = '\n';
            line = 0;
        }
    }
    return out;
}

} // namespace

int is_base64_char(char c)
{
    return base64_classes[c] != base64_foreign;
}

int GetBase64Value(char c)
{
    const std::uint8_t value = base64_classes[c];
    return value < 64 ? value : 0;
}

int EncodeBinaryArrayToBase64(unsigned char *bits, char *out, int bitCount, int lineLength)
{
    if (bits == nullptr || out == nullptr || bitCount < 0)
        return -1;
    const unsigned int count = static_cast<unsigned int>(bitCount);
    void *block = net_malloc(count / 8 + 1);
    if (block == nullptr)
        return -1;
    unsigned char *bytes = static_cast<unsigned char *>(block);
    pack(bytes, bits, bitCount);

    const unsigned int size = count / 8 + (count % 8 != 0);
    char *end = put_lines(out, bytes, size / 3, lineLength);
    end = put_rest(end, bytes + size / 3 * 3, size % 3);
    *end = '\0';
    net_free(&block);
    return static_cast<int>(end - out);
}

int Base64DecodeToBinaryArray(char *bits, int maxBits, char *in, int inLength)
{
    if (bits == nullptr || in == nullptr || maxBits < 0)
        return -1;
    const Cells cells = scan_cells(in, inLength, maxBits);
    read_cells(in, reinterpret_cast<unsigned char *>(bits), cells.count);
    std::memset(bits + cells.count, 0, static_cast<std::size_t>(maxBits - cells.count));
    return cells.valid ? cells.count : -1;
}

int base64_encode(unsigned char *out, unsigned outSize, const unsigned char *in, unsigned inLength)
{
    if (out == nullptr || in == nullptr)
        return -1;
    const std::uint64_t rounded = (std::uint64_t{inLength} + 2) / 3 * 3;
    if (std::uint64_t{outSize} * 3 <= 4 * rounded)
        return -3;
    char *const begin = reinterpret_cast<char *>(out);
    char *end = begin;
    for (; inLength >= 3; inLength -= 3, in += 3)
        end = put_whole(end, in);
    end = put_rest(end, in, inLength);
    *end = '\0';
    return static_cast<int>(end - begin);
}

int base64_decode(unsigned char *out, unsigned outSize, const unsigned char *in, unsigned inLength)
{
    if (out == nullptr || in == nullptr)
        return -1;
    if (inLength % 4 != 0)
        return -2;
    unsigned int padding = 0;
    if (inLength != 0)
        padding = unsigned{in[inLength - 1] == '='} + unsigned{in[inLength - 2] == '='};
    if (std::uint64_t{inLength} * 3 > 4 * (std::uint64_t{outSize} + padding))
        return -3;
    const unsigned char *const end = in + inLength;
    for (const unsigned char *at = in; at != end; ++at)
        if (base64_classes.of[*at] == base64_foreign)
            return -4;

    unsigned char *const begin = out;
    for (; in != end; in += 4) {
        std::uint32_t group = 0;
        for (int i = 0; i < 4; ++i)
            group = group << 6 | (base64_classes.of[in[i]] & 63U);
        *out++ = static_cast<unsigned char>(group >> 16);
        if (in[2] == '=')
            break;
        *out++ = static_cast<unsigned char>(group >> 8);
        if (in[3] == '=')
            break;
        *out++ = static_cast<unsigned char>(group);
    }
    return static_cast<int>(out - begin);
}
