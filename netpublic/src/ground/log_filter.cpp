// The log filter. Compiled with exceptions, like tree.cpp: it takes memory by itself.
#include "ground/for_size.h"

#include <net_public.h>

#include <cstring>
#include <new>
#include <string>
#include <string_view>

namespace {

struct Secret {
    unsigned char length;
    char name[13]; // without a terminator

    template <std::size_t Size> constexpr Secret(const char (&text)[Size]) : length(Size - 1), name{}
    {
        for (std::size_t i = 0; i + 1 < Size; ++i)
            name[i] = text[i];
    }
};

// The elements whose content is masked, one kind after the other in this order: a kind does not see
// the tags that an earlier kind has masked.
constexpr Secret secrets[] = {"password",     "key",     "authToken", "authSignature", "refreshToken", "accessToken",
                              "clientSecret", "mac",     "ip",        "accessKey",     "secretKey",    "ipAddress",
                              "macAddress",   "gateway", "mask",      "dns1",          "dns2"};
constexpr unsigned int kinds = sizeof(secrets) / sizeof(secrets[0]);

struct SecretsByLetter {
    unsigned int kinds_of[26]; // bit set of the kinds whose name begins with the letter
};

constexpr SecretsByLetter sort_by_letter()
{
    SecretsByLetter sorted{};
    for (unsigned int kind = 0; kind < kinds; ++kind)
        sorted.kinds_of[secrets[kind].name[0] - 'a'] |= 1u << kind;
    return sorted;
}

constexpr SecretsByLetter by_letter = sort_by_letter();

// The kind of the tag whose name begins at a position; `kinds` when it is none of the secrets.
unsigned int find_kind(const char *tag, const char *end)
{
    if (*tag < 'a' || *tag > 'z')
        return kinds;
    unsigned int left = (1u << kinds) - 1;
    if constexpr (!netpublic::for_size)
        left = by_letter.kinds_of[*tag - 'a'];
    for (; left != 0; left &= left - 1) {
        const unsigned int kind = static_cast<unsigned int>(__builtin_ctz(left));
        const Secret &secret = secrets[kind];
        if (end - tag > secret.length && tag[secret.length] == '>' && std::memcmp(tag, secret.name, secret.length) == 0)
            return kind;
    }
    return kinds;
}

// The next tag of a secret, from a position on, and its kind; null when there is none.
const char *find_tag(const char *at, const char *end, unsigned int &kind)
{
    for (; (at = static_cast<const char *>(std::memchr(at, '<', static_cast<std::size_t>(end - at)))) != nullptr;
         ++at) {
        kind = find_kind(at[1] == '/' ? at + 2 : at + 1, end);
        if (kind < kinds)
            return at;
    }
    return nullptr;
}

struct Tag {
    unsigned int at; // position of its '<'
    unsigned int kind;
};

// Masks the content of one kind: from an open tag to the next close tag, over open tags between
// them; an open tag without a close tag is left alone.
void mask(char *text, const Tag *tags, unsigned int count, unsigned int kind)
{
    char *content = nullptr;
    for (const Tag *tag = tags; tag != tags + count; ++tag) {
        char *at = text + tag->at;
        if (tag->kind != kind || *at != '<')
            continue; // of another kind, or in the masked content of an earlier one
        const bool closes = at[1] == '/';
        if (!closes && content == nullptr) {
            content = at + secrets[kind].length + 2;
        } else if (closes && content != nullptr) {
            std::memset(content, '*', static_cast<std::size_t>(at - content));
            content = nullptr;
        }
    }
}

// Tags cannot overlap and masking makes no new ones, so that they are looked for once, and only what is masked
// depends on the order of the kinds. Throws when memory is short.
void mask_secrets(char *text, const char *end)
{
    unsigned int count = 0, kind = 0, present = 0; // present: a bit for each kind
    for (const char *at = text; (at = find_tag(at, end, kind)) != nullptr; ++at) {
        present |= 1u << kind;
        ++count;
    }
    if (count == 0)
        return;
    const std::size_t size = count * sizeof(Tag);
    auto *tags = static_cast<Tag *>(::operator new(size));
    Tag *last = tags;
    for (const char *at = text; (at = find_tag(at, end, kind)) != nullptr; ++at)
        *last++ = {static_cast<unsigned int>(at - text), kind};
    for (; present != 0; present &= present - 1)
        mask(text, tags, count, static_cast<unsigned int>(__builtin_ctz(present)));
    ::operator delete(tags, size);
}

// The result of net_xml_printf_filter(). It grows as it must, and lasts as long as the library.
char *printf_result = nullptr;
std::size_t printf_result_room = 0;

// Throws when memory is short, and then changes nothing.
void make_room(std::size_t size)
{
    auto *room = static_cast<char *>(size != 0 ? ::operator new(size) : nullptr);
    ::operator delete(printf_result, printf_result_room);
    printf_result = room;
    printf_result_room = size;
}

[[gnu::destructor]] void give_back()
{
    make_room(0);
}

} // namespace

// Equals net_xml_filter() for one kind after the other.
const char *net_xml_printf_filter(const char *xml)
{
    if (xml == nullptr)
        return "";
    const std::size_t length = std::strlen(xml);
    try {
        if (length >= printf_result_room)
            make_room(length + 1);
        std::memmove(printf_result, xml, length + 1); // it may be an earlier result
        mask_secrets(printf_result, printf_result + length);
        return printf_result;
    } catch (...) {
        return ""; // rather nothing than something unmasked
    }
}

void net_xml_filter(std::string &text, std::string openTag, std::string closeTag)
{
    // As views they bring nothing of the library's strings along.
    const std::string_view whole(text), open(openTag), close(closeTag);
    for (std::size_t at = whole.find(open); at != whole.npos; at = whole.find(open, at + 1)) {
        const std::size_t end = whole.find(close, at);
        if (end == whole.npos)
            return; // nor has any later open tag a close tag
        at += open.size();
        if (end > at)
            std::memset(&text[at], '*', end - at);
    }
}
