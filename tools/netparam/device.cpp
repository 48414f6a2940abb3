#include "device.h"

#include <net_host_standin.h>

namespace netparam {

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

void Device::play() const
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

} // namespace netparam
