#include "values.h"

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

// As many digits always fit 32 and 64 bits; longer numbers are left to the C library, whose result
// for what does not fit depends on the platform.
constexpr int safe_digits = 9;
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

// Is the node's text a decimal number of 1 to `longest` characters?
bool read_decimal(Decimal &number, int longest, const TiXmlNode *node)
{
    const char *text = text_of(node);
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

double to_double(const char *text)
{
    const char point = decimal_point();
    if (point == '.')
        return std::atof(text);
    char local[64]; // more characters than a float has
    std::size_t at = 0;
    for (; text[at] != '\0' && text[at] != point && at + 1 < sizeof local; ++at)
        local[at] = text[at] == '.' ? point : text[at];
    local[at] = '\0';
    return std::atof(local);
}

// Writes the decimal digits in front of `end`. Returns the first of them.
char *write_digits(char *end, std::uint64_t magnitude)
{
    std::uint32_t low;
    while (magnitude > UINT32_MAX) { // 32-bit divisions are cheaper on the target
        *--end = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    }
    low = static_cast<std::uint32_t>(magnitude);
    do {
        *--end = static_cast<char>('0' + low % 10);
        low /= 10;
    } while (low != 0);
    return end;
}

void append_decimal(TiXmlElement *parent, const char *name, bool negative, std::uint64_t magnitude)
{
    char text[24]; // 20 digits, a sign and the terminator
    char *end = text + sizeof text - 1;
    *end = '\0';
    char *first = write_digits(end, magnitude);
    if (negative)
        *--first = '-';
    append_text(parent, name, first);
}

} // namespace

int read_int(int *value, const TiXmlNode *node)
{
    Decimal number;
    if (!read_decimal(number, int_characters, node))
        return -1;
    *value = number.digits <= safe_digits ? static_cast<int>(number.value()) : std::atoi(number.text);
    return 0;
}

int read_flag(int *value, const TiXmlNode *node)
{
    Decimal number;
    if (!read_decimal(number, flag_characters, node))
        return -1;
    *value = static_cast<int>(number.value());
    return static_cast<unsigned int>(*value) > 1 ? -1 : 0;
}

int read_unsigned(unsigned int *value, const TiXmlNode *node)
{
    Decimal number;
    if (!read_decimal(number, unsigned_characters, node))
        return -1;
    *value = static_cast<unsigned int>(number.digits <= safe_digits ? number.value()
                                                                    : std::strtoul(number.text, nullptr, 10));
    return 0;
}

int read_int64(long long *value, const TiXmlNode *node)
{
    Decimal number;
    if (!read_decimal(number, int64_characters, node))
        return -1;
    *value = static_cast<long long>(number.value());
    return 0;
}

int read_longlong(long long *value, const TiXmlNode *node)
{
    Decimal number;
    if (!read_decimal(number, longlong_characters, node))
        return -1;
    *value = number.digits <= safe_digits64 ? static_cast<long long>(number.value())
                                            : std::strtoll(number.text, nullptr, 10);
    return 0;
}

int read_unsignedlonglong(unsigned long long *value, const TiXmlNode *node)
{
    Decimal number;
    if (!read_decimal(number, unsignedlonglong_characters, node))
        return -1;
    *value = number.digits <= safe_digits64 ? number.value() : std::strtoull(number.text, nullptr, 10);
    return 0;
}

int read_float(float *value, const TiXmlNode *node)
{
    const char *text = text_of(node);
    if (text == nullptr)
        return -1;
    *value = static_cast<float>(to_double(text));
    return 0;
}

int view_text(const char **text, std::size_t longest, const TiXmlNode *node)
{
    if (!is_element(node))
        return -1;
    const char *found = text_of(node);
    if (found == nullptr)
        found = "";
    if (std::strlen(found) > longest)
        return -1;
    *text = found;
    return 0;
}

int read_text(char *text, std::size_t size, const TiXmlNode *node)
{
    std::memset(text, 0, size);
    if (!is_element(node))
        return -1;
    const char *found = text_of(node);
    if (found == nullptr)
        return 0;
    const std::size_t length = std::strlen(found);
    if (length >= size)
        return -1;
    std::memcpy(text, found, length);
    return 0;
}

TiXmlElement *append_element(TiXmlElement *parent, const char *name)
{
    auto *element = new TiXmlElement(name);
    parent->LinkEndChild(element);
    return element;
}

void append_text(TiXmlElement *parent, const char *name, const char *text)
{
    append_element(parent, name)->LinkEndChild(new TiXmlText(text));
}

void append_int(TiXmlElement *parent, const char *name, int value)
{
    const auto bits = static_cast<unsigned int>(value);
    append_decimal(parent, name, value < 0, value < 0 ? 0 - bits : bits);
}

void append_unsigned(TiXmlElement *parent, const char *name, unsigned int value)
{
    append_decimal(parent, name, false, value);
}

void append_longlong(TiXmlElement *parent, const char *name, long long value)
{
    const auto bits = static_cast<std::uint64_t>(value);
    append_decimal(parent, name, value < 0, value < 0 ? 0 - bits : bits);
}

void append_unsignedlonglong(TiXmlElement *parent, const char *name, unsigned long long value)
{
    append_decimal(parent, name, false, value);
}

void append_float(TiXmlElement *parent, const char *name, float value)
{
    char text[32];
    gcvt(static_cast<double>(value), 8, text);
    const char point = decimal_point();
    if (point != '.') {
        if (char *found = std::strchr(text, point))
            *found = '.';
    }
    append_text(parent, name, text);
}

} // namespace netpublic
