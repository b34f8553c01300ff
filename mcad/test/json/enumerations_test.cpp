// The names of all enumerations, and what becomes of values and names that are not in their tables.
#include "zeq_api/json/enum_names.h"

#include <map>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "support/case_lines.h"
#include "zeq_api/zeq_api.h"

namespace zeq {
namespace {

/// The rows of an enumeration, the smallest value first.
using Names = std::multimap<int, std::wstring>;

template <NamedEnum E>
void compare(const Names& expected) {
    Names rows;
    for (const EnumEntry& entry : enumTable(E{}).entries()) rows.emplace(entry.value, entry.name);
    EXPECT_EQ(rows, expected);

    std::map<std::wstring, int> values;
    for (const auto& [value, name] : expected) {
        values.emplace(name, value);
        EXPECT_EQ(enumToString(static_cast<E>(value)), expected.find(value)->second);
        EXPECT_EQ(static_cast<int>(enumFromString<E>(name)), values[name]);
    }
    EXPECT_EQ(enumToString(static_cast<E>(-1)), expected.begin()->second);
    for (const wchar_t* unknown : {L"", L"no such name", L"UNKNOWN"})
        EXPECT_EQ(static_cast<int>(enumFromString<E>(unknown)), values.begin()->second);

    JsonDocument object;
    object.Parse(L"{\"name\":\"no such name\",\"number\":1}");
    E out = static_cast<E>(expected.rbegin()->first);
    EXPECT_FALSE(readEnum(object, L"number", out));
    EXPECT_FALSE(readEnum(object, L"missing", out));
    EXPECT_FALSE(readEnum(object[L"name"], L"name", out));
    EXPECT_EQ(static_cast<int>(out), expected.rbegin()->first);
    EXPECT_TRUE(readEnum(object, L"name", out));
    EXPECT_EQ(static_cast<int>(out), values.begin()->second);
}

using Comparisons = std::map<std::string, void (*)(const Names&)>;

template <NamedEnum... Enums>
Comparisons comparisonsOf() {
    return {{enumTable(Enums{}).enumeration(), &compare<Enums>}...};
}

TEST(Enumerations, HaveTheNamesOfTheDataFile) {
    const Comparisons comparisons = comparisonsOf<
        Command::EType, EAcisHealType, EAcisSplineResurfacingModeType, EActiveStateProcessingModeType,
        EAssemblyPathPrefType, EAssemblyUnfoldedViewMode, EAttributeProcessingModeType, EConvexorInterface,
        ECopiousDataModeType, EDefaultColorMode, EDocumentDelayLoadingMode, EEdgeAttributeModeType,
        EEdgeCurveMode, EExportCgrCompatibilityMode, EExportHiddenPartsMode, EExportProductStructureMode,
        EExportSaveMode, EExportVersionAcis, EExportVersionCatiaV4, EExportVersionCatiaV5,
        EExportVersionParasolid, EExportVersionStep, EExportVersionXCGM, EFeatureToleranceProcessingModeType,
        EFormatType, EGraphicalPMIContainerMode, EImportColorsMode, EImportEdgesModeType, EImportEntities,
        EImportHiddenPartsMode, EImportMfgHolesOnSheetsMode, EImportMfgProcessingModeType, EImportPMIMode,
        EImportProductStructureMode, EImportProductStructureRepresentationMode, ELayerNameProcessingModeType,
        ELengthUnitType, ELogEventLevelType, ELogFileEncodingType, ELoggingModeType, EMassUnitType,
        EMemoryManagementModeFlags, EMiscDataProcessingModeType, ENameProcessingModeType, EOperationType,
        EParasolidMode, EPersistentNameProcessingModeType, EPreserveMfgModeType,
        EPreserveModelAssociativityModeType, EPreservePMIModeType, EProcessInWorkObjectModeType,
        EProcessMfgDataModeType, ETemperatureUnitType, ETimeUnitType, ETopologicalEntityInspectorModeType,
        ETranslateConstructionGeometriesModeType, ETranslateDrivingDimensionsModeType,
        ETranslateFreeCurvesModeType, ETranslateFreePointsModeType, ETranslateHiddenEntitiesModeType,
        ETranslateReferenceGeometryMode, ETranslateSuppressedEntitiesModeType,
        ETrimCurveImportPreferenceModeType, EUserPropertiesModeType, EVisuBRepTessellationModeType,
        EVisuPMIProcessingMode, EVisuTextDataMode, EVisuTextStrokingMode, EWorldOrientation, ExcEntity::EType,
        ExcMiscProperty::EType, ExcMiscProperty::EValueType, ExcStageFinished::EStage, OdDb::UnitsValue,
        Result::ECode>();
    std::set<std::string> missing;
    for (const auto& [name, comparison] : comparisons) missing.insert(name);
    test::forEachLine("enumerations.jsonl", [&](int, const JsonValue& line) {
        const std::wstring wide = line[L"enumeration"].GetString();
        const std::string name(wide.begin(), wide.end());
        SCOPED_TRACE(name);
        ASSERT_TRUE(comparisons.contains(name));
        missing.erase(name);
        Names names;
        for (const JsonValue& row : line[L"names"].GetArray())
            names.emplace(row[0].GetInt(), row[1].GetString());
        comparisons.at(name)(names);
    });
    EXPECT_EQ(missing, std::set<std::string>()) << "not in the data file";
}

TEST(Enumerations, OfTwoEqualNamesTheFirstIsRead) {
    using enum EMiscValueType;
    EXPECT_EQ(enumToString(rstifnes_2), L"rstifnes");
    EXPECT_EQ(enumFromString<ExcMiscProperty::EValueType>(L"rstifnes"), rstifnes);
    EXPECT_EQ(static_cast<int>(numberdensity_2), 303);
    EXPECT_EQ(enumToString(temperature_gradient), L"temperature_gradient");
}

TEST(Enumerations, AGapHasTheNameOfTheSmallestValue) {
    EXPECT_EQ(enumToString(static_cast<EMassUnitType>(2)), L"unknown");
    EXPECT_EQ(enumToString(EMassUnitType::centigram), L"centigram");
}

} // namespace
} // namespace zeq
