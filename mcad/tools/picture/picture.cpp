// Checks a drawing, lays it out, and has threads draw its tiles.
#include "picture/picture.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <stdexcept>

#include "picture/spans.h"
#include "picture/tile.h"

namespace zeq::picture {

namespace {

int tilesAlong(int pixels) { return (pixels + Tile::pixels - 1) / Tile::pixels; }

int samplesASide(const Drawing& drawing) {
    constexpr int largest = 16384;
    if (drawing.width < 1 || drawing.height < 1 || drawing.width > largest || drawing.height > largest)
        throw std::invalid_argument("a picture is from 1 to 16384 pixels wide and high");
    switch (drawing.samples) {
    case 1:
        return 1;
    case 4:
        return 2;
    case 9:
        return 3;
    default:
        throw std::invalid_argument("a pixel has 1, 4 or 9 samples");
    }
}

/// The tiles that samples are in, and those that have them in their border.
Region tilesOf(const Region& samples, float reach, int side, int columns, int rows) {
    const double size = Tile::pixels * side;
    const double border = reach + static_cast<float>(side);
    const auto tile = [&](double sample, int most) {
        return static_cast<int>(std::floor(std::clamp(sample / size, -1.0, static_cast<double>(most))));
    };
    return {std::max(0, tile(samples.left - border, columns)), std::max(0, tile(samples.top - border, rows)),
            std::min(columns, tile(samples.right + border, columns) + 1),
            std::min(rows, tile(samples.bottom + border, rows) + 1)};
}

} // namespace

Image render(const Drawing& drawing) {
    const int side = samplesASide(drawing);
    const Stage stage(drawing, side);
    const int columns = tilesAlong(drawing.width), rows = tilesAlong(drawing.height);
    const TileLists triangles(columns, rows, stage.triangles.size(), [&](std::size_t i) {
        const Region bounds = boundsOf(pointsOf(stage, stage.triangles[i]));
        const bool isEmpty = bounds.left == bounds.right || bounds.top == bounds.bottom;
        return isEmpty ? Region{} : tilesOf(bounds, 0, side, columns, rows);
    });
    const TileLists segments(columns, rows, stage.segments.size(), [&](std::size_t i) {
        const StageSegment& segment = stage.segments[i];
        return tilesOf(boundsOf({segment.from, segment.to, segment.to}), stage.pens[segment.pen].reach, side,
                       columns, rows);
    });

    Image image{drawing.width, drawing.height, {}, stage.dropped};
    image.pixels.resize(4 * static_cast<std::size_t>(drawing.width) *
                        static_cast<std::size_t>(drawing.height));
    std::atomic<int> next = 0;
    const auto work = [&] {
        Tile tile(drawing, stage);
        for (int i = next++; i < columns * rows; i = next++)
            tile.draw(i % columns, i / columns, triangles.at(i % columns, i / columns),
                      segments.at(i % columns, i / columns), image);
    };
    std::vector<std::future<void>> others;
    for (unsigned i = 1; i < std::min(drawing.threads, 64U); ++i)
        others.push_back(std::async(std::launch::async, work));
    work();
    for (std::future<void>& other : others) other.get();
    return image;
}

Camera fittedCamera(const Drawing& drawing, Vector direction, Vector up, bool isPerspective) {
    Camera camera;
    camera.isPerspective = isPerspective;
    camera.up = up;
    camera.eye = camera.target - unit(direction);
    const Projection projection(camera, 1, 1);
    constexpr float infinite = std::numeric_limits<float>::infinity();
    Vector low{infinite, infinite, infinite}, high = low * -1;
    const auto grow = [&](const Batch& batch, std::span<const float> points) {
        const Affine map = projection.toEye(batch.transform);
        for (std::size_t i = 0; i + 2 < points.size(); i += 3) {
            const Vector point = apply(map, &points[i]);
            if (!isFinite(point)) continue;
            low = {std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z)};
        }
    };
    for (const Triangles& batch : drawing.triangles) grow(batch, batch.positions);
    for (const Lines& batch : drawing.lines) grow(batch, batch.points);
    for (const Points& batch : drawing.points) grow(batch, batch.points);
    if (!(low.x <= high.x)) return camera;

    const Vector size = high - low;
    const float aspect =
        static_cast<float>(std::max(drawing.width, 1)) / static_cast<float>(std::max(drawing.height, 1));
    constexpr float margin = 1.08F;
    const float most = std::max({size.x, size.y, size.z, 1e-6F});
    camera.height = std::max({size.y, size.x / aspect, most * 1e-3F}) * margin;
    camera.target = projection.fromEye((low + high) * 0.5F);
    // A perspective of about 30 degrees, whose window stands before everything.
    const float distance = isPerspective ? size.z / 2 + camera.height * 1.9F : most * 2;
    if (isPerspective) camera.height *= distance / (distance - size.z / 2);
    camera.eye = camera.target - unit(direction) * distance;
    return camera;
}

void includeWhatIsOnTop(Drawing& drawing) {
    constexpr float margin = 1.03F, farthest = 3;
    const int width = std::max(drawing.width, 1), height = std::max(drawing.height, 1);
    const Projection projection(drawing.camera, width, height);
    float reach = 0; // in halves of the picture
    const auto grow = [&](const Batch& batch, std::span<const float> points) {
        if (!batch.isOnTop) return;
        const Affine map = projection.toEye(batch.transform);
        for (std::size_t i = 0; i + 2 < points.size(); i += 3) {
            const Vector eye = apply(map, &points[i]);
            if (!isFinite(eye) || projection.beforeNearPlane(eye) <= 0) continue;
            const ScreenPoint point = projection.project(eye);
            reach = std::max({reach, std::abs(2 * point.x / static_cast<float>(width) - 1),
                              std::abs(2 * point.y / static_cast<float>(height) - 1)});
        }
    };
    for (const Triangles& batch : drawing.triangles) grow(batch, batch.positions);
    for (const Lines& batch : drawing.lines) grow(batch, batch.points);
    if (reach > 1) drawing.camera.height *= std::min(reach * margin, farthest);
}

} // namespace zeq::picture
