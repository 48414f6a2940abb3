#include "command_line.h"
#include "report.h"

namespace netparam {
namespace {

using Json = nlohmann::ordered_json;

// Names and texts of a body may hold any bytes; JSON is UTF-8.
std::string dumped(const Json &json)
{
    return json.dump(2, ' ', false, Json::error_handler_t::replace);
}

Json header_json(const Entry &entry, const Session &session)
{
    const net_param_t &param = session.envelope();
    Json json;
    json["message"] = entry.name();
    json["initialiser"] = entry.initialiser != nullptr ? Json(entry.initialiser->name) : Json();
    json["id"] = entry.initialiser != nullptr ? Json(param.paramId) : Json();
    json["size"] = param.dataSize;
    return json;
}

ExitCode parse(std::ostream &out, std::ostream &errors, const Options &options)
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
    const bool body_was_read = document == session.body_document();
    const std::vector<Item> items = body_was_read ? payload_items(session, entry, options) : std::vector<Item>();

    if (options.json) {
        Json json = header_json(entry, session);
        json["inited"] = session.envelope().inited;
        json["refused"] = accepted ? Json() : refusal_json(session, *document);
        json["ignored"] = ignored_json(*session.trace());
        json["log"] = log_json(session);
        json["payload"] = to_json(items);
        out << dumped(json) << '\n';
        return accepted ? exit_ok : exit_refused;
    }
    if (body_was_read) {
        out << options.style.heading(title(entry, session)) << (accepted ? "" : ", as far as it was read") << '\n';
        print_items(out, items, options.style);
        if (items.empty())
            out << "  " << session.trace()->taken() << " elements read; no rows describe this payload\n";
        out.flush();
    }
    print_ignored(errors, *session.trace(), *document, options);
    if (!accepted)
        print_refusal(errors, session, *document, options);
    print_log(errors, session, options.style);
    return accepted ? exit_ok : exit_refused;
}

} // namespace

void add_parse(CommandLine &line)
{
    const auto options = std::make_shared<Options>();
    options->style = line.style;
    CLI::App &verb =
        line.add_verb("parse", "Reads a body and shows the payload that the firmware gets", options, parse);
    options->add_options(verb).get_option("FILE")->required();
    verb.add_flag("--json", options->json, "As JSON, with the names of the rows");
}

} // namespace netparam
