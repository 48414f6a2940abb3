// The log filter. Compiled with exceptions, like tree.cpp: it takes memory by itself.
#include <net_public.h>

#include <climits>
#include <cstring>
#include <string>
#include <vector>

namespace {

struct Secret {
    unsigned char length;
    char name[15];

    template <std::size_t Size> constexpr Secret(const char (&text)[Size]) : length(Size - 1), name{}
    {
        for (std::size_t i = 0; i < Size; ++i)
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
    for (unsigned int left = by_letter.kinds_of[*tag - 'a']; left != 0; left &= left - 1) {
        const unsigned int kind = static_cast<unsigned int>(__builtin_ctz(left));
        const Secret &secret = secrets[kind];
        if (end - tag > secret.length && tag[secret.length] == '>' && std::memcmp(tag, secret.name, secret.length) == 0)
            return kind;
    }
    return kinds;
}

// The tags of the secrets in a text, chained by kind in the order of the text.
class SecretTags {
public:
    explicit SecretTags(const std::string &text)
    {
        for (unsigned int kind = 0; kind < kinds; ++kind)
            first_[kind] = last_[kind] = none;
        const char *end = text.c_str() + text.size();
        for (std::size_t at = 0; (at = text.find('<', at)) != std::string::npos; ++at) {
            const char *tag = &text[at + 1];
            const unsigned int kind = find_kind(*tag == '/' ? tag + 1 : tag, end);
            if (kind < kinds)
                add(kind, static_cast<unsigned int>(at));
        }
    }

    // Masks the content of one kind: from an open tag to the next close tag, over open tags between
    // them; an open tag without a close tag is left alone.
    void mask(char *text, unsigned int kind) const
    {
        const unsigned int tag_length = secrets[kind].length + 2u;
        unsigned int content = none;
        for (unsigned int i = first_[kind]; i != none; i = tags_[i].next) {
            const unsigned int at = tags_[i].at;
            if (text[at] != '<')
                continue; // lies in the masked content of an earlier kind
            const bool closes = text[at + 1] == '/';
            if (!closes && content == none) {
                content = at + tag_length;
            } else if (closes && content != none) {
                std::memset(text + content, '*', at - content);
                content = none;
            }
        }
    }

private:
    static constexpr unsigned int none = UINT_MAX;

    struct Tag {
        unsigned int at;   // position of its '<'
        unsigned int next; // the next tag of the same kind
    };

    void add(unsigned int kind, unsigned int at)
    {
        const unsigned int index = static_cast<unsigned int>(tags_.size());
        tags_.push_back({at, none});
        if (last_[kind] == none)
            first_[kind] = index;
        else
            tags_[last_[kind]].next = index;
        last_[kind] = index;
    }

    unsigned int first_[kinds];
    unsigned int last_[kinds];
    std::vector<Tag> tags_;
};

} // namespace

// Equals net_xml_filter() for one kind after the other. Tags cannot overlap and masking makes no new
// ones, so that they are looked for once, and only what is masked depends on the order of the kinds.
const char *net_xml_printf_filter(const char *xml)
{
    static std::string printf_result_string;
    try {
        printf_result_string = xml != nullptr ? xml : "";
        const SecretTags tags(printf_result_string);
        for (unsigned int kind = 0; kind < kinds; ++kind)
            tags.mask(&printf_result_string[0], kind);
        return printf_result_string.c_str();
    } catch (...) {
        return ""; // rather nothing than something unmasked
    }
}

void net_xml_filter(std::string &text, std::string openTag, std::string closeTag)
{
    for (std::size_t at = text.find(openTag); at != std::string::npos; at = text.find(openTag, at + 1)) {
        const std::size_t close = text.find(closeTag, at);
        if (close == std::string::npos)
            return; // nor has any later open tag a close tag
        at += openTag.size();
        if (close > at)
            text.replace(at, close - at, close - at, '*');
    }
}
