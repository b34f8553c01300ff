// What the translator lets a host draw: scenes, their numbers and colours, and what steers them.
#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "tools/convexor_fixture.h"

namespace {

using namespace zeq;
using namespace zeq::test;
using NodeType = ExcVisuNode::EType;

/// The leaves below the group of that type.
std::vector<ExcVisuNodePtr> leaves(const ExcVisualizationDataPtr& scene, NodeType group) {
    for (const ExcVisuNodePtr& node : scene->sceneRootNodes().at(0)->childNodes())
        if (node->type() == group) return node->childNodes();
    return {};
}

std::size_t triangles(const Answer& answer) {
    std::size_t count = 0;
    for (const auto& scene : answer.scenes)
        for (const ExcVisuNodePtr& leaf : leaves(scene->visualizationData(), NodeType::MESHES))
            for (const ExcVisuFacePtr& face : leaf->mesh()->faces())
                count += face->polygons().at(0).indices.size() / 3;
    return count;
}

std::set<std::wstring> numbersOf(const std::string& type, const std::string& file) {
    const std::regex instance("#([0-9]+) *= *" + type);
    std::set<std::wstring> numbers;
    for (std::sregex_iterator at(file.begin(), file.end(), instance), end; at != end; ++at)
        numbers.insert(transport::fromUtf8((*at)[1].str()));
    return numbers;
}

TEST_F(Convexor, DrawsEachPartAndTheAssembly) {
    const Answer answer = importWith(sample("bench_vise.stp"), {});
    EXPECT_EQ(answer.scenes.size(), 11u);
    for (const auto& scene : answer.scenes) {
        const ExcBlockPtr block = answer.product->getBlockById(scene->blockId());
        ASSERT_TRUE(block && block->isPart());
        EXPECT_EQ(scene->visualizationData()->sceneRootNodes().at(0)->groupName(), block->name());
        const auto meshes = leaves(scene->visualizationData(), NodeType::MESHES);
        ASSERT_EQ(meshes.size(), 1u);
        EXPECT_TRUE(meshes[0]->isLeaf());
        EXPECT_EQ(meshes[0]->mesh()->geometryType(), EVisuGeometryType::part);
    }

    ASSERT_TRUE(answer.assembly);
    std::map<std::wstring, std::vector<ExcVisuNodePtr>> groups;
    std::vector<ExcVisuNodePtr> nodes = answer.assembly->visualizationData()->sceneRootNodes();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        groups[nodes[i]->groupName()].push_back(nodes[i]);
        const auto below = nodes[i]->childNodes(); // which the list may be moved for
        nodes.insert(nodes.end(), below.begin(), below.end());
    }
    EXPECT_EQ(nodes.size(), 30u);
    ASSERT_EQ(groups[L"Transport lock"].size(), 1u);
    EXPECT_TRUE(groups[L"Transport lock"][0]->attributes()->isHidden());
    ASSERT_EQ(groups[L"Fastener 2"].size(), 1u);
    EXPECT_NEAR(groups[L"Fastener 2"][0]->transformation()->translation().x(), -95, 1e-9);
    EXPECT_EQ(groups[L"Fastener 2"][0]->childNodes().size(), 2u);
}

TEST_F(Convexor, NumbersWhatItDrawsAsTheFileDoes) {
    const std::string text = contentOf("jaw_plate.stp");
    const Answer answer = importWith(sample("jaw_plate.stp"), {});
    ASSERT_EQ(answer.scenes.size(), 1u);
    const ExcVisuMeshPtr mesh = leaves(answer.scenes[0]->visualizationData(), NodeType::MESHES).at(0)->mesh();
    std::set<std::wstring> faces, edges;
    for (const ExcVisuFacePtr& face : mesh->faces()) faces.insert(face->mechanicalId());
    for (const ExcVisuEdgePtr& edge : mesh->edges()) edges.insert(edge->mechanicalId());
    EXPECT_EQ(faces, numbersOf("ADVANCED_FACE", text));
    EXPECT_EQ(edges, numbersOf("EDGE_CURVE", text));

    ASSERT_EQ(answer.mappings.size(), 1u);
    EXPECT_EQ(answer.mappings[0]->blockId(), answer.scenes[0]->blockId());
    std::map<std::wstring, std::size_t> types;
    for (const auto& [imported, original] : answer.mappings[0]->mappingData()->mapping()) {
        EXPECT_EQ(original->id(), L"#" + std::to_wstring(imported->fsp()->subentId()));
        ++types[original->description()];
    }
    EXPECT_EQ(types, (std::map<std::wstring, std::size_t>{{L"advanced_face", faces.size()},
                                                          {L"edge_curve", edges.size()}}));

    // The directory entries of an IGES file count its lines.
    const Answer iges = importWith(sample("jaw_plate.igs"), {});
    const auto& mapping = iges.mappings.at(0)->mappingData()->mapping();
    EXPECT_EQ(std::ranges::count_if(mapping,
                                    [](const auto& pair) {
                                        return pair.second->description() == L"trimmed_surface" &&
                                               pair.first->fsp()->subentId() % 2 == 1;
                                    }),
              14);
}

