// Ways through the topology of bodies. What was restored has sound chains and rings, so they end.
#pragma once

#include <algorithm>
#include <utility>

#include "platform/acis/acis.h"

namespace zeq::brep {

/// Calls `visit(body, shell)` for every shell of every body on the list.
template <class Visit>
void forEachShell(const ENTITY_LIST& entities, const Visit& visit) {
    for (int i = 0; i < entities.count(); ++i) {
        if (!is_BODY(entities[i])) continue;
        const auto& body = static_cast<const BODY&>(*entities[i]);
        for (const LUMP* lump = body.lump(); lump; lump = lump->next())
            for (const SHELL* shell = lump->shell(); shell; shell = shell->next()) visit(body, *shell);
    }
}

/// Calls `visit(body, wire)` for every wire of every body on the list and of its shells.
template <class Visit>
void forEachWire(const ENTITY_LIST& entities, const Visit& visit) {
    const auto forEach = [&visit](const BODY& body, const WIRE* first) {
        for (const WIRE* wire = first; wire; wire = wire->next()) visit(body, *wire);
    };
    forEachShell(entities, [&](const BODY& body, const SHELL& shell) { forEach(body, shell.wire()); });
    for (int i = 0; i < entities.count(); ++i)
        if (is_BODY(entities[i])) {
            const auto& body = static_cast<const BODY&>(*entities[i]);
            forEach(body, body.wire());
        }
}

/// Calls `visit(coedge)` for every use of an edge by the wire; not for coedges that have no edge.
template <class Visit>
void forEachCoedge(const WIRE& wire, const Visit& visit) {
    ENTITY_LIST coedges;
    coedges.add(wire.coedge());
    for (int i = 0; i < coedges.count(); ++i) {
        const auto& coedge = static_cast<const COEDGE&>(*coedges[i]);
        coedges.add(coedge.next());
        coedges.add(coedge.previous());
        if (coedge.edge()) visit(coedge);
    }
}

/// Calls `visit(coedge)` for every use of an edge by the loop, in the order of the loop; not for coedges that
/// have no edge.
template <class Visit>
void forEachCoedge(const LOOP& loop, const Visit& visit) {
    for (const COEDGE* coedge = loop.start(); coedge;) {
        if (coedge->edge()) visit(*coedge);
        coedge = coedge->next() == loop.start() ? nullptr : coedge->next();
    }
}

/// Calls `visit(coedge)` for every use of an edge by the face.
template <class Visit>
void forEachCoedge(const FACE& face, const Visit& visit) {
    for (const LOOP* loop = face.loop(); loop; loop = loop->next()) forEachCoedge(*loop, visit);
}

/// The part of its curve that an edge covers, in parameters of the curve and in the direction of the edge:
/// the first may be the greater one.
struct CurveRange {
    double from;
    double to;
};
inline CurveRange rangeOf(const EDGE& edge) {
    const double sign = edge.sense() == FORWARD ? 1 : -1;
    return {sign * edge.start_param(), sign * edge.end_param()};
}

/// The part of its curve, or if it has a pcurve, of that, which the use of an edge covers, in the direction
/// of the loop.
inline CurveRange rangeOf(const COEDGE& coedge) {
    CurveRange range = rangeOf(*coedge.edge());
    if (coedge.sense() == REVERSED) std::swap(range.from, range.to);
    if (is_TCOEDGE(&coedge) && coedge.geometry()) {
        const SPAinterval own = static_cast<const TCOEDGE&>(coedge).param_range();
        const double sign = coedge.sense() == coedge.edge()->sense() ? 1 : -1;
        if (own.finite() && own.length() > 0) range = {sign * own.start_pt(), sign * own.end_pt()};
    }
    return range;
}

/// Whether the use of an edge can be evaluated, and followed in the parameters of its face's surface.
inline bool canBeFollowed(const COEDGE& coedge, const SURFACE& surface) {
    const CURVE* const curve = coedge.edge()->geometry();
    const PCURVE* const pcurve = coedge.geometry();
    return curve && curve->evaluable() && surface.evaluable() &&
           ((pcurve && pcurve->evaluable()) || surface.invertible());
}

/// The value of a range that is nearest to another one. The range may be the wrong way round.
inline double clamped(double value, const SPAinterval& range) {
    return std::max(range.start_pt(), std::min(value, range.end_pt()));
}

} // namespace zeq::brep
