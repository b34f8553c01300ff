// Analytic geometry stays analytic, only its form of description changes; the rest becomes B-splines.
#include "convexor/geometry_conversion.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
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
#include <TColStd_Array1OfReal.hxx>
#include <gp_Cone.hxx>
#include <gp_Lin.hxx>
#include <gp_Torus.hxx>

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
} // namespace

bs2_curve bspline(const Geom2d_BSplineCurve& curve) { return bsplineCurve<bs2_curve>(curve); }

namespace {

bs3_curve bspline(const Geom_BSplineCurve& curve) { return bsplineCurve<bs3_curve>(curve); }

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

/// Points all over a face, from bound to bound.
std::vector<gp_Pnt> grid(const Geom_Surface& surface, const std::array<double, 4>& bounds) {
    constexpr int steps = 4;
    const auto& [uMin, uMax, vMin, vMax] = bounds;
    std::vector<gp_Pnt> points;
    for (int i = 0; i <= steps; ++i)
        for (int j = 0; j <= steps; ++j)
            points.push_back(
                surface.Value(uMin + i * (uMax - uMin) / steps, vMin + j * (vMax - vMin) / steps));
    return points;
}

/// Null for a face on both sides of the apex.
SURFACE* cone(const gp_Cone& cone, const std::vector<gp_Pnt>& points) {
    // The base is a circle of the part that is used: the original's may be the apex, or beyond it.
    const gp_Ax3& axes = cone.Position();
    double low = std::numeric_limits<double>::max();
    double high = -low;
    for (const gp_Pnt& point : points) {
        const double height = gp_Vec(cone.Apex(), point).Dot(axes.Direction());
        low = std::min(low, height);
        high = std::max(high, height);
    }
    if (std::max(-low, high) < Precision::Confusion()) throw GeometryError("a conical face has no extent");
    constexpr double beyond = 1e-6; // as a part of the whole height
    if (low < -beyond * (high - low) && high > beyond * (high - low)) return nullptr;
    const double height = (low + high) / 2;
    const double radius = std::abs(height * std::tan(cone.SemiAngle()));
    const double sine = std::abs(std::sin(cone.SemiAngle()));
    const SPAposition base = position(cone.Apex()) + height * vector(axes.Direction());
    return ACIS_NEW CONE(base, direction(axes.Direction()), radius * vector(axes.XDirection()), 1,
                         height < 0 ? -sine : sine, std::abs(std::cos(cone.SemiAngle())));
}

/// Of a torus whose tube crosses its axis, the sheet that the face is on; null for a face on both.
SURFACE* torus(const gp_Torus& torus, const std::vector<gp_Pnt>& points) {
    const gp_Ax3& axes = torus.Position();
    const double minor = torus.MinorRadius();
    double major = torus.MajorRadius();
    if (major < minor) {
        std::size_t inside = 0; // where the tube has crossed the axis
        std::size_t outside = 0;
        for (const gp_Pnt& point : points) {
            const gp_Vec arm(axes.Location(), point);
            const double height = arm.Dot(axes.Direction());
            const double reach = arm.CrossMagnitude(axes.Direction());
            const double fromInner = std::abs(std::hypot(reach + major, height) - minor);
            const double fromOuter = std::abs(std::hypot(reach - major, height) - minor);
            if (std::abs(fromInner - fromOuter) < Precision::Confusion()) continue; // on the axis
            ++(fromInner < fromOuter ? inside : outside);
        }
        if (inside > 0 && outside > 0) return nullptr;
        if (inside > 0) major = -major;
    }
    return ACIS_NEW TORUS(position(axes.Location()), direction(axes.Direction()), major, minor,
                          direction(axes.XDirection()));
}

/// Null for a surface that is not analytic, or of which the kernel's has no more than a part of the face; the
/// bounds of that are those of the original.
SURFACE* analytic(const Handle(Geom_Surface) & surface, const Geom_Surface& original,
                  const std::array<double, 4>& bounds) {
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
        return cone(conical->Cone(), grid(original, bounds));
    if (const auto sphere = Handle(Geom_SphericalSurface)::DownCast(surface))
        return ACIS_NEW SPHERE(origin, sphere->Radius(), x, axis);
    if (const auto toroidal = Handle(Geom_ToroidalSurface)::DownCast(surface))
        return torus(toroidal->Torus(), grid(original, bounds));
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

/// The part of a surface that a face covers.
Handle(Geom_Surface) cut(const Handle(Geom_Surface) & surface, const std::array<double, 4>& bounds) {
    std::array<double, 4> inside;
    surface->Bounds(inside[0], inside[1], inside[2], inside[3]);
    const bool isPeriodic[]{static_cast<bool>(surface->IsUPeriodic()),
                            static_cast<bool>(surface->IsVPeriodic())};
    for (std::size_t i = 0; i < 4; i += 2) {
        if (isPeriodic[i / 2]) {
            inside[i] = bounds[i];
            inside[i + 1] = bounds[i + 1];
        } else {
            inside[i] = std::max(inside[i], bounds[i]);
            inside[i + 1] = std::min(inside[i + 1], bounds[i + 1]);
        }
    }
    return new Geom_RectangularTrimmedSurface(surface, inside[0], inside[1], inside[2], inside[3]);
}

/// Adds something to all knots.
TColStd_Array1OfReal shifted(TColStd_Array1OfReal knots, double by) {
    for (double& knot : knots) knot += by;
    return knots;
}

/// A periodic B-spline surface as one that is not, over a range of parameters, which may lie across its seam.
Handle(Geom_BSplineSurface)
    opened(const Handle(Geom_BSplineSurface) & periodic, const std::array<double, 4>& bounds) {
    auto spline = Handle(Geom_BSplineSurface)::DownCast(periodic->Copy());
    const double periods[]{spline->IsUPeriodic() ? spline->UPeriod() : 0,
                           spline->IsVPeriodic() ? spline->VPeriod() : 0};
    std::array<double, 4> range;
    spline->Bounds(range[0], range[1], range[2], range[3]);
    const std::array<double, 4> whole = range;
    for (std::size_t i = 0; i < 4; i += 2) {
        const double period = periods[i / 2];
        // Hardly beyond the whole range: there the outermost pieces simply go on.
        const double negligible = 1e-6 * period;
        if (bounds[i] >= whole[i] - negligible && bounds[i + 1] <= whole[i + 1] + negligible) continue;
        if (period == 0) continue;
        range[i] = bounds[i];
        range[i + 1] = std::min(bounds[i + 1], bounds[i] + period);
    }
    spline->Segment(range[0], range[1], range[2], range[3]);
    if (spline->IsUPeriodic()) spline->SetUNotPeriodic();
    if (spline->IsVPeriodic()) spline->SetVNotPeriodic();
    // The kernel may have moved the range by whole periods, away from the curves on the surface.
    std::array<double, 4> made;
    spline->Bounds(made[0], made[1], made[2], made[3]);
    const auto wayBack = [&](std::size_t side) {
        const double period = periods[side / 2];
        return period > 0 ? period * std::round((range[side] - made[side]) / period) : 0;
    };
    if (const double by = wayBack(0); by != 0) spline->SetUKnots(shifted(spline->UKnots(), by));
    if (const double by = wayBack(2); by != 0) spline->SetVKnots(shifted(spline->VKnots(), by));
    return spline;
}

} // namespace

Support support(const TopoDS_Face& face, double tolerance) {
    std::array<double, 4> bounds;
    BRepTools::UVBounds(face, bounds[0], bounds[1], bounds[2], bounds[3]);
    const Handle(Geom_Surface) original = BRep_Tool::Surface(face);
    Handle(Geom_Surface) surface = simplestSurface(face);
    if (SURFACE* const made = analytic(surface, *original, bounds)) {
        gp_Pnt middle;
        gp_Vec du;
        gp_Vec dv;
        original->D1((bounds[0] + bounds[1]) / 2, (bounds[2] + bounds[3]) / 2, middle, du, dv);
        const SPAunit_vector normal = made->eval_normal(made->param(position(middle)));
        return {made, vector(du.Crossed(dv)) % normal < 0};
    }
    surface = untrimmed(original);
    if (surface->IsKind(STANDARD_TYPE(Geom_OffsetSurface))) {
        // The one kind of surface for which there is no exact B-spline.
        constexpr int highestDegree = 9;
        constexpr int mostSpans = 400;
        const GeomConvert_ApproxSurface near(cut(surface, bounds), tolerance, GeomAbs_C2, GeomAbs_C2,
                                             highestDegree, highestDegree, mostSpans, 1);
        if (!near.HasResult()) throw GeometryError("an offset surface cannot be approximated");
        return {ACIS_NEW SPLINE(bspline(*near.Surface()), false, near.MaxError()), false, near.Surface(),
                true, bounds};
    }
    const bool keepsParameters = surface->IsKind(STANDARD_TYPE(Geom_BSplineSurface)) ||
                                 surface->IsKind(STANDARD_TYPE(Geom_BezierSurface));
    if (!keepsParameters) surface = cut(surface, bounds);
    Handle(Geom_BSplineSurface) spline = GeomConvert::SurfaceToBSplineSurface(surface);
    if (spline->IsUPeriodic() || spline->IsVPeriodic()) spline = opened(spline, bounds);
    return {ACIS_NEW SPLINE(bspline(*spline)), false, spline, keepsParameters, bounds};
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
    if (!curve->IsPeriodic()) {
        first = std::max(first, curve->FirstParameter());
        last = std::min(last, curve->LastParameter());
    }
    const Handle(Geom_BSplineCurve) spline =
        GeomConvert::CurveToBSplineCurve(new Geom_TrimmedCurve(curve, first, last));
    if (spline->IsPeriodic()) spline->SetNotPeriodic();
    return {ACIS_NEW INTCURVE(bspline(*spline)), {spline->FirstParameter(), spline->LastParameter()}};
}

} // namespace zeq::convexor
