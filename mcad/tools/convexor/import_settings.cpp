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
        {mechanical, L"feature_tolerance_processing_mode", {L"none"}},
        {mechanical, L"misc_data_processing_mode"},
        {modeler, L"length_unit_type"},
        {IGES, L"hidden_entities_mode", {L"all", L"none"}},
        {IGES, L"import_entities", {L"root_only"}},
        {STEP, L"import_geometry"},
        {STEP, L"layer_name_mode", {L"asm_rep"}},
        {STEP, L"visu_pmi_mode", {L"none"}},
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

/// Whether the import group of that format says that no geometry is wanted. One that says nothing does not.
bool refusesGeometry(const std::wstring& commandText, EFormatType format) {
    JsonDocument command;
    std::wistringstream stream(commandText);
    if (!JsonTextIO::read(stream, command)) return false;
    const JsonValue* const options = json::findMember(command, L"options");
    const JsonValue* const groups = options ? json::findMember(*options, L"format_options") : nullptr;
    bool refuses = false;
    if (!groups || !groups->IsArray()) return refuses;
    for (const JsonValue& group : groups->GetArray()) {
        const JsonValue* const operation = findString(group, L"operation_type");
        const JsonValue* const name = findString(group, L"format_type");
        if (!operation || !name || enumToString(EOperationType::import) != operation->GetString() ||
            enumToString(format) != name->GetString())
            continue;
        const JsonValue* const said = json::findMember(group, L"import_geometry");
        refuses = said && said->IsFalse(); // of several groups of a format the last one counts
    }
    return refuses;
}

} // namespace

ImportSettings importSettings(const ImportOptions& options, const std::wstring& commandText,
                              EFormatType fileFormat, Reporter& reporter) {
    for (const EnumEntry& format : enumTable(EFormatType{}).entries())
        if (const auto group = options.formatOptions(static_cast<EFormatType>(format.value)))
            reportWhatIsLeft(*group, fileFormat, reporter);

    ImportSettings settings;
    if (const auto modeler = findGroup<OptionsModeler>(options))
        settings.lengthUnit = modeler->modelerUnits();

    // The group is the finer instrument: what it says prevails over the command's own flag.
    settings.miscData = options.translateMiscData();
    if (const auto mechanical = findGroup<OptionsMechanical>(options)) {
        const auto mode = mechanical->miscDataProcessingMode();
        if (mode != EMiscDataProcessingModeType::unknown)
            settings.miscData = mode == EMiscDataProcessingModeType::all;
    }

    if (const auto iges = findGroup<imp::OptionsIGES>(options); iges && fileFormat == EFormatType::IGES)
        settings.hiddenEntities = iges->hiddenEntitiesMode() != ETranslateHiddenEntitiesModeType::none;
    settings.geometry = !refusesGeometry(commandText, fileFormat);
    return settings;
}

} // namespace zeq::convexor
