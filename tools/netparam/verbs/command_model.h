// The command line as data: help, manual and completions are made from it.
#ifndef NETPARAM_COMMAND_MODEL_H
#define NETPARAM_COMMAND_MODEL_H

#include "verbs/command_line.h"

#include <string>
#include <vector>

namespace netparam {

// An option or a positional argument.
struct Parameter {
    std::vector<std::string> names; // "-h", "--help"; of a positional argument the one without dashes
    std::string value;              // what stands for its value: "FILE", "text|json"; empty for a flag
    std::vector<std::string> choices;
    std::string description, group, fallback;
    bool positional, required, repeated;

    // "--format text|json"
    std::string synopsis() const;
};

struct Verb {
    std::string name, description;
    Explanation explanation;
    std::vector<Parameter> parameters;
};

Parameter parameter_of(const CLI::Option &option);
// Without the hidden ones.
std::vector<Parameter> parameters_of(const CLI::App &app);
std::vector<Verb> verbs_of(const CommandLine &line);

// The group of options that do not need a heading.
constexpr char plain_group[] = "Options";

} // namespace netparam

#endif
