// A synthetic assembly of any size, for tests and measurements.
#pragma once

#include "model.h"

namespace samples {

/// An assembly with exactly `instances` placed parts, in groups of up to a hundred that each are a
/// sub-assembly of their own.
Model makeLattice(int instances);

} // namespace samples
