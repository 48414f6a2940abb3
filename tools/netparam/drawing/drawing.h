// A value that is better looked at: as lines of characters, and as what these stand for.
#ifndef NETPARAM_DRAWING_H
#define NETPARAM_DRAWING_H

#include <net_types.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace netparam {

// Of a drawn week.
constexpr std::size_t week_days = 7, day_hours = 24;

// A privacy mask, in the client's unit.
struct Rectangle {
    char mark;
    long long left, top, width, height;
};

struct Drawing {
    enum class Kind {
        none,
        note,   // why there is no drawing
        grid,   // rows of cells
        week,   // seven rows of 24 hours
        sets,   // the same; each mark is a set of alarm types that the legend names
        month,  // one row of days
        figure, // points in a picture that reaches from 0 to 1
        masks,  // rectangles
    };

    Kind kind = Kind::none;
    std::vector<std::string> lines; // empty when there is nothing to look at
    std::vector<std::string> cells; // the marks alone
    std::vector<std::pair<char, std::string>> legend;
    std::vector<point_t> points;
    bool closed = false; // the figure surrounds an area
    std::vector<Rectangle> rectangles;
    long long width = 0, height = 0; // that the rectangles reach
};

} // namespace netparam

#endif
