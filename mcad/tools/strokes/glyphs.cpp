// Letters of the Hershey fonts, with accents, small and raised, and in circles.
#include "strokes/glyphs.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "hershey_table.inc"
#include "strokes/symbols.h"

namespace zeq::strokes {

namespace {

/// The Latin letters that Greek ones take the place of in their font, from Alpha and alpha on; "@" where there is none.
constexpr std::wstring_view greekCapitals = L"ABGDEZHQIKLMNXOPR@STUFCYW",
                            greekSmall = L"abgdezhqiklmnxoprsstufcyw";

/// A letter, the one that it is made from, and its accent.
constexpr std::wstring_view accented = L"ÀA`ÁA´ÂA^ÃA~ÄA¨ÅA°ÇC¸ÈE`ÉE´ÊE^ËE¨ÌI`ÍI´ÎI^ÏI¨ÑN~ÒO`ÓO´ÔO^ÕO~ÖO¨ÙU`"
                                       L"ÚU´ÛU^ÜU¨ÝY´ČCˇĎDˇĚEˇŇNˇŘRˇŠSˇŤTˇŽZˇŮU°"
                                       L"ŃN´ŚS´ŹZ´ĆC´"
                                       L"àa`áa´âa^ãa~äa¨åa°çc¸èe`ée´êe^ëe¨ìı`íı´îı^ïı¨ñn~òo`óo´ôo^õo~öo¨ùu`"
                                       L"úu´ûu^üu¨ýy´ÿy¨čcˇďdˇěeˇňnˇřrˇšsˇťtˇžzˇůu°"
                                       L"ńn´śs´źz´ćc´";

/// Small figures at the top, after the digits that they show.
constexpr std::wstring_view raised = L"⁰¹²³⁴⁵⁶⁷⁸⁹";

/// What is drawn like another character.
constexpr std::wstring_view aliases = L"\u00A0 \u2009 \u202F ‘'’'‚,“\"”\"„\"µμΩΩϕφ∑Σ∆Δ";

/// Letters are the differences to "R", with y downwards and the base line at 9.
Figure hershey(const char* glyph) {
    constexpr int base = 9;
    const int left = glyph[0] - 'R';
    Figure figure;
    figure.width = static_cast<float>(glyph[1] - glyph[0]);
    figure.top = capHeight;
    figure.lines.emplace_back();
    for (const char* at = glyph + 2; *at; at += 2) {
        if (at[0] == ' ')
            figure.lines.emplace_back();
        else
            figure.lines.back().push_back(
                {static_cast<float>(at[0] - 'R' - left), static_cast<float>(base - (at[1] - 'R'))});
    }
    std::erase_if(figure.lines, [](const Polyline& line) { return line.empty(); });
    return figure;
}

std::optional<Figure> letter(wchar_t character) {
    const auto glyphOf = [](const auto& font, wchar_t place) { return hershey(font[place - L' ']); };
    const auto greek = [&](wchar_t first, std::wstring_view letters) -> std::optional<Figure> {
        if (character < first || character >= first + static_cast<wchar_t>(letters.size()))
            return std::nullopt;
        const wchar_t place = letters[static_cast<std::size_t>(character - first)];
        if (place == L'@') return std::nullopt;
        return glyphOf(greekGlyphs, place);
    };
    if (character >= L' ' && character < 0x7F) return glyphOf(latinGlyphs, character);
    if (character == L'ı') { // i without its dot, which comes first in the font
        Figure figure = glyphOf(latinGlyphs, L'i');
        figure.lines.erase(figure.lines.begin());
        return figure;
    }
    if (auto capital = greek(L'Α', greekCapitals)) return capital;
    return greek(L'α', greekSmall);
}

void addAccent(Figure& figure, wchar_t accent, float y) {
    const float x = figure.width / 2;
    const auto line = [&](Polyline points) {
        for (Point& point : points) point = {x + point.x, y + point.y};
        figure.lines.push_back(std::move(points));
    };
    switch (accent) {
    case L'`':
        return line({{-3, 4}, {1, 0}});
    case L'´':
        return line({{3, 4}, {-1, 0}});
    case L'^':
        return line({{-4, 0}, {0, 4}, {4, 0}});
    case L'ˇ':
        return line({{-4, 4}, {0, 0}, {4, 4}});
    case L'~':
        return line({{-5, 0}, {-3, 2.5F}, {0, 1.5F}, {3, 0.5F}, {5, 3}});
    case L'¨':
        figure.addArc({x - 3.5F, y + 1.5F}, 0.8F, 0, 360);
        return figure.addArc({x + 3.5F, y + 1.5F}, 0.8F, 0, 360);
    case L'°':
        return figure.addArc({x, y + 2}, 2, 0, 360);
    default: // a cedilla
        figure.lines.push_back({{x + 1, 0}, {x, -2}, {x + 2, -4}, {x, -6}, {x - 2, -5}});
    }
}

std::optional<Figure> composed(wchar_t character) {
    for (std::size_t i = 0; i + 2 < accented.size(); i += 3) {
        if (accented[i] != character) continue;
        const Figure plain = *letter(accented[i + 1]);
        Figure figure;
        figure.width = std::max(plain.width, 13.0F); // an i is narrower than its accent
        figure.top = capHeight;
        figure.add(plain, {(figure.width - plain.width) / 2, 0});
        const bool isHigh = (accented[i + 1] < L'a' || accented[i + 1] == L'd' || accented[i + 1] == L't');
        addAccent(figure, accented[i + 2], isHigh ? 23.0F : 17.0F);
        return figure;
    }
    Figure figure;
    figure.top = capHeight;
    if (const std::size_t digit = raised.find(character); digit != std::wstring_view::npos) {
        const Figure whole = *letter(static_cast<wchar_t>(L'0' + digit));
        figure.add(whole, {0, 10}, 0.55F);
        figure.width = whole.width * 0.55F + 1;
        return figure;
    }
    const bool isCapital = character >= L'Ⓐ' && character <= L'Ⓩ',
               isSmall = character >= L'ⓐ' && character <= L'ⓩ';
    const bool isDigit = character >= L'①' && character <= L'⑨';
    if (!isCapital && !isSmall && !isDigit) return std::nullopt;
    const wchar_t inside = isCapital ? character - L'Ⓐ' + L'A'
                           : isSmall ? character - L'ⓐ' + L'a'
                                     : character - L'①' + L'1';
    const Figure small = *letter(inside);
    constexpr float radius = 11.5F, scale = 0.62F, middle = capHeight / 2;
    figure.width = 2 * radius + 3;
    figure.addArc({figure.width / 2, middle}, radius, 0, 360);
    figure.add(small, {(figure.width - small.width * scale) / 2, middle * (1 - scale)}, scale);
    return figure;
}

std::optional<Figure> known(wchar_t character) {
    for (std::size_t i = 0; i + 1 < aliases.size(); i += 2)
        if (aliases[i] == character) character = aliases[i + 1];
    if (auto found = symbol(character)) return found;
    if (auto found = letter(character)) return found;
    return composed(character);
}

} // namespace

bool hasGlyph(wchar_t character) { return known(character).has_value(); }

Figure glyph(wchar_t character) {
    if (auto found = known(character)) return *std::move(found);
    Figure box;
    box.width = 18;
    box.top = capHeight;
    box.addBox({3, 0}, {15, capHeight});
    return box;
}

} // namespace zeq::strokes
