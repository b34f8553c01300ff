// What stands in a file that a scene becomes. Whether it is valid at all, validate.mjs asks others.
#include "gltf/glb.h"

#include <cmath>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "gltf/rigid_parts.h"
#include "scene/model.h"
#include "support/json_text.h"

namespace zeq::gltf {
namespace {

using scene::Placement;
using scene::Vec;

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
