// The log file that a host may ask for.
#pragma once

#include "zeq_api/format_options/common_options.h"

namespace zeq::convexor {

/// Starts the library's log as the group says; without a log file name in it nothing changes. The file is
/// UTF-8 whatever encoding is asked for.
void startLog(const OptionsGeneral& options);

} // namespace zeq::convexor
