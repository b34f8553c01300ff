// A process with a small /tmp of its own, for tests of what happens when the disk is full or badly prepared.
#pragma once

#include <functional>

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>

#include "support/child_process.h"

namespace zeq::test {

/// Runs `body` in a process with a /tmp of its own that holds 1 MiB; skips where that is not permitted.
inline void withOwnTmp(const std::function<void()>& body) {
    constexpr auto enter = [] {
        return ::unshare(CLONE_NEWNS) == 0 &&
               ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               ::mount("none", "/tmp", "tmpfs", 0, "size=1m") == 0;
    };
    const pid_t probe = startChild([&] { ASSERT_TRUE(enter()); });
    if (waitForChild(probe) != 0) GTEST_SKIP() << "not permitted to mount";
    const pid_t child = startChild([&] {
        ASSERT_TRUE(enter());
        body();
    });
    EXPECT_EQ(waitForChild(child), 0);
}

} // namespace zeq::test
