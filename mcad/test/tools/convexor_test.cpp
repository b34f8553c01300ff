// The translator as a host meets it: commands go in, documents come out, over real pipes.
#include <chrono>
#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/temp_dir.h"
#include "tools/zeq_run.h"
#include "transport/translator_process.h"
#include "transport/utf8.h"
#include "zeq_api/zeq_api.h"

namespace {

using namespace zeq;
using transport::TranslatorProcess;
using Event = TranslatorProcess::Event;

/// Everything that came in answer to one command.
struct Answer {
    std::optional<Result> result;
    std::optional<ConvexorInfo> info;
    std::shared_ptr<ExcProductStructure> product;
    std::vector<ExcStageFinished::EStage> finished;
    std::vector<std::shared_ptr<ExcProgress>> progress;
    std::wstring log;
};

/// A running convexor.
class Translator {
public:
    Translator() : m_process(ZEQ_CONVEXOR, m_signals) { std::signal(SIGPIPE, SIG_IGN); }

    TranslatorProcess& process() { return m_process; }

    void send(const std::wstring& text) { m_process.send(text); }
    void send(const Command& command) {
        std::wostringstream stream;
        command.writeObject(stream);
        send(stream.str());
    }

    /// Takes documents up to the result, or to the end of the process; `onProgress` sees the progress at
    /// once.
    Answer answer(const std::function<void()>& onProgress = {}) {
        Answer answer;
        while (!answer.result) {
            switch (m_process.wait(std::chrono::steady_clock::now() + std::chrono::minutes(2))) {
            case Event::document:
                take(m_process.document(), answer);
                if (onProgress && !answer.progress.empty()) onProgress();
                break;
            case Event::ended:
                return answer;
            case Event::deadline:
                ADD_FAILURE() << "the translator fell silent";
                return answer;
            default:
                break;
            }
        }
        return answer;
    }

    /// Waits for the end of the process; answers that still come are taken along.
    bool endsInOrder() {
        for (;;) {
            const Event event = m_process.wait(std::chrono::steady_clock::now() + std::chrono::minutes(2));
            if (event == Event::ended) return m_process.succeeded();
            if (event == Event::deadline) return false;
        }
    }

private:
    template <class Document>
    static void read(const std::wstring& text, Document& document) {
        std::wistringstream stream(text);
        document.readObject(stream);
    }

    static void take(const std::wstring& text, Answer& answer) {
        if (text.find(L"\"exchange_object_name\"") == text.npos) {
            if (text.find(L"\"code\"") != text.npos)
                read(text, answer.result.emplace());
            else
                read(text, answer.info.emplace());
            return;
        }
        ExchangeObjectWrapper wrapper;
        read(text, wrapper);
        if (const auto progress = std::dynamic_pointer_cast<ExcProgress>(wrapper.get()))
            answer.progress.push_back(progress);
        else if (const auto line = std::dynamic_pointer_cast<ExcLog>(wrapper.get()))
            answer.log += line->get() + L"\n";
        else if (const auto stage = std::dynamic_pointer_cast<ExcStageFinished>(wrapper.get()))
            answer.finished.push_back(stage->stage());
        else if (const auto product = std::dynamic_pointer_cast<ExcProductStructure>(wrapper.get()))
            answer.product = product;
        else if (const auto geometry = std::dynamic_pointer_cast<ExcBlockGeometry>(wrapper.get()))
            geometry->load(); // which removes the buffer in the end
    }

    transport::SignalPipe m_signals{SIGCHLD};
    TranslatorProcess m_process;
};

Command simpleCommand(Command::EType type) {
    Command command;
    command.setType(type);
    return command;
}

Command importCommand(const std::filesystem::path& file, bool withMiscData = true) {
    Command command = simpleCommand(Command::EType::import);
    const auto options = Command::newImportOptions();
    options->setFile(transport::fromUtf8(file.string()));
    options->setTranslateMiscData(withMiscData);
    command.setImportOptions(options);
    return command;
}

/// An option group with one setting; with an empty key it has its defaults.
std::wstring optionGroup(const std::wstring& operation, const std::wstring& format,
                         const std::wstring& key = {}, const std::wstring& value = {}) {
    return LR"({"operation_type":")" + operation + LR"(","format_type":")" + format + LR"(",")" + key +
           LR"(":")" + value + LR"("})";
}