TEST_F(Convexor, DrawsFacesInTheirOwnColoursAndHidesThem) {
    std::string text = contentOf("jaw_plate.stp");
    const std::string painted = "PRESENTATION_REPRESENTATION(''";
    ASSERT_NE(text.find(painted), text.npos);
    text.insert(text.find('(', text.find(painted) + painted.size()) + 1, "#99000,#99010,");
    const auto numbers = numbersOf("ADVANCED_FACE", text);
    const std::string red = transport::toUtf8(*numbers.begin());
    const std::string hidden = transport::toUtf8(*numbers.rbegin());
    const auto styled = [](int number, const std::string& face) {
        const auto next = [&](int plus) { return "#" + std::to_string(number + plus); };
        return next(0) + "=STYLED_ITEM('',(" + next(1) + "),#" + face + ");\n" + next(1) +
               "=PRESENTATION_STYLE_ASSIGNMENT((" + next(2) + "));\n" + next(2) +
               "=SURFACE_STYLE_USAGE(.BOTH.," + next(3) + ");\n" + next(3) + "=SURFACE_SIDE_STYLE('',(" +
               next(4) + "));\n" + next(4) + "=SURFACE_STYLE_FILL_AREA(" + next(5) + ");\n" + next(5) +
               "=FILL_AREA_STYLE('',(" + next(6) + "));\n" + next(6) + "=FILL_AREA_STYLE_COLOUR(''," +
               next(7) + ");\n" + next(7) + "=COLOUR_RGB('',1.,0.5,0.);\n";
    };
    text.insert(text.rfind("ENDSEC;"),
                styled(99000, red) + styled(99010, hidden) + "#99020=INVISIBILITY((#99010));\n");
    const Answer answer = importWith(write("coloured.stp", text), {});
    ASSERT_EQ(answer.scenes.size(), 1u);
    const ExcVisualizationDataPtr scene = answer.scenes[0]->visualizationData();
    EXPECT_EQ((*scene->sceneRootNodes()[0]->attributes()->color())[ExcColor::EChannel::red], 168);
    const auto meshes = leaves(scene, NodeType::MESHES);
    ASSERT_EQ(meshes.size(), 2u);
    std::map<std::wstring, int> greens;
    for (const ExcVisuFacePtr& face : meshes[0]->mesh()->faces())
        if (face->color().hasRGB()) greens[face->id()] = face->color()[ExcColor::EChannel::green];
    EXPECT_EQ(greens, (std::map<std::wstring, int>{{*numbers.begin(), 128}}));
    EXPECT_TRUE(meshes[1]->attributes()->isHidden());
    ASSERT_EQ(meshes[1]->mesh()->faces().size(), 1u);
    EXPECT_EQ(meshes[1]->mesh()->faces()[0]->id(), *numbers.rbegin());
}

