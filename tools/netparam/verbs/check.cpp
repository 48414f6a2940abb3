// netparam check: many bodies at once.
#include "reading/log_bodies.h"
#include "terminal/annotate.h"
#include "terminal/report.h"
#include "terminal/terminal.h"
#include "verbs/command_line.h"

#include <fnmatch.h>

#include <algorithm>
#include <filesystem>

namespace netparam {
namespace {

namespace fs = std::filesystem;
struct CheckOptions : Options {
    std::vector<std::string> paths;
    std::vector<std::string> messages; // NAME or PATTERN=NAME
    bool verbose = false, any_element = false;
};

enum Outcome : std::size_t { accepted, refused, malformed, unknown, unreadable, faulty, outcomes };

constexpr const char *outcome_names[outcomes] = {"accepted", "refused",    "malformed",
                                                 "unknown",  "unreadable", "at fault"};

// The most serious first: a file that could not be read may hold anything.
constexpr struct {
    Outcome outcome;
    ExitCode code;
} by_severity[] = {{faulty, exit_fault},
                   {unreadable, exit_file},
                   {malformed, exit_malformed},
                   {refused, exit_refused},
                   {unknown, exit_unknown}};

Outcome outcome_of(const Failure &failure)
{
    for (const auto &one : by_severity)
        if (one.code == failure.code())
            return one.outcome;
    return faulty;
}

// What is to be checked: files as they are given, and the files of a folder and its folders.
struct Files {
    std::vector<std::string> all;
    std::vector<Failure> failures; // folders that cannot be read

    explicit Files(const std::vector<std::string> &paths)
    {
        for (const std::string &path : paths) {
            std::error_code error;
            if (!fs::is_directory(path, error))
                all.push_back(path);
            else
                add_folder(path);
        }
    }

private:
    void add_folder(const std::string &path)
    {
        std::vector<std::string> found;
        std::error_code error;
        for (fs::recursive_directory_iterator at(path, error), end; !error && at != end; at.increment(error)) {
            std::error_code ignored;
            if (lower(at->path().extension().string()) == ".xml" && !at->is_directory(ignored))
                found.push_back(at->path().string());
        }
        if (error)
            failures.emplace_back(exit_file, printable(path) + ": " + error.message());
        else if (found.empty())
            failures.emplace_back(exit_file, printable(path) + ": there is no .xml file in this folder");
        std::sort(found.begin(), found.end());
        all.insert(all.end(), found.begin(), found.end());
    }
};

class Check {
public:
    Check(std::ostream &out, const CheckOptions &options, std::size_t files)
        : out_(out), options_(options), progress_(files)
    {
        for (const std::string &message : options.messages) {
            const std::size_t equals = message.rfind('=');
            const std::string name = equals == std::string::npos ? message : message.substr(equals + 1);
            const std::string pattern = equals == std::string::npos ? "*" : message.substr(0, equals);
            chosen_.push_back({pattern, &find_parsed(name)});
        }
    }

    void examine(const std::string &path)
    {
        if (path != "-" && is_log(path)) {
            const std::size_t before = total_;
            BodyFinder finder([&](const LoggedBody &body) { examine(path, &body); });
            try {
                read_log(path, false, finder);
                if (total_ == before)
                    throw Failure(exit_unknown, printable(path) + ": there is no message in this text");
            } catch (const Failure &failure) {
                ++total_;
                json_ = {{"file", path}, {"message", nullptr}, {"result", nullptr}};
                fail(path, failure);
            }
            return;
        }
        examine(path, nullptr);
    }

    // A file, or what a log holds.
    void examine(const std::string &file, const LoggedBody *body)
    {
        const std::string path = body != nullptr ? file + ":" + std::to_string(body->line) : file;
        progress_.show(total_++, path);
        json_ = {{"file", path}, {"message", nullptr}, {"result", nullptr}};
        try {
            if (body != nullptr && body->cut)
                throw Failure(exit_malformed, printable(path) + ": the body has no end");
            Document document = body != nullptr ? Document(file, body->text, body->line) : Document(file);
            const bool is_header = body == nullptr && lower(document.body().ValueStr()) == "extension";
            settle(path, is_header ? read_extension(path) : read_body(path, document));
        } catch (const Failure &failure) {
            fail(path, failure);
        }
    }

