// Grids and schedules drawn as text, read back in: what "write --grid" and "set --grid" take.
#ifndef NETPARAM_GRID_FILE_H
#define NETPARAM_GRID_FILE_H

#include "reading/item.h"

#include <string>
#include <vector>

namespace netparam {

// What is drawn, and where in the payload.
struct Drawn {
    std::string path;
    Drawing::Kind kind;
    Json value;
};

// Puts the drawing in a file into a payload's JSON. `argument` is "PATH=FILE", or FILE alone where only one
// value is drawn like that; `items` is the payload that `payload` was made of. The drawing is what "parse"
// prints, however far it is indented. Fails with exit_usage, exit_file, and exit_malformed when the drawing
// does not fit.
Drawn put_drawing(Json &payload, const std::vector<Item> &items, const std::string &argument);

// The hours of a drawn week as 168 flags. Fails with exit_file and exit_malformed.
std::string read_flags(const std::string &file);

// Saves the drawing of a value where put_drawing() finds it. Fails with exit_usage and exit_file.
void save_drawing(const std::vector<Item> &items, const std::string &argument);

} // namespace netparam

#endif
