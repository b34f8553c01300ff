// Walks the boundary representation once: vertices and edges are made when they are first met, coedges of one
// edge become partners.
#include "convexor/geometry_builder.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include <BRepBuilderAPI_Transform.hxx>
#include <BRepTools.hxx>
#include <BRepTools_WireExplorer.hxx>
#include <BRep_Tool.hxx>
#include <Geom2dConvert.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_Line.hxx>
#include <Geom2d_TrimmedCurve.hxx>
#include <GeomConvert.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_BezierSurface.hxx>
#include <Geom_Circle.hxx>
#include <Geom_ConicalSurface.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_Ellipse.hxx>
#include <Geom_Line.hxx>
#include <Geom_Plane.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_SphericalSurface.hxx>
#include <Geom_ToroidalSurface.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <Precision.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Wire.hxx>
#include <gp_Circ.hxx>
#include <gp_Cone.hxx>
#include <gp_Cylinder.hxx>
#include <gp_Elips.hxx>
#include <gp_Lin.hxx>
#include <gp_Sphere.hxx>
#include <gp_Torus.hxx>

#include "zeq_api/acis_attrib_id/attrib_convexor.h"

namespace zeq::convexor {

namespace {

SPAposition position(const gp_Pnt& p) { return {p.X(), p.Y(), p.Z()}; }
SPAvector vector(const gp_Dir& d) { return {d.X(), d.Y(), d.Z()}; }
SPAunit_vector direction(const gp_Dir& d) { return {d.X(), d.Y(), d.Z()}; }

/// The knots of one direction, each as often as it counts.
template <class Array>
bs_knots knots(int degree, const Array& flat) {
    bs_knots result;
    result.degree = degree;
    result.knots.assign(flat.begin(), flat.end());
    return result;
}

bs3_curve bspline(const Geom_BSplineCurve& curve) {
    bs3_curve result;
    result.u = knots(curve.Degree(), curve.KnotSequence());
    result.u.closure = curve.IsClosed() ? bs_closed : bs_open;
    for (int i = 1; i <= curve.NbPoles(); ++i) {
        result.controls.push_back(position(curve.Pole(i)));
        if (curve.IsRational()) result.weights.push_back(curve.Weight(i));
    }
    return result;
}

bs2_curve bspline(const Geom2d_BSplineCurve& curve) {
    bs2_curve result;
    result.u = knots(curve.Degree(), curve.KnotSequence());
    result.u.closure = curve.IsClosed() ? bs_closed : bs_open;
    for (int i = 1; i <= curve.NbPoles(); ++i) {
        result.controls.push_back({curve.Pole(i).X(), curve.Pole(i).Y()});
        if (curve.IsRational()) result.weights.push_back(curve.Weight(i));
    }
    return result;
}

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

/// A surface of the kernel, and whether its normal is the opposite of the original's.
struct Support {
    SURFACE* surface;
    bool isOpposite = false;
    bool isSpline = false; ///< with the parameters of the original
};

SURFACE* cone(const gp_Cone& cone, double vMin, double vMax) {
    // The base is a circle of the part that is used: the original's may be the apex, or beyond it.
    const double sine = std::sin(cone.SemiAngle());
    const double cosine = std::cos(cone.SemiAngle());
    const double middle = (vMin + vMax) / 2;
    const double radius = cone.RefRadius() + middle * sine;
    if (std::abs(radius) < Precision::Confusion()) throw GeometryError("a conical face has no extent");
    const double sign = radius < 0 ? -1 : 1;
    const gp_Ax3& axes = cone.Position();
    const SPAposition base = position(axes.Location()) + middle * cosine * vector(axes.Direction());
    return ACIS_NEW CONE(base, direction(axes.Direction()), radius * vector(axes.XDirection()), 1,
                         sign * sine, cosine);
}

Support support(const TopoDS_Face& face) {
    Handle(Geom_Surface) surface = BRep_Tool::Surface(face);
    while (const auto trimmed = Handle(Geom_RectangularTrimmedSurface)::DownCast(surface))
        surface = trimmed->BasisSurface();
    double uMin = 0;
    double uMax = 0;
    double vMin = 0;
    double vMax = 0;
    BRepTools::UVBounds(face, uMin, uMax, vMin, vMax);

    if (const auto plane = Handle(Geom_Plane)::DownCast(surface)) {
        const gp_Ax3& axes = plane->Position();
        const gp_Dir normal = axes.XDirection().Crossed(axes.YDirection());
        return {ACIS_NEW PLANE(position(axes.Location()), direction(normal), vector(axes.XDirection()))};
    }
    if (const auto quadric = Handle(Geom_CylindricalSurface)::DownCast(surface)) {
        const gp_Ax3& axes = quadric->Position();
        return {ACIS_NEW CONE(position(axes.Location()), direction(axes.Direction()),
                              quadric->Radius() * vector(axes.XDirection())),
                !axes.Direct()};
    }
    if (const auto quadric = Handle(Geom_ConicalSurface)::DownCast(surface))
        return {cone(quadric->Cone(), vMin, vMax), !quadric->Position().Direct()};
    if (const auto quadric = Handle(Geom_SphericalSurface)::DownCast(surface)) {
        const gp_Ax3& axes = quadric->Position();
        return {ACIS_NEW SPHERE(position(axes.Location()), quadric->Radius(), direction(axes.XDirection()),
                                direction(axes.Direction())),
                !axes.Direct()};
    }
    if (const auto torus = Handle(Geom_ToroidalSurface)::DownCast(surface)) {
        const gp_Ax3& axes = torus->Position();
        return {ACIS_NEW TORUS(position(axes.Location()), direction(axes.Direction()), torus->MajorRadius(),
                               torus->MinorRadius(), direction(axes.XDirection())),
                !axes.Direct()};
    }
    const bool keepsParameters = surface->IsKind(STANDARD_TYPE(Geom_BSplineSurface)) ||
                                 surface->IsKind(STANDARD_TYPE(Geom_BezierSurface));
    if (!keepsParameters) surface = new Geom_RectangularTrimmedSurface(surface, uMin, uMax, vMin, vMax);
    const Handle(Geom_BSplineSurface) spline = GeomConvert::SurfaceToBSplineSurface(surface);
    if (spline->IsUPeriodic()) spline->SetUNotPeriodic();
    if (spline->IsVPeriodic()) spline->SetVNotPeriodic();
    return {ACIS_NEW SPLINE(bspline(*spline)), false, keepsParameters};
}

/// A curve of the kernel with the range of an edge.
struct Piece {
    CURVE* curve;
    SPAinterval range;
};

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

/// The edge in the parameters of a B-spline face, where it keeps the parameter of the edge; null elsewhere.
PCURVE* pcurve(const TopoDS_Edge& edge, const TopoDS_Face& face) {
    double first = 0;
    double last = 0;
    Handle(Geom2d_Curve) curve = BRep_Tool::CurveOnSurface(edge, face, first, last);
    while (const auto trimmed = Handle(Geom2d_TrimmedCurve)::DownCast(curve)) curve = trimmed->BasisCurve();
    if (curve.IsNull() ||
        !(curve->IsKind(STANDARD_TYPE(Geom2d_Line)) || curve->IsKind(STANDARD_TYPE(Geom2d_BSplineCurve))))
        return nullptr;
    const Handle(Geom2d_BSplineCurve) spline =
        Geom2dConvert::CurveToBSplineCurve(new Geom2d_TrimmedCurve(curve, first, last));
    if (spline->IsPeriodic()) spline->SetNotPeriodic();
    return ACIS_NEW PCURVE(bspline(*spline));
}

class BodyBuilder {
public:
    explicit BodyBuilder(const TopoDS_Shape& shape) : m_shape(shape) {
        TopExp::MapShapes(shape, TopAbs_FACE, m_faces);
        TopExp::MapShapes(shape, TopAbs_EDGE, m_edges);
        TopExp::MapShapes(shape, TopAbs_VERTEX, m_vertices);
        m_edgeOf.resize(static_cast<std::size_t>(m_edges.Extent()));
        m_vertexOf.resize(static_cast<std::size_t>(m_vertices.Extent()));
    }

