// Faces and edges of simple bodies against the formulas of their areas and lengths.
#include "brep/facts.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>

#include "brep/shapes.h"
#include "zeq_api/exchange_mechanical/owned_entities.h"

namespace zeq {
namespace {

using brep::Fact;
using brep::Facts;

constexpr double pi = std::numbers::pi;

/// What some faces or edges of a body are to be.
struct Expected {
    const char* kind;
    double size;
    std::vector<std::pair<std::string, double>> figures;
    std::size_t count = 1;
};

/// Compares all facts, in any order; lengths are scaled.
void compare(const std::vector<Fact>& facts, const std::vector<Expected>& expected, double scale,
             double sizeScale) {
    std::size_t total = 0;
    for (const Expected& each : expected) {
        total += each.count;
        const auto isThat = [&](const Fact& fact) {
            if (std::string(fact.kind) != each.kind || !fact.size ||
                std::abs(*fact.size - sizeScale * each.size) > 1e-9 * sizeScale * (1 + each.size) ||
                fact.figures.size() != each.figures.size())
                return false;
            return std::ranges::equal(fact.figures, each.figures, [&](const auto& is, const auto& wanted) {
                const double factor = wanted.first == "angle" ? 1 : scale;
                return is.name == wanted.first && std::abs(is.value - factor * wanted.second) < 1e-9;
            });
        };
        EXPECT_EQ(static_cast<std::size_t>(std::ranges::count_if(facts, isThat)), each.count)
            << each.kind << ' ' << each.size;
    }
    EXPECT_EQ(facts.size(), total);
}

TEST(Facts, AreThoseOfTheFormulas) {
    struct Row {
        const char* name;
        TopoDS_Shape shape;
        std::vector<Expected> faces;
        std::vector<Expected> edges;
        double planes = 0; ///< the vector sum of their areas
    };
    const Row rows[]{
        {"box",
         BRepPrimAPI_MakeBox(1, 2, 4).Shape(),
         {{"plane", 2, {}, 2}, {"plane", 4, {}, 2}, {"plane", 8, {}, 2}},
         {{"line", 1, {}, 4}, {"line", 2, {}, 4}, {"line", 4, {}, 4}}},
        {"cylinder",
         BRepPrimAPI_MakeCylinder(3, 7).Shape(),
         {{"plane", 9 * pi, {}, 2}, {"cylinder", 42 * pi, {{"radius", 3}}}},
         {{"circle", 6 * pi, {{"radius", 3}}, 2}, {"line", 7, {}}}},
        {"cone", // the generators are 5 long
         BRepPrimAPI_MakeCone(4, 1, 4).Shape(),
         {{"plane", 16 * pi, {}},
          {"plane", pi, {}},
          {"cone", 25 * pi, {{"angle", std::atan(0.75) * 180 / pi}}}},
         {{"circle", 8 * pi, {{"radius", 4}}}, {"circle", 2 * pi, {{"radius", 1}}}, {"line", 5, {}}},
         15 * pi},
        {"sphere",
         BRepPrimAPI_MakeSphere(3).Shape(),
         {{"sphere", 36 * pi, {{"radius", 3}}}},
         {{"circle", 3 * pi, {{"radius", 3}}}, {"point", 0, {}, 2}}}, // a seam between the poles
        {"torus",
         BRepPrimAPI_MakeTorus(5, 2).Shape(),
         {{"torus", 40 * pi * pi, {{"major", 5}, {"minor", 2}}}},
         {{"circle", 14 * pi, {{"radius", 7}}}, {"circle", 4 * pi, {{"radius", 2}}}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        BODY* const body = test::bodyOf(row.shape, 1 / 25.4); // in inches
        const OwnedEntities entities(body);
        const auto check = [&](double scale) {
            Facts facts = brep::factsOf(entities.list);
            compare(facts.faces, row.faces, scale, scale * scale);
            compare(facts.edges, row.edges, scale, scale);
            SPAvector sum; // of areas that look outwards
            for (const Fact& face : facts.faces)
                if (face.direction && std::string(face.direction->name) == "normal")
                    sum = sum + *face.size * face.direction->value;
            EXPECT_NEAR(sum.len(), scale * scale * row.planes, 1e-9);
            return facts;
        };
        check(1 / 25.4);

        // Twice as large, with z where x was.
        body->set_transform(ACIS_NEW TRANSFORM(
            SPAtransf({SPAvector(0, 1, 0), SPAvector(0, 0, 1), SPAvector(1, 0, 0)}, SPAvector(10, 0, 0), 2)));
        const Facts moved = check(2 / 25.4);
        for (const Fact& face : moved.faces) {
            if (!face.center) continue;
            EXPECT_NEAR(face.center->y(), 0, 1e-12);
            EXPECT_NEAR(face.center->z(), 0, 1e-12);
            EXPECT_TRUE(!face.direction || std::abs(std::abs(face.direction->value.x()) - 1) < 1e-12);
        }

        body->transform()->set_transform(
            SPAtransf({SPAvector(1, 0, 0), SPAvector(1, 1, 0), SPAvector(0, 0, 1)}, {}));
        for (const Fact& face : brep::factsOf(entities.list).faces)
            EXPECT_TRUE(!face.size && !face.direction && !face.center && face.figures.empty()) << face.kind;
    }
}

TEST(Facts, AreWrittenAsJson) {
    Fact face{7,
              "cylinder",
              2.0 / 3,
              {{"radius", 0.1}},
              Fact::Direction{"axis", {0, -1e-17, 1}},
              SPAposition(1e-13, -2, 3)};
    const Fact edge{-4, "other", {}, {{"radius", std::numeric_limits<double>::infinity()}}, {}, {}};
    text::JsonWriter json;
    Facts{{face}, {edge}}.write(json.open('{'));
    EXPECT_EQ(json.close('}').text(),
              R"({"faces":[{"id":"7","kind":"cylinder","area":0.666666666667,"radius":0.1,"axis":[0,0,1],)"
              R"("center":[0,-2,3]}],"edges":[{"id":"-4","kind":"other","radius":null}]})");
}

} // namespace
} // namespace zeq
