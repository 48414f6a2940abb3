#include "cases.h"

#include <set>

namespace test {

std::vector<Case> cases(const std::string &file)
{
    const std::vector<Case> all = fuzz::read_cases(NETPUBLIC_CASES_DIR "/" + file);
    EXPECT_FALSE(all.empty()) << file;
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
        net_host().block_fill = garbage;
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
