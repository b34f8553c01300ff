// One function a shape; the table tells what of it has to stay analytic.
#include "brep/shapes.h"

#include <cmath>
#include <stdexcept>

#include <BRepAlgoAPI_Common.hxx>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepOffsetAPI_MakePipe.hxx>
#include <BRepOffsetAPI_ThruSections.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <GeomAPI_PointsToBSpline.hxx>
#include <GeomAPI_PointsToBSplineSurface.hxx>
#include <GeomConvert.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_BezierSurface.hxx>
#include <Geom_ConicalSurface.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_Line.hxx>
#include <Geom_OffsetSurface.hxx>
#include <Geom_Plane.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_SurfaceOfLinearExtrusion.hxx>
#include <Geom_SurfaceOfRevolution.hxx>
#include <Geom_ToroidalSurface.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TColgp_Array1OfPnt2d.hxx>
#include <TColgp_Array2OfPnt.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Wire.hxx>
#include <gp_Ax2.hxx>
#include <gp_Circ.hxx>
#include <gp_Elips.hxx>
#include <gp_Trsf.hxx>

namespace zeq::test {

namespace {

constexpr double pi = 3.14159265358979323846;
const gp_Ax2 tilted(gp_Pnt(3, -2, 5), gp_Dir(1, 2, 3), gp_Dir(3, 0, -1));

Handle(Geom_BSplineCurve) profile() {
    TColgp_Array1OfPnt points(1, 5);
    const double radii[]{4, 6, 5, 7, 6.5};
    for (int i = 1; i <= 5; ++i) points(i) = gp_Pnt(radii[i - 1], 0, 3.0 * i);
    return GeomAPI_PointsToBSpline(points).Curve();
}

Handle(Geom_BSplineSurface) hill() {
    TColgp_Array2OfPnt points(1, 6, 1, 7);
    for (int i = 1; i <= 6; ++i)
        for (int j = 1; j <= 7; ++j)
            points(i, j) = gp_Pnt(3.0 * i, 2.5 * j, 6 * std::sin(0.5 * i) * std::sin(0.45 * j));
    return GeomAPI_PointsToBSplineSurface(points).Surface();
}

TopoDS_Shape faceOn(const Handle(Geom_Surface) & surface) { return BRepBuilderAPI_MakeFace(surface, 1e-7); }
TopoDS_Shape faceOn(const Handle(Geom_Surface) & surface, double u1, double u2, double v1, double v2) {
    return BRepBuilderAPI_MakeFace(surface, u1, u2, v1, v2, 1e-7);
}
TopoDS_Shape moved(const TopoDS_Shape& shape, const gp_Trsf& by) {
    return BRepBuilderAPI_Transform(shape, by, true).Shape();
}
TopoDS_Shape mirrored(const TopoDS_Shape& shape) {
    gp_Trsf mirror;
    mirror.SetMirror(tilted);
    return moved(shape, mirror);
}
TopoDS_Shape shifted(const TopoDS_Shape& shape, double x, double y, double z) {
    gp_Trsf shift;
    shift.SetTranslation(gp_Vec(x, y, z));
    return moved(shape, shift);
}

TopoDS_Shape roundedBox() {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(20, 30, 10).Shape();
    BRepFilletAPI_MakeFillet fillet(box);
    for (TopExp_Explorer edge(box, TopAbs_EDGE); edge.More(); edge.Next())
        fillet.Add(2, TopoDS::Edge(edge.Current()));
    return fillet.Shape();
}

TopoDS_Shape revolved(double angle) {
    const TopoDS_Edge edge = BRepBuilderAPI_MakeEdge(profile());
    return BRepPrimAPI_MakeRevol(edge, gp_Ax1(gp_Pnt(), gp_Dir(0, 0, 1)), angle).Shape();
}

TopoDS_Shape bentPipe() {
    TColgp_Array1OfPnt points(1, 4);
    points(1) = gp_Pnt(0, 0, 0);
    points(2) = gp_Pnt(0, 5, 20);
    points(3) = gp_Pnt(10, 5, 30);
    points(4) = gp_Pnt(30, 0, 40);
    const Handle(Geom_BSplineCurve) spine = GeomAPI_PointsToBSpline(points).Curve();
    gp_Pnt start;
    gp_Vec along;
    spine->D1(spine->FirstParameter(), start, along);
    const TopoDS_Edge circle = BRepBuilderAPI_MakeEdge(gp_Circ(gp_Ax2(start, along), 2));
    const TopoDS_Wire path = BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(spine).Edge());
    return BRepOffsetAPI_MakePipe(path,
                                  BRepBuilderAPI_MakeFace(BRepBuilderAPI_MakeWire(circle).Wire()).Face())
        .Shape();
}

TopoDS_Shape loft() {
    BRepOffsetAPI_ThruSections sections(true);
    const double radii[]{5, 8, 4};
    for (int i = 0; i < 3; ++i)
        sections.AddWire(BRepBuilderAPI_MakeWire(
            BRepBuilderAPI_MakeEdge(
                gp_Elips(gp_Ax2(gp_Pnt(0, 0, 10.0 * i), gp_Dir(0, 0.1 * i, 1)), radii[i], 3))
                .Edge()));
    return sections.Shape();
}

TopoDS_Shape ellipticPrism() {
    const TopoDS_Edge ellipse = BRepBuilderAPI_MakeEdge(gp_Elips(tilted, 6, 3));
    const TopoDS_Face base = BRepBuilderAPI_MakeFace(BRepBuilderAPI_MakeWire(ellipse).Wire());
    return BRepPrimAPI_MakePrism(base, gp_Vec(2, 4, 9)).Shape();
}

/// Part of a periodic B-spline surface.
TopoDS_Shape periodic(double from, double to) {
    const Handle(Geom_Surface) cylinder = new Geom_CylindricalSurface(gp_Ax3(tilted), 5);
    const Handle(Geom_BSplineSurface) surface = GeomConvert::SurfaceToBSplineSurface(
        new Geom_RectangularTrimmedSurface(cylinder, 0., 2 * pi, 0., 8.));
    surface->SetUPeriodic();
    return faceOn(surface, from, to, 1, 6);
}

/// A face whose curves on the surface run at another speed than its edges.
TopoDS_Shape unevenlyTraced() {
    const TopoDS_Face face = TopoDS::Face(faceOn(hill()));
    for (TopExp_Explorer edges(face, TopAbs_EDGE); edges.More(); edges.Next()) {
        const TopoDS_Edge edge = TopoDS::Edge(edges.Current());
        double first = 0;
        double last = 0;
        const Handle(Geom2d_Curve) even = BRep_Tool::CurveOnSurface(edge, face, first, last);
        TColgp_Array1OfPnt2d poles(1, 3);
        poles(1) = even->Value(first);
        poles(2) = even->Value(0.7 * first + 0.3 * last);
        poles(3) = even->Value(last);
        TColStd_Array1OfReal knots(1, 2);
        knots(1) = first;
        knots(2) = last;
        TColStd_Array1OfInteger multiplicities(1, 2);
        multiplicities.Init(3);
        BRep_Builder().UpdateEdge(edge, new Geom2d_BSplineCurve(poles, knots, multiplicities, 2), face, 1e-7);
    }
    return face;
}

TopoDS_Shape bezier() {
    TColgp_Array2OfPnt points(1, 4, 1, 3);
    for (int i = 1; i <= 4; ++i)
        for (int j = 1; j <= 3; ++j) points(i, j) = gp_Pnt(4 * i, 5 * j, i * j % 3 + 0.3 * i);
    return faceOn(new Geom_BezierSurface(points), 0.1, 0.8, 0.2, 1);
}

Handle(Geom_Surface) spindle() { return new Geom_ToroidalSurface(gp_Ax3(tilted), 2, 3); }

TopoDS_Shape hollowBox() {
    return BRepAlgoAPI_Cut(BRepPrimAPI_MakeBox(20, 20, 20).Shape(),
                           shifted(BRepPrimAPI_MakeSphere(4).Shape(), 10, 10, 10))
        .Shape();
}

TopoDS_Shape several() {
    TopoDS_Compound all;
    const BRep_Builder builder;
    builder.MakeCompound(all);
    builder.Add(all, BRepPrimAPI_MakeBox(1, 2, 3).Shape());
    builder.Add(all, shifted(BRepPrimAPI_MakeCylinder(1, 2).Shape(), 5, 0, 0));
    builder.Add(all, faceOn(new Geom_Plane(gp_Ax3(tilted)), 0, 4, 0, 3));
    builder.Add(all, BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 0), gp_Pnt(0, 0, 50)).Edge());
    return all;
}

} // namespace

