// Checks every index and every coordinate on its way.
#include "scene/shape_builder.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "scene/flat_shapes.h"
#include "text/text.h"

namespace zeq::scene {

namespace {

using Indices = std::vector<std::uint32_t>;

Vec vecAt(const std::vector<float>& coordinates, std::size_t index) {
    const float* const at = &coordinates[3 * index];
    return {at[0], at[1], at[2]};
}

void append(std::vector<float>& coordinates, const Vec& point) {
    coordinates.insert(coordinates.end(), {static_cast<float>(point.x), static_cast<float>(point.y),
                                           static_cast<float>(point.z)});
}

/// Points where they are drawn.
struct Points {
    Points(const std::vector<float>& coordinates, const Placement& placement) {
        const std::size_t count = coordinates.size() / 3;
        placed.reserve(3 * count);
        for (std::size_t i = 0; i < count; ++i) {
            append(placed, placement(vecAt(coordinates, i)));
            const float* const at = &placed[3 * i];
            if (std::isfinite(at[0] + at[1] + at[2])) continue; // an overflow is as bad
            if (isBad.empty()) isBad.resize(count);
            isBad[i] = true;
        }
    }
    std::size_t count() const { return placed.size() / 3; }
    bool has(std::uint32_t index) const { return index < count() && (isBad.empty() || !isBad[index]); }

    std::vector<float> placed;
    std::vector<bool> isBad; ///< empty if none is
};

/// Collects triangles of good corners.
struct Triangles {
    void add(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
        if (points.has(a) && points.has(b) && points.has(c))
            indices.insert(indices.end(), {a, b, c});
        else
            ++leftOut;
    }
    /// @return whether that kind of primitive is known
    bool add(const ExcVisuFace::Polygon& polygon) {
        enum {
            list = 4,
            strip = 5,
            fan = 6,
            convex = 9
        };
        const std::vector<int>& from = polygon.indices;
        const auto corner = [&from](std::size_t i) { return static_cast<std::uint32_t>(from[i]); };
        switch (polygon.type) {
        case list:
            indices.reserve(indices.size() + from.size());
            for (std::size_t i = 2; i < from.size(); i += 3) add(corner(i - 2), corner(i - 1), corner(i));
            leftOut += from.size() % 3 != 0 ? 1 : 0;
            return true;
        case strip:
            for (std::size_t i = 2; i < from.size(); ++i)
                add(corner(i - 2 + i % 2), corner(i - 1 - i % 2), corner(i));
            return true;
        case fan:
        case convex:
            for (std::size_t i = 2; i < from.size(); ++i) add(corner(0), corner(i - 1), corner(i));
            return true;
        default:
            return false;
        }
    }

    const Points& points;
    Indices indices;
    std::size_t leftOut = 0;
};

/// Unit normals for all vertices: those that are given, where they are any good, and those of the triangles around.
std::vector<float> normalsFor(const Points& points, const Indices& triangles, const std::vector<float>& given,
                              const Placement& placement) {
    std::vector<float> normals(points.placed.size());
    std::vector<bool> isMissing(points.count(), true);
    std::size_t missing = points.count();
    const auto set = [&normals](std::size_t i, const Vec& normal) {
        normals[3 * i] = static_cast<float>(normal.x);
        normals[3 * i + 1] = static_cast<float>(normal.y);
        normals[3 * i + 2] = static_cast<float>(normal.z);
    };
    if (given.size() == points.placed.size())
        for (std::size_t i = 0; i < points.count(); ++i) {
            const Vec normal = unit(placement.normal(vecAt(given, i)));
            if (!(length(normal) > 0.5)) continue;
            set(i, normal);
            isMissing[i] = false;
            --missing;
        }
    if (missing == 0) return normals;
    std::vector<Vec> sums(points.count());
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3) {
        const Vec a = vecAt(points.placed, triangles[i]);
        const Vec normal =
            cross(vecAt(points.placed, triangles[i + 1]) - a, vecAt(points.placed, triangles[i + 2]) - a);
        for (const std::uint32_t corner : std::span(triangles).subspan(i, 3))
            sums[corner] = sums[corner] + normal;
    }
    for (std::size_t i = 0; i < points.count(); ++i) {
        if (!isMissing[i]) continue;
        const Vec normal = unit(sums[i]);
        set(i, length(normal) > 0.5 ? normal : Vec{0, 0, 1});
    }
    return normals;
}

} // namespace

Look lookOf(const ExcColor& color) {
    using enum ExcColor::EChannel;
    const bool isWide =
        std::max({color[red], color[green], color[blue], color.hasAlpha() ? color[alpha] : color[red]}) > 255;
    const auto byte = [&](ExcColor::EChannel channel) {
        return static_cast<std::uint8_t>(isWide ? color[channel] >> 8 : color[channel]);
    };
    Look look;
    look.hasColor = color.hasRGB();
    look.hasOpacity = color.hasAlpha();
    if (look.hasColor) look.color = {byte(red), byte(green), byte(blue), 255};
    if (look.hasOpacity) look.color.alpha = byte(alpha);
    return look;
}

void ShapeBuilder::warn(const char* what, const std::string& id, const std::string& fault) {
    m_warnings.add(m_owner + ", " + what + (id.empty() ? "" : " " + id) + ": " + fault);
}

