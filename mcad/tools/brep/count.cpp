// One walk through the topology; the kinds are tables.
#include "brep/count.h"

#include <algorithm>
#include <numeric>

#include "brep/parts.h"
#include "text/text.h"

namespace zeq::brep {

namespace {

logical isAny(const ENTITY*) { return true; }
logical isNone(const ENTITY* entity) { return entity == nullptr; }

template <class Kinds, class Counts>
void count(const Kinds& kinds, Counts& counts, const ENTITY* entity) {
    const auto kind = std::ranges::find_if(kinds, [entity](const auto& each) { return each.isKind(entity); });
    ++counts[static_cast<std::size_t>(kind - kinds.begin())];
}

template <class Counts>
std::uint64_t total(const Counts& counts) {
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
}

template <class Kinds, class Counts>
std::string listed(const Kinds& kinds, const Counts& counts) {
    std::string list;
    for (std::size_t i = 0; i < kinds.size(); ++i)
        if (counts[i] > 0)
            list += (list.empty() ? "" : ", ") + text::counted(counts[i], kinds[i].singular, kinds[i].plural);
    return list.empty() ? list : " (" + list + ")";
}

template <class Kinds, class Counts>
std::string members(const Kinds& kinds, const Counts& counts) {
    std::string members;
    for (std::size_t i = 0; i < kinds.size(); ++i)
        members += std::string(i == 0 ? "" : ",") + "\"" + kinds[i].key + "\":" + std::to_string(counts[i]);
    return "{" + members + "}";
}

} // namespace

const std::array<Count::Kind, 6> Count::surfaceKinds{{
    {"plane", "plane", "planes", &is_PLANE},
    {"cone", "cylinder or cone", "cylinders and cones", &is_CONE},
    {"sphere", "sphere", "spheres", &is_SPHERE},
    {"torus", "torus", "tori", &is_TORUS},
    {"spline", "B-spline", "B-splines", &is_SPLINE},
    {"other", "of another kind", "of other kinds", &isAny},
}};
const std::array<Count::Kind, 5> Count::curveKinds{{
    {"straight", "line", "lines", &is_STRAIGHT},
    {"ellipse", "circle or ellipse", "circles and ellipses", &is_ELLIPSE},
    {"intcurve", "B-spline", "B-splines", &is_INTCURVE},
    {"point", "point", "points", &isNone},
    {"other", "of another kind", "of other kinds", &isAny},
}};

void Count::add(const ENTITY_LIST& entities) {
    for (int i = 0; i < entities.count(); ++i)
        if (is_BODY(entities[i])) ++m_bodies;
    const Parts parts(entities);
    for (std::size_t i = 0; i < parts.faces(); ++i) count(surfaceKinds, m_faces, parts.face(i).geometry());
    for (std::size_t i = 0; i < parts.edges(); ++i) count(curveKinds, m_edges, parts.edge(i).geometry());
    m_vertices += parts.vertices();
}

void Count::add(const Count& other) {
    m_bodies += other.m_bodies;
    m_vertices += other.m_vertices;
    for (std::size_t i = 0; i < m_faces.size(); ++i) m_faces[i] += other.m_faces[i];
    for (std::size_t i = 0; i < m_edges.size(); ++i) m_edges[i] += other.m_edges[i];
}

std::string Count::text() const {
    return text::counted(m_bodies, "body", "bodies") + ", " + text::counted(total(m_faces), "face", "faces") +
           listed(surfaceKinds, m_faces) + ", " + text::counted(total(m_edges), "edge", "edges") +
           listed(curveKinds, m_edges) + ", " + text::counted(m_vertices, "vertex", "vertices");
}

std::string Count::json() const {
    return "{\"bodies\":" + std::to_string(m_bodies) + ",\"faces\":" + members(surfaceKinds, m_faces) +
           ",\"edges\":" + members(curveKinds, m_edges) + ",\"vertices\":" + std::to_string(m_vertices) + "}";
}

} // namespace zeq::brep
