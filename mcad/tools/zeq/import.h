// The commands import and tree.
#pragma once

#include "zeq/conversation.h"
#include "zeq/output.h"

namespace zeq::host {

/// Has the file imported and shows the tree, and for import the summary.
void importFile(const Host& host, Output& output);

} // namespace zeq::host
