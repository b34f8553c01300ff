// Colours and paths.
#include "scene/scene.h"

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

std::string pathOf(const Scene& scene, std::uint32_t instance) {
    std::vector<const std::string*> names;
    for (; instance != none; instance = scene.instances[instance].parent)
        names.push_back(&scene.instances[instance].name);
    std::string path;
    for (; !names.empty(); names.pop_back()) path += (path.empty() ? "" : "/") + *names.back();
    return path;
}

} // namespace zeq::scene
