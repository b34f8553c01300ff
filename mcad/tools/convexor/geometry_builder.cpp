// Puts together what was converted: coedges of one edge become partners.
#include "convexor/geometry_builder.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include <BRepBuilderAPI_Transform.hxx>

#include "convexor/geometry_draft.h"
#include "convexor/geometry_mending.h"
#include "zeq_api/acis_attrib_id/attrib_convexor.h"

namespace zeq::convexor {

namespace {

/// Measured distances may be a little more between the places of measurement.
constexpr double margin = 1.1;

/// The tolerance of something that was measured to be so far off. What is off by a considerable part of its
/// own size is wrong rather than inexact, and keeps what the original states.
double tolerance(double stated, double gap, double size) {
    constexpr double considerable = 0.01;
    const double measured = margin * gap;
    return measured <= std::max(considerable * size, margin * margin * stated) ? std::max(stated, measured)
                                                                               : stated;
}

/// Makes the entities of a draft, which then belong to the body.
class Assembly {
public:
    explicit Assembly(const Draft& draft)
        : m_draft(draft), m_edges(draft.edges.size()), m_vertices(draft.vertices.size()) {}

    BODY* assemble() {
        auto* const body = ACIS_NEW BODY();
        for (const Draft::Lump& lump : m_draft.lumps) body->add_lump(makeLump(lump));
        for (const Draft::Wire& wire : m_draft.wires) body->add_wire(makeWire(wire));
        // Curves of edges that only lost faces used.
        for (std::size_t i = 0; i < m_edges.size(); ++i)
            if (CURVE* const curve = m_draft.edges[i].piece.curve; curve && !m_edges[i])
                api_del_entity(curve);
        return body;
    }

private:
    LUMP* makeLump(const Draft::Lump& lump) {
        auto* const made = ACIS_NEW LUMP();
        for (const auto& faces : lump.shells) {
            auto* const shell = ACIS_NEW SHELL();
            made->add_shell(shell);
            for (const Draft::Face& face : faces) {
                FACE* const madeFace = makeFace(face);
                if (!lump.isSolid) madeFace->set_sides(DOUBLE_SIDED);
                shell->add_face(madeFace);
            }
        }
        return made;
    }

    FACE* makeFace(const Draft::Face& face) {
        auto* const made = ACIS_NEW FACE(face.surface, face.sense);
        if (face.number > 0) ACIS_NEW ATTRIB_CONVEXOR_ID(made, face.number);
        for (const Draft::Chain& loop : face.loops) made->add_loop(ACIS_NEW LOOP(makeChain(loop, true)));
        return made;
    }

    WIRE* makeWire(const Draft::Wire& wire) { return ACIS_NEW WIRE(makeChain(wire.chain, wire.isClosed)); }

    /// Gives the first coedge. An open chain ends in coedges that lead to themselves.
    COEDGE* makeChain(const Draft::Chain& chain, bool isClosed) {
        COEDGE* first = nullptr;
        COEDGE* last = nullptr;
        for (const Draft::Use& use : chain) {
            COEDGE* const coedge = makeCoedge(use, last);
            coedge->set_geometry(use.pcurve);
            if (!first) first = coedge;
            last = coedge;
        }
        first->set_previous(isClosed ? last : first);
        last->set_next(isClosed ? first : last);
        return first;
    }

    COEDGE* makeCoedge(const Draft::Use& use, COEDGE* previous) {
        EDGE* const edge = makeEdge(use.edge);
        COEDGE* const made = is_TEDGE(edge) ? ACIS_NEW TCOEDGE(edge, use.sense, previous)
                                            : ACIS_NEW COEDGE(edge, use.sense, previous);
        // The ring of partners; a coedge that is alone has none.
        if (COEDGE* const other = edge->coedge(); other != made) {
            made->set_partner(other->partner() ? other->partner() : other);
            other->set_partner(made);
        }
        return made;
    }

    EDGE* makeEdge(std::size_t index) {
        EDGE*& made = m_edges[index];
        if (made) return made;
        const Draft::Edge& edge = m_draft.edges[index];
        VERTEX* const start = makeVertex(edge.start);
        VERTEX* const end = makeVertex(edge.end);
        const double reach = tolerance(edge.stated, edge.gap, edge.length);
        if (!edge.piece.curve)
            made = ACIS_NEW EDGE(start, end);
        else if (reach > SPAresabs)
            made = ACIS_NEW TEDGE(start, end, edge.piece.curve, FORWARD, edge.piece.range, reach);
        else
            made = ACIS_NEW EDGE(start, end, edge.piece.curve, FORWARD, edge.piece.range);
        if (edge.number > 0) ACIS_NEW ATTRIB_CONVEXOR_ID(made, edge.number);
        return made;
    }

