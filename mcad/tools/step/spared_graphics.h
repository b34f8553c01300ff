// Triangles and polylines that a kernel need not read: it takes a time for a list that grows with the square of its
// length.
#pragma once

#include <vector>

#include "step/step_file.h"

namespace zeq::step {

/// Simple instances of tessellated items and their points that have long lists, of which a kernel that reads no
/// tessellation needs nothing but that they are there.
std::vector<Instance> findSparedGraphics(const StepFile& file);

} // namespace zeq::step
