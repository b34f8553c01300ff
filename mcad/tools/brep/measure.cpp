// Area by Green's theorem: the integral of dA over a face is the integral of F dv along its boundary, where F
// is the integral of dA/(du dv) along u up to there.
#include "brep/measure.h"

#include <cmath>
#include <numbers>
#include <optional>

#include "brep/boundary.h"
#include "brep/extent.h"

namespace zeq::brep {

namespace {

/// Parameters u between which a surface is smooth and bends little.
std::vector<double> smoothPiecesU(const SURFACE& surface, double from, double to) {
    std::vector<double> values;
    if (is_SPLINE(&surface)) {
        values = static_cast<const SPLINE&>(surface).sur()->u.knots;
    } else if (is_SPHERE(&surface) || is_TORUS(&surface)) {
        constexpr double step = std::numbers::pi / 2;
        for (double u = std::floor(std::min(from, to) / step) * step; u < std::max(from, to); u += step)
            values.push_back(u);
    }
    return breaksBetween(from, to, values);
}

/// The area of the strip of a surface from u = base to a point, per unit of v.
double strip(const SURFACE& surface, double base, const SPApar_pos& end) {
    const auto rate = [&](double u) {
        SPAposition point;
        SPAvector du, dv;
        surface.eval({u, end.v}, point, &du, &dv);
        return (du * dv).len();
    };
    // Finer than what is integrated over it.
    constexpr double precision = 1e-12;
    return integral(Integrand{rate, smoothPiecesU(surface, base, end.u)}, precision);
}

/// Negative if the face lies on the wrong side of its loops; nothing if it cannot be told.
std::optional<double> areaOf(const SURFACE& surface, const Boundary& boundary) {
    const SPAinterval u = surface.param_range_u();
    const SPAinterval v = surface.param_range_v();
    if (!boundary.hasLoops()) {
        if (!u.finite() || !v.finite()) return std::nullopt;
        std::vector<double> breaks{v.start_pt(), v.end_pt()};
        if (is_SPLINE(&surface))
            breaks =
                breaksBetween(v.start_pt(), v.end_pt(), static_cast<const SPLINE&>(surface).sur()->v.knots);
        return integral(Integrand{[&](double at) {
                                      return strip(surface, u.start_pt(), {u.end_pt(), at});
                                  },
                                  breaks});
    }
    const SPApar_vec winding = boundary.winding();
    const auto isZero = [](double value) { return std::abs(value) < 1e-6; };
    if (!isZero(winding.du)) return std::nullopt;
    double base = std::clamp(0.0, u.start_pt(), u.end_pt());
    if (!isZero(winding.dv)) {
        // The loops run around a point to which the surface degenerates, and the face reaches up to it.
        base = boundary.reachesRightEnd() ? u.end_pt() : u.start_pt();
        if (!std::isfinite(base)) return std::nullopt;
    }
    const double area = boundary.integrate([&](const SPApar_pos& uv) { return strip(surface, base, uv); });
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
