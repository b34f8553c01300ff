// Documents that zeq --json wrote.
#pragma once

#include <string>

#include "zeq/conversation.h"
#include "zeq/receiver.h"

namespace zeq::host {

/// Whether a file begins like a JSON document, which no CAD file does.
bool looksKept(const std::string& file);

/// Reads the documents of a report again, with the contents of their buffers; geometry only if facts are wanted. What is
/// wrong in single ones is told as a warning.
/// @throws Failure if it cannot be read, or is no report of an import
void readKept(const Host& host, Import& import);

} // namespace zeq::host
