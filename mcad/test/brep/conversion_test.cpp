// What becomes of shapes that are not as they should be, and of what bounds no face.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom_BezierCurve.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Wire.hxx>
#include <gp_Lin.hxx>

#include "brep/check.h"
#include "brep/count.h"
#include "brep/shapes.h"
#include "convexor/geometry_builder.h"
#include "zeq_api/exchange_mechanical/owned_entities.h"

namespace zeq {
namespace {

using convexor::BuildNotes;
using test::bodyOf;
using test::shapeNamed;
using Texts = std::vector<std::string>;

TopoDS_Shape part(const TopoDS_Shape& whole, TopAbs_ShapeEnum kind, int index) {
    TopTools_IndexedMapOfShape parts;
    TopExp::MapShapes(whole, kind, parts);
    return parts(index);
}

TopoDS_Compound compound(const std::vector<TopoDS_Shape>& parts) {
    TopoDS_Compound all;
    BRep_Builder().MakeCompound(all);
    for (const TopoDS_Shape& each : parts) BRep_Builder().Add(all, each);
    return all;
}

/// A box one of whose edges has lost its curve, which only the planes beside it could tell.
TopoDS_Shape boxWithoutCurve() {
    const TopoDS_Shape box = shapeNamed("box");
    BRep_Builder().UpdateEdge(TopoDS::Edge(part(box, TopAbs_EDGE, 1)), Handle(Geom_Curve)(), 1e-7);
    return box;
}

/// A face whose edge has lost its curve in space, but not that on the surface.
TopoDS_Shape hillWithoutCurve() {
    const TopoDS_Shape hill = shapeNamed("hill");
    BRep_Builder().UpdateEdge(TopoDS::Edge(part(hill, TopAbs_EDGE, 2)), Handle(Geom_Curve)(), 1e-7);
    return hill;
}

/// A box one of whose faces lacks an edge.
TopoDS_Shape boxWithAGap() {
    const TopoDS_Shape box = shapeNamed("box");
    TopoDS_Shape wire = part(box, TopAbs_WIRE, 1);
    wire.Free(true);
    BRep_Builder().Remove(wire, TopoDS_Iterator(wire).Value());
    return box;
}

TEST(Conversion, LosesNoMoreThanItHasTo) {
    struct Row {
        const char* name;
        TopoDS_Shape shape;
        std::string consistsOf;
        Texts errors;
        Texts warnings;
        Texts faults;
    };
    const Row rows[]{
        {"a curve that can be found again",
         hillWithoutCurve(),
         "1 body, 1 face (1 B-spline), 4 edges (4 B-splines), 4 vertices",
         {},
         {"face 1 needed healing: an edge has no curve in space"},
         {}},
        {"a curve that only the faces tell",
         boxWithoutCurve(),
         "1 body, 6 faces (6 planes), 12 edges (12 lines), 8 vertices",
         {},
         {"face 1 needed healing: an edge has no curve in space",
          "face 3 needed healing: an edge has no curve in space"},
         {}},
        {"a boundary that does not close",
         boxWithAGap(),
         "1 body, 6 faces (6 planes), 13 edges (13 lines), 8 vertices",
         {},
         {"face 1 needed healing: its boundary does not close", "1 solid is not closed, and sent as faces"},
         {}},
        {"edges that bound no face",
         compound({BRepBuilderAPI_MakePolygon(gp_Pnt(0, 0, 0), gp_Pnt(3, 0, 0), gp_Pnt(3, 4, 0), true).Wire(),
                   BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 1), gp_Pnt(0, 0, 2)).Edge(),
                   BRepBuilderAPI_MakeVertex(gp_Pnt(7, 7, 7)).Vertex()}),
         "1 body, 0 faces, 5 edges (4 lines, 1 point), 6 vertices",
         {},
         {},
         {}},
        {"an edge without end",
         BRepBuilderAPI_MakeEdge(gp_Lin()).Edge(),
         "0 bodies, 0 faces, 0 edges, 0 vertices",
         {"edge 1 is left out: an edge has no end"},
         {},
         {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        BuildNotes notes;
        const OwnedEntities made(bodyOf(row.shape, 1, &notes));
        brep::Count count;
        count.add(made.list);
        EXPECT_EQ(count.text(), row.consistsOf);
        EXPECT_EQ(notes.errors, row.errors);
        EXPECT_EQ(notes.warnings, row.warnings);
        EXPECT_EQ(brep::summarized(brep::check(made.list).faults), row.faults);
    }
}

TEST(Conversion, MakesTolerancesTrue) {
    const TopoDS_Shape box = shapeNamed("box");
    BRep_Builder().UpdateEdge(TopoDS::Edge(part(box, TopAbs_EDGE, 3)), 0.01);
    BRep_Builder().UpdateVertex(TopoDS::Vertex(part(box, TopAbs_VERTEX, 2)), 0.02);
    const OwnedEntities made(bodyOf(box, 0.1));
    ENTITY_LIST all = made.list;
    for (int i = 0; i < all.count(); ++i) all[i]->copy_scan(all, SCAN_DELETE);
    std::vector<double> edges;
    std::vector<double> vertices;
    for (int i = 0; i < all.count(); ++i) {
        if (is_TEDGE(all[i])) edges.push_back(static_cast<const TEDGE*>(all[i])->get_tolerance());
        if (is_TVERTEX(all[i])) vertices.push_back(static_cast<const TVERTEX*>(all[i])->get_tolerance());
        if (is_COEDGE(all[i])) {
            const auto& coedge = static_cast<const COEDGE&>(*all[i]);
            EXPECT_EQ(is_TCOEDGE(&coedge), is_TEDGE(coedge.edge()));
        }
    }
    EXPECT_EQ(edges, std::vector<double>{0.001});
    EXPECT_EQ(vertices, std::vector<double>{0.002});
}

/// A box with an edge that lies so far from where its faces are.
TopoDS_Shape boxWithBentEdge(double off) {
    const TopoDS_Shape box = shapeNamed("box");
    const TopoDS_Edge edge = TopoDS::Edge(part(box, TopAbs_EDGE, 1));
    double first = 0;
    double last = 0;
    const Handle(Geom_Curve) line = BRep_Tool::Curve(edge, first, last);
    const gp_Pnt from = line->Value(first);
    const gp_Pnt to = line->Value(last);
    TColgp_Array1OfPnt poles(1, 3);
    poles(1) = from;
    poles(2) = gp_Pnt((from.XYZ() + to.XYZ()) / 2).Translated(gp_Vec(2 * off, 2 * off, 2 * off));
    poles(3) = to;
    BRep_Builder().UpdateEdge(edge, new Geom_BezierCurve(poles), 1e-7);
    BRep_Builder().Range(edge, 0, 1);
    return box;
}

TEST(Conversion, TellsGaps) {
    const std::string told = "1 edge is farther off than stated: edge 7 lies ";
    const struct {
        double off;
        Texts warnings;
        std::size_t faults; ///< one a face
    } rows[]{{1e-8, {}, 0},
             {0.002, {told + "0.002 from face 1, where the tolerance is 1e-07"}, 0},
             {0.5, {told + "0.499 from face 1, where the tolerance is 1e-07"}, 2}};
    for (const auto& [off, warnings, faults] : rows) {
        BuildNotes notes;
        const OwnedEntities made(bodyOf(boxWithBentEdge(off), 1, &notes));
        EXPECT_EQ(notes.warnings, warnings);
        EXPECT_EQ(brep::check(made.list).faults.size(), faults);
    }
}

} // namespace
} // namespace zeq
