// Heals faces that cannot be converted as they are.
#pragma once

#include "convexor/geometry_draft.h"

namespace zeq::convexor {

/// A copy of a part, and the numbers that its faces and edges had in the original.
struct MendedPart {
    TopoDS_Shape shape;
    Numbering numbering;
};

/// Heals the lost faces of a draft on a copy of the part; what cannot be healed stays as it is.
MendedPart mend(const TopoDS_Shape& part, const Numbering& numbering, const std::vector<Draft::Loss>& losses);

} // namespace zeq::convexor
