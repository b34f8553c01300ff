// The units and the orientation in which the data of a model are given. Any thread may use the names.
#pragma once

#include "zeq_api/json/enum_names.h"

namespace zeq {

/// A unit of length; `model_unit` is the unit that the model itself names.
enum class ELengthUnitType {
    unknown,
    model_unit,
    nanometer,
    micrometer,
    millimeter,
    centimeter,
    decimeter,
    meter,
    inch,
    foot,
    mile,
    kilometer,
    milliinch,
    microinch
};
const EnumTable& enumTable(ELengthUnitType);

/// A unit of mass. The value 2 has no name.
enum class EMassUnitType {
    unknown,
    model_unit,
    centigram = 3,
    decigram,
    gram,
    kilogram,
    poind_mass, // sic
    tonne,
    slug,
    lbfsec2_in
};
const EnumTable& enumTable(EMassUnitType);

/// A unit of time.
enum class ETimeUnitType {
    unknown,
    model_unit,
    nanosecond,
    microsecond,
    millisecond,
    second,
    minute,
    hour,
    day
};
const EnumTable& enumTable(ETimeUnitType);

/// A unit of temperature.
enum class ETemperatureUnitType {
    unknown,
    model_unit,
    fahrenheit,
    celsius,
    kelvin
};
const EnumTable& enumTable(ETemperatureUnitType);

/// The axis that points up in the world of a model.
enum class EWorldOrientation {
    unknown,
    up_x,
    up_y,
    up_z
};
const EnumTable& enumTable(EWorldOrientation);

} // namespace zeq
