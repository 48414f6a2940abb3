// netparam watch: the messages in a log, as they come.
#include "reading/log_bodies.h"
#include "terminal/report.h"
#include "verbs/command_line.h"

namespace netparam {
namespace {

struct WatchOptions : Options {
    bool details = false;
};

class Watcher {
public:
    Watcher(std::ostream &out, const WatchOptions &options)
        : out_(out), options_(options), chosen_(options.message.empty() ? nullptr : &find_parsed(options.message))
    {
    }

    void show(const LoggedBody &body)
    {
        try {
            if (body.cut)
                return print(body, "-",
                             options_.style.error("cut:") + " the end of " + printable(head_of(body)) + "> is lost");
            Document document(file_name(options_.file), body.text, body.line);
            const Entry &entry = chosen_ != nullptr ? *chosen_ : identify(document.body(), "");
            Session session(entry, options_);
            session.take_body(document);
            session.prepare();
            verdict(body, session, session.parse());
        } catch (const Failure &failure) {
            const std::string what = failure.what();
            print(body, "-",
                  options_.style.error(failure.code() == exit_unknown ? "unknown:" : "malformed:") + ' ' +
                      what.substr(0, what.find('\n')));
        }
    }

private:
    static std::string head_of(const LoggedBody &body)
    {
        return body.text.substr(0, std::min(body.text.find_first_of(" \r\n>"), body.text.size()));
    }

    void verdict(const LoggedBody &body, const Session &session, bool accepted)
    {
        const Document &document = *session.body_document();
        const std::size_t notes = session.trace()->notes().size();
        const Refusal refusal = accepted ? Refusal() : refusal_of(session, document);
        print(body, session.entry().name(),
              !accepted   ? options_.style.error("refused:") + ' ' + refusal.path + ": " + refusal.reason
              : notes > 0 ? "accepted, " + std::to_string(notes) + (notes > 1 ? " notes" : " note")
                          : "accepted");
        if (!options_.details)
            return;
        print_items(out_, nonzero(payload_items(session, options_.show_secrets), session), options_.style);
        print_notes(out_, *session.trace(), document, options_);
        if (!accepted)
            print_refusal(out_, session, document, options_);
        out_.flush();
    }

    // One line a message.
    void print(const LoggedBody &body, const std::string &message, const std::string &text)
    {
        constexpr std::size_t line_width = 6, name_width = 20;
        const std::string line = std::to_string(body.line);
        time_width_ = std::max(time_width_, body.time.size());
        out_ << std::string(line_width - std::min(line_width, line.size()), ' ') << line << "  "
             << (time_width_ > 0 ? padded(body.time, time_width_) + "  " : "") << padded(message, name_width) << "  "
             << text << std::endl;
        if (!out_)
            throw Failure(exit_file, "the output cannot be written");
    }

    std::ostream &out_;
    const WatchOptions &options_;
    const Entry *const chosen_; // of all bodies; null where each says it
    std::size_t time_width_ = 0;
};

ExitCode watch(std::ostream &out, std::ostream & /*errors*/, const WatchOptions &options)
{
    options.settle();
    Watcher watcher(out, options);
    BodyFinder finder([&](const LoggedBody &body) { watcher.show(body); });
    read_log(options.file, true, finder);
    return exit_ok;
}

} // namespace

void add_watch(CommandLine &line)
{
    auto [verb, options] = line.add_verb("watch", "Shows the messages in a log, one line each, as they come", watch);
    options.file = "-";
    verb.add_option("FILE", options.file,
                    "A log or a capture with bodies in it; it is read on as it grows. None, or -, is standard input");
    verb.add_flag("--details", options.details, "Also the payload's members that are not 0, notes and refusals");
    verb.add_option("--message", options.message, "Which message all bodies are; otherwise their root elements say it")
        ->type_name("MESSAGE");
    verb.add_flag("--show-secrets", options.show_secrets, "Do not hide passwords, tokens, keys, signatures and codes");
    options.device.add_options(verb);
    line.explain(verb,
                 "A body begins with a message's root element or with one called \"body\" and ends with its close tag, "
                 "wherever that stands. A line tells where in the log it begins, the time if the log's line names one, "
                 "the message, and whether the library accepts it. At most 1 MiB is held back. \"netparam check\" "
                 "does the same with a log that is complete.",
                 {"netparam watch device.log", "ssh camera logread -f | netparam watch --details"});
}

} // namespace netparam
