// glTF has linear factors where documents have sRGB (IEC 61966-2-1).
#include "gltf/materials.h"

#include <cmath>

namespace zeq::gltf {

using text::JsonWriter;

namespace {

float linear(std::uint8_t channel) {
    const double c = channel / 255.0;
    return static_cast<float>(c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4));
}

} // namespace

std::uint32_t Materials::of(const scene::Color& color, bool isUnlit) {
    const auto [entry, isNew] = m_known.try_emplace({color, isUnlit}, m_list.count);
    if (!isNew) return entry->second;
    JsonWriter& json = m_list.elements;
    json.open('{').key("pbrMetallicRoughness").open('{').key("baseColorFactor").open('[');
    json.value(linear(color.red)).value(linear(color.green)).value(linear(color.blue));
    json.value(static_cast<float>(color.alpha) / 255).close(']');
    json.member("metallicFactor", isUnlit ? 0.0 : 0.1)
        .member("roughnessFactor", isUnlit ? 1.0 : 0.6)
        .close('}');
    if (color.alpha < 255) json.member("alphaMode", std::string_view("BLEND"));
    json.key("doubleSided").raw("true");
    if (isUnlit) json.key("extensions").raw(R"({"KHR_materials_unlit":{}})");
    json.close('}');
    m_hasUnlit = m_hasUnlit || isUnlit;
    return m_list.next();
}

} // namespace zeq::gltf
