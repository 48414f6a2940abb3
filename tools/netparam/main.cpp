// netparam: shows how the library reads a client's request and what it replies.
#include "commands.h"
#include "nearest.h"
#include "text.h"

#include <CLI/CLI.hpp>
#include <net_host_standin.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

using namespace netparam;

namespace {

// What the host answers, so that the tool can play any device. The texts must outlive the exchange.
struct Device {
    int channels = 16, alarm_inputs = 16, alarm_outputs = 4;
    std::string type = "IPC", display_type = "Stand-in", country;
    bool wifi = false, wifi_kit = false, standalone = false;

    void play() const
    {
        net_host_answers &host = net_host();
        host.channels = channels;
        host.alarm_inputs = alarm_inputs;
        host.alarm_outputs = alarm_outputs;
        host.type = type.c_str();
        host.display_type = display_type.c_str();
        host.country_code = country.c_str();
        host.support_wifi = wifi;
        host.nvr_wifi_type = wifi;
        host.wifi_kit = wifi_kit;
        host.solo_ipc = standalone;
        host.block_fill = 0; // one initialiser leaves its payload as it was allocated
    }
};

void add_device_options(CLI::App &verb, Device &device)
{
    constexpr char group[] = "The device to play";
    verb.add_option("--channels", device.channels, "Number of channels")
        ->check(CLI::Range(0, 1024))
        ->capture_default_str()
        ->group(group);
    verb.add_option("--alarm-inputs", device.alarm_inputs, "Number of alarm inputs")
        ->check(CLI::Range(0, 1024))
        ->capture_default_str()
        ->group(group);
    verb.add_option("--alarm-outputs", device.alarm_outputs, "Number of alarm outputs")
        ->check(CLI::Range(0, 1024))
        ->capture_default_str()
        ->group(group);
    verb.add_option("--type", device.type, "Type text: IPC, NVR, HVR, DVR, BASE, HOMEHUB")
        ->capture_default_str()
        ->group(group);
    verb.add_option("--display-type", device.display_type, "Model text")->capture_default_str()->group(group);
    verb.add_option("--country", device.country, "Configured country code")->group(group);
    verb.add_flag("--wifi", device.wifi, "Has Wi-Fi")->group(group);
    verb.add_flag("--wifi-kit", device.wifi_kit, "Is a Wi-Fi kit")->group(group);
    verb.add_flag("--standalone", device.standalone, "Is a stand-alone camera")->group(group);
}

void add_exchange_options(CLI::App &verb, Options &options, Device &device)
{
    verb.add_option("MESSAGE", options.message,
                    "Its name, or that of its initialiser, parser, writer or root element; see \"netparam list\"")
        ->required();
    verb.add_option(
        "FILE", options.file,
        "XML text with the message's body element as root, or in a root called \"body\"; - is standard input");
    verb.add_option("--ext", options.extension, "XML text of the request's extension header")->type_name("FILE");
    verb.add_flag("--show-secrets", options.show_secrets, "Do not hide passwords, tokens, keys, signatures and codes");
    verb.add_flag("--traces", options.traces, "Show the library's traces, too, not only its errors");
    add_device_options(verb, device);
}

bool wants_colour(int descriptor)
{
    const char *off = std::getenv("NO_COLOR");
    const char *terminal = std::getenv("TERM");
    return (off == nullptr || *off == '\0') && isatty(descriptor) == 1 &&
           (terminal == nullptr || std::string(terminal) != "dumb");
}

// One style serves both streams, so both must be terminals.
bool colour()
{
    return wants_colour(STDOUT_FILENO) && wants_colour(STDERR_FILENO);
}

constexpr char footer[] = R"(Exit codes:
  0   the library accepted everything
  1   the library refused a value, the extension header or the payload
  2   no such message, option or verb
  3   a file cannot be read, or the output cannot be written
  4   the text is not well-formed XML, or not fit to be parsed
  70  a fault of the tool or the library

Examples:
  netparam list md
  netparam parse md request.xml
  netparam exchange md request.xml --ext extension.xml)";

// Misspelt verbs get a suggestion.
void check_verb(const CLI::App &app, const std::string &typed)
{
    std::vector<std::string> verbs;
    for (const CLI::App *verb : app.get_subcommands(nullptr))
        verbs.push_back(verb->get_name());
    if (typed[0] == '-' || std::find(verbs.begin(), verbs.end(), typed) != verbs.end())
        return;
    const std::vector<std::string> near = nearest(typed, verbs, 1);
    throw Failure(exit_usage,
                  "there is no verb " + in_quotes(typed) +
                      (near.empty() ? ", only " + joined(verbs, ", ") : "; did you mean " + near.front() + "?"));
}

int run(int argc, char **argv)
{
    CLI::App app("Shows how the device library reads a client's request, why it refuses one, and what it replies.",
                 "netparam");
    app.footer(footer);
    app.require_subcommand(1);
    Options options;
    Device device;
    std::string filter;

    CLI::App &list = *app.add_subcommand("list", "The catalogue of messages");
    list.add_option("TEXT", filter, "Only messages with this text in their names, or with this id");
    list.add_flag("--json", options.json, "As JSON");

    CLI::App &parse = *app.add_subcommand("parse", "Reads a body and shows the payload that the firmware gets");
    add_exchange_options(parse, options, device);
    parse.get_option("FILE")->required();
    parse.add_flag("--json", options.json, "As JSON, with the names of the rows");

    CLI::App &whole = *app.add_subcommand("exchange", "Plays a whole exchange: header, request, payload, reply");
    add_exchange_options(whole, options, device);
    whole.add_flag("--full", options.full, "Do not shorten long texts");

    try {
        check_verb(app, argc > 1 ? argv[1] : "-");
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        const int code = app.exit(error, std::cout, std::cerr);
        return code == 0 ? exit_ok : exit_usage;
    }
    if (options.file == "-" && options.extension == "-")
        throw Failure(exit_usage, "only one of FILE and --ext can be standard input");
    options.style.colour = colour();
    device.play();

    ExitCode code = exit_ok;
    if (list.parsed())
        code = list_messages(std::cout, filter, options.json);
    else if (parse.parsed())
        code = parse_body(std::cout, std::cerr, options);
    else
        code = exchange(std::cout, std::cerr, options);
    if (!std::cout.flush())
        throw Failure(exit_file, "the output cannot be written");
    return code;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return run(argc, argv);
    } catch (const Failure &failure) {
        std::cout.flush();
        std::cerr << "netparam: " << failure.what() << '\n';
        return failure.code();
    } catch (const std::exception &fault) {
        std::cout.flush();
        std::cerr << "netparam: internal fault: " << fault.what() << '\n';
        return exit_fault;
    }
}
