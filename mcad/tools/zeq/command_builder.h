// The command documents that zeq sends or prints.
#pragma once

#include "zeq/conversation.h"

namespace zeq::host {

/// The command that the settings describe.
/// @throws Failure when they are wrong
Request buildCommand(const Host& host);

/// The command that a file holds, as it is stored there. What the linter finds is told as warnings.
/// @throws Failure if the file holds no command
Request readCommand(const Host& host);

} // namespace zeq::host
