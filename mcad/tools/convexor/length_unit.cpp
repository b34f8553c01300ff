// The table of units.
#include "convexor/length_unit.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace zeq::convexor {

namespace {

template <class Matches>
const LengthUnit* findUnit(const Matches& matches) {
    using enum ELengthUnitType;
    static constexpr LengthUnit units[] = {
        {nanometer, 1e-6, L"nm"}, {micrometer, 1e-3, L"um"},    {millimeter, 1, L"mm"},
        {centimeter, 10, L"cm"},  {decimeter, 100, L"dm"},      {meter, 1e3, L"m"},
        {kilometer, 1e6, L"km"},  {microinch, 25.4e-6, L"uin"}, {milliinch, 25.4e-3, L"mil"},
        {inch, 25.4, L"in"},      {foot, 304.8, L"ft"},         {mile, 1609344, L"mi"},
    };
    const auto* const found = std::ranges::find_if(units, matches);
    return found == std::end(units) ? nullptr : found;
}

} // namespace

const LengthUnit* findLengthUnit(ELengthUnitType type) {
    return findUnit([type](const LengthUnit& unit) { return unit.type == type; });
}

const LengthUnit* findLengthUnit(double millimeters) {
    return findUnit([millimeters](const LengthUnit& unit) {
        return std::abs(unit.millimeters - millimeters) <= 1e-9 * unit.millimeters;
    });
}

LengthUnit chooseLengthUnit(ELengthUnitType wanted, double fileUnit, Reporter& reporter) {
    if (wanted == ELengthUnitType::unknown) return {};
    const bool isFileUnit = wanted == ELengthUnitType::model_unit;
    if (const LengthUnit* const unit = isFileUnit ? findLengthUnit(fileUnit) : findLengthUnit(wanted))
        return *unit;
    reporter.log(ELogEventLevelType::warning,
                 L"The file has no single unit of length that is known here: millimetres are used instead");
    return {};
}

} // namespace zeq::convexor
