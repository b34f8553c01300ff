// Text conversion under a UTF-8 locale, and the text of exceptions.
#include "mp/string.h"

#include <clocale>

#include <gtest/gtest.h>

#include "mp/exception.h"

namespace {

class Text : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(std::setlocale(LC_ALL, "C.UTF-8")); }
    void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

TEST_F(Text, NarrowsAtMostTwoBytesACharacterAndOne) {
    const struct {
        const wchar_t* wide;
        const char* narrow;
    } cases[] = {
        {L"", ""},
        {L"part", "part"},
        {L"Größe", "Größe"},
        {L"€", "€"},                     // 3 bytes, exactly the limit: no terminator fits
        {L"€€", "€"},                    // 6 bytes, limit 5
        {L"\U0001F600", ""},             // 4 bytes, limit 3
        {L"a\U0001F600", "a\U0001F600"}, // 5 bytes, limit 5
        {L"ab\U0001F600\U0001F600", "ab\U0001F600"},
        {L"\xD800", ""}, // no character
        {L"good \xD800", ""},
    };
    for (const auto& [wide, narrow] : cases) EXPECT_EQ(mp::toUtf8String(wide), narrow);
    EXPECT_EQ(mp::toUtf8String(std::wstring(L"a\0b", 3)), "a");
    EXPECT_EQ(mp::toUtf8String(std::wstring(1'000'000, L'\u00e9')).size(), 2'000'000u);
}

TEST_F(Text, WidensWellFormedTextOnly) {
    const struct {
        const char* narrow;
        const wchar_t* wide;
    } cases[] = {
        {"", L""},     {"part", L"part"},  {"Größe \U0001F600", L"Größe \U0001F600"},
        {"\xff", L""}, {"good \xc3", L""}, {"\xed\xa0\x80", L""}, // a surrogate
    };
    for (const auto& [narrow, wide] : cases) EXPECT_EQ(mp::toWideString(narrow), wide) << narrow;
}

TEST_F(Text, OutsideTheLocaleBecomesEmpty) {
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(mp::toUtf8String(L"part"), "part");
    EXPECT_EQ(mp::toUtf8String(L"Größe"), "");
}

// One test only: what() keeps the first text of the whole process.
TEST_F(Text, WhatKeepsTheFirstTextButMessagesAreTheirOwn) {
    const mp::SharedMemoryException first(L"erste Größe");
    const mp::Exception second(std::wstring(L"second"));
    EXPECT_STREQ(first.what(), "erste Größe");
    EXPECT_STREQ(second.what(), "erste Größe");
    EXPECT_EQ(first.message(), L"erste Größe");
    EXPECT_EQ(second.message(), L"second");
    EXPECT_THROW(throw mp::SharedMemoryException(L"x"), mp::Exception);
}

} // namespace
