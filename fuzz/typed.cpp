#include "typed.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <regex>

namespace fuzz {
namespace {

constexpr int none = -1;

// From `at` up to the end, or to the brace that closes a repetition: the `place`-th one, none outside.
std::string bytes_from(const std::string &typed, std::size_t &at, int place)
{
    static const std::string letters = "nrt0s", meant("\n\r\t\0 ", letters.size());
    std::string text;
    while (at < typed.size() && (typed[at] != '}' || place == none)) {
        const char first = typed[at++], second = typed[at];
        if (first == '{' && std::isdigit(second) != 0) {
            const std::size_t one = typed.find('*', at) + 1;
            const int times = std::stoi(typed.substr(at, one - at));
            for (int i = 0; i < times; ++i)
                text += bytes_from(typed, at = one, i);
            ++at;
        } else if (first == '@' && place != none) {
            text += std::to_string(place);
        } else if (first == '\\' && second == 'x') {
            text += static_cast<char>(std::stoi(typed.substr(at + 1, 2), nullptr, 16));
            at += 3;
        } else if (first == '\\') {
            const std::size_t letter = letters.find(second);
            text += letter != std::string::npos ? meant[letter] : second;
            ++at;
        } else {
            text += first;
        }
    }
    return text;
}

std::string part(const std::string &line)
{
    const std::string text = trimmed(line);
    const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return expanded(quoted ? text.substr(1, text.size() - 2) : text);
}

} // namespace

std::string trimmed(const std::string &text)
{
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

std::string expanded(const std::string &typed)
{
    std::size_t at = 0;
    return bytes_from(typed, at, none);
}

std::vector<Case> read_cases(const std::string &path)
{
    std::ifstream in(path);
    std::vector<Case> all;
    std::string line, function;
    for (int number = 1; std::getline(in, line); ++number) {
        line = std::regex_replace(line, std::regex("^#.*| +# .*"), "");
        if (line.empty())
            continue;
        if (line[0] != ' ') {
            function = line;
            continue;
        }
        const std::string place = path.substr(path.rfind('/') + 1) + ":" + std::to_string(number);
        const std::size_t arrow = std::min(line.find(" =>"), line.size());
        std::vector<std::string> arguments;
        for (std::size_t begin = 0, end = 0; end < arrow; begin = end + 3) {
            end = std::min(line.find(" | ", begin), arrow);
            arguments.push_back(part(line.substr(begin, end - begin)));
        }
        all.push_back({function, arguments, part(line.substr(std::min(arrow + 3, line.size()))), place});
    }
    return all;
}

void typed_seeds(const char *file, const Sink &sink, const std::string &head)
{
    const std::vector<Case> all = read_cases(std::string(NETPUBLIC_SEEDS_DIR "/") + file);
    if (all.empty()) {
        std::fprintf(stderr, "no seeds in %s\n", file);
        std::abort();
    }
    for (const Case &each : all)
        for (const std::string &text : each.arguments)
            sink(each.function, head + text);
}

} // namespace fuzz
