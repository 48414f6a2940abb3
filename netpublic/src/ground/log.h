// The logging convention: printf to standard output, gated by the host's switches. A line is a
// coloured location prefix (base name and line of the source) followed by the message.
#ifndef NETPUBLIC_LOG_H
#define NETPUBLIC_LOG_H

#include <cstdint>

namespace netpublic {

constexpr unsigned int log_module = 0x400; // this library's bit of the host's modulemask
constexpr unsigned int log_errors = 0x1;   // the level bit of errors in the host's loglevel
constexpr unsigned int log_traces = 0x8;   // the level bit of the traces

// Where a line comes from: base name and line of the source.
struct Place {
    const char *file;
    int line;
};

constexpr const char *base_name(const char *path)
{
    const char *base = path;
    for (; *path != '\0'; ++path)
        if (*path == '/')
            base = path + 1;
    return base;
}

// Is this library's module switched on, together with this level?
bool log_gate(unsigned int level);

// Red prefix and message, only while errors are switched on.
[[gnu::format(printf, 2, 3)]] void log_error(Place place, const char *format, ...);
// Green prefix and message, only while traces are switched on.
[[gnu::format(printf, 2, 3)]] void log_trace(Place place, const char *format, ...);
// Red or green prefix and message, whatever the switches say.
[[gnu::format(printf, 2, 3)]] void log_red(Place place, const char *format, ...);
[[gnu::format(printf, 2, 3)]] void log_green(Place place, const char *format, ...);
// The message alone, whatever the switches say.
[[gnu::format(printf, 1, 2)]] void log_plain(const char *format, ...);

// The fixed lines of parsers and writers; each names the function and the source line.
enum class Line : std::uint8_t {
    none,
    parser,       // error line "Func(%s) Line(%d) \n"
    writer,       // error line "func:%s line:%d\n"
    plain,        // plain "Func(%s) Line(%d)\n"
    plain_failed, // plain "func:%s line:%d failed\n"
    error,        // error line " error \n"
    plain_arrow,  // plain "func:%s  line:%d------------>\n"
    xml_error,    // error line "XML IS ERROR\n"
    plain_param,  // plain "param err\n"
    xml_err,      // error line "xml err\n"
    param_error,  // error line "param error", without a line break
    green_empty,  // green prefix and an empty line, not gated
    location,     // error line "%s, %d\n"
    null_error,   // error line "arguments are null.\n"
    rights_error, // error line "nets_ability_support_s2x fail\n"
};
void log_line(Line line, Place place, const char *function);

} // namespace netpublic

// The base name of the source file. A source whose lines carry another one's name says so once, in front of its
// includes: #define NETPUBLIC_LOGGED_AS "net_xml_public.cpp"
#ifdef NETPUBLIC_LOGGED_AS
#define NET_FILE NETPUBLIC_LOGGED_AS
#elif defined __FILE_NAME__
#define NET_FILE __FILE_NAME__
#else
#define NET_FILE (::netpublic::base_name(__FILE__))
#endif

// The place of the code that logs.
#define NET_HERE (::netpublic::Place{NET_FILE, __LINE__})

#endif
