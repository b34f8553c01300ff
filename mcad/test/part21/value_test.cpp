// Parameters of exchange structures: their kinds, numbers, and strings in all encodings.
#include <gtest/gtest.h>

#include <cmath>

#include "part21/strings.h"
#include "part21/value.h"

namespace zeq::part21 {
namespace {

TEST(Value, HasOneKindAndNothingOfTheOthers) {
    struct Case {
        std::string_view text;
        Kind kind;
        std::uint64_t reference = 0;
        double number = NAN; ///< none
        std::wstring string = {};
        std::string_view name = {};
        std::size_t items = 0;
    };
    const Case cases[]{
        {"", Kind::unset},
        {"$", Kind::unset},
        {"*", Kind::derived},
        {"#12", Kind::reference, 12},
        {"#0", Kind::reference},
        {"#99999999999999999999", Kind::reference},
        {"#x", Kind::reference},
        {"-1.5E-3", Kind::number, 0, -0.0015},
        {"+7", Kind::number, 0, 7},
        {"0.", Kind::number, 0, 0},
        {".5", Kind::number, 0, 0.5},
        {"1.E999", Kind::number},
        {"-", Kind::number},
        {"'it''s'", Kind::text, 0, NAN, L"it's"},
        {"'open", Kind::text, 0, NAN, L"open"},
        {"'", Kind::text},
        {".TRUE.", Kind::enumeration, 0, NAN, L"", "TRUE"},
        {".", Kind::enumeration},
        {"\"0A\"", Kind::binary},
        {"(1,(2,3),'a,b')", Kind::list, 0, NAN, L"", "", 3},
        {"()", Kind::list},
        {"(", Kind::list},
        {"LENGTH_MEASURE(2.5)", Kind::typed, 0, 2.5, L"", "LENGTH_MEASURE", 1},
        {"LABEL ( 'a' )", Kind::typed, 0, NAN, L"a", "LABEL", 1},
        {"SET((1,2))", Kind::typed, 0, NAN, L"", "SET", 1},
        {"A(B(1.))", Kind::typed, 0, NAN, L"", "A", 1},
        {"LABEL", Kind::typed, 0, NAN, L"", "LABEL"},
        {"?", Kind::damaged},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.text);
        const Value value(each.text);
        EXPECT_EQ(value.kind(), each.kind);
        EXPECT_EQ(value.reference(), each.reference);
        EXPECT_EQ(value.number().has_value(), !std::isnan(each.number));
        EXPECT_EQ(value.number().value_or(0), std::isnan(each.number) ? 0 : each.number);
        EXPECT_EQ(value.text(), each.string);
        EXPECT_EQ(value.name(), each.name);
        EXPECT_EQ(value.items().size(), each.items);
        EXPECT_EQ(value.raw(), each.text);
    }
}

TEST(List, HasItsParametersWithoutSpaceAndComments) {
    struct Case {
        std::string_view text;
        std::vector<std::string_view> values;
    };
    const Case cases[]{
        {"", {}},
        {" /* none */ ", {}},
        {"1", {"1"}},
        {"1,", {"1", ""}},
        {",", {"", ""}},
        {" 'a' , /* b, */ (2,3)\n,#4 ", {"'a'", "(2,3)", "#4"}},
        {"'),(','it''s, so'", {"'),('", "'it''s, so'"}},
        {"\"0,\",(/*)*/)", {"\"0,\"", "(/*)*/)"}},
        {"1)2,3", {"1"}},
        {"/* never ends", {}},
    };
    for (const Case& each : cases) {
        std::vector<std::string_view> values;
        for (const Value& value : List(each.text)) values.push_back(value.raw());
        EXPECT_EQ(values, each.values) << each.text;
        EXPECT_EQ(List(each.text).size(), each.values.size());
        EXPECT_EQ(List(each.text)[each.values.size()].kind(), Kind::unset);
    }
}

TEST(Strings, AreDecodedInAllEncodings) {
    struct Case {
        std::string_view text;
        std::wstring decoded;
    };
    const Case cases[]{
        {"", L""},
        {"plain", L"plain"},
        {"it''s", L"it's"},
        {"C:\\\\dir", L"C:\\dir"},
        {"broken\r\nline", L"brokenline"},
        {"\\S\\D\\S\\\\\\", L"\u00c4\u00dc"},          // the second is a doubled backslash
        {"\\S\\''", L"\u00a7"},                        // a doubled apostrophe
        {"\\PE\\\\S\\P\\PA\\\\S\\P", L"\u0430\u00d0"}, // Cyrillic, and Latin 1 again
        {"\\PG\\\\S\\a", L"\u03b1"},                   // Greek
        {"\\PJ\\ S", L"\\PJ\\ S"},                     // no such page
        {"\\X\\E4", L"\u00e4"},
        {"\\X\\0A", L"\n"},
        {"\\X\\G0", L"\\X\\G0"},
        {"\\X\\E", L"\\X\\E"},
        {"\\X2\\03B103B2\\X0\\", L"\u03b1\u03b2"},
        {"\\X2\\D83DDE00\\X0\\", L"\U0001F600"}, // UTF-16, as many write it
        {"\\X2\\03B\\X0\\", L"\\X2\\03B\\X0\\"},
        {"\\X2\\03B1", L"\\X2\\03B1"},
        {"\\X4\\0001F600\\X0\\", L"\U0001F600"},
        {"\\X4\\00110000\\X0\\", L"\\X4\\00110000\\X0\\"},
        {"\xC3\xA4\xE2\x8C\x80\xF0\x9F\x98\x80", L"\u00e4\u2300\U0001F600"}, // UTF-8
        {"\xE4\x80", L"\u00e4\u20ac"},                                       // Windows-1252
        {"\xC0\xAF", L"\u00c0\u00af"},                                       // overlong, so no UTF-8
        {"\xE2\x8C", L"\u00e2\u0152"},                                       // cut short
        {"\xED\xA0\x80", L"\u00ed\u00a0\u20ac"},                             // half a pair in UTF-8
        {"\\X2\\D800\\X0\\", L"\ufffd"},                                     // half a pair
        {"\\", L"\\"},
        {"\\S\\", L"\\S\\"},
    };
    for (const Case& each : cases) EXPECT_EQ(decodeString(each.text), each.decoded) << each.text;
}

} // namespace
} // namespace zeq::part21
