// Names and JSON forms of the option groups that are not tied to a file format.
#include "zeq_api/format_options/common_options.h"

#include "zeq_api/format_options/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

const EnumTable& enumTable(ELogEventLevelType) {
    using E = ELogEventLevelType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"}, {E::none, L"none"},
                                          {E::abort, L"abort"},     {E::error, L"error"},
                                          {E::warning, L"warning"}, {E::information, L"information"},
                                          {E::verbose, L"verbose"}};
    static const EnumTable table{"ELogEventLevelType", names};
    return table;
}

const EnumTable& enumTable(ELogFileEncodingType) {
    using E = ELogFileEncodingType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::us_ascii, L"us_ascii"},
                                          {E::mbcs, L"mbcs"},
                                          {E::utf8, L"utf8"},
                                          {E::utf16, L"utf16"}};
    static const EnumTable table{"ELogFileEncodingType", names};
    return table;
}

const EnumTable& enumTable(ELoggingModeType) {
    using E = ELoggingModeType;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::atomic, L"atomic"}, {E::append, L"append"}};
    static const EnumTable table{"ELoggingModeType", names};
    return table;
}

const EnumTable& enumTable(EMemoryManagementModeFlags) {
    using E = EMemoryManagementModeFlags;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::keep_none, L"keep_none"},
                                          {E::keep_part_visu, L"keep_part_visu"},
                                          {E::keep_part_mech, L"keep_part_mech"},
                                          {E::keep_asm_visu, L"keep_asm_visu"},
                                          {E::keep_asm_mech, L"keep_asm_mech"}};
    static const EnumTable table{"EMemoryManagementModeFlags", names};
    return table;
}

const EnumTable& enumTable(ETranslateReferenceGeometryMode) {
    using E = ETranslateReferenceGeometryMode;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::true_, L"true"}, {E::false_, L"false"}};
    static const EnumTable table{"ETranslateReferenceGeometryMode", names};
    return table;
}

const EnumTable& enumTable(EVisuBRepTessellationModeType) {
    using E = EVisuBRepTessellationModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::auto_, L"auto"},
                                          {E::never, L"never"},
                                          {E::never_at_least_native_pmi, L"never_at_least_native_pmi"}};
    static const EnumTable table{"EVisuBRepTessellationModeType", names};
    return table;
}

const EnumTable& enumTable(EVisuTextDataMode) {
    using E = EVisuTextDataMode;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::as_string, L"as_string"}, {E::as_stroked, L"as_stroked"}};
    static const EnumTable table{"EVisuTextDataMode", names};
    return table;
}

const EnumTable& enumTable(EVisuTextStrokingMode) {
    using E = EVisuTextStrokingMode;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"},
        {E::from_source_native, L"from_source_native"},
        {E::from_source_generated, L"from_source_generated"},
        {E::from_source_generated_without_inner_loops, L"from_source_generated_without_inner_loops"},
        {E::from_source_generated_with_inner_loops, L"from_source_generated_with_inner_loops"},
        {E::from_iop, L"from_iop"}};
    static const EnumTable table{"EVisuTextStrokingMode", names};
    return table;
}

const EnumTable& enumTable(EFeatureToleranceProcessingModeType) {
    using E = EFeatureToleranceProcessingModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"}, {E::all, L"all"}, {E::none, L"none"}};
    static const EnumTable table{"EFeatureToleranceProcessingModeType", names};
    return table;
}

const EnumTable& enumTable(EMiscDataProcessingModeType) {
    using E = EMiscDataProcessingModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"}, {E::all, L"all"}, {E::none, L"none"}};
    static const EnumTable table{"EMiscDataProcessingModeType", names};
    return table;
}

const EnumTable& enumTable(EAcisSplineResurfacingModeType) {
    using E = EAcisSplineResurfacingModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::none, L"none"},
                                          {E::erroneous_surfaces_only, L"erroneous_surfaces_only"},
                                          {E::erroneous_and_short_surfaces, L"erroneous_and_short_surfaces"}};
    static const EnumTable table{"EAcisSplineResurfacingModeType", names};
    return table;
}

const EnumTable& enumTable(EAttributeProcessingModeType) {
    using E = EAttributeProcessingModeType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"}, {E::all, L"all"}, {E::none, L"none"}};
    static const EnumTable table{"EAttributeProcessingModeType", names};
    return table;
}

