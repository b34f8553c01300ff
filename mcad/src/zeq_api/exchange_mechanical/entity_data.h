// What mechanical data say of single entities of a block. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zeq_api/exchange_common/entity.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// Which imported entity comes from which entity of the source. Its JSON form is an array.
class ExcMappingData : public IJsonObject {
public:
    /// An imported entity and its original, neither null.
    using EntityPair = std::pair<ExcEntityPtr, ExcEntityPtr>;

    /// Appends to the mapping. An item that lacks one of the two is refused with the warning of add().
    void readObject(const JsonValue& array) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::vector<EntityPair>& mapping() const { return m_mapping; }
    /// Null is refused with a warning.
    void add(ExcEntityPtr imported, ExcEntityPtr original);

private:
    struct JsonForm;

    std::vector<EntityPair> m_mapping;
};
using ExcMappingDataPtr = std::shared_ptr<ExcMappingData>;

/// How a face, an edge or another entity is named and shown.
class ExcTopologicalEntityInformation : public IJsonObject {
public:
    enum class ELineType {
        unknown,
        solid,
        dash,
        dot,
        dash_dot,
        dash_dot_dot,
        dash_dot_dot_dot,
        dash_dash_dot,
        dash_dash_dot_dot,
        dash_dash_dot_dot_dot,
        short_dash,
        long_dash,
        medium_dash_long_dash,
        medium_dash_short_dash_short_dash,
        long_dash_short_dash,
        long_dash_short_dash_short_dash,
        long_dash_dot_dot,
        long_dash_dot,
        medium_dash_dot_short_dash_dot,
        sparse_dot,
        visible_invisible,
        zigzag,
        curve_batting,
        fence_circle,
        fence_square,
        supply_line_gas,
        supply_line_hot_water,
        tracks
    };

    /// Appends to the persistent names.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// The entity that is described; may be null.
    const ExcEntityPtr& entity() const { return m_entity; }
    void setEntity(ExcEntityPtr entity) { m_entity = std::move(entity); }

    /// Names that stay the same across repeated imports.
    const std::vector<std::wstring>& persistentNames() const { return m_pnames; }
    void setPersistentNames(std::vector<std::wstring> names) { m_pnames = std::move(names); }
    void addPersistentName(std::wstring name) { m_pnames.push_back(std::move(name)); }

    const std::wstring& name() const { return m_name; }
    void setName(std::wstring name) { m_name = std::move(name); }

    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { m_hidden = hidden; }

    ELineType lineType() const { return m_lineType; }
    void setLineType(ELineType type) { m_lineType = type; }

    double lineThickness() const { return m_lineThickness; }
    void setLineThickness(double thickness) { m_lineThickness = thickness; }

private:
    struct JsonForm;

    ExcEntityPtr m_entity;
    std::vector<std::wstring> m_pnames;
    std::wstring m_name;
    bool m_hidden = false;
    ELineType m_lineType = ELineType::unknown;
    double m_lineThickness = 0;
};
const EnumTable& enumTable(ExcTopologicalEntityInformation::ELineType);
using ExcTopologicalEntityInformationPtr = std::shared_ptr<ExcTopologicalEntityInformation>;

/// The information of all entities of a block. Its JSON form is an array.
class ExcEntityData : public IJsonObject {
public:
    /// Appends an information for each element, whatever its JSON type.
    void readObject(const JsonValue& array) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::vector<ExcTopologicalEntityInformationPtr>& data() const { return m_data; }
    /// Null is refused with a warning.
    void addData(ExcTopologicalEntityInformationPtr info);

private:
    struct JsonForm;

    std::vector<ExcTopologicalEntityInformationPtr> m_data;
};
using ExcEntityDataPtr = std::shared_ptr<ExcEntityData>;

} // namespace zeq
