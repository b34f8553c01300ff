// Glyph beside glyph, row below row.
#include "strokes/annotation.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "strokes/glyphs.h"

namespace zeq::strokes {

namespace {

constexpr float linePitch = 1.65F; ///< in heights of capital letters, as all that follow
constexpr float frameHeight = 2;
constexpr float framePadding = 0.5F;
constexpr std::wstring_view divider = L" | ";

std::vector<std::wstring_view> split(std::wstring_view text, std::wstring_view separator) {
    std::vector<std::wstring_view> parts;
    for (std::size_t at = 0;;) {
        const std::size_t end = text.find(separator, at);
        parts.push_back(text.substr(at, end == std::wstring_view::npos ? end : end - at));
        if (end == std::wstring_view::npos) return parts;
        at = end + separator.size();
    }
}

/// One line, at the end of what the figure has.
void addText(Figure& figure, std::wstring_view text, float base, float height) {
    const float scale = height / capHeight;
    for (const wchar_t character : text) {
        const Figure shape = glyph(character);
        figure.add(shape, {figure.width, base}, scale);
        figure.width += shape.width * scale;
    }
}

/// Boxes around texts whose base line is at `base`.
void addFrame(Figure& figure, std::span<const std::wstring_view> compartments, float base, float height) {
    const float bottom = base - (frameHeight - 1) / 2 * height, top = bottom + frameHeight * height;
    for (const std::wstring_view text : compartments) {
        const float left = figure.width;
        figure.width += framePadding * height;
        addText(figure, text, base, height);
        figure.width = std::max(figure.width + framePadding * height, left + frameHeight * height);
        figure.addBox({left, bottom}, {figure.width, top});
    }
}

template <class AddRow>
Figure rows(std::wstring_view text, float height, AddRow addRow) {
    Figure figure;
    float base = 0;
    bool isFirst = true, wasFrame = false;
    for (const std::wstring_view line : split(text, L"\n")) {
        Figure row;
        const bool isFrame = addRow(row, line);
        const float pitch = isFrame && wasFrame   ? frameHeight
                            : isFrame || wasFrame ? frameHeight + 0.2F
                                                  : linePitch;
        if (!isFirst) base -= pitch * height;
        figure.add(row, {0, base});
        figure.width = std::max(figure.width, row.width);
        const float excess = isFrame ? (frameHeight - 1) / 2 * height : 0;
        if (isFirst) figure.top = height + excess;
        figure.bottom = base - (isFrame ? excess : 0.33F * height); // for descenders
        isFirst = false;
        wasFrame = isFrame;
    }
    return figure;
}

} // namespace

Figure layout(std::wstring_view text, float height) {
    return rows(text, height, [&](Figure& row, std::wstring_view line) {
        addText(row, line, 0, height);
        return false;
    });
}

Figure layoutAnnotation(std::wstring_view text, float height) {
    constexpr std::wstring_view allAround = L"⌮ ";
    return rows(text, height, [&](Figure& row, std::wstring_view line) {
        std::vector<std::wstring_view> compartments = split(line, divider);
        if (compartments.size() > 1) {
            if (line.starts_with(allAround)) {
                addText(row, allAround, 0, height);
                compartments[0].remove_prefix(allAround.size());
            }
        } else if (line.size() > 2 && line.starts_with(L'[') && line.ends_with(L']')) {
            compartments[0] = line.substr(1, line.size() - 2);
        } else {
            addText(row, line, 0, height);
            return false;
        }
        addFrame(row, compartments, 0, height);
        return true;
    });
}

Figure leader(std::span<const Point> points, LeaderEnd end, float height) {
    Figure figure;
    if (points.size() < 2) return figure;
    figure.lines.emplace_back(points.begin(), points.end());
    const Point tip = points[0];
    float x = tip.x - points[1].x, y = tip.y - points[1].y;
    const float size = std::hypot(x, y);
    if (!(size > 0)) return figure;
    x /= size;
    y /= size;
    const auto at = [&](float along, float across) {
        return Point{tip.x + (x * along - y * across) * height, tip.y + (y * along + x * across) * height};
    };
    switch (end) {
    case LeaderEnd::arrow:
        figure.triangles.push_back({tip, at(-1, 0.17F), at(-1, -0.17F)});
        break;
    case LeaderEnd::triangle: // stands on the surface with its broad side
        figure.triangles.push_back({at(0, 0.5F), at(0, -0.5F), at(-0.87F, 0)});
        break;
    case LeaderEnd::dot: {
        Figure circle;
        circle.addArc(tip, 0.2F * height, 0, 360.0F);
        const Polyline& rim = circle.lines[0];
        for (std::size_t i = 1; i < rim.size(); ++i) figure.triangles.push_back({tip, rim[i - 1], rim[i]});
        break;
    }
    }
    return figure;
}

} // namespace zeq::strokes