TEST_F(Convexor, TellsLevelsNamesAndLinesOfIgesEntities) {
    std::string text = contentOf("jaw_plate.igs");
    int surfaces = 0;
    for (std::size_t line = 0; line + 160 < text.size(); line = text.find('\n', line) + 1) {
        // The first of the two lines of an entry of trimmed surfaces; columns as IGES 5.3, 2.2.4.4 has them.
        const bool isEntry = text[line + 72] == 'D' && text.compare(line, 8, "     144") == 0;
        if (!isEntry || std::stoi(text.substr(line + 73, 7)) % 2 == 0) continue;
        text.replace(line + 24, 16, "       2       5"); // dashed, on level 5
        text.replace(text.find('\n', line) + 1 + 56, 8, "   PLATE");
        ++surfaces;
    }
    ASSERT_EQ(surfaces, 14);
    const Answer answer = importWith(write("levels.igs", text), {});
    ASSERT_EQ(answer.mappings.size(), 1u);
    ASSERT_TRUE(answer.mappings[0]->miscData() && answer.mappings[0]->entityData());
    ASSERT_EQ(answer.mappings[0]->miscData()->layers().size(), 1u);
    EXPECT_EQ(answer.mappings[0]->miscData()->layers()[0]->id(), 5);
    EXPECT_EQ(answer.mappings[0]->miscData()->layers()[0]->entities().size(), 14u);
    ASSERT_EQ(answer.mappings[0]->entityData()->data().size(), 14u);
    EXPECT_EQ(answer.mappings[0]->entityData()->data()[0]->name(), L"PLATE");
    EXPECT_EQ(answer.mappings[0]->entityData()->data()[0]->lineType(),
              ExcTopologicalEntityInformation::ELineType::dash);
}

TEST_F(Convexor, DrawsWhatTheOptionsAskFor) {
    const auto step = [](const std::wstring& what) {
        return LR"({"operation_type":"import","format_type":"STEP",)" + what + L"}";
    };
    const auto graphical = [](const std::wstring& what) {
        return LR"({"operation_type":"options","format_type":"graphical",)" + what + L"}";
    };
    const std::wstring inches = optionGroup(L"options", L"modeler", L"length_unit_type", L"inch");
    const std::wstring fine = graphical(LR"("tesselation_max_chordal_deviation":0.001)");
    const struct {
        std::wstring groups;
        std::size_t scenes;
        bool hasAssembly;
        std::size_t mappings;
    } rows[]{
        {L"", 1, true, 1},
        {step(LR"("import_geometry":false)"), 1, true, 1},
        {step(LR"("import_visualization":false)"), 0, true, 1},
        {step(LR"("import_root_visualization":false)"), 1, false, 1},
        {step(LR"("import_geometry":false,"import_visualization":false)"), 0, true, 0},
        {graphical(LR"("visu_brep_tesselation_mode":"auto")"), 1, true, 1},
        {graphical(LR"("visu_brep_tesselation_mode":"never")"), 0, true, 1},
        {graphical(LR"("visu_brep_tesselation_mode":"never_at_least_native_pmi")"), 0, true, 1},
        {optionGroup(L"options", L"modeler", L"preserve_model_associativity_mode", L"disabled"), 1, true, 0},
        {inches + L"," + fine, 1, true, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(transport::toUtf8(row.groups));
        const Answer answer = importAsSaid(sample("jaw_plate.stp"), row.groups);
        EXPECT_EQ(answer.scenes.size(), row.scenes);
        EXPECT_EQ(answer.assembly != nullptr, row.hasAssembly);
        EXPECT_EQ(answer.mappings.size(), row.mappings);
        EXPECT_EQ(answer.log.find(L"not honoured"), answer.log.npos);
    }

    // A deviation counts in the unit in which lengths travel.
    const Answer usual = importAsSaid(sample("jaw_plate.stp"), L"");
    const Answer finer = importAsSaid(sample("jaw_plate.stp"), fine);
    const Answer inInches = importAsSaid(sample("jaw_plate.stp"), inches + L"," + fine);
    EXPECT_GT(triangles(finer), triangles(inInches));
    EXPECT_GT(triangles(inInches), triangles(usual));
    EXPECT_EQ(inInches.scenes[0]->visualizationData()->units(), ELengthUnitType::inch);
    float farthest = 0;
    for (const ExcVisuFacePtr& face :
         leaves(inInches.scenes[0]->visualizationData(), NodeType::MESHES)[0]->mesh()->faces())
        farthest = std::max(farthest, *std::ranges::max_element(face->vertices()));
    EXPECT_NEAR(farthest, 50 / 25.4, 1e-6);
}

} // namespace
