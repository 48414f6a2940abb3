#include "terminal/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace netparam {
namespace {

constexpr std::size_t usual_width = 80, least_width = 40, greatest_width = 160;

bool wants_colour(int descriptor)
{
    const char *off = std::getenv("NO_COLOR");
    const char *terminal = std::getenv("TERM");
    return (off == nullptr || *off == '\0') && isatty(descriptor) == 1 &&
           (terminal == nullptr || std::string(terminal) != "dumb");
}

// Files and pipes have the usual width, so that output does not depend on where it was made.
std::size_t width_of(int descriptor)
{
    winsize size = {};
    if (isatty(descriptor) != 1 || ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return usual_width;
    return std::clamp<std::size_t>(size.ws_col, least_width, greatest_width);
}

} // namespace

// One style serves both streams, so both must be terminals.
Style terminal_style()
{
    Style style;
    style.colour = wants_colour(STDOUT_FILENO) && wants_colour(STDERR_FILENO);
    style.width = std::min(width_of(STDOUT_FILENO), width_of(STDERR_FILENO));
    return style;
}

Progress::Progress(std::size_t total)
    : wanted_(total > 1 && isatty(STDERR_FILENO) == 1), total_(total), width_(width_of(STDERR_FILENO)),
      latest_(std::chrono::steady_clock::now())
{
}

Progress::~Progress()
{
    clear();
}

void Progress::show(std::size_t index, const std::string &item)
{
    constexpr std::chrono::milliseconds pause(100);
    const auto now = std::chrono::steady_clock::now();
    if (!wanted_ || now - latest_ < pause)
        return;
    latest_ = now;
    const std::string count = std::to_string(index) + " of " + std::to_string(total_) + "  ";
    clear();
    std::cerr << count << cut_to(printable(item), width_ - std::min(width_, count.size() + 1)) << std::flush;
    shown_ = true;
}

void Progress::clear()
{
    if (shown_)
        std::cerr << '\r' << std::string(width_ - 1, ' ') << '\r' << std::flush;
    shown_ = false;
}

} // namespace netparam
