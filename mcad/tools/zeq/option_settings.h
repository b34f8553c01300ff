// What the user says of a command's options, key by key.
#pragma once

#include <string>

#include "transport/signal_pipe.h"
#include "zeq/settings.h"
#include "zeq_api/command/options.h"

namespace zeq::host {

/// Puts the groups of --format-options and then the keys of --set into the options.
/// @throws Failure for an unknown group, key or value, naming what there is
void applySettings(ConvexorOptions& options, const Settings& settings, transport::SignalPipe& signals);

} // namespace zeq::host
