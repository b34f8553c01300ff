// The area of a face.
#pragma once

#include <optional>

#include "brep/boundary.h"
#include "brep/work.h"
#include "platform/acis/acis.h"

namespace zeq::brep {

/// The area within a boundary on its surface, by Green's theorem: the integral of dA over a face is the
/// integral of F dv along its boundary, where F is the integral of dA/(du dv) along u up to there. Negative
/// if the face lies on the wrong side of its loops; nothing if it cannot be told.
std::optional<double> areaOf(const SURFACE& surface, const Boundary& boundary, const Work& work);

} // namespace zeq::brep