const EnumTable& enumTable(EAcisHealType) {
    using E = EAcisHealType;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::none, L"none"}, {E::minimal, L"minimal"}, {E::standard, L"standard"}};
    static const EnumTable table{"EAcisHealType", names};
    return table;
}

const EnumTable& enumTable(EPreserveMfgModeType) {
    using E = EPreserveMfgModeType;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::disabled, L"disabled"}, {E::decorate_all_mfg, L"decorate_all_mfg"}};
    static const EnumTable table{"EPreserveMfgModeType", names};
    return table;
}

const EnumTable& enumTable(EPreserveModelAssociativityModeType) {
    using E = EPreserveModelAssociativityModeType;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::disabled, L"disabled"}, {E::decorate_all, L"decorate_all"}};
    static const EnumTable table{"EPreserveModelAssociativityModeType", names};
    return table;
}

const EnumTable& enumTable(EPreservePMIModeType) {
    using E = EPreservePMIModeType;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::disabled, L"disabled"}, {E::decorate_all_pmi, L"decorate_all_pmi"}};
    static const EnumTable table{"EPreservePMIModeType", names};
    return table;
}

const EnumTable& enumTable(ETopologicalEntityInspectorModeType) {
    using E = ETopologicalEntityInspectorModeType;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::process, L"process"}, {E::disabled, L"disabled"}};
    static const EnumTable table{"ETopologicalEntityInspectorModeType", names};
    return table;
}

struct OptionsGeneral::JsonForm {
    using This = OptionsGeneral;
    static constexpr json::Form form{
        json::Head{"OptionsGeneral", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"log_event_level_type", &This::m_logEventLevel),
        json::field(L"log_file_encoding_type", &This::m_logFileEncoding),
        json::field(L"log_file_name", &This::m_logFileName),
        json::field(L"logging_mode_type", &This::m_loggingMode),
        json::field(L"logging_output_directory", &This::m_loggingOutputDirectory),
        json::field(L"memory_management_mode", &This::m_memoryManagementMode),
    };
};

ZEQ_JSON_OBJECT(OptionsGeneral)

struct OptionsGraphical::JsonForm {
    using This = OptionsGraphical;
    static constexpr json::Form form{
        json::Head{"OptionsGraphical", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"tesselation_max_chordal_deviation", &This::m_tesselationMaxChordalDeviation), // sic
        json::field(L"translate_reference_geometry_mode", &This::m_translateReferenceGeometryMode),
        json::field(L"visu_brep_tesselation_mode", &This::m_visuBRepTessellationMode), // sic
        json::field(L"visu_text_data_mode", &This::m_visuTextDataMode),
        json::field(L"visu_text_stroking_mode", &This::m_visuTextStrokingMode),
    };
};

ZEQ_JSON_OBJECT(OptionsGraphical)

struct OptionsMechanical::JsonForm {
    using This = OptionsMechanical;
    static constexpr json::Form form{
        json::Head{"OptionsMechanical", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"feature_tolerance_processing_mode", &This::m_featureToleranceProcessingMode),
        json::field(L"misc_data_processing_mode", &This::m_miscDataProcessingMode),
    };
};

ZEQ_JSON_OBJECT(OptionsMechanical)

struct OptionsModeler::JsonForm {
    using This = OptionsModeler;
    static constexpr json::Form form{
        json::Head{"OptionsModeler", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"acis_spline_resurfacing_mode", &This::m_acisSplineResurfacingMode),
        json::field(L"acis_spline_resurfacing_tolerance", &This::m_splineResurfacingTolerance),
        json::field(L"attribute_processing_mode", &This::m_attributeProcessingMode),
        json::field(L"acis_heal_type", &This::m_acisHealType),
        json::field(L"length_unit_type", &This::m_modelerUnits),
        json::field(L"preserve_mfg_mode", &This::m_preserveMfgMode),
        json::field(L"preserve_model_associativity_mode", &This::m_preserveModelAssociativityMode),
        json::field(L"preserve_pmi_mode", &This::m_preservePMIMode),
        json::field(L"topological_entity_inspector_mode", &This::m_topologicalEntityInspectorMode),
    };
};

ZEQ_JSON_OBJECT(OptionsModeler)

} // namespace zeq
