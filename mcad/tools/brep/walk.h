// Ways through the topology of bodies. What was restored has sound chains and rings, so they end.
#pragma once

#include <algorithm>

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