    void fail(const std::string &path, const Failure &failure)
    {
        progress_.clear();
        if (options_.format == format_github) {
            if (const auto *bad_text = dynamic_cast<const Malformed *>(&failure))
                annotate_failure(out_, *bad_text);
            else
                annotate(out_, "error", path, {}, outcome_names[outcome_of(failure)], failure.what());
        } else if (options_.format == format_text) {
            out_ << failure.what() << '\n';
        }
        json_["reason"] = failure.what();
        settle(path, outcome_of(failure));
    }

    // A folder of which there is nothing to read.
    void fail(const Failure &failure)
    {
        ++total_;
        json_ = {{"file", nullptr}, {"message", nullptr}, {"result", nullptr}};
        fail("", failure);
    }

    ExitCode finish()
    {
        progress_.clear();
        if (options_.format == format_json)
            out_ << json_text(Json{{"files", files_}, {"summary", summary_json()}}) << '\n';
        else
            out_ << summary() << '\n';
        for (const auto &one : by_severity)
            if (counts_[one.outcome] > 0)
                return one.code;
        return exit_ok;
    }

private:
    struct Choice {
        std::string pattern;
        const Entry *entry;
    };

    // By --message; by the file's name up to its first dot, if that is a message's; by the root element and the keys
    // that the children name.
    const Entry &entry_for(const std::string &path, const Document &document)
    {
        const std::string file = fs::path(path).filename().string();
        for (const Choice &choice : chosen_)
            if (fnmatch(choice.pattern.c_str(), path.c_str(), 0) == 0 ||
                fnmatch(choice.pattern.c_str(), file.c_str(), 0) == 0)
                return *choice.entry;
        if (const Entry *entry = parsed_message(file.substr(0, file.find('.'))))
            return *entry;
        return identify(document.body(), path);
    }

    Outcome read_extension(const std::string &path)
    {
        Options options = options_;
        options.extension = path;
        json_["message"] = "extension header";
        Session session(entries().front(), options);
        const bool good = session.read_extension();
        report(session, *session.extension_document(), path, good);
        return good ? accepted : refused;
    }

    Outcome read_body(const std::string &path, const Document &document)
    {
        const Entry &entry = entry_for(path, document);
        json_["message"] = entry.name();
        Session session(entry, options_);
        session.take_body(document);
        if (!session.read_extension())
            throw Failure(exit_usage, "the extension header is refused; \"netparam check " +
                                          printable(options_.extension) + "\" says why");
        const TiXmlElement &body = session.body_document()->body();
        if (!options_.any_element && !entry.bears_element(body))
            throw Failure(exit_refused, session.body_document()->at(spot_of(body)) + ": " +
                                            options_.style.error("refused:") + ' ' + printable(body.ValueStr()) + ' ' +
                                            wrong_element(entry));
        session.prepare();
        const bool good = session.parse();
        report(session, *session.body_document(), path, good);
        if (good && entry.writes())
            write(session, path);
        return good ? accepted : refused;
    }

    // A request need not hold what a reply does, so this is no refusal.
    void write(Session &session, const std::string &path)
    {
        const bool good = session.write();
        json_["written"] = good;
        written_ += good;
        unwritten_ += !good;
        if (!good && options_.verbose)
            note(path, "not written", "what was read cannot be written back");
    }

    void note(const std::string &path, const std::string &title, const std::string &text)
    {
        progress_.clear();
        if (options_.format == format_github)
            annotate(out_, "notice", path, {}, title, text);
        else if (options_.format == format_text)
            out_ << printable(path) << ": " << options_.style.note("note:") << ' ' << text << '\n';
    }

    void report(const Session &session, const Document &document, const std::string &path, bool good)
    {
        const Trace &trace = *session.trace();
        const bool ignores = trace.losses() > 0;
        ignoring_ += ignores;
        if (!good || !trace.notes().empty())
            progress_.clear();
        json_["refused"] = good ? Json() : refusal_json(session, document);
        json_["notes"] = notes_json(trace, document);
        if (options_.format == format_github) {
            annotate_notes(out_, trace, document);
            if (!good)
                annotate_refusal(out_, session, document);
        } else if (options_.format == format_text) {
            print_notes(out_, trace, document, options_);
            if (!good)
                print_refused(out_, session, document, options_);
        }
        if (good && ignores && options_.strict)
            throw Failure(exit_refused, printable(path) + ": has parts that are not read");
    }

