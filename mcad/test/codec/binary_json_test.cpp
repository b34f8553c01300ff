// The binary form byte by byte, and what damaged bytes may do: one of the documented exceptions, or a value.
#include "zeq_api/codec/binary_json.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/small_stack.h"
#include "zeq_api/json/text_io.h"

namespace zeq {
namespace {

JsonDocument parsed(const std::wstring& text) {
    JsonDocument document;
    std::wistringstream stream(text);
    EXPECT_TRUE(JsonTextIO::read(stream, document)) << text;
    return document;
}

std::string encoded(const JsonValue& value) {
    std::string bytes;
    JsonBinaryIO::encode(value, bytes);
    return bytes;
}

template <class Number>
std::string raw(Number number) {
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

std::string length(std::uint64_t n) { return raw(n); }

std::string stringOf(const std::wstring& text) {
    std::string bytes = '\x05' + length(text.size());
    for (const wchar_t unit : text) bytes += raw(unit);
    return bytes;
}

/// The text of the decoded value and the number of bytes used, or the error.
std::string decoded(const std::string& bytes) {
    JsonDocument document;
    document.SetInt(7);
    try {
        // Exactly these bytes on the heap, so that a sanitizer sees a read beyond them.
        const std::vector<char> exact(bytes.begin(), bytes.end());
        const std::size_t used =
            JsonBinaryIO::decode(exact.data(), exact.size(), document, document.GetAllocator());
        std::wostringstream text;
        JsonTextIO::write(text, document, 0);
        const std::wstring wide = text.str();
        return std::string(wide.begin(), wide.end()) + " " + std::to_string(used);
    } catch (const std::length_error& error) {
        EXPECT_EQ(document.GetInt(), 7);
        return std::string("length_error: ") + error.what();
    } catch (const std::invalid_argument& error) {
        EXPECT_EQ(document.GetInt(), 7);
        return std::string("invalid_argument: ") + error.what();
    }
}

const std::string noType = "length_error: JsonBinaryIO: Failed to parse all bytes of type";
const std::string unknownType = "invalid_argument: JsonBinaryIO: Unknown value type";
const std::string shortNumber = "length_error: JsonBinaryIO: Failed to read all the number of bytes";
const std::string shortString = "length_error: JsonBinaryIO: Failed to read all the bytes of string";
const std::string nameNotString = "invalid_argument: JsonBinaryIO: Object member name is not a string";

/// Every kind of value, nested.
std::wstring richText() {
    return LR"({"null":null,"flags":[true,false],"":"","numbers":[0,-1,2147483648,-2147483649,)"
           LR"(9223372036854775808,0.5,-0.0],"text":"Größe \u0000 😀","nested":{"a":{},"b":[],"c":[[{"d":[1]}]]}})";
}

TEST(BinaryJson, BytesOfEveryKind) {
    const struct {
        const wchar_t* json;
        std::string bytes;
    } cases[] = {
        {L"null", std::string(1, '\x00')},
        {L"false", "\x01"},
        {L"true", "\x02"},
        {L"{}", '\x03' + length(0)},
        {L"[]", '\x04' + length(0)},
        {L"\"\"", '\x05' + length(0)},
        {L"\"a\\u0000\u4e2d\U0001F600\"",
         '\x05' + length(4) + std::string("a\0\0\0\0\0\0\0\x2D\x4E\0\0\0\xF6\x01\0", 16)},
        {L"5", '\x06' + raw(std::int32_t{5})},
        {L"2147483647", '\x06' + raw(std::int32_t{2147483647})},
        {L"-2147483648", '\x06' + raw(std::int32_t{-2147483647 - 1})},
        {L"2147483648", '\x07' + raw(std::uint32_t{2147483648})},
        {L"4294967295", '\x07' + raw(std::uint32_t{4294967295})},
        {L"4294967296", '\x08' + raw(std::int64_t{4294967296})},
        {L"-2147483649", '\x08' + raw(std::int64_t{-2147483649})},
        {L"9223372036854775807", '\x08' + raw(std::int64_t{9223372036854775807})},
        {L"9223372036854775808", '\x09' + raw(std::uint64_t{1} << 63)},
        {L"0.5", '\x0A' + raw(0.5)},
        {L"1.0", '\x0A' + raw(1.0)},
        {L"{\"a\":1}", '\x03' + length(18) + stringOf(L"a") + '\x06' + raw(1)},
        {L"[[true],null]", '\x04' + length(11) + '\x04' + length(1) + '\x02' + '\x00'},
    };
    for (const auto& [json, bytes] : cases) {
        EXPECT_EQ(encoded(parsed(json)), bytes) << json;
        JsonDocument back;
        EXPECT_EQ(JsonBinaryIO::decode(bytes.data(), bytes.size(), back, back.GetAllocator()), bytes.size())
            << json;
        EXPECT_EQ(encoded(back), bytes) << json;
        EXPECT_TRUE(back == parsed(json)) << json;
    }
}

TEST(BinaryJson, EncodingAppends) {
    std::string bytes = "x";
    JsonBinaryIO::encode(parsed(L"[1]"), bytes);
    EXPECT_EQ(bytes, 'x' + encoded(parsed(L"[1]")));
}

TEST(BinaryJson, NumbersAreReadWithTheirNarrowestKind) {
    JsonDocument document;
    const auto decode = [&document](const std::string& bytes) {
        JsonBinaryIO::decode(bytes.data(), bytes.size(), document, document.GetAllocator());
    };
    for (const std::string& five :
         {'\x08' + raw(std::int64_t{5}), '\x09' + raw(std::uint64_t{5}), '\x07' + raw(std::uint32_t{5})}) {
        decode(five);
        EXPECT_TRUE(document.IsInt() && document.IsUint64() && document.GetInt() == 5);
    }
    decode('\x0A' + raw(std::nan("")));
    EXPECT_TRUE(document.IsDouble() && std::isnan(document.GetDouble()));
}

TEST(BinaryJson, LengthsAreTakenAtTheirWordButNeverBelieved) {
    const std::string one = '\x06' + raw(1);
    constexpr std::uint64_t huge = std::uint64_t{1} << 63;
    const struct {
        std::string bytes;
        std::string expected;
    } cases[] = {
        {"", noType},
        {"\x0B", unknownType},
        {"\xFF", unknownType},
        {"\x06\x01\x02\x03", shortNumber},
        {std::string("\x0A\0\0\0\0\0\0\0", 8), shortNumber},
        {"\x05\x01", shortNumber},
        {"\x03\x01", shortNumber},
        {"\x04\x01", shortNumber},
        {'\x05' + length(2) + raw(L'a') + "\x01\x02\x03", shortString},
        {'\x05' + length(huge), shortString},
        {'\x05' + length(huge / 2 + 1) + std::string(64, 'x'), shortString}, // 4 times that is 4
        {'\x05' + length(~std::uint64_t{0}) + std::string(64, 'x'), shortString},
        {'\x05' + length(std::uint64_t{1} << 32) + std::string(64, 'x'), shortString},
        {'\x04' + length(huge), noType},
        {'\x04' + length(~std::uint64_t{0}) + one, noType},
        {'\x03' + length(huge) + stringOf(L"a") + one, noType},
        {'\x03' + length(5) + one, nameNotString},
        {'\x03' + length(10) + one + one, nameNotString},
        {'\x03' + length(1) + '\x0B', unknownType},
        {'\x03' + length(13) + stringOf(L"a"), noType},                     // a name without a value
        {'\x04' + length(1) + one, "[1] 14"},                               // a child longer than its array
        {'\x04' + length(10) + '\x04' + length(1) + one + one, "[[1]] 23"}, // of the outer array as well
        {'\x04' + length(20) + '\x04' + length(1) + one + one + one,
         "[[1],1,1] 33"}, // goes on after the child
        {'\x03' + length(1) + stringOf(L"a") + one, "{\"a\":1} 27"},
        {'\x04' + length(0) + one, "[] 9"},
        {one + one, "1 5"},
    };
    for (const auto& [bytes, expected] : cases)
        EXPECT_EQ(decoded(bytes), expected) << testing::PrintToString(bytes);
}

TEST(BinaryJson, AnyTruncationIsALengthError) {
    const std::string bytes = encoded(parsed(richText()));
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_EQ(decoded(bytes.substr(0, size)).find("length_error: JsonBinaryIO: Failed to"), 0u) << size;
}

TEST(BinaryJson, AMillionLevelsGoBothWays) {
    constexpr std::uint64_t depth = 1'000'000;
    const std::string name = stringOf(L"a");
    std::string arrays, objects;
    for (std::uint64_t inner = depth; inner-- > 0;) {
        arrays += '\x04' + length(9 * inner);
        objects += '\x03' + length(inner == 0 ? 0 : (9 + name.size()) * inner);
        if (inner > 0) objects += name;
    }
    for (const std::string& bytes : {arrays, objects}) {
        JsonDocument document;
        ASSERT_EQ(JsonBinaryIO::decode(bytes.data(), bytes.size(), document, document.GetAllocator()),
                  bytes.size());
        EXPECT_TRUE(encoded(document) == bytes);
        EXPECT_EQ(decoded(bytes.substr(0, bytes.size() - 1)), shortNumber);
    }
}

TEST(BinaryJson, StreamsHoldValuesOneAfterTheOther) {
    const wchar_t* const texts[] = {L"{\"a\":[1,\"x\"]}", L"7", L"null"};
    std::stringstream stream;
    for (const wchar_t* text : texts) JsonBinaryIO::write(stream, parsed(text));
    EXPECT_EQ(stream.str(),
              encoded(parsed(texts[0])) + encoded(parsed(texts[1])) + encoded(parsed(texts[2])));
    for (const wchar_t* text : texts) {
        JsonDocument document;
        JsonBinaryIO::read(stream, document, document.GetAllocator());
        EXPECT_TRUE(document == parsed(text)) << text;
    }
    JsonDocument document;
    EXPECT_THROW(JsonBinaryIO::read(stream, document, document.GetAllocator()), std::length_error);
    std::istream closed(nullptr);
    EXPECT_THROW(JsonBinaryIO::read(closed, document, document.GetAllocator()), std::length_error);
}

} // namespace
} // namespace zeq
