// Turns the exact geometry of a part into entities of the modelling kernel.
#pragma once

#include <stdexcept>

#include <TopoDS_Shape.hxx>

#include "platform/acis/acis.h"

namespace zeq::convexor {

/// Geometry that cannot be expressed, with a reason for the user in UTF-8.
class GeometryError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Makes a body of the shape: a lump for each solid, and one for each shell and face outside of solids.
///
/// Planes, cylinders, cones, spheres, tori, lines, circles and ellipses stay what they are; everything else
/// becomes B-splines. Every face and edge carries an ATTRIB_CONVEXOR_ID with its index in the shape, from 1.
/// @param scale what all lengths are multiplied by
/// @return the body, which the caller deletes; null if the shape has no faces
/// @throws GeometryError if it cannot be expressed
BODY* buildBody(const TopoDS_Shape& shape, double scale);

} // namespace zeq::convexor
