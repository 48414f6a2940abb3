// The command line: one function a verb, in the verb's own file, adds its subcommand. What the user
// asked for becomes the action that main() runs once everything is parsed.
#ifndef NETPARAM_COMMAND_LINE_H
#define NETPARAM_COMMAND_LINE_H

#include "failure.h"
#include "text.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <memory>
#include <ostream>
#include <string>

namespace netparam {

// Results go to `out`; refusals and notes go to `errors`.
using Action = std::function<ExitCode(std::ostream &out, std::ostream &errors)>;

struct CommandLine {
    CLI::App app;
    const Style style;
    Action action;

    explicit CommandLine(Style for_both);

    // A subcommand whose options are `options`: they live as long as the command line does.
    template <class Options>
    CLI::App &add_verb(const char *name, const char *description, const std::shared_ptr<Options> &options,
                       ExitCode (*run)(std::ostream &out, std::ostream &errors, const Options &options))
    {
        CLI::App &verb = *app.add_subcommand(name, description);
        verb.callback([this, options, run] {
            action = [options, run](std::ostream &out, std::ostream &errors) { return run(out, errors, *options); };
        });
        return verb;
    }
};

void add_list(CommandLine &line);
void add_parse(CommandLine &line);
void add_exchange(CommandLine &line);

} // namespace netparam

#endif
