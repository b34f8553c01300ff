// Option groups from a file of the user's.
#pragma once

#include <string>

#include "transport/signal_pipe.h"
#include "zeq_api/command/options.h"

namespace zeq::host {

/// Puts each element of a JSON array, read from a file or "-" for standard input, into the options.
/// @throws Failure if that is no array of option groups, naming the element
void readFormatOptions(const std::string& path, transport::SignalPipe& signals, ImportOptions& options);

} // namespace zeq::host
