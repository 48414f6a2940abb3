// The arguments and options that verbs share.
#include "terminal/annotate.h"

#include <CLI/CLI.hpp>

namespace netparam {
namespace {

constexpr char message_description[] =
    "Its name, or that of its initialiser, parser, writer or root element; see \"netparam list\"";

} // namespace

void Device::add_options(CLI::App &verb)
{
    constexpr char group[] = "The device to play";
    const auto count = [&](const char *name, int &value, const char *description) {
        verb.add_option(name, value, description)->check(CLI::Range(0, 1024))->capture_default_str()->group(group);
    };
    count("--channels", channels, "Number of channels");
    count("--alarm-inputs", alarm_inputs, "Number of alarm inputs");
    count("--alarm-outputs", alarm_outputs, "Number of alarm outputs");
    verb.add_option("--type", type, "Type text; others than these are possible")
        ->type_name("IPC|NVR|HVR|DVR|BASE|HOMEHUB")
        ->capture_default_str()
        ->group(group);
    verb.add_option("--display-type", display_type, "Model text")->capture_default_str()->group(group);
    verb.add_option("--country", country, "Configured country code")->group(group);
    verb.add_flag("--wifi", wifi, "Has Wi-Fi")->group(group);
    verb.add_flag("--wifi-kit", wifi_kit, "Is a Wi-Fi kit")->group(group);
    verb.add_flag("--standalone", standalone, "Is a stand-alone camera")->group(group);
}

CLI::App &Options::add_options(CLI::App &verb)
{
    verb.add_option("MESSAGE", message, message_description)->required();
    verb.add_option(
        "FILE", file,
        "XML text with the message's body element as root, or in a root called \"body\"; - is standard input");
    verb.add_option("--ext", extension, "XML text of the request's extension header")->type_name("FILE");
    verb.add_flag("--show-secrets", show_secrets, "Do not hide passwords, tokens, keys, signatures and codes");
    verb.add_flag("--traces", traces, "Show the library's traces, too, not only its errors");
    device.add_options(verb);
    return verb;
}

void Options::add_picture(CLI::App &verb)
{
    verb.add_option("--svg", picture, "Also save the payload's grids, schedules, polygons and masks as a picture")
        ->type_name("FILE");
}

void Options::add_format(CLI::App &verb, bool with_json)
{
    std::vector<std::string> formats = {format_text};
    if (with_json)
        formats.emplace_back(format_json);
    formats.emplace_back(format_github);
    verb.add_option("--format", format, "How refusals and notes are written")
        ->check(CLI::IsMember(formats))
        ->capture_default_str();
}

} // namespace netparam
