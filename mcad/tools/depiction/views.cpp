#include "depiction/views.h"

#include <algorithm>
#include <array>

namespace zeq::depiction {

picture::Vector toVector(const scene::Vec& v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

std::optional<Sight> standardSight(const std::string& name, EWorldOrientation up) {
    struct Standard {
        const char* name;
        Sight sight; ///< with z up
    };
    static constexpr std::array<Standard, 7> standards{{
        {"iso", {{-1, 1.2F, -0.9F}, {0, 0, 1}}},
        {"front", {{0, 1, 0}, {0, 0, 1}}},
        {"back", {{0, -1, 0}, {0, 0, 1}}},
        {"left", {{1, 0, 0}, {0, 0, 1}}},
        {"right", {{-1, 0, 0}, {0, 0, 1}}},
        {"top", {{0, 0, -1}, {0, 1, 0}}},
        {"bottom", {{0, 0, 1}, {0, -1, 0}}},
    }};
    const auto* const found =
        std::ranges::find_if(standards, [&](const Standard& each) { return name == each.name; });
    if (found == standards.end()) return std::nullopt;
    const auto turned = [up](picture::Vector v) {
        if (up == EWorldOrientation::up_x) return picture::Vector{v.z, v.x, v.y};
        return up == EWorldOrientation::up_y ? picture::Vector{v.x, v.z, -v.y} : v;
    };
    return Sight{turned(found->sight.direction), turned(found->sight.up)};
}

std::vector<SavedView> savedViews(const scene::Scene& scene) {
    std::vector<SavedView> result;
    std::vector<bool> isSeen(scene.parts.size());
    for (std::uint32_t i = 0; i < scene.instances.size(); ++i) {
        const std::uint32_t part = scene.instances[i].part;
        if (isSeen[part]) continue;
        isSeen[part] = true;
        for (const scene::View& view : scene.parts[part].views) result.push_back({&view, i});
    }
    return result;
}

} // namespace zeq::depiction
