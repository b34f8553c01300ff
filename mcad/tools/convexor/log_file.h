// The log file that a host may ask for.
#pragma once

#include "zeq_api/command/options.h"

namespace zeq::convexor {

/// Starts the library's log as the general option group of a command says; without a log file name in it
/// nothing changes. The file is UTF-8 whatever encoding is asked for.
void startLog(const ImportOptions& options);

} // namespace zeq::convexor
