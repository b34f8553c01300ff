// The boundaries of faces, and what there is in their place.
#pragma once

#include <vector>

#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Wire.hxx>

namespace zeq::convexor {

using Edges = std::vector<TopoDS_Edge>;

/// How much has to be right.
enum class Rigour {
    closed, ///< a face whose boundary does not close is a loss
    any     ///< gaps are closed by edges that the original does not have
};

/// As the wire has them.
Edges edgesOf(const TopoDS_Wire& wire);

/// Whether an edge ends at the vertex where the next one begins.
bool leadsTo(const TopoDS_Edge& edge, const TopoDS_Edge& next);

/// Whether each edge leads to the next.
bool isChain(const Edges& edges);

/// The loops of a boundary, the edges of each one after the other.
/// @param face oriented forward
/// @throws GeometryError if they do not close
std::vector<Edges> loopsOf(const TopoDS_Wire& wire, const TopoDS_Face& face, Rigour rigour);

} // namespace zeq::convexor
