#include "support.h"
#include "values/grid.h"

#include <net_public.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

class Base64Test : public test::HostTest {
protected:
    std::mt19937 random{7};

    Bytes cells(std::size_t count)
    {
        Bytes result(count);
        for (unsigned char &cell : result)
            cell = random() & 1;
        return result;
    }
    // Base64 characters, with some padding and some foreign characters if asked for.
    std::string text(std::size_t length, unsigned int odd = 0)
    {
        std::string result;
        while (result.size() < length) {
            const bool foreign = odd != 0 && random() % odd == 0;
            result += foreign ? "=====!-_\n\x7f\x80\xff"[random() % 12] : alphabet[random() % 64];
        }
        return result;
    }
};

// Base64 the long way: a string of bits, six at a time.
std::string encoded_slowly(Bytes bits)
{
    bits.resize((bits.size() + 7) / 8 * 8);
    const std::size_t bytes = bits.size() / 8;
    bits.resize((bytes + 2) / 3 * 24);
    std::string text;
    for (std::size_t at = 0; at < bits.size(); at += 6) {
        std::size_t value = 0;
        for (std::size_t i = 0; i < 6; ++i)
            value = value * 2 + bits[at + i];
        text += alphabet[value];
    }
    for (std::size_t i = 0; i < (3 - bytes % 3) % 3; ++i)
        text[text.size() - 1 - i] = '=';
    return text;
}

std::string encoded(Bytes bits, int line_length = 20000)
{
    bits.reserve(1); // no bits are no null pointer
    std::vector<char> out(bits.size() + 8 + bits.size() / 12, '~');
    const int length = EncodeBinaryArrayToBase64(bits.data(), out.data(), static_cast<int>(bits.size()), line_length);
    EXPECT_EQ(static_cast<std::size_t>(length), std::strlen(out.data()));
    return out.data();
}

// Decoding step by step, as peers do it: a failure leaves the groups in front of it decoded.
int decoded_slowly(Bytes &bits, const std::string &in)
{
    std::fill(bits.begin(), bits.end(), static_cast<unsigned char>(0));
    std::size_t count = 0;
    if (in.size() % 4 != 0)
        return -1;
    for (std::size_t at = 0; at < in.size() && count < bits.size(); at += 4) {
        int value[4];
        for (std::size_t i = 0; i < 4; ++i) {
            if (is_base64_char(in[at + i]) == 0)
                return -1;
            value[i] = GetBase64Value(in[at + i]);
        }
        const int group = value[0] << 18 | value[1] << 12 | value[2] << 6 | value[3];
        for (int bit = 23; bit >= 0; --bit) {
            if ((bit == 15 && in[at + 2] == '=') || (bit == 7 && in[at + 3] == '='))
                return static_cast<int>(count);
            if (count < bits.size())
                bits[count++] = group >> bit & 1;
        }
    }
    return static_cast<int>(count);
}

TEST_F(Base64Test, characters)
{
    for (int c = 0; c < 256; ++c) {
        const std::size_t value = alphabet.find(static_cast<char>(c));
        const bool known = value != std::string::npos;
        EXPECT_EQ(GetBase64Value(static_cast<char>(c)), known ? static_cast<int>(value) : 0) << c;
        EXPECT_EQ(is_base64_char(static_cast<char>(c)), known || c == '=') << c;
    }
}

TEST_F(Base64Test, bits_to_text)
{
    EXPECT_EQ(encoded({0, 1, 0, 0, 0, 0, 0, 1}), "QQ==");
    EXPECT_EQ(encoded({1}), "gA==");
    EXPECT_EQ(encoded({0, 1, 0, 0, 0, 0, 0, 1, 1}), "QYA=");
    EXPECT_EQ(encoded({}), "");
    EXPECT_EQ(encoded(Bytes(24, 2)), "////") << "any number but 0 is a 1";
    for (std::size_t count = 0; count < 200; ++count) {
        const Bytes bits = cells(count);
        ASSERT_EQ(encoded(bits), encoded_slowly(bits)) << count;
    }
    EXPECT_EQ(encoded(Bytes(15500, 1)).size(), 2584u);
}

