#include "values/grid.h"

#include "ground/base64.h"

#include <cstdint>
#include <cstring>

namespace netpublic {
namespace {

constexpr int cells_per_character = 6;
constexpr int cells_a_group = 4 * cells_per_character;

// The six cells of each character of the alphabet, in the slot of the character itself; padding has
// six zeros. Two spare bytes let a slot be copied as one word.
struct CharacterCells {
    unsigned char cell[8];
};
constexpr char first_character = '+';
constexpr char last_character = 'z';

struct CellTable {
    CharacterCells of[last_character - first_character + 1];

    const unsigned char *operator[](char c) const
    {
        return of[c - first_character].cell;
    }
};

constexpr CellTable make_cell_table()
{
    CellTable table{};
    for (int value = 0; value < 64; ++value)
        for (int i = 0; i < cells_per_character; ++i)
            table.of[base64_alphabet[value] - first_character].cell[i] =
                static_cast<unsigned char>(value >> (cells_per_character - 1 - i) & 1);
    return table;
}

constexpr CellTable cells_of = make_cell_table();

// Four cells of one column by their bits, the first cell in bit 0.
constexpr int half_band = 4;
constexpr unsigned char column_cells[16][half_band] = {
    {0, 0, 0, 0}, {1, 0, 0, 0}, {0, 1, 0, 0}, {1, 1, 0, 0}, {0, 0, 1, 0}, {1, 0, 1, 0}, {0, 1, 1, 0}, {1, 1, 1, 0},
    {0, 0, 0, 1}, {1, 0, 0, 1}, {0, 1, 0, 1}, {1, 1, 0, 1}, {0, 0, 1, 1}, {1, 0, 1, 1}, {0, 1, 1, 1}, {1, 1, 1, 1},
};

// Rows that are turned into columns together: a bit each of a column's byte.
constexpr int band = 8;
constexpr int band_words = (grid_columns + 7) / 8;

// Adds a row of cells to the columns' bytes, eight columns at a time. A cell is 0 or 1, so that no
// column spills into the next.
void add_row(std::uint64_t *columns, int words, const unsigned char *cells, int bit)
{
    for (; words > 0; --words, cells += sizeof(std::uint64_t)) {
        std::uint64_t row;
        std::memcpy(&row, cells, sizeof(row));
        *columns++ |= row << bit;
    }
}

void store_column(unsigned char *out, unsigned int bits, int height)
{
    if (height >= half_band) {
        std::memcpy(out, column_cells[bits & 15], half_band);
        bits >>= half_band;
        height -= half_band;
        out += half_band;
    }
    if (height == half_band) {
        std::memcpy(out, column_cells[bits], half_band);
        return;
    }
    for (; height > 0; --height, bits >>= 1)
        *out++ = bits & 1;
}

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the first cell is the low byte of a word");

// Hands out the cells of a valid text one run after another.
class CellReader {
public:
    explicit CellReader(const char *text) : text_(text) {}

    void next(unsigned char *out, int count)
    {
        const char *text = text_; // a local one: the stores below could change members
        int used = used_;
        if (used != 0 && count >= 8) {
            std::uint64_t cells;
            std::memcpy(&cells, cells_of[*text++], sizeof(cells));
            cells >>= 8 * used;
            std::memcpy(out, &cells, sizeof(cells));
            out += cells_per_character - used;
            count -= cells_per_character - used;
            used = 0;
        }
        while (used != 0 && count > 0)
            take(text, used, out, count);
        // The two spare bytes of a slot are overwritten by the next cells.
        for (; count >= cells_a_group + 2; count -= cells_a_group, text += 4, out += cells_a_group) {
            std::memcpy(out, cells_of[text[0]], 8);
            std::memcpy(out + 6, cells_of[text[1]], 8);
            std::memcpy(out + 12, cells_of[text[2]], 8);
            std::memcpy(out + 18, cells_of[text[3]], 8);
        }
        for (; count >= 8; count -= cells_per_character, out += cells_per_character)
            std::memcpy(out, cells_of[*text++], 8);
        if (count >= cells_per_character) {
            std::memcpy(out, cells_of[*text++], cells_per_character);
            out += cells_per_character;
            count -= cells_per_character;
        }
        while (count > 0)
            take(text, used, out, count);
        text_ = text;
        used_ = used;
    }

private:
    static void take(const char *&text, int &used, unsigned char *&out, int &count)
    {
        *out++ = cells_of[*text][used];
        --count;
        if (++used == cells_per_character) {
            used = 0;
            ++text;
        }
    }

