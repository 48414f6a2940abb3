// What lies in the camera's picture, over a small frame of characters.
#ifndef NETPARAM_PICTURE_H
#define NETPARAM_PICTURE_H

#include "drawing/drawing.h"

namespace netparam {

// Points numbered from 1, joined by lines; a closed figure has one from the last point to the first.
Drawing draw_points(const net_smart_ai_points_t &points, bool closed);

// Their unit is the client's: the frame is as large as they reach, which the last line says. Nothing
// without an area.
Drawing draw_rectangles(const std::vector<Rectangle> &rectangles);

} // namespace netparam

#endif
