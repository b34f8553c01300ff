// Figures of a product structure, counted without walking each occurrence.
#pragma once

#include <cstdint>
#include <limits>

#include "zeq_api/exchange_structure/product_structure.h"

namespace zeq::host {

inline constexpr std::uint64_t mostInstances = std::numeric_limits<std::uint64_t>::max();

struct StructureCount {
    std::uint64_t blocks = 0;
    std::uint64_t parts = 0;
    /// Blocks that no instance leads to.
    std::uint64_t unused = 0;
    /// References, each counted once, to blocks that are not there.
    std::uint64_t dangling = 0;
    /// Occurrences: every reference as often as the blocks above it occur. Sticks at mostInstances.
    std::uint64_t instances = 0;
    /// Levels of instances.
    std::uint64_t depth = 0;
    /// Whether some block contains itself. Such an instance counts, but not what is below it.
    bool cyclic = false;
};

/// Takes linear time, however often blocks are shared, and no stack, however deep they nest.
StructureCount count(const ExcProductStructure& structure);

} // namespace zeq::host
