// Follows the uses of edges one after the other. Where a surface of revolution degenerates to a point, v is
// lost in space: there the boundary runs straight from the v that was left to the one that is next.
#include "brep/boundary.h"

#include <cmath>
#include <numbers>

namespace zeq::brep {

namespace {

constexpr double turn = 2 * std::numbers::pi;

SPApar_vec operator-(const SPApar_pos& a, const SPApar_pos& b) { return {a.u - b.u, a.v - b.v}; }
SPApar_pos operator+(const SPApar_pos& a, const SPApar_vec& b) { return {a.u + b.du, a.v + b.dv}; }
SPApar_pos between(const SPApar_pos& a, const SPApar_pos& b, double part) {
    return {(1 - part) * a.u + part * b.u, (1 - part) * a.v + part * b.v};
}

/// The value that differs from the given one by whole periods and is nearest to another.
double nearest(double value, double to, double period) {
    return period > 0 ? value + period * std::round((to - value) / period) : value;
}
SPApar_pos nearest(const SPApar_pos& uv, const SPApar_pos& to, const SURFACE& surface) {
    return {nearest(uv.u, to.u, surface.param_period_u()), nearest(uv.v, to.v, surface.param_period_v())};
}

/// Whether v turns around a single point of space there.
bool isDegenerate(const SURFACE& surface, const SPApar_pos& uv) {
    constexpr double distance = 1e-5;
    if (surface.param_period_v() == 0) return false;
    SPAposition point;
    SPAvector du, dv;
    surface.eval(uv, point, &du, &dv);
    return dv.len() < distance;
}

/// The knots of the B-spline of a curve or pcurve, in parameters of that.
template <class Curve>
std::vector<double> knotsOf(const Curve& curve) {
    std::vector<double> knots = curve.cur()->u.knots;
    if (curve.reversed()) {
        std::reverse(knots.begin(), knots.end());
        for (double& knot : knots) knot = -knot;
    }
    return knots;
}

bool isNegligible(const SPApar_vec& gap) { return std::abs(gap.du) + std::abs(gap.dv) < 1e-12; }

} // namespace

std::vector<double> smoothPieces(const CURVE& curve, const CurveRange& range) {
    std::vector<double> values;
    if (is_INTCURVE(&curve)) {
        values = knotsOf(static_cast<const INTCURVE&>(curve));
    } else if (const double period = curve.param_period(); period > 0) {
        const double quarter = period / 4;
        const double low = std::min(range.from, range.to);
        for (int i = 1; i <= 4; ++i) values.push_back((std::floor(low / quarter) + i) * quarter);
    }
    return breaksBetween(range.from, range.to, values);
}

BoundaryPiece::BoundaryPiece(const COEDGE& coedge, const SURFACE& surface)
    : m_surface(&surface), m_curve(coedge.edge()->geometry()),
      m_pcurve(coedge.geometry() && coedge.geometry()->evaluable() ? coedge.geometry() : nullptr) {
    const auto [from, to] = rangeOf(coedge);
    m_startsAtPoint = isDegenerate(surface, atParameter(from));
    const bool endsAtPoint = isDegenerate(surface, atParameter(to));
    if (m_pcurve) {
        m_breaks = breaksBetween(from, to, knotsOf(*m_pcurve));
    } else {
        // At the point itself v is noise, which may turn by any angle within the least distance.
        constexpr double inset = 1e-7;
        m_breaks = smoothPieces(*m_curve, {m_startsAtPoint ? from + inset * (to - from) : from,
                                           endsAtPoint ? to - inset * (to - from) : to});
    }

    // Close enough that a curve around a periodic surface cannot make half a turn from one to the next.
    const std::size_t count = std::max<std::size_t>(32, 8 * (m_breaks.size() - 1));
    for (std::size_t i = 0; i < count; ++i) {
        const double part = (static_cast<double>(i) + 0.5) / static_cast<double>(count);
        const double t = (1 - part) * from + part * to;
        const SPApar_pos uv = atParameter(t);
        m_polyline.push_back(m_pcurve || i == 0 ? uv : nearest(uv, m_polyline.back(), surface));
    }
}

BoundaryPiece::BoundaryPiece(const SPApar_pos& from, const SPApar_pos& to)
    : m_breaks{0, 1}, m_polyline{from, to} {}

SPApar_pos BoundaryPiece::eval(double t, SPApar_vec* derivative) const {
    if (!m_curve) {
        const SPApar_pos &from = m_polyline.front(), &to = m_polyline.back();
        if (derivative) *derivative = to - from;
        return between(from, to, t);
    }
    if (m_pcurve) {
        SPApar_pos uv;
        m_pcurve->eval(t, uv, derivative);
        return uv + m_moved;
    }
    const double part = (t - m_breaks.front()) / (m_breaks.back() - m_breaks.front());
    const auto count = static_cast<double>(m_polyline.size());
    // A range of no length makes that not a number.
    const double index = part > 0 ? std::min(part * count, count - 1) : 0;
    return inverted(t, m_polyline[static_cast<std::size_t>(index)], derivative);
}

SPApar_pos BoundaryPiece::inverted(double t, const SPApar_pos& near, SPApar_vec* derivative) const {
    SPAposition point;
    SPAvector tangent;
    m_curve->eval(t, point, &tangent);
    const SPApar_pos uv = nearest(m_surface->param(point), near, *m_surface);
    if (!derivative) return uv;
    // tangent = du * dS/du + dv * dS/dv, in the sense of least squares.
    SPAvector du, dv;
    m_surface->eval(uv, point, &du, &dv);
    const double determinant = du.len_sq() * dv.len_sq() - (du % dv) * (du % dv);
    *derivative = {};
    if (determinant > 0)
        *derivative = {((tangent % du) * dv.len_sq() - (tangent % dv) * (du % dv)) / determinant,
                       ((tangent % dv) * du.len_sq() - (tangent % du) * (du % dv)) / determinant};
    return uv;
}

SPApar_pos BoundaryPiece::atParameter(double t) const {
    return m_pcurve ? m_pcurve->eval_position(t) : m_surface->param(m_curve->eval_position(t));
}

void BoundaryPiece::move(const SPApar_vec& by) {
    m_moved = {m_moved.du + by.du, m_moved.dv + by.dv};
    for (SPApar_pos& uv : m_polyline) uv = uv + by;
}

std::optional<Boundary> Boundary::of(const FACE& face) {
    if (!face.geometry() || !face.geometry()->evaluable()) return std::nullopt;
    bool isComplete = true;
    forEachCoedge(face, [&](const COEDGE& coedge) {
        const bool isPoint = !coedge.edge()->geometry();
        isComplete = isComplete && (isPoint || canBeFollowed(coedge, *face.geometry()));
    });
    if (!isComplete) return std::nullopt;
    return Boundary(face);
}

Boundary::Boundary(const FACE& face)
    : m_surface(*face.geometry()),
      m_isOnLeft(static_cast<bool>(m_surface.right_handed_uv()) == (face.sense() == FORWARD)) {
    for (const LOOP* loop = face.loop(); loop; loop = loop->next()) addLoop(*loop);
}

void Boundary::addLoop(const LOOP& loop) {
    std::vector<BoundaryPiece> pieces;
    const auto connect = [&](const SPApar_pos& to) {
        const SPApar_pos from = pieces.back().end();
        if (!isNegligible(to - from)) pieces.emplace_back(from, to);
    };
    forEachCoedge(loop, [&](const COEDGE& coedge) {
        if (!coedge.edge()->geometry()) return; // a point, which the junction tells
        BoundaryPiece piece(coedge, m_surface);
        if (!pieces.empty()) {
            const SPApar_pos start = piece.start();
            const SPApar_pos from = junction(pieces.back(), piece);
            piece.move(from - start);
            connect(from);
        }
        pieces.push_back(std::move(piece));
    });
    if (pieces.empty()) return;
    const SPApar_pos start = pieces.front().start();
    const SPApar_pos closed = junction(pieces.back(), pieces.front());
    connect(closed);
    m_loops.push_back({std::move(pieces), closed - start});
}

SPApar_pos Boundary::junction(const BoundaryPiece& before, const BoundaryPiece& after) const {
    const SPApar_pos end = before.end();
    const SPApar_pos start = after.start();
    SPApar_pos next = nearest(start, end, m_surface);
    if (!after.startsAtPoint()) return next;
    // An edge that runs around the point itself, closely, leaves nothing to be filled in.
    const auto staysThere = [this](const BoundaryPiece& piece) {
        return std::ranges::all_of(piece.polyline(),
                                   [this](const SPApar_pos& uv) { return isDegenerate(m_surface, uv); });
    };
    if (staysThere(before) || staysThere(after)) return next;
    // With the face on its left the boundary runs upwards at the right end of the surface.
    const SPAinterval range = m_surface.param_range_u();
    const bool isRightEnd = start.u - range.start_pt() > range.end_pt() - start.u;
    constexpr double same = 1e-6;
    if (isRightEnd == m_isOnLeft) {
        if (next.v <= end.v + same) next.v += turn;
    } else if (next.v >= end.v - same) {
        next.v -= turn;
    }
    return next;
}

SPApar_vec Boundary::winding() const {
    SPApar_vec sum;
    for (const Loop& loop : m_loops) sum = {sum.du + loop.winding.du, sum.dv + loop.winding.dv};
    return sum;
}

bool Boundary::reachesRightEnd() const {
    const double winding = this->winding().dv;
    constexpr double none = 1e-6;
    return std::abs(winding) > none && (winding > 0) != m_isOnLeft;
}

template <class Visit>
void Boundary::forEachLine(const Visit& visit) const {
    for (const Loop& loop : m_loops) {
        SPApar_pos previous =
            loop.pieces.back().polyline().back() + SPApar_vec{-loop.winding.du, -loop.winding.dv};
        for (const BoundaryPiece& piece : loop.pieces)
            for (const SPApar_pos& next : piece.polyline()) {
                visit(previous, next);
                previous = next;
            }
    }
}

template <class Visit>
void Boundary::forEachImage(const Visit& visit) const {
    const double periodU = m_surface.param_period_u();
    const double periodV = m_surface.param_period_v();
    const int imagesU = periodU > 0 ? 2 : 0;
    const int imagesV = periodV > 0 ? 2 : 0;
    for (int i = -imagesU; i <= imagesU; ++i)
        for (int j = -imagesV; j <= imagesV; ++j) visit(SPApar_vec{i * periodU, j * periodV});
}

bool Boundary::passes(const SPAinterval& u, const SPAinterval& v) const {
    const auto meets = [](double a, double b, const SPAinterval& range, double moved) {
        return std::max(a, b) >= range.start_pt() + moved && std::min(a, b) <= range.end_pt() + moved;
    };
    bool passes = false;
    forEachImage([&](const SPApar_vec& moved) {
        forEachLine([&](const SPApar_pos& from, const SPApar_pos& to) {
            passes = passes || (meets(from.u, to.u, u, moved.du) && meets(from.v, to.v, v, moved.dv));
        });
    });
    return passes;
}

bool Boundary::contains(const SPApar_pos& uv) const {
    if (m_loops.empty()) return true;
    // Each crossing of the loops by a ray to the right changes sides. Loops lie whole periods apart, so every
    // near image of the point is looked at.
    bool isInside = reachesRightEnd();
    forEachImage([&](const SPApar_vec& moved) {
        const SPApar_pos image = uv + moved;
        forEachLine([&](const SPApar_pos& from, const SPApar_pos& to) {
            const double part = (image.v - from.v) / (to.v - from.v);
            if ((from.v > image.v) != (to.v > image.v) && image.u < between(from, to, part).u)
                isInside = !isInside;
        });
    });
    return isInside;
}

} // namespace zeq::brep
