// netparam: shows how the library reads a client's request and what it replies.
#include "model/nearest.h"
#include "terminal/terminal.h"
#include "verbs/command_line.h"

#include <csignal>
#include <iostream>
#include <new>

using namespace netparam;

namespace {

// Misspelt verbs get a suggestion.
void check_verb(const CLI::App &app, const std::string &typed)
{
    std::vector<std::string> verbs;
    bool is_verb = false;
    for (const CLI::App *verb : app.get_subcommands(nullptr)) {
        is_verb = is_verb || verb->get_name() == typed;
        if (!verb->get_group().empty()) // the others are hidden
            verbs.push_back(verb->get_name());
    }
    if (typed[0] == '-' || is_verb)
        return;
    const std::string near = meant(typed, verbs);
    throw Failure(exit_usage,
                  "there is no verb " + in_quotes(typed) + (near.empty() ? ", only " + joined(verbs, ", ") : near));
}

ExitCode flushed(ExitCode code)
{
    if (!std::cout.flush())
        throw Failure(exit_file, "the output cannot be written");
    return code;
}

int run(int argc, char **argv)
{
    CommandLine line(terminal_style());
    try {
        check_verb(line.app, argc > 1 ? argv[1] : "-");
        line.app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        if (line.app.exit(error, std::cout, std::cerr) != 0)
            return exit_usage;
        return flushed(exit_ok); // help or version
    }
    return flushed(line.action(std::cout, std::cerr));
}

} // namespace

int main(int argc, char **argv)
{
    std::signal(SIGPIPE, SIG_DFL); // a reader that has seen enough is no fault, even if the caller ignores this
    try {
        return run(argc, argv);
    } catch (const Failure &failure) {
        std::cout.flush();
        std::cerr << "netparam: " << failure.what() << '\n';
        return failure.code();
    } catch (const std::bad_alloc &) {
        std::cout.flush();
        std::cerr << "netparam: there is not enough memory\n";
        return exit_fault;
    } catch (const std::exception &fault) {
        std::cout.flush();
        std::cerr << "netparam: internal fault: " << fault.what() << '\n';
        return exit_fault;
    }
}
