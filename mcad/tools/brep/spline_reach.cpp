#include "brep/spline_reach.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <queue>

namespace zeq::brep {

namespace {

/// The value of a polynomial's polar form: of a B-spline's piece with degree + 1 control values, at as many
/// arguments as the degree.
double polar(const bs_knots& knots, int span, std::vector<double> values, int atEnd) {
    const int degree = knots.degree;
    for (int level = 1; level <= degree; ++level) {
        const double at = level <= atEnd ? knots.knots[span + 1] : knots.knots[span];
        for (int j = degree; j >= level; --j) {
            const int i = span - degree + j;
            const double low = knots.knots[i], high = knots.knots[i + degree - level + 1];
            const double part = (at - low) / (high - low);
            values[j] = (1 - part) * values[j - 1] + part * values[j];
        }
    }
    return values[degree];
}

/// Applies a change to every line of control values along one direction; both directions have theirs in one
/// array.
template <class Change>
void changeLines(std::vector<double>& values, int lines, int nextLine, int length, int next,
                 const Change& change) {
    std::vector<double> line(static_cast<std::size_t>(length));
    for (int i = 0; i < lines; ++i) {
        for (int j = 0; j < length; ++j) line[j] = values[i * nextLine + j * next];
        line = change(line);
        for (int j = 0; j < length; ++j) values[i * nextLine + j * next] = line[j];
    }
}

/// The control values of one half of a Bezier curve.
std::vector<double> half(std::vector<double> values, bool isSecond) {
    const std::size_t last = values.size() - 1;
    for (std::size_t level = 1; level <= last; ++level) {
        if (isSecond)
            for (std::size_t j = 0; j + level <= last; ++j) values[j] = (values[j] + values[j + 1]) / 2;
        else
            for (std::size_t j = last; j >= level; --j) values[j] = (values[j - 1] + values[j]) / 2;
    }
    return values;
}

bool hasCrease(const bs_knots& u) {
    for (int i = u.degree + 1; i + u.degree - 1 < u.controls(); ++i)
        if (u.knots[i] == u.knots[i + u.degree - 1]) return true;
    return false;
}

SPAinterval halfOf(const SPAinterval& range, bool isSecond) {
    const double middle = (range.start_pt() + range.end_pt()) / 2;
    return isSecond ? SPAinterval(middle, range.end_pt()) : SPAinterval(range.start_pt(), middle);
}

} // namespace

struct SplineReach::Search {
    SPAvector direction;
    double known;
    double precision;
    std::optional<SPAposition> farthest;
    std::priority_queue<Piece> pieces;
};

SplineReach::SplineReach(const SPLINE& surface, const Boundary& boundary, const Work& work)
    : m_surface(surface), m_bspline(*surface.sur()), m_boundary(boundary), m_work(work),
      m_columns(m_bspline.u.degree + 1), m_rows(m_bspline.v.degree + 1),
      m_isSmooth(boundary.hasLoops() && !hasCrease(m_bspline.u) && !hasCrease(m_bspline.v)) {}

std::optional<SPAposition> SplineReach::beyond(const SPAvector& direction, double known,
                                               double precision) const {
    Search search{direction, known, precision, std::nullopt, {}};
    const bs_knots &u = m_bspline.u, &v = m_bspline.v;
    for (int j = v.degree; j < v.controls(); ++j)
        for (int i = u.degree; i < u.controls(); ++i)
            if (u.knots[i] < u.knots[i + 1] && v.knots[j] < v.knots[j + 1]) addPiece(search, i, j);
    constexpr int mostPieces = 10000;
    for (int i = 0; i < mostPieces && !search.pieces.empty(); ++i) {
        m_work.poll();
        const Piece piece = search.pieces.top();
        search.pieces.pop();
        if (!(piece.bound > search.known + precision)) break;
        const SPApar_pos middle{(piece.u.start_pt() + piece.u.end_pt()) / 2,
                                (piece.v.start_pt() + piece.v.end_pt()) / 2};
        tryPoint(search, middle);
        if (!m_boundary.passes(piece.u, piece.v) && !m_boundary.contains(middle)) continue;
        addHalves(search, piece);
    }
    return search.farthest;
}

void SplineReach::tryPoint(Search& search, const SPApar_pos& uv) const {
    const auto reach = [&](const SPApar_pos& at) {
        return (m_surface.eval_position(at) - SPAposition()) % search.direction;
    };
    if (!(reach(uv) > search.known) || !m_boundary.contains(uv)) return;
    const SPApar_pos top = climb(search.direction, uv);
    const SPApar_pos best = reach(top) > reach(uv) && m_boundary.contains(top) ? top : uv;
    search.known = reach(best);
    search.farthest = m_surface.eval_position(best);
}

void SplineReach::addPiece(Search& search, int spanU, int spanV) const {
    const bs_knots &u = m_bspline.u, &v = m_bspline.v;
    Piece piece{0, {u.knots[spanU], u.knots[spanU + 1]}, {v.knots[spanV], v.knots[spanV + 1]}, {}, {}};
    for (int j = 0; j < m_rows; ++j)
        for (int i = 0; i < m_columns; ++i) {
            const std::size_t at =
                static_cast<std::size_t>(spanV - v.degree + j) * u.controls() + spanU - u.degree + i;
            const double weight = m_bspline.rational() ? m_bspline.weights[at] : 1;
            piece.reaches.push_back(weight * ((m_bspline.controls[at] - SPAposition()) % search.direction));
            if (m_bspline.rational()) piece.weights.push_back(weight);
        }
    if (!(boundOf(piece) > search.known + search.precision)) return;
    const auto toBezier = [](const bs_knots& knots, int span) {
        return [&knots, span](const std::vector<double>& line) {
            std::vector<double> bezier;
            for (int i = 0; i <= knots.degree; ++i) bezier.push_back(polar(knots, span, line, i));
            return bezier;
        };
    };
    for (std::vector<double>* values : {&piece.reaches, &piece.weights}) {
        if (values->empty()) continue;
        changeLines(*values, m_rows, m_columns, m_columns, 1, toBezier(u, spanU));
        changeLines(*values, m_columns, 1, m_rows, m_columns, toBezier(v, spanV));
    }
    add(search, std::move(piece));
}

void SplineReach::addHalves(Search& search, const Piece& piece) const {
    // Along the direction in which the control points are farther from a straight line.
    double bendU = 0, bendV = 0;
    const std::vector<double>& r = piece.reaches;
    for (int j = 0; j < m_rows; ++j)
        for (int i = 0; i < m_columns; ++i) {
            const int at = j * m_columns + i;
            if (i > 0 && i + 1 < m_columns)
                bendU = std::max(bendU, std::abs(r[at - 1] - 2 * r[at] + r[at + 1]));
            if (j > 0 && j + 1 < m_rows)
                bendV = std::max(bendV, std::abs(r[at - m_columns] - 2 * r[at] + r[at + m_columns]));
        }
    const bool isAlongU = bendU != bendV ? bendU > bendV : m_columns >= m_rows;
    for (const bool isSecond : {false, true}) {
        Piece part = piece;
        const auto cut = [isSecond](const std::vector<double>& line) { return half(line, isSecond); };
        for (std::vector<double>* values : {&part.reaches, &part.weights}) {
            if (values->empty()) continue;
            if (isAlongU)
                changeLines(*values, m_rows, m_columns, m_columns, 1, cut);
            else
                changeLines(*values, m_columns, 1, m_rows, m_columns, cut);
        }
        (isAlongU ? part.u : part.v) = halfOf(isAlongU ? piece.u : piece.v, isSecond);
        add(search, std::move(part));
    }
}

void SplineReach::add(Search& search, Piece piece) const {
    piece.bound = boundOf(piece);
    if (!(piece.bound > search.known + search.precision)) return;
    if (m_isSmooth && isMonotonous(piece)) return;
    search.pieces.push(std::move(piece));
}

double SplineReach::boundOf(const Piece& piece) const {
    double bound = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < piece.reaches.size(); ++i) {
        const double weight = piece.weights.empty() ? 1 : piece.weights[i];
        if (!(weight > 0)) return std::numeric_limits<double>::infinity();
        bound = std::max(bound, piece.reaches[i] / weight);
    }
    return bound;
}

