// What is made of shapes, restored from images, against the shapes themselves; bodies that others would make;
// and faults that have to be found.
#include <cmath>
#include <functional>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "acis/memory_file.h"
#include "brep/check.h"
#include "brep/measure.h"
#include "brep/shapes.h"
#include "convexor/geometry_builder.h"
#include "convexor/geometry_figures.h"
#include "zeq/geometry_report.h"
#include "zeq_api/exchange_mechanical/owned_entities.h"

namespace zeq {
namespace {

constexpr double pi = std::numbers::pi;
using Faults = std::vector<std::string>;

std::unique_ptr<OwnedEntities> restored(const ENTITY_LIST& made) {
    auto result = std::make_unique<OwnedEntities>();
    test::MemoryFile file(test::saved(made));
    EXPECT_EQ(test::message(api_restore_entity_list_file(&file, result->list)), "");
    return result;
}

/// A structure of one block with such figures.
ExcProductStructure structureWith(const ExcMiscPropertiesGroup& figures) {
    ExcProductStructure structure;
    const auto block = std::make_shared<ExcBlock>();
    block->setId(1);
    block->miscData().addGroup(figures);
    structure.addBlock(block);
    return structure;
}

TopoDS_Shape shapeNamed(const std::string& name) {
    for (const test::NamedShape& shape : test::shapes())
        if (shape.name == name) return shape.make();
    throw std::invalid_argument(name);
}

TEST(Geometry, IsAsOpenCascadeMeasuresIt) {
    const convexor::LengthUnit inch{ELengthUnitType::inch, 25.4, L"in"};
    for (const test::NamedShape& shape : test::shapes()) {
        const TopoDS_Shape made = shape.make();
        for (const convexor::LengthUnit& unit : {convexor::LengthUnit(), inch}) {
            SCOPED_TRACE(shape.name + (unit.millimeters == 1 ? "" : " in inches"));
            const OwnedEntities sent(convexor::buildBody(made, 1 / unit.millimeters));
            const auto arrived = restored(sent.list);
            host::GeometryReport report;
            EXPECT_EQ(report.add(1, arrived->list), Faults());
            EXPECT_EQ(report.compare(structureWith(convexor::geometryFigures(made, unit))), Faults());
            EXPECT_EQ(report.blockText(1).substr(0, shape.consistsOf.size()), shape.consistsOf);
            EXPECT_EQ(brep::measure(arrived->list).unmeasured, 0u);
            const brep::Check check = brep::check(arrived->list);
            EXPECT_EQ(check.unchecked, 0u);
            EXPECT_LT(check.vertexGap, 1e-7);
            EXPECT_LT(check.edgeGap, 1e-6);
        }
    }
}

TEST(Geometry, FiguresThatDifferAreTold) {
    const TopoDS_Shape box = shapeNamed("box"); // 1 by 2 by 4
    const OwnedEntities entities(convexor::buildBody(box, 1));
    const std::vector<std::tuple<std::wstring, std::wstring, std::string>> rows{
        {L"faces", L"7", "faces is 6, but the translator had 7"},
        {L"vertices", L"", "vertices is 8, but the translator had none"},
        {L"edge length", L"28.001", "edge length is 28, but the translator had 28.001"},
        {L"surface area", L"28.5", "surface area is 28, but the translator had 28.5"},
        {L"box maximum z", L"4.001", "box maximum z is 4, but the translator had 4.001"},
        {L"box maximum z", L"3.9999999", ""},
    };
    for (const auto& [name, value, fault] : rows) {
        const ExcMiscPropertiesGroup figures = convexor::geometryFigures(box, {});
        ExcMiscPropertiesGroup told;
        told.name() = figures.name();
        for (ExcMiscProperty property : figures.properties()) {
            if (property.name() == name) property.value() = value;
            told.addProperty(property);
        }
        host::GeometryReport report;
        report.add(1, entities.list);
        EXPECT_EQ(report.compare(structureWith(told)),
                  fault.empty() ? Faults() : Faults{"geometry of block 1: " + fault});
    }
    EXPECT_EQ(host::GeometryReport().compare(structureWith(convexor::geometryFigures(box, {}))),
              Faults{"geometry of block 1: it did not arrive"});
    ExcMiscPropertiesGroup other;
    other.name() = L"Layers";
    host::GeometryReport report;
    report.add(1, entities.list);
    EXPECT_EQ(report.compare(structureWith(other)), Faults());
    EXPECT_EQ(report.summaryText().find("Measures"), std::string::npos);
}

/// A loop of one closed edge.
LOOP* circle(const SPAposition& centre, const SPAvector& major, bool isReversed) {
    auto* const vertex = ACIS_NEW VERTEX(ACIS_NEW APOINT(centre + major));
    auto* const curve = ACIS_NEW ELLIPSE(centre, SPAunit_vector(0, 0, 1), major);
    auto* const edge = ACIS_NEW EDGE(vertex, vertex, curve, FORWARD, {0, 2 * pi});
    auto* const coedge = ACIS_NEW COEDGE(edge, isReversed ? REVERSED : FORWARD);
    coedge->set_next(coedge);
    coedge->set_previous(coedge);
    return ACIS_NEW LOOP(coedge);
}

BODY* bodyOf(SURFACE* surface, const std::vector<LOOP*>& loops) {
    auto* const face = ACIS_NEW FACE(surface, FORWARD);
    face->set_sides(DOUBLE_SIDED);
    for (LOOP* const loop : loops) face->add_loop(loop);
    auto* const shell = ACIS_NEW SHELL();
    shell->add_face(face);
    return ACIS_NEW BODY(ACIS_NEW LUMP(shell));
}

TEST(Measures, OfFacesWithoutSeams) {
    const SPAposition origin;
    const SPAvector radius(3, 0, 0);
    const auto sphere = [](bool isReversed) {
        return ACIS_NEW SPHERE(SPAposition(), 3, {1, 0, 0}, {0, 0, 1}, isReversed);
    };
    const auto ring = [&](double z, bool isReversed) {
        return circle({0, 0, z}, std::sqrt(1 - z * z / 9) * radius, isReversed);
    };
    const SPAposition above(0, 0, 7);
    struct Row {
        const char* name;
        BODY* body;
        double area;
        double low;
        double high; ///< of z
    };
    const Row rows[]{
        {"sphere", bodyOf(sphere(false), {}), 36 * pi, -3, 3},
        {"northern cap", bodyOf(sphere(false), {ring(1, false)}), 12 * pi, 1, 3},
        {"southern cap", bodyOf(sphere(true), {ring(1, true)}), 24 * pi, -3, 1},
        {"zone", bodyOf(sphere(false), {ring(-1, false), ring(2, true)}), 18 * pi, -1, 2},
        {"torus", bodyOf(ACIS_NEW TORUS(origin, SPAunit_vector(0, 0, 1), 5, 2), {}), 40 * pi * pi, -2, 2},
        {"cylinder",
         bodyOf(ACIS_NEW CONE(origin, SPAunit_vector(0, 0, 1), radius),
                {circle(origin, radius, false), circle(above, radius, true)}),
         42 * pi, 0, 7},
        {"cone up to its apex",
         bodyOf(ACIS_NEW CONE(origin, SPAunit_vector(0, 0, 1), radius, 1, -0.6, 0.8),
                {circle(origin, radius, false)}),
         15 * pi, 0, 4},
        {"washer",
         bodyOf(ACIS_NEW PLANE(origin, SPAunit_vector(0, 0, 1), SPAvector(1, 0, 0)),
                {circle(origin, radius, false), circle(origin, SPAvector(0, 1, 0), true)}),
         8 * pi, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const OwnedEntities entities(row.body);
        const brep::Measure plain = brep::measure(entities.list);
        EXPECT_NEAR(plain.area, row.area, 1e-9 * row.area);
        EXPECT_EQ(plain.inverted + plain.unmeasured, 0u);
        EXPECT_NEAR(plain.box.low().z(), row.low, 1e-12);
        EXPECT_NEAR(plain.box.high().z(), row.high, 1e-12);

        // Twice as large, with z where x was.
        row.body->set_transform(ACIS_NEW TRANSFORM(
            SPAtransf({SPAvector(0, 1, 0), SPAvector(0, 0, 1), SPAvector(1, 0, 0)}, SPAvector(10, 0, 0), 2)));
        const brep::Measure moved = brep::measure(entities.list);
        EXPECT_NEAR(moved.area, 4 * row.area, 4e-9 * row.area);
        EXPECT_NEAR(moved.length, 2 * plain.length, 1e-9);
        EXPECT_NEAR(moved.box.low().x(), 10 + 2 * row.low, 1e-12);
        EXPECT_NEAR(moved.box.high().x(), 10 + 2 * row.high, 1e-12);
    }
}

TEST(Checks, FindFaults) {
    const auto firstFace = [](BODY& body) { return body.lump()->shell()->face(); };
    const auto firstCoedge = [&](BODY& body) { return firstFace(body)->loop()->start(); };
    const std::string notTwice = "an edge of a solid is not used once in either direction";
    struct Row {
        const char* name;
        std::function<void(BODY&, ENTITY_LIST&)> damage;
        Faults faults;
    };
    const Row rows[]{
        {"nothing", [](BODY&, ENTITY_LIST&) {}, {}},
        {"a face is missing",
         [&](BODY& body, ENTITY_LIST&) { body.lump()->shell()->set_face(firstFace(body)->next()); },
         {notTwice}},
        {"a coedge runs the wrong way",
         [&](BODY& body, ENTITY_LIST&) {
             COEDGE* const coedge = firstCoedge(body);
             coedge->set_sense(coedge->sense() == FORWARD ? REVERSED : FORWARD);
         },
         {"a loop is not closed", "a loop is not closed", notTwice}},
        {"a coedge has no edge",
         [&](BODY& body, ENTITY_LIST&) { firstCoedge(body)->set_edge(nullptr); },
         {"a coedge has no edge", "partners of a coedge have other edges", notTwice}},
        {"the ring is broken",
         [&](BODY& body, ENTITY_LIST&) {
             firstCoedge(body)->next()->set_previous(firstCoedge(body)->next());
         },
         {"the coedges of a loop form no ring", notTwice}},
        {"partners that do not know each other",
         [&](BODY& body, ENTITY_LIST&) {
             COEDGE* const coedge = firstCoedge(body);
             coedge->partner()->set_partner(nullptr);
             coedge->set_partner(nullptr);
         },
         {"the uses of an edge are not all partners"}},
        {"a wrong partner",
         [&](BODY& body, ENTITY_LIST&) { firstCoedge(body)->set_partner(firstCoedge(body)->next()); },
         {"partners of a coedge have other edges", "partners of a coedge have other edges"}},
        {"a vertex has moved",
         [&](BODY& body, ENTITY_LIST&) {
             APOINT* const point = firstCoedge(body)->start()->geometry();
             point->set_coords(point->coords() + SPAvector(0, 0, 7));
         },
         {"a vertex lies 7 from the end of its edge"}},
        {"a vertex is nowhere",
         [&](BODY& body, ENTITY_LIST&) {
             firstCoedge(body)->start()->geometry()->set_coords({std::nan(""), 0, 0});
         },
         {"a vertex lies inf from the end of its edge"}},
        {"a surface has moved",
         [&](BODY& body, ENTITY_LIST&) {
             const auto& plane = static_cast<const PLANE&>(*firstFace(body)->geometry());
             firstFace(body)->set_geometry(
                 ACIS_NEW PLANE(plane.root_point() + 5 * plane.normal(), plane.normal(), plane.u_deriv()));
         },
         {"an edge lies 5 from the surface of its face"}},
        {"two boxes in one shell",
         [&](BODY& body, ENTITY_LIST& all) {
             FACE* last = firstFace(body);
             while (last->next()) last = last->next();
             BODY* const other = convexor::buildBody(shapeNamed("box"), 1);
             all.add(other);
             last->set_next(firstFace(*other));
         },
         {"the Euler characteristic of a shell is 4"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto* const body = convexor::buildBody(shapeNamed("box"), 1);
        OwnedEntities all(body); // what the damage cuts off is on the list
        const ENTITY_LIST list = all.list;
        for (int i = 0; i < all.list.count(); ++i) all.list[i]->copy_scan(all.list, SCAN_DELETE);
        row.damage(*body, all.list);
        const brep::Check check = brep::check(list);
        EXPECT_EQ(check.faults, row.faults);
        brep::measure(list); // which has to come to an end as well
    }

    const OwnedEntities box(convexor::buildBody(shapeNamed("box"), 1));
    FACE* const face = firstFace(static_cast<BODY&>(*box.list[0]));
    face->set_sense(face->sense() == FORWARD ? REVERSED : FORWARD);
    EXPECT_EQ(host::GeometryReport().add(1, box.list), Faults{"1 face lies outside of its boundary"});
}

TEST(Measures, OfDamagedBodiesComeToAnEnd) {
    int measured = 0;
    for (const char* const name : {"mirrored cone", "cut torus", "hill with a hole"}) {
        const OwnedEntities entities(convexor::buildBody(shapeNamed(name), 1));
        const std::string image = test::saved(entities.list);
        for (std::size_t at = 100; at < image.size(); at += image.size() / 60) {
            test::MemoryFile file(image);
            file.bytes[at] = static_cast<char>(~file.bytes[at]);
            OwnedEntities damaged;
            if (!api_restore_entity_list_file(&file, damaged.list).ok()) continue;
            brep::measure(damaged.list);
            brep::check(damaged.list);
            ++measured;
        }
    }
    EXPECT_GT(measured, 50);
}

} // namespace
} // namespace zeq
