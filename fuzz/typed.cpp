#include "typed.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <regex>

namespace fuzz {
namespace {

std::string trimmed(const std::string &text)
{
    return std::regex_replace(text, std::regex("^ +| +$"), "");
}

std::string repeated(int times, const std::string &text)
{
    std::string all;
    while (times-- > 0)
        all += text;
    return all;
}

std::string bytes_of(const std::string &typed)
{
    static const std::regex special(R"(\\x([0-9A-F]{2})|\\(.)|\{([0-9]+)\*([^}]*)\})");
    const std::string letters = "nrt0", meant("\n\r\t\0", letters.size());
    std::string bytes;
    auto at = typed.begin();
    for (std::smatch found; std::regex_search(at, typed.end(), found, special); at = found[0].second) {
        bytes.append(at, found[0].first);
        const std::size_t letter = found[2].matched ? letters.find(found[2]) : std::string::npos;
        if (found[1].matched)
            bytes += static_cast<char>(std::stoi(found[1], nullptr, 16));
        else if (found[3].matched)
            bytes += repeated(std::stoi(found[3]), bytes_of(found[4]));
        else
            bytes += letter != std::string::npos ? meant[letter] : *found[2].first;
    }
    return bytes.append(at, typed.end());
}

std::string part(const std::string &line)
{
    const std::string text = trimmed(line);
    const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return bytes_of(quoted ? text.substr(1, text.size() - 2) : text);
}

} // namespace

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
