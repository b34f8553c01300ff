// The handler only writes the signal's number: write() is safe in a handler, and the pipe never blocks it.
#include "transport/signal_pipe.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace zeq::transport {

namespace {

volatile std::sig_atomic_t writeEnd = -1;

void passOn(int signal) {
    const int kept = errno;
    const auto byte = static_cast<unsigned char>(signal);
    // A full pipe already wakes the program; the byte may be lost.
    [[maybe_unused]] const ssize_t count = ::write(writeEnd, &byte, 1);
    errno = kept;
}

} // namespace

SignalPipe::SignalPipe(std::initializer_list<int> signals) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    m_readEnd = ends[0];
    writeEnd = ends[1];
    for (int signal : signals) {
        struct sigaction action {};
        action.sa_handler = passOn;
        action.sa_flags = SA_RESTART;
        Caught& caught = m_caught.emplace_back(Caught{signal, {}});
        ::sigaction(signal, &action, &caught.before);
    }
}

SignalPipe::~SignalPipe() {
    for (const Caught& caught : m_caught) ::sigaction(caught.signal, &caught.before, nullptr);
    ::close(writeEnd);
    ::close(m_readEnd);
    writeEnd = -1;
}

int SignalPipe::take() {
    unsigned char byte = 0;
    return ::read(m_readEnd, &byte, 1) == 1 ? byte : 0;
}

} // namespace zeq::transport
