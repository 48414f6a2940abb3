// Files of typed cases, of what is to come of them or of seeds alone:
//     # a remark
//     function
//       argument | argument => what comes of it   # a remark
// The arrow may lack. Blanks around a part do not belong to it; "quoted" parts keep theirs. What a part stands for is
// its expanded() text.
#ifndef NETPUBLIC_FUZZ_TYPED_H
#define NETPUBLIC_FUZZ_TYPED_H

#include "targets.h"

#include <string>
#include <vector>

namespace fuzz {

// The text without the blanks around it.
std::string trimmed(const std::string &text);

// What is typed in files of cases: \n \r \t \0 \\ and \xNN stand for bytes, \s for a blank, {3*ab} for the text
// three times, with its place for each "@" in it, from 0 on.
std::string expanded(const std::string &typed);

struct Case {
    std::string function;
    std::vector<std::string> arguments;
    std::string expected;
    std::string place; // file:line
};

// None when there is no such file.
std::vector<Case> read_cases(const std::string &path);

// Each argument of a file in fuzz/seeds, behind a head, named by its function.
void typed_seeds(const char *file, const Sink &sink, const std::string &head = "");

} // namespace fuzz

#endif
