// Outlines are cut into trapezoids by Boost.Polygon, on a grid far finer than any picture.
#include "scene/flat_shapes.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <boost/polygon/polygon.hpp>

namespace zeq::scene {

namespace {

void append(std::vector<float>& coordinates, const Vec& point) {
    for (const double each : {point.x, point.y, point.z}) coordinates.push_back(static_cast<float>(each));
}

/// Adds triangles to one flat face.
class FlatFace {
public:
    FlatFace(Shape& shape, const Placement& plane) : m_shape(shape), m_plane(plane) {
        m_face.firstTriangle = static_cast<std::uint32_t>(shape.triangles.size() / 3);
        m_face.firstVertex = static_cast<std::uint32_t>(shape.vertices.size() / 3);
    }
    void addCorner(double x, double y) {
        append(m_shape.vertices, m_plane(Vec{x, y, 0}));
        append(m_shape.normals, m_plane.z);
        ++m_face.vertices;
    }
    /// Of the corners that were added last, in a row and convex, so many.
    void fillFan(std::uint32_t corners) {
        const std::uint32_t first = m_face.firstVertex + m_face.vertices - corners;
        for (std::uint32_t i = 2; i < corners; ++i)
            m_shape.triangles.insert(m_shape.triangles.end(), {first, first + i - 1, first + i});
        m_face.triangles += corners - 2;
    }
    void finish(const Look& look, bool isHidden) {
        if (m_face.triangles == 0) return;
        m_face.look = look;
        m_face.isHidden = isHidden;
        m_shape.faces.push_back(m_face);
    }

private:
    Shape& m_shape;
    const Placement& m_plane;
    Face m_face;
};

} // namespace

void addFigure(const strokes::Figure& figure, const Placement& plane, const Look& look, Shape& shape) {
    for (const strokes::Polyline& stroke : figure.lines) {
        if (stroke.size() < 2) continue;
        PointRange line;
        line.first = static_cast<std::uint32_t>(shape.linePoints.size() / 3);
        line.count = static_cast<std::uint32_t>(stroke.size());
        line.look = look;
        for (const strokes::Point& point : stroke) append(shape.linePoints, plane(Vec{point.x, point.y, 0}));
        shape.lines.push_back(std::move(line));
    }
    FlatFace face(shape, plane);
    for (const auto& triangle : figure.triangles) {
        for (const strokes::Point& corner : triangle) face.addCorner(corner.x, corner.y);
        face.fillFan(3);
    }
    face.finish(look, false);
}

void addFilling(std::span<const float> outline, const Look& look, bool isHidden, Shape& shape) {
    namespace grid = boost::polygon;
    const std::size_t count = outline.size() / 3;
    if (count < 4) return;
    const auto at = [&](std::size_t i) {
        return Vec{outline[3 * i], outline[3 * i + 1], outline[3 * i + 2]};
    };
    const Vec origin = at(0);
    Vec normal; // twice the area (Newell)
    double size = 0;
    Vec farthest;
    for (std::size_t i = 1; i < count; ++i) {
        const Vec offset = at(i) - origin;
        normal = normal + cross(at(i - 1) - origin, offset);
        if (length(offset) > size) farthest = offset;
        size = std::max(size, length(offset));
    }
    if (!(length(normal) > 1e-12 * size * size)) return;
    const Vec z = unit(normal), x = unit(cross(cross(z, farthest), z));
    const Placement plane{x, cross(z, x), z, origin};

    const double step = size / (1 << 24);
    std::vector<grid::point_data<int>> corners;
    for (std::size_t i = 0; i + 1 < count; ++i) {
        const Vec offset = at(i) - origin;
        corners.emplace_back(static_cast<int>(std::lround(dot(offset, plane.x) / step)),
                             static_cast<int>(std::lround(dot(offset, plane.y) / step)));
    }
    grid::polygon_data<int> area;
    area.set(corners.begin(), corners.end());
    grid::polygon_set_data<int> areas;
    areas.insert(area);
    std::vector<grid::polygon_data<int>> trapezoids;
    areas.get_trapezoids(trapezoids);
    FlatFace face(shape, plane);
    for (const grid::polygon_data<int>& trapezoid : trapezoids) {
        std::vector<grid::point_data<int>> points(trapezoid.begin(), trapezoid.end());
        if (points.size() > 1 && points.front() == points.back()) points.pop_back();
        if (points.size() < 3) continue;
        if (grid::winding(trapezoid) == grid::CLOCKWISE) std::ranges::reverse(points);
        for (const auto& point : points) face.addCorner(step * point.x(), step * point.y());
        face.fillFan(static_cast<std::uint32_t>(points.size()));
    }
    face.finish(look, isHidden);
}

} // namespace zeq::scene
