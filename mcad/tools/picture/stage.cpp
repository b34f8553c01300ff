// Batches one by one: to eye space, clipped by the near plane and the section plane, to the grid.
#include "picture/stage.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>
#include <stdexcept>

namespace zeq::picture {

namespace {

/// Nearer than all that is not on top, and lines before fillings.
constexpr float onTop = -2.0e6F;
constexpr float linesOnTop = onTop - 64;

/// What is farther away is taken for damage, lest it overflow.
constexpr float farthest = 1e15F;

struct EyeVertex {
    Vector position;
    Vector normal;
};

/// Normals keep their right angles to surfaces that a map shears or mirrors.
Affine mapOfNormals(const Affine& map) {
    Affine result{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j) {
            const std::size_t a = (i + 1) % 3, b = (i + 2) % 3, c = (j + 1) % 3, d = (j + 2) % 3;
            result[i][j] = map[a][c] * map[b][d] - map[a][d] * map[b][c];
        }
    return result;
}

/// The two planes that things are clipped by. Its answers are above zero where a point is kept.
class Clipper {
public:
    enum Plane : unsigned {
        nearPlane = 1,
        sectionPlane = 2,
        notFinite = 4
    };

    Clipper(const Projection& projection, const std::optional<Section>& section) : m_projection(projection) {
        if (!section) return;
        m_normal = unit(projection.directionToEye(section->normal));
        m_point = projection.pointToEye(section->point);
        if (!isFinite(m_point) || !(length(m_normal) > 0.5F))
            throw std::invalid_argument("the section plane must have a point and a normal with a length");
        m_hasSection = true;
    }

    bool hasSection() const { return m_hasSection; }
    const Vector& sectionNormal() const { return m_normal; }
    const Vector& sectionPoint() const { return m_point; }

    float before(Plane plane, Vector point) const {
        return plane == nearPlane ? m_projection.beforeNearPlane(point) : dot(m_point - point, m_normal);
    }
    /// The planes that the point is behind.
    unsigned code(Vector point, bool isCut) const {
        if (!(length(point) < farthest)) return notFinite;
        return (before(nearPlane, point) > 0 ? 0U : nearPlane) |
               (!isCut || !m_hasSection || before(sectionPlane, point) > 0 ? 0U : sectionPlane);
    }
    /// How far from the one to the other the plane is. Both sides of an edge get the same point, because what is kept
    /// always comes first.
    float crossing(Plane plane, Vector kept, Vector cut) const {
        const float from = before(plane, kept), to = before(plane, cut);
        return from / (from - to);
    }

    /// The part of a convex polygon that the plane keeps.
    void clip(Plane plane, std::vector<EyeVertex>& polygon) const {
        std::vector<EyeVertex> result;
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            const EyeVertex &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
            const bool isKept = before(plane, a.position) > 0, isNextKept = before(plane, b.position) > 0;
            if (isKept) result.push_back(a);
            if (isKept == isNextKept) continue;
            const EyeVertex &kept = isKept ? a : b, &cut = isKept ? b : a;
            const float t = crossing(plane, kept.position, cut.position);
            result.push_back({kept.position + (cut.position - kept.position) * t,
                              kept.normal + (cut.normal - kept.normal) * t});
        }
        polygon = std::move(result);
    }

private:
    const Projection& m_projection;
    bool m_hasSection = false;
    Vector m_normal, m_point;
};

class Builder {
public:
    Builder(const Drawing& drawing, Stage& stage)
        : m_drawing(drawing), m_stage(stage), m_clipper(stage.projection, drawing.section) {}

