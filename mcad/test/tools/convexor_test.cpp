// The translator as a host meets it: commands go in, documents come out, over real pipes.
#include <filesystem>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tools/convexor_fixture.h"

namespace {

using namespace zeq;
using namespace zeq::test;

std::wstring colorText(const ExcColor& color) {
    using enum ExcColor::EChannel;
    if (!color.hasRGB()) return L"";
    std::wstring text = std::to_wstring(color[red]) + L"," + std::to_wstring(color[green]) + L"," +
                        std::to_wstring(color[blue]);
    return color.hasAlpha() ? text + L"," + std::to_wstring(color[alpha]) : text;
}

TEST_F(Convexor, AnswersCommandsInTheOrderInWhichTheyWait) {
    Translator translator;
    translator.send(simpleCommand(Command::EType::ping));
    translator.send(simpleCommand(Command::EType::info));
    translator.send(importCommand(sample("jaw_plate.stp")));
    translator.send(simpleCommand(Command::EType::ping));

    for (const bool hasInfo : {false, true, false, false}) {
        const Answer answer = translator.answer();
        ASSERT_TRUE(answer.result);
        EXPECT_EQ(answer.result->code(), Result::ECode::ok);
        EXPECT_TRUE(answer.result->isFinished());
        EXPECT_EQ(answer.info.has_value(), hasInfo);
    }
    translator.process().closeInput();
    EXPECT_TRUE(translator.endsInOrder());
}

TEST_F(Convexor, DescribesItselfTruly) {
    Translator translator;
    translator.send(simpleCommand(Command::EType::info));
    const Answer answer = translator.answer();
    ASSERT_TRUE(answer.info);
    EXPECT_EQ(answer.info->name(), L"convexor");
    EXPECT_EQ(answer.info->requestedInterface(), EConvexorInterface::connect);
    ASSERT_EQ(answer.info->thirdpartyCores().size(), 1u);
    EXPECT_EQ(answer.info->thirdpartyCores()[0]->version().substr(0, 2), L"7.");
    std::wstring filters;
    for (const auto& format : answer.info->importFormats())
        for (const std::wstring& filter : format->getFilters()) filters += filter + L"\n";
    EXPECT_EQ(filters, L"STEP files|*.stp\nSTEP files|*.step\nSTEP files|*.p21\nSTEP files|*.stp.gz\n"
                       L"STEP files|*.step.gz\nSTEP files|*.p21.gz\nIGES files|*.igs\nIGES files|*.iges\n"
                       L"IGES files|*.igs.gz\nIGES files|*.iges.gz\n");
    EXPECT_TRUE(answer.info->exportFormats().empty());
}

TEST_F(Convexor, ReportsStagesBeforeTheStructure) {
    Translator translator;
    translator.send(importCommand(sample("bench_vise.stp")));
    const Answer answer = translator.answer();
    EXPECT_EQ(answer.finished, std::vector{ExcStageFinished::EStage::product_structure});
    std::vector<std::wstring> stages;
    for (const auto& progress : answer.progress) {
        if (stages.empty() || stages.back() != progress->stage()) stages.push_back(progress->stage());
        EXPECT_LE(progress->progress(), progress->progressMax());
    }
    EXPECT_EQ(stages, (std::vector<std::wstring>{
                          L"Reading annotations and properties", L"Reading bench_vise.stp",
                          L"Translating shapes", L"Building the product structure", L"Measuring geometry",
                          L"Sending the product structure", L"Sending geometry", L"Sending display data"}));
    EXPECT_TRUE(answer.progress.front()->pulse());
}

TEST_F(Convexor, GivesEachInstanceItsBlockNameColourAndVisibility) {
    const auto product = import(sample("bench_vise.stp"));
    EXPECT_EQ(product->productName(), L"Bench vise");
    EXPECT_EQ(product->units(), ELengthUnitType::millimeter);
    EXPECT_FALSE(product->isPart());
    EXPECT_EQ(product->blocks().size(), 16u);

    const struct {
        std::wstring parent, instance, block, color;
        bool hidden;
    } expected[] = {
        {L"Bench vise", L"Base", L"Base", L"38,92,72", false},
        {L"Bench vise", L"Jaw plate fixed", L"Jaw plate", L"168,172,178", false},
        {L"Bench vise", L"Sliding jaw", L"Sliding jaw", L"", false},
        {L"Bench vise", L"Fastener 1", L"Fastener", L"", false},
        {L"Bench vise", L"Fastener 4", L"Fastener", L"", false},
        {L"Bench vise", L"Workpiece", L"Block", L"90,150,220,102", false},
        {L"Bench vise", L"Transport lock", L"Block", L"214,172,70", true},
        {L"Sliding jaw", L"Jaw plate moving", L"Jaw plate", L"168,172,178", false},
        {L"Sliding jaw", L"Tr\u00e4ger vorn", L"Tr\u00e4ger", L"38,92,72", false},
        {L"Handle", L"Knob right", L"Knob", L"32,32,36", false},
        {L"Handle", L"Knob left", L"Knob", L"200,30,36", false},
    };
    for (const auto& row : expected) {
        int matches = 0;
        for (const ExcBlockPtr& block : product->blocks())
            for (const ExcBlockReferencePtr& reference : block->blockReferences()) {
                if (block->name() != row.parent || reference->name() != row.instance) continue;
                ++matches;
                const ExcBlockPtr child = product->getBlockById(reference->blockId());
                ASSERT_TRUE(child);
                EXPECT_EQ(child->name(), row.block);
                EXPECT_EQ(child->isPart(), child->blockReferences().empty());
                EXPECT_EQ(child->storageName(), L"bench_vise.stp");
                EXPECT_EQ(colorText(reference->color()), row.color);
                EXPECT_EQ(reference->isHidden(), row.hidden);
            }
        EXPECT_EQ(matches, 1) << transport::toUtf8(row.instance);
    }
}

TEST_F(Convexor, LeavesHiddenEntitiesOfIgesOutWhenToldTo) {
    std::string text = contentOf("fastener.igs");
    const auto hide = [&text](std::size_t part, const char* name) {
        text.replace(part + 64, 2, "01"); // the blank status in the directory entry of the group of its faces
        return write(name, text);
    };
    const std::size_t bolt = text.find("     402 ");
    const auto oneHidden = hide(bolt, "one_hidden.igs");
    const auto bothHidden = hide(text.find("     402 ", bolt + 160), "both_hidden.igs");
    const struct {
        std::filesystem::path file;
        std::wstring mode, arrives;
    } rows[] = {
        {sample("fastener.igs"), L"none", L"Hexagon bolt M10, Washer 10, "},
        {oneHidden, L"unknown", L"Hexagon bolt M10 hidden, Washer 10, "},
        {oneHidden, L"all", L"Hexagon bolt M10 hidden, Washer 10, "},
        {oneHidden, L"none", L"Washer 10, "},
        {oneHidden, L"only_with_visible_links", L"Hexagon bolt M10 hidden, Washer 10, "},
        {bothHidden, L"none", L""},
    };
    for (const auto& row : rows) {
        const auto product =
            importWith(row.file, optionGroup(L"import", L"IGES", L"hidden_entities_mode", row.mode)).product;
        std::wstring arrived;
        for (const ExcBlockReferencePtr& reference : product->rootBlockReferences())
            arrived += product->getBlockById(reference->blockId())->name() +
                       (reference->isHidden() ? L" hidden, " : L", ");
        EXPECT_EQ(arrived, row.arrives) << row.file << ' ' << transport::toUtf8(row.mode);
        EXPECT_EQ(product->blocks().size(), product->rootBlockReferences().size());
    }
}

TEST_F(Convexor, TellsWhatItCannotHonour) {
    const auto step = sample("jaw_plate.stp");
    const auto iges = sample("jaw_plate.igs");
    const struct {
        std::filesystem::path file;
        std::wstring groups, log;
    } rows[] = {
        {step,
         LR"({"operation_type":"import","format_type":"STEP","import_geometry":true,"visu_pmi_mode":"all",
              "layer_name_mode":"saved_visu_rep"})",
         L"Option group import STEP: not honoured: layer_name_mode\n"},
        {step, LR"({"operation_type":"import","format_type":"STEP","visu_pmi_mode":"none",
              "layer_name_mode":"asm_rep"})",
         L""},
        {iges, LR"({"operation_type":"import","format_type":"IGES","import_entities":"root_and_nonroot",
              "hidden_entities_mode":"only_with_visible_links","copious_data_mode":"unknown",
              "trim_curve_import_pref_mode":"2d"})",
         L"Option group import IGES: not honoured: import_entities, hidden_entities_mode, "
         L"trim_curve_import_pref_mode\n"},
        {iges, optionGroup(L"import", L"IGES", L"import_entities", L"root_only"), L""},
        {step, LR"({"operation_type":"import","format_type":"NX","hidden_entities_mode":"none"},
             {"operation_type":"import","format_type":"JT"},
             {"operation_type":"export","format_type":"STEP","layer_name_mode":"unknown","tolerance":1.5},
             {"operation_type":"options","format_type":"modeler","length_unit_type":"inch",
              "acis_heal_type":"none"})",
         L"Option group export STEP: not used for importing STEP\n"
         L"Option group import NX: not used for importing STEP\n"
         L"Option group options modeler: not honoured: acis_heal_type\n"},
        {step,
         LR"({"operation_type":"options","format_type":"general","memory_management_mode":"keep_part_visu",
              "log_file_encoding_type":"utf16","log_event_level_type":"warning"},
             {"operation_type":"options","format_type":"graphical","visu_text_data_mode":"as_stroked"},
             {"operation_type":"options","format_type":"mechanical",
              "feature_tolerance_processing_mode":"all"},
             {"operation_type":"options","format_type":"modeler","preserve_mfg_mode":"decorate_all_mfg"})",
         L"Option group options general: not honoured: log_file_encoding_type, memory_management_mode\n"
         L"Option group options graphical: not honoured: visu_text_data_mode\n"
         L"Option group options modeler: not honoured: preserve_mfg_mode\n"},
        {step, LR"({"operation_type":"options","format_type":"general","log_event_level_type":"error"},
             {"operation_type":"options","format_type":"graphical","visu_text_data_mode":"as_stroked"})",
         L""},
    };
    for (const auto& row : rows) {
        const Answer answer = importWith(row.file, row.groups);
        std::wstring options;
        std::wistringstream log(answer.log);
        for (std::wstring line; std::getline(log, line);)
            if (line.starts_with(L"Option group")) options += line + L"\n";
        EXPECT_EQ(transport::toUtf8(options), transport::toUtf8(row.log));
    }
}

