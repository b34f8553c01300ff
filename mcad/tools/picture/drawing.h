// A plain description of what a picture shows: triangles, lines and points in space, a camera, a section plane.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace zeq::picture {

struct Vector {
    float x = 0, y = 0, z = 0;
};

/// Components from 0 to 1, as a screen shows them (sRGB); the colour is not multiplied by alpha.
struct Color {
    float red = 0, green = 0, blue = 0, alpha = 1;
    bool operator==(const Color&) const = default;
};

/// The images of the x, y and z axes, then that of the origin.
struct Transform {
    std::array<float, 12> columns{1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
};

/// What the batches have in common. Their arrays belong to somebody else, so that instances of a part share them.
struct Batch {
    Transform transform;
    Color color;
    bool isOnTop = false; ///< shown before everything that is not, as annotations are
    bool isCut = true;    ///< by the section plane
};

/// Triangles of one colour. Both sides are seen. One that has an index outside the positions, or a position that is
/// not finite, is left out and counted.
struct Triangles : Batch {
    std::span<const float> positions;       ///< three a vertex
    std::span<const float> normals;         ///< three a vertex; where they are missing, triangles are flat
    std::span<const std::uint32_t> indices; ///< three a triangle
    std::uint32_t firstIndex = 0;           ///< that of the first position
    std::uint64_t part = 0; ///< batches of one number bound one body, which the section plane shows a cap of
    bool isLit = true;      ///< or all of one colour, as fillings of annotations are
    float outline = 1;      ///< how strong silhouettes are drawn, up to one
};

/// Polylines of one colour.
struct Lines : Batch {
    std::span<const float> points;          ///< three a point
    std::span<const std::uint32_t> lengths; ///< of each polyline, in points; one point alone is a dot
    float width = 1;                        ///< in pixels
};

struct Points : Batch {
    std::span<const float> points; ///< three a point
    float size = 3;                ///< diameter in pixels
};

struct Camera {
    bool isPerspective = false;
    Vector eye{0, 0, 1}, target, up{0, 1, 0};
    float height = 1; ///< of the window, at the target
};

/// What lies on the side that the normal points to is cut away.
struct Section {
    Vector point, normal;
    bool isHatched = true; ///< caps; else plain
};

struct Drawing {
    std::vector<Triangles> triangles;
    std::vector<Lines> lines;
    std::vector<Points> points;
    Camera camera;
    std::optional<Section> section;
    Color background{1, 1, 1, 1};
    int width = 1600, height = 1200; ///< in pixels, from 1 to 16384
    int samples = 4;                 ///< a pixel: 1, 4 or 9
    bool hasSilhouettes = true;
    unsigned threads = 2;
};

} // namespace zeq::picture
