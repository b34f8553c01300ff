// Usages of products that a kernel need not read: it takes a time for each that grows with their number.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "step/placement.h"
#include "step/products.h"

namespace zeq::step {

/// An AXIS2_PLACEMENT_3D as it stands in the file.
struct Axes {
    Vec origin;
    std::optional<Vec> axis, reference;
    std::uint64_t representation = 0; ///< that it belongs to, whose unit of length it is in
};

/// A product in the list of those that another one uses.
struct Usage {
    std::uint64_t part; ///< the number of its definition
    bool isSpared = false;
    bool isPlain = false; ///< nothing is said of it but its name and its place; else what follows is not set
    std::wstring name;
    Axes from; ///< in the part's coordinates
    Axes to;   ///< where that lies in the user's
};

struct SparedUsages {
    /// All usages by those products that have spared ones, in the order of the file, by their definitions.
    std::unordered_map<std::uint64_t, std::vector<Usage>> byUser;
    std::size_t count = 0; ///< of spared ones
    /// What no other instance needs when the usages are left out; others refer to them in lists alone.
    std::vector<Instance> leftOut;
};

/// Finds the usages that are plain, and neither the first plain one of their part nor the first one of their user: so
/// each product is still used wherever it was, and has something in it if it had.
/// @param least nothing is spared if there are fewer, which take the kernel no time
SparedUsages findSparedUsages(const StepFile& file, const Products& products, std::size_t least = 100);

} // namespace zeq::step
