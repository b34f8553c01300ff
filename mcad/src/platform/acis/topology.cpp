// The classes of topology.h: how they are put together, and the layouts of their records.
#include "platform/acis/topology.h"

#include "platform/acis/fields.h"

TRANSFORM::TRANSFORM(const SPAtransf& transform) : m_transform(transform) {}

template <class Visitor, class... Object>
void TRANSFORM::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_transform...);
}
template class entity_of<TRANSFORM, ENTITY>;

namespace {
/// Makes an item the first of its owner's list.
template <class Item, class Owner, class OwnerBase>
void put_first(Item* item, Item*& first, Owner* owner, void (Item::*setOwner)(OwnerBase*)) {
    item->set_next(first);
    (item->*setOwner)(owner);
    first = item;
}
/// Tells the items of a list whose they are.
template <class Item, class Owner>
void own_list(Item* first, Owner* owner, void (Item::*setOwner)(Owner*)) {
    for (Item* item = first; item; item = item->next()) (item->*setOwner)(owner);
}
/// Tells the coedges that next() leads to whose they are.
void own_coedges(COEDGE* first, ENTITY* owner) {
    for (COEDGE* coedge = first; coedge && coedge->owner() != owner; coedge = coedge->next())
        coedge->set_owner(owner);
}
} // namespace

BODY::BODY(LUMP* lump) : m_lump(lump) { own_list(lump, this, &LUMP::set_body); }
void BODY::add_lump(LUMP* lump) { put_first(lump, m_lump, this, &LUMP::set_body); }
void BODY::add_wire(WIRE* wire) { put_first(wire, m_wire, this, &WIRE::set_owner); }

template <class Visitor, class... Object>
void BODY::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
    visitor.chained(object.m_lump...);
    visitor.chained(object.m_wire...);
    visitor.down(object.m_transform...);
}
template class entity_of<BODY, ENTITY>;

LUMP::LUMP(SHELL* shell, LUMP* next) : m_next(next), m_shell(shell) {
    own_list(shell, this, &SHELL::set_lump);
}
void LUMP::add_shell(SHELL* shell) { put_first(shell, m_shell, this, &SHELL::set_lump); }

template <class Visitor, class... Object>
void LUMP::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
    visitor.chained(object.m_next...);
    visitor.chained(object.m_shell...);
    visitor.up(object.m_body...);
}
template class entity_of<LUMP, ENTITY>;

SHELL::SHELL(FACE* face, SHELL* next) : m_next(next), m_face(face) { own_list(face, this, &FACE::set_shell); }
void SHELL::add_face(FACE* face) { put_first(face, m_face, this, &FACE::set_shell); }

template <class Visitor, class... Object>
void SHELL::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
    visitor.chained(object.m_next...);
    visitor.down(object.m_subshell...);
    visitor.chained(object.m_face...);
    visitor.chained(object.m_wire...);
    visitor.up(object.m_lump...);
}
template class entity_of<SHELL, ENTITY>;

FACE::FACE(SURFACE* geometry, REVBIT sense, LOOP* loop, FACE* next)
    : m_next(next), m_loop(loop), m_geometry(geometry), m_sense(sense) {
    own_list(loop, this, &LOOP::set_face);
}
void FACE::add_loop(LOOP* loop) { put_first(loop, m_loop, this, &LOOP::set_face); }

template <class Visitor, class... Object>
void FACE::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
    visitor.chained(object.m_next...);
    visitor.chained(object.m_loop...);
    visitor.up(object.m_shell...);
    visitor.up(object.m_subshell...);
    visitor.down(object.m_geometry...);
    visitor.data(object.m_sense...);
    visitor.data(object.m_sides...);
    if ((object.m_sides || ...)) visitor.data(object.m_cont...);
}
template class entity_of<FACE, ENTITY>;

LOOP::LOOP(COEDGE* start, LOOP* next) : m_next(next), m_start(start) { own_coedges(start, this); }

template <class Visitor, class... Object>
void LOOP::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
    visitor.chained(object.m_next...);
    visitor.down(object.m_start...);
    visitor.up(object.m_face...);
}
template class entity_of<LOOP, ENTITY>;

WIRE::WIRE(COEDGE* coedge, WIRE* next) : m_next(next), m_coedge(coedge) { own_coedges(coedge, this); }

