// netparam filter: hides the secrets in a log.
#include "reading/document.h"
#include "reading/log_bodies.h"
#include "reading/masker.h"
#include "verbs/command_line.h"

#include <string_view>
#include <utility>

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
        Masker masker(names, longest_secret);
        std::string masked;
        // Every piece leaves as soon as it has come, so that a log can be followed.
        const auto leave = [&] { return static_cast<bool>((out << std::exchange(masked, {})).flush()); };
        try {
            read_pieces(path, false, [&](std::string_view piece) {
                masker.feed(piece, masked);
                return leave();
            });
        } catch (const Failure &failure) {
            errors << "netparam: " << failure.what() << '\n';
            code = exit_file;
        }
        masker.finish(masked);
        if (!leave())
            throw Failure(exit_file, "the output cannot be written");
        if (masker.given_up() > 0)
            errors << "netparam: " << printable(file_name(path)) << ": note: " << masker.given_up() << " open "
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
