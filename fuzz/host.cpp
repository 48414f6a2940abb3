#include "host.h"

#include "promises.h"

#include <net_host_standin.h>

#include <algorithm>

namespace fuzz {
namespace {

char kept[64 * 1024];
std::size_t kept_size = 0;

ssize_t keep(void *, const char *text, std::size_t size)
{
    const std::size_t room = sizeof kept - kept_size;
    const std::size_t part = std::min(size, room);
    std::memcpy(kept + kept_size, text, part);
    kept_size += part;
    return static_cast<ssize_t>(size); // what does not fit is of no interest
}

FILE *log_stream()
{
    static char buffer[4096];
    static FILE *const stream = [] {
        cookie_io_functions_t functions{};
        functions.write = keep;
        FILE *made = fopencookie(nullptr, "w", functions);
        setvbuf(made, buffer, _IOFBF, sizeof buffer);
        return made;
    }();
    return stream;
}

constexpr const char *types[] = {"IPC", "NVR", "HVR", "DVR", "BASE", "HOMEHUB", "", "IPC_NVR"};

// The token also names the sections that the ability initialiser asks for.
std::string token_of(std::uint8_t choice)
{
    constexpr const char *tokens[] = {"",
                                      "system, network",
                                      "alarm,record,video,image,PTZ,IPC,replay",
                                      "none",
                                      ",,,",
                                      "disk, security,RFAlarm,streaming",
                                      "SYSTEM;",
                                      "sys"};
    const std::size_t count = sizeof tokens / sizeof tokens[0];
    return choice == 0xFF ? std::string(255, 's') : tokens[choice % count];
}

constexpr std::uint8_t memory_below = 200; // most inputs meet a host that has memory

} // namespace

Host::Host() : stdout_(stdout), live_(0)
{
    net_host_reset();
    net_host().allocate = guarded_allocate;
    net_host().release = guarded_release;
    net_host().tick_fixed = true;
    live_ = guarded_live();
    kept_size = 0;
    stdout = log_stream();
}

Host::~Host()
{
    fflush(stdout);
    stdout = stdout_;
    require(guarded_live() == live_, "P6", "blocks of the host are left");
    net_host_reset();
}

net_ext_t Host::play(Bytes &input)
{
    net_host_answers &answers = net_host();
    answers.channels = input.number<std::int8_t>();
    const std::uint8_t device = input.byte();
    answers.type = types[device % 8];
    answers.support_wifi = device >> 3 & 1;
    answers.nvr_wifi_type = device >> 4 & 1;
    answers.solo_ipc = device >> 5 & 1;
    answers.wifi_kit = device >> 6 & 1;
    answers.ntoa_result = device == 0xFF;
    answers.alarm_inputs = input.number<std::int8_t>();
    answers.alarm_outputs = input.number<std::int8_t>();
    const std::uint8_t failing = input.byte();
    memory_fails_ = failing >= memory_below;
    if (memory_fails_)
        net_host_fail_allocation(1 + (failing - memory_below) / 2u, failing % 2 != 0);
    const std::uint8_t switches = input.byte();
    modulemask = (switches & 0x10) != 0 ? 0u : 0x400u;
    loglevel = switches & 0xFu;

    net_ext_t ext{};
    ext.channelId = input.number<std::int8_t>();
    ext.inputId = input.byte();
    ext.streamType = ext.inputId % 5;
    ext.patrolId = ext.inputId % 6;
    const std::uint8_t choice = input.byte();
    const std::string token = token_of(choice);
    std::memcpy(ext.token, token.c_str(), token.size() + 1);
    std::memset(ext.userName, 'u', choice % 32); // 31 characters at most
    input.byte();                                // spare
    return ext;
}

std::string_view Host::log()
{
    fflush(stdout);
    return {kept, kept_size};
}

} // namespace fuzz
