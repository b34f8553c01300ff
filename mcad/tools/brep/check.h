// Whether restored geometry holds together.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/acis/acis.h"

namespace zeq::brep {

/// What was found wrong, and how far topology and geometry are apart.
struct Check {
    /// What lies farther than this from where it belongs is a fault.
    static constexpr double tolerance = 1e-3;

    std::vector<std::string> faults; ///< each a sentence; empty when all is sound
    double vertexGap = 0;            ///< largest distance of a vertex from the end of its edge's curve
    double edgeGap = 0;              ///< largest distance of an edge's curve from the surfaces of its faces
    std::uint64_t unchecked = 0;     ///< uses of edges whose distance cannot be told

    void add(const Check& other);
};

/// Checks the bodies: rings and partners of coedges, the use of each edge once in either direction in the
/// shells of solids, the Euler characteristic of these shells, and the distances. Distances that are no
/// numbers count as infinite.
Check check(const ENTITY_LIST& entities);

} // namespace zeq::brep
