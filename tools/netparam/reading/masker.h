// Hides secrets in a text that arrives in pieces, such as a log with XML fragments in it.
#ifndef NETPARAM_MASKER_H
#define NETPARAM_MASKER_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace netparam {

// Masks the content of the elements and attributes that may_be_secret() knows, each byte by an asterisk; line
// breaks stay. Of a well-formed text nothing is left between a secret's own tags, whatever elements, secrets or
// not, are in it. Only what may be a tag of the same name is held back: everything else leaves as it comes.
class Masker {
public:
    // `also` are further names; case does not count. A secret longer than `longest` ends at the next line
    // break: logs are cut in the middle of an element, and their other text may look like a tag.
    explicit Masker(const std::vector<std::string> &also = {}, std::size_t longest = SIZE_MAX);

    // Adds the masked form of a piece to `out`.
    void feed(std::string_view piece, std::string &out);
    // The end of the text: what was held back.
    void finish(std::string &out);

    // Secrets that were longer.
    unsigned long given_up() const
    {
        return given_up_;
    }

private:
    enum class State { text, name, tag, attribute, equals, quoted, unquoted, secret, section, inner };

    void step(char c, std::string &out);
    void in_name(char c);
    void in_tag(char c);
    void in_attribute(char c);
    void in_equals(char c);
    void in_value(char c);
    void in_secret(char c, std::string &out);
    void in_inner(char c);
    void end_tag();
    void begin_name(State state);
    void add_to_name(char c);
    bool is_hidden(const std::string &name) const;
    bool gives_up(char c);
    bool hold(char c, std::string &out);
    void enter_secret();
    void release(std::string &out, bool plainly);

    std::vector<std::string> names_; // in lower case
    std::size_t longest_;
    State state_ = State::text;
    std::string name_;    // of the tag or attribute in progress
    std::string element_; // of the latest open tag
    bool closing_ = false;
    bool empty_ = false;          // the tag's last character was a slash
    bool hides_ = false;          // an attribute's value
    bool torn_ = false;           // there was a tag in it: its closing quote may be missing
    char quote_ = 0;              // that ends the value
    std::string held_;            // in a secret, what may turn out to be a tag of its name
    std::string open_;            // of the secret, as far as its name
    unsigned long depth_ = 0;     // of elements of the secret's name within it
    std::string_view terminator_; // of a comment or CDATA section in a secret
    std::size_t matched_ = 0;     // of the terminator
    std::size_t length_ = 0;      // of the secret so far
    unsigned long given_up_ = 0;
};

} // namespace netparam

#endif
