// Which samples a triangle covers. A sample on the border of two triangles belongs to exactly one of them.
#pragma once

#include <algorithm>
#include <array>
#include <utility>

#include "picture/stage.h"

namespace zeq::picture {

/// The first sample whose middle is not before the coordinate, between the bounds.
inline int firstSample(double coordinate, int low, int high) {
    return static_cast<int>(std::ceil(std::clamp(coordinate - 0.5, double(low), double(high))));
}

/// Which samples hold a triangle, with a border of so many samples around.
inline Region boundsOf(const std::array<ScreenPoint, 3>& corners) {
    constexpr int most = 1 << 20;
    const auto [left, right] = std::minmax({corners[0].x, corners[1].x, corners[2].x});
    const auto [top, bottom] = std::minmax({corners[0].y, corners[1].y, corners[2].y});
    return {firstSample(left, -most, most), firstSample(top, -most, most), firstSample(right, -most, most),
            firstSample(bottom, -most, most)};
}

inline std::array<ScreenPoint, 3> pointsOf(const Stage& stage, const StageTriangle& triangle) {
    return {stage.vertices[triangle.corners[0]].point, stage.vertices[triangle.corners[1]].point,
            stage.vertices[triangle.corners[2]].point};
}

/// Flat where the triangle has no area.
inline DepthPlane planeOf(const std::array<ScreenPoint, 3>& p) {
    const double ax = double(p[1].x) - p[0].x, ay = double(p[1].y) - p[0].y,
                 ad = double(p[1].depth) - p[0].depth;
    const double bx = double(p[2].x) - p[0].x, by = double(p[2].y) - p[0].y,
                 bd = double(p[2].depth) - p[0].depth;
    const double area = ax * by - ay * bx;
    if (area == 0) return {p[0], {}};
    return {p[0],
            {static_cast<float>((ad * by - ay * bd) / area), static_cast<float>((ax * bd - ad * bx) / area)}};
}

/// Calls act(y, first, end) for each row of samples that the triangle covers in the region. An edge gives the same
/// border to the triangles on both its sides, as it is always walked downwards.
template <class Act>
void forEachSpan(std::array<ScreenPoint, 3> p, const Region& region, Act act) {
    std::ranges::sort(p, {}, [](const ScreenPoint& a) { return std::pair(a.y, a.x); });
    const auto slope = [](const ScreenPoint& a, const ScreenPoint& b) {
        return a.y < b.y ? (double(b.x) - a.x) / (double(b.y) - a.y) : 0;
    };
    const double whole = slope(p[0], p[2]), upper = slope(p[0], p[1]), lower = slope(p[1], p[2]);
    const int start = firstSample(p[0].y, region.top, region.bottom);
    const int bend = firstSample(p[1].y, region.top, region.bottom);
    const int end = firstSample(p[2].y, region.top, region.bottom);
    for (int y = start; y < end; ++y) {
        const double middle = y + 0.5;
        const auto border = [&](const ScreenPoint& from, double edge) {
            return firstSample(from.x + (middle - from.y) * edge, region.left, region.right);
        };
        const int one = border(p[0], whole);
        const int other = y < bend ? border(p[0], upper) : border(p[1], lower);
        if (one != other) act(y, std::min(one, other), std::max(one, other));
    }
}

} // namespace zeq::picture
