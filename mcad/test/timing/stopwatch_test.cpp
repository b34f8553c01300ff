// What a stopwatch tells of its stages.
#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "timing/stopwatch.h"

namespace zeq::timing {
namespace {

TEST(Stopwatch, AddsUpByStages) {
    using namespace std::chrono_literals;
    Stopwatch watch;
    watch.begin(L"Work");
    for (int i = 0; i < 2; ++i) {
        const Lap lap(watch, L"Rest");
        std::this_thread::sleep_for(20ms);
    }
    EXPECT_EQ(watch.stage(), L"Work");
    watch.end();
    EXPECT_EQ(watch.stage(), L"");
    { const Lap lap(watch, L"Nothing"); }
    EXPECT_EQ(watch.stage(), L"");
    const std::wstring text = watch.text();
    const std::size_t rest = text.find(L"Rest ");
    ASSERT_NE(rest, text.npos) << "both rests took 40 ms";
    EXPECT_GE(std::stod(text.substr(rest + 5)), 0.04);
    EXPECT_NE(text.find(L" s (CPU 0."), text.npos);
    EXPECT_EQ(text.find(L"Nothing"), text.npos);
}

} // namespace
} // namespace zeq::timing
