// The kernel's own measures of a shape, none of which knows the entities that are sent.
#include "convexor/geometry_figures.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_Copy.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepExtrema_DistShapeShape.hxx>
#include <BRepGProp.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepTopAdaptor_FClass2d.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <GProp_GProps.hxx>
#include <Geom_Curve.hxx>
#include <Poly_Triangulation.hxx>
#include <Precision.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <gp_Pln.hxx>

#include "convexor/properties.h"

namespace zeq::convexor {

namespace {

// The kernel's own access to coordinates by index steps from one member to the next, which clang optimises
// away.
double coordinate(const gp_XYZ& point, int axis) {
    return axis == 1 ? point.X() : axis == 2 ? point.Y() : point.Z();
}
gp_XYZ replaced(const gp_XYZ& point, int axis, double value) {
    return {axis == 1 ? value : point.X(), axis == 2 ? value : point.Y(), axis == 3 ? value : point.Z()};
}

/// How far something reaches along an axis (1 to 3), or against it (sign -1).
double reach(const Bnd_Box& box, int axis, int sign) {
    return sign * coordinate((sign > 0 ? box.CornerMax() : box.CornerMin()).XYZ(), axis);
}

/// How far a face reaches in a direction: from the farthest of some points of it along its surface as far as
/// that leads. Nothing where that leaves the face.
std::optional<double> climbed(const TopoDS_Face& face, int axis, int sign) {
    const BRepAdaptor_Surface surface(face);
    constexpr double precision = 1e-7;
    BRepTopAdaptor_FClass2d part(face, precision);
    const double lowU = surface.FirstUParameter(), highU = surface.LastUParameter();
    const double lowV = surface.FirstVParameter(), highV = surface.LastVParameter();
    const auto reach = [&](const gp_XY& uv) {
        return sign * coordinate(surface.Value(uv.X(), uv.Y()).XYZ(), axis);
    };
    constexpr int samples = 16;
    std::optional<gp_XY> at;
    for (int i = 0; i < samples; ++i)
        for (int j = 0; j < samples; ++j) {
            const gp_XY uv(lowU + (highU - lowU) * (i + 0.5) / samples,
                           lowV + (highV - lowV) * (j + 0.5) / samples);
            if (at && reach(uv) <= reach(*at)) continue;
            if (part.Perform(gp_Pnt2d(uv)) != TopAbs_OUT) at = uv;
        }
    if (!at) return std::nullopt;
    gp_XY step((highU - lowU) / samples, (highV - lowV) / samples);
    for (int halvings = 0; halvings < 40;) {
        gp_XY best = *at;
        for (const int i : {-1, 0, 1})
            for (const int j : {-1, 0, 1}) {
                const gp_XY next(std::clamp(at->X() + i * step.X(), lowU, highU),
                                 std::clamp(at->Y() + j * step.Y(), lowV, highV));
                if (reach(next) > reach(best)) best = next;
            }
        if (best.IsEqual(*at, 0)) {
            step /= 2;
            ++halvings;
        }
        at = best;
    }
    if (part.Perform(gp_Pnt2d(*at)) == TopAbs_OUT) return std::nullopt;
    return reach(*at);
}

/// How far a face reaches. Its box tells no more than how far the surface reaches between the bounds of its
/// parameters; so by the distance from a plane beyond it, and, as that misses what is farthest at times, by
/// climbing.
double reach(const TopoDS_Face& face, const Bnd_Box& box, int axis, int sign) {
    const double size = std::sqrt(box.SquareExtent());
    const double beyond = reach(box, axis, sign) + size;
    const gp_XYZ middle = replaced((box.CornerMin().XYZ() + box.CornerMax().XYZ()) / 2, axis, sign * beyond);
    const gp_Pln across(middle, gp_Dir(replaced({}, axis, 1)));
    const TopoDS_Face plane = BRepBuilderAPI_MakeFace(across, -size, size, -size, size);
    const BRepExtrema_DistShapeShape distance(face, plane);
    const std::optional<double> top = climbed(face, axis, sign);
    if (!distance.IsDone()) return top.value_or(reach(box, axis, sign));
    return std::max(beyond - distance.Value(), top.value_or(beyond - distance.Value()));
}

/// Adds the face to a box that holds the edges.
void addInside(const TopoDS_Face& face, Bnd_Box& box) {
    const double negligible = 1e-9 * std::sqrt(box.SquareExtent());
    Bnd_Box rough;
    BRepBndLib::Add(face, rough, false);
    rough.SetGap(0); // which holds the tolerance of the face
    for (int axis = 1; axis <= 3; ++axis)
        for (const int sign : {-1, 1}) {
            const double known = reach(box, axis, sign);
            if (reach(rough, axis, sign) <= known + negligible) continue;
            const double inside = std::max(known, reach(face, rough, axis, sign));
            box.Add(gp_Pnt(replaced(box.CornerMin().XYZ(), axis, sign * inside)));
        }
}

/// The area of triangles near a face.
double triangulatedArea(const TopoDS_Face& face, double size) {
    const TopoDS_Shape copy = BRepBuilderAPI_Copy(face, false, false).Shape();
    constexpr double fineness = 1e-3;
    constexpr double angle = 0.1;
    const BRepMesh_IncrementalMesh mesher(copy, fineness * size, false, angle);
    TopLoc_Location location;
    const Handle(Poly_Triangulation) mesh = BRep_Tool::Triangulation(TopoDS::Face(copy), location);
    double area = 0;
    for (int i = 1; !mesh.IsNull() && i <= mesh->NbTriangles(); ++i) {
        int a = 0, b = 0, c = 0;
        mesh->Triangle(i).Get(a, b, c);
        const gp_XYZ corner = mesh->Node(a).XYZ();
        area += (mesh->Node(b).XYZ() - corner).CrossMagnitude(mesh->Node(c).XYZ() - corner) / 2;
    }
    return area;
}

/// By the rule that adds points until that no longer matters, or by the one with a fixed number of points in
/// a span. That is as good and much faster where spans are many; and the other one may be far off where it
/// tells an error of 0, because it did not add any. Both fail at times: where they differ, or the boundary is
/// open by much, triangles tell which one to take, or give the figure.
double areaOf(const TopoDS_Face& face) {
    GProp_GProps coarse;
    BRepGProp::SurfaceProperties(face, coarse);
    double area = std::abs(coarse.Mass()); // negative where a face lies outside of its boundary
    double difference = 0;
    const BRepAdaptor_Surface surface(face);
    const bool isSpline = surface.GetType() == GeomAbs_BSplineSurface;
    constexpr int fewSpans = 36;
    if (!isSpline || (surface.NbUKnots() - 1) * (surface.NbVKnots() - 1) <= fewSpans) {
        constexpr double precision = 1e-5;
        GProp_GProps fine;
        const double error = BRepGProp::SurfaceProperties(face, fine, precision);
        difference = std::abs(fine.Mass() - coarse.Mass());
        if (error > 0 && error <= precision) area = std::abs(fine.Mass());
    }
    constexpr double same = 1e-3;
    const double size = std::sqrt(area);
    const bool isOpen = BRep_Tool::MaxTolerance(face, TopAbs_VERTEX) > same * size;
    if (difference <= same * area && !isOpen) return area;
    const double triangles = triangulatedArea(face, size);
    constexpr double near = 5e-3;
    for (const double each : {area, std::abs(coarse.Mass())})
        if (std::abs(each - triangles) <= near * triangles) return each;
    return triangles > 0 ? triangles : area;
}

bool isFinite(const TopoDS_Edge& edge) {
    double first = 0;
    double last = 0;
    const Handle(Geom_Curve) curve = BRep_Tool::Curve(edge, first, last);
    return !curve.IsNull() && !Precision::IsInfinite(first) && !Precision::IsInfinite(last);
}

} // namespace

ExcMiscPropertiesGroup geometryFigures(const TopoDS_Shape& shape, const LengthUnit& unit) {
    using ValueType = ExcMiscProperty::EValueType;
    ExcMiscPropertiesGroup group;
    group.name() = L"geometry check";
    TopTools_IndexedMapOfShape edges;
    TopTools_IndexedMapOfShape vertices;
    int faces = 0;
    double area = 0;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next(), ++faces) {
        TopExp::MapShapes(face.Current(), TopAbs_EDGE, edges);
        TopExp::MapShapes(face.Current(), TopAbs_VERTEX, vertices);
        area += areaOf(TopoDS::Face(face.Current()));
    }
    for (TopExp_Explorer edge(shape, TopAbs_EDGE, TopAbs_FACE); edge.More(); edge.Next()) {
        if (!isFinite(TopoDS::Edge(edge.Current()))) continue;
        edges.Add(edge.Current());
        TopExp::MapShapes(edge.Current(), TopAbs_VERTEX, vertices);
    }
    int points = 0; // vertices that stand alone
    for (TopExp_Explorer vertex(shape, TopAbs_VERTEX, TopAbs_EDGE); vertex.More(); vertex.Next()) {
        if (vertices.Contains(vertex.Current())) continue;
        vertices.Add(vertex.Current());
        ++points;
    }
    if (vertices.IsEmpty()) return group;

