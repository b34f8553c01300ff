// Models as pictures.
#pragma once

#include "zeq/conversation.h"
#include "zeq/output.h"

namespace zeq::host {

/// Writes a PNG of the file.
/// @throws Failure if that cannot be
void writePicture(const Host& host, Output& output);

} // namespace zeq::host
