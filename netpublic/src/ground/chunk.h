// Texts as many bytes at a time as a register has.
#ifndef NETPUBLIC_CHUNK_H
#define NETPUBLIC_CHUNK_H

#include <cstdint>
#include <cstring>

namespace netpublic {

using Chunk = std::uintptr_t;
inline constexpr Chunk each_byte = ~Chunk{0} / 255; // 0x01 in each

inline Chunk load_chunk(const char *at)
{
    Chunk chunk;
    std::memcpy(&chunk, at, sizeof chunk);
    return chunk;
}

} // namespace netpublic

#endif
