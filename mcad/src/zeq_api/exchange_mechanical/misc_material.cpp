// The JSON forms of materials, their properties and units.
#include "zeq_api/exchange_mechanical/misc_material.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_mechanical/area.h"
#include "zeq_api/json/form.h"
#include "zeq_api/json/special_rows.h"

namespace zeq {

const EnumTable& enumTable(EUnitSystemType) {
    using enum EUnitSystemType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"}, {mks, L"mks"},
                                          {cgs, L"cgs"},         {fps, L"fps"},
                                          {ips, L"ips"},         {mmks, L"mmks"},
                                          {mmns, L"mmns"},       {ipscreo, L"ipscreo"},
                                          {si, L"si"},           {not_applicable, L"not_applicable"},
                                          {custom, L"custom"}};
    static const EnumTable table{"EUnitSystemType", names};
    return table;
}

struct ExcMiscMaterialPropertyUnit::JsonForm {
    using This = ExcMiscMaterialPropertyUnit;
    static constexpr json::Form form{
        json::Head{"ExcMiscMaterialPropertyUnit", area::exchangeMechanical},
        json::field(L"units", &This::m_units),
        json::field(L"unit_system", &This::m_unitSystem),
    };
};

ZEQ_JSON_OBJECT(ExcMiscMaterialPropertyUnit)

struct ExcMiscMaterialProperty::JsonForm {
    using This = ExcMiscMaterialProperty;
    static constexpr json::Form form{
        json::Head{"ExcMiscMaterialProperty", area::exchangeMechanical},
        json::field(L"value", &This::m_value),
        json::object(L"unit", &This::m_unit,
                     json::field(L"material_units", &UnitSet::materialUnits, json::whenSet),
                     json::field(L"mass", &UnitSet::mass, json::whenSet),
                     json::field(L"length", &UnitSet::length, json::whenSet),
                     json::field(L"time", &UnitSet::time, json::whenSet),
                     json::field(L"temperature", &UnitSet::temperature, json::whenSet)),
    };
};

ZEQ_JSON_OBJECT(ExcMiscMaterialProperty)

const EnumTable& enumTable(ExcMiscMaterial::EProperty) {
    using enum ExcMiscMaterial::EProperty;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {density, L"density"},
                                          {youngs_modulus, L"youngs_modulus"},
                                          {poissons_ratio, L"poissons_ratio"},
                                          {yield_strength, L"yield_strength"},
                                          {tensile_strength, L"tensile_strength"},
                                          {thermal_conductivity, L"thermal_conductivity"},
                                          {thermal_expansion_coefficient, L"thermal_expansion_coefficient"},
                                          {specific_heat, L"specific_heat"},
                                          {shear_modulus, L"shear_modulus"}};
    static const EnumTable table{"ExcMiscMaterial::EProperty", names};
    return table;
}

struct ExcMiscMaterial::JsonForm {
    using This = ExcMiscMaterial;
    static constexpr json::Form form{
        json::Head{"ExcMiscMaterial", area::exchangeMechanical},
        json::field(L"name", &This::m_name),
        json::enumMembers(&This::m_properties),
        json::children(L"linked_elements", &This::m_linkedElements, &This::addLinkedElement),
        json::field(L"is_part_level_material", &This::m_isPartLevelMaterial),
    };
};

ZEQ_JSON_OBJECT(ExcMiscMaterial)

ExcMiscMaterialPropertyPtr ExcMiscMaterial::get(EProperty which) const {
    const auto found = m_properties.find(which);
    return found == m_properties.end() ? nullptr : found->second;
}

void ExcMiscMaterial::set(EProperty which, ExcMiscMaterialPropertyPtr property) {
    m_properties[which] = std::move(property);
}

void ExcMiscMaterial::addLinkedElement(ExcEntityPtr element) {
    detail::appendChild(m_linkedElements, std::move(element),
                        "ExcMiscMaterial: attempt to add null Linked Element object.");
}

} // namespace zeq
