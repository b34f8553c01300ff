// What the translator says about itself.
#pragma once

#include "zeq_api/convexor_info/convexor_info.h"

namespace zeq::convexor {

/// Name, version, kernel and the formats that are really read.
ConvexorInfo describeTranslator();

} // namespace zeq::convexor
