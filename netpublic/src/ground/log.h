// The logging convention: printf to standard output, gated by the host's switches. A line is a
// coloured location prefix (base name and line of the source) followed by the message.
#ifndef NETPUBLIC_LOG_H
#define NETPUBLIC_LOG_H

#include <cstdint>
#include <type_traits>

namespace netpublic {

constexpr unsigned int log_module = 0x400; // this library's bit of the host's modulemask
constexpr unsigned int log_errors = 0x1;   // the level bit of errors in the host's loglevel
constexpr unsigned int log_traces = 0x8;   // the level bit of the traces

// The base names of all sources that log, one behind the other.
inline constexpr char logged_sources[] = "\0" // of what has no place
                                         "net_param_init.cpp\0"
                                         "net_public.cpp\0"
                                         "net_text.cpp\0"
                                         "net_xml_alarm.cpp\0"
                                         "net_xml_network.cpp\0"
                                         "net_xml_osd.cpp\0"
                                         "net_xml_ptz.cpp\0"
                                         "net_xml_public.cpp\0"
                                         "net_xml_recode.cpp\0"
                                         "net_xml_replay.cpp\0"
                                         "net_xml_snap.cpp\0"
                                         "net_xml_stream.cpp\0"
                                         "net_xml_system.cpp\0"
                                         "net_xml_timelapse.cpp\0"
                                         "net_xml_user.cpp";

// The text of this number among texts that stand one behind the other, each with its terminator.
const char *text_at(const char *texts, unsigned int index);

// Where a line comes from: base name and line of the source, in one word.
struct Place {
    std::uint32_t word;

    static constexpr int source_bits = 5; // the number of the source; the line stands above it

    const char *file() const;
    int line() const
    {
        return static_cast<int>(word >> source_bits);
    }
};

void not_a_logged_source(); // no constant: what meets it does not compile

// The word of a place; compile time only.
constexpr std::uint32_t place_word(const char *file, int line)
{
    std::uint32_t source = 0;
    for (const char *name = logged_sources;; ++source) {
        const char *at = file;
        for (; *name == *at && *at != '\0'; ++name)
            ++at;
        if (*name == *at)
            break;
        while (*name != '\0')
            ++name;
        if (++name == logged_sources + sizeof logged_sources)
            not_a_logged_source();
    }
    return static_cast<std::uint32_t>(line) << Place::source_bits | source;
}

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
#define NET_HERE NET_PLACE(__LINE__)
#define NET_PLACE(line)                                                                                                \
    (::netpublic::Place{std::integral_constant<std::uint32_t, ::netpublic::place_word(NET_FILE, line)>::value})

#endif
