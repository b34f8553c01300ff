// First what is visible is found for every sample, then each pixel is shaded once for every surface in it; lines and
// translucent surfaces follow, compared with the depths.
#include "picture/tile.h"

#include <cstring>
#include <tuple>

#include "picture/shading.h"
#include "picture/spans.h"

namespace zeq::picture {

namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr Color ink{0.08F, 0.09F, 0.11F, 0.8F}; // of silhouettes
/// Of depth, in samples: a line this far behind a surface is still taken to lie on it.
constexpr float tolerance = 2;
/// Of a silhouette, in samples, with the slopes of the surfaces beside it. Steeper ones are taken to be as steep.
constexpr float steepest = 16;
constexpr std::size_t mostFragments = std::size_t{1} << 21;
constexpr std::size_t mostLayers = 32;

float magnitude(Slope slope) { return std::min(steepest, std::max(std::abs(slope.x), std::abs(slope.y))); }

} // namespace

Tile::Tile(const Drawing& drawing, const Stage& stage)
    : m_drawing(drawing), m_stage(stage), m_side((pixels + 2) * stage.side) {
    const auto samples = static_cast<std::size_t>(m_side) * static_cast<std::size_t>(m_side);
    m_depths.resize(samples);
    m_seen.resize(samples);
    m_colors.resize(samples);
    m_marks.resize(samples);
    m_covers.resize(samples);
    m_lineDepths.resize(samples);
}

void Tile::draw(int column, int row, std::span<const std::uint32_t> triangles,
                std::span<const std::uint32_t> segments, Image& image) {
    begin(column, row);
    drawSurfaces(triangles);
    drawCaps(triangles);
    shadePixels();
    if (m_drawing.hasSilhouettes) drawSilhouettes();
    drawLines(segments);
    drawTranslucent(triangles);
    writePixels(image);
}

void Tile::begin(int column, int row) {
    const int size = pixels * m_stage.side, border = m_stage.side;
    const int width = m_drawing.width * m_stage.side, height = m_drawing.height * m_stage.side;
    m_core = {column * size, row * size, std::min(width, (column + 1) * size),
              std::min(height, (row + 1) * size)};
    m_region = {m_core.left - border, m_core.top - border, m_core.right + border, m_core.bottom + border};
    std::ranges::fill(m_depths, infinite);
    std::ranges::fill(m_seen, nothing);
}

void Tile::drawSurfaces(std::span<const std::uint32_t> triangles) {
    for (const std::uint32_t number : triangles) {
        const StageTriangle& triangle = m_stage.triangles[number];
        if (m_stage.surfaces[triangle.surface].color.alpha < 1) continue;
        const auto points = pointsOf(m_stage, triangle);
        const DepthPlane plane = planeOf(points);
        const auto [nearest, farthest] = std::minmax({points[0].depth, points[1].depth, points[2].depth});
        forEachSpan(points, m_region, [&, low = nearest, high = farthest](int y, int first, int end) {
            const float start = plane.at(static_cast<float>(first) + 0.5F, static_cast<float>(y) + 0.5F);
            float* const depths = &m_depths[at(first, y)];
            std::uint32_t* const seen = &m_seen[at(first, y)];
            for (int i = 0; i < end - first; ++i) {
                const float depth = std::clamp(start + static_cast<float>(i) * plane.slope.x, low, high);
                const bool isNearer = depth < depths[i];
                depths[i] = isNearer ? depth : depths[i];
                seen[i] = isNearer ? number : seen[i];
            }
        });
    }
}

void Tile::drawCaps(std::span<const std::uint32_t> triangles) {
    if (m_stage.caps.empty()) return;
    const auto partOf = [&](std::uint32_t number) {
        return m_stage.surfaces[m_stage.triangles[number].surface].part;
    };
    for (std::size_t first = 0, end = 0; first < triangles.size(); first = end) {
        const std::uint32_t part = partOf(triangles[first]);
        while (end < triangles.size() && partOf(triangles[end]) == part) ++end;
        const auto cap = std::ranges::lower_bound(m_stage.caps, part, {}, &Cap::part);
        if (cap != m_stage.caps.end() && cap->part == part)
            drawCap(static_cast<std::uint32_t>(cap - m_stage.caps.begin()),
                    triangles.subspan(first, end - first));
    }
}