void ShapeBuilder::addFace(const ExcVisuFace& face, const Drawn& drawn, Shape& shape) {
    const std::string id = text::validUtf8(face.mechanicalId().empty() ? face.id() : face.mechanicalId());
    Points points(face.vertices(), drawn.placement);
    Triangles triangles{points, {}, 0};
    for (const ExcVisuFace::Polygon& polygon : face.polygons())
        if (!triangles.add(polygon))
            warn("face", id, "a primitive of the unknown type " + std::to_string(polygon.type));
    if (triangles.leftOut > 0)
        warn("face", id,
             text::counted(triangles.leftOut, "triangle is", "triangles are") +
                 " left out, with corners that are none of its " + std::to_string(points.count()) +
                 " vertices or no numbers");
    if (!face.normals().empty() && face.normals().size() != points.placed.size())
        warn("face", id,
             "it has " + std::to_string(face.normals().size() / 3) + " normals for " +
                 std::to_string(points.count()) + " vertices; those of its triangles are taken");
    if (triangles.indices.empty()) {
        if (triangles.leftOut == 0) warn("face", id, "it has no triangles");
        return;
    }
    if (drawn.placement.determinant() < 0)
        for (std::size_t i = 0; i < triangles.indices.size(); i += 3)
            std::swap(triangles.indices[i], triangles.indices[i + 1]);
    const std::vector<float> normals = normalsFor(points, triangles.indices, face.normals(), drawn.placement);
    if (!points.isBad.empty()) { // no triangle has them, but they count for whoever takes all
        const std::size_t good = 3 * static_cast<std::size_t>(triangles.indices.front());
        for (std::size_t i = 0; i < points.count(); ++i)
            if (points.isBad[i]) std::copy_n(&points.placed[good], 3, &points.placed[3 * i]);
    }

    Face result;
    result.id = id;
    result.firstTriangle = static_cast<std::uint32_t>(shape.triangles.size() / 3);
    result.triangles = static_cast<std::uint32_t>(triangles.indices.size() / 3);
    result.firstVertex = static_cast<std::uint32_t>(shape.vertices.size() / 3);
    result.vertices = static_cast<std::uint32_t>(points.count());
    result.look = lookOf(face.color()).within(drawn.look);
    result.isHidden = drawn.isHidden;
    shape.vertices.insert(shape.vertices.end(), points.placed.begin(), points.placed.end());
    shape.normals.insert(shape.normals.end(), normals.begin(), normals.end());
    shape.triangles.reserve(shape.triangles.size() + triangles.indices.size());
    for (const std::uint32_t index : triangles.indices) shape.triangles.push_back(result.firstVertex + index);
    shape.faces.push_back(std::move(result));
}

namespace {

/// Appends the points that the indices name, or all if there are none.
/// @return how many are left out
std::size_t appendPoints(const std::vector<float>& coordinates, const std::vector<int>& indices,
                         const Placement& placement, std::vector<float>& out) {
    const Points points(coordinates, placement);
    std::size_t leftOut = 0;
    const auto append = [&](std::uint32_t index) {
        if (points.has(index))
            out.insert(out.end(), &points.placed[3 * static_cast<std::size_t>(index)],
                       &points.placed[3 * static_cast<std::size_t>(index)] + 3);
        else
            ++leftOut;
    };
    out.reserve(out.size() + 3 * std::max(indices.size(), points.count()));
    for (const int index : indices) append(static_cast<std::uint32_t>(index));
    if (indices.empty())
        for (std::uint32_t i = 0; i < points.count(); ++i) append(i);
    return leftOut;
}

std::string leftOutText(std::size_t count) {
    return text::counted(count, "point is", "points are") + " left out, not there or no numbers";
}

} // namespace

void ShapeBuilder::addLine(const ExcVisuEdge& edge, const Drawn& drawn, Shape& shape) {
    PointRange line;
    line.id = text::validUtf8(edge.mechanicalId());
    line.first = static_cast<std::uint32_t>(shape.linePoints.size() / 3);
    std::vector<float>& points = shape.linePoints;
    const std::size_t leftOut = appendPoints(edge.points(), edge.lineIndices(), drawn.placement, points);
    if (leftOut > 0) warn("edge", line.id, leftOutText(leftOut));
    const std::size_t begin = 3 * static_cast<std::size_t>(line.first);
    if (points.size() < begin + 6) {
        if (leftOut == 0) warn("edge", line.id, "it has fewer than two points");
        points.resize(begin);
        return;
    }
    const bool isFilled = edge.lineType() == ExcVisuEdge::ELineType::line_loop_filled;
    const bool isClosed = isFilled || edge.lineType() == ExcVisuEdge::ELineType::line_loop;
    if (isClosed &&
        !std::equal(points.end() - 3, points.end(), points.begin() + static_cast<std::ptrdiff_t>(begin)))
        for (std::size_t i = 0; i < 3; ++i) points.push_back(points[begin + i]);
    line.count = static_cast<std::uint32_t>(points.size() / 3) - line.first;
    line.look = lookOf(edge.color()).within(drawn.look);
    line.isHidden = drawn.isHidden;
    if (isFilled) addFilling(std::span(points).subspan(begin), line.look, line.isHidden, shape);
    shape.lines.push_back(std::move(line));
}

void ShapeBuilder::addMarkers(const ExcVisuPoints& points, const std::wstring& id, const Drawn& drawn,
                              Shape& shape) {
    PointRange markers;
    markers.id = text::validUtf8(id);
    markers.first = static_cast<std::uint32_t>(shape.markerPoints.size() / 3);
    const std::size_t leftOut =
        appendPoints(points.points(), points.pointIndices(), drawn.placement, shape.markerPoints);
    if (leftOut > 0) warn("points", markers.id, leftOutText(leftOut));
    markers.count = static_cast<std::uint32_t>(shape.markerPoints.size() / 3) - markers.first;
    if (markers.count == 0) return;
    markers.look = lookOf(points.color()).within(drawn.look);
    markers.isHidden = drawn.isHidden;
    shape.markers.push_back(std::move(markers));
}

} // namespace zeq::scene
