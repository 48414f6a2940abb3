// How a command ends when it cannot do what it was asked.
#ifndef NETPARAM_FAILURE_H
#define NETPARAM_FAILURE_H

#include <stdexcept>
#include <string>

namespace netparam {

// The exit codes are part of the interface: scripts rely on them.
enum ExitCode : int {
    exit_ok = 0,
    exit_refused = 1,   // the library refused a value, an extension header or a payload
    exit_different = 1, // in diff: the payloads are not the same
    exit_usage = 2,     // no such message, option or verb
    exit_file = 3,      // a file that cannot be read, or output that cannot be written
    exit_malformed = 4, // text that is not well-formed XML, or not fit to be parsed
    exit_unknown = 5,   // nobody knows which message a text holds
    exit_fault = 70,    // a fault of the tool or the library itself
};

struct ExitMeaning {
    ExitCode code;
    const char *meaning;
};

// For help and manual.
constexpr ExitMeaning exit_meanings[] = {
    {exit_ok, "everything was accepted; diff: the bodies are the same"},
    {exit_refused, "the library refused a value, an extension header or a payload; diff: the bodies differ"},
    {exit_usage, "usage: there is no such message, option or verb"},
    {exit_file, "input or output: a file cannot be read, or the output cannot be written"},
    {exit_malformed, "a text is not well-formed XML or JSON, or not fit to be parsed; diff: or a body is refused"},
    {exit_unknown, "unknown: which message a body is cannot be told from its root element and its children"},
    {exit_fault, "a fault of the tool or of the library"},
};

// ... and what is taken.
constexpr char input_limits[] =
    "A text of XML or JSON has at most 4 MiB, 64 levels of nesting and 64 attributes in an element. "
    "Of ignored children and of other notes the first 20 of each kind are told, and how many there "
    "are. In a log, filter hides at most 16 KiB behind a tag that is never closed.";

class Failure : public std::runtime_error {
public:
    Failure(ExitCode code, const std::string &text) : std::runtime_error(text), code_(code) {}

    ExitCode code() const
    {
        return code_;
    }

private:
    ExitCode code_;
};

} // namespace netparam

#endif
