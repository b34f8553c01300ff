// What a picture of a scene shows.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "picture/drawing.h"
#include "scene/scene.h"

namespace zeq::depiction {

/// A plane across an axis. What is on the side of the eye is cut away.
struct SectionWish {
    int axis = 0;             ///< 0 for x, 1 for y, 2 for z
    std::optional<double> at; ///< along it; the middle of the scene if it is missing
};

struct Wishes {
    std::string view = "iso"; ///< a name of allViews()
    std::optional<SectionWish> section;
    bool hasAnnotations = true;
    bool hasEdges = true;
    bool isTransparent = false; ///< the background; else it is white
    int width = 1600, height = 1200;
};

/// A drawing, with the arrays that it needs beside those of the scene, which has to outlive it.
class Depiction {
public:
    /// Hidden things are left out. A saved view brings its camera, its section plane and its annotations, and no other;
    /// the camera is zoomed out where some of these would not fit, as the window of who saved it may have been wider.
    /// @throws std::invalid_argument for a view that the scene has not; the message lists those that it has
    Depiction(const scene::Scene& scene, const Wishes& wishes);
    Depiction(const Depiction&) = delete;
    Depiction& operator=(const Depiction&) = delete;

    const picture::Drawing& drawing() const { return m_drawing; }

private:
    void addInstances(const std::vector<std::uint32_t>* annotations, std::uint32_t viewed);
    void addSurfaces(const scene::Shape& shape, const picture::Batch& batch, const scene::Look& around,
                     std::uint64_t part, bool isLit);
    void addRanges(const scene::Shape& shape, const picture::Batch& batch, const scene::Look& around,
                   float width);
    void addAnnotation(const scene::Annotation& annotation, picture::Batch batch, const scene::Look& around);
    void useView(const scene::View& view, const scene::Placement& world);
    void cut(const SectionWish& wish);
    void fadeLinesOfSmallParts();

    /// Batches of an instance, without those of its annotations.
    struct Extent {
        std::uint32_t instance;
        std::size_t firstTriangles, endTriangles, firstLines, endLines;
    };

    const scene::Scene& m_scene;
    const Wishes& m_wishes;
    picture::Drawing m_drawing;
    std::vector<Extent> m_extents;
    std::deque<std::vector<std::uint32_t>> m_numbers; ///< places stay
};

} // namespace zeq::depiction
