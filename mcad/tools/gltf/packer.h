// Shapes as accessors of one buffer.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "scene/scene.h"
#include "text/json_writer.h"

namespace zeq::gltf {

/// What is drawn with one colour, and the accessors that hold it.
struct Primitive {
    enum class Mode : unsigned {
        points = 0,
        lines = 1,
        triangles = 4
    };
    Mode mode = Mode::triangles;
    scene::Look look;
    std::uint32_t positions = scene::none;
    std::uint32_t normals = scene::none;
    std::uint32_t indices = scene::none;
    std::string extras; ///< which faces or edges it shows
};

struct PackedShape {
    std::vector<Primitive> primitives;
    bool inheritsColor = false;   ///< some primitive has the colour of what is around
    bool inheritsOpacity = false; ///< or the opacity
    std::array<float, 3> low = filled(std::numeric_limits<float>::max()); ///< a corner of its box in metres,
    std::array<float, 3> high =
        filled(std::numeric_limits<float>::lowest()); ///< below the other if it is empty
    std::size_t triangles = 0;
    std::size_t hidden = 0; ///< faces, lines and markers that are left out as hidden

    bool isEmpty() const { return primitives.empty(); }
    static std::array<float, 3> filled(float value) { return {value, value, value}; }
};

/// Numbers of one kind, one behind the other in the buffer.
struct BufferView {
    enum class Kind {
        positions,
        normals,
        triangles, ///< indices
        segments
    };
    Kind kind = Kind::positions;
    std::size_t elementSize = 0; ///< of a vector or an index, in bytes
    std::size_t offset = 0;
    std::size_t size = 0;
    std::uint32_t index = scene::none; ///< in the file; none for an empty one

    std::size_t count() const { return size / elementSize; }
    bool holdsIndices() const { return kind >= Kind::triangles; }
};

/// Collects shapes, then lays them out in one buffer. The shapes must outlive it.
class Packer {
public:
    /// @return its index for operator[]
    std::uint32_t add(const scene::Shape& shape);
    /// @param meters of the unit of the shapes
    /// @throws std::length_error for a buffer of 4 GiB and more, which no file can have
    void pack(double meters);

    const PackedShape& operator[](std::uint32_t index) const { return m_shapes[index]; }
    const std::string& buffer() const { return m_buffer; }
    std::string takeBuffer() { return std::move(m_buffer); }
    const text::JsonList& accessors() const { return m_accessors; }
    /// All kinds, empty ones too.
    std::span<const BufferView> views() const { return m_views; }

private:
    /// Places in m_views; what has to be aligned comes first.
    enum View : std::size_t {
        positions,
        normals,
        longTriangles,
        longSegments,
        shortTriangles,
        shortSegments
    };
    /// Items of one look, which become one primitive.
    struct Plan {
        std::uint32_t shape = 0;
        Primitive primitive;
        std::vector<std::uint32_t> items; ///< faces, lines or markers
        std::size_t points = 0;
        std::size_t indices = 0;
        std::size_t positionsAt = 0, normalsAt = 0, indicesAt = 0; ///< within their views

        /// Of its indices, as places in m_views.
        std::size_t indexView() const {
            const bool isShort = points <= 0xFFFF; // the greatest index must not be 0xFFFF
            return (isShort ? shortTriangles : longTriangles) +
                   (primitive.mode == Primitive::Mode::lines ? 1 : 0);
        }
    };
    template <class Item>
    void plan(std::uint32_t shape, Primitive::Mode mode, const std::vector<Item>& items);
    void layOut();
    void fill(Plan& plan);
    /// Begins an accessor, which the caller ends.
    std::uint32_t beginAccessor(std::size_t view, std::size_t offset, std::size_t count);

    std::vector<const scene::Shape*> m_sources;
    std::vector<PackedShape> m_shapes;
    std::vector<Plan> m_plans;
    std::array<BufferView, 6> m_views;
    std::string m_buffer;
    float m_meters = 1;
    text::JsonList m_accessors;
};

} // namespace zeq::gltf
