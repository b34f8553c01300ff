// Planes, cylinders and cones reach farthest on their edges, because one of their lines through every point
// leads there, or to an apex. Spheres and tori have their extremes in closed form; B-splines are searched.
#include "brep/extent.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "brep/spline_reach.h"

namespace zeq::brep {

namespace {

/// Where a function changes its sign between two parameters, at which its signs differ.
template <class Function>
double signChange(const Function& function, double from, double to) {
    const bool isNegative = function(from) < 0;
    for (int i = 0; i < 60; ++i) {
        const double middle = (from + to) / 2;
        ((function(middle) < 0) == isNegative ? from : to) = middle;
    }
    return (from + to) / 2;
}

} // namespace

void Extent::add(const EDGE& edge) {
    for (const VERTEX* vertex : {edge.start(), edge.end()})
        if (vertex && vertex->geometry()) add(vertex->geometry()->coords());
    const CURVE* const curve = edge.geometry();
    if (!curve || !curve->evaluable() || is_STRAIGHT(curve)) return;
    constexpr int inPiece = 8;
    const std::vector<double> breaks = smoothPieces(*curve, rangeOf(edge));
    for (int axis = 0; axis < 3; ++axis) {
        const auto slope = [&, direction = along(axis)](double t) {
            return curve->eval_deriv(t) % direction;
        };
        for (std::size_t i = 1; i < breaks.size(); ++i)
            for (int j = 0; j < inPiece; ++j) {
                const double length = breaks[i] - breaks[i - 1];
                const double from = breaks[i - 1] + length * j / inPiece;
                const double to = breaks[i - 1] + length * (j + 1) / inPiece;
                if ((slope(from) < 0) != (slope(to) < 0))
                    add(curve->eval_position(signChange(slope, from, to)));
            }
    }
}

void Extent::add(const SPAposition& point, const SURFACE& surface, const Boundary& boundary) {
    const SPApar_pos uv = surface.param(point);
    // Of a torus that meets its axis only one sheet is there.
    const double distance = (surface.eval_position(uv) - point).len();
    const double size = (point - SPAposition()).len();
    if (distance <= SPAresabs + 1e-12 * size && boundary.contains(uv)) add(point);
}

void Extent::add(const SURFACE& surface, const Boundary& boundary) {
    if (is_SPLINE(&surface)) return addSpline(static_cast<const SPLINE&>(surface), boundary);
    if (is_CONE(&surface)) {
        const SPAinterval u = surface.param_range_u();
        for (const double end : {u.start_pt(), u.end_pt()})
            if (std::isfinite(end) && boundary.contains({end, 0})) add(surface.eval_position({end, 0}));
    }
    for (int axis = 0; axis < 3; ++axis)
        for (const double sign : {-1.0, 1.0}) {
            const SPAvector direction = sign * normalise(along(axis));
            if (is_SPHERE(&surface)) {
                const auto& sphere = static_cast<const SPHERE&>(surface);
                add(sphere.centre() + std::abs(sphere.radius()) * direction, surface, boundary);
            } else if (is_TORUS(&surface)) {
                const auto& torus = static_cast<const TORUS&>(surface);
                const SPAvector flat = direction - (direction % torus.normal()) * torus.normal();
                // Along its axis a torus reaches as far everywhere.
                const SPAvector out =
                    flat.len() > 1e-12 ? SPAvector(normalise(flat)) : SPAvector(torus.uv_oridir());
                add(torus.centre() + torus.major_radius() * out + std::abs(torus.minor_radius()) * direction,
                    surface, boundary);
            }
        }
}

void Extent::addSpline(const SPLINE& surface, const Boundary& boundary) {
    constexpr double precision = 1e-9; // relative to the size
    const SplineReach reach(surface, boundary, m_work);
    for (int axis = 0; axis < 3; ++axis)
        for (const double sign : {-1.0, 1.0}) {
            const double size = m_box.empty() ? 0 : (m_box.high() - m_box.low()).len();
            const double bound = sign < 0 ? -m_box.low().coordinate(axis) : m_box.high().coordinate(axis);
            const double moved = sign * m_transform.translation().component(axis);
            if (const auto point = reach.beyond(sign * along(axis), bound - moved, precision * size))
                add(*point);
        }
}

} // namespace zeq::brep
