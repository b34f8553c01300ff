// The thread that waits for signals and for the end of the output.
#include "convexor/interruption_watch.h"

#include <cerrno>
#include <csignal>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>

namespace zeq::convexor {

InterruptionWatch::InterruptionWatch(int output, Channel& channel)
    : m_output(output), m_channel(channel), m_signals({SIGTERM, SIGINT, SIGHUP}),
      m_wakeUp(::eventfd(0, EFD_CLOEXEC)) {
    if (!m_wakeUp.isOpen()) throw std::system_error(errno, std::generic_category(), "eventfd");
    m_thread = std::thread([this] { run(); });
}

InterruptionWatch::~InterruptionWatch() {
    m_stopping = true;
    wake();
    m_thread.join();
}

void InterruptionWatch::setWorking(bool working) {
    m_working = working;
    wake();
}

void InterruptionWatch::wake() { ::eventfd_write(m_wakeUp.get(), 1); }

void InterruptionWatch::run() {
    while (!m_stopping) {
        // With no events asked for, the output reports only that its other end was closed.
        pollfd entries[] = {
            {m_signals.fd(), POLLIN, 0}, {m_wakeUp.get(), POLLIN, 0}, {m_working ? m_output : -1, 0, 0}};
        if (::poll(entries, std::size(entries), -1) < 0) continue;
        const auto& [signals, wakeUp, output] = entries;
        if (signals.revents != 0 || output.revents != 0) m_channel.endProcess();
        if (eventfd_t count; wakeUp.revents != 0) ::eventfd_read(m_wakeUp.get(), &count);
    }
}

} // namespace zeq::convexor