/// Behind the plane a line of sight leaves a closed body once more than it enters it, if it meets the plane inside.
void Tile::drawCap(std::uint32_t number, std::span<const std::uint32_t> triangles) {
    std::ranges::fill(m_marks, std::uint8_t{0});
    for (const std::uint32_t triangle : triangles)
        forEachSpan(pointsOf(m_stage, m_stage.triangles[triangle]), m_region, [&](int y, int first, int end) {
            std::uint8_t* const parities = &m_marks[at(first, y)];
            for (int i = 0; i < end - first; ++i) parities[i] ^= 1;
        });
    for (int y = m_region.top; y < m_region.bottom; ++y)
        for (int x = m_region.left; x < m_region.right; ++x) {
            const std::size_t sample = at(x, y);
            if (!m_marks[sample]) continue;
            const float depth =
                m_stage.section.at(static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F);
            if (depth > m_depths[sample]) continue;
            m_depths[sample] = depth;
            m_seen[sample] = firstCap + number;
        }
}

Color Tile::colorOf(std::uint32_t seen, float x, float y) const {
    if (seen == nothing) return weighted(m_drawing.background);
    const Vector eye = m_stage.projection.towardsEye(x, y);
    if (seen >= firstCap) {
        const Cap& cap = m_stage.caps[seen - firstCap];
        const float shift = cap.part % 2 ? x + y : x - y + 1e5F;
        const float period = 9.0F * static_cast<float>(m_stage.side);
        const bool isHatch = m_drawing.section->isHatched && std::fmod(shift, period) < period / 6;
        const Color dark = cap.color * (isHatch ? 0.28F : 0.62F);
        return {dark.red, dark.green, dark.blue, 1};
    }
    const StageTriangle& triangle = m_stage.triangles[seen];
    const Surface& surface = m_stage.surfaces[triangle.surface];
    if (!surface.isLit) return weighted(surface.color);

    const auto points = pointsOf(m_stage, triangle);
    const DepthPlane plane = planeOf(points);
    const Vector flat = m_stage.projection.normal({x, y, plane.at(x, y)}, plane.slope);
    Vector normal;
    for (std::size_t i = 0; i < 3; ++i) {
        const ScreenPoint &a = points[(i + 1) % 3], &b = points[(i + 2) % 3];
        const float share = (a.x - x) * (b.y - y) - (a.y - y) * (b.x - x); // of twice the area
        normal = normal + m_stage.vertices[triangle.corners[i]].normal *
                              (share * m_stage.projection.weight(points[i].depth));
    }
    normal = unit(normal);
    if (!(dot(normal, normal) > 0.5F)) normal = flat;
    if (dot(normal, flat) < 0) normal = normal * -1;
    return weighted(lit(surface.color, normal, eye));
}

void Tile::shadePixels() {
    const int n = m_stage.side;
    for (int top = m_core.top; top < m_core.bottom; top += n)
        for (int left = m_core.left; left < m_core.right; left += n) {
            std::uint32_t last = m_seen[at(left, top)];
            const auto middle = static_cast<float>(n) / 2;
            Color color = colorOf(last, static_cast<float>(left) + middle, static_cast<float>(top) + middle);
            for (int y = top; y < top + n; ++y)
                for (int x = left; x < left + n; ++x) {
                    const std::size_t sample = at(x, y);
                    if (m_seen[sample] != last) {
                        last = m_seen[sample];
                        color = colorOf(last, static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F);
                    }
                    m_colors[sample] = color;
                }
        }
}

Slope Tile::slopeAt(std::size_t sample) const {
    const std::uint32_t seen = m_seen[sample];
    if (seen == nothing) return {};
    if (seen >= firstCap) return m_stage.section.slope;
    return planeOf(pointsOf(m_stage, m_stage.triangles[seen])).slope;
}

float Tile::outlineOf(std::uint32_t seen) const {
    if (seen >= firstCap) return seen == nothing ? 0.0F : 1.0F;
    return m_stage.surfaces[m_stage.triangles[seen].surface].outline;
}

bool Tile::haveCommonCorner(std::uint32_t a, std::uint32_t b) const {
    if (a >= firstCap || b >= firstCap) return false;
    const auto& corners = m_stage.triangles[b].corners;
    return std::ranges::any_of(m_stage.triangles[a].corners, [&](std::uint32_t corner) {
        return corner == corners[0] || corner == corners[1] || corner == corners[2];
    });
}

/// How strong a silhouette is between two samples beside each other: zero unless what is seen there belongs to surfaces
/// of which one ends before the other.
float Tile::gap(std::size_t a, std::size_t b) const {
    const std::uint32_t seenA = m_seen[a], seenB = m_seen[b];
    if (seenA == seenB || haveCommonCorner(seenA, seenB)) return 0;
    const float outline = outlineOf(m_depths[a] < m_depths[b] ? seenA : seenB);
    if (outline <= 0 || seenA >= firstCap || seenB >= firstCap) // a cap ends, or the background begins
        return outline;
    const float depth = std::min(m_depths[a], m_depths[b]);
    const float steps = 2 * tolerance + 1.5F * std::max(magnitude(slopeAt(a)), magnitude(slopeAt(b)));
    const bool isGap = std::abs(m_depths[a] - m_depths[b]) > steps * m_stage.projection.depthUnit(depth);
    return isGap ? outline : 0;
}

