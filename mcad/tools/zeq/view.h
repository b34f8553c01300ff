// Models as pages for a browser.
#pragma once

#include "zeq/conversation.h"
#include "zeq/output.h"

namespace zeq::host {

/// Writes a page that shows the file.
/// @throws Failure if that cannot be
void writeView(const Host& host, Output& output);

} // namespace zeq::host
