// The JSON forms of scenes, and the registration of the objects that carry them.
#include "zeq_api/exchange_visualization/scene.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_object/exchange_object_registry.h"
#include "zeq_api/exchange_visualization/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

constexpr const char* nullElement = "ExcVisuCapture: attempt to add null Linked Element object.";
constexpr const char* nullNode = "ExcVisualizationData: attempt to add null Scene Root Visu Node object.";
constexpr const char* nullView = "ExcVisualizationData: attempt to add null Visu View object.";
constexpr const char* nullCapture = "ExcVisualizationData: attempt to add null Visu Capture object.";

StaticExchangeObject<ExcBlockVisualization> blockPrototype;
StaticExchangeObject<ExcRootAssemblyVisualization> rootPrototype;

} // namespace

struct ExcVisuView::JsonForm {
    using This = ExcVisuView;
    static constexpr json::Form form{
        json::Head{"ExcVisuView", area::exchangeVisualization},
        json::field(L"display_name", &This::m_displayName),
        json::field(L"id", &This::m_id),
        json::field(L"mechanical_id", &This::m_mechanicalId),
        json::field(L"hidden", &This::m_hidden),
        json::field(L"origin", &This::m_origin),
        json::field(L"direction_u", &This::m_directionU),
        json::field(L"direction_v", &This::m_directionV),
        json::field(L"annotation_ids", &This::m_annotationIds, json::unlessEmpty),
    };
};

ZEQ_JSON_OBJECT(ExcVisuView)

struct ExcVisuCapture::JsonForm {
    using This = ExcVisuCapture;
    static constexpr json::Form form{
        json::Head{"ExcVisuCapture", area::exchangeVisualization},
        json::field(L"display_name", &This::m_displayName),
        json::field(L"id", &This::m_id),
        json::field(L"mechanical_id", &This::m_mechanicalId),
        json::field(L"hidden", &This::m_hidden),
        json::field(L"active", &This::m_active),
        json::field(L"hidden_text", &This::m_hiddenText),
        json::nested(L"clipping_plane", &This::m_clippingPlane),
        json::field(L"camera", &This::m_camera),
        json::field(L"annotation_ids", &This::m_annotationIds, json::unlessEmpty),
        json::field(L"fta_constructed_geometry_ids", &This::m_ftaConstructedGeometryIds, json::unlessEmpty),
        json::children(L"bodies", &This::m_linkedElements),
    };
};

ZEQ_JSON_OBJECT(ExcVisuCapture)

void ExcVisuCapture::addLinkedElement(const std::shared_ptr<ExcEntity>& element) {
    detail::appendChild(m_linkedElements, element, nullElement);
}
void ExcVisuCapture::setLinkedElements(const std::vector<std::shared_ptr<ExcEntity>>& elements) {
    detail::setChildren(m_linkedElements, elements, nullElement);
}

struct ExcVisualizationData::JsonForm {
    using This = ExcVisualizationData;
    static constexpr json::Form form{
        json::Head{"ExcVisualizationData", area::exchangeVisualization},
        json::children(L"scene_root_nodes", &This::m_sceneRootNodes),
        json::field(L"units", &This::m_units),
        json::children(L"views", &This::m_views),
        json::children(L"captures", &This::m_captures),
    };
};

ZEQ_JSON_OBJECT(ExcVisualizationData)

void ExcVisualizationData::addSceneRootNode(const ExcVisuNodePtr& node) {
    detail::appendChild(m_sceneRootNodes, node, nullNode);
}
void ExcVisualizationData::addSceneRootNodes(const std::vector<ExcVisuNodePtr>& nodes) {
    detail::appendEach(m_sceneRootNodes, nodes, nullNode);
}
void ExcVisualizationData::setSceneRootNodes(const std::vector<ExcVisuNodePtr>& nodes) {
    detail::setChildren(m_sceneRootNodes, nodes, nullNode);
}

void ExcVisualizationData::addView(const ExcVisuViewPtr& view) {
    detail::appendChild(m_views, view, nullView);
}
void ExcVisualizationData::addViews(const std::vector<ExcVisuViewPtr>& views) {
    detail::appendEach(m_views, views, nullView);
}
void ExcVisualizationData::setViews(const std::vector<ExcVisuViewPtr>& views) {
    detail::setChildren(m_views, views, nullView);
}

void ExcVisualizationData::addCapture(const ExcVisuCapturePtr& capture) {
    detail::appendChild(m_captures, capture, nullCapture);
}
void ExcVisualizationData::addCaptures(const std::vector<ExcVisuCapturePtr>& captures) {
    detail::appendEach(m_captures, captures, nullCapture);
}
void ExcVisualizationData::setCaptures(const std::vector<ExcVisuCapturePtr>& captures) {
    detail::setChildren(m_captures, captures, nullCapture);
}

struct ExcBlockVisualization::JsonForm {
    using This = ExcBlockVisualization;
    static constexpr json::Form form{
        json::Head{"ExcBlockVisualization", area::exchangeVisualization},
        json::field(L"block_id", &This::m_blockId),
        json::field(L"visualization_data", &This::m_visualizationData, json::whenSet),
    };
};

ZEQ_JSON_OBJECT(ExcBlockVisualization)

const std::wstring& ExcBlockVisualization::objName() {
    static const std::wstring name = L"exc_block_visualization";
    return name;
}

std::shared_ptr<IExchangeObject> ExcBlockVisualization::clone() const {
    return std::make_shared<ExcBlockVisualization>();
}

struct ExcRootAssemblyVisualization::JsonForm {
    using This = ExcRootAssemblyVisualization;
    static constexpr json::Form form{
        json::Head{"ExcRootAssemblyVisualization", area::exchangeVisualization},
        json::field(L"visualization_data", &This::m_visualizationData, json::whenSet),
    };
};

ZEQ_JSON_OBJECT(ExcRootAssemblyVisualization)

const std::wstring& ExcRootAssemblyVisualization::objName() {
    static const std::wstring name = L"exc_root_assembly_visualization";
    return name;
}

std::shared_ptr<IExchangeObject> ExcRootAssemblyVisualization::clone() const {
    return std::make_shared<ExcRootAssemblyVisualization>();
}

} // namespace zeq
