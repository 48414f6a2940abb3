// netparam manual: the manual page, made from the command line's own description.
#include "verbs/command_model.h"

#include <net_version.h>

#include <algorithm>

namespace netparam {
namespace {

struct ManualOptions {
    const CommandLine *line;
};

// Text for the formatter: no escape sequences, no requests, dashes that can be copied.
std::string escaped(const std::string &text)
{
    std::string out;
    for (const char c : text) {
        const bool starts = out.empty() || out.back() == '\n';
        if (starts && (c == '.' || c == '\''))
            out += "\\&";
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else
            out += c;
    }
    return out;
}

std::string bold(const std::string &text)
{
    return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(const std::string &text)
{
    return "\\fI" + escaped(text) + "\\fR";
}

// "--format text|json" with the names bold and what stands for a value italic.
std::string head(const Parameter &parameter)
{
    if (parameter.positional)
        return italic(parameter.synopsis());
    std::vector<std::string> names;
    for (const std::string &name : parameter.names)
        names.push_back(bold(name));
    const std::string &value = parameter.value;
    return joined(names, ", ") + (value.empty() ? "" : " " + (parameter.choices.empty() ? italic(value) : bold(value)));
}

void print_parameter(std::ostream &out, const Parameter &parameter)
{
    out << ".TP\n" << head(parameter) << '\n' << escaped(parameter.description);
    if (parameter.repeated && !parameter.positional)
        out << "; may be repeated";
    if (!parameter.fallback.empty() && parameter.fallback != "[]")
        out << "; otherwise " << escaped(parameter.fallback);
    out << ".\n";
}

bool is_help(const Parameter &parameter)
{
    return std::find(parameter.names.begin(), parameter.names.end(), "--help") != parameter.names.end();
}

// Options that several verbs share have a section of their own.
bool is_shared(const Parameter &parameter)
{
    return !parameter.positional && parameter.group != plain_group;
}

std::string upper(std::string text)
{
    for (char &c : text)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return text;
}

void print_synopsis(std::ostream &out, const Verb &verb)
{
    out << ".TP\n" << bold("netparam " + verb.name) << " [" << italic("OPTIONS") << "]";
    for (const Parameter &parameter : verb.parameters)
        if (parameter.positional)
            out << (parameter.required ? " " : " [") << italic(parameter.synopsis()) << (parameter.required ? "" : "]");
    out << '\n' << escaped(verb.description) << ".\n";
}

void print_verb(std::ostream &out, const Verb &verb)
{
    out << ".SS netparam " << verb.name << '\n' << escaped(verb.description) << ".\n";
    if (!verb.explanation.text.empty())
        out << ".PP\n" << escaped(verb.explanation.text) << '\n';
    std::string shared;
    for (const Parameter &parameter : verb.parameters)
        if (is_shared(parameter))
            shared = parameter.group;
        else if (!is_help(parameter))
            print_parameter(out, parameter);
    if (!shared.empty())
        out << ".PP\nThe options of " << escaped(upper(shared)) << " below are understood, too.\n";
    if (!verb.explanation.examples.empty()) {
        out << ".PP\n.RS 4\n.nf\n";
        for (const std::string &example : verb.explanation.examples)
            out << escaped(example) << '\n';
        out << ".fi\n.RE\n";
    }
}

// One section a group; the verbs' descriptions of an option agree.
void print_shared(std::ostream &out, const std::vector<Verb> &verbs)
{
    std::vector<std::string> groups, printed;
    const auto is_new = [](std::vector<std::string> &known, const std::string &name) {
        const bool added = std::find(known.begin(), known.end(), name) == known.end();
        if (added)
            known.push_back(name);
        return added;
    };
    for (const Verb &verb : verbs)
        for (const Parameter &first : verb.parameters) {
            if (!is_shared(first) || !is_new(groups, first.group))
                continue;
            out << ".SH " << escaped(upper(first.group)) << '\n';
            for (const Verb &other : verbs)
                for (const Parameter &parameter : other.parameters)
                    if (is_shared(parameter) && parameter.group == first.group && is_new(printed, parameter.synopsis()))
                        print_parameter(out, parameter);
        }
}

ExitCode manual(std::ostream &out, std::ostream & /*errors*/, const ManualOptions &options)
{
    const std::vector<Verb> verbs = verbs_of(*options.line);
    out << ".\\\" Made by \"netparam manual\".\n"
           ".TH NETPARAM 1 \"\" \"netpublic " NETPUBLIC_VERSION_STRING "\" \"User Commands\"\n"
           ".SH NAME\nnetparam \\- inspect the messages of the device\\-control protocol\n"
           ".SH SYNOPSIS\n";
    for (const Verb &verb : verbs)
        print_synopsis(out, verb);
    out << ".SH DESCRIPTION\n"
        << escaped(options.line->app.get_description()) << ".\n"
        << escaped("A MESSAGE is named by its own name, as \"netparam list\" shows it, or by that of its initialiser, "
                   "parser, writer or root element. A FILE named - is standard input. Passwords, tokens, keys, "
                   "signatures and codes are hidden, unless --show-secrets is given; but not in the bodies that verbs "
                   "make, nor in the bytes that --raw saves.\n")
        << ".PP\nEach verb takes " << bold("--help") << "; " << bold("netparam --version") << " prints the version.\n"
        << ".SH VERBS\n";
    for (const Verb &verb : verbs)
        print_verb(out, verb);
    print_shared(out, verbs);
    out << ".SH EXIT STATUS\n";
    for (const ExitMeaning &exit : exit_meanings)
        out << ".TP\n" << bold(std::to_string(exit.code)) << '\n' << escaped(exit.meaning) << ".\n";
    out << ".SH LIMITS\n"
        << escaped(input_limits) << "\n.SH ENVIRONMENT\n.TP\n"
        << bold("NO_COLOR") << "\nIf it is set and not empty, nothing is coloured.\n.TP\n"
        << bold("TERM") << "\nNothing is coloured on a " << bold("dumb")
        << " terminal, nor elsewhere than on a terminal.\n";
    return exit_ok;
}

} // namespace

void add_manual(CommandLine &line)
{
    auto [verb, options] = line.add_verb("manual", "Prints the manual page", manual);
    verb.group("");
    options.line = &line;
}

} // namespace netparam
