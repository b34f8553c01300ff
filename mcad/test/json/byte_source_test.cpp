// The window: what was given before stands before what comes next.
#include "zeq_api/json/byte_source.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

namespace zeq::json {
namespace {

/// Gives so many bytes, and looks at what stands before the place for them.
struct Counting {
    std::size_t size;
    std::size_t given = 0;

    static char at(std::size_t i) { return static_cast<char>(i * 7 + i / 251); }
    std::size_t operator()(char* out, std::size_t room) {
        for (std::size_t back = 1; back <= std::min(given, ByteSource::historySize); ++back)
            if (out[-static_cast<std::ptrdiff_t>(back)] != at(given - back)) {
                ADD_FAILURE() << back << " bytes before " << given;
                break;
            }
        const std::size_t count = std::min(room, size - given);
        for (std::size_t i = 0; i < count; ++i) out[i] = at(given++);
        return count;
    }
};

TEST(ByteSource, HistoryStandsBeforeTheWindow) {
    constexpr std::size_t total = 500'000;
    for (const std::size_t window :
         {std::size_t{1}, std::size_t{1000}, std::size_t{40'000}, total, 2 * total}) {
        ByteSource source(Counting{total}, total, window);
        for (std::size_t size = 1; source.position() < total;
             size = size * 3 % 70'001) { // wider than some windows
            const std::size_t at = source.position();
            const std::size_t wanted = std::min(size, total - at);
            const char* const bytes = source.need(wanted);
            for (std::size_t i = 0; i < wanted; ++i) ASSERT_EQ(bytes[i], Counting::at(at + i)) << window;
            source.skip(wanted / 2 + 1);
        }
        EXPECT_THROW(source.need(1), NotInOnePass);
    }
}

TEST(ByteSource, DrainsTheWholeInput) {
    for (const std::size_t total : {0, 10, 200'000}) {
        Counting input{total};
        ByteSource source([&input](char* out, std::size_t room) { return input(out, room); }, total, 1000);
        if (total != 0) source.need(1);
        source.drain();
        EXPECT_EQ(input.given, total);
    }
}

} // namespace
} // namespace zeq::json
