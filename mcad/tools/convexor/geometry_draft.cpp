// Walks the boundary representation once: vertices and edges are converted when they are first met.
#include "convexor/geometry_draft.h"

#include <algorithm>
#include <map>
#include <utility>

#include <BRep_Tool.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_DataMapOfShapeInteger.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Vertex.hxx>
#include <TopoDS_Wire.hxx>

#include "convexor/edge_tracing.h"
#include "convexor/face_boundary.h"

namespace zeq::convexor {

namespace {

double roughLength(const Piece& piece) {
    constexpr int chords = 8;
    double length = 0;
    SPAposition last = piece.curve->eval_position(piece.range.start_pt());
    for (int i = 1; i <= chords; ++i) {
        const double way = static_cast<double>(i) / chords;
        const SPAposition next =
            piece.curve->eval_position((1 - way) * piece.range.start_pt() + way * piece.range.end_pt());
        length += (next - last).len();
        last = next;
    }
    return length;
}

class Drafter {
public:
    Drafter(const TopoDS_Shape& part, const Numbering& numbering, double tolerance, Rigour rigour)
        : m_numbering(numbering), m_tolerance(tolerance), m_rigour(rigour) {
        addLumps(part);
        addPoints(part);
    }

    Draft take() { return std::move(m_draft); }

private:
    void addLumps(const TopoDS_Shape& shape);
    void addLump(const TopoDS_Shape& whole, bool isSolid);
    void addFace(const TopoDS_Face& face, std::vector<Draft::Face>& shell);
    void addLoop(Draft::Face& made, const TopoDS_Face& face, Edges edges, const Support& support);
    void addWires(const TopoDS_Shape& shape);
    /// The vertices that no edge uses.
    void addPoints(const TopoDS_Shape& part);
    /// Whether the work on a shape succeeds; else the shape is a loss.
    template <class Work>
    bool isDone(const TopoDS_Shape& shape, const Work& work);
    bool isClosed(const Draft::Lump& lump) const;
    std::size_t edgeOf(const TopoDS_Edge& edge);
    /// The vertex at an end of an edge, whose curve ends at t.
    std::size_t endOf(const Draft::Edge& edge, const TopoDS_Vertex& vertex, double t);
    std::size_t vertexOf(const TopoDS_Vertex& vertex);

