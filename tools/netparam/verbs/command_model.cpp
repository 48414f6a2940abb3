#include "verbs/command_model.h"

namespace netparam {
namespace {

// "TEXT:{a,b}" names the choices; "INT:INT in [0 - 9]" and the like say what the description says better.
void set_value(Parameter &parameter, const std::string &type)
{
    const std::size_t open = type.find('{'), close = type.find('}');
    if (open != std::string::npos && close != std::string::npos) {
        parameter.choices = split(type.substr(open + 1, close - open - 1), ',');
        parameter.value = joined(parameter.choices, "|");
        return;
    }
    parameter.value = type.substr(0, type.find(':'));
    if (parameter.value.find('|') != std::string::npos) // only suggested
        parameter.choices = split(parameter.value, '|');
    if (parameter.value == "INT" || parameter.value == "UINT")
        parameter.value = "NUMBER";
}

} // namespace

std::string Parameter::synopsis() const
{
    return joined(names, ", ") + (positional || value.empty() ? "" : " " + value) + (repeated ? "..." : "");
}

Parameter parameter_of(const CLI::Option &option)
{
    Parameter parameter;
    parameter.positional = option.get_positional();
    if (parameter.positional)
        parameter.names = {option.get_name(true, false)};
    else
        parameter.names = split(option.get_name(false, true), ',');
    if (option.get_type_size() != 0)
        set_value(parameter, option.get_type_name());
    parameter.description = option.get_description();
    parameter.group = option.get_group();
    parameter.fallback = option.get_default_str();
    parameter.required = option.get_required();
    parameter.repeated = option.get_expected_max() >= CLI::detail::expected_max_vector_size;
    return parameter;
}

std::vector<Parameter> parameters_of(const CLI::App &app)
{
    std::vector<Parameter> parameters;
    for (const CLI::Option *option : app.get_options([](const CLI::Option *one) { return !one->get_group().empty(); }))
        parameters.push_back(parameter_of(*option));
    return parameters;
}

std::vector<Verb> verbs_of(const CommandLine &line)
{
    std::vector<Verb> verbs;
    for (const CLI::App *app :
         line.app.get_subcommands([](const CLI::App *one) { return !one->get_group().empty(); })) {
        Verb verb = {app->get_name(), app->get_description(), {}, parameters_of(*app)};
        const auto explained = line.explanations.find(app);
        if (explained != line.explanations.end())
            verb.explanation = explained->second;
        verbs.push_back(verb);
    }
    return verbs;
}

} // namespace netparam
