// Counts instructions instead of time: to be run under callgrind, which writes one dump an entry. Counts
// are the same in every run, however busy the machine is.
#include "work.h"

#include <net_host_standin.h>
#include <valgrind/callgrind.h>

#include <cstring>
#include <deque>

int main(int argc, char **argv)
{
    net_host_reset();
    bench::Entries entries;
    bench::add_messages(entries);
    std::deque<std::string> labels; // callgrind keeps pointers to them
    for (const auto &entry : entries) {
        if (argc > 1 && std::strstr(entry.name.c_str(), argv[1]) == nullptr)
            continue;
        const auto work = entry.make();
        labels.push_back(entry.name + " " + std::to_string(work->calls()));
        work->prepare(); // the first run, which warms the allocator up, is not counted
        work->run();
        work->clean();
        work->prepare();
        CALLGRIND_START_INSTRUMENTATION;
        CALLGRIND_ZERO_STATS;
        work->run();
        CALLGRIND_DUMP_STATS_AT(labels.back().c_str());
        CALLGRIND_STOP_INSTRUMENTATION;
        work->clean();
    }
    return 0;
}
