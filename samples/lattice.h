// A synthetic assembly of any size, for tests and measurements.
#pragma once

#include "model.h"

namespace samples {

struct LatticeSize {
    int instances;       ///< placed parts
    int parts = 0;       ///< different ones, which take turns; 0: each group has one of its own
    int groupSize = 100; ///< the instances of a sub-assembly
    int faces = 6;       ///< of each part; blocks have 6, others are perforated plates
};

/// An assembly with exactly so many placed parts, in groups that each are a sub-assembly of their own.
Model makeLattice(const LatticeSize& size);

} // namespace samples
