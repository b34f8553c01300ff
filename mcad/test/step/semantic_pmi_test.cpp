// Annotations of STEP files: those of public models, whose expectations were read from their drawings, and of small
// structures with what no model has.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "part21/exchange_structure.h"
#include "step/pmi_lines.h"
#include "step/semantic_pmi.h"
#include "support/json_text.h"

namespace zeq {
namespace {

using step::SemanticAnnotation;
using test::Labels;
using test::lineOf;
using test::Lines;
using test::linesOf;
using test::narrow;
using Counts = std::map<std::string, int>;

/// What was read, kind by kind, as lines in alphabetical order.
struct Reading {
    explicit Reading(const std::string& text, double millimeters = 1)
        : structure(text), file(structure, millimeters), annotations(step::readSemanticPMI(file)) {
        Labels labels;
        for (const SemanticAnnotation& each : annotations)
            if (const auto datum = std::dynamic_pointer_cast<ExcPMIDatum>(each.annotation))
                labels[datum->id()] = narrow(datum->label());
        for (const SemanticAnnotation& each : annotations) add(each, labels);
        for (auto& [kind, list] : lines) std::ranges::sort(list);
        for (const auto& [items, numbers] : file.losses().all())
            leftOut[narrow(items.reason)] = static_cast<int>(numbers.size());
    }

    void add(const SemanticAnnotation& each, const Labels& labels) {
        std::string kind;
        if (const auto dimension = std::dynamic_pointer_cast<ExcPMIDimension>(each.annotation)) {
            lines[kind = "dimensions"].push_back(lineOf(*dimension));
        } else if (const auto tolerance = std::dynamic_pointer_cast<ExcPMIGDT>(each.annotation)) {
            const Lines rows = linesOf(*tolerance, labels);
            lines[kind = "tolerances"].insert(lines["tolerances"].end(), rows.begin(), rows.end());
            EXPECT_EQ(each.numbers.size(), rows.size());
        } else if (const auto datum = std::dynamic_pointer_cast<ExcPMIDatum>(each.annotation)) {
            lines[kind = "datums"].push_back(narrow(datum->label()));
        } else if (const auto target = std::dynamic_pointer_cast<ExcPMIDatumTarget>(each.annotation)) {
            lines[kind = "datum targets"].push_back(lineOf(*target));
        } else {
            std::string text;
            for (const auto& run : std::static_pointer_cast<ExcPMINote>(each.annotation)->texts())
                text += "[" + narrow(run->label()) + "]";
            lines[kind = "notes"].push_back(text);
        }
        EXPECT_EQ(each.annotation->id(), std::to_wstring(each.numbers.at(0)));
        if (!each.annotation->linkedElements().empty())
            withElements[kind] += kind == "tolerances" ? static_cast<int>(each.numbers.size()) : 1;
    }

    const SemanticAnnotation& byNumber(std::uint64_t number) const {
        for (const SemanticAnnotation& each : annotations)
            if (each.numbers[0] == number) return each;
        throw std::runtime_error("no annotation has this number");
    }

