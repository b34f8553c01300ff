// The host's eye on the checks of geometry.
#pragma once

#include <chrono>
#include <cstdint>

#include "brep/work.h"
#include "zeq/conversation.h"

namespace zeq::host {

/// Shows how far the work is, and ends it with a Failure when a signal came or the time is up.
class GeometryWatch : public brep::Supervisor {
public:
    /// The time runs from now on.
    explicit GeometryWatch(const Host& host) : m_host(host) {}

    /// The block that is looked at from now on.
    void setBlock(std::uint64_t blockId) { m_blockId = blockId; }
    void watch(double done) override;

private:
    const Host& m_host;
    const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    std::uint64_t m_blockId = 0;
};

} // namespace zeq::host
