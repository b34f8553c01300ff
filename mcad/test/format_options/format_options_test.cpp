// The option groups common to all formats, and the factory of groups.
#include "zeq_api/format_options/format_options.h"

#include <gtest/gtest.h>

#include "mv_cvx/logger.h"
#include "support/case_runner.h"
#include "support/json_text.h"
#include "support/log_capture.h"
#include "support/trace.h"
#include "zeq_api/format_options/common_options.h"

namespace zeq {
namespace {

using test::LogLine;
using test::readFrom;
using test::writtenBy;
using Lines = std::vector<LogLine>;

std::shared_ptr<IFormatOptions> made(const std::wstring& text) {
    std::wistringstream stream(text);
    return IFormatOptions::readOptions(test::parse(stream));
}

TEST(FormatOptions, BecomeWhatTheirCasesSay) {
    test::CaseRunner()
        .add<OptionsGeneral>("OptionsGeneral")
        .add<OptionsGraphical>("OptionsGraphical")
        .add<OptionsMechanical>("OptionsMechanical")
        .add<OptionsModeler>("OptionsModeler")
        .run("format_options.jsonl");
}

TEST(FormatOptions, TheFactoryMakesAndReadsTheGroupOfEachFormat) {
    const OptionsGeneral general;
    const OptionsGraphical graphical;
    const OptionsModeler modeler;
    OptionsMechanical mechanical;
    mechanical.setMiscDataProcessingMode(EMiscDataProcessingModeType::none);
    for (const IFormatOptions* group :
         std::initializer_list<const IFormatOptions*>{&general, &graphical, &mechanical, &modeler}) {
        const auto read = made(writtenBy(*group));
        ASSERT_TRUE(read);
        EXPECT_EQ(read->formatType(), group->formatType());
        EXPECT_EQ(writtenBy(*read), writtenBy(*group));
    }
}

TEST(FormatOptions, CombinedMemoryFlagsHaveNoName) {
    OptionsGeneral group;
    EXPECT_EQ(static_cast<int>(group.memoryManagementMode()), 255);
    group.setMemoryManagementMode(EMemoryManagementModeFlags(5));
    EXPECT_NE(writtenBy(group).find(L"\"memory_management_mode\":\"keep_none\""), std::wstring::npos);
}

TEST(FormatOptions, TheFactorySaysWhyItMakesNoGroup) {
    const struct {
        const wchar_t* text;
        LogLine line;
    } cases[] = {
        {L"[]", {mv_cvx::Error, "FormatOptions object should have a JSON object type."}},
        {L"{}", {mv_cvx::Error, "FormatOptions object should contain operation type."}},
        {LR"({"operation_type":0,"format_type":1})",
         {mv_cvx::Error, "FormatOptions object should contain operation type."}},
        {LR"({"operation_type":"options"})",
         {mv_cvx::Error, "FormatOptions object should contain format type."}},
        {LR"({"operation_type":"options","format_type":25})",
         {mv_cvx::Error, "FormatOptions object should contain format type."}},
        {LR"({"operation_type":"options","format_type":"unknown"})",
         {mv_cvx::Info, "FormatOptions: Unknown common options type."}},
        {LR"({"operation_type":"import","format_type":"general"})",
         {mv_cvx::Info, "FormatOptions: No options for given import format."}},
        {LR"({"operation_type":"import","format_type":"foo"})", // as 3D_PDF
         {mv_cvx::Info, "FormatOptions: No options for given import format."}},
        {LR"({"operation_type":"foo","format_type":"modeler"})", // as export
         {mv_cvx::Info, "FormatOptions: No options for given export format."}},
        {LR"({"format_type":"UDL","operation_type":"export"})",
         {mv_cvx::Info, "FormatOptions: No options for given export format."}},
    };
    for (const auto& [text, line] : cases) {
        test::LogCapture log;
        EXPECT_EQ(made(text), nullptr) << testing::PrintToString(text);
        EXPECT_EQ(log.take(), Lines{line});
    }
}

/// Groups for one operation with nothing of their own.
struct ImportGroup : imp::FormatOptions {
    EFormatType formatType() const override { return EFormatType::PDF_3D; }
};
struct ExportGroup : exp::FormatOptions {
    EFormatType formatType() const override { return EFormatType::XML_3D; }
};

TEST(FormatOptions, GroupsForOneOperationSaySo) {
    EXPECT_EQ(writtenBy(ImportGroup()), LR"({"operation_type":"import","format_type":"3D_PDF"})");
    EXPECT_EQ(writtenBy(ExportGroup()), LR"({"operation_type":"export","format_type":"3D_XML"})");

    test::LogCapture log(mv_cvx::Debug);
    ImportGroup group;
    readFrom(group, L"7"); // without a message of its own
    EXPECT_EQ(log.take(), (Lines{{mv_cvx::Error, "FormatOptions object should have a JSON object type."}}));
}

TEST(FormatOptions, EveryReaderAndWriterLeavesATrace) {
    test::LogCapture log;
    writtenBy(*made(LR"({"operation_type":"options","format_type":"mechanical"})"));
    EXPECT_EQ(test::signaturesOf(log.take(), "mcad/src/zeq_api/format_options"),
              (std::vector<std::string>{
                  "virtual void zeq::OptionsMechanical::readObject(const JsonValue &)",
                  "virtual void zeq::IFormatOptions::readObject(const JsonValue &)",
                  "virtual void zeq::OptionsMechanical::writeObject(JsonValue &, JsonAllocator &) const",
                  "virtual void zeq::IFormatOptions::writeObject(JsonValue &, JsonAllocator &) const",
              }));
}

} // namespace
} // namespace zeq