TEST_F(Convexor, SendsGeometryUnlessItIsToldNotTo) {
    const struct {
        const wchar_t* group;
        std::size_t geometries;
    } rows[] = {
        {LR"({"operation_type":"import","format_type":"STEP","layer_name_mode":"asm_rep"})", 1},
        {LR"({"operation_type":"import","format_type":"STEP","import_geometry":true})", 1},
        {LR"({"operation_type":"import","format_type":"STEP","import_geometry":false})", 0},
        {LR"({"operation_type":"import","format_type":"NX","import_geometry":false})", 1},
    };
    for (const auto& row : rows) {
        const Answer answer = importAsSaid(sample("jaw_plate.stp"), row.group);
        EXPECT_EQ(answer.geometries, row.geometries) << transport::toUtf8(row.group);
        bool hasFigures = false;
        for (const ExcMiscPropertiesGroup& group : answer.product->blocks()[0]->miscData().groups())
            hasFigures = hasFigures || group.name() == L"geometry check";
        EXPECT_EQ(hasFigures, row.geometries == 1) << transport::toUtf8(row.group);
    }
}

TEST_F(Convexor, DoesTheSameForGroupsWithTheirDefaultsAndGeometry) {
    const auto structureOf = [](const Answer& answer, JsonDocument& structure) {
        for (const ExcBlockReferencePtr& reference : answer.product->rootBlockReferences())
            reference->setGuid({}); // new with each import
        for (const ExcBlockPtr& block : answer.product->blocks())
            for (const ExcBlockReferencePtr& reference : block->blockReferences()) reference->setGuid({});
        answer.product->writeObject(structure, structure.GetAllocator());
    };
    for (const auto& [file, fileFormat] :
         {std::pair("bench_vise.stp", EFormatType::STEP), std::pair("fastener.igs", EFormatType::IGES)}) {
        std::wstring groups;
        for (const auto& [operation, format] : IFormatOptions::kinds())
            if (operation != EOperationType::export_)
                groups += std::wstring(groups.empty() ? L"" : L",") + LR"({"operation_type":")" +
                          enumToString(operation) + LR"(","format_type":")" + enumToString(format) +
                          (format == fileFormat ? LR"(","import_geometry":true})" : LR"("})");
        const Answer without = importWith(sample(file), {});
        const Answer with = importWith(sample(file), groups);
        JsonDocument expected, structure;
        structureOf(without, expected);
        structureOf(with, structure);
        EXPECT_TRUE(structure == expected) << file;
        EXPECT_EQ(with.log, without.log) << file;
    }
}

