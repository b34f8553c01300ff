// Area by Green's theorem: the integral of dA over a face is the integral of F dv along its boundary, where F
// is the integral of dA/(du dv) along u up to there.
#include "brep/measure.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

#include "brep/boundary.h"
#include "brep/extent.h"

namespace zeq::brep {

namespace {

/// The area of strips of a surface, from u = base to any point, per unit of v.
class Strip {
public:
    Strip(const SURFACE& surface, double base)
        : m_surface(surface), m_base(base), m_isSpline(is_SPLINE(&surface)) {
        constexpr double quarter = std::numbers::pi / 2;
        if (m_isSpline) {
            const bs_knots& knots = static_cast<const SPLINE&>(surface).sur()->u;
            m_breaks = breaksBetween(knots.range().start_pt(), knots.range().end_pt(), knots.knots);
        } else if (is_SPHERE(&surface) || is_TORUS(&surface)) {
            for (int i = -12; i <= 12; ++i) m_breaks.push_back(i * quarter);
        }
    }

    double operator()(const SPApar_pos& end) const {
        const double low = std::min(m_base, end.u);
        const double high = std::max(m_base, end.u);
        double sum = 0;
        double from = low;
        for (auto next = std::upper_bound(m_breaks.begin(), m_breaks.end(), low); from < high; ++next) {
            const double to = next == m_breaks.end() ? high : std::min(*next, high);
            sum += piece(from, to, end.v);
            from = to;
        }
        return m_base <= end.u ? sum : -sum;
    }

private:
    double piece(double from, double to, double v) const {
        const auto rate = [this, v](double u) {
            SPAposition point;
            SPAvector du, dv;
            m_surface.eval({u, v}, point, &du, &dv);
            return (du * dv).len();
        };
        const double whole = gaussIntegral(rate, from, to);
        // Finer than what is integrated over it; for analytic surfaces the first attempt is fine enough.
        constexpr double precision = 1e-12;
        constexpr int mostHalvings = 4;
        return m_isSpline ? refinedIntegral(rate, from, to, whole, precision * whole, mostHalvings) : whole;
    }

    const SURFACE& m_surface;
    const double m_base;
    const bool m_isSpline;
    std::vector<double> m_breaks;
};

/// Negative if the face lies on the wrong side of its loops; nothing if it cannot be told.
std::optional<double> areaOf(const SURFACE& surface, const Boundary& boundary) {
    const SPAinterval u = surface.param_range_u();
    const SPAinterval v = surface.param_range_v();
    if (!boundary.hasLoops()) {
        if (!u.finite() || !v.finite()) return std::nullopt;
        const Strip strip(surface, u.start_pt());
        const auto across = [&](double at) { return strip({u.end_pt(), at}); };
        const auto* const spline = is_SPLINE(&surface) ? static_cast<const SPLINE&>(surface).sur() : nullptr;
        return integral(Integrand{across, breaksBetween(v.start_pt(), v.end_pt(),
                                                        spline ? spline->v.knots : std::vector<double>())});
    }
    const SPApar_vec winding = boundary.winding();
    const auto isZero = [](double value) { return std::abs(value) < 1e-6; };
    if (!isZero(winding.du)) return std::nullopt;
    double base = clamped(0, u);
    if (!isZero(winding.dv)) {
        // The loops run around a point to which the surface degenerates, and the face reaches up to it.
        base = boundary.reachesRightEnd() ? u.end_pt() : u.start_pt();
        if (!std::isfinite(base)) return std::nullopt;
    }
    const double area = boundary.integrate(Strip(surface, base));
    return boundary.isOnLeft() ? area : -area;
}

std::optional<double> lengthOf(const EDGE& edge) {
    const CURVE* const curve = edge.geometry();
    if (!curve) return 0;
    if (!curve->evaluable()) return std::nullopt;
    return std::abs(integral(Integrand{[curve](double t) { return curve->eval_deriv(t).len(); },
                                       smoothPieces(*curve, rangeOf(edge))}));
}

class BodyMeasure {
public:
    BodyMeasure(const BODY& body, Measure& result)
        : m_transform(body.transform() ? body.transform()->transform() : SPAtransf()),
          m_scale(std::abs(m_transform.scaling())), m_extent(m_transform, result.box), m_result(result) {}

    void add(const SHELL& shell) {
        for (const FACE* face = shell.face(); face; face = face->next()) {
            ++m_result.faces;
            forEachCoedge(*face, [this](const COEDGE& coedge) { addEdge(*coedge.edge()); });
            addInside(*face);
        }
    }

private:
    void addEdge(EDGE& edge) {
        const int known = m_edges.count();
        if (m_edges.add(&edge) < known) return;
        ++m_result.edges;
        for (VERTEX* vertex : {edge.start(), edge.end()}) {
            const int knownVertices = m_vertices.count();
            if (vertex && m_vertices.add(vertex) == knownVertices) ++m_result.vertices;
        }
        if (const auto length = lengthOf(edge))
            m_result.length += m_scale * *length;
        else
            ++m_result.unmeasured;
        m_extent.add(edge);
    }

    void addInside(const FACE& face) {
        const auto boundary = m_transform.shear() ? std::nullopt : Boundary::of(face);
        const auto area = boundary ? areaOf(*face.geometry(), *boundary) : std::nullopt;
        if (!area) {
            ++m_result.unmeasured;
            return;
        }
        if (*area < 0) ++m_result.inverted;
        m_result.area += m_scale * m_scale * std::abs(*area);
        m_extent.add(*face.geometry(), *boundary);
    }

    const SPAtransf m_transform;
    const double m_scale;
    Extent m_extent;
    ENTITY_LIST m_edges;
    ENTITY_LIST m_vertices;
    Measure& m_result;
};

} // namespace

Measure measure(const ENTITY_LIST& entities) {
    Measure result;
    std::optional<BodyMeasure> body;
    const BODY* current = nullptr;
    forEachShell(entities, [&](const BODY& owner, const SHELL& shell) {
        if (current != &owner) body.emplace(owner, result);
        current = &owner;
        body->add(shell);
    });
    return result;
}

} // namespace zeq::brep
