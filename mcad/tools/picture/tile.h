// A square of the picture. Each thread has one, which it draws again and again in other places.
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "picture/picture.h"
#include "picture/stage.h"

namespace zeq::picture {

class Tile {
public:
    static constexpr int pixels = 48; ///< along each side

    Tile(const Drawing& drawing, const Stage& stage);

    /// Draws the tile of this column and row into the image.
    void draw(int column, int row, std::span<const std::uint32_t> triangles,
              std::span<const std::uint32_t> segments, Image& image);

private:
    static constexpr std::uint32_t nothing = 0xFFFFFFFF;
    static constexpr std::uint32_t firstCap = 0xF0000000;

    /// A translucent surface at a sample.
    struct Fragment {
        std::uint32_t sample;
        float depth;
        std::uint32_t triangle;
    };

    void begin(int column, int row);
    void drawSurfaces(std::span<const std::uint32_t> triangles);
    void drawCaps(std::span<const std::uint32_t> triangles);
    void drawCap(std::uint32_t number, std::span<const std::uint32_t> triangles);
    void shadePixels();
    void drawSilhouettes();
    void drawLines(std::span<const std::uint32_t> segments);
    void drawLine(const StageSegment& segment, float reach);
    void applyPen(const Pen& pen);
    void drawTranslucent(std::span<const std::uint32_t> triangles);
    void blendFragments();
    void keepNearestFragments();
    void writePixels(Image& image) const;

    std::size_t at(int x, int y) const {
        return static_cast<std::size_t>(y - m_region.top) * static_cast<std::size_t>(m_side) +
               static_cast<std::size_t>(x - m_region.left);
    }
    /// Of what is visible at a sample.
    Slope slopeAt(std::size_t sample) const;
    float outlineOf(std::uint32_t seen) const;
    bool haveCommonCorner(std::uint32_t a, std::uint32_t b) const;
    float gap(std::size_t a, std::size_t b) const;
    bool isBefore(float depth, float x, float y, std::size_t sample, float sampleX, float sampleY) const;
    Color colorOf(std::uint32_t seen, float x, float y) const;

    const Drawing& m_drawing;
    const Stage& m_stage;
    int m_side;              ///< samples a side, with a border of one pixel around
    Region m_region, m_core; ///< with the border and without; only what is in the picture
    std::vector<float> m_depths;
    std::vector<std::uint32_t> m_seen;         ///< the number of a triangle, of a cap, or nothing
    std::vector<Color> m_colors;               ///< weighted
    std::vector<std::uint8_t> m_marks;         ///< inside of a part; how strong on a silhouette
    std::vector<float> m_covers, m_lineDepths; ///< of the lines of the pen in use
    Region m_penned;                           ///< where they are
    std::vector<Fragment> m_fragments;
};

} // namespace zeq::picture
