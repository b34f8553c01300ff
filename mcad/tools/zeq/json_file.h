// JSON documents in files of the user's.
#pragma once

#include <string>

#include "transport/signal_pipe.h"
#include "zeq_api/json/json_value.h"

namespace zeq::host {

/// Reads a JSON document in UTF-8; "-" is standard input.
/// @param problem says why, and where in the text, if the file is something else
/// @param text    receives what the file holds
/// @return whether the file is such a document
/// @throws Failure if the file cannot be read
bool readJsonFile(const std::string& path, transport::SignalPipe& signals, JsonDocument& document,
                  std::string& problem, std::wstring* text = nullptr);

} // namespace zeq::host
