// Base64: known texts, tails, foreign characters, and never a byte outside the destination.
#include "zeq_api/codec/base64.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace zeq {
namespace {

std::string encoded(const std::string& bytes) {
    std::string text(Base64::encodedSize(bytes.size()), '?');
    EXPECT_EQ(Base64::encodeImpl(text.data(), bytes.data(), bytes.size()), text.size());
    return text;
}

TEST(Base64, KnownTexts) {
    const struct {
        std::string bytes;
        const char* text;
    } cases[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {"\xFB\xEF\xFF", "++//"},
        {std::string(3, '\0'), "AAAA"},
    };
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(encoded(bytes), text);
        std::string decoded(Base64::decodedSize(std::strlen(text)), '?');
        const auto [written, read] = Base64::decodeImpl(decoded.data(), text, std::strlen(text));
        EXPECT_EQ(decoded.substr(0, written), bytes);
        EXPECT_EQ(read, std::string(text).find_last_not_of('=') + 1);
    }
}

TEST(Base64, Sizes) {
    const std::size_t encodedSizes[] = {0, 4, 4, 4, 8, 8, 8, 12};
    const std::size_t decodedSizes[] = {0, 0, 0, 0, 3, 3, 3, 3};
    for (std::size_t n = 0; n < 8; ++n) {
        EXPECT_EQ(Base64::encodedSize(n), encodedSizes[n]);
        EXPECT_EQ(Base64::decodedSize(n), decodedSizes[n]);
    }
}

TEST(Base64, DecodingStopsAtTheFirstForeignCharacter) {
    const struct {
        std::string text;
        std::string bytes;
        std::size_t read;
    } cases[] = {
        {"Zm9v=Zm9v", "foo", 4},
        {"Zm9vZm9v", "foofoo", 8},
        {"Zm8", "fo", 3},
        {"Zg", "f", 2},
        {"Z", "", 1},
        {"=Zm9v", "", 0},
        {"Zm9v\nZm9v", "foo", 4},
        {"Zm9vZ m9v", "foo", 5},
        {"Zm-_", "f", 2},
        {"Zm9v\xC3\xBC", "foo", 4},
        {"Zm9\x80Zm9v", "fo", 3},
        {std::string("Zm9v\0Zm9v", 9), "foo", 4},
        {"Zm9vYmE=Zm9v", "fooba", 7},
    };
    for (const auto& [text, bytes, expectedRead] : cases) {
        std::vector<char> decoded(Base64::decodedSize(text.size()) + 2);
        const auto [written, read] = Base64::decodeImpl(decoded.data(), text.data(), text.size());
        EXPECT_EQ(std::string(decoded.data(), written), bytes) << text;
        EXPECT_EQ(read, expectedRead) << text;

        std::wstring wide;
        for (const char c : text) wide.push_back(static_cast<unsigned char>(c));
        EXPECT_EQ(Base64::decodeWide(decoded.data(), wide.data(), wide.size()), std::pair(written, read))
            << text;
        EXPECT_EQ(std::string(decoded.data(), written), bytes) << text;
    }
}

TEST(Base64, AWideUnitIsNotTakenForItsLowByte) {
    for (const wchar_t unit :
         {L'\x141', L'\x10041', static_cast<wchar_t>(0x80000041), static_cast<wchar_t>(-1)}) {
        for (std::size_t at = 0; at < 4; ++at) {
            std::wstring text = L"AAAA";
            text[at] = unit;
            std::vector<char> decoded(5);
            EXPECT_EQ(Base64::decodeWide(decoded.data(), text.data(), 4).second, at);
        }
    }
}

/// A block of memory without a byte to spare, so that the sanitizers see the first one outside.
template <class T>
std::unique_ptr<T[]> exactly(std::size_t count) {
    return std::make_unique_for_overwrite<T[]>(count);
}

TEST(Base64, WideAndNarrowTextAgreeAtEveryLengthAndWhateverIsForeignWhere) {
    std::mt19937 random(2);
    for (std::size_t size = 0; size < 200; ++size) {
        std::string bytes(size, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        const std::string narrow = encoded(bytes);
        const auto source = exactly<char>(size);
        std::copy(bytes.begin(), bytes.end(), source.get());
        const auto units = exactly<wchar_t>(narrow.size());
        ASSERT_EQ(Base64::encodeWide(units.get(), source.get(), size), narrow.size());
        ASSERT_TRUE(std::equal(narrow.begin(), narrow.end(), units.get())) << size;

        for (std::size_t at = 0; at < narrow.size(); ++at) {
            const wchar_t foreign = L"@[`{/:+,.-\xFF\x100\x141\x10041=\x7FFFFFFF"[random() % 17];
            const wchar_t was = std::exchange(units[at], foreign);
            std::string text = narrow;
            text[at] = foreign > 0xFF ? '=' : static_cast<char>(foreign);
            const auto fromWide = exactly<char>(Base64::decodedSize(text.size()) + 2);
            const auto fromNarrow = exactly<char>(Base64::decodedSize(text.size()) + 2);
            const auto done = Base64::decodeWide(fromWide.get(), units.get(), text.size());
            ASSERT_EQ(done, Base64::decodeImpl(fromNarrow.get(), text.data(), text.size()))
                << size << ' ' << at;
            ASSERT_TRUE(std::equal(fromWide.get(), fromWide.get() + done.first, fromNarrow.get()));
            units[at] = was;
        }
    }
}

template <class Element>
void expectBack(const std::vector<Element>& elements) {
    std::wstring text = L"old";
    Base64::encode(elements, text);
    EXPECT_EQ(text.size(), Base64::encodedSize(elements.size() * sizeof(Element)));
    std::vector<Element> back{1, 2, 3};
    Base64::decode(text, back);
    EXPECT_EQ(back, elements);
}

TEST(Base64, ArraysOfAnyElementsComeBackWhole) {
    std::mt19937 random(1);
    for (std::size_t count = 0; count < 40; ++count) {
        std::vector<float> floats(count);
        for (float& number : floats) number = static_cast<float>(random()) / 7;
        expectBack(floats);
        std::vector<int> ints(count);
        for (int& number : ints) number = static_cast<int>(random());
        expectBack(ints);
        expectBack(std::vector<double>(floats.begin(), floats.end()));
    }
    std::wstring text;
    Base64::encode(std::vector<float>{1.0F, 2.5F}, text);
    EXPECT_EQ(text, L"AACAPwAAIEA=");
}

TEST(Base64, ATrailingPartialElementIsDropped) {
    const struct {
        const wchar_t* text;
        std::vector<int> values;
    } cases[] = {
        {L"", {}},
        {L"AQAA", {}},
        {L"AQAAAA", {1}},
        {L"AQAAAA==", {1}},
        {L"AQAAAAI", {1}},
        {L"AQAAAAIAAA", {1}},
        {L"AQAAAAIAAAA=", {1, 2}},
        {L"AQAAAAIAAAA", {1, 2}},
        {L"AQAAAAIAAAADAA", {1, 2}},
        {L"AQAAAAI\u00fcAAA", {1}},
        {L"\U0001F600", {}},
    };
    for (const auto& [text, values] : cases) {
        std::vector<int> decoded{9, 9, 9, 9, 9};
        Base64::decode(text, decoded);
        EXPECT_EQ(decoded, values) << text;
    }
}

} // namespace
} // namespace zeq
