// The JSON forms of properties.
#include "zeq_api/exchange_common/misc_data.h"

#include "zeq_api/exchange_common/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

const EnumTable& enumTable(ExcMiscProperty::EType) {
    using enum ExcMiscProperty::EType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"}, {string, L"string"},
                                          {integer, L"integer"}, {double_, L"double"},
                                          {boolean, L"boolean"}, {date_time, L"date_time"}};
    static const EnumTable table{"ExcMiscProperty::EType", names};
    return table;
}

struct ExcMiscProperty::JsonForm {
    using This = ExcMiscProperty;
    static constexpr json::Form form{
        json::Head{"ExcMiscProperty", area::exchangeCommon,
                   json::logsWarning("ExcMiscProperty::readObject: input JsonValue is not an object")}, // sic
        json::field(L"name", &This::m_name),
        json::field(L"type", &This::m_type),
        json::field(L"unit", &This::m_unit, json::unlessEmpty),
        json::field(L"value", &This::m_value),
        json::field(L"value_type", &This::m_valueType, json::unless(EValueType::unknown_value_type)),
    };
};

ZEQ_JSON_OBJECT(ExcMiscProperty)

struct ExcMiscPropertiesGroup::JsonForm {
    using This = ExcMiscPropertiesGroup;
    static constexpr json::Form form{
        json::Head{
            "ExcMiscPropertiesGroup", area::exchangeCommon,
            json::logsWarning("ExcMiscPropertiesGroup::readObject: input JsonValue is not an object.")},
        json::field(L"name", &This::m_name),
        json::field(L"is_bim", &This::m_bim),
        json::children(L"properties", &This::m_properties, json::anyElements, json::always),
    };
};

ZEQ_JSON_OBJECT(ExcMiscPropertiesGroup)

struct ExcMiscData::JsonForm {
    using This = ExcMiscData;
    static constexpr json::Form form{
        json::Head{"ExcMiscData", area::exchangeCommon,
                   json::logsWarning("ExcMiscData::readObject: input JsonValue is not an array.")},
        json::wholeList(&This::m_groups),
    };
};

ZEQ_JSON_OBJECT(ExcMiscData)

} // namespace zeq
