// Places the parts.
#pragma once

#include <cstdint>
#include <unordered_map>

#include "scene/scene.h"
#include "scene/warnings.h"
#include "zeq_api/exchange_structure/product_structure.h"

namespace zeq::scene {

/// Which part a block became.
using PartOfBlock = std::unordered_map<std::uint64_t, std::uint32_t>;

/// Adds an instance for each occurrence of each block below those that are there, which is the product's: depth first,
/// mostInstances in all. One of a missing block, one inside the same block and one without a sound placement are left
/// out, with what is below them.
void addInstances(const ExcProductStructure& structure, const PartOfBlock& parts, Scene& scene,
                  Warnings& warnings);

} // namespace zeq::scene
