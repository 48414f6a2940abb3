// The host that a fuzz target plays: guarded allocation, answers out of the input, and a log that can be
// looked at.
#ifndef NETPUBLIC_FUZZ_HOST_H
#define NETPUBLIC_FUZZ_HOST_H

#include "bytes.h"

#include <net_types.h>

#include <cstdio>
#include <string_view>

namespace fuzz {

// From its construction on the allocator is guarded_allocate(), and what the library prints is kept
// instead of shown. At the end all of it is undone, and P6 is checked: no block is left.
class Host {
public:
    Host();
    ~Host();
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    // How many bytes of an input play() takes.
    static constexpr std::size_t answers_size = 10;
    // Sets the answers, the log switches and, if the input says so, a failing allocation. Returns what
    // the request's extension header says.
    net_ext_t play(Bytes &input);

    // Has the input asked for a failing allocation?
    bool memory_fails() const
    {
        return memory_fails_;
    }

    // What has been printed, or the end of it.
    std::string_view log();

private:
    FILE *stdout_;
    long live_;
    bool memory_fails_ = false;
};

} // namespace fuzz

#endif
