#include "trace.h"

#include "accept.h"
#include "engine/matching.h"
#include "nearest.h"
#include "rows.h"
#include "secrets.h"

#include <algorithm>

namespace netparam {
namespace {

using netpublic::Event;
using netpublic::Row;
using netpublic::Table;

constexpr std::size_t most_ignored = 20, most_shortened = 20;

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
    Refusal refusal;
    refusal.spot = verdict.text_is_to_blame ? spot_of_text(node) : spot_of(node);
    refusal.path = path_of(node);
    refusal.key = table.key(row);
    refusal.reason = verdict.reason;
    refusal.accepted = verdict.accepted;
    const char *text = node.ToElement() != nullptr ? node.ToElement()->GetText() : nullptr;
    if (text != nullptr) {
        const bool hide = !show_secrets && (is_secret(refusal.key) || may_be_secret(node.ValueStr()));
        refusal.read = hide ? hidden : in_quotes(text, 80);
    }
    return refusal;
}

Refusal of_missing(const Table &table, const Row &row, const TiXmlNode &element)
{
    Refusal refusal;
    refusal.spot = spot_of(element);
    refusal.path = path_of(element);
    refusal.key = table.key(row);
    refusal.reason = "the child \"" + refusal.key + "\" is missing";
    if (netpublic::is_list(row.kind) && (row.flags & netpublic::list_exact) != 0) {
        int items = 0;
        for (const TiXmlNode *child = element.FirstChild(); child != nullptr; child = child->NextSibling())
            items +=
                netpublic::find_key(table, child->Value(), 0) == static_cast<unsigned>(&row - &table.row(0)) ? 1 : 0;
        refusal.reason = "there are only " + std::to_string(items) + " of \"" + refusal.key + "\"";
    }
    refusal.accepted = refusal.key + ": " + accepted_by(table, row);
    return refusal;
}

Refusal of_stranger(const Table &table, const TiXmlNode &node)
{
    Refusal refusal;
    refusal.spot = spot_of(node);
    refusal.path = path_of(node);
    refusal.reason = node.ToElement() == nullptr ? "this is no element; a comment or text is refused here"
                     : table.names == netpublic::Names::in_order ? "another child is expected here"
                                                                 : "no such child is accepted here";
    refusal.accepted = joined(keys_of(table), table.names == netpublic::Names::in_order ? ", then " : ", ");
    return refusal;
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
    case Event::missing:
        trace.refuse(of_missing(table, *row, *node), *node);
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
    if (node.ValueStr().size() < key.size() && shortened_.size() < most_shortened &&
        table.names != netpublic::Names::any && told_.insert({&node, key}).second)
        shortened_.push_back({spot_of(node), path_of(node), key});
    if ((row.flags & netpublic::row_skipped) != 0)
        return;
    const char *member = static_cast<const char *>(record) + row.offset;
    Origin &origin = origins_[{member, key}];
    const bool has_text = node.ToElement() != nullptr && node.ToElement()->GetText() != nullptr;
    const Spot spot = has_text ? spot_of_text(node) : spot_of(node);
    if (origin.parent != node.Parent())
        origin = {node.Parent(), -1, {}};
    if (row.kind == netpublic::Kind::wire || row.kind == netpublic::Kind::wires) {
        origin.spots.push_back(spot);
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
        origin.spots.resize(std::max(origin.spots.size(), static_cast<std::size_t>(count)));
        origin.spots[static_cast<std::size_t>(count) - 1] = spot;
    } else {
        origin.spots = {spot};
    }
}

std::vector<Spot> Trace::origins(const void *member, const char *key) const
{
    const auto found = origins_.find({member, key});
    return found != origins_.end() ? found->second.spots : std::vector<Spot>();
}

void Trace::ignore(const Table &table, const TiXmlNode &node)
{
    refused_ = false;
    // A comment takes part in the matching, but nobody means a key by it.
    // A body that is read twice is told of once, and what one reading takes, the other may ignore.
    if (node.ToElement() == nullptr || is_known(table, node) || taken_.count(&node) != 0 ||
        !told_.insert({&node, ""}).second)
        return;
    ++ignored_in_all_;
    if (ignored_.size() < most_ignored)
        ignored_.push_back({spot_of(node), path_of(node), nearest(node.ValueStr(), keys_of(table), 1)});
}

} // namespace netparam