std::wstring colorText(const ExcColor& color) {
    using enum ExcColor::EChannel;
    if (!color.hasRGB()) return L"";
    std::wstring text = std::to_wstring(color[red]) + L"," + std::to_wstring(color[green]) + L"," +
                        std::to_wstring(color[blue]);
    return color.hasAlpha() ? text + L"," + std::to_wstring(color[alpha]) : text;
}

/// "group.property" to "value unit".
std::map<std::wstring, std::wstring> properties(const ExcMiscData& data) {
    std::map<std::wstring, std::wstring> result;
    for (const ExcMiscPropertiesGroup& group : data.groups())
        for (const ExcMiscProperty& property : group.properties())
            result[group.name() + L"." + property.name()] =
                property.value() + (property.unit().empty() ? L"" : L" " + property.unit());
    return result;
}

class Convexor : public testing::Test {
protected:
    static void SetUpTestSuite() {
        s_dir = new test::TempDir;
        ASSERT_EQ(test::runProgram({ZEQ_SAMPLES, s_dir->path().string()}).exitCode, 0);
    }
    static void TearDownTestSuite() {
        delete s_dir;
        s_dir = nullptr;
    }

    static std::filesystem::path sample(const std::string& name) { return s_dir->path() / name; }
    static std::filesystem::path write(const std::string& name, const std::string& content) {
        std::ofstream(sample(name), std::ios::binary) << content;
        return sample(name);
    }
    static std::string contentOf(const std::string& name) {
        std::ostringstream content;
        content << std::ifstream(sample(name), std::ios::binary).rdbuf();
        return content.str();
    }

    /// What a translator of its own answers to an import with these option groups, the elements of a JSON
    /// array.
    static Answer importWith(const std::filesystem::path& file, const std::wstring& groups,
                             bool withMiscData = true) {
        Command command = importCommand(file, withMiscData);
        JsonDocument array;
        array.Parse((L"[" + groups + L"]").c_str());
        EXPECT_FALSE(array.HasParseError()) << transport::toUtf8(groups);
        for (const JsonValue& group : array.GetArray())
            command.importOptions()->setFormatOptions(IFormatOptions::readOptions(group));
        Translator translator;
        translator.send(command);
        Answer answer = translator.answer();
        EXPECT_TRUE(answer.product) << file;
        return answer;
    }
    static std::shared_ptr<ExcProductStructure> import(const std::filesystem::path& file) {
        return importWith(file, {}).product;
    }

    static inline test::TempDir* s_dir = nullptr;
};

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
    std::vector<std::wstring> filters;
    for (const auto& format : answer.info->importFormats())
        for (const std::wstring& filter : format->getFilters()) filters.push_back(filter);
    EXPECT_EQ(filters, (std::vector<std::wstring>{L"STEP files|*.stp", L"STEP files|*.step",
                                                  L"IGES files|*.igs", L"IGES files|*.iges"}));
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
    EXPECT_EQ(stages, (std::vector<std::wstring>{L"Reading bench_vise.stp", L"Translating shapes",
                                                 L"Building the product structure", L"Measuring geometry",
                                                 L"Sending the product structure", L"Sending geometry"}));
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

TEST_F(Convexor, PlacesATurnedInstance) {
    const auto product = import(sample("bench_vise.stp"));
    for (const ExcBlockPtr& block : product->blocks())
        for (const ExcBlockReferencePtr& reference : block->blockReferences()) {
            if (reference->name() != L"Fastener 2") continue;
            // A quarter turn about z takes the x axis of the child to the y axis of the parent.
            const ExcTransformation& placement = reference->transformation();
            const double expected[3][3] = {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}};
            for (std::size_t row = 0; row < 3; ++row) {
                EXPECT_NEAR(placement.affine()[row].x(), expected[row][0], 1e-12);
                EXPECT_NEAR(placement.affine()[row].y(), expected[row][1], 1e-12);
                EXPECT_NEAR(placement.affine()[row].z(), expected[row][2], 1e-12);
            }
            EXPECT_NEAR(placement.translation().x(), -95, 1e-9);
            EXPECT_NEAR(placement.translation().y(), 40, 1e-9);
            EXPECT_NEAR(placement.translation().z(), 18, 1e-9);
            return;
        }
    FAIL() << "no Fastener 2";
}

