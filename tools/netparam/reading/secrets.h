// What must not be shown: passwords, tokens, keys, signatures, nonces and codes.
#ifndef NETPARAM_SECRETS_H
#define NETPARAM_SECRETS_H

#include <string>
#include <string_view>
#include <vector>

class TiXmlNode;

namespace netparam {

constexpr char hidden[] = "********";

// Does a field of this name hold a secret? Works on names in camel case: "authCode" does, "encodeType" not.
bool is_secret(std::string_view name);

// Could an element of this name be read as a secret field? Elements may be named by the beginning of a key.
bool may_be_secret(std::string_view element);

// The text with the content of such elements and attributes starred out. Length and lines stay.
std::string masked(const std::string &text);

// The texts of such elements, for the library's log lines.
std::vector<std::string> secrets_in(const TiXmlNode &tree);

// Replaces every occurrence of the secrets.
std::string without(std::string text, const std::vector<std::string> &secrets);

} // namespace netparam

#endif
