// Texts and properties in `extras`.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "scene/scene.h"
#include "text/json_writer.h"

namespace zeq::gltf {

/// A member with these texts, unless there are none.
void writeTexts(text::JsonWriter& json, std::string_view key, const std::vector<std::string>& texts);
void writeTextUnlessEmpty(text::JsonWriter& json, std::string_view key, const std::string& text);
/// The member `properties`, unless there are none.
void writeProperties(text::JsonWriter& json, const std::vector<scene::PropertyGroup>& groups);

} // namespace zeq::gltf
