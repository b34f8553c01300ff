// Symbols of geometrical tolerances and dimensions after ISO 1101, ISO 129-1 and ASME Y14.5, and common signs.
#include "strokes/symbols.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace zeq::strokes {

namespace {

/// A path is a list of commands with their numbers, in units of which a capital letter has 21: "M" a polyline of
/// points, "O" a circle (centre, radius), "A" an arc (centre, radius, from and to in degrees), "V" an arrow's head
/// (tip, direction in degrees).
struct Symbol {
    wchar_t character;
    float width;
    const char* path;
};

constexpr Symbol symbols[] = {
    // Geometrical characteristics.
    {L'⏤', 24, "M 2 10.5 22 10.5"},
    {L'⏥', 26, "M 2 4 17 4 24 17 9 17 2 4"},
    {L'○', 24, "O 12 10.5 9"},
    {L'⌭', 26, "O 13 10.5 5.5 M 3.7 5.4 12.7 21 M 13.3 0 22.3 15.6"},
    {L'⌒', 24, "A 12 5 10 0 180"},
    {L'⌓', 24, "A 12 5 10 0 180 M 2 5 22 5"},
    {L'∥', 24, "M 5 2 11 19 M 13 2 19 19"},
    {L'⟂', 24, "M 2 2 22 2 M 12 2 12 19"},
    {L'∠', 24, "M 22 3 2 3 19 17"},
    {L'⌖', 26, "O 13 10.5 6 M 2.5 10.5 23.5 10.5 M 13 0 13 21"},
    {L'◎', 24, "O 12 10.5 9.5 O 12 10.5 5"},
    {L'⌯', 24, "M 6 15.5 18 15.5 M 2 10.5 22 10.5 M 6 5.5 18 5.5"},
    {L'↗', 24, "M 4 2 20 18 V 20 18 45"},
    {L'⌰', 32, "M 14 17 3 2 17 2 28 17 V 14 17 53.7 V 28 17 53.7"},
    // Modifiers and indicators.
    {L'⌀', 24, "O 12 10.5 7.5 M 5 0 19 21"},
    {L'□', 23, "M 3 2 20 2 20 19 3 19 3 2"},
    {L'△', 24, "M 2 2 22 2 12 19 2 2"},
    {L'▽', 24, "M 2 19 22 19 12 2 2 19"},
    {L'◇', 24, "M 12 1 21 10.5 12 20 3 10.5 12 1"},
    {L'⌮', 26, "O 9 10.5 5 M 2 1 9 10.5 24 10.5"},
    {L'⌱', 26, "O 6 10.5 4 M 10 10.5 24 10.5"},
    {L'⌲', 26, "M 1 10.5 25 10.5 M 5 17 21 10.5 5 4 5 17"},
    {L'⌳', 26, "M 3 4 3 17 23 4 3 4"},
    {L'⌴', 26, "M 3 17 3 4 23 4 23 17"},
    {L'⌵', 24, "M 2 18 12 3 22 18"},
    {L'↧', 24, "M 3 19 21 19 M 12 19 12 2 V 12 2 270"},
    {L'√', 26, "M 2 11 5 11 10 1 17 21 24 21"},
    {L'→', 26, "M 2 10.5 24 10.5 V 24 10.5 0"},
    {L'←', 26, "M 24 10.5 2 10.5 V 2 10.5 180"},
    {L'↔', 30, "M 2 10.5 28 10.5 V 2 10.5 180 V 28 10.5 0"},
    {L'↑', 16, "M 8 0 8 21 V 8 21 90"},
    {L'↓', 16, "M 8 21 8 0 V 8 0 270"},
    {L'↘', 24, "M 4 18 20 2 V 20 2 315"},
    {L'↖', 24, "M 20 2 4 18 V 4 18 135"},
    {L'↙', 24, "M 20 18 4 2 V 4 2 225"},
    // Signs beside numbers, and what the fonts have too wide, too high or ambiguous.
    {L'l', 9, "M 4 21 4 3 5 1 7 0"}, // unlike an I
    {L'-', 16, "M 3 9 13 9"},
    {L'.', 9, "O 4.5 0.7 0.7"},
    {L',', 9, "M 5 1 5 -0.5 3.5 -3.5"},
    {L':', 9, "O 4.5 0.7 0.7 O 4.5 11.7 0.7"},
    {L';', 9, "M 5 1 5 -0.5 3.5 -3.5 O 4.5 11.7 0.7"},
    {L'°', 11, "O 5.5 17.5 3"},
    {L'±', 22, "M 3 12 19 12 M 11 20 11 4 M 3 1 19 1"},
    {L'−', 22, "M 3 9 19 9"},
    {L'–', 18, "M 2 8 16 8"},
    {L'—', 26, "M 1 8 25 8"},
    {L'×', 22, "M 4 3 18 17 M 4 17 18 3"},
    {L'÷', 22, "M 3 9 19 9 O 11 15 1 O 11 3 1"},
    {L'·', 10, "O 5 9 0.8"},
    {L'•', 12, "O 6 9 2.5 O 6 9 1.5 O 6 9 0.5"},
    {L'′', 8, "M 5 21 3 14"},
    {L'″', 13, "M 5 21 3 14 M 10 21 8 14"},
    {L'…', 26, "O 5 0.8 0.8 O 13 0.8 0.8 O 21 0.8 0.8"},
    {L'≤', 24, "M 20 20 4 12 20 4 M 4 0 20 0"},
    {L'≥', 24, "M 4 20 20 12 4 4 M 4 0 20 0"},
    {L'≠', 24, "M 3 12 21 12 M 3 6 21 6 M 7 1 17 17"},
    {L'≈', 24, "M 3 10 5 13 8 14 16 11 19 12 21 15 M 3 4 5 7 8 8 16 5 19 6 21 9"},
    {L'∞', 28, "A 8 9.5 5 40 320 M 11.8 12.7 16.2 6.3 A 20 9.5 5 -140 140 M 16.2 12.7 11.8 6.3"},
    {L'Ø', 22, "O 11 10.5 9 M 4 0 18 21"},
    {L'ø', 19, "O 9.5 7 7 M 3 -1 16 15"},
    {L'ß', 19, "M 4 0 4 16 A 9 16 5 0 180 M 14 16 12 12 9 11 A 9.5 5.5 5.5 -125 90"},
    {L'§', 18, "A 9 16.5 4 20 270 A 9 8.5 4 90 270 A 9 8.5 4 -90 90 A 9 0.5 4 -160 90"},
    {L'€', 23, "A 13 10.5 9.5 45 315 M 1 13 14 13 M 1 8 14 8"},
};

/// Characters that are drawn like another.
constexpr std::wstring_view aliases = L"∅⌀"
                                      L"⊥⟂"
                                      L"◯○"
                                      L"⚪○"
                                      L"⃝○"
                                      L"∟∠"
                                      L"∡∠"
                                      L"▢□"
                                      L"◻□"
                                      L"☐□"
                                      L"▲△"
                                      L"▼▽"
                                      L"⌢⌒"
                                      L"º°"
                                      L"‐–"
                                      L"\u2011–"
                                      L"‒–"
                                      L"―—"
                                      L"⁻−";

void addHead(Figure& figure, Point tip, float degrees) {
    constexpr float size = 7, half = 2.4F;
    const float angle = degrees * 3.14159265F / 180, x = std::cos(angle), y = std::sin(angle);
    const Point left{tip.x - size * x - half * y, tip.y - size * y + half * x};
    const Point right{tip.x - size * x + half * y, tip.y - size * y - half * x};
    figure.triangles.push_back({tip, left, right});
    figure.lines.push_back({tip, left, right, tip});
}

Figure figureOf(const Symbol& symbol) {
    Figure figure;
    figure.width = symbol.width;
    figure.top = 21;
    const char* at = symbol.path;
    const auto number = [&] {
        char* end = nullptr;
        const float value = std::strtof(at, &end);
        const bool isThere = end != at;
        at = end;
        return std::pair(value, isThere);
    };
    const auto next = [&] { return number().first; };
    while (*at) {
        const char command = *at++;
        if (command == ' ') continue;
        if (command == 'M') {
            Polyline line;
            for (auto x = number(); x.second; x = number()) line.push_back({x.first, next()});
            figure.lines.push_back(std::move(line));
            continue;
        }
        const float x = next(), y = next(), third = next();
        if (command == 'V') addHead(figure, {x, y}, third);
        if (command == 'O') figure.addArc({x, y}, third, 0, 360);
        if (command != 'A') continue;
        const float from = next();
        figure.addArc({x, y}, third, from, next());
    }
    return figure;
}

} // namespace

std::optional<Figure> symbol(wchar_t character) {
    for (std::size_t i = 0; i + 1 < aliases.size(); i += 2)
        if (aliases[i] == character) character = aliases[i + 1];
    const auto* const found = std::ranges::find(symbols, character, &Symbol::character);
    if (found == std::end(symbols)) return std::nullopt;
    return figureOf(*found);
}

} // namespace zeq::strokes
