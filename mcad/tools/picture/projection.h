// From space to samples of the picture, and back.
#pragma once

#include <array>

#include "picture/vector.h"

namespace zeq::picture {

/// A place on the grid of samples; y points down. Depth grows with the distance from the eye and is linear on the
/// grid: it is the distance in units of a sample, or in a perspective its negative reciprocal, scaled so that near
/// the target it grows alike.
struct ScreenPoint {
    float x = 0, y = 0, depth = 0;
};

/// How fast depth changes along the grid.
struct Slope {
    float x = 0, y = 0;
};

/// Depth over the grid.
struct DepthPlane {
    ScreenPoint point;
    Slope slope;
    float at(float x, float y) const {
        return point.depth + (x - point.x) * slope.x + (y - point.y) * slope.y;
    }
};

/// Rows of an affine map.
using Affine = std::array<std::array<double, 4>, 3>;

/// The image of three coordinates as a point.
inline Vector apply(const Affine& map, const float* p) {
    const auto row = [&](std::size_t i) {
        return static_cast<float>(map[i][0] * p[0] + map[i][1] * p[1] + map[i][2] * p[2] + map[i][3]);
    };
    return {row(0), row(1), row(2)};
}

/// A drawing's camera. Eye space has its origin in the target and its z axis towards the eye.
class Projection {
public:
    /// @param grid samples of the picture along its height and along its width
    /// @throws std::invalid_argument
    Projection(const Camera& camera, int gridWidth, int gridHeight);

    Affine toEye(const Transform& transform) const;
    Vector directionToEye(Vector direction) const;
    Vector pointToEye(Vector point) const;
    Vector fromEye(Vector eyePoint) const;

    /// Above zero where the camera sees; below, a point must not be projected.
    float beforeNearPlane(Vector eyePoint) const {
        return m_isPerspective ? m_distance * (1 - nearest) - eyePoint.z : 1;
    }
    ScreenPoint project(Vector eyePoint) const;

    /// What depth changes by over a length of one sample.
    float depthUnit(float depth) const { return m_isPerspective ? -depth / m_focus : 1; }
    /// How much a vertex of this depth weighs when what vertices have is interpolated on the grid.
    float weight(float depth) const { return m_isPerspective ? -depth / m_focus : 1; }
    /// Whether the eye is on the side of a plane, given in eye space, that its normal points to.
    bool isFacing(Vector point, Vector normal) const;
    /// The depth of a plane that is facing the eye.
    DepthPlane plane(Vector point, Vector normal) const;
    /// The unit normal, towards the eye and in eye space, of the plane that has this depth and slope here.
    Vector normal(ScreenPoint point, Slope slope) const;
    /// The unit vector in eye space from there to the eye.
    Vector towardsEye(float x, float y) const;

private:
    /// Of the distance of the target: what is nearer to the eye is not seen.
    static constexpr float nearest = 0.01F;

    bool m_isPerspective;
    Vector m_right, m_up, m_back, m_target;
    float m_distance; ///< of the target
    float m_scale;    ///< samples a unit of length at the target
    float m_focus;    ///< distance of the eye in samples
    float m_middleX, m_middleY;
};

} // namespace zeq::picture
