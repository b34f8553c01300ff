// Triangles and polylines of single faces and edges, as the host draws them.
#pragma once

#include <cstddef>
#include <vector>

#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Vertex.hxx>

#include "zeq_api/exchange_visualization/mesh.h"

namespace zeq::convexor {

/// How fine curves and surfaces are cut into pieces.
struct Fineness {
    double chord; ///< how far a piece may lie from what it stands for, in millimetres
    double angle; ///< between neighbouring pieces, in radians
};

/// The fineness for a part: a chord of a thousandth of its diagonal, an angle of 20 degrees.
/// @param chord in millimetres, if it is not 0, in place of that; nothing is ever finer than a nanometre, and a
/// millionth of the diagonal
Fineness finenessFor(const TopoDS_Shape& part, double chord = 0);

/// Gives the faces of a part triangles and its edges polylines, both kept in the shape.
/// @throws Standard_Failure when the kernel gives up
void tessellate(const TopoDS_Shape& part, const Fineness& fineness);

/// The same, inTime(). If it was given up, the part's triangles must not be touched.
/// @return whether it is done
bool tessellateInTime(const TopoDS_Shape& part, const Fineness& fineness);

/// The triangles of a face, outward and as one list of them, with unit normals of its surface; at poles, apexes
/// and wherever else the surface has none, with those of the triangles around. Null if it has no triangles, or if they
/// reach farther than numbers do.
/// @param scale what all lengths are multiplied by
ExcVisuFacePtr displayFace(const TopoDS_Face& face, double scale);

/// The polyline of an edge, on the very nodes of the triangles of its faces; of one that bounds no face, and of
/// one whose faces have no triangles, on its curve. Null for one that is a point or has no curve.
ExcVisuEdgePtr displayEdge(const TopoDS_Edge& edge, double scale, const Fineness& fineness);

/// Appends the coordinates of a vertex, multiplied by `scale`, unless they reach farther than numbers do.
void appendPoint(std::vector<float>& points, const TopoDS_Vertex& vertex, double scale);

/// 0, 1, 2 and so on: the indices of so many points.
std::vector<int> countUp(std::size_t count);

} // namespace zeq::convexor
