// The options of import and export commands: what is taken, written and logged.
#include "zeq_api/command/options.h"

#include <clocale>

#include <gtest/gtest.h>

#include "mv_cvx/logger.h"
#include "support/case_runner.h"
#include "support/json_text.h"
#include "support/log_capture.h"
#include "zeq_api/command/format_groups.h"
#include "zeq_api/command/result.h"
#include "zeq_api/format_options/common_options.h"

namespace zeq {
namespace {

using test::readFrom;
using test::writtenBy;
using Lines = std::vector<test::LogLine>;

TEST(CommandDocuments, BecomeWhatTheirCasesSay) {
    test::CaseRunner()
        .add<ImportOptionsImpl>("ImportOptionsImpl")
        .add<ExportOptionsImpl>("ExportOptionsImpl")
        .add<Result>("Result")
        .run("commands.jsonl");
}

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
}

template <class Options>
class GroupsOf : public testing::Test {};
using AllOptions = testing::Types<ImportOptionsImpl, ExportOptionsImpl>;
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
