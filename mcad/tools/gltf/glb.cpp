// Puts the pieces of the file together (Khronos Group, glTF 2.0, section 4).
#include "gltf/glb.h"

#include <bit>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

#include "gltf/buffers.h"
#include "gltf/nodes.h"
#include "gltf/properties.h"

namespace zeq::gltf {

using text::JsonList;
using text::JsonWriter;

namespace {

static_assert(std::endian::native == std::endian::little, "glTF has the low byte first");

void append(std::string& bytes, std::uint32_t number) {
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void writeList(JsonWriter& json, std::string_view key, const JsonList& list) {
    if (list.count > 0) json.key(key).open('[').raw(list.elements.text()).close(']');
}

std::string documentOf(const scene::Scene& scene, const Nodes& nodes, const Buffers& buffers,
                       const std::string& generator, bool isCompressed) {
    JsonWriter json;
    json.open('{').key("asset").open('{').member("version", std::string_view("2.0"));
    json.member("generator", generator).close('}');
    std::vector<std::string> extensions;
    if (nodes.materials().hasUnlit()) extensions.emplace_back("KHR_materials_unlit");
    if (isCompressed) {
        extensions.emplace_back("EXT_meshopt_compression");
        writeTexts(json, "extensionsRequired", {extensions.back()});
    }
    writeTexts(json, "extensionsUsed", extensions);
    json.member("scene", 0U).key("scenes").raw(R"([{"nodes":[0]}])");
    writeList(json, "nodes", nodes.nodes());
    writeList(json, "meshes", nodes.meshes());
    writeList(json, "materials", nodes.materials().list());
    writeList(json, "cameras", nodes.cameras());
    writeList(json, "accessors", nodes.packer().accessors());
    writeList(json, "bufferViews", buffers.views);
    writeList(json, "buffers", buffers.buffers);
    json.key("extras").open('{').key("blocks").open('[');
    for (const scene::Part& part : scene.parts) {
        json.open('{').member("id", part.block).member("name", part.name);
        writeProperties(json, part.properties);
        json.close('}');
    }
    return json.close(']').close('}').close('}').text();
}

} // namespace

Glb makeGlb(const scene::Scene& scene, const std::string& generator, const Options& options) {
    Nodes nodes(scene, scene.millimeters / 1000, options.withHidden);
    nodes.write();
    const bool isCompressed = options.isCompressed && !nodes.packer().buffer().empty();
    Buffers buffers = (isCompressed ? compressedBuffers : plainBuffers)(nodes.packer());
    std::string json = documentOf(scene, nodes, buffers, generator, isCompressed);
    json.resize((json.size() + 3) / 4 * 4, ' ');

    Glb glb;
    glb.body = std::move(buffers.body);
    constexpr std::size_t headerSize = 12, chunkHeaderSize = 8;
    const std::size_t size = headerSize + chunkHeaderSize + json.size() +
                             (glb.body.empty() ? 0 : chunkHeaderSize + glb.body.size());
    if (size > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("the model takes 4 GiB or more, which a glTF file cannot hold");
    glb.head.reserve(size - glb.body.size());
    append(glb.head, 0x46546C67); // "glTF"
    append(glb.head, 2);
    append(glb.head, static_cast<std::uint32_t>(size));
    append(glb.head, static_cast<std::uint32_t>(json.size()));
    append(glb.head, 0x4E4F534A); // "JSON"
    glb.head += json;
    if (!glb.body.empty()) {
        append(glb.head, static_cast<std::uint32_t>(glb.body.size()));
        append(glb.head, 0x004E4942); // "BIN"
    }
    glb.triangles = nodes.triangles();
    glb.nodes = nodes.nodes().count;
    glb.meshes = nodes.meshes().count;
    glb.cameras = nodes.cameras().count;
    glb.hidden = nodes.hidden();
    return glb;
}

} // namespace zeq::gltf
