// A property is a text with a type; numbers are as short as they can be read back.
#include "convexor/properties.h"

#include "convexor/text.h"

namespace zeq::convexor {

namespace {

ExcMiscProperty property(const wchar_t* name, ExcMiscProperty::EType type, const std::wstring& value) {
    ExcMiscProperty property;
    property.name() = name;
    property.setType(type);
    property.value() = value;
    return property;
}

} // namespace

ExcMiscProperty textProperty(const wchar_t* name, const std::wstring& value) {
    return property(name, ExcMiscProperty::EType::string, value);
}

ExcMiscProperty countProperty(const wchar_t* name, std::int64_t value) {
    return property(name, ExcMiscProperty::EType::integer, std::to_wstring(value));
}

ExcMiscProperty quantity(const wchar_t* name, double value, ExcMiscProperty::EValueType type,
                         const std::wstring& unit) {
    ExcMiscProperty result = property(name, ExcMiscProperty::EType::double_, numberText(value));
    result.setValueType(type);
    result.unit() = unit;
    return result;
}

} // namespace zeq::convexor
