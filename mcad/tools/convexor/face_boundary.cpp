// Edges are put in order by the kernel where that works, and else by their vertices.
#include "convexor/face_boundary.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

#include <BRepLib.hxx>
#include <BRepTools_WireExplorer.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom2d_Line.hxx>
#include <Precision.hxx>
#include <TopExp.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Vertex.hxx>

#include "convexor/geometry_conversion.h"

namespace zeq::convexor {

Edges edgesOf(const TopoDS_Wire& wire) {
    Edges edges;
    for (TopoDS_Iterator edge(wire); edge.More(); edge.Next()) edges.push_back(TopoDS::Edge(edge.Value()));
    return edges;
}

bool leadsTo(const TopoDS_Edge& edge, const TopoDS_Edge& next) {
    return TopExp::LastVertex(edge, true).IsSame(TopExp::FirstVertex(next, true));
}

bool isChain(const Edges& edges) {
    return std::adjacent_find(edges.begin(), edges.end(), std::not_fn(leadsTo)) == edges.end();
}

namespace {

bool isRing(const Edges& edges) { return isChain(edges) && leadsTo(edges.back(), edges.front()); }

/// The rings that edges make, which may be given in any order; nothing if some edges are left over.
std::optional<std::vector<Edges>> rings(Edges edges) {
    std::vector<Edges> result;
    while (!edges.empty()) {
        Edges ring{edges.front()};
        edges.erase(edges.begin());
        while (!leadsTo(ring.back(), ring.front())) {
            const auto next = std::find_if(edges.begin(), edges.end(), [&](const TopoDS_Edge& edge) {
                return leadsTo(ring.back(), edge);
            });
            if (next == edges.end()) return std::nullopt;
            ring.push_back(*next);
            edges.erase(next);
        }
        result.push_back(std::move(ring));
    }
    return result;
}

/// Where a use of an edge begins and ends in the parameters of a face.
std::pair<gp_Pnt2d, gp_Pnt2d> endsOf(const TopoDS_Edge& edge, const TopoDS_Face& face) {
    std::pair<gp_Pnt2d, gp_Pnt2d> ends;
    BRep_Tool::UVPoints(edge, face, ends.first, ends.second);
    if (edge.Orientation() == TopAbs_REVERSED) std::swap(ends.first, ends.second);
    return ends;
}

/// Edges with others between those that do not meet, straight in the parameters of the face.
Edges bridged(const Edges& edges, const TopoDS_Face& face) {
    Edges result;
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const TopoDS_Edge& edge = edges[i];
        const TopoDS_Edge& next = edges[(i + 1) % edges.size()];
        result.push_back(edge);
        if (leadsTo(edge, next)) continue;
        const gp_Pnt2d from = endsOf(edge, face).second;
        const gp_Pnt2d to = endsOf(next, face).first;
        const double length = from.Distance(to);
        if (length == 0) continue;
        const BRep_Builder builder;
        TopoDS_Edge bridge;
        builder.MakeEdge(bridge);
        builder.UpdateEdge(bridge, new Geom2d_Line(from, gp_Vec2d(from, to)), face, Precision::Confusion());
        builder.Range(bridge, face, 0, length);
        builder.Add(bridge, TopExp::LastVertex(edge, true).Oriented(TopAbs_FORWARD));
        builder.Add(bridge, TopExp::FirstVertex(next, true).Oriented(TopAbs_REVERSED));
        if (BRepLib::BuildCurve3d(bridge)) result.push_back(bridge);
    }
    return result;
}

} // namespace

std::vector<Edges> loopsOf(const TopoDS_Wire& wire, const TopoDS_Face& face, Rigour rigour) {
    const Edges given = edgesOf(wire);
    if (given.empty()) return {};
    Edges explored;
    for (BRepTools_WireExplorer edge(wire, face); edge.More(); edge.Next())
        explored.push_back(edge.Current());
    if (explored.size() == given.size() && isRing(explored)) return {explored};
    if (const auto found = rings(given)) return *found;
    if (rigour == Rigour::closed) throw GeometryError("its boundary does not close");
    return {bridged(explored.size() == given.size() ? explored : given, face)};
}

} // namespace zeq::convexor
