// Names of the choices of the import groups.
#include "zeq_api/format_options/import_modes.h"

namespace zeq {

const EnumTable& enumTable(EVisuPMIProcessingMode) {
    using E = EVisuPMIProcessingMode;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"}, {E::all, L"all"}, {E::none, L"none"}};
    static const EnumTable table{"EVisuPMIProcessingMode", names};
    return table;
}

const EnumTable& enumTable(EImportEntities) {
    using E = EImportEntities;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::root_only, L"root_only"}, {E::root_and_nonroot, L"root_and_nonroot"}};
    static const EnumTable table{"EImportEntities", names};
    return table;
}

const EnumTable& enumTable(ETranslateHiddenEntitiesModeType) {
    using E = ETranslateHiddenEntitiesModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::all, L"all"},
                                          {E::none, L"none"},
                                          {E::only_with_visible_links, L"only_with_visible_links"}};
    static const EnumTable table{"ETranslateHiddenEntitiesModeType", names};
    return table;
}

const EnumTable& enumTable(ETranslateSuppressedEntitiesModeType) {
    using E = ETranslateSuppressedEntitiesModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"}, {E::all, L"all"}, {E::none, L"none"}};
    static const EnumTable table{"ETranslateSuppressedEntitiesModeType", names};
    return table;
}

const EnumTable& enumTable(EAssemblyPathPrefType) {
    using E = EAssemblyPathPrefType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::subfolders_first, L"subfolders_first"},
                                          {E::root_folder_only, L"root_folder_only"},
                                          {E::root_folder_first, L"root_folder_first"}};
    static const EnumTable table{"EAssemblyPathPrefType", names};
    return table;
}

const EnumTable& enumTable(EProcessInWorkObjectModeType) {
    using E = EProcessInWorkObjectModeType;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::true_, L"true"}, {E::false_, L"false"}};
    static const EnumTable table{"EProcessInWorkObjectModeType", names};
    return table;
}

const EnumTable& enumTable(ENameProcessingModeType) {
    using E = ENameProcessingModeType;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::short_names, L"short_names"}, {E::long_names, L"long_names"}};
    static const EnumTable table{"ENameProcessingModeType", names};
    return table;
}

const EnumTable& enumTable(EAssemblyUnfoldedViewMode) {
    using E = EAssemblyUnfoldedViewMode;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::true_, L"true"}, {E::false_, L"false"}};
    static const EnumTable table{"EAssemblyUnfoldedViewMode", names};
    return table;
}

const EnumTable& enumTable(EImportMfgProcessingModeType) {
    using E = EImportMfgProcessingModeType;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::features_only, L"features_only"}, {E::results_only, L"results_only"}};
    static const EnumTable table{"EImportMfgProcessingModeType", names};
    return table;
}

const EnumTable& enumTable(EProcessMfgDataModeType) {
    using E = EProcessMfgDataModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"}, {E::all, L"all"}, {E::none, L"none"}};
    static const EnumTable table{"EProcessMfgDataModeType", names};
    return table;
}

const EnumTable& enumTable(EDocumentDelayLoadingMode) {
    using E = EDocumentDelayLoadingMode;
    static constexpr EnumEntry names[] = {{E::none, L"none"}, {E::part, L"part"}};
    static const EnumTable table{"EDocumentDelayLoadingMode", names};
    return table;
}

const EnumTable& enumTable(EEdgeAttributeModeType) {
    using E = EEdgeAttributeModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::none, L"none"},
                                          {E::all, L"all"},
                                          {E::pmi_owners_only, L"pmi_owners_only"},
                                          {E::wire_body_only, L"wire_body_only"}};
    static const EnumTable table{"EEdgeAttributeModeType", names};
    return table;
}

const EnumTable& enumTable(EImportMfgHolesOnSheetsMode) {
    using E = EImportMfgHolesOnSheetsMode;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::ignore, L"ignore"}, {E::include, L"include"}};
    static const EnumTable table{"EImportMfgHolesOnSheetsMode", names};
    return table;
}

