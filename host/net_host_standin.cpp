#include "net_host_standin.h"

#include <arpa/inet.h>

#include <atomic>
#include <cstdlib>
#include <cstring>

namespace {

constexpr unsigned int own_module = 0x400;
constexpr unsigned int errors = 0x1;

net_host_answers answers;

// Counted without any order: it would keep from a thread sanitizer what threads share besides.
constexpr auto unordered = std::memory_order_relaxed;
std::atomic<long> live{0};
std::atomic<unsigned long> total{0};
std::atomic<unsigned int> last_size{0};
std::atomic<long> allowed{-1}; // successful allocations before the failing one; negative: none fails
std::atomic<bool> stay_failing{false};

// Decides whether this allocation is to fail. The count passes through -1 after a single failure.
bool failing()
{
    long left = allowed.load();
    do {
        if (left < 0)
            return false;
        if (left == 0 && stay_failing)
            return true;
    } while (!allowed.compare_exchange_weak(left, left - 1));
    return left == 0;
}

} // namespace

net_host_answers &net_host()
{
    return answers;
}

void net_host_reset()
{
    answers = net_host_answers{};
    net_host_fail_allocation(0);
    total = 0;
    last_size = 0;
    modulemask = own_module;
    loglevel = errors;
}

net_host_blocks net_host_memory()
{
    return {live, total, last_size};
}

void net_host_fail_allocation(unsigned long which, bool onwards)
{
    stay_failing = onwards;
    allowed = static_cast<long>(which) - 1;
}

extern "C" {

unsigned int modulemask = own_module;
unsigned int loglevel = errors;

void *bc_malloc(unsigned int size)
{
    last_size.store(size, unordered);
    if (failing())
        return nullptr;
    void *block = answers.allocate != nullptr ? answers.allocate(size) : std::malloc(size);
    if (block == nullptr)
        return nullptr;
    if (answers.block_fill >= 0)
        std::memset(block, answers.block_fill, size);
    live.fetch_add(1, unordered);
    total.fetch_add(1, unordered);
    return block;
}

void bc_free(void *block)
{
    if (block == nullptr)
        return;
    live.fetch_sub(1, unordered);
    if (answers.release != nullptr)
        answers.release(block);
    else
        std::free(block);
}

int bc_ntoa(unsigned int address, char *text, int size)
{
    if (answers.ntoa_result != 0)
        return answers.ntoa_result;
    in_addr in{};
    in.s_addr = address;
    return size > 0 && inet_ntop(AF_INET, &in, text, static_cast<socklen_t>(size)) != nullptr ? 0 : -1;
}

unsigned long long get_tick_count(int)
{
    if (answers.tick_fixed)
        return answers.tick;
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<unsigned long long>(now.tv_sec) * 1000 + static_cast<unsigned long long>(now.tv_nsec) / 1000000;
}

time_t mktime_abs(struct tm *calendar)
{
    struct tm local = *calendar;
    local.tm_year -= 1900;
    local.tm_mon -= 1;
    local.tm_isdst = -1;
    return mktime(&local);
}

int Sp_get_uid(char *uid)
{
    std::strncpy(uid, answers.uid, 31);
    uid[31] = '\0';
    return answers.uid_result;
}

int Sp_get_uidkey(char *key)
{
    // A key of more than 8 characters arrives without a terminator.
    for (int i = 0; i < 9; ++i) {
        key[i] = answers.key[i];
        if (key[i] == '\0')
            break;
    }
    return answers.key_result;
}

int Sp_get_mac_addr(unsigned char *mac)
{
    std::memcpy(mac, answers.mac, sizeof(answers.mac));
    return answers.mac_result;
}

int Sp_get_temporary_mac_addr(unsigned char *mac)
{
    std::memcpy(mac, answers.temporary_mac, sizeof(answers.temporary_mac));
    return answers.temporary_mac_result;
}

const char *sc_get_type(void)
{
    return answers.type;
}

const char *sc_get_display_type(void)
{
    return answers.display_type;
}

const char *sc_get_nvr_ap_def_country_code(void)
{
    return answers.country_code;
}

int sc_get_support_uid(void)
{
    return answers.support_uid;
}

int sc_get_support_wifi(void)
{
    return answers.support_wifi;
}

int sc_get_nvr_wifi_type(void)
{
    return answers.nvr_wifi_type;
}

int sc_get_solo_ipc(void)
{
    return answers.solo_ipc;
}

int sc_get_channel_num(void)
{
    return answers.channels;
}

int sc_get_default_alarmin_num(void)
{
    return answers.alarm_inputs;
}

int sc_get_default_alarmout_num(void)
{
    return answers.alarm_outputs;
}

int sc_get_is_wifi_kit(void)
{
    return answers.wifi_kit;
}

} // extern "C"
