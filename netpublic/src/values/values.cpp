#include "values/values.h"

#include "ground/for_size.h"

#include <clocale>
#include <cstdlib>
#include <cstring>

namespace netpublic {
namespace {

// The longest texts that the readers accept, sign included.
constexpr int int_characters = 12;
constexpr int flag_characters = 9;
constexpr int unsigned_characters = 10;
constexpr int int64_characters = 20;
constexpr int longlong_characters = 21;
constexpr int unsignedlonglong_characters = 20;

// As many digits always fit 64 bits; longer numbers are left to the C library, whose result for what does not fit
// depends on the platform.
constexpr int safe_digits64 = 18;

struct Decimal {
    const char *text;
    bool negative;
    int digits;
    std::uint64_t magnitude; // wraps around

    std::uint64_t value() const
    {
        return negative ? 0 - magnitude : magnitude;
    }
};

// Is there a text, and is it a decimal number of 1 to `longest` characters?
bool read_decimal(Decimal &number, int longest, const char *text)
{
    if (text == nullptr)
        return false;
    const bool negative = *text == '-';
    const char *first = text + negative;
    const char *at = first;
    std::uint64_t magnitude = 0;
    for (; static_cast<unsigned char>(*at - '0') <= 9; ++at)
        magnitude = magnitude * 10 + static_cast<unsigned char>(*at - '0');
    number = {text, negative, static_cast<int>(at - first), magnitude};
    return *at == '\0' && at != text && at - text <= longest;
}

// The process's locale may spell the decimal point differently; the protocol never does.
char decimal_point()
{
    return *std::localeconv()->decimal_point;
}

// A plain decimal of up to nine digits, as nearly all are. Digits and scale are exact, so that the one
// division rounds as the C library's conversion does. False for any other text.
bool read_short_decimal(double &value, const char *text)
{
    const bool negative = *text == '-';
    bool fraction = false;
    int digits = 0;
    std::uint32_t magnitude = 0;
    std::uint32_t scale = 1;
    for (text += negative; *text != '\0'; ++text) {
        const std::uint32_t digit = static_cast<unsigned char>(*text - '0');
        if (digit <= 9) {
            if (++digits > safe_digits)
                return false;
            magnitude = magnitude * 10 + digit;
            scale *= fraction ? 10 : 1;
        } else if (*text == '.' && !fraction) {
            fraction = true;
        } else {
            return false;
        }
    }
    value = static_cast<double>(magnitude) / scale;
    if (negative)
        value = -value;
    return digits != 0;
}

double to_double(const char *text)
{
    double value;
    if (!for_size && read_short_decimal(value, text))
        return value;
    if (decimal_point() == '.')
        return std::atof(text);
    return strtod_l(text, nullptr, newlocale(LC_ALL_MASK, "C", nullptr)); // takes no memory for this locale
}

// Writes the decimal digits in front of `end`. Returns the first of them.
char *write_digits(char *end, std::uint64_t magnitude)
{
    while (magnitude > UINT32_MAX) { // 32-bit divisions are cheaper on the target
        *--end = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    }
    auto low = static_cast<std::uint32_t>(magnitude);
    do {
        *--end = static_cast<char>('0' + low % 10);
        low /= 10;
    } while (low != 0);
    return end;
}

// What gcvt() makes of eight significant digits, in front of `end`; null for a value that it would write with
// an exponent, or that this does not try. Digits are exact: the scaled value fits 64 bits.
char *write_short_float(char *end, float value)
{
    constexpr std::uint64_t least = 10000000; // of eight digits
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    if (bits == 0) {
        *--end = '0';
        return end;
    }
    const double size = value < 0 ? -static_cast<double>(value) : static_cast<double>(value);
    if (!(size >= 1e-4 && size < 1e8))
        return nullptr;
    // The value is scaled / 2^shift.
    std::uint64_t scaled = (bits & 0x7fffff) | 0x800000;
    int shift = 150 - static_cast<int>(bits >> 23 & 0xff);
    if (shift < 0) {
        scaled <<= -shift;
        shift = 0;
    }
    int decimals = 0;
    for (; scaled >> shift < least; scaled *= 10)
        ++decimals;
    auto digits = static_cast<std::uint32_t>(scaled >> shift);
    const std::uint64_t twice_rest = (scaled - (std::uint64_t{digits} << shift)) * 2;
    const std::uint64_t one = std::uint64_t{1} << shift;
    if (twice_rest > one || (twice_rest == one && digits % 2 != 0))
        ++digits;
    if (digits == 10 * least)
        return nullptr; // a digit more
    for (; decimals > 0 && digits % 10 == 0; --decimals)
        digits /= 10;
    if (decimals > 0) {
        for (; decimals > 0; --decimals, digits /= 10)
            *--end = static_cast<char>('0' + digits % 10);
        *--end = '.';
    }
    end = write_digits(end, digits);
    if (value < 0)
        *--end = '-';
    return end;
}

constexpr std::size_t decimal_room = 24; // 20 digits, a sign and the terminator

// Writes the number at the end of the room. Returns its beginning.
char *write_decimal(char (&room)[decimal_room], bool negative, std::uint64_t magnitude)
{
    char *end = &room[decimal_room - 1];
    *end = '\0';
    char *first = write_digits(end, magnitude);
    if (negative)
        *--first = '-';
    return first;
}

int append_decimal(Element parent, const char *name, bool negative, std::uint64_t magnitude)
{
    char room[decimal_room];
    const char *first = write_decimal(room, negative, magnitude);
    return append_plain(parent, name, first, static_cast<std::size_t>(room + sizeof room - 1 - first));
}

} // namespace

// Any number that is not short.
[[gnu::noinline]] static int to_long_int(int *value, const char *text)
{
    Decimal number;
    if (!read_decimal(number, int_characters, text))
        return -1;
    *value = number.magnitude <= INT32_MAX ? static_cast<int>(number.value()) : std::atoi(number.text);
    return 0;
}

int to_int(int *value, const char *text)
{
    if (text != nullptr && read_short_int(*value, text))
        return 0;
    return to_long_int(value, text);
}

void from_int(char *text, long long value)
{
    char room[decimal_room];
    const auto bits = static_cast<std::uint64_t>(value);
    const char *first = write_decimal(room, value < 0, value < 0 ? 0 - bits : bits);
    std::memcpy(text, first, static_cast<std::size_t>(room + sizeof room - first));
}

int read_int(int *value, Node node)
{
    return to_int(value, node.text());
}

int read_flag(int *value, Node node)
{
    const char *text = node.text();
    if (!for_size && text != nullptr && (*text == '0' || *text == '1') && text[1] == '\0') {
        *value = *text - '0';
        return 0;
    }
    Decimal number;
    if (!read_decimal(number, flag_characters, text))
        return -1;
    *value = static_cast<int>(number.value());
    return static_cast<unsigned int>(*value) > 1 ? -1 : 0;
}

int read_unsigned(unsigned int *value, Node node)
{
    Decimal number;
    if (!read_decimal(number, unsigned_characters, node.text()))
        return -1;
    *value = static_cast<unsigned int>(number.magnitude <= UINT32_MAX ? number.value()
                                                                      : std::strtoul(number.text, nullptr, 10));
    return 0;
}

int read_int64(long long *value, Node node)
{
    Decimal number;
    if (!read_decimal(number, int64_characters, node.text()))
        return -1;
    *value = static_cast<long long>(number.value());
    return 0;
}

int read_longlong(long long *value, Node node)
{
    Decimal number;
    if (!read_decimal(number, longlong_characters, node.text()))
        return -1;
    *value = number.digits <= safe_digits64 ? static_cast<long long>(number.value())
                                            : std::strtoll(number.text, nullptr, 10);
    return 0;
}

int read_unsignedlonglong(unsigned long long *value, Node node)
{
    Decimal number;
    if (!read_decimal(number, unsignedlonglong_characters, node.text()))
        return -1;
    *value = number.digits <= safe_digits64 ? number.value() : std::strtoull(number.text, nullptr, 10);
    return 0;
}

int read_float(float *value, Node node)
{
    const char *text = node.text();
    if (text == nullptr)
        return -1;
    *value = static_cast<float>(to_double(text));
    return 0;
}

int view_text(const char **text, std::size_t longest, Node node)
{
    if (!node.is_element())
        return -1;
    const char *found = node.text();
    if (found == nullptr)
        found = "";
    if (std::strlen(found) > longest)
        return -1;
    *text = found;
    return 0;
}

int read_text(char *text, std::size_t size, Node node)
{
    std::memset(text, 0, size);
    if (!node.is_element())
        return -1;
    const char *found = node.text();
    if (found == nullptr)
        return 0;
    const std::size_t length = std::strlen(found);
    if (length >= size)
        return -1;
    std::memcpy(text, found, length);
    return 0;
}

std::size_t join_ints(char *text, std::size_t longest, const int *values, int count, int trailing)
{
    while (count > 0 && values[count - 1] == trailing)
        --count;
    std::size_t at = 0;
    for (int i = 0; i < count && at < longest; ++i) {
        char room[decimal_room];
        const auto bits = static_cast<unsigned int>(values[i]);
        char *item = write_decimal(room, values[i] < 0, values[i] < 0 ? 0 - bits : bits);
        if (i != 0)
            *--item = ',';
        for (; *item != '\0' && at < longest; ++item)
            text[at++] = *item;
    }
    return at;
}

int append_int(Element parent, const char *name, int value)
{
    const auto bits = static_cast<unsigned int>(value);
    return append_decimal(parent, name, value < 0, value < 0 ? 0 - bits : bits);
}

int append_unsigned(Element parent, const char *name, unsigned int value)
{
    return append_decimal(parent, name, false, value);
}

int append_longlong(Element parent, const char *name, long long value)
{
    const auto bits = static_cast<std::uint64_t>(value);
    return append_decimal(parent, name, value < 0, value < 0 ? 0 - bits : bits);
}

int append_unsignedlonglong(Element parent, const char *name, unsigned long long value)
{
    return append_decimal(parent, name, false, value);
}

int append_float(Element parent, const char *name, float value)
{
    char text[32];
    char *end = text + sizeof text - 1;
    *end = '\0';
    if (const char *first = for_size ? nullptr : write_short_float(end, value))
        return append_plain(parent, name, first, static_cast<std::size_t>(end - first));
    char *const printed = gcvt(static_cast<double>(value), 8, text);
    const char point = decimal_point();
    if (point != '.') {
        if (char *found = std::strchr(printed, point))
            *found = '.';
    }
    return append_text(parent, name, printed);
}

} // namespace netpublic
