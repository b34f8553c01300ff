// The translator as a host meets it: where things are, what is measured, and in which units.
#include <cmath>
#include <filesystem>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "tools/convexor_fixture.h"

namespace {

using namespace zeq;
using namespace zeq::test;

/// "group.property" to "value unit".
std::map<std::wstring, std::wstring> properties(const ExcMiscData& data) {
    std::map<std::wstring, std::wstring> result;
    for (const ExcMiscPropertiesGroup& group : data.groups())
        for (const ExcMiscProperty& property : group.properties())
            result[group.name() + L"." + property.name()] =
                property.value() + (property.unit().empty() ? L"" : L" " + property.unit());
    return result;
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

TEST_F(Convexor, SendsWhatADamagedFileStillHolds) {
    const struct {
        std::string from;
        std::string to;
        std::wstring logged;
    } rows[] = {
        {"FACE_BOUND('',#19,", "FACE_BOUND('',$,",
         L"Error at #17: a boundary of the face is not in the file"},
        {"EDGE_LOOP('',(#20,", "EDGE_LOOP('',(#999999,",
         L"an edge of the boundary, or an end of it, is not in the file"},
        {"EDGE_CURVE('',#22,#24,", "EDGE_CURVE('',#22,#999999,",
         L"an edge of the boundary, or an end of it, is not in the file"},
    };
    for (const auto& [from, to, logged] : rows) {
        SCOPED_TRACE(to);
        std::string text = contentOf("jaw_plate.stp");
        ASSERT_NE(text.find(from), text.npos);
        text.replace(text.find(from), from.size(), to);
        const Answer answer = importWith(write("damaged.stp", text), {});
        ASSERT_TRUE(answer.result);
        EXPECT_EQ(answer.result->code(), Result::ECode::warning);
        EXPECT_NE(answer.log.find(logged), answer.log.npos) << transport::toUtf8(answer.log);
        EXPECT_EQ(answer.messages.find(L"no exact geometry"), answer.messages.npos);
    }
}

TEST_F(Convexor, TellsWhatDoesNotTravelYet) {
    std::string text = contentOf("jaw_plate.stp");
    const std::string end = "ENDSEC;\nEND-ISO";
    ASSERT_NE(text.find(end), text.npos);
    text.insert(text.find(end), "#99001=BLOCK('',$,1.,1.,1.);\n#99002=SPHERE('',1.,$);\n");
    const Answer answer = importWith(write("solids.stp", text), {});
    EXPECT_NE(answer.messages.find(L"'solids.stp' holds 2 primitive solids, which do not travel yet\n"),
              answer.messages.npos)
        << transport::toUtf8(answer.messages);
}

} // namespace
