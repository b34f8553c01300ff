// Models as binary glTF.
#pragma once

#include "zeq/conversation.h"
#include "zeq/output.h"

namespace zeq::host {

/// Writes what is to be seen of the file.
/// @throws Failure if that cannot be
void writeGltf(const Host& host, Output& output);

} // namespace zeq::host