TEST_F(Convexor, CarriesMiscDataWhenAskedTo) {
    const auto product = import(sample("bench_vise.stp"));
    for (const ExcBlockPtr& block : product->blocks()) {
        if (block->name() != L"Washer 10") continue;
        const auto found = properties(block->miscData());
        EXPECT_EQ(found.at(L"Material.Name"), L"C45E");
        EXPECT_EQ(found.at(L"Material.Description"), L"Quenched and tempered steel");
        EXPECT_EQ(found.at(L"Material.Density"), L"7.85 g/cm^3");
        EXPECT_EQ(found.at(L"Layers.Layer"), L"Fasteners");
        // pi * (10^2 - 5.25^2) * 2
        EXPECT_NEAR(std::stod(found.at(L"Validation properties.Volume")), 455.138, 0.001);
        EXPECT_EQ(std::stod(found.at(L"Validation properties.Centroid z")), -1);
        for (const ExcMiscPropertiesGroup& group : block->miscData().groups())
            for (const ExcMiscProperty& property : group.properties())
                if (property.name() == L"Density") {
                    EXPECT_EQ(property.type(), ExcMiscProperty::EType::double_);
                    EXPECT_EQ(property.valueType(), ExcMiscProperty::EValueType::density);
                }
    }
    const struct {
        std::wstring mode;
        bool flag;
        bool arrives;
    } rows[] = {
        {L"unknown", false, false}, {L"all", false, true}, {L"unknown", true, true}, {L"none", true, false}};
    for (const auto& [mode, flag, arrives] : rows) {
        const Answer answer =
            importWith(sample("jaw_plate.stp"),
                       optionGroup(L"options", L"mechanical", L"misc_data_processing_mode", mode), flag);
        EXPECT_EQ(answer.product->blocks()[0]->miscData().isEmpty(), !arrives) << transport::toUtf8(mode);
    }
}

TEST_F(Convexor, GivesLengthsInTheUnitThatIsAskedFor) {
    using enum ELengthUnitType;
    const auto writeIn = [](const char* unit, const char* file, const char* from, int count) {
        std::string text = contentOf("bench_vise.stp");
        const std::string millimeter = "SI_UNIT(.MILLI.,.METRE.)";
        for (auto at = text.find(from); count-- > 0 && (at = text.find(millimeter, at)) != text.npos;)
            text.replace(at, millimeter.size(), unit);
        return write(file, text);
    };
    const auto vise = sample("bench_vise.stp");
    const auto centi = writeIn("SI_UNIT(.CENTI.,.METRE.)", "centi.stp", "", 100);
    const auto hecto = writeIn("SI_UNIT(.HECTO.,.METRE.)", "hecto.stp", "", 100);
    const auto mixed =
        writeIn("SI_UNIT(.CENTI.,.METRE.)", "mixed.stp", "PRODUCT('Base'", 1); // the base alone
    const struct {
        std::filesystem::path file;
        double fileUnit; ///< in millimetres
        std::wstring asked;
        double givenUnit; ///< in millimetres
        std::wstring symbol;
        ELengthUnitType given;
        bool isFallback = false;
    } rows[] = {
        {vise, 1, L"unknown", 1, L"mm", millimeter},
        {vise, 1, L"model_unit", 1, L"mm", millimeter},
        {vise, 1, L"inch", 25.4, L"in", inch},
        {vise, 1, L"meter", 1000, L"m", meter},
        {vise, 1, L"nanometer", 1e-6, L"nm", nanometer},
        {centi, 10, L"unknown", 1, L"mm", millimeter},
        {centi, 10, L"model_unit", 10, L"cm", centimeter},
        {centi, 10, L"foot", 304.8, L"ft", foot},
        {hecto, 1e5, L"model_unit", 1, L"mm", millimeter, true},
        {mixed, 1, L"model_unit", 1, L"mm", millimeter, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.file.string() + " in " + transport::toUtf8(row.asked));
        const Answer answer =
            importWith(row.file, optionGroup(L"options", L"modeler", L"length_unit_type", row.asked));
        EXPECT_EQ(answer.product->units(), row.given);
        EXPECT_EQ(answer.log.find(L"no single unit of length") != answer.log.npos, row.isFallback);
        const double factor = row.fileUnit / row.givenUnit;
        int matches = 0;
        for (const ExcBlockPtr& block : answer.product->blocks()) {
            for (const ExcBlockReferencePtr& reference : block->blockReferences())
                if (reference->name() == L"Fastener 2") {
                    const ExcTransformation& placement = reference->transformation();
                    EXPECT_NEAR(placement.translation().x(), -95 * factor, factor * 1e-12);
                    EXPECT_NEAR(placement.translation().z(), 18 * factor, factor * 1e-12);
                    EXPECT_NEAR(placement.affine()[0].y(), -1, 1e-12);
                    ++matches;
                }
            if (block->name() != L"Washer 10") continue;
            auto found = properties(block->miscData());
            const std::wstring volume = found[L"Validation properties.Volume"];
            EXPECT_NEAR(std::stod(volume) / std::pow(factor, 3), 455.138, 0.001);
            EXPECT_EQ(volume.substr(volume.find(L' ') + 1), row.symbol + L"^3");
            EXPECT_NEAR(std::stod(found[L"Validation properties.Centroid z"]) / factor, -1, 1e-12);
            EXPECT_EQ(found[L"Material.Density"], L"7.85 g/cm^3");
            ++matches;
        }
        EXPECT_EQ(matches, 2);
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
         LR"({"operation_type":"import","format_type":"STEP","import_geometry":true,"visu_pmi_mode":"all"})",
         L"Option group import STEP: not honoured: visu_pmi_mode\n"},
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
              "feature_tolerance_processing_mode":"all"})",
         L"Option group options general: not honoured: log_file_encoding_type, memory_management_mode\n"
         L"Option group options graphical: not honoured: visu_text_data_mode\n"
         L"Option group options mechanical: not honoured: feature_tolerance_processing_mode\n"},
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

