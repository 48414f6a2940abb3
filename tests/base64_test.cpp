// Base64 of bits, bytes and grids. Texts at random against the plain algorithm: the fuzz targets "base64" and "grid".
#include "support.h"
#include "values/grid.h"

#include <net_public.h>

#include <climits>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

class Base64Test : public test::HostTest {};

TEST_F(Base64Test, Characters)
{
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (int c = 0; c < 256; ++c) {
        const std::size_t value = alphabet.find(static_cast<char>(c));
        const bool known = value != std::string::npos;
        EXPECT_EQ(GetBase64Value(static_cast<char>(c)), known ? static_cast<int>(value) : 0) << c;
        EXPECT_EQ(is_base64_char(static_cast<char>(c)), known || c == '=') << c;
    }
}

TEST_F(Base64Test, BitsToText)
{
    const struct {
        Bytes bits;
        int line_length;
        const char *text;
    } cases[] = {
        {{0, 1, 0, 0, 0, 0, 0, 1}, 20000, "QQ=="},
        {{1}, 20000, "gA=="},
        {{0, 1, 0, 0, 0, 0, 0, 1, 1}, 20000, "QYA="},
        {{}, 20000, ""},
        {Bytes(24, 2), 20000, "////"},         // any number but 0 is a 1
        {Bytes(48, 0), 4, "AAAA\r\nAAAA\r\n"}, // also behind the last whole group
        {Bytes(48, 0), 7, "AAAA\r\nAAAA\r\n"},
        {Bytes(48, 0), 8, "AAAAAAAA\r\n"},
        {Bytes(48, 0), 11, "AAAAAAAA\r\n"},
        {Bytes(48, 0), 12, "AAAAAAAA"},
        {Bytes(48, 0), INT_MIN, "AAAA\r\nAAAA\r\n"},
        {Bytes(32, 0), 4, "AAAA\r\nAA=="}, // never behind a padded one
        {Bytes(96, 0), 8, "AAAAAAAA\r\nAAAAAAAA\r\n"},
    };
    for (auto [bits, line_length, text] : cases) {
        bits.reserve(1); // no bits are no null pointer
        char out[64];
        EXPECT_EQ(EncodeBinaryArrayToBase64(bits.data(), out, static_cast<int>(bits.size()), line_length),
                  static_cast<int>(std::strlen(text)));
        EXPECT_STREQ(out, text) << line_length;
    }
    unsigned char bits[16] = {};
    char out[8] = "~";
    EXPECT_EQ(EncodeBinaryArrayToBase64(bits, out, -1, 20000), -1);
    net_host_fail_allocation(1);
    EXPECT_EQ(EncodeBinaryArrayToBase64(bits, out, 8, 20000), -1);
    EXPECT_STREQ(out, "~");
    EXPECT_EQ(EncodeBinaryArrayToBase64(bits, out, 16, 20000), 4);
    EXPECT_EQ(net_host_memory().last_size, 3u);
}

TEST_F(Base64Test, TextToBits)
{
    const struct {
        const char *text;
        int count;
        Bytes bits; // all of the buffer is written
    } cases[] = {
        {"QQ==", 8, {0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0}},
        {"QYA=", 12, {0, 1, 0, 0, 0, 0, 0, 1, 1, 0, 0, 0}}, // stops at the capacity
        {"", 0, {0, 0, 0}},
        {"QQ=A!!!!", 8, {0, 1, 0, 0, 0, 0, 0, 1, 0}}, // padding ends the text
        {"QQ", -1, {0, 0}},
        {"Q Q=", -1, {0, 0}},
        {"////AAA!", 12, Bytes(12, 1)}, // nothing is looked at beyond the capacity
    };
    for (const auto &c : cases) {
        Bytes bits(c.bits.size(), 9);
        std::string in = c.text;
        auto *out = reinterpret_cast<char *>(bits.data());
        EXPECT_EQ(Base64DecodeToBinaryArray(out, static_cast<int>(bits.size()), in.data(), static_cast<int>(in.size())),
                  c.count)
            << in;
        EXPECT_EQ(bits, c.bits) << in;
    }
    char text[] = "QQ==";
    EXPECT_EQ(Base64DecodeToBinaryArray(text, 8, nullptr, 4), -1);
    char cells[1] = {9};
    EXPECT_EQ(Base64DecodeToBinaryArray(cells, -1, text, 4), -1);
    EXPECT_EQ(Base64DecodeToBinaryArray(cells, 0, text, 4), 0);
    EXPECT_EQ(cells[0], 9);
    EXPECT_EQ(Base64DecodeToBinaryArray(cells, 1, text, -4), -1);
    EXPECT_EQ(cells[0], 0);
}

