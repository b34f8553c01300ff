// Waiting for a descriptor without becoming deaf to signals.
#pragma once

#include <string>

#include "transport/signal_pipe.h"

namespace zeq::host {

/// @throws Failure if a signal asks to stop
void throwIfSignalled(transport::SignalPipe& signals);

/// Waits until `fd` is ready for `events` of poll().
/// @throws Failure if a signal asks to stop
void waitUntilReady(int fd, short events, transport::SignalPipe& signals);

/// All bytes of a file; "-" is standard input.
/// @throws Failure if it cannot be read
std::string readAll(const std::string& path, transport::SignalPipe& signals);

} // namespace zeq::host