TEST_F(Base64Test, lines_are_broken_after_whole_groups)
{
    const Bytes six(48, 0);
    EXPECT_EQ(encoded(six, 4), "AAAA\r\nAAAA\r\n") << "also behind the last whole group";
    EXPECT_EQ(encoded(six, 7), "AAAA\r\nAAAA\r\n");
    EXPECT_EQ(encoded(six, 8), "AAAAAAAA\r\n");
    EXPECT_EQ(encoded(six, 11), "AAAAAAAA\r\n");
    EXPECT_EQ(encoded(six, 12), "AAAAAAAA");
    EXPECT_EQ(encoded(six, 0), "AAAA\r\nAAAA\r\n");
    EXPECT_EQ(encoded(six, INT_MIN), "AAAA\r\nAAAA\r\n");
    EXPECT_EQ(encoded(Bytes(32, 0), 4), "AAAA\r\nAA==") << "never behind a padded one";
    EXPECT_EQ(encoded(Bytes(96, 0), 8), "AAAAAAAA\r\nAAAAAAAA\r\n");
}

TEST_F(Base64Test, bits_to_text_refused)
{
    unsigned char bits[16] = {};
    char out[8] = "~";
    EXPECT_EQ(EncodeBinaryArrayToBase64(nullptr, out, 8, 20000), -1);
    EXPECT_EQ(EncodeBinaryArrayToBase64(bits, nullptr, 8, 20000), -1);
    EXPECT_EQ(EncodeBinaryArrayToBase64(bits, out, -1, 20000), -1);
    net_host_fail_allocation(1);
    EXPECT_EQ(EncodeBinaryArrayToBase64(bits, out, 8, 20000), -1);
    EXPECT_STREQ(out, "~");
    EXPECT_EQ(EncodeBinaryArrayToBase64(bits, out, 16, 20000), 4);
    EXPECT_EQ(net_host_memory().last_size, 3u);
}

int decode(Bytes &bits, std::string in)
{
    return Base64DecodeToBinaryArray(reinterpret_cast<char *>(bits.data()), static_cast<int>(bits.size()), in.data(),
                                     static_cast<int>(in.size()));
}

TEST_F(Base64Test, text_to_bits)
{
    Bytes bits(12, 9);
    EXPECT_EQ(decode(bits, "QQ=="), 8);
    EXPECT_EQ(bits, (Bytes{0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0})) << "all of the buffer is written";
    EXPECT_EQ(decode(bits, "QYA="), 12) << "stops at the capacity";
    EXPECT_EQ(bits, (Bytes{0, 1, 0, 0, 0, 0, 0, 1, 1, 0, 0, 0}));
    EXPECT_EQ(decode(bits, ""), 0);
    EXPECT_EQ(bits, Bytes(12));
    EXPECT_EQ(decode(bits, "QQ=A!!!!"), 8) << "padding ends the text";
    EXPECT_EQ(decode(bits, "QQ"), -1);
    EXPECT_EQ(decode(bits, "Q Q="), -1);
    EXPECT_EQ(decode(bits, "////AAA!"), 12) << "nothing is looked at beyond the capacity";
    Bytes more(30, 9);
    EXPECT_EQ(decode(more, "////AAA!"), -1);
    EXPECT_EQ(more[23], 1) << "the groups in front are decoded";
    EXPECT_EQ(more[24], 0);
    Bytes full(15500);
    EXPECT_EQ(decode(full, std::string(2584, '/')), 15500);
    EXPECT_EQ(full, Bytes(15500, 1));

    char text[] = "QQ==";
    EXPECT_EQ(Base64DecodeToBinaryArray(nullptr, 8, text, 4), -1);
    EXPECT_EQ(Base64DecodeToBinaryArray(text, 8, nullptr, 4), -1);
    char cells[1] = {9};
    EXPECT_EQ(Base64DecodeToBinaryArray(cells, -1, text, 4), -1);
    EXPECT_EQ(Base64DecodeToBinaryArray(cells, 0, text, 4), 0);
    EXPECT_EQ(cells[0], 9);
    EXPECT_EQ(Base64DecodeToBinaryArray(cells, 1, text, -4), -1);
    EXPECT_EQ(cells[0], 0);
}

