// What a model looks like, ready to be drawn: parts with triangles, lines and annotations, held once each, and the
// instances that place them. A plain structure; nothing of it knows a file format.
//
// All lengths, coordinates and placements are in the one unit of the scene. Indices are those of the vector that they
// are said to be of. Texts are valid UTF-8. Everything that can be drawn is sound: indices are in range, coordinates are
// finite, normals have length one, instances come after those that contain them. What of the documents is not, was left
// out with a warning.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "scene/space.h"
#include "zeq_api/exchange_common/units.h"
#include "zeq_api/exchange_pmi/pmi_object.h"

namespace zeq::scene {

/// An index that points to nothing.
inline constexpr std::uint32_t none = 0xFFFFFFFF;

/// sRGB, with an opacity of 255 for what is solid.
struct Color {
    std::uint8_t red = 0, green = 0, blue = 0, alpha = 255;
    bool operator==(const Color&) const = default;
    friend bool operator<(const Color& a, const Color& b) { return a.packed() < b.packed(); }
    std::uint32_t packed() const { return std::uint32_t{red} << 24 | green << 16 | blue << 8 | alpha; }
};

/// What something says of its colour and its opacity. Each may be missing, and is then that of what is around: a face
/// lies in nodes of its part's scene, the part in an instance, that in the instances that contain it, and the nearest
/// one that says something decides. A part as a whole is asked last, as its instances stand for it: the colour of a
/// block reference shows on all faces of its block that have no colour of their own. Edges that bound faces take no
/// colour from around, to stand out: without one of their own they are plain.
struct Look {
    Color color;
    bool hasColor = false;
    bool hasOpacity = false;

    Look within(const Look& around) const;
    /// The colour to draw with, `otherwise` if none was said.
    Color shown(Color otherwise) const;
    bool operator==(const Look&) const = default;
};

/// What is drawn with a colour that nobody gave.
inline constexpr Color plainSurface{178, 184, 194, 255};
inline constexpr Color plainLine{32, 36, 44, 255};

/// A face of the exact geometry. Its triangles use its own vertices only.
struct Face {
    std::string id; ///< of the exact face, the mechanical id; may be empty
    std::uint32_t firstTriangle = 0;
    std::uint32_t triangles = 0;
    std::uint32_t firstVertex = 0;
    std::uint32_t vertices = 0;
    Look look;
    bool isHidden = false;
};

/// Points in a row: a polyline, or for markers each on its own.
struct PointRange {
    std::string id; ///< of the exact edge, the mechanical id; may be empty
    std::uint32_t first = 0;
    std::uint32_t count = 0; ///< at least two for a line; a closed one ends with its first point
    Look look;
    bool isHidden = false;
};

/// Triangles, lines and points. Coordinates are flat: x0, y0, z0, x1, ...
struct Shape {
    std::vector<float> vertices;
    std::vector<float> normals;           ///< one for each vertex
    std::vector<std::uint32_t> triangles; ///< three indices of vertices each, counter-clockwise from outside
    std::vector<Face> faces;              ///< in the order of triangles and vertices, without gaps
    std::vector<float> linePoints;
    std::vector<PointRange> lines; ///< in the order of the points
    std::vector<float> markerPoints;
    std::vector<PointRange> markers;

    bool isEmpty() const { return faces.empty() && lines.empty() && markers.empty(); }
};

/// From corner to corner of the box of its surfaces and lines; 0 if it has none.
double diagonalOf(const Shape& shape);

/// Something of the model that an annotation applies to.
struct Link {
    enum class Kind {
        face,
        edge,
        vertex,
        other
    };
    Kind kind = Kind::other;
    std::string id; ///< that of Face and PointRange; of something else as the documents call it
};

/// One annotation, in the coordinates of its part.
struct Annotation {
    std::string id;
    std::string name;
    std::string
        kind; ///< "dimension diameter", "geomtol position", "note": the type of its node in small letters
    Look look;
    bool isHidden = false;
    double lineWidth = 0; ///< 0 if that is not known
    Shape shape;          ///< strokes, those of texts too, are its lines, fills its faces
    /// What it says: "⌖ | ⌀0.2 Ⓜ | A | B", "⌀35 +0.2/0", the texts of a note. Rows and lines are separated by line feeds.
    std::string value;
    std::vector<Link> links;
    /// What it means; null for one that is drawn only. One that the documents place without drawing it has the
    /// strokes of its value at its place; with nothing drawn it has no place.
    std::shared_ptr<const ExcPMIAnnotation> semantic;
    Placement
        plane; ///< of the semantic annotation: x and y span its annotation view, the origin is its anchor

    bool isDrawn() const { return !shape.isEmpty(); }
};

struct Camera {
    bool isPerspective = false;
    double angle =
        0; ///< of a perspective camera, from the lower to the upper edge, in degrees; 0 if not known
    double height = 0; ///< of the window of any other camera; 0 if not known
    Vec eye, target, up;
};

/// A saved view, in the coordinates of its part.
struct View {
    std::string id;
    std::string name;
    bool isActive = false; ///< the one to begin with
    Camera camera;
    /// (a, b, c, d): what has a x + b y + c z + d > 0 is cut away.
    std::optional<std::array<double, 4>> clipping;
    std::vector<std::uint32_t> annotations; ///< of the part: what the view shows, and no other
};

struct Property {
    std::string name, value, unit;
};
struct PropertyGroup {
    std::string name;
    std::vector<Property> properties;
};

/// A block of the product with what is drawn of it, however often it is placed; or the product itself.
struct Part {
    std::uint64_t block = 0;
    std::string name;
    bool isAssembly = false;
    Look look; ///< where its instances say nothing
    Shape shape;
    std::vector<Annotation> annotations;
    std::vector<View> views;
    std::vector<PropertyGroup> properties;
};

struct Instance {
    std::string name;
    std::string id; ///< of the block reference: the persistent one, or else its GUID
    std::uint32_t parent = none;
    std::uint32_t part = 0;
    Placement local;       ///< in the parent
    Placement world;       ///< in the scene
    Look look;             ///< with what the instances around say, and the part
    bool isHidden = false; ///< itself, or one around it
    std::vector<PropertyGroup> properties;
};

struct Scene {
    std::vector<Part> parts;         ///< the first one is the product
    std::vector<Instance> instances; ///< the first one is the product; the others are in it, parents first
    double millimeters = 1;          ///< of the unit of length
    EWorldOrientation up = EWorldOrientation::up_z;
    std::vector<std::string> warnings; ///< what of the documents cannot be shown, and why
};

/// The names from the product to an instance, with slashes between.
std::string pathOf(const Scene& scene, std::uint32_t instance);

} // namespace zeq::scene
