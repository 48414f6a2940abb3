#include "annotate.h"
#include "command_line.h"
#include "payload.h"
#include "report.h"
#include "svg.h"

namespace netparam {
namespace {

using Json = nlohmann::ordered_json;

Json header_json(const Entry &entry, const Session &session)
{
    const net_param_t &param = session.envelope();
    Json json;
    json["message"] = entry.name();
    json["initialiser"] = entry.initialiser != nullptr ? Json(entry.initialiser->name) : Json();
    json["id"] = entry.initialiser != nullptr ? Json(param.paramId) : Json();
    json["size"] = session.record_size();
    json["dataSize"] = param.dataSize;
    return json;
}

struct ParseOptions : Options {
    std::string bytes; // file; empty for none
    bool memory = false;
};

ExitCode parse_body(std::ostream &out, std::ostream &errors, const ParseOptions &options)
{
    options.settle();
    const Entry &entry = find_message(options.message);
    if (!entry.parses())
        throw Failure(exit_usage, entry.name() + " has no parser: it is only written");
    Session session(entry, options);
    const Document *document = session.extension_document();
    bool accepted = session.read_extension();
    if (accepted) {
        session.prepare();
        document = session.body_document();
        accepted = session.parse();
    }
    if (accepted && !options.bytes.empty())
        save_bytes(session, options.bytes);
    const bool body_was_read = document == session.body_document();
    const std::vector<Item> items = body_was_read ? payload_items(session, entry, options) : std::vector<Item>();
    if (body_was_read && !options.picture.empty())
        save_svg(items, title(entry, session), options.picture);

    if (options.format == format_github) {
        annotate_notes(out, *session.trace(), document->name());
        if (!accepted)
            annotate_refusal(out, session, *document);
        return accepted ? exit_ok : exit_refused;
    }
    if (options.json || options.format == format_json) {
        Json json = header_json(entry, session);
        json["inited"] = session.envelope().inited;
        json["refused"] = accepted ? Json() : refusal_json(session, *document);
        json["notes"] = notes_json(*session.trace());
        json["log"] = log_json(session);
        json["payload"] = to_json(items);
        json["rows"] = rows_json(items);
        out << json_text(json) << '\n';
        return accepted ? exit_ok : exit_refused;
    }
    if (body_was_read) {
        out << options.style.heading(title(entry, session)) << (accepted ? "" : ", as far as it was read") << '\n';
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
    const auto options = std::make_shared<ParseOptions>();
    options->style = line.style;
    CLI::App &verb =
        line.add_verb("parse", "Reads a body and shows the payload that the firmware gets", options, parse);
    options->add_options(verb).get_option("FILE")->required();
    options->add_format(verb, true);
    verb.add_flag("--json", options->json, "The same as --format json")->excludes("--format");
    verb.add_flag("--memory", options->memory,
                  "Also show each value's offset, bytes and C type, and the line and column that it came from");
    options->add_picture(verb);
    verb.add_option("--raw", options->bytes, "Also save the payload's bytes, as this machine's memory holds them")
        ->type_name("FILE");
    line.explain(verb,
                 "Shows the payload, and what is wrong with the body: where, what was read and what would be accepted. "
                 "Children that no key answers to are noted, as they have no effect. As JSON the rows' names are the "
                 "keys; as workflow commands only refusals and notes are shown.",
                 {"netparam parse md request.xml", "netparam parse md - --ext extension.xml --channels 1 < request.xml",
                  "netparam parse md request.xml --format json | jq .payload"});
}

} // namespace netparam
