// The units in which the lengths of a model can travel.
#pragma once

#include "convexor/reporter.h"
#include "zeq_api/exchange_common/units.h"

namespace zeq::convexor {

/// A unit of length.
struct LengthUnit {
    ELengthUnitType type = ELengthUnitType::millimeter;
    double millimeters = 1;
    const wchar_t* symbol = L"mm";
};

/// Null for a type that stands for no unit of its own.
const LengthUnit* findLengthUnit(ELengthUnitType type);
/// The unit that is so many millimetres long, but for rounding; null when there is none.
const LengthUnit* findLengthUnit(double millimeters);

/// The unit in which lengths are to travel from a file whose own unit has so many millimetres, 0 for no single one;
/// what cannot be chosen is logged, and is millimetres.
LengthUnit chooseLengthUnit(ELengthUnitType wanted, double fileUnit, Reporter& reporter);

} // namespace zeq::convexor
