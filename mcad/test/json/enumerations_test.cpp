// The names of all enumerations, and what becomes of values and names that are not in their tables.
#include "zeq_api/json/enum_names.h"

#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/case_lines.h"
#include "zeq_api/zeq_api.h"

namespace zeq {
namespace {

/// The rows of an enumeration, the smallest value first.
using Names = std::multimap<int, std::wstring>;

template <NamedEnum... Enums>
std::vector<const EnumTable*> tablesOf() {
    return {&enumTable(Enums{})...};
}

std::vector<const EnumTable*> allTables() {
    return tablesOf<
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
}

void compare(const EnumTable& table, const Names& expected) {
    Names rows;
    for (const EnumEntry& entry : table.entries()) rows.emplace(entry.value, entry.name);
    EXPECT_EQ(rows, expected);

    std::map<std::wstring, int> values;
    for (const auto& [value, name] : expected) {
        values.emplace(name, value);
        EXPECT_EQ(table.nameOf(value), expected.find(value)->second);
        EXPECT_EQ(table.valueOf(name), values[name]);
        EXPECT_TRUE(table.hasName(name));
    }
    EXPECT_EQ(table.nameOf(-1), expected.begin()->second);
    for (const wchar_t* unknown : {L"", L"no such name", L"UNKNOWN"}) {
        EXPECT_EQ(table.valueOf(unknown), values.begin()->second);
        EXPECT_FALSE(table.hasName(unknown));
    }
}

TEST(Enumerations, HaveTheNamesOfTheDataFile) {
    std::map<std::string, const EnumTable*> tables;
    for (const EnumTable* table : allTables())
        EXPECT_TRUE(tables.emplace(table->enumeration(), table).second);
    test::forEachLine("enumerations.jsonl", [&](int, const JsonValue& line) {
        const std::wstring wide = line[L"enumeration"].GetString();
        const std::string name(wide.begin(), wide.end());
        SCOPED_TRACE(name);
        const auto table = tables.extract(name);
        ASSERT_TRUE(table);
        Names names;
        for (const JsonValue& row : line[L"names"].GetArray())
            names.emplace(row[0].GetInt(), row[1].GetString());
        compare(*table.mapped(), names);
    });
    for (const auto& [name, table] : tables) ADD_FAILURE() << name << " is not in the data file";
}

TEST(Enumerations, AreReadFromTheStringsOfObjects) {
    JsonDocument object;
    object.Parse(L"{\"known\":\"kilogram\",\"unknown\":\"no such name\",\"number\":1}");
    EMassUnitType out = EMassUnitType::centigram;
    EXPECT_FALSE(readEnum(object, L"number", out));
    EXPECT_FALSE(readEnum(object, L"missing", out));
    EXPECT_FALSE(readEnum(object[L"known"], L"known", out));
    EXPECT_EQ(out, EMassUnitType::centigram);
    EXPECT_TRUE(readEnum(object, L"known", out));
    EXPECT_EQ(out, EMassUnitType::kilogram);
    EXPECT_TRUE(readEnum(object, L"unknown", out));
    EXPECT_EQ(out, EMassUnitType::centigram) << "the name that comes first";
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
