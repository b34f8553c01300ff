// One walk through the topology, shell by shell.
#include "brep/check.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <map>

#include "brep/walk.h"

namespace zeq::brep {

namespace {

class ShellCheck {
public:
    explicit ShellCheck(Check& result) : m_result(result) {}

    void check(const SHELL& shell) {
        for (const FACE* face = shell.face(); face; face = face->next()) {
            ++m_faces;
            m_isSolid = m_isSolid && face->sides() == SINGLE_SIDED;
            for (const LOOP* loop = face->loop(); loop; loop = loop->next()) checkLoop(*loop, *face);
        }
        checkUses();
        checkGap("a vertex lies ", m_vertexGap, " from the end of its edge");
        checkGap("an edge lies ", m_edgeGap, " from the surface of its face");
        m_result.vertexGap = std::max(m_result.vertexGap, m_vertexGap);
        m_result.edgeGap = std::max(m_result.edgeGap, m_edgeGap);
    }

private:
    struct Uses {
        int forward = 0;
        int reversed = 0;
        int partners = 0; ///< coedges in the ring of partners
    };

    void checkLoop(const LOOP& loop, const FACE& face);
    int countPartners(const COEDGE& coedge);
    void checkVertices(const EDGE& edge);
    void checkDistance(const COEDGE& coedge, const SURFACE* surface);
    void checkUses();
    void checkGap(const char* before, double gap, const char* after);
    static void widen(double& gap, const SPAvector& distance) {
        const double length = distance.len();
        gap = std::max(gap, std::isnan(length) ? std::numeric_limits<double>::infinity() : length);
    }
    void fault(const std::string& text) { m_result.faults.push_back(text); }

    Check& m_result;
    bool m_isSolid = true;
    std::int64_t m_faces = 0;
    std::int64_t m_loops = 0;
    double m_vertexGap = 0;
    double m_edgeGap = 0;
    std::map<const EDGE*, Uses> m_uses;
    ENTITY_LIST m_vertices;
};

void ShellCheck::checkLoop(const LOOP& loop, const FACE& face) {
    ++m_loops;
    const COEDGE* coedge = loop.start();
    if (!coedge) return fault("a loop has no coedge");
    do {
        if (!coedge->edge()) return fault("a coedge has no edge");
        if (!coedge->next() || coedge->next()->previous() != coedge)
            return fault("the coedges of a loop form no ring");
        if (coedge->end() != coedge->next()->start()) fault("a loop is not closed");
        Uses& uses = m_uses[coedge->edge()];
        uses.partners = countPartners(*coedge);
        if (uses.forward + uses.reversed == 0) checkVertices(*coedge->edge());
        ++(coedge->sense() == FORWARD ? uses.forward : uses.reversed);
        m_vertices.add(coedge->edge()->start());
        m_vertices.add(coedge->edge()->end());
        checkDistance(*coedge, face.geometry());
        coedge = coedge->next();
    } while (coedge != loop.start());
}

int ShellCheck::countPartners(const COEDGE& coedge) {
    constexpr int mostPartners = 1000;
    int count = 1;
    for (const COEDGE* each = coedge.partner(); each && each != &coedge; each = each->partner())
        if (each->edge() != coedge.edge() || ++count > mostPartners) {
            fault("partners of a coedge have other edges");
            break;
        }
    return count;
}

void ShellCheck::checkVertices(const EDGE& edge) {
    const CURVE* curve = edge.geometry();
    if (!curve || !curve->evaluable()) return;
    const CurveRange range = rangeOf(edge);
    const auto gap = [&](const VERTEX* vertex, double parameter) {
        if (!vertex || !vertex->geometry()) return fault("an edge has no vertex");
        widen(m_vertexGap, vertex->geometry()->coords() - curve->eval_position(parameter));
    };
    gap(edge.start(), range.from);
    gap(edge.end(), range.to);
}

void ShellCheck::checkDistance(const COEDGE& coedge, const SURFACE* surface) {
    constexpr int samples = 10;
    const EDGE& edge = *coedge.edge();
    const CURVE* curve = edge.geometry();
    if (!curve) return; // a point, which the vertices tell
    if (!surface || !canBeFollowed(coedge, *surface)) {
        ++m_result.unchecked;
        return;
    }
    const PCURVE* pcurve = coedge.geometry();
    const bool hasPcurve = pcurve && pcurve->evaluable();
    const CurveRange range = rangeOf(edge);
    for (int i = 0; i < samples; ++i) {
        const double part = static_cast<double>(i) / (samples - 1);
        const double parameter = (1 - part) * range.from + part * range.to;
        const SPAposition point = curve->eval_position(parameter);
        const SPApar_pos uv = hasPcurve ? pcurve->eval_position(parameter) : surface->param(point);
        widen(m_edgeGap, surface->eval_position(uv) - point);
    }
}

void ShellCheck::checkGap(const char* before, double gap, const char* after) {
    if (gap <= Check::tolerance) return;
    char number[32];
    std::snprintf(number, sizeof number, "%.3g", gap);
    fault(before + std::string(number) + after);
}

void ShellCheck::checkUses() {
    const auto isApart = [](const auto& each) {
        return each.second.partners < each.second.forward + each.second.reversed;
    };
    if (std::any_of(m_uses.begin(), m_uses.end(), isApart)) fault("the uses of an edge are not all partners");
    if (!m_isSolid) return;
    std::int64_t edges = 0;
    for (const auto& [edge, uses] : m_uses) {
        if (!edge->geometry()) continue; // a point bounds one face only, and is no edge of the shell
        ++edges;
        if (uses.forward != 1 || uses.reversed != 1) {
            fault("an edge of a solid is not used once in either direction");
            return;
        }
    }
    // V - E + F - (inner loops) = 2 - 2 * genus; a face without a boundary counts like a sphere or torus
    // alone.
    const std::int64_t euler = m_vertices.count() - edges + m_faces - (m_loops - m_faces);
    if (m_loops >= m_faces && (euler > 2 || euler % 2 != 0))
        fault("the Euler characteristic of a shell is " + std::to_string(euler));
}

} // namespace

void Check::add(const Check& other) {
    faults.insert(faults.end(), other.faults.begin(), other.faults.end());
    vertexGap = std::max(vertexGap, other.vertexGap);
    edgeGap = std::max(edgeGap, other.edgeGap);
    unchecked += other.unchecked;
}

Check check(const ENTITY_LIST& entities) {
    Check result;
    forEachShell(entities, [&](const BODY&, const SHELL& shell) { ShellCheck(result).check(shell); });
    return result;
}

} // namespace zeq::brep
