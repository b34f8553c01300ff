// Walks the nodes without recursion.
#include "convexor/scene_colors.h"

#include <string>
#include <type_traits>
#include <vector>

namespace zeq::convexor {

namespace {

std::uint32_t packed(const ExcColor& color) {
    using enum ExcColor::EChannel;
    const auto byte = [&color](ExcColor::EChannel channel) { return color[channel] & 0xFFU; };
    return byte(red) << 24 | byte(green) << 16 | byte(blue) << 8 | (color.hasAlpha() ? byte(alpha) : 0xFFU);
}

/// Calls for every node.
template <class Visit>
void forEachNode(const ExcVisualizationData& scene, const Visit& visit) {
    std::vector<const ExcVisuNode*> pending;
    for (const ExcVisuNodePtr& root : scene.sceneRootNodes()) pending.push_back(root.get());
    while (!pending.empty()) {
        const ExcVisuNode& node = *pending.back();
        pending.pop_back();
        visit(node);
        for (const ExcVisuNodePtr& child : node.childNodes()) pending.push_back(child.get());
    }
}

/// Calls for every face and every edge.
template <class Visit>
void forEachShape(const ExcVisuNode& node, const Visit& visit) {
    if (node.mesh()) {
        for (const ExcVisuFacePtr& face : node.mesh()->faces()) visit(*face);
        for (const ExcVisuEdgePtr& edge : node.mesh()->edges()) visit(*edge);
    }
    if (node.wire())
        for (const ExcVisuEdgePtr& edge : node.wire()->edges()) visit(*edge);
}

} // namespace

void addColors(const ExcVisualizationData& scene, std::set<std::uint32_t>& colors) {
    const auto add = [&colors](const ExcColor& color) {
        if (color.hasRGB()) colors.insert(packed(color));
    };
    forEachNode(scene, [&add](const ExcVisuNode& node) {
        if (node.attributes() && node.attributes()->color()) add(*node.attributes()->color());
        forEachShape(node, [&add](const auto& shape) { add(shape.color()); });
    });
}

void paint(const ExcVisualizationData& scene, const std::unordered_map<std::uint64_t, ExcColor>& colors) {
    const auto paintOne = [&colors](auto& shape) {
        // The kernel gives edges the colour that the boundaries of their faces have, whatever their own is.
        constexpr bool isFace = std::is_same_v<decltype(shape), ExcVisuFace&>;
        if (shape.mechanicalId().empty() || (isFace && shape.color().hasRGB())) return;
        const auto found = colors.find(std::stoull(shape.mechanicalId()));
        shape.setColor(found == colors.end() ? ExcColor() : found->second);
    };
    forEachNode(scene, [&paintOne](const ExcVisuNode& node) { forEachShape(node, paintOne); });
}

} // namespace zeq::convexor
