// One walk through the topology, shell by shell; then the distances, face by face and edge by edge.
#include "brep/check.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <numeric>
#include <unordered_map>

#include "brep/parts.h"
#include "brep/walk.h"
#include "text/text.h"

namespace zeq::brep {

namespace {

std::string figure(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3g", value);
    return text;
}

/// Sets of things numbered from 0, of which any two can be united.
class Unions {
public:
    explicit Unions(std::size_t count) : m_parents(count) {
        std::iota(m_parents.begin(), m_parents.end(), std::size_t{0});
    }
    std::size_t find(std::size_t i) {
        while (m_parents[i] != i) i = m_parents[i] = m_parents[m_parents[i]];
        return i;
    }
    void unite(std::size_t i, std::size_t j) { m_parents[find(i)] = find(j); }
    std::size_t sets() const {
        std::size_t sets = 0;
        for (std::size_t i = 0; i < m_parents.size(); ++i) sets += m_parents[i] == i;
        return sets;
    }

private:
    std::vector<std::size_t> m_parents;
};

class ShellCheck {
public:
    ShellCheck(const Parts& parts, std::size_t number, std::vector<Fault>& faults)
        : m_parts(parts), m_name("shell " + std::to_string(number)), m_faults(faults) {}

    void check(const SHELL& shell) {
        for (const FACE* face = shell.face(); face; face = face->next()) {
            m_isSolid = m_isSolid && face->sides() == SINGLE_SIDED;
            for (const LOOP* loop = face->loop(); loop; loop = loop->next()) checkLoop(*loop, *face);
        }
        checkUses(shell);
    }

private:
    struct Uses {
        const EDGE* edge;
        int forward = 0;
        int reversed = 0;
        int partners = 0; ///< coedges in the ring of partners
    };

    void checkLoop(const LOOP& loop, const FACE& face);
    int countPartners(const COEDGE& coedge);
    void checkUses(const SHELL& shell);
    void checkPieces(const SHELL& shell);
    void fault(const std::string& kind, const std::string& text, const FACE* face, const EDGE* edge,
               double distance = 0) {
        m_faults.push_back({kind, text, face ? std::optional(m_parts.number(*face)) : std::nullopt,
                            edge ? std::optional(m_parts.number(*edge)) : std::nullopt, distance});
    }

