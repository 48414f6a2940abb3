#include "command_line.h"
#include "grid_file.h"
#include "load.h"
#include "payload.h"
#include "report.h"

namespace netparam {
namespace {

struct WriteOptions : Options {
    std::string bytes; // file; empty for none
    std::vector<std::string> drawings;
};

void print_misfit(std::ostream &errors, const std::string &file, const Misfit &misfit, const Style &style)
{
    errors << printable(file) << ": " << style.error("refused:") << ' ' << misfit.what() << '\n';
    errors << "  member    " << (misfit.path.empty() ? "(the payload itself)" : printable(misfit.path)) << '\n';
    errors << "  read      " << misfit.read << '\n';
    errors << "  accepted  " << misfit.accepted << '\n';
}

ExitCode write_body(std::ostream &out, std::ostream &errors, Session &session, const Entry &entry,
                    const Options &options)
{
    if (!session.write()) {
        print_unwritable(errors, entry, payload_items(session, entry, options), options.style);
        print_log(errors, session, options.style);
        return exit_refused;
    }
    if (const TiXmlElement *body = session.reply()) {
        TiXmlPrinter printer;
        printer.SetIndent("  ");
        body->Accept(&printer);
        out << printer.Str();
        out.flush();
    } else {
        errors << options.style.note("note:") << ' ' << entry.writer() << "() writes nothing\n";
    }
    print_log(errors, session, options.style);
    return exit_ok;
}

void load_drawing(Session &session, const Entry &entry, Options options, const std::string &drawing)
{
    options.show_secrets = true;
    const std::vector<Item> items = payload_items(session, entry, options);
    nlohmann::ordered_json payload = to_json(items);
    put_drawing(payload, items, drawing);
    load_payload(session, entry, payload);
}

ExitCode write(std::ostream &out, std::ostream &errors, const WriteOptions &options)
{
    options.settle();
    const Entry &entry = find_message(options.message);
    if (!entry.writes() && options.bytes.empty())
        throw Failure(exit_usage, entry.name() + " has no writer: it is only parsed");
    Options without_body = options; // the FILE is no XML
    without_body.file.clear();
    Session session(entry, without_body);
    if (!session.read_extension()) {
        print_refusal(errors, session, *session.extension_document(), options);
        print_log(errors, session, options.style);
        return exit_refused;
    }
    session.prepare();
    try {
        load_payload(session, entry, read_payload(options.file, entry));
        for (const std::string &drawing : options.drawings)
            load_drawing(session, entry, options, drawing);
    } catch (const Misfit &misfit) {
        print_misfit(errors, file_name(options.file), misfit, options.style);
        return exit_refused;
    }
    if (!options.bytes.empty())
        save_bytes(session, options.bytes);
    return entry.writes() ? write_body(out, errors, session, entry, options) : exit_ok;
}

} // namespace

void add_write(CommandLine &line)
{
    const auto options = std::make_shared<WriteOptions>();
    options->style = line.style;
    CLI::App &verb = line.add_verb("write", "Builds a body from a payload in JSON", options, write);
    options->add_options(verb)
        .get_option("FILE")
        ->description(
            "JSON of the payload: the output of \"parse --json\" or its \"payload\" alone; - is standard input")
        ->required();
    verb.add_option(
            "--grid", options->drawings,
            "A grid or schedule as \"parse\" draws it, read back in; which one, if there are several: PATH=FILE")
        ->type_name("FILE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    verb.add_option("--raw", options->bytes, "Also save the payload's bytes, as this machine's memory holds them")
        ->type_name("FILE");
    line.explain(
        verb,
        "The names are those that \"parse --json\" prints. What the JSON does not name stays as the initialiser "
        "leaves it; an array replaces the whole list or grid. Words stand for their codes, and so do the numbers "
        "themselves; sets of words are texts joined by commas or arrays. A number that fits its member is taken, "
        "even where the parser would refuse it: the message's writer decides. The body is printed as it is, "
        "secrets and all, since it is meant to be sent.",
        {"netparam parse md request.xml --json --show-secrets > payload.json",
         "netparam write md payload.json > body.xml", "netparam write md payload.json --grid scope=grid.txt"});
}

} // namespace netparam
