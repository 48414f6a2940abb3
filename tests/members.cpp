#include "members.h"

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace test {
namespace {

struct Part {
    std::string name, type;
    std::size_t offset;
};

struct Record {
    std::size_t size = 0;
    std::vector<Part> parts;
};

const std::map<std::string, Record> &layouts()
{
    static const std::map<std::string, Record> records = [] {
        std::map<std::string, Record> all;
        std::ifstream file(sizeof(void *) == 8 ? NETPUBLIC_GOLDEN_DIR "/layout-x86_64.txt"
                                               : NETPUBLIC_GOLDEN_DIR "/layout-armhf.txt");
        Record *record = nullptr;
        for (std::string line; std::getline(file, line);) {
            if (line.empty())
                continue;
            if (line[0] != ' ') {
                record = &all[line.substr(0, line.find(':'))];
                record->size = std::stoul(line.substr(line.find(':') + 1));
                continue;
            }
            const std::size_t type = line.find("  ", line.find_first_not_of(' ')) + 2, name_at = line.rfind(' ') + 1;
            record->parts.push_back({line.substr(name_at), line.substr(type, name_at - 1 - type), std::stoul(line)});
        }
        return all;
    }();
    return records;
}

bool starts(const std::string &text, const std::string &with)
{
    return text.compare(0, with.size(), with) == 0;
}

const Record *record_of(const std::string &type)
{
    const auto found = layouts().find(starts(type, "struct ") ? type.substr(7) : type);
    return found != layouts().end() ? &found->second : nullptr;
}

bool is_text(const std::string &type)
{
    return starts(type, "char[") && type.find('[') == type.rfind('[');
}

// Of an array, and what is left of its type behind the first dimension; 0 without one.
std::size_t elements(const std::string &type, std::string &element)
{
    const std::size_t open = type.find('[');
    if (open == std::string::npos)
        return 0;
    element = type.substr(0, open) + type.substr(type.find(']') + 1);
    return std::stoul(type.substr(open + 1));
}

std::size_t size_of(const std::string &type)
{
    std::string element;
    if (const std::size_t count = elements(type, element))
        return count * size_of(element);
    if (const Record *record = record_of(type))
        return record->size;
    return type == "char" || type == "unsigned char"                  ? 1
           : type == "long long" || type == "unsigned long long"      ? 8
           : type == "int" || type == "float" || starts(type, "enum") ? 4
           : type == "unsigned int"                                   ? 4
                                                                      : sizeof(void *);
}

// Calls use(type, offset) for each number and text in it.
using Use = std::function<void(const std::string &type, std::size_t offset)>;
void for_leaves(const std::string &type, std::size_t offset, const Use &use)
{
    std::string element;
    if (is_text(type)) {
        use(type, offset);
    } else if (const std::size_t count = elements(type, element)) {
        for (std::size_t i = 0; i < count; ++i)
            for_leaves(element, offset + i * size_of(element), use);
    } else if (const Record *record = record_of(type)) {
        for (const Part &part : record->parts)
            for_leaves(part.type, offset + part.offset, use);
    } else {
        use(type, offset);
    }
}

template <class Number> Number load(const char *at)
{
    Number number;
    std::memcpy(&number, at, sizeof number);
    return number;
}

void store(char *at, const std::string &type, const std::string &value)
{
    const std::size_t size = size_of(type);
    if (is_text(type)) {
        if (value.size() > size)
            throw std::invalid_argument("\"" + value + "\" does not fit " + type);
        std::memcpy(at, value.c_str(), value.size() < size ? value.size() + 1 : size);
    } else if (type == "float") {
        const float number = std::stof(value);
        std::memcpy(at, &number, size);
    } else {
        const bool hexadecimal = starts(value, "0x");
        std::size_t used = 0;
        const unsigned long long number = starts(value, "-") ? static_cast<unsigned long long>(std::stoll(value, &used))
                                                             : std::stoull(value, &used, hexadecimal ? 16 : 10);
        if (used != value.size())
            throw std::invalid_argument("\"" + value + "\" is no number");
        std::memcpy(at, &number, size); // little endian
    }
}

std::string shown(const char *at, const std::string &type)
{
    const std::size_t size = size_of(type);
    if (is_text(type))
        return std::string(at, strnlen(at, size));
    std::ostringstream text;
    if (type == "float")
        text << load<float>(at);
    else if (size == 1)
        text << static_cast<int>(load<unsigned char>(at));
    else if (size == 8)
        text << load<long long>(at);
    else
        text << load<int>(at);
    return text.str();
}

} // namespace

Member::Member(const std::string &record, const std::string &path) : type(record)
{
    for (std::size_t at = 0; at < path.size();) {
        if (path[at] == '[') {
            std::string element;
            const std::size_t index = std::stoul(path.substr(at + 1));
            if (index >= elements(type, element))
                throw std::invalid_argument("no element " + path);
            offset += index * size_of(element);
            type = element;
            at = path.find(']', at) + 1;
            continue;
        }
        at += path[at] == '.';
        const std::size_t end = std::min(path.find_first_of(".[", at), path.size());
        const std::string name = path.substr(at, end - at);
        const Record *inside = record_of(type);
        const Part *found = nullptr;
        if (inside != nullptr)
            for (const Part &part : inside->parts)
                if (part.name == name)
                    found = &part;
        if (found == nullptr)
            throw std::invalid_argument("no member \"" + path + "\" in " + record);
        offset += found->offset;
        type = found->type;
        at = end;
    }
}

std::size_t Member::size() const
{
    return size_of(type);
}

void Member::assign(void *record, const std::string &value) const
{
    char *const bytes = static_cast<char *>(record);
    if (is_text(type))
        return store(bytes + offset, type, value);
    std::istringstream words(value);
    std::string word;
    std::vector<std::string> values;
    while (words >> word)
        values.push_back(word);
    std::size_t leaves = 0;
    for_leaves(type, offset, [&](const std::string &leaf, std::size_t at) {
        store(bytes + at, leaf, values.at(values.size() == 1 ? 0 : leaves));
        ++leaves;
    });
    if (values.size() != 1 && values.size() != leaves)
        throw std::invalid_argument(std::to_string(values.size()) + " values for " + type);
}

std::string Member::print(const void *record) const
{
    std::string text;
    for_leaves(type, offset, [&](const std::string &leaf, std::size_t at) {
        text += (at == offset ? "" : " ") + shown(static_cast<const char *>(record) + at, leaf);
    });
    return text;
}

bool Member::equals(const void *record, const std::string &value) const
{
    const char *const bytes = static_cast<const char *>(record);
    std::string expected(bytes, offset + size());
    assign(expected.data(), value);
    return std::memcmp(bytes + offset, expected.data() + offset, size()) == 0;
}

} // namespace test
