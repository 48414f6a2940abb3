// netparam completion: the shells' completions, made from the command line's own description.
#include "verbs/command_model.h"

namespace netparam {
namespace {

struct CompletionOptions {
    const CommandLine *line;
    std::string shell;
};

enum class Argument { nothing, choices, message, file };

Argument kind_of(const Parameter &parameter)
{
    const std::string &value = parameter.positional ? parameter.names.front() : parameter.value;
    if (!parameter.choices.empty())
        return Argument::choices;
    if (value == "MESSAGE")
        return Argument::message;
    // Positional arguments are files unless they say otherwise.
    const bool other = value == "TEXT" || value == "NUMBER" || value == "NAME" || value == "FLOAT";
    return !other && (parameter.positional || value == "FILE" || value == "PATH") ? Argument::file : Argument::nothing;
}

std::string option_names(const std::vector<Parameter> &parameters, bool with_value, const std::string &separator)
{
    std::vector<std::string> names;
    for (const Parameter &parameter : parameters)
        if (!parameter.positional && (!with_value || !parameter.value.empty()))
            names.insert(names.end(), parameter.names.begin(), parameter.names.end());
    return joined(names, separator);
}

std::string verb_names(const std::vector<Verb> &verbs)
{
    std::vector<std::string> names;
    names.reserve(verbs.size());
    for (const Verb &verb : verbs)
        names.push_back(verb.name);
    return joined(names, " ");
}

// Bash

constexpr char bash_head[] = R"(# bash completion for netparam; made by "netparam completion bash".

_netparam_reply() # WORDS
{
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur")
}

_netparam_files()
{
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$cur")
}

_netparam()
{
    local cur=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} program=${1/#\~\//$HOME/}
    local verb='' place=0 i word valued='' options=''
    # The shell makes "--option=value" three words.
    if [[ $cur == = ]]; then
        cur=
    elif [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ -z $verb ]]; then
            [[ $word == -* ]] && continue
            verb=$word
            case $verb in
)";

constexpr char bash_middle[] = R"(            *) return ;;
            esac
        elif [[ $valued == *" $word "* ]]; then
            ((i++))
            [[ ${COMP_WORDS[i]} == = ]] && ((i++))
        elif [[ $word != -?* ]]; then
            ((place++))
        fi
    done
)";

constexpr char bash_tail[] = R"(    if [[ $cur == -?* || $cur == - ]]; then
        _netparam_reply "$options"
        return
    fi
    case $verb,$place in
)";

std::string bash_action(const Parameter &parameter)
{
    switch (kind_of(parameter)) {
    case Argument::choices:
        return "_netparam_reply '" + joined(parameter.choices, " ") + "'";
    case Argument::message:
        return "_netparam_reply \"$(\"$program\" list --names 2>/dev/null)\"";
    case Argument::file:
        return "_netparam_files";
    default:
        return ":";
    }
}

void print_bash(std::ostream &out, const CommandLine &line)
{
    const std::vector<Verb> verbs = verbs_of(line);
    out << bash_head;
    for (const Verb &verb : verbs)
        out << "            " << verb.name << ")\n                options='"
            << option_names(verb.parameters, false, " ") << "'\n                valued=' "
            << option_names(verb.parameters, true, " ") << " '\n                ;;\n";
    out << bash_middle << "    if [[ -z $verb ]]; then\n        _netparam_reply '" << verb_names(verbs) << ' '
        << option_names(parameters_of(line.app), false, " ")
        << "'\n        return\n    fi\n    case $verb,$before in\n";
    for (const Verb &verb : verbs)
        for (const Parameter &parameter : verb.parameters) {
            if (parameter.positional || parameter.value.empty())
                continue;
            std::vector<std::string> patterns;
            for (const std::string &name : parameter.names)
                patterns.push_back(verb.name + "," + name);
            out << "    " << joined(patterns, " | ") << ") " << bash_action(parameter) << " ;;\n";
        }
    out << "    esac\n    [[ $valued == *\" $before \"* ]] && return\n" << bash_tail;
    for (const Verb &verb : verbs) {
        int place = 0;
        for (const Parameter &parameter : verb.parameters) {
            if (!parameter.positional)
                continue;
            out << "    " << verb.name << ',' << (parameter.repeated ? "*" : std::to_string(place++)) << ") "
                << bash_action(parameter) << " ;;\n";
        }
    }
    out << "    esac\n}\n\ncomplete -F _netparam netparam\n";
}

