// Refusals and notes as workflow commands, which a continuous-integration service shows beside the source line:
//     ::error file=request.xml,line=5,col=9,title=refused::MD/width: the number is out of range%0Aread "0"
#ifndef NETPARAM_ANNOTATE_H
#define NETPARAM_ANNOTATE_H

#include "reading/session.h"

#include <functional>
#include <ostream>
#include <string>

namespace netparam {

// The values of --format.
constexpr char format_text[] = "text", format_json[] = "json", format_github[] = "github-actions";

// One command; `kind` is "error" or "warning". Standard input has no file.
void annotate(std::ostream &out, const char *kind, const std::string &path, Spot spot, const std::string &title,
              const std::string &text);

void annotate_refusal(std::ostream &out, const Session &session, const Document &document);
void annotate_notes(std::ostream &out, const Trace &trace, const Document &document);
void annotate_failure(std::ostream &out, const Failure &failure);

// Does the work; a failure becomes a command if the options ask for commands.
ExitCode annotating(std::ostream &out, const Options &options, const std::function<ExitCode()> &work);

} // namespace netparam

#endif
