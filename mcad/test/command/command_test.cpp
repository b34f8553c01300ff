// Commands: which of their parts travel, and what is refused.
#include "zeq_api/command/command.h"

#include <gtest/gtest.h>

#include "support/json_text.h"
#include "support/log_capture.h"
#include "support/trace.h"

namespace zeq {
namespace {

using test::readFrom;
using test::refusalOf;
using test::writtenBy;
using EType = Command::EType;
using enum EConvexorInterface;

Command make(EType type, EConvexorInterface interface) {
    Command command;
    command.setType(type);
    command.setInternalInterface(interface);
    return command;
}

TEST(Command, IsIndentedTextInAFixedOrder) {
    Command command = make(EType::export_, connect);
    command.setExportOptions(Command::newExportOptions());
    command.setUseMultiThreading(true);
    std::wostringstream stream;
    command.writeObject(stream);
    EXPECT_EQ(stream.str(), L"{\n"
                            L"    \"convexor_interface\": \"connect\",\n"
                            L"    \"command\": \"export\",\n"
                            L"    \"options\": {\n"
                            L"        \"file\": \"\"\n"
                            L"    },\n"
                            L"    \"mt_mode\": true\n"
                            L"}");
}

TEST(Command, WritesOptionsForTranslationsOnly) {
    const struct {
        EType type;
        EConvexorInterface interface;
        const wchar_t* written;
    } cases[] = {
        {EType::unknown, uconnect, LR"("uconnect","command":"unknown",)"},
        {EType::info, connect, LR"("connect","command":"info",)"},
        {EType::ping, legacy, LR"("legacy","command":"ping",)"},
        {EType(9), EConvexorInterface(-1), LR"("uconnect","command":"unknown",)"},
        {EType::export_, uconnect, LR"("uconnect","command":"export","options":{"file":""},)"},
        {EType::import, EConvexorInterface(3),
         LR"("uconnect","command":"import","options":{"file":"","force_mp_mode":false,)"
         LR"("translate_world_orientation":false,"translate_misc_data":false,"modeler_version":31},)"},
        {EType::import, legacy,
         LR"("legacy","command":"import","options":{"file":"","temporary_dwg":"","pmi_mode":"graphical",)"
         LR"("product_structure_mode":"as_mechanical_components","colors_mode":"matching_index",)"
         LR"("hidden_parts_mode":"import_show","ins_units_def_source":"undefined",)"
         LR"("edge_attribute_mode":"wire_body_only"},)"},
        {EType::export_, legacy,
         LR"("legacy","command":"export","options":{"file":"","temporary_dwg":"",)"
         LR"("ins_units_def_target":"undefined","product_structure_mode":"as_mechanical_components",)"
         LR"("hidden_parts_mode":"export_hide"},)"},
    };
    for (const auto& [type, interface, written] : cases) {
        Command command = make(type, interface);
        command.setImportOptions(Command::newImportOptions());
        command.setExportOptions(Command::newExportOptions());
        command.setLegacyImportOptions(Command::newLegacyImportOptions());
        command.setLegacyExportOptions(Command::newLegacyExportOptions());
        EXPECT_EQ(writtenBy(command),
                  LR"({"convexor_interface":)" + std::wstring(written) + LR"("mt_mode":false})");
    }
}

TEST(Command, IsNotWrittenWithoutItsOptions) {
    const struct {
        EType type;
        EConvexorInterface interface;
        const char* refusal;
    } cases[] = {
        {EType::import, uconnect, "Import command should contain import options"},
        {EType::import, connect, "Import command should contain import options"},
        {EType::import, legacy, "Import(LEGACY) command should contain import options(LEGACY)"},
        {EType::export_, uconnect, "Export command should contain export options"},
        {EType::export_, connect, "Export command should contain export options"},
        {EType::export_, legacy, "Export(LEGACY) command should contain export options(LEGACY)"},
    };
    for (const auto& [type, interface, refusal] : cases) {
        Command command = make(type, interface);
        const auto isMissing = [type = type, interface = interface](EType forType, bool forLegacy) {
            return type == forType && (interface == legacy) == forLegacy;
        };
        if (!isMissing(EType::import, false)) command.setImportOptions(Command::newImportOptions());
        if (!isMissing(EType::export_, false)) command.setExportOptions(Command::newExportOptions());
        if (!isMissing(EType::import, true))
            command.setLegacyImportOptions(Command::newLegacyImportOptions());
        if (!isMissing(EType::export_, true))
            command.setLegacyExportOptions(Command::newLegacyExportOptions());
        std::wostringstream stream;
        EXPECT_EQ(refusalOf([&] { command.writeObject(stream); }), refusal);
        EXPECT_EQ(stream.str(), L"");
    }
}

TEST(Command, AFailedStreamIsARuntimeError) {
    std::wostringstream stream;
    stream.setstate(std::ios::badbit);
    EXPECT_THROW(Command().writeObject(stream), std::runtime_error);
}

TEST(Command, ADocumentThatCannotBeReadIsRefused) {
    const struct {
        const wchar_t* text;
        const char* refusal;
    } cases[] = {
        {L"", "Command::readObject: invalid json document"},
        {L"ping", "Command::readObject: invalid json document"},
        {LR"([{"command":"ping"}])", "Command::readObject: invalid json document"},
        {LR"({"command":"ping"}})", "Command::readObject: invalid json document"},
        {L"{}", "Command::readObject: json document has no command type."},
        {LR"({"command":5})", "Command::readObject: json document has no command type."},
        {LR"({"command":"import"})", "Import command should contain options."},
        {LR"({"command":"import","options":[]})", "Import command should contain options."},
        {LR"({"command":"export","options":""})", "Export command should contain options."},
        {LR"({"command":"import","convexor_interface":"legacy"})",
         "Legacy Import command should contain options."},
        {LR"({"command":"export","convexor_interface":"legacy","options":null})",
         "Legacy Export command should contain options."},
        {LR"({"command":"import","convexor_interface":"legacy","options":{}})",
         "LegacyImportOptionsImpl::readObject: json document has no valid file path."},
        {LR"({"command":"export","convexor_interface":"legacy","options":{"file":""}})",
         "LegacyExportOptionsImpl::readObject: Json document has no valid temporary dwg path."},
        {LR"({"command":"import","convexor_interface":"connect","options":{}})",
         "ImportOptionsImpl::readObject: json document has no valid file path."},
        {LR"({"command":"export","options":{"file":1}})",
         "ExportOptionsImpl::readObject: json document has no valid file path."},
    };
    for (const auto& row : cases) {
        Command command;
        EXPECT_EQ(refusalOf([&] { readFrom(command, row.text); }), row.refusal)
            << testing::PrintToString(row.text);
    }
}

TEST(Command, AFailedReadKeepsTheOptionsButNotTheType) {
    Command command = make(EType::ping, legacy);
    const auto options = Command::newImportOptions();
    command.setImportOptions(options);
    command.setUseMultiThreading(true);
    EXPECT_EQ(refusalOf([&] { readFrom(command, LR"({"command":"import","options":{},"mt_mode":false})"); }),
              "ImportOptionsImpl::readObject: json document has no valid file path.");
    EXPECT_EQ(command.type(), EType::import);
    EXPECT_EQ(command.internalInterface(), uconnect);
    EXPECT_EQ(command.importOptions(), options);
    EXPECT_TRUE(command.useMultiThreading());
}

TEST(Command, ReplacesOnlyTheOptionsThatItReads) {
    Command command;
    const auto importOptions = Command::newImportOptions();
    const auto exportOptions = Command::newExportOptions();
    command.setImportOptions(importOptions);
    command.setExportOptions(exportOptions);

    readFrom(command, LR"({"command":"import","options":{"file":"part.stp","modeler_version":30}})");
    EXPECT_NE(command.importOptions(), importOptions);
    EXPECT_EQ(command.importOptions()->file(), L"part.stp");
    EXPECT_EQ(command.importOptions()->modelerMajorVersion(), 30);
    EXPECT_EQ(importOptions->file(), L"");
    EXPECT_EQ(command.exportOptions(), exportOptions);

    readFrom(command, LR"({"command":"export","options":{"file":"part.igs"}})");
    EXPECT_EQ(command.exportOptions()->file(), L"part.igs");
    EXPECT_EQ(command.importOptions()->file(), L"part.stp");

    readFrom(command, LR"({"convexor_interface":"legacy","command":"import",)"
                      LR"("options":{"file":"old.stp","temporary_dwg":"i.dwg"}})");
    readFrom(command, LR"({"options":{"file":"old.igs","temporary_dwg":"e.dwg"},)"
                      LR"("command":"export","convexor_interface":"legacy"})");
    EXPECT_EQ(command.legacyImportOptions()->temporaryDwg(), L"i.dwg");
    EXPECT_EQ(command.legacyExportOptions()->temporaryDwg(), L"e.dwg");
    EXPECT_EQ(command.exportOptions()->file(), L"part.igs");
    EXPECT_EQ(command.importOptions()->file(), L"part.stp");
}

/// Options that are no ImportOptionsImpl, or no ExportOptionsImpl.
template <class Options>
struct Foreign : Options {
    void readObject(const JsonValue&) override {}
    void writeObject(JsonValue&, JsonAllocator&) const override {}
    const std::wstring& file() const override { return m_text; }
    void setFile(const std::wstring&) override {}

