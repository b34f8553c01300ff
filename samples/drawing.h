// Annotations as strokes and filled triangles in a plane, like those of a technical drawing.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace samples {

/// Millimetres.
struct Point {
    double x, y;
};

class Drawing {
public:
    const std::vector<std::vector<Point>>& lines() const { return m_lines; }
    const std::vector<std::array<Point, 3>>& triangles() const { return m_triangles; }

    void line(std::vector<Point> points) { m_lines.push_back(std::move(points)); }
    /// A line with a filled arrowhead at its end.
    void arrow(const Point& from, const Point& to);
    /// Writes from the lower left corner; capitals, digits and symbols of dimensions are known.
    /// @return where it ends to the right
    double text(const Point& at, std::u32string_view text);
    /// Cells side by side with a text in each.
    /// @return where it ends to the right
    double frame(const Point& at, const std::vector<std::u32string>& cells);
    /// A horizontal dimension line between two extension lines, which rise (or drop) to `y` from the measured points,
    /// with the text above its middle. For a vertical one the drawing is turned: x and y change places.
    void dimension(const Point& from, const Point& to, double at, std::u32string_view text,
                   bool isVertical = false);
    /// A letter in a frame on a filled triangle that stands on the feature.
    void datum(const Point& foot, const Point& frame, char32_t letter);

private:
    std::vector<std::vector<Point>> m_lines;
    std::vector<std::array<Point, 3>> m_triangles;
};

double textWidth(std::u32string_view text);

} // namespace samples
