// What holds after any call, whatever the input: the checks that fuzz targets and tests share. The
// numbers are those of docs/security.md.
#ifndef NETPUBLIC_FUZZ_PROMISES_H
#define NETPUBLIC_FUZZ_PROMISES_H

#include "engine/table.h"
#include "text/scanner.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

class TiXmlNode;

// Under the address sanitizer the guards around blocks are poisoned instead of looked at.
#if defined(__SANITIZE_ADDRESS__)
#define NETPUBLIC_GUARDS_POISONED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define NETPUBLIC_GUARDS_POISONED 1
#endif
#endif

namespace fuzz {

constexpr std::size_t xml_padding = 8; // zero bytes: the XML library reads past a text that ends in a sequence

// Reports a broken promise: by default it is printed and the process ends, which is what the fuzzer
// waits for. A test puts its own handler in place.
using Broken = void (*)(const char *promise, const std::string &what);
Broken on_broken(Broken handler); // returns the one before
void broken(const char *promise, const std::string &what);

inline void require(bool holds, const char *promise, const char *what)
{
    if (!holds)
        broken(promise, what);
}

// Blocks between guard bytes, for the host's allocator and for buffers that are handed over. Under the
// address sanitizer the guards are poisoned, so that a read is found as well, at the very access.
// Contents start as garbage, which counts as never written under memcheck.
void *guarded_allocate(unsigned int size);
void guarded_release(void *block); // with a check of the guards
bool guards_intact(const void *block);
std::size_t guarded_size(const void *block);
long guarded_live(); // blocks that have not been released

// A buffer that lives no longer than its block.
class Guarded {
public:
    explicit Guarded(std::size_t size);
    Guarded(const void *content, std::size_t size);
    ~Guarded();
    Guarded(const Guarded &) = delete;
    Guarded &operator=(const Guarded &) = delete;

    template <class Type = unsigned char> Type *as()
    {
        return static_cast<Type *>(block_);
    }

private:
    void *block_;
};

// P3 and P4: the counts of a record that a parser has filled lie within the capacities of their lists,
// and its texts end within their members. `exempt` is a text that its initialiser may have filled to the
// last byte.
void check_record(const netpublic::Table &table, const void *record, const void *exempt = nullptr);

// While one lives, an extension header of 5 levels or of 4 attributes in one element is refused, so that short
// texts come near the limits.
class LowLimits {
public:
    explicit LowLimits(bool low = true);
    ~LowLimits();
    LowLimits(const LowLimits &) = delete;
    LowLimits &operator=(const LowLimits &) = delete;

private:
    netpublic::ScanLimits limits_;
};

// Why an extension header was refused that the XML library might read, out of the log line; null when it was not.
const char *header_refusal(std::string_view log);
// P15: whatever was not refused must have no more in it than the limits allow, as the XML library reads it; and
// what was refused for a reason must give that reason.
void check_header(const std::string &text, const char *refusal);

// How deep a tree's elements are nested, and the most attributes that one of them has.
struct Extent {
    unsigned levels = 0;
    unsigned attributes = 0;
};
Extent extent_of(const TiXmlNode &tree);

// A number that changes with any node, name, text or attribute of a tree. P7 and P8.
std::uint64_t fingerprint(const TiXmlNode &tree);

} // namespace fuzz

#endif
