// What the kinds of representation items say (ISO 10303-43 and -41), as text with type and unit.
#include <algorithm>

#include "step/part_reading.h"
#include "step/placement.h"
#include "text/text.h"

namespace zeq::step {

namespace {

using ValueType = ExcMiscProperty::EValueType;
using Type = ExcMiscProperty::EType;

std::wstring numberText(double number) {
    const std::string text = text::number(number);
    return {text.begin(), text.end()};
}

/// The measure that a value is said to be: "AREA_MEASURE"; empty when nothing is said.
std::string_view measureType(const Instance& item) {
    for (const std::string_view type : item.types())
        for (const Value& value : item.parameters(type))
            if (value.kind() == part21::Kind::typed) return value.name();
    return {};
}

ItemValue number(double value, Type type = Type::double_) {
    ItemValue result{ExcMiscProperty(), {}};
    result.property->setType(type);
    result.property->value() = numberText(value);
    return result;
}

ItemValue quantity(double value, ValueType type, std::wstring unit) {
    ItemValue result = number(value);
    result.property->setValueType(type);
    result.property->unit() = std::move(unit);
    return result;
}

ItemValue problem(std::wstring text) { return {std::nullopt, std::move(text)}; }

ItemValue measured(const PartReading& reading, const Measure& measure, std::string_view type) {
    const double unit = reading.file.millimeters();
    switch (measure.unit.kind) {
    case Unit::Kind::length:
        return quantity(measure.inBase() / unit, ValueType::length, reading.lengthSymbol);
    case Unit::Kind::plane_angle:
        return quantity(measure.inBase(), ValueType::angle, L"deg");
    case Unit::Kind::derived:
        if (type == "AREA_MEASURE")
            return quantity(measure.inBase() / (unit * unit), ValueType::area, reading.lengthSymbol + L"^2");
        if (type == "VOLUME_MEASURE")
            return quantity(measure.inBase() / (unit * unit * unit), ValueType::volume,
                            reading.lengthSymbol + L"^3");
        break;
    case Unit::Kind::ratio:
        return quantity(measure.value, ValueType::ratio, {});
    case Unit::Kind::mass:
        return quantity(measure.value, ValueType::mass, measure.unit.name);
    case Unit::Kind::time:
        return quantity(measure.value, ValueType::time, measure.unit.name);
    default:
        break;
    }
    if (measure.unit.name.empty()) return problem(L"its unit is not understood");
    return quantity(measure.value, ValueType::unknown_value_type, measure.unit.name);
}

ItemValue coordinates(const PartReading& reading, const Instance& item, double millimeters) {
    const auto vector = readVector(item);
    if (!vector) return problem(L"it has no coordinates");
    const bool isPoint = item.is("CARTESIAN_POINT");
    if (isPoint && millimeters <= 0) return problem(L"its unit is not understood");
    const Vec at = (isPoint ? millimeters / reading.file.millimeters() : 1) * *vector;
    ItemValue result{textProperty({}, numberText(at.x) + L", " + numberText(at.y) + L", " + numberText(at.z)),
                     {}};
    if (isPoint) {
        result.property->setValueType(ValueType::length);
        result.property->unit() = reading.lengthSymbol;
    }
    return result;
}

ItemValue valueOf(const PartReading& reading, const Instance& item, double millimeters) {
    if (item.is("DESCRIPTIVE_REPRESENTATION_ITEM"))
        return {textProperty({}, attribute(item, "DESCRIPTIVE_REPRESENTATION_ITEM", 1, 0).text()), {}};
    if (item.is("CARTESIAN_POINT") || item.is("DIRECTION")) return coordinates(reading, item, millimeters);
    if (item.is("BOOLEAN_REPRESENTATION_ITEM")) {
        const Value value = attribute(item, "BOOLEAN_REPRESENTATION_ITEM", 1, 0);
        if (value.kind() != part21::Kind::enumeration) return problem(L"it has no value");
        ItemValue result{textProperty({}, value.isTrue() ? L"true" : L"false"), {}};
        result.property->setType(Type::boolean);
        return result;
    }
    struct Plain {
        std::string_view type;
        Type as;
    };
    for (const Plain& plain : {Plain{"INTEGER_REPRESENTATION_ITEM", Type::integer},
                               Plain{"REAL_REPRESENTATION_ITEM", Type::double_},
                               Plain{"VALUE_REPRESENTATION_ITEM", Type::double_}})
        if (item.is(plain.type)) {
            // Of complex ones the value stands in the supertype INT_LITERAL or REAL_LITERAL, or another.
            std::optional<double> value = attribute(item, plain.type, 1, 0).number();
            for (const std::string_view type : item.types())
                for (const Value& each : item.parameters(type))
                    if (!value) value = each.number();
            if (!value) return problem(L"it has no value");
            return number(*value, measureType(item) == "COUNT_MEASURE" ? Type::integer : plain.as);
        }
    if (const auto measure = reading.file.measure(item))
        return measured(reading, *measure, measureType(item));
    if (measureType(item).ends_with("MEASURE")) return problem(L"its unit is not understood");
    return problem(L"it is no single value");
}

} // namespace

ExcMiscProperty textProperty(std::wstring name, std::wstring value) {
    ExcMiscProperty property;
    property.name() = std::move(name);
    property.setType(Type::string);
    property.value() = std::move(value);
    return property;
}

ItemValue readItemValue(const PartReading& reading, const Instance& item, double millimeters) {
    ItemValue value = valueOf(reading, item, millimeters);
    if (value.property) value.property->name() = trimmed(nameOf(item));
    return value;
}

} // namespace zeq::step
