// Solid modelling of the sample parts: primitives, booleans and fillets.
#include "parts.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepOffsetAPI_ThruSections.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Wire.hxx>
#include <gp_Ax2.hxx>
#include <gp_Circ.hxx>
#include <gp_Elips.hxx>

namespace samples {

namespace {

TopoDS_Shape box(const gp_Pnt& from, const gp_Pnt& to) { return BRepPrimAPI_MakeBox(from, to).Shape(); }

TopoDS_Shape cylinder(const gp_Pnt& from, const gp_Dir& axis, double radius, double length) {
    return BRepPrimAPI_MakeCylinder(gp_Ax2(from, axis), radius, length).Shape();
}

/// The boolean results are compounds around one solid; a part is the solid itself.
TopoDS_Shape solidOf(const TopoDS_Shape& shape) {
    const TopExp_Explorer solids(shape, TopAbs_SOLID);
    return solids.More() ? solids.Current() : shape;
}

TopoDS_Shape cut(TopoDS_Shape body, std::initializer_list<TopoDS_Shape> tools) {
    for (const TopoDS_Shape& tool : tools) body = BRepAlgoAPI_Cut(body, tool).Shape();
    return solidOf(body);
}

TopoDS_Shape fuse(TopoDS_Shape body, std::initializer_list<TopoDS_Shape> tools) {
    for (const TopoDS_Shape& tool : tools) body = BRepAlgoAPI_Fuse(body, tool).Shape();
    return solidOf(body);
}

/// Rounds the edges of a block that run along z.
TopoDS_Shape roundUprights(const TopoDS_Shape& block, double radius) {
    BRepFilletAPI_MakeFillet fillet(block);
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(block, TopAbs_EDGE, edges);
    for (int i = 1; i <= edges.Extent(); ++i) {
        const TopoDS_Edge& edge = TopoDS::Edge(edges(i));
        const gp_Pnt first = BRep_Tool::Pnt(TopExp::FirstVertex(edge));
        const gp_Pnt last = BRep_Tool::Pnt(TopExp::LastVertex(edge));
        if (gp_Vec(first, last).IsParallel(gp_Vec(0, 0, 1), 1e-9)) fillet.Add(radius, edge);
    }
    return fillet.Shape();
}

/// A plate with its lower corner at a point, and a square grid of holes.
TopoDS_Shape perforatedPlate(const gp_Pnt& corner, int holes) {
    constexpr double pitch = 10;
    const int columns = std::max(1, static_cast<int>(std::ceil(std::sqrt(holes))));
    const double size = pitch * columns;
    const gp_XYZ from = corner.XYZ();
    const TopoDS_Wire rim = BRepBuilderAPI_MakePolygon(
        from, from + gp_XYZ(size, 0, 0), from + gp_XYZ(size, size, 0), from + gp_XYZ(0, size, 0), true);
    BRepBuilderAPI_MakeFace face(rim);
    for (int i = 0; i < holes; ++i) {
        const int row = i / columns;
        const gp_XYZ center = from + pitch * gp_XYZ(i % columns + 0.5, row + 0.5, 0);
        const TopoDS_Edge edge = BRepBuilderAPI_MakeEdge(gp_Circ(gp_Ax2(center, gp::DZ()), pitch / 4));
        face.Add(TopoDS::Wire(BRepBuilderAPI_MakeWire(edge).Wire().Reversed()));
    }
    return BRepPrimAPI_MakePrism(face, gp_Vec(0, 0, 2)).Shape();
}

} // namespace

TopoDS_Shape makeBase() {
    const TopoDS_Shape plate = roundUprights(box({0, -55, 0}, {220, 55, 18}), 12);
    const TopoDS_Shape body =
        fuse(plate, {box({50, -20, 18}, {190, 20, 30}), box({30, -50, 18}, {70, 50, 75})});
    const auto hole = [](double x, double y) { return cylinder({x, y, -1}, gp::DZ(), 5.5, 20); };
    return cut(body, {hole(15, -40), hole(205, -40), hole(15, 40), hole(205, 40)});
}

TopoDS_Shape makeJawPlate() {
    const TopoDS_Shape plate = box({0, -50, 0}, {8, 50, 30});
    const auto bore = [](double y) { return cylinder({-1, y, 15}, gp::DX(), 3.2, 10); };
    const auto sink = [](double y) {
        return BRepPrimAPI_MakeCone(gp_Ax2(gp_Pnt(4, y, 15), gp::DX()), 3.2, 7.2, 4).Shape();
    };
    return cut(roundUprights(plate, 1), {bore(-30), bore(30), sink(-30), sink(30)});
}

TopoDS_Shape makeSlide() {
    const TopoDS_Shape body = roundUprights(box({0, -50, 0}, {45, 50, 57}), 6);
    return cut(body, {box({-1, -20, -1}, {46, 20, 12}), cylinder({-1, 0, 32}, gp::DX(), 8.2, 47)});
}

TopoDS_Shape makeCarrier() {
    const TopoDS_Shape body = roundUprights(box({0, -22, 0}, {16, 22, 48}), 4);
    return cut(body, {box({-1, -12, -1}, {17, 12, 12}), cylinder({-1, 0, 32}, gp::DX(), 8.2, 18)});
}

TopoDS_Shape makeSpindle() {
    const TopoDS_Shape rod = cylinder({-110, 0, 0}, gp::DX(), 8, 140);
    const TopoDS_Shape collar = cylinder(gp::Origin(), gp::DX(), 13, 6);
    const TopoDS_Shape head = cylinder({22, 0, 0}, gp::DX(), 12, 24);
    return cut(fuse(rod, {collar, head}), {cylinder({34, -20, 0}, gp::DY(), 5.1, 40)});
}

TopoDS_Shape makeRetainingRing() {
    return BRepPrimAPI_MakeTorus(gp_Ax2(gp::Origin(), gp::DX()), 9.5, 1.5).Shape();
}

TopoDS_Shape makeHandleBar() { return cylinder(gp::Origin(), gp::DY(), 5, handleLength); }

TopoDS_Shape makeKnob() {
    const TopoDS_Shape ball =
        BRepPrimAPI_MakeSphere(gp_Ax2(gp_Pnt(0, 7, 0), gp_Dir(0, 1, 0)), 9, -M_PI / 4, M_PI / 2).Shape();
    return cut(ball, {cylinder({0, -1, 0}, gp::DY(), 4, 9)});
}

TopoDS_Shape makeBolt() {
    BRepBuilderAPI_MakePolygon outline;
    for (int corner = 0; corner < 6; ++corner) {
        const double angle = corner * M_PI / 3;
        outline.Add(gp_Pnt(9.8 * std::cos(angle), 9.8 * std::sin(angle), 0));
    }
    outline.Close();
    const TopoDS_Shape head =
        BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeFace(outline.Wire()).Face(), gp_Vec(0, 0, 6.4)).Shape();
    const TopoDS_Shape tip =
        BRepPrimAPI_MakeCone(gp_Ax2(gp_Pnt(0, 0, -30), gp_Dir(0, 0, -1)), 5, 3.5, 1.5).Shape();
    return fuse(head, {cylinder({0, 0, -30}, gp::DZ(), 5, 30), tip});
}

