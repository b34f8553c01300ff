// Work on many things: on all processors, watched, and ended on demand.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <thread>

namespace zeq::brep {

/// Looks after long work.
class Supervisor {
public:
    Supervisor() = default;
    Supervisor(const Supervisor&) = delete;
    virtual ~Supervisor() = default;
    /// Called several times a second by the thread that asked for the work, with the part of it that is done,
    /// from 0 to 1. What this throws ends the work and reaches whoever asked for it.
    virtual void watch(double done) = 0;
};

/// One piece of work, on behalf of the thread that makes this object.
class Work {
public:
    /// Without a supervisor nothing but an exception ends it.
    explicit Work(Supervisor* supervisor) : m_supervisor(supervisor) {}
    Work(const Work&) = delete;

    /// Calls `function(index)` for every index below the count, on all processors; the order is not defined.
    /// The first exception ends the other calls and is thrown on.
    void forEach(std::size_t count, const std::function<void(std::size_t)>& function);
    /// For the functions to call, often: throws when the work is to end.
    void poll() const;

private:
    using Clock = std::chrono::steady_clock;

    void watch() const;
    /// Calls the function until nothing is left to be done or the deadline has passed.
    void run(std::size_t count, const std::function<void(std::size_t)>& function, Clock::time_point deadline);

    Supervisor* const m_supervisor;
    const std::thread::id m_owner = std::this_thread::get_id();
    mutable Clock::time_point m_watched = Clock::now();
    mutable std::uint32_t m_polls = 0;
    std::atomic<bool> m_isEnding = false;
    std::atomic<std::size_t> m_next = 0;
    std::atomic<std::size_t> m_done = 0;
    std::size_t m_count = 0;
};

} // namespace zeq::brep
