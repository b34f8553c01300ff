// What documents do not show of the scene's classes: refusals, oddities of the interface, copies, and any depth.
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/binary_form.h"
#include "support/child_lists.h"
#include "support/json_text.h"
#include "support/log_capture.h"
#include "support/small_stack.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/exchange_object/exchange_object_wrapper.h"
#include "zeq_api/exchange_visualization/scene.h"
#include "zeq_api/json/codecs.h"

namespace zeq {
namespace {

using test::refusalOf;
using test::writtenBy;

TEST(VisualizationLists, RefuseNullWithAWarningAndTakeThemselves) {
    using test::expectRefusals;
    expectRefusals<ExcVisuAttributes, ExcVisuMaterial>(
        "ExcVisuAttributes: attempt to add null Material object.", &ExcVisuAttributes::addMaterial,
        &ExcVisuAttributes::addMaterials, &ExcVisuAttributes::setMaterials, &ExcVisuAttributes::materials);
    expectRefusals<ExcVisuMesh, ExcVisuFace>("ExcVisuMesh: attempt to add null Visu Face object.",
                                             &ExcVisuMesh::addFace, &ExcVisuMesh::addFaces,
                                             &ExcVisuMesh::setFaces, &ExcVisuMesh::faces);
    expectRefusals<ExcVisuMesh, ExcVisuEdge>("ExcVisuMesh: attempt to add null Visu Edge object.",
                                             &ExcVisuMesh::addEdge, &ExcVisuMesh::addEdges,
                                             &ExcVisuMesh::setEdges, &ExcVisuMesh::edges);
    expectRefusals<ExcVisuWire, ExcVisuEdge>("ExcVisuWire: attempt to add null Visu Edge object.",
                                             &ExcVisuWire::addEdge, &ExcVisuWire::addEdges,
                                             &ExcVisuWire::setEdges, &ExcVisuWire::edges);
    expectRefusals<ExcVisuPMI, ExcVisuEdge>("ExcVisuPMI: attempt to add null Visu Edge object.",
                                            &ExcVisuPMI::addEdge, &ExcVisuPMI::addEdges,
                                            &ExcVisuPMI::setEdges, &ExcVisuPMI::edges);
    expectRefusals<ExcVisuPMI, ExcVisuText>("ExcVisuPMI: attempt to add null Visu Text object.",
                                            &ExcVisuPMI::addText, &ExcVisuPMI::addTexts,
                                            &ExcVisuPMI::setTexts, &ExcVisuPMI::texts);
    expectRefusals<ExcVisuPMI, ExcEntity>("ExcVisuPMI: attempt to add null Linked Element object.",
                                          &ExcVisuPMI::addLinkedElement, &ExcVisuPMI::addLinkedElements,
                                          &ExcVisuPMI::setLinkedElements, &ExcVisuPMI::linkedElements);
    expectRefusals<ExcVisuPointSet, ExcVisuPoints>("ExcVisuPointSet: attempt to add null Visu Points object.",
                                                   &ExcVisuPointSet::addPoints, &ExcVisuPointSet::addPoints,
                                                   &ExcVisuPointSet::setPoints, &ExcVisuPointSet::points);
    expectRefusals<ExcVisuNode, ExcVisuNode>("ExcVisuNode: attempt to add null child Visu Node object.",
                                             &ExcVisuNode::addChildNode, &ExcVisuNode::addChildNodes,
                                             &ExcVisuNode::setChildNodes, &ExcVisuNode::childNodes);
    expectRefusals<ExcVisualizationData, ExcVisuNode>(
        "ExcVisualizationData: attempt to add null Scene Root Visu Node object.",
        &ExcVisualizationData::addSceneRootNode, &ExcVisualizationData::addSceneRootNodes,
        &ExcVisualizationData::setSceneRootNodes, &ExcVisualizationData::sceneRootNodes);
    expectRefusals<ExcVisualizationData, ExcVisuView>(
        "ExcVisualizationData: attempt to add null Visu View object.", &ExcVisualizationData::addView,
        &ExcVisualizationData::addViews, &ExcVisualizationData::setViews, &ExcVisualizationData::views);
    expectRefusals<ExcVisualizationData, ExcVisuCapture>(
        "ExcVisualizationData: attempt to add null Visu Capture object.", &ExcVisualizationData::addCapture,
        &ExcVisualizationData::addCaptures, &ExcVisualizationData::setCaptures,
        &ExcVisualizationData::captures);
}

TEST(Capture, HasNoPluralAddOfElements) {
    test::LogCapture log(mv_cvx::Warning);
    ExcVisuCapture capture;
    capture.addLinkedElement(nullptr);
    capture.setLinkedElements({std::make_shared<ExcEntity>(), nullptr});
    EXPECT_EQ(capture.linkedElements().size(), 1U);
    const test::LogLine refused{3, "ExcVisuCapture: attempt to add null Linked Element object."};
    EXPECT_EQ(log.take(), std::vector(2, refused));
    // Their key is not their name.
    EXPECT_NE(writtenBy(capture).find(L"\"bodies\":[{"), std::wstring::npos);
}

TEST(Texture, HasTwoDirectionsAndThreeForItsRotation) {
    ExcVisuTexture texture;
    const struct {
        std::string text;
        int directions;
        std::function<void(int)> get;
        std::function<void(int)> set;
    } accessors[] = {
        {"Texture wrap mode has only 0 (U) and 1 (V) directions.", 2, [&](int d) { texture.wrapMode(d); },
         [&](int d) { texture.setWrapMode(d, ExcVisuTexture::EWrapMode::clamp); }},
        {"Texture translation has only 0 (U) and 1 (V) directions.", 2,
         [&](int d) { texture.translation(d); }, [&](int d) { texture.setTranslation(d, 1); }},
        {"Texture scale has only 0 (U) and 1 (V) directions.", 2, [&](int d) { texture.scale(d); },
         [&](int d) { texture.setScale(d, 1); }},
        {"Texture rotation has only 0 (U), 1 (V) and 2 (W) directions.", 3,
         [&](int d) { texture.rotation(d, 5); }, [&](int d) { texture.setRotation(d, 1); }},
    };
    for (const auto& [text, directions, get, set] : accessors)
        for (const int direction : {-1, 0, 1, 2, 3}) {
            const bool isThere = direction >= 0 && direction < directions;
            EXPECT_EQ(refusalOf([&, &call = get] { call(direction); }), isThere ? "" : text);
            EXPECT_EQ(refusalOf([&, &call = set] { call(direction); }), isThere ? "" : text);
        }
    texture.setRotation(2, 0.5);
    texture.setFilPath(L"f");
    EXPECT_EQ(texture.rotation(2), 0.5);
    const std::wstring text = writtenBy(texture);
    EXPECT_NE(text.find(L"\"uv_rotation\":{\"u\":1.0,\"v\":1.0,\"w\":0.5}"), std::wstring::npos) << text;
    EXPECT_NE(text.find(L"\"file\":\"f\""), std::wstring::npos);
}

TEST(Material, AddsTheColourThatIsAskedFor) {
    ExcVisuMaterial material;
    EXPECT_TRUE(std::as_const(material).textures(ExcVisuMaterial::ETextureType::normal).empty());
    EXPECT_NE(writtenBy(material).find(L"\"colors\":{},"), std::wstring::npos);
    EXPECT_EQ(std::as_const(material).color(ExcVisuMaterial::EColorType::specular), ExcVisuMaterial::Color());
    const std::wstring text = writtenBy(material);
    EXPECT_NE(text.find(L"\"colors\":{\"specular\":[0.0,0.0,0.0,0.0]}"), std::wstring::npos) << text;
    EXPECT_NE(text.find(L"\"textures\":{}"), std::wstring::npos) << "asking for a slot adds none";

    test::LogCapture log(mv_cvx::Warning);
    const auto texture = std::make_shared<ExcVisuTexture>();
    material.addTexture(ExcVisuMaterial::ETextureType::normal, nullptr);
    EXPECT_NE(writtenBy(material).find(L"\"textures\":{}"), std::wstring::npos);
    material.addTextures(ExcVisuMaterial::ETextureType::normal, {texture, nullptr, texture});
    material.setTextures(ExcVisuMaterial::ETextureType::unknown, {nullptr, texture});
    EXPECT_EQ(material.textures(ExcVisuMaterial::ETextureType::normal).size(), 2U);
    EXPECT_EQ(material.textures(ExcVisuMaterial::ETextureType::unknown).size(), 1U);
    const test::LogLine refused{3, "ExcVisuMaterial: attempt to add null Texture object."};
    EXPECT_EQ(log.take(), std::vector(3, refused));
}

TEST(LineAttribute, HasNoStyleSeven) {
    ExcVisuLineAttribute attribute;
    attribute.setLineStyle(static_cast<ExcVisuLineAttribute::ELineStyle>(7));
    EXPECT_EQ(writtenBy(attribute), LR"({"line_weight":0.0,"line_style":"undefined"})");
}

TEST(Face, LetsBulkDataMove) {
    ExcVisuFace face;
    std::vector<float> vertices(1000, 1.0F);
    const float* const data = vertices.data();
    face.setVertices(std::move(vertices));
    EXPECT_EQ(face.vertices().data(), data);

    // Larger than any part that is encoded at once, and not of whole groups.
    std::vector<float> points(10'001);
    for (std::size_t i = 0; i < points.size(); ++i) points[i] = static_cast<float>(i) / 7;
    ExcVisuEdge edge;
    edge.setPoints(points);
    const std::string bytes = test::binaryForm(edge);
    JsonDocument document;
    edge.writeObject(document, document.GetAllocator());
    std::string expected;
    JsonBinaryIO::encode(document, expected);
    EXPECT_EQ(bytes, expected);
    ExcVisuEdge back;
    for (const std::size_t windowSize : {0, 1, 100, 10'000}) {
        ASSERT_TRUE(test::readDirectly(back, bytes, windowSize)) << windowSize;
        EXPECT_EQ(back.points(), points);
    }
}

TEST(Node, IsClonedWithMeshesOfItsOwn) {
    ExcVisuNode node;
    auto child = std::make_shared<ExcVisuNode>();
    auto mesh = std::make_shared<ExcVisuMesh>();
    mesh->addFace(std::make_shared<ExcVisuFace>());
    child->setMesh(mesh);
    child->setGroupName(L"child");
    node.addChildNodes({child, std::make_shared<ExcVisuNode>()});
    const std::wstring before = writtenBy(node);
    const ExcVisuNodePtr copy = node.clone();
    EXPECT_EQ(writtenBy(*copy), before);
    mesh->faces().front()->setId(L"changed");
    child->setGroupName(L"changed");
    EXPECT_EQ(writtenBy(*copy), before);
    EXPECT_NE(writtenBy(node), before);
}

/// A chain of nodes, the deepest of which has a name.
ExcVisuNodePtr chain(int depth) {
    auto node = std::make_shared<ExcVisuNode>();
    node->setGroupName(L"deepest");
    for (int i = 1; i < depth; ++i) {
        auto parent = std::make_shared<ExcVisuNode>();
        parent->addChildNodes({node, std::make_shared<ExcVisuNode>()});
        node = std::move(parent);
    }
    return node;
}

int depthOf(const ExcVisuNode* node) {
    int depth = 1;
    for (; !node->childNodes().empty(); ++depth) node = node->childNodes().front().get();
    EXPECT_EQ(node->groupName(), L"deepest");
    return depth;
}

TEST(Node, MayBeAMillionLevelsDeep) {
    static constexpr int depth = 1'000'000;
    test::onSmallStack([] {
        auto object = std::make_shared<ExcBlockVisualization>();
        auto scene = std::make_shared<ExcVisualizationData>();
        scene->addSceneRootNode(chain(depth));
        object->setVisualizationData(scene);

        // In memory.
        const ExcVisuNodePtr copy = scene->sceneRootNodes().front()->clone();
        EXPECT_EQ(depthOf(copy.get()), depth);

        // In text.
        ExcVisualizationData fromText;
        test::readFrom(fromText, writtenBy(*scene));
        EXPECT_EQ(depthOf(fromText.sceneRootNodes().front().get()), depth);

        // In bytes, through a shared buffer.
        ExchangeObjectWrapper wrapper;
        wrapper.set(object);
        const std::wstring text = writtenBy(wrapper);
        ExchangeObjectWrapper reader;
        test::readFrom(reader, text);
        const auto received = std::dynamic_pointer_cast<ExcBlockVisualization>(reader.get());
        ASSERT_TRUE(received && received->visualizationData());
        EXPECT_EQ(depthOf(received->visualizationData()->sceneRootNodes().front().get()), depth);
    });
}

} // namespace
} // namespace zeq
