// Where the result goes: standard output, or a file that is either whole or not there.
#pragma once

#include <string>
#include <string_view>

#include "transport/descriptor.h"
#include "transport/signal_pipe.h"

namespace zeq::host {

/// Writes to standard output or, under a temporary name beside it, to a file; commit() gives the file its
/// name.
class Output {
public:
    /// @param path  empty for standard output
    /// @param force whether a file that exists may be replaced
    /// @throws Failure if the file cannot be made
    Output(const std::string& path, bool force, transport::SignalPipe& signals);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output();

    /// @throws Failure if writing fails or a signal asks to stop; without a message when nobody reads any
    /// more
    void write(std::string_view text);
    /// @throws Failure if the file cannot be completed
    void commit();

private:
    void flush();
    void send(std::string_view bytes);
    std::string shownName() const;

    transport::SignalPipe& m_signals;
    std::string m_path;
    std::string m_temporary; ///< empty when it is written in place
    bool m_force;
    transport::Descriptor m_file;
    int m_fd = -1;
    std::string m_buffer;
};

/// Makes the directory if it is not there.
/// @throws Failure if that cannot be
void requireDirectory(const std::string& directory);

} // namespace zeq::host
