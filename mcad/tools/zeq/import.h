// Imports.
#pragma once

#include "zeq/conversation.h"
#include "zeq/output.h"
#include "zeq/receiver.h"

namespace zeq::host {

/// Whether the translator has a chance to read the file: there is one, and it may be read.
/// @throws Failure if not
void requireFile(const std::string& file);

/// Sends an import command and takes what arrives.
/// @throws Failure when the import fails, or when no product structure arrives
void receive(const Host& host, const Request& request, Import& import);

/// Compares what arrived with what the translator says of the file, and warns of what is missing.
void compareContents(const Host& host, Import& import);

/// Sends an import command and shows the tree and, unless only that is wanted, the summary.
void importModel(const Host& host, const Request& request, Output& output);

} // namespace zeq::host
