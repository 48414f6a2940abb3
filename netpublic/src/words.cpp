#include "words.h"

#include <cstring>

namespace netpublic {

bool same_folded(const char *a, const char *b, std::size_t length)
{
    for (std::size_t i = 0; i < length; ++i) {
        if (fold(a[i]) != fold(b[i]))
            return false;
        if (a[i] == '\0')
            break;
    }
    return true;
}

bool contains_folded(const char *text, const char *word)
{
    if (*word == '\0')
        return true;
    const int first = fold(*word);
    for (; *text != '\0'; ++text)
        if (fold(*text) == first && same_folded(text + 1, word + 1, std::strlen(word + 1)))
            return true;
    return false;
}

const WordTable::Entry *find_prefix(const WordTable &table, const char *text, std::size_t length)
{
    for (const auto &entry : table)
        if (entry.use != Use::write && same_folded(text, table.text(entry), length))
            return &entry;
    return nullptr;
}

const WordTable::Entry *find_whole(const WordTable &table, const char *text, bool exact)
{
    for (const auto &entry : table) {
        const char *word = table.text(entry);
        const std::size_t whole = entry.length + std::size_t{1}; // the terminator is part of the comparison
        if (entry.use != Use::write && (exact ? std::strcmp(text, word) == 0 : same_folded(text, word, whole)))
            return &entry;
    }
    return nullptr;
}

const char *word_of(const WordTable &table, int code)
{
    for (const auto &entry : table)
        if (entry.use != Use::read && entry.code == code)
            return table.text(entry);
    return nullptr;
}

int mask_in(const WordTable &table, const char *text)
{
    int mask = 0;
    for (const auto &entry : table)
        if (entry.use != Use::write && contains_folded(text, table.text(entry)))
            mask |= entry.code;
    return mask;
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
        if (entry.use == Use::read || (mask & entry.code) == 0)
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
