// Scenes of sound documents and of faulty ones.
#include "scene/model.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>

#include <gtest/gtest.h>

#include "zeq_api/exchange_pmi/annotation_view.h"

namespace zeq::scene {
namespace {

using test::Model;
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += (text.empty() ? "" : "\n") + line;
    return text;
}

ExcTransformation scaledBy(double factor) {
    ExcTransformation transformation;
    for (std::size_t i = 0; i < 3; ++i) transformation.affine()[i] = ExcVector3d();
    transformation.affine()[0].x() = factor;
    transformation.affine()[1].y() = factor;
    transformation.affine()[2].z() = factor;
    return transformation;
}

TEST(Scene, LeavesOutWhatIsFaultyWithAWarning) {
    const struct {
        std::string name;
        std::function<void(Model&)> damage;
        std::string warning;
        std::size_t triangles = 2, lines = 1, markers = 1, instances = 2;
    } rows[] = {
        {"nothing", [](Model&) {}, ""},
        {"an index outside the vertices",
         [](Model& m) {
             m.face->setPolygons({{4, {0, 1, 2, 0, 2, 4}}, {4, {-1, 0, 1}}});
         },
         "block 3 'Plate', face 17: 2 triangles are left out, with corners that are none of its 4 vertices "
         "or no "
         "numbers",
         1},
        {"a coordinate that is no number",
         [](Model& m) {
             m.face->setVertices(std::vector<float>{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, notANumber, 0});
         },
         "block 3 'Plate', face 17: 1 triangle is left out, with corners that are none of its 4 vertices or "
         "no "
         "numbers",
         1},
        {"only bad triangles", [](Model& m) { m.face->setVertices(std::vector<float>{}); },
         "block 3 'Plate', face 17: 2 triangles are left out, with corners that are none of its 0 vertices "
         "or no "
         "numbers\nblock 3 'Plate', face 17: it has 4 normals for 0 vertices; those of its triangles are "
         "taken",
         0},
        {"no triangles", [](Model& m) { m.face->setPolygons({}); },
         "block 3 'Plate', face 17: it has no triangles", 0},
        {"an unknown primitive",
         [](Model& m) {
             m.face->setPolygons({{4, {0, 1, 2}}, {7, {0, 1, 2, 3}}});
         },
         "block 3 'Plate', face 17: a primitive of the unknown type 7", 1},
        {"strip and fan",
         [](Model& m) {
             m.face->setPolygons({{5, {0, 1, 3, 2}}, {6, {0, 1, 2, 3}}});
         },
         "", 4},
        {"too few normals",
         [](Model& m) {
             m.face->setNormals(std::vector<float>{0, 0, 1});
         },
         "block 3 'Plate', face 17: it has 1 normals for 4 vertices; those of its triangles are taken"},
        {"normals of no length", [](Model& m) { m.face->setNormals(std::vector<float>(12, 0.0F)); }, ""},
        {"an edge with bad points",
         [](Model& m) {
             m.edge->setPoints({0, 0, 0, 1, 0, 0, notANumber, 0, 0});
             m.edge->setLineIndices({0, 1, 2, 3});
         },
         "block 3 'Plate', edge 18: 2 points are left out, not there or no numbers"},
        {"an edge of one point", [](Model& m) { m.edge->setLineIndices({1}); },
         "block 3 'Plate', edge 18: it has fewer than two points", 2, 0},
        {"a point that is not there", [](Model& m) { m.points->setPointIndices({1}); },
         "block 3 'Plate', points: 1 point is left out, not there or no numbers", 2, 1, 0},
        {"a placement that is no number",
         [](Model& m) { m.node->setTransformation(std::make_shared<ExcTransformation>(scaledBy(NAN))); },
         "block 3 'Plate', node '': its placement is not of numbers and is ignored"},
        {"an instance without volume", [](Model& m) { m.reference->setTransformation(scaledBy(0)); },
         "instance 'Plate:1' in 'Product' is left out: block 3 is placed by no sound transformation", 2, 1, 1,
         1},
        {"a missing block", [](Model& m) { m.place(9, L"Lost", m.plate); },
         "instance 'Lost' in 'Plate' is left out: block 9 is missing"},
        {"a block in itself", [](Model& m) { m.place(3, L"Again", m.plate); },
         "instance 'Again' in 'Plate' is left out: block 3 contains itself"},
        {"a camera that looks nowhere",
         [](Model& m) {
             const ExcVisuCapturePtr view = m.addView(L"A", {});
             view->setCamera(ExcCamera());
         },
         "block 3 'Plate', view 'A': its camera looks nowhere"},
        {"display data of no block",
         [](Model& m) {
             auto other = std::make_shared<ExcBlockVisualization>();
             other->setBlockId(8);
             m.more.push_back(other);
         },
         "block 8 has display data and is not in the structure"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Model model;
        row.damage(model);
        const Scene scene = model.build();
        EXPECT_EQ(joined(scene.warnings), row.warning);
        EXPECT_EQ(scene.instances.size(), row.instances);
        const Shape& shape = scene.parts[1].shape;
        EXPECT_EQ(shape.triangles.size(), 3 * row.triangles);
        EXPECT_EQ(shape.lines.size(), row.lines);
        EXPECT_EQ(shape.markers.size(), row.markers);
        ASSERT_EQ(shape.normals.size(), shape.vertices.size());
        for (const std::uint32_t index : shape.triangles) EXPECT_LT(3 * index, shape.vertices.size());
        for (std::size_t i = 0; i < shape.vertices.size(); ++i) {
            EXPECT_TRUE(std::isfinite(shape.vertices[i]));
            EXPECT_EQ(shape.normals[i], i % 3 == 2 ? 1 : 0);
        }
    }
}

TEST(Scene, IsMadeOfStructuresOfAnySize) {
    Model doubling; // of 60 levels
    ExcBlockPtr around = doubling.plate;
    for (std::uint64_t id = 100; id < 160; ++id) {
        const ExcBlockPtr inner = doubling.addBlock(id, L"Level");
        doubling.place(id, L"left", around);
        doubling.place(id, L"right", around);
        around = inner;
    }
    const Scene bounded = doubling.build();
    EXPECT_EQ(bounded.instances.size(), mostInstances);
    EXPECT_EQ(joined(bounded.warnings),
              "the structure has more than 1000000 instances; the others are left out");

    Model deep;
    ExcVisuNodePtr node = deep.node;
    around = deep.plate;
    constexpr std::uint64_t levels = 1'000'000;
    for (std::uint64_t i = 0; i < levels; ++i) {
        const auto inner = std::make_shared<ExcVisuNode>();
        node->addChildNode(inner);
        node = inner;
        if (i >= 100'000) continue;
        const ExcBlockPtr block = deep.addBlock(10 + i, L"Level");
        deep.place(10 + i, L"", around);
        around = block;
    }
    node->setMesh(deep.node->mesh());
    const Scene nested = deep.build();
    EXPECT_EQ(nested.instances.size(), 100'002);
    EXPECT_EQ(nested.parts[1].shape.faces.size(), 2);
    EXPECT_EQ(joined(nested.warnings), "");
}

TEST(Scene, CallsASinglePartByItsName) {
    Model model;
    model.structure->setProductName(L"SPAXIopPSProductDummyReference");
    model.reference->setName(L"SPAXIopPSProductDummyInstance");
    ASSERT_TRUE(model.structure->isPart());
    const Scene scene = model.build();
    EXPECT_EQ(scene.parts[0].name, "Plate");
    EXPECT_EQ(pathOf(scene, 1), "Plate/Plate");
}

TEST(Scene, InheritsColoursFromWhatIsAround) {
    Model model;
    model.reference->setColor({10, 20, 30, 128});
    const auto drawn = [&] {
        const Scene scene = model.build();
        const Look look = scene.parts[1].shape.faces[0].look.within(scene.instances[1].look);
        return look.shown(plainSurface);
    };
    EXPECT_EQ(drawn(), (Color{10, 20, 30, 128}));
    auto attributes = std::make_shared<ExcVisuAttributes>();
    attributes->setColor(std::make_shared<ExcColor>(0xFFFF, 0, 0x8000)); // of 16 bits
    model.node->setAttributes(attributes);
    EXPECT_EQ(drawn(), (Color{255, 0, 128, 128}));
    model.node->setType(ExcVisuNode::EType::ROOT); // of the part as a whole
    EXPECT_EQ(drawn(), (Color{10, 20, 30, 128}));
    model.reference->setColor({});
    EXPECT_EQ(drawn(), (Color{255, 0, 128, 255}));
    model.face->setColor({1, 2, 3, 255});
    EXPECT_EQ(drawn(), (Color{1, 2, 3, 255}));
    attributes->setHidden(true);
    model.reference->setSuppressed(true);
    const Scene scene = model.build();
    EXPECT_TRUE(scene.parts[1].shape.faces[0].isHidden);
    EXPECT_TRUE(scene.instances[1].isHidden);
    EXPECT_EQ(pathOf(scene, 1), "Product/Plate:1");
}

TEST(Scene, PlacesWhatIsMirroredOrInAnotherUnit) {
    Model model;
    model.display->setUnits(ELengthUnitType::inch);
    ExcTransformation mirror;
    mirror.affine()[0].x() = -2;
    mirror.translation().x() = 1;
    model.node->setTransformation(std::make_shared<ExcTransformation>(mirror));
    const Scene scene = model.build();
    const Shape& shape = scene.parts[1].shape;
    EXPECT_FLOAT_EQ(shape.vertices[3], -25.4F);
    EXPECT_EQ(shape.normals[2], 1);
    EXPECT_EQ(shape.triangles, (std::vector<std::uint32_t>{1, 0, 2, 2, 0, 3})); // counter-clockwise as before
}

TEST(Scene, ShowsInAViewItsOwnAnnotations) {
    Model model;
    model.addAnnotation(L"40");
    model.addAnnotation(L"41");
    ExcClippingPlane clipping;
    clipping.setHasPlane(true);
    clipping.setOrigin({0, 0, 7});
    clipping.setVectorU({2, 0, 0});
    clipping.setVectorV({0, 2, 0});
    model.addView(L"Top", {L"41", L"42", L"nowhere"})->setClippingPlane(clipping);
    auto data = std::make_shared<ExcBlockMechanicalData>();
    data->setBlockId(3);
    auto pmi = std::make_shared<ExcPMIData>();
    auto set = std::make_shared<ExcPMIAnnotationSet>();
    auto plane = std::make_shared<ExcPMIAnnotationView>();
    plane->setOrigin({0, 0, 5});
    plane->setVectorU({0, 1, 0});
    plane->setVectorV({0, 0, 1});
    for (const wchar_t* const id : {L"41", L"42"}) {
        auto note = std::make_shared<ExcPMINote>();
        note->setId(id);
        note->setPosition({3, 4});
        auto linked = std::make_shared<ExcEntity>();
        linked->setType(ExcEntity::EType::fsp);
        linked->fsp() = std::make_shared<ExcFullSubentPath>(17);
        linked->fsp()->setSubentType(ExcFullSubentPath::ESubentType::face);
        note->addLinkedElement(linked);
        plane->addNote(note);
    }
    set->addView(plane);
    pmi->addAnnotationSet(set);
    data->setPMIData(pmi);
    model.more.push_back(data);

    const Scene scene = model.build();
    const Part& part = scene.parts[1];
    ASSERT_EQ(part.annotations.size(), 3); // the last one is only said
    EXPECT_EQ(part.annotations[0].kind, "dimension diameter");
    EXPECT_EQ(part.annotations[0].shape.lines[0].count, 4); // closed
    EXPECT_FALSE(part.annotations[2].isDrawn());
    EXPECT_EQ(part.annotations[1].links[0].id, "17");
    EXPECT_EQ(part.annotations[2].plane.origin.y, 3);
    EXPECT_EQ(part.annotations[2].plane.origin.z, 9);
    ASSERT_EQ(part.views.size(), 1);
    EXPECT_EQ(part.views[0].annotations, (std::vector<std::uint32_t>{1, 2}));
    EXPECT_EQ(part.views[0].clipping, (std::array<double, 4>{0, 0, 1, -7}));
    EXPECT_EQ(part.views[0].camera.height, 40);
}

/// How far the strokes of a shape reach along x, y and z.
std::array<Vec, 2> extentOf(const Shape& shape) {
    std::array<Vec, 2> extent{Vec{1e9, 1e9, 1e9}, Vec{-1e9, -1e9, -1e9}};
    for (const std::vector<float>* const points : {&shape.linePoints, &shape.vertices})
        for (std::size_t i = 0; i + 2 < points->size(); i += 3) {
            const Vec point{(*points)[i], (*points)[i + 1], (*points)[i + 2]};
            auto& [low, high] = extent;
            low = {std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z)};
        }
    return extent;
}

double areaOf(const Shape& shape) {
    double area = 0;
    const auto at = [&](std::size_t i) {
        const float* const p = &shape.vertices[3 * std::size_t{shape.triangles[i]}];
        return Vec{p[0], p[1], p[2]};
    };
    for (std::size_t i = 0; i < shape.triangles.size(); i += 3)
        area += length(cross(at(i + 1) - at(i), at(i + 2) - at(i))) / 2;
    return area;
}

TEST(Scene, DrawsTheTextsOfAnnotationsInTheirPlanes) {
    Model model;
    const ExcVisuPMIPtr annotation = model.addAnnotation(L"40");
    annotation->setEdges({});
    const auto addText = [&](double height) {
        auto text = std::make_shared<ExcVisuText>();
        text->setText(L"⌖H");
        text->setAnchorPoint({5, 0, 0});
        text->setDirection({0, 1, 0});
        text->setNormal({1, 0, 0});
        ExcVisuFont font;
        font.setTextHeight(height);
        text->setFont(font);
        annotation->addText(text);
    };
    addText(2);
    addText(0);
    const Scene scene = model.build();
    const Annotation& drawn = scene.parts[1].annotations[0];
    EXPECT_EQ(drawn.value, "⌖H");
    const auto [low, high] = extentOf(drawn.shape);
    EXPECT_NEAR(low.x, 5, 1e-6);
    EXPECT_NEAR(high.x, 5, 1e-6);
    EXPECT_NEAR(high.z, 2, 0.2); // upwards
    EXPECT_GT(high.y, 2);
    EXPECT_GE(low.y, 0);
    EXPECT_EQ(scene.warnings, std::vector<std::string>{"block 3 'Plate', annotation 40: a text is nowhere"});
}

TEST(Scene, DrawsTheValueOfAnAnnotationThatIsOnlyPlaced) {
    Model model;
    auto dimension = std::make_shared<ExcPMIDimension>();
    dimension->setId(L"50");
    dimension->setSubType(ExcPMIDimension::ESubType::diameter);
    dimension->setValue(35);
    dimension->setPosition({3, 4});
    auto nowhere = std::make_shared<ExcPMIDimension>(*dimension);
    nowhere->setId(L"51");
    nowhere->setPosition({0, 0});
    auto leader = std::make_shared<ExcPMILeader>(), beyond = std::make_shared<ExcPMILeader>();
    leader->setPoints({{3, 4}, {0, -20}});
    beyond->setPoints({{3, 4}, {0, 1e300}});
    dimension->addLeader(leader);
    dimension->addLeader(beyond);
    auto far = std::make_shared<ExcPMIDimension>(*dimension);
    far->setId(L"52");
    far->setPosition({1e100, 0});
    auto plane = std::make_shared<ExcPMIAnnotationView>();
    plane->setVectorU({0, 1, 0});
    plane->setVectorV({0, 0, 1});
    plane->addDimension(dimension);
    plane->addDimension(nowhere);
    plane->addDimension(far);
    auto set = std::make_shared<ExcPMIAnnotationSet>();
    set->addView(plane);
    auto pmi = std::make_shared<ExcPMIData>();
    pmi->addAnnotationSet(set);
    auto data = std::make_shared<ExcBlockMechanicalData>();
    data->setBlockId(3);
    data->setPMIData(pmi);
    model.more.push_back(data);

    const Scene scene = model.build();
    const std::vector<Annotation>& annotations = scene.parts[1].annotations;
    ASSERT_EQ(annotations.size(), 3);
    for (const Annotation& each : annotations) EXPECT_EQ(each.value, "⌀35");
    EXPECT_FALSE(annotations[1].isDrawn());
    EXPECT_FALSE(annotations[2].isDrawn()) << "farther than a float reaches";
    ASSERT_TRUE(annotations[0].isDrawn());
    const auto [low, high] = extentOf(annotations[0].shape);
    EXPECT_NEAR(high.x - low.x, 0, 1e-6);
    EXPECT_NEAR(low.z, -20, 1e-5); // the tip of the leader
    EXPECT_NEAR(low.y, 0, 0.01);
    EXPECT_GT(high.y, 3);
    EXPECT_EQ(annotations[0].shape.faces.size(), 1); // the arrow head

    plane->setVectorU({0, 2, 0}); // not of length one
    const Shape stretched = model.build().parts[1].annotations[0].shape;
    EXPECT_EQ(stretched.normals[0], 1);
    EXPECT_NEAR(extentOf(stretched)[0].z, -20, 1e-5);
}

TEST(Scene, FillsOutlinesOfAnyForm) {
    struct Row {
        const char* name;
        std::vector<float> outline;
        double area;
    };
    const std::vector<Row> rows{
        {"triangle", {0, 0, 9, 2, 0, 9, 0, 2, 9}, 2},
        {"clockwise", {0, 0, 9, 0, 2, 9, 2, 0, 9}, 2},
        {"an L, upright", {0, 7, 0, 3, 7, 0, 3, 7, 1, 1, 7, 1, 1, 7, 4, 0, 7, 4}, 6},
        {"a star", {0, 3, 0, -1, 1, 0, -3, 0, 0, -1, -1, 0, 0, -3, 0, 1, -1, 0, 3, 0, 0, 1, 1, 0}, 12},
        {"no area", {0, 0, 0, 1, 1, 1, 2, 2, 2}, 0},
    };
    for (const Row& row : rows) {
        Model model;
        const ExcVisuPMIPtr annotation = model.addAnnotation(L"40");
        auto outline = std::make_shared<ExcVisuEdge>();
        outline->setPoints(std::vector<float>(row.outline));
        outline->setLineType(ExcVisuEdge::ELineType::line_loop_filled);
        annotation->setEdges({outline});
        const Scene scene = model.build();
        const Shape& shape = scene.parts[1].annotations[0].shape;
        EXPECT_NEAR(areaOf(shape), row.area, 1e-5) << row.name;
        EXPECT_EQ(shape.lines.size(), 1) << row.name;
    }
}

} // namespace
} // namespace zeq::scene
