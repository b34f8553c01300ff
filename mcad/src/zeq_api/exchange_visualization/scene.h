// A whole scene with its views, and the exchange objects that carry one: for a block, and for the assembly. Objects
// are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "zeq_api/exchange_common/entity.h"
#include "zeq_api/exchange_common/units.h"
#include "zeq_api/exchange_object/exchange_object.h"
#include "zeq_api/exchange_visualization/camera.h"
#include "zeq_api/exchange_visualization/node.h"

namespace zeq {

/// A plane that annotations are laid out in.
class ExcVisuView : public IJsonObject {
public:
    /// Appends to the annotation ids.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& displayName() const { return m_displayName; }
    void setDisplayName(const std::wstring& name) { m_displayName = name; }

    const std::wstring& id() const { return m_id; }
    void setId(const std::wstring& id) { m_id = id; }

    /// Names the semantic annotation view.
    const std::wstring& mechanicalId() const { return m_mechanicalId; }
    void setMechanicalId(const std::wstring& id) { m_mechanicalId = id; }

    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { m_hidden = hidden; }

    const ExcVector3d& origin() const { return m_origin; }
    void setOrigin(const ExcVector3d& origin) { m_origin = origin; }

    const ExcVector3d& directionU() const { return m_directionU; }
    void setDirectionU(const ExcVector3d& direction) { m_directionU = direction; }

    const ExcVector3d& directionV() const { return m_directionV; }
    void setDirectionV(const ExcVector3d& direction) { m_directionV = direction; }

    /// The annotations that lie in the plane.
    const std::vector<std::wstring>& annotationIds() const { return m_annotationIds; }
    void addAnnotationId(const std::wstring& id) { m_annotationIds.push_back(id); }
    void setAnnotationIds(const std::vector<std::wstring>& ids) { m_annotationIds = ids; }

private:
    struct JsonForm;

    std::wstring m_displayName;
    std::wstring m_id;
    std::wstring m_mechanicalId;
    bool m_hidden = false;
    ExcVector3d m_origin;
    ExcVector3d m_directionU;
    ExcVector3d m_directionV;
    std::vector<std::wstring> m_annotationIds;
};
using ExcVisuViewPtr = std::shared_ptr<ExcVisuView>;

/// A saved state of the display: camera, clipping, and what is shown.
///
/// One without clipping is written with a null, at which reading logs an error and keeps the clipping plane. // sic
class ExcVisuCapture : public IJsonObject {
public:
    /// Appends to the lists.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& displayName() const { return m_displayName; }
    void setDisplayName(const std::wstring& name) { m_displayName = name; }

    const std::wstring& id() const { return m_id; }
    void setId(const std::wstring& id) { m_id = id; }

    /// Names the semantic capture.
    const std::wstring& mechanicalId() const { return m_mechanicalId; }
    void setMechanicalId(const std::wstring& id) { m_mechanicalId = id; }

    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { m_hidden = hidden; }

    bool isActive() const { return m_active; }
    void setActive(bool active) { m_active = active; }

    const std::wstring& hiddenText() const { return m_hiddenText; }
    void setHiddenText(const std::wstring& text) { m_hiddenText = text; }

    const ExcClippingPlane& clippingPlane() const { return m_clippingPlane; }
    void setClippingPlane(const ExcClippingPlane& plane) { m_clippingPlane = plane; }

    const ExcCamera& camera() const { return m_camera; }
    void setCamera(const ExcCamera& camera) { m_camera = camera; }

    /// The annotations that are shown.
    const std::vector<std::wstring>& annotationIds() const { return m_annotationIds; }
    void addAnnotationId(const std::wstring& id) { m_annotationIds.push_back(id); }
    void setAnnotationIds(const std::vector<std::wstring>& ids) { m_annotationIds = ids; }

    const std::vector<std::wstring>& ftaConstructedGeometryIds() const { return m_ftaConstructedGeometryIds; }
    /// Appends one id.
    void addFtaConstructedGeometryIds(const std::wstring& id) {
        m_ftaConstructedGeometryIds.push_back(id);
    } // sic
    void setFtaConstructedGeometryIds(const std::vector<std::wstring>& ids) {
        m_ftaConstructedGeometryIds = ids;
    }

