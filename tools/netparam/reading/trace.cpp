#include "reading/trace.h"

#include "engine/matching.h"
#include "model/accept.h"
#include "model/facts.h"
#include "model/nearest.h"
#include "model/rows.h"
#include "reading/secrets.h"

#include <algorithm>

namespace netparam {
namespace {

using netpublic::Event;
using netpublic::Row;
using netpublic::Table;

constexpr std::size_t most_told = 20; // of each kind

bool lies_within(const TiXmlNode *node, const TiXmlNode &outer)
{
    while (node != nullptr && node != &outer)
        node = node->Parent();
    return node != nullptr;
}

// The library may read in a second walk what it skips in the first: then the rows know the key at least.
bool is_known(const Table &table, const TiXmlNode &node)
{
    for (unsigned i = table.keys; i < table.rows; ++i)
        if (netpublic::is_named(node.Value(), table.key(table.row(i))))
            return true;
    return false;
}

Refusal of_value(const Table &table, const Row &row, const void *record, const TiXmlNode &node, bool show_secrets)
{
    const Verdict verdict = judge(table, row, record, node);
    Refusal refusal = {verdict.text_is_to_blame ? spot_of_text(node) : spot_of(node),
                       path_of(node),
                       table.key(row),
                       "",
                       verdict.reason,
                       verdict.accepted};
    const char *text = node.ToElement() != nullptr ? node.ToElement()->GetText() : nullptr;
    if (text != nullptr) {
        const bool hide = !show_secrets && (is_secret(refusal.key) || may_be_secret(node.ValueStr()));
        refusal.read = hide ? hidden : text;
    }
    return refusal;
}

// Of an element whose text is not to blame.
Refusal of_element(const TiXmlNode &node, const std::string &key, const std::string &reason,
                   const std::string &accepted)
{
    return {spot_of(node), path_of(node), key, "", reason, accepted};
}

Refusal of_placeless(const Table &table, const Row &row, const TiXmlNode &node)
{
    return of_element(node, table.key(row), "the child that chooses the item's record must come first",
                      accepted_by(table, row));
}

Refusal of_missing(const Table &table, const Row &row, const TiXmlNode &element)
{
    const std::string key = table.key(row);
    std::string reason = "the child \"" + key + "\" is missing";
    if (netpublic::is_list(row.kind) && (row.flags & netpublic::list_exact) != 0) {
        int items = 0;
        for (const TiXmlNode *child = element.FirstChild(); child != nullptr; child = child->NextSibling())
            items += netpublic::find_key(table, child->Value()) == &row ? 1 : 0;
        reason = "there are only " + std::to_string(items) + " of \"" + key + "\"";
    }
    return of_element(element, key, reason, key + ": " + accepted_by(table, row));
}

Refusal of_stranger(const Table &table, const TiXmlNode &node)
{
    const std::string reason = node.ToElement() == nullptr ? "this is no element; a comment or text is refused here"
                               : table.names == netpublic::Names::in_order ? "another child is expected here"
                                                                           : "no such child is accepted here";
    return of_element(node, "", reason,
                      joined(keys_of(table), table.names == netpublic::Names::in_order ? ", then " : ", "));
}

} // namespace

Trace::Trace(bool show_secrets) : watch_{this, happened}, show_secrets_(show_secrets)
{
    netpublic::watch = &watch_;
}

Trace::~Trace()
{
    stop();
}

void Trace::stop()
{
    if (listening_)
        netpublic::watch = nullptr;
    listening_ = false;
}

void Trace::happened(void *self, Event event, const Table &table, const Row *row, void *record, netpublic::Node element)
{
    Trace &trace = *static_cast<Trace *>(self);
    const TiXmlNode *node = element.tree();
    switch (event) {
    case Event::taken:
        trace.taken_.insert(node);
        trace.refused_ = false; // the message's own code has put up with it
        trace.take(table, *row, record, *node);
        break;
    case Event::ignored:
        if ((table.flags & netpublic::table_others_fail) != 0)
            trace.refuse(of_stranger(table, *node), *node);
        else
            trace.ignore(table, *node);
        break;
    case Event::refused:
        trace.take(table, *row, record, *node); // a number out of range is stored, too
        // Refusals come from the inside out; the innermost one is the reason for the others.
        if (trace.refused_ && lies_within(trace.outermost_, *node))
            trace.outermost_ = node;
        else
            trace.refuse(of_value(table, *row, record, *node, trace.show_secrets_), *node);
        break;
    case Event::placeless:
        trace.refuse(of_placeless(table, *row, *node), *node);
        break;
    case Event::missing:
        trace.refuse(of_missing(table, *row, *node), *node);
        break;
    case Event::unwritten: // a writer's
        break;
    }
}

void Trace::refuse(const Refusal &refusal, const TiXmlNode &node)
{
    refusal_ = refusal;
    outermost_ = &node;
    refused_ = true;
}

void Trace::take(const Table &table, const Row &row, const void *record, const TiXmlNode &node)
{
    const std::string key = table.key(row);
    if (node.ValueStr().size() < key.size() && table.names != netpublic::Names::any &&
        told_.insert({&node, key}).second)
        add({Note::Kind::shortened, spot_of(node), path_of(node), "was read as " + key, key});
    if ((row.flags & netpublic::row_skipped) != 0)
        return;
    children_[node.Parent()].emplace_back(key, &node);
    check_words(table, row, node);
    if (row.kind == netpublic::Kind::grid)
        grids_.push_back(&node);
    const char *member = static_cast<const char *>(record) + row.offset;
    Origin &origin = origins_[{member, key}];
    if (origin.parent != node.Parent())
        origin = {node.Parent(), -1, {}};
    if (row.kind == netpublic::Kind::wire || row.kind == netpublic::Kind::wires) {
        origin.nodes.push_back(&node);
    } else if (row.kind == netpublic::Kind::int_items) {
        const int capacity = table.capacity(row);
        const Row *counter = count_of(table, row);
        int count = counter != nullptr ? load<std::int32_t>(static_cast<const char *>(record) + counter->offset)
                                       : std::min(origin.count < 0 ? 1 : origin.count + 1, capacity + 1);
        const bool too_many = counter != nullptr ? count == origin.count : count > capacity;
        origin.count = count;
        count = std::clamp(count, 1, capacity);
        if (too_many && (row.flags & netpublic::list_stop) != netpublic::list_last)
            return;
        origin.nodes.resize(std::max(origin.nodes.size(), static_cast<std::size_t>(count)));
        origin.nodes[static_cast<std::size_t>(count) - 1] = &node;
    } else {
        origin.nodes = {&node};
    }
}

// The words of a set are found wherever they stand in its text, and nothing complains about the rest.
void Trace::check_words(const Table &table, const Row &row, const TiXmlNode &node)
{
    const netpublic::WordTable *words = row_words(table, row);
    const char *text = node.ToElement() != nullptr ? node.ToElement()->GetText() : nullptr;
    if (words == nullptr || text == nullptr ||
        (row.kind != netpublic::Kind::events && !is_mask(table, table.index_of(row))))
        return;
    const std::vector<std::string> known = spellings(*words, netpublic::Use::read);
    for (const std::string &part : split(text, ',')) {
        const std::string word = trimmed(part);
        const auto is_word = [&](const std::string &one) { return lower(one) == lower(word); };
        const auto occurs = [&](const std::string &one) { return lower(word).find(lower(one)) != std::string::npos; };
        if (word.empty() || is_word("none") || std::any_of(known.begin(), known.end(), is_word) ||
            !told_.insert({&node, word}).second)
            continue;
        const auto within = std::find_if(known.begin(), known.end(), occurs);
        add({Note::Kind::word, spot_of_text(node), path_of(node),
             in_quotes(word, 40) + (within != known.end()
                                        ? " is read as " + *within
                                        : " is no word of the set and is ignored" + meant(word, known)),
             table.key(row)});
    }
}

std::vector<Spot> Trace::origins(const void *member, const char *key) const
{
    std::vector<Spot> spots;
    for (const TiXmlNode *node : elements(member, key))
        spots.push_back(node != nullptr ? spot_of_text(*node) : Spot());
    return spots;
}

std::vector<const TiXmlNode *> Trace::elements(const void *member, const char *key) const
{
    const auto found = origins_.find({member, key});
    return found != origins_.end() ? found->second.nodes : std::vector<const TiXmlNode *>();
}

std::vector<const TiXmlNode *> Trace::children(const TiXmlNode *element, const std::string &key) const
{
    std::vector<const TiXmlNode *> found;
    if (const auto taken = children_.find(element); taken != children_.end())
        for (const auto &[name, child] : taken->second)
            if (name == key && std::find(found.begin(), found.end(), child) == found.end())
                found.push_back(child);
    return found;
}

void Trace::ignore(const Table &table, const TiXmlNode &node)
{
    refused_ = false;
    // A comment takes part in the matching, but nobody means a key by it.
    // A body that is read twice is told of once, and what one reading takes, the other may ignore.
    if (node.ToElement() == nullptr || is_known(table, node) || taken_.count(&node) != 0 ||
        !told_.insert({&node, ""}).second)
        return;
    const bool told = in_all(Note::Kind::ignored) < most_told; // to look for the nearest takes its time
    add({Note::Kind::ignored, told ? spot_of(node) : Spot(), told ? path_of(node) : "",
         "is ignored: no key answers to it" + (told ? meant(node.ValueStr(), keys_of(table)) : "")});
}

void Trace::add(const Note &note)
{
    if (++told_in_all_[note.kind] <= most_told)
        notes_.push_back(note);
}

std::size_t Trace::losses() const
{
    std::size_t sum = 0;
    for (const auto &[kind, count] : told_in_all_)
        sum += is_loss(kind) ? count : 0;
    return sum;
}

const char *name_of(Note::Kind kind)
{
    constexpr const char *names[] = {"ignored", "shortened", "unknown word", "other element", "unread"};
    return names[static_cast<std::size_t>(kind)];
}

} // namespace netparam
