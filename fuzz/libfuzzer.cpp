// One target as a program of libFuzzer; FUZZ_TARGET is its name.
#include "oracle.h"
#include "targets.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

// Rows of tables count as covered ground, too: the engine's code is the same for all of them.
__attribute__((section("__libfuzzer_extra_counters"))) static std::uint8_t counters[1 << 14];

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t most);

namespace {

const fuzz::Target *target = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    target = fuzz::find_target(FUZZ_TARGET);
    if (target == nullptr) {
        std::fputs("no target " FUZZ_TARGET "\n", stderr);
        std::exit(2);
    }
    if (target->body != fuzz::Body::none)
        fuzz::learn_examples();
    fuzz::row_counters = {counters, sizeof counters};
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    target->run(data, size);
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t most, unsigned seed)
{
    constexpr unsigned known_of_four = 3; // so many changes of four know the tables
    if (target->body == fuzz::Body::none || seed % 4 >= known_of_four)
        return LLVMFuzzerMutate(data, size, most);
    const std::string made = fuzz::mutated(*target, data, size, most, seed / 4);
    if (made.empty())
        return LLVMFuzzerMutate(data, size, most);
    std::memcpy(data, made.data(), made.size());
    return made.size();
}