TEST_F(Convexor, ReadsNamesInALocalCodePage) {
    std::string text = contentOf("bench_vise.stp");
    for (std::size_t found; (found = text.find("\u00e4")) != text.npos;) text.replace(found, 2, "\xe4");
    const auto product = import(write("latin.stp", text));
    std::set<std::wstring> names;
    for (const ExcBlockPtr& block : product->blocks()) names.insert(block->name());
    EXPECT_TRUE(names.contains(L"Tr\u00e4ger"));
}

TEST_F(Convexor, NamesAnInstanceWithoutANameAfterItsPart) {
    std::string text = contentOf("bench_vise.stp");
    const std::string name = "'Workpiece'";
    text.replace(text.find(name), name.size(), "'=>[0:1:1:7]'");
    std::set<std::wstring> names;
    const auto product = import(write("unnamed.stp", text));
    for (const ExcBlockReferencePtr& reference : product->blocks()[0]->blockReferences())
        names.insert(reference->name());
    EXPECT_TRUE(names.contains(L"Block"));
    EXPECT_FALSE(names.contains(L"Workpiece"));
}

TEST_F(Convexor, GivesPersistentIdsThatSurviveAnotherImport) {
    const auto ids = [](const ExcProductStructure& product, std::set<std::wstring>& guids) {
        std::vector<std::wstring> result;
        for (const ExcBlockPtr& block : product.blocks())
            for (const ExcBlockReferencePtr& reference : block->blockReferences()) {
                result.push_back(reference->persistentId());
                EXPECT_TRUE(guids.insert(reference->guid()).second);
            }
        return result;
    };
    std::set<std::wstring> guids;
    const auto first = ids(*import(sample("bench_vise.stp")), guids);
    EXPECT_EQ(first, ids(*import(sample("bench_vise.stp")), guids));
    EXPECT_EQ(std::set(first.begin(), first.end()).size(), first.size());
}

