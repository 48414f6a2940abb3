// fuzz_seeds DIRECTORY writes a seed corpus for each target and the dictionary, out of the tables, the examples and
// fuzz/seeds. fuzz_seeds alone lists the targets with the longest input each takes.
#include "author.h"
#include "targets.h"
#include "typed.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

std::string quoted(const std::string &text)
{
    std::string made = "\"";
    for (const char c : text) {
        char hex[8];
        if (c == '"' || c == '\\' || c < ' ' || c > '~') {
            std::snprintf(hex, sizeof hex, "\\x%02X", static_cast<unsigned char>(c));
            made += hex;
        } else {
            made += c;
        }
    }
    return made + "\"\n";
}

bool write_file(const std::filesystem::path &path, const std::string &content)
{
    std::ofstream file(path, std::ios::binary);
    file << content;
    return file.good();
}

std::string dictionary()
{
    std::string all;
    for (const std::string &name : fuzz::all_names())
        if (!name.empty() && name.size() <= 64)
            all += quoted(name);
    fuzz::typed_seeds("marks.txt", [&](const std::string &, const std::string &mark) { all += quoted(mark); });
    return all;
}

} // namespace

int main(int count, char **arguments)
{
    namespace fs = std::filesystem;
    if (count == 1) {
        for (const fuzz::Target &target : fuzz::targets())
            std::printf("%s %zu\n", target.name, target.longest);
        return 0;
    }
    const fs::path top = arguments[1];
    bool good = true;
    for (const fuzz::Target &target : fuzz::targets()) {
        const fs::path directory = top / target.name;
        fs::create_directories(directory);
        int number = 0;
        target.seeds([&](const std::string &name, const std::string &input) {
            good = write_file(directory / (std::to_string(number++) + "-" + name), input) && good;
        });
    }
    good = write_file(top / "names.dict", dictionary()) && good;
    return good ? 0 : 1;
}
