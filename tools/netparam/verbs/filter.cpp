// netparam filter: hides the secrets in a log.
#include "reading/document.h"
#include "reading/masker.h"
#include "verbs/command_line.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>

namespace netparam {
namespace {

// What the library's own log filter masks beyond secrets.
constexpr const char *addresses[] = {"mac", "ip", "ipAddress", "macAddress", "gateway", "mask", "dns1", "dns2"};

// Nothing in a message is longer.
constexpr std::size_t longest_secret = 16 * 1024;

struct FilterOptions {
    std::vector<std::string> files = {"-"};
    std::vector<std::string> also;
};

// Every piece leaves as soon as it has come, so that a log can be followed. False with errno when reading fails.
bool filter_stream(int file, Masker &masker, std::ostream &out)
{
    char buffer[65536];
    std::string masked;
    for (;;) {
        const ssize_t length = read(file, buffer, sizeof buffer);
        if (length < 0 && errno == EINTR)
            continue;
        const int error = errno;
        masked.clear();
        if (length > 0)
            masker.feed(std::string_view(buffer, static_cast<std::size_t>(length)), masked);
        else
            masker.finish(masked);
        if (!(out << masked).flush())
            throw Failure(exit_file, "the output cannot be written");
        errno = error;
        if (length <= 0)
            return length == 0;
    }
}

bool filter_file(const std::string &path, Masker &masker, std::ostream &out)
{
    const int file = path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool whole = filter_stream(file, masker, out);
    const int error = errno;
    if (file != STDIN_FILENO)
        close(file);
    errno = error;
    return whole;
}

// Empty for what can be the name of an element or attribute.
std::string name_fault(const std::string &name)
{
    const bool fits = !name.empty() && name.find_first_of(" \t\r\n<>/=&\"'") == std::string::npos;
    return fits ? "" : in_quotes(name) + " is no name of an element or attribute";
}

ExitCode filter(std::ostream &out, std::ostream &errors, const FilterOptions &options)
{
    std::vector<std::string> names(std::begin(addresses), std::end(addresses));
    names.insert(names.end(), options.also.begin(), options.also.end());
    ExitCode code = exit_ok;
    for (const std::string &path : options.files) {
        const std::string name = printable(file_name(path));
        Masker masker(names, longest_secret);
        if (!filter_file(path, masker, out)) {
            errors << "netparam: " << name << ": " << std::strerror(errno) << '\n';
            code = exit_file;
        }
        if (masker.given_up() > 0)
            errors << "netparam: " << name << ": note: " << masker.given_up() << " open "
                   << (masker.given_up() == 1 ? "tag has" : "tags have") << " no close tag within " << longest_secret
                   << " bytes; masking ended with the line\n";
    }
    return code;
}

} // namespace

void add_filter(CommandLine &line)
{
    auto [verb, options] =
        line.add_verb("filter", "Hides passwords, keys, tokens and addresses in the XML of a log", filter);
    verb.add_option("FILE", options.files, "Texts with XML in them; none, or -, is standard input");
    verb.add_option("--also", options.also, "A further element or attribute to hide")
        ->check(name_fault)
        ->type_name("NAME")
        ->allow_extra_args(false);
    line.explain(
        verb,
        "Copies text to standard output. The content of secret XML elements and attributes becomes asterisks, as "
        "many as it has bytes; line breaks and everything else stay as they are. An element may be spread over "
        "lines, and each line leaves as soon as it has come. A tag that is never closed, as in a log that was "
        "cut, hides no more than 16 KiB and the rest of the line. A secret in other text is not known.",
        {"netparam filter device.log", "tail -f device.log | netparam filter --also deviceName"});
}

} // namespace netparam
