#include "values/grid.h"

#include "ground/base64.h"
#include "ground/cells.h"

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
void add_row(std::uint64_t *columns, int words, const std::uint64_t *cells, int bit)
{
    for (; words > 0; --words)
        *columns++ |= *cells++ << bit;
}

// The columns' bytes of a band of so many rows, as cells.
void store_columns(unsigned char *out, int stride, const unsigned char *columns, int count, int height)
{
    const unsigned char *const end = columns + count;
    if (height == band) {
        for (; columns != end; ++columns, out += stride) {
            std::memcpy(out, column_cells[*columns & 15], half_band);
            std::memcpy(out + half_band, column_cells[*columns >> half_band], half_band);
        }
        return;
    }
    for (; columns != end; ++columns, out += stride) {
        int row = 0;
        if (height >= half_band) {
            std::memcpy(out, column_cells[*columns & 15], half_band);
            row = half_band;
        }
        // Each of the columns has been written, by words.
        for (; row < height; ++row)
            out[row] = *columns >> row & 1; // NOLINT(clang-analyzer-core.UndefinedBinaryOperatorResult)
    }
}

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
    // A row is added when the next one has been read: loading words from bytes that have just been stored would wait.
    std::uint64_t lines[2][band_words];
    const int words = (columns + 7) / 8;
    lines[0][words - 1] = lines[1][words - 1] = 0; // what is behind the last column
    for (int row = 0; row < rows; row += band) {
        const int height = rows - row < band ? rows - row : band;
        std::uint64_t turned[band_words];
        std::fill_n(turned, words, 0);
        for (int i = 0; i <= height; ++i) {
            if (i < height)
                reader.next(reinterpret_cast<unsigned char *>(lines[i % 2]), columns);
            if (i > 0)
                add_row(turned, words, lines[(i - 1) % 2], i - 1);
        }
        store_columns(cells + row, stride, reinterpret_cast<const unsigned char *>(turned), columns, height);
    }
}

namespace {

// The bits of eight columns of each of a band's rows, the first cell on top. What is behind the last column may be any
// bits; three bytes of a row are taken at a time.
using PackedBand = unsigned char[band_words + 1][band];

// Of up to eight columns: a byte for each of eight rows. Nearly always the cells are 0 and 1 as they stand.
std::uint64_t pack_block(const unsigned char *cells, int count)
{
    std::uint64_t bits = 0, all = 0;
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
