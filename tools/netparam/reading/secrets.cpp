#include "reading/secrets.h"

#include "model/text.h"
#include "reading/masker.h"

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

std::string masked(const std::string &text)
{
    std::string out;
    Masker masker;
    masker.feed(text, out);
    masker.finish(out);
    return out;
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
        text = replaced(text, secret, hidden);
    return text;
}

} // namespace netparam