// Zsh

std::string quoted(const std::string &text)
{
    return "'" + replaced(text, "'", "'\\''") + "'";
}

// Inside what zsh is told of an argument.
std::string zsh_text(const std::string &text)
{
    std::string out;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':' || c == '\\')
            out += '\\';
        out += c;
    }
    return out;
}

std::string zsh_action(const Parameter &parameter)
{
    switch (kind_of(parameter)) {
    case Argument::choices:
        return "(" + joined(parameter.choices, " ") + ")";
    case Argument::message:
        return "_netparam_messages";
    case Argument::file:
        return "_files";
    default:
        return " ";
    }
}

void print_zsh_parameter(std::ostream &out, const Parameter &parameter, int place)
{
    const std::string value = zsh_text(parameter.positional ? parameter.names.front() : parameter.value);
    if (parameter.positional) {
        const std::string where = parameter.repeated ? "*" : std::to_string(place);
        out << " \\\n            " << quoted(where + ":" + value + ":" + zsh_action(parameter));
        return;
    }
    for (const std::string &name : parameter.names) {
        std::string text = (parameter.repeated ? "*" : "(" + joined(parameter.names, " ") + ")") + name + "[" +
                           zsh_text(parameter.description) + "]";
        if (!value.empty())
            text += ":" + value + ":" + zsh_action(parameter);
        out << " \\\n            " << quoted(text);
    }
}

void print_zsh(std::ostream &out, const CommandLine &line)
{
    const std::vector<Verb> verbs = verbs_of(line);
    out << "#compdef netparam\n# Made by \"netparam completion zsh\".\n\n"
           "_netparam_messages() {\n"
           "    local -a names\n"
           "    names=(${(f)\"$(_call_program messages $program list --names 2>/dev/null)\"})\n"
           "    _describe -t messages message names\n}\n\n"
           "_netparam() {\n"
           "    local context state state_descr line program=$words[1]\n"
           "    typeset -A opt_args\n"
           "    local -a verbs=(";
    for (const Verb &verb : verbs)
        out << "\n        " << quoted(verb.name + ":" + replaced(verb.description, ":", "\\:"));
    out << "\n    )\n    _arguments -C";
    for (const Parameter &parameter : parameters_of(line.app))
        print_zsh_parameter(out, parameter, 0);
    out << " \\\n            '1: :->verb' '*:: :->rest' && return\n"
           "    case $state in\n    verb) _describe -t verbs verb verbs ;;\n    rest)\n        case $words[1] in\n";
    for (const Verb &verb : verbs) {
        out << "        " << verb.name << ")\n            _arguments";
        int place = 0;
        for (const Parameter &parameter : verb.parameters)
            print_zsh_parameter(out, parameter, parameter.positional ? ++place : 0);
        out << "\n            ;;\n";
    }
    out << "        esac\n        ;;\n    esac\n}\n\n_netparam \"$@\"\n";
}

ExitCode completion(std::ostream &out, std::ostream & /*errors*/, const CompletionOptions &options)
{
    if (options.shell == "bash")
        print_bash(out, *options.line);
    else
        print_zsh(out, *options.line);
    return exit_ok;
}

} // namespace

void add_completion(CommandLine &line)
{
    auto [verb, options] = line.add_verb("completion", "Prints a shell's completions", completion);
    options.line = &line;
    verb.group("");
    verb.add_option("SHELL", options.shell, "bash or zsh")->required()->check(CLI::IsMember({"bash", "zsh"}));
}

} // namespace netparam
