// What bodies consist of, and how it is called.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "brep/walk.h"
#include "platform/acis/acis.h"

namespace zeq::brep {

/// The shells, faces, edges and vertices of the bodies on a list: each once, in the order in which one meets
/// them shell by shell and then wire by wire.
class Parts {
public:
    explicit Parts(const ENTITY_LIST& entities);

    struct Shell {
        const BODY* body;
        const SHELL* shell;
    };
    const std::vector<Shell>& shells() const { return m_shells; }

    std::size_t faces() const { return m_faceBodies.size(); }
    const FACE& face(std::size_t i) const { return static_cast<const FACE&>(*m_faces[static_cast<int>(i)]); }
    const BODY& bodyOfFace(std::size_t i) const { return *m_faceBodies[i]; }
    std::size_t edges() const { return m_edgeBodies.size(); }
    const EDGE& edge(std::size_t i) const { return static_cast<const EDGE&>(*m_edges[static_cast<int>(i)]); }
    const BODY& bodyOfEdge(std::size_t i) const { return *m_edgeBodies[i]; }
    std::size_t vertices() const { return static_cast<std::size_t>(m_vertices.count()); }

    /// The id of a face or an edge; for one without, its place, counted from 1.
    long number(const FACE& face) const { return numberOf(face, m_faces); }
    long number(const EDGE& edge) const { return numberOf(edge, m_edges); }
    /// "face 7" with the id 7, "face #7" for the seventh one, which has no id.
    std::string name(const FACE& face) const { return "face " + sign(face) + std::to_string(number(face)); }
    std::string name(const EDGE& edge) const { return "edge " + sign(edge) + std::to_string(number(edge)); }

private:
    void add(EDGE& edge, const BODY& body);
    static long numberOf(const ENTITY& entity, const ENTITY_LIST& list);
    static std::string sign(const ENTITY& entity);

    std::vector<Shell> m_shells;
    ENTITY_LIST m_faces;
    ENTITY_LIST m_edges;
    ENTITY_LIST m_vertices;
    std::vector<const BODY*> m_faceBodies;
    std::vector<const BODY*> m_edgeBodies;
};

} // namespace zeq::brep
