// What happened to a body's elements while the library read them.
#ifndef NETPARAM_TRACE_H
#define NETPARAM_TRACE_H

#include "document.h"
#include "engine/engine.h"

#include <map>
#include <set>
#include <string>
#include <utility>
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

// A child whose name is only the beginning of the key that took it.
struct Shortened {
    Spot spot;
    std::string path;
    std::string key;
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
    // The first of them.
    const std::vector<Shortened> &shortened() const
    {
        return shortened_;
    }
    // Where the key's elements stood that were read into this member: one a number of a list, the last one of
    // other members. Empty where there is none.
    std::vector<Spot> origins(const void *member, const char *key) const;
    // How many elements were taken.
    std::size_t taken() const
    {
        return taken_.size();
    }

private:
    static void happened(void *self, netpublic::Event event, const netpublic::Table &table, const netpublic::Row *row,
                         void *record, netpublic::Node element);
    void refuse(const Refusal &refusal, const TiXmlNode &node);
    void ignore(const netpublic::Table &table, const TiXmlNode &node);
    void take(const netpublic::Table &table, const netpublic::Row &row, const void *record, const TiXmlNode &node);

    struct Origin {
        const TiXmlNode *parent = nullptr;
        int count = -1; // items after the latest one
        std::vector<Spot> spots;
    };

    netpublic::Watch watch_;
    bool listening_ = true;
    bool show_secrets_;
    bool refused_ = false;
    const TiXmlNode *outermost_ = nullptr; // element of the latest refusal in the chain
    Refusal refusal_;
    std::vector<Ignored> ignored_;
    std::size_t ignored_in_all_ = 0;
    std::set<const TiXmlNode *> taken_;
    std::set<std::pair<const TiXmlNode *, std::string>> told_; // of what notes were made
    std::vector<Shortened> shortened_;
    std::map<std::pair<const void *, std::string>, Origin> origins_;
};

} // namespace netparam

#endif
