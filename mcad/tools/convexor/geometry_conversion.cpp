// Analytic geometry stays analytic, only its form of description changes; the rest becomes B-splines.
#include "convexor/geometry_conversion.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
#include <Geom2dAPI_Interpolate.hxx>
#include <Geom2dConvert.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_Line.hxx>
#include <Geom2d_TrimmedCurve.hxx>
#include <GeomConvert.hxx>
#include <GeomConvert_ApproxSurface.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_BezierSurface.hxx>
#include <Geom_Circle.hxx>
#include <Geom_ConicalSurface.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_ElementarySurface.hxx>
#include <Geom_Ellipse.hxx>
#include <Geom_Line.hxx>
#include <Geom_OffsetSurface.hxx>
#include <Geom_Plane.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_SphericalSurface.hxx>
#include <Geom_ToroidalSurface.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <Precision.hxx>
#include <ShapeCustom_SweptToElementary.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColStd_HArray1OfReal.hxx>
#include <TColgp_HArray1OfPnt2d.hxx>
#include <gp_Cone.hxx>
#include <gp_Lin.hxx>

namespace zeq::convexor {

namespace {

SPAvector vector(const gp_Vec& v) { return {v.X(), v.Y(), v.Z()}; }
SPAunit_vector direction(const gp_Dir& d) { return {d.X(), d.Y(), d.Z()}; }

/// The knots of one direction, each as often as it counts.
template <class Array>
bs_knots knots(int degree, const Array& flat) {
    bs_knots result;
    result.degree = degree;
    result.knots.assign(flat.begin(), flat.end());
    return result;
}

template <class Result, class Curve>
Result bsplineCurve(const Curve& curve) {
    Result result;
    result.u = knots(curve.Degree(), curve.KnotSequence());
    result.u.closure = curve.IsClosed() ? bs_closed : bs_open;
    for (int i = 1; i <= curve.NbPoles(); ++i) {
        result.controls.push_back(position(curve.Pole(i)));
        if (curve.IsRational()) result.weights.push_back(curve.Weight(i));
    }
    return result;
}
bs3_curve bspline(const Geom_BSplineCurve& curve) { return bsplineCurve<bs3_curve>(curve); }
bs2_curve bspline(const Geom2d_BSplineCurve& curve) { return bsplineCurve<bs2_curve>(curve); }

bs3_surface bspline(const Geom_BSplineSurface& surface) {
    bs3_surface result;
    result.u = knots(surface.UDegree(), surface.UKnotSequence());
    result.v = knots(surface.VDegree(), surface.VKnotSequence());
    result.u.closure = surface.IsUClosed() ? bs_closed : bs_open;
    result.v.closure = surface.IsVClosed() ? bs_closed : bs_open;
    const bool isRational = surface.IsURational() || surface.IsVRational();
    for (int j = 1; j <= surface.NbVPoles(); ++j)
        for (int i = 1; i <= surface.NbUPoles(); ++i) {
            result.controls.push_back(position(surface.Pole(i, j)));
            if (isRational) result.weights.push_back(surface.Weight(i, j));
        }
    return result;
}

SURFACE* cone(const gp_Cone& cone, const gp_Pnt& middle) {
    // The base is a circle of the part that is used: the original's may be the apex, or beyond it.
    const gp_Ax3& axes = cone.Position();
    const double height = gp_Vec(cone.Apex(), middle).Dot(axes.Direction());
    const double radius = std::abs(height * std::tan(cone.SemiAngle()));
    if (radius < Precision::Confusion()) throw GeometryError("a conical face has no extent");
    const double sine = std::abs(std::sin(cone.SemiAngle()));
    const SPAposition base = position(cone.Apex()) + height * vector(axes.Direction());
    return ACIS_NEW CONE(base, direction(axes.Direction()), radius * vector(axes.XDirection()), 1,
                         height < 0 ? -sine : sine, std::abs(std::cos(cone.SemiAngle())));
}

/// Null for a surface that is not analytic. `middle` is a point of the part that is used.
SURFACE* analytic(const Handle(Geom_Surface) & surface, const gp_Pnt& middle) {
    const auto elementary = Handle(Geom_ElementarySurface)::DownCast(surface);
    if (elementary.IsNull()) return nullptr;
    const gp_Ax3& axes = elementary->Position();
    const SPAposition origin = position(axes.Location());
    const SPAunit_vector axis = direction(axes.Direction());
    const SPAunit_vector x = direction(axes.XDirection());
    if (surface->IsKind(STANDARD_TYPE(Geom_Plane))) return ACIS_NEW PLANE(origin, axis, x);
    if (const auto cylinder = Handle(Geom_CylindricalSurface)::DownCast(surface))
        return ACIS_NEW CONE(origin, axis, cylinder->Radius() * x);
    if (const auto conical = Handle(Geom_ConicalSurface)::DownCast(surface))
        return cone(conical->Cone(), middle);
    if (const auto sphere = Handle(Geom_SphericalSurface)::DownCast(surface))
        return ACIS_NEW SPHERE(origin, sphere->Radius(), x, axis);
    if (const auto torus = Handle(Geom_ToroidalSurface)::DownCast(surface))
        return ACIS_NEW TORUS(origin, axis, torus->MajorRadius(), torus->MinorRadius(), x);
    return nullptr;
}

Handle(Geom_Surface) untrimmed(Handle(Geom_Surface) surface) {
    while (const auto trimmed = Handle(Geom_RectangularTrimmedSurface)::DownCast(surface))
        surface = trimmed->BasisSurface();
    return surface;
}

/// The surface of a face, as an elementary one if it is one that was made by moving a line or circle.
Handle(Geom_Surface) simplestSurface(const TopoDS_Face& face) {
    Handle(Geom_Surface) elementary;
    TopLoc_Location location;
    double tolerance = 0;
    bool ignored = false;
    if (!ShapeCustom_SweptToElementary().NewSurface(face, elementary, location, tolerance, ignored, ignored))
        return untrimmed(BRep_Tool::Surface(face));
    return untrimmed(Handle(Geom_Surface)::DownCast(elementary->Transformed(location.Transformation())));
}

/// A periodic B-spline surface as one that is not, over a range of parameters, which may lie across its seam.
Handle(Geom_BSplineSurface)
    opened(const Handle(Geom_BSplineSurface) & periodic, double uMin, double uMax, double vMin, double vMax) {
    auto spline = Handle(Geom_BSplineSurface)::DownCast(periodic->Copy());
    double uFirst = 0;
    double uLast = 0;
    double vFirst = 0;
    double vLast = 0;
    spline->Bounds(uFirst, uLast, vFirst, vLast);
    if (spline->IsUPeriodic()) {
        uFirst = uMin;
        uLast = std::min(uMax, uMin + spline->UPeriod());
    }
    if (spline->IsVPeriodic()) {
        vFirst = vMin;
        vLast = std::min(vMax, vMin + spline->VPeriod());
    }
    spline->Segment(uFirst, uLast, vFirst, vLast);
    if (spline->IsUPeriodic()) spline->SetUNotPeriodic();
    if (spline->IsVPeriodic()) spline->SetVNotPeriodic();
    return spline;
}

} // namespace

Support support(const TopoDS_Face& face, double tolerance) {
    double uMin = 0;
    double uMax = 0;
    double vMin = 0;
    double vMax = 0;
    BRepTools::UVBounds(face, uMin, uMax, vMin, vMax);
    gp_Pnt middle;
    gp_Vec du;
    gp_Vec dv;
    BRep_Tool::Surface(face)->D1((uMin + uMax) / 2, (vMin + vMax) / 2, middle, du, dv);
    Handle(Geom_Surface) surface = simplestSurface(face);
    if (SURFACE* const made = analytic(surface, middle)) {
        const SPAunit_vector normal = made->eval_normal(made->param(position(middle)));
        return {made, vector(du.Crossed(dv)) % normal < 0};
    }
    if (surface->IsKind(STANDARD_TYPE(Geom_OffsetSurface))) {
        // The one kind of surface for which there is no exact B-spline.
        constexpr int highestDegree = 9;
        constexpr int mostSpans = 400;
        const GeomConvert_ApproxSurface near(
            new Geom_RectangularTrimmedSurface(surface, uMin, uMax, vMin, vMax), tolerance, GeomAbs_C2,
            GeomAbs_C2, highestDegree, highestDegree, mostSpans, 1);
        if (!near.HasResult()) throw GeometryError("an offset surface cannot be approximated");
        return {ACIS_NEW SPLINE(bspline(*near.Surface()), false, near.MaxError()), false, near.Surface(),
                true};
    }
    const bool keepsParameters = surface->IsKind(STANDARD_TYPE(Geom_BSplineSurface)) ||
                                 surface->IsKind(STANDARD_TYPE(Geom_BezierSurface));
    if (!keepsParameters) surface = new Geom_RectangularTrimmedSurface(surface, uMin, uMax, vMin, vMax);
    Handle(Geom_BSplineSurface) spline = GeomConvert::SurfaceToBSplineSurface(surface);
    if (spline->IsUPeriodic() || spline->IsVPeriodic()) spline = opened(spline, uMin, uMax, vMin, vMax);
    return {ACIS_NEW SPLINE(bspline(*spline)), false, spline, keepsParameters};
}

Piece piece(const TopoDS_Edge& edge) {
    double first = 0;
    double last = 0;
    Handle(Geom_Curve) curve = BRep_Tool::Curve(edge, first, last);
    if (curve.IsNull()) throw GeometryError("an edge has no curve in space");
    while (const auto trimmed = Handle(Geom_TrimmedCurve)::DownCast(curve)) curve = trimmed->BasisCurve();
    if (Precision::IsInfinite(first) || Precision::IsInfinite(last))
        throw GeometryError("an edge has no end");

    const SPAinterval range(first, last);
    if (const auto line = Handle(Geom_Line)::DownCast(curve))
        return {ACIS_NEW STRAIGHT(position(line->Lin().Location()), vector(line->Lin().Direction())), range};
    if (const auto circle = Handle(Geom_Circle)::DownCast(curve)) {
        const gp_Ax2& axes = circle->Position();
        return {ACIS_NEW ELLIPSE(position(axes.Location()), direction(axes.Direction()),
                                 circle->Radius() * vector(axes.XDirection())),
                range};
    }
    if (const auto ellipse = Handle(Geom_Ellipse)::DownCast(curve)) {
        const gp_Ax2& axes = ellipse->Position();
        return {ACIS_NEW ELLIPSE(position(axes.Location()), direction(axes.Direction()),
                                 ellipse->MajorRadius() * vector(axes.XDirection()),
                                 ellipse->MinorRadius() / ellipse->MajorRadius()),
                range};
    }
    const Handle(Geom_BSplineCurve) spline =
        GeomConvert::CurveToBSplineCurve(new Geom_TrimmedCurve(curve, first, last));
    if (spline->IsPeriodic()) spline->SetNotPeriodic();
    return {ACIS_NEW INTCURVE(bspline(*spline)), {spline->FirstParameter(), spline->LastParameter()}};
}

namespace {

/// Finds an edge again in the parameter plane of a B-spline surface, point by point.
class Retracing {
public:
    Retracing(const TopoDS_Edge& edge, const EDGE& made, const TopoDS_Face& face,
              const Handle(Geom_BSplineSurface) & spline, double tolerance)
        : m_surface(spline), m_made(made), m_tolerance(tolerance),
          m_original(BRep_Tool::CurveOnSurface(edge, face, m_first, m_last)) {
        BRepTools::UVBounds(face, m_from[0], m_from[1], m_from[2], m_from[3]);
        spline->Bounds(m_to[0], m_to[1], m_to[2], m_to[3]);
    }

