// Texts as strokes.
#include "strokes/annotation.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "strokes/glyphs.h"

namespace zeq::strokes {
namespace {

/// From the lowest to the highest coordinates of all strokes.
std::pair<Point, Point> extent(const Figure& figure) {
    constexpr float infinite = std::numeric_limits<float>::infinity();
    Point low{infinite, infinite}, high{-infinite, -infinite};
    for (const Polyline& line : figure.lines)
        for (const Point& point : line) {
            low = {std::min(low.x, point.x), std::min(low.y, point.y)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y)};
        }
    return {low, high};
}

constexpr std::wstring_view symbols = L"⏤⏥○⌭⌒⌓∥⟂∠⌖◎⌯↗⌰⌀□ⓂⓁⓈⓉⒻⓊⓅⒸⒶ△ⒼⓍⓃⒺ↧⌴⌵°′″±–×⌮→←↑↓↔";

TEST(Strokes, EveryCharacterOfAnnotationsHasItsOwnShape) {
    std::wstring characters(symbols);
    for (wchar_t c = L'!'; c < 0x7F; ++c) characters += c;
    characters += L"ÄÖÜäöüßÅåÉéµΩΔαβγ²³";
    std::vector<std::vector<std::pair<float, float>>> seen;
    for (const wchar_t character : characters) {
        EXPECT_TRUE(hasGlyph(character)) << static_cast<unsigned>(character);
        const Figure figure = glyph(character);
        ASSERT_FALSE(figure.lines.empty()) << static_cast<unsigned>(character);
        const auto [low, high] = extent(figure);
        EXPECT_GE(low.x, 0) << static_cast<unsigned>(character);
        EXPECT_LE(high.x, figure.width) << static_cast<unsigned>(character);
        EXPECT_GE(low.y, -8) << static_cast<unsigned>(character);
        EXPECT_LE(high.y, 28) << static_cast<unsigned>(character);
        seen.emplace_back();
        for (const Polyline& line : figure.lines)
            for (const Point& point : line) seen.back().emplace_back(point.x, point.y);
    }
    for (std::size_t i = 0; i < seen.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_NE(seen[i], seen[j]) << static_cast<unsigned>(characters[i]) << " is drawn like "
                                        << static_cast<unsigned>(characters[j]);
}

TEST(Strokes, TheUnknownIsABoxAndABlankIsNothing) {
    EXPECT_FALSE(hasGlyph(L'漢'));
    EXPECT_FALSE(hasGlyph(L'\x07'));
    EXPECT_FALSE(hasGlyph(static_cast<wchar_t>(0x10FFFFFF)));
    ASSERT_EQ(glyph(L'漢').lines.size(), 1U);
    EXPECT_EQ(glyph(L'漢').lines[0].size(), 5U);
    EXPECT_TRUE(glyph(L' ').lines.empty());
    EXPECT_TRUE(layout(L"", 2).lines.empty());
}

TEST(Strokes, TextsGrowWithTheirLengthAndHeight) {
    float last = 0;
    std::wstring text;
    for (const wchar_t character : std::wstring(L"A i⌖.Ⓜ–漢 ") + std::wstring(symbols)) {
        text += character;
        const Figure figure = layout(text, 3.5F);
        EXPECT_GT(figure.width, last);
        EXPECT_NEAR(layout(text, 7).width, 2 * figure.width, 1e-3F * figure.width);
        last = figure.width;
    }
    const auto [low, high] = extent(layout(L"H", 3.5F));
    EXPECT_NEAR(low.y, 0, 1e-5F);
    EXPECT_NEAR(high.y, 3.5F, 1e-5F);
    const Figure lines = layout(L"long line\nI\n", 1);
    EXPECT_EQ(lines.width, layout(L"long line", 1).width);
    EXPECT_LT(lines.bottom, -3);
}

/// The boxes of a figure: closed polylines of four right-angled sides.
std::vector<std::pair<Point, Point>> boxes(const Figure& figure) {
    std::vector<std::pair<Point, Point>> result;
    for (const Polyline& line : figure.lines)
        if (line.size() == 5 && line[0].y == line[1].y && line[1].x == line[2].x && line[2].y == line[3].y)
            result.emplace_back(line[0], line[2]);
    return result;
}

TEST(Strokes, FramesHaveCompartmentsThatTouch) {
    const Figure figure = layoutAnnotation(L"4X ⌀8\n⌖ | ⌀0.2 Ⓜ | A | B\n⟂ | 0.05 | A\n[25]\n⌮ ⌓ | 0.1", 2);
    const auto found = boxes(figure);
    ASSERT_EQ(found.size(), 4U + 3 + 1 + 2);
    for (const std::size_t next : {1U, 2U, 3U, 5U, 6U, 9U}) {
        EXPECT_FLOAT_EQ(found[next].first.x, found[next - 1].second.x) << next;
        EXPECT_FLOAT_EQ(found[next].first.y, found[next - 1].first.y) << next;
    }
    EXPECT_FLOAT_EQ(found[4].second.y, found[0].first.y); // one row below the other
    EXPECT_GT(found[8].first.x, 0);                       // behind the all-around sign
    EXPECT_FLOAT_EQ(figure.width, found[3].second.x);
    EXPECT_FLOAT_EQ(figure.bottom, found[9].first.y);
    for (const auto& [low, high] : found) EXPECT_FLOAT_EQ(high.y - low.y, 4);
    EXPECT_TRUE(boxes(layoutAnnotation(L"a|b [2]", 2)).empty());
}

TEST(Strokes, LeadersEndAtTheirFirstPoint) {
    const Point points[] = {{1, 1}, {4, 5}, {8, 5}};
    for (const LeaderEnd end : {LeaderEnd::arrow, LeaderEnd::dot, LeaderEnd::triangle}) {
        const Figure figure = leader(points, end, 1);
        ASSERT_EQ(figure.lines.size(), 1U);
        ASSERT_FALSE(figure.triangles.empty());
        for (const auto& triangle : figure.triangles)
            for (const Point& corner : triangle) EXPECT_LT(std::hypot(corner.x - 1, corner.y - 1), 1.1F);
    }
    EXPECT_TRUE(leader(std::span(points, 1), LeaderEnd::arrow, 1).lines.empty());
    const Point same[] = {{1, 1}, {1, 1}};
    EXPECT_TRUE(leader(same, LeaderEnd::arrow, 1).triangles.empty());
}

} // namespace
} // namespace zeq::strokes
