// The legacy tables as arrays of entries.
#include "zeq_api/exchange_object/legacy_maps.h"

#include <string_view>

#include "zeq_api/exchange_object/exchange_object_registry.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

StaticExchangeObject<LegacyComponentInstanceNames> instanceNamesPrototype;
StaticExchangeObject<LegacyMaterialMap> materialMapPrototype;

constexpr std::wstring_view handleKey = L"component_handle";

template <class T>
bool takeMember(auto& members, std::wstring_view key, T& out) {
    const auto value = members.find(key);
    return value && json::Codec<T>::take(*value, out);
}

template <class T>
void giveMember(auto& object, std::wstring_view key, const T& value) {
    object.member(key, [&](auto&& to) { json::Codec<T>::give(to, value); });
}

/// Calls `take(handle, members)` for each element that is an object with a handle.
void forEachEntry(const auto& array, auto&& take) {
    array.forEach([&](const auto& element) {
        if (element.kind() != json::Kind::object) return true;
        auto members = element.members();
        if (OdDbHandle handle = 0; takeMember(members, handleKey, handle)) take(handle, members);
        return true;
    });
}

/// Writes an array of objects, each with its handle and what `give(object, value)` adds.
void giveEntries(auto& sink, const auto& map, auto&& give) {
    sink.array([&](auto& array) {
        for (const auto& entry : map)
            array.element([&](auto&& element) {
                element.object([&](auto& object) {
                    giveMember(object, handleKey, entry.first);
                    give(object, entry.second);
                });
            });
    });
}

/// Each entry needs its handle and its value, or is skipped.
json::Shape entriesShape(json::MemberShape value) {
    value.isRequired = true;
    return json::arrayShape({json::ObjectShape{
        {{handleKey, json::Codec<OdDbHandle>::shape(), true, true, true}, std::move(value)}}});
}

struct InstanceNames {
    static constexpr std::wstring_view nameKey = L"component_name";

    static void take(const auto& view, LegacyComponentInstanceNames& names) {
        forEachEntry(view, [&](OdDbHandle handle, auto& members) {
            if (std::wstring name; takeMember(members, nameKey, name)) names.addInstanceName(handle, name);
        });
    }
    static void give(auto& sink, const LegacyComponentInstanceNames& names) {
        giveEntries(sink, names.map(),
                    [](auto& object, const std::wstring& name) { giveMember(object, nameKey, name); });
    }
    static json::Shape shape() { return entriesShape({nameKey, json::Codec<std::wstring>::shape()}); }
};

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
        forEachEntry(view, [&](OdDbHandle handle, auto& members) {
            const auto value = members.find(materialKey);
            if (!value || value->kind() != json::Kind::object || materials.map().contains(handle)) return;
            Material material;
            auto values = value->members();
            forEachMember(material, [&](std::wstring_view key, auto& out) { takeMember(values, key, out); });
            materials.addMaterial(handle, material);
        });
    }
    static void give(auto& sink, const LegacyMaterialMap& materials) {
        giveEntries(sink, materials.map(), [](auto& object, const Material& material) {
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
        return entriesShape({materialKey, {std::move(material)}});
    }
};

} // namespace

struct LegacyComponentInstanceNames::JsonForm {
    using This = LegacyComponentInstanceNames;
    static constexpr json::Form form{
        json::Head{"LegacyComponentInstanceNames", area::exchangeObject,
                   json::throwsInvalid(
                       "LegacyComponentInstanceNames::readObject(): Input json object is not an array")},
        json::wholeArray(InstanceNames{})};
};

void LegacyComponentInstanceNames::readObject(const JsonValue& array) { json::read<JsonForm>(*this, array); }
void LegacyComponentInstanceNames::writeObject(JsonValue& out, JsonAllocator& alloc) const {
    json::write<JsonForm>(*this, out, alloc);
}

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
        json::wholeArray(Materials{})};
};

void LegacyMaterialMap::readObject(const JsonValue& array) { json::read<JsonForm>(*this, array); }
void LegacyMaterialMap::writeObject(JsonValue& out, JsonAllocator& alloc) const {
    json::write<JsonForm>(*this, out, alloc);
}

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
