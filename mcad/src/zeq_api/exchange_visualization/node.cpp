// The JSON form of scene nodes, and their copies and their end, which never recurse.
#include "zeq_api/exchange_visualization/node.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_visualization/area.h"
#include "zeq_api/json/form.h"
#include "zeq_api/json/tree_row.h"

namespace zeq {

namespace {

constexpr const char* nullChild = "ExcVisuNode: attempt to add null child Visu Node object.";

} // namespace

const EnumTable& enumTable(ExcVisuNode::EType) {
    using enum ExcVisuNode::EType;
    static constexpr EnumEntry names[] = {{UNDEFINED, L"UNDEFINED"},
                                          {ROOT, L"ROOT"},
                                          {GROUP, L"GROUP"},
                                          {GEOMETRY, L"GEOMETRY"},
                                          {MESHES, L"MESHES"},
                                          {MESH, L"MESH"},
                                          {WIRES, L"WIRES"},
                                          {WIRE, L"WIRE"},
                                          {POINTS, L"POINTS"},
                                          {POINTSET, L"POINTSET"},
                                          {PMI, L"PMI"},
                                          {FTA_CONSTRUCTED_GEOMETRY, L"FTA_CONSTRUCTED_GEOMETRY"},
                                          {NOTES, L"NOTES"},
                                          {NOTE, L"NOTE"},
                                          {FLAGNOTE, L"FLAGNOTE"},
                                          {NOA, L"NOA"},
                                          {DATUMS, L"DATUMS"},
                                          {DATUM_SIMPLE, L"DATUM_SIMPLE"},
                                          {DATUM_TARGET, L"DATUM_TARGET"},
                                          {DATUM_UNKNOWN, L"DATUM_UNKNOWN"},
                                          {DIMENSIONS, L"DIMENSIONS"},
                                          {DIMENSION_BASIC, L"DIMENSION_BASIC"},
                                          {DIMENSION_LENGTH, L"DIMENSION_LENGTH"},
                                          {DIMENSION_DISTANCE, L"DIMENSION_DISTANCE"},
                                          {DIMENSION_LINEAR, L"DIMENSION_LINEAR"},
                                          {DIMENSION_ORIENTED_LINEAR, L"DIMENSION_ORIENTED_LINEAR"},
                                          {DIMENSION_DIAMETER, L"DIMENSION_DIAMETER"},
                                          {DIMENSION_RADIUS, L"DIMENSION_RADIUS"},
                                          {DIMENSION_ANGLE, L"DIMENSION_ANGLE"},
                                          {DIMENSION_ORIENTED_ANGLE, L"DIMENSION_ORIENTED_ANGLE"},
                                          {DIMENSION_COORDINATE_3D, L"DIMENSION_COORDINATE_3D"},
                                          {DIMENSION_CHAMFER, L"DIMENSION_CHAMFER"},
                                          {DIMENSION_UNKNOWN, L"DIMENSION_UNKNOWN"},
                                          {GEOMTOLS, L"GEOMTOLS"},
                                          {GEOMTOL_STRAIGHTNESS, L"GEOMTOL_STRAIGHTNESS"},
                                          {GEOMTOL_FLATNESS, L"GEOMTOL_FLATNESS"},
                                          {GEOMTOL_CIRCULARITY, L"GEOMTOL_CIRCULARITY"},
                                          {GEOMTOL_CYLINDRICITY, L"GEOMTOL_CYLINDRICITY"},
                                          {GEOMTOL_PROFILE_LINE, L"GEOMTOL_PROFILE_LINE"},
                                          {GEOMTOL_PROFILE_SURFACE, L"GEOMTOL_PROFILE_SURFACE"},
                                          {GEOMTOL_COMP_PROFILE_SURFACE, L"GEOMTOL_COMP_PROFILE_SURFACE"},
                                          {GEOMTOL_PATTERN_LOCATION, L"GEOMTOL_PATTERN_LOCATION"},
                                          {GEOMTOL_PARALLELISM, L"GEOMTOL_PARALLELISM"},
                                          {GEOMTOL_ANGULARITY, L"GEOMTOL_ANGULARITY"},
                                          {GEOMTOL_PERPENDICULARITY, L"GEOMTOL_PERPENDICULARITY"},
                                          {GEOMTOL_POSITION, L"GEOMTOL_POSITION"},
                                          {GEOMTOL_POSITION_LINE, L"GEOMTOL_POSITION_LINE"},
                                          {GEOMTOL_POSITION_SURFACE, L"GEOMTOL_POSITION_SURFACE"},
                                          {GEOMTOL_COMP_POSITION, L"GEOMTOL_COMP_POSITION"},
                                          {GEOMTOL_TOLERANCE, L"GEOMTOL_TOLERANCE"},
                                          {GEOMTOL_CONCENTRICITY, L"GEOMTOL_CONCENTRICITY"},
                                          {GEOMTOL_SYMMETRY, L"GEOMTOL_SYMMETRY"},
                                          {GEOMTOL_RUNOUT_CIRCULAR, L"GEOMTOL_RUNOUT_CIRCULAR"},
                                          {GEOMTOL_RUNOUT_TOTAL, L"GEOMTOL_RUNOUT_TOTAL"},
                                          {GEOMTOL_NOTE_ONLY, L"GEOMTOL_NOTE_ONLY"},
                                          {GEOMTOL_UNKNOWN, L"GEOMTOL_UNKNOWN"},
                                          {ROUGHNESSES, L"ROUGHNESSES"},
                                          {ROUGHNESS, L"ROUGHNESS"},
                                          {DRAWINGSHEET, L"DRAWINGSHEET"},
                                          {ACTIVEDRAWINGSHEET, L"ACTIVEDRAWINGSHEET"},
                                          {DRAWINGSHEETS, L"DRAWINGSHEETS"}};
    static const EnumTable table{"ExcVisuNode::EType", names};
    return table;
}

struct ExcVisuNode::JsonForm {
    using This = ExcVisuNode;
    static constexpr json::Form form{
        json::Head{"ExcVisuNode", area::exchangeVisualization},
        json::field(L"is_leaf", &This::m_isLeaf),
        json::field(L"type", &This::m_type),
        json::field(L"group_name", &This::m_groupName),
        json::field(L"attributes", &This::m_attributes, json::whenSet),
        json::field(L"transformation", &This::m_transformation, json::whenSet),
        json::field(L"mesh", &This::m_mesh, json::whenSet),
        json::field(L"wire", &This::m_wire, json::whenSet),
        json::field(L"pmi", &This::m_pmi, json::whenSet),
        json::field(L"point_set", &This::m_pointSet, json::whenSet),
        json::tree(L"child_nodes", &This::m_childNodes, &This::addChildNode),
    };
};

ZEQ_JSON_OBJECT(ExcVisuNode)

ExcVisuNode::~ExcVisuNode() {
    // Goes down to the deepest nodes and releases from there. On the way down a node keeps its siblings that are
    // left, and behind them, in the room of its own entry, the node above it: nothing is allocated.
    std::vector<ExcVisuNodePtr> level = std::move(m_childNodes);
    ExcVisuNodePtr above; // the one whose children are in `level`
    for (;;) {
        if (!level.empty()) {
            ExcVisuNodePtr node = std::move(level.back());
            level.pop_back();
            if (node.use_count() != 1 || node->m_childNodes.empty()) continue;
            level.swap(node->m_childNodes);
            node->m_childNodes.push_back(std::move(above));
            above = std::move(node);
        } else if (above) {
            const ExcVisuNodePtr done = std::move(above);
            level = std::move(done->m_childNodes);
            above = std::move(level.back());
            level.pop_back();
        } else {
            return;
        }
    }
}

ExcVisuNodePtr ExcVisuNode::cloneWithoutChildren() const {
    auto copy = std::make_shared<ExcVisuNode>();
    copy->m_isLeaf = m_isLeaf;
    copy->m_type = m_type;
    copy->m_groupName = m_groupName;
    copy->m_attributes = m_attributes;
    copy->m_transformation = m_transformation;
    copy->m_mesh = m_mesh ? m_mesh->clone() : nullptr;
    copy->m_wire = m_wire ? m_wire->clone() : nullptr;
    copy->m_pmi = m_pmi;
    copy->m_pointSet = m_pointSet;
    return copy;
}

ExcVisuNodePtr ExcVisuNode::clone() const {
    ExcVisuNodePtr root = cloneWithoutChildren();
    std::vector<std::pair<const ExcVisuNode*, ExcVisuNode*>> pending{{this, root.get()}};
    while (!pending.empty()) {
        const auto [from, to] = pending.back();
        pending.pop_back();
        to->m_childNodes.reserve(from->m_childNodes.size());
        for (const ExcVisuNodePtr& child : from->m_childNodes) {
            to->m_childNodes.push_back(child->cloneWithoutChildren());
            pending.emplace_back(child.get(), to->m_childNodes.back().get());
        }
    }
    return root;
}

void ExcVisuNode::addChildNode(const ExcVisuNodePtr& node) {
    detail::appendChild(m_childNodes, node, nullChild);
}
void ExcVisuNode::addChildNodes(const std::vector<ExcVisuNodePtr>& nodes) {
    detail::appendEach(m_childNodes, nodes, nullChild);
}
void ExcVisuNode::setChildNodes(const std::vector<ExcVisuNodePtr>& nodes) {
    detail::setChildren(m_childNodes, nodes, nullChild);
}

} // namespace zeq
