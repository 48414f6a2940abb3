#include "command_line.h"
#include "load.h"
#include "payload.h"
#include "report.h"

namespace netparam {
namespace {

struct WriteOptions : Options {
    std::string bytes; // file; empty for none
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
    CLI::App &verb =
        line.add_verb("write", "Builds a body from a payload in JSON; secrets stand in it as they are", options, write);
    options->add_options(verb)
        .get_option("FILE")
        ->description("JSON of the payload, with the names that \"parse --json\" prints: its whole output or the "
                      "payload alone; - is standard input. What it does not name stays as the initialiser leaves it")
        ->required();
    verb.add_option("--raw", options->bytes, "Also save the payload's bytes, as this machine's memory holds them")
        ->type_name("FILE");
}

} // namespace netparam
