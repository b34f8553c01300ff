// Which paths belong to a format, and its file dialog entries.
#include "zeq_api/convexor_info/format.h"

#include <regex>

#include <gtest/gtest.h>

namespace zeq {
namespace {

using Texts = std::vector<std::wstring>;

Format withExtensions(const Texts& extensions) {
    Format format;
    format.setExtensions(extensions);
    return format;
}

Format withRegex(const std::wstring& pattern) {
    Format format;
    format.addRegex(pattern);
    return format;
}

TEST(Format, GivesOneFilterForEachPatternInOrder) {
    Format format;
    EXPECT_EQ(format.getFilters(), Texts{});
    format.setDescription(L"STEP files");
    format.addFilterExtensions(L"*.stp");
    format.addFilterExtensions(L"*.step");
    EXPECT_EQ(format.getFilters(), (Texts{L"STEP files|*.stp", L"STEP files|*.step"}));
}

TEST(Format, KnowsPathsByTheirExtension) {
    const struct {
        Texts extensions;
        Texts accepted;
        Texts refused;
    } cases[] = {
        {{}, {}, {L"", L"part.", L"part.stp"}},
        {{L"stp"},
         {L"part.stp", L"PART.STP", L".stp", L"/a.b/c.stp", L"a.stp.stp"},
         {L"part.stp.bak", L"partstp", L"stp", L"", L"part.stpx", L"part.xstp"}},
        {{L"STP;Step"}, {L"part.stp", L"part.STEP"}, {L"part.stp;step", L"part."}},
        {{L"stp;;;step"}, {L"part.stp", L"part.step"}, {L"part."}},
        {{L"stp;"}, {L"part.stp", L"part."}, {L"part"}}, // a separator at an end parts off an empty extension
        {{L";stp"}, {L"part.stp", L"part."}, {L"part"}},
        {{L""}, {L"part."}, {L"part", L""}},
        {{L"igs", L"prt.*"},
         {L"a.igs", L"a.prt.1", L"a.prt.", L"a.PRT.x.y"},
         {L"a.prt", L"aprt.1", L"a.prtx1"}},
        {{L"*"}, {L"a.b", L"."}, {L"ab"}},
        {{L"a*b**c"}, {L"x.abc", L"x.a.b.b.c", L"x.aabbcc"}, {L"x.acb", L"x.ab"}},
        {{L"größe"}, {L"a.größe"}, {L"a.grösse"}},
        {{L"jt"}, {}, {L"a\nb.jt", L"a\rb.jt"}}, // no line ends before an extension
        {{L"jt[12]?"}, {L"a.jt", L"a.jt1", L"A.JT2"}, {L"a.jt3", L"a.jt12"}}, // as in a regular expression
        {{L"x+"}, {L"a.x", L"a.xxx"}, {L"a.x+"}},
    };
    for (const auto& [extensions, accepted, refused] : cases) {
        const Format format = withExtensions(extensions);
        for (const std::wstring& path : accepted)
            EXPECT_TRUE(format.is(path)) << testing::PrintToString(path);
        for (const std::wstring& path : refused)
            EXPECT_FALSE(format.is(path)) << testing::PrintToString(path);
    }
}

TEST(Format, MatchesRegularExpressionsWithTheWholeLowerCasePath) {
    const struct {
        const wchar_t* pattern;
        const wchar_t* path;
        bool accepted;
    } cases[] = {
        {L"part\\.prt", L"PART.PRT", true},
        {L"Part\\.prt", L"Part.prt", false}, // the pattern is used as given
        {L"part", L"part.prt", false},       // the whole path
        {L".*\\.prt\\.[0-9]+", L"a.PRT.12", true},
        {L".*\\.prt\\.[0-9]+", L"a.prt.", false},
        {L".*?\\.prt", L"a.prt", true}, // a quantifier after ".*" and after a literal
        {L"ab*", L"abbb", true},
        {L"a\\.*", L"a...", true},
        {L"a.c", L"abc", true},
        {L"a.*c", L"a\nc", false},
        {L"a\n.*c", L"a\nxc", true},
        {L"(a*)\\.\\1", L"aa.aa", true}, // a back-reference
        {L"(a*)\\.\\1", L"aa.a", false},
        {L"", L"", true},
        {L"", L"a", false},
    };
    for (const auto& [pattern, path, accepted] : cases) {
        EXPECT_EQ(withRegex(pattern).is(path), accepted) << testing::PrintToString(pattern);
    }
}

TEST(Format, AnInvalidRegularExpressionIsRefused) {
    const wchar_t* const invalid[] = {L"(", L"[", L"*", L"\\"};
    for (const wchar_t* pattern : invalid) EXPECT_THROW(withRegex(pattern).is(L"a"), std::regex_error);
    EXPECT_THROW(withExtensions({L"("}).is(L"a"), std::regex_error);
}

TEST(Format, ARegularExpressionThatMatchesComesBeforeAnInvalidExtension) {
    Format format = withRegex(L"a");
    format.addExtension(L"(");
    EXPECT_TRUE(format.is(L"a"));
}

TEST(Format, SurvivesLongPathsAndPatterns) {
    const std::wstring stem(1'000'000, L'a');
    EXPECT_TRUE(withExtensions({L"stp"}).is(stem + L".stp"));
    EXPECT_FALSE(withExtensions({L"stp"}).is(stem));
    EXPECT_TRUE(withExtensions({L"s*p;x"}).is(stem + L".step"));
    EXPECT_TRUE(withRegex(L"a.*\\.stp").is(stem + L".stp"));
    EXPECT_TRUE(withRegex(L"(a*)*\\.stp").is(stem + L".stp"));
    EXPECT_TRUE(withExtensions({stem}).is(L"x." + stem));

    const auto codeOf = [](const Format& format, const std::wstring& path) {
        try {
            format.is(path);
        } catch (const std::regex_error& error) {
            return error.code();
        }
        return std::regex_constants::error_type{};
    };
    EXPECT_EQ(codeOf(withRegex(L"(a)\\1*"), stem), std::regex_constants::error_stack);
    EXPECT_EQ(codeOf(withRegex(L"[a]" + stem), L"a"), std::regex_constants::error_space);
}

} // namespace
} // namespace zeq
