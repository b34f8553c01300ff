// The JSON forms of layers and layer filters.
#include "zeq_api/exchange_mechanical/misc_layer.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_mechanical/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

struct ExcMiscLayer::JsonForm {
    using This = ExcMiscLayer;
    static constexpr json::Form form{
        json::Head{"ExcMiscLayer", area::exchangeMechanical},
        json::field(L"id", &This::m_id),
        json::field(L"name", &This::m_name),
        json::field(L"current", &This::m_current),
        json::field(L"color", &This::m_color),
        json::children(L"entities", &This::m_entities, &This::addEntity),
    };
};

ZEQ_JSON_OBJECT(ExcMiscLayer)

void ExcMiscLayer::addEntity(ExcEntityPtr entity) {
    detail::appendChild(m_entities, std::move(entity), "ExcMiscLayer: attempt to add null Entity object.");
}

const EnumTable& enumTable(ExcMiscLayerFilter::EType) {
    using enum ExcMiscLayerFilter::EType;
    static constexpr EnumEntry names[] = {{all, L"all"}, {laycur, L"laycur"}, {other, L"other"}};
    static const EnumTable table{"ExcMiscLayerFilter::EType", names};
    return table;
}

struct ExcMiscLayerFilter::JsonForm {
    using This = ExcMiscLayerFilter;
    static constexpr json::Form form{
        json::Head{"ExcMiscLayerFilter", area::exchangeMechanical},
        json::field(L"name", &This::m_name),
        json::field(L"type", &This::m_type),
        json::field(L"current", &This::m_current),
        json::field(L"layer_id", &This::m_layerIds, json::unlessEmpty),
    };
};

ZEQ_JSON_OBJECT(ExcMiscLayerFilter)

} // namespace zeq