TEST_F(Convexor, DoesTheSameForGroupsWithTheirDefaults) {
    const auto structureOf = [](const Answer& answer, JsonDocument& structure) {
        for (const ExcBlockReferencePtr& reference : answer.product->rootBlockReferences())
            reference->setGuid({}); // new with each import
        for (const ExcBlockPtr& block : answer.product->blocks())
            for (const ExcBlockReferencePtr& reference : block->blockReferences()) reference->setGuid({});
        answer.product->writeObject(structure, structure.GetAllocator());
    };
    std::wstring groups;
    for (const auto& [operation, format] : IFormatOptions::kinds())
        if (operation != EOperationType::export_)
            groups +=
                (groups.empty() ? L"" : L",") + optionGroup(enumToString(operation), enumToString(format));
    for (const char* file : {"bench_vise.stp", "fastener.igs"}) {
        const Answer without = importWith(sample(file), {});
        const Answer with = importWith(sample(file), groups);
        JsonDocument expected, structure;
        structureOf(without, expected);
        structureOf(with, structure);
        EXPECT_TRUE(structure == expected) << file;
        EXPECT_EQ(with.log, without.log) << file;
    }
}

TEST_F(Convexor, GivesADensityTheMassUnitOfItsFile) {
    std::string text = contentOf("jaw_plate.stp");
    const auto replace = [&text](const std::string& from, const std::string& to) {
        const auto found = text.find(from);
        ASSERT_NE(found, text.npos) << from;
        text.replace(found, from.size(), to);
    };
    replace("POSITIVE_RATIO_MEASURE(7.85)", "POSITIVE_RATIO_MEASURE(7850.)");
    replace("MASS_UNIT() NAMED_UNIT(*) SI_UNIT($,.GRAM.)",
            "MASS_UNIT() NAMED_UNIT(*) SI_UNIT(.KILO.,.GRAM.)");
    replace("SI_UNIT(.CENTI.,.METRE.)", "SI_UNIT($,.METRE.)");
    const auto product = import(write("kilograms.stp", text));
    EXPECT_EQ(properties(product->blocks()[0]->miscData()).at(L"Material.Density"), L"7.85 g/cm^3");
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
        ASSERT_EQ(test::runProgram({ZEQ_SAMPLES, s_dir->path().string(), "--instances", "5000"}).exitCode, 0);
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

TEST_F(LongImport, EndsWhenTheHostClosesTheInput) {
    Translator translator;
    translator.send(importCommand(lattice()));
    const Answer answer = translator.answer([&] { translator.process().closeInput(); });
    EXPECT_FALSE(answer.product);
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
