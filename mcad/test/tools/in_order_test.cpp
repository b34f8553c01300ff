// Work on many things at once, taken one after another.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

#include "convexor/in_order.h"

namespace zeq::convexor {
namespace {

TEST(InOrder, GivesResultsInOrderWhateverTheWorkTakesOrThrows) {
    constexpr std::size_t count = 40;
    for (const bool isParallel : {true, false}) {
        SCOPED_TRACE(isParallel);
        const std::thread::id here = std::this_thread::get_id();
        std::atomic<int> atOnce = 0, most = 0, elsewhere = 0;
        InOrder<std::size_t> work(count, isParallel, [&](std::size_t index) {
            most = std::max<int>(most, ++atOnce);
            if (std::this_thread::get_id() != here) ++elsewhere;
            std::this_thread::sleep_for(std::chrono::milliseconds(index % 2 == 0 ? 5 : 0));
            --atOnce;
            if (index % 10 == 7) throw std::runtime_error(std::to_string(index));
            return index;
        });
        for (std::size_t i = 0; i < count; ++i) {
            try {
                EXPECT_EQ(work.next(), i);
                EXPECT_NE(i % 10, 7);
            } catch (const std::runtime_error& error) {
                EXPECT_EQ(error.what(), std::to_string(i));
            }
        }
        EXPECT_LE(most, isParallel ? static_cast<int>(std::max(1U, std::thread::hardware_concurrency())) : 1);
        EXPECT_EQ(elsewhere, isParallel ? static_cast<int>(count) : 0);
    }
}

} // namespace
} // namespace zeq::convexor
