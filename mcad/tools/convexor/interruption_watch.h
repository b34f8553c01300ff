// Watches, beside the work, for the moment when the process should end.
#pragma once

#include <atomic>
#include <thread>

#include "convexor/channel.h"
#include "transport/descriptor.h"
#include "transport/signal_pipe.h"

namespace zeq::convexor {

/// A thread that ends the process through the channel when SIGTERM, SIGINT or SIGHUP arrives, or when nobody
/// reads the output any more while work is under way. The kernel parses for seconds without asking whether to
/// stop, so the work itself cannot watch.
class InterruptionWatch {
public:
    /// @throws std::system_error when the system has no descriptors or threads left
    InterruptionWatch(int output, Channel& channel);
    InterruptionWatch(const InterruptionWatch&) = delete;
    InterruptionWatch& operator=(const InterruptionWatch&) = delete;
    ~InterruptionWatch();

    /// Watches the output too for as long as it lives.
    class Work {
    public:
        explicit Work(InterruptionWatch& watch) : m_watch(watch) { m_watch.setWorking(true); }
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;
        ~Work() { m_watch.setWorking(false); }

    private:
        InterruptionWatch& m_watch;
    };

private:
    void setWorking(bool working);
    void wake();
    void run();

    const int m_output;
    Channel& m_channel;
    transport::SignalPipe m_signals;
    transport::Descriptor m_wakeUp;
    std::atomic<bool> m_working = false;
    std::atomic<bool> m_stopping = false;
    std::thread m_thread;
};

} // namespace zeq::convexor
