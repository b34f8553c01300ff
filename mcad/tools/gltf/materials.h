// Colours as materials.
#pragma once

#include <cstdint>
#include <map>
#include <utility>

#include "scene/scene.h"
#include "text/json_writer.h"

namespace zeq::gltf {

/// Makes each material once.
class Materials {
public:
    /// @param isUnlit for lines and annotations, which have the same colour from everywhere (KHR_materials_unlit)
    std::uint32_t of(const scene::Color& color, bool isUnlit);

    const text::JsonList& list() const { return m_list; }
    bool hasUnlit() const { return m_hasUnlit; }

private:
    std::map<std::pair<scene::Color, bool>, std::uint32_t> m_known;
    text::JsonList m_list;
    bool m_hasUnlit = false;
};

} // namespace zeq::gltf
