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
using test::bodyOf;
using test::shapeNamed;

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

TEST(Geometry, IsAsOpenCascadeMeasuresIt) {
    const convexor::LengthUnit inch{ELengthUnitType::inch, 25.4, L"in"};
    for (const test::NamedShape& shape : test::shapes()) {
        const TopoDS_Shape made = shape.make();
        for (const convexor::LengthUnit& unit : {convexor::LengthUnit(), inch}) {
            SCOPED_TRACE(shape.name + (unit.millimeters == 1 ? "" : " in inches"));
            const OwnedEntities sent(bodyOf(made, 1 / unit.millimeters));
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
    const OwnedEntities entities(bodyOf(box, 1));
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
        EXPECT_EQ(plain.inverted.size() + plain.unmeasured, 0u);
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
    const std::string onlyOnce =
        "edge 18 of a solid is used 1 time along its direction and 0 times against it (one of 4)";
    struct Row {
        const char* name;
        std::function<void(BODY&, ENTITY_LIST&)> damage;
        Faults faults;
    };
    const Row rows[]{
        {"nothing", [](BODY&, ENTITY_LIST&) {}, {}},
        {"a face is missing",
         [&](BODY& body, ENTITY_LIST&) { body.lump()->shell()->set_face(firstFace(body)->next()); },
         {onlyOnce}},
        {"a coedge runs the wrong way",
         [&](BODY& body, ENTITY_LIST&) {
             COEDGE* const coedge = firstCoedge(body);
             coedge->set_sense(coedge->sense() == FORWARD ? REVERSED : FORWARD);
         },
         {"a loop of face 6 is not closed: it goes on 2 from the end of edge 8 (the worst of 2)",
          "edge 8 of a solid is used 2 times along its direction and 0 times against it"}},
        {"a coedge has no edge",
         [&](BODY& body, ENTITY_LIST&) { firstCoedge(body)->set_edge(nullptr); },
         {"a coedge of face 6 has no edge", "partners of a coedge of edge 8 have other edges", onlyOnce}},
        {"the ring is broken",
         [&](BODY& body, ENTITY_LIST&) {
             firstCoedge(body)->next()->set_previous(firstCoedge(body)->next());
         },
         {"the coedges of a loop of face 6 form no ring", onlyOnce}},
        {"partners that do not know each other",
         [&](BODY& body, ENTITY_LIST&) {
             COEDGE* const coedge = firstCoedge(body);
             coedge->partner()->set_partner(nullptr);
             coedge->set_partner(nullptr);
         },
         {"the uses of edge 8 are not all partners"}},
        {"a wrong partner",
         [&](BODY& body, ENTITY_LIST&) { firstCoedge(body)->set_partner(firstCoedge(body)->next()); },
         {"partners of a coedge of edge 8 have other edges (one of 2)"}},
        {"a vertex has moved",
         [&](BODY& body, ENTITY_LIST&) {
             APOINT* const point = firstCoedge(body)->start()->geometry();
             point->set_coords(point->coords() + SPAvector(0, 0, 7));
         },
         {"edge 8 ends 7 from its vertex, whose tolerance is 0.001 (the worst of 3)"}},
        {"a vertex is nowhere",
         [&](BODY& body, ENTITY_LIST&) {
             firstCoedge(body)->start()->geometry()->set_coords({std::nan(""), 0, 0});
         },
         {"edge 8 ends inf from its vertex, whose tolerance is 0.001 (the worst of 3)"}},
        {"a surface has moved",
         [&](BODY& body, ENTITY_LIST&) {
             const auto& plane = static_cast<const PLANE&>(*firstFace(body)->geometry());
             firstFace(body)->set_geometry(
                 ACIS_NEW PLANE(plane.root_point() + 5 * plane.normal(), plane.normal(), plane.u_deriv()));
         },
         {"edge 8 lies 5 from the surface of face 6, its tolerance is 0.001 (the worst of 4)"}},
        {"two boxes in one shell",
         [&](BODY& body, ENTITY_LIST& all) {
             FACE* last = firstFace(body);
             while (last->next()) last = last->next();
             BODY* const other = bodyOf(shapeNamed("box"), 1);
             all.add(other);
             last->set_next(firstFace(*other));
         },
         {"shell 1 is in 2 pieces that do not touch each other"}},
        {"nothing, but two boxes in one shell share a vertex",
         [&](BODY& body, ENTITY_LIST& all) {
             FACE* last = firstFace(body);
             while (last->next()) last = last->next();
             BODY* const other = bodyOf(shapeNamed("box"), 1);
             all.add(other);
             VERTEX* const shared = firstCoedge(body)->start();
             VERTEX* const given = firstCoedge(*other)->start();
             all.add(given);
             for (FACE* face = firstFace(*other); face; face = face->next()) {
                 COEDGE* const first = face->loop()->start();
                 COEDGE* coedge = first;
                 do {
                     if (coedge->edge()->start() == given) coedge->edge()->set_start(shared);
                     if (coedge->edge()->end() == given) coedge->edge()->set_end(shared);
                     coedge = coedge->next();
                 } while (coedge != first);
             }
             last->set_next(firstFace(*other));
         },
         {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto* const body = bodyOf(shapeNamed("box"), 1);
        OwnedEntities all(body); // what the damage cuts off is on the list
        const ENTITY_LIST list = all.list;
        for (int i = 0; i < all.list.count(); ++i) all.list[i]->copy_scan(all.list, SCAN_DELETE);
        row.damage(*body, all.list);
        EXPECT_EQ(brep::summarized(brep::check(list).faults), row.faults);
        brep::measure(list); // which has to come to an end as well
    }

    const OwnedEntities box(bodyOf(shapeNamed("box"), 1));
    FACE* const face = firstFace(static_cast<BODY&>(*box.list[0]));
    face->set_sense(face->sense() == FORWARD ? REVERSED : FORWARD);
    EXPECT_EQ(host::GeometryReport().add(1, box.list), Faults{"face 6 lies outside of its boundary"});
}

TEST(Checks, HoldEachToItsOwnTolerance) {
    struct Row {
        const char* name;
        double vertexTolerance; ///< 0: it is none of its own
        double edgeTolerance;
        Faults faults;
    };
    // The edge lies 0.25 above the plane, its vertex 0.5 beside its end.
    const std::string edgeIsOff = "edge #1 lies 0.25 from the surface of face #1, its tolerance is ";
    const std::string vertexIsOff = "edge #1 ends 0.5 from its vertex, whose tolerance is ";
    const Row rows[]{
        {"both within", 0.6, 0.3, {}},
        {"neither within", 0.4, 0.2, {vertexIsOff + "0.4 (the worst of 2)", edgeIsOff + "0.2"}},
        {"no tolerances", 0, 0, {vertexIsOff + "0.001 (the worst of 2)", edgeIsOff + "0.001"}},
        {"tolerances that are none", -1, -1, {vertexIsOff + "0.001 (the worst of 2)", edgeIsOff + "0.001"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const SPAvector radius(3, 0, 0);
        auto* const point = ACIS_NEW APOINT(SPAposition(3, 0.5, 0.25));
        auto* const vertex =
            row.vertexTolerance == 0 ? ACIS_NEW VERTEX(point) : ACIS_NEW TVERTEX(point, row.vertexTolerance);
        auto* const curve = ACIS_NEW ELLIPSE(SPAposition(0, 0, 0.25), SPAunit_vector(0, 0, 1), radius);
        const SPAinterval range(0, 2 * pi);
        auto* const edge = row.edgeTolerance == 0
                               ? ACIS_NEW EDGE(vertex, vertex, curve, FORWARD, range)
                               : ACIS_NEW TEDGE(vertex, vertex, curve, FORWARD, range, row.edgeTolerance);
        auto* const coedge = row.edgeTolerance == 0 ? ACIS_NEW COEDGE(edge) : ACIS_NEW TCOEDGE(edge);
        coedge->set_next(coedge);
        coedge->set_previous(coedge);
        auto* const plane = ACIS_NEW PLANE(SPAposition(), SPAunit_vector(0, 0, 1), SPAvector(1, 0, 0));
        const OwnedEntities sent(bodyOf(plane, {ACIS_NEW LOOP(coedge)}));
        EXPECT_EQ(brep::summarized(brep::check(restored(sent.list)->list).faults), row.faults);
    }
}

TEST(Checks, ReportWhatTheyFoundAndWhere) {
    const OwnedEntities box(bodyOf(shapeNamed("box"), 1));
    FACE* const face = static_cast<BODY&>(*box.list[0]).lump()->shell()->face();
    const auto& plane = static_cast<const PLANE&>(*face->geometry());
    const OwnedEntities replaced(face->geometry());
    face->set_geometry(
        ACIS_NEW PLANE(plane.root_point() + 5 * plane.normal(), plane.normal(), plane.u_deriv()));
    host::GeometryReport report;
    report.add(1, box.list);
    EXPECT_EQ(report.faults(), 4u);
    const std::string json = report.jsonMembers();
    EXPECT_NE(
        json.find("{\"kind\":\"edge off surface\",\"text\":\"edge 8 lies 5 from the surface of face 6, its "
                  "tolerance is 0.001\",\"face\":6,\"edge\":8,\"distance\":5}"),
        std::string::npos)
        << json;
    EXPECT_EQ(host::GeometryReport().add(1, ENTITY_LIST()),
              Faults{"its image holds no body that could be restored"});
}

TEST(Wires, AreCountedMeasuredAndChecked) {
    auto* const corner = ACIS_NEW VERTEX(ACIS_NEW APOINT(SPAposition(4, 0, 0)));
    const auto line = [&](VERTEX* start, VERTEX* end, const SPAvector& direction) {
        return ACIS_NEW COEDGE(ACIS_NEW EDGE(start, end, ACIS_NEW STRAIGHT(SPAposition(4, 0, 0), direction),
                                             FORWARD,
                                             {start == corner ? 0.0 : -4.0, start == corner ? 3.0 : 0.0}));
    };
    COEDGE* const first =
        line(ACIS_NEW VERTEX(ACIS_NEW APOINT(SPAposition(0, 0, 0))), corner, SPAvector(1, 0, 0));
    COEDGE* const second =
        line(corner, ACIS_NEW VERTEX(ACIS_NEW APOINT(SPAposition(4, 3, 1))), SPAvector(0, 1, 0));
    first->set_previous(first);
    first->set_next(second);
    second->set_previous(first);
    second->set_next(second);
    auto* const body = ACIS_NEW BODY();
    body->add_wire(ACIS_NEW WIRE(first));
    const OwnedEntities sent(body);
    const auto arrived = restored(sent.list);
    host::GeometryReport report;
    EXPECT_EQ(report.add(1, arrived->list),
              Faults{"edge #2 ends 1 from its vertex, whose tolerance is 0.001"});
    EXPECT_EQ(report.blockText(1), "1 body, 0 faces, 2 edges (2 lines), 3 vertices");
    const brep::Measure measure = brep::measure(arrived->list);
    EXPECT_DOUBLE_EQ(measure.length, 7);
    EXPECT_EQ(measure.box.high(), SPAposition(4, 3, 1));
}

TEST(Measures, OfAPeakThatIsNarrow) {
    // A flat square, of which one control point is high: it reaches farthest where both basis functions of
    // degree 9 are greatest, (j/9)^j * (1 - j/9)^(9-j) * binomial(9, j) each.
    constexpr int degree = 9;
    bs_knots knots{degree, std::vector<double>(degree + 1, 0.0)};
    knots.knots.insert(knots.knots.end(), degree + 1, 1.0);
    bs3_surface bspline{knots, knots, {}, {}};
    for (int j = 0; j <= degree; ++j)
        for (int i = 0; i <= degree; ++i) bspline.controls.emplace_back(i, j, i == 2 && j == 7 ? 100 : 0);
    const OwnedEntities entities(bodyOf(ACIS_NEW SPLINE(bspline), {}));
    const double greatest = 36 * std::pow(2.0 / 9, 2) * std::pow(7.0 / 9, 7);
    EXPECT_NEAR(brep::measure(entities.list).box.high().z(), 100 * greatest * greatest, 1e-7);
}

class Impatient : public brep::Supervisor {
public:
    void watch(double done) override {
        EXPECT_TRUE(done >= 0 && done <= 1);
        ++calls;
        throw std::runtime_error("enough");
    }
    int calls = 0;
};

TEST(Measures, CanBeInterrupted) {
    // A face with far more spans than can be measured before the supervisor looks.
    constexpr int controls = 1500;
    bs_knots knots{1, {0}};
    for (int i = 0; i < controls; ++i) knots.knots.push_back(i);
    knots.knots.push_back(controls - 1);
    bs3_surface bspline{knots, knots, {}, {}};
    for (int j = 0; j < controls; ++j)
        for (int i = 0; i < controls; ++i) bspline.controls.emplace_back(i, j, (i * 7 + j * 5) % 11);
    BODY* const body = bodyOf(ACIS_NEW SPLINE(bspline), {});
    body->lump()->shell()->add_face(ACIS_NEW FACE(ACIS_NEW SPLINE(std::move(bspline))));
    const OwnedEntities entities(body);
    Impatient impatient;
    EXPECT_THROW(brep::measure(entities.list, &impatient), std::runtime_error);
    EXPECT_EQ(impatient.calls, 1);
}

TEST(Measures, OfDamagedBodiesComeToAnEnd) {
    int measured = 0;
    for (const char* const name : {"mirrored cone", "cut torus", "hill with a hole"}) {
        const OwnedEntities entities(bodyOf(shapeNamed(name), 1));
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