TEST_F(Convexor, SignalsALonePart) {
    for (const char* file : {"jaw_plate.stp", "jaw_plate.igs"}) {
        const auto product = import(sample(file));
        EXPECT_TRUE(product->isPart()) << file;
        ASSERT_EQ(product->blocks().size(), 1u) << file;
        EXPECT_EQ(product->blocks()[0]->name(), L"Jaw plate") << file;
        EXPECT_TRUE(product->blocks()[0]->isPart()) << file;
        // IGES knows colours of faces only.
        EXPECT_EQ(colorText(product->rootBlockReferences()[0]->color()), L"168,172,178") << file;
    }
}

TEST_F(Convexor, SaysWhatIsWrongWithAFile) {
    const std::string vise = contentOf("bench_vise.stp");
    const struct {
        std::filesystem::path file;
        std::wstring reason;
    } rows[] = {
        {sample("missing.stp"), L"there is no such file"},
        {s_dir->path(), L"it is not a regular file"},
        {write("empty.stp", ""), L"the file is empty"},
        {write("empty.igs", ""), L"the file is empty"},
        {write("model.dwg", vise), L"its name belongs to none of the formats"},
        {write("text.stp", "Dear reader,\nthis is a letter.\n"), L"it is damaged or not of the format"},
        {write("text.igs", "Dear reader,\nthis is a letter.\n"), L"it is damaged or not of the format"},
        {write("half.stp", vise.substr(0, vise.size() / 2)), L"it is damaged or not of the format"},
        {write("bare.stp", vise.substr(0, vise.find("DATA;")) + "DATA;\nENDSEC;\nEND-ISO-10303-21;\n"),
         L"it holds no model"},
    };
    Translator translator;
    for (const auto& row : rows) {
        translator.send(importCommand(row.file));
        const Answer answer = translator.answer();
        ASSERT_TRUE(answer.result) << row.file;
        EXPECT_EQ(answer.result->code(), Result::ECode::error) << row.file;
        EXPECT_TRUE(answer.result->isFinished());
        const std::wstring& message = answer.result->message();
        EXPECT_NE(message.find(transport::fromUtf8(row.file.string())), message.npos)
            << transport::toUtf8(message);
        EXPECT_NE(message.find(row.reason), message.npos) << transport::toUtf8(message);
        EXPECT_FALSE(answer.product);
    }
}

