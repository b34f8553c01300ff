// Nothing is written of what is empty.
#include "gltf/properties.h"

namespace zeq::gltf {

using text::JsonWriter;

void writeTexts(JsonWriter& json, std::string_view key, const std::vector<std::string>& texts) {
    if (texts.empty()) return;
    json.key(key).open('[');
    for (const std::string& text : texts) json.value(text);
    json.close(']');
}

void writeTextUnlessEmpty(JsonWriter& json, std::string_view key, const std::string& text) {
    if (!text.empty()) json.member(key, text);
}

void writeProperties(JsonWriter& json, const std::vector<scene::PropertyGroup>& groups) {
    if (groups.empty()) return;
    json.key("properties").open('[');
    for (const scene::PropertyGroup& group : groups) {
        json.open('{').member("name", group.name).key("properties").open('[');
        for (const scene::Property& property : group.properties) {
            json.open('{').member("name", property.name).member("value", property.value);
            writeTextUnlessEmpty(json, "unit", property.unit);
            json.close('}');
        }
        json.close(']').close('}');
    }
    json.close(']');
}

} // namespace zeq::gltf
