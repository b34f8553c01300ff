// Signals as bytes of a pipe, so that a program can wait for them beside its other descriptors.
#pragma once

#include <csignal>
#include <initializer_list>
#include <vector>

namespace zeq::transport {

/// Catches the given signals for as long as it lives. At most one exists at a time.
class SignalPipe {
public:
    /// @throws std::system_error if the pipe cannot be made
    explicit SignalPipe(std::initializer_list<int> signals);
    SignalPipe(const SignalPipe&) = delete;
    SignalPipe& operator=(const SignalPipe&) = delete;
    ~SignalPipe();

    /// Readable while a signal waits to be taken.
    int fd() const { return m_readEnd; }
    /// The next signal that arrived; 0 when there is none.
    int take();

private:
    struct Caught {
        int signal;
        struct sigaction before;
    };

    int m_readEnd = -1;
    std::vector<Caught> m_caught;
};

} // namespace zeq::transport
