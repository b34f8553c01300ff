// The two tables by which the older import path ties objects of a drawing database to the model. Objects are
// used by one thread at a time.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "platform/oda/od_db_handle.h"
#include "zeq_api/exchange_object/exchange_object.h"

namespace zeq {

/// Instance names of components, by handle.
class LegacyComponentInstanceNames : public IExchangeObject {
public:
    using Map = std::map<OdDbHandle, std::wstring>;

    static const std::wstring& objName();

    /// Adds to the map; of the entries with the same handle the last one read counts.
    /// @throws std::invalid_argument if `array` is no array
    void readObject(const JsonValue& array) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& objectName() const override { return objName(); }
    std::shared_ptr<IExchangeObject> clone() const override;

    const Map& map() const { return m_map; }
    void setMap(Map map) { m_map = std::move(map); }

    /// Sets the entry of `component`; always true.
    bool addInstanceName(OdDbHandle component, const std::wstring& name);
    /// Adds the entries of `other` whose handles have none yet.
    void merge(const LegacyComponentInstanceNames& other);

private:
    struct JsonForm;

    Map m_map;
};

/// Materials of components, by handle.
class LegacyMaterialMap : public IExchangeObject {
public:
    /// The material of a component.
    struct Material {
        bool hasMaterial = false;
        std::wstring name;
        double density = 0;
        double thermalConductivity = 0;
        double specificHeat = 0;
    };
    using Map = std::map<OdDbHandle, Material>;

    static const std::wstring& objName();

    /// Adds to the map; an entry whose handle has one already does not count.
    /// @throws std::invalid_argument if `array` is no array
    void readObject(const JsonValue& array) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& objectName() const override { return objName(); }
    std::shared_ptr<IExchangeObject> clone() const override;

    const Map& map() const { return m_map; }
    void setMap(Map map) { m_map = std::move(map); }

    /// Sets the entry of `component`; always true.
    bool addMaterial(OdDbHandle component, const Material& material);
    /// Adds the entries of `other` whose handles have none yet.
    void merge(const LegacyMaterialMap& other);

private:
    struct JsonForm;

    Map m_map;
};

} // namespace zeq