    const Parts& m_parts;
    const std::string m_name;
    std::vector<Fault>& m_faults;
    bool m_isSolid = true;
    bool m_isWhole = true; ///< all loops are closed rings of edges
    std::vector<Uses> m_uses;
    std::unordered_map<const EDGE*, std::size_t> m_indexes; ///< in m_uses
};

void ShellCheck::checkLoop(const LOOP& loop, const FACE& face) {
    const std::string ofFace = " of " + m_parts.name(face);
    const auto broken = [&](const std::string& text) {
        m_isWhole = false;
        fault("broken loop", text, &face, nullptr);
    };
    const COEDGE* coedge = loop.start();
    if (!coedge) return broken("a loop" + ofFace + " has no coedge");
    do {
        if (!coedge->edge()) return broken("a coedge" + ofFace + " has no edge");
        if (!coedge->next() || coedge->next()->previous() != coedge)
            return broken("the coedges of a loop" + ofFace + " form no ring");
        const EDGE& edge = *coedge->edge();
        const VERTEX* const end = coedge->end();
        const VERTEX* const start = coedge->next()->start();
        if (end != start) {
            m_isWhole = false;
            const bool isKnown = end && end->geometry() && start && start->geometry();
            const double gap = isKnown ? (end->geometry()->coords() - start->geometry()->coords()).len() : 0;
            fault("open loop",
                  "a loop" + ofFace + " is not closed: it goes on " + figure(gap) + " from the end of " +
                      m_parts.name(edge),
                  &face, &edge, gap);
        }
        const auto [index, isNew] = m_indexes.try_emplace(&edge, m_uses.size());
        if (isNew) m_uses.push_back({&edge});
        Uses& uses = m_uses[index->second];
        uses.partners = countPartners(*coedge);
        ++(coedge->sense() == FORWARD ? uses.forward : uses.reversed);
        coedge = coedge->next();
    } while (coedge != loop.start());
}

int ShellCheck::countPartners(const COEDGE& coedge) {
    constexpr int mostPartners = 1000;
    int count = 1;
    for (const COEDGE* each = coedge.partner(); each && each != &coedge; each = each->partner())
        if (each->edge() != coedge.edge() || ++count > mostPartners) {
            fault("wrong partners",
                  "partners of a coedge of " + m_parts.name(*coedge.edge()) + " have other edges", nullptr,
                  coedge.edge());
            break;
        }
    return count;
}

void ShellCheck::checkUses(const SHELL& shell) {
    for (const Uses& uses : m_uses) {
        const EDGE* const edge = uses.edge;
        if (uses.partners < uses.forward + uses.reversed)
            fault("wrong partners", "the uses of " + m_parts.name(*edge) + " are not all partners", nullptr,
                  edge);
        if (!m_isSolid || !edge->geometry()) continue; // a point bounds one face only
        if (uses.forward != uses.reversed)
            fault("open solid",
                  m_parts.name(*edge) + " of a solid is used " +
                      text::counted(static_cast<std::uint64_t>(uses.forward), "time", "times") +
                      " along its direction and " +
                      text::counted(static_cast<std::uint64_t>(uses.reversed), "time", "times") +
                      " against it",
                  nullptr, edge);
    }
    if (m_isSolid && m_isWhole) checkPieces(shell);
}

void ShellCheck::checkPieces(const SHELL& shell) {
    // Faces hold the edges of their loops together, vertices those that end there. That each piece is a
    // closed surface needs no count of vertices: it follows from the uses of its edges.
    Unions pieces(m_uses.size());
    std::unordered_map<const VERTEX*, std::size_t> atVertex; // one of the edges there
    std::size_t bare = 0;
    for (const FACE* face = shell.face(); face; face = face->next()) {
        if (!face->loop()) ++bare;
        forEachCoedge(*face, [&](const COEDGE& coedge) {
            const std::size_t index = m_indexes.at(coedge.edge());
            pieces.unite(index, m_indexes.at(face->loop()->start()->edge()));
            for (const VERTEX* vertex : {coedge.start(), coedge.end()})
                if (vertex) pieces.unite(index, atVertex.try_emplace(vertex, index).first->second);
        });
    }
    if (const std::size_t count = pieces.sets() + bare; count > 1)
        fault("shell in pieces",
              m_name + " is in " + std::to_string(count) + " pieces that do not touch each other", nullptr,
              nullptr);
}

template <class Entity>
double toleranceOf(const Entity& entity, bool isTolerant) {
    const double own = entity.get_tolerance();
    return isTolerant && own > 0 ? own : Check::tolerance;
}

double distance(const SPAposition& a, const SPAposition& b) {
    const double length = (a - b).len();
    return std::isnan(length) ? std::numeric_limits<double>::infinity() : length;
}

void checkEnds(const EDGE& edge, const Parts& parts, Check& result) {
    const auto note = [&result](double tolerance) {
        result.largestTolerance = std::max(result.largestTolerance, tolerance);
    };
    if (is_TEDGE(&edge)) note(edge.get_tolerance());
    const CURVE* const curve = edge.geometry();
    if (!curve || !curve->evaluable()) return;
    const auto fault = [&](const std::string& kind, const std::string& text, double gap) {
        result.faults.push_back({kind, parts.name(edge) + text, std::nullopt, parts.number(edge), gap});
    };
    const auto check = [&](const VERTEX* vertex, double parameter) {
        if (!vertex || !vertex->geometry()) return fault("no vertex", " has no vertex", 0);
        if (is_TVERTEX(vertex)) note(vertex->get_tolerance());
        const double gap = distance(vertex->geometry()->coords(), curve->eval_position(parameter));
        result.vertexGap = std::max(result.vertexGap, gap);
        const double allowed = toleranceOf(*vertex, is_TVERTEX(vertex));
        if (gap > allowed)
            fault("vertex off edge",
                  " ends " + figure(gap) + " from its vertex, whose tolerance is " + figure(allowed), gap);
    };
    const CurveRange range = rangeOf(edge);
    check(edge.start(), range.from);
    check(edge.end(), range.to);
}

void checkUse(const COEDGE& coedge, const FACE& face, const Parts& parts, Check& result) {
    const EDGE& edge = *coedge.edge();
    const CURVE* const curve = edge.geometry();
    const SURFACE* const surface = face.geometry();
    if (!curve) return; // a point, which the vertices tell
    if (!surface || !canBeFollowed(coedge, *surface)) {
        ++result.unchecked;
        return;
    }
    const PCURVE* const pcurve = coedge.geometry();
    const bool hasPcurve = pcurve && pcurve->evaluable();
    CurveRange range = rangeOf(edge);
    if (coedge.sense() == REVERSED) std::swap(range.from, range.to);
    const CurveRange inPlane = rangeOf(coedge);
    const auto between = [](const CurveRange& ends, double part) {
        return (1 - part) * ends.from + part * ends.to;
    };
    constexpr int samples = 10;
    double gap = 0;
    for (int i = 0; i < samples; ++i) {
        const double part = static_cast<double>(i) / (samples - 1);
        const SPAposition point = curve->eval_position(between(range, part));
        const SPApar_pos uv =
            hasPcurve ? pcurve->eval_position(between(inPlane, part)) : surface->param(point);
        gap = std::max(gap, distance(surface->eval_position(uv), point));
    }
    result.edgeGap = std::max(result.edgeGap, gap);
    const double allowed = toleranceOf(edge, is_TEDGE(&edge));
    if (gap > allowed)
        result.faults.push_back({"edge off surface",
                                 parts.name(edge) + " lies " + figure(gap) + " from the surface of " +
                                     parts.name(face) + ", its tolerance is " + figure(allowed),
                                 parts.number(face), parts.number(edge), gap});
}

} // namespace

std::vector<std::string> summarized(const std::vector<Fault>& faults) {
    struct Group {
        const Fault* worst;
        std::uint64_t count = 0;
    };
    std::vector<Group> groups;
    for (const Fault& fault : faults) {
        auto group =
            std::ranges::find_if(groups, [&](const Group& g) { return g.worst->kind == fault.kind; });
        if (group == groups.end()) group = groups.insert(group, {&fault});
        ++group->count;
        if (fault.distance > group->worst->distance) group->worst = &fault;
    }
    std::vector<std::string> texts;
    for (const Group& group : groups) {
        texts.push_back(group.worst->text);
        if (group.count > 1)
            texts.back() += (group.worst->distance > 0 ? " (the worst of " : " (one of ") +
                            std::to_string(group.count) + ")";
    }
    return texts;
}

std::string json(const std::vector<Fault>& faults) {
    std::string json;
    for (const Fault& fault : faults) {
        json += (json.empty() ? "{\"kind\":" : ",{\"kind\":") + text::jsonString(fault.kind) +
                ",\"text\":" + text::jsonString(fault.text);
        if (fault.face) json += ",\"face\":" + std::to_string(*fault.face);
        if (fault.edge) json += ",\"edge\":" + std::to_string(*fault.edge);
        json += ",\"distance\":" + text::number(fault.distance) + "}";
    }
    return "[" + json + "]";
}

void Check::add(const Check& other) {
    faults.insert(faults.end(), other.faults.begin(), other.faults.end());
    vertexGap = std::max(vertexGap, other.vertexGap);
    edgeGap = std::max(edgeGap, other.edgeGap);
    unchecked += other.unchecked;
    largestTolerance = std::max(largestTolerance, other.largestTolerance);
}

Check check(const ENTITY_LIST& entities, Supervisor* supervisor) {
    const Parts parts(entities);
    Check result;
    for (std::size_t i = 0; i < parts.shells().size(); ++i)
        ShellCheck(parts, i + 1, result.faults).check(*parts.shells()[i].shell);
    std::vector<Check> found(parts.edges() + parts.faces());
    Work(supervisor).forEach(found.size(), [&](std::size_t i) {
        if (i < parts.edges()) return checkEnds(parts.edge(i), parts, found[i]);
        const FACE& face = parts.face(i - parts.edges());
        forEachCoedge(face, [&](const COEDGE& coedge) { checkUse(coedge, face, parts, found[i]); });
    });
    for (const Check& each : found) result.add(each);
    return result;
}

} // namespace zeq::brep
