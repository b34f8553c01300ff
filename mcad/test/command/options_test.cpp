// The options of import and export commands: what is taken, written and logged.
#include "zeq_api/command/legacy_options.h"

#include <clocale>

#include <gtest/gtest.h>

#include "mv_cvx/logger.h"
#include "support/case_lines.h"
#include "support/json_text.h"
#include "support/log_capture.h"
#include "zeq_api/command/command.h"
#include "zeq_api/command/format_groups.h"
#include "zeq_api/command/result.h"
#include "zeq_api/format_options/common_options.h"

namespace zeq {
namespace {

using test::readFrom;
using test::writtenBy;
using Lines = std::vector<test::LogLine>;

TEST(ConvexorOptions, PathsAreLoggedInTheLocale) {
    std::setlocale(LC_ALL, "C.UTF-8");
    test::LogCapture log(mv_cvx::Debug);
    ExportOptionsImpl options;
    readFrom(options, LR"({"file":"ß","format_options":[null]})");
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(log.take(), (Lines{{mv_cvx::Debug, "ExportOptions.file = ß"},
                                 {mv_cvx::Error, "FormatOptions object should have a JSON object type."},
                                 {mv_cvx::Error, "Specific format options cannot be read, file: .ß"}}));
}

TEST(ConvexorOptions, AreLoggedWhenTheyAreWritten) {
    test::LogCapture log(mv_cvx::Debug);
    ImportOptionsImpl importOptions;
    importOptions.setFile(L"in");
    writtenBy(importOptions);
    EXPECT_EQ(log.take(), (Lines{{mv_cvx::Debug, "ImportOptions.file = in"}}));

    ExportOptionsImpl exportOptions;
    exportOptions.setFile(L"out");
    writtenBy(exportOptions);
    EXPECT_EQ(log.take(), (Lines{{mv_cvx::Debug, "ExportOptions.file = out"}}));
    exportOptions.setFormatVersion(L"2");
    exportOptions.setGeometryFlags(5);
    writtenBy(exportOptions);
    EXPECT_EQ(log.take(), (Lines{{mv_cvx::Debug, "ExportOptions.file = out"},
                                 {mv_cvx::Debug, "ExportOptions.formatVersion = 2"},
                                 {mv_cvx::Debug, "ExportOptions.geometryFlags = 5"}}));

    writtenBy(LegacyImportOptionsImpl());
    writtenBy(LegacyExportOptionsImpl());
    EXPECT_EQ(log.take(), Lines{});
}

template <class Options>
class GroupsOf : public testing::Test {};
using AllOptions = testing::Types<ImportOptionsImpl, ExportOptionsImpl, LegacyImportOptionsImpl>;
TYPED_TEST_SUITE(GroupsOf, AllOptions);

TYPED_TEST(GroupsOf, OneForEachFormat) {
    const auto general = std::make_shared<OptionsGeneral>();
    const auto first = std::make_shared<OptionsModeler>();
    const auto second = std::make_shared<OptionsModeler>();
    TypeParam options;
    options.setFormatOptions(general);
    options.setFormatOptions(first);
    options.setFormatOptions(second);
    options.setFormatOptions(nullptr);
    EXPECT_EQ(options.formatOptions(EFormatType::general), general);
    EXPECT_EQ(options.formatOptions(EFormatType::modeler), second);
    EXPECT_EQ(options.formatOptions(EFormatType::STEP), nullptr);
    EXPECT_EQ(options.formatOptions(EFormatType::unknown), nullptr);
}

/// Sets one with the setters to what the getters of the other say.
void copy(const LegacyImportOptions& from, LegacyImportOptions& to) {
    to.setFile(from.file());
    to.setTemporaryDwg(from.temporaryDwg());
    to.setFormatOptions(from.formatOptions(EFormatType::mechanical));
    for (const wchar_t* key : {L"", L"catia", L"a", L"a ", L"b"})
        if (from.hasAlternateSearchPathsFor(key))
            to.setAlternateSearchPathsFor(key, from.alternateSearchPathsFor(key));
    to.setPmiMode(from.pmiMode());
    to.setProductStructureMode(from.productStructureMode());
    to.setColorsMode(from.colorsMode());
    to.setHiddenPartsMode(from.hiddenPartsMode());
    to.setInsUnitsDefSource(from.insUnitsDefSource());
    to.setCatiaV5EdgeAttributeMode(from.catiaV5EdgeAttributeMode());
    to.setImportAcisNatively(from.importAcisNatively());
    to.setStepRotateYZ(from.stepRotateYZ());
    to.setSolidWorksRotateYZ(from.solidWorksRotateYZ());
    to.setInsUnitsScaling(from.insUnitsScaling());
    to.setUseInterOpMP(from.useInterOpMP());
    to.setPrintDebugLog(from.printDebugLog());
}
void copy(const LegacyExportOptions& from, LegacyExportOptions& to) {
    to.setFile(from.file());
    to.setTemporaryDwg(from.temporaryDwg());
    to.setFormatVersion(from.formatVersion());
    to.setGeometryFlags(from.geometryFlags());
    to.setInsUnitsScaling(from.insUnitsScaling());
    to.setProductStructureMode(from.productStructureMode());
    to.setHiddenPartsMode(from.hiddenPartsMode());
    to.setInsUnitsDefTarget(from.insUnitsDefTarget());
    to.setEntities(from.entities());
    to.setComponentNames(from.componentNames());
    to.setHiddenComponents(from.hiddenComponents());
    to.setStepFormatVersion(from.stepFormatVersion());
    to.setAcisFormatVersion(from.acisFormatVersion());
    to.setCatiav4FormatVersion(from.catiav4FormatVersion());
    to.setCatiav5FormatVersion(from.catiav5FormatVersion());
    to.setParasolidFormatVersion(from.parasolidFormatVersion());
    to.setXcgmFormatVersion(from.xcgmFormatVersion());
    to.setPrintDebugLog(from.printDebugLog());
}

template <class Options>
void expectAccessorsOf(const JsonValue& document) {
    Options options;
    options.readObject(document);
    Options copied;
    copy(options, copied);
    EXPECT_EQ(writtenBy(copied), writtenBy(options));
}

TEST(LegacyOptions, AccessorsSpeakOfWhatIsWritten) {
    test::forEachLine("cases/commands.jsonl", [](int number, const JsonValue& line) {
        SCOPED_TRACE(number);
        const std::wstring name = line[L"class"].GetString();
        if (name == L"LegacyImportOptionsImpl")
            expectAccessorsOf<LegacyImportOptionsImpl>(line[L"written"]);
        else if (name == L"LegacyExportOptionsImpl")
            expectAccessorsOf<LegacyExportOptionsImpl>(line[L"written"]);
    });
}

TEST(LegacyOptions, WhatDoesNotTravel) {
    LegacyImportOptionsImpl options;
    EXPECT_FALSE(options.forceMultiProcessedMode() || options.translateWorldOrientation() ||
                 options.translateMiscData());
    EXPECT_EQ(options.modelerMajorVersion(), 31);
    EXPECT_EQ(options.alternateSearchPathsFor(L"no such key"), L"");
    const std::wstring defaults = writtenBy(options);
    options.setForceMultiProcessedMode(true);
    options.setTranslateWorldOrientation(true);
    options.setTranslateMiscData(true);
    options.setModelerMajorVersion(30);
    EXPECT_EQ(writtenBy(options), defaults);
    EXPECT_TRUE(options.forceMultiProcessedMode() && options.translateWorldOrientation() &&
                options.translateMiscData());
    EXPECT_EQ(options.modelerMajorVersion(), 30);

    LegacyExportOptionsImpl exportOptions;
    exportOptions.setFormatOptions(std::make_shared<OptionsMechanical>());
    EXPECT_EQ(exportOptions.formatOptions(EFormatType::mechanical), nullptr);
}

TEST(LegacyOptions, ComponentsAreAddedOneByOne) {
    LegacyExportOptionsImpl options;
    for (const wchar_t* name : {L"old", L"new"}) options.addComponentName(7, name);
    for (const OdDbHandle component : {9u, 9u, 8u}) options.addHiddenComponent(component);
    EXPECT_EQ(options.componentNames(), (LegacyExportOptions::ComponentNames{{7, L"new"}}));
    EXPECT_EQ(options.hiddenComponents(), (std::vector<OdDbHandle>{9, 9, 8}));
}

/// Options whose groups are open to the test.
struct OpenOptions : ExportOptionsImpl {
    FormatOptionsMap groups;
};

TEST(FormatGroups, AnEmptyEntryIsLoggedAndSkipped) {
    OpenOptions options;
    options.setFile(L"f");
    options.groups = {{EFormatType::STEP, nullptr},
                      {EFormatType::mechanical, std::make_shared<OptionsMechanical>()}};
    test::LogCapture log(mv_cvx::Debug);
    JsonDocument document(rapidjson::kObjectType);
    json::DomSink sink(document, document.GetAllocator());
    detail::formatGroups(L"groups", &OpenOptions::groups).write(options, sink);
    EXPECT_EQ(log.take(), (Lines{{mv_cvx::Error, "Invalid specific format options object, filef"}}));
    EXPECT_EQ(test::textOf(document), LR"({"groups":[)" + writtenBy(OptionsMechanical()) + L"]}");
}

} // namespace
} // namespace zeq
