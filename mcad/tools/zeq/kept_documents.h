// Documents that zeq --json wrote.
#pragma once

#include <string>

#include "scene/documents.h"
#include "zeq/conversation.h"

namespace zeq::host {

/// Whether a file begins like a JSON document, which no CAD file does.
bool looksKept(const std::string& file);

/// Reads the documents of a report again, with the contents of their buffers. What is wrong in single ones is told as a
/// warning.
/// @throws Failure if it cannot be read, or is no report of an import
scene::Documents readKept(const Host& host);

} // namespace zeq::host
