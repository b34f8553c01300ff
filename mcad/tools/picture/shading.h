// What light makes of a colour.
#pragma once

#include <algorithm>

#include "picture/vector.h"

namespace zeq::picture {

/// Sky and ground, a key light at the upper left, both fixed to the camera, and a weak highlight.
/// @param normal,towardsEye unit vectors in eye space
inline Color lit(Color color, Vector normal, Vector towardsEye) {
    constexpr Vector key{-0.5514F, 0.5213F, 0.6517F}, fill{0.7682F, -0.1280F, 0.6273F};
    const float sky = 0.5F + 0.5F * normal.y;
    const float keyLight = std::max(0.0F, dot(normal, key)), fillLight = std::max(0.0F, dot(normal, fill));
    const float diffuse = 0.35F + 0.16F * sky + 0.52F * keyLight + 0.11F * fillLight;
    float shine = std::max(0.0F, dot(normal, unit(key + towardsEye)));
    for (int i = 0; i < 5; ++i) shine *= shine;
    shine *= 0.16F;
    const auto channel = [&](float value) { return std::min(1.0F, value * diffuse + shine); };
    return {channel(color.red), channel(color.green), channel(color.blue), color.alpha};
}

} // namespace zeq::picture
