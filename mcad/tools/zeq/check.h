// Checking of documents that somebody wrote.
#pragma once

#include "zeq/conversation.h"
#include "zeq/output.h"

namespace zeq::host {

/// Checks every file and prints what is found.
/// @return exit_code::done if there is nothing, exit_code::negative for errors and warnings
/// @throws Failure if a file cannot be read or the class is unknown
int checkFiles(const Host& host, Output& output);

} // namespace zeq::host
