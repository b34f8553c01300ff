// The conversation with the host: takes up one command after another and answers each.
#pragma once

#include <string>

#include "convexor/channel.h"
#include "convexor/interruption_watch.h"
#include "zeq_api/command/command.h"

namespace zeq::convexor {

/// One host, from its first command until it closes the input.
class Session {
public:
    /// Commands come from `input`, documents go to `output`; shared buffers hold geometry compressed or not.
    Session(int input, int output, bool compress)
        : m_input(input), m_compress(compress), m_channel(output), m_watch(output, m_channel) {}

    /// Answers commands until the input ends; those that have arrived are answered first. Whatever a command
    /// does, it gets a Result; several commands may wait in the pipe.
    /// @throws transport::ProtocolError when the input is no sequence of frames; std::system_error when it
    /// cannot be read
    void run();

private:
    Result execute(const std::wstring& text);
    /// @param commandText the command as it arrived
    Result import(const ImportOptions& options, const std::wstring& commandText);

    const int m_input;
    const bool m_compress;
    Channel m_channel;
    InterruptionWatch m_watch;
};

} // namespace zeq::convexor
