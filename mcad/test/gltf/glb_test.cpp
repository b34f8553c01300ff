// What stands in a file that a scene becomes. Whether it is valid at all, validate.mjs asks others.
#include "gltf/glb.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <meshoptimizer.h>

#include "gltf/rigid_parts.h"
#include "scene/model.h"
#include "support/json_text.h"

namespace zeq::gltf {
namespace {

using scene::Placement;

struct File {
    explicit File(const scene::Scene& scene, const Options& options = {})
        : glb(makeGlb(scene, "test", options)) {
        std::uint32_t size = 0;
        std::memcpy(&size, &glb.head[12], sizeof size);
        const std::string text = glb.head.substr(20, size);
        std::wistringstream stream(std::wstring(text.begin(), text.end()));
        json = test::parse(stream);
    }
    std::wstring at(const wchar_t* list, unsigned index) const { return test::textOf(json[list][index]); }
    std::size_t count(const wchar_t* list) const { return json.HasMember(list) ? json[list].Size() : 0; }
    template <class T>
    T value(std::size_t offset) const {
        T result;
        std::memcpy(&result, &glb.body[offset], sizeof result);
        return result;
    }

    Glb glb;
    JsonDocument json;
};

TEST(Glb, HoldsAPartOnceAndItsInstancesAsNodes) {
    test::Model model;
    ExcTransformation aside;
    aside.translation() = {2000, 0, 0};
    model.place(3, L"Plate:2", nullptr)->setTransformation(aside);
    model.place(3, L"Plate:3", nullptr)->setColor({255, 0, 0});
    model.place(3, L"Plate:4", nullptr)->setHidden(true);
    const File file(model.build());
    EXPECT_EQ(
        file.at(L"nodes", 0),
        LR"({"name":"Product","rotation":[-0.7071067811865476,0,0,0.7071067811865476],"children":[1,2,3,4],)"
        LR"("extras":{"block":0}})");
    EXPECT_EQ(file.at(L"nodes", 1), LR"({"name":"Plate:1","mesh":0,"extras":{"block":3}})");
    EXPECT_EQ(
        file.at(L"nodes", 2),
        LR"({"name":"Plate:2","matrix":[1,0,0,0,0,1,0,0,0,0,1,0,2,0,0,1],"mesh":0,"extras":{"block":3}})");
    EXPECT_EQ(file.at(L"nodes", 3),
              LR"({"name":"Plate:3","mesh":1,"extras":{"block":3}})"); // its colour alone
    EXPECT_EQ(file.at(L"nodes", 4), LR"({"name":"Plate:4","extras":{"block":3,"hidden":true}})");
    EXPECT_EQ(file.at(L"meshes", 0), LR"({"name":"Plate","primitives":[)"
                                     LR"({"attributes":{"POSITION":0,"NORMAL":1},"indices":2,"material":0,)"
                                     LR"("extras":{"faces":["17"],"triangles":[2]}},)"
                                     LR"({"attributes":{"POSITION":3},"indices":4,"material":1,"mode":1,)"
                                     LR"("extras":{"edges":["18"],"segments":[1]}},)"
                                     LR"({"attributes":{"POSITION":5},"material":1,"mode":0}]})");
    EXPECT_EQ(file.count(L"accessors"), 6); // both meshes have the same
    EXPECT_EQ(file.at(L"accessors", 0), LR"({"bufferView":0,"byteOffset":0,"componentType":5126,"count":4,)"
                                        LR"("type":"VEC3","min":[0,0,0],"max":[0.001,0.001,0]})");
    EXPECT_EQ(file.value<float>(12), 0.001F);
    EXPECT_EQ(file.glb.triangles, 6);
    EXPECT_EQ(file.glb.hidden, 1);
}

TEST(Glb, HasAnnotationsAndViews) {
    test::Model model;
    model.addAnnotation(L"40");
    model.addAnnotation(L"41");
    ExcClippingPlane clipping;
    clipping.setHasCoefficients(true);
    clipping.setCoefficient(ExcClippingPlane::ECoefficient::c, 2);
    clipping.setCoefficient(ExcClippingPlane::ECoefficient::d, -10);
    model.addView(L"Top", {L"41"})->setClippingPlane(clipping);
    const File file(model.build());
    EXPECT_EQ(file.at(L"nodes", 1),
              LR"({"name":"Plate:1","mesh":0,"children":[2,3,4],"extras":{"block":3}})");
    EXPECT_EQ(file.at(L"nodes", 2),
              LR"({"name":"Note 40","mesh":1,"extras":{"kind":"dimension diameter","id":"40"}})");
    EXPECT_EQ(
        file.at(L"nodes", 3),
        LR"({"name":"Note 41","mesh":2,"extras":{"kind":"dimension diameter","id":"41","views":["Top"]}})");
    EXPECT_EQ(file.at(L"nodes", 4),
              LR"({"name":"Top","camera":0,"matrix":[1,0,0,0,0,1,0,0,0,0,1,0,0,0,0.1,1],)"
              LR"("extras":{"id":"Top","clipping":[0,0,1,-0.005],"annotations":["41"]}})");
    EXPECT_EQ(test::textOf(file.json[L"cameras"][0][L"orthographic"][L"ymag"]), L"0.02");
}

TEST(Glb, HasMeshesOfWhatIsHiddenIfTheyAreWanted) {
    test::Model model;
    model.reference->setHidden(true);
    model.addAnnotation(L"40");
    model.addView(L"Top", {});
    scene::Scene scene = model.build();
    scene.parts[1].annotations[0].isHidden = true;
    scene.parts[1].annotations[0].value = "D4\nA";
    const File without(scene), with(scene, {.withHidden = true});
    EXPECT_EQ(without.count(L"meshes"), 0);
    EXPECT_EQ(without.count(L"nodes"), 2);
    EXPECT_EQ(without.glb.hidden, 1);
    EXPECT_EQ(with.at(L"nodes", 1),
              LR"({"name":"Plate:1","mesh":0,"children":[2],"extras":{"block":3,"hidden":true}})");
    EXPECT_EQ(with.at(L"nodes", 2), LR"({"name":"Note 40","mesh":1,"extras":{"hidden":true,)"
                                    LR"("kind":"dimension diameter","id":"40","value":"D4\nA"}})");
    EXPECT_EQ(with.count(L"cameras"), 0); // it is not to be looked at
    EXPECT_EQ(with.glb.hidden, 0);
    EXPECT_EQ(with.glb.triangles, 2);
}

TEST(Glb, CompressedBecomesTheSameAgain) {
    // A strip along a circle, in more vertices than short indices reach in one of two parts.
    const auto bent = [](const ExcVisuFacePtr& face, int steps) {
        std::vector<float> points, normals;
        ExcVisuFace::Polygon strip{5, {}};
        for (int i = 0; i <= steps; ++i)
            for (const float z : {0.0F, 1.0F}) {
                const float angle = static_cast<float>(i) * 1e-4F;
                points.insert(points.end(), {7 * std::cos(angle), 7 * std::sin(angle), z});
                normals.insert(normals.end(), {std::cos(angle), std::sin(angle), 0});
                strip.indices.push_back(static_cast<int>(strip.indices.size()));
            }
        face->setVertices(std::move(points));
        face->setNormals(std::move(normals));
        face->setPolygons({strip});
    };
    for (const int steps : {5, 40'000}) {
        test::Model model;
        bent(model.face, steps);
        const scene::Scene scene = model.build();
        const File plain(scene), packed(scene, {.isCompressed = true});
        EXPECT_EQ(packed.at(L"accessors", 0), plain.at(L"accessors", 0)) << "the same bounds";
        ASSERT_EQ(packed.count(L"bufferViews"), plain.count(L"bufferViews"));
        EXPECT_LT(packed.glb.body.size(), plain.glb.body.size());
        EXPECT_EQ(packed.json[L"buffers"][1][L"byteLength"].GetUint(), plain.glb.body.size());
        for (unsigned i = 0; i < plain.count(L"bufferViews"); ++i) {
            const JsonValue& view = packed.json[L"bufferViews"][i];
            const JsonValue& extension = view[L"extensions"][L"EXT_meshopt_compression"];
            const auto member = [&extension](const wchar_t* name) { return extension[name].GetUint(); };
            const std::size_t count = member(L"count"), stride = member(L"byteStride");
            ASSERT_EQ(count * stride, view[L"byteLength"].GetUint());
            std::vector<char> decoded(count * stride);
            const auto* const from =
                reinterpret_cast<const unsigned char*>(&packed.glb.body[member(L"byteOffset")]);
            const std::size_t size = member(L"byteLength");
            const char* const expected = &plain.glb.body[view[L"byteOffset"].GetUint()];
            const std::wstring mode = extension[L"mode"].GetString();
            if (mode == L"ATTRIBUTES") {
                ASSERT_EQ(meshopt_decodeVertexBuffer(decoded.data(), count, stride, from, size), 0);
                if (extension.HasMember(L"filter")) {
                    meshopt_decodeFilterExp(decoded.data(), count, stride);
                    for (std::size_t at = 0; at < decoded.size(); at += sizeof(float)) {
                        float was = 0, is = 0;
                        std::memcpy(&was, expected + at, sizeof was);
                        std::memcpy(&is, &decoded[at], sizeof is);
                        ASSERT_NEAR(is, was, 1.0 / 2048);
                    }
                    continue;
                }
            } else if (mode == L"INDICES") {
                ASSERT_EQ(meshopt_decodeIndexSequence(decoded.data(), count, stride, from, size), 0);
            } else {
                ASSERT_EQ(meshopt_decodeIndexBuffer(decoded.data(), count, stride, from, size), 0);
                const auto firstCornerFirst = [stride](char* triangle) { // whichever the codec begins with
                    while (std::memcmp(triangle, triangle + stride, stride) > 0 ||
                           std::memcmp(triangle, triangle + 2 * stride, stride) > 0)
                        std::rotate(triangle, triangle + stride, triangle + 3 * stride);
                };
                std::vector<char> sorted(expected, expected + decoded.size());
                for (std::size_t at = 0; at < decoded.size(); at += 3 * stride) {
                    firstCornerFirst(&sorted[at]);
                    firstCornerFirst(&decoded[at]);
                }
                EXPECT_EQ(decoded, sorted);
                continue;
            }
            EXPECT_TRUE(std::equal(decoded.begin(), decoded.end(), expected)) << i;
        }
    }
}

TEST(Glb, CanBeOfNothing) {
    const File file(scene::build({}));
    EXPECT_TRUE(file.glb.body.empty());
    EXPECT_EQ(file.count(L"nodes"), 1);
    for (const wchar_t* const list : {L"meshes", L"materials", L"accessors", L"bufferViews", L"buffers"})
        EXPECT_FALSE(file.json.HasMember(list));
}

TEST(RigidParts, MultiplyToThePlacement) {
    const struct {
        Placement placement;
        bool isSplit;
    } rows[] = {
        {{}, false},
        {{{0, 2, 0}, {-3, 0, 0}, {0, 0, -1}, {7, 8, 9}}, false}, // mirrored
        {{{1, 0, 0}, {1, 1, 0}, {0, 0, 1}, {7, 8, 9}}, true},
        {{{1, 0.2, 0}, {0.3, -5, 1}, {0.01, 0, 0.5}, {}}, true},
        {{{1e-3, 0, 0}, {1, 1, 0}, {1, 1, 1e3}, {}}, true},
    };
    for (const auto& [placement, isSplit] : rows) {
        const auto parts = rigidParts(placement);
        ASSERT_EQ(parts.has_value(), isSplit);
        if (!parts) continue;
        const Placement product = parts->outer * parts->inner;
        for (const auto axis : {&Placement::x, &Placement::y, &Placement::z, &Placement::origin})
            EXPECT_LT(length(product.*axis - placement.*axis), 1e-9);
        for (const Placement& part : {parts->outer, parts->inner}) EXPECT_FALSE(rigidParts(part));
        EXPECT_NEAR(parts->inner.determinant(), 1, 1e-12);
    }
    test::Model model;
    ExcTransformation sheared;
    sheared.affine()[0].y() = 1;
    model.reference->setTransformation(sheared);
    const File file(model.build());
    EXPECT_EQ(file.count(L"nodes"), 3);
    EXPECT_TRUE(file.json[L"nodes"][2].HasMember(L"mesh"));
}

} // namespace
} // namespace zeq::gltf