    const Numbering& m_numbering;
    const double m_tolerance;
    const Rigour m_rigour;
    TopTools_DataMapOfShapeInteger m_edges; ///< to indexes of the draft
    TopTools_DataMapOfShapeInteger m_vertices;
    Draft m_draft;
};

void Drafter::addLumps(const TopoDS_Shape& shape) {
    switch (shape.ShapeType()) {
    case TopAbs_COMPOUND:
    case TopAbs_COMPSOLID:
        for (TopoDS_Iterator part(shape); part.More(); part.Next()) addLumps(part.Value());
        break;
    case TopAbs_SOLID:
        addLump(shape, true);
        break;
    case TopAbs_SHELL:
    case TopAbs_FACE:
        addLump(shape, false);
        break;
    case TopAbs_WIRE:
    case TopAbs_EDGE:
        addWires(shape);
        break;
    default:
        break;
    }
}

void Drafter::addLump(const TopoDS_Shape& whole, bool isSolid) {
    Draft::Lump lump{isSolid, {}};
    const std::size_t lost = m_draft.losses.size();
    const auto add = [&](const TopoDS_Shape& faces) {
        std::vector<Draft::Face> shell;
        for (TopExp_Explorer face(faces, TopAbs_FACE); face.More(); face.Next())
            addFace(TopoDS::Face(face.Current()), shell);
        if (!shell.empty()) lump.shells.push_back(std::move(shell));
    };
    if (isSolid) {
        for (TopoDS_Iterator shell(whole); shell.More(); shell.Next())
            if (shell.Value().ShapeType() == TopAbs_SHELL) add(shell.Value());
    } else {
        add(whole);
    }
    if (lump.shells.empty()) return;
    if (isSolid && !isClosed(lump)) {
        lump.isSolid = false;
        if (m_draft.losses.size() == lost) ++m_draft.openSolids;
    }
    m_draft.lumps.push_back(std::move(lump));
}

/// Whether every edge is used as often in the one direction as in the other.
bool Drafter::isClosed(const Draft::Lump& lump) const {
    std::map<std::size_t, int> balance;
    for (const auto& shell : lump.shells)
        for (const Draft::Face& face : shell)
            for (const Draft::Chain& loop : face.loops)
                for (const Draft::Use& use : loop) balance[use.edge] += use.sense == FORWARD ? 1 : -1;
    return std::all_of(balance.begin(), balance.end(), [&](const auto& each) {
        return each.second == 0 || !m_draft.edges[each.first].piece.curve;
    });
}

void Drafter::addFace(const TopoDS_Face& face, std::vector<Draft::Face>& shell) {
    Draft::Face made{m_numbering.of(face), nullptr, FORWARD, {}};
    const auto convert = [&] {
        const Support support = convexor::support(face, m_tolerance);
        made.surface = support.surface;
        made.sense = (face.Orientation() == TopAbs_REVERSED) != support.isOpposite ? REVERSED : FORWARD;
        for (TopoDS_Iterator wire(face.Oriented(TopAbs_FORWARD)); wire.More(); wire.Next()) {
            if (wire.Value().ShapeType() != TopAbs_WIRE) continue;
            for (Edges& loop :
                 loopsOf(TopoDS::Wire(wire.Value()), TopoDS::Face(face.Oriented(TopAbs_FORWARD)), m_rigour))
                addLoop(made, face, std::move(loop), support);
        }
    };
    if (!isDone(face, convert)) return discard(made);
    for (const Draft::Chain& loop : made.loops)
        for (const Draft::Use& use : loop) {
            Draft::Edge& edge = m_draft.edges[use.edge];
            if (use.gap <= edge.gap) continue;
            edge.gap = use.gap;
            edge.farthestFace = made.number;
        }
    shell.push_back(std::move(made));
}

void Drafter::addLoop(Draft::Face& made, const TopoDS_Face& face, Edges edges, const Support& support) {
    // Seen against the face's normal the face is on the left.
    const bool isReversed = face.Orientation() == TopAbs_REVERSED;
    if (isReversed) std::reverse(edges.begin(), edges.end());
    const TopoDS_Face forward = TopoDS::Face(face.Oriented(TopAbs_FORWARD));
    Draft::Chain& loop = made.loops.emplace_back();
    for (const TopoDS_Edge& edge : edges) {
        const bool isAgainst = (edge.Orientation() == TopAbs_REVERSED) != isReversed;
        const std::size_t index = edgeOf(edge);
        loop.push_back({index, isAgainst ? REVERSED : FORWARD, nullptr, 0});
        const Piece& piece = m_draft.edges[index].piece;
        if (!piece.curve) continue;
        const Trace trace = convexor::trace(edge, piece, forward, support, m_tolerance);
        loop.back().pcurve = trace.pcurve;
        loop.back().gap = trace.gap;
    }
}

template <class Work>
bool Drafter::isDone(const TopoDS_Shape& shape, const Work& work) {
    std::string reason;
    try {
        work();
        return true;
    } catch (const GeometryError& error) {
        reason = error.what();
    } catch (const Standard_Failure& error) {
        reason = std::string("the CAD kernel fails with ") + error.DynamicType()->Name() + " " +
                 error.GetMessageString();
    }
    m_draft.losses.push_back({shape, m_numbering.of(shape), reason});
    return false;
}

void Drafter::addWires(const TopoDS_Shape& shape) {
    const auto add = [&](const Edges& edges) {
        isDone(shape, [&] {
            Draft::Chain chain;
            for (const TopoDS_Edge& edge : edges)
                chain.push_back(
                    {edgeOf(edge), edge.Orientation() == TopAbs_REVERSED ? REVERSED : FORWARD, nullptr, 0});
            m_draft.wires.push_back({chain, leadsTo(edges.back(), edges.front())});
        });
    };
    if (shape.ShapeType() == TopAbs_EDGE) {
        if (!BRep_Tool::Degenerated(TopoDS::Edge(shape))) add({TopoDS::Edge(shape)});
    } else if (const Edges edges = edgesOf(TopoDS::Wire(shape)); !edges.empty() && isChain(edges)) {
        add(edges);
    } else {
        for (const TopoDS_Edge& edge : edges) addWires(edge);
    }
}

void Drafter::addPoints(const TopoDS_Shape& part) {
    for (TopExp_Explorer vertex(part, TopAbs_VERTEX, TopAbs_EDGE); vertex.More(); vertex.Next()) {
        if (m_vertices.IsBound(vertex.Current())) continue;
        const std::size_t index = vertexOf(TopoDS::Vertex(vertex.Current()));
        m_draft.edges.push_back({0, {nullptr, {}}, index, index, 0});
        m_draft.wires.push_back({{{m_draft.edges.size() - 1, FORWARD, nullptr, 0}}, true});
    }
}

std::size_t Drafter::edgeOf(const TopoDS_Edge& edge) {
    if (const int* known = m_edges.Seek(edge)) return static_cast<std::size_t>(*known);
    const TopoDS_Edge forward = TopoDS::Edge(edge.Oriented(TopAbs_FORWARD));
    Draft::Edge made{m_numbering.of(edge), {nullptr, {}}, 0, 0, BRep_Tool::Tolerance(edge)};
    if (!BRep_Tool::Degenerated(edge)) {
        made.piece = piece(forward);
        made.length = roughLength(made.piece);
    }
    made.start = endOf(made, TopExp::FirstVertex(forward), made.piece.range.start_pt());
    made.end = endOf(made, TopExp::LastVertex(forward), made.piece.range.end_pt());
    m_draft.edges.push_back(made);
    m_edges.Bind(edge, static_cast<int>(m_draft.edges.size() - 1));
    return m_draft.edges.size() - 1;
}

std::size_t Drafter::endOf(const Draft::Edge& edge, const TopoDS_Vertex& vertex, double t) {
    if (vertex.IsNull()) throw GeometryError("an edge has no vertices");
    const std::size_t index = vertexOf(vertex);
    if (!edge.piece.curve) return index;
    Draft::Vertex& met = m_draft.vertices[index];
    const double gap = (edge.piece.curve->eval_position(t) - met.point).len();
    if (gap > met.gap) {
        met.gap = gap;
        met.farthestEdge = edge.number;
    }
    return index;
}

std::size_t Drafter::vertexOf(const TopoDS_Vertex& vertex) {
    if (const int* known = m_vertices.Seek(vertex)) return static_cast<std::size_t>(*known);
    m_draft.vertices.push_back({position(BRep_Tool::Pnt(vertex)), BRep_Tool::Tolerance(vertex)});
    m_vertices.Bind(vertex, static_cast<int>(m_draft.vertices.size() - 1));
    return m_draft.vertices.size() - 1;
}

} // namespace

Draft draft(const TopoDS_Shape& part, const Numbering& numbering, double tolerance, Rigour rigour) {
    return Drafter(part, numbering, tolerance, rigour).take();
}

void discard(Draft::Face& face) {
    ENTITY_LIST geometry;
    geometry.add(face.surface);
    for (const Draft::Chain& loop : face.loops)
        for (const Draft::Use& use : loop) geometry.add(use.pcurve);
    api_del_entity_list(geometry);
}

void discard(Draft& draft) {
    for (Draft::Lump& lump : draft.lumps)
        for (auto& shell : lump.shells)
            for (Draft::Face& face : shell) discard(face);
    for (const Draft::Edge& edge : draft.edges)
        if (edge.piece.curve) api_del_entity(edge.piece.curve);
    draft = {};
}

} // namespace zeq::convexor
