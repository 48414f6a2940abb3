// What happened to a body's elements while the library read them.
#ifndef NETPARAM_TRACE_H
#define NETPARAM_TRACE_H

#include "engine/engine.h"
#include "reading/document.h"

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
    std::string read;     // what stood there; empty when nothing was read, `hidden` for a secret
    std::string reason;   // what is wrong with it
    std::string accepted; // what would be right; empty when only the message's own code knows
};

// What the library accepts, but may mean otherwise than its sender.
struct Note {
    enum class Kind {
        ignored,   // a child that answers to no key
        shortened, // a child whose name is only the beginning of the key that took it
        word,      // a part of a set that is no word
        element,   // a body whose element is called otherwise
        unread,    // an element beside the message's
    };
    Kind kind;
    Spot spot;
    std::string path;
    std::string text; // what is to be said of it: "is ignored: no key answers to it"
    std::string key = {};
};
// "ignored", "shortened", "unknown word", "other element", "unread"
const char *name_of(Note::Kind kind);
// Is it more than a matter of spelling?
constexpr bool is_loss(Note::Kind kind)
{
    return kind != Note::Kind::shortened;
}

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
    // The first of them; only so many of each kind are kept.
    const std::vector<Note> &notes() const
    {
        return notes_;
    }
    std::size_t in_all(Note::Kind kind) const
    {
        const auto found = told_in_all_.find(kind);
        return found != told_in_all_.end() ? found->second : 0;
    }
    std::size_t losses() const;
    void add(const Note &note);
    // Where the key's elements stood that were read into this member: one a number of a list, the last one of
    // other members. Empty where there is none.
    std::vector<Spot> origins(const void *member, const char *key) const;
    // The elements that stood there.
    std::vector<const TiXmlNode *> elements(const void *member, const char *key) const;
    // The children of an element that were taken by a row of this key; code of the message's own may have read them.
    std::vector<const TiXmlNode *> children(const TiXmlNode *element, const std::string &key) const;
    // The elements that hold the cells of grids.
    const std::vector<const TiXmlNode *> &grids() const
    {
        return grids_;
    }
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
    void check_words(const netpublic::Table &table, const netpublic::Row &row, const TiXmlNode &node);

    struct Origin {
        const TiXmlNode *parent = nullptr;
        int count = -1;                       // items after the latest one
        std::vector<const TiXmlNode *> nodes; // null for none
    };

    netpublic::Watch watch_;
    bool listening_ = true;
    bool show_secrets_;
    bool refused_ = false;
    const TiXmlNode *outermost_ = nullptr; // element of the latest refusal in the chain
    Refusal refusal_;
    std::vector<Note> notes_;
    std::vector<const TiXmlNode *> grids_;
    std::map<Note::Kind, std::size_t> told_in_all_;
    std::set<const TiXmlNode *> taken_;
    std::map<const TiXmlNode *, std::vector<std::pair<std::string, const TiXmlNode *>>> children_; // with their keys
    std::set<std::pair<const TiXmlNode *, std::string>> told_; // of what notes were made
    std::map<std::pair<const void *, std::string>, Origin> origins_;
};

} // namespace netparam

#endif
