// Colours, sizes and paths.
#include "scene/scene.h"

#include <algorithm>
#include <limits>

namespace zeq::scene {

Look Look::within(const Look& around) const {
    Look result = *this;
    if (!hasColor && around.hasColor) {
        result.color = around.color;
        result.hasColor = true;
    }
    result.color.alpha = hasOpacity ? color.alpha : around.color.alpha;
    result.hasOpacity = hasOpacity || around.hasOpacity;
    return result;
}

Color Look::shown(Color otherwise) const {
    Color result = hasColor ? color : otherwise;
    result.alpha = hasOpacity ? color.alpha : otherwise.alpha;
    return result;
}

double diagonalOf(const Shape& shape) {
    constexpr double far = std::numeric_limits<double>::max();
    Vec low{far, far, far}, high{-far, -far, -far};
    for (const std::vector<float>* const points : {&shape.vertices, &shape.linePoints})
        for (std::size_t i = 0; i + 2 < points->size(); i += 3) {
            const Vec point{(*points)[i], (*points)[i + 1], (*points)[i + 2]};
            low = {std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z)};
        }
    return low.x <= high.x ? length(high - low) : 0;
}

std::string pathOf(const Scene& scene, std::uint32_t instance) {
    std::vector<const std::string*> names;
    for (; instance != none; instance = scene.instances[instance].parent)
        names.push_back(&scene.instances[instance].name);
    std::string path;
    for (; !names.empty(); names.pop_back()) path += (path.empty() ? "" : "/") + *names.back();
    return path;
}

} // namespace zeq::scene
