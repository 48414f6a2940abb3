#include "ground/element.h"
#include "support.h"
#include "toolkit/printed_size.h"
#include "values/values.h"

#include <functional>
#include <random>
#include <string>

namespace {

using netpublic::append_element;
using netpublic::append_longlong;
using netpublic::append_made;
using netpublic::append_plain;
using netpublic::append_root;
using netpublic::append_text;
using netpublic::append_unsignedlonglong;
using netpublic::Element;
using netpublic::Mark;
using netpublic::TextWriter;

using Build = std::function<void(Element parent)>;

// The children that the function appends, as the XML library prints them.
std::string printed(const Build &build)
{
    TiXmlElement parent("parent");
    build(Element(&parent));
    return test::print_children(parent);
}

// The same, written into a buffer of this size between other bytes.
std::string written(const Build &build, std::size_t size, unsigned int *length = nullptr)
{
    constexpr std::size_t margin = 64;
    std::string buffer(size + 2 * margin, '~');
    TextWriter writer(buffer.data() + margin, static_cast<unsigned int>(size));
    build(writer.top());
    const unsigned int whole = writer.finish();
    if (length != nullptr)
        *length = whole;
    EXPECT_EQ(buffer.substr(0, margin) + buffer.substr(margin + size), std::string(2 * margin, '~'));
    const std::size_t end = buffer.find('\0');
    EXPECT_EQ(end, size == 0 ? std::string::npos : margin + std::min<std::size_t>(whole, size - 1));
    return size == 0 ? "" : buffer.substr(margin, end - margin);
}

void expect_same(const Build &build, bool all_sizes)
{
    const std::string expected = printed(build);
    unsigned int length = 0;
    EXPECT_EQ(written(build, expected.size() + 100, &length), expected);
    EXPECT_EQ(length, expected.size());
    for (std::size_t size = 0; all_sizes && size <= expected.size() + 1; ++size) {
        ASSERT_EQ(written(build, size, &length), expected.substr(0, size == 0 ? 0 : size - 1));
        ASSERT_EQ(length, expected.size());
    }
}

// Letters and digits, as many as asked for.
void make_letters(const void *context, char *to, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        to[i] = static_cast<char>('A' + (i + *static_cast<const unsigned int *>(context)) % 26);
}

// Anything in any order, the same for the same start.
class Anything {
public:
    explicit Anything(unsigned int start) : random_(start) {}

    void fill(Element parent, int depth)
    {
        for (unsigned int left = below(6); left > 0; --left)
            append(parent, depth);
    }

private:
    unsigned int below(unsigned int bound)
    {
        return static_cast<unsigned int>(random_() % bound);
    }
    const char *name()
    {
        static const char *const names[] = {
            "a", "bc", "channel", "channelId", "timeBlockList", "anEvenLongerNameThanThat"};
        return names[below(6)];
    }
    std::string text()
    {
        std::string made;
        for (unsigned int left = below(20); left > 0; --left)
            made += below(3) != 0 ? static_cast<char>('a' + below(26)) : static_cast<char>(1 + below(255));
        return made;
    }
    void append(Element parent, int depth)
    {
        const unsigned int kind = below(9);
        if (kind == 0) {
            EXPECT_EQ(append_text(parent, name(), text().c_str()), 0);
        } else if (kind == 1) {
            const std::string all = text();
            EXPECT_EQ(append_text(parent, name(), all.c_str(), below(static_cast<unsigned int>(all.size()) + 1)), 0);
        } else if (kind == 2) {
            const std::string plain = std::to_string(random_());
            EXPECT_EQ(append_plain(parent, name(), plain.c_str(), plain.size()), 0);
        } else if (kind == 3) {
            const auto number = static_cast<long long>(std::uint64_t{random_()} << below(34)) >> below(64);
            EXPECT_EQ(append_longlong(parent, name(), number), 0);
        } else if (kind == 4) {
            const unsigned int start = below(26);
            EXPECT_EQ(append_made(parent, name(), below(200), make_letters, &start), 0);
        } else if (kind == 5) {
            const Mark mark = mark_end(parent);
            fill(parent, depth - 1);
            EXPECT_EQ(remove_since(parent, mark), -1);
        } else if (kind == 6) {
            const Mark mark = mark_end(parent);
            fill(parent, depth - 1);
            EXPECT_EQ(append_unsignedlonglong(parent, "size", printed_since(parent, mark)), 0);
        } else {
            const Element child = kind == 7 ? append_root(parent, name(), "Version") : append_element(parent, name());
            if (depth > 0)
                fill(child, depth - 1);
        }
    }

    std::mt19937 random_;
};

TEST(TextWriter, PrintsAnything)
{
    std::size_t longest = 0;
    for (unsigned int start = 0; start < 500; ++start) {
        const Build build = [&](Element parent) { Anything(start).fill(parent, 5); };
        expect_same(build, start < 30);
        longest = std::max(longest, printed(build).size());
    }
    EXPECT_GT(longest, 2000u);
}

TEST(TextWriter, FailsBeyondItsLevels)
{
    char text[512];
    TextWriter writer(text, sizeof text);
    Element element = writer.top();
    for (int level = 0; level < 7; ++level)
        element = append_element(element, "a");
    EXPECT_EQ(append_longlong(element, "b", INT64_MIN), 0);
    EXPECT_FALSE(append_element(element, "c"));
    EXPECT_FALSE(append_root(element, "c", "version"));
    EXPECT_FALSE(append_element(Element(), "a"));
    EXPECT_EQ(append_text(Element(), "a", "b"), -1);
    EXPECT_EQ(append_longlong(append_element(element, "c"), "d", 0), -1);
    writer.finish();
    EXPECT_EQ(std::string(text).substr(21, 27), "<b>-9223372036854775808</b>");
}

} // namespace
