// The two examples of the README, talking to each other.
#include <gtest/gtest.h>

// Written from README.md when the build is configured.
#include "readme_host.h"
#include "readme_translator.h"

namespace {

TEST(Readme, TheHostReceivesWhatTheTranslatorAnswers) {
    std::wostringstream printed;
    std::wstreambuf* const terminal = std::wcout.rdbuf(printed.rdbuf());
    received(answer(importCommand(L"plate.stp")));
    std::wcout.rdbuf(terminal);
    EXPECT_EQ(printed.str(), L"1 Plate\n");
}

} // namespace
