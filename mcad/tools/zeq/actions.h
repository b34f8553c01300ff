// The commands that need no more than an answer.
#pragma once

#include "zeq/conversation.h"
#include "zeq/output.h"

namespace zeq::host {

/// Shows whether the translator answers.
void ping(const Host& host, const Request& request, Output& output);

/// Shows the translator's description of itself.
void showInfo(const Host& host, const Request& request, Output& output);

/// Sends any other command and waits for its result.
void execute(const Host& host, const Request& request, Output& output);

/// Shows the versions; those of the translator only if it can be reached.
void showVersion(const Host& host, Output& output);

} // namespace zeq::host
