// Where a picture is looked at from: standard directions, and the views that come with a model.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "picture/drawing.h"
#include "scene/scene.h"

namespace zeq::depiction {

picture::Vector toVector(const scene::Vec& v);

/// Along which line of sight, and what is up.
struct Sight {
    picture::Vector direction, up;
};

/// iso, front, back, left, right, top or bottom, of a scene whose up axis is that. Nothing for another name.
std::optional<Sight> standardSight(const std::string& name, EWorldOrientation up);

/// A saved view and the first instance of its part.
struct SavedView {
    const scene::View* view = nullptr;
    std::uint32_t instance = 0;
};

/// Those of the product first.
std::vector<SavedView> savedViews(const scene::Scene& scene);

} // namespace zeq::depiction
