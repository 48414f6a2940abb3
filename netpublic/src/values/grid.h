// Detection grids: one byte per cell in memory, base64 of a bit array on the wire (eight cells a
// byte, first cell in the top bit, row after row).
#ifndef NETPUBLIC_GRID_H
#define NETPUBLIC_GRID_H

#include <cstddef>

namespace netpublic {

inline constexpr int grid_columns = 155; // the largest grid
inline constexpr int grid_rows = 100;

// What of a text decodes to cells.
struct Cells {
    int count;  // cells up to the end of the data or up to the first group that is no base64
    bool valid; // false when there is such a group, or when the length is no multiple of 4
};
Cells scan_cells(const char *text, int length, int max_cells);

// The number of cells that Base64DecodeToBinaryArray() would return for the text, or -1.
int count_cells(const char *text, int length, int max_cells);

// The first `count` cells of a text that count_cells() has found to hold at least as many.
void read_cells(const char *text, unsigned char *cells, int count);

// The same into a rectangle at the head of a larger grid, whose other cells keep their values.
// Rows: cell (r, c) is cells[r * stride + c]. Columns: cell (r, c) is cells[c * stride + r], with at
// most grid_columns columns.
void read_rows(const char *text, unsigned char *cells, int columns, int rows, int stride);
void read_columns(const char *text, unsigned char *cells, int columns, int rows, int stride);

// The way back: a rectangle at the head of a grid of grid_columns by grid_rows, or in columns of grid_rows.
struct Grid {
    const unsigned char *cells;
    int columns;
    int rows;
    bool columns_first;
};

// The characters of the rectangle's text.
std::size_t encoded_length(const Grid &grid);

// Makes its first `count` characters.
void encode_grid(const Grid &grid, char *to, std::size_t count);

} // namespace netpublic

#endif
