// Eight cells, a byte each, at a time.
#ifndef NETPUBLIC_CELLS_H
#define NETPUBLIC_CELLS_H

#include <cstdint>
#include <cstring>

namespace netpublic {

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the first cell is the low byte of a word");

inline constexpr std::uint64_t each_cell = 0x0101010101010101;

inline std::uint64_t load_cells(const unsigned char *from)
{
    std::uint64_t cells;
    std::memcpy(&cells, from, sizeof(cells));
    return cells;
}

// 1 for each cell that is not 0.
constexpr std::uint64_t ones(std::uint64_t cells)
{
    constexpr std::uint64_t low_bits = 0x7f7f7f7f7f7f7f7f;
    return (((cells & low_bits) + low_bits) | cells) >> 7 & each_cell;
}

// Zero or not as the bits of a byte, the first cell on top. Nearly always the cells are 0 and 1 as they stand.
inline unsigned char pack_eight(std::uint64_t cells)
{
    constexpr std::uint64_t gather = 0x8040201008040201; // moves bit 8 * i to bit 63 - i
    if ((cells & ~each_cell) != 0)
        cells = ones(cells);
    return static_cast<unsigned char>(cells * gather >> 56);
}

} // namespace netpublic

#endif
