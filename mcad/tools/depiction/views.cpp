#include "depiction/views.h"

#include <array>
#include <map>
#include <set>

namespace zeq::depiction {

picture::Vector toVector(const scene::Vec& v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

namespace {

/// With z up.
struct Standard {
    const char* name;
    Sight sight;
};
constexpr std::array<Standard, 7> standards{{
    {"iso", {{-1, 1.2F, -0.9F}, {0, 0, 1}}},
    {"front", {{0, 1, 0}, {0, 0, 1}}},
    {"back", {{0, -1, 0}, {0, 0, 1}}},
    {"left", {{1, 0, 0}, {0, 0, 1}}},
    {"right", {{-1, 0, 0}, {0, 0, 1}}},
    {"top", {{0, 0, -1}, {0, 1, 0}}},
    {"bottom", {{0, 0, 1}, {0, -1, 0}}},
}};

} // namespace

std::vector<NamedView> allViews(const scene::Scene& scene) {
    std::vector<NamedView> views;
    std::set<std::string> names;
    std::map<std::string, int> repeated;
    const auto add = [&](const std::string& name) -> NamedView& {
        std::string unique = name;
        while (!names.insert(unique).second)
            unique = name + " (" + std::to_string(++repeated[name] + 1) + ")";
        views.emplace_back().name = unique;
        return views.back();
    };
    const auto turned = [&scene](picture::Vector v) {
        if (scene.up == EWorldOrientation::up_x) return picture::Vector{v.z, v.x, v.y};
        return scene.up == EWorldOrientation::up_y ? picture::Vector{v.x, v.z, -v.y} : v;
    };
    for (const Standard& each : standards)
        add(each.name).sight = {turned(each.sight.direction), turned(each.sight.up)};
    std::vector<bool> isSeen(scene.parts.size());
    for (std::uint32_t i = 0; i < scene.instances.size(); ++i) {
        const std::uint32_t part = scene.instances[i].part;
        if (isSeen[part]) continue;
        isSeen[part] = true;
        for (const scene::View& view : scene.parts[part].views) {
            NamedView& saved = add(view.name);
            saved.saved = &view;
            saved.instance = i;
        }
    }
    return views;
}

} // namespace zeq::depiction
