// The materials of a part and their physical properties. Objects are used by one thread at a time.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zeq_api/exchange_common/entity.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// The system of units that a unit belongs to.
enum class EUnitSystemType {
    unknown,
    mks,
    cgs,
    fps,
    ips,
    mmks,
    mmns,
    ipscreo,
    si,
    not_applicable,
    custom
};
const EnumTable& enumTable(EUnitSystemType);

/// A unit as the source names it.
class ExcMiscMaterialPropertyUnit : public IJsonObject {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// The text of the unit.
    const std::wstring& units() const { return m_units; }
    void setUnits(std::wstring units) { m_units = std::move(units); }

    EUnitSystemType unitSystem() const { return m_unitSystem; }
    void setUnitSystem(EUnitSystemType system) { m_unitSystem = system; }

private:
    struct JsonForm;

    std::wstring m_units;
    EUnitSystemType m_unitSystem = EUnitSystemType::unknown;
};
using ExcMiscMaterialPropertyUnitPtr = std::shared_ptr<ExcMiscMaterialPropertyUnit>;

/// The value of one physical property, with the units in which the source gives it.
class ExcMiscMaterialProperty : public IJsonObject {
public:
    /// Each may be null. Which of them apply to a value depends on the property.
    struct UnitSet {
        ExcMiscMaterialPropertyUnitPtr materialUnits;
        ExcMiscMaterialPropertyUnitPtr mass;
        ExcMiscMaterialPropertyUnitPtr length;
        ExcMiscMaterialPropertyUnitPtr time;
        ExcMiscMaterialPropertyUnitPtr temperature;
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    double value() const { return m_value; }
    void setValue(double value) { m_value = value; }

    const UnitSet& unit() const { return m_unit; }
    UnitSet& unit() { return m_unit; }

private:
    struct JsonForm;

    double m_value = 0;
    UnitSet m_unit;
};
using ExcMiscMaterialPropertyPtr = std::shared_ptr<ExcMiscMaterialProperty>;

/// A material with its properties and the entities that are made of it.
class ExcMiscMaterial : public IJsonObject {
public:
    enum class EProperty {
        unknown,
        density,
        youngs_modulus,
        poissons_ratio,
        yield_strength,
        tensile_strength,
        thermal_conductivity,
        thermal_expansion_coefficient,
        specific_heat,
        shear_modulus
    };

    /// Replaces the properties that the document has and appends to the linked elements.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& name() const { return m_name; }
    void setName(std::wstring name) { m_name = std::move(name); }

    /// Null for a property that is not set.
    ExcMiscMaterialPropertyPtr get(EProperty which) const;
    /// Null takes the property from the document.
    void set(EProperty which, ExcMiscMaterialPropertyPtr property);

    /// What is made of the material.
    const std::vector<ExcEntityPtr>& linkedElements() const { return m_linkedElements; }
    /// Null is refused with a warning.
    void addLinkedElement(ExcEntityPtr element);

    /// Whether the whole part is made of the material.
    bool isPartLevelMaterial() const { return m_isPartLevelMaterial; }
    void setPartLevelMaterial(bool isPartLevel) { m_isPartLevelMaterial = isPartLevel; }

private:
    struct JsonForm;

    std::wstring m_name;
    std::map<EProperty, ExcMiscMaterialPropertyPtr> m_properties;
    std::vector<ExcEntityPtr> m_linkedElements;
    bool m_isPartLevelMaterial = false;
};
const EnumTable& enumTable(ExcMiscMaterial::EProperty);
using ExcMiscMaterialPtr = std::shared_ptr<ExcMiscMaterial>;

} // namespace zeq
