// Planes, cylinders and cones reach farthest on their edges, because one of their lines through every point
// leads there, or to an apex. Spheres and tori have their extremes in closed form; B-splines are searched.
#include "brep/extent.h"

#include <algorithm>
#include <cmath>
#include <numbers>

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

/// Parameters of a direction of a B-spline: several in every span, unless the spans are many.
std::vector<double> samples(const bs_knots& knots) {
    const SPAinterval range = knots.range();
    const std::vector<double> breaks = breaksBetween(range.start_pt(), range.end_pt(), knots.knots);
    const int inSpan = breaks.size() < 65 ? 4 : breaks.size() < 257 ? 2 : 1;
    std::vector<double> samples;
    for (std::size_t i = 1; i < breaks.size(); ++i)
        for (int j = 0; j < inSpan; ++j)
            samples.push_back(breaks[i - 1] + (breaks[i] - breaks[i - 1]) * j / inSpan);
    samples.push_back(breaks.back());
    return samples;
}

/// The point near which a surface reaches farthest in a direction, by Newton's method for a vanishing slope;
/// where the surface is not convex there, the search may lead elsewhere, and the caller has to compare.
SPApar_pos climb(const SPLINE& surface, const SPAvector& direction, SPApar_pos uv) {
    const SPAinterval u = surface.param_range_u();
    const SPAinterval v = surface.param_range_v();
    const auto slope = [&](const SPApar_pos& at) {
        SPAposition point;
        SPAvector du, dv;
        surface.eval(at, point, &du, &dv);
        return SPApar_vec{du % direction, dv % direction};
    };
    const double stepU = 1e-5 * u.length();
    const double stepV = 1e-5 * v.length();
    for (int i = 0; i < 12; ++i) {
        const SPApar_vec here = slope(uv);
        const SPApar_vec left = slope({uv.u - stepU, uv.v}), right = slope({uv.u + stepU, uv.v});
        const SPApar_vec below = slope({uv.u, uv.v - stepV}), above = slope({uv.u, uv.v + stepV});
        const double uu = (right.du - left.du) / (2 * stepU);
        const double vv = (above.dv - below.dv) / (2 * stepV);
        const double mixed = (right.dv - left.dv) / (2 * stepU);
        const double determinant = uu * vv - mixed * mixed;
        if (!(determinant > 0)) break;
        const double moveU = (mixed * here.dv - vv * here.du) / determinant;
        const double moveV = (mixed * here.du - uu * here.dv) / determinant;
        uv = {clamped(uv.u + moveU, u), clamped(uv.v + moveV, v)};
        if (std::abs(moveU) < 1e-10 * u.length() && std::abs(moveV) < 1e-10 * v.length()) break;
    }
    return uv;
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
    if (boundary.contains(surface.param(point))) add(point);
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
    const std::vector<double> u = samples(surface.sur()->u);
    const std::vector<double> v = samples(surface.sur()->v);
    std::vector<SPAvector> points; // transformed, row by row
    points.reserve(u.size() * v.size());
    for (const double atV : v)
        for (const double atU : u)
            points.push_back(surface.eval_position({atU, atV}) * m_transform - SPAposition());

    for (int axis = 0; axis < 3; ++axis)
        for (const double sign : {-1.0, 1.0}) {
            const auto reach = [&](std::size_t i, std::size_t j) {
                return sign * points[j * u.size() + i].component(axis);
            };
            for (std::size_t j = 1; j + 1 < v.size(); ++j)
                for (std::size_t i = 1; i + 1 < u.size(); ++i) {
                    const double here = reach(i, j);
                    const double neighbours[]{reach(i - 1, j), reach(i + 1, j), reach(i, j - 1),
                                              reach(i, j + 1)};
                    const auto [least, most] = std::minmax_element(neighbours, neighbours + 4);
                    if (here < *most) continue;
                    // The true extreme lies beyond by less than the neighbours fall behind.
                    const double bound =
                        sign < 0 ? -m_box.low().coordinate(axis) : m_box.high().coordinate(axis);
                    if (here + (here - *least) < bound) continue;
                    const SPApar_pos top = climb(surface, sign * along(axis), {u[i], v[j]});
                    if (boundary.contains(top)) add(surface.eval_position(top));
                }
        }
}

} // namespace zeq::brep
