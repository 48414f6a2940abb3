// What the tables say of messages, records and members, in words: the one source of what "describe" shows to
// people, as JSON, as a page and as a list.
#ifndef NETPARAM_FACTS_H
#define NETPARAM_FACTS_H

#include "model/messages.h"

#include <string>
#include <vector>

namespace netparam {

// All that is said of a row, which every form of the description prints in its own way. Prose has `code` in it.
struct RowFacts {
    unsigned index;
    std::string name;    // the key; of what is only stored, and of no child, the member's
    bool has_key;        // does a child, or a written element, bear the name?
    bool in_payload;     // is the member the payload's, not of a record that lives no longer than the walk?
    std::string type;    // "char[32]"; empty for a row without member
    std::string member;  // what the payload's record calls it
    std::size_t bytes;   // of the member, arrays as a whole
    bool written;        // does the message's writer write it?
    std::string accepts; // range, length, capacity
    std::string spelled; // "0 PAL, 1 NTSC"; those of a mask in hexadecimal; empty without words
    const netpublic::WordTable *words; // null without
    std::vector<std::string> notes;    // what is unusual, a sentence each
    std::vector<std::string> order;    // in which the records in it are written; empty where there is nothing to order
    // The rows of the children of the row's element; a second table reads them once more.
    struct Inner {
        const netpublic::Table *table;
        bool written;
        std::string notes; // of the children; empty when nothing is unusual
    };
    std::vector<Inner> inner;

    // "char[32] name"; empty for what is not in the payload.
    std::string declared() const
    {
        return in_payload ? type + " " + member : "";
    }
};

// The keys and what is written or stored beside them, without what is attached to them. `writes`: the table's rows are
// written, too.
std::vector<RowFacts> facts_of(const netpublic::Table &table, bool writes);

// Is it a record of the payload's, not one that lives no longer than the walk?
bool in_payload(const netpublic::Table &table);
std::string type_of(const netpublic::Table &table, unsigned index);
std::size_t bytes_of(const netpublic::Table &table, unsigned index);
std::string kind_name(netpublic::Kind kind);
std::vector<const netpublic::Table *> inner_tables(const netpublic::Table &table, unsigned index);
std::string words_text(const netpublic::WordTable &words, bool bits);
// The code of the spellings is a set of bits.
bool is_mask(const netpublic::Table &table, unsigned index);
// The keys that read a child of this name.
std::vector<unsigned> readers_of(const netpublic::Table &table, const char *name);
std::string limits_text(const netpublic::Table &table, unsigned index);
std::vector<std::string> row_notes(const netpublic::Table &table, unsigned index, bool writes);
std::vector<unsigned> described_rows(const netpublic::Table &table);

// What is unusual about a record as a whole.
std::vector<std::string> table_notes(const netpublic::Table &table);
// What parser and writer demand of the envelope.
std::string read_check(const netpublic::Table &table);
std::string write_check(const netpublic::Table &table);
// The keys in the order in which they are written, each as often as it is.
std::vector<std::string> written_order(const netpublic::Table &table);

std::string id_text(const Entry &entry);

} // namespace netparam

#endif
