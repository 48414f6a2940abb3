#include "command_line.h"

namespace netparam {
namespace {

constexpr char footer[] = R"(Exit codes:
  0   the library accepted everything
  1   the library refused a value, the extension header or the payload
  2   no such message, option or verb
  3   a file cannot be read, or the output cannot be written
  4   the text is not well-formed XML, or not fit to be parsed
  70  a fault of the tool or the library

Examples:
  netparam list md
  netparam parse md request.xml
  netparam exchange md request.xml --ext extension.xml)";

} // namespace

CommandLine::CommandLine(Style for_both)
    : app("Shows how the device library reads a client's request, why it refuses one, and what it replies.",
          "netparam"),
      style(for_both)
{
    app.footer(footer);
    app.require_subcommand(1);
    add_list(*this);
    add_parse(*this);
    add_exchange(*this);
}

} // namespace netparam
