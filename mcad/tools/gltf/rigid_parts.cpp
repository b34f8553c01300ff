// Singular value decomposition by one-sided Jacobi rotations (Hestenes 1958).
#include "gltf/rigid_parts.h"

#include <array>
#include <cmath>

namespace zeq::gltf {

using scene::Placement;
using scene::Vec;

namespace {

/// Of the angle between two axes, cosine.
double skewness(const Vec& a, const Vec& b) { return std::abs(dot(a, b)) / (length(a) * length(b)); }

} // namespace

std::optional<RigidParts> rigidParts(const Placement& placement) {
    constexpr double tolerance = 1e-6;
    if (skewness(placement.x, placement.y) < tolerance && skewness(placement.y, placement.z) < tolerance &&
        skewness(placement.z, placement.x) < tolerance)
        return std::nullopt;
    std::array<Vec, 3> axes{placement.x, placement.y, placement.z}; // become placement * turned
    std::array<Vec, 3> turned{Vec{1, 0, 0}, Vec{0, 1, 0}, Vec{0, 0, 1}};
    for (int sweep = 0; sweep < 30; ++sweep)
        for (const auto [p, q] : {std::array{0, 1}, std::array{0, 2}, std::array{1, 2}}) {
            const double mixed = dot(axes[p], axes[q]);
            if (mixed == 0) continue;
            const double zeta = (dot(axes[q], axes[q]) - dot(axes[p], axes[p])) / (2 * mixed);
            const double t = (zeta < 0 ? -1 : 1) / (std::abs(zeta) + std::sqrt(1 + zeta * zeta));
            const double c = 1 / std::sqrt(1 + t * t), s = c * t;
            for (auto* const each : {&axes, &turned}) {
                const Vec a = (*each)[p], b = (*each)[q];
                (*each)[p] = c * a - s * b;
                (*each)[q] = s * a + c * b;
            }
        }
    const auto& [a, b, c] = turned; // its inverse is the transposed one
    return RigidParts{{axes[0], axes[1], axes[2], placement.origin},
                      {{a.x, b.x, c.x}, {a.y, b.y, c.y}, {a.z, b.z, c.z}, {}}};
}

} // namespace zeq::gltf
