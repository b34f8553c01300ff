// What a STEP file holds, by the kinds of things that are accounted for.
#pragma once

#include <cstdint>
#include <vector>

#include "step/products.h"

namespace zeq::step {

/// The numbers of the instances of each kind.
struct Contents {
    std::vector<std::uint64_t> parts;
    std::vector<std::uint64_t> instances;
    std::vector<std::uint64_t> faces; ///< of boundary representations
    std::vector<std::uint64_t>
        semanticAnnotations; ///< dimensions, tolerances, datums and their targets, notes
    std::vector<std::uint64_t> graphicalAnnotations;
    std::vector<std::uint64_t> views;
};

/// Counts from the index alone, whatever the readers of these things make of them.
Contents readContents(const StepFile& file, const Products& products);

} // namespace zeq::step
