// The JSON forms of a part's organisation: coordinate systems, note parameters, symmetries, display sets, and
// the section that holds them all.
#include "zeq_api/exchange_mechanical/mechanical_misc_data.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_mechanical/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

struct ExcMiscWCS::JsonForm {
    using This = ExcMiscWCS;
    static constexpr json::Form form{
        json::Head{"ExcMiscWCS", area::exchangeMechanical},
        json::field(L"origin", &This::m_origin),
        json::field(L"x", &This::m_x),
        json::field(L"y", &This::m_y),
        json::field(L"z", &This::m_z),
        json::field(L"color", &This::m_color),
        json::field(L"active", &This::m_active),
        json::field(L"id", &This::m_id),
        json::field(L"name", &This::m_name),
        json::field(L"shown", &This::m_shown),
        json::field(L"layer_id", &This::m_layerId),
    };
};

ZEQ_JSON_OBJECT(ExcMiscWCS)

struct ExcMiscNoteParameters::JsonForm {
    using This = ExcMiscNoteParameters;
    static constexpr json::Form form{
        json::Head{"ExcMiscNoteParameters", area::exchangeMechanical},
        json::field(L"name", &This::m_name),
        json::field(L"properties", &This::m_properties),
    };
};

ZEQ_JSON_OBJECT(ExcMiscNoteParameters)

const EnumTable& enumTable(ExcMiscSymmetry::ETransformMode) {
    using enum ExcMiscSymmetry::ETransformMode;
    static constexpr EnumEntry names[] = {{none, L"none"}, {opposite, L"opposite"}, {both, L"both"}};
    static const EnumTable table{"ExcMiscSymmetry::ETransformMode", names};
    return table;
}

struct ExcMiscSymmetry::JsonForm {
    using This = ExcMiscSymmetry;
    static constexpr json::Form form{
        json::Head{"ExcMiscSymmetry", area::exchangeMechanical},
        json::field(L"transform_mode", &This::m_transformMode),
        json::field(L"transformation", &This::m_transformation),
        json::field(L"linked_entity", &This::m_linkedEntity, json::whenSet),
    };
};

ZEQ_JSON_OBJECT(ExcMiscSymmetry)

struct ExcMiscDisplaySet::JsonForm {
    using This = ExcMiscDisplaySet;
    static constexpr json::Form form{
        json::Head{"ExcMiscDisplaySet", area::exchangeMechanical},
        json::field(L"name", &This::m_name),
        json::field(L"active", &This::m_active),
        json::children(L"entities", &This::m_entities, &This::addEntity),
    };
};

ZEQ_JSON_OBJECT(ExcMiscDisplaySet)

void ExcMiscDisplaySet::addEntity(ExcEntityPtr entity) {
    detail::appendChild(m_entities, std::move(entity),
                        "ExcMiscDisplaySet: attempt to add null Entity object.");
}

struct ExcMechanicalMiscData::JsonForm {
    using This = ExcMechanicalMiscData;
    static constexpr json::Form form{
        json::Head{"ExcMechanicalMiscData", area::exchangeMechanical},
        json::field(L"misc_data", &This::m_miscData),
        json::children(L"wcs", &This::m_wcs, &This::addWorldCoordinateSystem),
        json::children(L"layers", &This::m_layers, &This::addLayer),
        json::children(L"layer_filters", &This::m_layerFilters, &This::addLayerFilter),
        json::children(L"materials", &This::m_materials, &This::addMaterial),
        json::children(L"note_parameters", &This::m_noteParameters, &This::addNoteParameters),
        json::children(L"symmetries", &This::m_symmetries, &This::addSymmetry),
        json::children(L"display_sets", &This::m_displaySets, &This::addDisplaySet),
    };
};

ZEQ_JSON_OBJECT(ExcMechanicalMiscData)

void ExcMechanicalMiscData::addWorldCoordinateSystem(ExcMiscWCSPtr wcs) {
    detail::appendChild(m_wcs, std::move(wcs), "ExcMechanicalMiscData: attempt to add null WCS object.");
}

void ExcMechanicalMiscData::addLayer(ExcMiscLayerPtr layer) {
    detail::appendChild(m_layers, std::move(layer),
                        "ExcMechanicalMiscData: attempt to add null Layer object.");
}

void ExcMechanicalMiscData::addLayerFilter(ExcMiscLayerFilterPtr filter) {
    detail::appendChild(m_layerFilters, std::move(filter),
                        "ExcMechanicalMiscData: attempt to add null Layer Filter object.");
}

void ExcMechanicalMiscData::addMaterial(ExcMiscMaterialPtr material) {
    detail::appendChild(m_materials, std::move(material),
                        "ExcMechanicalMiscData: attempt to add null Material object.");
}

void ExcMechanicalMiscData::addNoteParameters(ExcMiscNoteParametersPtr parameters) {
    detail::appendChild(m_noteParameters, std::move(parameters),
                        "ExcMechanicalMiscData: attempt to add null Note Parameters object.");
}

void ExcMechanicalMiscData::addSymmetry(ExcMiscSymmetryPtr symmetry) {
    detail::appendChild(m_symmetries, std::move(symmetry),
                        "ExcMechanicalMiscData: attempt to add null Symmetry object.");
}

void ExcMechanicalMiscData::addDisplaySet(ExcMiscDisplaySetPtr set) {
    detail::appendChild(m_displaySets, std::move(set),
                        "ExcMechanicalMiscData: attempt to add null Display Set object.");
}

} // namespace zeq
