// The command line: one function a verb, in the verb's own file, adds its subcommand. What the user
// asked for becomes the action that main() runs once everything is parsed.
#ifndef NETPARAM_COMMAND_LINE_H
#define NETPARAM_COMMAND_LINE_H

#include "model/failure.h"
#include "model/text.h"
#include "reading/session.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace netparam {

// Results go to `out`; refusals and notes go to `errors`.
using Action = std::function<ExitCode(std::ostream &out, std::ostream &errors)>;

// What help and manual say of a verb beyond its description.
struct Explanation {
    std::string text;
    std::vector<std::string> examples;
};

struct CommandLine {
    CLI::App app;
    const Style style;
    Action action;
    std::map<const CLI::App *, Explanation> explanations;

    explicit CommandLine(Style for_both);

    // A subcommand and its options, which live as long as the command line does.
    template <class Options>
    std::pair<CLI::App &, Options &> add_verb(const char *name, const char *description,
                                              ExitCode (*run)(std::ostream &out, std::ostream &errors,
                                                              const Options &options))
    {
        const auto options = std::make_shared<Options>();
        if constexpr (std::is_base_of_v<netparam::Options, Options>)
            options->style = style;
        CLI::App &verb = *app.add_subcommand(name, description);
        verb.group("Verbs");
        verb.callback([this, options, run] {
            action = [options, run](std::ostream &out, std::ostream &errors) { return run(out, errors, *options); };
        });
        return {verb, *options};
    }
    // Sentences and example command lines.
    void explain(CLI::App &verb, const std::string &text, const std::vector<std::string> &examples);
};

void add_list(CommandLine &line);
void add_describe(CommandLine &line);
void add_page(CommandLine &line);
void add_parse(CommandLine &line);
void add_exchange(CommandLine &line);
void add_write(CommandLine &line);
void add_new(CommandLine &line);
void add_set(CommandLine &line);
void add_watch(CommandLine &line);
void add_diff(CommandLine &line);
void add_check(CommandLine &line);
void add_filter(CommandLine &line);
void add_manual(CommandLine &line);
void add_completion(CommandLine &line);

} // namespace netparam

#endif
