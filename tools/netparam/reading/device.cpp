#include "reading/device.h"

#include <net_host_standin.h>

namespace netparam {

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