    /// The bodies that are shown.
    const std::vector<std::shared_ptr<ExcEntity>>& linkedElements() const { return m_linkedElements; }
    /// Appends an element; null is refused with a warning.
    void addLinkedElement(const std::shared_ptr<ExcEntity>& element);
    void setLinkedElements(const std::vector<std::shared_ptr<ExcEntity>>& elements);

private:
    struct JsonForm;

    std::wstring m_displayName;
    std::wstring m_id;
    std::wstring m_mechanicalId;
    bool m_hidden = false;
    bool m_active = false;
    std::wstring m_hiddenText;
    ExcClippingPlane m_clippingPlane;
    ExcCamera m_camera;
    std::vector<std::wstring> m_annotationIds;
    std::vector<std::wstring> m_ftaConstructedGeometryIds;
    std::vector<std::shared_ptr<ExcEntity>> m_linkedElements;
};
using ExcVisuCapturePtr = std::shared_ptr<ExcVisuCapture>;

/// One scene: trees of nodes, annotation planes and saved views.
class ExcVisualizationData : public IJsonObject {
public:
    /// Appends to the lists.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::vector<ExcVisuNodePtr>& sceneRootNodes() const { return m_sceneRootNodes; }
    /// Appends a node; null is refused with a warning.
    void addSceneRootNode(const ExcVisuNodePtr& node);
    void addSceneRootNodes(const std::vector<ExcVisuNodePtr>& nodes);
    void setSceneRootNodes(const std::vector<ExcVisuNodePtr>& nodes);

    /// Of all coordinates in the scene.
    ELengthUnitType units() const { return m_units; }
    void setUnits(ELengthUnitType units) { m_units = units; }

    const std::vector<ExcVisuViewPtr>& views() const { return m_views; }
    /// Appends a view; null is refused with a warning.
    void addView(const ExcVisuViewPtr& view);
    void addViews(const std::vector<ExcVisuViewPtr>& views);
    void setViews(const std::vector<ExcVisuViewPtr>& views);

    const std::vector<ExcVisuCapturePtr>& captures() const { return m_captures; }
    /// Appends a capture; null is refused with a warning.
    void addCapture(const ExcVisuCapturePtr& capture);
    void addCaptures(const std::vector<ExcVisuCapturePtr>& captures);
    void setCaptures(const std::vector<ExcVisuCapturePtr>& captures);

private:
    struct JsonForm;

    std::vector<ExcVisuNodePtr> m_sceneRootNodes;
    ELengthUnitType m_units = ELengthUnitType::unknown;
    std::vector<ExcVisuViewPtr> m_views;
    std::vector<ExcVisuCapturePtr> m_captures;
};
using ExcVisualizationDataPtr = std::shared_ptr<ExcVisualizationData>;

/// The scene of one block. It travels through a shared buffer, compressed.
class ExcBlockVisualization : public IExchangeObject {
public:
    static const std::wstring& objName();

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& objectName() const override { return objName(); }
    std::shared_ptr<IExchangeObject> clone() const override;
    bool binary() const override { return true; }
    bool compress() const override { return true; }

    unsigned long long blockId() const { return m_blockId; }
    void setBlockId(unsigned long long id) { m_blockId = id; }

    /// May be null.
    const ExcVisualizationDataPtr& visualizationData() const { return m_visualizationData; }
    void setVisualizationData(const ExcVisualizationDataPtr& data) { m_visualizationData = data; }

private:
    struct JsonForm;

    unsigned long long m_blockId = 0;
    ExcVisualizationDataPtr m_visualizationData;
};

/// The scene of the whole assembly. It travels through a shared buffer, compressed.
class ExcRootAssemblyVisualization : public IExchangeObject {
public:
    static const std::wstring& objName();

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& objectName() const override { return objName(); }
    std::shared_ptr<IExchangeObject> clone() const override;
    bool binary() const override { return true; }
    bool compress() const override { return true; }

    /// May be null.
    const ExcVisualizationDataPtr& visualizationData() const { return m_visualizationData; }
    void setVisualizationData(const ExcVisualizationDataPtr& data) { m_visualizationData = data; }

private:
    struct JsonForm;

    ExcVisualizationDataPtr m_visualizationData;
};

} // namespace zeq