    const char *text_;
    int used_ = 0; // cells of *text_ that have been handed out
};

} // namespace

Cells scan_cells(const char *text, int length, int max_cells)
{
    if (length < 0 || length % 4 != 0)
        return {0, false};
    const unsigned int most = static_cast<unsigned int>(max_cells);
    unsigned int count = 0;
    bool valid = true;
    for (const char *end = text + length; text != end && count < most; text += 4) {
        const int classes =
            base64_classes[text[0]] | base64_classes[text[1]] | base64_classes[text[2]] | base64_classes[text[3]];
        if (classes < base64_padding) {
            count += cells_a_group;
            continue;
        }
        if ((classes & base64_foreign) != 0) {
            valid = false;
            break;
        }
        // Padding in the first two places is a zero like any other.
        if (text[2] == '=') {
            count += 8;
            break;
        }
        if (text[3] == '=') {
            count += 16;
            break;
        }
        count += cells_a_group;
    }
    return {static_cast<int>(count < most ? count : most), valid};
}

int count_cells(const char *text, int length, int max_cells)
{
    const Cells cells = scan_cells(text, length, max_cells);
    return cells.valid ? cells.count : -1;
}

void read_cells(const char *text, unsigned char *cells, int count)
{
    CellReader(text).next(cells, count);
}

void read_rows(const char *text, unsigned char *cells, int columns, int rows, int stride)
{
    if (columns == stride) {
        read_cells(text, cells, columns * rows);
        return;
    }
    CellReader reader(text);
    for (int row = 0; row < rows; ++row, cells += stride)
        reader.next(cells, columns);
}

void read_columns(const char *text, unsigned char *cells, int columns, int rows, int stride)
{
    CellReader reader(text);
    unsigned char line[band_words * sizeof(std::uint64_t)] = {};
    const int words = (columns + 7) / 8;
    for (int row = 0; row < rows; row += band) {
        const int height = rows - row < band ? rows - row : band;
        std::uint64_t turned[band_words] = {};
        for (int i = 0; i < height; ++i) {
            reader.next(line, columns);
            add_row(turned, words, line, i);
        }
        unsigned char bits[sizeof(turned)];
        std::memcpy(bits, turned, sizeof(turned));
        for (int column = 0; column < columns; ++column)
            store_column(cells + column * stride + row, bits[column], height);
    }
}

namespace {

// Eight cells of a line from one on, 1 for each that is not 0. Those behind the line's end are 0.
std::uint64_t eight_cells(const unsigned char *line, int at, int line_length)
{
    constexpr std::uint64_t low_bits = 0x7f7f7f7f7f7f7f7f;
    constexpr std::uint64_t ones = 0x0101010101010101;
    const int from = at < line_length - 8 ? at : line_length - 8;
    std::uint64_t cells;
    std::memcpy(&cells, line + from, sizeof(cells));
    cells >>= 8 * (at - from);
    return (((cells & low_bits) + low_bits) | cells) >> 7 & ones;
}

// Rows of a band as bits, the first cell on top. What is behind the last column may be any bits.
using PackedBand = unsigned char[band][band_words];

void pack_columns(PackedBand &packed, const Grid &grid, int row)
{
    for (int column = 0; column < grid.columns; column += 8) {
        std::uint64_t bits = 0;
        for (int i = column; i < column + 8; ++i)
            bits = bits << 1 | (i < grid.columns ? eight_cells(grid.cells + i * grid_rows, row, grid_rows) : 0);
        for (int i = 0; i < band; ++i, bits >>= 8)
            packed[i][column / 8] = static_cast<unsigned char>(bits);
    }
}

void pack_rows(PackedBand &packed, const Grid &grid, int row)
{
    constexpr std::uint64_t gather = 0x8040201008040201; // moves bit 8 * i to bit 63 - i
    for (int i = 0; i < band && row + i < grid.rows; ++i)
        for (int column = 0; column < grid.columns; column += 8)
            packed[i][column / 8] = static_cast<unsigned char>(
                eight_cells(grid.cells + (row + i) * grid_columns, column, grid_columns) * gather >> 56);
}

} // namespace

std::size_t encoded_length(const Grid &grid)
{
    return static_cast<std::size_t>((grid.columns * grid.rows + cells_a_group - 1) / cells_a_group * 4);
}

void encode_grid(const Grid &grid, char *to, std::size_t first, std::size_t count)
{
    const char *const end = to + count;
    const int cell = static_cast<int>(first) * cells_per_character;
    int column = cell % grid.columns;
    std::uint32_t bits = 0;
    int held = 0; // so many of the bits are to be written
    PackedBand packed;
    for (int row = cell / grid.columns, packed_row = -1; row < grid.rows; ++row, column = 0) {
        if (packed_row != row / band) {
            packed_row = row / band;
            if (grid.columns_first)
                pack_columns(packed, grid, packed_row * band);
            else
                pack_rows(packed, grid, packed_row * band);
        }
        while (column < grid.columns) {
            const int room = 8 - column % 8;
            const int taken = room < grid.columns - column ? room : grid.columns - column;
            const unsigned int left = packed[row % band][column / 8] & (0xFFu >> column % 8);
            bits = bits << taken | left >> (room - taken);
            held += taken;
            column += taken;
            if (held < cells_a_group)
                continue;
            held -= cells_a_group;
            to = put_base64(to, bits >> held);
            if (to == end)
                return;
        }
    }
    to = put_base64(to, bits << (cells_a_group - held));
    if (held <= 16)
        to[-1] = '=';
    if (held <= 8)
        to[-2] = '=';
}

} // namespace netpublic
