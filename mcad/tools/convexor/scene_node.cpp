// Makes nodes with what a look says.
#include "convexor/scene_node.h"

namespace zeq::convexor {

namespace {

ExcVisuMaterialPtr materialOf(const ExcColor& color) {
    using Channel = ExcColor::EChannel;
    using Kind = ExcVisuMaterial::EColorType;
    const auto part = [&](Channel channel) { return static_cast<float>(color[channel]) / 255; };
    const float alpha = color.hasAlpha() ? part(Channel::alpha) : 1;
    auto material = std::make_shared<ExcVisuMaterial>();
    material->setColor(Kind::diffuse, {part(Channel::red), part(Channel::green), part(Channel::blue), alpha});
    if (alpha < 1) material->setColor(Kind::transparency, {1 - alpha, 1 - alpha, 1 - alpha, 1});
    return material;
}

} // namespace

ExcVisuNodePtr makeNode(ExcVisuNode::EType type, const Look& look) {
    auto node = std::make_shared<ExcVisuNode>();
    node->setType(type);
    if (!look.color.hasRGB() && !look.isHidden) return node;
    const auto attributes = std::make_shared<ExcVisuAttributes>();
    attributes->setHidden(look.isHidden);
    if (look.color.hasRGB()) {
        attributes->setColor(std::make_shared<ExcColor>(look.color));
        attributes->addMaterial(materialOf(look.color));
    }
    node->setAttributes(attributes);
    return node;
}

} // namespace zeq::convexor
