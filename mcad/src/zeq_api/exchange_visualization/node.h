// The tree of a scene. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zeq_api/exchange_common/geometry.h"
#include "zeq_api/exchange_visualization/annotation.h"
#include "zeq_api/exchange_visualization/attributes.h"
#include "zeq_api/exchange_visualization/mesh.h"

namespace zeq {

/// A node of the scene with at most one thing of each kind to show, and its children. Which types may stand below
/// which is the producer's; the tree may be as deep as it likes.
class ExcVisuNode : public IJsonObject {
public:
    enum class EType {
        UNDEFINED,
        ROOT,
        GROUP,
        GEOMETRY,
        MESHES,
        MESH,
        WIRES,
        WIRE,
        POINTS,
        POINTSET,
        PMI,
        FTA_CONSTRUCTED_GEOMETRY,
        NOTES,
        NOTE,
        FLAGNOTE,
        NOA,
        DATUMS,
        DATUM_SIMPLE,
        DATUM_TARGET,
        DATUM_UNKNOWN,
        DIMENSIONS,
        DIMENSION_BASIC,
        DIMENSION_LENGTH,
        DIMENSION_DISTANCE,
        DIMENSION_LINEAR,
        DIMENSION_ORIENTED_LINEAR,
        DIMENSION_DIAMETER,
        DIMENSION_RADIUS,
        DIMENSION_ANGLE,
        DIMENSION_ORIENTED_ANGLE,
        DIMENSION_COORDINATE_3D,
        DIMENSION_CHAMFER,
        DIMENSION_UNKNOWN,
        GEOMTOLS,
        GEOMTOL_STRAIGHTNESS,
        GEOMTOL_FLATNESS,
        GEOMTOL_CIRCULARITY,
        GEOMTOL_CYLINDRICITY,
        GEOMTOL_PROFILE_LINE,
        GEOMTOL_PROFILE_SURFACE,
        GEOMTOL_COMP_PROFILE_SURFACE,
        GEOMTOL_PATTERN_LOCATION,
        GEOMTOL_PARALLELISM,
        GEOMTOL_ANGULARITY,
        GEOMTOL_PERPENDICULARITY,
        GEOMTOL_POSITION,
        GEOMTOL_POSITION_LINE,
        GEOMTOL_POSITION_SURFACE,
        GEOMTOL_COMP_POSITION,
        GEOMTOL_TOLERANCE,
        GEOMTOL_CONCENTRICITY,
        GEOMTOL_SYMMETRY,
        GEOMTOL_RUNOUT_CIRCULAR,
        GEOMTOL_RUNOUT_TOTAL,
        GEOMTOL_NOTE_ONLY,
        GEOMTOL_UNKNOWN,
        ROUGHNESSES,
        ROUGHNESS,
        DRAWINGSHEET,
        ACTIVEDRAWINGSHEET,
        DRAWINGSHEETS
    };

    ExcVisuNode() = default;
    /// Copies share what they hold, children included; see clone().
    ExcVisuNode(const ExcVisuNode&) = default;
    ExcVisuNode(ExcVisuNode&&) = default;
    ExcVisuNode& operator=(const ExcVisuNode&) = default;
    ExcVisuNode& operator=(ExcVisuNode&&) = default;
    ~ExcVisuNode() override;

    /// Appends to the children.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    /// A copy of the node and everything below it, with meshes and wires of its own; what else the nodes hold is
    /// shared.
    std::shared_ptr<ExcVisuNode> clone() const;

    bool isLeaf() const { return m_isLeaf; }
    void setLeaf(bool isLeaf) { m_isLeaf = isLeaf; }

    /// May be null, as everything else that the node holds.
    const ExcVisuAttributesPtr& attributes() const { return m_attributes; }
    void setAttributes(const ExcVisuAttributesPtr& attributes) { m_attributes = attributes; }

    /// From the node to its parent.
    const std::shared_ptr<ExcTransformation>& transformation() const { return m_transformation; }
    void setTransformation(const std::shared_ptr<ExcTransformation>& transformation) {
        m_transformation = transformation;
    }

    const ExcVisuMeshPtr& mesh() const { return m_mesh; }
    void setMesh(const ExcVisuMeshPtr& mesh) { m_mesh = mesh; }

    const ExcVisuWirePtr& wire() const { return m_wire; }
    void setWire(const ExcVisuWirePtr& wire) { m_wire = wire; }

    const ExcVisuPMIPtr& pmi() const { return m_pmi; }
    void setPMI(ExcVisuPMIPtr pmi) { m_pmi = std::move(pmi); }

    const ExcVisuPointSetPtr& pointSet() const { return m_pointSet; }
    void setPointSet(const ExcVisuPointSetPtr& points) { m_pointSet = points; }

    EType type() const { return m_type; }
    void setType(EType type) { m_type = type; }

    const std::wstring& groupName() const { return m_groupName; }
    void setGroupName(const std::wstring& name) { m_groupName = name; }

    const std::vector<std::shared_ptr<ExcVisuNode>>& childNodes() const { return m_childNodes; }
    /// Appends a child; null is refused with a warning.
    void addChildNode(const std::shared_ptr<ExcVisuNode>& node);
    void addChildNodes(const std::vector<std::shared_ptr<ExcVisuNode>>& nodes);
    void setChildNodes(const std::vector<std::shared_ptr<ExcVisuNode>>& nodes);

private:
    struct JsonForm;
    std::shared_ptr<ExcVisuNode> cloneWithoutChildren() const;

    bool m_isLeaf = false;
    EType m_type = EType::UNDEFINED;
    std::wstring m_groupName;
    ExcVisuAttributesPtr m_attributes;
    std::shared_ptr<ExcTransformation> m_transformation;
    ExcVisuMeshPtr m_mesh;
    ExcVisuWirePtr m_wire;
    ExcVisuPMIPtr m_pmi;
    ExcVisuPointSetPtr m_pointSet;
    std::vector<std::shared_ptr<ExcVisuNode>> m_childNodes;
};
const EnumTable& enumTable(ExcVisuNode::EType);
using ExcVisuNodePtr = std::shared_ptr<ExcVisuNode>;

} // namespace zeq