void Tile::drawSilhouettes() {
    std::ranges::fill(m_marks, std::uint8_t{0});
    const auto mark = [&](int x, int y, float strength) {
        if (x < m_core.left || y < m_core.top || x >= m_core.right || y >= m_core.bottom) return;
        std::uint8_t& marked = m_marks[at(x, y)];
        marked = std::max(marked, static_cast<std::uint8_t>(std::lround(255 * strength)));
    };
    for (int y = m_core.top - 1; y < m_core.bottom; ++y)
        for (int x = m_core.left - 1; x < m_core.right; ++x)
            for (const auto& [nextX, nextY] : {std::pair(x + 1, y), std::pair(x, y + 1)})
                if (const float strength = gap(at(x, y), at(nextX, nextY)); strength > 0) {
                    mark(x, y, strength);
                    mark(nextX, nextY, strength);
                }
    for (std::size_t sample = 0; sample < m_colors.size(); ++sample)
        if (m_marks[sample])
            m_colors[sample] =
                over(weighted(ink, static_cast<float>(m_marks[sample]) / 255), m_colors[sample]);
}

void Tile::drawLines(std::span<const std::uint32_t> segments) {
    if (segments.empty()) return;
    std::ranges::fill(m_covers, 0.0F);
    m_penned = {m_core.right, m_core.bottom, m_core.left, m_core.top};
    std::uint32_t pen = m_stage.segments[segments[0]].pen;
    for (const std::uint32_t number : segments) {
        const StageSegment& segment = m_stage.segments[number];
        if (segment.pen != pen) applyPen(m_stage.pens[pen]);
        pen = segment.pen;
        drawLine(segment, m_stage.pens[pen].reach);
    }
    applyPen(m_stage.pens[pen]);
}

/// Whether a line's point of this depth is seen at the sample. The surface there goes on to the line's middle, and is
/// compared with it there: so lines neither sink into steep surfaces nor shine through them.
bool Tile::isBefore(float depth, float x, float y, std::size_t sample, float sampleX, float sampleY) const {
    const float surface = m_depths[sample];
    if (depth <= surface) return true;
    const float unitOfDepth = m_stage.projection.depthUnit(depth);
    if (depth > surface + 2 * steepest * unitOfDepth) return false;
    const Slope slope = slopeAt(sample);
    const float most = steepest * unitOfDepth;
    const float shift = std::clamp((x - sampleX) * slope.x + (y - sampleY) * slope.y, -most, most);
    return depth <= surface + shift + tolerance * unitOfDepth;
}

void Tile::drawLine(const StageSegment& segment, float reach) {
    const ScreenPoint &a = segment.from, &b = segment.to;
    const float dx = b.x - a.x, dy = b.y - a.y, square = dx * dx + dy * dy;
    const float outer = reach + 0.5F;
    const int top = firstSample(std::min(a.y, b.y) - outer, m_core.top, m_core.bottom);
    const int bottom = firstSample(std::max(a.y, b.y) + outer, m_core.top, m_core.bottom);
    for (int y = top; y < bottom; ++y) {
        const float sampleY = static_cast<float>(y) + 0.5F;
        float first = 0, last = 1; // the stretch of the line that comes near the row
        if (dy != 0) {
            const auto [low, high] =
                std::minmax({(sampleY - outer - a.y) / dy, (sampleY + outer - a.y) / dy});
            first = std::clamp(low, 0.0F, 1.0F);
            last = std::clamp(high, 0.0F, 1.0F);
        }
        const auto [left, right] = std::minmax({a.x + first * dx, a.x + last * dx});
        const int start = firstSample(left - outer, m_core.left, m_core.right);
        const int end = firstSample(right + outer, m_core.left, m_core.right);
        for (int x = start; x < end; ++x) {
            const float sampleX = static_cast<float>(x) + 0.5F;
            const float along = square > 0 ? ((sampleX - a.x) * dx + (sampleY - a.y) * dy) / square : 0;
            const float t = std::clamp(along, 0.0F, 1.0F);
            const float lineX = a.x + t * dx, lineY = a.y + t * dy;
            const float cover = std::min(1.0F, outer - std::hypot(sampleX - lineX, sampleY - lineY));
            const std::size_t sample = at(x, y);
            const float depth = a.depth + t * (b.depth - a.depth);
            if (!(cover > m_covers[sample]) || !isBefore(depth, lineX, lineY, sample, sampleX, sampleY))
                continue;
            m_covers[sample] = cover;
            m_lineDepths[sample] = depth;
        }
        if (start < end) {
            m_penned.left = std::min(m_penned.left, start);
            m_penned.right = std::max(m_penned.right, end);
            m_penned.top = std::min(m_penned.top, y);
            m_penned.bottom = std::max(m_penned.bottom, y + 1);
        }
    }
}

