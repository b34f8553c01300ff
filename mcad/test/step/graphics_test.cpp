// How annotations of STEP files are drawn, the views that they are kept in, and shapes of triangles alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "step/annotation_graphics.h"
#include "step/contents.h"
#include "step/products.h"
#include "step/saved_views.h"
#include "step/tessellated_shapes.h"

namespace zeq {
namespace {

using step::AnnotationGraphics;
using step::SavedView;

/// Instances in a file, with a product #1 whose shape is the representation #5, in millimetres.
std::string fileOf(const std::string& instances) {
    return "ISO-10303-21;HEADER;ENDSEC;DATA;\n"
           "#1=PRODUCT_DEFINITION('','',$,$);#2=PRODUCT_DEFINITION_SHAPE('','',#1);\n"
           "#3=SHAPE_DEFINITION_REPRESENTATION(#2,#5);#5=SHAPE_REPRESENTATION('',(#40),#6);\n"
           "#6=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#7))REPRESENTATION_CONTEXT('"
           "',''));\n"
           "#7=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"
           "#8=CARTESIAN_POINT('',(10.,0.,0.));#9=DIRECTION('',(0.,1.,0.));#10=DIRECTION('',(0.,0.,1.));\n"
           "#11=AXIS2_PLACEMENT_3D('',#8,#9,#10);\n" +
           instances + "ENDSEC;END-ISO-10303-21;";
}

std::string textOf(const std::vector<float>& numbers) {
    std::string text;
    for (const float number : numbers) {
        const double rounded = std::round(number * 1000.0) / 1000 + 0.0;
        std::string each = std::to_string(rounded);
        each.erase(each.find_last_not_of('0') + 1);
        text += (text.empty() ? "" : " ") + (each.ends_with('.') ? each.substr(0, each.size() - 1) : each);
    }
    return text;
}

TEST(AnnotationGraphics, AreDrawnWhereTheFileSays) {
    const std::string occurrence = "#20=TESSELLATED_ANNOTATION_OCCURRENCE('',(),#21);";
    const std::string points = "#22=COORDINATES_LIST('',4,((0.,0.,0.),(1.,0.,0.),(1.,2.,0.),(0.,2.,0.)));";
    const struct {
        const char* what;
        std::string instances;
        std::vector<std::string> strokes;
        std::string corners; ///< indexes of triangles
        double millimeters = 1;
    } rows[]{
        {"a curve set, moved and turned",
         occurrence + points +
             "#21=(REPOSITIONED_TESSELLATED_ITEM(#11)REPRESENTATION_ITEM('')TESSELLATED_GEOMETRIC_SET((#23)))"
             ";"
             "#23=TESSELLATED_CURVE_SET('',#22,((1,2),(3,9)));",
         {"10 0 0 10 0 1"},
         ""},
        {"strips and fans, by way of indexes",
         occurrence + points +
             "#21=TESSELLATED_GEOMETRIC_SET('',(#23));"
             "#23=COMPLEX_TRIANGULATED_SURFACE_SET('',#22,4,((0.,0.,1.)),(4,3,2,1),((1,2,3,4)),((1,3,4),(1,2,"
             "8)));",
         {},
         "3 2 1 1 2 0 3 1 0"},
        {"polylines in inches that travel",
         "#20=ANNOTATION_CURVE_OCCURRENCE('',(),#21);#21=GEOMETRIC_CURVE_SET('',(#23));"
         "#23=POLYLINE('',(#8,#24));#24=CARTESIAN_POINT('',(25.4,0.,50.8));",
         {"0.394 0 0 1 0 2"},
         "",
         25.4},
        {"a quarter of a circle, backwards",
         "#20=ANNOTATION_CURVE_OCCURRENCE('',(),#21);#21=TRIMMED_CURVE('',#22,(#24),(#25),.F.,.CARTESIAN.);"
         "#22=CIRCLE('',#11,2.);#24=CARTESIAN_POINT('',(12.,0.,0.));#25=CARTESIAN_POINT('',(10.,0.,2.));",
         {"ends 12 0 0 10 0 2 of 19"},
         ""},
        {"the boundary of a filled area",
         "#20=ANNOTATION_FILL_AREA_OCCURRENCE('',(),#21,$);#21=ANNOTATION_FILL_AREA('',(#23));"
         "#23=POLYLINE('',(#8,#24,#8));#24=CARTESIAN_POINT('',(1.,1.,1.));",
         {"10 0 0 1 1 1 10 0 0"},
         ""},
        {"a set that contains itself", occurrence + "#21=TESSELLATED_GEOMETRIC_SET('',(#21));", {}, ""},
    };
    for (const auto& row : rows) {
        const part21::ExchangeStructure structure(fileOf(row.instances));
        step::StepFile file(structure, row.millimeters);
        const std::vector<AnnotationGraphics> all = readAnnotationGraphics(file);
        ASSERT_EQ(all.size(), 1U) << row.what;
        std::vector<std::string> strokes;
        for (const ExcVisuEdgePtr& edge : all[0].edges) {
            const std::vector<float>& at = edge->points();
            strokes.push_back(textOf(at));
            if (at.size() > 12)
                strokes.back() = "ends " + textOf({at.begin(), at.begin() + 3}) + " " +
                                 textOf({at.end() - 3, at.end()}) + " of " + std::to_string(at.size() / 3);
        }
        EXPECT_EQ(strokes, row.strokes) << row.what;
        std::string corners;
        if (all[0].fill)
            for (const int corner : all[0].fill->polygons().at(0).indices)
                corners += (corners.empty() ? "" : " ") + std::to_string(corner);
        EXPECT_EQ(corners, row.corners) << row.what;
        EXPECT_EQ(all[0].isDrawn(), !strokes.empty() || !corners.empty());
    }
}

TEST(AnnotationGraphics, KnowWhatTheyPresentAndWhereTheyStand) {
    const part21::ExchangeStructure structure(fileOf(
        "#20=DRAUGHTING_CALLOUT('Size',(#21,#22));#21=TESSELLATED_ANNOTATION_OCCURRENCE('',(#30),#23);"
        "#23=TESSELLATED_CURVE_SET('',#24,((1,2)));#24=COORDINATES_LIST('',2,((0.,0.,0.),(1.,0.,0.)));"
        "#22=ANNOTATION_PLACEHOLDER_OCCURRENCE_WITH_LEADER_LINE('',(),#25,.GPS_DATA.,7.,(#26));"
        "#25=GEOMETRIC_SET('',(#11,#8));#26=ANNOTATION_TO_MODEL_LEADER_LINE('',(#27,#28));"
        "#27=APLL_POINT('',(1.,2.,3.),.NONE.);#28=APLL_POINT('',(4.,5.,6.),.CIRCLE.);"
        "#30=PRESENTATION_STYLE_ASSIGNMENT((#31));#31=CURVE_STYLE('',#32,POSITIVE_LENGTH_MEASURE(0.5),#33);"
        "#32=DRAUGHTING_PRE_DEFINED_CURVE_FONT('dashed');#33=COLOUR_RGB('',1.,0.5,0.);"
        "#34=INVISIBILITY((#20));#35=DIMENSIONAL_SIZE(#37,'diameter');#37=SHAPE_ASPECT('','',#2,.T.);"
        "#36=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#37,#38,#20);"
        "#39=DRAUGHTING_MODEL_ITEM_ASSOCIATION('PMI representation to presentation link','',#35,#38,#20);"
        "#38=DRAUGHTING_MODEL('',(#20),#6);#41=MECHANICAL_DESIGN_AND_DRAUGHTING_RELATIONSHIP('','',#38,#5);"
        "#42=CHARACTERIZED_ITEM_WITHIN_REPRESENTATION('','',#20,#38);#43=PROPERTY_DEFINITION('','',#42);"
        "#44=PROPERTY_DEFINITION_REPRESENTATION(#43,#45);#45=REPRESENTATION('',(#46),#6);"
        "#46=DESCRIPTIVE_REPRESENTATION_ITEM('equivalent unicode string','\\X2\\2300\\X0\\5');"));
    step::StepFile file(structure, 1);
    const std::vector<AnnotationGraphics> all = readAnnotationGraphics(file);
    ASSERT_EQ(all.size(), 1U);
    const AnnotationGraphics& graphics = all[0];
    EXPECT_EQ(graphics.number, 20U);
    EXPECT_EQ(graphics.product, 1U);
    EXPECT_EQ(graphics.name, L"Size");
    EXPECT_EQ(graphics.text, L"\u23005");
    EXPECT_TRUE(graphics.isHidden);
    ASSERT_EQ(graphics.definitions.size(), 2U);
    EXPECT_EQ(graphics.definitions[0].number(), 35U) << "the link comes first";
    ASSERT_TRUE(graphics.style.color && graphics.anchor && graphics.plane);
    EXPECT_EQ(graphics.style.color->channel(ExcColor::EChannel::green), 128);
    EXPECT_EQ(graphics.style.width, 0.5);
    EXPECT_EQ(graphics.anchor->x, 10);
    EXPECT_EQ(graphics.plane->z.y, 1);
    EXPECT_EQ(graphics.height, 7);
    ASSERT_EQ(graphics.leaders.size(), 1U);
    EXPECT_EQ(graphics.leaders[0][1].z, 6);
}

TEST(SavedViews, LookFromWhereTheFileSays) {
    const std::string camera = "#21=VIEW_VOLUME(PROJECTION,#22,20.,0.,.F.,0.,.F.,.F.,#23);"
                               "#22=CARTESIAN_POINT('',(0.,0.,-5.));#23=PLANAR_BOX('',8.,50.,#11);"
                               "#24=DRAUGHTING_MODEL('Top',(#20,#26),#6);#25=DRAUGHTING_CALLOUT('',());"
                               "#26=ANNOTATION_PLANE('',(),#11,(#25));#27=PLANE('',#11);"
                               "#28=MECHANICAL_DESIGN_AND_DRAUGHTING_RELATIONSHIP('','',#24,#5);";
    const auto withProjection = [&camera](const std::string& projection) {
        std::string text = camera;
        return text.replace(text.find("PROJECTION"), 10, projection);
    };
    const struct {
        std::string instances;
        ExcCamera::EType type;
        double eye, target, measure; ///< coordinates along y
        bool isClipped;
    } rows[]{
        {"#20=CAMERA_MODEL_D3('',#11,#21);" + withProjection(".PARALLEL."), ExcCamera::EType::orthographic, 0,
         20, 50, false},
        {"#20=CAMERA_MODEL_D3_MULTI_CLIPPING('',#11,#21,(#27,#27));" + withProjection(".CENTRAL."),
         ExcCamera::EType::perspective, -5, 20, 90, true},
    };
    for (const auto& row : rows) {
        const part21::ExchangeStructure structure(fileOf(row.instances));
        step::StepFile file(structure, 1);
        const std::vector<SavedView> views = readSavedViews(file);
        ASSERT_EQ(views.size(), 1U);
        EXPECT_EQ(views[0].name, L"Top");
        EXPECT_EQ(views[0].product, 1U);
        EXPECT_EQ(views[0].annotations, std::vector<std::uint64_t>{25});
        const ExcCamera& found = views[0].camera;
        EXPECT_EQ(found.type(), row.type);
        EXPECT_EQ(found.eye().y(), row.eye);
        EXPECT_EQ(found.target().y(), row.target);
        EXPECT_EQ(found.up().x(), 1);
        EXPECT_NEAR(row.measure,
                    row.isClipped ? found.perspectiveViewAngle() : found.orthographicZoomFactor(), 1e-9);
        ASSERT_EQ(views[0].clipping.has_value(), row.isClipped);
        EXPECT_EQ(file.losses().all().size(), row.isClipped ? 1U : 0U) << "the second plane is told";
        if (row.isClipped) {
            EXPECT_EQ(views[0].clipping->coefficient(ExcClippingPlane::ECoefficient::b), 1);
        }
    }
}

TEST(TessellatedShapes, TravelWhereThereIsNoExactFace) {
    const part21::ExchangeStructure structure(
        fileOf("#40=TRIANGULATED_FACE('',#41,3,((0.,0.,-1.)),$,(),((1,2,3)));"
               "#41=COORDINATES_LIST('',3,((0.,0.,0.),(1.,0.,0.),(0.,1.,0.)));"
               "#42=TRIANGULATED_FACE('',#41,3,(),#43,(),((1,2,3)));#43=ADVANCED_FACE('',(),$,.T.);"
               "#44=COMPLEX_TRIANGULATED_FACE('',#41,3,(),$,(),(),());"));
    step::StepFile file(structure, 1);
    const step::TessellatedShapes shapes = readTessellatedShapes(file);
    EXPECT_EQ(shapes.facesInFile, 2U);
    ASSERT_EQ(shapes.meshes.size(), 1U);
    const std::vector<ExcVisuFacePtr>& faces = shapes.meshes.at(1)->faces();
    ASSERT_EQ(faces.size(), 1U);
    EXPECT_EQ(faces[0]->mechanicalId(), L"40");
    EXPECT_EQ(textOf(faces[0]->normals()), "0 0 -1 0 0 -1 0 0 -1");
    EXPECT_EQ(file.losses().all().size(), 1U) << "the face without a product";
}

/// What the models show, counted on their drawings.
struct ModelViews {
    const char* model;
    std::size_t callouts;
    std::map<std::wstring, std::size_t> views;
};

class GraphicsOfModels : public testing::TestWithParam<ModelViews> {};

TEST_P(GraphicsOfModels, AreAllThere) {
    const std::filesystem::path root = ZEQ_TEST_DATA "/../../..";
    std::string text;
    for (const auto& folder : {root / "samples/models", root / "../shared/models"}) {
        std::ifstream stream(folder / GetParam().model, std::ios::binary);
        if (stream && text.empty()) text.assign(std::istreambuf_iterator<char>(stream), {});
    }
    if (text.empty()) GTEST_SKIP() << "the model is not here";
    const part21::ExchangeStructure structure(text);
    step::StepFile file(structure, 1);
    const std::vector<AnnotationGraphics> all = readAnnotationGraphics(file);
    const auto drawn = std::ranges::count_if(all, &AnnotationGraphics::isDrawn);
    EXPECT_EQ(static_cast<std::size_t>(drawn), GetParam().callouts);
    EXPECT_EQ(step::readContents(file, step::readProducts(file)).graphicalAnnotations.size(),
              GetParam().callouts);
    const std::vector<SavedView> views = readSavedViews(file);
    for (const auto& [name, count] : GetParam().views) {
        const auto view = std::ranges::find(views, name, &SavedView::name);
        ASSERT_NE(view, views.end());
        EXPECT_EQ(view->annotations.size(), count);
    }
    for (const auto& [items, numbers] : file.losses().all())
        ADD_FAILURE() << numbers.size() << " are not drawn";
}

INSTANTIATE_TEST_SUITE_P(
    Models, GraphicsOfModels,
    testing::Values(
        ModelViews{"nist_ctc_01_asme1_ap242-e1.stp", 23, {{L"MBD_0", 23}}},
        ModelViews{"nist_ctc_03_asme1_ap242-e2.stp", 29, {{L"MBD_0", 29}}},
        ModelViews{"nist_ctc_05_asme1_ap242-e1.stp", 22, {{L"MBD_A", 13}, {L"MBD_B", 10}}},
        ModelViews{"nist_ftc_06_asme1_ap242-e2.stp", 67, {{L"MBD_A", 32}, {L"MBD_B", 13}, {L"MBD_C", 22}}},
        ModelViews{"nist_ftc_11_asme1_ap242-e2.stp", 14, {{L"MBD_A", 9}, {L"MBD_B", 5}}},
        ModelViews{"nist_stc_08_asme1_ap242-e3.stp",
                   44,
                   {{L"MBD_A", 15}, {L"MBD_B", 16}, {L"MBD_C", 5}, {L"MBD_D", 8}}}),
    [](const auto& row) { return std::string(row.param.model).substr(0, 11); });

} // namespace
} // namespace zeq
