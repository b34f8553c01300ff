// The translator's result, and documents that should not have come.
#pragma once

#include "zeq/conversation.h"
#include "zeq/failure.h"

namespace zeq::host {

/// Tells warnings to the user.
/// @return whether it is the final result
/// @throws Failure, with the reason alone, for a result that reports one
bool takeResult(const Host& host, const Document& document);

/// The failure of a document that is no answer to the command.
Failure unexpected(const Document& document);

} // namespace zeq::host
