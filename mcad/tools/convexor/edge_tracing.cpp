// Curves in the parameter planes of B-spline surfaces are taken over, or else put through points of the edge
// that were found again on the surface.
#include "convexor/edge_tracing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include <BRep_Tool.hxx>
#include <Geom2dAPI_Interpolate.hxx>
#include <Geom2dConvert.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_Line.hxx>
#include <Geom2d_TrimmedCurve.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColStd_HArray1OfReal.hxx>
#include <TColgp_HArray1OfPnt2d.hxx>
#include <gp_Vec2d.hxx>

#include "zeq_api/exchange_mechanical/owned_entities.h"

namespace zeq::convexor {

namespace {

/// Places along an edge, 0 to 1, at which its distance from the surface is measured: a multiple of 9 and one.
constexpr int mostPlaces = 27;

/// The largest distance of an edge from a surface, along the pcurve if there is one.
double gapBetween(const Piece& piece, const SURFACE& surface, const PCURVE* pcurve) {
    double gap = 0;
    for (int i = 0; i <= mostPlaces; ++i) {
        const double part = static_cast<double>(i) / mostPlaces;
        const double t = (1 - part) * piece.range.start_pt() + part * piece.range.end_pt();
        const SPAposition point = piece.curve->eval_position(t);
        const SPApar_pos uv = pcurve ? pcurve->eval_position(t) : surface.param(point);
        const double distance = (surface.eval_position(uv) - point).len();
        if (!(distance <= gap))
            gap = std::isnan(distance) ? std::numeric_limits<double>::infinity() : distance;
    }
    return gap;
}

/// Finds an edge again in the parameter plane of a B-spline surface, point by point.
class Retracing {
public:
    Retracing(const Handle(Geom2d_Curve) & original, double first, double last, const Piece& made,
              const Support& support, double tolerance)
        : m_first(first), m_last(last), m_from(support.bounds), m_surface(support.spline), m_made(made),
          m_tolerance(tolerance), m_original(original) {
        m_surface->Bounds(m_to[0], m_to[1], m_to[2], m_to[3]);
        if (support.keepsParameters) m_from = m_to;
        for (int i = 0; i <= landmarks; ++i) {
            const gp_Pnt2d uv = guess(static_cast<double>(i) / landmarks);
            m_landmarks.push_back({uv, m_surface->Value(uv.X(), uv.Y())});
        }
        for (int i = 0; i <= mostPlaces; ++i)
            m_distance = std::max(m_distance, at(static_cast<double>(i) / mostPlaces).distance);
    }

    /// How far the edge is from the surface, however it is traced.
    double distance() const { return m_distance; }

    /// A curve with the parameters of the edge, and how far it is from the edge at most.
    std::pair<bs2_curve, double> curve() const {
        const std::vector<double> ends = kinks();
        bs2_curve whole;
        double gap = 0;
        for (std::size_t i = 1; i < ends.size(); ++i) {
            const auto [next, itsGap] = smoothCurve(ends[i - 1], ends[i]);
            append(whole, next);
            gap = std::max(gap, itsGap);
        }
        return {whole, gap};
    }

private:
    static constexpr int landmarks = 32;

    struct Landmark {
        gp_Pnt2d uv;
        gp_Pnt point;
    };
    struct Foot {
        gp_Pnt2d uv;
        double distance; ///< of the surface there from the point
    };

    /// Where the edge crosses lines along which the parameters of the surface bend, from 0 to 1 with both.
    std::vector<double> kinks() const {
        constexpr int samples = 64;
        constexpr int smoothness = 2;
        std::vector<double> found;
        const auto search = [&](const TColStd_Array1OfReal& knots,
                                const TColStd_Array1OfInteger& multiplicities, int degree,
                                const auto& coordinate) {
            for (int knot = knots.Lower() + 1; knot < knots.Upper(); ++knot) {
                if (degree - multiplicities(knot) >= smoothness) continue;
                const auto side = [&](double part) { return coordinate(at(part).uv) - knots(knot); };
                for (int i = 0; i < samples; ++i) {
                    double from = static_cast<double>(i) / samples;
                    double to = static_cast<double>(i + 1) / samples;
                    const double before = side(from);
                    const double after = side(to);
                    const bool isAlong = std::abs(after - before) < 1e-6 * (knots.Last() - knots.First());
                    if (isAlong || (before < 0) == (after < 0)) continue;
                    for (int halvings = 0; halvings < 50; ++halvings) {
                        const double middle = (from + to) / 2;
                        ((side(middle) < 0) == (before < 0) ? from : to) = middle;
                    }
                    found.push_back(from);
                }
            }
        };
        search(m_surface->UKnots(), m_surface->UMultiplicities(), m_surface->UDegree(),
               [](const gp_Pnt2d& uv) { return uv.X(); });
        search(m_surface->VKnots(), m_surface->VMultiplicities(), m_surface->VDegree(),
               [](const gp_Pnt2d& uv) { return uv.Y(); });
        found.insert(found.end(), {0, 1});
        std::sort(found.begin(), found.end());
        // The two ends stay, whatever lies close to them.
        constexpr double close = 1e-6;
        const auto isSame = [](double a, double b) { return b - a < close; };
        found.erase(std::unique(found.begin(), found.end(), isSame), found.end());
        found.back() = 1;
        return found;
    }

