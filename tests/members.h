// Members of records by their names, as the golden layouts have them: "channel[3].ptzType" of a
// "tag_net_support_v20_t". The layouts come from the compiler's debug information, not from the descriptions.
#ifndef NETPUBLIC_TESTS_MEMBERS_H
#define NETPUBLIC_TESTS_MEMBERS_H

#include <cstddef>
#include <string>
#include <vector>

namespace test {

// A number, a text, or an array or structure of them; those that there are no such names for throw.
class Member {
public:
    Member(const std::string &record, const std::string &path);
    // As many values as there are numbers and texts, blanks between them, or one for all.
    void assign(void *record, const std::string &value) const;
    std::string print(const void *record) const;
    bool equals(const void *record, const std::string &value) const;

private:
    struct Leaf {
        std::string type;
        std::size_t offset, size;
    };
    void collect(const std::string &type, std::size_t offset);

    std::vector<Leaf> leaves_;
};

} // namespace test

#endif