// A whole grid, and one of each shape, in rows and in columns: what is read is what is collected.
TEST_F(Base64Test, GridsOfRowsAndOfColumns)
{
    constexpr int columns_max = netpublic::grid_columns;
    constexpr int rows_max = netpublic::grid_rows;
    for (const auto &[columns, rows] : {std::pair{1, 1}, {155, 100}, {96, 64}, {155, 1}, {1, 100}, {7, 9}, {8, 8}}) {
        const std::size_t count = static_cast<std::size_t>(columns * rows);
        Bytes bits(count);
        for (std::size_t i = 0; i < count; ++i)
            bits[i] = i * i % 7 < 3;
        std::string in((count + 23) / 24 * 4 + 1, '\0');
        EXPECT_GT(EncodeBinaryArrayToBase64(bits.data(), in.data(), static_cast<int>(count), 20000), 0);
        in.pop_back();
        EXPECT_EQ(netpublic::count_cells(in.data(), static_cast<int>(in.size()), static_cast<int>(count)),
                  static_cast<int>(count));
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
            netpublic::encode_grid(grid, out.data(), out.size());
            ASSERT_EQ(out, in) << columns << " x " << rows;
            for (const std::size_t size : {std::size_t{1}, in.size() / 2, in.size() - 1}) {
                std::string part(in.size(), '~');
                netpublic::encode_grid(grid, part.data(), size);
                ASSERT_EQ(part, in.substr(0, size) + std::string(in.size() - size, '~'));
            }
        }
    }
}

TEST_F(Base64Test, BytesToText)
{
    for (const auto &[in, text] : {std::pair{"", ""},
                                   {"f", "Zg=="},
                                   {"fo", "Zm8="},
                                   {"foo", "Zm9v"},
                                   {"foob", "Zm9vYg=="},
                                   {"fooba", "Zm9vYmE="},
                                   {"\xff\xef\xbe", "/+++"}}) {
        const unsigned int length = static_cast<unsigned int>(std::strlen(text));
        const auto *data = reinterpret_cast<const unsigned char *>(in);
        Bytes out(16, '~');
        EXPECT_EQ(base64_encode(out.data(), length, data, static_cast<unsigned int>(std::strlen(in))), -3)
            << "no room for the terminator";
        EXPECT_EQ(out, Bytes(16, '~'));
        EXPECT_EQ(base64_encode(out.data(), length + 1, data, static_cast<unsigned int>(std::strlen(in))),
                  static_cast<int>(length));
        EXPECT_STREQ(reinterpret_cast<char *>(out.data()), text);
    }
    unsigned char byte = 0;
    EXPECT_EQ(base64_encode(&byte, 8, nullptr, 1), -1);
    EXPECT_EQ(base64_encode(&byte, 1, &byte, UINT_MAX), -3) << "sizes do not wrap around";
}

TEST_F(Base64Test, TextToBytes)
{
    const struct {
        const char *text;
        unsigned int size;
        int result;
        const char *bytes; // and what was there behind them
    } cases[] = {
        {"", 0, 0, "~~~~~~"},          {"Zg==", 1, 1, "f~~~~~"},      {"Zm8=", 2, 2, "fo~~~~"},
        {"Zm9v", 4, 3, "foo~~~"}, // not terminated
        {"Zm9vYmE=", 5, 5, "fooba~"},  {"Zm9vYmE=", 4, -3, "~~~~~~"}, {"Zg==", 0, -3, "~~~~~~"},
        {"Zg==Zm9v", 6, 1, "f~~~~~"},  // padding ends the data
        {"Zg==Zm9v", 5, -3, "~~~~~~"}, // ... but not for the capacity
        {"Zg=v", 2, 1, "f~~~~~"},      {"QQ=", 6, -2, "~~~~~~"},      {"Q!==", 6, -4, "~~~~~~"},
        {"QQ==Q!==", 6, -4, "~~~~~~"}, {"Q!==", 0, -3, "~~~~~~"}, // the capacity is looked at first
        {"Zm9\xff", 6, -4, "~~~~~~"},
    };
    for (const auto &c : cases) {
        unsigned char out[] = "~~~~~~";
        const auto *in = reinterpret_cast<const unsigned char *>(c.text);
        EXPECT_EQ(base64_decode(out, c.size, in, static_cast<unsigned int>(std::strlen(c.text))), c.result) << c.text;
        EXPECT_STREQ(reinterpret_cast<char *>(out), c.bytes) << c.text;
    }
    unsigned char byte = 0;
    EXPECT_EQ(base64_decode(&byte, 8, nullptr, 4), -1);
}

} // namespace
