// Watches the engine while it reads: which row takes a child, and what it stores, is compared with the
// plain rules, child by child.
#ifndef NETPUBLIC_FUZZ_ORACLE_H
#define NETPUBLIC_FUZZ_ORACLE_H

#include "engine/engine.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fuzz {

class Oracle {
public:
    // With a payload, the members that are read are kept, too.
    explicit Oracle(const void *payload = nullptr);
    ~Oracle();
    Oracle(const Oracle &) = delete;
    Oracle &operator=(const Oracle &) = delete;

    unsigned taken() const
    {
        return taken_;
    }
    unsigned ignored() const
    {
        return ignored_;
    }
    // P12: no text that the watched parser has met under a secret's key stands in the log, nor do its first
    // characters, where they stand nowhere else in the text or tree that was read.
    void check_log(std::string_view log, const std::string &source) const;
    bool met_secrets() const
    {
        return !secrets_.empty();
    }

    // A row of a record at its place in the payload.
    using Member = std::pair<const netpublic::Row *, std::ptrdiff_t>;
    // The members that have been read, and the innermost one that has been refused.
    const std::set<Member> &members() const
    {
        return members_;
    }
    const Member &refused() const
    {
        return refused_;
    }

private:
    static void happened(void *self, netpublic::Event event, const netpublic::Table &table, const netpublic::Row *row,
                         void *record, netpublic::Node element);

    netpublic::Watch watch_;
    const char *payload_;
    std::set<Member> members_;
    Member refused_{nullptr, 0};
    unsigned taken_ = 0;
    unsigned ignored_ = 0;
    std::vector<std::string> secrets_; // those that begin with the mark
};

// One counter for each outcome of each row, if set: the fuzzer follows them like code that is reached.
// Which slot is whose is a matter of hashing.
struct RowCounters {
    std::uint8_t *counters;
    std::size_t size;
};
extern RowCounters row_counters;

// A secret's mark: what the generators put in front of passwords, keys and tokens.
inline constexpr char secret_mark[] = "s3cr3t";

// Is this the key of a secret?
bool is_secret_key(const char *key);

} // namespace fuzz

#endif
