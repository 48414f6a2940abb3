#include "ground/log.h"

#include <net_host.h>

#include <cstdarg>
#include <cstdio>

namespace netpublic {
namespace {

constexpr char red[] = "\033[0;31m[%s:%d]:\033[0m";
constexpr char green[] = "\033[0;32m[%s:%d]:\033[0m";

} // namespace

// The prefix and the message are two printf calls, so that the host can tell them apart.
#define NETPUBLIC_PRINT(prefix)                                                                                        \
    do {                                                                                                               \
        std::printf(prefix, place.file, place.line);                                                                   \
        std::va_list arguments;                                                                                        \
        va_start(arguments, format);                                                                                   \
        std::vprintf(format, arguments);                                                                               \
        va_end(arguments);                                                                                             \
    } while (false)

bool log_gate(unsigned int level)
{
    return (modulemask & log_module) != 0 && (loglevel & level) != 0;
}

void log_error(Place place, const char *format, ...)
{
    if (log_gate(log_errors))
        NETPUBLIC_PRINT(red);
}

void log_trace(Place place, const char *format, ...)
{
    if (log_gate(log_traces))
        NETPUBLIC_PRINT(green);
}

void log_red(Place place, const char *format, ...)
{
    NETPUBLIC_PRINT(red);
}

void log_green(Place place, const char *format, ...)
{
    NETPUBLIC_PRINT(green);
}

void log_line(Line line, Place place, const char *function)
{
    switch (line) {
    case Line::none:
        break;
    case Line::parser:
        log_error(place, "Func(%s) Line(%d) \n", function, place.line);
        break;
    case Line::writer:
        log_error(place, "func:%s line:%d\n", function, place.line);
        break;
    case Line::plain:
        log_plain("Func(%s) Line(%d)\n", function, place.line);
        break;
    case Line::plain_failed:
        log_plain("func:%s line:%d failed\n", function, place.line);
        break;
    case Line::plain_arrow:
        log_plain("func:%s  line:%d------------>\n", function, place.line);
        break;
    case Line::green_empty:
        log_green(place, "\n");
        break;
    case Line::error:
        log_error(place, " error \n");
        break;
    case Line::plain_param:
        log_plain("param err\n");
        break;
    case Line::xml_err:
        log_error(place, "xml err\n");
        break;
    case Line::param_error:
        log_error(place, "param error");
        break;
    case Line::location:
        log_error(place, "%s, %d\n", function, place.line);
        break;
    case Line::null_error:
        log_error(place, "arguments are null.\n");
        break;
    case Line::rights_error:
        log_error(place, "nets_ability_support_s2x fail\n");
        break;
    case Line::xml_error:
        log_error(place, "XML IS ERROR\n");
        break;
    }
}

void log_plain(const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::vprintf(format, arguments);
    va_end(arguments);
}

} // namespace netpublic
