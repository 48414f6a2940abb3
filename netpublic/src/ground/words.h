// Word tables: the spellings of a field's codes. A table is packed into one block without pointers,
// so that it costs a shared library no load-time relocations.
#ifndef NETPUBLIC_WORDS_H
#define NETPUBLIC_WORDS_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace netpublic {

// Which direction a spelling serves. One of `whole` serves both, but its beginnings do not stand for it.
enum class Use : std::uint8_t { both, read, write, whole };

// One spelling, as the author of a table writes it.
struct Word {
    int code;
    const char *text;
    Use use = Use::both;
};

using PackedCode = std::uint16_t;
constexpr unsigned text_bits = 9, length_bits = 5;
struct PackedWord {
    PackedCode packed;
    std::uint16_t text : text_bits; // offset behind the entries
    std::uint16_t length : length_bits;
    Use use : 2;
};

// Codes are small numbers or bits: where there is no room for all of a code, its low bits say how far the number
// above them is shifted.
constexpr unsigned shift_bits = 5, shift_mask = (1u << shift_bits) - 1;

constexpr PackedCode pack(int code)
{
    const auto bits = static_cast<unsigned int>(code);
    const unsigned shift = bits >> (16 - shift_bits) != 0 ? static_cast<unsigned int>(__builtin_ctz(bits)) : 0;
    return static_cast<PackedCode>((bits >> shift) << shift_bits | shift);
}
constexpr int unpack(PackedCode packed)
{
    const auto bits = static_cast<unsigned int>(packed);
    return static_cast<int>(bits >> shift_bits << (bits & shift_mask));
}

// A packed table; the entries and then the spellings follow it in memory.
struct WordTable {
    struct Entry : PackedWord {
        constexpr int code() const
        {
            return unpack(packed);
        }
    };

    std::make_unsigned_t<PackedCode> count;

    const Entry *begin() const
    {
        return reinterpret_cast<const Entry *>(this + 1);
    }
    const Entry *end() const
    {
        return begin() + count;
    }
    const char *text(const Entry &entry) const
    {
        return reinterpret_cast<const char *>(end()) + entry.text;
    }
};

template <std::size_t Count, std::size_t Characters> struct PackedWords {
    WordTable head;
    WordTable::Entry entries[Count];
    char pool[Characters];

    constexpr operator const WordTable &() const
    {
        return head;
    }
};

constexpr std::size_t length_of(const char *text)
{
    std::size_t length = 0;
    while (text[length] != '\0')
        ++length;
    return length;
}

template <std::size_t Count> constexpr std::size_t characters_of(const Word (&list)[Count])
{
    std::size_t characters = 0;
    for (const Word &word : list)
        characters += length_of(word.text) + 1;
    return characters;
}

void words_do_not_fit(); // no constant: what meets it does not compile

// Packs a list of spellings: constexpr Word list[] = {{0, "PAL"}, {1, "NTSC"}};
//                            constexpr auto norms = words<list>();
template <const auto &list> constexpr auto words()
{
    constexpr std::size_t count = sizeof(list) / sizeof(list[0]);
    static_assert(characters_of(list) <= 1u << text_bits, "the offsets do not fit");
    PackedWords<count, characters_of(list)> packed{};
    packed.head.count = count;
    std::size_t at = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t length = length_of(list[i].text);
        packed.entries[i].packed = pack(list[i].code);
        packed.entries[i].text = at & ((1u << text_bits) - 1);
        packed.entries[i].length = length & ((1u << length_bits) - 1);
        if (packed.entries[i].code() != list[i].code || packed.entries[i].length != length)
            words_do_not_fit();
        packed.entries[i].use = list[i].use;
        for (const char *from = list[i].text; *from != '\0'; ++from)
            packed.pool[at++] = *from;
        packed.pool[at++] = '\0';
    }
    return packed;
}

// Comparisons without regard to the case of ASCII letters, whatever the locale.
constexpr int fold(char c)
{
    return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c;
}
// False for two characters that differ, case aside; true for some of those, too: a test in front of a comparison.
constexpr bool alike(char a, char b)
{
    return ((a ^ b) & ~('a' - 'A')) == 0;
}
// Whether the first `length` characters agree, or all of them up to a common end.
bool same_folded(const char *a, const char *b, std::size_t length);
// Whether the word occurs anywhere in the text; the empty word always does.
bool contains_folded(const char *text, const char *word);

// The first spelling that begins with the given `length` characters, case aside; null without one.
// The empty text finds the first spelling that has beginnings.
const WordTable::Entry *find_prefix(const WordTable &table, const char *text, std::size_t length);

// The spelling that equals the whole text; `exact` regards case.
const WordTable::Entry *find_whole(const WordTable &table, const char *text, bool exact = false);

// The spelling that is written for a code; null when the table has none.
const char *word_of(const WordTable &table, int code);

// The spellings among the table's first 32 that the text contains anywhere, case aside: bit i stands for entry
// i. What is only written is not looked for.
constexpr unsigned most_searched_words = 32;
std::uint32_t words_in(const WordTable &table, const char *text);

// The codes of such spellings, OR-ed together.
int codes_of(const WordTable &table, std::uint32_t found);
int mask_in(const WordTable &table, const char *text);

// Writes the spellings of the set bits, joined by commas, or "none"; cut at size - 1 characters.
void write_mask(const WordTable &table, int mask, char *text, std::size_t size);

} // namespace netpublic

#endif