template <class Visitor, class... Object>
void WIRE::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
    visitor.chained(object.m_next...);
    visitor.down(object.m_coedge...);
    visitor.up(object.m_owner...);
    visitor.up(object.m_subshell...);
    visitor.data(object.m_cont...);
}
template class entity_of<WIRE, ENTITY>;

COEDGE::COEDGE(EDGE* edge, REVBIT sense, COEDGE* previous, COEDGE* next)
    : m_next(next), m_previous(previous), m_edge(edge), m_sense(sense) {
    if (previous) previous->m_next = this;
    if (next) next->m_previous = this;
    if (edge && !edge->coedge()) edge->set_coedge(this);
}
VERTEX* COEDGE::start() const { return !m_edge ? nullptr : m_sense ? m_edge->end() : m_edge->start(); }
VERTEX* COEDGE::end() const { return !m_edge ? nullptr : m_sense ? m_edge->start() : m_edge->end(); }

template <class Visitor, class... Object>
void COEDGE::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
    visitor.down(object.m_next...);
    visitor.down(object.m_previous...);
    visitor.ring(object.m_partner...);
    visitor.down(object.m_edge...);
    visitor.data(object.m_sense...);
    visitor.up(object.m_owner...);
    visitor.data(object.m_later...);
    visitor.down(object.m_geometry...);
}
template class entity_of<COEDGE, ENTITY>;

EDGE::EDGE(VERTEX* start, VERTEX* end, CURVE* geometry, REVBIT sense, const SPAinterval& range)
    : m_start(start), m_end(end), m_geometry(geometry), m_sense(sense) {
    set_param_range(range);
    for (VERTEX* vertex : {start, end})
        if (vertex && !vertex->edge()) vertex->set_edge(this);
}
void EDGE::set_param_range(const SPAinterval& range) {
    m_startParam = range.start_pt();
    m_endParam = range.end_pt();
}

template <class Visitor, class... Object>
void EDGE::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
    visitor.down(object.m_start...);
    visitor.data(object.m_startParam...);
    visitor.down(object.m_end...);
    visitor.data(object.m_endParam...);
    visitor.up(object.m_coedge...);
    visitor.down(object.m_geometry...);
    visitor.data(object.m_sense...);
    visitor.data(object.m_convexity...);
}
template class entity_of<EDGE, ENTITY>;

VERTEX::VERTEX(APOINT* geometry, EDGE* edge) : m_edge(edge), m_geometry(geometry) {}

template <class Visitor, class... Object>
void VERTEX::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
    visitor.up(object.m_edge...);
    visitor.data(object.m_later...);
    visitor.down(object.m_geometry...);
}
template class entity_of<VERTEX, ENTITY>;

TEDGE::TEDGE(VERTEX* start, VERTEX* end, CURVE* geometry, REVBIT sense, const SPAinterval& range,
             double tolerance)
    : entity_of(start, end, geometry, sense, range), m_tolerance(tolerance) {}

template <class Visitor, class... Object>
void TEDGE::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_tolerance...);
}
template class entity_of<TEDGE, EDGE>;

TCOEDGE::TCOEDGE(EDGE* edge, REVBIT sense, COEDGE* previous, COEDGE* next)
    : entity_of(edge, sense, previous, next) {
    if (edge && sense == FORWARD) set_param_range({edge->start_param(), edge->end_param()});
    if (edge && sense == REVERSED) set_param_range({-edge->end_param(), -edge->start_param()});
}
void TCOEDGE::set_param_range(const SPAinterval& range) {
    m_startParam = range.start_pt();
    m_endParam = range.end_pt();
}

template <class Visitor, class... Object>
void TCOEDGE::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_startParam...);
    visitor.data(object.m_endParam...);
}
template class entity_of<TCOEDGE, COEDGE>;

TVERTEX::TVERTEX(APOINT* geometry, double tolerance) : entity_of(geometry), m_tolerance(tolerance) {}

template <class Visitor, class... Object>
void TVERTEX::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_tolerance...);
}
template class entity_of<TVERTEX, VERTEX>;

APOINT::APOINT(const SPAposition& coords) : m_coords(coords) {}

template <class Visitor, class... Object>
void APOINT::walk(Visitor& visitor, Object&... object) {
    visitor.up(object.m_pattern...);
    visitor.data(object.m_coords...);
}
template class entity_of<APOINT, ENTITY>;