const EnumTable& enumTable(ETranslateDrivingDimensionsModeType) {
    using E = ETranslateDrivingDimensionsModeType;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::true_, L"true"}, {E::false_, L"false"}};
    static const EnumTable table{"ETranslateDrivingDimensionsModeType", names};
    return table;
}

const EnumTable& enumTable(ETranslateConstructionGeometriesModeType) {
    using E = ETranslateConstructionGeometriesModeType;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::true_, L"true"}, {E::false_, L"false"}};
    static const EnumTable table{"ETranslateConstructionGeometriesModeType", names};
    return table;
}

const EnumTable& enumTable(ECopiousDataModeType) {
    using E = ECopiousDataModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::single_b_spline, L"single_b_spline"},
                                          {E::multiple_b_splines, L"multiple_b_splines"},
                                          {E::multiple_lines, L"multiple_lines"}};
    static const EnumTable table{"ECopiousDataModeType", names};
    return table;
}

const EnumTable& enumTable(ETrimCurveImportPreferenceModeType) {
    using E = ETrimCurveImportPreferenceModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::curves_2d, L"2d"},
                                          {E::curves_3d, L"3d"},
                                          {E::from_source, L"from_source"}};
    static const EnumTable table{"ETrimCurveImportPreferenceModeType", names};
    return table;
}

const EnumTable& enumTable(EActiveStateProcessingModeType) {
    using E = EActiveStateProcessingModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::active_only, L"active_only"},
                                          {E::active_and_inactive, L"active_and_inactive"}};
    static const EnumTable table{"EActiveStateProcessingModeType", names};
    return table;
}

const EnumTable& enumTable(EImportEdgesModeType) {
    using E = EImportEdgesModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"}, {E::all, L"all"}, {E::none, L"none"}};
    static const EnumTable table{"EImportEdgesModeType", names};
    return table;
}

const EnumTable& enumTable(EUserPropertiesModeType) {
    using E = EUserPropertiesModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::translate_all, L"translate_all"},
                                          {E::translate_none, L"translate_none"}};
    static const EnumTable table{"EUserPropertiesModeType", names};
    return table;
}

const EnumTable& enumTable(ETranslateFreeCurvesModeType) {
    using E = ETranslateFreeCurvesModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"}, {E::all, L"all"}, {E::none, L"none"}};
    static const EnumTable table{"ETranslateFreeCurvesModeType", names};
    return table;
}

const EnumTable& enumTable(ETranslateFreePointsModeType) {
    using E = ETranslateFreePointsModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"}, {E::all, L"all"}, {E::none, L"none"}};
    static const EnumTable table{"ETranslateFreePointsModeType", names};
    return table;
}

const EnumTable& enumTable(EImportProductStructureRepresentationMode) {
    using E = EImportProductStructureRepresentationMode;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::asm_rep, L"asm_rep"},
                                          {E::saved_visu_rep, L"saved_visu_rep"},
                                          {E::asm_rep_and_saved_visu_rep, L"asm_rep_and_saved_visu_rep"}};
    static const EnumTable table{"EImportProductStructureRepresentationMode", names};
    return table;
}

const EnumTable& enumTable(ELayerNameProcessingModeType) {
    using E = ELayerNameProcessingModeType;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::asm_rep, L"asm_rep"}, {E::saved_visu_rep, L"saved_visu_rep"}};
    static const EnumTable table{"ELayerNameProcessingModeType", names};
    return table;
}

const EnumTable& enumTable(EPersistentNameProcessingModeType) {
    using E = EPersistentNameProcessingModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"}, {E::none, L"none"},
                                          {E::vertex, L"vertex"},   {E::edge, L"edge"},
                                          {E::face, L"face"},       {E::instance, L"instance"}};
    static const EnumTable table{"EPersistentNameProcessingModeType", names};
    return table;
}

} // namespace zeq