    void settle(const std::string &path, Outcome outcome)
    {
        ++counts_[outcome];
        json_["result"] = outcome_names[outcome];
        if (options_.format == format_json)
            files_.push_back(json_);
        if (!options_.verbose || options_.format != format_text)
            return;
        progress_.clear();
        const Json &message = json_["message"];
        constexpr std::size_t widest_outcome = 10, usual_message = 24;
        out_ << padded(outcome_names[outcome], widest_outcome) << "  "
             << padded(message.is_null() ? "-" : message.get<std::string>(), usual_message) << "  " << printable(path)
             << '\n';
    }

    // "12 files: 10 accepted (2 with ignored children), 1 refused, 1 malformed; 9 written back"
    std::string summary() const
    {
        std::vector<std::string> parts;
        for (std::size_t i = 0; i < outcomes; ++i)
            if (counts_[i] > 0)
                parts.push_back(std::to_string(counts_[i]) + " " + outcome_names[i]);
        std::string text = std::to_string(total_) + (total_ == 1 ? " file: " : " files: ") + joined(parts, ", ");
        if (ignoring_ > 0)
            text += "; " + std::to_string(ignoring_) + " with parts that are not read";
        if (written_ > 0)
            text += "; " + std::to_string(written_) + " written back";
        if (unwritten_ > 0)
            text += "; " + std::to_string(unwritten_) + " cannot be written back";
        return text;
    }

    Json summary_json() const
    {
        Json json = {{"files", total_}};
        for (std::size_t i = 0; i < outcomes; ++i)
            json[outcome_names[i]] = counts_[i];
        json["with parts that are not read"] = ignoring_;
        json["written back"] = written_;
        json["not written back"] = unwritten_;
        return json;
    }

    std::ostream &out_;
    const CheckOptions &options_;
    Progress progress_;
    std::vector<Choice> chosen_;
    Json json_, files_ = Json::array(); // of the file in progress, and of all
    std::size_t total_ = 0, ignoring_ = 0, written_ = 0, unwritten_ = 0;
    std::size_t counts_[outcomes] = {};
};

ExitCode check(std::ostream &out, std::ostream & /*errors*/, const CheckOptions &given)
{
    CheckOptions options = given;
    if (options.json)
        options.format = format_json;
    options.settle();
    const Files files(options.paths);
    Check check(out, options, files.all.size());
    for (const Failure &failure : files.failures)
        check.fail(failure);
    for (const std::string &file : files.all)
        check.examine(file);
    return check.finish();
}

} // namespace

void add_check(CommandLine &line)
{
    auto [verb, options] =
        line.add_verb("check", "Reads many bodies and says which of them the library accepts", check);
    verb.add_option(
            "PATH", options.paths,
            "Files, logs with bodies in them, and folders whose .xml files are meant, those in inner folders, too")
        ->required();
    verb.add_option("--message", options.messages,
                    "Which message the files hold, or those whose path or name fits a shell pattern: "
                    "'alarm_*.xml=alarm-report'")
        ->type_name("MESSAGE")
        ->allow_extra_args(false);
    options.add_format(verb, true);
    verb.add_flag("--json", options.json, "The same as --format json")->excludes("--format");
    verb.add_flag("--strict", options.strict,
                  "Count files as refused that hold children, words of a set or elements that nothing reads");
    verb.add_flag("--any-root", options.any_element,
                  "Let bodies of another message's root element pass, as the library's parsers do");
    verb.add_flag("-v,--verbose", options.verbose, "A line for every file");
    verb.add_option("--ext", options.extension, "XML text of the extension header that comes with each body")
        ->type_name("FILE");
    verb.add_flag("--show-secrets", options.show_secrets, "Do not hide passwords, tokens, keys, signatures and codes");
    options.device.add_options(verb);
    line.explain(
        verb,
        "The message of a file is the one that --message gives for it, or the one that the file is called "
        "after (as in \"md.xml\" and \"md.2.xml\"), or the only one with its root element or, of several with it, "
        "with keys for all its children; otherwise the file is reported as unknown. A body whose root element "
        "is another one than its message's is refused, although the library does not look at it. Extension "
        "headers are known by their root element. What was read is written "
        "back where the library can write the message; a payload that cannot be written is counted, but is "
        "no refusal.\n\n"
        "The exit code tells the worst that was found: a fault, then a file that cannot be read, a malformed "
        "text, a refusal, an unknown message.",
        {"netparam check examples", "netparam check --message md captured/*.xml",
         "netparam check --format github-actions --strict requests"});
}

} // namespace netparam
