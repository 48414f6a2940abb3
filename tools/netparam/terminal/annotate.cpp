#include "terminal/annotate.h"

#include "terminal/report.h"

#include <array>
#include <string_view>

namespace netparam {
namespace {

// Properties are separated by commas, and a colon ends them.
std::string escaped(const std::string &text, bool is_property)
{
    std::string out;
    for (const char c : text)
        if (const std::size_t mark = std::string_view("%\r\n:,").find(c); mark < (is_property ? 5U : 3U))
            out += std::array{"%25", "%0D", "%0A", "%3A", "%2C"}[mark];
        else
            out += c;
    return out;
}

} // namespace

void annotate(std::ostream &out, const char *kind, const std::string &path, Spot spot, const std::string &title,
              const std::string &text)
{
    out << "::" << kind << ' ';
    if (!path.empty() && path != "-" && path != standard_input) {
        out << "file=" << escaped(path, true) << ',';
        if (spot.row > 0)
            out << "line=" << spot.row << ',';
        if (spot.row > 0 && spot.column > 0)
            out << "col=" << spot.column << ',';
    }
    out << "title=" << escaped(title, true) << "::" << escaped(text, false) << '\n';
}

void annotate_refusal(std::ostream &out, const Session &session, const Document &document)
{
    const Refusal refusal = refusal_of(session, document);
    std::string text = refusal.path + ": " + refusal.reason;
    if (!refusal.read.empty())
        text += "\nread " + read_text(refusal);
    if (!refusal.accepted.empty())
        text += "\naccepted " + refusal.accepted;
    annotate(out, "error", document.name(), document.in_file(refusal.spot), "refused", text);
}

void annotate_notes(std::ostream &out, const Trace &trace, const Document &document)
{
    for (const Note &note : trace.notes())
        annotate(out, "warning", document.name(), document.in_file(note.spot), name_of(note.kind),
                 note.path + ' ' + note.text);
    if (trace.losses() > trace.notes().size())
        annotate(out, "warning", document.name(), {}, "ignored", std::to_string(trace.losses()) + " notes in all");
}

void annotate_failure(std::ostream &out, const Failure &failure)
{
    if (const auto *malformed = dynamic_cast<const Malformed *>(&failure))
        annotate(out, "error", malformed->path, malformed->spot, "malformed", malformed->reason);
    else
        annotate(out, "error", "", {}, "netparam", failure.what());
}

ExitCode annotating(std::ostream &out, const Options &options, const std::function<ExitCode()> &work)
{
    if (options.format != format_github)
        return work();
    try {
        return work();
    } catch (const Failure &failure) {
        annotate_failure(out, failure);
        return failure.code();
    }
}

} // namespace netparam
