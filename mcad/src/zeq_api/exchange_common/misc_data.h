// Properties that the source model gives a product, a part or an instance, in named groups. Objects are used
// by one thread at a time.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "zeq_api/exchange_common/misc_value_type.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// A named value, held as text.
class ExcMiscProperty : public IJsonObject {
public:
    /// The data type that the text of the value stands for.
    enum class EType {
        unknown,
        string,
        integer,
        double_,
        boolean,
        date_time
    };
    using EValueType = EMiscValueType;

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& name() const { return m_name; }
    std::wstring& name() { return m_name; }

    EType type() const { return m_type; }
    void setType(EType type) { m_type = type; }

    /// The unit of the value as the source names it; may be empty.
    const std::wstring& unit() const { return m_unit; }
    std::wstring& unit() { return m_unit; }

    const std::wstring& value() const { return m_value; }
    std::wstring& value() { return m_value; }

    EValueType valueType() const { return m_valueType; }
    void setValueType(EValueType type) { m_valueType = type; }

private:
    struct JsonForm;

    std::wstring m_name;
    EType m_type = EType::unknown;
    std::wstring m_unit;
    std::wstring m_value;
    EValueType m_valueType = EValueType::unknown_value_type;
};
const EnumTable& enumTable(ExcMiscProperty::EType);

/// Properties under a common name.
class ExcMiscPropertiesGroup : public IJsonObject {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& name() const { return m_name; }
    std::wstring& name() { return m_name; }

    const std::vector<ExcMiscProperty>& properties() const { return m_properties; }
    void addProperty(const ExcMiscProperty& property) { m_properties.push_back(property); }
    void addProperty(ExcMiscProperty&& property) { m_properties.push_back(std::move(property)); }

    /// Whether the properties describe a building element.
    bool isBim() const { return m_bim; }
    void setBim(bool isBim) { m_bim = isBim; }

private:
    struct JsonForm;

    std::wstring m_name;
    std::vector<ExcMiscProperty> m_properties;
    bool m_bim = false;
};

/// All property groups of one thing.
class ExcMiscData : public IJsonObject {
public:
    /// Appends to the groups.
    void readObject(const JsonValue& array) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::vector<ExcMiscPropertiesGroup>& groups() const { return m_groups; }
    std::vector<ExcMiscPropertiesGroup>& groups() { return m_groups; }
    void addGroup(ExcMiscPropertiesGroup group) { m_groups.push_back(std::move(group)); }

    bool isEmpty() const { return m_groups.empty(); }

private:
    struct JsonForm;

    std::vector<ExcMiscPropertiesGroup> m_groups;
};

} // namespace zeq
