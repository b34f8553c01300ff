// One walk through the topology; the kinds are tables.
#include "zeq/geometry_count.h"

#include <algorithm>
#include <numeric>

#include "text/text.h"

namespace zeq::host {

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

const std::array<GeometryCount::Kind, 6> GeometryCount::surfaceKinds{{
    {"plane", "plane", "planes", &is_PLANE},
    {"cone", "cylinder or cone", "cylinders and cones", &is_CONE},
    {"sphere", "sphere", "spheres", &is_SPHERE},
    {"torus", "torus", "tori", &is_TORUS},
    {"spline", "B-spline", "B-splines", &is_SPLINE},
    {"other", "of another kind", "of other kinds", &isAny},
}};
const std::array<GeometryCount::Kind, 5> GeometryCount::curveKinds{{
    {"straight", "line", "lines", &is_STRAIGHT},
    {"ellipse", "circle or ellipse", "circles and ellipses", &is_ELLIPSE},
    {"intcurve", "B-spline", "B-splines", &is_INTCURVE},
    {"point", "point", "points", &isNone},
    {"other", "of another kind", "of other kinds", &isAny},
}};

void GeometryCount::add(const ENTITY_LIST& entities) {
    ENTITY_LIST edges; // each once
    for (int i = 0; i < entities.count(); ++i) {
        if (!is_BODY(entities[i])) continue;
        ++m_bodies;
        for (const LUMP* lump = static_cast<const BODY*>(entities[i])->lump(); lump; lump = lump->next())
            for (const SHELL* shell = lump->shell(); shell; shell = shell->next())
                for (const FACE* face = shell->face(); face; face = face->next()) {
                    count(surfaceKinds, m_faces, face->geometry());
                    for (const LOOP* loop = face->loop(); loop; loop = loop->next()) {
                        const COEDGE* coedge = loop->start();
                        while (coedge) {
                            edges.add(coedge->edge());
                            coedge = coedge->next() == loop->start() ? nullptr : coedge->next();
                        }
                    }
                }
    }
    for (int i = 0; i < edges.count(); ++i)
        count(curveKinds, m_edges, static_cast<const EDGE*>(edges[i])->geometry());
}

void GeometryCount::add(const GeometryCount& other) {
    m_bodies += other.m_bodies;
    for (std::size_t i = 0; i < m_faces.size(); ++i) m_faces[i] += other.m_faces[i];
    for (std::size_t i = 0; i < m_edges.size(); ++i) m_edges[i] += other.m_edges[i];
}

std::string GeometryCount::text() const {
    return text::counted(m_bodies, "body", "bodies") + ", " + text::counted(total(m_faces), "face", "faces") +
           listed(surfaceKinds, m_faces) + ", " + text::counted(total(m_edges), "edge", "edges") +
           listed(curveKinds, m_edges);
}

std::string GeometryCount::json() const {
    return "{\"bodies\":" + std::to_string(m_bodies) + ",\"faces\":" + members(surfaceKinds, m_faces) +
           ",\"edges\":" + members(curveKinds, m_edges) + "}";
}

} // namespace zeq::host
