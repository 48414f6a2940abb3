// What the tables say of messages, records and members, in words: the one source of what "describe" shows to
// people, as JSON, as a page and as a list.
#ifndef NETPARAM_FACTS_H
#define NETPARAM_FACTS_H

#include "messages.h"

#include <string>
#include <vector>

namespace netparam {

// Does a child, or a written element, bear the row's key? Not of what is only stored or shown.
bool has_key(const netpublic::Table &table, unsigned index);
// Is it a record of the payload's, not one that lives no longer than the walk?
bool in_payload(const netpublic::Table &table);
// Is the row's member one of the payload, not of a record that lives no longer than the walk?
bool in_payload(const netpublic::Table &table, unsigned index);
// What the payload's record calls the member.
std::string member_of(const netpublic::Table &table, unsigned index);
// "char[32]"; empty for a row without member.
std::string type_of(const netpublic::Table &table, unsigned index);
// Bytes of the member, arrays as a whole; 0 for a row without member.
std::size_t bytes_of(const netpublic::Table &table, unsigned index);
std::string kind_name(netpublic::Kind kind);
// The rows of the children of the row's element; a second table reads them once more. Empty where it has none.
std::vector<const netpublic::Table *> inner_tables(const netpublic::Table &table, unsigned index);
// The spellings of the member's codes; null without any.
const netpublic::WordTable *words_beside(const netpublic::Table &table, unsigned index);
// "0 PAL, 1 NTSC"; those of a mask in hexadecimal.
std::string words_text(const netpublic::WordTable &words, bool bits);
// The code of the spellings is a set of bits.
bool is_mask(const netpublic::Table &table, unsigned index);

// The keys that read a child of this name.
std::vector<unsigned> readers_of(const netpublic::Table &table, const char *name);
// Does the writer write the row?
bool is_in_order(const netpublic::Table &table, unsigned index);

// Of a row without what is said of its words: range, length, capacity.
std::string limits_text(const netpublic::Table &table, unsigned index);
// What is unusual about a row, a sentence each; `writes`: the table is written, too.
std::vector<std::string> row_notes(const netpublic::Table &table, unsigned index, bool writes);
// ... and about a record as a whole.
std::vector<std::string> table_notes(const netpublic::Table &table);
// The same of the children of a row; empty when nothing is unusual.
std::string children_notes(const netpublic::Table &inner);
// What parser and writer demand of the envelope.
std::string read_check(const netpublic::Table &table);
std::string write_check(const netpublic::Table &table);
// The keys in the order in which they are written, each as often as it is.
std::vector<std::string> written_order(const netpublic::Table &table);
// ... of the records in a row that is written, in front of each other; empty where there is nothing to order.
std::vector<std::string> inner_order(const netpublic::Table &table, unsigned index);
// Shown rows: the keys and what is written or stored beside them, without what is attached to them.
std::vector<unsigned> described_rows(const netpublic::Table &table);

std::string id_text(const Entry &entry);

} // namespace netparam

#endif
