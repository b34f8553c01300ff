// One walk through the topology of the bodies.
#include "brep/parts.h"

#include "zeq_api/acis_attrib_id/attrib_convexor.h"

namespace zeq::brep {

namespace {

const ATTRIB_CONVEXOR_ID* idOf(const ENTITY& entity) {
    for (const ATTRIB* attribute = entity.attrib(); attribute; attribute = attribute->next())
        if (is_ATTRIB_CONVEXOR_ID(attribute)) return static_cast<const ATTRIB_CONVEXOR_ID*>(attribute);
    return nullptr;
}

} // namespace

Parts::Parts(const ENTITY_LIST& entities) {
    forEachShell(entities, [this](const BODY& body, const SHELL& shell) {
        m_shells.push_back({&body, &shell});
        for (FACE* face = shell.face(); face; face = face->next()) {
            if (m_faces.add(face) == static_cast<int>(faces())) m_faceBodies.push_back(&body);
            forEachCoedge(*face, [&](const COEDGE& coedge) { add(*coedge.edge(), body); });
        }
    });
    forEachWire(entities, [this](const BODY& body, const WIRE& wire) {
        forEachCoedge(wire, [&](const COEDGE& coedge) { add(*coedge.edge(), body); });
    });
}

void Parts::add(EDGE& edge, const BODY& body) {
    if (m_edges.add(&edge) == static_cast<int>(edges())) m_edgeBodies.push_back(&body);
    m_vertices.add(edge.start());
    m_vertices.add(edge.end());
}

long Parts::numberOf(const ENTITY& entity, const ENTITY_LIST& list) {
    const ATTRIB_CONVEXOR_ID* const id = idOf(entity);
    return id ? id->id() : list.lookup(&entity) + 1;
}

std::string Parts::sign(const ENTITY& entity) { return idOf(entity) ? "" : "#"; }

} // namespace zeq::brep
