// Work on many things at once, the results of which are wanted one after another.
#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <functional>
#include <future>
#include <thread>
#include <utility>

namespace zeq::convexor {

/// Does a piece of work for every index below a count, as many at once as there are processors. What is not asked for
/// yet waits, so no more is begun than that.
template <class Result>
class InOrder {
public:
    /// @param isParallel false: in next() alone
    InOrder(std::size_t count, bool isParallel, std::function<Result(std::size_t)> work)
        : m_count(count), m_most(isParallel ? std::max(1U, std::thread::hardware_concurrency()) : 1),
          m_policy(isParallel ? std::launch::async : std::launch::deferred), m_work(std::move(work)) {}

    /// What the work gives for the next index, beginning with 0, or throws.
    Result next() {
        for (; m_next < m_count && m_started.size() < m_most; ++m_next)
            m_started.push_back(std::async(m_policy, m_work, m_next));
        std::future<Result> first = std::move(m_started.front());
        m_started.pop_front();
        return first.get();
    }

private:
    const std::size_t m_count;
    const std::size_t m_most;
    const std::launch m_policy;
    const std::function<Result(std::size_t)> m_work;
    std::size_t m_next = 0; ///< that has not begun
    std::deque<std::future<Result>> m_started;
};

} // namespace zeq::convexor
