// The letters are strokes between the points of a grid, four wide and six high.
#include "drawing.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace samples {

namespace {

constexpr double gridUnit = 0.5;
constexpr double advance = 5.5 * gridUnit;
constexpr double margin = 1; ///< around the text of a frame
constexpr double textHeight = 6 * gridUnit;
constexpr double arrowLength = 3;

struct Glyph {
    char32_t character;
    const char* strokes; ///< points as two digits, x and y; a slash begins the next stroke
};
constexpr Glyph glyphs[] = {{U'0', "10 30 41 45 36 16 05 01 10"},
                            {U'1', "15 26 20/10 30"},
                            {U'2', "05 16 36 45 44 00 40"},
                            {U'3', "06 46 24 34 43 41 30 10 01"},
                            {U'4', "30 36 02 42"},
                            {U'5', "46 06 03 33 42 41 30 00"},
                            {U'6', "36 16 05 01 10 30 41 42 33 03"},
                            {U'7', "06 46 20"},
                            {U'8', "13 04 05 16 36 45 44 33 13 02 01 10 30 41 42 33"},
                            {U'9', "10 30 41 45 36 16 05 04 13 43"},
                            {U'.', "20 21"},
                            {U'A', "00 26 40/12 32"},
                            {U'B', "00 06 36 45 44 33 03/33 42 41 30 00"},
                            {U'C', "45 36 16 05 01 10 30 41"},
                            {U'D', "00 06 26 44 42 20 00"},
                            {U'E', "46 06 00 40/03 33"},
                            {U'G', "45 36 16 05 01 10 30 41 43 23"},
                            {U'H', "00 06/40 46/03 43"},
                            {U'K', "00 06/46 03 40"},
                            {U'L', "06 00 40"},
                            {U'R', "00 06 36 45 44 33 03/23 40"},
                            {U'S', "01 10 30 41 42 33 13 04 05 16 36 45"},
                            {U'X', "00 46/06 40"},
                            {U'±', "22 26/04 44/01 41"},
                            {U'-', "03 43"},
                            {U'⌀', "11 31 42 44 35 15 04 02 11/00 46"},
                            {U'Ⓜ', "10 30 41 45 36 16 05 01 10/11 15 23 35 31"},
                            {U'⏥', "01 31 45 15 01"},
                            {U'⟂', "00 40/20 26"},
                            {U'⌖', "11 31 42 44 35 15 04 02 11/20 26/03 43"}};

Point turned(const Point& point) { return {point.y, point.x}; }

} // namespace

double textWidth(std::u32string_view text) { return advance * static_cast<double>(text.size()); }

void Drawing::arrow(const Point& from, const Point& to) {
    line({from, to});
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    const double x = (to.x - from.x) / length * arrowLength;
    const double y = (to.y - from.y) / length * arrowLength;
    m_triangles.push_back({to, {to.x - x - y / 6, to.y - y + x / 6}, {to.x - x + y / 6, to.y - y - x / 6}});
}

double Drawing::text(const Point& at, std::u32string_view text) {
    double x = at.x;
    for (const char32_t c : text) {
        const auto* const glyph = std::ranges::find(glyphs, c, &Glyph::character);
        std::vector<Point> stroke;
        for (const char* step = glyph == std::end(glyphs) ? "" : glyph->strokes; *step != '\0';) {
            if (*step == '/') {
                line(std::exchange(stroke, {}));
                ++step;
            } else if (*step == ' ') {
                ++step;
            } else {
                stroke.push_back({x + gridUnit * (step[0] - '0'), at.y + gridUnit * (step[1] - '0')});
                step += 2;
            }
        }
        if (!stroke.empty()) line(std::move(stroke));
        x += advance;
    }
    return x;
}

double Drawing::frame(const Point& at, const std::vector<std::u32string>& cells) {
    const double top = at.y + textHeight + 2 * margin;
    double x = at.x;
    for (const std::u32string& cell : cells) {
        const double next = text({x + margin, at.y + margin}, cell) + margin / 2;
        line({{x, at.y}, {next, at.y}, {next, top}, {x, top}, {x, at.y}});
        x = next;
    }
    return x;
}

void Drawing::dimension(const Point& from, const Point& to, double at, std::u32string_view text,
                        bool isVertical) {
    const auto place = [isVertical](const Point& point) { return isVertical ? turned(point) : point; };
    const Point first = place(from);
    const Point second = place(to);
    const double middle = (first.x + second.x) / 2;
    line({from, place({first.x, at})});
    line({to, place({second.x, at})});
    arrow(place({middle, at}), place({first.x, at}));
    arrow(place({middle, at}), place({second.x, at}));
    if (isVertical)
        this->text({at - textWidth(text) - margin, middle - textHeight / 2}, text);
    else
        this->text({middle - textWidth(text) / 2, at + margin}, text);
}

void Drawing::datum(const Point& foot, const Point& at, char32_t letter) {
    const double right = frame(at, {std::u32string(1, letter)});
    const Point middle{(at.x + right) / 2, at.y + textHeight / 2 + margin};
    // From the nearer side of the frame.
    const bool isBeside = std::abs(foot.x - middle.x) > std::abs(foot.y - middle.y);
    const double away = isBeside ? std::copysign(arrowLength, middle.x - foot.x)
                                 : std::copysign(arrowLength, middle.y - foot.y);
    if (isBeside) {
        line({foot, {away < 0 ? right : at.x, foot.y}});
        m_triangles.push_back({foot, {foot.x + away, foot.y + 1.5}, {foot.x + away, foot.y - 1.5}});
    } else {
        line({foot, {foot.x, away < 0 ? at.y + textHeight + 2 * margin : at.y}});
        m_triangles.push_back({foot, {foot.x - 1.5, foot.y + away}, {foot.x + 1.5, foot.y + away}});
    }
}

} // namespace samples
