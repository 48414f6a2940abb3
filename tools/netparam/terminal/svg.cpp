#include "terminal/svg.h"

#include "model/failure.h"
#include "model/text.h"

#include "values/tables.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <locale>
#include <map>
#include <set>
#include <sstream>

namespace netparam {
namespace {

constexpr char ink[] = "#222222", faint[] = "#8a8a8a", net[] = "#d8d8d8", paper[] = "#ffffff", blank[] = "#f4f4f4";
constexpr std::array<const char *, 12> colours = {"#3b7dc4", "#e08a2e", "#4c9f5a", "#c14d4d", "#8666b3", "#8c6a52",
                                                  "#d684ba", "#6f8f99", "#b0ad3a", "#40b0b8", "#5a5fc0", "#a34f7d"};
constexpr double margin = 24, label_width = 86, text_size = 12, title_size = 14, swatch = 12;

struct Point {
    double x, y;
};

// A page that grows downwards.
class Page {
public:
    Page()
    {
        out_.imbue(std::locale::classic());
    }

    double y = margin;

    void rectangle(Point at, double width, double height, const std::string &fill, const std::string &more = "")
    {
        reach(at.x + width);
        out_ << "<rect x=\"" << at.x << "\" y=\"" << at.y << "\" width=\"" << width << "\" height=\"" << height
             << "\" fill=\"" << fill << '"' << more << "/>\n";
    }
    void line(Point from, Point to)
    {
        out_ << "<line x1=\"" << from.x << "\" y1=\"" << from.y << "\" x2=\"" << to.x << "\" y2=\"" << to.y
             << "\" stroke=\"" << net << "\" stroke-width=\"0.6\"/>\n";
    }
    // `anchor` is start, middle or end.
    void text(Point at, const std::string &words, const char *anchor = "start", const char *colour = ink,
              double size = text_size, bool bold = false)
    {
        const double width = static_cast<double>(words.size()) * size * 0.6;
        reach(std::strcmp(anchor, "start") == 0 ? at.x + width : at.x);
        out_ << "<text x=\"" << at.x << "\" y=\"" << at.y << "\" font-size=\"" << size << "\" text-anchor=\"" << anchor
             << "\" fill=\"" << colour << '"' << (bold ? " font-weight=\"bold\"" : "") << '>'
             << in_xml(printable(words)) << "</text>\n";
    }
    void polygon(const std::vector<Point> &points, bool closed)
    {
        out_ << (closed ? "<polygon" : "<polyline") << " points=\"";
        for (const Point &point : points)
            out_ << point.x << ',' << point.y << ' ';
        out_ << "\" fill=\"" << (closed ? colours[0] : "none") << "\" fill-opacity=\"0.25\" stroke=\"" << colours[0]
             << "\" stroke-width=\"2\"/>\n";
    }
    void dot(Point at)
    {
        out_ << "<circle cx=\"" << at.x << "\" cy=\"" << at.y << "\" r=\"3.5\" fill=\"" << colours[0] << "\"/>\n";
    }

    std::string document() const
    {
        std::ostringstream page;
        page.imbue(std::locale::classic());
        const double width = width_ + margin, height = y + margin;
        page << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\""
             << width << "\" height=\"" << height << "\" viewBox=\"0 0 " << width << ' ' << height
             << "\" font-family=\"DejaVu Sans, Arial, sans-serif\">\n<rect width=\"100%\" height=\"100%\" fill=\""
             << paper << "\"/>\n"
             << out_.str() << "</svg>\n";
        return page.str();
    }

private:
    void reach(double x)
    {
        width_ = std::max(width_, x);
    }

    std::ostringstream out_;
    double width_ = 480;
};

// What a mark looks like and what it means.
class Key {
public:
    explicit Key(const Drawing &drawing)
    {
        // One meaning has one colour in all drawings with the same legend.
        std::map<char, std::string> meanings;
        for (const auto &[mark, meaning] : drawing.legend) {
            meanings[mark] = meaning;
            add_colour(mark);
        }
        for (const std::string &row : drawing.cells)
            for (const char mark : row)
                if (mark != '.' && known_.insert(mark).second) {
                    add_colour(mark);
                    const auto found = meanings.find(mark);
                    entries_.emplace_back(mark, found != meanings.end() ? found->second : meaning_of(mark, drawing));
                }
        std::sort(entries_.begin(), entries_.end());
        const auto none = meanings.find('.');
        entries_.emplace_back('.', none != meanings.end() ? none->second : "not set");
    }

    std::string colour(char mark) const
    {
        const auto found = colour_.find(mark);
        return found != colour_.end() ? found->second : blank;
    }

