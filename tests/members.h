// Members of records by their names, as the golden layouts have them: "channel[3].ptzType" of a
// "tag_net_support_v20_t". The layouts come from the compiler's debug information, not from the descriptions.
#ifndef NETPUBLIC_TESTS_MEMBERS_H
#define NETPUBLIC_TESTS_MEMBERS_H

#include <cstddef>
#include <string>

namespace test {

// Part of a record: a number, a text, or an array or structure of them.
struct Member {
    std::string type; // as in the layouts: "int[7][24]", "struct point_t"
    std::size_t offset = 0;

    Member(const std::string &record, const std::string &path);
    std::size_t size() const;
    // A number, or a text. Of arrays and structures: as many as there are, a blank between them, or one for all.
    void assign(void *record, const std::string &value) const;
    std::string print(const void *record) const;
    bool equals(const void *record, const std::string &value) const;
};

} // namespace test

#endif
