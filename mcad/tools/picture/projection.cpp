// The maths of an orthographic and a perspective camera.
#include "picture/projection.h"

#include <stdexcept>

namespace zeq::picture {

Projection::Projection(const Camera& camera, int gridWidth, int gridHeight)
    : m_isPerspective(camera.isPerspective), m_target(camera.target),
      m_middleX(static_cast<float>(gridWidth) / 2), m_middleY(static_cast<float>(gridHeight) / 2) {
    const Vector back = camera.eye - camera.target;
    m_distance = length(back);
    if (!isFinite(camera.eye) || !isFinite(camera.target) || !(m_distance > 0) || !std::isfinite(m_distance))
        throw std::invalid_argument("the camera's eye and target must be two points");
    if (!(camera.height > 0) || !std::isfinite(camera.height))
        throw std::invalid_argument("the height of the camera's window must be more than zero");
    m_back = back * (1 / m_distance);
    m_right = unit(cross(camera.up, m_back));
    if (!(length(m_right) > 0.5F)) { // up along the line of sight: any other will do
        const Vector other = std::abs(m_back.y) < 0.9F ? Vector{0, 1, 0} : Vector{1, 0, 0};
        m_right = unit(cross(other, m_back));
    }
    m_up = cross(m_back, m_right);
    m_scale = static_cast<float>(gridHeight) / camera.height;
    m_focus = m_distance * m_scale;
}

Affine Projection::toEye(const Transform& transform) const {
    const auto& c = transform.columns;
    Affine result{};
    for (std::size_t row = 0; row < 3; ++row) {
        const Vector axis = row == 0 ? m_right : row == 1 ? m_up : m_back;
        const double x = axis.x, y = axis.y, z = axis.z;
        for (std::size_t column = 0; column < 4; ++column)
            result[row][column] = x * c[3 * column] + y * c[3 * column + 1] + z * c[3 * column + 2];
        result[row][3] -= x * m_target.x + y * m_target.y + z * m_target.z;
    }
    return result;
}

Vector Projection::directionToEye(Vector direction) const {
    return {dot(m_right, direction), dot(m_up, direction), dot(m_back, direction)};
}

Vector Projection::pointToEye(Vector point) const { return directionToEye(point - m_target); }

Vector Projection::fromEye(Vector eyePoint) const {
    return m_target + m_right * eyePoint.x + m_up * eyePoint.y + m_back * eyePoint.z;
}

ScreenPoint Projection::project(Vector eyePoint) const {
    if (!m_isPerspective)
        return {m_middleX + eyePoint.x * m_scale, m_middleY - eyePoint.y * m_scale, -eyePoint.z * m_scale};
    const float nearness = m_distance / (m_distance - eyePoint.z); // 1 at the target
    return {m_middleX + eyePoint.x * m_scale * nearness, m_middleY - eyePoint.y * m_scale * nearness,
            -m_focus * nearness};
}

bool Projection::isFacing(Vector point, Vector normal) const {
    return m_isPerspective ? dot(Vector{0, 0, m_distance} - point, normal) > 0 : normal.z > 1e-4F;
}

DepthPlane Projection::plane(Vector point, Vector normal) const {
    if (!m_isPerspective)
        return {{m_middleX, m_middleY, -dot(point, normal) / normal.z * m_scale},
                {normal.x / normal.z, -normal.y / normal.z}};
    const float nearness = m_distance / dot(point - Vector{0, 0, m_distance}, normal);
    return {{m_middleX, m_middleY, m_focus * normal.z * nearness},
            {-normal.x * nearness, normal.y * nearness}};
}

// In a perspective a plane n·p = c, p = z (X, Y, -1), has 1/z = n·(X, Y, -1) / c, which is linear in X and Y.
Vector Projection::normal(ScreenPoint point, Slope slope) const {
    if (!m_isPerspective) return unit({slope.x, -slope.y, 1});
    const float x = point.x - m_middleX, y = m_middleY - point.y;
    const Vector normal{slope.x * m_focus, -slope.y * m_focus, -(point.depth - x * slope.x + y * slope.y)};
    return unit(normal);
}

Vector Projection::towardsEye(float x, float y) const {
    if (!m_isPerspective) return {0, 0, 1};
    return unit({m_middleX - x, y - m_middleY, m_focus});
}

} // namespace zeq::picture
