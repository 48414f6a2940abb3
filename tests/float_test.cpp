// Floats on the wire: short ones are converted by the library itself, and must come out as the C library's. Typed ones:
// tests/cases/xml_public.txt.
#include "support.h"

#include <net_xml_public.h>

#include <cstdlib>
#include <cstring>
#include <random>

namespace {

std::string written(float value)
{
    TiXmlElement parent("p");
    EXPECT_EQ(InsertChildToXmlElement_float(&parent, "v", value, 0, 0), 0);
    return parent.FirstChildElement()->GetText();
}

unsigned int bits_of(float value)
{
    unsigned int bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

float float_of(unsigned int bits)
{
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

void expect_same(float value)
{
    char text[64];
    gcvt(static_cast<double>(value), 8, text);
    EXPECT_EQ(written(value), text) << bits_of(value);
    TiXmlElement element("v");
    element.LinkEndChild(new TiXmlText(text));
    float read = 0;
    EXPECT_EQ(get_float_from_xmlnode(&read, &element, nullptr), 0);
    EXPECT_EQ(bits_of(read), bits_of(static_cast<float>(std::atof(text)))) << text;
}

// At the borders of what has a path of its own, and all over the range.
TEST(FloatText, EqualsTheCLibrarys)
{
    for (const float border : {1e-4F, 1e-3F, 0.1F, 1.0F, 10.0F, 8388608.0F, 16777216.0F, 1e7F, 1e8F})
        for (unsigned int bits = bits_of(border) - 20; bits < bits_of(border) + 20; ++bits) {
            expect_same(float_of(bits));
            expect_same(-float_of(bits));
        }
    std::mt19937 generator(1);
    const auto random = [&] { return static_cast<unsigned int>(generator()); };
    for (int i = 0; i < 20000; ++i) {
        expect_same(float_of(bits_of(1e-5F) + random() % (bits_of(1e9F) - bits_of(1e-5F))));
        expect_same(static_cast<float>(random() % 2000000) / 1000.0F - 1000.0F);
    }
}

} // namespace