void Tile::applyPen(const Pen& pen) {
    for (int y = m_penned.top; y < m_penned.bottom; ++y)
        for (int x = m_penned.left; x < m_penned.right; ++x) {
            const std::size_t sample = at(x, y);
            const float cover = m_covers[sample];
            if (!(cover > 0)) continue;
            m_covers[sample] = 0;
            m_colors[sample] = over(weighted(pen.color, cover), m_colors[sample]);
            // Translucent surfaces that the line lies on must not tint it.
            const float depth = m_lineDepths[sample];
            if (cover > 0.5F)
                m_depths[sample] =
                    std::min(m_depths[sample], depth - tolerance * m_stage.projection.depthUnit(depth));
        }
    m_penned = {m_core.right, m_core.bottom, m_core.left, m_core.top};
}

void Tile::drawTranslucent(std::span<const std::uint32_t> triangles) {
    m_fragments.clear();
    for (const std::uint32_t number : triangles) {
        const StageTriangle& triangle = m_stage.triangles[number];
        if (m_stage.surfaces[triangle.surface].color.alpha >= 1) continue;
        const auto points = pointsOf(m_stage, triangle);
        const DepthPlane plane = planeOf(points);
        const auto [nearest, farthest] = std::minmax({points[0].depth, points[1].depth, points[2].depth});
        forEachSpan(points, m_core, [&, low = nearest, high = farthest](int y, int first, int end) {
            for (int x = first; x < end; ++x) {
                const std::size_t sample = at(x, y);
                const float depth = std::clamp(
                    plane.at(static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F), low, high);
                if (depth < m_depths[sample])
                    m_fragments.push_back({static_cast<std::uint32_t>(sample), depth, number});
            }
        });
        if (m_fragments.size() > mostFragments) keepNearestFragments();
    }
    if (!m_fragments.empty()) blendFragments();
}

/// What lies behind so many layers does not show.
void Tile::keepNearestFragments() {
    std::ranges::sort(m_fragments, {},
                      [](const Fragment& f) { return std::tuple(f.sample, f.depth, f.triangle); });
    std::size_t layer = 0;
    std::uint32_t sample = nothing;
    std::erase_if(m_fragments, [&](const Fragment& fragment) {
        layer = fragment.sample == sample ? layer + 1 : 0;
        sample = fragment.sample;
        return layer >= mostLayers;
    });
}

void Tile::blendFragments() {
    std::ranges::sort(m_fragments, [](const Fragment& a, const Fragment& b) {
        return std::tuple(a.sample, b.depth, a.triangle) < std::tuple(b.sample, a.depth, b.triangle);
    });
    const auto side = static_cast<std::uint32_t>(m_side);
    for (const Fragment& fragment : m_fragments) {
        const std::uint32_t column = fragment.sample % side, row = fragment.sample / side;
        const float x = static_cast<float>(column) + static_cast<float>(m_region.left) + 0.5F;
        const float y = static_cast<float>(row) + static_cast<float>(m_region.top) + 0.5F;
        Color& color = m_colors[fragment.sample];
        color = over(colorOf(fragment.triangle, x, y), color);
    }
}

void Tile::writePixels(Image& image) const {
    const int n = m_stage.side;
    const auto byte = [](float value) {
        return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0F, 1.0F) * 255));
    };
    for (int top = m_core.top; top < m_core.bottom; top += n)
        for (int left = m_core.left; left < m_core.right; left += n) {
            Color sum{0, 0, 0, 0};
            for (int y = top; y < top + n; ++y)
                for (int x = left; x < left + n; ++x) sum = sum + m_colors[at(x, y)];
            const float share = sum.alpha > 0 ? 1 / sum.alpha : 0;
            std::uint8_t* const pixel =
                &image.pixels[4 * (static_cast<std::size_t>(top / n) * static_cast<std::size_t>(image.width) +
                                   static_cast<std::size_t>(left / n))];
            pixel[0] = byte(sum.red * share);
            pixel[1] = byte(sum.green * share);
            pixel[2] = byte(sum.blue * share);
            pixel[3] = byte(sum.alpha / static_cast<float>(n * n));
        }
}

} // namespace zeq::picture
