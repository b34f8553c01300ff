// How lists of held children answer null, and themselves.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "mv_cvx/logger.h"
#include "support/log_capture.h"

namespace zeq::test {

/// Fills a list in its three ways: each null is refused with that warning, and the list may be given to itself.
template <class Class, class Child>
void expectRefusals(const char* warning, void (Class::*add)(const std::shared_ptr<Child>&),
                    void (Class::*addEach)(const std::vector<std::shared_ptr<Child>>&),
                    void (Class::*set)(const std::vector<std::shared_ptr<Child>>&),
                    const std::vector<std::shared_ptr<Child>>& (Class::*get)() const) {
    SCOPED_TRACE(warning);
    LogCapture log(mv_cvx::Warning);
    Class object;
    const auto child = std::make_shared<Child>();
    (object.*add)(child);
    (object.*add)(nullptr);
    (object.*addEach)({nullptr, child});
    EXPECT_EQ((object.*get)().size(), 2U);
    (object.*set)({child, nullptr, child, child});
    EXPECT_EQ((object.*get)().size(), 3U);
    EXPECT_EQ(log.take(), std::vector(3, LogLine{3, warning}));
    (object.*addEach)((object.*get)());
    (object.*set)((object.*get)());
    EXPECT_EQ((object.*get)(), std::vector(6, child));
}

} // namespace zeq::test