    /// A piece without kinks, through as many points as it takes.
    std::pair<bs2_curve, double> smoothCurve(double from, double to) const {
        constexpr int mostPoints = 257;
        for (int count = 9;; count = 2 * count - 1) {
            const Handle(TColgp_HArray1OfPnt2d) points = new TColgp_HArray1OfPnt2d(1, count);
            const Handle(TColStd_HArray1OfReal) parameters = new TColStd_HArray1OfReal(1, count);
            for (int i = 1; i <= count; ++i) {
                const double way = static_cast<double>(i - 1) / (count - 1);
                const double part = (1 - way) * from + way * to;
                parameters->SetValue(i, parameter(part));
                points->SetValue(i, at(part).uv);
            }
            // Points may coincide: an edge can run into a point to which the surface degenerates.
            constexpr double apart = 0;
            Geom2dAPI_Interpolate interpolation(points, parameters, false, apart);
            interpolation.Perform();
            if (!interpolation.IsDone()) throw GeometryError("an edge does not follow its B-spline surface");
            const Handle(Geom2d_BSplineCurve) curve = interpolation.Curve();
            double gap = 0;
            for (int i = 1; i < count; ++i) {
                const double t = (parameters->Value(i) + parameters->Value(i + 1)) / 2;
                const gp_Pnt2d uv = curve->Value(t);
                gap = std::max(gap, m_surface->Value(uv.X(), uv.Y()).Distance(pointOf(t)));
            }
            constexpr double hardlyMore = 1.1;
            if (gap <= std::max(m_tolerance, hardlyMore * m_distance) || count >= mostPoints)
                return {bspline(*curve), gap};
        }
    }

    /// Continues a curve by another one of the same degree that begins where it ends.
    static void append(bs2_curve& whole, const bs2_curve& next) {
        if (whole.controls.empty()) {
            whole = next;
            return;
        }
        whole.u.knots.pop_back();
        whole.u.knots.insert(whole.u.knots.end(), next.u.knots.begin() + next.u.degree + 1,
                             next.u.knots.end());
        whole.controls.insert(whole.controls.end(), next.controls.begin() + 1, next.controls.end());
    }

    double parameter(double part) const {
        return (1 - part) * m_made.range.start_pt() + part * m_made.range.end_pt();
    }

    /// The place of the surface that is nearest to a point of the edge: from where the original parameters
    /// lie, which also tells the sides of a seam apart, unless another place of the original is nearer.
    Foot at(double part) const {
        constexpr double clearly = 0.5;
        const gp_Pnt point = pointOf(parameter(part));
        const Foot expected = foot(point, guess(part));
        if (expected.distance <= m_tolerance) return expected;
        const auto nearest = std::min_element(
            m_landmarks.begin(), m_landmarks.end(), [&](const Landmark& a, const Landmark& b) {
                return a.point.SquareDistance(point) < b.point.SquareDistance(point);
            });
        const Foot other = foot(point, nearest->uv);
        return other.distance < clearly * expected.distance ? other : expected;
    }

    gp_Pnt2d clamped(const gp_Pnt2d& uv) const {
        return {std::clamp(uv.X(), m_to[0], m_to[1]), std::clamp(uv.Y(), m_to[2], m_to[3])};
    }

    /// Where the original parameters lie in their range.
    gp_Pnt2d guess(double part) const {
        const gp_Pnt2d original = m_original->Value((1 - part) * m_first + part * m_last);
        const auto mapped = [&](std::size_t side, double value) {
            const double way = (value - m_from[side]) / (m_from[side + 1] - m_from[side]);
            return (1 - way) * m_to[side] + way * m_to[side + 1];
        };
        return clamped({mapped(0, original.X()), mapped(2, original.Y())});
    }

