#include "targets.h"

namespace fuzz {

const std::vector<Target> &targets()
{
    static const std::vector<Target> all = {
        {"parse", run_parse, [](const Sink &sink) { message_seeds(sink, Body::text); }, Body::text, 4096},
        {"write", run_write, [](const Sink &sink) { message_seeds(sink, Body::text); }, Body::text, 4096},
        {"tree", run_tree, [](const Sink &sink) { message_seeds(sink, Body::tree); }, Body::tree, 4096},
        {"payload", run_payload, [](const Sink &sink) { message_seeds(sink, Body::tree); }, Body::none, 256},
        {"route", run_route, route_seeds, Body::text, 4096},
        {"header", run_header, header_seeds, Body::none, 66 * 1024},
        {"scan", run_scan, scan_seeds, Body::none, 1024},
        {"filter", run_filter, filter_seeds, Body::none, 1024},
        {"base64", run_base64, base64_seeds, Body::none, 512},
        {"grid", run_grid, base64_seeds, Body::none, 2600},
        {"words", run_words, word_seeds, Body::none, 128},
        {"lists", run_lists, list_seeds, Body::none, 256},
        {"schedule", run_schedule, schedule_seeds, Body::none, 2048},
        {"init", run_init, header_seeds, Body::none, 128},
    };
    return all;
}

const Target *find_target(const std::string &name)
{
    for (const Target &target : targets())
        if (name == target.name)
            return &target;
    return nullptr;
}

} // namespace fuzz