    /// A curve with the parameters of the edge, and how far it is from the edge at most.
    std::pair<bs2_curve, double> curve() const {
        std::vector<double> ends = kinks();
        ends.insert(ends.begin(), 0);
        ends.push_back(1);
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
    /// Where the edge crosses lines along which the parameters of the surface bend.
    std::vector<double> kinks() const {
        constexpr int samples = 64;
        constexpr int smoothness = 2;
        std::vector<double> found;
        const auto search = [&](const TColStd_Array1OfReal& knots,
                                const TColStd_Array1OfInteger& multiplicities, int degree,
                                const auto& coordinate) {
            for (int knot = knots.Lower() + 1; knot < knots.Upper(); ++knot) {
                if (degree - multiplicities(knot) >= smoothness) continue;
                const auto side = [&](double part) { return coordinate(at(part)) - knots(knot); };
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
                    if (from > 0 && to < 1) found.push_back(from);
                }
            }
        };
        search(m_surface->UKnots(), m_surface->UMultiplicities(), m_surface->UDegree(),
               [](const gp_Pnt2d& uv) { return uv.X(); });
        search(m_surface->VKnots(), m_surface->VMultiplicities(), m_surface->VDegree(),
               [](const gp_Pnt2d& uv) { return uv.Y(); });
        std::sort(found.begin(), found.end());
        const auto isSame = [](double a, double b) { return b - a < 1e-9; };
        found.erase(std::unique(found.begin(), found.end(), isSame), found.end());
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
                points->SetValue(i, at(part));
            }
            Geom2dAPI_Interpolate interpolation(points, parameters, false, Precision::PConfusion());
            interpolation.Perform();
            if (!interpolation.IsDone()) throw GeometryError("an edge does not follow its B-spline surface");
            const Handle(Geom2d_BSplineCurve) curve = interpolation.Curve();
            double gap = 0;
            for (int i = 1; i < count; ++i) {
                const double t = (parameters->Value(i) + parameters->Value(i + 1)) / 2;
                const gp_Pnt2d uv = curve->Value(t);
                gap = std::max(gap, m_surface->Value(uv.X(), uv.Y()).Distance(pointOf(t)));
            }
            if (gap <= m_tolerance || count >= mostPoints) return {bspline(*curve), gap};
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
        return (1 - part) * m_made.start_param() + part * m_made.end_param();
    }

