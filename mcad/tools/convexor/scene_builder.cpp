// Collects faces, edges and points, those that are hidden apart.
#include "convexor/scene_builder.h"

#include <array>

#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>

#include "convexor/scene_node.h"

namespace zeq::convexor {

namespace {

using NodeType = ExcVisuNode::EType;

/// What is shown, or what is hidden.
struct Half {
    std::vector<ExcVisuFacePtr> faces;
    std::vector<ExcVisuEdgePtr> edges;
    std::vector<ExcVisuEdgePtr> lines; ///< edges that bound no face
    std::vector<float> points;

    ExcVisuMeshPtr mesh() const {
        if (faces.empty() && edges.empty()) return nullptr;
        auto mesh = std::make_shared<ExcVisuMesh>();
        mesh->setGeometryType(EVisuGeometryType::part);
        mesh->setFaces(faces);
        mesh->setEdges(edges);
        return mesh;
    }
    ExcVisuWirePtr wire() const {
        if (lines.empty()) return nullptr;
        auto wire = std::make_shared<ExcVisuWire>();
        wire->setGeometryType(EVisuGeometryType::part);
        wire->setEdges(lines);
        return wire;
    }
    ExcVisuPointSetPtr pointSet() const {
        if (points.empty()) return nullptr;
        const auto markers = std::make_shared<ExcVisuPoints>();
        markers->setPointIndices(countUp(points.size() / 3));
        markers->setPoint(points);
        auto set = std::make_shared<ExcVisuPointSet>();
        set->setGeometryType(EVisuGeometryType::part);
        set->addPoints(markers);
        return set;
    }
};

class SceneBuilder {
public:
    SceneBuilder(const TopoDS_Shape& part, const Numbering& numbering, const Appearance& appearance,
                 const Fineness& fineness, double scale, std::vector<std::string>& losses)
        : m_numbering(numbering), m_appearance(appearance), m_fineness(fineness), m_scale(scale),
          m_losses(losses) {
        TopTools_IndexedMapOfShape faces;
        TopExp::MapShapes(part, TopAbs_FACE, faces);
        TopTools_IndexedMapOfShape edges; // those of faces that are shown come first
        for (const bool isHidden : {false, true}) {
            const int known = edges.Extent();
            for (int i = 1; i <= faces.Extent(); ++i) {
                if (m_appearance.of(faces(i)).isHidden != isHidden) continue;
                addFace(TopoDS::Face(faces(i)), m_halves[isHidden].faces);
                TopExp::MapShapes(faces(i), TopAbs_EDGE, edges);
            }
            for (int i = known + 1; i <= edges.Extent(); ++i)
                addEdge(TopoDS::Edge(edges(i)), halfOf(edges(i), isHidden).edges);
        }
        for (TopExp_Explorer free(part, TopAbs_EDGE, TopAbs_FACE); free.More(); free.Next())
            if (isNew(free.Current(), edges))
                addEdge(TopoDS::Edge(free.Current()), halfOf(free.Current(), false).lines);

        TopTools_IndexedMapOfShape vertices;
        for (int i = 1; i <= edges.Extent(); ++i) TopExp::MapShapes(edges(i), TopAbs_VERTEX, vertices);
        for (TopExp_Explorer free(part, TopAbs_VERTEX, TopAbs_EDGE); free.More(); free.Next())
            if (isNew(free.Current(), vertices))
                appendPoint(halfOf(free.Current(), false).points, TopoDS::Vertex(free.Current()), m_scale);
    }

    /// Null if there is nothing.
    ExcVisuNodePtr root(bool withHidden) const {
        auto root = makeNode(NodeType::ROOT, m_appearance.part);
        const auto add = [&](NodeType groupType, NodeType type, const auto& make, auto set) {
            const ExcVisuNodePtr group = makeNode(groupType);
            for (const bool isHidden : {false, true}) {
                const auto content = (m_halves[isHidden].*make)();
                if (!content || (isHidden && !withHidden)) continue;
                const ExcVisuNodePtr leaf = makeNode(type, {{}, isHidden});
                leaf->setLeaf(true);
                (leaf.get()->*set)(content);
                group->addChildNode(leaf);
            }
            if (!group->childNodes().empty()) root->addChildNode(group);
        };
        add(NodeType::MESHES, NodeType::MESH, &Half::mesh, &ExcVisuNode::setMesh);
        add(NodeType::WIRES, NodeType::WIRE, &Half::wire, &ExcVisuNode::setWire);
        add(NodeType::POINTS, NodeType::POINTSET, &Half::pointSet, &ExcVisuNode::setPointSet);
        return root->childNodes().empty() ? nullptr : root;
    }

private:
    static bool isNew(const TopoDS_Shape& shape, TopTools_IndexedMapOfShape& known) {
        const int count = known.Extent();
        return known.Add(shape) > count;
    }

    Half& halfOf(const TopoDS_Shape& shape, bool isHidden) {
        return m_halves[isHidden || m_appearance.of(shape).isHidden];
    }

    void addFace(const TopoDS_Face& face, std::vector<ExcVisuFacePtr>& faces) {
        const std::wstring id = std::to_wstring(m_numbering.of(face));
        const ExcVisuFacePtr shown = displayFace(face, m_scale);
        if (!shown) {
            m_losses.push_back("face " + std::to_string(m_numbering.of(face)) + " could not be tessellated");
            return;
        }
        shown->setId(id);
        shown->setMechanicalId(id);
        shown->setColor(m_appearance.of(face).color);
        faces.push_back(shown);
    }

    void addEdge(const TopoDS_Edge& edge, std::vector<ExcVisuEdgePtr>& edges) {
        const ExcVisuEdgePtr shown = displayEdge(edge, m_scale, m_fineness);
        if (!shown) return;
        shown->setMechanicalId(std::to_wstring(m_numbering.of(edge)));
        shown->setColor(m_appearance.of(edge).color);
        edges.push_back(shown);
    }

    const Numbering& m_numbering;
    const Appearance& m_appearance;
    const Fineness m_fineness;
    const double m_scale;
    std::vector<std::string>& m_losses;
    std::array<Half, 2> m_halves;
};

} // namespace

ExcVisualizationDataPtr buildScene(const TopoDS_Shape& part, const Numbering& numbering,
                                   const Appearance& appearance, const Fineness& fineness,
                                   const SceneStyle& style, std::vector<std::string>& losses) {
    const SceneBuilder builder(part, numbering, appearance, fineness, 1 / style.unit.millimeters, losses);
    const ExcVisuNodePtr root = builder.root(style.withHidden);
    if (!root) return nullptr;
    auto scene = std::make_shared<ExcVisualizationData>();
    scene->setUnits(style.unit.type);
    scene->addSceneRootNode(root);
    return scene;
}

} // namespace zeq::convexor
