// A fuzz input, taken from the front. Behind its end come zeros.
#ifndef NETPUBLIC_FUZZ_BYTES_H
#define NETPUBLIC_FUZZ_BYTES_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace fuzz {

class Bytes {
public:
    Bytes(const std::uint8_t *data, std::size_t size) : at_(data), left_(size) {}

    std::uint8_t byte()
    {
        if (left_ == 0)
            return 0;
        --left_;
        return *at_++;
    }
    // Little-endian.
    template <class Type> Type number()
    {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < sizeof(Type); ++i)
            value |= std::uint64_t{byte()} << (8 * i);
        Type result;
        std::memcpy(&result, &value, sizeof result);
        return result;
    }
    std::string text(std::size_t length)
    {
        length = length < left_ ? length : left_;
        std::string taken(reinterpret_cast<const char *>(at_), length);
        at_ += length;
        left_ -= length;
        return taken;
    }
    std::size_t left() const
    {
        return left_;
    }
    const std::uint8_t *rest() const
    {
        return at_;
    }

private:
    const std::uint8_t *at_;
    std::size_t left_;
};

} // namespace fuzz

#endif
