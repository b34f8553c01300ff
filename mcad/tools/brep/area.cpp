// F of a B-spline surface comes from tables: what lies between two knots is integrated once for each of a few
// v of every row, and interpolated in between. So the time goes with the size of the surface plus the length
// of the boundary, not with their product.
#include "brep/area.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

namespace zeq::brep {

namespace {

/// How fast area grows along u and v.
double rateAt(const SURFACE& surface, double u, double v) {
    SPAposition point;
    SPAvector du, dv;
    surface.eval({u, v}, point, &du, &dv);
    return (du * dv).len();
}

/// The area of strips of a plane, cone, sphere or torus from u = base to any point, per unit of v.
class Strip {
public:
    Strip(const SURFACE& surface, double base) : m_surface(surface), m_base(base) {
        constexpr double quarter = std::numbers::pi / 2;
        if (is_SPHERE(&surface) || is_TORUS(&surface))
            for (int i = -12; i <= 12; ++i) m_breaks.push_back(i * quarter);
    }

    double operator()(const SPApar_pos& end) const {
        const auto rate = [&](double u) { return rateAt(m_surface, u, end.v); };
        const std::vector<double> breaks = breaksBetween(m_base, end.u, m_breaks);
        double sum = 0;
        for (std::size_t i = 1; i < breaks.size(); ++i) sum += gaussIntegral(rate, breaks[i - 1], breaks[i]);
        return sum;
    }

private:
    const SURFACE& m_surface;
    const double m_base;
    std::vector<double> m_breaks;
};

/// One direction of a B-spline surface in cells: spans, or equal parts of few spans.
struct Cells {
    std::vector<double> breaks;
    double period = 0;

    explicit Cells(const bs_knots& knots) {
        const SPAinterval range = knots.range();
        const std::vector<double> spans = breaksBetween(range.start_pt(), range.end_pt(), knots.knots);
        constexpr std::size_t fewest = 4;
        const std::size_t parts = (fewest + spans.size() - 2) / (spans.size() - 1);
        for (std::size_t i = 1; i < spans.size(); ++i)
            for (std::size_t j = 0; j < parts; ++j)
                breaks.push_back(spans[i - 1] + (spans[i] - spans[i - 1]) * static_cast<double>(j) /
                                                    static_cast<double>(parts));
        breaks.push_back(spans.back());
        if (knots.closure == bs_periodic) period = range.length();
    }

    std::size_t count() const { return breaks.size() - 1; }
    /// The cell of a value, or the outermost one that is nearest.
    std::size_t at(double value) const {
        const auto above = std::upper_bound(breaks.begin() + 1, breaks.end() - 1, value);
        return static_cast<std::size_t>(above - breaks.begin()) - 1;
    }
    /// How many whole periods a value lies beyond the range.
    double turns(double value) const {
        return period > 0 ? std::floor((value - breaks.front()) / period) : 0;
    }
};

/// The same for a B-spline surface.
class SplineStrip {
public:
    SplineStrip(const SPLINE& surface, double base, const Work& work)
        : m_surface(surface), m_work(work), m_u(surface.sur()->u), m_v(surface.sur()->v), m_rows(m_v.count()),
          m_baseColumn(m_u.at(base)) {
        if (base >= m_u.breaks.back()) m_baseColumn = m_u.count();
        // The more cells, the smaller they are.
        const std::size_t cells = m_u.count() * m_v.count();
        const int nodes = cells <= 64 ? 10 : cells <= 1024 ? 7 : cells <= 16384 ? 5 : 3;
        for (int i = 0; i < nodes; ++i) {
            const double angle = std::numbers::pi * (i + 0.5) / nodes;
            m_nodes.push_back((1 - std::cos(angle)) / 2);
            m_weights.push_back((i % 2 ? -1 : 1) * std::sin(angle));
        }
        m_isFine = cells <= 1024;
    }

    double operator()(const SPApar_pos& end) const {
        const double turns = m_u.turns(end.u);
        const double u = end.u - turns * m_u.period;
        const double v = end.v - m_v.turns(end.v) * m_v.period;
        const std::size_t column = m_u.at(u);
        const Row& row = rowAt(m_v.at(v));
        double sum = between(row, m_baseColumn, column, v) + integral(m_u.breaks[column], u, v);
        if (turns != 0) sum += turns * between(row, 0, m_u.count(), v);
        return sum;
    }

    const Cells& cellsInU() const { return m_u; }
    const Cells& cellsInV() const { return m_v; }

private:
    /// Areas from the first column up to each one, per unit of v, at the nodes.
    struct Row {
        double from, length; ///< in v
        std::vector<double> sums;
    };

    double integral(double from, double to, double v) const {
        const auto rate = [&](double u) { return rateAt(m_surface, u, v); };
        if (m_isFine) return gaussIntegral(rate, from, to);
        return boost::math::quadrature::gauss<double, 5>::integrate(rate, std::min(from, to),
                                                                    std::max(from, to)) *
               (from <= to ? 1 : -1);
    }

