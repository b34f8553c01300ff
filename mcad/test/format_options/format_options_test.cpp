// The option groups and their factory.
#include "zeq_api/format_options/format_options.h"

#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <typeindex>
#include <vector>

#include <cxxabi.h>

#include <gtest/gtest.h>

#include "mv_cvx/logger.h"
#include "support/json_text.h"
#include "support/log_capture.h"
#include "support/trace.h"
#include "zeq_api/format_options/common_options.h"
#include "zeq_api/format_options/export_options.h"
#include "zeq_api/format_options/import_options.h"

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

/// The name of a class inside namespace zeq.
std::string nameOf(const std::type_index& type) {
    const std::unique_ptr<char, void (*)(void*)> name(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, nullptr), std::free);
    return std::string(name.get()).substr(std::string_view("zeq::").size());
}

template <class... Groups>
struct GroupList {
    static auto types() {
        return std::map<std::pair<EOperationType, EFormatType>, std::type_index>{
            {{Groups().operationType(), Groups().formatType()}, typeid(Groups)}...};
    }
};
using AllGroups =
    GroupList<OptionsGeneral, OptionsGraphical, OptionsMechanical, OptionsModeler, imp::Options3DXML,
              imp::OptionsCatiaV4, imp::OptionsCatiaV5, imp::OptionsCatiaV5Drawing, imp::OptionsCreo,
              imp::OptionsIGES, imp::OptionsInventor, imp::OptionsJT, imp::OptionsNX, imp::OptionsParasolid,
              imp::OptionsSolidEdge, imp::OptionsSolidWorks, imp::OptionsSolidWorksDrawing, imp::OptionsSTEP,
              imp::OptionsXCGM, exp::Options3DXML, exp::OptionsAcis, exp::OptionsCatiaV4, exp::OptionsCatiaV5,
              exp::OptionsIGES, exp::OptionsParasolid, exp::OptionsPDF, exp::OptionsSTEP, exp::OptionsSTL,
              exp::OptionsXCGM>;

TEST(FormatOptions, TheFactoryMakesTheGroupOfEachOperationAndFormat) {
    const auto types = AllGroups::types();
    const std::map<EOperationType, std::string> refusals{
        {EOperationType::options, "FormatOptions: Unknown common options type."},
        {EOperationType::import, "FormatOptions: No options for given import format."},
        {EOperationType::export_, "FormatOptions: No options for given export format."}};
    for (const auto& [operation, refusal] : refusals) {
        for (const EnumEntry& format : enumTable(EFormatType{}).entries()) {
            const std::wstring text = L"{\"operation_type\":\"" + enumToString(operation) +
                                      L"\",\"format_type\":\"" + format.name + L"\"}";
            SCOPED_TRACE(testing::PrintToString(text));
            test::LogCapture log;
            const auto group = made(text);
            const auto expected = types.find({operation, static_cast<EFormatType>(format.value)});
            if (expected == types.end()) {
                EXPECT_EQ(group, nullptr);
                EXPECT_EQ(log.take(), (Lines{{mv_cvx::Info, refusal}}));
                continue;
            }
            ASSERT_TRUE(group);
            const IFormatOptions& object = *group;
            EXPECT_EQ(nameOf(typeid(object)), nameOf(expected->second));
            EXPECT_EQ(test::signaturesOf(log.take(), "mcad/src/zeq_api/format_options"),
                      (std::vector<std::string>{
                          "virtual void zeq::" + nameOf(expected->second) + "::readObject(const JsonValue &)",
                          "virtual void zeq::IFormatOptions::readObject(const JsonValue &)"}));
        }
    }
}

TEST(FormatOptions, TheFactoryReadsTheGroup) {
    const wchar_t text[] =
        LR"({"operation_type":"import","format_type":"parasolid","hidden_entities_mode":"all"})";
    EXPECT_EQ(writtenBy(*made(text)), text);
}

TEST(FormatOptions, UnknownNamesStandForExportTo3DPDF) {
    const auto group = made(LR"({"operation_type":"foo","format_type":"foo"})");
    EXPECT_TRUE(std::dynamic_pointer_cast<exp::OptionsPDF>(group));
}

template <class... Groups>
void expectPersistentNamesInMemory() {
    using enum EPersistentNameProcessingModeType;
    const auto check = [](auto group) {
        const std::wstring written = writtenBy(group);
        for (const auto mode : {face, vertex, face}) group.addPersistentNameMode(mode);
        EXPECT_EQ(group.persistentNameModes(), (std::set{vertex, face}));
        EXPECT_EQ(writtenBy(group), written);
    };
    (check(Groups()), ...);
}

TEST(FormatOptions, PersistentNameModesStayInMemory) {
    expectPersistentNamesInMemory<imp::OptionsCatiaV5, imp::OptionsCreo, imp::OptionsInventor, imp::OptionsNX,
                                  imp::OptionsSolidEdge, imp::OptionsSolidWorks>();
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
        {LR"({"operation_type":"import","format_type":"foo"})", // as 3D_PDF
         {mv_cvx::Info, "FormatOptions: No options for given import format."}},
        {LR"({"operation_type":"foo","format_type":"modeler"})", // as export
         {mv_cvx::Info, "FormatOptions: No options for given export format."}},
    };
    for (const auto& [text, line] : cases) {
        test::LogCapture log;
        EXPECT_EQ(made(text), nullptr) << testing::PrintToString(text);
        EXPECT_EQ(log.take(), Lines{line});
    }
}

/// A group with nothing of its own.
struct PlainGroup : imp::FormatOptions {
    EFormatType formatType() const override { return EFormatType::PDF_3D; }
};

TEST(FormatOptions, AGroupWithoutAFormHasTheFormOfItsBase) {
    EXPECT_EQ(writtenBy(PlainGroup()), LR"({"operation_type":"import","format_type":"3D_PDF"})");

    test::LogCapture log(mv_cvx::Debug);
    PlainGroup group;
    readFrom(group, L"7");
    EXPECT_EQ(log.take(), (Lines{{mv_cvx::Error, "FormatOptions object should have a JSON object type."}}));
}

TEST(FormatOptions, WritersLeaveATrace) {
    test::LogCapture log;
    writtenBy(imp::OptionsNX());
    EXPECT_EQ(test::signaturesOf(log.take(), "mcad/src/zeq_api/format_options"),
              (std::vector<std::string>{
                  "virtual void zeq::imp::OptionsNX::writeObject(JsonValue &, JsonAllocator &) const",
                  "virtual void zeq::IFormatOptions::writeObject(JsonValue &, JsonAllocator &) const",
              }));
}

} // namespace
} // namespace zeq
