#include "values/grid.h"

#include "ground/base64.h"
#include "ground/cells.h"
#include "ground/for_size.h"

#include <algorithm>
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

constexpr int grid_words = (grid_columns + 7) / 8; // eight columns each

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

namespace {

// Rows that become columns together: a byte of a word each, which holds eight columns, the first one on top.
using Rows = std::size_t;
constexpr int together = sizeof(Rows);
using RowBits = unsigned char[grid_words][together]; // row r is byte r % together

// Hands out the rows of a valid text as bits.
class BitReader {
public:
    explicit BitReader(const char *text) : text_(text) {}

    // A byte for eight columns, `together` bytes apart.
    void next(unsigned char *out, int columns)
    {
        const char *text = text_; // local ones: the stores below could change members
        std::uint32_t bits = bits_;
        int held = held_;
        for (; columns >= cells_a_group; columns -= cells_a_group, text += 4) {
            bits =
                bits << 24 | bits_of(text[0]) << 18 | bits_of(text[1]) << 12 | bits_of(text[2]) << 6 | bits_of(text[3]);
            for (int above = cells_a_group - 8; above >= 0; above -= 8, out += together)
                *out = static_cast<unsigned char>(bits >> (held + above));
        }
        for (; held < columns; held += cells_per_character)
            bits = bits << cells_per_character | bits_of(*text++);
        held -= columns;
        for (; columns >= 8; out += together)
            *out = static_cast<unsigned char>(bits >> (held + (columns -= 8)));
        if (columns > 0)
            *out = static_cast<unsigned char>(bits >> held << (8 - columns));
        text_ = text;
        bits_ = bits;
        held_ = held;
    }

private:
    // Padding has no cells.
    static std::uint32_t bits_of(char c)
    {
        return base64_classes[c] & 63U;
    }

    const char *text_;
    std::uint32_t bits_ = 0; // of the characters that have been read
    int held_ = 0;           // of which so many, at most five, have not been handed out
};

// One of eight columns: its cells in all of the rows.
Rows column_of(Rows packed, int column)
{
    return packed >> (7 - column) & static_cast<Rows>(each_cell);
}

void store_columns(unsigned char *out, int stride, Rows packed, int columns)
{
    NETPUBLIC_UNROLL_FOR_SPEED
    for (int column = 0; column < columns; ++column, out += stride) {
        const Rows cells = column_of(packed, column);
        std::memcpy(out, &cells, sizeof(cells));
    }
}

// The first rows only; the cells behind them keep their values.
void store_short_columns(unsigned char *out, int stride, Rows packed, int columns, int rows)
{
    const Rows kept = ~Rows{0} << 8 * rows;
    packed &= ~kept; // the bytes of rows that there are
    for (int column = 0; column < columns; ++column, out += stride) {
        Rows cells;
        std::memcpy(&cells, out, sizeof(cells));
        cells = column_of(packed, column) | (cells & kept);
        std::memcpy(out, &cells, sizeof(cells));
    }
}

// The last ones of so many rows that have been read.
void store_rows(unsigned char *cells, int stride, const RowBits &packed, int columns, int rows)
{
    const int turn = rows % together * 8; // at the end: rows in front are stored once more
    for (int column = 0; column < columns; column += 8, cells += 8 * stride) {
        const int count = std::min(columns - column, 8);
        Rows block;
        std::memcpy(&block, packed[column / 8], sizeof(block));
        if (rows < together) {
            store_short_columns(cells, stride, block, count, rows);
            continue;
        }
        if (turn != 0)
            block = block >> turn | block << (8 * together - turn);
        store_columns(cells + rows - together, stride, block, count);
    }
}

} // namespace

void read_columns(const char *text, unsigned char *cells, int columns, int rows, int stride)
{
    BitReader reader(text);
    RowBits packed;
    for (int row = 0; row < rows; ++row) {
        reader.next(&packed[0][row % together], columns);
        if ((row + 1) % together == 0 || row + 1 == rows)
            store_rows(cells, stride, packed, columns, row + 1);
    }
}