    part21::ExchangeStructure structure;
    step::StepFile file;
    std::vector<SemanticAnnotation> annotations;
    std::map<std::string, Lines> lines;
    Counts withElements; ///< a row of a tolerance counts as one
    Counts leftOut;
};

const std::filesystem::path root = ZEQ_TEST_DATA "/../../..";

/// The text of a model that comes with the project or lies beside it; empty if it does not.
std::string modelText(const std::string& name) {
    for (const auto& folder : {root / "samples/models", root / "../shared/models"}) {
        std::ifstream file(folder / name, std::ios::binary);
        if (file) return {std::istreambuf_iterator<char>(file), {}};
    }
    return {};
}

Lines linesIn(const JsonValue& object, const wchar_t* key) {
    Lines lines;
    for (const JsonValue& each : object[key].GetArray()) lines.push_back(narrow(each.GetString()));
    std::ranges::sort(lines);
    return lines;
}

Counts countsIn(const JsonValue& object, const wchar_t* key) {
    Counts counts;
    for (const auto& each : object[key].GetObject())
        counts[narrow(each.name.GetString())] = each.value.GetInt();
    return counts;
}

class SemanticPMIOfModels : public testing::TestWithParam<const char*> {};

TEST_P(SemanticPMIOfModels, IsWhatTheDrawingSays) {
    std::wifstream expectations(ZEQ_TEST_DATA "/pmi/" + std::string(GetParam()) + ".json");
    const JsonDocument expected = test::parse(expectations);
    const std::string text = modelText(narrow(expected[L"model"].GetString()));
    if (text.empty()) GTEST_SKIP() << "the model is not here";
    Reading reading(text, expected[L"millimeters"].GetDouble());
    EXPECT_EQ(reading.lines["dimensions"], linesIn(expected, L"dimensions"));
    EXPECT_EQ(reading.lines["tolerances"], linesIn(expected, L"tolerances"));
    EXPECT_EQ(reading.lines["datums"], linesIn(expected, L"datums"));
    EXPECT_EQ(reading.lines["datum targets"], linesIn(expected, L"datum targets"));
    EXPECT_EQ(reading.leftOut, countsIn(expected, L"left out"));
    for (const auto& [kind, count] : countsIn(expected, L"with elements"))
        EXPECT_EQ(reading.withElements[kind], count) << kind;
    for (const SemanticAnnotation& each : reading.annotations)
        EXPECT_TRUE(reading.structure[each.product].is("PRODUCT_DEFINITION")) << each.numbers[0];
}

INSTANTIATE_TEST_SUITE_P(, SemanticPMIOfModels,
                         testing::Values("nist_ctc_01", "nist_ctc_03", "nist_ctc_05", "nist_ftc_06",
                                         "nist_ftc_11", "nist_stc_08"),
                         [](const auto& model) { return std::string(model.param); });

/// A part with units, an aspect #8 of face #9, one #18 of edge #19, the whole part as aspect #20, and datums A to C
/// (#11, #12, #13); measures #31 to #35 of 1 to 5 mm, and #36 of 0.5 rad.
const std::string part =
    "ISO-10303-21;HEADER;FILE_SCHEMA(('AP242'));ENDSEC;DATA;"
    "#1=PRODUCT_DEFINITION('','',$,$);#2=PRODUCT_DEFINITION_SHAPE('','',#1);"
    "#3=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));"
    "#4=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));"
    "#5=(CONVERSION_BASED_UNIT('INCH',#6)LENGTH_UNIT()NAMED_UNIT(*));"
    "#6=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),#3);"
    "#7=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#5,#4))"
    "REPRESENTATION_CONTEXT('',''));"
    "#8=SHAPE_ASPECT('','',#2,.T.);#9=ADVANCED_FACE('',(),$,.T.);"
    "#10=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#8,$,#9);"
    "#11=DATUM('','',#2,.F.,'A');#12=DATUM('','',#2,.F.,'B');#13=DATUM('','',#2,.F.,'C');"
    "#18=SHAPE_ASPECT('','',#2,.T.);#19=EDGE_CURVE('',$,$,$,.T.);"
    "#17=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#18,$,#19);#20=SHAPE_ASPECT('','',#2,.F.);"
    "#31=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.),#3);"
    "#32=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(2.),#3);"
    "#33=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(3.),#3);"
    "#34=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(4.),#3);"
    "#35=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(5.),#3);"
    "#36=PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(0.5),#4);";
const std::string end = "ENDSEC;END-ISO-10303-21;";

struct Case {
    const char* name;
    std::string kind;
    std::string body;
    Lines lines;
    Counts leftOut = {};
};

/// A dimension #50 that has these items.
std::string sized(const std::string& dimension, const std::string& items, const std::string& more = "") {
    return "#50=" + dimension + ";#51=DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(#50,#52);" +
           "#52=SHAPE_DIMENSION_REPRESENTATION('',(" + items + "),#7);" + more;
}

std::string named(const std::string& name, const std::string& value, const std::string& unit = "#3") {
    return "(LENGTH_MEASURE_WITH_UNIT()MEASURE_REPRESENTATION_ITEM()MEASURE_WITH_UNIT(LENGTH_MEASURE(" +
           value + ")," + unit + ")REPRESENTATION_ITEM('" + name + "'));";
}

std::string note(const std::string& number, const std::string& text) {
    return number + "=DESCRIPTIVE_REPRESENTATION_ITEM('dimensional note','" + text + "');";
}

/// A tolerance #50 of aspect #8 and 1 mm with these records beside.
std::string toleranced(const std::string& records, const std::string& more = "") {
    return "#50=(GEOMETRIC_TOLERANCE('','',#31,#8)" + records + "POSITION_TOLERANCE());" + more;
}

std::string referring(const std::string& compartments, const std::string& more) {
    return toleranced("GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE((#60))",
                      "#60=DATUM_SYSTEM('','',#2,.F.,(" + compartments + "));" + more);
}

const std::string diameter = "DIMENSIONAL_SIZE(#8,'diameter')";
const std::string unreadable = "#61=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.),#99);";

const std::vector<Case> cases{
    {"class of fit",
     "dimensions",
     sized(diameter, "#35",
           "#53=PLUS_MINUS_TOLERANCE(#54,#50);#54=LIMITS_AND_FITS('H','hole','7','ISO 286');"),
     {"diameter 5 fit H7 'ISO 286'"}},
    {"limits alone",
     "dimensions",
     sized(diameter, "#53,#54", "#53=" + named("upper limit", "1.5") + "#54=" + named("lower limit", "1.25")),
     {"diameter 1.25 0 0.25 limits 1.25 1.5"}},
    {"limits in a range",
     "dimensions",
     sized(diameter, "#55",
           "#55=VALUE_RANGE('',SET_REPRESENTATION_ITEM((#53,#54)));#53=" + named("upper limit", "1.5") +
               "#54=" + named("lower limit", "1.25")),
     {"diameter 1.25 0 0.25 limits 1.25 1.5"}},
    {"one limit",
     "dimensions",
     sized(diameter, "#53", "#53=" + named("upper limit", "0.5", "#5")),
     {"diameter 12.7 MAX"}},
    {"radians", "dimensions", sized("ANGULAR_SIZE(#8,'',.SMALL.)", "#36"), {"angle 28.64789"}},
    {"one without value", "dimensions", sized(diameter, ""), {}, {{"it has no value", 1}}},
    {"a unit that is not there",
     "dimensions",
     sized(diameter, "#61", unreadable),
     {},
     {{"its value cannot be read", 1}}},
    {"a value that is no number",
     "dimensions",
     sized(diameter, "#61", "#61=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.E999),#3);"),
     {},
     {{"its value cannot be read", 1}}},
    {"a tolerance that cannot be read",
     "dimensions",
     sized(diameter, "#35", unreadable + "#53=PLUS_MINUS_TOLERANCE(#54,#50);#54=TOLERANCE_VALUE(#61,#31);"),
     {"diameter 5"},
     {{"its tolerance cannot be read", 1}}},
    {"modifiers",
     "dimensions",
     sized("DIMENSIONAL_SIZE(#8,'width')", "#35,#53,#54,#55",
           note("#53", "square") + note("#54", "continuous feature") + note("#55", "as agreed")),
     {"length_or_distance 5 ? CF 'as agreed'"}},
    {"a size that is a datum feature",
     "dimensions",
     sized("DIMENSIONAL_SIZE_WITH_DATUM_FEATURE('','',#2,.T.,#8,'radius')", "#35"),
     {"radius 5"}},
    {"old datum references",
     "tolerances",
     toleranced("GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE((#60,#61,#62))",
                "#60=DATUM_REFERENCE(2,#11);#61=REFERENCED_MODIFIED_DATUM(1,#12,.LEAST_MATERIAL_CONDITION.);"
                "#62=DATUM_REFERENCE(2,#13);"),
     {"position 1 | B L | A-C"}},
    {"an old modifier",
     "tolerances",
     toleranced("MODIFIED_GEOMETRIC_TOLERANCE(.MAXIMUM_MATERIAL_CONDITION.)"),
     {"position 1 M"}},
    {"modifiers in words",
     "tolerances",
     toleranced("GEOMETRIC_TOLERANCE_WITH_MODIFIERS((.SEPARATE_REQUIREMENT.,.NEWLY_INVENTED.,.FREE_STATE.))"),
     {"position 1 F 'SEP REQT'"},
     {{"its modifier 'NEWLY_INVENTED' is not known", 1}}},
    {"values of modifiers",
     "tolerances",
     toleranced("GEOMETRIC_TOLERANCE_WITH_MAXIMUM_TOLERANCE(#32)"
                "GEOMETRIC_TOLERANCE_WITH_MODIFIERS((.MAXIMUM_MATERIAL_REQUIREMENT.))"
                "UNEQUALLY_DISPOSED_GEOMETRIC_TOLERANCE(#33)"),
     {"position 1 M maximum2 unequally_disposed_zone3"}},
    {"zones",
     "tolerances",
     toleranced("", "#60=TOLERANCE_ZONE('','',#2,.F.,(#50),#61);#61=TOLERANCE_ZONE_FORM('within a sphere');"
                    "#62=PROJECTED_ZONE_DEFINITION(#60,(),#8,#34);"
                    "#63=RUNOUT_ZONE_DEFINITION(#60,(),#64);#64=RUNOUT_ZONE_ORIENTATION(#36);"),
     {"position spherical 1 P4 '28.6478898?'"}},
    {"an unknown zone",
     "tolerances",
     toleranced("", "#60=TOLERANCE_ZONE('','',#2,.F.,(#50),#61);#61=TOLERANCE_ZONE_FORM('knotted');"),
     {"position 1"},
     {{"its zone 'knotted' is not known", 1}}},
    {"per square",
     "tolerances",
     toleranced("GEOMETRIC_TOLERANCE_WITH_DEFINED_AREA_UNIT(.SQUARE.,$)"
                "GEOMETRIC_TOLERANCE_WITH_DEFINED_UNIT(#32)"),
     {"position 1/2x2"}},
    {"per circle",
     "tolerances",
     toleranced("GEOMETRIC_TOLERANCE_WITH_DEFINED_AREA_UNIT(.CIRCULAR.,$)"
                "GEOMETRIC_TOLERANCE_WITH_DEFINED_UNIT(#32)"),
     {"position 1/2 'PER CIRCULAR AREA'"}},
    {"a simple instance with all",
     "tolerances",
     "#50=PERPENDICULARITY_TOLERANCE('','',#31,#2,(#60));#60=DATUM_SYSTEM('','',#2,.F.,(#61));"
     "#61=DATUM_REFERENCE_COMPARTMENT('','',#2,.F.,#11,$);",
     {"perpendicularity 1 | A"}},
    {"a common datum with modifiers",
     "tolerances",
     referring("#61", "#61=DATUM_REFERENCE_COMPARTMENT('','',#2,.F.,COMMON_DATUM_LIST((#62,#63)),"
                      "(SIMPLE_DATUM_REFERENCE_MODIFIER(.TRANSLATION.),DATUM_REFERENCE_MODIFIER(.ODD.),#64));"
                      "#62=DATUM_REFERENCE_ELEMENT('','',#2,.F.,#11,(.MAXIMUM_MATERIAL_REQUIREMENT.));"
                      "#63=DATUM_REFERENCE_ELEMENT('','',#2,.F.,#12,$);"
                      "#64=DATUM_REFERENCE_MODIFIER_WITH_VALUE(.PROJECTED.,#35);"),
     {"position 1 | A-B M P5 '? ?'"},
     {{"its modifier 'ODD' is not known", 2}}},
    {"a datum that is not there",
     "tolerances",
     referring("#61,#62", "#61=DATUM_REFERENCE_COMPARTMENT('','',#2,.F.,#99,$);"
                          "#62=DATUM_REFERENCE_COMPARTMENT('','',#2,.F.,#13,$);"),
     {"position 1 | C"},
     {{"its datum reference cannot be read", 1}}},
    {"a magnitude that cannot be read",
     "tolerances",
     "#50=FLATNESS_TOLERANCE('','',#61,#8);#51=FLATNESS_TOLERANCE('','',$,#8);" + unreadable,
     {},
     {{"its magnitude cannot be read", 2}}},
    {"a composite without its head",
     "tolerances",
     "#50=FLATNESS_TOLERANCE('','',$,#8);#51=FLATNESS_TOLERANCE('','',#32,#8);"
     "#52=FLATNESS_TOLERANCE('','',#33,#8);#53=GEOMETRIC_TOLERANCE_RELATIONSHIP('composite','',#50,#51);"
     "#54=GEOMETRIC_TOLERANCE_RELATIONSHIP('precedence','',#51,#52);",
     {"1 flatness 2", "2 flatness 3"},
     {{"its magnitude cannot be read", 1}}},
    {"composites in a circle and of two kinds",
     "tolerances",
     "#50=FLATNESS_TOLERANCE('','',#31,#8);#51=FLATNESS_TOLERANCE('','',#32,#8);"
     "#52=POSITION_TOLERANCE('','',#33,#8);#53=GEOMETRIC_TOLERANCE_RELATIONSHIP('composite','',#50,#51);"
     "#54=GEOMETRIC_TOLERANCE_RELATIONSHIP('composite','',#51,#50);"
     "#55=GEOMETRIC_TOLERANCE_RELATIONSHIP('composite','',#50,#52);"
     "#56=GEOMETRIC_TOLERANCE_RELATIONSHIP('simultaneity','',#50,#52);",
     {"1 flatness 1", "2 flatness 2", "position 3"},
     {{"the relation 'composite' of tolerances does not travel", 2},
      {"the relation 'simultaneity' of tolerances does not travel", 1}}},
    {"an unknown kind", "tolerances", "#50=GEOMETRIC_TOLERANCE('lay','',#31,#8);", {"unknown 1"}},
    {"targets",
     "datum targets",
     "#50=PLACED_DATUM_TARGET_FEATURE('','circle',#2,.T.,'1');#51=SHAPE_ASPECT_RELATIONSHIP('','',#50,#11);"
     "#52=PROPERTY_DEFINITION('','',#50);#53=SHAPE_DEFINITION_REPRESENTATION(#52,#54);"
     "#54=SHAPE_REPRESENTATION_WITH_PARAMETERS('',(#55),#7);#55=" +
         named("target diameter", "2.", "#5") +
         "#56=DATUM_TARGET('','cloud',#2,.T.,'B2');#57=SHAPE_ASPECT_RELATIONSHIP('','',#56,#12);",
     {"A1 area_circular diameter 50.8", "B2 unknown"},
     {{"its form 'cloud' is not known", 1}}},
    {"notes",
     "notes",
     "#50=PROPERTY_DEFINITION('semantic text','',#2);#51=PROPERTY_DEFINITION_REPRESENTATION(#50,#52);"
     "#52=REPRESENTATION('',(#53,#54,#55),#7);#53=DESCRIPTIVE_REPRESENTATION_ITEM('','BREAK');"
     "#54=DESCRIPTIVE_REPRESENTATION_ITEM('','/n');#55=DESCRIPTIVE_REPRESENTATION_ITEM('','EDGES');"
     "#56=PROPERTY_DEFINITION('semantic text','',#8);#57=PROPERTY_DEFINITION('some text','',#8);",
     {"[BREAK\n][EDGES]"},
     {{"it has no text", 1}}},
    {"nothing but names",
     "tolerances",
     "#50=(GEOMETRIC_TOLERANCE()GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE()POSITION_TOLERANCE());"
     "#51=DIMENSIONAL_SIZE();#52=DIMENSIONAL_LOCATION();#53=DATUM();#54=DATUM_TARGET();"
     "#55=GEOMETRIC_TOLERANCE_RELATIONSHIP();#56=TOLERANCE_ZONE();#57=DATUM_SYSTEM();",
     {},
     {{"it has no value", 2},
      {"its magnitude cannot be read", 1},
      {"its form '' is not known", 1},
      {"the relation '' of tolerances does not travel", 1}}},
};

TEST(SemanticPMI, OfSmallStructures) {
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        Reading reading(part + each.body + end);
        EXPECT_EQ(reading.lines[each.kind], each.lines);
        EXPECT_EQ(reading.leftOut, each.leftOut);
    }
}

/// "f9" for face 9, "e19" for edge 19, with their description.
std::string elementsOf(const ExcPMIAnnotation& annotation) {
    std::string text;
    for (const ExcEntityPtr& entity : annotation.linkedElements()) {
        const bool isFace = entity->fsp()->subentType() == ExcFullSubentPath::ESubentType::face;
        text +=
            (isFace ? "f" : "e") + std::to_string(entity->fsp()->subentId()) + narrow(entity->description());
    }
    return text;
}

TEST(SemanticPMI, LinksWhatAnAnnotationIsAbout) {
    struct Link {
        std::string body;
        std::string elements; ///< of #50
    };
    const std::vector<Link> links{
        {sized("DIMENSIONAL_LOCATION('','',#8,#18)", "#35"), "f9e19"},
        {sized("(ANGULAR_LOCATION(.EQUAL.)DIMENSIONAL_LOCATION()DIRECTED_DIMENSIONAL_LOCATION()"
               "SHAPE_ASPECT_RELATIONSHIP('','',#18,#8))",
               "#35"),
         "e19f9"},
        {sized("DIMENSIONAL_SIZE_WITH_PATH(#8,'curve length',#18)", "#35"), "f9e19path"},
        // An end of the one distance is not what the other end stands for.
        {sized("DIMENSIONAL_SIZE(#18,'radius')", "#35",
               "#60=(DIMENSIONAL_LOCATION()SHAPE_ASPECT_RELATIONSHIP('','',#18,#8));"),
         "e19"},
        {"#50=FLATNESS_TOLERANCE('','',#31,#51);#51=DIMENSIONAL_SIZE(#18,'radius');", "e19"},
        {"#50=FLATNESS_TOLERANCE('','',#31,#2);", ""},
        {"#50=FLATNESS_TOLERANCE('','',#31,#20);", ""},
        {"#50=FLATNESS_TOLERANCE('','',#31,#13);#51=SHAPE_ASPECT_RELATIONSHIP('','',#8,#13);", "f9"},
        {"#50=DATUM('','',#2,.F.,'X');#51=DATUM_FEATURE('','',#2,.T.);#52=SHAPE_ASPECT_RELATIONSHIP('','',#"
         "51,#50);"
         "#53=ITEM_IDENTIFIED_REPRESENTATION_USAGE('','',#51,$,SET_REPRESENTATION_ITEM((#19,#9,#19)));",
         "e19f9"},
        {"#50=DATUM_TARGET('','line',#2,.T.,'1');#51=FEATURE_FOR_DATUM_TARGET_RELATIONSHIP('','',#18,#50);",
         "e19"},
        {"#50=FLATNESS_TOLERANCE('','',#31,#51);#51=SHAPE_ASPECT('','',#2,.T.);#52=PROPERTY_DEFINITION('','',"
         "#51);"
         "#53=SHAPE_DEFINITION_REPRESENTATION(#52,#54);#54=SHAPE_REPRESENTATION('',(#9),#7);",
         "f9"},
    };
    for (const Link& each : links) {
        Reading reading(part + each.body + end);
        EXPECT_EQ(elementsOf(*reading.byNumber(50).annotation), each.elements) << each.body;
        EXPECT_EQ(reading.byNumber(50).product, 1);
    }
}

TEST(SemanticPMI, IsInTheOrderOfTheFileWithAllNumbersOfAnAnnotation) {
    Reading reading(part +
                    "#73=FLATNESS_TOLERANCE('','',#31,#8);#71=FLATNESS_TOLERANCE('','',#31,#8);"
                    "#70=DATUM_FEATURE('F','',#2,.T.);#72=SHAPE_ASPECT_RELATIONSHIP('','',#70,#12);"
                    "#74=GEOMETRIC_TOLERANCE_RELATIONSHIP('composite','',#71,#73);" +
                    end);
    std::vector<std::vector<std::uint64_t>> numbers;
    for (const SemanticAnnotation& each : reading.annotations) numbers.push_back(each.numbers);
    EXPECT_EQ(numbers, (std::vector<std::vector<std::uint64_t>>{{11}, {12, 70}, {13}, {71, 73}}));
    EXPECT_EQ(reading.byNumber(12).annotation->name(), L"F");
}

TEST(SemanticPMI, HasThePrecisionAndTheSizesOfItsUnit) {
    const std::string body =
        sized(diameter, "#53",
              "#53=(LENGTH_MEASURE_WITH_UNIT()MEASURE_REPRESENTATION_ITEM()"
              "MEASURE_WITH_UNIT(LENGTH_MEASURE(2.),#5)"
              "QUALIFIED_REPRESENTATION_ITEM((#54))REPRESENTATION_ITEM(''));"
              "#54=VALUE_FORMAT_TYPE_QUALIFIER('NR2 1.3');") +
        "#60=PLACED_DATUM_TARGET_FEATURE('','rectangle',#2,.T.,'1');"
        "#61=PROPERTY_DEFINITION('','',#60);#62=SHAPE_DEFINITION_REPRESENTATION(#61,#63);"
        "#63=SHAPE_REPRESENTATION_WITH_PARAMETERS('',(#64,#65,#66),#7);#64=" +
        named("target length", "4.", "#5") + "#65=" + named("target width", "2.", "#5") +
        "#66=AXIS2_PLACEMENT_3D('',#67,#68,#69);#67=CARTESIAN_POINT('',(10.,20.,30.));"
        "#68=DIRECTION('',(0.,0.,2.));#69=DIRECTION('',(0.,1.,1.));";
    struct Row {
        double millimeters, value, precision, x1, y1, x2, y2;
    };
    for (const Row& row : {Row{25.4, 2, 3, 11, 18, 9, 22}, {1, 50.8, 0, 279.4, 457.2, 228.6, 558.8}}) {
        Reading reading(part + body + end, row.millimeters);
        const auto& dimension = static_cast<ExcPMIDimension&>(*reading.byNumber(50).annotation);
        EXPECT_DOUBLE_EQ(dimension.value(), row.value);
        EXPECT_EQ(dimension.valuePrecision(), row.precision);
        const auto& target = static_cast<ExcPMIDatumTarget&>(*reading.byNumber(60).annotation);
        EXPECT_NEAR(target.zonePoint1().x(), row.x1, 1e-9);
        EXPECT_NEAR(target.zonePoint1().y(), row.y1, 1e-9);
        EXPECT_NEAR(target.zonePoint2().x(), row.x2, 1e-9);
        EXPECT_NEAR(target.zonePoint2().y(), row.y2, 1e-9);
    }
}

TEST(SemanticPMI, OfDamagedFilesIsRead) {
    const std::string whole = modelText("nist_ctc_01_asme1_ap242-e1.stp");
    ASSERT_FALSE(whole.empty());
    // Half of the damage is where the annotations are, which is a twentieth of the file.
    const std::size_t annotations = whole.find("DATA;"), geometry = whole.find("ADVANCED_FACE");
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same files every time
    std::size_t read = 0;
    for (int copy = 0; copy < 200; ++copy) {
        std::string damaged = whole;
        for (int i = 0; i < 8; ++i) {
            const std::size_t at =
                i % 2 == 0 ? random() % whole.size() : annotations + random() % (geometry - annotations);
            damaged[at] = static_cast<char>(random());
        }
        try {
            read += Reading(damaged).annotations.size();
        } catch (const part21::ReadError&) {
        }
    }
    EXPECT_GT(read, 200 * 12); // of 17 that the whole one has
}

} // namespace
} // namespace zeq