    const Row& rowAt(std::size_t index) const {
        std::unique_ptr<Row>& row = m_rows[index];
        if (row) return *row;
        const double from = m_v.breaks[index];
        row = std::make_unique<Row>(Row{from, m_v.breaks[index + 1] - from, {}});
        for (const double node : m_nodes) {
            double sum = 0;
            for (std::size_t i = 0; i < m_u.count(); ++i) {
                m_work.poll();
                row->sums.push_back(sum);
                sum += integral(m_u.breaks[i], m_u.breaks[i + 1], row->from + node * row->length);
            }
            row->sums.push_back(sum);
        }
        return *row;
    }

    /// The barycentric formula.
    double between(const Row& row, std::size_t fromColumn, std::size_t toColumn, double v) const {
        const double at = (v - row.from) / row.length;
        double sum = 0, weights = 0;
        for (std::size_t i = 0; i < m_nodes.size(); ++i) {
            const std::size_t first = i * (m_u.count() + 1);
            const double value = row.sums[first + toColumn] - row.sums[first + fromColumn];
            if (at == m_nodes[i]) return value;
            const double weight = m_weights[i] / (at - m_nodes[i]);
            sum += weight * value;
            weights += weight;
        }
        return sum / weights;
    }

    const SPLINE& m_surface;
    const Work& m_work;
    const Cells m_u;
    const Cells m_v;
    mutable std::vector<std::unique_ptr<Row>> m_rows;
    std::size_t m_baseColumn;
    std::vector<double> m_nodes; ///< of Chebyshev, in [0, 1]
    std::vector<double> m_weights;
    bool m_isFine = true;
};

/// Adds the parameters at which a piece of boundary passes from cell to cell.
class Crossings {
public:
    Crossings(const BoundaryPiece& piece, const SplineStrip& strip) : m_piece(piece), m_strip(strip) {
        constexpr int samples = 8;
        const std::vector<double>& breaks = piece.breaks();
        m_all.push_back(breaks.front());
        for (std::size_t i = 1; i < breaks.size(); ++i) {
            double t = breaks[i - 1];
            Cell cell = cellAt(t);
            for (int j = 1; j <= samples; ++j) {
                const double next = breaks[i - 1] + (breaks[i] - breaks[i - 1]) * j / samples;
                const Cell nextCell = cellAt(next);
                search(t, cell, next, nextCell, 20);
                t = next;
                cell = nextCell;
            }
            m_all.push_back(breaks[i]);
        }
    }
    const std::vector<double>& all() const { return m_all; }

private:
    using Cell = std::pair<std::size_t, std::size_t>;

    Cell cellAt(double t) const {
        const SPApar_pos uv = m_piece.eval(t);
        const Cells &u = m_strip.cellsInU(), &v = m_strip.cellsInV();
        return {u.at(uv.u - u.turns(uv.u) * u.period), v.at(uv.v - v.turns(uv.v) * v.period)};
    }
    void search(double from, const Cell& cell, double to, const Cell& nextCell, int halvings) {
        // Along a line between cells it would never end.
        constexpr std::size_t most = 1000;
        if (cell == nextCell || m_all.size() > most) return;
        const double middle = (from + to) / 2;
        if (halvings == 0) {
            m_all.push_back(middle);
            return;
        }
        const Cell between = cellAt(middle);
        search(from, cell, middle, between, halvings - 1);
        search(middle, between, to, nextCell, halvings - 1);
    }

    const BoundaryPiece& m_piece;
    const SplineStrip& m_strip;
    std::vector<double> m_all;
};

} // namespace

std::optional<double> areaOf(const SURFACE& surface, const Boundary& boundary, const Work& work) {
    const auto* const spline = is_SPLINE(&surface) ? &static_cast<const SPLINE&>(surface) : nullptr;
    const SPAinterval u = surface.param_range_u();
    const SPAinterval v = surface.param_range_v();
    if (!boundary.hasLoops()) {
        if (!u.finite() || !v.finite()) return std::nullopt;
        const auto across = [&](const auto& strip, const std::vector<double>& breaks) {
            const auto rate = [&](double at) { return strip({u.end_pt(), at}) - strip({u.start_pt(), at}); };
            return integral(Integrand{rate, breaksBetween(v.start_pt(), v.end_pt(), breaks)});
        };
        if (!spline) return across(Strip(surface, u.start_pt()), {});
        const SplineStrip strip(*spline, u.start_pt(), work);
        return across(strip, strip.cellsInV().breaks);
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
    const auto along = [&](const auto& strip, const auto& breaksOf) {
        return boundary.integrate(
            [&](const SPApar_pos& uv) {
                work.poll();
                return strip(uv);
            },
            breaksOf);
    };
    double area = 0;
    if (spline) {
        const SplineStrip strip(*spline, base, work);
        area = along(strip, [&](const BoundaryPiece& piece) { return Crossings(piece, strip).all(); });
    } else {
        area = along(Strip(surface, base), [](const BoundaryPiece& piece) { return piece.breaks(); });
    }
    return boundary.isOnLeft() ? area : -area;
}

} // namespace zeq::brep
