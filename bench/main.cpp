// Times the entries with Google Benchmark. What an entry does is asserted when it is made; the time is the
// thread's own (user and system), so that other processes do not count.
#include "work.h"

#include <benchmark/benchmark.h>
#include <net_host_standin.h>

#include <algorithm>
#include <ctime>

namespace {

double thread_time()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// What reading the clock costs by itself.
double clock_cost()
{
    double least = 1;
    for (int i = 0; i < 1000; ++i) {
        const double start = thread_time();
        least = std::min(least, thread_time() - start);
    }
    return least;
}

// An iteration is one run, and "calls" says how often that does the thing.
void measure(benchmark::State &state, const bench::Entry &entry)
{
    static const double clock = clock_cost();
    constexpr double least_time = 1e-9;
    const auto work = entry.make();
    work->prepare();
    work->run();
    work->clean();
    for (auto _ : state) {
        static_cast<void>(_);
        work->prepare();
        const double start = thread_time();
        work->run();
        state.SetIterationTime(std::max(thread_time() - start - clock, least_time));
        work->clean();
    }
    state.counters["calls"] = work->calls();
}

} // namespace

int main(int argc, char **argv)
{
    net_host_reset();
    loglevel = 0;
    bench::Entries entries;
    bench::add_messages(entries);
    bench::add_text(entries);
    bench::add_parsers(entries);
    bench::add_nanopb(entries);
    bench::add_codecs(entries);
    bench::add_growth(entries);
    for (const bench::Entry &entry : entries)
        benchmark::RegisterBenchmark(entry.name.c_str(), [&](benchmark::State &state) {
            measure(state, entry);
        })->UseManualTime();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