    void draw(Page &page) const
    {
        double x = label_width;
        constexpr double longest = 900;
        for (const auto &[mark, meaning] : entries_) {
            const std::string words =
                (std::isalpha(static_cast<unsigned char>(mark)) != 0 ? std::string(1, mark) + " " : "") + meaning;
            const double width = swatch + 24 + static_cast<double>(words.size()) * text_size * 0.6;
            if (x > label_width && x + width > longest) {
                x = label_width;
                page.y += swatch + 8;
            }
            page.rectangle({x, page.y}, swatch, swatch, colour(mark), " stroke=\"" + std::string(faint) + "\"");
            page.text({x + swatch + 6, page.y + swatch - 2}, words);
            x += width;
        }
        page.y += swatch + 8;
    }

private:
    void add_colour(char mark)
    {
        if (mark != '.' && colour_.count(mark) == 0)
            colour_[mark] = colours[colour_.size() % colours.size()];
    }

    static std::string meaning_of(char mark, const Drawing &drawing)
    {
        if (mark == '#')
            return "set";
        if (mark >= '2' && mark <= '9')
            return "value " + std::string(1, mark);
        return drawing.kind == Drawing::Kind::sets ? "further combinations" : "other values";
    }

    std::map<char, const char *> colour_;
    std::set<char> known_;
    std::vector<std::pair<char, std::string>> entries_;
};

// Rows of cells, equal neighbours in one piece, under a net of lines; below them what their colours mean.
void draw_cells(Page &page, const Drawing &drawing, double width, double height, bool lettered)
{
    const Key key(drawing);
    const std::size_t columns = drawing.cells[0].size(), rows = drawing.cells.size();
    const auto x_of = [width](std::size_t column) { return label_width + static_cast<double>(column) * width; };
    const double top = page.y;
    const auto y_of = [=](std::size_t row) { return top + static_cast<double>(row) * height; };
    page.rectangle({x_of(0), top}, x_of(columns) - x_of(0), y_of(rows) - top, blank);
    for (std::size_t row = 0; row < rows; ++row)
        for (std::size_t column = 0; column < columns;) {
            const char mark = drawing.cells[row][column];
            std::size_t end = column + 1;
            while (end < columns && drawing.cells[row][end] == mark)
                ++end;
            if (mark != '.')
                page.rectangle({x_of(column), y_of(row)}, x_of(end) - x_of(column), height, key.colour(mark));
            column = end;
        }
    for (std::size_t column = 0; column <= columns; ++column)
        page.line({x_of(column), top}, {x_of(column), y_of(rows)});
    for (std::size_t row = 0; row <= rows; ++row)
        page.line({x_of(0), y_of(row)}, {x_of(columns), y_of(row)});
    for (std::size_t row = 0; lettered && row < rows; ++row)
        for (std::size_t column = 0; column < columns; ++column)
            if (drawing.cells[row][column] != '.')
                page.text({x_of(column) + width / 2, y_of(row) + height / 2 + 4},
                          std::string(1, drawing.cells[row][column]), "middle", paper);
    page.y = y_of(rows) + 10;
    key.draw(page);
}

void draw_grid(Page &page, const Drawing &drawing)
{
    const std::size_t columns = drawing.cells[0].size(), rows = drawing.cells.size();
    const double cell = std::clamp(840.0 / static_cast<double>(columns), 4.0, 14.0);
    constexpr std::size_t step = 10;
    page.y += text_size;
    page.text({label_width - 8, page.y - 4}, "row \\ column", "end", faint, 10);
    for (std::size_t column = 0; column < columns; column += step)
        page.text({label_width + (static_cast<double>(column) + 0.5) * cell, page.y - 4}, std::to_string(column),
                  "middle", faint, 10);
    for (std::size_t row = 0; row < rows; row += step)
        page.text({label_width - 8, page.y + static_cast<double>(row) * cell + 9}, std::to_string(row), "end", faint,
                  10);
    draw_cells(page, drawing, cell, cell, false);
}

void draw_week(Page &page, const Drawing &drawing)
{
    constexpr double width = 26, height = 22;
    constexpr int hours = 24, step = 3;
    page.y += text_size;
    page.text({label_width - 8, page.y - 4}, "day \\ hour", "end", faint, 10);
    for (int hour = 0; hour <= hours; hour += step)
        page.text({label_width + hour * width, page.y - 4}, std::to_string(hour), "middle", faint, 10);
    for (int day = 0; day < 7; ++day)
        page.text({label_width - 8, page.y + day * height + 15}, netpublic::word_of(netpublic::weekdays, day), "end");
    draw_cells(page, drawing, width, height, drawing.kind == Drawing::Kind::sets);
}

void draw_month(Page &page, const Drawing &drawing)
{
    constexpr double cell = 22;
    page.y += text_size;
    page.text({label_width - 8, page.y - 4}, "day", "end", faint, 10);
    for (std::size_t day = 0; day < drawing.cells[0].size(); ++day)
        page.text({label_width + (static_cast<double>(day) + 0.5) * cell, page.y - 4}, std::to_string(day + 1),
                  "middle", faint, 10);
    draw_cells(page, drawing, cell, cell, true);
}

// A frame for what lies in the camera's picture; its axes reach from 0 to `right` and `bottom`.
void draw_frame(Page &page, double width, double height, const std::string &right, const std::string &bottom)
{
    page.y += text_size;
    page.text({label_width, page.y - 4}, "0", "middle", faint, 10);
    page.text({label_width + width / 2, page.y - 4}, "x", "middle", faint, 10);
    page.text({label_width + width, page.y - 4}, right, "middle", faint, 10);
    page.text({label_width - 8, page.y + 9}, "0", "end", faint, 10);
    page.text({label_width - 8, page.y + height / 2}, "y", "end", faint, 10);
    page.text({label_width - 8, page.y + height}, bottom, "end", faint, 10);
    page.rectangle({label_width, page.y}, width, height, blank, " stroke=\"" + std::string(faint) + "\"");
}

void draw_figure(Page &page, const Drawing &drawing)
{
    constexpr double width = 480, height = 270;
    draw_frame(page, width, height, "1", "1");
    std::vector<Point> points;
    for (const point_t &point : drawing.points)
        points.push_back(
            {label_width + static_cast<double>(point.x) * width, page.y + static_cast<double>(point.y) * height});
    page.polygon(points, drawing.closed && points.size() > 2);
    for (std::size_t i = 0; i < points.size(); ++i) {
        page.dot(points[i]);
        const bool is_right = points[i].x > label_width + width / 2, is_low = points[i].y > page.y + height / 2;
        page.text({points[i].x + (is_right ? -8 : 8), points[i].y + (is_low ? -8 : 16)}, std::to_string(i + 1),
                  is_right ? "end" : "start");
    }
    page.y += height + 18;
    page.text({label_width, page.y},
              drawing.closed ? "points of an area, in their order" : "points of a line, in their order", "start",
              faint);
    page.y += 10;
}

void draw_masks(Page &page, const Drawing &drawing)
{
    constexpr double width = 480;
    const double scale = width / static_cast<double>(drawing.width);
    const double height = std::clamp(static_cast<double>(drawing.height) * scale, 40.0, 480.0);
    const double down = height / static_cast<double>(drawing.height);
    draw_frame(page, width, height, std::to_string(drawing.width), std::to_string(drawing.height));
    for (std::size_t i = 0; i < drawing.rectangles.size(); ++i) {
        const Rectangle &each = drawing.rectangles[i];
        if (each.width <= 0 || each.height <= 0)
            continue;
        const double left = std::max(0.0, static_cast<double>(each.left) * scale);
        const double top = std::max(0.0, static_cast<double>(each.top) * down);
        const double end = static_cast<double>(each.left + each.width) * scale;
        const double low = static_cast<double>(each.top + each.height) * down;
        page.rectangle({label_width + left, page.y + top}, std::max(end - left, 0.0), std::max(low - top, 0.0),
                       colours[i % colours.size()], " fill-opacity=\"0.6\" stroke=\"" + std::string(ink) + "\"");
        page.text({label_width + (left + end) / 2, page.y + (top + low) / 2 + 4}, std::string(1, each.mark), "middle");
    }
    page.y += height + 18;
    page.text({label_width, page.y}, "each mask bears the last digit of its id; the frame is the largest extent",
              "start", faint);
    page.y += 10;
}

void draw(Page &page, const Drawing &drawing)
{
    switch (drawing.kind) {
    case Drawing::Kind::grid:
        return draw_grid(page, drawing);
    case Drawing::Kind::week:
    case Drawing::Kind::sets:
        return draw_week(page, drawing);
    case Drawing::Kind::month:
        return draw_month(page, drawing);
    case Drawing::Kind::figure:
        return draw_figure(page, drawing);
    case Drawing::Kind::masks:
        return draw_masks(page, drawing);
    case Drawing::Kind::none:
    case Drawing::Kind::note:
        break;
    }
}

} // namespace

std::string svg_of(const std::vector<Item> &items, const std::string &title)
{
    Page page;
    page.y += title_size;
    page.text({margin, page.y}, title, "start", ink, title_size + 2, true);
    bool drawn = false;
    for_items(items, [&](const std::string &path, const Item &item) {
        if (item.drawing.kind <= Drawing::Kind::note || item.drawing.lines.empty())
            return;
        page.y += 22;
        page.text({margin, page.y}, path, "start", ink, title_size, true);
        if (item.items.empty() && item.text.size() <= 100) {
            page.y += 18;
            page.text({margin, page.y}, item.text, "start", faint);
        }
        page.y += 12;
        draw(page, item.drawing);
        drawn = true;
    });
    return drawn ? page.document() : "";
}

void save_svg(const std::vector<Item> &items, const std::string &title, const std::string &path)
{
    const std::string picture = svg_of(items, title);
    if (picture.empty())
        throw Failure(exit_file, printable(path) + ": not written, since there is nothing to draw");
    errno = 0;
    std::ofstream file(path, std::ios::binary);
    if (!(file << picture) || !file.flush())
        throw Failure(exit_file, printable(path) + ": " + std::strerror(errno));
}

} // namespace netparam
