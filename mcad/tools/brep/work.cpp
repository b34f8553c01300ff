// The thread that asks for the work does its share. Others help only where there is much to do, because
// starting them takes longer than looking at a small part.
#include "brep/work.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <vector>

namespace zeq::brep {

namespace {

/// Ends a call in a thread that helps.
struct Ended {};

constexpr std::chrono::milliseconds interval{50};

} // namespace

void Work::poll() const {
    if (std::this_thread::get_id() != m_owner) {
        if (m_isEnding.load(std::memory_order_relaxed)) throw Ended();
        return;
    }
    constexpr std::uint32_t pollsBetween = 256;
    if (m_polls++ % pollsBetween == 0) watch();
}

void Work::watch() const {
    if (!m_supervisor) return;
    const Clock::time_point now = Clock::now();
    if (now - m_watched < interval) return;
    m_watched = now;
    m_supervisor->watch(m_count > 0 ? static_cast<double>(m_done) / static_cast<double>(m_count) : 0);
}

void Work::run(std::size_t count, const std::function<void(std::size_t)>& function,
               Clock::time_point deadline) {
    while (!m_isEnding && Clock::now() < deadline) {
        const std::size_t index = m_next++;
        if (index >= count) return;
        function(index);
        ++m_done;
        if (std::this_thread::get_id() == m_owner) watch();
    }
}

void Work::forEach(std::size_t count, const std::function<void(std::size_t)>& function) {
    m_next = m_done = 0;
    m_count = count;
    constexpr std::chrono::milliseconds worthHelp{3};
    run(count, function, Clock::now() + worthHelp);
    if (m_next >= count) return;

    std::mutex mutex;
    std::condition_variable ended;
    std::exception_ptr fault;
    std::size_t helping = 0;
    const auto help = [&] {
        std::exception_ptr mine;
        try {
            run(count, function, Clock::time_point::max());
        } catch (const Ended&) {
        } catch (...) {
            mine = std::current_exception();
            m_isEnding = true;
        }
        const std::lock_guard lock(mutex);
        if (!fault) fault = mine;
        --helping;
        ended.notify_one();
    };
    std::vector<std::jthread> helpers;
    const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
    helping = std::min(processors, count - m_next) - 1;
    for (std::size_t left = helping; left > 0; --left) helpers.emplace_back(help);
    try {
        run(count, function, Clock::time_point::max());
        std::unique_lock lock(mutex);
        while (!ended.wait_for(lock, interval, [&] { return helping == 0; })) watch();
    } catch (...) {
        m_isEnding = true;
        throw;
    }
    if (fault) std::rethrow_exception(fault);
}

} // namespace zeq::brep
