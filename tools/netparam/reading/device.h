// What the host answers, so that the tool can play any device.
#ifndef NETPARAM_DEVICE_H
#define NETPARAM_DEVICE_H

#include <string>

namespace CLI {
class App;
}

namespace netparam {

struct Device {
    int channels = 16, alarm_inputs = 16, alarm_outputs = 4;
    std::string type = "IPC", display_type = "Stand-in", country;
    bool wifi = false, wifi_kit = false, standalone = false;

    void add_options(CLI::App &verb); // see terminal/options.cpp
    // From now on the host answers so. Its answers point into this device, which must outlive them.
    void play() const;
};

} // namespace netparam

#endif
