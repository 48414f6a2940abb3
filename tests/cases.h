// Tests whose cases are typed in tests/cases/*.txt, in the form of typed.h; null stands for a null pointer.
#ifndef NETPUBLIC_TESTS_CASES_H
#define NETPUBLIC_TESTS_CASES_H

#include "support.h"

#include <typed.h>

#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace test {

using Arguments = std::vector<std::string>;
// Makes the call, and a text of what came of it.
using Call = std::function<std::string(Arguments &arguments)>;

using fuzz::Case;

std::vector<Case> cases(const std::string &file);

// Makes the calls of the file, each with the default host; behind its text stands what it logged. Fails for a
// function that has no case.
void run_cases(const std::string &file, const std::map<std::string, Call> &calls);

char *pointer(std::string &argument);
int number(const std::string &argument);

// The values, with blanks between them.
template <class... Values> std::string outcome(const Values &...values)
{
    std::ostringstream text;
    text.precision(9);
    const char *blank = "";
    ((text << blank << values, blank = " "), ...);
    return text.str();
}

// The values of an array, with blanks between them.
template <class Values> std::string all_of(const Values &values)
{
    std::string text;
    for (const auto &value : values)
        text += (text.empty() ? "" : " ") + outcome(value);
    return text;
}

// A buffer of so many '~' after the function has written into it; the test fails when it wrote beyond.
template <class Write> std::string left_in(std::size_t size, Write write)
{
    const std::string beyond = "~~~~~~~~";
    std::string buffer = std::string(size, '~') + beyond;
    write(buffer.data());
    EXPECT_EQ(buffer.substr(size), beyond);
    buffer.resize(size);
    return buffer;
}

} // namespace test

#endif
