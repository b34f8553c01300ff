// A drawing's triangles and lines on the grid of samples, clipped, and listed by the tiles that they touch.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "picture/projection.h"

namespace zeq::picture {

/// Samples from (left, top) to before (right, bottom).
struct Region {
    int left = 0, top = 0, right = 0, bottom = 0;
};

struct StageVertex {
    ScreenPoint point;
    Vector normal; ///< in eye space; zero where the surface is flat
};

struct StageTriangle {
    std::uint32_t corners[3];
    std::uint32_t surface;
};

/// A batch of triangles, and the part of it.
struct Surface {
    Color color;
    std::uint32_t part;
    bool isLit;
    bool isOnTop;
    float outline; ///< zero where there is none
};

struct StageSegment {
    ScreenPoint from, to;
    std::uint32_t pen;
};

/// Segments of one pen do not cover one another.
struct Pen {
    Color color;
    float reach; ///< from the middle to the border, in samples
    bool operator==(const Pen&) const = default;
};

/// A part that the section plane goes through.
struct Cap {
    std::uint32_t part;
    Color color;
};

/// For every tile the numbers of the things that touch it, in their order.
class TileLists {
public:
    /// @param regionOf of the thing of a number, in tiles; an empty one if it touches none
    template <class RegionOf>
    TileLists(int columns, int rows, std::size_t things, RegionOf regionOf) : m_columns(columns) {
        m_starts.resize(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows) + 2);
        const auto forEach = [&](auto act) {
            for (std::size_t thing = 0; thing < things; ++thing) {
                const Region tiles = regionOf(thing);
                for (int row = tiles.top; row < tiles.bottom; ++row)
                    for (int column = tiles.left; column < tiles.right; ++column)
                        act(index(column, row), static_cast<std::uint32_t>(thing));
            }
        };
        forEach([&](std::size_t tile, std::uint32_t) { ++m_starts[tile + 2]; });
        for (std::size_t i = 2; i < m_starts.size(); ++i) m_starts[i] += m_starts[i - 1];
        m_things.resize(m_starts.back());
        forEach([&](std::size_t tile, std::uint32_t thing) { m_things[m_starts[tile + 1]++] = thing; });
    }
    std::span<const std::uint32_t> at(int column, int row) const {
        const std::size_t tile = index(column, row);
        return std::span(m_things).subspan(m_starts[tile], m_starts[tile + 1] - m_starts[tile]);
    }

private:
    std::size_t index(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns) +
               static_cast<std::size_t>(column);
    }

    int m_columns;
    std::vector<std::size_t> m_starts;
    std::vector<std::uint32_t> m_things;
};

/// Everything that tiles are drawn from.
struct Stage {
    /// @param side samples a side of a pixel
    /// @throws std::invalid_argument for a camera or a section plane that is none
    Stage(const Drawing& drawing, int side);

    int side;
    Projection projection;
    std::vector<StageVertex> vertices;
    std::vector<StageTriangle> triangles; ///< those of a part one after another
    std::vector<Surface> surfaces;
    std::vector<StageSegment> segments;
    std::vector<Pen> pens;
    std::vector<Cap> caps; ///< by rising part; none if the section plane's cut is turned away from the eye
    DepthPlane section;    ///< where there are caps
    std::size_t dropped = 0;
};

} // namespace zeq::picture
