// JSON text: what is kept, what is refused, and what must not crash.
#include "zeq_api/json/text_io.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/small_stack.h"
#include "zeq_api/json/read_helpers.h"

namespace zeq {
namespace {

std::wstring textOf(const JsonDocument& document, int pretty = 0) {
    std::wostringstream stream;
    JsonTextIO::write(stream, document, pretty);
    return stream.str();
}

bool readText(const std::wstring& text, JsonDocument& document) {
    std::wistringstream stream(text);
    return JsonTextIO::read(stream, document);
}

/// `text` read and written again, or "refused".
std::wstring rewritten(const std::wstring& text) {
    JsonDocument document;
    return readText(text, document) ? textOf(document) : L"refused";
}

TEST(JsonText, KeepsNumberKindsOrderAndUnits) {
    for (const wchar_t* text :
         {LR"([null,true,[],{},"",0,-1,2147483648,-2147483649,9223372036854775808,18446744073709551615,)"
          LR"(-9223372036854775808,0.0,-0.0,1.0,0.1,1e300,5e-324,2.2250738585072014e-308,)"
          LR"(1.7976931348623157e308,{"b":1,"a":{"c":[1,2.0,[]]},"b":2},"\u0000\u001F\"\\/\b\f\n\r\t"])",
          L"\"Gr\u00f6\u00dfe \u4e2d \U0001F600 \xD800 \xDC00 \xD800\xDC00 \x110000 \x7FFFFFFF\"",
          L"{\"\xDC00\":\"\\u0000\"}"})
        EXPECT_EQ(rewritten(text), text);
}

TEST(JsonText, NormalisesWhatHasSeveralSpellings) {
    const struct {
        const wchar_t* read;
        const wchar_t* written;
    } cases[] = {
        {L" \t\r\n[ 1 , 2 ]\n", L"[1,2]"},
        {LR"("\u0041\/")", L"\"A/\""},
        {LR"("\uDC00")", L"\"\xDC00\""},
        {LR"("\uD83D\uDE00")", L"\"\xD83D\xDE00\""},
        {L"-0", L"0"},
        {L"1E2", L"100.0"},
        {L"1e+2", L"100.0"},
        {L"18446744073709551616", L"18446744073709553000.0"},
        {L"-9223372036854775809", L"-9223372036854776000.0"},
        {L"0.1000000000000000055511151231257827021181583404541015625", L"0.1"},
        {L"9007199254740993.0", L"9007199254740992.0"},
        {L"1e-400", L"0.0"},
        {L"-1e-400", L"-0.0"},
        {L"0.0000000000001e-99999999999", L"0.0"},
        {L"0e99999999999", L"0.0"},
    };
    for (const auto& [read, written] : cases) EXPECT_EQ(rewritten(read), written) << read;
}

TEST(JsonText, EveryDoubleComesBackBitByBit) {
    std::uint64_t bits = 0x9E3779B97F4A7C15;
    for (int i = 0; i < 20'000; ++i) {
        bits = bits * 6364136223846793005 + 1442695040888963407;
        const auto number = std::bit_cast<double>(bits);
        if (!std::isfinite(number)) continue;
        JsonDocument document;
        document.SetDouble(number);
        JsonDocument back;
        ASSERT_TRUE(readText(textOf(document), back)) << number;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(back.GetDouble()), bits) << number;
    }
}

TEST(JsonText, RefusesWhatIsNotExactlyOneDocument) {
    std::vector<std::wstring> refused = {std::wstring(L"[1]\0", 4), std::wstring(L"\0[1]", 4),
                                         std::wstring(L"[1\0]", 4), std::wstring(L"\"\0\"", 3),
                                         std::wstring(400, L'9')};
    std::wistringstream others(LR"(|  |{} {}|1,|[1]x|[1,]|{"a":1,}|{a:1}|{1:1}|[|]|{"a"}|"|"\|"\u12|"\x"|)"
                               LR"("\uD800"|"\uD800\u0041"|nul|True|NaN|Infinity|-|01|1.|.5|1e|+1|0x10|)"
                               LR"(1e309|-1e400|1.8e308|)"
                               L"\"\n\"|\uFEFF{}|// comment\n1|\u0661|[1\u00A0]");
    for (std::wstring text; std::getline(others, text, L'|');) refused.push_back(text);
    ASSERT_EQ(refused.size(), 42u);
    for (const std::wstring& text : refused) {
        JsonDocument document;
        document.SetInt(7);
        EXPECT_FALSE(readText(text, document)) << text;
        EXPECT_EQ(document.GetInt(), 7);
    }
}

