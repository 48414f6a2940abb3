#include "verbs/command_line.h"

#include "model/nearest.h"
#include "verbs/command_model.h"

#include <net_version.h>

namespace netparam {
namespace {

// The column in which descriptions begin.
constexpr std::size_t indentation = 30;

// The library's own layout, within the terminal's width.
class HelpText : public CLI::Formatter {
public:
    explicit HelpText(std::size_t width) : width_(width)
    {
        column_width(indentation);
    }
    std::string make_option(const CLI::Option *option, bool /*is_positional*/) const override
    {
        const Parameter parameter = parameter_of(*option);
        std::string text = parameter.description;
        if (!parameter.fallback.empty() && parameter.fallback != "[]")
            text += " (otherwise " + parameter.fallback + ")";
        return entry(parameter.synopsis(), text);
    }
    std::string make_subcommand(const CLI::App *verb) const override
    {
        return entry(verb->get_name(), verb->get_description());
    }
    std::string make_description(const CLI::App *app) const override
    {
        return wrapped(app->get_description(), width_) + ".\n\n";
    }
    std::string make_usage(const CLI::App *app, std::string name) const override
    {
        return app->get_parent() == nullptr ? "Usage: netparam VERB [OPTIONS] ...\n"
                                            : CLI::Formatter::make_usage(app, std::move(name));
    }

    std::string make_help(const CLI::App *app, std::string name, CLI::AppFormatMode mode) const override
    {
        std::string text = CLI::Formatter::make_help(app, std::move(name), mode);
        for (std::size_t at; (at = text.find("\n\n\n")) != std::string::npos;)
            text.erase(at, 1);
        return text;
    }

private:
    std::string entry(const std::string &name, const std::string &text) const
    {
        std::ostringstream out;
        CLI::detail::format_help(out, name, wrapped(text, width_ - indentation), indentation);
        return out.str();
    }

    std::size_t width_;
};

std::string exit_codes(std::size_t width)
{
    std::ostringstream out;
    constexpr std::size_t code_width = 6;
    for (const ExitMeaning &exit : exit_meanings)
        CLI::detail::format_help(out, std::to_string(exit.code), wrapped(exit.meaning, width - code_width), code_width);
    std::string text = "Exit codes:\n" + out.str();
    text.pop_back();
    return text;
}

std::string example_lines(const std::vector<std::string> &examples)
{
    return examples.empty() ? "" : "Examples:\n  " + joined(examples, "\n  ") + "\n\n";
}

// Of each option that there is none of, one of a similar name.
std::string meant_options(const CLI::App &app)
{
    std::vector<std::string> names;
    for (const Parameter &parameter : parameters_of(app))
        names.insert(names.end(), parameter.names.begin(), parameter.names.end());
    std::string text;
    for (const std::string &typed : app.remaining())
        text += typed[0] == '-' ? meant(typed.substr(0, typed.find('=')), names) : "";
    return text;
}

} // namespace

CommandLine::CommandLine(Style for_both)
    : app("Shows how the device library reads a client's request, why it refuses one, and what it replies", "netparam"),
      style(for_both)
{
    app.formatter(std::make_shared<HelpText>(style.width));
    app.set_version_flag("--version", "netparam " NETPUBLIC_VERSION_STRING, "Print the version and exit");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.failure_message([](const CLI::App *top, const CLI::Error &error) {
        const std::vector<CLI::App *> verbs = top->get_subcommands();
        const std::string command = verbs.empty() ? "netparam" : "netparam " + verbs.back()->get_name();
        const bool lacks_verb = verbs.empty() && dynamic_cast<const CLI::RequiredError *>(&error) != nullptr;
        return command + ": " + (lacks_verb ? "VERB is required" : printable(error.what())) +
               meant_options(verbs.empty() ? *top : *verbs.back()) + "\nSee \"" + command + " --help\".\n";
    });
    app.require_subcommand(1);
    add_list(*this);
    add_describe(*this);
    add_page(*this);
    add_parse(*this);
    add_exchange(*this);
    add_new(*this);
    add_set(*this);
    add_write(*this);
    add_diff(*this);
    add_check(*this);
    add_watch(*this);
    add_filter(*this);
    add_manual(*this);
    add_completion(*this);
    app.footer(exit_codes(style.width) + "\n\nLimits:\n" + wrapped(input_limits, style.width) +
               "\n\n\"netparam VERB --help\" shows a verb's options; man netparam shows everything.");
}

void CommandLine::explain(CLI::App &verb, const std::string &text, const std::vector<std::string> &examples)
{
    explanations[&verb] = {text, examples};
    verb.footer((text.empty() ? "" : wrapped(text, style.width) + "\n\n") + example_lines(examples) +
                "\"netparam --help\" explains the exit codes.");
}

} // namespace netparam
