// What pictures of a small model show.
#include "depiction/depiction.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <gtest/gtest.h>

#include "depiction/views.h"
#include "picture/picture.h"
#include "scene/model.h"

namespace zeq::depiction {
namespace {

using test::Model;

picture::Image imageOf(const scene::Scene& scene, Wishes wishes = {}) {
    wishes.width = 120;
    wishes.height = 90;
    return picture::render(Depiction(scene, wishes).drawing());
}

TEST(Depiction, ShowsWhatIsNotHiddenAndWhatIsWishedFor) {
    Model model;
    model.addAnnotation(L"7");
    scene::Scene scene = model.build();
    const auto counts = [&](const Wishes& wishes) {
        const Depiction depiction(scene, wishes);
        const picture::Drawing& drawing = depiction.drawing();
        return std::array{drawing.triangles.size(), drawing.lines.size(), drawing.points.size()};
    };
    Wishes all, noEdges, noAnnotations;
    noEdges.hasEdges = false;
    noAnnotations.hasAnnotations = false;
    EXPECT_EQ(counts(all), (std::array<std::size_t, 3>{1, 2, 1}));
    EXPECT_EQ(counts(noEdges), (std::array<std::size_t, 3>{1, 1, 0}));
    EXPECT_EQ(counts(noAnnotations), (std::array<std::size_t, 3>{1, 1, 1}));
    EXPECT_EQ(imageOf(scene).dropped, 0U);

    // Two colours make two batches of the same positions, and what is hidden stays away.
    scene::Part& part = scene.parts.back();
    part.shape.faces[0].isHidden = true;
    part.annotations[0].isHidden = true;
    part.shape.lines[0].isHidden = true;
    EXPECT_EQ(counts(all), (std::array<std::size_t, 3>{0, 0, 1}));
    scene.instances.back().isHidden = true;
    EXPECT_EQ(counts(all), (std::array<std::size_t, 3>{0, 0, 0}));
}

TEST(Depiction, ASavedViewBringsItsCameraItsPlaneAndItsAnnotations) {
    Model model;
    model.addAnnotation(L"7");
    model.addAnnotation(L"8");
    model.addView(L"Detail", {L"8"});
    scene::Scene scene = model.build();
    scene.parts.back().views[0].clipping = {0, 0, 2, -1};
    Wishes wishes;
    wishes.view = "Detail";
    const Depiction depiction(scene, wishes);
    const picture::Drawing& drawing = depiction.drawing();
    EXPECT_EQ(drawing.lines.size(), 2U); // the edge, and the stroke of the one
    EXPECT_EQ(drawing.camera.eye.z, 100);
    EXPECT_GT(drawing.camera.height, 0);
    ASSERT_TRUE(drawing.section);
    EXPECT_FLOAT_EQ(drawing.section->point.z, 0.5F);
    EXPECT_GT(drawing.section->normal.z, 0);

    wishes.view = "Detial";
    try {
        const Depiction none(scene, wishes);
        ADD_FAILURE();
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "there is no view 'Detial'; there are iso, front, back, left, right, top, "
                                   "bottom, Detail");
    }
}

TEST(Depiction, SectionsCutAwayWhatIsBeforeThem) {
    Model model;
    model.addAnnotation(L"7");
    const scene::Scene scene = model.build();
    Wishes wishes;
    for (const char* view : {"iso", "front", "back", "left", "right", "top", "bottom"})
        for (const int axis : {0, 1, 2}) {
            wishes.view = view;
            wishes.section = SectionWish{axis, 0.25};
            const Depiction depiction(scene, wishes);
            const picture::Drawing& drawing = depiction.drawing();
            const auto along = [axis](picture::Vector v) { return axis == 0 ? v.x : axis == 1 ? v.y : v.z; };
            EXPECT_FLOAT_EQ(along(drawing.section->point), 0.25F);
            wishes.section->at.reset();
            const float middle =
                axis == 2 ? 0 : 0.5F; // of the plate, not of the annotation and the point above it
            EXPECT_FLOAT_EQ(along(Depiction(scene, wishes).drawing().section->point), middle) << view << axis;
            EXPECT_GE(along(drawing.section->normal) *
                          (along(drawing.camera.eye) - along(drawing.camera.target)),
                      0)
                << view << axis;
        }
}

TEST(Depiction, ASavedViewIsWideEnoughForItsAnnotations) {
    Model model;
    const ExcVisuPMIPtr annotation = model.addAnnotation(L"7");
    auto far = std::make_shared<ExcVisuEdge>();
    far->setPoints({0, 0, 9, 50, 0, 9}); // of a window of 40 by 30
    annotation->setEdges({far});
    model.addView(L"Detail", {L"7"})->setAnnotationIds({L"7"});
    const scene::Scene scene = model.build();
    Wishes wishes;
    wishes.view = "Detail";
    wishes.width = 400;
    wishes.height = 300;
    EXPECT_NEAR(Depiction(scene, wishes).drawing().camera.height, 40 * 50 / (40 * 4.0 / 3 / 2) * 1.03, 0.01);
}

TEST(Depiction, LinesOfSmallPartsFadeAway) {
    for (const auto& [away, strength] : {std::pair(0.0, 1.0), std::pair(40.0, 0.5), std::pair(1000.0, 0.0)}) {
        Model model;
        ExcTransformation aside;
        aside.translation() = {away, 0, 0};
        model.place(3, L"Plate:2", nullptr)->setTransformation(aside);
        const scene::Scene scene = model.build();
        Wishes wishes;
        wishes.view = "top";
        wishes.width = wishes.height = 800;
        const Depiction depiction(scene, wishes);
        const picture::Drawing& drawing = depiction.drawing();
        EXPECT_NEAR(drawing.lines.back().color.alpha, strength, 0.1) << away;
        EXPECT_EQ(drawing.triangles.back().outline, drawing.lines.back().color.alpha);
    }
}

TEST(Depiction, EveryViewHasAName) {
    Model model;
    for (const wchar_t* name : {L"A", L"A", L"top", L"A (2)"}) model.addView(name, {});
    const scene::Scene scene = model.build();
    std::string names;
    for (const NamedView& view : allViews(scene))
        if (view.saved) names += view.name + ", ";
    EXPECT_EQ(names, "A, A (2), top (2), A (2) (2), ");
}

TEST(Depiction, StandardViewsStandUpright) {
    for (const EWorldOrientation up :
         {EWorldOrientation::up_x, EWorldOrientation::up_y, EWorldOrientation::up_z}) {
        const auto height = [up](picture::Vector v) {
            return up == EWorldOrientation::up_x ? v.x : up == EWorldOrientation::up_y ? v.y : v.z;
        };
        scene::Scene scene;
        scene.up = up;
        const std::vector<NamedView> views = allViews(scene);
        const auto sight = [&views](const char* name) {
            return std::ranges::find(views, name, &NamedView::name)->sight;
        };
        EXPECT_EQ(height(sight("front").up), 1);
        EXPECT_EQ(height(sight("front").direction), 0);
        EXPECT_EQ(height(sight("top").direction), -1);
    }
}

} // namespace
} // namespace zeq::depiction