    VERTEX* makeVertex(std::size_t index) {
        VERTEX*& made = m_vertices[index];
        if (made) return made;
        const Draft::Vertex& vertex = m_draft.vertices[index];
        const double reach = tolerance(vertex.stated, vertex.gap, 0);
        auto* const point = ACIS_NEW APOINT(vertex.point);
        made = reach > SPAresabs ? ACIS_NEW TVERTEX(point, reach) : ACIS_NEW VERTEX(point);
        return made;
    }

    const Draft& m_draft;
    std::vector<EDGE*> m_edges;
    std::vector<VERTEX*> m_vertices;
};

/// The draft of a part, mended where that helps.
Draft bestDraft(const TopoDS_Shape& part, const Numbering& numbering, double tolerance, BuildNotes& notes) {
    Draft best = draft(part, numbering, tolerance, Rigour::closed);
    if (best.losses.empty()) return best;
    const std::vector<Draft::Loss> losses = best.losses;
    const MendedPart mended = mend(part, numbering, losses);
    Draft other = draft(mended.shape, mended.numbering, tolerance, Rigour::any);
    if (other.losses.size() < best.losses.size()) std::swap(best, other);
    discard(other);
    for (const Draft::Loss& loss : losses) {
        const auto isSame = [&](const Draft::Loss& each) { return each.number == loss.number; };
        if (std::none_of(best.losses.begin(), best.losses.end(), isSame))
            notes.warnings.push_back("face " + std::to_string(loss.number) +
                                     " needed healing: " + loss.reason);
    }
    return best;
}

std::string figure(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3g", value);
    return text;
}

/// Tells how many are farther off than the original says, and which of them is farthest.
template <class Each, class Sentence>
void noteGaps(const std::vector<Each>& all, const char* noun, const char* nouns, const Sentence& sentence,
              BuildNotes& notes) {
    std::size_t count = 0;
    const Each* worst = nullptr;
    for (const Each& each : all) {
        if (each.gap <= std::max(margin * each.stated, SPAresabs)) continue;
        ++count;
        if (!worst || each.gap > worst->gap) worst = &each;
    }
    if (count > 0)
        notes.warnings.push_back(std::to_string(count) + (count == 1 ? noun : nouns) +
                                 " farther off than stated: " + sentence(*worst) +
                                 ", where the tolerance is " + figure(worst->stated));
}

void noteGaps(const Draft& draft, BuildNotes& notes) {
    const auto ofEdge = [](const Draft::Edge& edge) {
        return "edge " + std::to_string(edge.number) + " lies " + figure(edge.gap) + " from face " +
               std::to_string(edge.farthestFace);
    };
    const auto ofVertex = [](const Draft::Vertex& vertex) {
        return "edge " + std::to_string(vertex.farthestEdge) + " ends " + figure(vertex.gap) +
               " from its vertex";
    };
    noteGaps(draft.edges, " edge is", " edges are", ofEdge, notes);
    noteGaps(draft.vertices, " vertex is", " vertices are", ofVertex, notes);
    if (draft.openSolids > 0)
        notes.warnings.push_back(std::to_string(draft.openSolids) +
                                 (draft.openSolids == 1 ? " solid is" : " solids are") +
                                 " not closed, and sent as faces");
}

} // namespace

BODY* buildBody(const TopoDS_Shape& shape, const Numbering& numbering, double scale, BuildNotes* notes) {
    if (shape.IsNull()) return nullptr;
    constexpr double fit = 1e-7; // in millimetres
    BuildNotes ignored;
    BuildNotes& told = notes ? *notes : ignored;
    Draft draft;
    if (scale == 1) {
        draft = bestDraft(shape, numbering, fit, told);
    } else {
        gp_Trsf scaling;
        scaling.SetScaleFactor(scale);
        BRepBuilderAPI_Transform scaled(shape, scaling, Standard_True);
        const auto copyOf = [&](const TopoDS_Shape& original) { return scaled.ModifiedShape(original); };
        draft = bestDraft(scaled.Shape(), numbering.onCopy(copyOf), fit * scale, told);
    }
    noteGaps(draft, told);
    for (const Draft::Loss& loss : draft.losses) {
        const char* const kind = loss.shape.ShapeType() == TopAbs_FACE ? "face " : "edge ";
        ++told.lost;
        if (loss.shape.ShapeType() == TopAbs_FACE) told.lostFaces.push_back({loss.number, loss.reason});
        told.errors.push_back(kind + std::to_string(loss.number) + " is left out: " + loss.reason);
    }
    for (const Draft::Lump& lump : draft.lumps)
        for (const auto& shell : lump.shells) told.faces += static_cast<int>(shell.size());
    told.wires += static_cast<int>(draft.wires.size());
    return draft.lumps.empty() && draft.wires.empty() ? nullptr : Assembly(draft).assemble();
}

} // namespace zeq::convexor
