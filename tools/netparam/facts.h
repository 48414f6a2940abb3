// What the tables say of messages, records and members, in words: the one source of what "describe" shows to
// people, as JSON, as a page and as a list.
#ifndef NETPARAM_FACTS_H
#define NETPARAM_FACTS_H

#include "messages.h"

#include <string>
#include <vector>

namespace netparam {

// "char[32]"; empty for a row without member.
std::string type_of(const netpublic::Table &table, unsigned index);
// Bytes of the member, arrays as a whole; 0 for a row without member.
std::size_t bytes_of(const netpublic::Table &table, unsigned index);
std::string kind_name(netpublic::Kind kind);
// The rows of the children of the row's element; null where it has none.
const netpublic::Table *inner_table(const netpublic::Table &table, unsigned index);
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
// What is unusual about a row, a sentence each.
std::vector<std::string> row_notes(const netpublic::Table &table, unsigned index);
// ... and about a record as a whole.
std::vector<std::string> table_notes(const netpublic::Table &table);
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
