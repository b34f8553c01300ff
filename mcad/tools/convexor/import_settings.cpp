// Reads the settings out of the option groups, and compares each group with its defaults to find what is
// left.
#include "convexor/import_settings.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "zeq_api/format_options/common_options.h"
#include "zeq_api/format_options/import_options.h"
#include "zeq_api/json/dom_model.h"
#include "zeq_api/json/text_io.h"

namespace zeq::convexor {

namespace {

/// A key that is honoured, or only some of its values.
struct HonouredKey {
    EFormatType group;
    std::wstring_view key;
    std::vector<std::wstring_view> values = {}; ///< empty for all
};

/// Some values ask for no more than what the translator does anyway.
const std::vector<HonouredKey>& honouredKeys() {
    using enum EFormatType;
    static const std::vector<HonouredKey> keys{
        {general, L"log_event_level_type"},
        {general, L"log_file_encoding_type", {L"utf8"}},
        {general, L"log_file_name"},
        {general, L"logging_mode_type"},
        {general, L"logging_output_directory"},
        {general, L"memory_management_mode", {L"keep_none"}},
        {graphical, L"tesselation_max_chordal_deviation"},
        {graphical, L"visu_brep_tesselation_mode"},
        {mechanical, L"feature_tolerance_processing_mode"},
        {mechanical, L"misc_data_processing_mode"},
        {modeler, L"length_unit_type"},
        {modeler, L"preserve_model_associativity_mode"},
        {modeler, L"preserve_pmi_mode"},
        {IGES, L"hidden_entities_mode", {L"all", L"none"}},
        {IGES, L"import_entities", {L"root_only"}},
        {STEP, L"import_geometry"},
        {STEP, L"import_root_visualization"},
        {STEP, L"import_visualization"},
        {STEP, L"layer_name_mode", {L"asm_rep"}},
        {STEP, L"visu_pmi_mode"},
    };
    return keys;
}

bool isHonoured(EFormatType group, std::wstring_view key, const JsonValue& value) {
    const auto& keys = honouredKeys();
    const auto found = std::ranges::find_if(
        keys, [&](const HonouredKey& row) { return row.group == group && row.key == key; });
    if (found == keys.end()) return false;
    return found->values.empty() ||
           std::ranges::find(found->values, value.GetString()) != found->values.end();
}

/// Whether the value leaves the choice to the translator.
bool isUnknown(const JsonValue& value) { return value.IsString() && value == L"unknown"; }

JsonDocument jsonOf(const IFormatOptions& group) {
    JsonDocument document;
    group.writeObject(document, document.GetAllocator());
    return document;
}

/// Tells the log what of the group has no effect.
void reportWhatIsLeft(const IFormatOptions& group, EFormatType fileFormat, Reporter& reporter) {
    const EOperationType operation = group.operationType();
    const EFormatType format = group.formatType();
    const bool isUsed =
        operation == EOperationType::options || (operation == EOperationType::import && format == fileFormat);

    const JsonDocument defaults = jsonOf(*IFormatOptions::make(operation, format));
    const JsonDocument settings = jsonOf(group);
    std::wstring keys;
    for (const auto& setting : settings.GetObject()) {
        if (setting.value == defaults[setting.name] || isUnknown(setting.value)) continue;
        const std::wstring key = setting.name.GetString();
        if (isUsed && isHonoured(format, key, setting.value)) continue;
        keys += (keys.empty() ? L"" : L", ") + key;
    }
    if (keys.empty()) return;
    reporter.log(
        ELogEventLevelType::warning,
        L"Option group " + enumToString(operation) + L' ' + enumToString(format) +
            (isUsed ? L": not honoured: " + keys : L": not used for importing " + enumToString(fileFormat)));
}

/// The import group of a format as it arrived, which tells what it really says.
class GroupText {
public:
    GroupText(const std::wstring& commandText, EFormatType format) {
        std::wistringstream stream(commandText);
        if (!JsonTextIO::read(stream, m_command)) return;
        const JsonValue* const options = json::findMember(m_command, L"options");
        const JsonValue* const groups = options ? json::findMember(*options, L"format_options") : nullptr;
        if (!groups || !groups->IsArray()) return;
        for (const JsonValue& group : groups->GetArray()) {
            const JsonValue* const operation = findString(group, L"operation_type");
            const JsonValue* const name = findString(group, L"format_type");
            if (operation && name && enumToString(EOperationType::import) == operation->GetString() &&
                enumToString(format) == name->GetString())
                m_group = &group; // of several groups of a format the last one counts
        }
    }

    /// Whether the group says that no such thing is wanted. One that says nothing does not.
    bool refuses(const wchar_t* key) const {
        const JsonValue* const said = m_group ? json::findMember(*m_group, key) : nullptr;
        return said && said->IsFalse();
    }

private:
    JsonDocument m_command;
    const JsonValue* m_group = nullptr;
};

} // namespace

ImportSettings importSettings(const ImportOptions& options, const std::wstring& commandText,
                              EFormatType fileFormat, Reporter& reporter) {
    for (const EnumEntry& format : enumTable(EFormatType{}).entries())
        if (const auto group = options.formatOptions(static_cast<EFormatType>(format.value)))
            reportWhatIsLeft(*group, fileFormat, reporter);

    ImportSettings settings;
    if (const auto modeler = findGroup<OptionsModeler>(options)) {
        settings.lengthUnit = modeler->modelerUnits();
        settings.mapping =
            modeler->preserveModelAssociativityMode() != EPreserveModelAssociativityModeType::disabled;
    }

    // The group is the finer instrument: what it says prevails over the command's own flag.
    settings.miscData = options.translateMiscData();
    if (const auto mechanical = findGroup<OptionsMechanical>(options)) {
        const auto mode = mechanical->miscDataProcessingMode();
        if (mode != EMiscDataProcessingModeType::unknown)
            settings.miscData = mode == EMiscDataProcessingModeType::all;
        settings.semanticPMI =
            mechanical->featureToleranceProcessingMode() != EFeatureToleranceProcessingModeType::none;
    }
    if (const auto step = findGroup<imp::OptionsSTEP>(options); step && fileFormat == EFormatType::STEP)
        settings.graphicalPMI = step->visuPMIProcessingMode() != EVisuPMIProcessingMode::none;
    if (const auto modeler = findGroup<OptionsModeler>(options);
        modeler && modeler->preservePMIMode() == EPreservePMIModeType::disabled)
        settings.semanticPMI = settings.graphicalPMI = false;

    if (const auto iges = findGroup<imp::OptionsIGES>(options); iges && fileFormat == EFormatType::IGES)
        settings.hiddenEntities = iges->hiddenEntitiesMode() != ETranslateHiddenEntitiesModeType::none;
    const GroupText group(commandText, fileFormat);
    settings.geometry = !group.refuses(L"import_geometry");
    settings.display = !group.refuses(L"import_visualization");
    settings.rootDisplay = !group.refuses(L"import_root_visualization");
    if (const auto graphical = findGroup<OptionsGraphical>(options)) {
        using Tessellation = EVisuBRepTessellationModeType;
        const Tessellation mode = graphical->visuBRepTessellationMode();
        settings.tessellation =
            mode != Tessellation::never && mode != Tessellation::never_at_least_native_pmi;
        settings.chord = graphical->tesselationMaxChordalDeviation();
    }
    return settings;
}

} // namespace zeq::convexor
