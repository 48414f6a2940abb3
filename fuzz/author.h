// Writes and changes bodies of messages with what their tables know: keys and beginnings of keys, words,
// numbers and lengths at their limits, lists that are too long, children in any order.
#ifndef NETPUBLIC_FUZZ_AUTHOR_H
#define NETPUBLIC_FUZZ_AUTHOR_H

#include "engine/registry.h"

#include <random>
#include <string>
#include <vector>

class TiXmlElement;
class TiXmlNode;

namespace fuzz {

class Author {
public:
    // `anything` allows what no text can say, such as an empty name.
    Author(unsigned seed, bool anything) : random_(seed), anything_(anything) {}

    // How much of a table's rows a body holds.
    enum class Plan { whole, some };
    void fill(TiXmlElement &element, const netpublic::Table &table, Plan plan, int depth = 0);
    // One to five changes somewhere in the body of a message.
    void change(TiXmlElement &body, const netpublic::Message &message);

    unsigned pick(unsigned below)
    {
        return below == 0 ? 0 : static_cast<unsigned>(random_()) % below;
    }

private:
    TiXmlElement *make(const netpublic::Table &table, unsigned row, Plan plan, int depth);
    std::string name(const std::string &key);
    std::string content(const netpublic::Table &table, unsigned row);
    std::string number(const netpublic::Table &table, const netpublic::Row &row);
    std::string text(std::size_t longest, const std::string &key);
    std::string word(const netpublic::WordTable &words);
    std::string words(const netpublic::WordTable &words);
    std::string seen_before(const std::string &key);
    const netpublic::Table *table_of(const TiXmlElement &element, const TiXmlElement &body,
                                     const netpublic::Message &message);
    void change_once(TiXmlElement &body, const netpublic::Message &message);

    std::minstd_rand random_;
    bool anything_;
};

// Of examples/, by name.
struct Example {
    std::string name;
    std::string text;
};
const std::vector<Example> &examples();

// All that the tables spell, for a dictionary.
std::vector<std::string> all_names();

} // namespace fuzz

#endif