    BODY* build() {
        if (m_faces.IsEmpty()) return nullptr;
        try {
            m_body = keep(ACIS_NEW BODY());
            addLumps(m_shape);
        } catch (...) {
            api_del_entity_list(m_made);
            throw;
        }
        return m_body;
    }

private:
    /// Notes an entity that others do not lead to yet, for the case that the work fails.
    template <class Entity>
    Entity* keep(Entity* entity) {
        m_made.add(entity);
        return entity;
    }

    void addLumps(const TopoDS_Shape& shape);
    void addLump(const TopoDS_Shape& whole, bool isSolid);
    void fillShell(SHELL& shell, const TopoDS_Shape& faces, bool isSolid);
    FACE* makeFace(const TopoDS_Face& face);
    void addLoop(FACE& made, const TopoDS_Face& face, const TopoDS_Wire& wire, bool isSpline);
    EDGE* edgeOf(const TopoDS_Edge& edge);
    VERTEX* vertexOf(const TopoDS_Vertex& vertex);

    const TopoDS_Shape m_shape;
    TopTools_IndexedMapOfShape m_faces;
    TopTools_IndexedMapOfShape m_edges;
    TopTools_IndexedMapOfShape m_vertices;
    std::vector<EDGE*> m_edgeOf;
    std::vector<VERTEX*> m_vertexOf;
    ENTITY_LIST m_made;
    BODY* m_body = nullptr;
};

void BodyBuilder::addLumps(const TopoDS_Shape& shape) {
    switch (shape.ShapeType()) {
    case TopAbs_COMPOUND:
    case TopAbs_COMPSOLID:
        for (TopoDS_Iterator part(shape); part.More(); part.Next()) addLumps(part.Value());
        break;
    case TopAbs_SOLID:
        addLump(shape, true);
        break;
    case TopAbs_SHELL:
    case TopAbs_FACE:
        addLump(shape, false);
        break;
    default: // wires, edges and vertices alone are no part of a body
        break;
    }
}

void BodyBuilder::addLump(const TopoDS_Shape& whole, bool isSolid) {
    auto* const lump = ACIS_NEW LUMP();
    m_body->add_lump(lump);
    const auto add = [&](const TopoDS_Shape& faces) {
        auto* const shell = ACIS_NEW SHELL();
        lump->add_shell(shell);
        fillShell(*shell, faces, isSolid);
    };
    if (!isSolid) return add(whole);
    for (TopoDS_Iterator shell(whole); shell.More(); shell.Next())
        if (shell.Value().ShapeType() == TopAbs_SHELL) add(shell.Value());
}

void BodyBuilder::fillShell(SHELL& shell, const TopoDS_Shape& faces, bool isSolid) {
    for (TopExp_Explorer face(faces, TopAbs_FACE); face.More(); face.Next()) {
        FACE* const made = makeFace(TopoDS::Face(face.Current()));
        shell.add_face(made);
        if (!isSolid) made->set_sides(DOUBLE_SIDED);
    }
}

FACE* BodyBuilder::makeFace(const TopoDS_Face& face) {
    const auto [surface, isOpposite, isSpline] = support(face);
    const bool isReversed = face.Orientation() == TopAbs_REVERSED;
    auto* const made = keep(ACIS_NEW FACE(surface, isReversed != isOpposite ? REVERSED : FORWARD));
    ACIS_NEW ATTRIB_CONVEXOR_ID(made, m_faces.FindIndex(face));
    for (TopoDS_Iterator wire(face.Oriented(TopAbs_FORWARD)); wire.More(); wire.Next())
        if (wire.Value().ShapeType() == TopAbs_WIRE)
            addLoop(*made, face, TopoDS::Wire(wire.Value()), isSpline);
    return made;
}

void BodyBuilder::addLoop(FACE& made, const TopoDS_Face& face, const TopoDS_Wire& wire, bool isSpline) {
    const TopoDS_Face forward = TopoDS::Face(face.Oriented(TopAbs_FORWARD));
    std::vector<TopoDS_Edge> edges;
    for (BRepTools_WireExplorer edge(wire, forward); edge.More(); edge.Next())
        edges.push_back(edge.Current());
    if (edges.empty()) return;
    int count = 0;
    for (TopoDS_Iterator edge(wire); edge.More(); edge.Next()) ++count;
    if (count != static_cast<int>(edges.size())) throw GeometryError("the boundary of a face does not close");

    // Seen against the face's normal the face is on the left.
    const bool isReversed = face.Orientation() == TopAbs_REVERSED;
    if (isReversed) std::reverse(edges.begin(), edges.end());
    COEDGE* first = nullptr;
    COEDGE* previous = nullptr;
    for (const TopoDS_Edge& edge : edges) {
        const bool isAgainst = (edge.Orientation() == TopAbs_REVERSED) != isReversed;
        auto* const coedge = keep(ACIS_NEW COEDGE(edgeOf(edge), isAgainst ? REVERSED : FORWARD, previous));
        if (previous)
            previous->set_next(coedge);
        else
            first = coedge;
        if (isSpline && !BRep_Tool::Degenerated(edge)) coedge->set_geometry(pcurve(edge, forward));
        // The ring of partners; a coedge that is alone has none.
        if (COEDGE* const other = coedge->edge()->coedge(); other != coedge) {
            coedge->set_partner(other->partner() ? other->partner() : other);
            other->set_partner(coedge);
        }
        previous = coedge;
    }
    previous->set_next(first);
    first->set_previous(previous);
    made.add_loop(ACIS_NEW LOOP(first));
}

EDGE* BodyBuilder::edgeOf(const TopoDS_Edge& edge) {
    const int index = m_edges.FindIndex(edge);
    EDGE*& made = m_edgeOf[static_cast<std::size_t>(index - 1)];
    if (made) return made;
    const TopoDS_Edge forward = TopoDS::Edge(edge.Oriented(TopAbs_FORWARD));
    const TopoDS_Vertex start = TopExp::FirstVertex(forward);
    const TopoDS_Vertex end = TopExp::LastVertex(forward);
    if (start.IsNull() || end.IsNull()) throw GeometryError("an edge has no vertices");
    if (BRep_Tool::Degenerated(edge)) {
        made = keep(ACIS_NEW EDGE(vertexOf(start), vertexOf(end)));
    } else {
        const auto [curve, range] = piece(forward);
        made = keep(ACIS_NEW EDGE(vertexOf(start), vertexOf(end), curve, FORWARD, range));
    }
    ACIS_NEW ATTRIB_CONVEXOR_ID(made, index);
    return made;
}

VERTEX* BodyBuilder::vertexOf(const TopoDS_Vertex& vertex) {
    VERTEX*& made = m_vertexOf[static_cast<std::size_t>(m_vertices.FindIndex(vertex) - 1)];
    if (!made) made = keep(ACIS_NEW VERTEX(ACIS_NEW APOINT(position(BRep_Tool::Pnt(vertex)))));
    return made;
}

} // namespace

BODY* buildBody(const TopoDS_Shape& shape, double scale) {
    if (shape.IsNull()) return nullptr;
    if (scale == 1) return BodyBuilder(shape).build();
    gp_Trsf scaling;
    scaling.SetScaleFactor(scale);
    return BodyBuilder(BRepBuilderAPI_Transform(shape, scaling, Standard_True).Shape()).build();
}

} // namespace zeq::convexor