namespace {

// Columns that become rows together.
constexpr int band = 8;

// The bits of eight columns of each of a band's rows, the first cell on top. What is behind the last column may be any
// bits; three bytes of a row are taken at a time.
using PackedBand = unsigned char[grid_words + 1][band];

// Of up to eight columns: a byte for each of eight rows. Nearly always the cells are 0 and 1 as they stand.
std::uint64_t pack_block(const unsigned char *cells, int count)
{
    std::uint64_t bits = 0, all = 0;
    NETPUBLIC_UNROLL_FOR_SPEED
    for (int i = 0; i < count; ++i) {
        const std::uint64_t column = load_cells(cells + i * grid_rows);
        all |= column;
        bits = bits * 2 + column; // one instruction; a shift and an or are two
    }
    if ((all & ~each_cell) != 0) {
        bits = 0;
        for (int i = 0; i < count; ++i)
            bits = bits << 1 | ones(load_cells(cells + i * grid_rows));
    }
    return bits << (8 - count);
}

// At the columns' ends the rows in front are taken along.
void pack_columns(PackedBand &packed, const Grid &grid, int row)
{
    const int from = row < grid_rows - 8 ? row : grid_rows - 8;
    const unsigned char *cells = grid.cells + from;
    for (int column = 0; column < grid.columns; column += 8, cells += 8 * grid_rows) {
        const int count = grid.columns - column < 8 ? grid.columns - column : 8;
        const std::uint64_t bits = pack_block(cells, count) >> 8 * (row - from);
        std::memcpy(packed[column / 8], &bits, sizeof(bits));
    }
}

// 24 cells of a row, the first one on top; 0 or any others for those behind its end.
std::uint32_t pack_group(const unsigned char *row, int column)
{
    const unsigned char *cells = row + column;
    if (column <= grid_columns - cells_a_group)
        return static_cast<std::uint32_t>(pack_eight(load_cells(cells)) << 16 | pack_eight(load_cells(cells + 8)) << 8 |
                                          pack_eight(load_cells(cells + 16)));
    constexpr int last = grid_columns % cells_a_group; // behind the whole groups
    static_assert(last > 8 && last < 16, "the rest is two words that overlap");
    return static_cast<std::uint32_t>(pack_eight(load_cells(cells)) << 16 |
                                      pack_eight(load_cells(row + grid_columns - 8) >> 8 * (16 - last)) << 8);
}

// The same of a band's row.
std::uint32_t packed_group(const PackedBand &packed, int row, int column)
{
    const unsigned char *first = packed[column / 8] + row % band;
    return static_cast<std::uint32_t>(first[0] << 16 | first[band] << 8 | first[2 * band]);
}

// Four characters, or as many as there is room for.
char *put_start(char *to, const char *end, std::uint32_t bits)
{
    if (end - to >= 4)
        return put_base64(to, bits);
    for (int shift = 18; to != end; shift -= 6)
        *to++ = base64_alphabet[bits >> shift & 63];
    return to;
}

} // namespace

std::size_t encoded_length(const Grid &grid)
{
    return static_cast<std::size_t>((grid.columns * grid.rows + cells_a_group - 1) / cells_a_group * 4);
}

void encode_grid(const Grid &grid, char *to, std::size_t count)
{
    const char *const end = to + count;
    std::uint64_t bits = 0; // the cells so far; `held` of them are to be written
    int held = 0;
    PackedBand packed = {};
    for (int row = 0; row < grid.rows; ++row) {
        if (grid.columns_first && row % band == 0)
            pack_columns(packed, grid, row);
        const auto group = [&](int column) {
            return grid.columns_first ? packed_group(packed, row, column)
                                      : pack_group(grid.cells + row * grid_columns, column);
        };
        int column = 0;
        for (; column <= grid.columns - cells_a_group; column += cells_a_group) {
            bits = bits << cells_a_group | group(column);
            to = put_start(to, end, static_cast<std::uint32_t>(bits >> held));
        }
        const int left = grid.columns - column;
        if (left == 0)
            continue;
        bits = bits << left | group(column) >> (cells_a_group - left);
        held += left;
        if (held < cells_a_group)
            continue;
        held -= cells_a_group;
        to = put_start(to, end, static_cast<std::uint32_t>(bits >> held));
    }
    if (held == 0 || to == end)
        return;
    char last[4];
    put_base64(last, static_cast<std::uint32_t>(bits << (cells_a_group - held)));
    if (held <= 16)
        last[3] = '=';
    if (held <= 8)
        last[2] = '=';
    std::memcpy(to, last, static_cast<std::size_t>(end - to));
}

} // namespace netpublic
