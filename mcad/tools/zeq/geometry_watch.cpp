#include "zeq/geometry_watch.h"

#include <cstdio>

#include "zeq/failure.h"
#include "zeq/interruptible.h"

namespace zeq::host {

void GeometryWatch::watch(double done) {
    constexpr int steps = 1000;
    m_host.console.progress().show({static_cast<int>(done * steps), steps, false,
                                    L"Checking the geometry of block " + std::to_wstring(m_blockId)});
    throwIfSignalled(m_host.signals);
    const auto& timeout = m_host.settings.timeout;
    if (!timeout || std::chrono::steady_clock::now() - m_start < *timeout) return;
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%g s", timeout->count());
    throw Failure(exit_code::timedOut, "the geometry of block " + std::to_string(m_blockId) +
                                           " was not checked within " + seconds);
}

} // namespace zeq::host
