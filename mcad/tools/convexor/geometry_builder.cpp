// Walks the boundary representation once: vertices and edges are made when they are first met, coedges of one
// edge become partners.
#include "convexor/geometry_builder.h"

#include <algorithm>
#include <vector>

#include <BRepBuilderAPI_Transform.hxx>
#include <BRepTools_WireExplorer.hxx>
#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Wire.hxx>

#include "convexor/edge_tracing.h"
#include "convexor/geometry_conversion.h"
#include "zeq_api/acis_attrib_id/attrib_convexor.h"

namespace zeq::convexor {

namespace {

class BodyBuilder {
public:
    BodyBuilder(const TopoDS_Shape& shape, double tolerance) : m_shape(shape), m_tolerance(tolerance) {
        TopExp::MapShapes(shape, TopAbs_FACE, m_faces);
        TopExp::MapShapes(shape, TopAbs_EDGE, m_edges);
        TopExp::MapShapes(shape, TopAbs_VERTEX, m_vertices);
        m_edgeOf.resize(static_cast<std::size_t>(m_edges.Extent()));
        m_vertexOf.resize(static_cast<std::size_t>(m_vertices.Extent()));
    }

    BODY* build() {
        if (m_faces.IsEmpty()) return nullptr;
        try {
            m_body = keep(ACIS_NEW BODY());
            addLumps(m_shape);
        } catch (...) {
            api_del_entity_list(m_made);
            throw;
        }
        return m_body;
    }

private:
    /// Notes an entity that others do not lead to yet, for the case that the work fails.
    template <class Entity>
    Entity* keep(Entity* entity) {
        m_made.add(entity);
        return entity;
    }

    void addLumps(const TopoDS_Shape& shape);
    void addLump(const TopoDS_Shape& whole, bool isSolid);
    void fillShell(SHELL& shell, const TopoDS_Shape& faces, bool isSolid);
    FACE* makeFace(const TopoDS_Face& face);
    void addLoop(FACE& made, const TopoDS_Face& face, const TopoDS_Wire& wire, const Support& support);
    EDGE* edgeOf(const TopoDS_Edge& edge);
    VERTEX* vertexOf(const TopoDS_Vertex& vertex);

