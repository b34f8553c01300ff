// The command line of zeq.
#pragma once

#include "zeq/settings.h"

namespace zeq::host {

/// @throws Failure for wrong usage, with the nearest right word where there is one
Settings parseCommandLine(int argc, char** argv);

} // namespace zeq::host
