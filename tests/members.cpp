#include "members.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace test {
namespace {

struct Part {
    std::string type; // as it stands in the layouts: "int[7][24]", "struct point_t"
    std::size_t offset;
};

struct Record {
    std::size_t size;
    std::vector<std::pair<std::string, Part>> parts; // with their names
};

const Record *record_of(const std::string &type)
{
    static const std::map<std::string, Record> records = [] {
        std::map<std::string, Record> all;
        std::ifstream file(sizeof(void *) == 8 ? NETPUBLIC_GOLDEN_DIR "/layout-x86_64.txt"
                                               : NETPUBLIC_GOLDEN_DIR "/layout-armhf.txt");
        Record *record = nullptr;
        for (std::string line; std::getline(file, line);) {
            const std::size_t colon = line.find(':'), first = line.find("  ", line.find_first_not_of(' ')) + 2,
                              name = line.rfind(' ') + 1;
            if (colon != std::string::npos)
                record = &(all["struct " + line.substr(0, colon)] = {std::stoul(line.substr(colon + 1)), {}});
            else if (!line.empty())
                record->parts.push_back({line.substr(name), {line.substr(first, name - 1 - first), std::stoul(line)}});
        }
        return all;
    }();
    const auto found = records.find(type);
    return found != records.end() ? &found->second : nullptr;
}

// Of an array, with its elements' type; 0 of anything else.
std::size_t count_of(const std::string &type, std::string &element)
{
    const std::size_t open = type.find('[');
    if (open == std::string::npos)
        return 0;
    element = type.substr(0, open) + type.substr(type.find(']') + 1);
    return std::stoul(type.substr(open + 1));
}

std::size_t size_of(const std::string &type)
{
    static const std::map<std::string, std::size_t> numbers = {{"char", 1},
                                                               {"unsigned char", 1},
                                                               {"int", 4},
                                                               {"unsigned int", 4},
                                                               {"float", 4},
                                                               {"long long", 8},
                                                               {"unsigned long long", 8},
                                                               {"void *", sizeof(void *)}};
    std::string element;
    if (const std::size_t count = count_of(type, element))
        return count * size_of(element);
    if (const Record *record = record_of(type))
        return record->size;
    if (type.compare(0, 5, "enum ") == 0)
        return sizeof(int);
    if (numbers.count(type) == 0)
        throw std::invalid_argument("no layout of " + type + ": ./test.sh --update golden");
    return numbers.at(type);
}

bool is_text(const std::string &type)
{
    return type.compare(0, 5, "char[") == 0 && type.find('[') == type.rfind('[');
}

void store(char *at, const std::string &type, std::size_t size, const std::string &value)
{
    if (is_text(type) ? value.size() > size : value.empty())
        throw std::invalid_argument("\"" + value + "\" is no " + type);
    if (is_text(type)) {
        std::memcpy(at, value.c_str(), std::min(value.size() + 1, size));
    } else if (type == "float") {
        const float number = std::stof(value);
        std::memcpy(at, &number, size);
    } else {
        std::size_t used = 0;
        const unsigned long long number = std::stoull(value, &used, value.compare(0, 2, "0x") == 0 ? 16 : 10);
        if (used != value.size())
            throw std::invalid_argument("\"" + value + "\" is no number");
        std::memcpy(at, &number, size); // little endian; of -1 all bits
    }
}

std::string shown(const char *at, const std::string &type, std::size_t size)
{
    if (is_text(type))
        return std::string(at, strnlen(at, size));
    std::ostringstream text;
    float real = 0;
    long long number = 0;
    std::memcpy(type == "float" ? static_cast<void *>(&real) : &number, at, size);
    if (type == "float")
        text << real;
    else
        text << (size == 4 ? static_cast<int>(number) : number);
    return text.str();
}

} // namespace

Member::Member(const std::string &record, const std::string &path)
{
    std::string type = record_of("struct " + record) != nullptr ? "struct " + record : record;
    std::size_t offset = 0;
    for (std::size_t at = 0; at < path.size();) {
        if (path[at] == '[') {
            std::string element;
            const std::size_t index = std::stoul(path.substr(at + 1));
            if (index >= count_of(type, element))
                throw std::invalid_argument("no element " + path + " in " + record);
            offset += index * size_of(element);
            type = element;
            at = path.find(']', at) + 1;
            continue;
        }
        at += path[at] == '.';
        const std::size_t end = std::min(path.find_first_of(".[", at), path.size());
        const Record *inside = record_of(type);
        const auto parts = inside != nullptr ? inside->parts : std::vector<std::pair<std::string, Part>>{};
        const auto found = std::find_if(parts.begin(), parts.end(),
                                        [&](const auto &part) { return part.first == path.substr(at, end - at); });
        if (found == parts.end())
            throw std::invalid_argument("no member " + path + " in " + record);
        offset += found->second.offset;
        type = found->second.type;
        at = end;
    }
    collect(type, offset);
}

void Member::collect(const std::string &type, std::size_t offset)
{
    std::string element;
    const std::size_t count = is_text(type) ? 0 : count_of(type, element);
    const Record *record = record_of(type);
    for (std::size_t i = 0; i < count; ++i)
        collect(element, offset + i * size_of(element));
    if (record != nullptr)
        for (const auto &part : record->parts)
            collect(part.second.type, offset + part.second.offset);
    if (count == 0 && record == nullptr)
        leaves_.push_back({type, offset, size_of(type)});
}

void Member::assign(void *record, const std::string &value) const
{
    std::vector<std::string> values;
    std::istringstream words(value);
    for (std::string word; words >> word;)
        values.push_back(word);
    if (leaves_.size() == 1)
        values = {value};
    if (values.size() != 1 && values.size() != leaves_.size())
        throw std::invalid_argument(std::to_string(leaves_.size()) + " values are wanted, not " + value);
    for (std::size_t i = 0; i < leaves_.size(); ++i)
        store(static_cast<char *>(record) + leaves_[i].offset, leaves_[i].type, leaves_[i].size,
              values[values.size() == 1 ? 0 : i]);
}

std::string Member::print(const void *record) const
{
    std::string text;
    for (const Leaf &leaf : leaves_)
        text +=
            (text.empty() ? "" : " ") + shown(static_cast<const char *>(record) + leaf.offset, leaf.type, leaf.size);
    return text;
}

bool Member::equals(const void *record, const std::string &value) const
{
    const auto *bytes = static_cast<const char *>(record);
    std::string expected(bytes, leaves_.back().offset + leaves_.back().size);
    assign(expected.data(), value);
    return std::all_of(leaves_.begin(), leaves_.end(), [&](const Leaf &leaf) {
        return std::memcmp(bytes + leaf.offset, expected.data() + leaf.offset, leaf.size) == 0;
    });
}

} // namespace test