    std::wstring m_text;
};

struct ForeignImport : Foreign<ImportOptions> {
    bool forceMultiProcessedMode() const override { return false; }
    void setForceMultiProcessedMode(bool) override {}
    bool translateWorldOrientation() const override { return false; }
    void setTranslateWorldOrientation(bool) override {}
    bool translateMiscData() const override { return false; }
    void setTranslateMiscData(bool) override {}
    std::shared_ptr<IFormatOptions> formatOptions(EFormatType) const override { return nullptr; }
    void setFormatOptions(std::shared_ptr<IFormatOptions>) override {}
    int modelerMajorVersion() const override { return 0; }
    void setModelerMajorVersion(int) override {}
};

struct ForeignExport : Foreign<ExportOptions> {
    const std::wstring& formatVersion() const override { return m_text; }
    void setFormatVersion(const std::wstring&) override {}
    int geometryFlags() const override { return 0; }
    void setGeometryFlags(int) override {}
    std::shared_ptr<IFormatOptions> formatOptions(EFormatType) const override { return nullptr; }
    void setFormatOptions(std::shared_ptr<IFormatOptions>) override {}
};

TEST(Command, AcceptsOnlyTheLibrarysOwnOptions) {
    Command command;
    for (const std::shared_ptr<ImportOptions>& wrong :
         {std::shared_ptr<ImportOptions>(), std::shared_ptr<ImportOptions>(new ForeignImport)}) {
        EXPECT_EQ(refusalOf([&] { command.setImportOptions(wrong); }),
                  "Command::setImportOptions: wrong implementation of ImportOptions interface.");
    }
    for (const std::shared_ptr<ExportOptions>& wrong :
         {std::shared_ptr<ExportOptions>(), std::shared_ptr<ExportOptions>(new ForeignExport)}) {
        EXPECT_EQ(refusalOf([&] { command.setExportOptions(wrong); }),
                  "Command::setExportOptions: wrong implementation of ExportOptions interface");
    }
    EXPECT_EQ(command.importOptions(), nullptr);
    EXPECT_EQ(command.exportOptions(), nullptr);
}

TEST(Command, NewOptionsAreNotAttachedAndLegacyOnesMayBeTakenAway) {
    Command command;
    EXPECT_EQ(command.newImportOptions()->operationType(), EOperationType::import);
    EXPECT_EQ(command.newExportOptions()->operationType(), EOperationType::export_);
    command.setLegacyImportOptions(command.newLegacyImportOptions());
    command.setLegacyExportOptions(command.newLegacyExportOptions());
    EXPECT_EQ(command.legacyImportOptions()->operationType(), EOperationType::import);
    EXPECT_EQ(command.legacyExportOptions()->operationType(), EOperationType::export_);
    command.setLegacyImportOptions(nullptr);
    command.setLegacyExportOptions(nullptr);
    EXPECT_FALSE(command.importOptions() || command.exportOptions() || command.legacyImportOptions() ||
                 command.legacyExportOptions());
}

TEST(Command, EveryReaderAndWriterLeavesATrace) {
    Command command = make(EType::import, connect);
    command.setImportOptions(Command::newImportOptions());
    command.setExportOptions(Command::newExportOptions());
    command.setLegacyExportOptions(Command::newLegacyExportOptions());
    test::LogCapture log;
    readFrom(command, writtenBy(command));
    command.setType(EType::export_);
    readFrom(command, writtenBy(command));
    command.setInternalInterface(legacy);
    readFrom(command, writtenBy(command));
    EXPECT_EQ(
        test::signaturesOf(log.take(), "mcad/src/zeq_api/zeq_api_command"),
        (std::vector<std::string>{
            "virtual void zeq::Command::writeObject(mp::OutputStream &) const",
            "virtual void zeq::ImportOptionsImpl::writeObject(JsonValue &, JsonAllocator &) const",
            "ImportOptions.file = ",
            "virtual void zeq::Command::readObject(mp::InputStream &)",
            "virtual void zeq::ImportOptionsImpl::readObject(const JsonValue &)",
            "ImportOptions.file = ",
            "virtual void zeq::Command::writeObject(mp::OutputStream &) const",
            "virtual void zeq::ExportOptionsImpl::writeObject(JsonValue &, JsonAllocator &) const",
            "ExportOptions.file = ",
            "virtual void zeq::Command::readObject(mp::InputStream &)",
            "virtual void zeq::ExportOptionsImpl::readObject(const JsonValue &)",
            "ExportOptions.file = ",
            "virtual void zeq::Command::writeObject(mp::OutputStream &) const",
            "virtual void zeq::LegacyExportOptionsImpl::writeObject(JsonValue &, JsonAllocator &) const",
            "virtual void zeq::Command::readObject(mp::InputStream &)",
            "virtual void zeq::LegacyExportOptionsImpl::readObject(const JsonValue &)",
        }));
}

} // namespace
} // namespace zeq
