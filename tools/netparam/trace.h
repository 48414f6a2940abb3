// What happened to a body's elements while the library read them.
#ifndef NETPARAM_TRACE_H
#define NETPARAM_TRACE_H

#include "document.h"
#include "engine.h"

#include <string>
#include <vector>

namespace netparam {

// Why a value, or a whole element, was refused.
struct Refusal {
    Spot spot;            // of the text, or of the element where the text is not to blame
    std::string path;     // of the element
    std::string key;      // that the element answers to
    std::string read;     // what stood there, fit for the terminal; empty when nothing was read
    std::string reason;   // what is wrong with it
    std::string accepted; // what would be right; empty when only the message's own code knows
};

// A child that answers to no key.
struct Ignored {
    Spot spot;
    std::string path;
    std::vector<std::string> near; // keys that it may have meant
};

// Listens to the library's engine while it lives; not for two at once in a thread.
class Trace {
public:
    explicit Trace(bool show_secrets);
    ~Trace();
    Trace(const Trace &) = delete;
    Trace &operator=(const Trace &) = delete;

    // Ends the listening; what was heard stays.
    void stop();

    // The innermost refusal that ended the reading; null without one.
    const Refusal *refusal() const
    {
        return refused_ ? &refusal_ : nullptr;
    }
    // The first of them; only so many are kept.
    const std::vector<Ignored> &ignored() const
    {
        return ignored_;
    }
    std::size_t ignored_in_all() const
    {
        return ignored_in_all_;
    }
    // How many elements were taken.
    std::size_t taken() const
    {
        return taken_;
    }

private:
    static void happened(void *self, netpublic::Event event, const netpublic::Table &table, const netpublic::Row *row,
                         void *record, TiXmlNode *node);
    void refuse(const Refusal &refusal, const TiXmlNode &node);
    void ignore(const netpublic::Table &table, const TiXmlNode &node);

    netpublic::Watch watch_;
    bool listening_ = true;
    bool show_secrets_;
    bool refused_ = false;
    const TiXmlNode *outermost_ = nullptr; // element of the latest refusal in the chain
    Refusal refusal_;
    std::vector<Ignored> ignored_;
    std::size_t ignored_in_all_ = 0;
    std::size_t taken_ = 0;
};

} // namespace netparam

#endif
