// Where an edge runs on the surface of a face, and how far from it.
#pragma once

#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>

#include "convexor/geometry_conversion.h"
#include "platform/acis/acis.h"

namespace zeq::convexor {

/// The use of an edge by a face.
struct Trace {
    PCURVE* pcurve; ///< null where the surface is analytic
    double gap;     ///< the largest distance of the edge from the surface
};

/// Traces an edge on a face, with the parameters of the curve that it has become. The original's curve is
/// kept where it stays within the edge's tolerance; else the edge is found again on the surface.
/// @param tolerance how near the edge what is found again has to come, should it lie on the surface
/// @throws GeometryError if the edge has no original curve on a B-spline surface
Trace trace(const TopoDS_Edge& edge, const Piece& made, const TopoDS_Face& face, const Support& support,
            double tolerance);

} // namespace zeq::convexor
