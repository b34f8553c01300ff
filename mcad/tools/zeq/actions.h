// The commands that only ask the translator about itself.
#pragma once

#include "zeq/conversation.h"
#include "zeq/output.h"

namespace zeq::host {

/// Shows whether the translator answers.
void ping(const Host& host, Output& output);

/// Shows the translator's description of itself.
void showInfo(const Host& host, Output& output);

/// Shows the versions; those of the translator only if it can be reached.
void showVersion(const Host& host, Output& output);

} // namespace zeq::host