const std::vector<NamedShape>& shapes() {
    static const std::vector<NamedShape> all{
        {"box", [] { return BRepPrimAPI_MakeBox(1, 2, 4).Shape(); },
         "1 body, 6 faces (6 planes), 12 edges (12 lines), 8 vertices"},
        {"cylinder", [] { return BRepPrimAPI_MakeCylinder(tilted, 3, 7).Shape(); },
         "1 body, 3 faces (2 planes, 1 cylinder or cone), 3 edges (1 line, 2 circles and ellipses)"},
        {"part of a cylinder", [] { return BRepPrimAPI_MakeCylinder(tilted, 3, 7, 2).Shape(); },
         "1 body, 5 faces (4 planes, 1 cylinder or cone)"},
        {"blunt cone", [] { return BRepPrimAPI_MakeCone(tilted, 3, 7, 5).Shape(); },
         "1 body, 3 faces (2 planes, 1 cylinder or cone)"},
        {"cone", [] { return BRepPrimAPI_MakeCone(tilted, 4, 0, 5).Shape(); },
         "1 body, 2 faces (1 plane, 1 cylinder or cone), 3 edges (1 line, 1 circle or ellipse, 1 point)"},
        {"mirrored cone", [] { return mirrored(BRepPrimAPI_MakeCone(tilted, 0, 4, 5).Shape()); },
         "1 body, 2 faces (1 plane, 1 cylinder or cone)"},
        {"sphere", [] { return BRepPrimAPI_MakeSphere(tilted, 4).Shape(); },
         "1 body, 1 face (1 sphere), 3 edges (1 circle or ellipse, 2 points), 2 vertices"},
        {"part of a sphere", [] { return BRepPrimAPI_MakeSphere(tilted, 4, -0.5, 1.2, 4).Shape(); },
         "1 body, 5 faces (4 planes, 1 sphere)"},
        {"mirrored sphere", [] { return mirrored(BRepPrimAPI_MakeSphere(tilted, 4, 0.1, pi / 2).Shape()); },
         "1 body, 2 faces (1 plane, 1 sphere)"},
        {"torus", [] { return BRepPrimAPI_MakeTorus(tilted, 9, 2).Shape(); },
         "1 body, 1 face (1 torus), 2 edges (2 circles and ellipses), 1 vertex"},
        {"part of a torus", [] { return BRepPrimAPI_MakeTorus(tilted, 9, 2, 5).Shape(); },
         "1 body, 3 faces (2 planes, 1 torus)"},
        {"mirrored torus", [] { return mirrored(BRepPrimAPI_MakeTorus(9, 2).Shape()); },
         "1 body, 1 face (1 torus)"},
        {"rounded box", roundedBox, "1 body, 26 faces (6 planes, 12 cylinders and cones, 8 spheres)"},
        {"hollow box", hollowBox, "1 body, 7 faces (6 planes, 1 sphere)"},
        {"bored ball",
         [] {
             return BRepAlgoAPI_Cut(BRepPrimAPI_MakeSphere(5).Shape(),
                                    shifted(BRepPrimAPI_MakeCylinder(1.5, 20).Shape(), 1, 0.5, -10))
                 .Shape();
         },
         "1 body, 2 faces (1 cylinder or cone, 1 sphere)"},
        {"two cylinders in common",
         [] {
             const gp_Ax2 across(gp_Pnt(-10, 0, 0), gp_Dir(1, 0, 0));
             return BRepAlgoAPI_Common(shifted(BRepPrimAPI_MakeCylinder(3, 20).Shape(), 0, 0, -10),
                                       BRepPrimAPI_MakeCylinder(across, 2, 20).Shape())
                 .Shape();
         },
         "1 body, 4 faces (4 cylinders and cones)"},
        {"cone cut beside its axis",
         [] {
             return BRepAlgoAPI_Common(BRepPrimAPI_MakeCone(5, 0, 10).Shape(),
                                       shifted(BRepPrimAPI_MakeBox(20, 20, 20).Shape(), 1, -10, 0))
                 .Shape();
         },
         "1 body, 4 faces (2 planes, 2 cylinders and cones)"},
        {"cut torus",
         [] {
             return BRepAlgoAPI_Cut(BRepPrimAPI_MakeTorus(9, 3).Shape(),
                                    shifted(BRepPrimAPI_MakeBox(30, 30, 30).Shape(), 8, -15, -15))
                 .Shape();
         },
         "1 body, 2 faces (1 plane, 1 torus)"},
        {"turned profile", [] { return revolved(2 * pi); }, "1 body, 1 face (1 B-spline)"},
        {"part of a turned profile", [] { return revolved(2); }, "1 body, 1 face (1 B-spline)"},
        {"turned line",
         [] {
             const Handle(Geom_Line) line = new Geom_Line(gp_Pnt(4, 0, 0), gp_Dir(1, 0, 2));
             return faceOn(new Geom_SurfaceOfRevolution(line, gp_Ax1(gp_Pnt(), gp_Dir(0, 0, 1))), 0, 2 * pi,
                           -2, 5);
         },
         "1 body, 1 face (1 cylinder or cone)"},
        {"elliptic prism", ellipticPrism, "1 body, 3 faces (2 planes, 1 B-spline)"},
        {"drawn profile",
         [] {
             return faceOn(new Geom_SurfaceOfLinearExtrusion(profile(), gp_Dir(1, 3, 1)), 0.1, 0.9, -4, 3);
         },
         "1 body, 1 face (1 B-spline), 4 edges"},
        {"bent pipe", bentPipe, "1 body, 3 faces (2 planes, 1 B-spline)"},
        {"loft", loft, "1 body, 4 faces (2 planes, 2 B-splines)"},
        {"hill", [] { return faceOn(hill()); }, "1 body, 1 face (1 B-spline), 4 edges (4 B-splines)"},
        {"hill with a hole",
         [] {
             return BRepAlgoAPI_Cut(faceOn(hill()),
                                    shifted(BRepPrimAPI_MakeCylinder(3, 40).Shape(), 9, 8, -20))
                 .Shape();
         },
         "1 body, 1 face (1 B-spline), 6 edges"},
        {"raised hill", [] { return faceOn(new Geom_OffsetSurface(hill(), 0.7)); },
         "1 body, 1 face (1 B-spline)"},
        {"across the seam", [] { return periodic(1.5 * pi, 2.5 * pi); },
         "1 body, 1 face (1 B-spline), 4 edges"},
        {"beyond the seam", [] { return periodic(2.2 * pi, 2.7 * pi); },
         "1 body, 1 face (1 B-spline), 4 edges"},
        {"before the seam", [] { return periodic(-pi, 0.5 * pi); }, "1 body, 1 face (1 B-spline), 4 edges"},
        {"all around", [] { return periodic(0.5 * pi, 2.5 * pi); }, "1 body, 1 face (1 B-spline), 4 edges"},
        {"hardly before the seam", [] { return periodic(-1e-9, 0.5 * pi); },
         "1 body, 1 face (1 B-spline), 4 edges"},
        {"unevenly traced hill", unevenlyTraced, "1 body, 1 face (1 B-spline), 4 edges (4 B-splines)"},
        {"outside of a torus through its axis", [] { return faceOn(spindle(), 0, 2, -2, 1); },
         "1 body, 1 face (1 torus)"},
        {"inside of a torus through its axis", [] { return faceOn(spindle(), 0, 2, 2.5, 3.5); },
         "1 body, 1 face (1 torus)"},
        {"tip of a torus through its axis", [] { return faceOn(spindle(), 1, 6, 2.32, 2.6); },
         "1 body, 1 face (1 torus)"},
        {"both sides of a torus through its axis", [] { return faceOn(spindle(), 0, 2, 1, 3); },
         "1 body, 1 face (1 B-spline)"},
        {"double cone", [] { return faceOn(new Geom_ConicalSurface(gp_Ax3(tilted), 0.5, 2), 0, 2, -7, 3); },
         "1 body, 1 face (1 B-spline)"},
        {"part of a Bezier surface", bezier, "1 body, 1 face (1 B-spline), 4 edges"},
        {"several", several, "1 body, 10 faces (9 planes, 1 cylinder or cone)"},
        {"inside out", [] { return BRepPrimAPI_MakeCone(tilted, 4, 0, 5).Shape().Reversed(); },
         "1 body, 2 faces"},
    };
    return all;
}

TopoDS_Shape shapeNamed(const std::string& name) {
    for (const NamedShape& shape : shapes())
        if (shape.name == name) return shape.make();
    throw std::invalid_argument(name);
}

} // namespace zeq::test
