// A piece of work that can be measured: what is done once, before and behind each run, is not.
#ifndef NETPUBLIC_BENCH_WORK_H
#define NETPUBLIC_BENCH_WORK_H

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace bench {

class Work {
public:
    virtual ~Work() = default;
    virtual void prepare() {}
    virtual void run() = 0; // does the same thing calls() times
    virtual void clean() {}

    unsigned calls() const
    {
        return calls_;
    }

protected:
    explicit Work(unsigned calls) : calls_(calls) {}

private:
    unsigned calls_;
};

// Work without preparations.
class Plain : public Work {
public:
    Plain(unsigned calls, std::function<void()> once) : Work(calls), once_(std::move(once)) {}
    void run() override
    {
        for (unsigned i = 0; i < calls(); ++i)
            once_();
    }

private:
    std::function<void()> once_;
};

// Made when it is wanted, so that only what is being measured takes memory. Its maker asserts that the
// work does what it should.
struct Entry {
    std::string name; // "<what>/<on what>"
    std::function<std::unique_ptr<Work>()> make;
};
using Entries = std::vector<Entry>;

// The groups; each is a file of its own.
void add_messages(Entries &entries);
void add_text(Entries &entries);    // the text route
void add_parsers(Entries &entries); // other XML libraries
void add_nanopb(Entries &entries);  // another encoding
void add_codecs(Entries &entries);  // base64, log filter
void add_growth(Entries &entries);  // inputs of 1, 10, 100, 1000 times the size

} // namespace bench

#endif