TEST_F(Base64Test, text_to_bits_at_random)
{
    int refused = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string in = text(random() % 12 * 4 + (round % 16 == 0), round % 4 == 0 ? 0 : 60);
        Bytes bits(1 + random() % 320, 9);
        Bytes expected = bits;
        const int count = decoded_slowly(expected, in);
        refused += count < 0;
        ASSERT_EQ(decode(bits, in), count) << in;
        ASSERT_EQ(bits, expected) << in;
        ASSERT_EQ(netpublic::count_cells(in.data(), static_cast<int>(in.size()), static_cast<int>(bits.size())), count);
    }
    EXPECT_GT(refused, 1000);
    EXPECT_LT(refused, 10000);
}

TEST_F(Base64Test, grids_of_rows_and_of_columns)
{
    constexpr int columns_max = netpublic::grid_columns;
    constexpr int rows_max = netpublic::grid_rows;
    std::vector<std::pair<int, int>> sizes = {{1, 1},   {155, 100}, {96, 64}, {10, 10},
                                              {155, 1}, {1, 100},   {7, 9},   {8, 8}};
    for (int round = 0; round < 150; ++round)
        sizes.emplace_back(1 + random() % columns_max, 1 + random() % rows_max);
    for (const auto &[columns, rows] : sizes) {
        const std::size_t count = static_cast<std::size_t>(columns * rows);
        const Bytes bits = cells(count);
        const std::string in = encoded_slowly(bits);
        Bytes by_row(columns_max * rows_max, 9);
        Bytes by_column(columns_max * rows_max, 9);
        netpublic::read_rows(in.data(), by_row.data(), columns, rows, columns_max);
        netpublic::read_columns(in.data(), by_column.data(), columns, rows, rows_max);
        int wrong = 0;
        for (int row = 0; row < rows_max; ++row)
            for (int column = 0; column < columns_max; ++column) {
                const bool inside = row < rows && column < columns;
                const int expected = inside ? bits[static_cast<std::size_t>(row * columns + column)] : 9;
                wrong += by_row[static_cast<std::size_t>(row * columns_max + column)] != expected;
                wrong += by_column[static_cast<std::size_t>(column * rows_max + row)] != expected;
            }
        ASSERT_EQ(wrong, 0) << columns << " x " << rows;

        for (const netpublic::Grid &grid : {netpublic::Grid{by_row.data(), columns, rows, false},
                                            netpublic::Grid{by_column.data(), columns, rows, true}}) {
            ASSERT_EQ(netpublic::encoded_length(grid), in.size());
            std::string out(in.size(), '~');
            netpublic::encode_grid(grid, out.data(), 0, out.size());
            ASSERT_EQ(out, in) << columns << " x " << rows;
            for (std::size_t first = 0; first < in.size(); first += 64) {
                std::string part = in.substr(first, 64);
                netpublic::encode_grid(grid, part.data(), first, part.size());
                ASSERT_EQ(part, in.substr(first, 64)) << columns << " x " << rows;
            }
        }
    }
}

Bytes bytes_of(const std::string &text)
{
    return Bytes(text.begin(), text.end());
}

int encode_bytes(std::string &out, const std::string &in, unsigned int size)
{
    Bytes buffer(size, '~');
    const Bytes data = bytes_of(in + "!"); // never empty, so never null
    const int length = base64_encode(buffer.data(), size, data.data(), static_cast<unsigned int>(in.size()));
    out.assign(buffer.begin(), buffer.end());
    return length;
}

