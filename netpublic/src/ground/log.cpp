#include "ground/log.h"

#include <net_host.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace netpublic {
namespace {

constexpr char red[] = "\033[0;31m[%s:%d]:\033[0m";
constexpr char green[] = "\033[0;32m[%s:%d]:\033[0m";

// The lines, in the order of their numbers; each is handed the function's name and the number of the source line.
constexpr char lines[] = "\0"
                         "Func(%s) Line(%d) \n\0"
                         "func:%s line:%d\n\0"
                         "Func(%s) Line(%d)\n\0"
                         "func:%s line:%d failed\n\0"
                         " error \n\0"
                         "func:%s  line:%d------------>\n\0"
                         "XML IS ERROR\n\0"
                         "param err\n\0"
                         "xml err\n\0"
                         "param error\0"
                         "\n\0"
                         "%s, %d\n\0"
                         "arguments are null.\n\0"
                         "nets_ability_support_s2x fail\n";

constexpr unsigned int bit(Line line)
{
    return 1u << static_cast<unsigned int>(line);
}
constexpr unsigned int plain_lines =
    bit(Line::plain) | bit(Line::plain_failed) | bit(Line::plain_arrow) | bit(Line::plain_param);
constexpr unsigned int ungated_lines = plain_lines | bit(Line::green_empty);

// The prefix and the message are two printf calls, so that the host can tell them apart.
[[gnu::format(printf, 3, 0)]] void print(bool error, Place place, const char *format, std::va_list arguments)
{
    std::printf(error ? red : green, place.file(), place.line());
    std::vprintf(format, arguments);
}

} // namespace

const char *text_at(const char *texts, unsigned int index)
{
    for (; index != 0; --index)
        texts += std::strlen(texts) + 1;
    return texts;
}

const char *Place::file() const
{
    return text_at(logged_sources, word % (1u << source_bits));
}

bool log_gate(unsigned int level)
{
    return (modulemask & log_module) != 0 && (loglevel & level) != 0;
}

void log_error(Place place, const char *format, ...)
{
    if (!log_gate(log_errors))
        return;
    std::va_list arguments;
    va_start(arguments, format);
    print(true, place, format, arguments);
    va_end(arguments);
}

void log_trace(Place place, const char *format, ...)
{
    if (!log_gate(log_traces))
        return;
    std::va_list arguments;
    va_start(arguments, format);
    print(false, place, format, arguments);
    va_end(arguments);
}

void log_red(Place place, const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    print(true, place, format, arguments);
    va_end(arguments);
}

void log_green(Place place, const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    print(false, place, format, arguments);
    va_end(arguments);
}

void log_plain(const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::vprintf(format, arguments);
    va_end(arguments);
}

// The formats are those above.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

void log_line(Line line, Place place, const char *function)
{
    if (line == Line::none)
        return;
    if ((ungated_lines & bit(line)) == 0 && !log_gate(log_errors))
        return; // nearly always: do not even look for the line
    const char *format = text_at(lines, static_cast<unsigned int>(line));
    if ((plain_lines & bit(line)) != 0)
        log_plain(format, function, place.line());
    else if ((ungated_lines & bit(line)) != 0)
        log_green(place, format, function, place.line());
    else
        log_error(place, format, function, place.line());
}

#pragma GCC diagnostic pop

} // namespace netpublic