    constexpr double precision = 1e-9;
    double length = 0;
    Bnd_Box box;
    for (int i = 1; i <= edges.Extent(); ++i) {
        const TopoDS_Edge& edge = TopoDS::Edge(edges(i));
        if (BRep_Tool::Degenerated(edge)) continue;
        length += GCPnts_AbscissaPoint::Length(BRepAdaptor_Curve(edge), precision);
        BRepBndLib::AddOptimal(edge, box, false, false);
    }
    for (TopExp_Explorer vertex(shape, TopAbs_VERTEX, TopAbs_EDGE); vertex.More(); vertex.Next())
        box.Add(BRep_Tool::Pnt(TopoDS::Vertex(vertex.Current())));
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
        addInside(TopoDS::Face(face.Current()), box);

    const double millimeters = unit.millimeters;
    const std::wstring symbol = unit.symbol;
    group.addProperty(countProperty(L"faces", faces));
    group.addProperty(countProperty(L"edges", edges.Extent() + points));
    group.addProperty(countProperty(L"vertices", vertices.Extent()));
    group.addProperty(quantity(L"edge length", length / millimeters, ValueType::length, symbol));
    group.addProperty(
        quantity(L"surface area", area / (millimeters * millimeters), ValueType::area, symbol + L"^2"));
    const gp_Pnt ends[]{box.CornerMin(), box.CornerMax()};
    const wchar_t* const names[][3]{{L"box minimum x", L"box minimum y", L"box minimum z"},
                                    {L"box maximum x", L"box maximum y", L"box maximum z"}};
    for (int end = 0; end < 2; ++end)
        for (int axis = 0; axis < 3; ++axis)
            group.addProperty(quantity(names[end][axis], coordinate(ends[end].XYZ(), axis + 1) / millimeters,
                                       ValueType::length, symbol));
    return group;
}

} // namespace zeq::convexor
