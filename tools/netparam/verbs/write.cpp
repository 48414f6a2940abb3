#include "reading/grid_file.h"
#include "reading/load.h"
#include "reading/lost.h"
#include "reading/payload.h"
#include "terminal/report.h"
#include "verbs/command_line.h"

namespace netparam {
namespace {

constexpr std::size_t most_told = 20;

struct WriteOptions : Options {
    std::string bytes; // file; empty for none
    std::vector<std::string> drawings;
};

// Where the member stands in the file, if it does.
std::string place_of(const PayloadFile &file, const std::string &member)
{
    const Spot spot = file.spot_of(member);
    return file.name + (spot.row > 0 ? ":" + std::to_string(spot.row) + ":" + std::to_string(spot.column) : "");
}

// How the writing went, for people or as JSON.
class Report {
public:
    Report(std::ostream &out, std::ostream &errors, const WriteOptions &options, const PayloadFile &file)
        : out_(out), errors_(errors), options_(options), file_(file)
    {
        json_ = {{"message", nullptr}, {"body", nullptr}, {"refused", nullptr}, {"lost", Json::array()}};
    }

    ExitCode misfit(const Misfit &misfit)
    {
        Refusal refusal = {
            file_.spot_of(misfit.path), misfit.path, misfit.path, misfit.read, misfit.what(), misfit.accepted};
        if (options_.json)
            return refused(refusal);
        errors_ << place_of(file_, misfit.path) << ": " << options_.style.error("refused:") << ' ' << misfit.what()
                << "\n  member    " << (misfit.path.empty() ? "(the payload itself)" : printable(misfit.path))
                << "\n  read      " << misfit.read << "\n  accepted  " << misfit.accepted << '\n';
        return exit_refused;
    }

    ExitCode write(Session &session)
    {
        json_["message"] = session.entry().name();
        if (!session.write()) {
            Refusal refusal = unwritten(session, payload_items(session, options_.show_secrets));
            refusal.spot = file_.spot_of(refusal.path);
            if (!options_.json)
                print_unwritten(errors_, refusal, place_of(file_, refusal.path), options_.style);
            return finish(session, refused(refusal));
        }
        const TiXmlElement *body = session.reply();
        const std::vector<Lost> lost = body != nullptr ? lost_members(session, options_, *body) : std::vector<Lost>();
        const bool good = lost.empty() || !options_.strict;
        if (good && body != nullptr && !options_.json)
            (out_ << printed(*body)).flush();
        if (body == nullptr && !options_.json)
            errors_ << options_.style.note("note:") << ' ' << session.entry().writer() << "() writes nothing\n";
        json_["body"] = body != nullptr ? Json(printed(*body)) : Json();
        for (const Lost &one : lost) {
            json_["lost"].push_back({{"member", one.path}, {"value", one.value}, {"text", one.text}});
            if (!options_.json && json_["lost"].size() <= most_told)
                errors_ << place_of(file_, one.path) << ": "
                        << (good ? options_.style.note("note:") : options_.style.error("refused:")) << ' ' << one.path
                        << " (" << one.value << ") " << one.text << '\n';
        }
        if (!options_.json && lost.size() > most_told)
            errors_ << file_.name << ": " << options_.style.note("note:") << ' ' << lost.size()
                    << " members are lost in all\n";
        return finish(session, good ? exit_ok : exit_refused);
    }

private:
    ExitCode refused(const Refusal &refusal)
    {
        json_["refused"] = refusal_json(refusal, file_.name);
        if (options_.json && json_["message"].is_null()) // there was no session to finish
            out_ << json_text(json_) << '\n';
        return exit_refused;
    }
    ExitCode finish(const Session &session, ExitCode code)
    {
        json_["log"] = log_lines(session);
        if (options_.json)
            out_ << json_text(json_) << '\n';
        else
            print_log(errors_, session, options_.style);
        return code;
    }

    std::ostream &out_, &errors_;
    const WriteOptions &options_;
    const PayloadFile &file_;
    Json json_;
};

void load_drawing(Session &session, const std::string &drawing)
{
    const std::vector<Item> items = payload_items(session, true);
    Json payload = to_json(items);
    put_drawing(payload, items, drawing);
    load_payload(session, payload);
}

ExitCode write(std::ostream &out, std::ostream &errors, const WriteOptions &options)
{
    options.settle();
    const Entry &entry = find_message(options.message);
    if (!entry.writes() && options.bytes.empty())
        throw Failure(exit_usage, entry.name() + " has no writer: it is only parsed");
    Session session(entry, options); // without a body: the FILE is no XML
    if (!session.read_extension()) {
        print_refused(errors, session, *session.extension_document(), options);
        return exit_refused;
    }
    session.prepare();
    const PayloadFile file = read_payload(options.file, entry);
    Report outcome(out, errors, options, file);
    try {
        load_payload(session, file.payload);
        for (const std::string &drawing : options.drawings)
            load_drawing(session, drawing);
    } catch (const Misfit &misfit) {
        return outcome.misfit(misfit);
    }
    if (!options.bytes.empty())
        save_bytes(session, options.bytes);
    return entry.writes() ? outcome.write(session) : exit_ok;
}

} // namespace

void add_write(CommandLine &line)
{
    auto [verb, options] = line.add_verb("write", "Builds a body from a payload in JSON", write);
    options.add_options(verb)
        .get_option("FILE")
        ->description(
            "JSON of the payload: the output of \"parse --json\" or its \"payload\" alone; - is standard input")
        ->required();
    verb.add_option(
            "--grid", options.drawings,
            "A grid or schedule as \"parse\" draws it, read back in; which one, if there are several: PATH=FILE")
        ->type_name("FILE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    verb.add_flag("--strict", options.strict, "Refuse to print a body that does not hold the whole payload");
    verb.add_flag("--json", options.json, "Body, refusal and what is lost as JSON");
    verb.add_option("--raw", options.bytes, "Also save the payload's bytes, as this machine's memory holds them")
        ->type_name("FILE");
    line.explain(
        verb,
        "The names are those that \"parse --json\" prints. What the JSON does not name stays as the initialiser "
        "leaves it; an array replaces the whole list or grid. Words stand for their codes, and so do the numbers "
        "themselves; sets of words are texts joined by commas or arrays. A number that fits its member is taken, "
        "even where the parser would refuse it: the message's writer decides. The body is printed as it is, "
        "secrets and all, since it is meant to be sent. Members that the body does not hold, or that come back as "
        "something else when it is read, are named on standard error.",
        {"netparam parse md request.xml --json --show-secrets > payload.json",
         "netparam write md payload.json > body.xml", "netparam write md payload.json --grid scope=grid.txt"});
}

} // namespace netparam
