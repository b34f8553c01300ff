// Compression is that of meshoptimizer, in the versions of its codecs that the extension fixes: 0 for vertices, 1 for
// indices (Khronos Group, EXT_meshopt_compression).
#include "gltf/buffers.h"

#include <cstdint>
#include <vector>

#include <meshoptimizer.h>

namespace zeq::gltf {

using text::JsonWriter;

namespace {

using Kind = BufferView::Kind;
constexpr std::string_view extension = "EXT_meshopt_compression";

/// The view object, which the caller ends.
JsonWriter& beginView(Buffers& result, const BufferView& view, unsigned buffer) {
    constexpr unsigned arrayBuffer = 34962, elementArrayBuffer = 34963;
    JsonWriter& json = result.views.elements;
    json.open('{').member("buffer", buffer).member("byteOffset", view.offset).member("byteLength", view.size);
    if (!view.holdsIndices()) json.member("byteStride", view.elementSize);
    json.member("target", view.holdsIndices() ? elementArrayBuffer : arrayBuffer);
    result.views.next();
    return json;
}

template <class Index>
void compressIndices(const char* from, const BufferView& view, std::vector<unsigned char>& to) {
    const auto* const indices = reinterpret_cast<const Index*>(from);
    if (view.kind == Kind::triangles) {
        to.resize(meshopt_encodeIndexBufferBound(view.count(), 0xFFFFFFFF));
        to.resize(meshopt_encodeIndexBuffer(to.data(), to.size(), indices, view.count()));
    } else {
        to.resize(meshopt_encodeIndexSequenceBound(view.count(), 0xFFFFFFFF));
        to.resize(meshopt_encodeIndexSequence(to.data(), to.size(), indices, view.count()));
    }
}

std::vector<unsigned char> compressed(const char* from, const BufferView& view) {
    std::vector<unsigned char> to;
    if (view.holdsIndices()) {
        (view.elementSize == 2 ? compressIndices<std::uint16_t> : compressIndices<std::uint32_t>)(from, view,
                                                                                                  to);
        return to;
    }
    std::vector<char> filtered;
    if (view.kind == Kind::normals) {
        constexpr int bits = 12;
        filtered.resize(view.size);
        meshopt_encodeFilterExp(filtered.data(), view.count(), view.elementSize, bits,
                                reinterpret_cast<const float*>(from));
        from = filtered.data();
    }
    to.resize(meshopt_encodeVertexBufferBound(view.count(), view.elementSize));
    to.resize(meshopt_encodeVertexBuffer(to.data(), to.size(), from, view.count(), view.elementSize));
    return to;
}

} // namespace

Buffers plainBuffers(Packer& packer) {
    Buffers result;
    for (const BufferView& view : packer.views())
        if (view.size > 0) beginView(result, view, 0).close('}');
    result.body = packer.takeBuffer();
    if (result.body.empty()) return result;
    result.buffers.elements.open('{').member("byteLength", result.body.size()).close('}');
    result.buffers.next();
    return result;
}

Buffers compressedBuffers(Packer& packer) {
    meshopt_encodeVertexVersion(0);
    meshopt_encodeIndexVersion(1);
    Buffers result;
    const std::string raw = packer.takeBuffer();
    for (const BufferView& view : packer.views()) {
        if (view.size == 0) continue;
        const std::vector<unsigned char> bytes = compressed(&raw[view.offset], view);
        JsonWriter& json = beginView(result, view, 1);
        json.key("extensions").open('{').key(extension).open('{').member("buffer", 0U);
        json.member("byteOffset", result.body.size()).member("byteLength", bytes.size());
        json.member("byteStride", view.elementSize).member("count", view.count());
        json.member("mode", std::string_view(!view.holdsIndices()           ? "ATTRIBUTES"
                                             : view.kind == Kind::triangles ? "TRIANGLES"
                                                                            : "INDICES"));
        if (view.kind == Kind::normals) json.member("filter", std::string_view("EXPONENTIAL"));
        json.close('}').close('}').close('}');
        result.body.append(bytes.begin(), bytes.end());
        result.body.resize((result.body.size() + 3) / 4 * 4);
    }
    if (raw.empty()) return result;
    JsonWriter& json = result.buffers.elements;
    json.open('{').member("byteLength", result.body.size()).close('}');
    json.open('{').member("byteLength", raw.size()).key("extensions").open('{').key(extension).open('{');
    json.key("fallback").raw("true").close('}').close('}').close('}');
    result.buffers.count = 2;
    return result;
}

} // namespace zeq::gltf
