// The library logs to standard output, where the tool's results go: while a capture lives, standard
// output goes to a temporary file.
#ifndef NETPARAM_CAPTURE_H
#define NETPARAM_CAPTURE_H

#include <cstdio>
#include <string>
#include <utility>

namespace netparam {

class Capture {
public:
    Capture();
    ~Capture();
    Capture(const Capture &) = delete;
    Capture &operator=(const Capture &) = delete;

    // Ends the capture.
    std::string text();

private:
    void end();

    int saved_ = -1;
    std::FILE *file_ = nullptr;
};

// Calls the library and adds what it logs to `log`.
template <class Function> int logged(std::string &log, Function &&function)
{
    Capture capture;
    const int result = std::forward<Function>(function)();
    log += capture.text();
    return result;
}

} // namespace netparam

#endif
