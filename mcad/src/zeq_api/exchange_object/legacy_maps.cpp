// The legacy tables as arrays of entries.
#include "zeq_api/exchange_object/legacy_maps.h"

#include <string_view>

#include "zeq_api/exchange_common/component_maps.h"
#include "zeq_api/exchange_object/area.h"
#include "zeq_api/exchange_object/exchange_object_registry.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

StaticExchangeObject<LegacyComponentInstanceNames> instanceNamesPrototype;
StaticExchangeObject<LegacyMaterialMap> materialMapPrototype;

using detail::giveMember;
using detail::takeMember;

struct Materials {
    using Material = LegacyMaterialMap::Material;
    static constexpr std::wstring_view materialKey = L"component_material";

    /// Calls `visit(key, member)` for each member of a material.
    static void forEachMember(auto& material, auto&& visit) {
        visit(L"has_material", material.hasMaterial);
        visit(L"name", material.name);
        visit(L"density", material.density);
        visit(L"thermal_conductivity", material.thermalConductivity);
        visit(L"specific_heat", material.specificHeat);
    }

    static void take(const auto& view, LegacyMaterialMap& materials) {
        detail::forEachEntry(view, [&](OdDbHandle handle, auto& members) {
            const auto value = members.find(materialKey);
            if (!value || value->kind() != json::Kind::object || materials.map().contains(handle)) return;
            Material material;
            auto values = value->members();
            forEachMember(material, [&](std::wstring_view key, auto& out) { takeMember(values, key, out); });
            materials.addMaterial(handle, material);
        });
    }
    static void give(auto& sink, const LegacyMaterialMap& materials) {
        detail::giveEntries(sink, materials.map(), [](auto& object, const Material& material) {
            object.member(materialKey, [&](auto&& to) {
                to.object([&](auto& values) {
                    forEachMember(material, [&](std::wstring_view key, const auto& value) {
                        giveMember(values, key, value);
                    });
                });
            });
        });
    }
    static json::Shape shape() {
        json::ObjectShape material;
        Material example;
        forEachMember(example, [&]<class T>(std::wstring_view key, const T&) {
            material.members.push_back({key, json::Codec<T>::shape()});
        });
        return detail::entriesShape({materialKey, {std::move(material)}});
    }
};

} // namespace

struct LegacyComponentInstanceNames::JsonForm {
    using This = LegacyComponentInstanceNames;
    static constexpr json::Form form{
        json::Head{"LegacyComponentInstanceNames", area::exchangeObject,
                   json::throwsInvalid(
                       "LegacyComponentInstanceNames::readObject(): Input json object is not an array")},
        json::whole(&This::m_map),
    };
};

ZEQ_JSON_OBJECT(LegacyComponentInstanceNames)

const std::wstring& LegacyComponentInstanceNames::objName() {
    static const std::wstring name = L"legacy_component_instance_names";
    return name;
}

std::shared_ptr<IExchangeObject> LegacyComponentInstanceNames::clone() const {
    return std::make_shared<LegacyComponentInstanceNames>();
}

bool LegacyComponentInstanceNames::addInstanceName(OdDbHandle component, const std::wstring& name) {
    m_map[component] = name;
    return true;
}

void LegacyComponentInstanceNames::merge(const LegacyComponentInstanceNames& other) {
    m_map.insert(other.m_map.begin(), other.m_map.end());
}

struct LegacyMaterialMap::JsonForm {
    using This = LegacyMaterialMap;
    static constexpr json::Form form{
        json::Head{"LegacyMaterialMap", area::exchangeObject,
                   json::throwsInvalid("LegacyMaterialMap::readObject(): Input json object is not an array")},
        json::wholeArray(Materials{}),
    };
};

ZEQ_JSON_OBJECT(LegacyMaterialMap)

const std::wstring& LegacyMaterialMap::objName() {
    static const std::wstring name = L"legacy_component_material_map";
    return name;
}

std::shared_ptr<IExchangeObject> LegacyMaterialMap::clone() const {
    return std::make_shared<LegacyMaterialMap>();
}

bool LegacyMaterialMap::addMaterial(OdDbHandle component, const Material& material) {
    m_map[component] = material;
    return true;
}

void LegacyMaterialMap::merge(const LegacyMaterialMap& other) {
    m_map.insert(other.m_map.begin(), other.m_map.end());
}

} // namespace zeq