    /// Newton's method, with shorter steps where the whole one leads away.
    Foot foot(const gp_Pnt& point, gp_Pnt2d uv) const {
        gp_Pnt place;
        gp_Vec du;
        gp_Vec dv;
        m_surface->D1(uv.X(), uv.Y(), place, du, dv);
        double distance = place.Distance(point);
        for (int i = 0; i < 20; ++i) {
            const gp_Vec gap(place, point);
            const double determinant = du.SquareMagnitude() * dv.SquareMagnitude() - du.Dot(dv) * du.Dot(dv);
            if (determinant <= 0) break;
            const gp_Vec2d move((gap.Dot(du) * dv.SquareMagnitude() - gap.Dot(dv) * du.Dot(dv)) / determinant,
                                (gap.Dot(dv) * du.SquareMagnitude() - gap.Dot(du) * du.Dot(dv)) /
                                    determinant);
            const double way = std::abs(move.X()) * du.Magnitude() + std::abs(move.Y()) * dv.Magnitude();
            gp_Pnt2d next;
            double nextDistance = 0;
            constexpr int halvings = 10;
            double step = 1;
            for (int j = 0; j < halvings; ++j, step /= 2) {
                next = clamped(uv.Translated(step * move));
                m_surface->D1(next.X(), next.Y(), place, du, dv);
                nextDistance = place.Distance(point);
                if (nextDistance <= distance) break;
            }
            if (nextDistance > distance) break;
            uv = next;
            distance = nextDistance;
            if (way < 1e-12) break;
        }
        return {uv, distance};
    }

    gp_Pnt pointOf(double t) const {
        const SPAposition point = m_made.curve->eval_position(t);
        return {point.x(), point.y(), point.z()};
    }

    double m_first; ///< parameters of the original
    double m_last;
    std::array<double, 4> m_from; ///< u and v of the face, from and to
    std::array<double, 4> m_to;   ///< of the B-spline surface
    Handle(Geom_BSplineSurface) m_surface;
    const Piece& m_made;
    double m_tolerance;
    Handle(Geom2d_Curve) m_original;
    std::vector<Landmark> m_landmarks; ///< along the original
    double m_distance = 0;
};

/// The original's curve; null if it has not the parameters of the edge, or is of a kind that would lose them.
PCURVE* takenOver(const Handle(Geom2d_Curve) & original, double first, double last, const Piece& made) {
    if (first != made.range.start_pt() || last != made.range.end_pt()) return nullptr;
    if (!original->IsKind(STANDARD_TYPE(Geom2d_Line)) &&
        !original->IsKind(STANDARD_TYPE(Geom2d_BSplineCurve)))
        return nullptr;
    const Handle(Geom2d_BSplineCurve) spline =
        Geom2dConvert::CurveToBSplineCurve(new Geom2d_TrimmedCurve(original, first, last));
    if (spline->IsPeriodic()) spline->SetNotPeriodic();
    return ACIS_NEW PCURVE(bspline(*spline));
}

} // namespace

Trace trace(const TopoDS_Edge& edge, const Piece& made, const TopoDS_Face& face, const Support& support,
            double tolerance) {
    if (support.spline.IsNull()) return {nullptr, gapBetween(made, *support.surface, nullptr)};
    double first = 0;
    double last = 0;
    Handle(Geom2d_Curve) curve = BRep_Tool::CurveOnSurface(edge, face, first, last);
    if (curve.IsNull()) throw GeometryError("an edge has no curve on its B-spline surface");
    while (const auto trimmed = Handle(Geom2d_TrimmedCurve)::DownCast(curve)) curve = trimmed->BasisCurve();

    Trace result{support.keepsParameters ? takenOver(curve, first, last, made) : nullptr,
                 std::numeric_limits<double>::infinity()};
    if (result.pcurve) {
        result.gap = gapBetween(made, *support.surface, result.pcurve);
        if (result.gap <= std::max(tolerance, BRep_Tool::Tolerance(edge))) return result;
    }
    const Retracing retracing(curve, first, last, made, support, tolerance);
    constexpr double worthIt = 0.5;
    if (retracing.distance() > worthIt * result.gap) return result;
    const auto [retraced, fit] = retracing.curve();
    auto* const own = ACIS_NEW PCURVE(retraced, false, fit);
    const double gap = gapBetween(made, *support.surface, own);
    const bool isBetter = gap < result.gap;
    const OwnedEntities worse(isBetter ? result.pcurve : own);
    if (isBetter) result = {own, gap};
    return result;
}

} // namespace zeq::convexor
