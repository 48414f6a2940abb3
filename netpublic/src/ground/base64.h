// The base64 alphabet, as tables.
#ifndef NETPUBLIC_BASE64_H
#define NETPUBLIC_BASE64_H

#include <cstdint>

namespace netpublic {

inline constexpr char base64_alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Four characters of the low 24 bits.
inline char *put_base64(char *out, std::uint32_t bits)
{
    out[0] = base64_alphabet[bits >> 18 & 63];
    out[1] = base64_alphabet[bits >> 12 & 63];
    out[2] = base64_alphabet[bits >> 6 & 63];
    out[3] = base64_alphabet[bits & 63];
    return out + 4;
}

// A character's value, 0 to 63, or one of these two.
inline constexpr std::uint8_t base64_padding = 0x40;
inline constexpr std::uint8_t base64_foreign = 0x80;

struct Base64Classes {
    std::uint8_t of[256];

    constexpr std::uint8_t operator[](char c) const
    {
        return of[static_cast<unsigned char>(c)];
    }
};

constexpr Base64Classes classify_base64()
{
    Base64Classes classes{};
    for (std::uint8_t &entry : classes.of)
        entry = base64_foreign;
    for (std::uint8_t value = 0; value < 64; ++value)
        classes.of[static_cast<unsigned char>(base64_alphabet[value])] = value;
    classes.of[static_cast<unsigned char>('=')] = base64_padding;
    return classes;
}

inline constexpr Base64Classes base64_classes = classify_base64();

} // namespace netpublic

#endif