    /// The place of the surface that is nearest to a point of the edge, by Newton's method from where the
    /// original parameters lie in their range, which also tells the sides of a seam apart.
    gp_Pnt2d at(double part) const {
        const gp_Pnt point = pointOf(parameter(part));
        const gp_Pnt2d original = m_original->Value((1 - part) * m_first + part * m_last);
        const auto clampedTo = [this](int side, double value) {
            return std::clamp(value, m_to[side], m_to[side + 1]);
        };
        const auto mapped = [&](int side, double value) {
            const double way = (value - m_from[side]) / (m_from[side + 1] - m_from[side]);
            return clampedTo(side, (1 - way) * m_to[side] + way * m_to[side + 1]);
        };
        double u = mapped(0, original.X());
        double v = mapped(2, original.Y());
        for (int i = 0; i < 20; ++i) {
            gp_Pnt place;
            gp_Vec du;
            gp_Vec dv;
            m_surface->D1(u, v, place, du, dv);
            const gp_Vec gap(place, point);
            const double determinant = du.SquareMagnitude() * dv.SquareMagnitude() - du.Dot(dv) * du.Dot(dv);
            if (determinant <= 0) break;
            const double moveU =
                (gap.Dot(du) * dv.SquareMagnitude() - gap.Dot(dv) * du.Dot(dv)) / determinant;
            const double moveV =
                (gap.Dot(dv) * du.SquareMagnitude() - gap.Dot(du) * du.Dot(dv)) / determinant;
            u = clampedTo(0, u + moveU);
            v = clampedTo(2, v + moveV);
            if (std::abs(moveU) * du.Magnitude() + std::abs(moveV) * dv.Magnitude() < 1e-12) break;
        }
        return {u, v};
    }

