// What a row accepts, in words, and why it refused a child.
#ifndef NETPARAM_ACCEPT_H
#define NETPARAM_ACCEPT_H

#include "engine/table.h"

#include <string>
#include <vector>

namespace netparam {

// "a whole number from 1 to 155"; empty when only the message's own code knows.
std::string accepted_by(const netpublic::Table &table, const netpublic::Row &row);
// "a text of at most 31 characters", or "a text".
std::string bounded_text(const netpublic::Table &table, const netpublic::Row &row);

// Characters, a sign among them, that a number or text may have; 0 where the row sets no limit.
std::size_t longest_of(const netpublic::Table &table, const netpublic::Row &row);

struct Verdict {
    std::string reason;
    std::string accepted;
    bool text_is_to_blame; // or else the element
};

// Of a child that the row has refused; `record` is as the reader left it.
Verdict judge(const netpublic::Table &table, const netpublic::Row &row, const void *record, const TiXmlNode &node);

// In the order in which they are tried.
std::vector<std::string> keys_of(const netpublic::Table &table);
// The spellings that can be read, or that can be written.
std::vector<std::string> spellings(const netpublic::WordTable &words, netpublic::Use direction);
// All of them, each once.
std::vector<std::string> all_words(const netpublic::WordTable &words);

} // namespace netparam

#endif
