// What the C++ code of the test runner, of the library and of the XML library allocates: counted, and
// made to fail. The host's blocks are net_host_memory()'s.
#ifndef NETPUBLIC_TESTS_MEMORY_H
#define NETPUBLIC_TESTS_MEMORY_H

namespace test {

// Of operator new, since the program began.
long allocations();
// Blocks that have not been deleted.
long live_blocks();

template <class Function> long allocations_of(Function function)
{
    const long before = allocations();
    function();
    return allocations() - before;
}

// While one lives, an allocation of this thread fails: the `which`-th from now on, or all from that one on.
class FailingNew {
public:
    FailingNew(long which, bool onwards);
    ~FailingNew();
    FailingNew(const FailingNew &) = delete;
    FailingNew &operator=(const FailingNew &) = delete;
};

} // namespace test

#endif
