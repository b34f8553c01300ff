// One command and its answer: starts the translator, sends, receives, and ends it whatever happens.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "transport/signal_pipe.h"
#include "zeq/console.h"
#include "zeq/document.h"
#include "zeq/json_report.h"
#include "zeq/settings.h"
#include "zeq_api/command/command.h"

namespace zeq::host {

/// What every action works with.
struct Host {
    const Settings& settings;
    Console& console;
    transport::SignalPipe& signals;
    JsonReport& report;
};

/// What is sent to the translator, and how messages call it: "Cannot <verb> '<thing>'".
struct Request {
    std::wstring text; ///< the command document
    Command::EType type = Command::EType::unknown;
    std::string verb;
    std::string thing;
};

/// Takes a document; returns true for the one that is the answer. Throws Failure with the reason alone.
using Take = std::function<bool(const Document&)>;

/// Sends the command and hands over every document up to the answer. Shared buffers that a document names are
/// removed as soon as it has been handled; what still comes after the answer is dropped.
/// @return bytes of all frames in both directions
/// @throws Failure when there is no answer: fault, time-out, crash or signal
std::uint64_t converse(const Host& host, const Request& request, const Take& take);

} // namespace zeq::host
