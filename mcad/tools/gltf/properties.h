// Texts and properties in `extras`.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "gltf/json_writer.h"
#include "scene/scene.h"

namespace zeq::gltf {

/// A member with these texts, unless there are none.
void writeTexts(JsonWriter& json, std::string_view key, const std::vector<std::string>& texts);
void writeTextUnlessEmpty(JsonWriter& json, std::string_view key, const std::string& text);
/// The member `properties`, unless there are none.
void writeProperties(JsonWriter& json, const std::vector<scene::PropertyGroup>& groups);

} // namespace zeq::gltf
