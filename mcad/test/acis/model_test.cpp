// Entities at work: attributes and their chains, copies by the owner actions, classes by level, and geometry
// whose derivatives, normals and inversions agree with its points.
#include <cmath>
#include <functional>
#include <numbers>
#include <thread>

#include <gtest/gtest.h>

#include "acis/image_text.h"
#include "acis/memory_file.h"

namespace zeq {
namespace {

constexpr double pi = std::numbers::pi;

std::vector<const ATTRIB*> chain(const ENTITY& owner) {
    std::vector<const ATTRIB*> result;
    for (const ATTRIB* attribute = owner.attrib(); attribute; attribute = attribute->next()) {
        EXPECT_EQ(attribute->owner(), &owner);
        EXPECT_EQ(attribute->previous(), result.empty() ? nullptr : result.back());
        result.push_back(attribute);
    }
    return result;
}

void addAttribute(ENTITY* owner, copy_owner_action action, double red) {
    ACIS_NEW ATTRIB_RGB(owner, red);
    owner->attrib()->set_copy_owner_action(action);
}

TEST(Attributes, AreChainedAndUnhooked) {
    auto* body = ACIS_NEW BODY;
    auto* first = ACIS_NEW ATTRIB_RGB(body, 1, 0.5, 0.25);
    auto* second = ACIS_NEW ATTRIB_RGB(body);
    auto* third = ACIS_NEW ATTRIB_RGB(body);
    EXPECT_EQ(chain(*body), (std::vector<const ATTRIB*>{third, second, first}));
    second->lose();
    EXPECT_EQ(chain(*body), (std::vector<const ATTRIB*>{third, first}));
    third->lose();
    EXPECT_EQ(chain(*body), (std::vector<const ATTRIB*>{first}));
    ENTITY* owner = first;
    for (int i = 0; i < 100000; ++i) owner = ACIS_NEW ATTRIB_ST(owner); // attributes of attributes
    body->lose();
}

TEST(Attributes, AreCopiedByTheirOwnerActions) {
    auto* body = ACIS_NEW BODY;
    addAttribute(body, CopyKeep, 1);
    addAttribute(body, CopyCopy, 2);
    addAttribute(body, CopyLose, 3);
    addAttribute(body, CopyCopy, 4);
    addAttribute(body, CopyKeep, 5);
    ENTITY* copy = nullptr;
    ASSERT_TRUE(api_copy_entity(body, copy).ok());
    auto colours = [](const ENTITY& owner) {
        std::vector<double> result;
        for (const ATTRIB* attribute : chain(owner))
            result.push_back(static_cast<const ATTRIB_RGB*>(attribute)->red());
        return result;
    };
    EXPECT_EQ(colours(*copy), (std::vector<double>{4, 2}));
    EXPECT_EQ(colours(*body), (std::vector<double>{5, 4, 2, 1}));
    EXPECT_EQ(ATTRIB().get_copy_owner_action(), CopyKeep);
    api_del_entity(body);
    api_del_entity(copy);
}

TEST(Attributes, AreCopiedFromBetweenOnesOfUnknownClass) {
    const std::string id = "Morvanta_Convexor_ID_Attribute-Morvanta_Convexor_Attribute-attrib ";
    struct Row {
        std::vector<bool> copied; ///< by place in the chain
        std::vector<std::string> records;
    };
    const std::vector<Row> rows{
        {{true, true, true, true},
         {"body $1 -1 $-1 $-1 $-1 $-1 #", id + "$-1 -1 $2 $-1 $0 -9000000000 #",
          "odd-attrib $-1 -1 $3 $1 $0 $0 #", id + "$-1 -1 $4 $2 $0 -7 #",
          "odd-attrib $-1 -1 $-1 $3 $0 @text #"}},
        {{true, false, true, false},
         {"body $1 -1 $-1 $-1 $-1 $-1 #", id + "$-1 -1 $2 $-1 $0 -9000000000 #",
          id + "$-1 -1 $-1 $1 $0 -7 #"}},
        {{false, true, false, false}, {"body $1 -1 $-1 $-1 $-1 $-1 #", "odd-attrib $-1 -1 $-1 $-1 $0 $0 #"}},
        {{false, false, false, false}, {"body $-1 -1 $-1 $-1 $-1 $-1 #"}},
    };
    test::ImageFrame frame;
    frame.wide = true;
    test::MemoryFile file(test::ImageAssembler::assemble(rows[0].records, frame));
    ENTITY_LIST original;
    ASSERT_TRUE(api_restore_entity_list_file(&file, original).ok());
    for (const Row& row : rows) {
        auto copied = row.copied.begin();
        for (ATTRIB* each = original[0]->attrib(); each; each = each->next())
            each->set_copy_owner_action(*copied++ ? CopyCopy : CopyKeep);
        ENTITY_LIST copies;
        ENTITY* copy = nullptr;
        ASSERT_TRUE(api_copy_entity(original[0], copy).ok());
        copies.add(copy);
        long version = 0;
        EXPECT_EQ(test::ImageAssembler::dump(test::saved(copies), version), row.records);
        api_del_entity_list(copies);
    }
    api_del_entity_list(original);
}

TEST(Classes, AreKnownByLevel) {
    auto* attribute = ACIS_NEW ATTRIB_RGB;
    const std::vector<int> byLevel{ENTITY::staticType(), ATTRIB::staticType(), ATTRIB_ST::staticType(),
                                   ATTRIB_RGB::staticType()};
    EXPECT_EQ(attribute->identity(), byLevel[3]);
    for (int level = 1; level <= 3; ++level) {
        EXPECT_EQ(attribute->identity(level), byLevel[std::size_t(level)]);
        EXPECT_EQ(attribute->identity(-level), byLevel[std::size_t(3 - level)]);
    }
    EXPECT_EQ(attribute->identity(4), -1);
    EXPECT_EQ(attribute->identity(-4), -1);
    EXPECT_EQ(attribute->ATTRIB::identity(0), ATTRIB::staticType());
    EXPECT_TRUE(is_ATTRIB(attribute) && is_ATTRIB_ST(attribute) && !is_BODY(attribute) &&
                !is_ATTRIB(nullptr));
    attribute->lose();
}

TEST(EntityLists, HoldEachEntityOnce) {
    std::vector<ENTITY*> bodies;
    ENTITY_LIST list;
    for (int i = 0; i < 1000; ++i) {
        bodies.push_back(ACIS_NEW BODY);
        EXPECT_EQ(list.add(bodies.back()), i);
        EXPECT_EQ(list.add(bodies[std::size_t(i / 2)]), i / 2);
    }
    EXPECT_EQ(list.add(nullptr), -1);
    EXPECT_EQ(list.remove(bodies[7]), 7);
    EXPECT_EQ(list.lookup(bodies[7]), -1);
    EXPECT_EQ(list.lookup(bodies[8]), 8);
    EXPECT_EQ(list[7], nullptr);
    int walked = 0;
    for (list.init(); list.next();) ++walked;
    EXPECT_EQ(walked, list.iteration_count());
    ENTITY_LIST copy = list;
    EXPECT_EQ(copy.add(bodies[999]), 999);
    EXPECT_EQ(copy.add(bodies[7]), 1000);
    EXPECT_EQ(list.lookup(bodies[7]), -1);
    list.add(copy);
    EXPECT_EQ(list.lookup(bodies[7]), 1000);
    api_del_entity_list(list);
    EXPECT_EQ(list.count(), 0);
}

TEST(EntityLists, TellEntitiesFromThoseBeforeThemInTheirMemory) {
    alignas(32) char memory[4096];
    auto at = [&](std::size_t offset) { return reinterpret_cast<ENTITY*>(memory + offset); };
    for (const int others : {0, 100}) {
        ENTITY_LIST list;
        for (int i = 0; i < others; ++i) list.add(at(32 * (std::size_t(i) + 1)));
        EXPECT_EQ(list.add(at(0)), others);
        EXPECT_EQ(list.add(at(16)), others + 1);
        EXPECT_EQ(list.lookup(at(16)), others + 1);
        EXPECT_EQ(list.remove(at(0)), others);
        EXPECT_EQ(list.add(at(16)), others + 1);
        EXPECT_EQ(list.remove(at(16)), others + 1);
        EXPECT_EQ(list.lookup(at(16)), -1);
        EXPECT_EQ(list.iteration_count(), others);
    }
}

/// A closed shell of one face on a sphere: one loop, two coedges along one tolerant edge; and a wire.
BODY* ball() {
    auto* vertex = ACIS_NEW TVERTEX(ACIS_NEW APOINT({1, 0, 0}), 0.25);
    auto* curve = ACIS_NEW ELLIPSE({}, {0, 0, 1}, {1, 0, 0});
    auto* edge = ACIS_NEW TEDGE(vertex, vertex, curve, FORWARD, {-3, pi}, 0.125);
    auto* there = ACIS_NEW TCOEDGE(edge);
    auto* back = ACIS_NEW TCOEDGE(edge, REVERSED, there, there);
    there->set_partner(back);
    back->set_partner(there);
    auto* face = ACIS_NEW FACE(ACIS_NEW SPHERE, FORWARD, ACIS_NEW LOOP(there));
    auto* body = ACIS_NEW BODY(ACIS_NEW LUMP(ACIS_NEW SHELL(face)));
    body->set_transform(ACIS_NEW TRANSFORM(
        SPAtransf({SPAvector{0, 1, 0}, SPAvector{-1, 0, 0}, SPAvector{0, 0, 1}}, {1, 2, 3}, 2)));
    ACIS_NEW ATTRIB_RGB(face, 1);
    auto* alone = ACIS_NEW COEDGE(ACIS_NEW EDGE(ACIS_NEW VERTEX(ACIS_NEW APOINT)));
    alone->set_next(alone);
    alone->set_previous(alone);
    body->add_wire(ACIS_NEW WIRE(alone));
    return body;
}

TEST(Copies, AreWholeAndSaveAlike) {
    ENTITY_LIST original, copied;
    original.add(ball());
    ENTITY* copy = nullptr;
    ASSERT_TRUE(api_copy_entity(original[0], copy).ok());
    copied.add(copy);
    const std::string image = test::saved(original);
    EXPECT_EQ(test::saved(copied), image);
    api_del_entity_list(original);

    auto* face = static_cast<BODY*>(copy)->lump()->shell()->face();
    COEDGE* coedge = face->loop()->start();
    EXPECT_EQ(coedge->next()->next(), coedge);
    EXPECT_EQ(coedge->partner()->partner(), coedge);
    EXPECT_EQ(coedge->loop()->face(), face);
    EXPECT_EQ(coedge->start()->edge(), coedge->edge());
    EXPECT_EQ(coedge->edge()->get_tolerance(), 0.125);
    EXPECT_EQ(coedge->start()->get_tolerance(), 0.25);
    EXPECT_EQ(static_cast<TCOEDGE*>(coedge->partner())->param_range(), SPAinterval(-pi, 3));
    EXPECT_EQ(chain(*face).size(), 1u);
    const WIRE* wire = static_cast<BODY*>(copy)->wire();
    EXPECT_TRUE(wire->owner() == copy && wire->coedge()->owner() == wire);
    EXPECT_EQ(wire->coedge()->edge()->get_tolerance(), SPAresabs);
    api_del_entity_list(copied);
}

TEST(Saving, NeedsAProductIdOfItsThread) {
    const ENTITY_LIST entities;
    EXPECT_TRUE(test::saved(entities).starts_with("ACIS BinaryFile"));
    const auto expectRefused = [&entities] {
        test::MemoryFile file;
        EXPECT_EQ(api_save_entity_list_file(&file, entities).error_number(), ACIS_SAVE_FAILED);
        EXPECT_EQ(file.bytes, "");
    };
    std::jthread(expectRefused).join();
    api_set_file_info(FileIdent, FileInfo());
    expectRefused();
}

/// From low to high in steps.
std::vector<double> numbers(double low, double high, double step) {
    std::vector<double> result;
    for (int i = 0; low + i * step < high; ++i) result.push_back(low + i * step);
    return result;
}

const bs_knots quadratic{2, {0, 0, 0, 1, 1, 1}};
const double diagonal = std::numbers::sqrt2 / 2;

/// A quarter of the unit circle.
const bs3_curve quarter{quadratic, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {1, diagonal, 1}};
const bs3_curve wave{{3, {0, 0, 0, 0, 1, 2, 2, 3, 3, 3, 3}},
                     {{0, 0, 0}, {1, 2, 0}, {2, -1, 1}, {3, 3, 0}, {4, 0, 2}, {5, 1, 1}, {6, 0, 0}},
                     {}};
const bs3_curve ring{{2, {-2, -1, 0, 1, 2, 3, 4, 5, 6}, bs_periodic},
                     {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}, {1, 0, 0}, {0, 1, 0}},
                     {}};

TEST(Curves, HaveDerivativesAndInversionsThatFitTheirPoints) {
    const std::vector<std::function<CURVE*()>> curves{
        [] {
            return ACIS_NEW STRAIGHT({1, 2, 3}, {0, 3, 4});
        },
        [] {
            return ACIS_NEW ELLIPSE({1, 2, 3}, {0, 0, 1}, {0, 5, 0}, 0.4);
        },
        [] { return ACIS_NEW INTCURVE(quarter); },
        [] { return ACIS_NEW INTCURVE(wave, true); },
        [] { return ACIS_NEW INTCURVE(ring); },
    };
    for (const auto& make : curves) {
        CURVE* curve = make();
        SCOPED_TRACE(curve->type_name());
        SPAinterval range = curve->param_range();
        if (!range.finite()) range = {-3, 3};
        for (const double t : numbers(range.start_pt() + 0.01, range.end_pt(), 0.17)) {
            constexpr double h = 1e-6;
            const SPAvector slope = (curve->eval_position(t + h) - curve->eval_position(t - h)) / (2 * h);
            EXPECT_LT((slope - curve->eval_deriv(t)).len(), 1e-6);
            if (curve->invertible()) {
                EXPECT_NEAR(curve->param(curve->eval_position(t)), t, 1e-12);
            }
        }
        if (const double period = curve->param_period()) {
            EXPECT_LT((curve->eval_position(0.3) - curve->eval_position(0.3 + period)).len(), 1e-12);
        }
        curve->lose();
    }
}

TEST(Curves, OfBSplinesPassWhereTheyShould) {
    SPAposition position;
    for (const double t : numbers(0, 1.05, 0.1)) {
        quarter.eval(t, position);
        EXPECT_NEAR((position - SPAposition()).len(), 1, 1e-14);
    }
    wave.eval(3, position);
    EXPECT_EQ(position, SPAposition(6, 0, 0));
    EXPECT_THROW(INTCURVE(bs3_curve{quadratic, {{0, 0, 0}}, {}}), std::invalid_argument);
    EXPECT_THROW(INTCURVE(bs3_curve{{2, {0, 1, 0, 1, 1, 1}}, quarter.controls, {}}), std::invalid_argument);
}

TEST(Surfaces, HaveDerivativesNormalsAndInversionsThatFitTheirPoints) {
    // Around (1, 2, 3): the sign tells whether the normal points away from the axis or centre.
    struct Row {
        std::function<SURFACE*()> make;
        int outward;
    };
    const SPAposition c(1, 2, 3);
    const bs3_surface patch{
        quadratic,
        {1, {0, 0, 1, 2, 2}},
        {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}, {2, 0, 2}, {2, 2, 2}, {0, 2, 2}},
        {1, diagonal, 1, 1, diagonal, 1, 1, diagonal, 1}};
    const std::vector<Row> rows{
        {[&] {
             return ACIS_NEW PLANE(c, {0, 0.6, 0.8}, {2, 0, 0});
         },
         0},
        {[&] {
             return ACIS_NEW PLANE(c, {0, 0.6, 0.8}, {2, 0, 0}, true);
         },
         0},
        {[&] {
             return ACIS_NEW CONE(c, {0, 0, 1}, {2, 0, 0});
         },
         1},
        {[&] {
             return ACIS_NEW CONE(c, {0, 0, 1}, {2, 0, 0}, 0.5, 0, -1);
         },
         -1},
        {[&] {
             return ACIS_NEW CONE(c, {0, 0, 1}, {2, 0, 0}, 1, 0.6, 0.8);
         },
         1},
        {[&] {
             return ACIS_NEW CONE(c, {0, 0, 1}, {2, 0, 0}, 1, -0.6, -0.8);
         },
         -1},
        {[&] {
             auto* cone = ACIS_NEW CONE(c, {0, 0, 1}, {2, 0, 0}, 1, -0.6, 0.8);
             cone->set_reverse_u(true);
             return cone;
         },
         1},
        {[&] { return ACIS_NEW SPHERE(c, 3); }, 1},
        {[&] {
             return ACIS_NEW SPHERE(c, -3, {0, 1, 0}, {1, 0, 0}, true);
         },
         -1},
        {[&] {
             return ACIS_NEW TORUS(c, {0, 0, 1}, 5, 2);
         },
         1},
        {[&] {
             return ACIS_NEW TORUS(c, {0, 0, 1}, 5, -2, {0, 1, 0}, true);
         },
         -1},
        {[&] {
             return ACIS_NEW TORUS(c, {0, 0, 1}, 1, 2);
         },
         1},
        {[&] { return ACIS_NEW SPLINE(patch); }, 0},
        {[&] { return ACIS_NEW SPLINE(patch, true); }, 0},
    };
    for (const Row& row : rows) {
        SURFACE* surface = row.make();
        SCOPED_TRACE(std::string(surface->type_name()) + " in row " + std::to_string(&row - rows.data()));
        auto within = [](SPAinterval range) {
            const double low = range.bounded_below() ? range.start_pt() : std::max(-0.5, range.end_pt() - 1);
            const double high = range.bounded_above() ? range.end_pt() : low + 1;
            return SPAinterval(std::max(low, -2.9), std::min(high, 2.9));
        };
        const SPAinterval us = within(surface->param_range_u()), vs = within(surface->param_range_v());
        for (const double u : numbers(us.start_pt() + 0.05, us.end_pt() - 0.05, 0.13))
            for (const double v : numbers(vs.start_pt() + 0.05, vs.end_pt(), 0.31)) {
                constexpr double h = 1e-6;
                auto at = [&](double du, double dv) { return surface->eval_position({u + du, v + dv}); };
                SPAposition position;
                SPAvector du, dv;
                surface->eval({u, v}, position, &du, &dv);
                EXPECT_LT(((at(h, 0) - at(-h, 0)) / (2 * h) - du).len(), 1e-6);
                EXPECT_LT(((at(0, h) - at(0, -h)) / (2 * h) - dv).len(), 1e-6);
                const SPAunit_vector normal = surface->eval_normal({u, v});
                EXPECT_NEAR(normal.len(), 1, 1e-12);
                SPAvector arm = position - c;
                if (is_CONE(surface)) arm = SPAvector(arm.x(), arm.y(), 0);
                if (is_TORUS(surface))
                    arm = arm - static_cast<TORUS*>(surface)->major_radius() *
                                    normalise(SPAvector(arm.x(), arm.y(), 0));
                if (row.outward) {
                    EXPECT_GT(row.outward * (arm % normal), 0);
                }
                if (is_PLANE(surface)) {
                    EXPECT_LT((normal - static_cast<PLANE*>(surface)->normal()).len(), 1e-12);
                }
                if (!surface->invertible()) continue;
                const SPApar_pos uv = surface->param(position);
                EXPECT_NEAR(uv.u, u, 1e-9);
                EXPECT_NEAR(uv.v, v, 1e-9);
            }
        surface->lose();
    }
}

TEST(Pcurves, HaveDerivativesThatFitTheirPoints) {
    auto* pcurve = ACIS_NEW PCURVE(bs2_curve{quadratic, {{0, 0}, {1, 2}, {3, 1}}, {1, 2, 1}}, true);
    EXPECT_EQ(pcurve->param_range(), SPAinterval(-1, 0));
    EXPECT_EQ(pcurve->eval_position(0), (SPApar_pos{0, 0}));
    const SPApar_pos a = pcurve->eval_position(-0.4 - 1e-6), b = pcurve->eval_position(-0.4 + 1e-6);
    const SPApar_vec slope = pcurve->eval_deriv(-0.4);
    EXPECT_NEAR((b.u - a.u) / 2e-6, slope.du, 1e-6);
    EXPECT_NEAR((b.v - a.v) / 2e-6, slope.dv, 1e-6);
    pcurve->lose();
}

} // namespace
} // namespace zeq
