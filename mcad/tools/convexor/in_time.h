// Work that may never end.
#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <thread>
#include <type_traits>
#include <utility>

#include <TopoDS_Shape.hxx>

namespace zeq::convexor {

/// A time that nothing takes on a sound shape.
std::chrono::milliseconds timeFor(const TopoDS_Shape& shape);

/// Whether anything was given up, so that the process must end by _exit().
bool isAnythingGivenUp();
void noteGivenUp();

/// Does some work on a thread of its own, but gives up after that time: on some surfaces the kernel never ends, and
/// cannot be stopped. Then it goes on until the process ends, and must have to itself what it changes.
/// @return what the work gives or throws; not valid() when it was given up
template <class Work>
std::future<std::invoke_result_t<Work>> inTime(std::chrono::milliseconds limit, Work work) {
    std::packaged_task<std::invoke_result_t<Work>()> task(std::move(work));
    auto done = task.get_future();
    std::thread(std::move(task)).detach();
    if (done.wait_for(limit) == std::future_status::ready) return done;
    noteGivenUp();
    return {};
}

} // namespace zeq::convexor