bool SplineReach::isMonotonous(const Piece& piece) const {
    // r = n / w grows where n' - r w' is positive, which is linear in r: it has to be so for the least and
    // the greatest r of the piece.
    double least = 0, greatest = 0;
    if (!piece.weights.empty()) {
        greatest = boundOf(piece);
        least = greatest;
        for (std::size_t i = 0; i < piece.reaches.size(); ++i) {
            if (!(piece.weights[i] > 0)) return false;
            least = std::min(least, piece.reaches[i] / piece.weights[i]);
        }
    }
    for (const int step : {1, m_columns})
        for (const int sign : {1, -1})
            if (grows(piece, least, step, sign) && grows(piece, greatest, step, sign)) return true;
    return false;
}

bool SplineReach::grows(const Piece& piece, double reach, int step, int sign) const {
    const auto value = [&](int at) {
        return piece.reaches[at] - (piece.weights.empty() ? 0 : reach * piece.weights[at]);
    };
    for (int j = 0; j < m_rows; ++j)
        for (int i = 0; i < m_columns; ++i) {
            if (step == 1 ? i + 1 == m_columns : j + 1 == m_rows) continue;
            const int at = j * m_columns + i;
            if (!(sign * (value(at + step) - value(at)) > 0)) return false;
        }
    return true;
}

SPApar_pos SplineReach::climb(const SPAvector& direction, SPApar_pos uv) const {
    const SPAinterval u = m_surface.param_range_u();
    const SPAinterval v = m_surface.param_range_v();
    const auto slope = [&](const SPApar_pos& at) {
        SPAposition point;
        SPAvector du, dv;
        m_surface.eval(at, point, &du, &dv);
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

} // namespace zeq::brep
