#include "strokes/figure.h"

#include <cmath>
#include <numbers>

namespace zeq::strokes {

void Figure::add(const Figure& other, Point offset, float scale) {
    const auto moved = [&](Point point) {
        return Point{offset.x + point.x * scale, offset.y + point.y * scale};
    };
    for (Polyline line : other.lines) {
        for (Point& point : line) point = moved(point);
        lines.push_back(std::move(line));
    }
    for (const auto& [a, b, c] : other.triangles) triangles.push_back({moved(a), moved(b), moved(c)});
}

void Figure::addBox(Point low, Point high) {
    lines.push_back({low, {high.x, low.y}, high, {low.x, high.y}, low});
}

void Figure::addArc(Point center, float radius, float from, float to) {
    constexpr float degree = std::numbers::pi_v<float> / 180;
    const int steps = std::max(2, static_cast<int>(std::ceil(std::abs(to - from) / 12)));
    Polyline arc;
    for (int i = 0; i <= steps; ++i) {
        const float angle = (from + (to - from) * static_cast<float>(i) / static_cast<float>(steps)) * degree;
        arc.push_back({center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)});
    }
    lines.push_back(std::move(arc));
}

} // namespace zeq::strokes
