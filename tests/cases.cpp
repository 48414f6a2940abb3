#include "cases.h"

#include <fstream>
#include <regex>
#include <set>

namespace test {
namespace {

std::string trimmed(const std::string &text)
{
    return std::regex_replace(text, std::regex("^ +| +$"), "");
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

std::vector<Case> cases(const std::string &file)
{
    std::ifstream in(NETPUBLIC_CASES_DIR "/" + file);
    EXPECT_TRUE(in) << file;
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
        const std::string place = file + ":" + std::to_string(number);
        const std::size_t arrow = std::min(line.find(" =>"), line.size());
        Arguments arguments;
        for (std::size_t begin = 0, end = 0; end < arrow; begin = end + 3) {
            end = std::min(line.find(" | ", begin), arrow);
            arguments.push_back(part(line.substr(begin, end - begin)));
        }
        all.push_back({function, arguments, part(line.substr(std::min(arrow + 3, line.size()))), place});
    }
    return all;
}

void run_cases(const std::string &file, const std::map<std::string, Call> &calls)
{
    std::set<std::string> called;
    for (Case &each : cases(file)) {
        const auto call = calls.find(each.function);
        called.insert(each.function);
        if (call == calls.end()) {
            ADD_FAILURE() << each.place << ": no such function: " << each.function;
            continue;
        }
        SCOPED_TRACE(each.place);
        net_host_reset();
        net_host().block_fill = 0xA5;
        std::string text;
        const std::string log = log_of([&] { text = call->second(each.arguments); });
        EXPECT_EQ(text + (log.empty() ? "" : " " + log), each.expected) << each.place << ", " << each.function;
    }
    net_host_reset();
    for (const auto &[function, call] : calls)
        EXPECT_EQ(called.count(function), 1u) << function << " has no case in " << file;
}

char *pointer(std::string &argument)
{
    return argument == "null" ? nullptr : argument.data();
}

int number(const std::string &argument)
{
    return static_cast<int>(std::stoll(argument, nullptr, 0));
}

} // namespace test
