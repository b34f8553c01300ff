// The names of the legacy choices.
#include "zeq_api/command/legacy_modes.h"

const zeq::EnumTable& OdDb::enumTable(UnitsValue) {
    using E = UnitsValue;
    static constexpr zeq::EnumEntry names[] = {{E::undefined, L"undefined"},
                                               {E::inches, L"inches"},
                                               {E::feet, L"feet"},
                                               {E::miles, L"miles"},
                                               {E::millimeters, L"millimeters"},
                                               {E::centimeters, L"centimeters"},
                                               {E::meters, L"meters"},
                                               {E::kilometers, L"kilometers"},
                                               {E::microinches, L"microinches"},
                                               {E::mils, L"mils"},
                                               {E::yards, L"yards"},
                                               {E::angstroms, L"angstroms"},
                                               {E::nanometers, L"nanometers"},
                                               {E::microns, L"microns"},
                                               {E::decimeters, L"decimeters"},
                                               {E::dekameters, L"dekameters"},
                                               {E::hectometers, L"hectometers"},
                                               {E::gigameters, L"gigameters"},
                                               {E::astronomical, L"astronomical"},
                                               {E::light_years, L"light_years"},
                                               {E::parsecs, L"parsecs"},
                                               {E::us_survey_feet, L"us_survey_feet"},
                                               {E::us_survey_inch, L"us_survey_inch"},
                                               {E::us_survey_yard, L"us_survey_yard"},
                                               {E::us_survey_mil, L"us_survey_mil"}};
    static const zeq::EnumTable table{"OdDb::UnitsValue", names};
    return table;
}

namespace zeq {

const EnumTable& enumTable(EImportPMIMode) {
    using E = EImportPMIMode;
    static constexpr EnumEntry names[] = {
        {E::none, L"none"}, {E::graphical, L"graphical"}, {E::semantic, L"semantic"}};
    static const EnumTable table{"EImportPMIMode", names};
    return table;
}

const EnumTable& enumTable(EImportProductStructureMode) {
    using E = EImportProductStructureMode;
    static constexpr EnumEntry names[] = {{E::none, L"none"},
                                          {E::as_blocks, L"as_blocks"},
                                          {E::as_mechanical_components, L"as_mechanical_components"}};
    static const EnumTable table{"EImportProductStructureMode", names};
    return table;
}

const EnumTable& enumTable(EImportColorsMode) {
    using E = EImportColorsMode;
    static constexpr EnumEntry names[] = {
        {E::rgb, L"rgb"}, {E::matching_index, L"matching_index"}, {E::nearest_index, L"nearest_index"}};
    static const EnumTable table{"EImportColorsMode", names};
    return table;
}

const EnumTable& enumTable(EImportHiddenPartsMode) {
    using E = EImportHiddenPartsMode;
    static constexpr EnumEntry names[] = {{E::import_hide, L"import_hide"},
                                          {E::import_show, L"import_show"},
                                          {E::do_not_import, L"do_not_import"}};
    static const EnumTable table{"EImportHiddenPartsMode", names};
    return table;
}

const EnumTable& enumTable(EExportProductStructureMode) {
    using E = EExportProductStructureMode;
    static constexpr EnumEntry names[] = {{E::none, L"none"},
                                          {E::as_mechanical_components, L"as_mechanical_components"}};
    static const EnumTable table{"EExportProductStructureMode", names};
    return table;
}

const EnumTable& enumTable(EExportHiddenPartsMode) {
    using E = EExportHiddenPartsMode;
    static constexpr EnumEntry names[] = {{E::export_hide, L"export_hide"},
                                          {E::do_not_export, L"do_not_export"}};
    static const EnumTable table{"EExportHiddenPartsMode", names};
    return table;
}

} // namespace zeq
