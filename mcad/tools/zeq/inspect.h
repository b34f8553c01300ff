// What is in a kept image or in a shared buffer with geometry.
#pragma once

#include "zeq/conversation.h"
#include "zeq/output.h"

namespace zeq::host {

/// Shows an image: its header, what records there are, its bodies, faces and edges with their ids and
/// attributes, and its faults; or, with --records, every record. A shared buffer stays where it is.
/// @return the exit code of the verdict: whether the image is sound
/// @throws Failure if it cannot be read
int inspectImage(const Host& host, Output& output);

} // namespace zeq::host
