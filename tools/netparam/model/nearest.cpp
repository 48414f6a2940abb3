#include "model/nearest.h"

#include "model/text.h"

#include <algorithm>
#include <utility>

namespace netparam {
namespace {

// How many letters must be changed, added, left out or swapped with their neighbour; case counts.
std::size_t edit_distance(const std::string &a, const std::string &b)
{
    using Line = std::vector<std::size_t>;
    Line before(b.size() + 1), last(b.size() + 1), line(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        line[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const auto same = [&](std::size_t x, std::size_t y) { return a[x - 1] == b[y - 1]; };
            line[j] = std::min({last[j] + 1, line[j - 1] + 1, last[j - 1] + (same(i, j) ? 0 : 1)});
            if (i > 1 && j > 1 && same(i, j - 1) && same(i - 1, j))
                line[j] = std::min(line[j], before[j - 2] + 1);
        }
        before = std::exchange(last, line);
    }
    return last[b.size()];
}

bool contains(const std::string &text, const std::string &part)
{
    constexpr std::size_t telling = 4; // shorter parts occur everywhere
    return part.size() >= telling && text.find(part) != std::string::npos;
}

} // namespace

std::string simplified(std::string name)
{
    name.erase(std::remove_if(name.begin(), name.end(), [](char c) { return c == '-' || c == '_'; }), name.end());
    return lower(name);
}

std::vector<std::string> nearest(const std::string &typed, const std::vector<std::string> &names, std::size_t most)
{
    constexpr std::size_t longest = 128; // nobody means a name by a longer text
    const std::string wanted = simplified(typed);
    std::vector<std::pair<std::size_t, std::string>> found;
    if (wanted.size() <= longest)
        for (const std::string &full_name : names) {
            const std::string name = simplified(full_name);
            const std::size_t shorter = std::min(wanted.size(), name.size());
            std::size_t distance = edit_distance(wanted, name);
            if (contains(wanted, name) || contains(name, wanted))
                distance = std::min(distance, 1 + (wanted.size() + name.size() - 2 * shorter) / 3);
            if (distance <= std::max<std::size_t>(1, std::max(wanted.size(), name.size()) / 3))
                found.emplace_back(distance, full_name);
        }
    std::stable_sort(found.begin(), found.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<std::string> result;
    for (const auto &[distance, name] : found) {
        const auto same = [&name = name](const std::string &other) { return lower(name) == lower(other); };
        if (result.size() < most && std::none_of(result.begin(), result.end(), same))
            result.push_back(name);
    }
    return result;
}

std::string meant(const std::string &typed, const std::vector<std::string> &names)
{
    const auto near = nearest(typed, names, 1);
    return near.empty() ? "" : "; did you mean " + near.front() + "?";
}

std::string no_such_word(const std::string &typed, const std::vector<std::string> &words)
{
    const auto near = nearest(typed, words, 1);
    return near.empty() ? "no such word" : "no such word; did you mean " + in_quotes(near.front()) + "?";
}

} // namespace netparam
