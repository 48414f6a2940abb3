// Message bodies in a log or a capture.
#ifndef NETPARAM_LOG_BODIES_H
#define NETPARAM_LOG_BODIES_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace netparam {

struct LoggedBody {
    std::size_t line; // where it begins, from 1 on
    std::string time; // what its line says of the time; empty when it says nothing
    std::string text; // of a body that was cut only its start tag
    bool cut;         // it does not end, or too late
};

// Finds what begins with a message's root element, or with one called body, and ends with its close tag. Holds back
// no more than one body.
class BodyFinder {
public:
    explicit BodyFinder(std::function<void(const LoggedBody &body)> found);

    void feed(std::string_view piece);
    // The end of the log.
    void finish();

    static constexpr std::size_t longest = 1024 * 1024; // of a body, bytes

private:
    bool open();
    bool close(bool is_end);
    void emit(std::size_t size, bool cut);
    void drop(std::size_t size);

    std::function<void(const LoggedBody &body)> found_;
    std::string buffer_;
    std::size_t at_ = 0;   // of the buffer: what is in front is done with
    std::string name_;     // of the open body; empty without one
    std::size_t scan_ = 0; // where its end is looked for, from at_ on
    std::size_t line_ = 1;
    std::string ahead_; // the current line up to at_, or its end
};

// Calls take(piece) for all that the file has to say or, while `follow` is set, will have, as long as it returns true.
// Fails with exit_file.
void read_pieces(const std::string &path, bool follow, const std::function<bool(std::string_view piece)> &take);
// Feeds all of them to the finder.
void read_log(const std::string &path, bool follow, BodyFinder &finder);
// Does the text begin with something else than markup?
bool is_log(const std::string &path);

} // namespace netparam

#endif
