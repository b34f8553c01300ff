// The names of units and orientations.
#include "zeq_api/exchange_common/units.h"

namespace zeq {

const EnumTable& enumTable(ELengthUnitType) {
    using enum ELengthUnitType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {model_unit, L"model_unit"},
                                          {nanometer, L"nanometer"},
                                          {micrometer, L"micrometer"},
                                          {millimeter, L"millimeter"},
                                          {centimeter, L"centimeter"},
                                          {decimeter, L"decimeter"},
                                          {meter, L"meter"},
                                          {inch, L"inch"},
                                          {foot, L"foot"},
                                          {mile, L"mile"},
                                          {kilometer, L"kilometer"},
                                          {milliinch, L"milliinch"},
                                          {microinch, L"microinch"}};
    static const EnumTable table{"ELengthUnitType", names};
    return table;
}

const EnumTable& enumTable(EMassUnitType) {
    using enum EMassUnitType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {model_unit, L"model_unit"},
                                          {centigram, L"centigram"},
                                          {decigram, L"decigram"},
                                          {gram, L"gram"},
                                          {kilogram, L"kilogram"},
                                          {poind_mass, L"poind_mass"},
                                          {tonne, L"tonne"},
                                          {slug, L"slug"},
                                          {lbfsec2_in, L"lbfsec2_in"}};
    static const EnumTable table{"EMassUnitType", names};
    return table;
}

const EnumTable& enumTable(ETimeUnitType) {
    using enum ETimeUnitType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {model_unit, L"model_unit"},
                                          {nanosecond, L"nanosecond"},
                                          {microsecond, L"microsecond"},
                                          {millisecond, L"millisecond"},
                                          {second, L"second"},
                                          {minute, L"minute"},
                                          {hour, L"hour"},
                                          {day, L"day"}};
    static const EnumTable table{"ETimeUnitType", names};
    return table;
}

const EnumTable& enumTable(ETemperatureUnitType) {
    using enum ETemperatureUnitType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {model_unit, L"model_unit"},
                                          {fahrenheit, L"fahrenheit"},
                                          {celsius, L"celsius"},
                                          {kelvin, L"kelvin"}};
    static const EnumTable table{"ETemperatureUnitType", names};
    return table;
}

const EnumTable& enumTable(EWorldOrientation) {
    using enum EWorldOrientation;
    static constexpr EnumEntry names[] = {
        {unknown, L"unknown"}, {up_x, L"up_x"}, {up_y, L"up_y"}, {up_z, L"up_z"}};
    static const EnumTable table{"EWorldOrientation", names};
    return table;
}

} // namespace zeq
