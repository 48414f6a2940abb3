#include "drawing/picture.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace netparam {
namespace {

constexpr int frame_columns = 48, frame_rows = 16;

struct Cell {
    int column, row;
};

class Frame {
public:
    Frame()
    {
        for (std::string &row : cells_)
            row.assign(frame_columns, ' ');
    }

    void mark(Cell cell, char character)
    {
        cells_[static_cast<std::size_t>(cell.row)][static_cast<std::size_t>(cell.column)] = character;
    }

    void line(Cell from, Cell to)
    {
        const int steps = std::max({std::abs(to.column - from.column), std::abs(to.row - from.row), 1});
        const auto between = [steps](int a, int b, int step) {
            return a + static_cast<int>(std::lround(static_cast<double>(b - a) * step / steps));
        };
        for (int step = 0; step <= steps; ++step)
            mark({between(from.column, to.column, step), between(from.row, to.row, step)}, '*');
    }

    std::vector<std::string> lines() const
    {
        const std::string border = "+" + std::string(frame_columns, '-') + "+";
        std::vector<std::string> lines = {border};
        for (const std::string &row : cells_)
            lines.push_back("|" + row + "|");
        lines.push_back(border);
        return lines;
    }

private:
    std::array<std::string, frame_rows> cells_;
};

// Also false for what is no number.
bool inside(const point_t &point)
{
    return point.x >= 0 && point.x <= 1 && point.y >= 0 && point.y <= 1;
}

Cell cell_of(const point_t &point)
{
    return {std::min(static_cast<int>(point.x * frame_columns), frame_columns - 1),
            std::min(static_cast<int>(point.y * frame_rows), frame_rows - 1)};
}

// The cells that a stretch from `low` to `high` touches, in a frame as large as `extent`.
std::pair<int, int> stretch(long long low, long long high, long long extent, int cells)
{
    const auto scaled = [=](long long at) {
        return static_cast<double>(std::max(at, 0LL)) * cells / static_cast<double>(extent);
    };
    return {static_cast<int>(scaled(low)), std::min(static_cast<int>(std::ceil(scaled(high))), cells)};
}

} // namespace

Drawing draw_points(const net_smart_ai_points_t &points, bool closed)
{
    const int count = std::clamp(points.pointNum, 0, static_cast<int>(std::size(points.points)));
    Drawing drawing;
    if (count == 0)
        return drawing;
    if (!std::all_of(points.points, points.points + count, inside)) {
        drawing.kind = Drawing::Kind::note;
        drawing.lines = {"not drawn: a point lies outside the picture, which reaches from 0 to 1"};
        return drawing;
    }
    Frame frame;
    const auto place = [&points](int point) { return cell_of(points.points[point]); };
    for (int i = 1; i < count; ++i)
        frame.line(place(i - 1), place(i));
    if (closed && count > 2)
        frame.line(place(count - 1), place(0));
    for (int i = 0; i < count; ++i)
        frame.mark(place(i), static_cast<char>('1' + i));
    drawing.kind = Drawing::Kind::figure;
    drawing.lines = frame.lines();
    drawing.points.assign(points.points, points.points + count);
    drawing.closed = closed;
    return drawing;
}

Drawing draw_rectangles(const std::vector<Rectangle> &rectangles)
{
    Drawing drawing;
    for (const Rectangle &each : rectangles)
        if (each.width > 0 && each.height > 0) {
            drawing.width = std::max(drawing.width, each.left + each.width);
            drawing.height = std::max(drawing.height, each.top + each.height);
        }
    if (drawing.width <= 0 || drawing.height <= 0)
        return {};
    Frame frame;
    for (const Rectangle &each : rectangles) {
        if (each.width <= 0 || each.height <= 0)
            continue;
        const auto [left, right] = stretch(each.left, each.left + each.width, drawing.width, frame_columns);
        const auto [top, bottom] = stretch(each.top, each.top + each.height, drawing.height, frame_rows);
        for (int row = top; row < bottom; ++row)
            for (int column = left; column < right; ++column)
                frame.mark({column, row}, each.mark);
    }
    drawing.kind = Drawing::Kind::masks;
    drawing.lines = frame.lines();
    drawing.lines.push_back("scaled to the largest extent, " + std::to_string(drawing.width) + " x " +
                            std::to_string(drawing.height));
    drawing.rectangles = rectangles;
    return drawing;
}

} // namespace netparam
