// What people read: payloads, refusals, notes and the library's log.
#ifndef NETPARAM_REPORT_H
#define NETPARAM_REPORT_H

#include "reading/payload.h"

#include <ostream>

namespace netparam {

// "path  value", drawings below.
void print_items(std::ostream &out, const std::vector<Item> &items, const Style &style);

// The same with each value's place in memory, its C type and the element that it came from.
void print_memory(std::ostream &out, const std::vector<Item> &items, const Style &style);

// Of a reading that failed; of the message as a whole where no element was to blame.
Refusal refusal_of(const Session &session, const Document &document);

// What stood there, fit for the terminal.
std::string read_text(const Refusal &refusal);
// Why the text was refused; for a reading that failed.
void print_refusal(std::ostream &out, const Session &session, const Document &document, const Options &options);
// Why the writer has failed: the member in whose row it gave up, its value, and what it takes. The message as a whole
// where its own code refuses. A payload's file says where the member stands.
Refusal unwritten(const Session &session, const std::vector<Item> &items);
void print_unwritten(std::ostream &out, const Refusal &refusal, const std::string &place, const Style &style);
// What was accepted, but may have been meant otherwise.
void print_notes(std::ostream &out, const Trace &trace, const Document &document, const Options &options);
// The refusal and the library's log.
void print_refused(std::ostream &out, const Session &session, const Document &document, const Options &options);
// The library's own lines, if there are any.
void print_log(std::ostream &out, const Session &session, const Style &style);

// For output; what is no UTF-8 is replaced, as names and texts of a body may hold any bytes.
std::string json_text(const Json &json);

Json refusal_json(const Session &session, const Document &document);
Json refusal_json(const Refusal &refusal, const std::string &file);
// What was read, as "parse --json" prints it.
Json reading_json(const Session &session, const Document *document, bool accepted, const std::vector<Item> &items);
Json notes_json(const Trace &trace, const Document &document);
Json rows_json(const std::vector<Item> &items);
// The library's lines without their colours.
std::vector<std::string> log_lines(const Session &session);

// Without members that are zero; lists keep the places of their items.
std::vector<Item> nonzero(const std::vector<Item> &items, const Session &session);

// "md: nets_param_md_init, id 1903, 17056 bytes"; a parser may have made the envelope's size another one.
std::string title(const Session &session);

} // namespace netparam

#endif
