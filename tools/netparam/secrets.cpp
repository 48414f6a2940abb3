#include "secrets.h"

#include "text.h"

#include <tinyxml.h>

#include <algorithm>

namespace netparam {
namespace {

bool is_upper(char c)
{
    return c >= 'A' && c <= 'Z';
}

// "refreshToken" is "refresh" and "token".
std::vector<std::string> humps(std::string_view name)
{
    std::vector<std::string> words(1);
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool starts = is_upper(name[i]) && i > 0 && !is_upper(name[i - 1]);
        if (starts || name[i] == '_' || name[i] == '-')
            words.emplace_back();
        if (name[i] != '_' && name[i] != '-')
            words.back() += name[i];
    }
    for (std::string &word : words)
        word = lower(word);
    return words;
}

bool ends_with(const std::string &text, std::string_view end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool is_blank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

struct Range {
    std::size_t begin, end;
};

// Behind the tag's '>', or the text's end. Collects the values of secret attributes.
std::size_t read_tag(const std::string &text, std::size_t at, std::vector<Range> &found)
{
    while (at < text.size() && text[at] != '>') {
        const std::size_t name = at;
        while (at < text.size() && text[at] != '=' && text[at] != '>' && !is_blank(text[at]))
            ++at;
        const std::size_t name_end = at;
        while (at < text.size() && is_blank(text[at]))
            ++at;
        if (at >= text.size() || text[at] != '=')
            continue;
        ++at;
        while (at < text.size() && is_blank(text[at]))
            ++at;
        if (at >= text.size() || text[at] == '>')
            continue;
        const bool is_quoted = text[at] == '"' || text[at] == '\'';
        const std::size_t value = is_quoted ? at + 1 : at;
        if (is_quoted)
            at = std::min(text.find(text[at], value), text.size());
        else
            while (at < text.size() && text[at] != '>' && !is_blank(text[at]))
                ++at;
        if (may_be_secret(std::string_view(text).substr(name, name_end - name)))
            found.push_back({value, at});
        if (is_quoted && at < text.size())
            ++at;
    }
    return std::min(at + 1, text.size());
}

std::vector<Range> secret_ranges(const std::string &text)
{
    std::vector<Range> found;
    for (std::size_t at = text.find('<'); at != std::string::npos && at + 1 < text.size(); at = text.find('<', at)) {
        std::size_t end = ++at;
        while (end < text.size() && text[end] != '>' && text[end] != '/' && !is_blank(text[end]))
            ++end;
        const std::string name = text.substr(at, end - at);
        if (name.empty() || name[0] == '!' || name[0] == '?')
            continue;
        const std::size_t content = read_tag(text, end, found);
        at = content;
        if (!may_be_secret(name) || (content >= 2 && text[content - 2] == '/'))
            continue;
        const std::size_t close = std::min(text.find("</" + name, content), text.size());
        if (close > content)
            found.push_back({content, close});
        at = close;
    }
    return found;
}

} // namespace

bool is_secret(std::string_view name)
{
    const std::vector<std::string> words = humps(name);
    for (const char *harmless : {"valid", "enable", "type", "mode", "len", "length", "size", "count", "num"})
        if (words.back() == harmless)
            return false;
    for (const std::string &word : words)
        for (const char *secret : {"password", "passwd", "pwd", "token", "signature", "nonce", "secret"})
            if (word == secret)
                return true;
    const std::string &last = words.back();
    if (ends_with(last, "key") || ends_with(last, "password") || ends_with(last, "token"))
        return true;
    return last == "code" && (words.size() == 1 || words.front() != "country");
}

bool may_be_secret(std::string_view element)
{
    if (is_secret(element))
        return true;
    const std::string name = lower(std::string(element));
    for (const std::string_view key : {"password", "token", "key", "nonce", "code", "signature"})
        if (!name.empty() && key.substr(0, name.size()) == name)
            return true;
    return false;
}

std::string masked(std::string text)
{
    for (const Range &range : secret_ranges(text))
        for (std::size_t i = range.begin; i < range.end; ++i)
            if (text[i] != '\n' && text[i] != '\r')
                text[i] = '*';
    return text;
}

static void collect(const TiXmlNode &tree, std::vector<std::string> &secrets)
{
    for (const TiXmlElement *child = tree.FirstChildElement(); child != nullptr; child = child->NextSiblingElement()) {
        const char *text = child->GetText();
        if (text != nullptr && *text != '\0' && may_be_secret(child->ValueStr()))
            secrets.emplace_back(text);
        collect(*child, secrets); // as deep as the text may be nested
    }
}

std::vector<std::string> secrets_in(const TiXmlNode &tree)
{
    std::vector<std::string> secrets;
    collect(tree, secrets);
    // The longest first, so that none is taken apart by a part of it.
    std::sort(secrets.begin(), secrets.end(),
              [](const std::string &a, const std::string &b) { return a.size() > b.size(); });
    return secrets;
}

std::string without(std::string text, const std::vector<std::string> &secrets)
{
    for (const std::string &secret : secrets)
        for (std::size_t at = text.find(secret); at != std::string::npos; at = text.find(secret, at)) {
            text.replace(at, secret.size(), hidden);
            at += sizeof hidden - 1;
        }
    return text;
}

} // namespace netparam
