#include "reading/secrets.h"
#include "terminal/annotate.h"
#include "terminal/report.h"
#include "terminal/svg.h"
#include "verbs/command_line.h"

#include <net_public.h>

#include <sstream>

namespace netparam {
namespace {

// As the host logs it: through the library's filter, and without what the filter lets pass.
std::string logged_form(const std::string &xml, const Options &options)
{
    if (options.show_secrets)
        return xml;
    return masked(net_xml_printf_filter(xml.c_str()));
}

// Grids are long, and drawn elsewhere.
std::string shortened(const std::string &line)
{
    constexpr std::size_t longest = 120, kept = 48;
    const std::size_t open = line.find('>'), close = line.rfind("</");
    if (line.size() <= longest || open == std::string::npos || close == std::string::npos || close - open <= kept)
        return line;
    return line.substr(0, open + 1 + kept) + "... (" + std::to_string(close - open - 1) + " bytes)" +
           line.substr(close);
}

void print_xml(std::ostream &out, const std::string &heading, const TiXmlNode &node, const Options &options)
{
    std::istringstream xml(logged_form(printed(node), options));
    out << options.style.heading(heading) << '\n';
    for (std::string line; std::getline(xml, line);)
        out << "  " << printable(options.full ? line : shortened(line)) << '\n';
}

void print_extension(std::ostream &out, const net_ext_t &extension, const Options &options)
{
    out << options.style.heading("Extension") << '\n';
    const auto number = [&](const char *name, int value) {
        if (value != 0)
            out << "  " << name << ' ' << value << '\n';
    };
    out << "  channelId " << extension.channelId << '\n';
    number("inputId", extension.inputId);
    number("outputId", extension.outputId);
    number("patrolId", extension.patrolId);
    number("binaryData", extension.binaryData);
    number("encryptLen", extension.encryptLen);
    number("encryptPos", extension.encryptPos);
    if (extension.userName[0] != '\0')
        out << "  userName " << in_quotes(extension.userName) << '\n';
    if (extension.token[0] != '\0')
        out << "  token " << (options.show_secrets ? in_quotes(extension.token) : hidden) << '\n';
    number("rfID", extension.rfId);
    number("chnType", extension.chnType);
    number("streamType", extension.streamType);
}

void tell_notes(std::ostream &errors, const Session &session, const Document &document, const Options &options)
{
    if (options.format == format_github)
        annotate_notes(errors, *session.trace(), document);
    else
        print_notes(errors, *session.trace(), document, options);
}

ExitCode report_refused(std::ostream &out, std::ostream &errors, const Session &session, const Document &document,
                        const Options &options)
{
    out.flush();
    tell_notes(errors, session, document, options);
    if (options.format == format_github)
        annotate_refusal(errors, session, document);
    else
        print_refusal(errors, session, document, options);
    print_log(errors, session, options.style);
    return exit_refused;
}

ExitCode play(std::ostream &result, std::ostream &errors, const Options &options)
{
    std::ostringstream unseen; // what JSON says otherwise
    std::ostream &out = options.json ? unseen : result;
    options.settle();
    const Entry &entry = find_message(options.message);
    if (entry.parses() && !entry.writes() && options.file.empty())
        throw Failure(exit_usage, entry.name() + " is only parsed: it needs a FILE");
    if (!entry.parses() && !options.file.empty())
        throw Failure(exit_usage, entry.name() + " has no parser: leave out the FILE");
    Session session(entry, options, options.file);

    if (const Document *document = session.extension_document()) {
        print_xml(out, "Request, extension header", *document->tree().RootElement(), options);
        if (!session.read_extension())
            return report_refused(out, errors, session, *document, options);
    }
    if (const Document *document = session.body_document())
        print_xml(out, "Request, body", *document->tree().RootElement(), options);
    print_extension(out, session.extension(), options);
    session.prepare();
    if (const Document *document = session.body_document()) {
        const bool accepted = session.parse();
        if (!accepted && options.json) {
            result << json_text(reading_json(session, document, false, payload_items(session, options.show_secrets)))
                   << '\n';
            return exit_refused;
        }
        if (!accepted)
            return report_refused(out, errors, session, *document, options);
        tell_notes(errors, session, *document, options);
    }
    const std::vector<Item> items = payload_items(session, options.show_secrets);
    if (!options.picture.empty())
        save_svg(items, title(session), options.picture);
    out << options.style.heading("Payload, " + title(session)) << '\n';
    print_items(out, items, options.style);

    ExitCode code = exit_ok;
    if (options.json) {
        Json json = reading_json(session, nullptr, true, items);
        if (entry.writes() && !session.write()) {
            json["unwritten"] = refusal_json(unwritten(session, items), "");
            code = exit_refused;
        }
        const TiXmlElement *reply = session.reply();
        json["reply"] = reply != nullptr ? Json(logged_form(printed(*reply), options)) : Json();
        json["log"] = log_lines(session);
        result << json_text(json) << '\n';
        return code;
    }
    if (!entry.writes()) {
        out << options.style.heading("Reply") << "\n  none: the library does not write this message\n";
    } else if (session.write()) {
        if (const TiXmlElement *reply = session.reply())
            print_xml(out, "Reply", *reply, options);
        else
            out << options.style.heading("Reply") << "\n  none: " << entry.writer() << "() writes nothing\n";
    } else {
        out.flush();
        print_unwritten(errors, unwritten(session, items), entry.writer(), options.style);
        code = exit_refused;
    }
    out.flush();
    print_log(errors, session, options.style);
    return code;
}

ExitCode exchange(std::ostream &out, std::ostream &errors, const Options &options)
{
    return annotating(errors, options, [&] { return play(out, errors, options); });
}

} // namespace

void add_exchange(CommandLine &line)
{
    auto [verb, options] =
        line.add_verb("exchange", "Plays a whole exchange: header, request, payload, reply", exchange);
    options.add_options(verb).add_flag("--full", options.full, "Do not shorten long texts");
    options.add_picture(verb);
    options.add_format(verb, false);
    verb.add_flag("--json", options.json, "As JSON: what \"parse --json\" prints, and the reply")->excludes("--format");
    line.explain(verb,
                 "Texts are shown as the firmware would log them. Without a FILE the payload is what the initialiser "
                 "leaves.",
                 {"netparam exchange md request.xml --ext extension.xml", "netparam exchange device-info --type NVR"});
}

} // namespace netparam