TopoDS_Shape makeWasher() {
    return cut(cylinder({0, 0, -washerThickness}, gp::DZ(), 10, washerThickness),
               {cylinder({0, 0, -washerThickness - 1}, gp::DZ(), 5.25, washerThickness + 2)});
}

TopoDS_Shape makeGrip() {
    struct Section {
        double z, x, width, depth;
    };
    BRepOffsetAPI_ThruSections grip(true);
    for (const Section& section : {Section{0, 0, 16, 12}, Section{25, 2, 19, 14}, Section{55, -1, 15, 13},
                                   Section{85, 1, 18, 15}, Section{100, 4, 12, 9}}) {
        const gp_Elips outline(gp_Ax2(gp_Pnt(section.x, 0, section.z), gp::DZ()), section.width,
                               section.depth);
        grip.AddWire(BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(outline).Edge()));
    }
    const TopoDS_Shape dent = BRepPrimAPI_MakeSphere(gp_Pnt(2, 24, 70), 14).Shape();
    return cut(grip.Shape(), {cylinder({0, 0, -1}, gp::DZ(), 5, 61), dent});
}

TopoDS_Shape makeBracket() {
    const TopoDS_Shape body = fuse(box({0, 0, 0}, {80, 50, 10}), {box({0, 40, 0}, {80, 50, 50})});
    return cut(body, {cylinder({20, 18, -1}, gp::DZ(), 5, 12), cylinder({60, 18, -1}, gp::DZ(), 5, 12),
                      cylinder({40, 39, 32}, gp::DY(), 8, 12)});
}

TopoDS_Shape makeBlock(double length, double width, double height) {
    return box(gp::Origin(), {length, width, height});
}

TopoDS_Shape makePlates(int faces) {
    constexpr int flat = 6; // faces of a plate without holes
    constexpr int most = 26;
    constexpr double distance = 5;
    TopoDS_Compound plates;
    BRep_Builder().MakeCompound(plates);
    for (int made = 0, height = 0; made < faces; made += most, ++height) {
        const int holes = std::max(0, std::min(most, faces - made) - flat);
        BRep_Builder().Add(plates, perforatedPlate({0, 0, distance * height}, holes));
    }
    return plates;
}

} // namespace samples