    gp_Pnt pointOf(double t) const {
        const SPAposition point = m_made.geometry()->eval_position(t);
        return {point.x(), point.y(), point.z()};
    }

    double m_first = 0; ///< parameters of the original
    double m_last = 0;
    double m_from[4]; ///< u and v of the face, from and to
    double m_to[4];   ///< of the B-spline surface
    Handle(Geom_BSplineSurface) m_surface;
    const EDGE& m_made;
    double m_tolerance;
    Handle(Geom2d_Curve) m_original;
};

} // namespace

PCURVE* pcurve(const TopoDS_Edge& edge, const EDGE& made, const TopoDS_Face& face, const Support& support,
               double tolerance) {
    double first = 0;
    double last = 0;
    Handle(Geom2d_Curve) curve = BRep_Tool::CurveOnSurface(edge, face, first, last);
    if (curve.IsNull()) throw GeometryError("an edge has no curve on its B-spline surface");
    while (const auto trimmed = Handle(Geom2d_TrimmedCurve)::DownCast(curve)) curve = trimmed->BasisCurve();
    const bool keepsParameters =
        support.keepsParameters && first == made.start_param() && last == made.end_param() &&
        (curve->IsKind(STANDARD_TYPE(Geom2d_Line)) || curve->IsKind(STANDARD_TYPE(Geom2d_BSplineCurve)));
    if (!keepsParameters) {
        const auto [retraced, gap] = Retracing(edge, made, face, support.spline, tolerance).curve();
        return ACIS_NEW PCURVE(retraced, false, gap);
    }
    const Handle(Geom2d_BSplineCurve) spline =
        Geom2dConvert::CurveToBSplineCurve(new Geom2d_TrimmedCurve(curve, first, last));
    if (spline->IsPeriodic()) spline->SetNotPeriodic();
    return ACIS_NEW PCURVE(bspline(*spline));
}

} // namespace zeq::convexor
