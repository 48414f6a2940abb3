#include "reading/log_bodies.h"

#include "model/failure.h"
#include "model/messages.h"
#include "model/text.h"
#include "reading/document.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <regex>
#include <set>
#include <utility>

namespace netparam {
namespace {

constexpr char delimiters[] = " \t\r\n/>";

// In lower case.
const std::set<std::string> &roots()
{
    static const std::set<std::string> names = [] {
        std::set<std::string> all = {"body"};
        for (const Entry &entry : entries())
            if (!entry.element().empty())
                all.insert(lower(entry.element()));
        return all;
    }();
    return names;
}

std::string time_in(const std::string &line)
{
    static const std::regex time(R"((\d{4}-\d\d-\d\d[T ])?\d\d:\d\d:\d\d([.,]\d+)?(Z|[+-]\d\d:?\d\d)?)");
    std::smatch match;
    return std::regex_search(line, match, time) ? match.str() : "";
}

// A file that may still be written to, and may be replaced by a new one.
class Input {
public:
    explicit Input(const std::string &path) : path_(path), file_(path == "-" ? STDIN_FILENO : open_file(path)) {}
    ~Input()
    {
        if (file_ > STDIN_FILENO)
            close(file_);
    }
    Input(const Input &) = delete;
    Input &operator=(const Input &) = delete;

    // 0 at the end of what there is.
    std::size_t read(char *buffer, std::size_t size)
    {
        for (;;) {
            const ssize_t length = ::read(file_, buffer, size);
            if (length >= 0)
                return static_cast<std::size_t>(length);
            if (errno != EINTR)
                fail(path_);
        }
    }
    // Waits; false when nothing more can come.
    bool wait()
    {
        struct stat now = {}, own = {};
        if (fstat(file_, &own) != 0 || !S_ISREG(own.st_mode))
            return false;
        constexpr int pause = 200; // milliseconds
        poll(nullptr, 0, pause);
        if (stat(path_.c_str(), &now) == 0 && now.st_ino != own.st_ino)
            if (const int fresh = ::open(path_.c_str(), O_RDONLY | O_CLOEXEC); fresh >= 0)
                close(std::exchange(file_, fresh));
        if (fstat(file_, &own) == 0 && own.st_size < lseek(file_, 0, SEEK_CUR))
            lseek(file_, 0, SEEK_SET); // it was cut
        return true;
    }

private:
    [[noreturn]] static void fail(const std::string &path)
    {
        throw Failure(exit_file, printable(file_name(path)) + ": " + std::strerror(errno));
    }
    static int open_file(const std::string &path)
    {
        const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0)
            fail(path);
        return file;
    }

    std::string path_;
    int file_;
};

} // namespace

BodyFinder::BodyFinder(std::function<void(const LoggedBody &body)> found) : found_(std::move(found)) {}

void BodyFinder::feed(std::string_view piece)
{
    buffer_.erase(0, std::exchange(at_, 0));
    buffer_.append(piece);
    while (name_.empty() ? open() : close(false))
        continue;
}

void BodyFinder::finish()
{
    while (name_.empty() ? open() : close(true))
        continue;
    drop(buffer_.size() - at_);
}

// Looks for the next root; false when more of the text is wanted.
bool BodyFinder::open()
{
    const std::size_t tag = buffer_.find('<', at_);
    drop(std::min(tag, buffer_.size()) - at_);
    if (tag == std::string::npos)
        return false;
    constexpr std::size_t longest_name = 64;
    const std::size_t end = buffer_.find_first_of(delimiters, tag + 1);
    if (end == std::string::npos && buffer_.size() - tag <= longest_name)
        return false;
    const std::string name = end == std::string::npos ? "" : buffer_.substr(tag + 1, end - tag - 1);
    if (roots().count(lower(name)) == 0) {
        drop(1);
        return true;
    }
    name_ = name;
    scan_ = end - tag;
    return true;
}

// Looks for its end; false when more of the text is wanted.
bool BodyFinder::close(bool is_end)
{
    const auto stands_at = [&](std::size_t at, const std::string &text) {
        return lower(buffer_.substr(at, text.size())) == lower(text) &&
               (at + text.size() == buffer_.size() || std::strchr(delimiters, buffer_[at + text.size()]) != nullptr);
    };
    for (std::size_t tag; (tag = buffer_.find('<', at_ + scan_)) != std::string::npos; scan_ = tag + 1 - at_) {
        const std::size_t end = buffer_.find('>', tag);
        if (end == std::string::npos)
            break; // a tag that may go on
        if (stands_at(tag, "</" + name_)) {
            emit(end + 1 - at_, false);
            return true;
        }
        if (stands_at(tag, "<" + name_) || stands_at(tag, "<?xml") || stands_at(tag, "<body")) {
            emit(tag - at_, true); // another one begins: the end of this one was lost
            return true;
        }
    }
    if (buffer_.size() - at_ <= longest && !is_end)
        return false;
    emit(std::min(buffer_.find('>', at_) + 1, buffer_.size()) - at_, true);
    return true;
}

void BodyFinder::emit(std::size_t size, bool cut)
{
    const std::string text = buffer_.substr(at_, size);
    // A root without children is no message, but the name of one, or an element of something else.
    if (cut || text.find('<', 1) != text.rfind('<'))
        found_({line_, time_in(ahead_), text, cut});
    name_.clear();
    drop(size);
}

void BodyFinder::drop(std::size_t size)
{
    constexpr std::size_t kept = 256;
    const auto end = buffer_.begin() + static_cast<long>(at_ + size);
    line_ += static_cast<std::size_t>(std::count(buffer_.begin() + static_cast<long>(at_), end, '\n'));
    const std::size_t last = buffer_.rfind('\n', at_ + size > 0 ? at_ + size - 1 : 0);
    if (size > 0 && last != std::string::npos && last >= at_)
        ahead_ = buffer_.substr(last + 1, at_ + size - last - 1);
    else
        ahead_ += buffer_.substr(at_, size);
    if (ahead_.size() > kept)
        ahead_.erase(0, ahead_.size() - kept);
    at_ += size;
}

void read_pieces(const std::string &path, bool follow, const std::function<bool(std::string_view piece)> &take)
{
    Input input(path);
    char buffer[65536];
    for (std::size_t length; (length = input.read(buffer, sizeof buffer)) > 0 || (follow && input.wait());)
        if (!take({buffer, length}))
            return;
}

void read_log(const std::string &path, bool follow, BodyFinder &finder)
{
    read_pieces(path, follow, [&](std::string_view piece) {
        finder.feed(piece);
        return true;
    });
    finder.finish();
}

bool is_log(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    char first = '<';
    file >> first;       // behind white space
    if (first == '\xEF') // a byte order mark
        file >> first >> first >> first;
    return first != '<' && lower(path.substr(std::min(path.rfind('.'), path.size()))) != ".xml";
}

} // namespace netparam
