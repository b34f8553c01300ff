// By what a host can tell whether the geometry of a part arrived whole.
#pragma once

#include <TopoDS_Shape.hxx>

#include "convexor/length_unit.h"
#include "zeq_api/exchange_common/misc_data.h"

namespace zeq::convexor {

/// The group of properties "geometry check": numbers of faces, edges and vertices, total length of the edges,
/// area of the faces and bounding box, as Open CASCADE computes them from the shape. A face counts as often
/// as it is used. Without faces the group is empty.
/// @throws Standard_Failure when the kernel gives up
ExcMiscPropertiesGroup geometryFigures(const TopoDS_Shape& shape, const LengthUnit& unit);

} // namespace zeq::convexor
