// Batches of what is shown, without copies of the scene's arrays where colours come in runs.
#include "depiction/depiction.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <span>
#include <stdexcept>

#include "depiction/views.h"
#include "picture/picture.h"

namespace zeq::depiction {

namespace {

constexpr float edgeWidth = 1.3F, strokeWidth = 1.6F, markerSize = 5; ///< in pixels
constexpr scene::Color plainAnnotation{24, 58, 140, 255};

picture::Color toColor(const scene::Color& color) {
    const auto channel = [](std::uint8_t value) { return static_cast<float>(value) / 255; };
    return {channel(color.red), channel(color.green), channel(color.blue), channel(color.alpha)};
}

/// Of strokes, which many models have in white, for a dark ground: on a white one they take the plain colour.
picture::Color toInk(const scene::Color& color, const scene::Color& plain) {
    const bool isTooLight = std::min({color.red, color.green, color.blue}) > 200;
    return toColor(isTooLight ? scene::Color{plain.red, plain.green, plain.blue, color.alpha} : color);
}

picture::Transform toTransform(const scene::Placement& placement) {
    picture::Transform result;
    std::size_t at = 0;
    for (const scene::Vec& column : {placement.x, placement.y, placement.z, placement.origin})
        for (const double value : {column.x, column.y, column.z})
            result.columns[at++] = static_cast<float>(value);
    return result;
}

/// Calls act(first, end, color) for each run of things beside each other that are shown in one colour.
template <class Thing, class Act>
void forEachRun(const std::vector<Thing>& things, const scene::Look& around, scene::Color plain, Act act) {
    const auto isShown = [&](std::size_t i) { return !things[i].isHidden; };
    const auto colorOf = [&](std::size_t i) { return things[i].look.within(around).shown(plain); };
    for (std::size_t first = 0, end = 0; first < things.size(); first = end) {
        end = first + 1;
        if (!isShown(first)) continue;
        const scene::Color color = colorOf(first);
        while (end < things.size() && isShown(end) && colorOf(end) == color) ++end;
        act(first, end, color);
    }
}

/// Of what a section plane cuts; nothing if there is nothing.
std::optional<float> middleAlong(std::size_t axis, const picture::Drawing& drawing) {
    float low = std::numeric_limits<float>::max(), high = -low;
    for (const picture::Triangles& batch : drawing.triangles) {
        if (!batch.isCut) continue;
        const std::array<float, 12>& map = batch.transform.columns;
        for (std::size_t i = 0; i + 2 < batch.positions.size(); i += 3) {
            const float at = map[axis] * batch.positions[i] + map[3 + axis] * batch.positions[i + 1] +
                             map[6 + axis] * batch.positions[i + 2] + map[9 + axis];
            low = std::min(low, at);
            high = std::max(high, at);
        }
    }
    return low <= high ? std::optional(low + (high - low) / 2) : std::nullopt;
}

} // namespace

Depiction::Depiction(const scene::Scene& scene, const Wishes& wishes) : m_scene(scene), m_wishes(wishes) {
    m_drawing.width = wishes.width;
    m_drawing.height = wishes.height;
    if (wishes.isTransparent) m_drawing.background = {0, 0, 0, 0};
    const std::vector<NamedView> views = allViews(scene);
    const auto view = std::ranges::find(views, wishes.view, &NamedView::name);
    if (view == views.end()) {
        std::string names;
        for (const NamedView& each : views) names += (names.empty() ? "" : ", ") + each.name;
        throw std::invalid_argument("there is no view '" + wishes.view + "'; there are " + names);
    }
    if (view->saved) {
        addInstances(&view->saved->annotations, view->instance);
        useView(*view->saved, scene.instances[view->instance].world);
    } else {
        addInstances(nullptr, 0);
        m_drawing.camera = picture::fittedCamera(m_drawing, view->sight.direction, view->sight.up);
    }
    if (wishes.section) cut(*wishes.section);
    fadeLinesOfSmallParts();
}

/// @param annotations those of the viewed instance that are shown, and no other; all if it is null
void Depiction::addInstances(const std::vector<std::uint32_t>* annotations, std::uint32_t viewed) {
    for (std::uint32_t i = 0; i < m_scene.instances.size(); ++i) {
        const scene::Instance& instance = m_scene.instances[i];
        if (instance.isHidden) continue;
        const scene::Part& part = m_scene.parts[instance.part];
        picture::Batch batch;
        batch.transform = toTransform(instance.world);
        Extent extent{i, m_drawing.triangles.size(), 0, m_drawing.lines.size(), 0};
        addSurfaces(part.shape, batch, instance.look, i, true);
        if (m_wishes.hasEdges) addRanges(part.shape, batch, instance.look, edgeWidth);
        extent.endTriangles = m_drawing.triangles.size();
        extent.endLines = m_drawing.lines.size();
        m_extents.push_back(extent);
        if (!m_wishes.hasAnnotations || (annotations && i != viewed)) continue;
        if (annotations) {
            for (const std::uint32_t at : *annotations)
                addAnnotation(part.annotations[at], batch, instance.look);
        } else {
            for (const scene::Annotation& each : part.annotations)
                if (!each.isHidden) addAnnotation(each, batch, instance.look);
        }
    }
}

void Depiction::addSurfaces(const scene::Shape& shape, const picture::Batch& batch, const scene::Look& around,
                            std::uint64_t part, bool isLit) {
    const scene::Color plain = isLit ? scene::plainSurface : plainAnnotation;
    forEachRun(shape.faces, around, plain, [&](std::size_t first, std::size_t end, scene::Color color) {
        const scene::Face &from = shape.faces[first], &to = shape.faces[end - 1];
        const std::size_t start = 3 * static_cast<std::size_t>(from.firstVertex);
        const std::size_t size = 3 * (static_cast<std::size_t>(to.firstVertex) + to.vertices) - start;
        const std::size_t firstCorner = 3 * static_cast<std::size_t>(from.firstTriangle);
        picture::Triangles run;
        static_cast<picture::Batch&>(run) = batch;
        run.color = isLit ? toColor(color) : toInk(color, plain);
        run.positions = std::span(shape.vertices).subspan(start, size);
        run.normals = std::span(shape.normals).subspan(start, size);
        run.indices =
            std::span(shape.triangles)
                .subspan(firstCorner,
                         3 * (static_cast<std::size_t>(to.firstTriangle) + to.triangles) - firstCorner);
        run.firstIndex = from.firstVertex;
        run.part = part;
        run.isLit = isLit;
        m_drawing.triangles.push_back(run);
    });
}

void Depiction::addRanges(const scene::Shape& shape, const picture::Batch& batch, const scene::Look& around,
                          float width) {
    const auto pointsOf = [](const std::vector<float>& points, const scene::PointRange& from,
                             const scene::PointRange& to) {
        const std::size_t start = 3 * static_cast<std::size_t>(from.first);
        return std::span(points).subspan(start, 3 * (static_cast<std::size_t>(to.first) + to.count) - start);
    };
    const scene::Color plain = batch.isOnTop ? plainAnnotation : scene::plainLine;
    forEachRun(shape.lines, around, plain, [&](std::size_t first, std::size_t end, scene::Color color) {
        std::vector<std::uint32_t>& lengths = m_numbers.emplace_back();
        for (std::size_t i = first; i < end; ++i) lengths.push_back(shape.lines[i].count);
        picture::Lines run;
        static_cast<picture::Batch&>(run) = batch;
        run.color = toInk(color, plain);
        run.points = pointsOf(shape.linePoints, shape.lines[first], shape.lines[end - 1]);
        run.lengths = lengths;
        run.width = width;
        m_drawing.lines.push_back(run);
    });
    forEachRun(shape.markers, around, plain, [&](std::size_t first, std::size_t end, scene::Color color) {
        picture::Points run;
        static_cast<picture::Batch&>(run) = batch;
        run.color = toInk(color, plain);
        run.points = pointsOf(shape.markerPoints, shape.markers[first], shape.markers[end - 1]);
        run.size = markerSize;
        m_drawing.points.push_back(run);
    });
}

void Depiction::addAnnotation(const scene::Annotation& annotation, picture::Batch batch,
                              const scene::Look& around) {
    batch.isOnTop = true;
    batch.isCut = false;
    const scene::Look look = annotation.look.within(around);
    addSurfaces(annotation.shape, batch, look, 0, false);
    addRanges(annotation.shape, batch, look, strokeWidth);
}

void Depiction::useView(const scene::View& view, const scene::Placement& world) {
    const scene::Camera& camera = view.camera;
    const scene::Vec eye = world(camera.eye), target = world(camera.target);
    const double scale = std::cbrt(std::abs(world.determinant()));
    const picture::Vector direction = toVector(target - eye), up = toVector(world.direction(camera.up));
    const bool isPerspective = camera.isPerspective && camera.angle > 0 && camera.angle < 170;
    const double height = isPerspective
                              ? 2 * length(target - eye) * std::tan(camera.angle * std::numbers::pi / 360)
                              : camera.height * scale;
    if (height > 0 && std::isfinite(height))
        m_drawing.camera = {isPerspective, toVector(eye), toVector(target), up, static_cast<float>(height)};
    else
        m_drawing.camera = picture::fittedCamera(m_drawing, direction, up, camera.isPerspective);
    picture::includeWhatIsOnTop(m_drawing);
    if (!view.clipping) return;
    const auto& [a, b, c, d] = *view.clipping;
    const scene::Vec normal{a, b, c};
    if (const double square = dot(normal, normal); square > 0 && std::isfinite(square))
        m_drawing.section =
            picture::Section{toVector(world(-d / square * normal)), toVector(world.normal(normal))};
}

void Depiction::cut(const SectionWish& wish) {
    const picture::Camera& camera = m_drawing.camera;
    const auto along = [&](picture::Vector v) { return wish.axis == 0 ? v.x : wish.axis == 1 ? v.y : v.z; };
    const float side = along(camera.eye) < along(camera.target) ? -1.0F : 1.0F;
    picture::Section section;
    section.point = camera.target;
    float& at = wish.axis == 0 ? section.point.x : wish.axis == 1 ? section.point.y : section.point.z;
    if (wish.at)
        at = static_cast<float>(*wish.at);
    else
        at = middleAlong(static_cast<std::size_t>(wish.axis), m_drawing).value_or(at);
    (wish.axis == 0 ? section.normal.x : wish.axis == 1 ? section.normal.y : section.normal.z) = side;
    m_drawing.section = section;
}

/// Lines have the same width however small a part is, and would leave nothing of its colour.
void Depiction::fadeLinesOfSmallParts() {
    constexpr double gone = 8, full = 48; // pixels from corner to corner
    const double pixels = m_drawing.height / static_cast<double>(m_drawing.camera.height);
    std::vector<double> sizes(m_scene.parts.size(), -1);
    for (const Extent& extent : m_extents) {
        const scene::Instance& instance = m_scene.instances[extent.instance];
        double& size = sizes[instance.part];
        if (size < 0) size = diagonalOf(m_scene.parts[instance.part].shape);
        const double seen = pixels * size * std::cbrt(std::abs(instance.world.determinant()));
        const auto strength = static_cast<float>(std::clamp((seen - gone) / (full - gone), 0.0, 1.0));
        for (std::size_t i = extent.firstTriangles; i < extent.endTriangles; ++i)
            m_drawing.triangles[i].outline = strength;
        for (std::size_t i = extent.firstLines; i < extent.endLines; ++i)
            m_drawing.lines[i].color.alpha *= strength;
    }
}

} // namespace zeq::depiction
