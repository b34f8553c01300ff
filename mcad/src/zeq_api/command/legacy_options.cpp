// The options of import and export commands to the legacy interface.
#include "zeq_api/command/legacy_options.h"

#include "zeq_api/command/area.h"
#include "zeq_api/command/format_groups.h"
#include "zeq_api/exchange_common/component_maps.h"
#include "zeq_api/json/document_rows.h"

namespace zeq {

struct LegacyImportOptionsImpl::JsonForm {
    using This = LegacyImportOptionsImpl;
    static constexpr json::Form form{
        json::Head{"LegacyImportOptionsImpl", area::command,
                   json::throwsInvalid("LegacyImportOptionsImpl::readObject: !object.IsObject()")},
        detail::inForce(
            "LegacyImportOptions.file = ",
            detail::mandatory(L"file", &This::m_file,
                              "LegacyImportOptionsImpl::readObject: json document has no valid file path.")),
        detail::inForce(
            "LegacyImportOptions.temporaryDwg = ",
            detail::mandatory(
                L"temporary_dwg", &This::m_temporaryDwg,
                // sic
                "LeagcyImportOptionsImpl::readObject: Json document has no valid temporary dwg path.")),
        detail::formatGroups(L"format_options", &This::m_formatOptions),
        detail::inForce("LegacyImportOptions.useIopMP = ",
                        json::field(L"use_interop_mp", &This::m_useInterOpMP, json::whenSet)),
        detail::inForce("LegacyImportOptions.pmiMode = ", json::field(L"pmi_mode", &This::m_pmiMode)),
        detail::inForce("LegacyImportOptions.productStructureMode = ",
                        json::field(L"product_structure_mode", &This::m_productStructureMode)),
        detail::inForce("LegacyImportOptions.colorsMode = ",
                        json::field(L"colors_mode", &This::m_colorsMode)),
        detail::inForce("LegacyImportOptions.hiddenPartsMode = ",
                        json::field(L"hidden_parts_mode", &This::m_hiddenPartsMode)),
        detail::inForce("LegacyImportOptions.insUnitsDefSource = ",
                        json::field(L"ins_units_def_source", &This::m_insUnitsDefSource)),
        detail::inForce("LegacyImportOptions.insUnitsScaling = ",
                        json::field(L"ins_units_scaling", &This::m_insUnitsScaling, json::whenSet)),
        detail::inForce("LegacyImportOptions.importAcisNatively = ",
                        json::field(L"import_acis_natively", &This::m_importAcisNatively, json::whenSet)),
        detail::inForce("LegacyImportOptions.StepRotateYZ = ",
                        json::field(L"step_rotate_yz", &This::m_stepRotateYZ, json::whenSet)),
        detail::inForce("LegacyImportOptions.SolidWorksRotateYZ = ",
                        json::field(L"solidworks_rotate_yz", &This::m_solidWorksRotateYZ, json::whenSet)),
        detail::inForce("LegacyImportOptions.CatiaV5EdgeAttributeMode = ",
                        json::field(L"edge_attribute_mode", &This::m_catiaV5EdgeAttributeMode)),
        detail::inForce(
            "LegacyImportOptions.AlternateSearchPaths for ",
            json::field(L"alternate_search_paths", &This::m_alternateSearchPaths, json::unlessEmpty)),
        detail::inForce("LegacyImportOptions.PrintDebugLog = ",
                        json::field(L"debug_log", &This::m_printDebugLog, json::whenSet)),
    };
};

ZEQ_JSON_OBJECT(LegacyImportOptionsImpl)

std::shared_ptr<IFormatOptions> LegacyImportOptionsImpl::formatOptions(EFormatType type) const {
    return detail::findGroup(m_formatOptions, type);
}

void LegacyImportOptionsImpl::setFormatOptions(std::shared_ptr<IFormatOptions> options) {
    detail::putGroup(m_formatOptions, std::move(options));
}

bool LegacyImportOptionsImpl::hasAlternateSearchPathsFor(const std::wstring& key) const {
    return m_alternateSearchPaths.contains(key);
}

const std::wstring& LegacyImportOptionsImpl::alternateSearchPathsFor(const std::wstring& key) const {
    static const std::wstring none;
    const auto found = m_alternateSearchPaths.find(key);
    return found == m_alternateSearchPaths.end() ? none : found->second;
}

void LegacyImportOptionsImpl::setAlternateSearchPathsFor(const std::wstring& key, const std::wstring& paths) {
    m_alternateSearchPaths.insert_or_assign(key, paths);
}

struct LegacyExportOptionsImpl::JsonForm {
    using This = LegacyExportOptionsImpl;
    static constexpr json::Form form{
        json::Head{"LegacyExportOptionsImpl", area::command,
                   json::throwsInvalid("LegacyExportOptionsImpl::readObject: !object.IsObject()")},
        detail::mandatory(L"file", &This::m_file,
                          "LegacyExportOptionsImpl::readObject: Json document has no valid file path."),
        detail::mandatory(
            L"temporary_dwg", &This::m_temporaryDwg,
            "LegacyExportOptionsImpl::readObject: Json document has no valid temporary dwg path."),
        json::field(L"format_version", &This::m_formatVersion, json::unlessEmpty),
        json::field(L"geometry_flags", &This::m_geometryFlags, json::unless(0)),
        json::field(L"ins_units_scaling", &This::m_insUnitsScaling, json::whenSet),
        json::field(L"ins_units_def_target", &This::m_insUnitsDefTarget),
        json::field(L"product_structure_mode", &This::m_productStructureMode),
        json::field(L"hidden_parts_mode", &This::m_hiddenPartsMode),
        json::field(L"selection_set", &This::m_entities, json::unlessEmpty),
        json::field(L"component_names", &This::m_componentNames, json::unlessEmpty),
        json::field(L"hidden_components", &This::m_hiddenComponents, json::unlessEmpty),
        json::field(L"step_format_version", &This::m_stepFormatVersion,
                    json::unless(EExportStepFormatVersion{2})),
        json::field(L"acis_format_version", &This::m_acisFormatVersion,
                    json::unless(EExportAcisFormatVersion{})),
        json::field(L"catiav4_format_version", &This::m_catiav4FormatVersion,
                    json::unless(EExportCatiav4FormatVersion{})),
        json::field(L"catiav5_format_version", &This::m_catiav5FormatVersion,
                    json::unless(EExportCatiav5FormatVersion{})),
        json::field(L"parasolid_format_version", &This::m_parasolidFormatVersion,
                    json::unless(EExportParasolidFormatVersion{})),
        json::field(L"xcgm_format_version", &This::m_xcgmFormatVersion,
                    json::unless(EExportXcgmFormatVersion{})),
        json::field(L"debug_log", &This::m_printDebugLog, json::whenSet),
    };
};

ZEQ_JSON_OBJECT(LegacyExportOptionsImpl)

} // namespace zeq
