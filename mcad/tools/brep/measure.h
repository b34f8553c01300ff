// How large bodies are.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "brep/check.h"
#include "brep/work.h"
#include "platform/acis/acis.h"

namespace zeq::brep {

/// Lengths in millimetres.
struct Measure {
    std::uint64_t faces = 0;
    std::uint64_t edges = 0; ///< those that are only a point included
    std::uint64_t vertices = 0;
    double length = 0; ///< of all edges
    double area = 0;   ///< of all faces
    SPAbox box;
    std::uint64_t unmeasured = 0; ///< faces and edges whose geometry cannot be evaluated
    std::vector<Fault> inverted;  ///< faces that lie to the right of their loops, and so outside of them
};

/// The length of an edge in the coordinates of its body; nothing if its curve cannot be evaluated.
std::optional<double> lengthOf(const EDGE& edge);

/// Measures the bodies on the list.
///
/// Lengths are integrals over the curves; areas are integrals along the boundaries of faces in the parameter
/// planes of their surfaces (Green's theorem), with no tessellation in between. Both are exact to about 1e-10
/// as far as curves, pcurves and surfaces agree. The box holds the extreme points of edges and faces, to 1e-9
/// of its size.
Measure measure(const ENTITY_LIST& entities, Supervisor* supervisor = nullptr);

} // namespace zeq::brep
