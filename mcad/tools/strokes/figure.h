// Flat figures made of polylines and filled triangles.
#pragma once

#include <array>
#include <vector>

namespace zeq::strokes {

struct Point {
    float x = 0, y = 0; ///< y upwards
};
using Polyline = std::vector<Point>;

struct Figure {
    std::vector<Polyline> lines;
    std::vector<std::array<Point, 3>> triangles; ///< filled
    float width = 0;                             ///< from x = 0 on, with the space behind
    float top = 0, bottom = 0;                   ///< of the lines of text or the frames

    /// Adds the strokes of another figure; the extent stays.
    void add(const Figure& other, Point offset, float scale = 1);
    void addBox(Point low, Point high);
    /// @param from,to in degrees, anticlockwise
    void addArc(Point center, float radius, float from, float to);
};

} // namespace zeq::strokes
