// The scene of an assembly: where its parts are and how they look there.
#pragma once

#include <cstddef>

#include "zeq_api/exchange_structure/product_structure.h"
#include "zeq_api/exchange_visualization/scene.h"

namespace zeq::convexor {

/// A group for each block reference, named, placed and coloured as that, below a root. There are no meshes: each
/// part has a scene of its own.
/// @param most how many groups there may be; those nearest to the root are kept
/// @param leftOut set to how many block references of the groups that are there have none
ExcVisualizationDataPtr buildAssemblyScene(const ExcProductStructure& product, std::size_t most,
                                           std::size_t& leftOut);

} // namespace zeq::convexor