TEST_F(Convexor, WarnsOfEntitiesThatItCannotRead) {
    std::string text = contentOf("bench_vise.stp");
    const auto surface = text.find("= PLANE(");
    text.replace(surface, text.find(';', surface) - surface, "= FANCY_SURFACE('',1.)");
    Translator translator;
    translator.send(importCommand(write("fancy.stp", text)));
    const Answer answer = translator.answer();
    ASSERT_TRUE(answer.result);
    EXPECT_EQ(answer.result->code(), Result::ECode::warning);
    EXPECT_NE(answer.log.find(L"Entity has illegal type"), answer.log.npos);
    ASSERT_TRUE(answer.product);
    EXPECT_EQ(answer.product->blocks().size(), 16u);
}

TEST_F(Convexor, RefusesWhatItCannotDo) {
    const struct {
        std::wstring command, reason;
    } rows[] = {
        {L"nonsense", L"invalid json document"},
        {L"[]", L"invalid json document"},
        {L"{}", L"no command type"},
        {LR"({"command":"reboot"})", L"unknown"},
        {LR"({"command":"import"})", L"should contain options"},
        {LR"({"command":"import","options":{}})", L"no valid file path"},
        {LR"({"command":"export","convexor_interface":"connect","options":{"file":"x.stp"}})", L"Export"},
    };
    Translator translator;
    for (const auto& row : rows) {
        translator.send(row.command);
        const Answer answer = translator.answer();
        ASSERT_TRUE(answer.result);
        EXPECT_EQ(answer.result->code(), Result::ECode::error);
        EXPECT_NE(answer.result->message().find(row.reason), std::wstring::npos)
            << transport::toUtf8(answer.result->message());
    }
}

TEST_F(Convexor, WritesTheLogThatACommandAsksFor) {
    Command command = importCommand(sample("jaw_plate.stp"));
    const auto general = std::make_shared<OptionsGeneral>();
    general->setLogFileName(L"convexor.log");
    general->setLoggingOutputDirectory(transport::fromUtf8(s_dir->path().string()));
    general->setLogEventLevel(ELogEventLevelType::verbose);
    command.importOptions()->setFormatOptions(general);
    Translator translator;
    translator.send(command);
    ASSERT_TRUE(translator.answer().product);
    const std::string log = contentOf("convexor.log");
    EXPECT_NE(log.find("zeq::ExcProductStructure::writeObject"), log.npos) << log;
}

/// A command that takes the translator seconds.
class LongImport : public Convexor {
protected:
    static void SetUpTestSuite() {
        Convexor::SetUpTestSuite();
        ASSERT_EQ(runProgram({ZEQ_SAMPLES, s_dir->path().string(), "--instances", "5000"}).exitCode, 0);
    }
    static std::filesystem::path lattice() { return sample("lattice_5000.stp"); }
};

TEST_F(LongImport, EndsInOrderWhenTerminated) {
    Translator translator;
    translator.send(importCommand(lattice()));
    const Answer answer = translator.answer([&] { translator.process().terminate(); });
    ASSERT_TRUE(answer.result);
    EXPECT_EQ(answer.result->code(), Result::ECode::interrupted);
    EXPECT_TRUE(answer.result->isFinished());
    EXPECT_FALSE(answer.product);
    EXPECT_TRUE(translator.endsInOrder());
}

TEST_F(LongImport, IsAnsweredAlthoughTheInputHasEnded) {
    Translator translator;
    translator.send(importCommand(lattice()));
    const Answer answer = translator.answer([&] { translator.process().closeInput(); });
    ASSERT_TRUE(answer.result);
    EXPECT_EQ(answer.result->code(), Result::ECode::ok);
    EXPECT_TRUE(answer.product);
    EXPECT_TRUE(translator.endsInOrder());
}

TEST_F(LongImport, HoldsEveryInstance) {
    const auto product = import(lattice());
    std::size_t instances = 0;
    for (const ExcBlockPtr& block : product->blocks())
        for (const ExcBlockReferencePtr& reference : block->blockReferences()) {
            ++instances;
            EXPECT_FALSE(reference->name().empty());
        }
    EXPECT_EQ(instances, 5000u + 50u);
}

} // namespace
