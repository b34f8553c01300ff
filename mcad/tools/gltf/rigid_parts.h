// Placements as nodes can hold them: a rotation after a scaling along the axes.
#pragma once

#include <optional>

#include "scene/space.h"

namespace zeq::gltf {

/// For a placement whose axes are not at right angles: the rotation that comes first, so that placement = outer * inner
/// with the axes of the outer one at right angles. Nothing when they already are.
struct RigidParts {
    scene::Placement outer, inner;
};
std::optional<RigidParts> rigidParts(const scene::Placement& placement);

} // namespace zeq::gltf
