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

/// Something to look at: a standard view, or one that came with the model.
struct NamedView {
    std::string name; ///< no two views of a scene have the same one: a second "Front" is "Front (2)"
    Sight sight;      ///< of a standard one
    const scene::View* saved = nullptr; ///< null for a standard one
    std::uint32_t instance = 0;         ///< the first one of the part that the saved view belongs to
};

/// iso, front, back, left, right, top and bottom, then the saved views, those of the product first.
std::vector<NamedView> allViews(const scene::Scene& scene);

} // namespace zeq::depiction
