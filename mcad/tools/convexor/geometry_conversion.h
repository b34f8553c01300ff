// Turns surfaces and curves into geometry of the modelling kernel.
#pragma once

#include <array>
#include <stdexcept>

#include <Geom2d_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <gp_Pnt.hxx>
#include <gp_Pnt2d.hxx>

#include "platform/acis/acis.h"

namespace zeq::convexor {

/// Geometry that cannot be expressed, with a reason for the user in UTF-8.
class GeometryError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

inline SPAposition position(const gp_Pnt& p) { return {p.X(), p.Y(), p.Z()}; }
inline SPApar_pos position(const gp_Pnt2d& p) { return {p.X(), p.Y()}; }
bs2_curve bspline(const Geom2d_BSplineCurve& curve);

/// A surface of the kernel, and what became of the original on the way.
struct Support {
    SURFACE* surface;
    bool isOpposite = false;                 ///< the normal is the opposite of the original's
    Handle(Geom_BSplineSurface) spline = {}; ///< the same surface; null if it is none
    bool keepsParameters = false;            ///< of the original
    std::array<double, 4> bounds = {};       ///< of the face in them: u from and to, v from and to
};

/// @param tolerance how far from the original something may be that cannot be expressed exactly
/// @throws GeometryError if it cannot be expressed, as the following function
Support support(const TopoDS_Face& face, double tolerance);

/// A curve of the kernel with the range of an edge.
struct Piece {
    CURVE* curve;
    SPAinterval range;
};

Piece piece(const TopoDS_Edge& edge);

} // namespace zeq::convexor
