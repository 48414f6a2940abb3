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

// The tags of the secrets in a text, chained by kind in the order of the text. Tags cannot overlap and masking makes
// no new ones, so that they are looked for once, and only what is masked depends on the order of the kinds.
class SecretTags {
public:
    SecretTags() = default;
    SecretTags(const SecretTags &) = delete;
    SecretTags &operator=(const SecretTags &) = delete;
    ~SecretTags()
    {
        ::operator delete(tags_);
    }

    // Throws when memory is short.
    void find(const char *text, const char *end)
    {
        for (const char *at = text;; ++at) {
            at = static_cast<const char *>(std::memchr(at, '<', static_cast<std::size_t>(end - at)));
            if (at == nullptr)
                return;
            const unsigned int kind = find_kind(at[1] == '/' ? at + 2 : at + 1, end);
            if (kind < kinds)
                add(kind, static_cast<unsigned int>(at - text));
        }
    }

    // Masks the content of one kind: from an open tag to the next close tag, over open tags between
    // them; an open tag without a close tag is left alone.
    void mask(char *text, unsigned int kind) const
    {
        char *content = nullptr;
        for (unsigned int i = first_[kind]; i != 0; i = tags_[i - 1].next) {
            // NOLINTNEXTLINE(clang-analyzer-core.*): what has a number has been added
            char *at = text + tags_[i - 1].at;
            if (*at != '<')
                continue; // lies in the masked content of an earlier kind
            const bool closes = at[1] == '/';
            if (!closes && content == nullptr) {
                content = at + secrets[kind].length + 2;
            } else if (closes && content != nullptr) {
                std::memset(content, '*', static_cast<std::size_t>(at - content));
                content = nullptr;
            }
        }
    }

private:
    struct Tag {
        unsigned int at;   // position of its '<'
        unsigned int next; // the next tag of the same kind
    };

    void add(unsigned int kind, unsigned int at)
    {
        if (count_ == room_)
            grow();
        tags_[count_++] = {at, 0};
        (first_[kind] == 0 ? first_[kind] : tags_[last_[kind] - 1].next) = count_;
        last_[kind] = count_;
    }

    void grow()
    {
        const unsigned int room = 2 * room_ + 16;
        auto *tags = static_cast<Tag *>(::operator new(room * sizeof(Tag)));
        if (count_ != 0)
            std::memcpy(tags, tags_, count_ * sizeof(Tag));
        ::operator delete(tags_);
        tags_ = tags;
        room_ = room;
    }

    // Tags are counted from 1; 0 is none.
    unsigned int first_[kinds] = {};
    unsigned int last_[kinds] = {};
    Tag *tags_ = nullptr;
    unsigned int count_ = 0;
    unsigned int room_ = 0;
};

// The result of net_xml_printf_filter(). It grows as it must, and lasts as long as the library.
char *printf_result = nullptr;
std::size_t printf_result_room = 0;

// Throws when memory is short, and then changes nothing.
void make_room(std::size_t size)
{
    auto *room = static_cast<char *>(size != 0 ? ::operator new(size) : nullptr);
    ::operator delete(printf_result);
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
        SecretTags tags;
        tags.find(printf_result, printf_result + length);
        for (unsigned int kind = 0; kind < kinds; ++kind)
            tags.mask(printf_result, kind);
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
