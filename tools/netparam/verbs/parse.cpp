#include "reading/grid_file.h"
#include "reading/payload.h"
#include "terminal/annotate.h"
#include "terminal/report.h"
#include "terminal/svg.h"
#include "verbs/command_line.h"
#include "verbs/select.h"

#include <fstream>

namespace netparam {
namespace {

struct ParseOptions : Options {
    std::string only, drawing; // path in the payload; PATH=FILE
    bool nonzero = false, flat = false, quiet = false;
    std::string bytes; // file; empty for none
    bool memory = false;
};

// The only argument is a file; which message it holds is to be seen.
const Entry &entry_for(ParseOptions &options)
{
    if (!options.file.empty())
        return find_parsed(options.message);
    options.file = options.message;
    if (parsed_message(options.file) != nullptr && !std::ifstream(options.file).good())
        throw Failure(exit_usage, "parse " + options.file + " needs a FILE");
    return identify(Document(options.file).body(), options.file);
}

ExitCode parse_body(std::ostream &out, std::ostream &errors, ParseOptions options)
{
    const Entry &entry = entry_for(options);
    options.settle();
    Session session(entry, options, options.file);
    bool accepted;
    const Document *document = session.read(accepted);
    if (accepted && !options.bytes.empty())
        save_bytes(session, options.bytes);
    if (accepted && !options.drawing.empty())
        save_drawing(payload_items(session, options.show_secrets), options.drawing);
    const bool body_was_read = document == session.body_document();
    std::vector<Item> items = body_was_read ? payload_items(session, options.show_secrets) : std::vector<Item>();
    if (body_was_read && !options.picture.empty())
        save_svg(items, title(session), options.picture);

    if (options.format == format_github) {
        annotate_notes(out, *session.trace(), *document);
        if (!accepted)
            annotate_refusal(out, session, *document);
        return accepted ? exit_ok : exit_refused;
    }
    if (options.json || options.format == format_json) {
        out << json_text(reading_json(session, document, accepted, items)) << '\n';
        return accepted ? exit_ok : exit_refused;
    }
    if (options.quiet) {
        out << printable(file_name(options.file)) << ": " << entry.name() << ' ' << (accepted ? "accepted" : "refused")
            << '\n';
        return accepted ? exit_ok : exit_refused;
    }
    if (!options.only.empty())
        items = only(items, options.only);
    if (options.nonzero)
        items = nonzero(items, session);
    if (options.flat)
        print_flat(out, items);
    else if (body_was_read) {
        out << options.style.heading(title(session)) << (accepted ? "" : ", as far as it was read") << '\n';
        if (options.memory)
            print_memory(out, items, options.style);
        else
            print_items(out, items, options.style);
        if (items.empty())
            out << "  " << session.trace()->taken() << " elements read; nothing of the payload can be shown\n";
        out.flush();
    }
    print_notes(errors, *session.trace(), *document, options);
    if (!accepted)
        print_refusal(errors, session, *document, options);
    print_log(errors, session, options.style);
    return accepted ? exit_ok : exit_refused;
}

ExitCode parse(std::ostream &out, std::ostream &errors, const ParseOptions &options)
{
    return annotating(out, options, [&] { return parse_body(out, errors, options); });
}

} // namespace

void add_parse(CommandLine &line)
{
    auto [verb, options] = line.add_verb("parse", "Reads a body and shows the payload that the firmware gets", parse);
    options.add_options(verb);
    options.add_format(verb, true);
    verb.add_flag("--json", options.json, "The same as --format json")->excludes("--format");
    verb.add_flag("--memory", options.memory,
                  "Also show each value's offset, bytes and C type, and the line and column of the text that it came "
                  "from, where there is one");
    options.add_picture(verb);
    const auto for_people = [&](CLI::Option *option) { option->excludes("--format")->excludes("--json"); };
    for_people(
        verb.add_option("--only", options.only, "Only what lies at this path, as in timeBlockList")->type_name("PATH"));
    for_people(verb.add_flag("--nonzero", options.nonzero, "Only members that are not 0"));
    for_people(verb.add_flag("--flat", options.flat, "A line \"path = value\" for each member, without drawings"));
    for_people(verb.add_flag("--quiet", options.quiet, "Only whether the body is accepted"));
    verb.add_option("--grid-out", options.drawing,
                    "Also save a drawn grid or schedule for --grid; which one, if there are several: PATH=FILE")
        ->type_name("FILE");
    verb.add_option("--raw", options.bytes, "Also save the payload's bytes, as this machine's memory holds them")
        ->type_name("FILE");
    line.explain(verb,
                 "With a FILE alone, its root element and its children's names say which message it is. "
                 "Shows the payload, and what is wrong with the body: where, what was read and what would be accepted. "
                 "Children that no key answers to are noted, as they have no effect. As JSON the rows' names are the "
                 "keys; as workflow commands only refusals and notes are shown.",
                 {"netparam parse request.xml", "netparam parse md request.xml",
                  "netparam parse md - --ext extension.xml --channels 1 < request.xml",
                  "netparam parse md request.xml --format json | jq .payload"});
}

} // namespace netparam
