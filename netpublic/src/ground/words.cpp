#include "ground/words.h"

#include "ground/for_size.h"

#include <cstring>

namespace netpublic {

bool same_folded(const char *a, const char *b, std::size_t length)
{
    for (std::size_t i = 0; i < length; ++i) {
        if (a[i] != b[i] && fold(a[i]) != fold(b[i]))
            return false;
        if (a[i] == '\0')
            break;
    }
    return true;
}

bool contains_folded(const char *text, const char *word)
{
    const std::size_t length = std::strlen(word);
    for (; *text != '\0'; ++text)
        if (alike(*text, *word) && same_folded(text, word, length))
            return true;
    return length == 0;
}

// same_folded(). Most texts are spelled as the words are.
static bool is_alike(const char *text, const char *word, std::size_t length)
{
    return (!for_size && std::strncmp(text, word, length) == 0) || same_folded(text, word, length);
}

const WordTable::Entry *find_prefix(const WordTable &table, const char *text, std::size_t length)
{
    for (const auto &entry : table) {
        const char *word = table.text(entry);
        if ((length != 0 && !alike(*text, *word)) || entry.use == Use::write)
            continue;
        if (length != 0 && !is_alike(text, word, length))
            continue;
        if (entry.use != Use::whole || entry.length == length)
            return &entry;
    }
    return nullptr;
}

const WordTable::Entry *find_whole(const WordTable &table, const char *text, bool exact)
{
    const std::size_t length = std::strlen(text);
    for (const auto &entry : table) {
        if (entry.length != length || entry.use == Use::write)
            continue;
        const char *word = table.text(entry);
        if (exact ? std::memcmp(text, word, length) == 0 : is_alike(text, word, length))
            return &entry;
    }
    return nullptr;
}

const char *word_of(const WordTable &table, int code)
{
    const PackedCode packed = pack(code);
    if (unpack(packed) != code)
        return nullptr; // no table has it
    for (const auto &entry : table)
        if (entry.packed == packed && entry.use != Use::read)
            return table.text(entry);
    return nullptr;
}

// One word after the other.
[[maybe_unused]] static std::uint32_t words_one_by_one(const WordTable &table, const char *text)
{
    std::uint32_t found = 0;
    std::uint32_t bit = 1;
    for (const auto &entry : table) {
        if (entry.use != Use::write && contains_folded(text, table.text(entry)))
            found |= bit;
        bit <<= 1;
    }
    return found;
}

std::uint32_t words_in(const WordTable &table, const char *text)
{
    if constexpr (for_size)
        return words_one_by_one(table, text);
    constexpr unsigned letters = 32; // by the low bits of a character, the same for both cases of a letter
    std::uint32_t beginning[letters] = {};
    std::uint32_t found = 0;
    std::uint32_t bit = 1;
    for (const auto &entry : table) {
        if (entry.use != Use::write) {
            if (entry.length == 0)
                found |= bit;
            else
                beginning[static_cast<unsigned char>(*table.text(entry)) % letters] |= bit;
        }
        bit <<= 1;
    }
    for (; *text != '\0'; ++text) {
        std::uint32_t left = beginning[static_cast<unsigned char>(*text) % letters] & ~found;
        for (; left != 0; left &= left - 1) {
            const WordTable::Entry &entry = table.begin()[__builtin_ctz(left)];
            const char *word = table.text(entry);
            if ((entry.length == 1 || alike(text[1], word[1])) && same_folded(text, word, entry.length))
                found |= left & (0 - left);
        }
    }
    return found;
}

int codes_of(const WordTable &table, std::uint32_t found)
{
    int codes = 0;
    for (; found != 0; found &= found - 1)
        codes |= table.begin()[__builtin_ctz(found)].code();
    return codes;
}

int mask_in(const WordTable &table, const char *text)
{
    return codes_of(table, words_in(table, text));
}

void write_mask(const WordTable &table, int mask, char *text, std::size_t size)
{
    if (size == 0)
        return;
    std::size_t at = 0;
    const auto put = [&](const char *from) {
        for (; *from != '\0' && at + 1 < size; ++from)
            text[at++] = *from;
    };
    for (const auto &entry : table) {
        if (entry.use == Use::read || (mask & entry.code()) == 0)
            continue;
        if (at != 0)
            put(",");
        put(table.text(entry));
    }
    if (at == 0)
        put("none");
    text[at] = '\0';
}

} // namespace netpublic
