// What the terminal can show, if there is one.
#ifndef NETPARAM_TERMINAL_H
#define NETPARAM_TERMINAL_H

#include "model/text.h"

#include <chrono>
#include <cstddef>
#include <string>

namespace netparam {

// Colour and width for both output streams.
Style terminal_style();

// A line on standard error that says how far the work has come; nothing without a terminal there.
class Progress {
public:
    explicit Progress(std::size_t total);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    // Before item `index`, from 0 on.
    void show(std::size_t index, const std::string &item);
    // Takes the line away, so that other lines can be written.
    void clear();

private:
    bool wanted_;
    bool shown_ = false;
    std::size_t total_, width_;
    std::chrono::steady_clock::time_point latest_;
};

} // namespace netparam

#endif
