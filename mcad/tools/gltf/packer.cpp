// Sizes first, so that the buffer is made once; then every number is written once.
#include "gltf/packer.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <map>
#include <stdexcept>
#include <tuple>

namespace zeq::gltf {

using scene::Face;
using scene::Look;
using scene::PointRange;
using scene::Shape;
using text::JsonWriter;

namespace {

enum ComponentType : unsigned {
    unsignedShort = 5123,
    unsignedInt = 5125,
    floating = 5126
};
constexpr std::size_t vectorSize = 3 * sizeof(float);

/// Looks that say the same are the same.
auto keyOf(const Look& look) {
    return std::tuple(look.hasColor, look.hasOpacity, look.hasColor ? look.color.red : 0,
                      look.hasColor ? look.color.green : 0, look.hasColor ? look.color.blue : 0,
                      look.hasOpacity ? look.color.alpha : 0);
}

std::size_t pointCount(const Face& face) { return face.vertices; }
std::size_t pointCount(const PointRange& range) { return range.count; }

/// Triangles, segments or points.
std::size_t pieceCount(const Face& face, Primitive::Mode) { return face.triangles; }
std::size_t pieceCount(const PointRange& range, Primitive::Mode mode) {
    return mode == Primitive::Mode::lines ? range.count - 1 : range.count;
}

std::size_t indicesInPiece(Primitive::Mode mode) {
    return mode == Primitive::Mode::triangles ? 3 : mode == Primitive::Mode::lines ? 2 : 0;
}

/// Which of the pieces belong to what: the ids, and how many pieces each has.
template <class Item>
std::string extrasOf(const std::vector<Item>& items, const std::vector<std::uint32_t>& chosen,
                     Primitive::Mode mode) {
    const bool isSurface = mode == Primitive::Mode::triangles;
    JsonWriter json;
    json.open('{').key(isSurface ? "faces" : "edges").open('[');
    for (const std::uint32_t i : chosen) json.value(items[i].id);
    json.close(']').key(isSurface ? "triangles" : "segments").open('[');
    for (const std::uint32_t i : chosen) json.value(pieceCount(items[i], mode));
    return json.close(']').close('}').text();
}

template <class Index>
void writeTriangles(const Shape& shape, const std::vector<std::uint32_t>& faces, char* out) {
    std::uint32_t base = 0;
    for (const std::uint32_t i : faces) {
        const Face& face = shape.faces[i];
        const std::uint32_t shift = base - face.firstVertex; // wraps, and wraps back
        const std::uint32_t* const from = &shape.triangles[3 * std::size_t{face.firstTriangle}];
        auto* const to = reinterpret_cast<Index*>(out);
        const std::size_t count = 3 * std::size_t{face.triangles};
        for (std::size_t k = 0; k < count; ++k) to[k] = static_cast<Index>(from[k] + shift);
        out += count * sizeof(Index);
        base += face.vertices;
    }
}

template <class Index>
void writeSegments(const Shape& shape, const std::vector<std::uint32_t>& lines, char* out) {
    auto* to = reinterpret_cast<Index*>(out);
    std::uint32_t base = 0;
    for (const std::uint32_t i : lines) {
        const std::uint32_t count = shape.lines[i].count;
        for (std::uint32_t k = 1; k < count; ++k) {
            *to++ = static_cast<Index>(base + k - 1);
            *to++ = static_cast<Index>(base + k);
        }
        base += count;
    }
}

} // namespace

std::uint32_t Packer::add(const Shape& shape) {
    const auto index = static_cast<std::uint32_t>(m_shapes.size());
    m_sources.push_back(&shape);
    m_shapes.emplace_back();
    plan(index, Primitive::Mode::triangles, shape.faces);
    plan(index, Primitive::Mode::lines, shape.lines);
    plan(index, Primitive::Mode::points, shape.markers);
    return index;
}

template <class Item>
void Packer::plan(std::uint32_t shape, Primitive::Mode mode, const std::vector<Item>& items) {
    std::map<decltype(keyOf(Look())), Plan> byLook;
    PackedShape& packed = m_shapes[shape];
    for (std::uint32_t i = 0; i < items.size(); ++i) {
        const Item& item = items[i];
        if (item.isHidden) {
            ++packed.hidden;
            continue;
        }
        Plan& plan = byLook[keyOf(item.look)];
        plan.primitive.look = item.look;
        plan.items.push_back(i);
        plan.points += pointCount(item);
        plan.indices += indicesInPiece(mode) * pieceCount(item, mode);
    }
    for (auto& [key, plan] : byLook) {
        plan.shape = shape;
        plan.primitive.mode = mode;
        if (mode != Primitive::Mode::points) plan.primitive.extras = extrasOf(items, plan.items, mode);
        packed.inheritsColor = packed.inheritsColor || !plan.primitive.look.hasColor;
        packed.inheritsOpacity = packed.inheritsOpacity || !plan.primitive.look.hasOpacity;
        if (mode == Primitive::Mode::triangles) packed.triangles += plan.indices / 3;
        m_plans.push_back(std::move(plan));
    }
}

void Packer::layOut() {
    using Kind = BufferView::Kind;
    m_views = {{{Kind::positions, vectorSize},
                {Kind::normals, vectorSize},
                {Kind::triangles, 4},
                {Kind::segments, 4},
                {Kind::triangles, 2},
                {Kind::segments, 2}}};
    for (Plan& plan : m_plans) {
        plan.positionsAt = m_views[positions].size;
        m_views[positions].size += plan.points * vectorSize;
        if (plan.primitive.mode == Primitive::Mode::triangles) {
            plan.normalsAt = m_views[normals].size;
            m_views[normals].size += plan.points * vectorSize;
        }
        BufferView& view = m_views[plan.indexView()];
        plan.indicesAt = view.size;
        view.size += plan.indices * view.elementSize;
    }
    std::size_t size = 0;
    std::uint32_t index = 0;
    for (BufferView& view : m_views) {
        view.offset = size;
        size += view.size;
        if (view.size > 0) view.index = index++;
    }
    size = (size + 3) / 4 * 4;
    if (size >= std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("the model takes 4 GiB or more, which a glTF file cannot hold");
    m_buffer.resize(size);
}

void Packer::pack(double meters) {
    m_meters = static_cast<float>(meters);
    layOut();
    for (Plan& plan : m_plans) {
        fill(plan);
        m_shapes[plan.shape].primitives.push_back(std::move(plan.primitive));
    }
    m_plans.clear();
}

std::uint32_t Packer::beginAccessor(std::size_t view, std::size_t offset, std::size_t count) {
    const BufferView& from = m_views[view];
    const ComponentType type = !from.holdsIndices()    ? floating
                               : from.elementSize == 2 ? unsignedShort
                                                       : unsignedInt;
    JsonWriter& json = m_accessors.elements;
    json.open('{').member("bufferView", from.index).member("byteOffset", offset);
    json.member("componentType", static_cast<unsigned>(type)).member("count", count);
    json.member("type", std::string_view(from.holdsIndices() ? "SCALAR" : "VEC3"));
    return m_accessors.next();
}

void Packer::fill(Plan& plan) {
    const Shape& shape = *m_sources[plan.shape];
    PackedShape& packed = m_shapes[plan.shape];
    const Primitive::Mode mode = plan.primitive.mode;
    std::array<float, 3> low = PackedShape().low, high = PackedShape().high;
    auto* to = reinterpret_cast<float*>(&m_buffer[m_views[positions].offset + plan.positionsAt]);
    const auto writePoints = [&](const std::vector<float>& points, std::size_t first, std::size_t count) {
        const float* from = &points[3 * first];
        for (const float* const end = from + 3 * count; from != end; from += 3, to += 3)
            for (std::size_t k = 0; k < 3; ++k) {
                to[k] = from[k] * m_meters;
                low[k] = std::min(low[k], to[k]);
                high[k] = std::max(high[k], to[k]);
            }
    };
    char* toNormals = &m_buffer[0] + m_views[normals].offset + plan.normalsAt;
    for (const std::uint32_t i : plan.items) {
        if (mode == Primitive::Mode::triangles) {
            const Face& face = shape.faces[i];
            writePoints(shape.vertices, face.firstVertex, face.vertices);
            std::memcpy(toNormals, &shape.normals[3 * std::size_t{face.firstVertex}],
                        face.vertices * vectorSize);
            toNormals += face.vertices * vectorSize;
        } else {
            const bool isLine = mode == Primitive::Mode::lines;
            const PointRange& range = isLine ? shape.lines[i] : shape.markers[i];
            writePoints(isLine ? shape.linePoints : shape.markerPoints, range.first, range.count);
        }
    }
    plan.primitive.positions = beginAccessor(positions, plan.positionsAt, plan.points);
    JsonWriter& json = m_accessors.elements;
    for (const auto& [name, corner] : {std::pair("min", low), std::pair("max", high)}) {
        json.key(name).open('[');
        for (const float each : corner) json.value(each);
        json.close(']');
    }
    json.close('}');
    for (std::size_t k = 0; k < 3; ++k) {
        packed.low[k] = std::min(packed.low[k], low[k]);
        packed.high[k] = std::max(packed.high[k], high[k]);
    }
    if (mode == Primitive::Mode::triangles) {
        plan.primitive.normals = beginAccessor(normals, plan.normalsAt, plan.points);
        json.close('}');
    }
    if (plan.indices == 0) return;
    const BufferView& view = m_views[plan.indexView()];
    const bool isShort = view.elementSize == 2;
    const auto write = mode == Primitive::Mode::triangles
                           ? isShort ? writeTriangles<std::uint16_t> : writeTriangles<std::uint32_t>
                       : isShort ? writeSegments<std::uint16_t>
                                 : writeSegments<std::uint32_t>;
    write(shape, plan.items, &m_buffer[view.offset + plan.indicesAt]);
    plan.primitive.indices = beginAccessor(plan.indexView(), plan.indicesAt, plan.indices);
    json.close('}');
}

} // namespace zeq::gltf