    const TopoDS_Shape m_shape;
    const double m_tolerance; ///< for what cannot be expressed exactly
    TopTools_IndexedMapOfShape m_faces;
    TopTools_IndexedMapOfShape m_edges;
    TopTools_IndexedMapOfShape m_vertices;
    std::vector<EDGE*> m_edgeOf;
    std::vector<VERTEX*> m_vertexOf;
    ENTITY_LIST m_made;
    BODY* m_body = nullptr;
};

void BodyBuilder::addLumps(const TopoDS_Shape& shape) {
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
    default: // wires, edges and vertices alone are no part of a body
        break;
    }
}

void BodyBuilder::addLump(const TopoDS_Shape& whole, bool isSolid) {
    auto* const lump = ACIS_NEW LUMP();
    m_body->add_lump(lump);
    const auto add = [&](const TopoDS_Shape& faces) {
        auto* const shell = ACIS_NEW SHELL();
        lump->add_shell(shell);
        fillShell(*shell, faces, isSolid);
    };
    if (!isSolid) return add(whole);
    for (TopoDS_Iterator shell(whole); shell.More(); shell.Next())
        if (shell.Value().ShapeType() == TopAbs_SHELL) add(shell.Value());
}

void BodyBuilder::fillShell(SHELL& shell, const TopoDS_Shape& faces, bool isSolid) {
    for (TopExp_Explorer face(faces, TopAbs_FACE); face.More(); face.Next()) {
        FACE* const made = makeFace(TopoDS::Face(face.Current()));
        shell.add_face(made);
        if (!isSolid) made->set_sides(DOUBLE_SIDED);
    }
}

FACE* BodyBuilder::makeFace(const TopoDS_Face& face) {
    const Support support = convexor::support(face, m_tolerance);
    const bool isReversed = face.Orientation() == TopAbs_REVERSED;
    auto* const made =
        keep(ACIS_NEW FACE(support.surface, isReversed != support.isOpposite ? REVERSED : FORWARD));
    ACIS_NEW ATTRIB_CONVEXOR_ID(made, m_faces.FindIndex(face));
    for (TopoDS_Iterator wire(face.Oriented(TopAbs_FORWARD)); wire.More(); wire.Next())
        if (wire.Value().ShapeType() == TopAbs_WIRE)
            addLoop(*made, face, TopoDS::Wire(wire.Value()), support);
    return made;
}

void BodyBuilder::addLoop(FACE& made, const TopoDS_Face& face, const TopoDS_Wire& wire,
                          const Support& support) {
    const TopoDS_Face forward = TopoDS::Face(face.Oriented(TopAbs_FORWARD));
    std::vector<TopoDS_Edge> edges;
    for (BRepTools_WireExplorer edge(wire, forward); edge.More(); edge.Next())
        edges.push_back(edge.Current());
    if (edges.empty()) return;
    int count = 0;
    for (TopoDS_Iterator edge(wire); edge.More(); edge.Next()) ++count;
    if (count != static_cast<int>(edges.size())) throw GeometryError("the boundary of a face does not close");

    // Seen against the face's normal the face is on the left.
    const bool isReversed = face.Orientation() == TopAbs_REVERSED;
    if (isReversed) std::reverse(edges.begin(), edges.end());
    COEDGE* first = nullptr;
    COEDGE* previous = nullptr;
    for (const TopoDS_Edge& edge : edges) {
        const bool isAgainst = (edge.Orientation() == TopAbs_REVERSED) != isReversed;
        auto* const coedge = keep(ACIS_NEW COEDGE(edgeOf(edge), isAgainst ? REVERSED : FORWARD, previous));
        if (previous)
            previous->set_next(coedge);
        else
            first = coedge;
        if (!BRep_Tool::Degenerated(edge))
            coedge->set_geometry(trace(edge, *coedge->edge(), forward, support, m_tolerance).pcurve);
        // The ring of partners; a coedge that is alone has none.
        if (COEDGE* const other = coedge->edge()->coedge(); other != coedge) {
            coedge->set_partner(other->partner() ? other->partner() : other);
            other->set_partner(coedge);
        }
        previous = coedge;
    }
    previous->set_next(first);
    first->set_previous(previous);
    made.add_loop(ACIS_NEW LOOP(first));
}

EDGE* BodyBuilder::edgeOf(const TopoDS_Edge& edge) {
    const int index = m_edges.FindIndex(edge);
    EDGE*& made = m_edgeOf[static_cast<std::size_t>(index - 1)];
    if (made) return made;
    const TopoDS_Edge forward = TopoDS::Edge(edge.Oriented(TopAbs_FORWARD));
    const TopoDS_Vertex start = TopExp::FirstVertex(forward);
    const TopoDS_Vertex end = TopExp::LastVertex(forward);
    if (start.IsNull() || end.IsNull()) throw GeometryError("an edge has no vertices");
    if (BRep_Tool::Degenerated(edge)) {
        made = keep(ACIS_NEW EDGE(vertexOf(start), vertexOf(end)));
    } else {
        const auto [curve, range] = piece(forward);
        made = keep(ACIS_NEW EDGE(vertexOf(start), vertexOf(end), curve, FORWARD, range));
    }
    ACIS_NEW ATTRIB_CONVEXOR_ID(made, index);
    return made;
}

VERTEX* BodyBuilder::vertexOf(const TopoDS_Vertex& vertex) {
    VERTEX*& made = m_vertexOf[static_cast<std::size_t>(m_vertices.FindIndex(vertex) - 1)];
    if (!made) made = keep(ACIS_NEW VERTEX(ACIS_NEW APOINT(position(BRep_Tool::Pnt(vertex)))));
    return made;
}

} // namespace

BODY* buildBody(const TopoDS_Shape& shape, double scale) {
    if (shape.IsNull()) return nullptr;
    gp_Trsf scaling;
    scaling.SetScaleFactor(scale);
    const TopoDS_Shape scaled =
        scale == 1 ? shape : BRepBuilderAPI_Transform(shape, scaling, Standard_True).Shape();
    constexpr double tolerance = 1e-7;
    return BodyBuilder(scaled, tolerance * scale).build();
}

} // namespace zeq::convexor