/// Gives a whole document and fails where its end should be.
class BrokenSource : public std::wstreambuf {
protected:
    std::streamsize xsgetn(wchar_t* out, std::streamsize count) override {
        if (std::exchange(m_isRead, true)) throw std::runtime_error("the disk is gone");
        std::fill_n(out, count, L' ');
        *out = L'1';
        return count;
    }

private:
    bool m_isRead = false;
};

TEST(JsonText, AStreamThatFailsIsNotReadAsWhole) {
    BrokenSource source;
    std::wistream stream(&source);
    JsonDocument document;
    EXPECT_FALSE(JsonTextIO::read(stream, document));
    EXPECT_TRUE(document.IsNull());
}

TEST(JsonText, AnyPrefixOfADocumentIsRefused) {
    const std::wstring text = LR"({"a":[1,-2.5e3,"x\u0041",true,null],"b":{"c":false}})";
    for (std::size_t size = 0; size < text.size(); ++size)
        EXPECT_EQ(rewritten(text.substr(0, size)), L"refused");
}

TEST(JsonText, PrettyIndentsByFourSpaces) {
    JsonDocument document;
    ASSERT_TRUE(readText(L"{\"a\":[1,{}],\"b\":[]}", document));
    EXPECT_EQ(textOf(document, 1), L"{\n    \"a\": [\n        1,\n        {}\n    ],\n    \"b\": []\n}");
}

TEST(JsonText, AFailedWriteLeavesNothingBehind) {
    for (const double number : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        for (const int pretty : {0, 1}) {
            JsonDocument document;
            document.SetArray()
                .PushBack(1, document.GetAllocator())
                .PushBack(number, document.GetAllocator());
            std::wostringstream stream;
            EXPECT_THROW(JsonTextIO::write(stream, document, pretty), std::runtime_error);
            EXPECT_EQ(stream.str(), L"");
        }
    }
    std::wostream closed(nullptr);
    try {
        JsonTextIO::write(closed, JsonDocument(), 0);
        ADD_FAILURE() << "written to no stream";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Cannot write object into json document");
    }
}

TEST(JsonText, AMillionLevelsAreReadAndWritten) {
    constexpr std::size_t depth = 1'000'000;
    const std::wstring arrays = std::wstring(depth, L'[') + std::wstring(depth, L']');

    std::wstring objects;
    for (std::size_t level = 0; level < depth; ++level) objects += L"{\"a\":";
    objects += L'1' + std::wstring(depth, L'}');
    test::onSmallStack([&] {
        EXPECT_TRUE(rewritten(arrays) == arrays);
        EXPECT_TRUE(rewritten(objects) == objects);
        EXPECT_EQ(rewritten(std::wstring(depth, L'[')), L"refused");
    });
}

TEST(JsonText, ALongTextIsReadAcrossBlocks) {
    const std::wstring text = L"[\"" + std::wstring(1'000'000, L'\u00fc') + L"\",1]";
    EXPECT_TRUE(rewritten(text) == text);
}

TEST(ReadHelpers, OnlyTheStringsOfAnArrayMemberAreAppended) {
    const struct {
        const wchar_t* json;
        std::vector<std::wstring> expected;
    } cases[] = {
        {LR"({"k":["a",1,null,"",["b"],"a\u0000b"]})", {L"old", L"a", L"", std::wstring(L"a\0b", 3)}},
        {LR"({"k":[]})", {L"old"}},
        {LR"({"k":"a"})", {L"old"}},
        {LR"({"other":["a"]})", {L"old"}},
        {LR"(["k"])", {L"old"}},
        {LR"(null)", {L"old"}},
    };
    for (const auto& [json, expected] : cases) {
        JsonDocument document;
        ASSERT_TRUE(readText(json, document));
        std::vector<std::wstring> out{L"old"};
        readArrayAsVectorOfStr(document, L"k", out);
        EXPECT_EQ(out, expected) << json;
    }
}

} // namespace
} // namespace zeq
