// Tables of cells as characters.
#ifndef NETPARAM_DRAW_H
#define NETPARAM_DRAW_H

#include "drawing/drawing.h"

#include <functional>

namespace netparam {

using Legend = std::vector<std::pair<char, std::string>>;

// One character a cell; rows and columns that all are alike are not left out.
Drawing draw_grid(int columns, int rows, const std::function<int(int column, int row)> &cell);

// Seven lines of 24 hours under a scale; `mark` gives an hour's character.
Drawing draw_week(const std::function<char(int day, int hour)> &mark);

// Up to 31 days of a month under a scale.
Drawing draw_month(int days, const std::function<char(int day)> &mark, const Legend &legend);

// The alarm types of a set, joined by commas; "none".
std::string alarm_types_of(const time_section_t &set);

// A weekly table of alarm types: a letter for each set that occurs, explained below the table.
Drawing draw_schedule(const time_section_t (&section)[7][24]);

} // namespace netparam

#endif