TEST_F(Base64Test, bytes_to_text)
{
    const std::pair<const char *, const char *> cases[] = {{"", ""},
                                                           {"f", "Zg=="},
                                                           {"fo", "Zm8="},
                                                           {"foo", "Zm9v"},
                                                           {"foob", "Zm9vYg=="},
                                                           {"fooba", "Zm9vYmE="},
                                                           {"\xff\xef\xbe", "/+++"}};
    for (const auto &[in, text] : cases) {
        const unsigned int length = static_cast<unsigned int>(std::strlen(text));
        std::string out;
        EXPECT_EQ(encode_bytes(out, in, length + 1), static_cast<int>(length)) << in;
        EXPECT_EQ(out, text + std::string(1, '\0')) << in;
        if (length == 0)
            continue;
        EXPECT_EQ(encode_bytes(out, in, length), -3) << "no room for the terminator";
        EXPECT_EQ(out, std::string(length, '~'));
    }
    unsigned char byte = 0;
    EXPECT_EQ(base64_encode(&byte, 0, &byte, 0), -3);
    EXPECT_EQ(base64_encode(nullptr, 8, &byte, 1), -1);
    EXPECT_EQ(base64_encode(&byte, 8, nullptr, 1), -1);
    EXPECT_EQ(base64_encode(&byte, 1, &byte, UINT_MAX), -3) << "sizes do not wrap around";
}

int decode_bytes(Bytes &out, const std::string &in)
{
    const Bytes data = bytes_of(in);
    unsigned char nothing = 0;
    return base64_decode(out.empty() ? &nothing : out.data(), static_cast<unsigned int>(out.size()),
                         data.empty() ? &nothing : data.data(), static_cast<unsigned int>(in.size()));
}

TEST_F(Base64Test, text_to_bytes)
{
    const auto decoded = [](const std::string &in, std::size_t size) {
        Bytes out(size, '~');
        const int length = decode_bytes(out, in);
        if (length < 0) {
            EXPECT_EQ(out, Bytes(size, '~')) << "a failure writes nothing";
            return std::to_string(length);
        }
        return std::string(out.begin(), out.end());
    };
    EXPECT_EQ(decoded("", 0), "");
    EXPECT_EQ(decoded("Zg==", 1), "f");
    EXPECT_EQ(decoded("Zm8=", 2), "fo");
    EXPECT_EQ(decoded("Zm9v", 4), "foo~") << "not terminated";
    EXPECT_EQ(decoded("Zm9vYmE=", 5), "fooba");
    EXPECT_EQ(decoded("Zm9vYmE=", 4), "-3");
    EXPECT_EQ(decoded("Zg==", 0), "-3");
    EXPECT_EQ(decoded("Zg==Zm9v", 6), "f~~~~~") << "padding ends the data";
    EXPECT_EQ(decoded("Zg==Zm9v", 5), "-3") << "... but not for the capacity";
    EXPECT_EQ(decoded("Zg=v", 2), "f~");
    EXPECT_EQ(decoded("QQ=", 8), "-2");
    EXPECT_EQ(decoded("Q!==", 8), "-4");
    EXPECT_EQ(decoded("QQ==Q!==", 8), "-4");
    EXPECT_EQ(decoded("Q!==", 0), "-3") << "the capacity is looked at first";
    EXPECT_EQ(decoded("Zm9\xff", 8), "-4");

    unsigned char byte = 0;
    EXPECT_EQ(base64_decode(nullptr, 8, &byte, 4), -1);
    EXPECT_EQ(base64_decode(&byte, 8, nullptr, 4), -1);
    EXPECT_EQ(base64_decode(&byte, 1, &byte, 3), -2);
}

TEST_F(Base64Test, bytes_come_back)
{
    for (std::size_t size = 0; size < 70; ++size) {
        std::string data(size, '\0');
        for (char &c : data)
            c = static_cast<char>(random());
        std::string out;
        const unsigned int room = static_cast<unsigned int>((size + 2) / 3 * 4 + 1);
        ASSERT_EQ(encode_bytes(out, data, room), static_cast<int>(room - 1));
        Bytes back(size);
        ASSERT_EQ(decode_bytes(back, out.substr(0, room - 1)), static_cast<int>(size));
        ASSERT_EQ(back, bytes_of(data));
    }
}

} // namespace