    void build() {
        addAllTriangles();
        for (const Lines& lines : m_drawing.lines) addLines(lines);
        for (const Points& points : m_drawing.points) addPoints(points);
        placeSection();
    }

private:
    /// The batches of a part one after another.
    void addAllTriangles() {
        const auto& batches = m_drawing.triangles;
        std::vector<std::size_t> order(batches.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::ranges::stable_sort(order, {}, [&](std::size_t i) { return batches[i].part; });
        std::optional<std::uint64_t> part;
        std::uint32_t number = 0;
        for (const std::size_t i : order) {
            if (part && *part != batches[i].part) ++number;
            part = batches[i].part;
            addTriangles(batches[i], number);
        }
    }

    void addTriangles(const Triangles& batch, std::uint32_t part) {
        const std::size_t count = batch.positions.size() / 3;
        if (batch.color.alpha <= 0) return;
        const Affine map = m_stage.projection.toEye(batch.transform), normalMap = mapOfNormals(map);
        const bool hasNormals = batch.normals.size() >= 3 * count;
        m_eye.resize(count);
        m_codes.resize(count);
        const std::size_t base = m_stage.vertices.size();
        for (std::size_t i = 0; i < count; ++i) {
            m_eye[i].position = apply(map, &batch.positions[3 * i]);
            Vector normal = hasNormals ? unit(apply(normalMap, &batch.normals[3 * i])) : Vector{};
            m_eye[i].normal = isFinite(normal) ? normal : Vector{};
            m_codes[i] = m_clipper.code(m_eye[i].position, batch.isCut);
            addVertex(m_eye[i], batch.isOnTop, m_codes[i] & (Clipper::nearPlane | Clipper::notFinite));
        }
        const auto surface = static_cast<std::uint32_t>(m_stage.surfaces.size());
        const bool isLit = batch.isLit && !batch.isOnTop;
        m_stage.surfaces.push_back(
            {batch.color, part, isLit, batch.isOnTop, isLit ? std::clamp(batch.outline, 0.0F, 1.0F) : 0.0F});
        bool isSectioned = false;
        for (std::size_t i = 0; i + 2 < batch.indices.size(); i += 3) {
            std::array<std::uint32_t, 3> corners{};
            for (std::size_t j = 0; j < 3; ++j) corners[j] = batch.indices[i + j] - batch.firstIndex;
            if (std::ranges::any_of(corners, [&](std::uint32_t at) { return at >= count; })) {
                ++m_stage.dropped;
                continue;
            }
            const unsigned a = m_codes[corners[0]], b = m_codes[corners[1]], c = m_codes[corners[2]];
            const unsigned any = a | b | c;
            if (any & Clipper::notFinite)
                ++m_stage.dropped;
            else if (any == 0)
                addTriangle(base + corners[0], base + corners[1], base + corners[2], surface);
            else if ((a & b & c) == 0)
                addClipped(corners, any, surface);
            if ((any & (Clipper::notFinite | Clipper::sectionPlane)) == Clipper::sectionPlane)
                isSectioned |= (a & b & c & Clipper::sectionPlane) == 0;
        }
        if (batch.indices.size() % 3 != 0) ++m_stage.dropped;
        if (isSectioned && (m_stage.caps.empty() || m_stage.caps.back().part != part))
            m_stage.caps.push_back({part, batch.color});
    }

    void addVertex(const EyeVertex& vertex, bool isOnTop, bool isOutOfSight = false) {
        ScreenPoint point;
        if (!isOutOfSight) point = m_stage.projection.project(vertex.position);
        if (isOnTop) point.depth += onTop;
        m_stage.vertices.push_back({point, vertex.normal});
    }

    void addTriangle(std::size_t a, std::size_t b, std::size_t c, std::uint32_t surface) {
        m_stage.triangles.push_back(
            {{static_cast<std::uint32_t>(a), static_cast<std::uint32_t>(b), static_cast<std::uint32_t>(c)},
             surface});
    }

    void addClipped(std::span<const std::uint32_t> corners, unsigned planes, std::uint32_t surface) {
        std::vector<EyeVertex> polygon;
        for (const std::uint32_t corner : corners) polygon.push_back(m_eye[corner]);
        for (const auto plane : {Clipper::nearPlane, Clipper::sectionPlane})
            if (planes & plane) m_clipper.clip(plane, polygon);
        const std::size_t base = m_stage.vertices.size();
        for (const EyeVertex& vertex : polygon) addVertex(vertex, m_stage.surfaces[surface].isOnTop);
        for (std::size_t i = 2; i < polygon.size(); ++i) addTriangle(base, base + i - 1, base + i, surface);
    }

    void addLines(const Lines& lines) {
        if (lines.color.alpha <= 0) return;
        usePen(lines.color, lines.width);
        const Affine map = m_stage.projection.toEye(lines.transform);
        const std::size_t count = lines.points.size() / 3;
        std::size_t at = 0;
        for (const std::uint32_t polyline : lines.lengths) {
            const std::size_t end = std::min(count, at + polyline);
            m_stage.dropped += at + polyline - end;
            for (std::size_t i = at; i < end; ++i) {
                const bool isDot = polyline == 1;
                if (i == at && !isDot) continue;
                addSegment(lines, apply(map, &lines.points[3 * (isDot ? i : i - 1)]),
                           apply(map, &lines.points[3 * i]));
            }
            at = end;
        }
    }

    void addPoints(const Points& points) {
        usePen(points.color, points.size);
        const Affine map = m_stage.projection.toEye(points.transform);
        for (std::size_t i = 0; i + 2 < points.points.size(); i += 3) {
            const Vector point = apply(map, &points.points[i]);
            addSegment(points, point, point);
        }
    }

    void usePen(const Color& color, float width) {
        const float pixels = std::isfinite(width) ? std::clamp(width, 0.1F, 1000.0F) : 1.0F;
        const Pen pen{color, pixels * static_cast<float>(m_stage.side) / 2};
        if (m_stage.pens.empty() || !(m_stage.pens.back() == pen)) m_stage.pens.push_back(pen);
    }

    void addSegment(const Batch& batch, Vector from, Vector to) {
        const unsigned a = m_clipper.code(from, batch.isCut), b = m_clipper.code(to, batch.isCut);
        if ((a | b) & Clipper::notFinite) ++m_stage.dropped;
        if (((a | b) & Clipper::notFinite) || (a & b)) return;
        for (const auto plane : {Clipper::nearPlane, Clipper::sectionPlane}) {
            if (!((a | b) & plane)) continue;
            const float fromBefore = m_clipper.before(plane, from), toBefore = m_clipper.before(plane, to);
            if (!(fromBefore > 0) && !(toBefore > 0)) return;
            Vector& kept = fromBefore > 0 ? from : to;
            Vector& cut = fromBefore > 0 ? to : from;
            cut = kept + (cut - kept) * m_clipper.crossing(plane, kept, cut);
        }
        ScreenPoint start = m_stage.projection.project(from), end = m_stage.projection.project(to);
        if (batch.isOnTop) {
            start.depth += linesOnTop;
            end.depth += linesOnTop;
        }
        m_stage.segments.push_back({start, end, static_cast<std::uint32_t>(m_stage.pens.size() - 1)});
    }

    /// Caps are seen from the side that was cut away.
    void placeSection() {
        if (!m_clipper.hasSection()) return;
        const Vector normal = m_clipper.sectionNormal(), point = m_clipper.sectionPoint();
        if (m_stage.projection.isFacing(point, normal))
            m_stage.section = m_stage.projection.plane(point, normal);
        else
            m_stage.caps.clear();
    }

    const Drawing& m_drawing;
    Stage& m_stage;
    Clipper m_clipper;
    std::vector<EyeVertex> m_eye;
    std::vector<unsigned> m_codes;
};

} // namespace

Stage::Stage(const Drawing& drawing, int samplesASide)
    : side(samplesASide), projection(drawing.camera, drawing.width * side, drawing.height * side) {
    Builder(drawing, *this).build();
}

} // namespace zeq::picture
